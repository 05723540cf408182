#pragma once
// The screen boundary: Windows-1252 bytes of the core to Qt's text and back, through the
// one code-page table.

#include <QString>
#include <string>

namespace ferrolund::screens {

QString ToQt(const std::string& cp1252);
std::string FromQt(const QString& text);
// A path chosen on screen (a disk path) as the system string the core works with.
std::string SystemPathFromQt(const QString& diskPath);
// A system path as a disk path for Qt's file dialogs and models.
QString DiskPathToQt(const std::string& systemPath);
// "Caption (*.ext)|*.ext|Other (*.o)|*.o" as Qt's "Caption (*.ext);;Other (*.o)".
QString QtFilter(const std::string& filter);

inline constexpr int kTwipsPerPixel = 15;

}  // namespace ferrolund::screens
