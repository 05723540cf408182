#pragma once
// The choices that decide which files of a walk become rows of the asset list, and the
// tests on a file's path that are made before the file is read.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace ferrolund::assets {

struct AssetFilter {
    std::string category;           // the "Category" box; empty for no filter
    bool rollingStockOnly = false;  // "Rolling stock only"
    bool defaultFolders = false;    // "Default folders"; counts only with rollingStockOnly
    bool excludePreLoad = false;    // "Exclude PreLoad"; the list has always ignored it
    bool quickDrive = false;        // the walk of "List QD consists"
    std::string language = "English";  // the language word of the display names
    // Set by the missing-asset workflow: only files of this name are listed.
    std::optional<std::string> onlyFileName;

    // The category rows must have: "Freight" (any case) stands for "Freight Wagon".
    std::string CategoryWanted() const;
};

// The tests of a file's path for "Add to List" and "Find Zero Length Files". `fullPath`
// is the folder and the name, `fileName` the name alone. False drops the file.
bool KeepListedPath(std::string_view fullPath, std::string_view fileName, const AssetFilter& filter);

// The same for "List QD consists", which also looks at the file's size in bytes.
bool KeepQuickDrivePath(std::string_view fullPath, std::string_view fileName, std::uint64_t size,
                        const AssetFilter& filter);

// Whether the path holds one of the words by which "Rolling stock only" drops a file of
// the asset list. Without `textureCounts`, "Texture" is not among them (the .ap list's
// version).
bool HoldsNotRollingStockWord(std::string_view path, bool textureCounts = true);

}  // namespace ferrolund::assets
