#include <QAction>
#include <QApplication>
#include <QDialogButtonBox>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTimer>
#include <filesystem>
#include <gtest/gtest.h>

#include "assets/blueprint_splice.h"
#include "core/assets/stock_fixture.h"
#include "screens/app/qt_text.h"
#include "screens/app/screen_fixture.h"
#include "screens/assets/asset_grid.h"
#include "screens/assets/dlgHead.h"
#include "screens/assets/dlgTail.h"
#include "screens/assets/frmAssets.h"
#include "screens/services/frmReport.h"
#include "serz/codec.h"
#include "tools/files.h"
#include "tools/serz_convert.h"

namespace ferrolund::screens {
namespace {

namespace fs = std::filesystem;

const std::vector<assets::LightTemplate> kOffered = {
    {"Ostvale Class 58 - No.1 end", "Ostvale\\NorthernLines\\RailVehicles\\Diesel\\Class58\\Engine\\Class58.xml", {}},
    {"Br\xC3\xBC" "ckner V 200 - vorn", "Br\xC3\xBC" "ckner\\Loks\\V200.xml", {}}};

QPushButton* OkOf(QDialog& dialog) {
    return dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok);
}

TEST(dlgHead, OffersTheTemplatesAndTheNineTrainTypes) {
    dlgHead dialog("Ostvale Class 58 \xC3\xA9t\xC3\xA9", kOffered);
    EXPECT_EQ(dialog.windowTitle(), "Head Light Templates Available");
    EXPECT_EQ(dialog.findChild<QLabel*>("lblItem")->text(), QString::fromUtf8("Ostvale Class 58 été"));
    ASSERT_EQ(dialog.templateList()->count(), 2);
    EXPECT_EQ(dialog.templateList()->item(1)->text(), QString::fromUtf8("Brückner V 200 - vorn"));
    ASSERT_EQ(dialog.trainTypeList()->count(), 9);
    EXPECT_EQ(dialog.trainTypeList()->item(4)->text(), "Thru Freight");
    bool prompt = false, types = false;
    for (QLabel* label : dialog.findChildren<QLabel*>()) {
        prompt = prompt || label->text() == "Select Template for above Loco.";
        types = types || label->text() == "Select Train Type";
    }
    EXPECT_TRUE(prompt && types);
    EXPECT_FALSE(OkOf(dialog)->isEnabled());
    EXPECT_FALSE(dialog.choice());
    dialog.templateList()->setCurrentRow(1);
    EXPECT_FALSE(OkOf(dialog)->isEnabled());  // a train type is still to be chosen
    dialog.trainTypeList()->setCurrentRow(4);
    EXPECT_TRUE(OkOf(dialog)->isEnabled());
    ASSERT_TRUE(dialog.choice());
    EXPECT_EQ(dialog.choice()->templateIndex, 1u);
    EXPECT_EQ(dialog.choice()->trainType, 4u);
    dialog.show();
    testing::Screenshot(dialog, "dlgHead");
}

TEST(dlgTail, OffersTheTemplatesForTheWagon) {
    dlgTail dialog("Coal hopper", kOffered);
    EXPECT_EQ(dialog.windowTitle(), "Tail Light Templates Available");
    EXPECT_FALSE(OkOf(dialog)->isEnabled());
    dialog.templateList()->setCurrentRow(1);
    ASSERT_TRUE(dialog.choice());
    EXPECT_EQ(dialog.choice()->templateIndex, 1u);
    dialog.show();
    testing::Screenshot(dialog, "dlgTail");
}

struct FittingFixture : testing::ScreenFixture {
    testing::TempFolder game;
    const std::string loco = "Ostvale\\NorthernLines\\RailVehicles\\Diesel\\Class58\\Engine\\Class58.bin";
    FittingFixture() {
        ctx.lang.parse(root.read("Language/Lang_English.txt"));
        ctx.prefs.gameRoot = game.system();
        put("Ostvale/NorthernLines/RailVehicles/Diesel/Class58/Engine/Class58.bin",
            assets::testing::CoachXml("Ostvale Class 58", {{"Exhaust", assets::testing::Upright("0", "4", "2")}}));
        put("Kuju/RailSimulator/Scenery/Animated/oillamp_white_drb.bin", assets::testing::CoachXml("Lamp", {}));
        fs::create_directories(root.path() / "Lumenfold" / "Assets");
        for (const char* name : {"UKLights.txt", "UKCode.txt"}) {
            root.write(std::string("Templates/") + name,
                       tools::ReadTextFile(std::string(FERROLUND_SOURCE_DIR) + "/data/Templates/" + name));
        }
    }
    void put(const std::string& relative, const std::string& xml) {
        std::string binary;
        ASSERT_FALSE(serz::XmlToBinary(xml, binary));
        game.write("Assets/" + relative, binary);
    }
};

TEST(frmAssetsFittings, TheEntriesOfThisGroupAreLive) {
    FittingFixture f;
    frmAssets screen(f.ctx);
    for (const char* live : {"mnuHead", "mnuTail", "mnuSlip", "mnuUSAir", "mnuAdd37", "mnuAdd47"})
        EXPECT_TRUE(screen.action(live) && screen.action(live)->isEnabled()) << live;
    EXPECT_EQ(FromQt(screen.action("mnuAdd37")->text()), "Add Class 37 Occlusions");
    EXPECT_EQ(FromQt(screen.action("mnuAdd47")->text()), "Add Class 47 Occlusions");
}

TEST(frmAssetsFittings, HeadLightsAskTheDialogAndSaveTheHeadcodeBeside) {
    FittingFixture f;
    frmAssets screen(f.ctx);
    screen.button("cmdAdd")->click();
    std::size_t index = screen.grid()->grid().rowCount();
    for (std::size_t i = 0; i < screen.grid()->grid().rowCount(); ++i)
        if (screen.row(i).path == "RailVehicles\\Diesel\\Class58\\Engine\\Class58.bin") index = i;
    ASSERT_LT(index, screen.grid()->grid().rowCount());
    screen.grid()->selectRows({index});
    f.ui.answers.push_back(base::Answer::Ok);
    bool asked = false;
    // The dialog comes up once the warning is answered: look for it until it is there.
    QTimer poll;
    poll.setInterval(10);
    QObject::connect(&poll, &QTimer::timeout, [&] {
        auto* dialog = qobject_cast<dlgHead*>(QApplication::activeModalWidget());
        if (!dialog) return;
        poll.stop();
        asked = true;
        testing::Screenshot(*dialog, "dlgHead_asked");
        EXPECT_EQ(dialog->templateList()->count(), 1);
        EXPECT_EQ(dialog->templateList()->selectedItems().size(), 1);  // the only template is chosen already
        EXPECT_FALSE(OkOf(*dialog)->isEnabled());                      // the train type is not
        EXPECT_EQ(dialog->findChild<QLabel*>("lblItem")->text(), "Ostvale Class 58");
        dialog->trainTypeList()->setCurrentRow(4);  // Thru Freight: lamps 1 and 3
        OkOf(*dialog)->click();
    });
    poll.start();
    screen.action("mnuHead")->trigger();
    QApplication::processEvents();
    EXPECT_TRUE(asked);
    std::string xml;
    ASSERT_FALSE(tools::SerzReadXml(
        f.ctx, f.game.system() + "/Assets/Ostvale/NorthernLines/RailVehicles/Diesel/Class58/Engine/Class58_Thru-Freight.bin", xml));
    EXPECT_EQ(assets::ChildNames(xml), (std::vector<std::string>{"HeadLamp1", "HeadLamp3", "Exhaust"}));
    const auto reports = screen.findChildren<frmReport*>();
    ASSERT_FALSE(reports.empty());
    EXPECT_NE(FromQt(reports.back()->pane()->toPlainText()).find("Thru Freight lamps, saved as Class58_Thru-Freight.bin"),
              std::string::npos);
}

}  // namespace
}  // namespace ferrolund::screens
