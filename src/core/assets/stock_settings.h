#pragma once
// The rolling-stock transforms that change how the simulator lists and shows an item:
// its browser category, whether scenarios may use it, its languages, and the glow of its
// model's materials. Each runs on the transform frame.

#include <string>
#include <string_view>
#include <vector>

#include "app/app_context.h"
#include "assets/asset_row.h"
#include "assets/transform_frame.h"

namespace ferrolund::assets {

// --- "Change Category" ---

// The category that hides an item from the browser.
inline constexpr std::string_view kHiddenCategory = "eExcludeFromBrowserList";

// The value as the blueprint holds it: a small 'e' put before it unless it starts with one.
std::string CategoryValue(std::string_view typed);

// Writes the category; without a Category element one is put behind "</Description>".
// False when there is neither.
bool SetCategory(std::string& text, std::string_view value);

// Asks the category once (nothing typed ends the command) and writes it into every
// selected item. The row's Category cell follows, and its In Scene becomes "Yes".
TransformOutcome ChangeCategory(app::AppContext& ctx, const std::vector<AssetRow>& selected);

// --- "Use in Scenarios" ---

struct ScenarioUse {
    std::string valid;     // ValidInScenarios after the change; empty when the item has none
    std::string category;  // Category after the change; empty when the item has none
};
// Turns ValidInScenarios between eTrue and eFalse, and gives an empty Category the value
// eUncategorised. Nothing is changed when the item has neither element.
ScenarioUse ToggleScenarioUse(std::string& text);

// The cells In Scene and Category follow.
TransformOutcome UseInScenarios(app::AppContext& ctx, const std::vector<AssetRow>& selected);

// --- "Make English Only" ---

// Every localised block loses what follows its English text; gives how many changed.
int KeepEnglishOnly(std::string& text);

TransformOutcome MakeEnglishOnly(app::AppContext& ctx, const std::vector<AssetRow>& selected);

// --- "Zero EmissiveAsVec" ---

inline constexpr std::string_view kNoEmission = "0.0000 0.0000 0.0000 0.0000";

// Sets the EmissiveAsVec behind each AmbientAsVec of a geometry to no emission; gives
// how many were written.
int ZeroEmission(std::string& text);

// Works on the geometry of each selected item.
TransformOutcome ZeroEmissive(app::AppContext& ctx, const std::vector<AssetRow>& selected);

}  // namespace ferrolund::assets
