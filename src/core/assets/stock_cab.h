#pragma once
// Rolling-stock transforms that fit a loco out: cab occlusions for the Class 37 and 47
// cabs, wheelslip for a steam loco (its front bogie made unpowered), and the air brake
// handle of a US diesel's cab.

#include <string>
#include <string_view>
#include <vector>

#include "app/app_context.h"
#include "assets/asset_row.h"
#include "assets/transform_frame.h"

namespace ferrolund::assets {

// --- "Add Class 37 Occlusions", "Add Class 47 Occlusions" ---

// The files the occlusions of a class ("37", "47") are copied from, below
// AppRoot\Occlusions: the folder Waggonz\<NN>Occ and the cab shadow <NN>CabShadow.bin.
std::string OcclusionFolderSource(const app::AppContext& ctx, const std::string& classDigits);
std::string CabShadowSource(const app::AppContext& ctx, const std::string& classDigits);
// Those of the two that are missing.
std::vector<std::string> MissingOcclusionFiles(const app::AppContext& ctx, const std::string& classDigits);
// The message that names them and tells where they go.
std::string MissingOcclusionFilesMessage(const app::AppContext& ctx, const std::string& classDigits,
                                         const std::vector<std::string>& missing);

// Puts `insert` behind the last child entry of the list: from "</Children>" back to the
// last "</cEntityContainerBlueprint-sChild>" inside the list, behind which a CR LF and
// the insert follow. A list without entries takes it at its head (the "<Children>" rule).
// False, the text unchanged, when the blueprint has no child list.
bool AppendToChildren(std::string& text, std::string_view insert);

// The class template filled for one loco: two new ids, the loco's Provider and Product,
// and the cab shadow's blueprint beside the loco.
std::string OcclusionChildren(std::string_view classTemplate, const AssetRow& row, const std::string& classDigits);

TransformOutcome AddCabOcclusions(app::AppContext& ctx, const std::vector<AssetRow>& selected,
                                  const std::string& classDigits);

// --- "Add WheelSlip to Steam Loco" ---

// The bogie's drive switched off: an existing "Powered" value becomes eFalse (searched
// from "<Animation"); without one, a Powered line is put before the first "<Axle>" behind
// "<Animation". Nothing when it is already eFalse; Unfit with neither.
TransformResult MakeBogieUnpowered(std::string_view text);

// Explains itself first. The selected rows are bogies: the first row whose path lacks
// "Bogie" ends the walk; one whose path lacks "Front" is asked about.
TransformOutcome AddWheelSlip(app::AppContext& ctx, const std::vector<AssetRow>& selected);

// --- "Change US Diesel airbrake settings" ---

// The cab interior a loco names: the first blueprint it refers to whose BlueprintID holds
// "Interior"; the loco itself when its own text holds the train brake control. Empty,
// with the reason, when there is none or its file is missing.
std::string InteriorBlueprintFile(app::AppContext& ctx, const std::string& locoFile, std::string& reason);

inline constexpr std::string_view kNoNotchedLever =
    "This loco does not appear to have a Notched Lever control\r\nno changes can be made.";

// The train brake's notched lever replaced by the template's air brake handle: its
// InterfaceElements block gives way to the template, with "aaaaaa" replaced by the old
// lever's AnimationName. Unfit (kNoNotchedLever) without such a lever.
TransformResult SetUsAirBrakes(std::string_view text, std::string_view airTemplate);

TransformOutcome ChangeUsAirbrakes(app::AppContext& ctx, const std::vector<AssetRow>& selected);

}  // namespace ferrolund::assets
