#include "routes/route_stock.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <unordered_map>

#include "routes/route_check.h"
#include "services/report_table.h"
#include "tools/codepage.h"
#include "tools/files.h"
#include "tools/host_path.h"
#include "tools/serz_convert.h"
#include "tools/tags.h"
#include "tools/text_repair.h"
#include "tools/text_search.h"

namespace ferrolund::routes {

using tools::InStr;

namespace {

constexpr const char* kModule = "frmDelRoute";

// "Provider\Product\BlueprintID", each part repaired, a last "xml" made "bin".
std::string StockPath(std::string_view provider, std::string_view product, std::string_view blueprint) {
    std::string path = tools::FixEntitiesCopy(provider) + "\\" + tools::FixEntitiesCopy(product) + "\\" +
                       tools::FixEntitiesCopy(blueprint);
    if (path.size() >= 3 && tools::UpperCp1252(std::string_view(path).substr(path.size() - 3)) == "XML")
        path.replace(path.size() - 3, 3, "bin");
    return path;
}

// GetProvider: the Provider and Product of the nearest "<Provider" in front of `pos`.
void GetProvider(std::string_view xml, long pos, std::string& provider, std::string& product) {
    provider.clear();
    product.clear();
    long at = tools::InStrRev(xml, "<Provider", pos);
    if (at <= 0) return;
    tools::GetDetail(xml, at, "Provider", provider);
    if (at > 0) tools::GetDetail(xml, at, "Product", product);
}

// A vehicle of the wagon number list.
struct Vehicle {
    std::string number;
    std::string name;
    std::string path;  // its blueprint, "Provider\Product\...bin", or empty
};

std::vector<Vehicle> NumberedVehicles(std::string_view xml) {
    std::vector<Vehicle> vehicles;
    long pos = 1;
    while ((pos = InStr(pos, xml, "<UniqueNumber")) > 0) {
        Vehicle v;
        tools::GetDetail(xml, pos, "UniqueNumber", v.number);
        if (pos <= 0) break;
        if (v.number.size() > 9) continue;
        long at = InStr(pos, xml, "<Name");
        if (at <= 0) break;
        tools::GetDetail(xml, at, "Name", v.name);
        if (at <= 0) break;
        v.name = tools::FixEntitiesCopy(v.name);
        // The vehicle's own blueprint stands in front of its name.
        long ref = tools::InStrRev(xml, "<BlueprintID>", at);
        if (ref > 0) {
            std::string provider, product, blueprint;
            tools::GetDetail(xml, ref, "Provider", provider);
            if (ref > 0) tools::GetDetail(xml, ref, "Product", product);
            if (ref > 0) tools::GetDetail(xml, ref, "BlueprintID", blueprint);
            if (!blueprint.empty()) v.path = StockPath(provider, product, blueprint);
        }
        vehicles.push_back(std::move(v));
        pos = at;
    }
    return vehicles;
}

// Neighbouring rows of one name (column 1) whose flags (column 2) differ become one row,
// the differing columns joined by " / ".
void JoinNeighbours(std::vector<std::vector<std::string>>& rows) {
    std::vector<std::vector<std::string>> joined;
    for (auto& row : rows) {
        if (!joined.empty()) {
            std::vector<std::string>& last = joined.back();
            if (last[1] == row[1] && last[2] != row[2]) {
                for (std::size_t c = 0; c < row.size(); ++c)
                    if (last[c] != row[c]) last[c] += " / " + row[c];
                continue;
            }
        }
        joined.push_back(std::move(row));
    }
    rows = std::move(joined);
}

std::string AssetsFile(const app::AppContext& ctx, const std::string& stockPath) {
    return ctx.gameRoot() + "\\Assets\\" + stockPath;
}

// The file under GameRoot\Assets as written, or after FixEntities.
bool StockPresent(const app::AppContext& ctx, const std::string& stockPath) {
    const std::string file = AssetsFile(ctx, stockPath);
    return tools::FileExists(file) || tools::FileExists(tools::FixEntitiesCopy(file));
}

// CheckStock's reading of a vehicle's blueprint: its numbering list and its lamps.
struct StockDetails {
    std::string numberList;
    std::string lamps;
};

StockDetails CheckStock(app::AppContext& ctx, const std::string& stockPath) {
    if (stockPath.empty() || IsStockVariant(stockPath)) return {};
    const std::string file = AssetsFile(ctx, stockPath);
    if (!tools::FileExists(file)) return {};
    std::string xml;
    if (const base::Status failed = tools::SerzReadXml(ctx, file, xml)) {
        ctx.report(*failed, kModule);
        return {};
    }
    std::string csv;
    long pos = InStr(xml, "<RailVehicleComponent");
    if (pos > 0) tools::GetDetail(xml, pos, "CsvFile", csv);
    csv = std::string(tools::TrimBlanks(csv));
    return {csv.empty() ? "No number list" : tools::FixEntitiesCopy(csv), HasItLights(xml)};
}

std::string ScenarioFolderPath(const app::AppContext& ctx, const std::string& routeFolder, const std::string& folder) {
    return ctx.gameRoot() + "\\Content\\Routes\\" + routeFolder + "\\Scenarios\\" + folder;
}

void Finish(StockLoop* out, const StockLoop& loop) {
    if (out) *out = loop;
}

}  // namespace

std::vector<StockItem> GetStock(std::string_view xml) {
    std::vector<StockItem> items;
    long pos = 1;
    long hit;
    while ((hit = InStr(pos, xml, "<BlueprintID d:type")) > 0) {
        const long open = InStr(hit, xml, ">");
        if (open <= 0) break;
        const long close = InStr(open + 1, xml, "<");
        if (close <= 0) break;
        pos = close;
        const std::string_view value = tools::Mid(xml, open + 1, close - open - 1);
        if (value.empty()) continue;
        std::string provider, product;
        GetProvider(xml, hit, provider, product);
        items.push_back({StockPath(provider, product, value), hit});
    }
    return items;
}

std::vector<std::string> ReadDefaultStock(app::AppContext& ctx) {
    std::vector<std::string> lines;
    const std::string text = tools::ReadTextFile(ctx.appPath("Templates\\DefaultStock.txt"));
    std::size_t at = 0, read = 0;
    while (at < text.size() && read < kDefaultStockLines) {
        std::size_t end = text.find('\n', at);
        if (end == std::string::npos) end = text.size();
        std::string line = text.substr(at, end - at);
        if (!line.empty() && line.back() == '\r') line.pop_back();
        ++read;
        line = std::string(tools::TrimBlanks(line));
        if (!line.empty() && line.front() != ';') lines.push_back(std::move(line));
        at = end + 1;
    }
    return lines;
}

std::string DefaultMark(const std::vector<std::string>& defaults, std::string_view path) {
    const std::string upper = tools::UpperCp1252(path);
    for (const std::string& d : defaults) {
        const std::string entry = tools::UpperCp1252(d);
        // An entry ending in '\' stands for every blueprint below that folder.
        const bool folder = entry.back() == '\\';
        if (folder ? upper.compare(0, entry.size(), entry) == 0 : upper == entry) return kDefaultStockMark;
    }
    return {};
}

ReportListing ScenarioStockRows(std::string_view xml, const std::vector<std::string>& defaults,
                                const std::string& scenarioName) {
    ReportListing listing;
    listing.heading = "Rolling stock used in " + scenarioName;
    std::vector<std::string> paths;
    for (StockItem& item : GetStock(xml)) paths.push_back(std::move(item.path));
    for (std::string& path : SortUnique(std::move(paths))) {
        std::string mark = DefaultMark(defaults, path);
        listing.rows.push_back({std::move(path), std::move(mark)});
    }
    return listing;
}

bool IsStockVariant(std::string_view path) {
    static constexpr std::string_view kSuffixes[] = {"_MT", "_DO", "_PO", "_ND", "_DF", "_DR", "_DEAD"};
    const std::size_t dot = path.rfind('.');
    const std::size_t slash = path.rfind('\\');
    std::string_view stem = path.substr(0, dot == std::string_view::npos ? path.size() : dot);
    if (slash != std::string_view::npos && slash < stem.size()) stem.remove_prefix(slash + 1);
    const std::string upper = tools::UpperCp1252(stem);
    for (std::string_view suffix : kSuffixes)
        if (upper.size() > suffix.size() && std::string_view(upper).substr(upper.size() - suffix.size()) == suffix)
            return true;
    return false;
}

ReportListing WagonNumberRows(std::string_view xml, const std::vector<std::string>& defaults) {
    ReportListing listing;
    listing.heading = "Rolling Stock Used in this Scenario:-";
    for (Vehicle& v : NumberedVehicles(xml))
        listing.rows.push_back({std::move(v.number), std::move(v.name), DefaultMark(defaults, v.path)});
    JoinNeighbours(listing.rows);
    return listing;
}

std::vector<StockScenario> StockScenarios(const std::vector<ScenarioRow>& rows, const RouteIndex& index) {
    std::vector<StockScenario> scenarios;
    for (const ScenarioRow& row : rows) {
        StockScenario s{row.routeFolder, row.routeFolder, row};
        for (std::size_t r = 0; r < index.routeFolder.size() && r < index.routeName.size(); ++r)
            if (tools::UpperCp1252(index.routeFolder[r]) == tools::UpperCp1252(row.routeFolder)) {
                s.routeName = index.routeName[r];
                break;
            }
        scenarios.push_back(std::move(s));
    }
    return scenarios;
}

StockLoop ForEachScenarioStock(app::AppContext& ctx, const std::vector<StockScenario>& scenarios,
                               const StockVisit& visit) {
    StockLoop loop;
    for (std::size_t i = 0; i < scenarios.size(); ++i) {
        const StockScenario& s = scenarios[i];
        if (ctx.ui) {
            const int percent = static_cast<int>((i + 1) * 100 / scenarios.size());
            ctx.ui->progress(percent, "Scenarios " + std::to_string(percent) + " %");
            ctx.ui->pump();
        }
        if (ctx.abortFlag) {
            loop.aborted = true;
            break;
        }
        const std::string bin = ScenarioFolderPath(ctx, s.routeFolder, s.row.folder) + "\\Scenario.bin";
        if (!tools::FileExists(bin)) {
            ++loop.skipped;
            continue;
        }
        std::string xml;
        if (const base::Status failed = tools::SerzReadXml(ctx, bin, xml)) {
            ctx.report(*failed, kModule);
            ++loop.skipped;
            continue;
        }
        ++loop.scenariosRead;
        visit(s, xml, GetStock(xml));
    }
    return loop;
}

namespace {
// The stock lists of a route are headed by its name.
ReportListing StockListing(const std::string& routeName, const char* suffix) {
    return {"Rolling Stock Used in " + routeName, suffix, {}, false};
}
}  // namespace

ReportListing ListRouteStock(app::AppContext& ctx, const std::string& routeName,
                             const std::vector<StockScenario>& scenarios, StockLoop* loop) {
    ReportListing listing = StockListing(routeName, "_Stock.csv");
    const std::vector<std::string> defaults = ReadDefaultStock(ctx);
    const StockVisit visit = [&](const StockScenario& s, std::string_view, const std::vector<StockItem>& stock) {
        for (const StockItem& item : stock)
            listing.rows.push_back({item.path, DefaultMark(defaults, item.path), s.row.name, s.row.folder});
    };
    Finish(loop, ForEachScenarioStock(ctx, scenarios, visit));
    return listing;
}

ReportListing ListMissingStock(app::AppContext& ctx, const std::vector<StockScenario>& scenarios, StockLoop* loop) {
    ReportListing listing;
    listing.heading = "Rolling Stock missing in all Scenarios";
    listing.missingItems = true;
    std::unordered_map<std::string, bool> present;
    services::ReportTable csv;
    const StockVisit visit = [&](const StockScenario& s, std::string_view, const std::vector<StockItem>& stock) {
        for (const StockItem& item : stock) {
            auto known = present.find(item.path);
            if (known == present.end()) known = present.emplace(item.path, StockPresent(ctx, item.path)).first;
            if (known->second) continue;
            csv.rows.push_back({s.routeName, s.row.name, item.path});
            listing.rows.push_back({item.path, s.routeName, s.row.name});
        }
    };
    Finish(loop, ForEachScenarioStock(ctx, scenarios, visit));
    const std::string file = ctx.appPath("TempFiles\\Test.csv");
    tools::CreatePath(ctx.appPath("TempFiles"));
    if (!tools::WriteTextFile(ctx, file, services::CsvText(csv)))
        ctx.ui->message("The list could not be written to " + file + ".", base::Icon::Exclamation);
    return listing;
}

ReportListing ListAllRoutesStock(app::AppContext& ctx, const RouteIndex& index, StockLoop* loop) {
    ReportListing listing;
    listing.heading = "All Rolling Stock used by all Routes";
    listing.suffix = "_AllStock.csv";
    std::vector<ScenarioRow> rows;
    for (const std::string& folder : index.routeFolder)
        for (ScenarioRow& row : ListScenarios(ctx.gameRoot(), folder, ctx.prefs.language).rows)
            rows.push_back(std::move(row));
    std::vector<std::string> paths;
    const StockVisit visit = [&](const StockScenario&, std::string_view, const std::vector<StockItem>& stock) {
        for (const StockItem& item : stock) paths.push_back(item.path);
    };
    Finish(loop, ForEachScenarioStock(ctx, StockScenarios(rows, index), visit));
    for (std::string& path : SortUnique(std::move(paths))) listing.rows.push_back({std::move(path)});
    return listing;
}

std::string HasItLights(std::string_view blueprintXml) {
    // The lamp models that the head- and tail-light transforms fit as children, and the
    // train types they add to the vehicle's name.
    static constexpr std::pair<std::string_view, std::string_view> kTrainTypes[] = {
        {"_XP-Pass", "Express Passenger"},   {"_Stop-Pass", "Stopping Passenger"},
        {"_XP-Perishable", "Express Perishable"}, {"_XP-Freight", "Express Freight"},
        {"_Thru-Freight", "Thru Freight"},   {"_Light-Engine", "Light Engine"},
        {"_Parcel", "Parcels"},              {"_Thru-Mineral", "Thru Mineral"},
        {"_Stop-Freight", "Stopping Freight"},
    };
    const std::string upper = tools::UpperCp1252(blueprintXml);
    const std::size_t open = upper.find("<CHILDREN>");
    const std::size_t close = upper.find("</CHILDREN>", open == std::string::npos ? 0 : open);
    const std::string_view children =
        open == std::string::npos || close == std::string::npos
            ? std::string_view()
            : std::string_view(upper).substr(open, close - open);
    auto count = [&](std::string_view model) {
        std::size_t n = 0;
        for (std::size_t at = children.find(model); at != std::string_view::npos; at = children.find(model, at + 1)) ++n;
        return n;
    };
    const std::size_t heads = count("OILLAMP_WHITE_DRB"), tails = count("ZUGSCHLUSSLATERNE");
    if (heads == 0 && tails == 0) return "No lamps";
    std::string text;
    if (heads > 0) {
        text = std::to_string(heads) + (heads == 1 ? " head lamp" : " head lamps");
        long at = 1;
        std::string name;
        tools::GetDetail(blueprintXml, at, "Name", name);
        for (const auto& [suffix, type] : kTrainTypes)
            if (name.size() >= suffix.size() &&
                tools::EqualsIgnoreCase(std::string_view(name).substr(name.size() - suffix.size()), suffix))
                text += std::string(" (") + std::string(type) + ")";
    }
    if (tails > 0) text += (text.empty() ? "" : ", ") + std::to_string(tails) + (tails == 1 ? " tail lamp" : " tail lamps");
    return text;
}

ReportListing ListWagonNumbers(app::AppContext& ctx, const std::string& routeName,
                               const std::vector<StockScenario>& scenarios, StockLoop* loop) {
    ReportListing listing = StockListing(routeName, "_Numbers.csv");
    const std::vector<std::string> defaults = ReadDefaultStock(ctx);
    std::map<std::string, StockDetails> details;  // CheckStock's reading, by blueprint
    const StockVisit visit = [&](const StockScenario&, std::string_view xml, const std::vector<StockItem>&) {
        std::vector<std::vector<std::string>> rows;
        for (Vehicle& v : NumberedVehicles(xml)) {
            auto known = details.find(v.path);
            if (known == details.end()) known = details.emplace(v.path, CheckStock(ctx, v.path)).first;
            rows.push_back({std::move(v.number), std::move(v.name), DefaultMark(defaults, v.path),
                            known->second.numberList, known->second.lamps});
        }
        JoinNeighbours(rows);
        for (auto& row : rows) listing.rows.push_back(std::move(row));
    };
    Finish(loop, ForEachScenarioStock(ctx, scenarios, visit));
    return listing;
}

ScenarioItemLists ListScenarioItems(app::AppContext& ctx, const std::string& routeFolder,
                                    const std::vector<ScenarioRow>& scenarios) {
    ScenarioItemLists lists;
    const std::vector<std::string> defaults = ReadDefaultStock(ctx);
    for (const ScenarioRow& row : scenarios) {
        ctx.ui->pump();
        if (ctx.abortFlag) {
            lists.stopped = true;
            break;
        }
        const std::string folder = ScenarioFolderPath(ctx, routeFolder, row.folder);
        const std::string bin = folder + "\\Scenario.bin";
        if (!tools::FileExists(bin)) {
            ctx.ui->message("There is no scenario.bin file in this folder.\noperation aborted.",
                            base::Icon::Exclamation);
            lists.stopped = true;
            break;
        }
        std::string xml;
        if (const base::Status failed = tools::SerzReadXml(ctx, bin, xml)) {
            ctx.report(*failed, kModule);
            continue;
        }
        ReportListing stock = ScenarioStockRows(xml, defaults, row.name);
        stock.heading = "Rolling-stock used in " + row.name;
        if (stock.rows.empty())
            ctx.ui->message(
                "This appears to be a Quick Drive scenario, as such there\nis no rolling stock listed for "
                "the route.",
                base::Icon::Information);
        else
            lists.stock.push_back(std::move(stock));

        ReportListing assets;
        assets.heading = "Assets used in " + row.name;
        const TileFolder scenery{folder + "\\Scenery", "(Scenery Item)", "Scenery\\", "Scenery "};
        if (!std::filesystem::is_directory(tools::HostPath(scenery.folder))) {
            assets.rows.push_back({"There was no Scenery file with this scenario"});
        } else {
            tools::CreatePath(ctx.appPath("TempFiles\\Scenery"));
            CheckRun run;
            CheckForFiles(ctx, scenery, WalkRule{}, run);
            for (std::string& path : SortUnique(run.usedAssets)) {
                std::string kind = run.kindOf[path];
                assets.rows.push_back({std::move(path), std::move(kind)});
            }
            if (run.aborted) {
                lists.assets.push_back(std::move(assets));
                lists.stopped = true;
                break;
            }
        }
        lists.assets.push_back(std::move(assets));
    }
    return lists;
}

std::size_t RemoveDuplicateRows(std::vector<std::vector<std::string>>& rows) {
    std::sort(rows.begin(), rows.end());
    for (std::size_t r = rows.size(); r-- > 1;)
        if (rows[r] == rows[r - 1]) rows.erase(rows.begin() + static_cast<long>(r));
    return rows.size();
}

bool CheckConsistTemplates(app::AppContext& ctx, const std::vector<std::string>& scenarioStock, bool ignoreListed,
                           std::vector<std::string>& lines) {
    lines.clear();
    const std::string file = ctx.gameRoot() + "\\Content\\ConsistTemplates.bin";
    if (!tools::FileExists(file)) {
        ctx.ui->message(file + "\ncan't be found, so the consists can't be checked.", base::Icon::Exclamation);
        return false;
    }
    std::string xml;
    if (const base::Status failed = tools::SerzReadXml(ctx, file, xml)) {
        ctx.ui->message(file + "\ncould not be read: " + failed->description, base::Icon::Exclamation);
        return false;
    }
    std::unordered_map<std::string, bool> used;
    for (const std::string& path : scenarioStock) used.emplace(tools::UpperCp1252(path), true);
    long consistStart = 0;
    std::string consistName;
    int consists = 0;
    long hit = 1;
    while ((hit = InStr(hit, xml, "<cConsistTemplateEntry")) > 0) {
        // The consist that holds the entry, and its name, read once for all its entries.
        const long start = tools::InStrRev(xml, "<cConsistTemplate ", hit);
        if (start != consistStart || consists == 0) {
            consistStart = start;
            ++consists;
            consistName.clear();
            long at = start > 0 ? start : 1;
            tools::GetName(xml, at, consistName, ctx.prefs.language);
            if (at <= 0 || at > hit || consistName.empty()) consistName = "#" + std::to_string(consists);
            consistName = tools::FixEntitiesCopy(consistName);
        }
        std::string provider, product, blueprint;
        long at = hit;
        tools::GetDetail(xml, at, "Provider", provider);
        if (at > 0) tools::GetDetail(xml, at, "Product", product);
        if (at > 0) tools::GetDetail(xml, at, "BlueprintID", blueprint);
        hit = at > 0 ? at : hit + 1;
        if (blueprint.empty()) continue;
        const std::string path = StockPath(provider, product, blueprint);
        const bool inScenarios = used.count(tools::UpperCp1252(path)) > 0;
        if (inScenarios && ignoreListed) continue;
        lines.push_back(path + " found in Consist " + consistName +
                        (inScenarios ? std::string() : std::string(" is not used in any scenarios")));
    }
    return true;
}

}  // namespace ferrolund::routes
