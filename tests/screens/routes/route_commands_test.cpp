#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QPushButton>
#include <QTableWidget>
#include <QTimer>
#include <gtest/gtest.h>

#include "app/startup.h"
#include "route_screen_fixture.h"
#include "screens/app/dlgIndex.h"
#include "screens/app/frmEditor.h"
#include "screens/app/qt_ui.h"
#include "screens/routes/frmDelRoute.h"

namespace ferrolund::screens {
namespace {

struct RouteMenu : testing::RouteScreenFixture {
    QtUi qtUi;
    frmEditor window{ctx, qtUi};
    RouteMenu() {
        ctx.ui = &ui;
        app::StartOptions options;
        const std::string gameRoot = game.system();
        options.discoverGameRoot = [gameRoot] { return gameRoot; };
        app::StartUp(ctx, window, options);
        ctx.prefs.gameRoot = gameRoot;
        ui.shown.clear();
    }
    // Runs the menu item while answering the notice: Continue, with "Don't display" ticked or not.
    bool runAnsweringNotice(const char* item, bool dontShowAgain) {
        bool noticeShown = false;
        QTimer::singleShot(0, [&] {
            auto* notice = qobject_cast<dlgIndex*>(QApplication::activeModalWidget());
            if (!notice) return;
            noticeShown = true;
            EXPECT_TRUE(notice->extractButton()->isEnabled());
            EXPECT_TRUE(notice->indexButton()->isEnabled());
            notice->dontShow()->setChecked(dontShowAgain);
            notice->continueButton()->click();
        });
        window.menuAction(item)->trigger();
        QApplication::processEvents();  // the timer has run, whether a notice came or not
        return noticeShown;
    }
};

TEST(RouteCommands, BrowserOpensOnTheIndexAfterTheNoticeUntilItIsDismissed) {
    struct Case {
        bool indexed;
        bool tick;
        bool noticeExpected;
        bool indexedAfter;
    };
    const Case cases[] = {
        {false, false, true, false},
        {false, true, true, true},
        {true, false, false, true},
    };
    for (const Case& c : cases) {
        RouteMenu m;
        m.writeIndex("Zeta Line,aaaa-route,1");
        m.ctx.prefs.routesIndexed = c.indexed;
        ASSERT_TRUE(m.window.menuAction("mnuDelRoute")->isEnabled());
        EXPECT_EQ(m.runAnsweringNotice("mnuDelRoute", c.tick), c.noticeExpected);
        EXPECT_EQ(m.ctx.prefs.routesIndexed, c.indexedAfter);
        const QList<frmDelRoute*> screens = m.window.findChildren<frmDelRoute*>();
        ASSERT_EQ(screens.size(), 1);
        EXPECT_TRUE(screens[0]->isVisible());
        EXPECT_EQ(screens[0]->routes()->rowCount(), 1);
        EXPECT_TRUE(m.ui.shown.empty());
    }
}

TEST(RouteCommands, BrowserWithoutIndexOnlySaysSo) {
    RouteMenu m;
    m.ctx.prefs.routesIndexed = true;
    m.window.menuAction("mnuDelRoute")->trigger();
    EXPECT_TRUE(m.window.findChildren<frmDelRoute*>().isEmpty());
    EXPECT_EQ(m.ui.texts(), std::vector<std::string>{"Run 'Index route properties' before using this option."});
}

TEST(RouteCommands, ExtractRoutePropertiesAsksFirst) {
    RouteMenu m;
    ASSERT_TRUE(m.window.menuAction("mnuERP")->isEnabled());
    m.window.menuAction("mnuERP")->trigger();
    EXPECT_EQ(m.ctx.currentRoutine, "getRouteProperties");
    ASSERT_FALSE(m.ui.shown.empty());
    EXPECT_TRUE(m.ui.shown[0].text.starts_with("This option will extract RouteProperties.xml files from all .ap"))
        << m.ui.shown[0].text;
}

}  // namespace
}  // namespace ferrolund::screens
