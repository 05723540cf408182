// The main menu's commands of the archives area.
#include "archives/make_batch.h"
#include "archives/overlength.h"
#include "archives/report_grid.h"
#include "screens/app/frmEditor.h"
#include "screens/app/menu_commands.h"
#include "screens/archives/frmListRS.h"
#include "screens/services/frmReport.h"
#include "tools/files.h"

namespace ferrolund::screens {

namespace {

void FindArchivesCommand(app::AppContext& ctx, QWidget* parent, const std::string& folder, const std::string& mask) {
    std::vector<std::string> overlength;
    if (ctx.ui) ctx.ui->busy(true);
    ctx.abortFlag = false;
    archives::ReportGrid grid = archives::FindArchives(ctx, {folder, mask}, overlength);
    if (ctx.ui) ctx.ui->busy(false);
    ShowReportGrid(ctx, parent, std::move(grid));
    if (!overlength.empty()) {
        ShowReport(ctx, parent, archives::kOverlengthCaption, archives::OverlengthReport(overlength));
    }
}

}  // namespace

void RegisterArchiveCommands(MenuCommands& menu) {
    app::AppContext& ctx = menu.ctx;
    QWidget* window = &menu.window;
    auto report = [&ctx, window](const std::string& caption, const std::string& text) {
        ShowReport(ctx, window, caption, text);
    };
    menu.add("mnuFindAllAP", [&ctx, window] { FindArchivesCommand(ctx, window, ctx.gameRoot(), "*.ap"); });
    menu.add("mnuMC", [&ctx, window] { FindArchivesCommand(ctx, window, ctx.gameRoot(), "MainContent.ap"); });
    menu.add("mnuFA", [&ctx, window] { FindArchivesCommand(ctx, window, ctx.gameRoot() + "\\Assets", "*.ap"); });
    menu.add("mnuESP", [&ctx, report] {
        archives::BulkExtractionCommand(ctx, archives::BulkKind::ScenarioProperties, report);
    });
    menu.add("mnuTxt", [&ctx, window] {
        auto* screen = new frmReport(ctx, {}, true, window);
        screen->setAttribute(Qt::WA_DeleteOnClose);
        screen->show();
    });
    menu.add("mnuCSV", [&ctx, window] {
        if (!ctx.ui) return;
        const std::string reports = ctx.appPath("Reports");
        tools::CreatePath(reports);
        const auto file = ctx.ui->chooseOpenFile("Load Grid from File", "Comma Separated (*.csv)|*.csv", reports);
        if (!file || file->empty()) return;
        archives::ReportGrid grid;
        grid.loadCsv(tools::ReadTextFile(*file));
        ShowReportGrid(ctx, window, std::move(grid));
    });
}

}  // namespace ferrolund::screens
