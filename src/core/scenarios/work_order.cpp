#include "scenarios/work_order.h"

#include "scenarios/scenario_reader.h"
#include "scenarios/scenario_texts.h"
#include "scenarios/text_span.h"
#include "tools/codepage.h"
#include "tools/files.h"
#include "tools/tags.h"
#include "tools/text_search.h"

namespace ferrolund::scenarios {
namespace {

using tools::InStr;

// The values of the <e> elements of the span, in order.
std::vector<std::string> Elements(std::string_view text, const Span& span) {
    std::vector<std::string> values;
    long at = FindIn(text, span, "<e ");
    while (at > 0) {
        const std::string value = ValueIn(text, span, at, "e");
        values.push_back(value);
        at = FindIn(text, Span{at + 2, span.to}, "<e ");
    }
    return values;
}

// The driven consist: from the "<cConsist d:id" ahead of the player's PlayerDriver flag to
// the "</cConsist>" behind it. Empty when no consist is driven.
Span DrivenConsist(std::string_view xml) {
    const long flag = InStr(xml, "<PlayerDriver d:type=\"bool\">1</PlayerDriver>");
    if (flag == 0) return {};
    const long open = tools::InStrRev(xml, "<cConsist d:id", flag);
    const long close = InStr(flag, xml, "</cConsist>");
    if (open == 0 || close == 0) return {};
    return Span{open, close};
}

void HeaderLines(const std::string& routeName, const ScenarioDetails& details, std::vector<std::string>& lines) {
    lines.push_back("Route:- " + routeName);
    lines.push_back("Scenario:- " + details.displayName);
    lines.push_back("Description: " + details.description);
    lines.push_back("Briefing:" + details.briefing);
    lines.push_back("Start Time: " + SecondsToHHMM(details.startTime));
    lines.push_back("Duration: " + details.durationMins);
    lines.push_back("Season: " + details.season);
    lines.emplace_back();
}

// One target of an instruction: where, what is done there, and to which wagons.
void TargetLines(std::string_view xml, const Span& target, std::vector<std::string>& lines) {
    lines.push_back("At Location: " + ValueIn(xml, target, target.from, "DisplayName"));
    const std::string words = OperationWords(ValueIn(xml, target, target.from, "Operation"));
    if (!words.empty()) lines.push_back("Operation: " + words);
    const long numbers = FindIn(xml, target, "<RailVehicleNumber>");
    const long empty = FindIn(xml, target, "<RailVehicleNumber/>");
    if (numbers > 0 && (empty == 0 || numbers < empty)) {
        const long end = FindIn(xml, Span{numbers, target.to}, "</RailVehicleNumber>");
        lines.emplace_back("Wagon Numbers:- ");
        for (const std::string& number : Elements(xml, Span{numbers, end > 0 ? end : target.to}))
            lines.push_back("     " + number);
    }
    if (std::string(tools::TrimBlanks(ValueIn(xml, target, target.from, "PickingUp"))) == "1")
        lines.emplace_back("Pick Up");
}

// The instructions of the driven consist, each from its opening tag to the next one.
void InstructionLines(std::string_view xml, const Span& consist, std::vector<std::string>& lines) {
    static constexpr std::string_view kKinds[] = {"<cTriggerInstruction", "<cConsistOperations",
                                                  "<cStopAtDestinations", "<cPickUpPassengers"};
    auto nextInstruction = [&](long from) {
        long best = 0;
        for (std::string_view kind : kKinds) {
            const long at = FindIn(xml, Span{from, consist.to}, kind);
            if (at > 0 && (best == 0 || at < best)) best = at;
        }
        return best;
    };
    long at = nextInstruction(consist.from);
    while (at > 0) {
        const long next = nextInstruction(at + 1);
        const Span instruction{at, next > 0 ? next : consist.to};
        std::string text = EnglishAfter(xml, instruction, "<DisplayText>");
        if (text.empty()) text = EnglishAfter(xml, instruction, "<TriggeredText>");
        if (!text.empty()) lines.push_back("Instruction: " + text);
        long target = FindIn(xml, instruction, "<DeltaTarget>");
        while (target > 0) {
            const long end = FindIn(xml, Span{target, instruction.to}, "</DeltaTarget>");
            const Span one{target, end > 0 ? end : instruction.to};
            TargetLines(xml, one, lines);
            target = FindIn(xml, Span{one.to, instruction.to}, "<DeltaTarget>");
        }
        at = next;
    }
}

}  // namespace

std::string OperationWords(std::string_view operation) {
    const std::string_view word = tools::TrimBlanks(operation);
    if (tools::EqualsIgnoreCase(word, "AddToBack")) return "Couple to back of train";
    if (tools::EqualsIgnoreCase(word, "AddToFront")) return "Couple to Front of train";
    if (tools::EqualsIgnoreCase(word, "DropOffRailVehicle")) return "Drop off wagon(s)";
    return {};
}

std::vector<std::string> WorkOrderLines(const std::string& routeName, std::string_view propertiesXml,
                                        std::string_view scenarioXml, std::string_view languageTag) {
    std::vector<std::string> lines;
    const ScenarioDetails details = ReadScenarioDetails(propertiesXml, languageTag);
    HeaderLines(routeName, details, lines);
    if (details.kind() == ScenarioClass::FreeRoam || InStr(propertiesXml, "timetable") > 0) return lines;

    const Span consist = DrivenConsist(scenarioXml);
    if (consist.from >= consist.to || FindIn(scenarioXml, consist, "<DeltaTarget>") == 0) {
        lines.emplace_back(kNoWagonNumbers1);
        lines.emplace_back(kNoWagonNumbers2);
        return lines;
    }
    long named = FindIn(scenarioXml, consist, "<ServiceName>");
    std::string service;
    if (named > 0) tools::GetName(scenarioXml, named, service, languageTag);
    lines.push_back("Service: " + service);

    const long initial = FindIn(scenarioXml, consist, "<InitialRV>");
    const long initialEnd = initial > 0 ? FindIn(scenarioXml, Span{initial, consist.to}, "</InitialRV>") : 0;
    if (initialEnd > 0) {
        lines.emplace_back("Initial Rolling Stock:-");
        for (const std::string& vehicle : Elements(scenarioXml, Span{initial, initialEnd}))
            lines.push_back("     " + vehicle);
    }
    lines.emplace_back();
    InstructionLines(scenarioXml, consist, lines);

    const long destination = FindIn(scenarioXml, consist, "<FinalDestination>");
    const std::string name = destination > 0 ? ValueIn(scenarioXml, consist, destination, "DisplayName") : "";
    lines.push_back("Final Destination: " + (name.empty() ? std::string(kNotShown) : name));
    return lines;
}

base::Status LoadWorkOrder(app::AppContext& ctx, const std::string& routeFolder, const std::string& scenarioFolder,
                           std::vector<std::string>& lines) {
    lines.clear();
    ScenarioTexts texts;
    if (base::Status failed = LoadScenarioTexts(ctx, ScenarioFolderPath(ctx, routeFolder, scenarioFolder), texts))
        return failed;
    const std::string language = ctx.languageTag();
    // The route's name as the route index has it, else from its RouteProperties.xml, else
    // its folder.
    std::string routeName;
    const auto& index = ctx.routeIndex;
    for (int i = 0; i < index.count(); ++i)
        if (tools::EqualsIgnoreCase(index.routeFolder[i], routeFolder) && i < static_cast<int>(index.routeName.size()))
            routeName = index.routeName[i];
    if (routeName.empty()) {
        const std::string properties =
            tools::ReadTextFile(ctx.gameRoot() + "\\Content\\Routes\\" + routeFolder + "\\RouteProperties.xml");
        long pos = tools::InStr(properties, "<DisplayName");
        if (pos > 0) tools::GetName(properties, pos, routeName, language);
    }
    if (routeName.empty()) routeName = routeFolder;
    lines = WorkOrderLines(routeName, texts.propertiesXml, texts.scenarioXml, language);
    return {};
}

}  // namespace ferrolund::scenarios
