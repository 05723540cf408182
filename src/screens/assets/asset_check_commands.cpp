#include "screens/assets/asset_check_commands.h"

#include "assets/loco_information.h"
#include "assets/missing_assets.h"
#include "assets/where_used.h"
#include "screens/assets/picture_converter.h"
#include "screens/services/frmReport.h"

namespace ferrolund::screens {

namespace {

// Long work with the busy mouse and a fresh abort flag.
template <typename Work>
auto Busy(app::AppContext& ctx, Work work) {
    ctx.abortFlag = false;
    if (ctx.ui) ctx.ui->busy(true);
    auto result = work();
    if (ctx.ui) ctx.ui->busy(false);
    return result;
}

}  // namespace

void RunRowCheck(app::AppContext& ctx, QWidget* parent, const std::vector<assets::AssetRow>& rows,
                 assets::RowReport report) {
    const assets::CheckOutcome outcome =
        Busy(ctx, [&] { return assets::CheckRows(ctx, rows, report, assets::AssetListRows(ctx, report)); });
    if (outcome.noRows || outcome.emptyRow) return;
    ShowReport(ctx, parent, {}, outcome.report);
}

void RunWhereUsed(app::AppContext& ctx, QWidget* parent, const std::vector<assets::AssetRow>& rows) {
    if (rows.empty()) {
        if (ctx.ui) ctx.ui->message(ctx.langText(466, {}, "frmAssets"), base::Icon::Exclamation);
        return;
    }
    const assets::WhereUsedOutcome outcome = Busy(ctx, [&] { return assets::WhereIsItUsed(ctx, rows); });
    ShowReport(ctx, parent, {}, outcome.report);
}

std::vector<assets::AssetRow> RunProcessMissingAssets(app::AppContext& ctx, QWidget* parent,
                                                      const assets::AssetFilter& filter) {
    assets::MissingAssetsOutcome outcome =
        Busy(ctx, [&] { return assets::ProcessMissingAssets(ctx, assets::ListScan(filter)); });
    if (!outcome.report.empty()) ShowReport(ctx, parent, {}, outcome.report);
    return std::move(outcome.rows);
}

void RunAddLocoInformation(app::AppContext& ctx, const std::vector<assets::AssetRow>& rows) {
    assets::AddLocoInformation(ctx, rows, ThumbnailToPng);
}

}  // namespace ferrolund::screens
