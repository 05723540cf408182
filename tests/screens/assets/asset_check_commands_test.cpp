#include "screens/assets/asset_check_commands.h"

#include <QPlainTextEdit>
#include <QWidget>
#include <gtest/gtest.h>

#include "screens/app/screen_fixture.h"
#include "screens/services/frmReport.h"

namespace ferrolund::screens {
namespace {

TEST(AssetCheckCommands, ReportsGoToTheReportScreen) {
    testing::ScreenFixture f;
    f.ctx.lang.parse(f.root.read("Language/Lang_English.txt"));
    f.ctx.prefs.gameRoot = f.root.system() + "/game";
    QWidget parent;

    RunRowCheck(f.ctx, &parent, {}, assets::RowReport::MissingFiles);
    EXPECT_EQ(parent.findChild<frmReport*>(), nullptr);
    EXPECT_EQ(f.ui.texts().back(), "You have not selected any items - please select one or more rows in the list first.");

    // A blueprint that is not there: its row reads nothing and nothing is missing.
    assets::AssetRow row;
    row.provider = "K";
    row.product = "P";
    row.path = "Gone.bin";
    RunRowCheck(f.ctx, &parent, {row}, assets::RowReport::MissingFiles);
    auto* report = parent.findChild<frmReport*>();
    ASSERT_NE(report, nullptr);
    EXPECT_EQ(report->pane()->toPlainText(), "No errors found");
    delete report;

    RunWhereUsed(f.ctx, &parent, {row});
    report = parent.findChild<frmReport*>();
    ASSERT_NE(report, nullptr);
    EXPECT_TRUE(report->pane()->toPlainText().startsWith("Where is it used? K\\P\\Gone.bin"));
    delete report;

    EXPECT_TRUE(RunProcessMissingAssets(f.ctx, &parent, {}).empty());
    EXPECT_EQ(f.ui.texts().back(), "Your missing assets file could not be found, must be saved as\nReports\\MissingAssets.csv");
    EXPECT_EQ(parent.findChild<frmReport*>(), nullptr);
}

}  // namespace
}  // namespace ferrolund::screens
