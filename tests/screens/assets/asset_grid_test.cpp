#include "screens/assets/asset_grid.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <gtest/gtest.h>

#include "assets/asset_row.h"
#include "screens/app/screen_fixture.h"

namespace ferrolund::screens {
namespace {

struct GridFixture : testing::ScreenFixture {
    GridFixture() { ctx.lang.parse(root.read("Language/Lang_English.txt")); }
    AssetGridSetup Setup() const {
        AssetGridSetup setup;
        setup.headings.assign(assets::kAssetHeadings.begin(), assets::kAssetHeadings.end());
        setup.printTitle = "Build List of Assets";
        return setup;
    }
};

std::vector<std::vector<std::string>> Rows() {
    return {{"Ostvale", "NorthernLines", "RailVehicles\\Class58.bin", "Class 58", "Yes", "Diesel", "EngineBlueprint", "1"},
            {"Müller", "Straßenbahn", "RailVehicles\\Tram.bin", "Élan tram", "Yes", "Electric", "EngineBlueprint", "2"},
            {"Ostvale", "NorthernLines", "Scenery\\Hut.bin", "class hut", "No", "Scenery", "EntityContainerBlueprint", "3"}};
}

TEST(AssetGrid, FillsInBatchesAndCountsTotalAndSelection) {
    GridFixture f;
    AssetGrid grid(f.ctx, f.Setup());
    grid.appendRows({Rows()[0]});
    grid.appendRows({Rows()[1], Rows()[2]});
    EXPECT_EQ(grid.view()->model()->rowCount(), 3);
    EXPECT_EQ(grid.view()->model()->headerData(3, Qt::Horizontal).toString(), "Name");
    EXPECT_EQ(grid.view()->model()->index(1, 1).data().toString(), QString::fromUtf8("Straßenbahn"));
    EXPECT_EQ(grid.findChild<QLabel*>("lblTotal")->text(), "3");
    grid.button("cmdSelectAll")->click();
    EXPECT_EQ(grid.selectedRows(), (std::vector<std::size_t>{0, 1, 2}));
    EXPECT_EQ(grid.findChild<QLabel*>("lblSelected")->text(), "3");
    grid.button("cmdUnselect")->click();
    EXPECT_TRUE(grid.selectedRows().empty());
    EXPECT_EQ(grid.findChild<QLabel*>("lblSelected")->text(), "0");
}

TEST(AssetGrid, FindSelectsTheNextHitAndShowAllKeepsTheHits) {
    GridFixture f;
    AssetGrid grid(f.ctx, f.Setup());
    grid.appendRows(Rows());
    grid.findChild<QComboBox*>("cboColumn")->setCurrentIndex(3);
    grid.findChild<QLineEdit*>("txtFind")->setText("Class");
    grid.button("cmdFind")->click();
    EXPECT_EQ(grid.selectedRows(), std::vector<std::size_t>{0});
    grid.button("cmdFind")->click();
    EXPECT_EQ(grid.selectedRows(), std::vector<std::size_t>{2});
    grid.button("cmdShowAll")->click();
    EXPECT_EQ(grid.grid().rowCount(), 2u);
    EXPECT_EQ(grid.findChild<QLabel*>("lblTotal")->text(), "2");
}

TEST(AssetGrid, HiddenColumnsAreOnlyNotShown) {
    GridFixture f;
    AssetGrid grid(f.ctx, f.Setup());
    grid.appendRows(Rows());
    grid.findChild<QCheckBox*>("chkHide2")->setChecked(true);
    EXPECT_TRUE(grid.view()->isColumnHidden(2));
    const std::string file = f.root.system() + "/Reports/list.csv";
    f.ui.files.push_back(file);
    grid.button("cmdSave")->click();
    EXPECT_NE(f.root.read("Reports/list.csv").find("RailVehicles\\Tram.bin"), std::string::npos);
    grid.findChild<QCheckBox*>("chkHide2")->setChecked(false);
    EXPECT_FALSE(grid.view()->isColumnHidden(2));
}

TEST(AssetGrid, SavedListsLoadAndRestore) {
    GridFixture f;
    AssetGrid grid(f.ctx, f.Setup());
    grid.appendRows(Rows());
    const std::string file = f.root.system() + "/Reports/list.xls";
    f.ui.files.push_back(file);
    grid.button("cmdSave")->click();
    grid.button("cmdClear")->click();
    EXPECT_EQ(grid.findChild<QLabel*>("lblTotal")->text(), "0");
    f.ui.files.push_back(file);
    grid.button("cmdLoad")->click();
    EXPECT_EQ(grid.grid().rows(), Rows());
    grid.button("cmdClear")->click();
    grid.button("cmdRestore")->click();
    EXPECT_EQ(grid.grid().rowCount(), 3u);
    EXPECT_EQ(f.ui.dialogTitles, (std::vector<std::string>{"Save Grid as File", "Load Grid from File"}));
}

TEST(AssetGrid, PrintingAnEmptyListSaysWhatToDo) {
    GridFixture f;
    AssetGrid grid(f.ctx, f.Setup());
    grid.button("cmdPrint")->click();
    ASSERT_EQ(f.ui.shown.size(), 1u);
    EXPECT_EQ(f.ui.shown[0].text,
              "You do not appear to have added any items to the list below?\r\n"
              "Click the 'Add to List' button to enable your stock selection.");
}

TEST(AssetGrid, CopySendsTheSelectedRowsToTheClipboard) {
    GridFixture f;
    AssetGrid grid(f.ctx, f.Setup());
    grid.appendRows(Rows());
    grid.selectRows({1});
    grid.copySelection();
    EXPECT_EQ(QApplication::clipboard()->text(),
              QString::fromUtf8("Müller\tStraßenbahn\tRailVehicles\\Tram.bin\tÉlan tram\tYes\tElectric\tEngineBlueprint\t2\r\n"));
    EXPECT_EQ(f.ui.texts().back(), "Data has been sent to clipboard.");
}

}  // namespace
}  // namespace ferrolund::screens
