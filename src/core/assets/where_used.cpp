#include "assets/where_used.h"

#include <algorithm>
#include <filesystem>
#include <map>

#include "assets/blueprint.h"
#include "routes/route_index.h"
#include "routes/route_indexer.h"
#include "routes/route_stock.h"
#include "routes/scenario_list.h"
#include "tools/files.h"
#include "tools/host_path.h"
#include "tools/names.h"
#include "tools/serz_convert.h"
#include "tools/tags.h"
#include "tools/text_search.h"

namespace ferrolund::assets {

namespace fs = std::filesystem;

namespace {

std::vector<std::string> SubFolders(const std::string& folder) {
    std::vector<std::string> names;
    std::error_code ec;
    for (fs::directory_iterator it(tools::HostPath(folder), ec), end; !ec && it != end; it.increment(ec))
        if (it->is_directory(ec)) names.push_back(tools::SystemPath(it->path().filename()));
    return names;
}

// The routes to search: the route index, read from its file when the context holds
// none, else every folder under Content\Routes under its own name.
routes::RouteIndex KnownRoutes(app::AppContext& ctx) {
    if (ctx.routeIndex.count() > 0) return ctx.routeIndex;
    routes::RouteIndex index;
    routes::LoadRouteIndexFile(ctx, index);
    if (index.count() > 0) return index;
    for (const std::string& folder : SubFolders(ctx.gameRoot() + "\\Content\\Routes")) {
        index.routeName.push_back(folder);
        index.routeFolder.push_back(folder);
        index.routeSlot.push_back(std::to_string(index.count()));
    }
    return index;
}

// The scenario's XML: its Scenario.bin in memory, else a loose Scenario.xml.
std::string ScenarioText(app::AppContext& ctx, const std::string& folder) {
    std::string xml;
    if (tools::FileExists(folder + "\\Scenario.bin")) {
        if (!tools::SerzReadXml(ctx, folder + "\\Scenario.bin", xml)) return xml;
        return {};
    }
    return tools::ReadTextFile(folder + "\\Scenario.xml");
}

struct Search {
    app::AppContext& ctx;
    std::map<std::string, std::size_t> wanted;  // reference key to row
    std::vector<std::vector<std::string>> uses;  // per row
    std::size_t done = 0, total = 0;
    bool aborted = false;

    // Between two files: progress, events, the abort test.
    bool next() {
        ++done;
        if (ctx.ui) {
            const int percent = static_cast<int>(100 * done / std::max<std::size_t>(total, 1));
            ctx.ui->progress(percent, "Processed " + std::to_string(percent) + " %");
            ctx.ui->pump();
        }
        aborted = aborted || ctx.abortFlag;
        return !aborted;
    }
    void note(const std::string& key, const std::string& place) {
        const auto it = wanted.find(key);
        if (it == wanted.end()) return;
        std::vector<std::string>& list = uses[it->second];
        if (list.empty() || list.back() != place) list.push_back(place);
    }
};

}  // namespace

std::string ReferenceKey(const std::string& provider, const std::string& product, const std::string& blueprintId) {
    std::string id = blueprintId;
    if (id.size() >= 4 && (tools::NameKey(id.substr(id.size() - 4)) == ".xml" ||
                           tools::NameKey(id.substr(id.size() - 4)) == ".bin"))
        id.erase(id.size() - 4);
    std::string key = tools::NameKey(provider + "\\" + product + "\\" + id);
    std::replace(key.begin(), key.end(), '/', '\\');
    return key;
}

WhereUsedOutcome WhereIsItUsed(app::AppContext& ctx, const std::vector<AssetRow>& rows) {
    WhereUsedOutcome outcome;
    Search search{ctx, {}, std::vector<std::vector<std::string>>(rows.size())};
    for (std::size_t i = 0; i < rows.size(); ++i)
        if (!rows[i].provider.empty())
            search.wanted.emplace(ReferenceKey(rows[i].provider, rows[i].product, rows[i].path), i);

    const routes::RouteIndex index = KnownRoutes(ctx);
    std::vector<routes::StockScenario> scenarios;
    for (int r = 0; r < index.count(); ++r) {
        if (index.routeFolder[r].empty()) continue;
        for (const routes::ScenarioRow& row : routes::ListScenarios(ctx.gameRoot(), index.routeFolder[r]).rows)
            scenarios.push_back({index.routeName[r], index.routeFolder[r], row});
    }
    const std::string assets = ctx.gameRoot() + "\\Assets";
    std::vector<std::string> consists;
    for (const std::string& provider : SubFolders(assets))
        for (const std::string& product : SubFolders(assets + "\\" + provider)) {
            const std::string preload = assets + "\\" + provider + "\\" + product + "\\PreLoad";
            std::error_code ec;
            for (fs::directory_iterator it(tools::HostPath(preload), ec), end; !ec && it != end; it.increment(ec)) {
                const std::string name = tools::SystemPath(it->path().filename());
                if (it->is_regular_file(ec) && tools::NameKey(it->path().extension().string()) == ".bin")
                    consists.push_back(preload + "\\" + name);
            }
        }
    search.total = scenarios.size() + consists.size();

    for (const routes::StockScenario& s : scenarios) {
        if (!search.next()) break;
        const std::string folder = ctx.gameRoot() + "\\Content\\Routes\\" + s.routeFolder + "\\Scenarios\\" + s.row.folder;
        const std::string xml = ScenarioText(ctx, folder);
        if (xml.empty()) continue;
        ++outcome.scenariosRead;
        const std::string place = "Route: " + s.routeName + " - Scenario: " + s.row.name + " (" + s.row.folder + ")";
        for (const routes::StockItem& item : routes::GetStock(xml)) {
            const std::size_t a = item.path.find('\\');
            const std::size_t b = a == std::string::npos ? a : item.path.find('\\', a + 1);
            if (b == std::string::npos) continue;
            search.note(ReferenceKey(item.path.substr(0, a), item.path.substr(a + 1, b - a - 1), item.path.substr(b + 1)),
                        place);
        }
    }
    for (const std::string& file : consists) {
        if (search.aborted || !search.next()) break;
        std::string xml;
        if (tools::SerzReadXml(ctx, file, xml) || xml.empty()) continue;
        ++outcome.consistsRead;
        std::string name;
        tools::GetName(xml, name, ctx.languageTag());
        const std::string place = "PreLoad consist: " + name + " (" + file + ")";
        for (long at = tools::InStr(xml, "<Provider"); at > 0; at = tools::InStr(at + 1, xml, "<Provider"))
            if (const auto ref = ReadTriple(xml, at)) search.note(ReferenceKey(ref->provider, ref->product, ref->blueprintId), place);
    }
    if (ctx.ui) ctx.ui->progress(-1, {});
    outcome.aborted = search.aborted;

    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (rows[i].provider.empty()) continue;
        outcome.report += "Where is it used? " + JoinRowPath(rows[i].provider, rows[i].product, rows[i].path) + "\r\n";
        if (search.uses[i].empty()) outcome.report += "  Not used in any scenario or PreLoad consist\r\n";
        for (const std::string& place : search.uses[i]) outcome.report += "  " + place + "\r\n";
        outcome.uses += search.uses[i].size();
        outcome.report += "\r\n";
    }
    if (outcome.aborted) outcome.report += "The search was stopped before its end.\r\n";
    return outcome;
}

}  // namespace ferrolund::assets
