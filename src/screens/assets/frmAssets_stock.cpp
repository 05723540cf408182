// frmAssets: the rolling-stock transforms of the Edit menu that add passengers or a
// conductor, make a dead copy, set mass, category and scenario use, trim languages,
// dim a model's glow, and make scenery or snow from the selected stock.
#include "assets/stock_edits.h"
#include "assets/stock_scenery.h"
#include "assets/stock_settings.h"
#include "screens/assets/dlgCoachName.h"
#include "screens/assets/dlgMass.h"
#include "screens/assets/frmAssets.h"
#include "screens/services/frmReport.h"

namespace ferrolund::screens {

assets::SaveAsAsk frmAssets::coachNameAsk(const std::string& suffix) {
    return [this, suffix](const assets::AssetRow& r, const std::string& base) -> std::optional<assets::SaveAsChoice> {
        dlgCoachName dialog(ctx_, base, r.name, suffix, this);
        if (dialog.exec() != QDialog::Accepted) return std::nullopt;
        return assets::SaveAsChoice{dialog.fileName(), dialog.internalName()};
    };
}

void frmAssets::correctMassCapacity() {
    if (selectedRows().empty()) {
        if (ctx_.ui) ctx_.ui->message(lang(444), base::Icon::Exclamation);
        return;
    }
    dlgMass dialog(ctx_, this);
    if (dialog.exec() != QDialog::Accepted) return;
    const assets::MassCapacity values{dialog.mass(), dialog.capacity()};
    runTransform([this, &values](const auto& rows) { return assets::CorrectMassCapacity(ctx_, rows, values); });
}

void frmAssets::makeBetterSnow() {
    setRunning(true);
    const assets::SnowOutcome outcome = assets::MakeBetterSnow(ctx_, selectedAssetRows());
    setRunning(false);
    if (outcome.ran && !outcome.report.empty()) ShowReport(ctx_, this, lang(436, "Build List of Assets"), outcome.report);
}

std::function<void()> frmAssets::stockCommand(const std::string& name) {
    using Rows = std::vector<assets::AssetRow>;
    if (name == "mnuAdd")
        return [this] { runTransform([this](const Rows& rows) { return assets::AddPassengers(ctx_, rows, coachNameAsk("_MT")); }); };
    if (name == "mnuDead")
        return [this] { runTransform([this](const Rows& rows) { return assets::MakeDead(ctx_, rows, coachNameAsk("_Dead")); }); };
    if (name == "mnuCond") return [this] { runTransform([this](const Rows& rows) { return assets::AddConductor(ctx_, rows); }); };
    if (name == "mnuMass") return [this] { correctMassCapacity(); };
    if (name == "mnuSce") return [this] { runTransform([this](const Rows& rows) { return assets::ConvertToScenery(ctx_, rows); }); };
    if (name == "mnuZero") return [this] { runTransform([this](const Rows& rows) { return assets::ZeroEmissive(ctx_, rows); }); };
    if (name == "mnuSnow") return [this] { makeBetterSnow(); };
    if (name == "mnuCategory")
        return [this] { runTransform([this](const Rows& rows) { return assets::ChangeCategory(ctx_, rows); }); };
    if (name == "mnuInScene")
        return [this] { runTransform([this](const Rows& rows) { return assets::UseInScenarios(ctx_, rows); }); };
    if (name == "mnuCNLK") {
        return [this] {
            runTransform([this](const Rows& rows) { return assets::ChangeName(ctx_, rows, assets::NameChange::NamesAndKeys); });
        };
    }
    if (name == "mnuEnglish")
        return [this] { runTransform([this](const Rows& rows) { return assets::MakeEnglishOnly(ctx_, rows); }); };
    return {};
}

}  // namespace ferrolund::screens
