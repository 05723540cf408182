#pragma once
// The screen boundary between the core's bytes and Qt's text.
//
// Names, messages, grids and captions are shown by the one rule of the program: a run of
// well-formed UTF-8 reads as UTF-8, any other byte as Windows-1252; what a person types or
// chooses comes back as UTF-8, the encoding of the game's own files.
//
// The editor's panes show a file's text as it is held: text that is all well-formed UTF-8
// (the converter's XML) decoded, any other text one character per byte (Windows-1252).
// Either way every byte goes back as it came, and the text routines' byte positions are
// turned into the pane's character positions and back.

#include <QObject>
#include <QString>
#include <string>

namespace ferrolund::screens {

QString ToQt(const std::string& bytes);
std::string FromQt(const QString& text);
enum class PaneEncoding { Utf8, Bytes };
PaneEncoding PaneEncodingOf(const std::string& fileText);
QString PaneToQt(const std::string& fileText, PaneEncoding encoding);
std::string PaneFromQt(const QString& text, PaneEncoding encoding);
// The encoding of the text a pane holds, kept on the pane when its text is set.
void SetPaneEncoding(QObject* pane, PaneEncoding encoding);
PaneEncoding PaneEncodingOf(const QObject* pane);
// The character position in `paneText` of a byte position in PaneFromQt(paneText), and back.
long PaneCharacterAt(const QString& paneText, long byte, PaneEncoding encoding);
long PaneByteAt(const QString& paneText, long character, PaneEncoding encoding);
// A path chosen on screen (a disk path) as the system string the core works with.
std::string SystemPathFromQt(const QString& diskPath);
// A system path as a disk path for Qt's file dialogs and models.
QString DiskPathToQt(const std::string& systemPath);
// "Caption (*.ext)|*.ext|Other (*.o)|*.o" as Qt's "Caption (*.ext);;Other (*.o)".
QString QtFilter(const std::string& filter);

inline constexpr int kTwipsPerPixel = 15;

}  // namespace ferrolund::screens
