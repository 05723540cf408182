#include "routes/asset_locations.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <unordered_set>

#include "tools/codepage.h"
#include "tools/host_path.h"
#include "tools/tags.h"
#include "tools/text_search.h"

namespace ferrolund::routes {

using tools::InStr;

namespace {

// The value of the next "<Distance" from pos; pos moves behind it, or to 0 when there is none.
std::string NextDistance(std::string_view text, long& pos) {
    std::string value;
    if (pos > 0) tools::GetDetail(text, pos, "Distance", value);
    return pos > 0 ? value : std::string();
}

// A tag name ends at a blank, '>' or "/>"; "<cDynamicEntityX" is another tag.
bool EndsTagName(std::string_view text, std::size_t at) {
    if (at >= text.size()) return true;
    const char c = text[at];
    return c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == '>' || c == '/';
}

std::string FileStem(const std::string& tileName) {
    const std::size_t dot = tileName.find_last_of('.');
    return dot == std::string::npos ? tileName : tileName.substr(0, dot);
}

}  // namespace

std::vector<LocationWalk> LocationWalks(const std::string& gameRoot, const std::string& routeFolder,
                                        const std::vector<std::string>& scenarioFolders) {
    std::vector<LocationWalk> walks;
    for (TileFolder& folder : RouteTileFolders(gameRoot, routeFolder, scenarioFolders)) {
        LocationWalk walk{std::move(folder), "<cDynamicEntity", "</cDynamicEntity>", ""};
        if (walk.folder.itemKind == "(Loft Item)") {
            walk.blockTag = "<Network-cLoftRibbon";
            walk.closeTag = "</Network-cLoftRibbon>";
        } else if (walk.folder.itemKind == "(Road Item)") {
            walk.blockTag = "<Network-cRoadRibbon";
            walk.closeTag = "</Network-cRoadRibbon>";
        } else if (walk.folder.itemKind == "(Track Item)") {
            walk.blockTag = "<Network-cTrackRibbon";
            walk.closeTag = "</Network-cTrackRibbon>";
            walk.onlyTile = "Tracks.bin";
        }
        walks.push_back(std::move(walk));
    }
    return walks;
}

std::string TileNumber(std::string_view distance) {
    const std::string text(tools::TrimBlanks(distance));
    if (text.empty()) return text;
    char* end = nullptr;
    const double value = std::strtod(text.c_str(), &end);
    if (end != text.c_str() + text.size() || !std::isfinite(value)) return text;
    std::string digits = std::to_string(std::llround(std::fabs(value)));
    if (digits.size() < 6) digits.insert(0, 6 - digits.size(), '0');
    return (value < 0 ? "-" : "+") + digits;
}

BlockPlace PlaceOfBlock(std::string_view block) {
    BlockPlace place;
    const long far = InStr(block, "<cFarVector2");
    const long reference = InStr(block, "<Provider");
    if (far > 0 && (reference == 0 || far < reference)) {
        // Route coordinate and tile coordinate of X, then of Z.
        long pos = far;
        const std::string x = NextDistance(block, pos);
        place.offsetX = NextDistance(block, pos);
        const std::string z = NextDistance(block, pos);
        place.offsetZ = NextDistance(block, pos);
        if (pos > 0) return {TileNumber(x) + TileNumber(z), place.offsetX, place.offsetZ};
        return {};
    }
    long pos = InStr(block, "<RouteVector");
    const std::string x = NextDistance(block, pos);
    const std::string z = NextDistance(block, pos);
    if (pos == 0) return {};
    place.tile = TileNumber(x) + TileNumber(z);
    std::string corner;
    long at = 1;
    tools::GetDetail(block, at, "RBottomLeft", corner);
    const std::string_view both = tools::TrimBlanks(corner);
    const std::size_t blank = both.find(' ');
    if (at > 0 && blank != std::string_view::npos) {
        place.offsetX = std::string(both.substr(0, blank));
        place.offsetZ = std::string(tools::TrimBlanks(both.substr(blank + 1)));
    }
    return place;
}

std::string AssetLocation::where() const {
    std::string text = kind + " on tile " + place.tile;
    if (!place.offsetX.empty() || !place.offsetZ.empty()) text += " at " + place.offsetX + ", " + place.offsetZ;
    return text;
}

void ScanTileLocations(app::AppContext& ctx, std::string_view xml, const std::string& tileName,
                       const LocationWalk& walk, LocationRun& run) {
    for (long at = InStr(xml, walk.blockTag); at > 0;) {
        const std::size_t start = static_cast<std::size_t>(at - 1);
        if (!EndsTagName(xml, start + walk.blockTag.size())) {
            at = InStr(at + 1, xml, walk.blockTag);
            continue;
        }
        const long close = InStr(at + 1, xml, walk.closeTag);
        const std::size_t end = close > 0 ? static_cast<std::size_t>(close - 1) + walk.closeTag.size() : xml.size();
        const std::string_view block = xml.substr(start, end - start);
        BlockPlace place = PlaceOfBlock(block);
        if (place.tile.empty()) place.tile = FileStem(tileName);
        const bool whole = ForEachReference(
            ctx, block, tileName,
            [&](const std::string& provider, const std::string& product, const std::string& blueprintId) {
                if (product.empty()) return;
                AssetLocation item{AssetPath(ctx.gameRoot(), provider, product, blueprintId), walk.folder.itemKind,
                                   place};
                if (!AssetPresent(ctx, item.path, run.check)) run.missing.push_back(item);
                run.items.push_back(std::move(item));
            });
        if (!whole || close == 0) return;
        at = InStr(close, xml, walk.blockTag);
    }
}

void CheckForLocations(app::AppContext& ctx, const LocationWalk& walk, LocationRun& run) {
    if (!std::filesystem::is_directory(tools::HostPath(walk.folder.folder))) return;
    std::vector<std::string> tiles = ListTiles(ctx, walk.folder.folder);
    if (!walk.onlyTile.empty())
        std::erase_if(tiles, [&](const std::string& tile) { return !tools::EqualsIgnoreCase(tile, walk.onlyTile); });
    const bool aborted = WalkTiles(ctx, walk.folder, tiles, [&](const std::string& tile, const std::string& xml) {
        ScanTileLocations(ctx, xml, tile, walk, run);
    });
    run.aborted = run.aborted || aborted;
}

LocationOutcome ShowAssetLocations(app::AppContext& ctx, const CheckedRoute& route) {
    ctx.currentRoutine = "Command17_Click";
    LocationOutcome out;
    const std::string scenery = ctx.gameRoot() + "\\Content\\Routes\\" + route.folder + "\\Scenery";
    if (!std::filesystem::is_directory(tools::HostPath(scenery)) || ListTiles(ctx, scenery).empty()) {
        ctx.ui->message("There is no 'Scenery' folder for this " + route.name +
                            ", must assume\nit is held in an .ap folder and can't be checked here.",
                        base::Icon::Information);
        out.stopped = true;
        return out;
    }
    for (const LocationWalk& walk : LocationWalks(ctx.gameRoot(), route.folder, route.scenarioFolders)) {
        CheckForLocations(ctx, walk, out.run);
        if (out.run.aborted || ctx.abortFlag) {
            out.stopped = true;
            return out;
        }
    }
    // Sorted on the path, then the place, without regard to case; a row met twice is kept once.
    auto rowsOf = [](const std::vector<AssetLocation>& items) {
        std::vector<std::vector<std::string>> rows;
        for (const AssetLocation& item : items) rows.push_back({item.path, item.where()});
        auto key = [](const std::vector<std::string>& row) {
            return std::pair{tools::UpperCp1252(row[0]), tools::UpperCp1252(row[1])};
        };
        auto before = [&](const auto& a, const auto& b) { return key(a) < key(b); };
        auto same = [&](const auto& a, const auto& b) { return key(a) == key(b); };
        std::stable_sort(rows.begin(), rows.end(), before);
        rows.erase(std::unique(rows.begin(), rows.end(), same), rows.end());
        return rows;
    };
    out.listing = {"Following item(s) were used by  " + route.name + ":-", "_Locations.csv", rowsOf(out.run.items),
                   false};
    std::unordered_set<std::string> absent;
    for (const AssetLocation& item : out.run.missing) absent.insert(tools::UpperCp1252(item.path));
    for (const auto& row : out.listing.rows) out.listing.missingRows.push_back(absent.count(tools::UpperCp1252(row[0])) > 0);
    if (!out.run.missing.empty()) {
        out.missingText = "Following Asset(s) were missing from " + route.name + ":-";
        for (const auto& row : rowsOf(out.run.missing)) out.missingText += "\r\n" + row[0] + " " + row[1];
    }
    return out;
}

}  // namespace ferrolund::routes
