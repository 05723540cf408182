#include "screens/assets/picture_converter.h"

#include <QColor>
#include <QImage>
#include <gtest/gtest.h>

#include "support/temp_folder.h"

namespace ferrolund::screens {
namespace {

TEST(ThumbnailToPng, WritesThePictureAsPng) {
    testing::TempFolder root;
    const std::string folder = root.system() + "/Th\xC3\xBCmbnails";
    std::filesystem::create_directories(root.path() / "Th\xC3\xBCmbnails");
    QImage picture(16, 8, QImage::Format_RGB32);
    picture.fill(QColor(200, 30, 30));
    ASSERT_TRUE(picture.save(QString::fromStdString(folder + "/Loco.jpg"), "JPG"));

    // The name is given in another case, as the asset list holds it.
    ASSERT_TRUE(ThumbnailToPng(folder + "\\LOCO.jpg", folder + "\\Loco.png"));
    const QImage written(QString::fromStdString(folder + "/Loco.png"), "PNG");
    ASSERT_FALSE(written.isNull());
    EXPECT_EQ(written.size(), QSize(16, 8));
    EXPECT_NEAR(QColor(written.pixel(4, 4)).red(), 200, 12);

    root.write("Th\xC3\xBCmbnails/broken.jpg", "not a picture");
    EXPECT_FALSE(ThumbnailToPng(folder + "\\broken.jpg", folder + "\\broken.png"));
    EXPECT_FALSE(std::filesystem::exists(root.path() / "Th\xC3\xBCmbnails/broken.png"));
    EXPECT_FALSE(ThumbnailToPng(folder + "\\absent.jpg", folder + "\\absent.png"));
}

}  // namespace
}  // namespace ferrolund::screens
