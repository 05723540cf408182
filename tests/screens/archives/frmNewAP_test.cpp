#include "screens/archives/frmNewAP.h"

#include <QAction>
#include <QCheckBox>
#include <QLabel>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTableView>
#include <gtest/gtest.h>

#include <filesystem>

#include "archives/zip_writer.h"
#include "screens/app/screen_fixture.h"
#include "screens/archives/frmListRS.h"
#include "screens/services/frmReport.h"

namespace ferrolund::screens {
namespace {

namespace fs = std::filesystem;

// An archive made with the program's own writer; a name ending in '\' is a folder entry.
void MakeAp(const testing::TempFolder& root, const std::string& relative,
            const std::vector<std::pair<std::string, std::string>>& members) {
    archives::ZipWriter writer;
    const fs::path target = root.path() / relative;
    fs::create_directories(target.parent_path());
    ASSERT_FALSE(writer.create(target.string(), {}));
    int n = 0;
    for (const auto& [stored, bytes] : members) {
        if (stored.ends_with('\\')) {
            ASSERT_FALSE(writer.addFolder(stored));
            continue;
        }
        const fs::path source = root.write("sources/" + std::to_string(n++), bytes);
        ASSERT_FALSE(writer.addFile(source.string(), stored));
    }
    ASSERT_FALSE(writer.finish());
}

struct ApScreen : testing::ScreenFixture {
    std::string ap;
    ApScreen() {
        ctx.prefs.gameRoot = root.system() + "\\RW";
        MakeAp(root, "RW/Content/Routes/r1/MainContent.ap",
               {{"RouteProperties.xml", "<English>Ostvale</English>"},
                {"Scenarios\\", ""},
                {"Scenarios\\s1\\a.txt", "first"},
                {"Scenarios\\s2\\b.TXT", "second"}});
        ap = root.system() + "\\RW\\Content\\Routes\\r1\\MainContent.ap";
    }
    QString cell(frmNewAP& screen, int row, int column) const {
        return screen.grid()->model()->index(row, column).data().toString();
    }
    QString label(frmNewAP& screen, const char* name) const { return screen.findChild<QLabel*>(name)->text(); }
};

TEST(frmNewAP, OpensFromTheMenuWithTheEntriesAndTheCounts) {
    ApScreen f;
    frmNewAP screen(f.ctx);
    EXPECT_EQ(screen.windowTitle(), "Extract from .AP file");
    f.ui.files = {f.ap};
    screen.action("mnuOpen")->trigger();
    EXPECT_EQ(screen.windowTitle().toStdString(), "Archive - " + f.ap);
    ASSERT_EQ(screen.grid()->model()->rowCount(), 4);
    EXPECT_EQ(f.cell(screen, 0, 0), "RouteProperties.xml");
    EXPECT_EQ(f.cell(screen, 0, 2), "26");
    EXPECT_EQ(f.cell(screen, 0, 5), "Deflate");
    EXPECT_EQ(f.cell(screen, 2, 0), "a.txt");
    EXPECT_EQ(f.cell(screen, 2, 1), "Scenarios\\s1");
    EXPECT_FALSE(f.cell(screen, 2, 4).isEmpty());
    EXPECT_EQ(f.label(screen, "lblDirs"), "Dirs: 1");
    EXPECT_EQ(f.label(screen, "lblFiles"), "Files: 3");
    EXPECT_TRUE(screen.findChild<QCheckBox*>("chkFullPath")->isChecked());
    screen.resize(900, 520);
    testing::Screenshot(screen, "frmNewAP_open");
    screen.action("mnuClose")->trigger();
    EXPECT_EQ(screen.grid()->model()->rowCount(), 0);
    EXPECT_EQ(f.label(screen, "lblFiles"), "Files: 0");
}

TEST(frmNewAP, ACorruptArchiveLeavesTheGridEmptyAndIsReported) {
    ApScreen f;
    f.root.write("RW/Broken.ap", std::string("PK\x03\x04", 4) + std::string(100, '\x7f'));
    frmNewAP screen(f.ctx, f.root.system() + "\\RW\\Broken.ap");
    EXPECT_EQ(screen.grid()->model()->rowCount(), 0);
    EXPECT_EQ(screen.windowTitle(), "Extract from .AP file");
    ASSERT_EQ(f.ui.shown.size(), 1u);
    EXPECT_EQ(f.ui.shown[0].icon, base::Icon::Critical);
}

TEST(frmNewAP, ExtractCommandsWithoutAnArchiveOrSelectionStopAtOnce) {
    ApScreen f;
    frmNewAP screen(f.ctx);
    screen.action("mnuExt")->trigger();
    ASSERT_EQ(f.ui.shown.size(), 1u);
    EXPECT_EQ(f.ui.shown[0].text, "You must Open an Archive before you can\r\n            Extract anything from it!");
    EXPECT_EQ(f.ui.shown[0].title, "Error");
    screen.openArchive(f.ap);
    screen.action("mnuExtSel")->trigger();
    EXPECT_EQ(f.ui.texts().back(), "You have not selected any items to unpack");
    EXPECT_TRUE(f.ui.dialogTitles.empty());
}

TEST(frmNewAP, ExtractToTheArchivesFolderFlatThenWithFullPaths) {
    ApScreen f;
    frmNewAP screen(f.ctx, f.ap);
    const fs::path folder = f.root.path() / "RW/Content/Routes/r1";
    screen.grid()->selectRow(2);
    screen.findChild<QCheckBox*>("chkFullPath")->click();
    EXPECT_FALSE(screen.viewer().fullPath);
    screen.action("mnuSelAP")->trigger();
    EXPECT_EQ(f.root.read("RW/Content/Routes/r1/a.txt"), "first");
    EXPECT_FALSE(fs::exists(folder / "RouteProperties.xml"));
    EXPECT_EQ(f.label(screen, "SB1"), "Extract Completed");
    screen.findChild<QCheckBox*>("chkFullPath")->click();
    screen.action("mnuExtCur")->trigger();
    EXPECT_EQ(f.root.read("RW/Content/Routes/r1/Scenarios/s2/b.TXT"), "second");
    EXPECT_EQ(f.root.read("RW/Content/Routes/r1/RouteProperties.xml"), "<English>Ostvale</English>");
    EXPECT_TRUE(f.ui.shown.empty());
}

TEST(frmNewAP, ExtractAllAsksForTheFolderAndRefreshKeepsTheOptions) {
    ApScreen f;
    frmNewAP screen(f.ctx, f.ap);
    screen.findChild<QCheckBox*>("chkFullPath")->click();
    const std::string out = f.root.system() + "\\out";
    f.ui.folders = {out};
    f.ui.inputs = {out};
    screen.action("mnuExt")->trigger();
    EXPECT_EQ(f.ui.dialogTitles, (std::vector<std::string>{"Select destination directory", "Confirm Save Path"}));
    EXPECT_EQ(f.root.read("out/b.TXT"), "second");
    EXPECT_EQ(screen.viewer().destinationFolder, out);
    screen.findChild<QPushButton*>("Command1")->click();
    EXPECT_EQ(screen.grid()->model()->rowCount(), 4);
    EXPECT_FALSE(screen.findChild<QCheckBox*>("chkFullPath")->isChecked());
}

TEST(frmNewAP, FindFileSelectsTheRowOrSaysItWasNotFound) {
    ApScreen f;
    frmNewAP screen(f.ctx, f.ap);
    f.ui.inputs = {std::string("B.txt"), std::string("zz.bin")};
    screen.action("mnuFind")->trigger();
    EXPECT_EQ(screen.selectedEntries(), std::vector<std::size_t>{3});
    screen.action("mnuFind")->trigger();
    EXPECT_EQ(f.ui.texts(), std::vector<std::string>{"The file  zz.bin\r\nwas not found."});
    f.ui.inputs = {std::string("*.txt")};
    screen.action("mnuFindFiles")->trigger();
    EXPECT_EQ(screen.selectedEntries(), (std::vector<std::size_t>{2, 3}));
}

TEST(frmNewAP, ARightClickShowsTheEntrysTextByItsKind) {
    ApScreen f;
    frmNewAP screen(f.ctx, f.ap);
    auto* pane = screen.findChild<QPlainTextEdit*>("RTB1");
    EXPECT_EQ(screen.entryMenu(-1), nullptr);  // below the last row: no pop-up
    QMenu* menu = screen.entryMenu(0);
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(menu->objectName(), "mnuAPFiles");
    QAction* open = menu->findChild<QAction*>("mnuAPOpen");
    ASSERT_NE(open, nullptr);
    EXPECT_EQ(open->text(), "Open .bin");
    EXPECT_EQ(screen.selectedEntries(), std::vector<std::size_t>{0});
    open->trigger();
    EXPECT_EQ(pane->toPlainText(), "<English>Ostvale</English>");
    EXPECT_EQ(f.label(screen, "SB1"), "File Loaded: RouteProperties.xml");
    EXPECT_EQ(f.root.read("TempFiles/RouteProperties.xml"), "<English>Ostvale</English>");
    screen.viewRow(2);  // a .txt is not shown
    EXPECT_EQ(pane->toPlainText(), "<English>Ostvale</English>");
    screen.resize(900, 520);
    testing::Screenshot(screen, "frmNewAP_view");
}

TEST(frmNewAP, FindApFilesListsThemAndNamesTheOverlengthOnes) {
    ApScreen f;
    const fs::path big = f.root.write("RW/Assets/Big/Huge.ap", "");
    fs::resize_file(big, 2147483648ull);  // sparse: one byte over the limit
    frmNewAP screen(f.ctx);
    screen.action("mnuFindAP")->trigger();
    auto* grid = screen.findChild<frmListRS*>();
    ASSERT_NE(grid, nullptr);
    EXPECT_EQ(grid->grid().mode, archives::kModeApList);
    EXPECT_EQ(grid->grid().rowCount(), 2u);
    auto* report = screen.findChild<frmReport*>();
    ASSERT_NE(report, nullptr);
    EXPECT_EQ(report->windowTitle(), "List of overlength .ap files");
    EXPECT_TRUE(report->pane()->toPlainText().startsWith("The following .ap files were over 2 gigabytes in length."));
    EXPECT_TRUE(report->pane()->toPlainText().contains("Huge.ap"));
}

}  // namespace
}  // namespace ferrolund::screens
