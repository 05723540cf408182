#pragma once
// Changes to a route's tiles made from the report grid: the Provider, Product,
// BlueprintID triple of an item replaced or emptied, a scenery item's whole entity taken
// out, a loft item's reference emptied. Each tile is converted to XML and edited as text;
// a tile that holds the item is converted back, backed up and replaced, a tile that does
// not hold it is left exactly as it was.

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/app_context.h"
#include "assets/blueprint.h"
#include "routes/route_check.h"
#include "routes/route_check_command.h"
#include "tools/backup.h"

namespace ferrolund::routes {

// The item kinds of the route check's lists, by number.
inline constexpr int kSceneryKind = 1;
inline constexpr int kLoftKind = 2;
inline constexpr int kRoadKind = 3;
inline constexpr int kTrackKind = 4;

// "(Scenery Item)", "(Loft Item)", "(Road Item)", "(Track Item)"; empty for another number.
std::string ItemKindText(int kind);

// An item of the report grid as the tile commands need it.
struct GridItem {
    assets::BlueprintRef ref;  // the blueprint path ends in ".xml", as the tiles name it
    int kind = 0;              // 0: the row names none of the four kinds
};

// The triple of a path below GameRoot\Assets (the game root is passed over first, so a
// folder named "Assets" above it does no harm). Nothing when the path has no provider
// and product folder.
std::optional<assets::BlueprintRef> SplitGamePath(const std::string& gameRoot, std::string_view path);

// The cut of a report-grid row, its cells joined by tabs: behind "Assets" the provider,
// the product and the blueprint path up to ".bin", which gets ".xml"; the text behind
// ".bin", trimmed, begins with the kind ("(Scenery Item)" or "(Scenery Item) on tile
// +000001-000002.bin"). Nothing when the row holds no such path.
std::optional<GridItem> CutGridItem(const std::string& gameRoot, std::string_view row);

// Edits of a tile's XML text. An item is found by its blueprint path as the value of a
// BlueprintID, with the Provider and Product in front of it equal to the item's, all
// compared without regard to case. Each gives the number of places changed.
//
// The triple set to the replacement's values, each trimmed; empty values empty it.
std::size_t SubstituteInTile(std::string& xml, const assets::BlueprintRef& old, const assets::BlueprintRef& replacement);
// The whole <cDynamicEntity ...> ... </cDynamicEntity> that holds the item, with its lines.
std::size_t RemoveEntitiesInTile(std::string& xml, const assets::BlueprintRef& item);
// A loft section cannot lose its reference element, so its triple is emptied from the
// <Provider before the hit on: the section stays, naming nothing.
std::size_t EmptyLoftInTile(std::string& xml, const assets::BlueprintRef& item);

// The tile folders of a kind in a route: Scenery (then each listed scenario's Scenery
// folder that exists, when `withScenarios`), the loft tiles, the road tiles, or the
// binaries directly in Networks for track items. Empty for an unknown kind.
std::vector<TileFolder> KindFolders(const std::string& gameRoot, const CheckedRoute& route, int kind,
                                    bool withScenarios);

struct TileEditRun {
    std::size_t tilesRead = 0;
    std::size_t tilesChanged = 0;
    std::size_t tilesFailed = 0;       // converted back to nothing, or not replaced
    std::vector<std::string> backups;  // the names the old tiles now have
    bool aborted = false;
};

// Gives the number of changes it made to the text.
using TileTextEdit = std::function<std::size_t(std::string& xml)>;

// Every *.bin of the folders, with the progress bar, and AbortFlag tested between tiles.
// A changed text is written to TempFiles, converted back; an empty result shows
// "Substitution failed - no changes have been made to the original file." and the tile
// stays. Otherwise the tile is backed up by the back-up rule and replaced.
TileEditRun EditTiles(app::AppContext& ctx, const std::vector<TileFolder>& folders, const TileTextEdit& edit);

}  // namespace ferrolund::routes
