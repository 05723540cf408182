#include "screens/archives/archive_search.h"

#include "archives/overlength.h"
#include "archives/report_grid.h"
#include "screens/archives/frmListRS.h"
#include "screens/services/frmReport.h"

namespace ferrolund::screens {

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

}  // namespace ferrolund::screens
