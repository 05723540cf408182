// frmAssets: the commands on the selected rows: the edits of the Edit menu and the
// buttons beside the list, the checks of the Check Assets menu, the missing-asset
// workflow and the stock index.
#include <QAction>
#include <QLabel>
#include <QListWidget>
#include <QSpinBox>

#include "assets/asset_index.h"
#include "assets/file_check.h"
#include "assets/loco_information.h"
#include "assets/missing_assets.h"
#include "assets/stock_cab.h"
#include "assets/stock_lights.h"
#include "assets/stock_transforms.h"
#include "assets/where_used.h"
#include "screens/app/qt_text.h"
#include "screens/assets/asset_grid.h"
#include "screens/assets/dlgCoachName.h"
#include "screens/assets/dlgHead.h"
#include "screens/assets/dlgTail.h"
#include "screens/assets/frmAssets.h"
#include "screens/assets/picture_converter.h"
#include "screens/services/frmReport.h"
#include "screens/simdata/frmGraphs.h"
#include "screens/simdata/frmPhysics.h"
#include "tools/text_repair.h"

namespace ferrolund::screens {

std::vector<assets::AssetRow> frmAssets::selectedAssetRows() const {
    std::vector<assets::AssetRow> rows;
    for (std::size_t index : selectedRows()) rows.push_back(row(index));
    return rows;
}

void frmAssets::showOutcome(const assets::TransformOutcome& outcome, const std::vector<std::size_t>& indices) {
    // Each row written comes back with the cells the edit changed, in the order given.
    for (const auto& done : outcome.rows) {
        if (done.written.empty()) continue;
        for (std::size_t index : indices) {
            const assets::AssetRow before = row(index);
            if (before.provider == done.row.provider && before.product == done.row.product &&
                before.path == done.row.path) {
                const auto cells = done.row.Cells();
                for (std::size_t c = 0; c < cells.size(); ++c) grid_->grid().setCell(index, c, cells[c]);
            }
        }
    }
    grid_->refresh();
    if (!outcome.report.empty()) ShowReport(ctx_, this, lang(436, "Build List of Assets"), outcome.report);
}

void frmAssets::runTransform(
    const std::function<assets::TransformOutcome(const std::vector<assets::AssetRow>&)>& transform) {
    const std::vector<std::size_t> indices = selectedRows();
    setRunning(true);
    const assets::TransformOutcome outcome = transform(selectedAssetRows());
    setRunning(false);
    if (outcome.ran) showOutcome(outcome, indices);
}

void frmAssets::changeName() {
    runTransform([this](const auto& rows) { return assets::ChangeName(ctx_, rows); });
}

void frmAssets::changeLods() {
    runTransform([this](const auto& rows) {
        return assets::ChangeLods(ctx_, rows, minLod_->value(), maxLod_->value());
    });
}

void frmAssets::displayChildEntries() {
    const auto entries = assets::DisplayChildEntries(ctx_, selectedAssetRows());
    if (!entries) return;
    children_->clear();
    for (const auto& name : entries->names) children_->addItem(ToQt(tools::FixEntitiesCopy(name)));
    childNames_ = entries->names;
    childrenTitle_->setText(ToQt(entries->caption + " " + entries->name));
    childrenTitle_->show();
    children_->show();
}

std::vector<std::string> frmAssets::chosenChildren() const {
    std::vector<std::string> chosen;
    for (int i = 0; i < children_->count(); ++i) {
        if (children_->item(i)->isSelected() && static_cast<std::size_t>(i) < childNames_.size())
            chosen.push_back(childNames_[static_cast<std::size_t>(i)]);
    }
    return chosen;
}

void frmAssets::removeChildEntries() {
    const std::vector<std::string> chosen = chosenChildren();
    runTransform([this, &chosen](const auto& rows) {
        return assets::RemoveChildEntries(ctx_, rows, chosen, coachNameAsk("_ND"));
    });
    children_->hide();
    childrenTitle_->hide();
}

void frmAssets::correctSmokeStack() {
    const std::vector<std::string> chosen = chosenChildren();
    const std::string child = chosen.empty() ? std::string() : chosen.front();
    runTransform([this, &child](const auto& rows) { return assets::CorrectSmokeStack(ctx_, rows, child); });
}

void frmAssets::addLights(assets::LampKind kind) {
    runTransform([this, kind](const auto& rows) {
        return assets::AddLights(
            ctx_, rows, kind,
            [this, kind](const assets::AssetRow& r,
                         const std::vector<assets::LightTemplate>& offered) -> std::optional<assets::LightChoice> {
                if (kind == assets::LampKind::Head) {
                    dlgHead dialog(r.name, offered, this);
                    return dialog.exec() == QDialog::Accepted ? dialog.choice() : std::nullopt;
                }
                dlgTail dialog(r.name, offered, this);
                return dialog.exec() == QDialog::Accepted ? dialog.choice() : std::nullopt;
            });
    });
}

void frmAssets::addCabOcclusions(const std::string& classDigits) {
    runTransform([this, &classDigits](const auto& rows) { return assets::AddCabOcclusions(ctx_, rows, classDigits); });
}

void frmAssets::checkFiles(assets::RowReport kind) {
    const auto rows = selectedAssetRows();
    setRunning(true);
    const assets::CheckOutcome outcome = assets::CheckRows(ctx_, rows, kind, assets::AssetListRows(ctx_, kind));
    setRunning(false);
    if (outcome.noRows || outcome.report.empty()) return;
    ShowReport(ctx_, this, lang(488, "Check Assets"), outcome.report);
}

void frmAssets::whereIsItUsed() {
    const auto rows = selectedAssetRows();
    if (rows.empty()) {
        if (ctx_.ui) ctx_.ui->message(lang(466), base::Icon::Exclamation);
        return;
    }
    setRunning(true);
    const assets::WhereUsedOutcome outcome = assets::WhereIsItUsed(ctx_, rows);
    setRunning(false);
    ShowReport(ctx_, this, lang(494, "Where is it used?"), outcome.report);
}

void frmAssets::displayPhysics() {
    const std::vector<std::size_t> indices = selectedRows();
    if (indices.empty()) {
        if (ctx_.ui) ctx_.ui->message(lang(466), base::Icon::Exclamation);
        return;
    }
    const assets::AssetRow first = row(indices.front());
    if (first.provider.empty() || first.path.empty()) {
        if (ctx_.ui) ctx_.ui->message("This row names no blueprint, so it has no physics to show.", base::Icon::Exclamation);
        return;
    }
    ShowPhysics(ctx_, this, assets::RowFile(ctx_, first),
                [this](const std::string& locoName, bool steam, const simdata::CurveFiles& curves) {
                    ShowGraphs(ctx_, this, locoName, steam, curves);
                });
}

void frmAssets::saveStockIndex() {
    std::vector<assets::AssetRow> rows;
    rows.reserve(grid_->grid().rowCount());
    for (std::size_t i = 0; i < grid_->grid().rowCount(); ++i) rows.push_back(row(i));
    assets::SaveStockIndex(ctx_, rows);
}

void frmAssets::addLocoInformation() {
    const auto rows = selectedAssetRows();
    if (rows.empty()) {
        if (ctx_.ui) ctx_.ui->message(lang(466), base::Icon::Exclamation);
        return;
    }
    assets::AddLocoInformation(ctx_, rows, ThumbnailToPng);
}

void frmAssets::processMissingAssets() {
    readBlueprints_ = true;
    setRunning(true);
    const assets::MissingAssetsOutcome outcome = assets::ProcessMissingAssets(ctx_, assets::ListScan(screenFilter()));
    setRunning(false);
    if (outcome.noFile) return;
    const std::size_t before = grid_->grid().rowCount();
    std::vector<std::vector<std::string>> cells;
    for (const auto& r : outcome.rows) cells.push_back(r.Cells());
    grid_->appendRows(std::move(cells));
    std::vector<std::size_t> added;
    for (std::size_t i = before; i < grid_->grid().rowCount(); ++i) added.push_back(i);
    grid_->selectRows(added);
    if (outcome.report.empty()) return;
    // The report is offered for saving as Reports\MissingFiles.txt, the input of packing.
    ShowReport(ctx_, this, lang(459, "Process Missing Assets File"), outcome.report);
    if (ctx_.ui && ctx_.ui->ask("Save this list as Reports\\MissingFiles.txt, ready for 'Package Missing Assets'?",
                                base::Buttons::YesNo, base::Icon::Question) == base::Answer::Yes) {
        const std::string saved = assets::SaveMissingFiles(ctx_, outcome.report);
        if (saved.empty()) ctx_.ui->message("Reports\\MissingFiles.txt could not be written.", base::Icon::Exclamation);
    }
}

void frmAssets::packageMissingAssets() {
    setRunning(true);
    const assets::PackageOutcome outcome = assets::PackageMissingAssets(ctx_);
    setRunning(false);
    if (outcome.noFile || !ctx_.ui) return;
    std::string text = std::to_string(outcome.copied.size()) + " file(s) have been gathered in " +
                       ctx_.appPath("NewPackage\\Assets") + ".";
    if (outcome.aborted) text += "\r\nThe packing was aborted.";
    if (!outcome.problems.empty()) {
        text += "\r\n" + std::to_string(outcome.problems.size()) + " line(s) could not be packed; see the report.";
        std::string report;
        for (const auto& p : outcome.problems) report += p + "\r\n";
        ShowReport(ctx_, this, lang(460, "Package Missing Assets"), report);
    }
    ctx_.ui->message(text, base::Icon::Information);
}

std::function<void()> frmAssets::editCommand(const std::string& name) {
    if (name == "mnuChangeName") return [this] { changeName(); };
    if (name == "mnuLod") return [this] { changeLods(); };
    if (name == "mnuHead") return [this] { addLights(assets::LampKind::Head); };
    if (name == "mnuTail") return [this] { addLights(assets::LampKind::Tail); };
    if (name == "mnuAdd37") return [this] { addCabOcclusions("37"); };
    if (name == "mnuAdd47") return [this] { addCabOcclusions("47"); };
    if (name == "mnuSlip") {
        return [this] { runTransform([this](const auto& rows) { return assets::AddWheelSlip(ctx_, rows); }); };
    }
    if (name == "mnuUSAir") {
        return [this] { runTransform([this](const auto& rows) { return assets::ChangeUsAirbrakes(ctx_, rows); }); };
    }
    if (auto command = soundCommand(name)) return command;
    return stockCommand(name);
}

std::function<void()> frmAssets::checkCommand(const std::string& name) {
    using assets::RowReport;
    if (name == "mnuCheckLoco") return [this] { checkFiles(RowReport::MissingFiles); };
    if (name == "mnuShowFiles") return [this] { checkFiles(RowReport::LocoFiles); };
    if (name == "mnuWag") return [this] { checkFiles(RowReport::WagonFiles); };
    if (name == "mnuSFA") return [this] { checkFiles(RowReport::AssetFiles); };
    if (name == "mnuLoft") return [this] { checkFiles(RowReport::LoftFiles); };
    if (name == "mnuwhere") return [this] { whereIsItUsed(); };
    return {};
}

}  // namespace ferrolund::screens
