#include "screens/assets/picture_converter.h"

#include <QImage>
#include <QString>

#include "tools/host_path.h"

namespace ferrolund::screens {

bool ThumbnailToPng(const std::string& jpg, const std::string& png) {
    const QImage picture(QString::fromStdString(tools::HostPath(jpg).string()));
    if (picture.isNull()) return false;
    return picture.save(QString::fromStdString(tools::HostPath(png).string()), "PNG");
}

}  // namespace ferrolund::screens
