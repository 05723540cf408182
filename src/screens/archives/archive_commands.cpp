// The main menu's commands of the archives area.
#include "archives/make_batch.h"
#include "archives/report_grid.h"
#include "archives/xls_reader.h"
#include "screens/app/frmEditor.h"
#include "screens/app/menu_commands.h"
#include "screens/archives/archive_search.h"
#include "screens/archives/folder_screens.h"
#include "screens/archives/frmListRS.h"
#include "screens/archives/frmNewAP.h"
#include "screens/services/frmReport.h"
#include "tools/files.h"

namespace ferrolund::screens {

namespace {

// Asks for a report file in AppRoot\Reports (made when missing); its bytes, or nothing
// when the dialog was cancelled.
std::optional<std::string> AskReportFile(app::AppContext& ctx, const std::string& title, const std::string& filter) {
    if (!ctx.ui) return std::nullopt;
    const std::string reports = ctx.appPath("Reports");
    tools::CreatePath(reports);
    const auto file = ctx.ui->chooseOpenFile(title, filter, reports);
    if (!file || file->empty()) return std::nullopt;
    return tools::ReadTextFile(*file);
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
        const auto text = AskReportFile(ctx, "Load Grid from File", "Comma Separated (*.csv)|*.csv");
        if (!text) return;
        archives::ReportGrid grid;
        grid.loadCsv(*text);
        ShowReportGrid(ctx, window, std::move(grid));
    });
    menu.add("mnuExcel", [&ctx, window] {
        const auto bytes = AskReportFile(ctx, "Open Excel Report", "Excel file (*.xls)|*.xls");
        if (!bytes) return;
        auto parsed = archives::ParseXls(*bytes);
        if (auto* error = std::get_if<base::RunError>(&parsed)) {
            ctx.report(*error, "frmEditor");
            return;
        }
        archives::ReportGrid grid;
        grid.loadTable(std::get<services::ReportTable>(std::move(parsed)));
        ShowReportGrid(ctx, window, std::move(grid));
    });
    menu.add("mnuSce", [&ctx, window] { FindArchivesCommand(ctx, window, ctx.gameRoot(), "Scenario.ap"); });
    menu.add("mnuAP", [&ctx, window] { ShowArchiveScreen(ctx, window); });
    menu.add("mnuClearTemp", [&ctx, window] {
        auto* screen = new frmFolder6(ctx, window);
        screen->setAttribute(Qt::WA_DeleteOnClose);
        screen->show();
    });
}

}  // namespace ferrolund::screens
