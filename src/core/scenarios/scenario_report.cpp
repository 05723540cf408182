#include "scenarios/scenario_report.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <memory>

#include "scenarios/scenario_reader.h"
#include "scenarios/text_span.h"
#include "tools/tags.h"
#include "tools/text_search.h"

namespace ferrolund::scenarios {
namespace {

using tools::InStr;

std::string YesNo(const std::string& flag) {
    if (flag.empty()) return {};
    return std::string(tools::TrimBlanks(flag)) == "1" ? "Yes" : "No";
}

double Number(std::string_view text) {
    const std::string copy(tools::TrimBlanks(text));
    char* end = nullptr;
    const double value = std::strtod(copy.c_str(), &end);
    return end == copy.c_str() || !std::isfinite(value) ? 0.0 : value;
}

// A route coordinate with six digits and its sign: "+000012", "-000034".
std::string TileText(const std::string& distance) {
    const long value = std::lround(Number(distance));
    char buffer[32];
    std::snprintf(buffer, sizeof buffer, "%06ld", std::labs(value));
    return std::string(value < 0 ? "-" : "+") + buffer;
}

void Add(std::vector<ReportLine>& lines, const char* title, std::string value) {
    if (!value.empty()) lines.push_back({title, std::move(value)});
}

// Where the consist starts: the markers of the ribbon under its front, or the tile of its
// first vehicle; nothing when neither can be told.
std::string Origin(std::string_view block, const Span& all, const MarkerLookup& markers) {
    if (const long front = FindIn(block, all, "<FrontFollower>"); front > 0 && markers) {
        const std::string ribbon = ValueIn(block, all, front, "DevString");
        if (!ribbon.empty()) {
            std::string names = markers(ribbon);
            if (!names.empty()) return names;
        }
    }
    const long x = FindIn(block, all, "<X>");
    const long z = x > 0 ? FindIn(block, Span{x, all.to}, "<Z>") : 0;
    if (x == 0 || z == 0) return {};
    const std::string xDistance = ValueIn(block, all, x, "Distance");
    const std::string zDistance = ValueIn(block, all, z, "Distance");
    if (xDistance.empty() || zDistance.empty()) return {};
    return "On Track in tile " + TileText(xDistance) + " " + TileText(zDistance);
}

// The lines of one stop: the place, whether it picks up, and when it is due.
void StopLines(std::string_view block, const Span& stop, const std::string& start, std::vector<ReportLine>& lines) {
    std::string place = EnglishAfter(block, stop, "<Localisation");
    if (place.empty()) place = ValueIn(block, stop, stop.from, "DisplayName");
    Add(lines, "Location", place);
    Add(lines, "Picking Up Here", YesNo(ValueIn(block, stop, stop.from, "PickingUp")));
    if (const long ticked = FindIn(block, stop, "<TickedTime"); ticked > 0) {
        const std::string due = ValueIn(block, stop, ticked, "DueTime");
        if (!due.empty()) Add(lines, "Departure Time ", ClockPlus(start, due));
    }
}

// Each instruction of the container (it opens with its ActivationLevel): its three texts,
// then each stop it names.
void InstructionLines(std::string_view block, const Span& all, const std::string& start,
                      std::vector<ReportLine>& lines) {
    const long container = FindIn(block, all, "<DriverInstructionContainer");
    if (container == 0) return;
    const long close = FindIn(block, Span{container, all.to}, "</DriverInstructionContainer");
    const Span inside{container, close > 0 ? close : all.to};
    long at = FindIn(block, inside, "<ActivationLevel");
    while (at > 0) {
        const long next = FindIn(block, Span{at + 1, inside.to}, "<ActivationLevel");
        const Span instruction{at, next > 0 ? next : inside.to};
        Add(lines, "Triggered Instructions", EnglishAfter(block, instruction, "<TriggeredText>"));
        Add(lines, "Untriggered Instructions", EnglishAfter(block, instruction, "<UntriggeredText>"));
        Add(lines, "Drivers Instructions", EnglishAfter(block, instruction, "<DisplayText>"));
        long target = FindIn(block, instruction, "<cDriverInstructionTarget");
        while (target > 0) {
            const long end = FindIn(block, Span{target, instruction.to}, "</cDriverInstructionTarget");
            const Span stop{target, end > 0 ? end : instruction.to};
            StopLines(block, stop, start, lines);
            target = FindIn(block, Span{stop.to, instruction.to}, "<cDriverInstructionTarget");
        }
        at = next;
    }
}

ConsistReport ReportOfBlock(std::string_view block, const ReportOptions& options) {
    ConsistReport report;
    const Span all{1, static_cast<long>(block.size()) + 1};
    auto& lines = report.lines;
    long named = FindIn(block, all, "<ServiceName>");
    report.loose = named == 0;
    std::string service = kLooseConsist;
    if (!report.loose) tools::GetName(block, named, service, options.languageTag);
    Add(lines, "Service Name", service);
    Add(lines, "Service Class", ServiceClassWord(ValueIn(block, all, 1, "ServiceClass")));

    const long destination = FindIn(block, all, "FinalDestination");
    std::string destinationName = destination > 0 ? ValueIn(block, all, destination, "DisplayName") : std::string();
    Add(lines, "Final Destination", destinationName.empty() ? std::string(kNotShown) : destinationName);
    Add(lines, "Picking Up ", YesNo(ValueIn(block, all, 1, "PickingUp")));
    Add(lines, "Origin", Origin(block, all, options.markers));
    if (report.loose) return report;

    const long initial = FindIn(block, all, "InitialRV");
    const std::string start = initial > 0 ? ValueIn(block, all, initial, "StartTime") : std::string();
    if (!start.empty()) Add(lines, "Start Time", ClockPlus(start));
    // The arrival is the destination's due time; a consist without a destination has none.
    const long destinationOpen = FindIn(block, all, "<FinalDestination>");
    const long destinationClose =
        destinationOpen > 0 ? FindIn(block, Span{destinationOpen, all.to}, "</FinalDestination>") : 0;
    if (destinationClose > 0) {
        const Span target{destinationOpen, destinationClose};
        if (const long ticked = FindIn(block, target, "<TickedTime"); ticked > 0) {
            const std::string due = ValueIn(block, target, ticked, "DueTime");
            if (!due.empty()) Add(lines, "Arrival Time ", ClockPlus(start, due));
        }
    }
    InstructionLines(block, all, start, lines);
    return report;
}

}  // namespace

MarkerLookup LookupIn(MarkerIndex index) {
    auto shared = std::make_shared<const MarkerIndex>(std::move(index));
    return [shared](std::string_view devString) {
        std::string names;
        return shared->find(devString, names) ? names : std::string();
    };
}

std::string ClockPlus(std::string_view startSeconds, std::string_view spanSeconds) {
    const long start = static_cast<long>(std::floor(std::max(0.0, Number(startSeconds))));
    const long span = static_cast<long>(std::fabs(Number(spanSeconds)));
    long hours = start / 3600 + span / 3600;
    long minutes = start % 3600 / 60 + span % 3600 / 60;
    hours += minutes / 60;
    minutes %= 60;
    char buffer[32];
    std::snprintf(buffer, sizeof buffer, "%02ld%02ld", hours, minutes);
    return buffer;
}

std::vector<ConsistReport> ScenarioReport(std::string_view scenarioXml, const ReportOptions& options) {
    std::vector<ConsistReport> report;
    const std::vector<long> bounds = ConsistBoundaries(scenarioXml);
    for (std::size_t k = 0; k + 1 < bounds.size(); ++k) {
        const auto from = static_cast<std::size_t>(bounds[k] - 1);
        const auto to = static_cast<std::size_t>(bounds[k + 1] - 1);
        const std::string_view block = scenarioXml.substr(from, to - from);
        if (!options.includeLoose && InStr(block, "<ServiceName>") == 0) continue;
        ConsistReport one = ReportOfBlock(block, options);
        one.consist = static_cast<int>(k);
        report.push_back(std::move(one));
    }
    return report;
}

std::vector<std::vector<std::string>> ReportRows(const std::vector<ConsistReport>& report) {
    std::vector<std::vector<std::string>> rows;
    for (const ConsistReport& consist : report) {
        if (!rows.empty()) rows.push_back({"", ""});
        for (const ReportLine& line : consist.lines) rows.push_back({line.title, line.value});
    }
    return rows;
}

int SetTimetabled(std::string& scenarioXml, bool timetabled) {
    const std::string_view text = scenarioXml;
    std::string out;
    int count = 0;
    std::size_t copied = 0;  // 0-based: the text up to here is in `out`
    long pos = 1;
    while ((pos = InStr(pos, text, "<Timetabled")) > 0) {
        const long gt = InStr(pos, text, ">");
        const long close = gt > 0 ? InStr(gt, text, "</Timetabled") : 0;
        if (close == 0) break;
        if (out.empty()) out.reserve(scenarioXml.size());
        out.append(text.substr(copied, static_cast<std::size_t>(gt) - copied));
        out += timetabled ? '1' : '0';
        copied = static_cast<std::size_t>(close - 1);
        pos = close;
        ++count;
    }
    if (count > 0) {
        out.append(text.substr(copied));
        scenarioXml = std::move(out);
    }
    return count;
}

}  // namespace ferrolund::scenarios
