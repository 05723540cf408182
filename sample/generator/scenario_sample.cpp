// The generated scenario: consists of every kind the scenario screens tell apart, repeated
// until Scenario.bin's XML reaches the size asked for. The kinds, in turn: a driven freight
// service with shunting orders (the Work Order's wagons), an express with a reskinned
// engine, a stopping service, a loose consist, an empty one (first round only) and a
// freight service with a destination of its own.
#include <cstdio>

#include "generator/md5.h"
#include "generator/plan.h"
#include "serz/codec.h"

namespace ferrolund::sample {

namespace {

struct Kind {
    const char* vehicles;
    const char* driver;        // empty: a loose consist
    const char* instructions;
    const char* service;       // printf pattern taking the consist's number
    int serviceClass;
    const char* destination;
};

constexpr Kind kKinds[] = {
    {"scenarios/train-freight.xml", "scenarios/driver.xml", "scenarios/stops-shunt.xml", "6M%03d Yard trip", 6,
     "Summit Sidings"},
    {"scenarios/train-steam.xml", "scenarios/driver.xml", "scenarios/stops-generated.xml", "1A%03d Merlin Express",
     2, "Hartwell Junction Platform 2"},
    {"scenarios/train-electric.xml", "scenarios/driver.xml", "scenarios/stops-generated.xml",
     "2S%03d Valley stopper", 3, "Ostvale Platform 1"},
    {"scenarios/train-loose.xml", "", "", "", 0, ""},
    {"scenarios/train-empty.xml", "", "", "", 0, ""},
    {"scenarios/train-freight.xml", "scenarios/driver.xml", "scenarios/stops-generated.xml", "4E%03d Tank train",
     4, "North Portal"},
};
constexpr std::size_t kEmptyKind = 4;

std::string Text(long value) { return std::to_string(value); }

std::string TwoDigits(long value) {
    char text[8];
    std::snprintf(text, sizeof text, "%02ld", value);
    return text;
}

Vars ConsistVars(const Vars& given, std::size_t k) {
    const Kind& kind = kKinds[k % std::size(kKinds)];
    Vars vars = given;
    vars["vehicles"] = kind.vehicles;
    vars["dir"] = k % 2 ? "backwards" : "forwards";
    vars["front"] = Text(100 + static_cast<long>(k % 900)) + ".5";
    vars["rear"] = Text(50 + static_cast<long>(k % 900)) + ".25";
    if (kind.driver[0] == '\0') {
        vars["driver"] = "scenarios/no-driver.xml";
        vars["engineindex"] = "-1";
        return vars;
    }
    char service[64];
    std::snprintf(service, sizeof service, kind.service, static_cast<int>(k % 1000));
    const long start = 21600 + static_cast<long>(k * 60 % 57600);
    const long arrive = start + 900, depart = arrive + 120;
    vars["driver"] = kind.driver;
    vars["instructions"] = kind.instructions;
    vars["service"] = service;
    vars["player"] = k == 0 ? "1" : "0";
    vars["serviceclass"] = Text(kind.serviceClass);
    vars["engineindex"] = "0";
    vars["start"] = Text(start);
    vars["destination"] = kind.destination;
    vars["place"] = kind.destination;
    vars["arrive"] = Text(arrive);
    vars["depart"] = Text(depart);
    vars["ahour"] = Text(arrive / 3600);
    vars["aminute"] = TwoDigits(arrive % 3600 / 60);
    vars["dhour"] = Text(depart / 3600);
    vars["dminute"] = TwoDigits(depart % 3600 / 60);
    vars["waitnote"] = "Wait for the signal before " + std::string(kind.destination) + ".";
    vars["waittriggered"] = "The road is set.";
    vars["waituntriggered"] = "Watch the signal.";
    vars["callnote"] = "Call at " + std::string(kind.destination) + ".";
    vars["calltriggered"] = "Passengers are aboard.";
    vars["calluntriggered"] = "Stop at the platform.";
    vars["dropnote"] = "Drop the hoppers at " + std::string(kind.destination) + ".";
    vars["droptriggered"] = "Hoppers uncoupled.";
    vars["couplenote"] = "Couple the tank wagon at " + std::string(kind.destination) + ".";
    vars["coupletriggered"] = "Tank wagon coupled.";
    vars["wagon1"] = "B340077";
    vars["wagon2"] = "B340112";
    vars["wagon3"] = "B340208";
    return vars;
}

}  // namespace

Failure PlanRunner::MakeScenario(const std::string& folder, int megabytes, const Vars& given) {
    if (auto failure = Produce(folder + "\\ScenarioProperties.xml", "scenarios/properties.xml", given, false))
        return failure;
    const std::size_t wanted = static_cast<std::size_t>(megabytes) << 20;
    const std::string target = folder + "\\Scenario.bin";
    Expander ids(sources_, target + "#consists");
    std::string body;
    for (std::size_t k = 0; k < std::size(kKinds) || body.size() < wanted; ++k) {
        if (k >= std::size(kKinds) && k % std::size(kKinds) == kEmptyKind) continue;
        Expansion expansion;
        if (auto failure = ids.Expand("scenarios/consist.xml", ConsistVars(given, k), expansion)) return failure;
        for (const std::string_view line : Lines(expansion.text)) {
            if (!body.empty()) body += "\n\t\t";
            body += line;
        }
    }
    Vars vars = given;
    vars["consists"] = std::move(body);
    if (auto failure = Produce(target, "scenarios/scenario-generated.xml", vars, true)) return failure;
    if (auto failure = Put(folder + "\\CurrentSave.bin", std::string(lastBytes_))) return failure;
    const auto digest = Md5(lastBytes_);
    return Put(folder + "\\CurrentSave.bin.MD5", std::string(digest.begin(), digest.end()));
}

}  // namespace ferrolund::sample
