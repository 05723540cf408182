#include "screens/app/qt_text.h"

#include <QStringList>

#include "tools/codepage.h"
#include "tools/host_path.h"
#include "tools/names.h"

namespace ferrolund::screens {

QString ToQt(const std::string& bytes) { return QString::fromStdString(tools::ShownText(bytes)); }

std::string FromQt(const QString& text) { return text.toStdString(); }

QString PaneToQt(const std::string& fileText) {
    QString out(static_cast<qsizetype>(fileText.size()), Qt::Uninitialized);
    QChar* to = out.data();
    for (unsigned char c : fileText) *to++ = QChar(static_cast<char16_t>(tools::UnicodeOfCp1252(c)));
    return out;
}

std::string PaneFromQt(const QString& text) {
    std::string out(static_cast<std::size_t>(text.size()), '\0');
    char* to = out.data();
    for (const QChar c : text) {
        const char16_t u = c.unicode();
        *to++ = u < 0x80 ? static_cast<char>(u) : tools::Cp1252OfUnicode(u);
    }
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
