#pragma once
// Picture files read for the texture viewer: a .TgPcDx turned into its .dds in memory, a
// .dds read with all its mip levels, a .tga by our own reader (Qt has none by default), and
// every other kind through Qt's image readers.

#include <QImage>
#include <QString>
#include <optional>
#include <string>

#include "textures/dds_image.h"

namespace ferrolund::screens {

struct Picture {
    QImage image;                              // the largest level; null after a failure
    std::optional<textures::DdsImage> levels;  // for textures and .dds files
    QString error;                             // why nothing could be shown
};

// Reads the file at `systemPath` (resolved without regard to case).
Picture LoadPicture(const std::string& systemPath);
// Level `level` of a .dds (0 the largest) as a picture; null with `error` set on failure.
QImage DdsLevelImage(const textures::DdsImage& dds, int level, QString& error);

}  // namespace ferrolund::screens
