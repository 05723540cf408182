#include "routes/tile_edit_command.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <unordered_set>

#include "app/maintenance.h"
#include "tools/backup.h"
#include "tools/codepage.h"
#include "tools/files.h"
#include "tools/host_path.h"
#include "tools/tags.h"
#include "tools/text_repair.h"
#include "tools/template_text.h"
#include "tools/text_search.h"

namespace ferrolund::routes {

using tools::InStr;
using tools::ReplaceAll;

namespace {

constexpr const char* kModule = "frmListRS";

std::string RoutePath(const app::AppContext& ctx, const std::string& folder) {
    return ctx.gameRoot() + "\\Content\\Routes\\" + folder;
}

// The route the grid's list came from; nothing when it names none or its folder is gone.
std::optional<CheckedRoute> GridRoute(const app::AppContext& ctx, const archives::ReportGrid& grid) {
    if (grid.routeFolder.empty() || !std::filesystem::is_directory(tools::HostPath(RoutePath(ctx, grid.routeFolder))))
        return std::nullopt;
    return CheckedRoute{grid.routeName, grid.routeFolder, grid.scenarioFolders};
}

bool DuplicatesGone(app::AppContext& ctx, const archives::ReportGrid& grid) {
    if (grid.duplicatesRemoved) return true;
    ctx.ui->message("You must click the 'Remove Duplicates' button\nbefore using this option.", base::Icon::Exclamation);
    return false;
}

void NothingSelected(app::AppContext& ctx) {
    ctx.ui->message("You do not appear to have selected an item to substitute?", base::Icon::Exclamation);
}

// TempFiles emptied, as the tile commands begin.
void FreshTempFiles(app::AppContext& ctx) {
    const std::string routine = ctx.currentRoutine;
    if (std::filesystem::exists(tools::HostPath(ctx.appPath("TempFiles"))))
        app::ClearTempFiles(ctx);
    else
        tools::CreatePath(ctx.appPath("TempFiles"));
    ctx.currentRoutine = routine;
}

TileEditRun RunOnTiles(app::AppContext& ctx, const std::vector<TileFolder>& folders, const TileTextEdit& edit) {
    FreshTempFiles(ctx);
    ctx.abortFlag = false;
    ctx.ui->busy(true);
    TileEditRun run = EditTiles(ctx, folders, edit);
    ctx.ui->busy(false);
    if (!run.aborted) ctx.ui->message("The requested changes have been made.", base::Icon::Information);
    return run;
}

std::string LineEndOf(const std::string& text) { return text.find("\r\n") != std::string::npos ? "\r\n" : "\n"; }

// The block with its line ends made those of the file it goes into.
std::string WithLineEnds(const std::string& block, const std::string& lineEnd) {
    std::string out;
    for (std::size_t i = 0; i < block.size(); ++i) {
        if (block[i] == '\r') continue;
        if (block[i] == '\n')
            out += lineEnd;
        else
            out += block[i];
    }
    if (!out.empty() && out.substr(out.size() - lineEnd.size()) != lineEnd) out += lineEnd;
    return out;
}

// The largest d:id of the text; the ids given to new blocks follow it.
unsigned long long LargestId(const std::string& text) {
    static constexpr std::string_view kId = "d:id=\"";
    unsigned long long largest = 0;
    for (std::size_t at = text.find(kId); at != std::string::npos; at = text.find(kId, at + 1))
        largest = std::max(largest, std::strtoull(text.c_str() + at + kId.size(), nullptr, 10));
    return largest;
}

// The Provider and Product that follow the first `marker` of the text.
std::optional<std::pair<std::string, std::string>> PairBehind(const std::string& text, std::string_view marker) {
    const long at = InStr(text, marker);
    if (at == 0) return std::nullopt;
    std::string provider, product;
    long pos = at;
    tools::GetDetail(text, pos, "Provider", provider);
    if (pos == 0) return std::nullopt;
    tools::GetDetail(text, pos, "Product", product);
    if (pos == 0 || provider.empty()) return std::nullopt;
    return std::pair{provider, product};
}

}  // namespace

TileEditRun SubstituteItem(app::AppContext& ctx, const archives::ReportGrid& grid,
                           const std::vector<std::size_t>& selectedRows, const AskSubstitute& ask) {
    ctx.currentRoutine = "Command6_Click";
    if (!DuplicatesGone(ctx, grid)) return {};
    const auto route = GridRoute(ctx, grid);
    if (!route) return {};
    if (selectedRows.empty()) {
        NothingSelected(ctx);
        return {};
    }
    const auto item = CutGridItem(ctx.gameRoot(), grid.rowText(selectedRows.front()));
    if (!item) {
        NothingSelected(ctx);
        return {};
    }
    if (item->kind == 0) {
        ctx.ui->message("The missing object is an interactive object or track section and\ncan not be substituted by "
                        "this program. Item should be deleted\nfrom the World Editor manually.",
                        base::Icon::Exclamation);
        return {};
    }
    auto choice = ask(*item);
    if (!choice) return {};
    // From screen form to file form.
    assets::BlueprintRef& replacement = choice->replacement;
    for (std::string* value : {&replacement.provider, &replacement.product, &replacement.blueprintId})
        ctx.report(tools::ReplaceApos(*value), kModule);
    if (tools::TrimBlanks(replacement.provider).empty() || tools::TrimBlanks(replacement.product).empty() ||
        tools::TrimBlanks(replacement.blueprintId).empty()) {
        if (ctx.ui->ask("As you have not included a new Provider, Product or Path, then is it\ncorrect that you wish "
                        "the items to be removed from your route?",
                        base::Buttons::YesNo, base::Icon::Question) != base::Answer::Yes)
            return {};
        replacement = {};
    }
    const assets::BlueprintRef old = item->ref;
    return RunOnTiles(ctx, KindFolders(ctx.gameRoot(), *route, choice->kind, choice->kind == kSceneryKind),
                      [&](std::string& xml) { return SubstituteInTile(xml, old, replacement); });
}

TileEditRun RemoveSelectedItems(app::AppContext& ctx, const archives::ReportGrid& grid,
                                const std::vector<std::size_t>& selectedRows, int kind) {
    ctx.currentRoutine = kind == kLoftKind ? "Command23_Click" : "Command8_Click";
    if (!DuplicatesGone(ctx, grid)) return {};
    const auto route = GridRoute(ctx, grid);
    if (!route) return {};
    std::vector<assets::BlueprintRef> items;
    for (std::size_t row : selectedRows) {
        if (auto item = CutGridItem(ctx.gameRoot(), grid.rowText(row))) items.push_back(std::move(item->ref));
    }
    if (items.empty()) {
        NothingSelected(ctx);
        return {};
    }
    return RunOnTiles(ctx, KindFolders(ctx.gameRoot(), *route, kind, kind == kSceneryKind), [&](std::string& xml) {
        std::size_t changes = 0;
        for (const auto& item : items)
            changes += kind == kLoftKind ? EmptyLoftInTile(xml, item) : RemoveEntitiesInTile(xml, item);
        return changes;
    });
}

std::vector<std::pair<std::string, std::string>> GridProviders(const std::string& gameRoot,
                                                               const archives::ReportGrid& grid) {
    std::vector<std::pair<std::string, std::string>> pairs;
    for (std::size_t row = 0; row < grid.rowCount(); ++row) {
        const std::string& first = grid.cell(row, 0);
        std::string provider, product;
        if (auto ref = SplitGamePath(gameRoot, first)) {
            provider = ref->provider;
            product = ref->product;
        } else if (const std::size_t slash = first.find('\\'); slash != std::string::npos) {
            provider = first.substr(0, slash);
            const std::size_t next = first.find('\\', slash + 1);
            product = first.substr(slash + 1, next == std::string::npos ? std::string::npos : next - slash - 1);
        } else {
            provider = first;
            product = grid.cell(row, 1);
        }
        provider = std::string(tools::TrimBlanks(provider));
        product = std::string(tools::TrimBlanks(product));
        if (provider.empty() || product.empty() || product.front() == '(') continue;
        pairs.emplace_back(std::move(provider), std::move(product));
    }
    return pairs;
}

std::optional<std::string> RebuildPreload(const std::string& properties, const std::string& block,
                                          const std::vector<std::pair<std::string, std::string>>& pairs) {
    static constexpr std::string_view kOpen = "<RBlueprintSetPreLoad>";
    const long open = InStr(properties, kOpen);
    const long close = open == 0 ? 0 : InStr(open, properties, "</RBlueprintSetPreLoad>");
    if (close == 0) return std::nullopt;

    std::vector<std::pair<std::string, std::string>> all;
    for (const char* marker : {"<WeatherBlueprint", "<InfrastructureModified"}) {
        if (auto pair = PairBehind(properties, marker)) all.push_back(std::move(*pair));
    }
    all.insert(all.end(), pairs.begin(), pairs.end());

    const std::string lineEnd = LineEndOf(properties);
    const std::string form = WithLineEnds(block, lineEnd);
    unsigned long long id = LargestId(properties);
    std::unordered_set<std::string> seen;
    std::string blocks;
    for (const auto& [provider, product] : all) {
        if (!seen.insert(tools::UpperCp1252(provider + "\\" + product)).second) continue;
        std::string entry = form;
        id += 8;
        ReplaceAll(entry, "xxxxxxxx", std::to_string(id));
        ReplaceAll(entry, "aaaaaa", provider);
        ReplaceAll(entry, "bbbbbb", product);
        blocks += entry;
    }
    // The closing tag keeps the indent it had on its own line.
    const auto closeAt = static_cast<std::size_t>(close - 1);
    std::size_t indentAt = closeAt;
    while (indentAt > 0 && (properties[indentAt - 1] == '\t' || properties[indentAt - 1] == ' ')) --indentAt;
    const std::string indent = properties.substr(indentAt, closeAt - indentAt);
    const std::size_t bodyAt = static_cast<std::size_t>(open - 1) + kOpen.size();
    return properties.substr(0, bodyAt) + lineEnd + blocks + indent + properties.substr(closeAt);
}

bool FixRouteProviders(app::AppContext& ctx, const archives::ReportGrid& grid) {
    ctx.currentRoutine = "Command11_Click";
    const auto route = GridRoute(ctx, grid);
    if (!route) return false;
    const std::string file = RoutePath(ctx, route->folder) + "\\RouteProperties.xml";
    if (!tools::FileExists(file)) {
        ctx.ui->message("There is no RouteProperties.xml file for this route\ntherefore the route is invalid and can't "
                        "be used.",
                        base::Icon::Exclamation);
        return false;
    }
    const std::string templateFile = ctx.appPath("Templates\\ProvHeader.txt");
    const std::string block = tools::ReadTextFile(templateFile);
    if (block.empty()) {
        ctx.ui->message("The block form " + templateFile + " is missing or empty.\nRouteProperties.xml has not been "
                        "changed; reinstall the program's Templates folder.",
                        base::Icon::Exclamation);
        return false;
    }
    const auto rebuilt = RebuildPreload(tools::ReadTextFile(file), block, GridProviders(ctx.gameRoot(), grid));
    if (!rebuilt) {
        ctx.ui->message(file + "\nholds no RBlueprintSetPreLoad section, so there is nothing to fix.\nThe file has "
                               "not been changed.",
                        base::Icon::Exclamation);
        return false;
    }
    // The new text exists in full before the old file is touched.
    tools::CreatePath(ctx.appPath("TempFiles"));
    const std::string scratch = ctx.appPath("TempFiles\\RouteProperties.xml");
    if (!tools::WriteTextFile(ctx, scratch, *rebuilt)) return false;
    std::string backup;
    if (const base::Status failed = tools::ReplaceWithBackup(scratch, file, tools::kUnlimitedBackupRule, backup)) {
        ctx.report(*failed, kModule);
        return false;
    }
    ctx.ui->message("Your RouteProperties.xml file has been modified as requested.", base::Icon::Information);
    return true;
}

}  // namespace ferrolund::routes
