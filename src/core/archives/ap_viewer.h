#pragma once
// The screen model of frmNewAP, "Extract from .AP file": one open archive, its entries as
// the grid shows them, and the commands of the screen's menus.

#include <optional>
#include <string>
#include <vector>

#include "app/app_context.h"
#include "archives/extract_command.h"
#include "archives/zip_archive.h"

namespace ferrolund::archives {

class ApViewer {
public:
    bool includeSubDirectories = true;  // "Include Sub-Directories"
    bool fullPath = true;               // "Fullpath"
    std::string destinationFolder;      // where the last extract went

    // OpenArchive: an empty path only clears the list. Renames the parts <base>z01 ... to
    // <base>001 ... first, as far as they go. A failure is reported under frmNewAP.
    void openArchive(app::AppContext& ctx, const std::string& path);
    void closeArchive();
    const ZipArchive& archive() const { return archive_; }
    bool isOpen() const { return archive_.isOpen(); }
    // "Archive - " and the path.
    std::string caption() const;
    long folderCount() const;
    long fileCount() const;

    // The four extract commands. `selected` are entry indices; `toArchiveFolder` picks the
    // archive's own folder, else the folder is asked for and confirmed. Gives false when
    // nothing was done.
    bool extract(app::AppContext& ctx, bool selectedOnly, const std::vector<std::size_t>& selected,
                 bool toArchiveFolder);

    // "Find File": the first entry of that name, or the message that it was not found.
    std::optional<std::size_t> findFile(app::AppContext& ctx, const std::string& name) const;
    // "Find Files(Pattern Match)": every entry whose name matches the pattern.
    std::vector<std::size_t> findFiles(const std::string& pattern) const;

    // Viewing an entry: it is unpacked without its path into TempFiles (TempDDS for a
    // texture) and its text given for .bin, .GeoPcDx (through the converter), .xml and
    // .proxyxml; other kinds give nothing.
    std::optional<std::string> viewEntry(app::AppContext& ctx, std::size_t index);

private:
    ZipArchive archive_;
};

}  // namespace ferrolund::archives
