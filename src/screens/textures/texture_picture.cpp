#include "screens/textures/texture_picture.h"

#include <QImageReader>
#include <fstream>
#include <iterator>

#include "screens/app/qt_text.h"
#include "textures/picture_files.h"
#include "textures/tga_image.h"
#include "textures/tgpcdx_dds.h"
#include "tools/host_path.h"

namespace ferrolund::screens {

namespace {

QImage FromRgba(const textures::RgbaImage& rgba) {
    const QImage view(rgba.pixels.data(), rgba.width, rgba.height, rgba.width * 4, QImage::Format_RGBA8888);
    // The copy owns its pixels; the decoded buffer goes with the caller.
    return view.convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

}  // namespace

QImage DdsLevelImage(const textures::DdsImage& dds, int level, QString& error) {
    textures::RgbaImage rgba;
    if (const base::Status failed = textures::DecodeDdsLevel(dds, level, rgba)) {
        error = ToQt(failed->description);
        return {};
    }
    return FromRgba(rgba);
}

Picture LoadPicture(const std::string& systemPath) {
    Picture picture;
    const std::filesystem::path host = tools::HostPath(systemPath);
    const textures::PictureKind kind = textures::KindOfPicture(systemPath);
    if (kind == textures::PictureKind::Picture) {
        QImageReader reader(QString::fromStdString(host.string()));
        reader.setAutoTransform(true);
        picture.image = reader.read();
        if (picture.image.isNull()) picture.error = reader.errorString();
        return picture;
    }
    std::ifstream in(host, std::ios::binary);
    if (!in) {
        picture.error = "Unable to read the file.";
        return picture;
    }
    std::string bytes{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    if (kind == textures::PictureKind::Targa) {
        textures::RgbaImage rgba;
        if (const base::Status failed = textures::DecodeTga(bytes, rgba)) picture.error = ToQt(failed->description);
        else picture.image = FromRgba(rgba);
        return picture;
    }
    if (kind == textures::PictureKind::Texture) {
        std::string error;
        bytes = textures::TgPcDxBytesToDds(bytes, error);
        if (!error.empty()) {
            picture.error = ToQt(error);
            return picture;
        }
    }
    textures::DdsImage dds;
    if (const base::Status failed = textures::ReadDds(std::move(bytes), dds)) {
        picture.error = ToQt(failed->description);
        return picture;
    }
    picture.image = DdsLevelImage(dds, 0, picture.error);
    if (!picture.image.isNull()) picture.levels = std::move(dds);
    return picture;
}

}  // namespace ferrolund::screens
