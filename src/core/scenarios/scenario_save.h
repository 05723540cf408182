#pragma once
// The Scenario Editor's edits and its save. The "Scenario Details" boxes are written into
// ScenarioProperties.xml by text surgery, the start time of every consist is shifted in
// Scenario.xml, and the save compiles Scenario.xml, reads the result back, and only when
// it says what was meant puts both files in place, each old one kept as a back-up.

#include <string>
#include <string_view>
#include <vector>

#include "app/app_context.h"
#include "base/run_error.h"
#include "scenarios/scenario_reader.h"

namespace ferrolund::scenarios {

inline constexpr const char* kStandardClass = "eStandardScenarioClass";
inline constexpr const char* kFreeRoamClass = "eFreeRoamScenarioClass";

inline constexpr const char* kTimeFormatMessage = "The time must be in 24hour format, e.g. 0530";
inline constexpr const char* kLateStartMessage =
    "Ensure that when modified no consist starts\nafter 2400 or the consist might fail.";
inline constexpr const char* kClassChangeQuestion =
    "If you wish to change a Career,Timetable or Tutorial scenario to\n"
    "Standard or FreeRoam, make a Clone of the Scenario first.\n"
    "You can't change from Career to Standard and back except\n"
    "by renaming ScenarioProperties.bak to ScenarioProperties.xml";
inline constexpr const char* kSavedMessage = "Your Scenario.bin and ScenarioProperties.xml files have been updated.";

// The boxes of "Scenario Details" in screen form (names decoded for display).
struct DetailEdits {
    std::string displayName, description, briefing;  // boxes 0-2
    std::string startTime;                           // box 3, HHMM
    std::string durationMins;                        // box 4
    std::string startDD, startMM, startYYYY;         // boxes 5-7
    std::string season;                              // box 8
    std::string weatherProvider, weatherProduct, weatherBlueprintID;        // boxes 9-11
    std::string extensionProvider, extensionProduct, extensionBlueprintID;  // boxes 12-14
    std::string author;
    std::string startLocation;  // the free roam start's English name
    std::string scenarioClass;  // the ScenarioClass word the save writes
    // "Provider|Product" of every asset set swapped in; repeats and empty ones allowed.
    std::vector<std::string> preload;
};

// The boxes as the screen fills them on opening: names decoded for display, the start
// time as HHMM.
DetailEdits EditsFromDetails(const ScenarioDetails& details);

// The two template files the save inserts from (AppRoot\Templates).
struct SaveTemplates {
    std::string startLocation;  // aaaaaa: the location's name, bbbbbb: a new GUID
    std::string provHeader;     // xxxxxxxx: an id, aaaaaa: Provider, bbbbbb: Product
};
base::Status ReadSaveTemplates(const app::AppContext& ctx, SaveTemplates& templates);

// The time box's check at a save: four characters, a value not above 2400 (2400 passes).
base::Status CheckStartTime(std::string_view hhmm);
// "HHMM" as seconds since midnight in the file's form, "00000.0000".
std::string StartTimeSeconds(std::string_view hhmm);

// Writes the edits into the properties text, in the save's order: the repaired names
// (the repaired texts go back into `edits`), the start time, the duration, the date, the
// season and the weather, the free roam start, the author, and the preload set. A time
// that fails CheckStartTime leaves the text unchanged and gives the message. Dates are
// taken as typed.
base::Status ApplyDetailEdits(std::string& propertiesXml, DetailEdits& edits, const SaveTemplates& templates,
                              std::string_view languageTag = "English");

// Adds one "Provider|Product" set per distinct entry (case-blind, empty ones dropped) to
// <RBlueprintSetPreLoad>, expanding the empty element first. Without either form the text
// stays as it is.
void ExtendPreloadSet(std::string& propertiesXml, std::vector<std::string> preload, const std::string& provHeader);

// The seconds that all consists move when the time box is left with Tab or Enter: the
// difference of the typed and the loaded time. A typed time that is not four characters,
// or beyond 2400, gives the message and no shift.
base::Status StartTimeShift(std::string_view typed, std::string_view loaded, double& seconds);
// Adds `seconds` to the StartTime that follows each of the first `consists` "<cConsist d"
// of the text (all of them for -1), stopping at the first consist with no StartTime
// behind it. The text is rebuilt once, whatever the number of consists. Gives the number
// of consists changed.
int ShiftStartTimes(std::string& scenarioXml, double seconds, int consists = -1);

// The class word of an option (0 Standard, 1 FreeRoam, 2 Career, 3 Tutorial,
// 4 Timetable); empty for any other.
std::string ClassOfOption(int option);
// Writes the class into the properties text; false when it has no <ScenarioClass.
bool ChangeClass(std::string& propertiesXml, std::string_view classWord);

// What "Set Weather" makes of a chosen blueprint file.
struct WeatherChoice {
    std::string provider, product, blueprintID;
};
// The path cut after "Assets": Provider, Product, and the rest as the BlueprintID, with a
// final "bin" turned into "xml". False when the path has no Assets folder with a provider,
// a product and a file below it.
bool WeatherFromPath(std::string_view path, WeatherChoice& choice);

struct SaveOutcome {
    base::Status error;               // nothing was changed when set
    std::string scenarioBackup;       // the old Scenario.bin's new name; empty when none was made
    std::string propertiesBackup;     // the same for ScenarioProperties.xml
};

// Saves both texts into the scenario's folder. Scenario.xml is compiled in
// AppRoot\TempFiles and read back; only a binary that says the same as the text is put
// in. Then Scenario.bin and ScenarioProperties.xml (with a line end behind the text) each
// replace the old file, which is renamed by the scenario back-up rule (the fifty-first
// save overwrites). Any failure leaves both old files as they were and says why. No
// checksum file or saved game is touched.
SaveOutcome SaveScenario(app::AppContext& ctx, const std::string& folder, const std::string& propertiesXml,
                         const std::string& scenarioXml);

// The simulator's Steam application id for its folder: 24010 for a beta, 24020 for a
// development build, 24000 otherwise.
int RailWorksAppId(std::string_view gameRoot);
// The command that starts the simulator through Steam: the program and its arguments.
// Without a simulator folder, or without Steam on this system, an error that says so.
base::Status RailWorksLaunch(const app::AppContext& ctx, std::string& program, std::vector<std::string>& arguments);

}  // namespace ferrolund::scenarios
