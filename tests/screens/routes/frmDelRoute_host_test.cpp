// What the screen offers the areas whose commands stand on it: command buttons that a
// long run locks, the run itself, and the selected route and scenarios.
#include <QAction>
#include <QPushButton>
#include <QTableWidget>
#include <gtest/gtest.h>

#include <map>

#include "route_screen_fixture.h"
#include "screens/routes/frmDelRoute.h"

namespace ferrolund::screens {
namespace {

constexpr const char* kRouteA = "aaaa-route";
constexpr const char* kRouteB = "bbbb-route";

struct Host : testing::RouteScreenFixture {
    Host() { writeIndex(std::string("Alder Branch,") + kRouteA + ",1\r\nBeech Line," + kRouteB + ",2"); }
};

TEST(frmDelRouteHost, ARunLocksTheLockedCommandsAndRefusesASecondRun) {
    Host f;
    frmDelRoute screen(f.ctx);
    ASSERT_TRUE(screen.loadRoutes());
    int runs = 0;
    QPushButton* locked = screen.addCommand("CommandX", "Locked one", [&] { ++runs; });
    QPushButton* free = screen.addCommand("CommandY", "Free one", [] {}, false);
    bool lockedDuring = false, freeDuring = false, abortShown = false, secondRan = true;
    f.ctx.abortFlag = true;  // left over from an earlier run: cleared before the work
    bool flagAtStart = true;
    const bool ran = screen.runLong([&] {
        flagAtStart = f.ctx.abortFlag;
        lockedDuring = !locked->isEnabled() && !screen.button("Command4")->isEnabled();
        freeDuring = free->isEnabled();
        abortShown = !screen.button("Command10")->isHidden();
        secondRan = screen.runLong([] {});
        locked->click();  // a locked command can't be started meanwhile
    });
    EXPECT_TRUE(ran);
    EXPECT_FALSE(flagAtStart);
    EXPECT_TRUE(lockedDuring);
    EXPECT_TRUE(freeDuring);
    EXPECT_TRUE(abortShown);
    EXPECT_FALSE(secondRan);
    EXPECT_EQ(runs, 0);
    EXPECT_TRUE(locked->isEnabled());
    EXPECT_TRUE(screen.button("Command10")->isHidden());
    locked->click();
    EXPECT_EQ(runs, 1);
    EXPECT_EQ(screen.button("CommandX"), locked);
}

TEST(frmDelRouteHost, AnExceptionInTheWorkStillUnlocksTheScreen) {
    Host f;
    frmDelRoute screen(f.ctx);
    ASSERT_TRUE(screen.loadRoutes());
    base::Ui* before = f.ctx.ui;
    EXPECT_THROW(screen.runLong([] { throw std::runtime_error("broken"); }), std::runtime_error);
    EXPECT_TRUE(screen.button("Command4")->isEnabled());
    EXPECT_EQ(f.ctx.ui, before);
    EXPECT_TRUE(screen.runLong([] {}));
}

TEST(frmDelRouteHost, SelectedRouteCarriesOnlyItsOwnListedScenarios) {
    Host f;
    f.scenario(kRouteA, "s1", "Morning run", "");
    f.scenario(kRouteA, "s2", "Evening run", "");
    frmDelRoute screen(f.ctx);
    ASSERT_TRUE(screen.loadRoutes());
    screen.routes()->selectRow(0);
    screen.button("Command1")->click();
    routes::CheckedRoute route;
    ASSERT_TRUE(screen.selectedRoute(route));
    EXPECT_EQ(route.name, "Alder Branch");
    EXPECT_EQ(route.folder, kRouteA);
    EXPECT_EQ(route.scenarioFolders, (std::vector<std::string>{"s2", "s1"}));  // in the grid's name order

    screen.scenarios()->selectRow(1);
    const auto selected = screen.selectedScenarios();
    ASSERT_EQ(selected.size(), 1u);
    EXPECT_EQ(selected[0].name, "Morning run");
    EXPECT_EQ(selected[0].folder, "s1");
    EXPECT_EQ(selected[0].routeFolder, kRouteA);

    // The other route: the lower grid still lists the first one's scenarios, which are not its own.
    screen.routes()->clearSelection();
    screen.routes()->selectRow(1);
    ASSERT_TRUE(screen.selectedRoute(route));
    EXPECT_EQ(route.folder, kRouteB);
    EXPECT_TRUE(route.scenarioFolders.empty());
}

TEST(frmDelRouteHost, TheNoteRowIsNoScenario) {
    Host f;
    frmDelRoute screen(f.ctx);
    ASSERT_TRUE(screen.loadRoutes());
    screen.routes()->selectRow(0);
    screen.button("Command1")->click();  // no Scenarios folder: the note alone
    ASSERT_EQ(screen.scenarios()->rowCount(), 1);
    screen.scenarios()->selectRow(0);
    EXPECT_TRUE(screen.selectedScenarios().empty());
    EXPECT_TRUE(screen.listedScenarios().empty());
}

TEST(frmDelRouteHost, EveryCommandOfTheScreenStandsOnceWithItsCaption) {
    Host f;
    frmDelRoute screen(f.ctx);
    std::map<QString, int> names;
    for (const QPushButton* b : screen.findChildren<QPushButton*>()) ++names[b->objectName()];
    for (const auto& [name, count] : names) EXPECT_EQ(count, 1) << name.toStdString();
    const std::pair<const char*, const char*> commands[] = {
        {"Command1", "List Scenarios in Selected Route"}, {"Command4", "Check Selected Route"},
        {"Command26", "List Routes with Scenario types"}, {"Command12", "Print list of all Routes and Scenarios"},
        {"Command2", "Delete Selected Scenario(s)"},      {"Command20", "Save lower grid"},
        {"Command24", "List Scenarios in all routes"},    {"Command3", "List  items used by selected Scenario"},
        {"Command27", "List Stock used by selected route"}, {"Command15", "List Stock missing in all scenarios"},
        {"Command21", "List ALL rolling stock used by all routes"}, {"Command19", "List Stock used with wagon numbers"},
        {"Command28", "View Missing Stock Screen"},       {"Command17", "Show Location of all Assets"},
        {"Command14", "Show Provider / Products used in selected route"},
        {"Command22", "Display items used from selected P/P"}, {"Command23", "Display items NOT used"},
        {"Command18", "Check ScenarioProperties"},         {"Command25", "Check Route Template"},
        {"Command10", "&Abort"},
    };
    for (const auto& [name, caption] : commands) {
        ASSERT_NE(screen.button(name), nullptr) << name;
        EXPECT_EQ(screen.button(name)->text().toStdString(), caption) << name;
    }
    for (const char* name : {"mnuTex", "mnuCRF"}) EXPECT_NE(screen.findChild<QAction*>(name), nullptr) << name;
}

TEST(frmDelRouteHost, MiscellaneousEntriesRunTheirCommand) {
    Host f;
    frmDelRoute screen(f.ctx);
    int runs = 0;
    QAction* action = screen.addMiscCommand("mnuX", "Do it", [&] { ++runs; });
    EXPECT_EQ(action->objectName(), "mnuX");
    action->trigger();
    EXPECT_EQ(runs, 1);
}

}  // namespace
}  // namespace ferrolund::screens
