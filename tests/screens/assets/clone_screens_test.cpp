#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTimer>
#include <filesystem>
#include <gtest/gtest.h>

#include "assets/clone_reskin.h"
#include "core/assets/stock_fixture.h"
#include "screens/app/qt_text.h"
#include "screens/app/screen_fixture.h"
#include "screens/assets/asset_grid.h"
#include "screens/assets/clone_commands.h"
#include "screens/assets/dlgNewName.h"
#include "screens/assets/frmAssets.h"
#include "screens/assets/frmAssetsAP.h"
#include "screens/assets/frmBlue.h"
#include "screens/assets/frmContent.h"
#include "serz/codec.h"
#include "tools/files.h"
#include "tools/serz_convert.h"

namespace ferrolund::screens {
namespace {

namespace fs = std::filesystem;

const assets::CloneNames kOffered{"Wagen_", "Wagen Zürich_", "Coach\\", ""};

TEST(dlgNewName, OpensWithTheOldValuesAndWantsEveryBox) {
    testing::ScreenFixture f;
    f.ctx.lang.parse(f.root.read("Language/Lang_English.txt"));
    dlgNewName dialog(f.ctx, kOffered, false);
    EXPECT_EQ(dialog.windowTitle(), "Clone Object with this new name");
    EXPECT_EQ(dialog.objectName(), "dlgNewName");
    EXPECT_EQ(FromQt(dialog.nameBox()->text()), "Wagen Zürich_");
    EXPECT_EQ(dialog.categoryBox(), nullptr);
    dialog.show();
    testing::Screenshot(dialog, "dlgNewName");
    dialog.folderBox()->clear();
    QMetaObject::invokeMethod(&dialog, "accept");
    EXPECT_EQ(f.ui.texts(), std::vector<std::string>{"You have failed to complete one of the boxes?"});
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_NE(dialog.result(), QDialog::Accepted);
}

TEST(dlgNewName, TheReskinFormAsksTheCategory) {
    testing::ScreenFixture f;
    dlgNewName dialog(f.ctx, kOffered, true);
    EXPECT_EQ(dialog.objectName(), "dlgNewName22");
    ASSERT_NE(dialog.categoryBox(), nullptr);
    ASSERT_EQ(dialog.categoryBox()->count(), 12);
    EXPECT_EQ(dialog.categoryBox()->itemText(6), "Locomotoves");
    EXPECT_EQ(dialog.categoryBox()->itemText(11), "Vehicles!");
    dialog.categoryBox()->setCurrentIndex(4);
    dialog.fileBox()->setText("Wagen_Rot");
    EXPECT_EQ(dialog.names().category, "Domestic buildings");
    EXPECT_EQ(dialog.names().fileName, "Wagen_Rot");
    dialog.show();
    testing::Screenshot(dialog, "dlgNewName22");
}

struct CloneFixture : testing::ScreenFixture {
    testing::TempFolder game;
    CloneFixture() {
        ctx.lang.parse(root.read("Language/Lang_English.txt"));
        ctx.prefs.gameRoot = game.system();
        std::string binary;
        EXPECT_FALSE(serz::XmlToBinary(
            assets::testing::CoachXml("Wagen Zürich", {}, "Müller\\Straßenbahn\\RailVehicles\\Coach\\wagen"), binary));
        game.write("Assets/Müller/Straßenbahn/RailVehicles/Coach/Wagen.bin", binary);
    }
};

TEST(CloneMenus, AllThreeListsOfferTheSameCommands) {
    CloneFixture f;
    frmAssets assetsScreen(f.ctx);
    frmContent content(f.ctx);
    frmAssetsAP archives(f.ctx);
    for (QWidget* screen : std::initializer_list<QWidget*>{&content, &archives}) {
        auto* button = screen->findChild<QPushButton*>("cmdClone");
        ASSERT_NE(button, nullptr) << FromQt(screen->objectName());
        ASSERT_NE(button->menu(), nullptr);
        const auto actions = button->menu()->actions();
        ASSERT_EQ(actions.size(), 5);
        for (int i = 0; i < 5; ++i) {
            EXPECT_EQ(FromQt(actions[i]->objectName()), kCloneEntries[i].name);
            EXPECT_EQ(actions[i]->text(), assetsScreen.action(kCloneEntries[i].name)->text());
        }
    }
}

TEST(CloneMenus, CloneSelectedAssetFromTheListThroughItsDialog) {
    CloneFixture f;
    frmAssets screen(f.ctx);
    screen.button("cmdAdd")->click();
    screen.grid()->selectRows({0});
    bool seen = false;
    QTimer::singleShot(0, [&] {
        auto* dialog = qobject_cast<dlgNewName*>(QApplication::activeModalWidget());
        if (!dialog) return;
        seen = true;
        EXPECT_EQ(FromQt(dialog->fileBox()->text()), "Wagen_");
        EXPECT_EQ(FromQt(dialog->folderBox()->text()), "RailVehicles\\");
        dialog->fileBox()->setText("Wagen_Rot");
        dialog->nameBox()->setText("Wagen Rot");
        dialog->folderBox()->setText("Fahrzeuge");
        QMetaObject::invokeMethod(dialog, "accept");
    });
    screen.action("mnuCloneAsset")->trigger();
    EXPECT_TRUE(seen);
    const std::string clone = f.game.system() + "/Assets/Müller/Straßenbahn/Fahrzeuge/Coach/Wagen_Rot.bin";
    std::string xml;
    ASSERT_FALSE(tools::SerzReadXml(f.ctx, clone, xml));
    EXPECT_NE(xml.find(">Wagen Rot</English>"), std::string::npos);
    EXPECT_TRUE(fs::exists(f.game.path() / "Assets/Müller/Straßenbahn/RailVehicles/Coach/Wagen.bin"));
}

TEST(frmBlue, TheRouteFormWritesItsBlueprint) {
    CloneFixture f;
    fs::create_directories(f.root.path() / "BluePrints");
    fs::copy_file(fs::path(FERROLUND_SOURCE_DIR) / "data/BluePrints/Blue_Route.xml", f.root.path() / "BluePrints/Blue_Route.xml");
    frmBlue* screen = ShowBlue(f.ctx, nullptr, assets::DesignerForm::Route, f.game.system());
    EXPECT_EQ(screen->windowTitle(), "BluePrint Designer");
    ASSERT_EQ(screen->boxes().size(), 3u);
    screen->nameBox()->setText("Markers");
    screen->boxes()[0]->setText("Signal box Ålesund");
    screen->boxes()[1]->setText("-1.25");
    screen->boxes()[2]->setText("52.5");
    testing::Screenshot(*screen, "frmBlue_route");
    screen->makeButton()->click();
    EXPECT_EQ(screen->written(), f.game.system() + "\\Markers.xml");
    const std::string text = tools::ReadTextFile(screen->written());
    EXPECT_NE(text.find(">Signal box Ålesund</Name>"), std::string::npos);
    EXPECT_EQ(f.ui.texts().back(), "Your template has been written to:-\r\n" + screen->written());
    screen->close();
}

}  // namespace
}  // namespace ferrolund::screens
