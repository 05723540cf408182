#pragma once
// The scenario lists of frmDelRoute: the scenarios of a route read from their
// ScenarioProperties.xml, with the class that colours their row, and the class table
// of all routes.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "app/app_context.h"

namespace ferrolund::routes {

enum class ScenarioKind { QuickDrive, FreeRoam, Career, Workshop, Standard, Timetable, Other };

struct ScenarioLegend {
    const char* label;  // "Quick Drive Scenario", ...
    std::uint32_t rgb;  // the colour of the row's text, 0xRRGGBB
    const char* word;   // in printed lists
};
// The legend entry of a class; Other has none (the row before it stays in force).
const ScenarioLegend* LegendOf(ScenarioKind kind);

// The class of a ScenarioProperties.xml text: its ScenarioClass, and for a standard
// scenario its WorkshopID (neither "0" nor empty makes it a Workshop scenario).
ScenarioKind ClassOf(std::string_view properties);

struct ScenarioRow {
    std::string name;
    std::string devString;  // the scenario's GUID
    std::string folder;
    std::string routeFolder;
    ScenarioKind kind = ScenarioKind::Other;
};

struct ScenarioListing {
    std::vector<ScenarioRow> rows;  // sorted by name
    std::string note;               // the single row shown instead when there are none
};

// "List Scenarios in Selected Route": the scenarios with a DevString and a name in
// `languageTag` (then English, French, Italian, German, Spanish).
ScenarioListing ListScenarios(const std::string& gameRoot, const std::string& routeFolder,
                              const std::string& languageTag = "English");

// "List Scenarios in all routes": the scenarios of every route of the index, in one list
// sorted by name; each row keeps its route folder. The walk stops between two routes when
// AbortFlag is set.
ScenarioListing ListAllScenarios(app::AppContext& ctx, const routes::RouteIndex& index);

// "List Routes with Scenario types": the fixed-width table of the count of each class
// per route, one line a route of the index.
std::string ClassTable(const std::string& gameRoot, const routes::RouteIndex& index);

}  // namespace ferrolund::routes
