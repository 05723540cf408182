#include "routes/route_check.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <string_view>
#include <unordered_set>

#include "routes/tile_decoder.h"
#include "routes/tile_references.h"
#include "serz/codec.h"
#include "services/scan_path.h"
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

void DescriptionError(app::AppContext& ctx, const char* what, const std::string& tileName, std::string_view line) {
    ctx.ui->message(std::string("There is an error in a ") + what + " description in tile\n" + tileName + " - " +
                        std::string(line) + "\nThis may/may not cause TS-Classic to fail.",
                    base::Icon::Exclamation);
}

void AddReference(app::AppContext& ctx, std::string path, const std::string& kind, const std::string& where,
                  CheckRun& run) {
    run.kindOf.try_emplace(path, kind);
    if (!AssetPresent(ctx, path, run)) {
        run.missingRows.push_back({path, where});
        run.missingFound = true;
    }
    run.usedAssets.push_back(std::move(path));
}

// One reference a tile names, its asset's path worked out, under the rule, added to the
// run; `transfer`: the path holds "TransferPoints".
void TakeReference(app::AppContext& ctx, const std::string& provider, const std::string& product, std::string path,
                   bool transfer, const TileFolder& folder, const WalkRule& rule, const std::string& where,
                   CheckRun& run) {
    if (!rule.admits(provider, product)) return;
    if (rule.followTransfers && transfer) getTransfer(ctx, path, folder.itemKind, where, run);
    AddReference(ctx, std::move(path), folder.itemKind, where, run);
}

// The progress bar at the share of tile `index`, then events let through: true when
// AbortFlag is set.
bool BeforeTile(app::AppContext& ctx, const TileFolder& folder, std::size_t index, std::size_t count, int& shown) {
    const int percent = static_cast<int>((index + 1) * 100 / count);
    if (percent != shown) {
        ctx.ui->progressCount(index + 1, count, "tiles");
        ctx.ui->progress(percent, folder.prefix + std::to_string(percent) + " %");
        shown = percent;
    }
    ctx.ui->pump();
    return ctx.abortFlag;
}

// From the first miss of the run on, each tile's XML is kept in TempFiles.
void KeepTileXml(app::AppContext& ctx, const std::string& tempFolder, const std::string& tile, const std::string& xml) {
    const std::size_t dot = tile.find_last_of('.');
    tools::CreatePath(tempFolder);
    tools::WriteTextFile(ctx, tempFolder + tile.substr(0, dot + 1) + "xml", xml);
}

void CheckTileText(app::AppContext& ctx, const std::string& tile, const std::string& xml, const TileFolder& folder,
                   const WalkRule& rule, CheckRun& run, const std::string& tempFolder) {
    ScanTileText(ctx, xml, tile, folder, rule, run);
    ++run.tilesRead;
    if (run.missingFound) KeepTileXml(ctx, tempFolder, tile, xml);
}

// How many tiles the workers may read ahead of the one being taken, and how long the
// walk waits for a tile before it lets events through again.
constexpr std::size_t kTilesAhead = 32;
constexpr std::chrono::milliseconds kPumpEvery{20};

// The walk with the tiles decoded in worker threads, taken here in tile order. A tile the
// workers could not decode is read as text by the converter, which tells why.
bool CheckDecodedTiles(app::AppContext& ctx, const TileFolder& folder, const std::vector<std::string>& tiles,
                       const WalkRule& rule, CheckRun& run, const std::string& tempFolder) {
    bool wantXml = run.missingFound;
    TileDecoder decoder(tiles.size(), ctx.gameRoot(), wantXml);
    int shown = -1;
    for (std::size_t i = 0; i < tiles.size(); ++i) {
        if (BeforeTile(ctx, folder, i, tiles.size(), shown)) return true;
        while (decoder.provided() < std::min(tiles.size(), i + kTilesAhead))
            decoder.Provide(tools::HostPath(folder.folder + "\\" + tiles[decoder.provided()]));
        std::optional<DecodedTile> decoded;
        while (!(decoded = decoder.Take(i, kPumpEvery))) {
            ctx.ui->pump();
            if (ctx.abortFlag) return true;
        }
        const std::string& tile = tiles[i];
        const std::string file = folder.folder + "\\" + tile;
        if (!decoded->decoded) {
            std::string xml;
            if (const base::Status failed = tools::SerzReadXml(ctx, file, xml))
                ctx.report(*failed, "frmDelRoute");
            else
                CheckTileText(ctx, tile, xml, folder, rule, run, tempFolder);
            continue;
        }
        const std::string where = folder.itemKind + " on tile " + tile;
        for (DecodedReference& ref : decoded->references)
            TakeReference(ctx, ref.provider, ref.product, std::move(ref.path), ref.transfer, folder, rule, where, run);
        if (decoded->fault) DescriptionError(ctx, decoded->fault->what.c_str(), tile, decoded->fault->line);
        ++run.tilesRead;
        if (!run.missingFound) continue;
        if (!wantXml) {
            decoder.WantXml();
            wantXml = true;
        }
        if (!decoded->xml) {
            decoded->xml.emplace();
            if (serz::BinaryToXml(decoded->bytes, *decoded->xml)) tools::SerzReadXml(ctx, file, *decoded->xml);
        }
        KeepTileXml(ctx, tempFolder, tile, *decoded->xml);
    }
    return false;
}

}  // namespace

std::vector<TileFolder> RouteTileFolders(const std::string& gameRoot, const std::string& routeFolder,
                                         const std::vector<std::string>& scenarioFolders) {
    const std::string route = gameRoot + "\\Content\\Routes\\" + routeFolder;
    std::vector<TileFolder> folders{
        {route + "\\Scenery", "(Scenery Item)", "Scenery\\", "Scenery "},
        {route + "\\Networks\\Loft Tiles", "(Loft Item)", "Networks\\Loft Tiles\\", "Loft items "},
        {route + "\\Networks\\Road Tiles", "(Road Item)", "Networks\\Road Tiles\\", "Roads "},
        {route + "\\Networks", "(Track Item)", "Networks\\", "Tracks "},
    };
    for (const std::string& scenario : scenarioFolders) {
        std::string folder = route + "\\Scenarios\\" + scenario + "\\Scenery";
        if (std::filesystem::is_directory(tools::HostPath(folder)))
            folders.push_back({folder, "(Scenery Item)", "Scenery\\", "Scenery "});
    }
    return folders;
}

std::string AssetPath(const std::string& gameRoot, std::string_view provider, std::string_view product,
                      std::string_view blueprintId) {
    std::string path = gameRoot + "\\Assets\\";
    path.append(provider).append("\\").append(product).append("\\").append(blueprintId);
    if (blueprintId.size() >= 3) path.replace(path.size() - 3, 3, "bin");
    return path;
}

bool AssetPresent(app::AppContext& ctx, const std::string& path, CheckRun& run) {
    if (const auto known = run.known.find(path); known != run.known.end()) return known->second;
    bool present = tools::FileExists(path);
    if (!present) {
        std::string repaired = path;
        ctx.report(tools::FixEntities(repaired), "frmDelRoute");
        present = repaired != path && tools::FileExists(repaired);
    }
    run.known.emplace(path, present);
    return present;
}

void getTransfer(app::AppContext& ctx, const std::string& containerPath, const std::string& kind, const std::string& where,
                 CheckRun& run) {
    std::string xml;
    if (tools::SerzReadXml(ctx, containerPath, xml)) return;
    long pos = InStr(xml, "</ContainerBlueprintID>");
    while (pos > 0) {
        std::string provider, product, blueprintId;
        long at = pos;
        tools::GetDetail(xml, at, "Provider", provider);
        if (at == 0) break;
        tools::GetDetail(xml, at, "Product", product);
        if (at == 0) break;
        tools::GetDetail(xml, at, "BlueprintID", blueprintId);
        if (at == 0) break;
        pos = at;
        if (blueprintId.empty()) continue;
        AddReference(ctx, AssetPath(ctx.gameRoot(), provider, product, blueprintId), kind, where, run);
    }
}

bool ForEachReference(app::AppContext& ctx, std::string_view xml, const std::string& tileName,
                      const ReferenceSink& take) {
    TextLines lines(xml);
    const std::optional<DescriptionFault> fault = FindReferences(lines, take);
    if (fault) DescriptionError(ctx, fault->what.c_str(), tileName, fault->line);
    return !fault;
}

void ScanTileText(app::AppContext& ctx, std::string_view xml, const std::string& tileName, const TileFolder& folder,
                  const WalkRule& rule, CheckRun& run) {
    const std::string where = folder.itemKind + " on tile " + tileName;
    ForEachReference(ctx, xml, tileName,
                     [&](const std::string& provider, const std::string& product, const std::string& blueprintId) {
                         std::string path = AssetPath(ctx.gameRoot(), provider, product, blueprintId);
                         const bool transfer = InStr(path, "TransferPoints") > 0;
                         TakeReference(ctx, provider, product, std::move(path), transfer, folder, rule, where, run);
                     });
}

bool WalkRule::admits(std::string_view provider, std::string_view product) const {
    if (!filtered()) return true;
    return tools::EqualsIgnoreCase(provider, onlyProvider) && tools::EqualsIgnoreCase(product, onlyProduct);
}

std::vector<std::string> ListTiles(app::AppContext& ctx, const std::string& folder) {
    std::vector<std::string> names;
    services::cScanPath scan(ctx.ui);
    scan.Filter("*.bin");
    scan.FileMatch = [&](const std::string& name, const std::string&) { names.push_back(name); };
    std::string path = folder;
    scan.StartScan(path, false, true, true, false);
    return names;
}

void CheckForFiles(app::AppContext& ctx, const TileFolder& folder, const WalkRule& rule, CheckRun& run) {
    if (!std::filesystem::is_directory(tools::HostPath(folder.folder))) return;
    const std::vector<std::string> tiles = ListTiles(ctx, folder.folder);
    if (tiles.empty()) {
        if (rule.tellEmptyFolder)
            ctx.ui->message("There are no Scenery files for this route, it\nis probably contained in an .ap archive "
                            "file,\nso can't be checked with this program.",
                            base::Icon::Information);
        return;
    }
    const std::string tempFolder = ctx.appPath("TempFiles\\" + folder.tempSub);
    const bool aborted =
        tools::SerzOutside()
            ? WalkTiles(ctx, folder, tiles,
                        [&](const std::string& tile, const std::string& xml) {
                            CheckTileText(ctx, tile, xml, folder, rule, run, tempFolder);
                        })
            : CheckDecodedTiles(ctx, folder, tiles, rule, run, tempFolder);
    run.aborted = aborted || run.aborted;
}

bool WalkTiles(app::AppContext& ctx, const TileFolder& folder, const std::vector<std::string>& tiles,
               const TileReader& read) {
    int shown = -1;
    for (std::size_t i = 0; i < tiles.size(); ++i) {
        if (BeforeTile(ctx, folder, i, tiles.size(), shown)) return true;
        const std::string& tile = tiles[i];
        std::string xml;
        if (const base::Status failed = tools::SerzReadXml(ctx, folder.folder + "\\" + tile, xml)) {
            ctx.report(*failed, "frmDelRoute");
            continue;
        }
        read(tile, xml);
    }
    return false;
}

std::vector<std::string> SortUnique(std::vector<std::string> items) {
    // Each text is kept once, in the case of its first appearance. A route names the same
    // few hundred assets a million times, so a text already met is passed over before its
    // key is worked out, and only the distinct texts are sorted.
    std::unordered_set<std::string_view> met;
    std::unordered_set<std::string> keys;
    std::vector<std::pair<std::string, std::size_t>> keyed;
    for (std::size_t i = 0; i < items.size(); ++i) {
        if (!met.insert(items[i]).second) continue;
        std::string key = tools::UpperCp1252(items[i]);
        if (key.empty() || !keys.insert(key).second) continue;
        keyed.emplace_back(std::move(key), i);
    }
    std::sort(keyed.begin(), keyed.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    std::vector<std::string> unique;
    unique.reserve(keyed.size());
    for (const auto& entry : keyed) unique.push_back(std::move(items[entry.second]));
    return unique;
}

}  // namespace ferrolund::routes
