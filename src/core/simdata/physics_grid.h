#pragma once
// The physics screen's two grids: the named values of a rail vehicle's blueprint and of
// its simulation blueprint, cut out of their XML text by substring search in a fixed
// order. Every row remembers where its tag stands in the text, so that an edit changes
// exactly that occurrence and no other of the same name. Nothing is parsed into a model:
// the text stays whole and only the value between two tags changes.

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "simdata/curves.h"

namespace ferrolund::simdata {

enum class RowKind {
    Heading,  // a section's head: its tag and no data. A section written "<tag/>", or
              // missing, is left out with all its rows.
    Block,    // a repeating block ("Bogey", "AnimSet", ...): its head, then its rows once
              // for each entry up to the block's "</tag>"
    Value,    // the element's text; "<tag/>" reads as an empty value
    CsvFile,  // a value that names a curve's data file
    Triple,   // the Provider, Product and BlueprintID behind the tag, shown as one path
              // "Provider\Product\BlueprintID"; empty when all three are
};

// One entry of a grid's tag list. The entries of a higher level that follow a Heading
// or a Block belong to it: they are read within its end and skipped with it.
struct GridTag {
    const char* tag;
    RowKind kind;
    int level;
};

enum class GridKind {
    Blueprint,  // the upper grid, every rail vehicle
    Diesel,     // the lower grid of diesel and electric locomotives
    Steam,      // the lower grid of steam locomotives
};

// The tag list of a grid, in display order. The class of the blueprint heads every grid
// and is not part of the list.
std::span<const GridTag> GridTags(GridKind grid);

struct GridRow {
    std::string item;  // the tag, or the blueprint's class in the first row
    std::string data;  // the value as the file holds it (entities and UTF-8 as they stand)
    // Where "<tag" stands in the text, 1-based. For a tag the file lacks: where the search
    // for it began, so that an edit of the row says it is not there. None for a heading.
    std::optional<long> key;
    RowKind kind = RowKind::Value;

    bool heading() const { return !key.has_value(); }
};

struct GridRead {
    std::vector<GridRow> rows;
    // The curve files named by the CsvFile rows, for the curves of this grid's kind of
    // locomotive: GameRoot\Assets\ + value + ".dcsv". Empty for the upper grid.
    CurveFiles curves;
};

// Reads a grid out of the text. `gameRoot` forms the paths of the curve files.
GridRead ReadGrid(std::string_view text, GridKind grid, const std::string& gameRoot);

// The one row reader behind every grid: a value, a curve file's name or a triple, for
// the tag that follows `pos` (and lies before `bound`, when that is not 0). Found: the
// row, with `pos` left behind its value. Missing: nothing, `pos` as it was.
std::optional<GridRow> ReadRow(std::string_view text, long& pos, const GridTag& tag, long bound = 0);

// Where the element "<tag" (the name whole: "<Bogey" does not stand for "<BogeyPivotX")
// next stands at or after `from` and before `bound` (0: anywhere); 0 when nowhere.
long FindElement(std::string_view text, long from, std::string_view tag, long bound = 0);

struct EditOutcome {
    bool changed = false;
    std::string message;  // told in a critical box; empty when there is none
};

// Puts what a person typed (plain text, UTF-8) into row `index`'s occurrence of its
// tag: the first one at or after the row's key. The text is escaped as the converter
// writes it; a triple takes a path "Provider\Product\BlueprintID". A heading is left
// alone. A tag not found gives "The Key " + tag + " was not found". The row's data
// becomes the new value, and the keys of the rows that stand behind the change move with
// the text, so that a shorter or longer value never sends a later edit to another
// occurrence of the same tag.
EditOutcome EditRow(std::string& text, std::vector<GridRow>& rows, std::size_t index, std::string_view typed);

// The message of a row whose tag is not in the text.
std::string KeyNotFoundMessage(std::string_view tag);

// A row's data as a person reads it: the converter's entities resolved.
std::string ShownData(std::string_view data);

// A curve file's path: GameRoot\Assets\ + the CsvFile value with ".dcsv".
std::string CurveFilePath(const std::string& gameRoot, std::string_view csvFile);

}  // namespace ferrolund::simdata
