#pragma once
// "Show Location of all Assets": each reference of a route's tiles with the tile it stands
// on and its place within that tile. One walker serves the scenery items, the loft and
// road ribbons and the track ribbons of Tracks.bin; what differs is the block it reads.

#include <string>
#include <string_view>
#include <vector>

#include "app/app_context.h"
#include "routes/route_check.h"
#include "routes/route_check_command.h"

namespace ferrolund::routes {

// One folder of the walk and the block that holds an item in its tiles.
struct LocationWalk {
    TileFolder folder;
    std::string blockTag;  // "<cDynamicEntity", "<Network-cLoftRibbon", ...
    std::string closeTag;  // the block's closing tag
    std::string onlyTile;  // the one tile read ("Tracks.bin"); empty for every *.bin
};

// The walks of a route in order: its Scenery, the loft tiles, the road tiles, the track
// ribbons of Networks\Tracks.bin, then each listed scenario's Scenery folder that exists.
std::vector<LocationWalk> LocationWalks(const std::string& gameRoot, const std::string& routeFolder,
                                        const std::vector<std::string>& scenarioFolders);

// A tile number as the tiles' file names write it: six digits, "+" unless negative
// ("-1" gives "-000001", "123" "+000123"). A text that is no number stays as it is.
std::string TileNumber(std::string_view distance);

// Where a block stands: its tile as "+000123-000045" and its offsets within the tile.
// An item placed by a far vector (scenery items, the start of loft and road ribbons)
// gives the route and tile coordinates of X and of Z; a track ribbon, which carries no
// far vector of its own, its route vector and the lower left corner of its extent.
struct BlockPlace {
    std::string tile;
    std::string offsetX;
    std::string offsetZ;
};
BlockPlace PlaceOfBlock(std::string_view block);

struct AssetLocation {
    std::string path;
    std::string kind;
    BlockPlace place;
    // kind + " on tile " + tile, and the offsets when there are any.
    std::string where() const;
};

struct LocationRun {
    std::vector<AssetLocation> items;    // every reference with a provider, product and blueprint id
    std::vector<AssetLocation> missing;  // those whose loose file is absent
    CheckRun check;                      // the files already tested
    bool aborted = false;
};

// The blocks of one tile's XML text. A tile without its own place (a broken block) is
// named by its file name.
void ScanTileLocations(app::AppContext& ctx, std::string_view xml, const std::string& tileName,
                       const LocationWalk& walk, LocationRun& run);

// CheckForFiles2 to CheckForFiles5: the walk over one folder's tiles, with the progress
// bar and the abort test between tiles.
void CheckForLocations(app::AppContext& ctx, const LocationWalk& walk, LocationRun& run);

struct LocationOutcome {
    ReportListing listing;    // path, and where it stands; sorted, each row once
    std::string missingText;  // for the notes box; empty when nothing is missing
    LocationRun run;
    bool stopped = false;  // no loose scenery, or "&Abort"
};

// Command17 for the selected route.
LocationOutcome ShowAssetLocations(app::AppContext& ctx, const CheckedRoute& route);

}  // namespace ferrolund::routes
