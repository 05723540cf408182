#pragma once
// "Correct Provider": an item moved to another provider's folder names its old provider
// throughout its blueprint, so the game looks for its own files in the wrong place. The
// command makes every such name the provider folder the file now stands under.

#include <string>
#include <string_view>
#include <vector>

#include "app/app_context.h"
#include "assets/transform_frame.h"

namespace ferrolund::assets {

inline constexpr std::string_view kProviderCorrected = "Your asset(s) has been modified as requested.";

// The provider a blueprint names for itself: the first element of its GeometryID, else
// the first Provider value that is not empty. Empty when it names none.
std::string OwnProvider(std::string_view xml);

// Every occurrence of the old provider word standing as a whole value or path element
// (between '>' or '\' and '<' or '\') made `provider`, without regard to case. Nothing
// when the blueprint already names that provider, or none.
TransformResult CorrectProviderText(std::string_view xml, std::string_view provider);

// For blueprint files anywhere below the game (rows of the asset lists, of the list of
// Content): each file's provider is the first folder behind Assets, else behind Content.
TransformOutcome CorrectProvider(app::AppContext& ctx, const std::vector<std::string>& files);

}  // namespace ferrolund::assets
