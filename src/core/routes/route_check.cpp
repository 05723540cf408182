#include "routes/route_check.h"

#include <algorithm>
#include <filesystem>

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

// Lines of a text, CR LF or LF, without their line ends.
class LineReader {
public:
    explicit LineReader(std::string_view text) : text_(text) {}
    bool next(std::string_view& line) {
        if (at_ >= text_.size()) return false;
        std::size_t end = text_.find('\n', at_);
        if (end == std::string_view::npos) end = text_.size();
        line = text_.substr(at_, end - at_);
        if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
        at_ = end + 1;
        return true;
    }

private:
    std::string_view text_;
    std::size_t at_ = 0;
};

// The text between the first '>' behind `hit` (0-based) and the next '<'. False when
// there is no such '<'.
bool CutValue(std::string_view line, std::size_t hit, std::string& value) {
    const std::size_t open = line.find('>', hit);
    if (open == std::string_view::npos) return false;
    const std::size_t close = line.find('<', open + 1);
    if (close == std::string_view::npos) return false;
    value.assign(line.substr(open + 1, close - open - 1));
    return true;
}

// Position (0-based) of "<Provider" in the line, any case.
std::size_t FindProviderTag(std::string_view line) {
    static constexpr std::string_view kTag = "<provider";
    for (std::size_t at = line.find('<'); at != std::string_view::npos; at = line.find('<', at + 1)) {
        if (line.size() - at < kTag.size()) return std::string_view::npos;
        std::size_t k = 1;
        while (k < kTag.size() && static_cast<char>(tools::FoldCp1252(static_cast<unsigned char>(line[at + k]))) ==
                                      kTag[k])
            ++k;
        if (k == kTag.size()) return at;
    }
    return std::string_view::npos;
}

void DescriptionError(app::AppContext& ctx, const char* what, const std::string& tileName, std::string_view line) {
    ctx.ui->message(std::string("There is an error in a ") + what + " description in tile\n" + tileName + " - " +
                        std::string(line) + "\nThis may/may not cause TS-Classic to fail.",
                    base::Icon::Exclamation);
}

void AddReference(app::AppContext& ctx, const std::string& path, const std::string& kind, const std::string& where,
                  CheckRun& run) {
    run.kindOf.emplace(path, kind);
    if (!AssetPresent(ctx, path, run)) {
        run.missingRows.push_back({path, where});
        run.missingFound = true;
    }
    run.usedAssets.push_back(path);
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
    LineReader lines(xml);
    std::string_view line;
    std::string provider, product, blueprintId;
    while (lines.next(line)) {
        const std::size_t hit = FindProviderTag(line);
        if (hit == std::string_view::npos) continue;
        if (!CutValue(line, hit, provider)) {
            DescriptionError(ctx, "Provider", tileName, line);
            return false;
        }
        if (provider.empty() || provider == " ") continue;
        if (!lines.next(line)) return true;
        if (!CutValue(line, 0, product)) {
            DescriptionError(ctx, "Product", tileName, line);
            return false;
        }
        bool complete = true;
        for (int k = 0; k < 3 && complete; ++k) complete = lines.next(line);
        if (!complete) return true;
        if (!CutValue(line, 0, blueprintId) || blueprintId.empty()) continue;
        take(provider, product, blueprintId);
    }
    return true;
}

void ScanTileText(app::AppContext& ctx, std::string_view xml, const std::string& tileName, const TileFolder& folder,
                  const WalkRule& rule, CheckRun& run) {
    const std::string where = folder.itemKind + " on tile " + tileName;
    ForEachReference(ctx, xml, tileName,
                     [&](const std::string& provider, const std::string& product, const std::string& blueprintId) {
                         if (!rule.admits(provider, product)) return;
                         const std::string path = AssetPath(ctx.gameRoot(), provider, product, blueprintId);
                         if (rule.followTransfers && InStr(path, "TransferPoints") > 0)
                             getTransfer(ctx, path, folder.itemKind, where, run);
                         AddReference(ctx, path, folder.itemKind, where, run);
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
    run.aborted = WalkTiles(ctx, folder, tiles, [&](const std::string& tile, const std::string& xml) {
        ScanTileText(ctx, xml, tile, folder, rule, run);
        ++run.tilesRead;
        if (run.missingFound) {
            const std::size_t dot = tile.find_last_of('.');
            tools::CreatePath(tempFolder);
            tools::WriteTextFile(ctx, tempFolder + tile.substr(0, dot + 1) + "xml", xml);
        }
    }) || run.aborted;
}

bool WalkTiles(app::AppContext& ctx, const TileFolder& folder, const std::vector<std::string>& tiles,
               const TileReader& read) {
    int shown = -1;
    for (std::size_t i = 0; i < tiles.size(); ++i) {
        const int percent = static_cast<int>((i + 1) * 100 / tiles.size());
        if (percent != shown) {
            ctx.ui->progress(percent, folder.prefix + std::to_string(percent) + " %");
            shown = percent;
        }
        ctx.ui->pump();
        if (ctx.abortFlag) return true;
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
    std::vector<std::pair<std::string, std::size_t>> keyed;
    keyed.reserve(items.size());
    for (std::size_t i = 0; i < items.size(); ++i) keyed.emplace_back(tools::UpperCp1252(items[i]), i);
    std::stable_sort(keyed.begin(), keyed.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    std::vector<std::string> unique;
    const std::string* lastKey = nullptr;
    for (const auto& [key, index] : keyed) {
        if (key.empty() || (lastKey && *lastKey == key)) continue;
        unique.push_back(std::move(items[index]));
        lastKey = &key;
    }
    return unique;
}

}  // namespace ferrolund::routes
