#include "screens/textures/picture_save.h"

#include <QFileInfo>
#include <filesystem>

#include "tools/backup.h"
#include "tools/files.h"
#include "tools/host_path.h"

namespace ferrolund::screens {

std::string SavePicture(const QImage& image, const std::string& systemPath) {
    const std::filesystem::path target = tools::HostPath(systemPath);
    QByteArray format = QFileInfo(QString::fromStdString(target.string())).suffix().toLower().toLatin1();
    if (format.isEmpty()) format = "png";
    // The new picture is complete before anything of the old one is touched.
    const std::string made = systemPath + ".new";
    const std::filesystem::path madeHost = tools::HostPath(made);
    const QImage saved = format == "jpg" || format == "jpeg" || format == "bmp"
                             ? image.convertToFormat(QImage::Format_RGB32)
                             : image;
    if (!saved.save(QString::fromStdString(madeHost.string()), format.constData())) {
        std::error_code ec;
        std::filesystem::remove(madeHost, ec);
        tools::ForgetPath(made);
        return "Unable to write " + systemPath;
    }
    tools::ForgetPath(made);
    std::string backup;
    const base::Status replaced = tools::FileExists(systemPath)
                                      ? tools::ReplaceWithBackup(made, systemPath, tools::kBackupRule, backup)
                                      : tools::CopyFileReplacing(made, systemPath);
    (void)tools::DeleteFile(made);
    return replaced ? "Unable to write " + systemPath + ": " + replaced->description : std::string();
}

}  // namespace ferrolund::screens
