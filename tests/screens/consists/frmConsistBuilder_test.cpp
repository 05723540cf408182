#include "screens/consists/frmConsistBuilder.h"

#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QTimer>
#include <gtest/gtest.h>

#include <filesystem>
#include <memory>

#include "app/startup.h"
#include "core/consists/consist_fixture.h"
#include "screens/app/frmEditor.h"
#include "screens/app/qt_ui.h"
#include "screens/app/screen_fixture.h"
#include "screens/consists/dlgConGen.h"

namespace ferrolund::screens {
namespace {

namespace fs = std::filesystem;
using consists::testing::TemplatesXml;
using consists::testing::Vehicle;

struct BuilderScreen : testing::ScreenFixture {
    BuilderScreen() {
        ctx.prefs.gameRoot = root.system() + "/RW";
        fs::copy(fs::path(FERROLUND_SOURCE_DIR) / "data" / "Templates", root.path() / "Templates",
                 fs::copy_options::recursive);
        root.write("RW/Assets/Ostvale/NorthernLines/RailVehicles/Class58/Class58.bin", "x");
        root.write("RW/Assets/Müller/Straßenbahn/RailVehicles/Vůz/Vůz.bin", "x");
        root.write("IndexFiles/index.csv",
                   "Provider,Product,Path,Name,In Scene,Category,Blueprint,Index\r\n"
                   "Ostvale,NorthernLines,RailVehicles\\Class58\\Class58.bin,Class 58,Yes,Diesel,EngineBlueprint,1\r\n"
                   "Ostvale,NorthernLines,RailVehicles\\Hopper\\Hopper.bin,Coal hopper,Yes,Freight Wagon,WagonBlueprint,2\r\n"
                   "Müller,Straßenbahn,RailVehicles\\Vůz\\Vůz.bin,Vůz,Yes,Freight Wagon,WagonBlueprint,3\r\n");
        const Vehicle loco{"Ostvale", "NorthernLines", "RailVehicles\\Class58\\Class58.xml", "0", "300000001"};
        const Vehicle hopper{"Ostvale", "NorthernLines", "RailVehicles\\Hopper\\Hopper.xml", "1", "300000002"};
        const Vehicle tram{"Müller", "Straßenbahn", "RailVehicles\\Vůz\\Vůz.xml", "0", "300000003"};
        fs::create_directories(root.path() / "RW/Content");
        const fs::path source = root.write("source.xml", TemplatesXml({{"Coal &amp; coke", {loco, hopper, hopper}},
                                                                       {"Straßenbahn č. 5", {tram, tram}, "200000002"}}));
        EXPECT_FALSE(tools::SerzConvert(ctx, source.string(), file().string(), tools::SerzDirection::ToBinary));
    }
    fs::path file() const { return root.path() / "RW/Content/ConsistTemplates.bin"; }
    std::unique_ptr<frmConsistBuilder> open() {
        ui.answers.push_back(base::Answer::Yes);  // no messages about missing stock
        return std::unique_ptr<frmConsistBuilder>(ShowConsistBuilder(ctx, nullptr));
    }
};

QString Cell(const QTableWidget* grid, int row, int column) { return grid->item(row, column)->text(); }

TEST(frmConsistBuilder, ShowsTheSavedConsistsAboveTheIndex) {
    BuilderScreen f;
    auto screen = f.open();
    ASSERT_NE(screen, nullptr);
    EXPECT_EQ(f.ui.shown[0].text, "Do you wish to suppress 'Missing item' error messages\nwhile this screen loads?");
    EXPECT_EQ(screen->windowTitle(), "Saved Consists");
    QTableWidget* consists = screen->consistGrid();
    ASSERT_EQ(consists->rowCount(), 5);
    EXPECT_EQ(Cell(consists, 0, 0), "Coal & coke");
    EXPECT_EQ(Cell(consists, 3, 0), QString::fromUtf8("Straßenbahn č. 5"));
    EXPECT_EQ(Cell(consists, 3, 3), QString::fromUtf8("Müller"));
    EXPECT_EQ(consists->item(1, 5)->foreground().color(), QColor(Qt::red)) << "the hopper is not installed";
    EXPECT_NE(consists->item(0, 5)->foreground().color(), QColor(Qt::red));
    ASSERT_EQ(screen->stockGrid()->rowCount(), 3);
    EXPECT_EQ(Cell(screen->stockGrid(), 2, 3), QString::fromUtf8("Vůz"));
    for (const char* name : {"mnuSelIndex", "mnuNew", "mnuDel", "mnuFlip", "mnuInsert", "mnuMulti", "mnuRename",
                             "mnuRep", "mnuPool", "mnuGenCon", "mnuClear"})
        EXPECT_NE(screen->action(name), nullptr) << name;
    for (const char* name : {"Command1", "Command2", "Command3", "Command4", "Command8"})
        EXPECT_NE(screen->button(name), nullptr) << name;
    screen->consistGrid()->selectRow(1);
    testing::Screenshot(*screen, "frmConsistBuilder");
}

TEST(frmConsistBuilder, NoFileAndNoWishForOneOpensNothing) {
    BuilderScreen f;
    fs::remove(f.file());
    f.ui.answers.push_back(base::Answer::No);  // suppress?
    f.ui.answers.push_back(base::Answer::No);  // create some?
    EXPECT_EQ(ShowConsistBuilder(f.ctx, nullptr), nullptr);
    EXPECT_EQ(f.ui.shown.back().text, "You currently don't have any saved consists.\nDo you wish to create some?");
}

TEST(frmConsistBuilder, EditsFromThePopUpShowAtOnce) {
    BuilderScreen f;
    auto screen = f.open();
    ASSERT_NE(screen, nullptr);
    QTableWidget* consists = screen->consistGrid();
    consists->selectRow(1);
    screen->action("mnuFlip")->trigger();
    EXPECT_EQ(Cell(consists, 1, 6), "0");
    screen->stockGrid()->selectRow(2);
    screen->action("mnuInsert")->trigger();
    ASSERT_EQ(consists->rowCount(), 6);
    EXPECT_EQ(Cell(consists, 2, 5), QString::fromUtf8("RailVehicles\\Vůz\\Vůz.xml"));
    EXPECT_EQ(Cell(consists, 2, 0), "Coal & coke");
    EXPECT_TRUE(consists->selectionModel()->isRowSelected(2, {}));
    screen->searchBox()->setText(QString::fromUtf8("STRASSE"));
    screen->button("Command4")->click();
    EXPECT_EQ(f.ui.texts().back(), "Search did not find that item.");
    screen->searchBox()->setText(QString::fromUtf8("straßen"));
    screen->button("Command4")->click();
    EXPECT_EQ(consists->currentRow(), 4);
    f.ui.inputs.push_back("Tram");
    screen->action("mnuRename")->trigger();
    EXPECT_EQ(Cell(consists, 4, 0), "Tram");
    EXPECT_EQ(Cell(consists, 5, 0), QString::fromUtf8("Straßenbahn č. 5"));
    screen->action("mnuDel")->trigger();
    EXPECT_EQ(consists->rowCount(), 5);
}

TEST(frmConsistBuilder, AGeneratedConsistIsSavedAndTheScreenCloses) {
    BuilderScreen f;
    auto screen = f.open();
    ASSERT_NE(screen, nullptr);
    screen->setRandomSource(consists::SeededRandom(11));
    f.ui.inputs.push_back("Block train");
    bool answered = false;
    QTimer::singleShot(0, [&answered] {
        auto* dialog = qobject_cast<dlgConGen*>(QApplication::activeModalWidget());
        if (!dialog) return;
        EXPECT_EQ(dialog->windowTitle(), "Generate Consist");
        dialog->wagonsBox()->setText("4");
        dialog->randomnessBox()->setText("0");
        testing::Screenshot(*dialog, "dlgConGen");
        answered = true;
        dialog->accept();
    });
    screen->action("mnuGenCon")->trigger();
    ASSERT_TRUE(answered);
    QTableWidget* consists = screen->consistGrid();
    ASSERT_EQ(consists->rowCount(), 9);
    for (int r = 5; r < 9; ++r) {
        EXPECT_EQ(Cell(consists, r, 0), "Block train");
        EXPECT_EQ(Cell(consists, r, 5), Cell(consists, 5, 5));
    }
    screen->button("Command8")->click();
    EXPECT_EQ(f.ui.texts().back(), "Your new ConsistTemplate.bin file is now ready for use.");
    EXPECT_FALSE(screen->isVisible());
    EXPECT_TRUE(fs::exists(f.root.path() / "RW/Content/ConsistTemplates.bak"));
    screen.release();  // deleted on close
}

TEST(frmConsistBuilder, TheMainMenuOpensIt) {
    testing::ScreenFixture f;
    QtUi qtUi;
    frmEditor window{f.ctx, qtUi};
    f.ctx.ui = &f.ui;  // messages go to the scripted Ui
    app::StartOptions options;
    options.discoverGameRoot = [] { return std::string("/games/RailWorks"); };
    app::StartUp(f.ctx, window, options);
    f.ui.shown.clear();
    ASSERT_TRUE(window.menuAction("mnuBuildCon")->isEnabled());
    EXPECT_EQ(window.menuAction("mnuBuildCon")->text(), "Build or Edit Consists");
    f.ui.answers = {base::Answer::No, base::Answer::No};
    EXPECT_TRUE(window.runMenuCommand("mnuBuildCon"));
    EXPECT_EQ(f.ui.texts(), (std::vector<std::string>{
                                "Do you wish to suppress 'Missing item' error messages\nwhile this screen loads?",
                                "You currently don't have any saved consists.\nDo you wish to create some?"}));
}

}  // namespace
}  // namespace ferrolund::screens
