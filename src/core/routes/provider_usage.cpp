#include "routes/provider_usage.h"

#include <algorithm>
#include <filesystem>
#include <unordered_set>

#include "services/scan_path.h"
#include "tools/codepage.h"
#include "tools/files.h"
#include "tools/host_path.h"
#include "tools/tags.h"
#include "tools/text_repair.h"
#include "tools/text_search.h"

namespace ferrolund::routes {

using tools::InStr;

namespace {

constexpr const char* kModule = "frmDelRoute";

std::string RoutePath(app::AppContext& ctx, const std::string& routeFolder) {
    return ctx.gameRoot() + "\\Content\\Routes\\" + routeFolder;
}

// The grid's rows that stand for a route whose scenery is not loose.
std::string PackedSceneryRow(app::AppContext& ctx, const std::string& routePath) {
    const std::string scenery = routePath + "\\Scenery";
    if (!std::filesystem::is_directory(tools::HostPath(scenery)))
        return "No Scenary folder found - Route must be in .ap folder";
    if (ListTiles(ctx, scenery).empty()) return "No Scenary found - Route must be in .ap folder";
    return {};
}

}  // namespace

std::optional<std::vector<ProviderProduct>> ProvidersOfRoute(app::AppContext& ctx, const std::string& routeFolder) {
    ctx.currentRoutine = "Command14_Click";
    const std::string file = RoutePath(ctx, routeFolder) + "\\RouteProperties.xml";
    if (!tools::FileExists(file)) {
        ctx.ui->message("There is no RouteProperties.xml file for this route\ntherefore the route is invalid and can't "
                        "be used.",
                        base::Icon::Exclamation);
        return std::nullopt;
    }
    const std::string text = tools::ReadTextFile(file);
    std::vector<ProviderProduct> pairs;
    const long from = InStr(text, "<RBlueprintSetPreLoad>");
    if (from == 0) return pairs;
    const long to = InStr(from, text, "</RBlueprintSetPreLoad>");
    const std::string_view block =
        std::string_view(text).substr(static_cast<std::size_t>(from - 1),
                                      to > 0 ? static_cast<std::size_t>(to - from) : std::string_view::npos);
    for (long at = InStr(block, "<Provider "); at > 0; at = InStr(at + 1, block, "<Provider ")) {
        ProviderProduct pp;
        long pos = at;
        tools::GetDetail(block, pos, "Provider", pp.provider);
        if (pos == 0) break;
        tools::GetDetail(block, pos, "Product", pp.product);
        if (pos == 0) break;
        pairs.push_back(std::move(pp));
    }
    std::stable_sort(pairs.begin(), pairs.end(), [](const ProviderProduct& a, const ProviderProduct& b) {
        return std::pair{tools::UpperCp1252(a.provider), tools::UpperCp1252(a.product)} <
               std::pair{tools::UpperCp1252(b.provider), tools::UpperCp1252(b.product)};
    });
    return pairs;
}

RouteCheckOutcome ItemsOfProvider(app::AppContext& ctx, const CheckedRoute& route, const ProviderProduct& pp,
                                  const CheckAnswers& answers) {
    ctx.currentRoutine = "Command22_Click";
    RouteCheckOutcome out;
    const std::string routePath = RoutePath(ctx, route.folder);
    WalkRule rule;
    rule.onlyProvider = pp.provider;
    rule.onlyProduct = pp.product;
    rule.tellEmptyFolder = false;
    if (!WalkRoute(ctx, route, rule, out)) return out;

    std::vector<std::string> texts = out.uniqueAssets;
    if (const std::string packed = PackedSceneryRow(ctx, routePath); !packed.empty()) texts.push_back(packed);
    texts = SortUnique(std::move(texts));
    ReportListing items{ctx.langText(220, "Items Used by Provider", kModule), {}, {}, false};
    for (const std::string& text : texts) {
        const auto kind = out.run.kindOf.find(text);
        items.rows.push_back({text, kind == out.run.kindOf.end() ? std::string() : kind->second});
    }
    if (items.rows.empty())
        items.rows.push_back({ctx.langText(196, "No shapes used by this provider/product", kModule)});
    out.lists.push_back(std::move(items));

    CheckTexturesOf(ctx, routePath, answers, rule, out);
    return out;
}

std::vector<std::string> UsedFiles(const RouteCheckOutcome& items) {
    std::vector<std::string> used;
    auto add = [&](const std::string& file) {
        used.push_back(tools::UpperCp1252(file));
        used.push_back(tools::UpperCp1252(tools::FixEntitiesCopy(file)));
    };
    for (const std::string& file : items.uniqueAssets) add(file);
    for (const GeometryFile& g : items.textures.geometry) add(g.file);
    for (const auto* list : {&items.textures.textures, &items.textures.audio, &items.textures.proxies})
        for (const std::string& file : *list) add(file);
    return used;
}

UnusedFiles ItemsNotUsed(app::AppContext& ctx, const ProviderProduct& pp, const std::vector<std::string>& used,
                         std::optional<bool> addDel) {
    ctx.currentRoutine = "Command23_Click";
    UnusedFiles out;
    static constexpr const char* kDelQuestion =
        "Do you wish to add 'DEL ' to each item so that the\nlist can be saved as a batch file to enable you to\n"
        "delete unused items (Can be very dangerous in \ninexperienced hands.....)";
    out.withDel = addDel ? *addDel
                         : ctx.ui->ask(kDelQuestion, base::Buttons::YesNo, base::Icon::Question) == base::Answer::Yes;
    const std::string folder = ctx.gameRoot() + "\\Assets\\" + pp.provider + "\\" + pp.product;
    out.listing.heading = pp.provider + "\\" + pp.product;
    if (!std::filesystem::is_directory(tools::HostPath(folder))) {
        ctx.ui->message(folder + "\nis missing.", base::Icon::Exclamation);
        return out;
    }

    std::vector<std::string> files;
    services::cScanPath scan(ctx.ui);
    scan.Folder = true;  // to walk into the sub-folders
    scan.FileMatch = [&](const std::string& name, const std::string& in) {
        if (ctx.abortFlag) {
            scan.StopScan();
            return;
        }
        files.push_back(in + name);
    };
    std::string path = folder;
    scan.StartScan(path, true, true, true, false);
    if (ctx.abortFlag) {
        out.aborted = true;
        return out;
    }
    const std::unordered_set<std::string> inUse(used.begin(), used.end());
    int shown = -1;
    for (std::size_t i = 0; i < files.size(); ++i) {
        const int percent = static_cast<int>((i + 1) * 100 / files.size());
        if (percent != shown) {
            ctx.ui->progress(percent, "Items NOT used " + std::to_string(percent) + " %");
            ctx.ui->pump();
            shown = percent;
        }
        if (ctx.abortFlag) {
            out.aborted = true;
            out.listing.rows.clear();
            return out;
        }
        if (inUse.count(tools::UpperCp1252(files[i]))) continue;
        out.listing.rows.push_back({out.withDel ? "DEL " + files[i] : files[i]});
    }
    return out;
}

}  // namespace ferrolund::routes
