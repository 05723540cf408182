// frmAssets: the entries of the "Update Sounds" menu and the two script entries of the
// Edit menu, each run over the selected rows.
#include <QAction>

#include "assets/loco_scripts.h"
#include "assets/loco_sounds.h"
#include "assets/wagon_sounds.h"
#include "screens/assets/dlgBogie.h"
#include "screens/assets/dlgFreightAudio.h"
#include "screens/assets/frmAssets.h"

namespace ferrolund::screens {

std::function<void()> frmAssets::soundCommand(const std::string& name) {
    using assets::CoachSound;
    using assets::DieselClass;
    using assets::WagonSound;
    const std::pair<const char*, WagonSound> wagons[] = {{"mnuNewWag", WagonSound::NewWagon},
                                                         {"mnuOldH", WagonSound::OldHeavy},
                                                         {"mnuOHR", WagonSound::OldHeavyRattly},
                                                         {"mnuCntrFlats", WagonSound::ContainerFlats},
                                                         {"mnu4WW", WagonSound::FourWheel}};
    for (const auto& [entry, which] : wagons) {
        if (name != entry) continue;
        return [this, which] {
            runTransform([this, which](const auto& rows) {
                return assets::WagonSounds(ctx_, rows, which, [this]() -> std::optional<assets::FreightAudioChoice> {
                    dlgFreightAudio dialog(this);
                    if (dialog.exec() != QDialog::Accepted) return std::nullopt;
                    return dialog.choice();
                });
            });
        };
    }
    const std::pair<const char*, CoachSound> coaches[] = {{"mnuMK1", CoachSound::Mk1},
                                                          {"mnuMK2", CoachSound::Mk2AirConditioned},
                                                          {"mnuMK3", CoachSound::Mk3},
                                                          {"mnuApp", CoachSound::Appropriate}};
    for (const auto& [entry, which] : coaches) {
        if (name != entry) continue;
        return [this, which] {
            runTransform([this, which](const auto& rows) { return assets::CoachSounds(ctx_, rows, which); });
        };
    }
    if (name == "mnuBacn") {
        return [this] {
            runTransform([this](const auto& rows) {
                return assets::ChangeBogieAudioControlName(ctx_, rows, [this]() -> std::optional<std::string> {
                    dlgBogie dialog(this);
                    if (dialog.exec() != QDialog::Accepted) return std::nullopt;
                    return dialog.choice();
                });
            });
        };
    }
    if (name == "mnuSnd37" || name == "mnuCL47") {
        const DieselClass which = name == "mnuSnd37" ? DieselClass::Class37 : DieselClass::Class47;
        return [this, which] {
            runTransform([this, which](const auto& rows) { return assets::ClassSounds(ctx_, rows, which); });
        };
    }
    if (name == "mnuHST") return [this] { runTransform([this](const auto& rows) { return assets::HstSounds(ctx_, rows); }); };
    if (name == "mnuLocoScript") {
        return [this] { runTransform([this](const auto& rows) { return assets::AddLocoScript(ctx_, rows); }); };
    }
    if (name == "mnuWagScript") {
        return [this] { runTransform([this](const auto& rows) { return assets::AddWagonScript(ctx_, rows); }); };
    }
    return {};
}

}  // namespace ferrolund::screens
