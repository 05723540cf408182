// The path tests made before any file of the asset walk is read.
#include "assets/asset_filter.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace ferrolund::assets {
namespace {

AssetFilter Rolling(bool defaultFolders = false) {
    AssetFilter f;
    f.rollingStockOnly = true;
    f.defaultFolders = defaultFolders;
    return f;
}

struct PathCase {
    const char* label;
    std::string path;
    AssetFilter filter;
    bool kept;
};

std::string NameOf(const std::string& path) { return path.substr(path.find_last_of('\\') + 1); }

TEST(AssetFilter, ListedPaths) {
    const std::string loco = "C:\\RW\\Assets\\P\\Q\\RailVehicles\\Diesel\\Default\\Engine\\x.bin";
    AssetFilter preload;
    preload.excludePreLoad = true;
    AssetFilter only;
    only.onlyFileName = "WANTED.bin";
    const std::vector<PathCase> cases = {
        {"no filter keeps all", "C:\\RW\\Assets\\P\\Q\\Scenery\\Station\\hall.bin", {}, true},
        {"loco in default folders", loco, Rolling(true), true},
        {"loco, rolling stock only", loco, Rolling(), true},
        {"default folders need RailVehicles", "C:\\RW\\Assets\\P\\Q\\Stock\\Engine\\x.bin", Rolling(true), false},
        {"default folders need a stock folder", "C:\\RW\\Assets\\P\\Q\\RailVehicles\\Diesel\\x.bin", Rolling(true),
         false},
        {"default folders: cargo", "C:\\RW\\Assets\\P\\Q\\RailVehicles\\Cargo\\x.bin", Rolling(true), true},
        {"default folders ignore the word list", "C:\\RW\\Assets\\Station\\Q\\RailVehicles\\Engine\\x.bin",
         Rolling(true), true},
        {"default folders count only with rolling stock", "C:\\RW\\Assets\\P\\Q\\Scenery\\x.bin",
         [] { AssetFilter f; f.defaultFolders = true; return f; }(), true},
        {"provider holding Station", "C:\\RW\\Assets\\StationWorks\\Q\\RailVehicles\\Engine\\x.bin", Rolling(), false},
        {"Number anywhere, any case", "C:\\RW\\Assets\\P\\Q\\RailVehicles\\renumbered\\x.bin", Rolling(), false},
        {"Texture anywhere", "C:\\RW\\Assets\\P\\Q\\RailVehicles\\Engine\\TEXTURES\\x.bin", Rolling(), false},
        {"word with its backslash", "C:\\RW\\Assets\\P\\Q\\RailVehicles\\scenery\\x.bin", Rolling(), false},
        {"word missing its backslash", "C:\\RW\\Assets\\P\\Q\\RailVehicles\\sceneryish.bin", Rolling(), true},
        {"last word of the list", "C:\\RW\\Assets\\P\\Q\\RailVehicles\\Clock\\x.bin", Rolling(), false},
        {"simulation folder", "C:\\RW\\Assets\\P\\Q\\RailVehicles\\Engine\\Simulation\\s.bin", Rolling(), false},
        {"accented folder", "C:\\RW\\Assets\\P\\Q\\RailVehicles\\Gro\xc3\x9f" "e\\Engine\\x.bin", Rolling(), true},
        {"archives are never listed", "C:\\RW\\Assets\\P\\Q\\Pack.AP", {}, false},
        {"the PreLoad box has no effect", "C:\\RW\\Assets\\P\\Q\\PreLoad\\x.bin", preload, true},
        {"only the wanted name", "C:\\RW\\Assets\\P\\Q\\other.bin", only, false},
        {"the wanted name in any case", "C:\\RW\\Assets\\P\\Q\\wanted.BIN", only, true},
    };
    for (const PathCase& c : cases) {
        EXPECT_EQ(KeepListedPath(c.path, NameOf(c.path), c.filter), c.kept) << c.label;
    }
}

TEST(AssetFilter, QuickDrivePaths) {
    AssetFilter qd;
    qd.quickDrive = true;
    AssetFilter qdFreight = qd;
    qdFreight.category = "Freight";
    AssetFilter plain;  // the head's tests without the Quick Drive flag
    struct Case {
        const char* label;
        std::string path;
        std::uint64_t size;
        AssetFilter filter;
        bool kept;
    };
    const std::vector<Case> cases = {
        {"a PreLoad consist", "C:\\RW\\Assets\\P\\Q\\PreLoad\\Intercity.bin", 500, qd, true},
        {"no PreLoad", "C:\\RW\\Assets\\P\\Q\\RailVehicles\\Intercity.bin", 500, qd, false},
        {"too short", "C:\\RW\\Assets\\P\\Q\\PreLoad\\Intercity.bin", 99, qd, false},
        {"just long enough", "C:\\RW\\Assets\\P\\Q\\PreLoad\\Intercity.bin", 100, qd, true},
        {"fragment", "C:\\RW\\Assets\\P\\Q\\PreLoad\\Fragments\\a.bin", 500, qd, false},
        {"metadata", "C:\\RW\\Assets\\P\\Q\\PreLoad\\MetaData\\a.bin", 500, qd, false},
        {"fragment without the flag", "C:\\RW\\Assets\\P\\Q\\PreLoad\\Fragments\\a.bin", 500, plain, true},
        {"Stations dropped", "C:\\RW\\Assets\\P\\Q\\PreLoad\\Stations\\a.bin", 500, qd, false},
        {"Station alone kept", "C:\\RW\\Assets\\P\\Q\\PreLoad\\Station\\a.bin", 500, qd, true},
        {"words stop at icepak", "C:\\RW\\Assets\\P\\Q\\PreLoad\\Bridge\\a.bin", 500, qd, true},
        {"icepak still dropped", "C:\\RW\\Assets\\P\\Q\\PreLoad\\icepak\\a.bin", 500, qd, false},
        {"category word skips the rest", "C:\\RW\\Assets\\P\\Q\\PreLoad\\Freight\\Fragments\\a.bin", 10, qdFreight,
         true},
        {"category word absent", "C:\\RW\\Assets\\P\\Q\\PreLoad\\Coaches\\Fragments\\a.bin", 500, qdFreight, false},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(KeepQuickDrivePath(c.path, NameOf(c.path), c.size, c.filter), c.kept) << c.label;
    }
}

TEST(AssetFilter, FreightStandsForFreightWagon) {
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"Freight", "Freight Wagon"}, {"FREIGHT", "Freight Wagon"}, {"Freight Wagon", "Freight Wagon"},
        {"", ""},                     {"Tender", "Tender"},
    };
    for (const auto& [box, wanted] : cases) {
        AssetFilter f;
        f.category = box;
        EXPECT_EQ(f.CategoryWanted(), wanted) << box;
    }
}

}  // namespace
}  // namespace ferrolund::assets
