// The texture viewer: its file list and filter, zoom limits, the pane's operations on a
// known picture, mip levels, textures shown through the conversion (a real terrain tile
// among them), the folder conversion with "&Abort", and "Save As" that loses nothing.
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QMouseEvent>
#include <QPushButton>
#include <QScrollBar>
#include <QToolBar>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "../app/screen_fixture.h"
#include "generator/texture_sample.h"
#include "screens/textures/PicturePane.h"
#include "screens/textures/frmGFX2.h"
#include "serz/codec.h"
#include "support/locked_folder.h"
#include "textures/dds_image.h"
#include "textures/tgpcdx_dds.h"

namespace ferrolund::screens {
namespace {

namespace fs = std::filesystem;

std::string Texture(const char* tag, unsigned width, unsigned height, unsigned levels) {
    std::string binary;
    EXPECT_FALSE(serz::XmlToBinary(sample::TextureXml(tag, width, height, levels), binary));
    return binary;
}

// A 2 x 1 picture: red on the left, half-transparent blue on the right.
QImage Known() {
    QImage image(2, 1, QImage::Format_ARGB32);
    image.setPixel(0, 0, qRgba(255, 0, 0, 255));
    image.setPixel(1, 0, qRgba(0, 0, 255, 128));
    return image;
}

struct Viewer : testing::ScreenFixture {
    fs::path pictures;
    std::unique_ptr<frmGFX2> screen;
    Viewer() {
        pictures = root.path() / "game/Assets/Kuju/Texturen_é_ü";
        fs::create_directories(pictures);
        Known().save(QString::fromStdString((pictures / "Brücke_č.png").string()));
        root.write("game/Assets/Kuju/Texturen_é_ü/Gleis_ß.TgPcDx",
                   Texture("HC_IMAGE_FORMAT_COMPRESSED_INTERP_ALPHA", 64, 32, 4));
        root.write("game/Assets/Kuju/Texturen_é_ü/broken.TgPcDx", "no texture");
        root.write("game/Assets/Kuju/Texturen_é_ü/notes.txt", "x");
        ctx.prefs.gameRoot = (root.path() / "game").string();
        screen = std::make_unique<frmGFX2>(ctx);
        screen->setAttribute(Qt::WA_DeleteOnClose, false);
        screen->show();
        screen->setFolder(pictures.string());
    }
    QStringList listed() const {
        QStringList names;
        for (int i = 0; i < screen->fileList()->count(); ++i) names << screen->fileList()->item(i)->text();
        return names;
    }
    void select(const QString& name) {
        const auto found = screen->fileList()->findItems(name, Qt::MatchExactly);
        ASSERT_FALSE(found.isEmpty()) << name.toStdString();
        screen->fileList()->setCurrentItem(found.front());
    }
    QPushButton* button(const char* name) const { return screen->findChild<QPushButton*>(name); }
    QStringList events() const {
        QStringList lines;
        for (int i = 0; i < screen->eventList()->count(); ++i) lines << screen->eventList()->item(i)->text();
        return lines;
    }
};

TEST(frmGFX2, StartsInAssetsAndListsThroughTheFilter) {
    testing::ScreenFixture f;
    f.ctx.prefs.gameRoot = f.root.system();
    frmGFX2 fresh(f.ctx);
    EXPECT_EQ(fresh.windowTitle(), "PicView");
    EXPECT_EQ(fresh.folder(), f.root.system() + "\\Assets");

    Viewer v;
    auto* filter = v.screen->findChild<QLineEdit*>("Text1");
    EXPECT_EQ(filter->text(), "*.TgPcDx;*.dds;*.png;*.tga");
    EXPECT_EQ(v.listed(), (QStringList{"broken.TgPcDx", QString::fromUtf8("Brücke_č.png"), QString::fromUtf8("Gleis_ß.TgPcDx")}));
    filter->setText("");
    emit filter->editingFinished();
    EXPECT_EQ(filter->text(), "*.*");
    EXPECT_EQ(v.listed().size(), 4);
    filter->setText("*.txt");
    emit filter->editingFinished();
    EXPECT_EQ(v.listed(), QStringList{"notes.txt"});
}

TEST(frmGFX2, ZoomStaysWithinItsLimitsAndIsReported) {
    Viewer v;
    PicturePane* pane = v.screen->pane();
    auto* box = v.screen->findChild<QLineEdit*>("Text2");
    box->setText("990");
    emit box->editingFinished();
    v.button("Command8")->click();
    v.button("Command8")->click();  // at 1000: not raised
    EXPECT_EQ(pane->zoom(), 1000);
    EXPECT_EQ(box->text(), "1000");
    box->setText("20");
    emit box->editingFinished();
    v.button("Command6")->click();
    v.button("Command6")->click();  // at 10: not lowered
    EXPECT_EQ(pane->zoom(), 10);
    EXPECT_EQ(v.events(),
              (QStringList{"ZoomChanged(990%)", "ZoomChanged(1000%)", "ZoomChanged(20%)", "ZoomChanged(10%)"}));
    pane->setZoom(5000);
    EXPECT_EQ(pane->zoom(), 1000);
}

TEST(frmGFX2, GreyscaleFlipAndRotateMoveTheKnownPixels) {
    Viewer v;
    v.select(QString::fromUtf8("Brücke_č.png"));
    EXPECT_EQ(v.screen->windowTitle(), QString::fromUtf8("PicView - Brücke_č.png (2x1)"));
    PicturePane* pane = v.screen->pane();
    auto pixel = [&](int x, int y) { return pane->image().pixel(x, y); };
    v.button("Command11")->click();  // a quarter turn clockwise: red above blue
    ASSERT_EQ(pane->image().size(), QSize(1, 2));
    EXPECT_EQ(qRed(pixel(0, 0)), 255);
    EXPECT_EQ(qBlue(pixel(0, 1)), 128);  // premultiplied by its alpha of 128
    v.button("Command10")->click();  // upside down: blue above red
    EXPECT_EQ(qBlue(pixel(0, 0)), 128);
    EXPECT_EQ(qRed(pixel(0, 1)), 255);
    v.button("Command9")->click();
    EXPECT_EQ(pixel(0, 1), qRgba(qGray(255, 0, 0), qGray(255, 0, 0), qGray(255, 0, 0), 255));
    EXPECT_EQ(qAlpha(pixel(0, 0)), 128);
    EXPECT_EQ(qRed(pixel(0, 0)), qGreen(pixel(0, 0)));
    v.button("Command2")->click();
    EXPECT_FALSE(pane->hasImage());
    EXPECT_EQ(v.screen->windowTitle(), "PicView");
}

TEST(frmGFX2, ATextureIsShownThroughItsConversionAtEveryMipLevel) {
    Viewer v;
    v.select(QString::fromUtf8("Gleis_ß.TgPcDx"));
    EXPECT_EQ(v.screen->windowTitle(), QString::fromUtf8("PicView - Gleis_ß.TgPcDx (64x32)"));
    auto* levels = v.screen->findChild<QComboBox*>("Combo1");
    ASSERT_EQ(levels->count(), 4);
    EXPECT_EQ(levels->itemText(3), "Level 4 (8x4)");
    for (int level = 3; level >= 0; --level) {
        levels->setCurrentIndex(level);
        emit levels->activated(level);
        EXPECT_EQ(v.screen->pane()->image().width(), 64 >> level);
    }
    EXPECT_EQ(v.screen->windowTitle(), QString::fromUtf8("PicView - Gleis_ß.TgPcDx (64x32)"));
    // A file that is no texture leaves the pane empty and says why in the list of events.
    v.select("broken.TgPcDx");
    EXPECT_FALSE(v.screen->pane()->hasImage());
    EXPECT_EQ(v.events().back(), QString("broken.TgPcDx: ") + textures::kNotATexture);
    EXPECT_FALSE(levels->isEnabled());
}

TEST(frmGFX2, ConvertButtonWritesTheDdsAndShowsIt) {
    Viewer v;
    v.select(QString::fromUtf8("Brücke_č.png"));
    v.button("Command3")->click();
    EXPECT_EQ(v.ui.texts(), std::vector<std::string>{textures::kNotATexture});
    EXPECT_EQ(v.button("Command3")->text(),
              "If TgPcDx file appears covered by a grid click here to convert to a viewable picture");
    v.select(QString::fromUtf8("Gleis_ß.TgPcDx"));
    v.button("Command3")->click();
    EXPECT_TRUE(fs::exists(v.root.path() / "TempDDS" / "Gleis_ß.dds"));
    EXPECT_TRUE(fs::exists(v.root.path() / "TempDDS" / "Gleis_ß.dat"));
    EXPECT_EQ(v.screen->windowTitle(), QString::fromUtf8("PicView - Gleis_ß.dds (64x32)"));
    EXPECT_EQ(v.ui.texts().size(), 1u);
}

TEST(frmGFX2, ARealTerrainTileLooksAsTheDecoderMakesIt) {
    const fs::path routes = fs::path(FERROLUND_TESTDATA) / "routes";
    fs::path tile;
    if (fs::exists(routes))
        for (const auto& entry : fs::recursive_directory_iterator(routes))
            if (entry.path().extension() == ".TgPcDx") tile = entry.path();
    if (tile.empty()) GTEST_SKIP() << "no real terrain .TgPcDx under " << routes;
    testing::ScreenFixture f;
    frmGFX2 screen(f.ctx);
    screen.setAttribute(Qt::WA_DeleteOnClose, false);
    screen.show();
    screen.showFile(tile.string());
    const QImage& shown = screen.pane()->image();
    ASSERT_FALSE(shown.isNull());
    EXPECT_EQ(screen.windowTitle(), QString("PicView - %1 (%2x%3)")
                                        .arg(QString::fromStdString(tile.filename().string()))
                                        .arg(shown.width())
                                        .arg(shown.height()));
    EXPECT_EQ(screen.fileList()->currentItem()->text().toStdString(), tile.filename().string());
    // Pixel for pixel what the decoder gives for the texture's own .dds.
    testing::TempFolder temp;
    const textures::ConversionResult dds = textures::TgPcDxToDds(tile.string(), temp.system());
    ASSERT_EQ(dds.error, "");
    textures::DdsImage image;
    textures::RgbaImage rgba;
    ASSERT_FALSE(textures::LoadDds(dds.output, image));
    ASSERT_FALSE(textures::DecodeDdsLevel(image, 0, rgba));
    ASSERT_EQ(shown.size(), QSize(rgba.width, rgba.height));
    for (int y = 0; y < rgba.height; y += 37)
        for (int x = 0; x < rgba.width; x += 41) {
            const std::uint8_t* p = &rgba.pixels[std::size_t(y * rgba.width + x) * 4];
            const QRgb seen = shown.pixel(x, y);
            ASSERT_EQ(qRgb(qRed(seen), qGreen(seen), qBlue(seen)), qRgb(p[0], p[1], p[2])) << x << "," << y;
        }
    screen.pane()->setZoom(50);
    testing::Screenshot(screen, "frmGFX2_terrain");
}

// A Ui whose event pump lets the "&Abort" click through after a number of files.
struct ClickingUi : testing::ScriptedUi {
    QPushButton* abort = nullptr;
    int clickAt = 0;
    void pump() override {
        ScriptedUi::pump();
        if (pumps == clickAt && abort && abort->isEnabled()) abort->click();
    }
};

TEST(frmGFX2, FolderConversionStopsAtAbort) {
    Viewer v;
    ClickingUi ui;
    v.ctx.ui = &ui;
    const fs::path many = v.root.path() / "Gelände";
    for (int i = 0; i < 6; ++i)
        v.root.write("Gelände/t" + std::to_string(i) + ".TgPcDx", Texture("HC_IMAGE_FORMAT_COMPRESSED", 8, 8, 1));
    ui.folders.push_back(many.string());
    ui.abort = v.button("Command5");
    ui.clickAt = 7;  // three chances a small file: the first before the third file
    EXPECT_FALSE(ui.abort->isEnabled());
    v.button("Command4")->click();
    EXPECT_FALSE(ui.abort->isEnabled());
    EXPECT_FALSE(v.ctx.abortFlag);
    ASSERT_EQ(ui.texts().size(), 1u);
    EXPECT_EQ(ui.texts()[0], "Stopped: 2 of 6 textures converted to " + v.ctx.appRoot + "\\TempDDS.");
    EXPECT_TRUE(fs::exists(v.root.path() / "TempDDS/t1.dds"));
    EXPECT_FALSE(fs::exists(v.root.path() / "TempDDS/t2.dds"));

    ui.shown.clear();
    ui.clickAt = 0;
    ui.folders.push_back(many.string());
    v.button("Command4")->click();
    EXPECT_EQ(ui.texts(), std::vector<std::string>{"6 of 6 textures converted to " + v.ctx.appRoot + "\\TempDDS."});
}

TEST(frmGFX2, SaveAsKeepsTheOldFileAndLosesNothingWhenItCannotWrite) {
    Viewer v;
    v.select(QString::fromUtf8("Gleis_ß.TgPcDx"));
    const fs::path target = v.pictures / "saved.png";
    v.ui.files.push_back(target.string());
    v.button("Command12")->click();
    ASSERT_TRUE(fs::exists(target));
    EXPECT_EQ(QImage(QString::fromStdString(target.string())).size(), QSize(64, 32));
    // Again over it: the first kept as a back-up.
    v.button("Command11")->click();
    v.ui.files.push_back(target.string());
    v.button("Command12")->click();
    EXPECT_EQ(QImage(QString::fromStdString(target.string())).size(), QSize(32, 64));
    EXPECT_EQ(QImage(QString::fromStdString(target.string() + ".bak")).size(), QSize(64, 32));
    EXPECT_TRUE(v.ui.texts().empty());

    std::ifstream in(target, std::ios::binary);
    const std::string before{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    testing::LockedFolder lock(v.pictures);
    if (!lock.locked()) GTEST_SKIP() << "the folder cannot be locked against this user";
    v.button("Command9")->click();
    v.ui.files.push_back(target.string());
    v.button("Command12")->click();
    ASSERT_EQ(v.ui.texts().size(), 1u);
    EXPECT_EQ(v.ui.texts()[0].rfind("Unable to write", 0), 0u);
    std::ifstream again(target, std::ios::binary);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(again), std::istreambuf_iterator<char>()), before);
}

TEST(frmGFX2, PanningModeDragsThePictureAndTheQuickBarShows) {
    Viewer v;
    v.select(QString::fromUtf8("Gleis_ß.TgPcDx"));
    PicturePane* pane = v.screen->pane();
    pane->setFixedSize(200, 150);
    QApplication::processEvents();
    pane->setZoom(1000);  // 640 x 320, larger than the view
    pane->horizontalScrollBar()->setValue(100);
    pane->verticalScrollBar()->setValue(50);
    QWidget* port = pane->viewport();
    auto drag = [&] {
        const QPoint from(100, 100), to(50, 70);
        QMouseEvent press(QEvent::MouseButtonPress, from, port->mapToGlobal(from), Qt::LeftButton, Qt::LeftButton,
                          Qt::NoModifier);
        QMouseEvent move(QEvent::MouseMove, to, port->mapToGlobal(to), Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
        QMouseEvent release(QEvent::MouseButtonRelease, to, port->mapToGlobal(to), Qt::LeftButton, Qt::NoButton,
                            Qt::NoModifier);
        QApplication::sendEvent(port, &press);
        QApplication::sendEvent(port, &move);
        QApplication::sendEvent(port, &release);
    };
    const int x = pane->horizontalScrollBar()->value(), y = pane->verticalScrollBar()->value();
    drag();
    EXPECT_EQ(pane->horizontalScrollBar()->value(), x);
    v.screen->findChild<QCheckBox*>("Check1")->setChecked(true);
    drag();
    EXPECT_EQ(pane->horizontalScrollBar()->value(), x + 50);
    EXPECT_EQ(pane->verticalScrollBar()->value(), y + 30);

    EXPECT_FALSE(pane->quickBar()->isVisible());
    v.screen->findChild<QCheckBox*>("Check2")->setChecked(true);
    EXPECT_TRUE(pane->quickBar()->isVisible());
    testing::Screenshot(*v.screen, "frmGFX2_zoomed");
}

}  // namespace
}  // namespace ferrolund::screens
