#pragma once
// The screen model of frmAPConsists, "Build List of Routes & Scenarios  in .AP files":
// the .ap archives below a folder, the ScenarioProperties.xml files inside the chosen
// ones (read in memory, never unpacked), and a row of details for each chosen one: the
// route's and the scenario's folder and display name.

#include <array>
#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "app/app_context.h"
#include "routes/route_indexer.h"

namespace ferrolund::assets {

inline constexpr const char* kApConsistsCaption = "Build List of Routes & Scenarios  in .AP files";

// Told when the details are asked for before the properties files were found.
inline constexpr const char* kApOrderGuard =
    "You have already run 'Find .ap files'\n"
    "This will not work, you must use the\n"
    "'Find Scenario Properties' first.";

// A ScenarioProperties.xml found in an archive.
struct ArchivedProperties {
    std::string archive;  // the .ap file
    std::string stored;   // the entry's name in it, with backslashes
    std::string xml;      // its text
};

inline constexpr std::size_t kApDetailColumns = 5;
inline constexpr std::array<std::string_view, kApDetailColumns> kApDetailHeadings{
    "Route Folder", "Scenario Folder", "Route Name", "Scenario Name", "Archive"};

struct ApScenarioRow {
    std::string routeFolder;     // the element behind "Routes\"
    std::string scenarioFolder;  // the element behind "Scenarios\"
    std::string routeName;
    std::string scenarioName;
    std::string archive;
    std::vector<std::string> Cells() const { return {routeFolder, scenarioFolder, routeName, scenarioName, archive}; }
};

// The element that follows `word` + '\' in a stored name (either separator), compared
// without regard to case; empty when there is none.
std::string ElementBehind(std::string_view stored, std::string_view word);

// The route index as this screen's "Build Route Index" makes it: the row of "Index Route
// Properties" (nameless routes skipped, the 240 cut with the slot behind it, the first
// place left empty) from three languages only.
extern const routes::RouteIndexRule kApScreenRouteIndex;
// "Build Route Index": the prompt and extraction of "Extract RouteProperties.xml", then
// the index by kApScreenRouteIndex; cancelled, it leaves at once.
void BuildRouteIndex(app::AppContext& ctx);

class ApConsists {
public:
    std::vector<std::string> archives;           // the first list
    std::vector<ArchivedProperties> properties;  // the second list
    std::vector<ApScenarioRow> details;          // the main grid

    // "Find .ap files": every .ap below the folder, in any case, replaces the first list.
    void findArchives(app::AppContext& ctx, const std::string& folder);

    // "Find Scenario Properties": the ScenarioProperties.xml entries of the chosen
    // archives (indices into `archives`) are read and added to the second list. An
    // archive that cannot be read is reported and passed over. Ends with "All selected
    // .xml files have been added to the grid.". False when nothing was chosen.
    bool findScenarioProperties(app::AppContext& ctx, const std::vector<std::size_t>& chosen);

    // The details of the chosen properties (indices into `properties`), appended to the
    // main grid: the folders from the entry's name, the scenario's name from its text, the
    // route's name from the RouteProperties.xml of the same archive, else of the route on
    // disk. Asked for before any properties were found, it shows the order guard. Ends
    // with "All selected Scenario details have been added to the main grid.".
    bool addDetails(app::AppContext& ctx, const std::vector<std::size_t>& chosen);

    void clear();

private:
    // Route names found in the archives read, by route folder in lower case.
    std::map<std::string, std::string> archivedRouteNames_;
};

}  // namespace ferrolund::assets
