#pragma once
// Turning one file into a row of the asset list. The same routine serves loose files on
// disk and entries read out of archives: it is given the blueprint's bytes and where they
// came from.

#include <string>
#include <string_view>

#include "assets/asset_filter.h"
#include "assets/asset_row.h"
#include "assets/blueprint.h"

namespace ferrolund::assets {

enum class RowVerdict {
    Drop,        // the file gets no row and no number
    Unreadable,  // the bytes are no blueprint the converter can read: no row, no number
    Counted,     // the file takes a running number, but its row is not shown
    Added,       // `row` is filled; the caller gives it the next running number
};

// A blueprint as a list row. `fullPath` is the file's path (for the archive entry, the
// path it would have on disk), `ref` its split. `failure` is set for Unreadable.
// The row's Index is left to the caller, who numbers the rows in the list's order.
RowVerdict BuildBlueprintRow(std::string_view binary, std::string_view fullPath, const BlueprintRef& ref,
                             const AssetFilter& filter, AssetRow& row, std::string* failure = nullptr);

// The row of a file that is not read: Provider, Product and Path, the rest empty.
AssetRow PlainRow(const BlueprintRef& ref);

}  // namespace ferrolund::assets
