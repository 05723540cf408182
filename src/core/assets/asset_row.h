#pragma once
// A row of the asset list, which is also a line of the asset index (IndexFiles\index.csv):
// eight text columns, named by the list's headings.

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace ferrolund::assets {

inline constexpr std::size_t kAssetColumns = 8;

// The headings of the list and of the index file's first line, in column order.
inline constexpr std::array<std::string_view, kAssetColumns> kAssetHeadings{
    "Provider", "Product", "Path", "Name", "In Scene", "Category", "Blueprint", "Index"};

struct AssetRow {
    std::string provider;   // first folder under Assets
    std::string product;    // second folder under Assets
    std::string path;       // the rest, as on disk (ending in .bin for a blueprint)
    std::string name;       // display name, commas removed
    std::string inScene;    // "Yes" or "No"
    std::string category;
    std::string blueprint;  // class word, without its leading "c"
    std::string index;      // running number within the scan, from 1

    std::vector<std::string> Cells() const {
        return {provider, product, path, name, inScene, category, blueprint, index};
    }
    // Cells beyond the eighth are ignored; missing ones stay empty.
    static AssetRow FromCells(const std::vector<std::string>& cells) {
        AssetRow row;
        std::string* fields[kAssetColumns] = {&row.provider, &row.product,  &row.path,      &row.name,
                                              &row.inScene,  &row.category, &row.blueprint, &row.index};
        for (std::size_t i = 0; i < kAssetColumns && i < cells.size(); ++i) *fields[i] = cells[i];
        return row;
    }
    bool operator==(const AssetRow&) const = default;
};

}  // namespace ferrolund::assets
