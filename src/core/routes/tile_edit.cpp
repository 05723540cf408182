#include "routes/tile_edit.h"

#include <filesystem>

#include "tools/backup.h"
#include "tools/codepage.h"
#include "tools/files.h"
#include "tools/host_path.h"
#include "tools/serz_convert.h"
#include "tools/tags.h"
#include "tools/text_search.h"

namespace ferrolund::routes {

using tools::InStr;
using tools::InStrRev;

namespace {

constexpr const char* kModule = "frmListRS";

// Where an item stands in a tile: 1-based positions of the "<Provider" in front of it
// and of its blueprint path.
struct ItemHit {
    long provider = 0;
    long path = 0;
};

std::string TagValue(std::string_view xml, long from, std::string_view tag) {
    std::string value;
    long pos = from;
    tools::GetDetail(xml, pos, tag, value);
    return pos > 0 ? value : std::string();
}

// The next place from `from` where the item is named: its blueprint path standing whole
// between '>' and "</BlueprintID", and the Provider and Product in front of it equal to
// the item's.
std::optional<ItemHit> FindItem(std::string_view xml, long from, const assets::BlueprintRef& item) {
    if (item.blueprintId.empty()) return std::nullopt;
    const long length = static_cast<long>(item.blueprintId.size());
    for (long hit = InStr(from, xml, item.blueprintId); hit > 0; hit = InStr(hit + 1, xml, item.blueprintId)) {
        const auto at = static_cast<std::size_t>(hit - 1);
        if (at == 0 || xml[at - 1] != '>') continue;
        if (InStr(hit + length, xml, "</BlueprintID") != hit + length) continue;
        const long provider = InStrRev(xml, "<Provider", hit - 1);
        if (provider == 0) continue;
        // The Provider must belong to this reference: the first BlueprintID value
        // behind it is the hit.
        long pos = provider;
        std::string value;
        tools::GetDetail(xml, pos, "BlueprintID", value);
        if (pos != hit + length) continue;
        if (!tools::EqualsIgnoreCase(TagValue(xml, provider, "Provider"), item.provider) ||
            !tools::EqualsIgnoreCase(TagValue(xml, provider, "Product"), item.product))
            continue;
        return ItemHit{provider, hit};
    }
    return std::nullopt;
}

// Sets the three values of the reference that begins at `provider`, each tag searched
// afresh from there.
void PutTriple(std::string& xml, long provider, const assets::BlueprintRef& values) {
    for (const auto& [tag, value] : {std::pair{"Provider", &values.provider}, std::pair{"Product", &values.product},
                                     std::pair{"BlueprintID", &values.blueprintId}}) {
        long pos = provider;
        tools::PutDetail(xml, pos, tag, *value);
    }
}

// The start of the line that holds `at` (0-based) when only blanks and tabs stand in
// front of it on that line; else `at` itself.
std::size_t LineStart(std::string_view text, std::size_t at) {
    std::size_t start = at;
    while (start > 0 && (text[start - 1] == ' ' || text[start - 1] == '\t')) --start;
    return start == 0 || text[start - 1] == '\n' ? start : at;
}

// Just behind `at` (0-based), with the line end that follows it.
std::size_t PastLineEnd(std::string_view text, std::size_t at) {
    if (at < text.size() && text[at] == '\r') ++at;
    if (at < text.size() && text[at] == '\n') ++at;
    return at;
}

std::string SystemName(const std::string& path) {
    const std::size_t slash = path.find_last_of('\\');
    return slash == std::string::npos ? path : path.substr(slash + 1);
}

void ForgetDeleted(const std::string& path) {
    if (tools::FileExists(path)) tools::DeleteFile(path);
    tools::ForgetPath(path);
}

// A changed tile: its text converted back in TempFiles, the old tile backed up and the
// new one copied in.
bool ReplaceTile(app::AppContext& ctx, const std::string& tile, const std::string& xml, TileEditRun& run) {
    const std::string name = SystemName(tile);
    const std::size_t dot = name.find_last_of('.');
    const std::string scratch = ctx.appPath("TempFiles\\" + name.substr(0, dot == std::string::npos ? name.size() : dot + 1));
    tools::CreatePath(ctx.appPath("TempFiles"));
    ForgetDeleted(scratch + "bin");
    const bool written = tools::WriteTextFile(ctx, scratch + "xml", xml);
    if (!written || tools::SerzConvert(ctx, scratch + "xml", scratch + "bin", tools::SerzDirection::ToBinary) ||
        tools::FileLength(scratch + "bin") <= 0) {
        ctx.ui->message("Substitution failed - no changes have been made to the original file.",
                        base::Icon::Exclamation);
        return false;
    }
    std::string backup;
    if (const base::Status failed = tools::ReplaceWithBackup(scratch + "bin", tile, tools::kBackupRule, backup)) {
        ctx.report(*failed, kModule);
        return false;
    }
    if (!backup.empty()) run.backups.push_back(backup);
    return true;
}

}  // namespace

std::string ItemKindText(int kind) {
    switch (kind) {
        case kSceneryKind: return "(Scenery Item)";
        case kLoftKind: return "(Loft Item)";
        case kRoadKind: return "(Road Item)";
        case kTrackKind: return "(Track Item)";
        default: return {};
    }
}

std::optional<assets::BlueprintRef> SplitGamePath(const std::string& gameRoot, std::string_view path) {
    if (!gameRoot.empty() && path.size() > gameRoot.size() &&
        tools::EqualsIgnoreCase(path.substr(0, gameRoot.size()), gameRoot))
        path.remove_prefix(gameRoot.size());
    if (InStr(path, "Assets") == 0) return std::nullopt;
    return assets::SplitAssetPath(path);
}

std::optional<GridItem> CutGridItem(const std::string& gameRoot, std::string_view row) {
    const long bin = InStr(row, ".bin");
    if (bin == 0) return std::nullopt;
    const auto end = static_cast<std::size_t>(bin - 1);
    auto ref = SplitGamePath(gameRoot, row.substr(0, end));
    if (!ref || ref->provider.empty() || ref->product.empty() || ref->blueprintId.empty()) return std::nullopt;
    ref->blueprintId += ".xml";
    GridItem item{std::move(*ref), 0};
    std::string_view rest = row.substr(end + 4);
    while (!rest.empty() && (rest.front() == '\t' || rest.front() == ' ')) rest.remove_prefix(1);
    for (int kind = kSceneryKind; kind <= kTrackKind; ++kind) {
        const std::string text = ItemKindText(kind);
        if (tools::EqualsIgnoreCase(rest.substr(0, text.size()), text)) item.kind = kind;
    }
    return item;
}

std::size_t SubstituteInTile(std::string& xml, const assets::BlueprintRef& old, const assets::BlueprintRef& replacement) {
    std::size_t count = 0;
    long from = 1;
    while (const auto hit = FindItem(xml, from, old)) {
        PutTriple(xml, hit->provider, replacement);
        ++count;
        from = InStr(hit->provider, xml, "</BlueprintID");
        if (from == 0) break;
    }
    return count;
}

std::size_t RemoveEntitiesInTile(std::string& xml, const assets::BlueprintRef& item) {
    static constexpr std::string_view kClose = "</cDynamicEntity>";
    std::size_t count = 0;
    long from = 1;
    while (const auto hit = FindItem(xml, from, item)) {
        const long open = InStrRev(xml, "<cDynamicEntity ", hit->provider);
        const long close = InStr(hit->path, xml, kClose);
        // The entity must hold the hit: no other entity closes between its start and the hit.
        if (open == 0 || close == 0 || InStr(open, xml, kClose) != close) {
            from = hit->path + 1;
            continue;
        }
        const std::size_t start = LineStart(xml, static_cast<std::size_t>(open - 1));
        const std::size_t end = PastLineEnd(xml, static_cast<std::size_t>(close - 1) + kClose.size());
        xml.erase(start, end - start);
        ++count;
        from = static_cast<long>(start) + 1;
    }
    return count;
}

std::size_t EmptyLoftInTile(std::string& xml, const assets::BlueprintRef& item) {
    return SubstituteInTile(xml, item, assets::BlueprintRef{});
}

std::vector<TileFolder> KindFolders(const std::string& gameRoot, const CheckedRoute& route, int kind,
                                    bool withScenarios) {
    // The route check's folders: Scenery, loft, road, Networks, then the scenarios' Scenery.
    std::vector<TileFolder> all =
        RouteTileFolders(gameRoot, route.folder, withScenarios ? route.scenarioFolders : std::vector<std::string>{});
    std::vector<TileFolder> folders;
    switch (kind) {
        case kSceneryKind:
            folders.push_back(all[0]);
            folders.insert(folders.end(), all.begin() + 4, all.end());
            break;
        case kLoftKind: folders.push_back(all[1]); break;
        case kRoadKind: folders.push_back(all[2]); break;
        case kTrackKind: folders.push_back(all[3]); break;
        default: break;
    }
    return folders;
}

TileEditRun EditTiles(app::AppContext& ctx, const std::vector<TileFolder>& folders, const TileTextEdit& edit) {
    TileEditRun run;
    for (const TileFolder& folder : folders) {
        if (!std::filesystem::is_directory(tools::HostPath(folder.folder))) continue;
        run.aborted = WalkTiles(ctx, folder, ListTiles(ctx, folder.folder), [&](const std::string& name, std::string& xml) {
            ++run.tilesRead;
            if (edit(xml) == 0) return;
            if (ReplaceTile(ctx, folder.folder + "\\" + name, xml, run))
                ++run.tilesChanged;
            else
                ++run.tilesFailed;
        });
        if (run.aborted) break;
    }
    ctx.ui->progress(0, "");
    return run;
}

}  // namespace ferrolund::routes
