#include "screens/assets/frmContent.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTableView>
#include <gtest/gtest.h>

#include <filesystem>

#include "app/startup.h"
#include "screens/app/frmEditor.h"
#include "screens/app/qt_text.h"
#include "screens/app/qt_ui.h"
#include "screens/app/screen_fixture.h"
#include "screens/assets/asset_grid.h"
#include "screens/assets/frmAPConsists.h"
#include "screens/assets/frmEdCont.h"
#include "tools/host_path.h"
#include "tools/serz_convert.h"

namespace ferrolund::screens {
namespace {

namespace fs = std::filesystem;

const char* const kRealRoute = "ff1ebaa8-82f5-43ca-9816-859956f4d56c";

std::string Properties(const std::string& root, const std::string& english) {
    return "<" + root + "><DisplayName><Localisation-cUserLocalisedString><English d:type=\"cDeltaString\">" +
           english + "</English></Localisation-cUserLocalisedString></DisplayName></" + root + ">\n";
}

struct ContentScreen : testing::ScreenFixture {
    ContentScreen() {
        ctx.lang.parse(root.read("Language/Lang_English.txt"));
        ctx.prefs.gameRoot = root.system() + "/RW";
        fs::create_directories(root.path() / "RW/Content/Routes");
    }
    QString cell(frmContent& screen, int row, int column) const {
        return screen.grid()->view()->model()->index(row, column).data().toString();
    }
    int rowOf(frmContent& screen, const QString& fileName) const {
        for (int r = 0; r < screen.grid()->view()->model()->rowCount(); ++r) {
            if (cell(screen, r, 3) == fileName) return r;
        }
        return -1;
    }
};

TEST(frmContent, ListsTheRoutesFilesWithTheirNamesAndSavesTheBinGrid) {
    ContentScreen f;
    f.root.write("RW/Content/Routes/R1/RouteProperties.xml", Properties("cRouteProperties", "Čierna nad Tisou"));
    f.root.write("RW/Content/Routes/R1/Scenery/+000000+000000.bin", "x");
    f.root.write("RW/Content/Routes/R1/Scenarios/S1/ScenarioProperties.xml",
                 Properties("cScenarioProperties", "Ranný vlak"));
    f.root.write("RW/Content/Routes/R1/Scenarios/S1/Scenario.bin.MD5", "x");
    frmContent screen(f.ctx);
    EXPECT_EQ(screen.windowTitle(), "Build List of Content");
    EXPECT_EQ(FromQt(screen.folder()->text()), f.ctx.gameRoot() + "\\Content\\Routes\\");
    const auto* headings = screen.grid()->view()->model();
    for (int c = 0; c < 5; ++c) {
        const char* expected[] = {"Route Name", "Sub-Folder", "Sub-Folder2", "File Name", "Index!"};
        EXPECT_EQ(headings->headerData(c, Qt::Horizontal).toString(), expected[c]);
    }
    screen.button("cmdAdd")->click();
    ASSERT_EQ(screen.grid()->view()->model()->rowCount(), 3);
    const int scenario = f.rowOf(screen, "ScenarioProperties.xml");
    ASSERT_GE(scenario, 0);
    EXPECT_EQ(f.cell(screen, scenario, 0), QString::fromUtf8("Čierna nad Tisou - Ranný vlak"));
    EXPECT_EQ(f.cell(screen, scenario, 2), "Scenarios\\S1");
    EXPECT_EQ(f.ui.texts(), std::vector<std::string>{"Selected items have been added to the grid."});
    EXPECT_EQ(screen.findChild<QLabel*>("lblTotal")->text(), "3");
    screen.show();
    testing::Screenshot(screen, "frmContent_list");

    screen.button("cmdBinGrid")->click();
    EXPECT_EQ(f.ui.texts().back(), "Your BIN-Index.csv file is in your Reports folder");
    EXPECT_NE(f.root.read("Reports/BIN-Index.csv").find("Route Name,Sub-Folder,Sub-Folder2,File Name,Index!"),
              std::string::npos);
}

TEST(frmContent, DeleteSelectedRemovesTheFileAndWalksAgain) {
    ContentScreen f;
    f.root.write("RW/Content/Routes/R1/Scenery/a.bin", "x");
    f.root.write("RW/Content/Routes/R1/Scenery/b.bin", "x");
    frmContent screen(f.ctx);
    screen.button("cmdAdd")->click();
    const int a = f.rowOf(screen, "a.bin");
    ASSERT_GE(a, 0);
    screen.grid()->selectRows({static_cast<std::size_t>(a)});
    f.ui.answers = {base::Answer::Ok};
    screen.button("cmdDelete")->click();
    EXPECT_FALSE(fs::exists(f.root.path() / "RW/Content/Routes/R1/Scenery/a.bin"));
    EXPECT_TRUE(fs::exists(f.root.path() / "RW/Content/Routes/R1/Scenery/b.bin"));
    ASSERT_EQ(screen.grid()->view()->model()->rowCount(), 1);
    EXPECT_EQ(f.cell(screen, 0, 3), "b.bin");
    EXPECT_EQ(f.ui.texts().back(), "Selected items have been removed from the grid.");
}

TEST(frmContent, OpensTheRealRoutesTileEditsAValueAndSavesItWithABackup) {
    ContentScreen f;
    const fs::path source = fs::path(FERROLUND_TESTDATA) / "routes" / kRealRoute;
    if (!fs::exists(source)) GTEST_SKIP() << "the real route of the test data is not beside the checkout";
    const fs::path route = f.root.path() / "RW/Content/Routes" / kRealRoute;
    fs::copy(source, route, fs::copy_options::recursive);
    for (const auto& entry : fs::recursive_directory_iterator(route))
        fs::permissions(entry.path(), fs::perms::owner_write, fs::perm_options::add);
    frmContent screen(f.ctx);
    screen.button("cmdAdd")->click();
    const int tile = f.rowOf(screen, "+000000+000000.bin");
    ASSERT_GE(tile, 0);
    EXPECT_EQ(f.cell(screen, tile, 0), "HSL-alue");

    // The row found first among the tiles of that name may be of any tile folder.
    const std::string file = screen.rowFile(static_cast<std::size_t>(tile));
    frmEdCont* editor = screen.openRow(static_cast<std::size_t>(tile));
    ASSERT_NE(editor, nullptr);
    QString text = editor->pane()->toPlainText();
    const int at = text.indexOf("d:type=\"sInt32\">");
    ASSERT_GE(at, 0);
    const int start = text.indexOf('>', at) + 1;
    const int end = text.indexOf('<', start);
    const QString changed = text.mid(start, end - start) == "7" ? "8" : "7";
    text.replace(start, end - start, changed);
    editor->pane()->setPlainText(text);
    editor->resize(800, 500);
    testing::Screenshot(*editor, "frmEdCont_real_tile");
    ASSERT_TRUE(editor->save());
    std::string xml;
    ASSERT_FALSE(tools::SerzReadXml(f.ctx, file, xml));
    const std::size_t value = xml.find("d:type=\"sInt32\">") + 16;
    EXPECT_EQ(xml.substr(value, xml.find('<', value) - value), changed.toStdString());
    EXPECT_TRUE(fs::exists(tools::HostPath(file + ".bak")));
    editor->close();
}

TEST(frmContent, TheMenuOpensBothListScreens) {
    testing::ScreenFixture f;
    QtUi qtUi;
    frmEditor window{f.ctx, qtUi};
    f.ctx.ui = &f.ui;
    app::StartOptions options;
    options.discoverGameRoot = [] { return std::string("/games/RailWorks"); };
    app::StartUp(f.ctx, window, options);
    for (const char* item : {"mnuCnt", "mnuAPCont"}) EXPECT_TRUE(window.menuAction(item)->isEnabled()) << item;
    EXPECT_TRUE(window.runMenuCommand("mnuCnt"));
    EXPECT_TRUE(window.runMenuCommand("mnuAPCont"));
    EXPECT_NE(window.findChild<frmContent*>(), nullptr);
    auto* ap = window.findChild<frmAPConsists*>();
    ASSERT_NE(ap, nullptr);
    EXPECT_EQ(ap->windowTitle(), "Build List of Routes & Scenarios  in .AP files");
}

}  // namespace
}  // namespace ferrolund::screens
