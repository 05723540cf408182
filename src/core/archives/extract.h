#pragma once
// Unpacking entries of an open archive into a folder: with or without the stored folders,
// with the four rules for a file that is already there, refusing every entry whose name
// would climb out of the folder. A file is written under a scratch name beside its place
// and renamed only when all its bytes have arrived, so a broken archive never leaves a
// half-written file, and never spoils the file it was to replace.

#include <cstddef>
#include <string>
#include <vector>

#include "base/run_context.h"
#include "archives/zip_archive.h"

namespace ferrolund::archives {

// What happens when the file to write exists already.
enum class Overwrite {
    All,             // replace it
    Skip,            // keep it, skip the entry
    RenameNew,       // write the new file as <base>_1<ext>, <base>_2<ext>, ...
    RenameExisting,  // rename the old file so, then write
    Ask,             // ask whether to replace it
};

struct ExtractOptions {
    std::string target;      // a system path; made when missing
    bool fullPaths = true;   // keep the stored folders; off puts every file in the target
    Overwrite overwrite = Overwrite::All;
    bool showProgress = true;  // move the progress bar and let events through per entry
};

struct ExtractOutcome {
    long written = 0;
    long skipped = 0;
    std::vector<std::string> refused;  // stored names that would climb out of the target
    std::vector<base::RunError> errors; // entries that could not be read or written
    bool aborted = false;              // AbortFlag was set between two entries
};

// Unpacks the entries with these indices (all entries when `indices` is empty is NOT
// implied: pass them). Between entries events are let through and AbortFlag is tested.
ExtractOutcome ExtractEntries(base::RunContext& ctx, const ZipArchive& archive, const std::vector<std::size_t>& indices,
                              const ExtractOptions& options);

// Every index of the archive, for "Extract All".
std::vector<std::size_t> AllIndices(const ZipArchive& archive);

// The name a file gets under the renaming rules: the first <base>_<n><ext> that does not
// exist, n from 1.
std::string NumberedName(const std::string& systemPath);

}  // namespace ferrolund::archives
