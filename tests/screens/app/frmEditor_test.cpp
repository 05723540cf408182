#include "screens/app/frmEditor.h"

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QTabWidget>
#include <gtest/gtest.h>

#include "app/menu_table.h"
#include "app/startup.h"
#include "screen_fixture.h"
#include "screens/app/qt_text.h"
#include "screens/app/qt_ui.h"

namespace ferrolund::screens {
namespace {

struct Editor : testing::ScreenFixture {
    QtUi qtUi;
    frmEditor window{ctx, qtUi};
    Editor() {
        ctx.ui = &ui;  // messages go to the scripted Ui; the window keeps its own for status
        app::StartOptions options;
        options.discoverGameRoot = [] { return std::string("/games/RailWorks"); };
        window.show();
        app::StartUp(ctx, window, options);
        QApplication::processEvents();
    }
    QString text(const char* name) const { return window.menuAction(name)->text(); }
};

TEST(frmEditor, OpensWithTheWholeMenu) {
    Editor e;
    testing::Screenshot(e.window, "frmEditor");
    EXPECT_EQ(e.window.windowTitle(), "Ferrolund editor  Version 1.0.1   Rail Works path = /games/RailWorks");
    QStringList bar;
    for (QAction* a : e.window.menuBar()->actions()) bar << a->text();
    EXPECT_EQ(bar, (QStringList{"&Files", "Search and Replace", "Graphics Tools", "Route Building Tools",
                                "Assets/Content", "Scenarios", "QD Files", "Packaging", "Reports", "Options",
                                "Help"}));
    for (const auto& item : app::MainMenu()) {
        QAction* a = e.window.menuAction(std::string(item.name));
        ASSERT_NE(a, nullptr) << item.name;
        if (item.name != "mnuRSBT") {
            EXPECT_EQ(a->isVisible(), !item.hidden) << item.name;
        }
        if (!item.shortcut.empty()) {
            EXPECT_EQ(a->shortcut().toString(), QString::fromLatin1(item.shortcut.data(), item.shortcut.size()));
        }
    }
    auto* markers = e.window.findChild<QMenu*>("mnuMarkers");
    ASSERT_NE(markers, nullptr);
    EXPECT_EQ(markers->actions().size(), 4);
    EXPECT_FALSE(e.window.menuAction("mnuRSBT")->isVisible());  // no RSBinTool folder
    EXPECT_EQ(e.window.statusText(0), "");                      // status went to the scripted Ui
    EXPECT_EQ(e.ui.lastStatus(0), "English");
}

TEST(frmEditor, CommandsOfThisBuildAreLiveAndTheRestGreyed) {
    Editor e;
    for (const char* live : {"mnuExit", "mnuDont", "mnuWarn", "mnuEdMax", "mnuLang", "mnuAcro", "mnuIRF",
                             "mnuViewer", "mnuQDPreload", "mnuRWPath", "mnuPaths", "mnuContents", "mnuAbout",
                             "mnuEmail", "mnuOpenRS", "mnuXML", "mnuItSaveAs", "mnu2bin", "mnuClear", "mnuAE",
                             "mnuKickstart"}) {
        EXPECT_TRUE(e.window.menuAction(live)->isEnabled()) << live;
    }
    // Greyed until a document is open, or not part of this build.
    for (const char* later : {"mnuSaveRS", "mnuSavexml", "mnuPrint", "mnuBuildQD",
                              "mnuNewVer", "mnuNoMarkers", "mnuWeb"}) {
        EXPECT_FALSE(e.window.menuAction(later)->isEnabled()) << later;
    }
    EXPECT_FALSE(e.window.runMenuCommand("mnuBuildQD"));
    e.window.setMenuEnabled("mnuBuildQD", true);  // a command cannot wake an item this build lacks
    EXPECT_FALSE(e.window.menuAction("mnuBuildQD")->isEnabled());
}

TEST(frmEditor, CheckMarksFollowTheirSettings) {
    Editor e;
    EXPECT_FALSE(e.window.menuAction("mnuDont")->isChecked());
    e.window.menuAction("mnuDont")->trigger();
    EXPECT_TRUE(e.window.menuAction("mnuDont")->isChecked());
    EXPECT_TRUE(e.ctx.prefs.noAskOnExit);
    EXPECT_TRUE(std::filesystem::exists(e.root.path() / "Ferrolundpreferences.txt"));
    e.window.menuAction("mnuWarn")->trigger();
    EXPECT_TRUE(e.window.menuAction("mnuWarn")->isChecked());
    EXPECT_TRUE(e.ctx.prefs.warnIfNotSaved);
}

TEST(frmEditor, AnotherLanguageChangesTheCaptionsAtOnce) {
    Editor e;
    EXPECT_EQ(e.text("mnuFileS"), "&Files");
    EXPECT_EQ(e.text("mnuOpenRS"), "Open TS-Classic File");
    app::SelectLanguage(e.ctx, e.window, "Lang_German.txt");
    QApplication::processEvents();
    EXPECT_EQ(e.text("mnuFileS"), "&Dateien");
    EXPECT_NE(e.text("mnuExit"), "Exit");
    EXPECT_EQ(e.window.findChild<QTabWidget*>("SSTab1")->tabText(0), ToQt(*e.ctx.lang.text(65)));
    testing::Screenshot(e.window, "frmEditor_German");
    app::SelectLanguage(e.ctx, e.window, "Lang_English.txt");
    EXPECT_EQ(e.text("mnuFileS"), "&Files");
}

TEST(frmEditor, ClosingRunsTheExitSequence) {
    Editor e;
    e.ui.answers.push_back(base::Answer::No);
    EXPECT_FALSE(e.window.close());
    EXPECT_TRUE(e.window.isVisible());
    EXPECT_EQ(e.ui.shown.back().text, "Do you really wish to exit Ferrolund?");
    EXPECT_TRUE(std::filesystem::exists(e.root.path() / "Ferrolundpreferences.txt"));
    e.ui.answers.push_back(base::Answer::Yes);
    EXPECT_TRUE(e.window.close());
}

}  // namespace
}  // namespace ferrolund::screens
