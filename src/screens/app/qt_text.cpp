#include "screens/app/qt_text.h"

#include <QStringList>
#include <QVariant>

#include "tools/codepage.h"
#include "tools/host_path.h"
#include "tools/names.h"

namespace ferrolund::screens {

QString ToQt(const std::string& bytes) { return QString::fromStdString(tools::ShownText(bytes)); }

std::string FromQt(const QString& text) { return text.toStdString(); }

PaneEncoding PaneEncodingOf(const std::string& fileText) {
    return tools::IsValidUtf8(fileText) ? PaneEncoding::Utf8 : PaneEncoding::Bytes;
}

QString PaneToQt(const std::string& fileText, PaneEncoding encoding) {
    if (encoding == PaneEncoding::Utf8) return QString::fromUtf8(fileText.data(), static_cast<qsizetype>(fileText.size()));
    QString out(static_cast<qsizetype>(fileText.size()), Qt::Uninitialized);
    QChar* to = out.data();
    for (unsigned char c : fileText) *to++ = QChar(static_cast<char16_t>(tools::UnicodeOfCp1252(c)));
    return out;
}

std::string PaneFromQt(const QString& text, PaneEncoding encoding) {
    if (encoding == PaneEncoding::Utf8) return text.toStdString();
    std::string out(static_cast<std::size_t>(text.size()), '\0');
    char* to = out.data();
    for (const QChar c : text) {
        const char16_t u = c.unicode();
        *to++ = u < 0x80 ? static_cast<char>(u) : tools::Cp1252OfUnicode(u);
    }
    return out;
}

void SetPaneEncoding(QObject* pane, PaneEncoding encoding) {
    pane->setProperty("paneEncoding", encoding == PaneEncoding::Utf8 ? QStringLiteral("utf-8") : QStringLiteral("bytes"));
}

PaneEncoding PaneEncodingOf(const QObject* pane) {
    return pane->property("paneEncoding").toString() == QStringLiteral("utf-8") ? PaneEncoding::Utf8
                                                                               : PaneEncoding::Bytes;
}

long PaneCharacterAt(const QString& paneText, long byte, PaneEncoding encoding) {
    if (encoding == PaneEncoding::Bytes || byte <= 0) return byte;
    long bytes = 0;
    qsizetype at = 0;
    for (; at < paneText.size() && bytes < byte; ++at) {
        const char16_t u = paneText[at].unicode();
        if (u >= 0xD800 && u <= 0xDBFF && at + 1 < paneText.size()) {  // a pair: four bytes
            bytes += 4;
            ++at;
        } else {
            bytes += u < 0x80 ? 1 : u < 0x800 ? 2 : 3;
        }
    }
    return static_cast<long>(at);
}

long PaneByteAt(const QString& paneText, long character, PaneEncoding encoding) {
    if (encoding == PaneEncoding::Bytes || character <= 0) return character;
    return static_cast<long>(paneText.left(character).toUtf8().size());
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
