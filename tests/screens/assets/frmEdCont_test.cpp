#include "screens/assets/frmEdCont.h"

#include <QAction>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <gtest/gtest.h>

#include <filesystem>

#include "screens/app/screen_fixture.h"
#include "tools/files.h"
#include "tools/serz_convert.h"

namespace ferrolund::screens {
namespace {

namespace fs = std::filesystem;

struct EdContScreen : testing::ScreenFixture {
    fs::path tile;
    EdContScreen() {
        ctx.prefs.gameRoot = root.system() + "/RW";
        const auto source = root.write(
            "tile.xml",
            "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n"
            "<cRecordSet xmlns:d=\"http://www.kuju.com/TnT/2003/Delta\" d:version=\"1.0\" d:id=\"1\">\r\n"
            "<Record>\r\n<Name d:type=\"cDeltaString\">Straße</Name>\r\n<Count d:type=\"sInt32\">5</Count>\r\n"
            "</Record>\r\n</cRecordSet>\r\n");
        tile = root.write("RW/Content/Routes/Brücke/Scenery/+000000+000000.bin", "");
        EXPECT_FALSE(tools::SerzConvert(ctx, source.string(), tile.string(), tools::SerzDirection::ToBinary));
    }
};

TEST(frmEdCont, ShowsATileAsTextAndSavesTheEditWithItsLog) {
    EdContScreen f;
    frmEdCont screen(f.ctx);
    ASSERT_TRUE(screen.openFile(f.tile.string()));
    EXPECT_TRUE(screen.pane()->toPlainText().contains(QString::fromUtf8("Straße")));
    EXPECT_TRUE(screen.saveAction()->isEnabled());
    screen.resize(800, 500);
    testing::Screenshot(screen, "frmEdCont_tile");

    QString text = screen.pane()->toPlainText();
    text.replace("\">5<", "\">6<");
    screen.pane()->setPlainText(text);
    screen.saveAction()->trigger();
    ASSERT_EQ(screen.log()->count(), 3);
    EXPECT_EQ(screen.log()->item(0)->text(), "Making Backup of strBin");
    EXPECT_EQ(screen.log()->item(1)->text(), "Copying new .bin file");
    EXPECT_TRUE(screen.log()->item(2)->text().startsWith("Finished at "));
    std::string xml;
    ASSERT_FALSE(tools::SerzReadXml(f.ctx, f.tile.string(), xml));
    EXPECT_NE(xml.find("sInt32\">6<"), std::string::npos);
    // The text compiled had the game's line ends again, not the pane's.
    const std::string compiled = tools::ReadTextFile(screen.editor().strBin + "xml");
    ASSERT_NE(compiled.find("<Record>"), std::string::npos);
    for (std::size_t at = compiled.find('\n'); at != std::string::npos; at = compiled.find('\n', at + 1))
        EXPECT_EQ(compiled[at - 1], '\r') << at;
    EXPECT_TRUE(fs::exists(f.tile.string() + ".bak"));
    testing::Screenshot(screen, "frmEdCont_saved");
}

TEST(frmEdCont, ABrokenEditIsRefusedAndTheFileStays) {
    EdContScreen f;
    const std::string before = f.root.read("RW/Content/Routes/Brücke/Scenery/+000000+000000.bin");
    frmEdCont screen(f.ctx);
    ASSERT_TRUE(screen.openFile(f.tile.string()));
    screen.pane()->setPlainText("<cRecordSet>");
    EXPECT_FALSE(screen.save());
    EXPECT_EQ(screen.log()->count(), 0);
    EXPECT_EQ(f.root.read("RW/Content/Routes/Brücke/Scenery/+000000+000000.bin"), before);
    ASSERT_FALSE(f.ui.shown.empty());
    EXPECT_EQ(f.ui.shown.back().text,
              "Serz.exe was unable to recompress this file. The operation could\n"
              "not be completed. The original file has not been altered.");
}

TEST(frmEdCont, PicturesShowAndTexturesAreRefused) {
    EdContScreen f;
    const fs::path png = f.root.path() / "RW/Content/Routes/Brücke/image.png";
    QImage image(40, 30, QImage::Format_RGB32);
    image.fill(Qt::darkGreen);
    ASSERT_TRUE(image.save(QString::fromStdString(png.string())));
    frmEdCont screen(f.ctx);
    ASSERT_TRUE(screen.openFile(png.string()));
    EXPECT_FALSE(screen.saveAction()->isEnabled());
    EXPECT_FALSE(screen.pane()->isVisibleTo(&screen));
    EXPECT_EQ(screen.findChild<QLabel*>("Picture1")->pixmap().size(), QSize(40, 30));

    f.root.write("RW/Content/Routes/Brücke/Terrain/t.TgPcDx", "x");
    EXPECT_EQ(ShowContentEditor(f.ctx, nullptr, f.root.system() + "/RW/Content/Routes/Brücke/Terrain/t.TgPcDx"),
              nullptr);
    EXPECT_EQ(f.ui.texts().back(), assets::kTexturesNotReadable);
}

}  // namespace
}  // namespace ferrolund::screens
