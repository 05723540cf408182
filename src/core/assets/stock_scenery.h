#pragma once
// The rolling-stock commands that make new files rather than rewrite a blueprint: a
// scenery item made from a vehicle's model, and the deeper snow texture put beside the
// selected items.

#include <string>
#include <string_view>
#include <vector>

#include "app/app_context.h"
#include "assets/asset_row.h"
#include "assets/transform_frame.h"

namespace ferrolund::assets {

// --- "Convert Selected stock into a  Scenery Item" ---

// The scenery blueprint of the template "APBatch11.txt": "aaaaaa" becomes "Static - " +
// `name` and "bbbbbb" the geometry's path in the new folder.
std::string SceneryBlueprint(std::string_view templateText, std::string_view name, std::string_view geometry);

// The geometry path of the scenery item: the item's folder below Assets (`rowFolder`,
// no trailing backslash), "\Static\", and the last element of the vehicle's GeometryID
// with its "[..]" marker kept.
std::string StaticGeometryId(std::string_view rowFolder, std::string_view geometryId);

// For each row: a Static folder beside the blueprint (with Static\Textures), the new
// blueprint compiled there under the blueprint's name, the folder's .GeoPcDx files
// copied in, and the textures of its Textures folder copied to Static\Textures. Files
// already there are kept by the back-up rule when they differ.
TransformOutcome ConvertToScenery(app::AppContext& ctx, const std::vector<AssetRow>& selected);

// --- "Make Better Snow" ---

inline constexpr std::string_view kSnowTexture = "Snow000_Deep.TgPcDx";

struct SnowOutcome {
    bool ran = false;
    std::vector<std::string> written;  // the files put in place
    std::string report;                // a line per row, CR LF ended
};

// Copies Templates\Snow000_Deep.TgPcDx into the folder of each selected item. Without
// the template nothing is done: "The Snow000_Deep.TgPcDx file was not found in your",
// "Ferrolund\Templates folder.".
SnowOutcome MakeBetterSnow(app::AppContext& ctx, const std::vector<AssetRow>& selected);

// Puts a copy of `from` at `to`: nothing is done when `to` already holds the same bytes,
// and a different file there is kept by the back-up rule first.
base::Status PlaceCopy(const std::string& from, const std::string& to);

}  // namespace ferrolund::assets
