#pragma once
// The two script commands of the asset list's Edit menu. "Add Loco Script (Diesel)" gives
// a diesel the controls its engine script drives, a script of ours that works the engine
// speed and the exhausts, and a neutral script for its engine simulation; "Add Wagon
// Script" points a wagon at the shared wagon script.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/app_context.h"
#include "assets/asset_row.h"
#include "assets/transform_frame.h"

namespace ferrolund::assets {

// --- "Add Loco Script (Diesel)" ---

struct LocoScriptTemplates {
    std::string controls;      // locoScript1.txt: the control values the script drives
    std::string oneExhaust;    // EngScript1.lua, "aaaaaa" the exhaust
    std::string twoExhausts;   // EngScript2.lua, "aaaaaa" and "bbbbbb"
    std::string defaultAudio;  // DefaultAudio.lua, for the engine simulation
};
// The templates' file names, in the order of the fields above.
inline constexpr std::string_view kLocoScriptTemplates[] = {"locoScript1.txt", "EngScript1.lua", "EngScript2.lua",
                                                            "DefaultAudio.lua"};
LocoScriptTemplates ReadLocoScriptTemplates(const app::AppContext& ctx);

inline constexpr std::string_view kExhaustsAmbiguous = "Unable to modify file as Exhaust names ambiguous.";

// The child entries the script works as exhausts: up to two found by "Exhaust", then by
// "Clag" while there is room. Ambiguous when a name cannot be read or two are the same.
struct ExhaustNames {
    std::vector<std::string> names;  // as the blueprint holds them
    bool ambiguous = false;
};
ExhaustNames FindExhausts(std::string_view text);

// The controls of the template at the head of the control values, and which of them
// act on the whole train. Nothing when the blueprint has no control values.
std::optional<std::string> AddScriptControls(std::string_view text, std::string_view controls);

// The engine script for the exhausts: EngScript1.lua for one, EngScript2.lua for two.
std::string EngineScript(const LocoScriptTemplates& templates, const std::vector<std::string>& exhausts);

// The change to one loco: its text, and as companions the simulation's script (the
// neutral one) and the loco's own script. The simulation blueprint is read through `ctx`.
TransformResult LocoScript(app::AppContext& ctx, std::string_view text, const LocoScriptTemplates& templates);

TransformOutcome AddLocoScript(app::AppContext& ctx, const std::vector<AssetRow>& selected);

// --- "Add Wagon Script" ---

inline constexpr std::string_view kWagonScriptName = "1_WagonScript/wag_script_drb";
inline constexpr std::string_view kWagonScriptTemplate = "WagScript1.txt";

// A wagon with a script component has it named the wagon script; one without gets the
// template's component behind its child entries, "aaaaaa" being `newId`.
TransformResult AddWagonScriptText(std::string_view text, std::string_view templateText, const std::string& newId);

TransformOutcome AddWagonScript(app::AppContext& ctx, const std::vector<AssetRow>& selected);

}  // namespace ferrolund::assets
