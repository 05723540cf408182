// The rolling-stock edits of the asset list's Edit menu, driven through the menu with
// their dialogs answered as a person would.
#include <QAction>
#include <QApplication>
#include <QDialogButtonBox>
#include <QPushButton>
#include <functional>
#include <QLineEdit>
#include <QRadioButton>
#include <QTimer>
#include <filesystem>
#include <gtest/gtest.h>

#include "screens/assets/asset_commands_fixture.h"
#include "screens/assets/dlgCoachName.h"
#include "screens/assets/dlgMass.h"
#include "tools/serz_convert.h"

namespace ferrolund::screens {
namespace {

namespace fs = std::filesystem;
using assets::testing::TagValue;

const char* const kFolder = "/Assets/Müller/Straßenbahn/RailVehicles/Coach/";

struct StockFixture : CommandsFixture {
    StockFixture() {
        fs::create_directories(root.path() / "Templates");
        for (const char* name : {"AddPassengers.txt", "AddPassengers2.txt", "AddPassengers3.txt", "CargoDef.txt"})
            fs::copy_file(fs::path(FERROLUND_SOURCE_DIR) / "data" / "Templates" / name, root.path() / "Templates" / name);
    }
    std::string xml(const std::string& name) {
        std::string text;
        tools::SerzReadXml(ctx, game.system() + kFolder + name, text);
        return text;
    }
};

TEST(frmAssetsStock, TheEditsOfThisGroupAreLive) {
    StockFixture f;
    frmAssets screen(f.ctx);
    for (const char* live : {"mnuAdd", "mnuDead", "mnuCond", "mnuMass", "mnuSce", "mnuZero", "mnuSnow", "mnuCategory",
                             "mnuInScene", "mnuCNLK", "mnuEnglish"})
        EXPECT_TRUE(screen.action(live)->isEnabled()) << live;
}

TEST(frmAssetsStock, PassengersAreSavedUnderTheNameChosenInTheDialog) {
    StockFixture f;
    Listed l(f);
    f.ui.answers.push_back(base::Answer::Ok);
    bool asked = false;
    QTimer::singleShot(0, [&] {
        auto* dialog = qobject_cast<dlgCoachName*>(QApplication::activeModalWidget());
        if (!dialog) return;
        asked = true;
        EXPECT_EQ(FromQt(dialog->fileBox()->text()), "Wagen_MT");
        dialog->findChild<QRadioButton*>("optPO")->setChecked(true);
        EXPECT_EQ(FromQt(dialog->nameBox()->text()), "Wagen_PO");
        dialog->nameBox()->setText(ToQt("W\xC3\xA4gen_PO"));
        testing::Screenshot(*dialog, "dlgCoachName_passengers");
        dialog->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->click();
    });
    l.screen.action("mnuAdd")->trigger();
    ASSERT_TRUE(asked);
    const std::string made = f.xml("Wagen_PO.bin");
    EXPECT_NE(made.find(">Passengers_Left<"), std::string::npos);
    EXPECT_EQ(TagValue(made, "English"), "W\xC3\xA4gen_PO") << "typed on screen, written once as UTF-8";
    EXPECT_TRUE(fs::exists(f.game.path() / "Assets/Müller/Straßenbahn/RailVehicles/Coach/Wagen.bin.bak"));
    EXPECT_NE(f.reportText(l.screen).find("Requested changes have been made."), std::string::npos);
}

TEST(frmAssetsStock, TheMassDialogWantsBothNumbers) {
    StockFixture f;
    Listed l(f);
    int round = 0;
    std::function<void()> answer = [&] {
        auto* dialog = qobject_cast<dlgMass*>(QApplication::activeModalWidget());
        if (!dialog) return;
        if (round++ == 0) {
            EXPECT_EQ(FromQt(dialog->windowTitle()), "Change Mass/Capacity");
            dialog->massBox()->setText("28.5");
            testing::Screenshot(*dialog, "dlgMass");
            dialog->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->click();  // capacity still empty
            EXPECT_TRUE(dialog->isVisible());
            dialog->capacityBox()->setText("40");
        }
        dialog->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->click();
    };
    QTimer::singleShot(0, answer);
    f.ui.answers.push_back(base::Answer::Ok);
    f.ui.shown.clear();
    l.screen.action("mnuMass")->trigger();
    ASSERT_EQ(round, 1);
    EXPECT_EQ(f.ui.shown.front().text, "You have failed to complete one of the boxes?");
    EXPECT_EQ(TagValue(f.xml("Wagen.bin"), "Mass"), "28.5");
}

TEST(frmAssetsStock, CategoryAndScenarioUseCellsFollow) {
    StockFixture f;
    Listed l(f);
    f.ui.answers.push_back(base::Answer::Ok);
    f.ui.inputs.push_back(std::string("ExcludeFromBrowserList"));
    l.screen.action("mnuCategory")->trigger();
    EXPECT_EQ(l.screen.grid()->grid().cell(0, 5), "ExcludeFromBrowserList");
    EXPECT_EQ(l.screen.grid()->grid().cell(0, 4), "Yes");
    EXPECT_EQ(TagValue(f.xml("Wagen.bin"), "Category"), "eExcludeFromBrowserList");
    testing::Screenshot(l.screen, "frmAssets_category");
}

}  // namespace
}  // namespace ferrolund::screens
