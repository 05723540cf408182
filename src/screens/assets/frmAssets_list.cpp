// frmAssets: filling the list (the walks) and the commands on the list as a whole.
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>

#include "app/error_log.h"
#include "assets/asset_scan.h"
#include "assets/blueprint.h"
#include "screens/app/qt_text.h"
#include "screens/assets/asset_grid.h"
#include "screens/assets/frmAssets.h"
#include "screens/services/frmReport.h"
#include "tools/files.h"
#include "tools/host_path.h"
#include "tools/text_search.h"

namespace ferrolund::screens {

namespace {
constexpr const char* kModule = "frmAssets";

std::string Trimmed(const QString& text) { return FromQt(text.trimmed()); }
}  // namespace

assets::AssetFilter frmAssets::screenFilter() const {
    assets::AssetFilter filter;
    filter.category = Trimmed(category_->currentText());
    filter.rollingStockOnly = rollingStock_->isChecked();
    filter.defaultFolders = defaultFolders_->isChecked();
    filter.excludePreLoad = excludePreLoad_->isChecked();
    filter.language = ctx_.languageTag();
    return filter;
}

void frmAssets::runScan(ScanMode mode, const std::string& onlyFileName) {
    assets::ScanOptions options;
    options.startFolder = Trimmed(folder_->text());
    if (options.startFolder.empty()) {
        if (ctx_.ui) ctx_.ui->message("Choose the folder to list first.", base::Icon::Exclamation);
        return;
    }
    if (mode == ScanMode::QuickDrive) {
        rollingStock_->setChecked(false);
        excludePreLoad_->setChecked(false);
    }
    options.filter = screenFilter();
    options.filter.quickDrive = mode == ScanMode::QuickDrive;
    if (!onlyFileName.empty()) options.filter.onlyFileName = onlyFileName;
    options.fileFilter = Trimmed(filter_->text());
    if (mode == ScanMode::List || mode == ScanMode::QuickDrive) readBlueprints_ = true;
    options.zeroLength = mode == ScanMode::ZeroLength;
    // An empty file is never a blueprint: the zero-length walk lists every one it meets,
    // .bin files included, so that they can be found and deleted.
    options.readBlueprints = readBlueprints_ && mode != ScanMode::ZeroLength;
    zeroLengthMode_ = mode == ScanMode::ZeroLength;

    setRunning(true);
    progress_->setRange(0, 0);
    progress_->setFormat({});
    const assets::ScanTotals totals = assets::ScanAssets(ctx_, options, [this](std::vector<assets::AssetRow>& rows) {
        std::vector<std::vector<std::string>> cells;
        cells.reserve(rows.size());
        for (const auto& row : rows) cells.push_back(row.Cells());
        grid_->appendRows(std::move(cells));
    });
    setRunning(false);
    for (const auto& problem : totals.problems)
        app::AppendErrorLog(ctx_, problem.path + ": " + problem.message, "SP_FileMatch", base::err::kPathFileAccess,
                            kModule);
    lastProblems_ = totals.problems;
    if (!ctx_.ui) return;
    std::string text = totals.aborted           ? "The walk was aborted; the rows found so far stay in the list."
                       : runScanAfterDelete_ ? lang(477, "Selected items have been removed from the grid.")
                                             : lang(476, "Selected items have been added to the grid.");
    if (!totals.problems.empty()) {
        text += "\r\n\r\n" + std::to_string(totals.problems.size()) +
                " file(s) could not be listed; they are named in the report and in Errors.txt.";
    }
    ctx_.ui->message(text, base::Icon::Information);
    if (!totals.problems.empty()) {
        std::string report;
        for (const auto& problem : totals.problems) report += problem.path + "\t" + problem.message + "\r\n";
        ShowReport(ctx_, this, "Files that could not be listed", report);
    }
}

void frmAssets::addToList() { runScan(ScanMode::List); }

void frmAssets::findZeroLength() { runScan(ScanMode::ZeroLength); }

void frmAssets::listQuickDrive() { runScan(ScanMode::QuickDrive); }

void frmAssets::deleteSelected() {
    if (!ctx_.ui) return;
    const std::vector<std::size_t> selected = selectedRows();
    if (selected.empty()) {
        ctx_.ui->message(lang(444), base::Icon::Exclamation);
        return;
    }
    const base::Answer answer = ctx_.ui->ask(lang(484, "This will DELETE all selected files - You have been warned!!!") +
                                                 "\r\n" + lang(485) + "\r\n" + lang(486),
                                             base::Buttons::OkCancel, base::Icon::Exclamation);
    if (answer != base::Answer::Ok) return;
    std::vector<std::string> failed;
    for (std::size_t index : selected) {
        const assets::AssetRow r = row(index);
        if (r.provider.empty()) continue;
        const std::string joined = assets::JoinRowPath(r.provider, r.product, r.path);
        if (joined == assets::kEmptyRowPath) {
            ctx_.ui->message(lang(444), base::Icon::Exclamation);
            break;
        }
        const std::string file = ctx_.gameRoot() + "\\Assets\\" + joined;
        if (!tools::FileExists(file) && tools::FileLength(file) < 0) continue;
        if (auto error = tools::DeleteFile(file)) failed.push_back(file + ": " + error->description);
        tools::ForgetPath(file);
    }
    if (!failed.empty()) {
        std::string report;
        for (const auto& line : failed) report += line + "\r\n";
        ShowReport(ctx_, this, "Files that could not be deleted", report);
    }
    grid_->clearList();
    if (zeroLengthMode_) {
        zeroLengthMode_ = false;
        return;
    }
    runScanAfterDelete_ = true;
    runScan(ScanMode::List);
    runScanAfterDelete_ = false;
}

}  // namespace ferrolund::screens
