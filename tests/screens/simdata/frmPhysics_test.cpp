#include "screens/simdata/frmPhysics.h"

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <filesystem>
#include <gtest/gtest.h>

#include "core/simdata/physics_fixture.h"
#include "screens/app/qt_text.h"
#include "screens/app/screen_fixture.h"
#include "screens/assets/asset_grid.h"
#include "screens/assets/frmAssets.h"
#include "tools/files.h"
#include "tools/host_path.h"

namespace ferrolund::screens {
namespace {

namespace fs = std::filesystem;
using simdata::PhysicsGrid;
using simdata::testing::AssetFile;

struct Physics {
    assets::testing::Game game;
    frmPhysics* screen = nullptr;
    explicit Physics(const std::string& id = simdata::testing::kDieselId) {
        simdata::testing::PutLocomotives(game);
        screen = ShowPhysics(game.ctx, nullptr, AssetFile(game, id));
    }
    ~Physics() { delete screen; }
    int rowOf(PhysicsGrid grid, const std::string& item, int nth = 0) const {
        QTableWidget* table = screen->grid(grid);
        for (int r = 0; r < table->rowCount(); ++r)
            if (FromQt(table->item(r, 0)->text()) == item && nth-- == 0) return r;
        return -1;
    }
    QTableWidgetItem* data(PhysicsGrid grid, const std::string& item, int nth = 0) const {
        const int r = rowOf(grid, item, nth);
        return r < 0 ? nullptr : screen->grid(grid)->item(r, 1);
    }
    // As a person types into the cell and leaves it.
    void type(PhysicsGrid grid, const std::string& item, const std::string& value, int nth = 0) {
        QTableWidgetItem* cell = data(grid, item, nth);
        ASSERT_NE(cell, nullptr) << item;
        cell->setText(ToQt(value));
    }
};

TEST(frmPhysics, ShowsTheBlueprintAndAddsTheSimulationOfItsKind) {
    Physics p;
    ASSERT_NE(p.screen, nullptr);
    EXPECT_EQ(p.screen->windowTitle(), "Display Physics");
    EXPECT_EQ(FromQt(p.screen->nameLabel()->text()), simdata::testing::kLocoName);
    QTableWidget* upper = p.screen->grid(PhysicsGrid::Blueprint);
    EXPECT_EQ(upper->columnCount(), 3);
    EXPECT_TRUE(upper->isColumnHidden(2));
    EXPECT_EQ(static_cast<std::size_t>(upper->rowCount()), p.screen->document().blueprint.rows.size());
    EXPECT_EQ(FromQt(p.data(PhysicsGrid::Blueprint, "Mass")->text()), "80");
    // Only the value column is editable, and not on a section's head.
    EXPECT_FALSE(upper->item(p.rowOf(PhysicsGrid::Blueprint, "Mass"), 0)->flags() & Qt::ItemIsEditable);
    EXPECT_TRUE(p.data(PhysicsGrid::Blueprint, "Mass")->flags() & Qt::ItemIsEditable);
    EXPECT_FALSE(p.data(PhysicsGrid::Blueprint, "Bogey")->flags() & Qt::ItemIsEditable);
    // A diesel: the diesel command is offered, not the steam one.
    EXPECT_FALSE(p.screen->button("Command2")->isHidden());
    EXPECT_TRUE(p.screen->button("Command6")->isHidden());
    EXPECT_FALSE(p.screen->button("Command3")->isEnabled());  // no graphs screen, no simulation yet

    std::vector<std::pair<std::string, bool>> asked;
    simdata::CurveFiles given;
    p.screen->setGraphsHandler([&](const std::string& name, bool steam, const simdata::CurveFiles& curves) {
        asked.emplace_back(name, steam);
        given = curves;
    });
    EXPECT_FALSE(p.screen->button("Command3")->isEnabled());
    p.screen->button("Command2")->click();
    EXPECT_EQ(FromQt(p.data(PhysicsGrid::Simulation, "MaxForce", 1)->text()), "150");
    ASSERT_TRUE(p.screen->button("Command3")->isEnabled());
    p.screen->button("Command3")->click();
    ASSERT_EQ(asked.size(), 1u);
    EXPECT_EQ(asked[0], std::make_pair(simdata::testing::kLocoName, false));
    EXPECT_EQ(given, p.screen->document().curves);
    EXPECT_FALSE(given[0].empty());
    EXPECT_TRUE(p.game.ui.shown.empty());
}

TEST(frmPhysics, AnEditGoesIntoTheTextAndAMissingKeyIsTold) {
    Physics p;
    p.screen->button("Command2")->click();
    EXPECT_FALSE(p.screen->button("Command5")->isEnabled());
    p.type(PhysicsGrid::Simulation, "MaxForce", "175", 1);
    const std::string& sim = p.screen->document().simulation.text;
    EXPECT_NE(sim.find(">175</MaxForce>"), std::string::npos);
    EXPECT_NE(sim.find(">235</MaxForce>"), std::string::npos);  // the other MaxForce kept its value
    EXPECT_TRUE(p.screen->button("Command5")->isEnabled());
    EXPECT_FALSE(p.screen->button("Command4")->isEnabled());

    p.type(PhysicsGrid::Simulation, "MaxEffectiveSpeed", "90");
    ASSERT_EQ(p.game.ui.shown.size(), 1u);
    EXPECT_EQ(p.game.ui.shown[0].text, "The Key MaxEffectiveSpeed was not found");
    EXPECT_EQ(p.game.ui.shown[0].icon, base::Icon::Critical);
    EXPECT_EQ(FromQt(p.data(PhysicsGrid::Simulation, "MaxEffectiveSpeed")->text()), "");  // the cell shows the file
}

TEST(frmPhysics, UnsavedEditsAreAskedAboutBeforeTheyAreLeftBehind) {
    Physics p;
    p.type(PhysicsGrid::Blueprint, "Mass", "82");
    ASSERT_TRUE(p.screen->document().changed());
    // Yes: the user saves first, so the simulation is not added.
    p.game.ui.answers = {base::Answer::Yes};
    p.screen->button("Command2")->click();
    ASSERT_EQ(p.game.ui.texts(), (std::vector<std::string>{"You have changed some Data, do you wish to SAVE it before\n"
                                                           "adding the Simulation File to the grid?"}));
    EXPECT_EQ(p.screen->grid(PhysicsGrid::Simulation)->rowCount(), 0);
    p.game.ui.answers = {base::Answer::No};
    p.screen->button("Command2")->click();
    EXPECT_GT(p.screen->grid(PhysicsGrid::Simulation)->rowCount(), 10);
    // Closing: Cancel stays, No leaves the edit unsaved.
    const std::string before = tools::ReadTextFile(p.screen->document().blueprint.path);
    p.game.ui.answers = {base::Answer::Cancel};
    p.screen->show();
    EXPECT_FALSE(p.screen->close());
    EXPECT_TRUE(p.screen->isVisible());
    p.game.ui.answers = {base::Answer::No};
    p.screen->setAttribute(Qt::WA_DeleteOnClose, false);
    EXPECT_TRUE(p.screen->close());
    EXPECT_EQ(tools::ReadTextFile(p.screen->document().blueprint.path), before);
    EXPECT_EQ(p.game.ui.texts().back(), "You have changed some Data, do you wish to SAVE it before\nclosing this screen?");
}

TEST(frmPhysics, SavingKeepsTheOldFileAsABackUp) {
    Physics p;
    p.type(PhysicsGrid::Blueprint, "Mass", "82.5");
    p.screen->button("Command4")->click();
    const std::string path = p.screen->document().blueprint.path;
    ASSERT_FALSE(p.game.ui.shown.empty());
    EXPECT_EQ(p.game.ui.shown.back().icon, base::Icon::Information) << p.game.ui.shown.back().text;
    EXPECT_TRUE(fs::exists(tools::HostPath(path + ".bak")));
    EXPECT_FALSE(p.screen->button("Command4")->isEnabled());
    EXPECT_FALSE(p.screen->document().changed());
    EXPECT_NE(p.game.xmlOf(simdata::testing::kProvider + "\\" + simdata::testing::kProduct + "\\" +
                           simdata::testing::kDieselId)
                  .find(">82.5</Mass>"),
              std::string::npos);
}

TEST(frmPhysics, ASteamLocomotiveAsItIsSeen) {
    Physics p(simdata::testing::kSteamId);
    ASSERT_NE(p.screen, nullptr);
    EXPECT_TRUE(p.screen->button("Command2")->isHidden());
    EXPECT_FALSE(p.screen->button("Command6")->isHidden());
    p.screen->button("Command6")->click();
    EXPECT_EQ(FromQt(p.data(PhysicsGrid::Simulation, "NumCylinders")->text()), "3");
    EXPECT_EQ(FromQt(p.data(PhysicsGrid::Simulation, "MaxForce", 2)->text()), "40");  // the safety valve's
    p.screen->resize(760, 900);
    p.screen->show();
    QApplication::processEvents();
    testing::Screenshot(*p.screen, "frmPhysics_steam");
}

TEST(frmPhysics, TheAssetListOpensItForTheFirstSelectedRow) {
    assets::testing::Game game;
    simdata::testing::PutLocomotives(game);
    using simdata::testing::S;
    game.put("P\\Q\\Scenery\\Schuppen.bin",
             simdata::testing::Wrap("cSceneryBlueprint",
                                    "<BrowseInformation><iBrowseableBlueprint-cBrowseInformation><DisplayName>"
                                    "<Localisation-cUserLocalisedString>" + S("English", "Schuppen") +
                                        "</Localisation-cUserLocalisedString></DisplayName>"
                                        "</iBrowseableBlueprint-cBrowseInformation></BrowseInformation>" +
                                        S("Category", "eHouses")));
    frmAssets list(game.ctx);
    list.button("cmdAdd")->click();
    game.ui.shown.clear();  // "Selected items have been added to the grid."
    auto rowEnding = [&](const std::string& end) {
        for (std::size_t i = 0; i < list.grid()->grid().rowCount(); ++i)
            if (list.row(i).path.ends_with(end)) return i;
        return std::size_t(-1);
    };
    const std::size_t sim = rowEnding("Schuppen.bin");  // no rail vehicle
    const std::size_t loco = rowEnding("BR218.bin");
    std::string listed;
    for (std::size_t i = 0; i < list.grid()->grid().rowCount(); ++i) listed += list.row(i).path + " ";
    ASSERT_NE(sim, std::size_t(-1)) << listed;
    ASSERT_NE(loco, std::size_t(-1));

    list.action("mnuPhysics")->trigger();  // nothing selected
    ASSERT_EQ(game.ui.shown.size(), 1u);
    EXPECT_NE(game.ui.shown[0].text.find("You have not selected any items"), std::string::npos);

    list.grid()->selectRows({sim});
    list.action("mnuPhysics")->trigger();
    ASSERT_EQ(game.ui.shown.size(), 2u);
    EXPECT_NE(game.ui.shown[1].text.find("is not the blueprint of a rail vehicle."), std::string::npos);
    EXPECT_TRUE(list.findChildren<frmPhysics*>().empty());

    list.grid()->selectRows({loco});
    list.action("mnuPhysics")->trigger();
    const auto opened = list.findChildren<frmPhysics*>();
    ASSERT_EQ(opened.size(), 1u);
    EXPECT_EQ(opened[0]->document().name, simdata::testing::kLocoName);
    EXPECT_EQ(game.ui.shown.size(), 2u);
}

}  // namespace
}  // namespace ferrolund::screens
