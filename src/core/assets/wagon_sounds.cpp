#include "assets/wagon_sounds.h"

#include <memory>

#include "assets/sound_text.h"
#include "assets/stock_templates.h"
#include "tools/numbers.h"
#include "tools/text_search.h"

namespace ferrolund::assets {

using tools::InStr;
using Verdict = TransformResult::Verdict;

namespace {

constexpr std::string_view kWagonLinkFolder = "Audio\\RailVehicles\\Wagons\\AP\\";
// The links of the simulator's own wagon sounds, which the family rewrites.
constexpr std::string_view kOldWagonLinks[] = {"Audio\\RailVehicles\\Wagons\\Wagon Generic Sound.xml",
                                               "Audio\\RailVehicles\\Wagons\\Wagon Sound.xml"};
constexpr std::string_view kCoachBogie = "Kuju\\RailSimulator\\Audio\\RailNetwork\\Bogies\\AP\\AP_2Axle_Joints";
constexpr std::string_view kMk3Bogie = "Kuju\\RailSimulator\\Audio\\RailNetwork\\Bogies\\RA_BG_Mk3";

const WagonSoundSettings kWagonSounds[] = {
    {"mnuNewWag_Click", "New Wagon Sounds", "BG_Modern", "AP_Old_1_Sound.xml", "AP_New_Sound.xml"},
    {"mnuOldH_Click", "Old heavy wagons", "BG_Steam", "AP_Old_1_Sound.xml", "AP_Old_1_Sound.xml"},
    {"mnuOHR_Click", "Old Heavy Rattly", "BG_Steam", "AP_Old_2_Sound.xml", "AP_Old_1_Sound.xml"},
    {"mnuCntrFlats_Click", "Container Flats", "BG_Modern", "AP_Old_1_Sound.xml", "AP_Containers_Sound.xml"},
    {"mnu4WW_Click", "4 Wheel Wagons", "BG_Steam", "AP_4Wheel_Sound.xml", "AP_4Wheel_Sound.xml"},
};

const CoachSoundSettings kCoachSounds[] = {
    {"mnuMK1_Click", "Add MK1 & Mk2a/b/c Coach Sounds", kCoachBogie,
     "Audio\\RailVehicles\\Passenger\\AP\\AP_Mk1-2a_Sound.xml"},
    {"mnuMK2_Click", "Add Mk2d/e/f (air cond) Coach Sounds", kCoachBogie,
     "Audio\\RailVehicles\\Passenger\\AP\\AP_Mk2f_Sound.xml"},
    {"mnuMK3_Click", "Add Mk3 Coach Sounds", kMk3Bogie, {}},
    {"mnuApp_Click", "Add Appropriate Coach Sounds", kMk3Bogie, {}},
};

// The verdict of a text that may or may not have changed.
TransformResult Outcome(std::string_view before, std::string after, std::string unchanged, std::string note = {}) {
    if (after == before) return TransformResult::Skip(Verdict::Nothing, std::move(unchanged));
    TransformResult result = TransformResult::Changed(std::move(after));
    result.note = std::move(note);
    return result;
}

}  // namespace

// --- Freight wagons ---

const WagonSoundSettings& WagonSoundEntry(WagonSound which) { return kWagonSounds[static_cast<int>(which)]; }

TransformResult UpdateWagonSound(std::string_view text, const WagonSoundSettings& settings, FreightAudioChoice choice,
                                 std::string_view templateText, const std::string& newId) {
    std::string out(text);
    if (choice.addBogieAudio) {
        const std::optional<std::string> bogie = BogieAudio(out);
        if (bogie && tools::TrimBlanks(*bogie).empty()) {
            SetBogieAudio(out, std::string(kBogieSoundBase) + std::string(settings.bogie));
        }
    }
    if (choice.addWagonSound) {
        if (const long empty = InStr(out, "<Children/>"); empty > 0) {
            if (tools::TrimBlanks(templateText).empty()) {
                return TransformResult::Skip(Verdict::Unfit, MissingTemplateMessage(kWagonSoundsTemplate));
            }
            const std::string entry = FillMarkers(std::string(WithoutLastLineEnd(templateText)),
                                                  {{"aaaaaa", newId}, {"bbbbbb", std::string(settings.templateFile)}});
            out.replace(static_cast<std::size_t>(empty - 1), 11, entry);
        }
    }
    // The test reads the text as changed above, so a link beside a new entry is rewritten too.
    long link = 0;
    for (std::string_view old : kOldWagonLinks) {
        if ((link = InStr(out, old)) > 0) break;
    }
    const std::string newLink = std::string(kWagonLinkFolder) + std::string(settings.linkFile);
    if (link > 0 && SetLinkAt(out, link, newLink)) return Outcome(text, std::move(out), {});
    return Outcome(text, std::move(out), "This wagon has no Wagon Sound entry to change.",
                   "It has no Wagon Sound entry to point at the new sound.");
}

TransformOutcome WagonSounds(app::AppContext& ctx, const std::vector<AssetRow>& selected, WagonSound which,
                             const FreightAudioAsk& ask) {
    const WagonSoundSettings& settings = WagonSoundEntry(which);
    auto choice = std::make_shared<FreightAudioChoice>();
    auto templateText = std::make_shared<std::string>();
    TransformCommand command(std::string(settings.routine), TransformFile::Blueprint,
                             [settings, choice, templateText](app::AppContext&, TransformRow&, std::string_view text) {
                                 return UpdateWagonSound(text, settings, *choice, *templateText, tools::NewDeltaId());
                             });
    command.prepare = [ask, choice, templateText](app::AppContext& c, const std::vector<AssetRow>&) {
        const std::optional<FreightAudioChoice> asked = ask ? ask() : std::nullopt;
        if (!asked) return false;
        *choice = *asked;
        *templateText = StockTemplate(c, kWagonSoundsTemplate);
        return true;
    };
    return RunTransform(ctx, selected, command);
}

// --- Coaches ---

const CoachSoundSettings& CoachSoundEntry(CoachSound which) { return kCoachSounds[static_cast<int>(which)]; }

TransformResult UpdateCoachSound(std::string_view text, const CoachSoundSettings& settings, std::string_view name) {
    std::string out(text);
    if (settings.link.empty()) {
        const std::optional<std::string> bogie = BogieAudio(out);
        if (!bogie || InStr(*bogie, "BG_Modern") == 0) {
            return TransformResult::Skip(
                Verdict::Unfit, std::string(name) + " was not using the BG_Modern audio files. No change was made to it.");
        }
        SetBogieAudio(out, settings.bogieAudio);
        return Outcome(text, std::move(out), "This coach already uses " + std::string(settings.bogieAudio) + ".");
    }
    SetBogieAudio(out, settings.bogieAudio);
    const long sound = InStr(out, "Wagon Sound");
    if (sound > 0 && SetLinkAt(out, sound, settings.link)) {
        return Outcome(text, std::move(out), "This coach already uses these sounds.");
    }
    return Outcome(text, std::move(out), "This coach has no Wagon Sound entry to change.",
                   "It has no Wagon Sound entry to point at the new sound.");
}

TransformOutcome CoachSounds(app::AppContext& ctx, const std::vector<AssetRow>& selected, CoachSound which) {
    const CoachSoundSettings& settings = CoachSoundEntry(which);
    return RunTransform(ctx, selected,
                        TransformCommand(std::string(settings.routine), TransformFile::Blueprint,
                                         [settings](app::AppContext&, TransformRow& row, std::string_view text) {
                                             return UpdateCoachSound(text, settings, row.row.name);
                                         }));
}

// --- Change BogieAudioControlName ---

TransformResult ChangeBogieAudio(std::string_view text, std::string_view choice) {
    std::string out(text);
    if (!SetBogieAudio(out, std::string(kBogieSoundBase) + std::string(choice))) {
        return TransformResult::Skip(Verdict::Unfit, "This item has no BogieAudioControlName.");
    }
    return Outcome(text, std::move(out), "This item already uses that bogie sound.");
}

TransformOutcome ChangeBogieAudioControlName(app::AppContext& ctx, const std::vector<AssetRow>& selected,
                                             const BogieAsk& ask) {
    auto choice = std::make_shared<std::string>();
    TransformCommand command("mnuBacn_Click", TransformFile::Blueprint,
                             [choice](app::AppContext&, TransformRow&, std::string_view text) {
                                 return ChangeBogieAudio(text, *choice);
                             });
    command.prepare = [ask, choice](app::AppContext&, const std::vector<AssetRow>&) {
        const std::optional<std::string> asked = ask ? ask() : std::nullopt;
        if (!asked || asked->empty()) return false;
        *choice = *asked;
        return true;
    };
    return RunTransform(ctx, selected, command);
}

}  // namespace ferrolund::assets
