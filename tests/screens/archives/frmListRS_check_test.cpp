// The report grid's "Check Loco for missing files" over the blueprints of its rows.
#include <QAction>
#include <QPlainTextEdit>
#include <QTableView>
#include <gtest/gtest.h>

#include "screens/app/screen_fixture.h"
#include "screens/archives/frmListRS.h"
#include "screens/services/frmReport.h"
#include "serz/codec.h"

namespace ferrolund::screens {
namespace {

std::string Text(const char* name, const std::string& value) {
    return std::string("<") + name + " d:type=\"cDeltaString\">" + value + "</" + name + ">\r\n";
}

TEST(frmListRS, ChecksTheSelectedRowsBlueprints) {
    testing::ScreenFixture f;
    f.ctx.lang.parse(f.root.read("Language/Lang_English.txt"));
    f.ctx.prefs.gameRoot = f.root.system() + "/game";
    const std::string xml =
        "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n<cBlueprintLoader xmlns:d=\"http://www.kuju.com/TnT/2003/Delta\" "
        "d:version=\"1.0\">\r\n<Blueprint>\r\n<cEngineBlueprint>\r\n<NumberingList>\r\n" +
        Text("CsvFile", "K\\Pr\xC3\xB6" "dukt\\Loco\\Numbers") + "</NumberingList>\r\n</cEngineBlueprint>\r\n</Blueprint>\r\n"
        "</cBlueprintLoader>\r\n";
    std::string bin;
    ASSERT_FALSE(serz::XmlToBinary(xml, bin));
    f.root.write("game/Assets/K/PR\xC3\x96" "DUKT/Loco/Loco.bin", bin);

    archives::ReportGrid grid;
    grid.mode = archives::kModeScenarioStock;
    grid.takeList("K\\Pr\xC3\xB6" "dukt\\Loco\\Loco.xml\t\r\n");
    frmListRS screen(f.ctx, std::move(grid));
    auto* check = screen.findChild<QAction*>("mnuCheckLoco");
    ASSERT_NE(check, nullptr);
    EXPECT_EQ(check->text(), "Check Loco for missing files");

    check->trigger();
    EXPECT_EQ(f.ui.texts().back(), "You do not appear to have selected any Assets to check");
    EXPECT_EQ(screen.findChild<frmReport*>(), nullptr);

    screen.list()->selectRow(0);
    check->trigger();
    auto* report = screen.findChild<frmReport*>();
    ASSERT_NE(report, nullptr);
    const std::string shown = report->pane()->toPlainText().toStdString();
    EXPECT_NE(shown.find("Missing Files:-"), std::string::npos) << shown;
    EXPECT_NE(shown.find("\\Assets\\K\\Pr\xC3\xB6" "dukt\\Loco\\Numbers.dcsv"), std::string::npos) << shown;
}

}  // namespace
}  // namespace ferrolund::screens
