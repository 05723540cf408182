#pragma once
// The walk that fills the asset list: every file below a start folder that passes the
// path tests is read (blueprints, on all the machine's cores) and turned into a row. Rows
// reach the caller in the list's order, a batch at a time, on the caller's own thread, so
// a grid can grow while the walk runs. "&Abort" (the run context's abort flag, raised
// through the screen's event pump) ends the walk within a tenth of a second and keeps
// what was found. Nothing on disk is changed.

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "assets/asset_filter.h"
#include "assets/asset_row.h"
#include "base/run_context.h"

namespace ferrolund::assets {

struct ScanOptions {
    std::string startFolder;           // a system path
    AssetFilter filter;                // with filter.quickDrive, the walk of "List QD consists"
    std::string fileFilter = "*.bin";  // the "Filter" box; empty means "*.*"
    // "Find Zero Length Files": every name, files of no bytes only.
    bool zeroLength = false;
    // Whether a .bin is read as a blueprint. Until the list has once been filled by "Add
    // to List", the zero-length walk gives every file a plain row.
    bool readBlueprints = true;
    long firstIndex = 0;         // the running numbers go on after this one
    std::size_t batchRows = 200;  // rows handed over at most at once
    unsigned workers = 0;        // threads reading blueprints; 0: one per core
};

// A file or folder the walk could not use, and why; the walk went on without it.
struct ScanProblem {
    std::string path;
    std::string message;
};

struct ScanTotals {
    long files = 0;      // files the walk met that passed the name filter
    long read = 0;       // blueprints read
    long rows = 0;       // rows handed over
    long lastIndex = 0;  // the last running number given (firstIndex when none)
    bool aborted = false;
    double seconds = 0;
    double longestAbortGapSeconds = 0;  // the longest time the abort flag went unread
    std::vector<ScanProblem> problems;
};

// Called on the caller's thread with the next rows, numbered; the handler may take them.
using RowBatchHandler = std::function<void(std::vector<AssetRow>& rows)>;

// Walks, reads and lists. Never throws; what went wrong is in the problems.
ScanTotals ScanAssets(base::RunContext& ctx, const ScanOptions& options, const RowBatchHandler& onRows);

}  // namespace ferrolund::assets
