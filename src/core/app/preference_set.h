#pragma once
// The process-wide settings: the 32 values of "Ferrolundpreferences.txt", one a line, in a
// fixed order, with no keys. A line's meaning is its number.

#include <cstdint>
#include <string>
#include <vector>

#include "base/run_error.h"

namespace ferrolund::app {

struct PreferenceSet {
    std::int16_t editorWidth = 0;         // 1, twips
    std::int16_t editorHeight = 0;        // 2
    std::int16_t editorLeft = 0;          // 3
    std::int16_t editorTop = 0;           // 4
    std::string graphicsEditorPath;       // 5
    std::string viewerPath;               // 6
    std::string gameRoot;                 // 7
    bool spareFlag1 = false;              // 8
    std::string spareText1;               // 9
    std::string pdfReaderPath;            // 10
    std::string rsBinToolPath;            // 11
    std::string language = "English";     // 12
    std::string backupPath;               // 13
    bool aboutFlag = false;               // 14, as the About screen and the exit see it
    bool noAskOnExit = false;             // 15
    std::string editorFontSize;           // 16
    std::string spareText2;               // 17
    std::int16_t editorWindowState = 0;   // 18: 2 maximised, 0 stored geometry
    std::int16_t scenarioEditorWidth = 0; // 19
    std::int16_t scenarioEditorHeight = 0;// 20
    std::int16_t scenarioEditorLeft = 0;  // 21
    std::int16_t scenarioEditorTop = 0;   // 22
    bool warnIfNotSaved = false;          // 23
    bool spareFlag2 = false;              // 24
    std::string preLoadFolder;            // 25
    bool noNewVersionAdvice = false;      // 26
    bool spareFlag3 = false;              // 27
    std::int16_t reportWidth = 0;         // 28
    std::int16_t reportHeight = 0;        // 29
    std::int16_t reportLeft = 0;          // 30
    std::int16_t reportTop = 0;           // 31
    bool routesIndexed = false;           // 32

    // Line 14 as read at start; the menu writers store this copy, the exit stores aboutFlag.
    bool aboutFlagShadow = false;
};

inline constexpr int kPreferenceCount = 32;
inline constexpr const char* kPreferenceFileName = "Ferrolundpreferences.txt";

// Which home of line 14 a reader fills or a writer stores: the copy kept from the start
// (stored by the menu's writers) or the About screen's (stored at exit).
enum class AboutHome { Shadow, AboutScreen };

// Reads the values in order, by value not by line. Each value that is missing, or that
// cannot be stored in its field, gives one error and leaves the field as it was. Values
// beyond the 32nd are ignored. `home` tells where line 14 goes.
std::vector<base::RunError> ParsePreferences(const std::string& text, PreferenceSet& prefs, AboutHome home);
// The whole file: 32 lines, each ended by CR LF.
std::string FormatPreferences(const PreferenceSet& prefs, AboutHome home);
// The zero-means-default rule of the remembered window geometries.
void ApplyGeometryDefaults(PreferenceSet& prefs);
// Stores a geometry value in a 16-bit field; a value that does not fit is the overflow
// error and the field keeps what it had.
base::Status StoreTwips(std::int16_t& field, long value);

}  // namespace ferrolund::app
