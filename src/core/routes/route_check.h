#pragma once
// The walker of the route check: each tile of a route folder read for the Provider,
// Product, BlueprintID triples it names (by the lines of its XML text), each tested
// against the loose file under GameRoot\Assets. CheckForFiles and its variants are this
// one walker; what differs between them is the WalkRule.

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "app/app_context.h"

namespace ferrolund::routes {

// One folder of tiles the check walks.
struct TileFolder {
    std::string folder;    // full system path
    std::string itemKind;  // "(Scenery Item)", "(Loft Item)", "(Road Item)", "(Track Item)"
    std::string tempSub;   // below TempFiles, ending in '\'
    std::string prefix;    // of the progress caption
};

// The folders of a route in the order the check walks them: Scenery, the loft and road
// tiles, the binaries directly in Networks, then each listed scenario's Scenery folder
// that exists. `scenarioFolders` are the scenarios' folder names.
std::vector<TileFolder> RouteTileFolders(const std::string& gameRoot, const std::string& routeFolder,
                                         const std::vector<std::string>& scenarioFolders);

// What distinguishes the variants of CheckForFiles.
struct WalkRule {
    // CheckForFiles6: only references of this provider and product (compared without
    // regard to case); both empty for all.
    std::string onlyProvider;
    std::string onlyProduct;
    // A blueprint whose path holds "TransferPoints" adds the references of its container.
    bool followTransfers = true;
    // An empty folder tells the user that the route is probably packed.
    bool tellEmptyFolder = true;

    bool filtered() const { return !onlyProvider.empty() || !onlyProduct.empty(); }
    // The reference passes the provider and product filter.
    bool admits(std::string_view provider, std::string_view product) const;
};

// The state of one run of the check.
struct CheckRun {
    std::vector<std::string> usedAssets;               // every reference met, duplicates kept
    std::unordered_map<std::string, std::string> kindOf;  // item kind of the first folder naming it
    std::vector<std::vector<std::string>> missingRows;  // path, kind + " on tile " + tile
    bool missingFound = false;
    std::string missingText;
    std::size_t tilesRead = 0;
    bool aborted = false;
    // Existence of the files already tested in this run, by path as written.
    std::unordered_map<std::string, bool> known;
};

// GameRoot\Assets\Provider\Product\BlueprintID with its last three letters made "bin".
std::string AssetPath(const std::string& gameRoot, std::string_view provider, std::string_view product,
                      std::string_view blueprintId);

// The decision "missing": the loose file exists as written, or after FixEntities; the
// file system is searched without regard to case. An asset held only in an .ap is
// missing. Results are remembered in the run.
bool AssetPresent(app::AppContext& ctx, const std::string& path, CheckRun& run);

// getTransfer: the references inside a container blueprint, added to the run; a missing
// one gives the row of the tile that named the container.
void getTransfer(app::AppContext& ctx, const std::string& containerPath, const std::string& kind,
                 const std::string& where, CheckRun& run);

// Each reference of a tile's XML text, in order, by the rule of tile_references.h. A
// Provider or Product line without its closing '<' shows the error box and ends the
// text: false then.
using ReferenceSink =
    std::function<void(const std::string& provider, const std::string& product, const std::string& blueprintId)>;
bool ForEachReference(app::AppContext& ctx, std::string_view xml, const std::string& tileName,
                      const ReferenceSink& take);

// The references of one tile's XML text, added to the run. A Provider or Product line
// without its closing '<' shows the error box and ends the tile.
void ScanTileText(app::AppContext& ctx, std::string_view xml, const std::string& tileName, const TileFolder& folder,
                  const WalkRule& rule, CheckRun& run);

// CheckForFiles: every *.bin of the folder (not below it), with the progress bar and the
// abort test between tiles. From the first miss of the run on, each tile's XML is kept
// in TempFiles\<tempSub><name>xml. The tiles are read and decoded in worker threads,
// without their XML until it is to be kept; their references are taken, and everything
// told or written, here in tile order, as if they were read one by one. With an outside
// converter each tile is read as its XML text.
void CheckForFiles(app::AppContext& ctx, const TileFolder& folder, const WalkRule& rule, CheckRun& run);

// The tiles of a folder one by one as XML text: the progress bar at each tile's share,
// events let through and AbortFlag tested before each. A tile the converter cannot
// read is reported and passed over. True when AbortFlag ended the walk.
using TileReader = std::function<void(const std::string& tile, std::string& xml)>;
bool WalkTiles(app::AppContext& ctx, const TileFolder& folder, const std::vector<std::string>& tiles,
               const TileReader& read);

// The files of a folder matching *.bin, in name order, without sub-folders.
std::vector<std::string> ListTiles(app::AppContext& ctx, const std::string& folder);

// Sorts without regard to case and keeps each text once (RemD2): an entry is kept when
// it differs from the last one kept and is not empty.
std::vector<std::string> SortUnique(std::vector<std::string> items);

}  // namespace ferrolund::routes
