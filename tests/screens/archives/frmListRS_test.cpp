#include "screens/archives/frmListRS.h"

#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QPushButton>
#include <QTableView>
#include <gtest/gtest.h>

#include "screens/app/screen_fixture.h"
#include "screens/services/frmReport.h"
#include "screens/services/print_preview.h"
#include "screens/app/qt_text.h"
#include "screens/archives/report_grid_model.h"

#include <QPlainTextEdit>
#include <QPrinter>

namespace ferrolund::screens {
namespace {

// The fixture with the English language table loaded, as the program has it at start.
struct LangFixture : testing::ScreenFixture {
    LangFixture() { ctx.lang.parse(root.read("Language/Lang_English.txt")); }
};

archives::ReportGrid RouteItems() {
    archives::ReportGrid grid;
    grid.mode = archives::kModeRouteItems;
    grid.heading = "Items used by Ostvale Valley";
    grid.takeList("Kuju\\RailSimulator\\Scenery\\Tree.xml\t(Scenery Item)\r\n"
                  "kuju\\railsimulator\\scenery\\tree.xml\t(Scenery Item)\r\n"
                  "Ostvale\\Stock\\RailVehicles\\Class20.xml\t(Loft Item)\r\n");
    return grid;
}

TEST(frmListRS, ShowsTheRowsAndRemovesDuplicatesThatDifferInCase) {
    LangFixture f;
    frmListRS screen(f.ctx, RouteItems());
    screen.resize(900, 500);
    EXPECT_EQ(screen.windowTitle(), "Report");
    EXPECT_EQ(screen.button("Command1")->text(), "Remove dupes from list");
    EXPECT_EQ(screen.button("Command3")->text(), "Check for Missing Stock");
    EXPECT_FALSE(screen.button("Command6")->isEnabled());
    EXPECT_EQ(screen.findChild<QLabel*>("Label4")->text(), "3");
    screen.button("Command1")->click();
    EXPECT_EQ(screen.list()->model()->rowCount(), 2);
    EXPECT_EQ(screen.findChild<QLabel*>("Label4")->text(), "2");
    EXPECT_TRUE(screen.grid().duplicatesRemoved);
    testing::Screenshot(screen, "frmListRS_route_items");
}

TEST(frmListRS, MissingItemsAreCyanAndTheRowGoesToTheClipboard) {
    LangFixture f;
    f.ctx.prefs.gameRoot = f.root.system();
    frmListRS screen(f.ctx, RouteItems());
    screen.button("Command3")->click();
    const QModelIndex first = screen.list()->model()->index(0, 0);
    EXPECT_EQ(first.data(Qt::BackgroundRole).value<QBrush>().color(), QColor(0, 255, 255));
    screen.copyRow(0);
    EXPECT_EQ(QApplication::clipboard()->text(), "Kuju\\RailSimulator\\Scenery\\Tree.xml\t(Scenery Item)");
    EXPECT_EQ(f.ui.texts().back(), "Data has been sent to clipboard.");
}

TEST(frmListRS, TheApListOffersTheArchiveCommandsAndSelectsMainContent) {
    LangFixture f;
    archives::ReportGrid grid;
    grid.mode = archives::kModeApList;
    grid.table.headings = {"File", "Size", "Date"};
    grid.takeList("C:\\RW\\Assets\\Kuju\\MainContent.ap\t1000\t2024-05-01 10:00\r\n"
                  "C:\\RW\\Assets\\Kuju\\Extra.ap\t50\t2023-01-01 09:00\r\n"
                  "C:\\RW\\Content\\Routes\\abc\\MainContent.ap\t2000\t2022-02-02 08:00\r\n");
    frmListRS screen(f.ctx, std::move(grid));
    screen.resize(1100, 520);
    ASSERT_NE(screen.button("Command14"), nullptr);
    EXPECT_EQ(screen.button("Command14")->text(), "Unpack Selected .ap files with 7zip");
    screen.button("Command22")->click();
    EXPECT_EQ(screen.selectedItems(), (std::vector<std::string>{"C:\\RW\\Assets\\Kuju\\MainContent.ap",
                                                                "C:\\RW\\Content\\Routes\\abc\\MainContent.ap"}));
    testing::Screenshot(screen, "frmListRS_ap_list");
}

TEST(frmListRS, SaveGoesToTheChosenFormAndTheGeometryIsKept) {
    LangFixture f;
    f.ui.files = {f.root.system() + "\\Reports\\list.xls"};
    {
        frmListRS screen(f.ctx, RouteItems());
        screen.button("Command7")->click();
        screen.setGeometry(30, 40, 700, 400);
        screen.close();
    }
    EXPECT_EQ(f.ui.dialogTitles.back(), "Save Grid as File");
    EXPECT_EQ(f.root.read("Reports/list.xls").substr(0, 2), std::string("\x09\x08", 2));
    EXPECT_EQ(f.ctx.prefs.reportWidth, 700 * kTwipsPerPixel);
}

TEST(fEZPrint, EachSourceHasItsLayoutAndAGridPrintsToPdf) {
    EXPECT_TRUE(LayoutOf(2).wide);
    EXPECT_EQ(LayoutOf(2).fontPoints, 8);
    EXPECT_FALSE(LayoutOf(15).wide);
    EXPECT_TRUE(LayoutOf(15).titleInFooter);
    EXPECT_EQ(LayoutOf(77).fontPoints, 12);
    EXPECT_EQ(LayoutOf(6).fontPoints, 0);
    LangFixture f;
    archives::ReportGrid grid = RouteItems();
    for (int i = 0; i < 200; ++i) grid.table.rows.push_back({"Row " + std::to_string(i), "x"});
    ReportGridModel model(grid);
    QPrinter printer;
    printer.setOutputFormat(QPrinter::PdfFormat);
    const QString pdf = QString::fromStdString(f.root.system() + "/grid.pdf");
    printer.setOutputFileName(pdf);
    RenderGrid(printer, model, LayoutOf(2), "Report");
    const std::string bytes = f.root.read("grid.pdf");
    EXPECT_EQ(bytes.substr(0, 5), "%PDF-");
}

TEST(frmReport, ShowsSavesAndKeepsLineEnds) {
    LangFixture f;
    std::string text;
    for (int i = 0; i < 3000; ++i) text += "Line " + std::to_string(i) + "\r\n";
    frmReport screen(f.ctx, text, false);
    EXPECT_EQ(screen.windowTitle(), "Report:-");
    EXPECT_EQ(screen.pane()->blockCount(), 3001);
    f.ui.files = {f.root.system() + "\\saved.txt"};
    screen.save();
    EXPECT_EQ(f.root.read("saved.txt"), text);
    testing::Screenshot(screen, "frmReport");
}

TEST(frmReport, FromFileAsksInReports) {
    LangFixture f;
    f.root.write("Reports/r.txt", "from the file");
    f.ui.files = {f.root.system() + "\\Reports\\r.txt"};
    frmReport screen(f.ctx, "ignored", true);
    EXPECT_EQ(screen.pane()->toPlainText(), "from the file");
    EXPECT_EQ(f.ui.dialogTitles.back(), "Open Report");
}

}  // namespace
}  // namespace ferrolund::screens
