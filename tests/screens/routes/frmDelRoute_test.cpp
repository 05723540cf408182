#include "screens/routes/frmDelRoute.h"

#include <QApplication>
#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTableView>
#include <QTableWidget>
#include <gtest/gtest.h>

#include <filesystem>

#include "route_screen_fixture.h"
#include "screens/app/qt_text.h"
#include "screens/archives/frmListRS.h"
#include "screens/services/frmReport.h"

namespace ferrolund::screens {
namespace {

namespace fs = std::filesystem;

constexpr const char* kRouteA = "aaaa-route";
constexpr const char* kRouteB = "bbbb-route";

struct DelRoute : testing::RouteScreenFixture {
    DelRoute() { writeIndex(std::string("Zeta Line,") + kRouteA + ",1\r\nAlder Branch," + kRouteB + ",2"); }

    QString label(frmDelRoute& screen, const char* name) const {
        return screen.findChild<QLabel*>(name)->text();
    }
};

TEST(frmDelRoute, WithoutRouteIndexSaysSoAndOpensNothing) {
    testing::RouteScreenFixture f;
    QWidget parent;
    EXPECT_EQ(ShowDelRoute(f.ctx, &parent), nullptr);
    EXPECT_EQ(f.ui.texts(), std::vector<std::string>{"Run 'Index route properties' before using this option."});
    EXPECT_TRUE(parent.findChildren<frmDelRoute*>().isEmpty());
}

TEST(frmDelRoute, LoadsTheRoutesSortedByNameWithTheFirstSelected) {
    DelRoute f;
    QWidget parent;
    frmDelRoute* screen = ShowDelRoute(f.ctx, &parent);
    ASSERT_NE(screen, nullptr);
    QTableWidget* routes = screen->routes();
    ASSERT_EQ(routes->rowCount(), 2);
    EXPECT_EQ(f.text(routes, 0, 0), "Alder Branch");
    EXPECT_EQ(f.text(routes, 0, 1), kRouteB);
    EXPECT_EQ(f.text(routes, 1, 0), "Zeta Line");
    EXPECT_EQ(routes->item(1, 2)->data(Qt::DisplayRole).toInt(), 1);
    EXPECT_EQ(f.label(*screen, "Label7"), "2");
    ASSERT_EQ(routes->selectionModel()->selectedRows().size(), 1);
    EXPECT_EQ(routes->selectionModel()->selectedRows()[0].row(), 0);
    EXPECT_EQ(routes->horizontalHeaderItem(0)->text(), "Route Name");
    EXPECT_EQ(routes->horizontalHeaderItem(1)->text(), "Route Folder");
    EXPECT_EQ(screen->scenarios()->horizontalHeaderItem(0)->text(), "Scenario Name");
    EXPECT_EQ(screen->scenarios()->horizontalHeaderItem(1)->text(), "Scenario ID (GUID)");
    EXPECT_TRUE(screen->button("Command10")->isHidden());
    EXPECT_TRUE(screen->findChild<QProgressBar*>("ProgressBar1")->isHidden());
    EXPECT_EQ(screen->button("Command10")->text(), "&Abort");
    for (const char* name : {"Command1", "Command2", "Command4", "Command12", "Command20", "Command26", "CancelButton"})
        EXPECT_TRUE(screen->button(name)->isEnabled()) << name;
    EXPECT_EQ(f.ui.shown.size(), 0u);
}

TEST(frmDelRoute, ScenarioRowsTakeTheColourOfTheirClass) {
    DelRoute f;
    struct Case {
        const char* folder;
        const char* name;
        const char* classText;
        QColor colour;
    };
    const std::string cls = "<ScenarioClass d:type=\"cDeltaString\">";
    const Case cases[] = {
        {"s1", "A quick drive", "eTemplateScenarioClass", QColor(0, 255, 0)},
        {"s2", "B free roam", "eFreeRoamScenarioClass", QColor(0, 0, 255)},
        {"s3", "C career", "eCareerScenarioClass", QColor(255, 0, 0)},
        // Another class keeps the colour of the row above it.
        {"s4", "D unknown", "eOtherScenarioClass", QColor(255, 0, 0)},
        {"s5", "E workshop", "eStandardScenarioClass</ScenarioClass><WorkshopID>77</WorkshopID><x>", QColor(0, 255, 255)},
        {"s6", "F standard", "eStandardScenarioClass</ScenarioClass><WorkshopID>0</WorkshopID><x>", QColor(0, 0, 0)},
        {"s7", "G timetable", "eTimetableScenarioClass", QColor(255, 0, 255)},
    };
    for (const Case& c : cases) f.scenario(kRouteA, c.folder, c.name, cls + c.classText + "</ScenarioClass>");
    f.scenario(kRouteA, "s8", "H coal, and more", "");
    frmDelRoute screen(f.ctx);
    ASSERT_TRUE(screen.loadRoutes());
    f.selectRoute(screen, kRouteA);
    screen.button("Command1")->click();
    QTableWidget* list = screen.scenarios();
    ASSERT_EQ(list->rowCount(), 8);
    for (int r = 0; r < 7; ++r) {
        const Case& c = cases[r];
        EXPECT_EQ(f.text(list, r, 0), c.name);
        EXPECT_EQ(f.text(list, r, 1), std::string("dev-") + c.folder);
        EXPECT_EQ(f.text(list, r, 2), c.folder);
        EXPECT_EQ(f.text(list, r, 3), kRouteA);
        EXPECT_EQ(list->item(r, 0)->foreground().color(), c.colour) << c.name;
        EXPECT_EQ(list->item(r, 1)->foreground().color(), c.colour) << c.name;
    }
    EXPECT_EQ(f.text(list, 7, 0), "H coal- and more");
    EXPECT_EQ(f.label(screen, "Label9"), "8");
    EXPECT_FALSE(list->isColumnHidden(0));
    EXPECT_TRUE(list->isColumnHidden(2));
}

TEST(frmDelRoute, ClickOnARouteListsItsScenariosOrTheNote) {
    DelRoute f;
    f.scenario(kRouteA, "s1", "Morning run", "");
    f.game.write(std::string("Content/Routes/") + kRouteB + "/Scenarios/packed/Scenario.ap", "x");
    frmDelRoute screen(f.ctx);
    ASSERT_TRUE(screen.loadRoutes());
    struct Case {
        const char* folder;
        std::string first;
        QString count;
    };
    const Case cases[] = {
        {kRouteA, "Morning run", "1"},
        {kRouteB, "No Scenarios found, could be in .ap file", "0"},
        {kRouteA, "Morning run", "1"},
    };
    for (const Case& c : cases) {
        f.selectRoute(screen, c.folder);
        const int row = screen.routes()->currentRow();
        emit screen.routes()->cellClicked(row, 0);
        ASSERT_EQ(screen.scenarios()->rowCount(), 1) << c.folder;
        EXPECT_EQ(f.text(screen.scenarios(), 0, 0), c.first);
        EXPECT_EQ(f.label(screen, "Label9"), c.count);
    }
    f.writeIndex("Lost Route,cccc-route,3");
    ASSERT_TRUE(screen.loadRoutes());
    EXPECT_EQ(screen.routes()->rowCount(), 1);
    screen.listScenarios();
    EXPECT_EQ(f.text(screen.scenarios(), 0, 0), "No Scenarios folder found");
}

TEST(frmDelRoute, DeleteSelectedScenariosAfterTheQuestion) {
    DelRoute f;
    for (const char* folder : {"s1", "s2", "s3"}) f.scenario(kRouteA, folder, std::string("Run ") + folder, "");
    frmDelRoute screen(f.ctx);
    ASSERT_TRUE(screen.loadRoutes());
    f.selectRoute(screen, kRouteA);
    screen.listScenarios();
    const fs::path scenarios = f.game.path() / "Content/Routes" / kRouteA / "Scenarios";

    screen.button("Command2")->click();  // nothing selected
    EXPECT_EQ(f.ui.texts(), std::vector<std::string>{"You do not appear to have selected a scenario?"});

    struct Case {
        base::Answer answer;
        std::vector<std::string> left;
    };
    const Case cases[] = {
        {base::Answer::No, {"Run s1", "Run s2", "Run s3"}},
        {base::Answer::Yes, {"Run s2"}},
    };
    for (const Case& c : cases) {
        f.ui.shown.clear();
        screen.scenarios()->clearSelection();
        screen.scenarios()->setSelectionMode(QAbstractItemView::MultiSelection);
        screen.scenarios()->selectRow(0);
        screen.scenarios()->selectRow(2);
        f.ui.answers = {c.answer};
        screen.button("Command2")->click();
        EXPECT_EQ(f.ui.texts(), std::vector<std::string>{"Do you really wish to delete the selected scenario(s)?"});
        std::vector<std::string> left;
        for (int r = 0; r < screen.scenarios()->rowCount(); ++r) left.push_back(f.text(screen.scenarios(), r, 0));
        EXPECT_EQ(left, c.left);
    }
    EXPECT_FALSE(fs::exists(scenarios / "s1"));
    EXPECT_TRUE(fs::exists(scenarios / "s2" / "ScenarioProperties.xml"));
    EXPECT_FALSE(fs::exists(scenarios / "s3"));
}

TEST(frmDelRoute, SaveLowerGridWritesTheRowsAsCommaText) {
    DelRoute f;
    f.scenario(kRouteA, "s2", "Late turn", "");
    f.scenario(kRouteA, "s1", "Early, turn", "");
    frmDelRoute screen(f.ctx);
    ASSERT_TRUE(screen.loadRoutes());
    f.selectRoute(screen, kRouteA);
    screen.listScenarios();
    const std::string file = f.root.system() + "/Reports/lower.csv";
    f.ui.files = {std::nullopt, file};
    screen.button("Command20")->click();  // cancelled: nothing written
    EXPECT_FALSE(fs::exists(file));
    EXPECT_TRUE(fs::is_directory(f.root.path() / "Reports"));
    screen.button("Command20")->click();
    ASSERT_EQ(f.ui.dialogTitles, (std::vector<std::string>{"Save Grid", "Save Grid"}));
    EXPECT_EQ(f.root.read("Reports/lower.csv"), std::string("Early- turn,dev-s1,s1,") + kRouteA + "\r\nLate turn,dev-s2,s2," +
                                                    kRouteA + "\r\n");
}

TEST(frmDelRoute, ClassTableGoesToTheReportScreen) {
    DelRoute f;
    f.scenario(kRouteA, "s1", "One", "<ScenarioClass d:type=\"cDeltaString\">eCareerScenarioClass</ScenarioClass>");
    f.scenario(kRouteA, "s2", "Two", "<ScenarioClass d:type=\"cDeltaString\">eCareerScenarioClass</ScenarioClass>");
    frmDelRoute screen(f.ctx);
    ASSERT_TRUE(screen.loadRoutes());
    screen.button("Command26")->click();
    const QList<frmReport*> reports = screen.findChildren<frmReport*>();
    ASSERT_EQ(reports.size(), 1);
    const std::string shown = FromQt(reports[0]->pane()->toPlainText());
    EXPECT_TRUE(shown.starts_with("Route Name" + std::string(40, ' ') + "Q.Drive")) << shown;
    EXPECT_NE(shown.find("Zeta Line" + std::string(41, ' ') + "   0\t   2\t   0"), std::string::npos) << shown;
    testing::Screenshot(*reports[0], "frmDelRoute_class_table");
}

TEST(frmDelRoute, PrintedListGoesToTheReportScreen) {
    DelRoute f;
    f.scenario(kRouteA, "s1", "One", "<ScenarioClass d:type=\"cDeltaString\">eCareerScenarioClass</ScenarioClass>");
    frmDelRoute screen(f.ctx);
    ASSERT_TRUE(screen.loadRoutes());
    screen.button("Command12")->click();
    const QList<frmReport*> reports = screen.findChildren<frmReport*>();
    ASSERT_EQ(reports.size(), 1);
    const std::string shown = FromQt(reports[0]->pane()->toPlainText());
    // The routes in the grid's order: the one without scenarios first.
    EXPECT_TRUE(shown.starts_with(f.game.system() + "\\content\\Routes\\" + kRouteB + "\\Scenarios - can't be found\n" +
                                  "Zeta Line - " + kRouteA + "\n\tOne"))
        << shown;
    EXPECT_NE(shown.find("\n\nTotal Scenarios = 1"), std::string::npos) << shown;
}

// The check through the screen: its questions, its bar and its lists.
struct CheckedRoute : DelRoute {
    CheckedRoute() {
        const std::string route = std::string("Content/Routes/") + kRouteA;
        made = tile(route + "/Scenery/+000000+000000.bin",
                    {{"Kestrel", "CanalPack", "Scenery\\Lock.xml"}, {"Kestrel", "CanalPack", "Scenery\\Gone.xml"}}) &&
               tile(route + "/Scenarios/s1/Scenery/+000001+000000.bin", {{"Kestrel", "Extras", "Crate.xml"}});
        asset("Kestrel/CanalPack/Scenery/Lock.bin");
        scenario(kRouteA, "s1", "Morning run", "");
        game.write(route + "/RouteProperties.xml", "<cRouteProperties/>");
    }
    bool made = false;
};

TEST(frmDelRoute, CheckShowsTheMissingAndUsedListsAndSavesThem) {
    CheckedRoute f;
    ASSERT_TRUE(f.made);
    frmDelRoute screen(f.ctx);
    ASSERT_TRUE(screen.loadRoutes());
    f.selectRoute(screen, kRouteA);
    screen.listScenarios();
    f.ui.answers = {base::Answer::Yes, base::Answer::No};  // the list of shapes, then no texture check
    screen.button("Command4")->click();

    EXPECT_EQ(screen.scenarios()->rowCount(), 0);
    EXPECT_EQ(f.label(screen, "Label9"), "0");
    const std::string assets = f.game.system() + "\\Assets\\Kestrel\\";
    EXPECT_EQ(f.ui.texts(), (std::vector<std::string>{
                                "Do you wish to view a list of Shapes used by this route?",
                                "Would you like to check for missing Texture/Audio/Animation & Script files?"}));
    const auto shown = f.grids(screen);
    ASSERT_EQ(shown.size(), 2u);
    archives::ReportGrid& missing = shown[0]->grid();
    ASSERT_EQ(missing.rowCount(), 2u);  // the route's tile and its scenario's
    EXPECT_EQ(missing.table.headings, std::vector<std::string>{"Following Asset(s) were missing from this route:-"});
    std::vector<std::string> missingPaths{missing.cell(0, 0), missing.cell(1, 0)};
    std::sort(missingPaths.begin(), missingPaths.end());
    EXPECT_EQ(missingPaths, (std::vector<std::string>{assets + "CanalPack\\Scenery\\Gone.bin", assets + "Extras\\Crate.bin"}));
    EXPECT_EQ(missing.mode, archives::kModeRouteCheck);
    EXPECT_EQ(missing.missing, (std::vector<bool>{true, true}));  // shown in cyan
    archives::ReportGrid& used = shown[1]->grid();
    EXPECT_EQ(used.table.headings, std::vector<std::string>{"Following Asset(s) were used by this route:-"});
    EXPECT_EQ(used.mode, archives::kModeRouteItems);
    ASSERT_EQ(used.rowCount(), 3u);
    EXPECT_EQ(used.cell(0, 1), "(Scenery Item)");
    // Each list is kept under the route's name for the commands that read them later.
    EXPECT_TRUE(fs::exists(f.root.path() / "Reports" / "Zeta Line_Assets.csv"));
    EXPECT_FALSE(f.ui.progressSteps.empty());
    EXPECT_TRUE(screen.button("Command10")->isHidden());
    EXPECT_TRUE(screen.button("Command4")->isEnabled());
    EXPECT_EQ(f.ctx.ui, &f.ui);
    testing::Screenshot(screen, "frmDelRoute_after_check");
    testing::Screenshot(*shown[0], "frmDelRoute_missing_grid");
}

TEST(frmDelRoute, TextureCheckNotesAppearBelowTheGrids) {
    CheckedRoute f;
    ASSERT_TRUE(f.made);
    fs::remove(f.game.path() / "Assets/Kestrel/CanalPack/Scenery/Lock.bin");
    frmDelRoute screen(f.ctx);
    ASSERT_TRUE(screen.loadRoutes());
    f.selectRoute(screen, kRouteA);
    const auto* notes = screen.findChild<QPlainTextEdit*>("Text1");
    EXPECT_TRUE(notes->isHidden());
    f.ui.answers = {base::Answer::No, base::Answer::Yes, base::Answer::No};
    screen.button("Command4")->click();
    EXPECT_EQ(f.ui.texts().back(), "Do you wish to view a list of Textures used by this route?");
    EXPECT_FALSE(notes->isHidden());
    EXPECT_EQ(FromQt(notes->toPlainText()), "Texture Check:-\nMissing Textures:-\nNo missing textures detected");
    const auto shown = f.grids(screen);
    ASSERT_EQ(shown.size(), 2u);
    EXPECT_EQ(shown[1]->grid().table.headings,
              std::vector<std::string>{"Following geometric item(s) were used by this route:-"});
    testing::Screenshot(screen, "frmDelRoute_notes");

    // The next check starts with the notes cleared.
    f.ui.answers = {base::Answer::No, base::Answer::No};
    screen.button("Command4")->click();
    EXPECT_TRUE(notes->isHidden());
    EXPECT_TRUE(notes->toPlainText().isEmpty());
}

TEST(frmDelRoute, WithoutScenarioListTheScenarioTilesAreNotChecked) {
    CheckedRoute f;
    ASSERT_TRUE(f.made);
    frmDelRoute screen(f.ctx);
    ASSERT_TRUE(screen.loadRoutes());
    f.selectRoute(screen, kRouteA);
    screen.button("Command4")->click();
    const auto shown = f.grids(screen);
    ASSERT_EQ(shown.size(), 1u);
    ASSERT_EQ(shown[0]->grid().rowCount(), 1u);
    EXPECT_TRUE(shown[0]->grid().cell(0, 0).ends_with("\\Gone.bin"));
}

TEST(frmDelRoute, AbortStopsTheCheckAndTheCommandsComeBack) {
    CheckedRoute f;
    ASSERT_TRUE(f.made);
    frmDelRoute screen(f.ctx);
    ASSERT_TRUE(screen.loadRoutes());
    f.selectRoute(screen, kRouteA);
    struct ClickingUi : testing::ScriptedUi {
        frmDelRoute* screen = nullptr;
        bool lockedWhileRunning = false;
        bool barShown = false;
        void pump() override {
            if (++pumps == 1) {
                lockedWhileRunning = !screen->button("Command4")->isEnabled() && !screen->button("Command1")->isEnabled() &&
                                     !screen->button("Command10")->isHidden();
                const QProgressBar* bar = screen->findChild<QProgressBar*>("ProgressBar1");
                barShown = !bar->isHidden() && bar->format() == "Scenery 100 %" && bar->value() == 100;
                testing::Screenshot(*screen, "frmDelRoute_running");
            }
            screen->button("Command10")->click();
        }
    } clicking;
    clicking.screen = &screen;
    f.ctx.ui = &clicking;
    screen.button("Command4")->click();
    EXPECT_GT(clicking.pumps, 0);
    EXPECT_TRUE(clicking.lockedWhileRunning);
    EXPECT_TRUE(clicking.barShown);
    EXPECT_TRUE(screen.findChild<QProgressBar*>("ProgressBar1")->isHidden());
    EXPECT_EQ(clicking.progressSteps, (std::vector<std::pair<int, std::string>>{{100, "Scenery 100 %"}}));
    EXPECT_TRUE(f.ctx.abortFlag);
    EXPECT_TRUE(screen.lastCheck().stopped);
    EXPECT_TRUE(f.grids(screen).empty());
    EXPECT_TRUE(clicking.shown.empty());
    EXPECT_TRUE(screen.button("Command10")->isHidden());
    EXPECT_TRUE(screen.button("Command4")->isEnabled());
    EXPECT_FALSE(screen.running());
}

TEST(frmDelRoute, ClosingDuringTheCheckStopsItAndWaits) {
    CheckedRoute f;
    ASSERT_TRUE(f.made);
    QWidget parent;
    frmDelRoute* screen = ShowDelRoute(f.ctx, &parent);
    ASSERT_NE(screen, nullptr);
    f.selectRoute(*screen, kRouteA);
    struct ClosingUi : testing::ScriptedUi {
        frmDelRoute* screen = nullptr;
        bool closed = true;
        void pump() override {
            ++pumps;
            closed = screen->close();
        }
    } closing;
    closing.screen = screen;
    f.ctx.ui = &closing;
    screen->button("Command4")->click();
    EXPECT_FALSE(closing.closed);
    EXPECT_TRUE(f.ctx.abortFlag);
    EXPECT_TRUE(screen->lastCheck().stopped);
    EXPECT_TRUE(screen->isVisible());
    EXPECT_TRUE(screen->close());  // once stopped it closes
}

TEST(frmDelRoute, CheckWithoutARouteSaysSo) {
    DelRoute f;
    frmDelRoute screen(f.ctx);
    ASSERT_TRUE(screen.loadRoutes());
    screen.routes()->clearSelection();
    screen.button("Command4")->click();
    EXPECT_EQ(f.ui.texts(), std::vector<std::string>{"You do not appear to have selected a route?"});
    EXPECT_TRUE(f.ui.progressSteps.empty());
}

TEST(frmDelRoute, PackedRouteAskedNoChecksNothing) {
    DelRoute f;
    f.game.write(std::string("Content/Routes/") + kRouteB + "/RouteProperties.xml", "<x/>");
    frmDelRoute screen(f.ctx);
    ASSERT_TRUE(screen.loadRoutes());
    f.selectRoute(screen, kRouteB);
    f.ui.answers = {base::Answer::No};
    screen.checkSelectedRoute();
    ASSERT_EQ(f.ui.shown.size(), 1u);
    EXPECT_TRUE(f.ui.shown[0].question);
    EXPECT_TRUE(f.ui.shown[0].text.starts_with("The 'Scenery' folder for this route is empty, or missing,\n"));
    EXPECT_TRUE(f.grids(screen).empty());
    EXPECT_TRUE(screen.lastCheck().stopped);
}

TEST(frmDelRoute, ScreenshotOfTheListedRoute) {
    DelRoute f;
    f.scenario(kRouteA, "s1", "Morning run", "<ScenarioClass d:type=\"cDeltaString\">eCareerScenarioClass</ScenarioClass>");
    f.scenario(kRouteA, "s2", "Evening freight", "<ScenarioClass d:type=\"cDeltaString\">eTimetableScenarioClass</ScenarioClass>");
    f.scenario(kRouteA, "s3", "Quick", "<ScenarioClass d:type=\"cDeltaString\">eTemplateScenarioClass</ScenarioClass>");
    frmDelRoute screen(f.ctx);
    ASSERT_TRUE(screen.loadRoutes());
    f.selectRoute(screen, kRouteA);
    screen.listScenarios();
    screen.show();
    QApplication::processEvents();
    testing::Screenshot(screen, "frmDelRoute");
    EXPECT_EQ(screen.scenarios()->rowCount(), 3);
}

}  // namespace
}  // namespace ferrolund::screens
