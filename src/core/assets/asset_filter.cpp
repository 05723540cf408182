#include "assets/asset_filter.h"

#include <algorithm>
#include <array>

#include "tools/codepage.h"
#include "tools/text_search.h"

namespace ferrolund::assets {

namespace {

bool Holds(std::string_view text, std::string_view word) { return tools::InStr(text, word) > 0; }

bool HoldsAny(std::string_view text, auto words) {
    return std::any_of(words.begin(), words.end(), [&](std::string_view word) { return Holds(text, word); });
}

bool EndsWithIgnoreCase(std::string_view text, std::string_view tail) {
    return text.size() >= tail.size() && tools::EqualsIgnoreCase(text.substr(text.size() - tail.size()), tail);
}

// Folder words that mark a path as no rolling stock. The Quick Drive walk uses the head of
// the list, up to "icepak", with "Stations" in place of "Station".
constexpr std::array<std::string_view, 49> kNotRollingStock{
    "scenery\\",  "Network\\",   "RailSimulatorCore", "Station",     "Weather\\",    "Markers",     "Audio",
    "Lights\\",   "Particles",   "TimeOfDay",         "TemplateRoutes", "System\\",  "LevelCrossings",
    "Procedural", "Environment", "Bogeys",            "Bogies",      "Camera",       "Wheels",      "\\Simulation",
    "Foliage",    "CabView",     "Number",            "Texture",     "SignalBox",    "icepak",      "Bridge",
    "\\farm",     "\\Churches",  "\\Industrial",      "\\Misc\\",    "\\Bahnhof",    "\\Bahnsteige", "\\Bruecke",
    "\\Fremdes",  "Gantry",      "\\Haus",            "\\Lampen",    "\\Schilder",   "\\Signal",    "\\Stellwerke",
    "\\Strassen", "\\Sign",      "\\Crew",            "\\Lights",    "\\Objekte",    "Fragment",    "Consist",
    "\\Clock"};
constexpr std::size_t kQuickDriveWords = 26;  // up to and with "icepak"
static_assert(kNotRollingStock[kQuickDriveWords - 1] == "icepak");

constexpr std::array<std::string_view, 6> kDefaultStockFolders{"\\Engine\\", "\\Engines\\", "\\Tender\\",
                                                               "\\Freight\\", "\\Cargo\\", "\\Passenger\\"};

// The tests both walks share: the one name asked for, and no archives.
bool KeepCommon(std::string_view fullPath, std::string_view fileName, const AssetFilter& filter) {
    if (filter.onlyFileName && !tools::EqualsIgnoreCase(fileName, *filter.onlyFileName)) return false;
    return !EndsWithIgnoreCase(fullPath, ".ap");
}

}  // namespace

std::string AssetFilter::CategoryWanted() const {
    return tools::EqualsIgnoreCase(category, "Freight") ? std::string("Freight Wagon") : category;
}

bool KeepListedPath(std::string_view fullPath, std::string_view fileName, const AssetFilter& filter) {
    // "Exclude PreLoad" is stored as -1 when ticked and the test asks for 1, so PreLoad
    // paths are never dropped here; the list has always behaved so and stays so.
    if (!KeepCommon(fullPath, fileName, filter)) return false;
    if (filter.defaultFolders && filter.rollingStockOnly) {
        return Holds(fullPath, "RailVehicles") && HoldsAny(fullPath, kDefaultStockFolders);
    }
    if (filter.rollingStockOnly) return !HoldsAny(fullPath, kNotRollingStock);
    return true;
}

bool KeepQuickDrivePath(std::string_view fullPath, std::string_view fileName, std::uint64_t size,
                        const AssetFilter& filter) {
    if (!Holds(fullPath, "PreLoad")) return false;
    // A path holding the wanted category's word is taken without further tests.
    if (!filter.category.empty() && Holds(fullPath, filter.category)) return true;
    if (!KeepCommon(fullPath, fileName, filter)) return false;
    if (filter.quickDrive && (Holds(fullPath, "Fragment") || Holds(fullPath, "MetaData"))) return false;
    if (size < 100) return false;
    for (std::size_t i = 0; i < kQuickDriveWords; ++i) {
        const std::string_view word = kNotRollingStock[i] == "Station" ? "Stations" : kNotRollingStock[i];
        if (Holds(fullPath, word)) return false;
    }
    return true;
}

bool HoldsNotRollingStockWord(std::string_view path, bool textureCounts) {
    return std::any_of(kNotRollingStock.begin(), kNotRollingStock.end(), [&](std::string_view word) {
        return (textureCounts || word != "Texture") && Holds(path, word);
    });
}

}  // namespace ferrolund::assets
