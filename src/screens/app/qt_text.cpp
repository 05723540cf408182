#include "screens/app/qt_text.h"

#include <QStringList>

#include "tools/codepage.h"
#include "tools/host_path.h"

namespace ferrolund::screens {

QString ToQt(const std::string& cp1252) {
    QString out;
    out.reserve(static_cast<qsizetype>(cp1252.size()));
    for (unsigned char c : cp1252) out += QChar(static_cast<char16_t>(tools::UnicodeOfCp1252(c)));
    return out;
}

std::string FromQt(const QString& text) {
    std::string out;
    out.reserve(static_cast<std::size_t>(text.size()));
    for (const QChar c : text) out += tools::Cp1252OfUnicode(c.unicode());
    return out;
}

std::string SystemPathFromQt(const QString& diskPath) {
    return tools::SystemPath(std::filesystem::path(diskPath.toStdString()));
}

QString DiskPathToQt(const std::string& systemPath) {
    return QString::fromStdString(tools::HostPath(systemPath).string());
}

QString QtFilter(const std::string& filter) {
    const QStringList parts = ToQt(filter).split('|');
    QStringList out;
    for (int i = 0; i < parts.size(); i += 2) out << parts[i];
    return out.join(";;");
}

}  // namespace ferrolund::screens
