#pragma once
// The "Update Sounds" commands of the asset list for wagons and coaches: which bogie
// sound and which sound child entry a vehicle uses. Each runs on the transform frame;
// the text routines behind them are given apart for the tests.

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/app_context.h"
#include "assets/asset_row.h"
#include "assets/transform_frame.h"

namespace ferrolund::assets {

// --- Freight wagons ---

enum class WagonSound { NewWagon, OldHeavy, OldHeavyRattly, ContainerFlats, FourWheel };

// One entry of the freight wagon family. A wagon that gets the sound entry of the
// template and one whose old link is rewritten can end with different sounds: that is
// meant, so the two files are kept apart.
struct WagonSoundSettings {
    std::string_view routine;
    std::string_view caption;
    std::string_view bogie;         // the word behind the bogie sound base
    std::string_view templateFile;  // the sound of an entry added from the template
    std::string_view linkFile;      // the sound a rewritten link points at
};
const WagonSoundSettings& WagonSoundEntry(WagonSound which);

// The two ticks of the "Freight Wagon Sounds" dialog.
struct FreightAudioChoice {
    bool addBogieAudio = false;  // an empty BogieAudioControlName gets the bogie sound
    bool addWagonSound = false;  // a wagon without child entries gets the sound entry
};

inline constexpr std::string_view kWagonSoundsTemplate = "WagonSounds.txt";

// The change to one wagon's text. `templateText` is WagonSounds.txt, `newId` the id its
// "aaaaaa" gets. Unfit when nothing could be changed.
TransformResult UpdateWagonSound(std::string_view text, const WagonSoundSettings& settings, FreightAudioChoice choice,
                                 std::string_view templateText, const std::string& newId);

// Asks the two ticks once, after the warning; nothing ends the command.
using FreightAudioAsk = std::function<std::optional<FreightAudioChoice>()>;
TransformOutcome WagonSounds(app::AppContext& ctx, const std::vector<AssetRow>& selected, WagonSound which,
                             const FreightAudioAsk& ask);

// --- Coaches ---

enum class CoachSound { Mk1, Mk2AirConditioned, Mk3, Appropriate };

struct CoachSoundSettings {
    std::string_view routine;
    std::string_view caption;
    std::string_view bogieAudio;  // the whole new BogieAudioControlName
    std::string_view link;        // the sound child's new BlueprintID; empty: only the bogie
                                  // of a coach on BG_Modern changes
};
const CoachSoundSettings& CoachSoundEntry(CoachSound which);

// The change to one coach's text; `name` is the row's name for the report.
TransformResult UpdateCoachSound(std::string_view text, const CoachSoundSettings& settings, std::string_view name);

TransformOutcome CoachSounds(app::AppContext& ctx, const std::vector<AssetRow>& selected, CoachSound which);

// --- "Change BogieAudioControlName" ---

// The four bogie sounds offered, in the dialog's order.
inline constexpr std::string_view kBogieChoices[] = {"RA_BG_Mk3", "RA_BG_Mk1", "BG_Modern", "BG_Steam"};

TransformResult ChangeBogieAudio(std::string_view text, std::string_view choice);

// Asks the bogie sound once, after the warning; nothing ends the command.
using BogieAsk = std::function<std::optional<std::string>()>;
TransformOutcome ChangeBogieAudioControlName(app::AppContext& ctx, const std::vector<AssetRow>& selected,
                                             const BogieAsk& ask);

}  // namespace ferrolund::assets
