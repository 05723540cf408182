#pragma once
// .dcsv files: the simulator's XML text of a table of number pairs, one <cCSVItem> block
// with an X and a Y element per point. The performance curves of a vehicle and the route
// markers are kept in them. A file is never parsed into a model: its points are cut out
// of the whole text, and new values are put back by text replacement, so everything else
// the file holds stays byte for byte as it was.

#include <string>
#include <string_view>
#include <vector>

#include "base/run_context.h"
#include "base/run_error.h"
#include "tools/backup.h"

namespace ferrolund::simdata {

// The values of one item, as text, as the file holds them.
struct DcsvPoint {
    std::string x;
    std::string y;
};

// One item of a new file: the values and the marker's name (empty for a curve or a line).
struct DcsvRow {
    std::string x;
    std::string y;
    std::string name;
};

// The back-up rule of every .dcsv write: ".bak", then ".bak1", ".bak2", ... the first free.
inline constexpr const tools::BackupRule& kDcsvBackupRule = tools::kUnlimitedBackupRule;

// The X and Y of every item, in the order of the file. An item without its X or its Y, or
// with a tag that is not closed within it, makes the whole file unusable: the result is
// then a message naming the item, and `points` is empty. Empty means the file is sound.
std::string ReadDcsvPoints(std::string_view text, std::vector<DcsvPoint>& points);

// Puts the points' values into the items, first point into the first item. The walk stops
// at the first point with an empty X, or when either the points or the items run out: the
// later items keep what they had. Blanks around a value are dropped. Gives a message, with
// `text` unchanged, when the file is malformed (as ReadDcsvPoints) or a value holds a
// character that would break the XML ('<', '>' or '&').
std::string PutDcsvPoints(std::string& text, const std::vector<DcsvPoint>& points);

// A value as a number: the number at the start of the text, 0 when there is none.
double DcsvNumber(std::string_view text);

// The largest and the smallest of the values; 0 for none.
double FindMax(const std::vector<double>& values);
double FindMin(const std::vector<double>& values);

// The text of a new file: the header template, then for each row the body template with
// "ccccc" replaced by the row's number (from 0), "aaaa" by X, "bbbb" by Y and "ddddd" by
// the name, each item followed by CR LF; closed by a tab, "</CSVItem>", CR LF,
// "</cCSVArray>", CR LF.
std::string NewDcsvText(std::string_view header, std::string_view body, const std::vector<DcsvRow>& rows);

// The program's two templates, Templates\DCSVHeader.txt and Templates\DCSVBody.txt. A
// missing or empty one is an error naming the file.
base::Status LoadDcsvTemplates(const base::RunContext& ctx, std::string& header, std::string& body);

// Writes `text` as the .dcsv at `path` (a system path). An existing file is first renamed
// by kDcsvBackupRule; `backup` receives its new name. On failure the old file is kept.
base::Status WriteDcsvText(const std::string& path, const std::string& text, std::string& backup);

}  // namespace ferrolund::simdata
