#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>
#include <filesystem>
#include <gtest/gtest.h>

#include "core/assets/stock_fixture.h"
#include "screens/app/qt_text.h"
#include "screens/app/screen_fixture.h"
#include "screens/assets/asset_grid.h"
#include "screens/assets/dlgBogie.h"
#include "screens/assets/dlgFreightAudio.h"
#include "screens/assets/frmAssets.h"
#include "serz/codec.h"
#include "tools/serz_convert.h"

namespace ferrolund::screens {
namespace {

namespace fs = std::filesystem;

const char* const kSoundEntries[] = {"mnuNewWag", "mnuOldH", "mnuOHR",  "mnuCntrFlats", "mnu4WW",   "mnuMK1", "mnuMK2",
                                     "mnuMK3",    "mnuApp",  "mnuBacn", "mnuSnd37",     "mnuCL47",  "mnuHST"};

struct SoundsFixture : testing::ScreenFixture {
    testing::TempFolder game;
    const std::string wagon = "/Assets/Prov/Prod/RailVehicles/Güterwagen/Van.bin";
    SoundsFixture() {
        ctx.lang.parse(root.read("Language/Lang_English.txt"));
        ctx.prefs.gameRoot = game.system();
        assets::testing::Vehicle v;
        v.engine = false;
        v.name = "Van";
        v.bogieAudio = "";
        std::string binary;
        EXPECT_FALSE(serz::XmlToBinary(assets::testing::VehicleXml(v), binary));
        game.write(wagon.substr(1), binary);
        fs::copy(fs::path(FERROLUND_SOURCE_DIR) / "data" / "Templates", root.path() / "Templates");
    }
    std::string xml() {
        std::string text;
        EXPECT_FALSE(tools::SerzReadXml(ctx, game.system() + wagon, text));
        return text;
    }
};

// Answers the next modal dialog of type D once the event loop runs.
template <typename D, typename F>
void Answer(bool& seen, F&& fill) {
    QTimer::singleShot(0, [&seen, fill] {
        auto* dialog = qobject_cast<D*>(QApplication::activeModalWidget());
        if (!dialog) return;
        seen = true;
        fill(*dialog);
    });
}

TEST(SoundsMenu, EveryEntryAndBothScriptEntriesAreLive) {
    SoundsFixture f;
    frmAssets screen(f.ctx);
    for (const char* name : kSoundEntries) EXPECT_TRUE(screen.action(name) && screen.action(name)->isEnabled()) << name;
    for (const char* name : {"mnuLocoScript", "mnuWagScript"}) EXPECT_TRUE(screen.action(name)->isEnabled()) << name;
    EXPECT_EQ(screen.action("mnuMK1")->text(), "Add MK1 && Mk2a/b/c Coach Sounds");
    EXPECT_EQ(screen.action("mnuLocoScript")->text(), "Add Loco Script (Diesel)");
    auto* menu = screen.findChild<QMenu*>("mnuSounds");
    ASSERT_NE(menu, nullptr);
    menu->adjustSize();
    testing::Screenshot(*menu, "sounds_menu");
}

TEST(SoundsMenu, NewWagonSoundsAsksTheTwoTicksAndRewritesTheWagon) {
    SoundsFixture f;
    frmAssets screen(f.ctx);
    screen.button("cmdAdd")->click();
    screen.grid()->selectRows({0});
    bool seen = false;
    Answer<dlgFreightAudio>(seen, [](dlgFreightAudio& d) {
        EXPECT_EQ(d.windowTitle(), "Freight Wagon Sounds");
        d.bogieBox()->setChecked(true);
        d.soundBox()->setChecked(true);
        d.adjustSize();
        testing::Screenshot(d, "dlgFreightAudio");
        d.accept();
    });
    f.ui.answers.push_back(base::Answer::Ok);
    screen.action("mnuNewWag")->trigger();
    EXPECT_TRUE(seen);
    const std::string text = f.xml();
    EXPECT_NE(text.find("Bogies\\BG_Modern</BogieAudioControlName>"), std::string::npos);
    EXPECT_NE(text.find("\\AP\\AP_Old_1_Sound.xml</BlueprintID>"), std::string::npos);
    EXPECT_TRUE(fs::exists(f.game.path() / (f.wagon.substr(1) + ".bak")));
}

TEST(SoundsMenu, TheBogieDialogSetsTheChoiceAndCancelChangesNothing) {
    SoundsFixture f;
    frmAssets screen(f.ctx);
    screen.button("cmdAdd")->click();
    screen.grid()->selectRows({0});
    const std::string before = f.xml();
    bool seen = false;
    Answer<dlgBogie>(seen, [](dlgBogie& d) { d.reject(); });
    f.ui.answers.push_back(base::Answer::Ok);
    screen.action("mnuBacn")->trigger();
    EXPECT_TRUE(seen);
    EXPECT_EQ(f.xml(), before);

    seen = false;
    Answer<dlgBogie>(seen, [](dlgBogie& d) {
        EXPECT_EQ(d.choice(), "RA_BG_Mk3");
        d.option("BG_Steam")->setChecked(true);
        d.adjustSize();
        testing::Screenshot(d, "dlgBogie");
        d.accept();
    });
    f.ui.answers.push_back(base::Answer::Ok);
    screen.action("mnuBacn")->trigger();
    EXPECT_TRUE(seen);
    EXPECT_NE(f.xml().find(">Kuju\\RailSimulator\\Audio\\RailNetwork\\Bogies\\BG_Steam</BogieAudioControlName>"),
              std::string::npos);
}

}  // namespace
}  // namespace ferrolund::screens
