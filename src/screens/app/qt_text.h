#pragma once
// The screen boundary between the core's bytes and Qt's text.
//
// Names, messages, grids and captions are shown by the one rule of the program: a run of
// well-formed UTF-8 reads as UTF-8, any other byte as Windows-1252; what a person types or
// chooses comes back as UTF-8, the encoding of the game's own files.
//
// The editor's panes keep one character per byte (Windows-1252), so that a position in
// the pane is a position in the file and every byte is written back as it came.

#include <QString>
#include <string>

namespace ferrolund::screens {

QString ToQt(const std::string& bytes);
std::string FromQt(const QString& text);
QString PaneToQt(const std::string& fileText);
std::string PaneFromQt(const QString& text);
// A path chosen on screen (a disk path) as the system string the core works with.
std::string SystemPathFromQt(const QString& diskPath);
// A system path as a disk path for Qt's file dialogs and models.
QString DiskPathToQt(const std::string& systemPath);
// "Caption (*.ext)|*.ext|Other (*.o)|*.o" as Qt's "Caption (*.ext);;Other (*.o)".
QString QtFilter(const std::string& filter);

inline constexpr int kTwipsPerPixel = 15;

}  // namespace ferrolund::screens
