#include "screens/routes/route_listing.h"

#include "routes/scenario_list.h"
#include "tools/files.h"

namespace ferrolund::screens {

namespace {
constexpr std::size_t kFolderColumn = 70;  // where the scenario's folder starts, behind the tab
}

std::string PrintedRouteList(const std::string& gameRoot, const routes::RouteIndex& index) {
    std::string out;
    std::size_t total = 0;
    std::string word;  // a class outside the legend keeps the word of the scenario before it
    for (int r = 0; r < index.count(); ++r) {
        const std::string& folder = index.routeFolder[r];
        if (folder.empty()) continue;
        std::string scenarios = gameRoot + "\\content\\Routes\\" + folder + "\\Scenarios";
        if (!tools::FolderExists(scenarios)) {
            out += gameRoot + "\\content\\Routes\\" + folder + "\\Scenarios - can't be found\r\n";
            continue;
        }
        out += index.routeName[r] + " - " + folder + "\r\n";
        for (const routes::ScenarioRow& row : routes::ListScenarios(gameRoot, folder, "English").rows) {
            if (const routes::ScenarioLegend* legend = routes::LegendOf(row.kind)) word = legend->word;
            const std::size_t blanks = row.name.size() + 2 > kFolderColumn ? 2 : kFolderColumn - row.name.size();
            out += "\t" + row.name + std::string(blanks, ' ') + row.folder + "  " + word + "\r\n";
            ++total;
        }
    }
    out += "\r\nTotal Scenarios = " + std::to_string(total) + "\r\n";
    return out;
}

}  // namespace ferrolund::screens
