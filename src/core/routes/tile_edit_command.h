#pragma once
// The report grid's commands that change the route the list came from: "Substitute
// existing scenery item", "Remove Selected Scenery Items", "Remove selected loft items"
// and "Fix Prov/Prod in RouteProperties.xml".

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "app/app_context.h"
#include "archives/report_grid.h"
#include "routes/tile_edit.h"

namespace ferrolund::routes {

// What the substitution dialog gives back: the replacement triple (its path ending in
// ".xml") and the kind whose tile folder is walked.
struct SubstituteChoice {
    assets::BlueprintRef replacement;
    int kind = kSceneryKind;
};
// Shows the dialog for the item to be replaced; nothing when it was cancelled.
using AskSubstitute = std::function<std::optional<SubstituteChoice>(const GridItem& old)>;

// "Substitute existing scenery item" on the first of the selected rows. Refused until
// the duplicates are removed. The new values go to file form (ReplaceApos). An empty new field asks whether the item is to be removed;
// Yes empties the whole triple. Scenery items are replaced in the route's Scenery tiles
// and in each listed scenario's.
TileEditRun SubstituteItem(app::AppContext& ctx, const archives::ReportGrid& grid,
                           const std::vector<std::size_t>& selectedRows, const AskSubstitute& ask);

// "Remove Selected Scenery Items" (kSceneryKind: each item's whole entity, in the route's
// Scenery tiles and the scenarios') and "Remove selected loft items" (kLoftKind: the
// reference emptied, in the loft tiles).
TileEditRun RemoveSelectedItems(app::AppContext& ctx, const archives::ReportGrid& grid,
                                const std::vector<std::size_t>& selectedRows, int kind);

// The Provider and Product pairs of the grid's rows, each once (compared without regard
// to case), in row order: a row names a pair by its path below "Assets", as
// "Provider\Product", or as provider and product in its first two columns.
std::vector<std::pair<std::string, std::string>> GridProviders(const std::string& gameRoot,
                                                               const archives::ReportGrid& grid);

// The RBlueprintSetPreLoad section of a RouteProperties text rebuilt: the pair of the
// weather blueprint, that of the route template (behind InfrastructureModified), then
// `pairs`, each once, each written in the form of `block` with "xxxxxxxx" a new id,
// "aaaaaa" the provider and "bbbbbb" the product. Nothing when the text has no such
// section.
std::optional<std::string> RebuildPreload(const std::string& properties, const std::string& block,
                                          const std::vector<std::pair<std::string, std::string>>& pairs);

// "Fix Prov/Prod in RouteProperties.xml": the route's file rewritten with the preload
// list of the grid's providers and products, the old file kept by the back-up rule.
// True when the file was replaced.
bool FixRouteProviders(app::AppContext& ctx, const archives::ReportGrid& grid);

}  // namespace ferrolund::routes
