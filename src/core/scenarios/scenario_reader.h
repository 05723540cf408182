#pragma once
// Reading a scenario's two texts: the properties the Scenario Editor and the details
// screen show, the checks made when a scenario is opened for editing, and the consist
// and vehicle tables cut out of Scenario.xml. Nothing is parsed into a tree: every value
// is found by case-blind substring search, so the order of the elements in the game's
// files is part of the logic. Positions are 1-based, 0 for "not found".

#include <array>
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "base/ui.h"

namespace ferrolund::scenarios {

// ---- Scenario classes -----------------------------------------------------------------

enum class ScenarioClass { Standard, FreeRoam, Career, Tutorial, Timetable, Template, Unknown };

struct ScenarioClassInfo {
    ScenarioClass kind;
    const char* value;    // the ScenarioClass word of ScenarioProperties.xml
    int option;           // the Scenario Editor's option index, -1 for none
    const char* caption;  // the option's caption, empty for none
};

// The six known classes in option order, the Quick Drive template last.
const std::array<ScenarioClassInfo, 6>& ScenarioClasses();
// The class of a ScenarioClass value, compared without regard to case (blanks around it
// ignored); Unknown for anything else.
ScenarioClass ScenarioClassOf(std::string_view value);
// The row of a class; nullptr for Unknown.
const ScenarioClassInfo* ClassInfo(ScenarioClass kind);
// The value word of an option index 0-4; empty for any other index.
std::string ClassValueOfOption(int option);

// ---- Service classes ------------------------------------------------------------------

inline constexpr std::array<const char*, 11> kServiceClasses = {
    "Special",           "Light Engine",     "Express Passenger", "Stopping Passenger",
    "Hight-speed Freight", "Express Freight", "Standard Freight",  "Low-speed Freight",
    "Other Freight",     "Empty Stock",      "International"};
// The display word of a ServiceClass value; empty when it is no index 0-10.
std::string ServiceClassWord(std::string_view value);

// ---- ScenarioProperties.xml -----------------------------------------------------------

// The values as they stand in the file (raw: the screens decode them for display with
// tools::FixEntities).
struct ScenarioDetails {
    std::string displayName, description, briefing;  // localised, GetName
    std::string scenarioClass;                       // the ScenarioClass word
    std::string startTime;                           // seconds since midnight, may have a fraction
    std::string durationMins;
    std::string startDD, startMM, startYYYY;
    std::string season;
    std::string weatherProvider, weatherProduct, weatherBlueprintID;
    bool hasWeatherExtension = false;
    std::string extensionProvider, extensionProduct, extensionBlueprintID;
    std::string startLocation;  // the English name of the free roam start
    std::string author;
    bool hasAuthor = false;     // an "<Author d" element stands in the file

    ScenarioClass kind() const { return ScenarioClassOf(scenarioClass); }
};

// The tags in the order of the read: each search goes on from where the one before left
// off, so the first Provider after Season is the weather's. A tag that is missing leaves
// its field empty and the walk where it was.
ScenarioDetails ReadScenarioDetails(std::string_view propertiesXml, std::string_view languageTag);

// Seconds since midnight (a fraction dropped) as "HHMM"; "0000" for a text that is no
// number.
std::string SecondsToHHMM(std::string_view seconds);

// ---- Checks on opening ----------------------------------------------------------------

inline constexpr const char* kCareerWarning =
    "This is a Career Scenario and may not work if edited.\n"
    "If it is a cloned career scenario, you may edit\n"
    "it to change it to a Standard scenario.";
inline constexpr const char* kQuickDriveRefusal =
    "This is a Quick Drive scenario\n"
    "It can't be edited by the user.";

// eCareerScenarioClass anywhere in the text.
bool IsCareerScenario(std::string_view propertiesXml);
// Shows the career warning (OK only) when the text is a career scenario's; true when shown.
bool WarnIfCareer(base::Ui& ui, std::string_view propertiesXml);
// Refuses a Quick Drive template with a critical box; true when refused (the caller closes).
bool RefuseQuickDrive(base::Ui& ui, const ScenarioDetails& details);

// ---- Consists and vehicles of Scenario.xml --------------------------------------------

inline constexpr const char* kLooseConsist = "Loose Consist";
inline constexpr const char* kEmptyConsist = "Empty Consist";
inline constexpr const char* kNotShown = "Not Shown";
// A FinalDestination stretch at least this long marks a consist with a destination (red row).
inline constexpr long kDestinationStretch = 251;

struct VehicleRow {
    std::string name;
    std::string provider, product, blueprintID;                     // base asset
    std::string reskinProvider, reskinProduct, reskinBlueprintID;  // empty when no reskin
    std::string flipped;       // "0" or "1"
    std::string loadable;      // "True" or "False"
    std::string isPreloaded;   // "eTrue" or "eFalse"
    std::string uniqueNumber;
    long namePos = 0;          // position of the vehicle's "<Name" in the text
};

struct ConsistRow {
    long blockStart = 0;  // boundary k: 1, or the position of the k-th "</cConsist>"
    long blockEnd = 0;    // boundary k+1: the position of the (k+1)-th "</cConsist>"
    bool loose = true;           // no <ServiceName> in the block
    std::string serviceName;     // raw; "Loose Consist" for a loose one
    std::string dir;             // _dir, empty for a loose consist
    std::string driverEngineIndex;
    std::string serviceClass;    // the index as written
    std::string playerDriver;    // empty when the block has no <PlayerDriver
    bool driven = false;         // PlayerDriver is 1
    bool hasDestination = false; // FinalDestination stretch >= 251: the row shows red
    std::string destination;     // the destination's DisplayName, or "Not Shown"
    std::string startTime;       // HHMM
    std::vector<VehicleRow> vehicles;  // empty: the single row "Empty Consist"
};

struct ScenarioConsists {
    std::vector<ConsistRow> consists;
    int drivenConsist = -1;  // the last consist with PlayerDriver 1, -1 for none
};

// Called once per consist with (done, total); returning false stops the read, which then
// holds the consists read so far.
using ReadProgress = std::function<bool(std::size_t done, std::size_t total)>;

// The consist and vehicle tables of a scenario's XML. Every search is bounded by its
// block, so a large scenario reads in time linear in its size.
ScenarioConsists ReadConsists(std::string_view scenarioXml, std::string_view languageTag,
                              const ReadProgress& progress = {});
// One block's row (the same reading as above), for a command that changed that block.
ConsistRow ReadConsistBlock(std::string_view scenarioXml, long blockStart, long blockEnd,
                            std::string_view languageTag);

// The block boundaries: 1, then the position of each "</cConsist>".
std::vector<long> ConsistBoundaries(std::string_view scenarioXml);

// Position of consist k's opening "<cConsist d" (k from 0), 0 when there is none.
long ConsistPosition(std::string_view scenarioXml, int k);
// Position of vehicle j's "<cOwnedEntity" in consist k, 0 when there is none.
long VehiclePosition(std::string_view scenarioXml, int k, int j);
// The position just behind the "</cOwnedEntity>" that closes the stock block starting at
// `vehiclePos`, 0 when it is not closed.
long StockBlockEnd(std::string_view scenarioXml, long vehiclePos);
// The position just behind the "</cConsist>" that closes the consist starting at
// `consistPos`, 0 when it is not closed.
long ConsistEnd(std::string_view scenarioXml, long consistPos);

// Replaces the characters [start, end) (1-based, end exclusive) with `replacement`, in
// place: the text is moved once, never copied whole. False (and the text unchanged) for a
// range that does not lie in the text.
bool SpliceText(std::string& text, long start, long end, std::string_view replacement);

}  // namespace ferrolund::scenarios
