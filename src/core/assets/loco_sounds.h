#pragma once
// The "Update Sounds" commands of the asset list for three diesel classes: the Class 37
// and Class 47 get their engine sound children, horn place, bell control and bogie sound
// from the sound packs; the Class 43 power car is pointed at the MTU engine's sounds.

#include <string>
#include <string_view>
#include <vector>

#include "app/app_context.h"
#include "assets/asset_row.h"
#include "assets/transform_frame.h"

namespace ferrolund::assets {

enum class DieselClass { Class37, Class47 };

// The templates one class needs, as their files hold them.
struct ClassSoundTemplates {
    std::string child;  // a sound child entry: ChildAudio37.txt or ChildAudio.txt
    std::string bell;   // the bell's control: Bell37.txt or BellControl.txt
};
// Their file names for the class.
std::vector<std::string_view> ClassSoundTemplateNames(DieselClass which);

inline constexpr std::string_view kAlreadyModified = "This Loco file appears to have already been modified.";

// The change to one loco's text. A loco already done is left as it was (Nothing, with
// kAlreadyModified); one without the class's engine sound is Unfit.
TransformResult UpdateClassSounds(std::string_view text, DieselClass which, const ClassSoundTemplates& templates);

TransformOutcome ClassSounds(app::AppContext& ctx, const std::vector<AssetRow>& selected, DieselClass which);

// --- "Class 43/HST Sounds" ---

inline constexpr std::string_view kHstControlsTemplate = "HST_Controls.txt";

// The replacements on one power car's text; `controls` is HST_Controls.txt, needed only
// when the car has no guard's signal yet (Unfit when it is then missing).
TransformResult UpdateHstSounds(std::string_view text, std::string_view controls);

TransformOutcome HstSounds(app::AppContext& ctx, const std::vector<AssetRow>& selected);

}  // namespace ferrolund::assets
