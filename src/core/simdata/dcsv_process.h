#pragma once
// "Process DCSV": a .dcsv that lost digits on its way is given back the values of the .csv
// it was made from, which lies under the simulator's Source folder where the .dcsv lies
// under Assets.

#include <string>
#include <string_view>
#include <vector>

#include "base/run_context.h"
#include "simdata/dcsv.h"

namespace ferrolund::simdata {

// The source of a .dcsv: its path with the folder "Assets" (the last one, any case) turned
// into "Source" and the extension into "csv". Empty when the path has no Assets folder.
std::string SourceCsvOf(const std::string& dcsvPath);

// The points of a source .csv, one a line: X is the text before the first comma, Y what
// follows up to a second comma, if there is one. A line of three fields whose first is
// not a number is a named marker (name, X, Y); a line whose X or Y is not a number (a
// heading, a blank line) gives no point.
std::vector<DcsvPoint> ReadSourceCsv(std::string_view csvText);

struct ProcessOutcome {
    int improved = 0;    // files written anew
    int unfound = 0;     // files whose source .csv was missing
    int failed = 0;      // files that were malformed or could not be written
};

// Processes each file in turn and goes on after one that fails: a missing source gives
// "The original Source .csv for <name> could not be found", a malformed .dcsv its message,
// a failed write the error log. The old file is kept as ".bak", ".bak1", ...; after the
// last, "Precision of .DCSV files has been improved, a backup has been made.".
ProcessOutcome ProcessDcsv(base::RunContext& ctx, const std::vector<std::string>& files);

}  // namespace ferrolund::simdata
