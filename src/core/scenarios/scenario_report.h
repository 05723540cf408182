#pragma once
// The "Scenario Details" report: a block of (title, value) lines for each consist of a
// scenario, cut out of Scenario.xml by case-blind substring search, and the scenario's
// Timetabled flags. Every search is bounded by its consist block, so the report takes
// time linear in the size of the text.

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "scenarios/track_markers.h"

namespace ferrolund::scenarios {

struct ReportLine {
    std::string title;
    std::string value;  // shown as it stands in the file (the screens decode it)
};

struct ConsistReport {
    int consist = 0;  // index of the consist block, from 0
    bool loose = false;
    std::vector<ReportLine> lines;
};

// The marker names of a track ribbon, by its DevString; empty when the ribbon has none.
using MarkerLookup = std::function<std::string(std::string_view devString)>;

// The lookup of a route's marker index (kept alive by the lookup).
MarkerLookup LookupIn(MarkerIndex index);

struct ReportOptions {
    bool includeLoose = false;  // list consists without a service name too
    std::string languageTag = "English";
    MarkerLookup markers;       // may be empty: every origin is then a tile
};

inline constexpr const char* kLooseConsistQuestion =
    "Do you wish to include the positions of Loose Consists in this report?";
inline constexpr const char* kNoScenarioBin1 = "There is no Scenario.bin file found for this scenario";
inline constexpr const char* kNoScenarioBin2 = "it may still be packed in the .ap file";
inline constexpr const char* kTimetableQuestion =
    "Changing Scenario type from Standard to Timetable may cause strange effects when running the "
    "scenario, this option is for experimental purposes by experienced users. Continue?";

// The lines of every consist block in file order. A line is present only when it has a
// value; a loose consist has no times and no instructions.
std::vector<ConsistReport> ScenarioReport(std::string_view scenarioXml, const ReportOptions& options);

// The report as rows of two cells, a blank row between two consists (the grid's form).
std::vector<std::vector<std::string>> ReportRows(const std::vector<ConsistReport>& report);

// Seconds since midnight plus a time span in seconds (its sign ignored), as "HHMM":
// minutes carry into hours at 60 and the hours are not wrapped, so a trip that runs past
// midnight shows as 2410. A text that is no number counts as 0.
std::string ClockPlus(std::string_view startSeconds, std::string_view spanSeconds = "0");

// Sets the value of every <Timetabled element of the text to 1 or 0 in one pass and
// returns how many there were. The text changes in memory only; saving it is the
// Scenario Editor's business.
int SetTimetabled(std::string& scenarioXml, bool timetabled);

}  // namespace ferrolund::scenarios
