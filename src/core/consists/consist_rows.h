#pragma once
// What the consist builder does to the rows of the saved consists: add stock, insert,
// replace, delete, flip, rename and search, and the draws of a generated consist. Row
// numbers are indices into the rows, from 0; a selection lists them in any order.

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "assets/asset_row.h"
#include "base/run_error.h"
#include "consists/consist_templates.h"

namespace ferrolund::consists {

// The consist a new row joins: its name (file form), Key and id.
struct ConsistIdentity {
    std::string name;
    std::string key;
    std::string consistId;
};

// A new consist: the name, a fresh id and a new GUID as its Key.
ConsistIdentity NewConsistIdentity(std::string fileFormName);
ConsistIdentity IdentityOf(const TemplateRow& row);

// The row a stock row makes in a consist: its Provider, Product and path (a final "bin"
// made "xml") as BlueprintID, not flipped, with a fresh entry id.
TemplateRow EntryFor(const assets::AssetRow& stock, const ConsistIdentity& consist);

// The stock rows, each as a new entry of the consist, on the end.
void AppendStock(std::vector<TemplateRow>& rows, const ConsistIdentity& consist,
                 const std::vector<assets::AssetRow>& stock);

// The stock, `times` over, behind row `at` in that row's consist. Gives the new rows.
std::vector<std::size_t> InsertAfter(std::vector<TemplateRow>& rows, std::size_t at,
                                     const std::vector<assets::AssetRow>& stock, int times = 1);

// Each selected row gives way to the stock, in that row's consist; the others stay where
// they stand. Gives the rows that took the selected rows' places.
std::vector<std::size_t> ReplaceRows(std::vector<TemplateRow>& rows, const std::vector<std::size_t>& selected,
                                     const std::vector<assets::AssetRow>& stock);

void DeleteRows(std::vector<TemplateRow>& rows, const std::vector<std::size_t>& selected);
// "0" and "1" swap; any other text stays.
void FlipRows(std::vector<TemplateRow>& rows, const std::vector<std::size_t>& selected);
// The name goes to the selected rows only: a consist renamed in part splits in two that
// share one Key.
void RenameRows(std::vector<TemplateRow>& rows, const std::vector<std::size_t>& selected, const std::string& name);

// The next row after `current` (from the first with none) whose consist name holds the
// text, without regard to case or accents.
std::optional<std::size_t> FindName(const std::vector<TemplateRow>& rows, std::string_view text,
                                    std::optional<std::size_t> current);

// The same search over the Name column of stock rows.
std::optional<std::size_t> FindStockName(const std::vector<assets::AssetRow>& stock, std::string_view text,
                                         std::optional<std::size_t> current);

// A source of random numbers in [0,1).
using RandomSource = std::function<double()>;
// A source that gives the same numbers for the same seed.
RandomSource SeededRandom(std::uint64_t seed);

// The pool rows (from 0) that a generated consist of `wagons` draws from a pool of `pool`
// rows, by the randomness:
//   1 to 9   half the wagons and one more from the first half of the pool, the rest from
//            the second half;
//   10       every wagon from the whole pool;
//   0        one row of the whole pool, `wagons` times: a block train;
//   other    none.
// Rows are the whole part of the expressions; a draw below the first row takes the first
// and one past the last takes the last. An empty pool or no wagons draw nothing.
std::vector<std::size_t> GenerateDraws(std::size_t pool, long wagons, long randomness, const RandomSource& random);

// A whole number from the text of a box, as its value reads ("12abc" is 12, "" is 0).
long WholeNumber(std::string_view text);

// A list of stock rows saved as comma text (.csv), tabbed text (.txt, .tab) or a
// worksheet (.xls), the first line its headings; heading lines of appended parts are
// left out.
base::Status ReadStockList(const std::string& path, std::vector<assets::AssetRow>& rows);

}  // namespace ferrolund::consists
