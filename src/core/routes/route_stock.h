#pragma once
// The rolling stock of scenarios: every blueprint a Scenario.bin names, read by one loop
// over the scenarios that the stock commands of frmDelRoute parametrise, and the stock
// lists of the report grid.

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "app/app_context.h"
#include "routes/route_check_command.h"
#include "routes/scenario_list.h"

namespace ferrolund::routes {

// The lines of Templates\DefaultStock.txt that are read: the file may be longer.
inline constexpr std::size_t kDefaultStockLines = 211;
// The second column of a stock row whose blueprint is one of the default stock.
inline constexpr const char* kDefaultStockMark = "Default stock";

// A blueprint named by a scenario: "Provider\Product\path", the path ending in "bin".
struct StockItem {
    std::string path;
    long position = 0;  // of its "<BlueprintID d:type" in the text, 1-based
};

// GetStock: each "<BlueprintID d:type" of a scenario's XML, its value repaired by
// FixEntities; the Provider and Product of the nearest "<Provider" before it, repaired
// too; a value ending in "xml" made "bin". Empty values are passed over.
std::vector<StockItem> GetStock(std::string_view scenarioXml);

// The blueprints that count as default stock: the lines of AppRoot\Templates\DefaultStock.txt
// up to its 211th, blank ones and notes (a line starting with ';') left out. An entry is a
// blueprint path, or a folder ending in '\' for every blueprint below it. No file gives
// an empty list.
std::vector<std::string> ReadDefaultStock(app::AppContext& ctx);
// kDefaultStockMark when the path is in the list, or below a folder of it (compared
// without regard to case), else "".
std::string DefaultMark(const std::vector<std::string>& defaults, std::string_view path);

// Mode 6 of the report grid: path and default mark of each blueprint of a scenario,
// sorted, each path once without regard to case. Heading "Rolling stock used in " + name.
ReportListing ScenarioStockRows(std::string_view scenarioXml, const std::vector<std::string>& defaults,
                                const std::string& scenarioName);

// A vehicle's blueprint and what tells the "empty", "door" and such variants apart.
// CheckStock reads no blueprint whose file name ends in one of these before its
// extension (compared without regard to case).
bool IsStockVariant(std::string_view path);

// Mode 7 of the report grid: for each "<UniqueNumber" of the text with at most nine
// characters, the number, the next Name, and the vehicle's flag: its default mark.
// Neighbouring rows of one name with different flags are joined, numbers and flags
// separated by " / ". Heading "Rolling Stock Used in this Scenario:-".
ReportListing WagonNumberRows(std::string_view scenarioXml, const std::vector<std::string>& defaults);

// One scenario the stock loop reads.
struct StockScenario {
    std::string routeName;
    std::string routeFolder;
    ScenarioRow row;
};

// The scenarios of a grid listing, with the route names of the index.
std::vector<StockScenario> StockScenarios(const std::vector<ScenarioRow>& rows, const RouteIndex& index);

// The one loop of the stock commands: each scenario's Scenario.bin read as XML, its
// stock handed to `visit`, with the progress bar and the abort test between scenarios.
// A scenario without Scenario.bin, or one that cannot be read, is counted in `skipped`.
struct StockLoop {
    std::size_t scenariosRead = 0;
    std::size_t skipped = 0;
    bool aborted = false;
};
using StockVisit =
    std::function<void(const StockScenario& scenario, std::string_view xml, const std::vector<StockItem>& stock)>;
StockLoop ForEachScenarioStock(app::AppContext& ctx, const std::vector<StockScenario>& scenarios,
                               const StockVisit& visit);

// "List Stock used by selected route" (mode 6): path, default mark, scenario name and
// scenario folder for each blueprint of each scenario. Suffix "_Stock.csv".
ReportListing ListRouteStock(app::AppContext& ctx, const std::string& routeName,
                             const std::vector<StockScenario>& scenarios, StockLoop* loop = nullptr);

// "List Stock missing in all scenarios" (mode 16): each blueprint not found under
// GameRoot\Assets, even after FixEntities, as the row path, route name, scenario name (the
// grid's commands work on the first column); TempFiles\Test.csv, begun anew for the run,
// gets the same as comma-separated lines route name, scenario name, path.
ReportListing ListMissingStock(app::AppContext& ctx, const std::vector<StockScenario>& scenarios,
                               StockLoop* loop = nullptr);

// "List ALL rolling stock used by all routes" (mode 10): the scenarios of every route of
// the index, every blueprint once, sorted, without regard to case.
ReportListing ListAllRoutesStock(app::AppContext& ctx, const RouteIndex& index, StockLoop* loop = nullptr);

// HasItLights: the lamps a vehicle's blueprint carries among its children, as the head-
// and tail-light transforms fit them ("2 head lamps (Express Passenger), 1 tail lamp"),
// or "No lamps".
std::string HasItLights(std::string_view blueprintXml);

// "List Stock used with wagon numbers" (mode 7): the wagon number rows of each scenario,
// each row with two columns more from CheckStock: the numbering list (CsvFile) that the
// vehicle's blueprint names, or "No number list", and its lamps (HasItLights); for a
// variant, or a blueprint that is not there, both are empty. Suffix "_Numbers.csv".
ReportListing ListWagonNumbers(app::AppContext& ctx, const std::string& routeName,
                               const std::vector<StockScenario>& scenarios, StockLoop* loop = nullptr);

// "List  items used by selected Scenario": for each scenario its stock (mode 6), then the
// assets of its Scenery folder (mode 9). A scenario without Scenario.bin ends the command
// with a message.
struct ScenarioItemLists {
    std::vector<ReportListing> stock;   // mode 6, one a scenario
    std::vector<ReportListing> assets;  // mode 9, one a scenario
    bool stopped = false;
};
ScenarioItemLists ListScenarioItems(app::AppContext& ctx, const std::string& routeFolder,
                                    const std::vector<ScenarioRow>& scenarios);

// "Remove Duplicate Rows" of the missing stock screen: the rows sorted, then walked from
// the end, each removed when it equals the row above it in every column. Gives the rows left.
std::size_t RemoveDuplicateRows(std::vector<std::vector<std::string>>& rows);

// The check of frmFindLoco: each "<cConsistTemplateEntry" of Content\ConsistTemplates.bin
// as path + " found in Consist " + the consist's name, and + " is not used in any
// scenarios" when `scenarioStock` (paths as GetStock gives them) does not name it,
// compared without regard to case. With `ignoreListed` the entries that scenarios use
// are left out. A consist without a name is "#" and its number from 1. False, after a
// message, when the file is missing or cannot be read.
bool CheckConsistTemplates(app::AppContext& ctx, const std::vector<std::string>& scenarioStock, bool ignoreListed,
                           std::vector<std::string>& lines);

}  // namespace ferrolund::routes
