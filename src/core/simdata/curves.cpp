#include "simdata/curves.h"

#include <cctype>

namespace ferrolund::simdata {

namespace {

bool SameLetters(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i < a.size(); ++i)
        if (std::tolower(static_cast<unsigned char>(a[i])) != std::tolower(static_cast<unsigned char>(b[i])))
            return false;
    return true;
}

}  // namespace

int CurveForFile(std::string_view csvFile) {
    const std::size_t slash = csvFile.find_last_of("\\/");
    std::string_view name = slash == std::string_view::npos ? csvFile : csvFile.substr(slash + 1);
    const std::size_t dot = name.find_last_of('.');
    if (dot != std::string_view::npos) {
        const std::string_view ext = name.substr(dot);
        if (!SameLetters(ext, ".dcsv") && !SameLetters(ext, ".csv")) return -1;
        name = name.substr(0, dot);
    }
    for (std::size_t i = 0; i < kCurves.size(); ++i) {
        std::string_view file = kCurves[i].file;
        file = file.substr(0, file.find_last_of('.'));
        if (SameLetters(name, file)) return static_cast<int>(i);
    }
    return -1;
}

}  // namespace ferrolund::simdata
