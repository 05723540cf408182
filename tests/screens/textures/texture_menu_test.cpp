// The Graphics Tools in the main window: a texture opened in the editor arms the
// conversion and "Show Image", which hands it to the one viewer window.
#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <gtest/gtest.h>

#include <filesystem>

#include "../app/screen_fixture.h"
#include "app/startup.h"
#include "generator/texture_sample.h"
#include "screens/app/frmEditor.h"
#include "screens/app/qt_ui.h"
#include "screens/textures/PicturePane.h"
#include "screens/textures/frmGFX2.h"
#include "serz/codec.h"

namespace ferrolund::screens {
namespace {

namespace fs = std::filesystem;

struct TextureEditor : testing::ScreenFixture {
    QtUi qtUi;
    frmEditor window{ctx, qtUi};
    std::string texture;
    TextureEditor() {
        std::string binary;
        EXPECT_FALSE(serz::XmlToBinary(sample::TextureXml("HC_IMAGE_FORMAT_COMPRESSED", 32, 32, 3), binary));
        texture = root.write("game/Assets/Kuju/Strecke_é/Boden_ü.TgPcDx", binary).string();
        ctx.prefs.gameRoot = (root.path() / "game").string();
        window.show();
        app::StartOptions options;
        app::StartUp(ctx, window, options);
        ctx.prefs.noAskOnExit = true;
    }
    frmGFX2* viewer() const { return window.findChild<frmGFX2*>("frmGFX2"); }
};

TEST(TextureMenu, OpenArmsTheConversionAndShowImageHandsTheTextureToTheViewer) {
    TextureEditor e;
    auto* showImage = e.window.findChild<QPushButton*>("Command7");
    EXPECT_FALSE(showImage->isEnabled());
    for (const char* item : {"mnuDDS", "mnuView", "mnuEditDDS"}) EXPECT_FALSE(e.window.menuAction(item)->isEnabled());
    for (const char* item : {"mnuOpenTex", "mnuDDStoKrs", "mnuEmpt", "mnuTgpcdx"})
        EXPECT_TRUE(e.window.menuAction(item)->isEnabled()) << item;

    e.ui.files.push_back(e.texture);
    e.window.menuAction("mnuOpenTex")->trigger();
    EXPECT_TRUE(e.window.textPane()->toPlainText().contains("<d:blob"));
    EXPECT_TRUE(e.window.menuAction("mnuDDS")->isEnabled());
    EXPECT_TRUE(showImage->isEnabled());

    e.window.menuAction("mnuDDS")->trigger();
    EXPECT_TRUE(fs::exists(e.root.path() / "TempDDS" / "Boden_ü.dds"));
    EXPECT_TRUE(e.window.menuAction("mnuView")->isEnabled());
    EXPECT_EQ(e.ui.shown.back().title, "Editing .dds files");

    showImage->click();
    frmGFX2* viewer = e.viewer();
    ASSERT_NE(viewer, nullptr);
    EXPECT_TRUE(viewer->isVisible());
    EXPECT_EQ(viewer->windowTitle(), QString::fromUtf8("PicView - Boden_ü.TgPcDx (32x32)"));
    EXPECT_EQ(viewer->folder(), fs::path(e.texture).parent_path().string());
    testing::Screenshot(*viewer, "frmGFX2_from_editor");

    // The menu brings the same window forward; a document of another kind greys the button.
    e.window.menuAction("mnuTgpcdx")->trigger();
    EXPECT_EQ(e.window.findChildren<frmGFX2*>().size(), 1);
    e.window.setDocumentName(editor::Pane::Main, "C:\\x\\Tracks.bin");
    EXPECT_FALSE(showImage->isEnabled());
}

}  // namespace
}  // namespace ferrolund::screens
