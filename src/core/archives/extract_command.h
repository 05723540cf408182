#pragma once
// The extract commands shared by the two archive screens, frmNewAP and frmNewZip: the test
// for an open archive, "Extract All", "Extract Selected" and extracting into the
// archive's own folder, with their questions and messages.

#include <cstddef>
#include <string>
#include <vector>

#include "app/app_context.h"
#include "archives/zip_archive.h"

namespace ferrolund::archives {

// The status text after an extract command.
inline constexpr const char* kExtractCompleted = "Extract Completed";

// Without an open archive: "You must Open an Archive before you can" and the line for
// the command (such as "Extract anything from it!"), titled "Error"; gives false.
bool NeedOpenArchive(app::AppContext& ctx, bool open, const std::string& whatLine);

struct ExtractRequest {
    bool selectedOnly = false;
    std::vector<std::size_t> selected;  // entry indices
    bool toArchiveFolder = false;       // else the folder is asked for and confirmed
    bool fullPaths = true;
};

// Runs one extract command on the open archive; `destinationFolder` is where the last
// extract went and where the folder dialog starts. Refused entries and failures are
// reported under `module`. Gives false when nothing was done.
bool RunExtractCommand(app::AppContext& ctx, const ZipArchive& archive, const ExtractRequest& request,
                       std::string& destinationFolder, const std::string& module);

}  // namespace ferrolund::archives
