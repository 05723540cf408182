// "Select Route": the route and scenario grids, the buttons and what they do to the files.
#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTableWidget>
#include <gtest/gtest.h>

#include <filesystem>
#include <set>

#include "app/startup.h"
#include "routes/scenario_list.h"
#include "screens/app/frmEditor.h"
#include "screens/app/qt_ui.h"
#include "screens/routes/route_screen_fixture.h"
#include "screens/scenarios/frmShowRoutes.h"

namespace ferrolund::screens {
namespace {

namespace fs = std::filesystem;
const std::string kRoute = "Strecke-é";

struct Fixture : testing::RouteScreenFixture {
    Fixture() {
        writeIndex("Mühlental," + kRoute + ",1\r\nOther Line,other,2");
        scenario(kRoute, "S-career", "Früher Güterzug", "<ScenarioClass d:type=\"cDeltaString\">eCareerScenarioClass</ScenarioClass>");
        scenario(kRoute, "S-free", "Free Roam", "<ScenarioClass d:type=\"cDeltaString\">eFreeRoamScenarioClass</ScenarioClass>");
        scenario(kRoute, "S-tt", "Timetable", "<ScenarioClass d:type=\"cDeltaString\">eTimetableScenarioClass</ScenarioClass>");
        scenario(kRoute, "S-work", "Workshop",
                 "<ScenarioClass d:type=\"cDeltaString\">eStandardScenarioClass</ScenarioClass><WorkshopID>17</WorkshopID>");
    }
    std::string rel(const std::string& scenario, const std::string& file) const {
        return "Content/Routes/" + kRoute + "/Scenarios/" + scenario + "/" + file;
    }
    // Lists the route and selects the scenarios of the given folders.
    void select(frmShowRoutes& screen, const std::vector<std::string>& folders) const {
        screen.button("Command1")->click();
        screen.scenarios()->clearSelection();
        for (int r = 0; r < screen.scenarios()->rowCount(); ++r)
            for (const std::string& folder : folders)
                if (text(screen.scenarios(), r, 1) == folder)
                    screen.scenarios()->selectionModel()->select(screen.scenarios()->model()->index(r, 0),
                                                                 QItemSelectionModel::Select | QItemSelectionModel::Rows);
    }
};

TEST(frmShowRoutes, ListsTheScenariosColouredByClass) {
    Fixture f;
    frmShowRoutes screen(f.ctx, {});
    ASSERT_TRUE(screen.loadRoutes());
    EXPECT_EQ(screen.windowTitle(), "Select Route");
    ASSERT_EQ(screen.routes()->rowCount(), 2);
    EXPECT_EQ(f.text(screen.routes(), 0, 0), "Mühlental");
    screen.button("Command1")->click();
    ASSERT_EQ(screen.scenarios()->rowCount(), 4);
    EXPECT_EQ(screen.findChild<QLabel*>("Label3")->text(), "4");
    struct Row {
        const char* folder;
        routes::ScenarioKind kind;
    } rows[] = {{"S-free", routes::ScenarioKind::FreeRoam},
                {"S-career", routes::ScenarioKind::Career},
                {"S-tt", routes::ScenarioKind::Timetable},
                {"S-work", routes::ScenarioKind::Workshop}};
    for (const Row& row : rows) {
        bool found = false;
        for (int r = 0; r < screen.scenarios()->rowCount(); ++r) {
            if (f.text(screen.scenarios(), r, 1) != row.folder) continue;
            found = true;
            const std::uint32_t rgb = routes::LegendOf(row.kind)->rgb;
            EXPECT_EQ(screen.scenarios()->item(r, 0)->foreground().color(),
                      QColor((rgb >> 16) & 0xff, (rgb >> 8) & 0xff, rgb & 0xff))
                << row.folder;
        }
        EXPECT_TRUE(found) << row.folder;
    }
    // Six distinct legend colours.
    std::set<QRgb> colours;
    for (QLabel* label : screen.findChildren<QLabel*>())
        if (label->objectName().startsWith("Legend")) colours.insert(label->palette().color(QPalette::WindowText).rgb());
    EXPECT_EQ(colours.size(), 6u);
    screen.resize(1100, 760);
    testing::Screenshot(screen, "frmShowRoutes");

    // A route without a Scenarios folder says so.
    screen.routes()->selectRow(1);
    screen.button("Command1")->click();
    EXPECT_EQ(f.ui.texts().back(), "No Scenarios folder found");
    EXPECT_EQ(screen.scenarios()->rowCount(), 0);
}

TEST(frmShowRoutes, TheHandedInScreensGetTheFolder) {
    Fixture f;
    std::vector<std::string> calls;
    ScenarioScreens screens;
    screens.edit = [&](const std::string& folder) { calls.push_back("edit " + folder); };
    screens.details = [&](const std::string& folder, bool loose) {
        calls.push_back(std::string("details ") + (loose ? "loose " : "") + folder);
    };
    frmShowRoutes without(f.ctx, {});
    for (const char* name : {"Command10", "Command7", "Command12"}) EXPECT_FALSE(without.button(name)->isEnabled());

    frmShowRoutes screen(f.ctx, screens);
    ASSERT_TRUE(screen.loadRoutes());
    EXPECT_FALSE(screen.button("Command12")->isEnabled());
    screen.button("Command1")->click();
    screen.button("Command10")->click();  // nothing selected
    EXPECT_EQ(f.ui.texts().back(), "No Scenarios were found.");
    f.select(screen, {"S-tt"});
    screen.button("Command10")->click();
    f.ui.answers = {base::Answer::Yes};
    screen.button("Command7")->click();  // no Scenario.bin
    EXPECT_EQ(f.ui.texts().back(),
              "There is no Scenario.bin file found for this scenario\r\nit may still be packed in the .ap file");
    f.game.write(f.rel("S-tt", "Scenario.bin"), "bin");
    f.ui.answers = {base::Answer::Yes};
    screen.button("Command7")->click();
    const std::string folder = f.game.system() + "\\Content\\Routes\\" + kRoute + "\\Scenarios\\S-tt";
    EXPECT_EQ(calls, (std::vector<std::string>{"edit " + folder, "details loose " + folder}));
}

TEST(frmShowRoutes, CareerBecomesStandardAndTheGridFollows) {
    Fixture f;
    frmShowRoutes screen(f.ctx, {});
    ASSERT_TRUE(screen.loadRoutes());
    f.select(screen, {"S-career", "S-tt"});
    screen.button("Command14")->click();
    EXPECT_EQ(f.ui.texts().back(), "All selected scenarios are now 'Standard'");
    EXPECT_NE(f.game.read(f.rel("S-career", "ScenarioProperties.xml")).find(">eStandardScenarioClass<"), std::string::npos);
    EXPECT_NE(f.game.read(f.rel("S-tt", "ScenarioProperties.xml")).find(">eTimetableScenarioClass<"), std::string::npos);
    EXPECT_TRUE(fs::exists(f.game.path() / f.rel("S-career", "ScenarioProperties.bak")));
    EXPECT_FALSE(fs::exists(f.game.path() / f.rel("S-tt", "ScenarioProperties.bak")));
    const std::uint32_t rgb = routes::LegendOf(routes::ScenarioKind::Standard)->rgb;
    for (int r = 0; r < screen.scenarios()->rowCount(); ++r) {
        if (f.text(screen.scenarios(), r, 1) != "S-career") continue;
        EXPECT_EQ(screen.scenarios()->item(r, 0)->foreground().color().rgb() & 0xffffff, rgb);
    }
}

TEST(frmShowRoutes, SavedCopiesFeedTheCurrentSaveCommands) {
    Fixture f;
    f.game.write(f.rel("S-free", "CurrentSave.bin"), "current");
    f.game.write(f.rel("S-free", "Morning.bin"), "morning");
    f.game.write(f.rel("S-free", "Morning.bin.MD5"), "morning sum");
    frmShowRoutes screen(f.ctx, {});
    ASSERT_TRUE(screen.loadRoutes());
    f.select(screen, {"S-free"});
    screen.button("Command5")->click();  // no file chosen yet
    EXPECT_EQ(f.ui.texts().back(), "Please select a saved file first.");
    screen.button("Command15")->click();
    ASSERT_EQ(screen.savedCopies()->count(), 1);
    EXPECT_EQ(screen.savedCopies()->item(0)->text(), "Morning.bin");
    screen.savedCopies()->setCurrentRow(0);
    f.ui.answers = {base::Answer::Yes};
    screen.button("Command5")->click();
    EXPECT_EQ(f.game.read(f.rel("S-free", "CurrentSave.bin")), "morning");
    EXPECT_EQ(f.game.read(f.rel("S-free", "CurrentSave.bin.MD5")), "morning sum");
    // The old save is among the copies now.
    std::vector<std::string> copies;
    for (int i = 0; i < screen.savedCopies()->count(); ++i) copies.push_back(FromQt(screen.savedCopies()->item(i)->text()));
    EXPECT_EQ(copies, (std::vector<std::string>{"CurrentSave.bin.bak", "Morning.bin"}));
}

TEST(frmShowRoutes, InvalidScenariosOpenOnTheReportGrid) {
    Fixture f;
    frmShowRoutes screen(f.ctx, {});
    ASSERT_TRUE(screen.loadRoutes());
    screen.button("Command13")->click();
    const std::vector<frmListRS*> grids = f.grids(screen);
    ASSERT_EQ(grids.size(), 1u);
    EXPECT_EQ(grids[0]->grid().rowCount(), 4u);  // none of them has a Scenario.bin
    EXPECT_EQ(grids[0]->grid().cell(0, 1), "Scenario.bin is missing");
    EXPECT_TRUE(grids[0]->isModal() || grids[0]->windowModality() != Qt::NonModal);
}

TEST(frmShowRoutes, TheMenuEntryOpensIt) {
    Fixture f;
    QtUi qtUi;
    frmEditor window{f.ctx, qtUi};
    app::StartOptions options;
    const std::string gameRoot = f.game.system();
    options.discoverGameRoot = [gameRoot] { return gameRoot; };
    app::StartUp(f.ctx, window, options);
    f.ctx.ui = &f.ui;
    f.ctx.prefs.gameRoot = gameRoot;
    QAction* entry = window.menuAction("mnuKickstart");
    ASSERT_NE(entry, nullptr);
    EXPECT_TRUE(entry->isEnabled());
    entry->trigger();
    auto* screen = window.findChild<frmShowRoutes*>();
    ASSERT_NE(screen, nullptr);
    EXPECT_EQ(screen->routes()->rowCount(), 2);
    screen->close();

    fs::remove(f.root.path() / "IndexFiles/RouteIndex.csv");
    EXPECT_EQ(ShowShowRoutes(f.ctx, {}, &window), nullptr);
    EXPECT_EQ(f.ui.texts().back(), "Run 'Index route properties' before using this option.");
}

}  // namespace
}  // namespace ferrolund::screens
