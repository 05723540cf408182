#pragma once
// The screen model of frmNewZip, the zip manager: one archive (new, multi-part or
// opened), files and folders added to it, entries extracted from it, and the packaging
// run that zips a package folder. Adding rewrites the archive through ZipWriter, the old
// entries copied as they are stored, so the old archive stays whole until the new one is
// complete.

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "app/app_context.h"
#include "archives/zip_archive.h"

namespace ferrolund::archives {

// "name.zip" of a name typed with or without ".zip" (any case).
std::string WithZipExtension(const std::string& name);
// The part size of a number of megabytes typed as text: digits only, times 1,000,000;
// 0 for anything else.
std::uint64_t PartBytes(const std::string& megabytes);

class ZipManager {
public:
    int compressionLevel = 6;           // Slider1, 0 to 9
    bool fullPath = true;               // keep the stored folders when extracting
    std::string destinationFolder;      // where the last extract went
    std::string zipFileLabel;           // Label4 after Process

    bool isOpen() const { return archive_.isOpen(); }
    const ZipArchive& archive() const { return archive_; }
    // The part size new entries are written with: 0 for one file.
    std::uint64_t partSize() const { return partSize_; }

    // "New Archive" and "New Multi-Part Archive": an empty archive at `path` (".zip" added
    // when missing), written whole or in parts of `partSize` bytes, then opened.
    bool createArchive(app::AppContext& ctx, const std::string& path, std::uint64_t partSize);
    // "Open Archive": a plain archive or the last part of a split set.
    bool openArchive(app::AppContext& ctx, const std::string& path);
    void closeArchive();

    // "Add File(s)": each file under its own name.
    bool addFiles(app::AppContext& ctx, const std::vector<std::string>& files);
    // "Add Folder": the files below the folder (with its sub-folders), stored with their
    // paths relative to it; with a pattern only the names that match it.
    bool addFolder(app::AppContext& ctx, const std::string& folder, const std::string& pattern);
    // "Extract All", "Extract Selected", "Exract to Current Folder".
    bool extract(app::AppContext& ctx, bool selectedOnly, const std::vector<std::size_t>& selected,
                 bool toArchiveFolder);

    // "Process": the warning when parts are wanted without a size, the save dialog, then
    // the folder zipped whole or in parts into the chosen file.
    bool process(app::AppContext& ctx, const std::string& folder, bool multiple, const std::string& partMegabytes);

private:
    struct Addition {
        std::string source;  // a system path
        std::string stored;
    };
    // Writes the archive again with the old entries and the additions; the progress bar
    // follows, AbortFlag abandons the new archive and keeps the old one.
    bool rewrite(app::AppContext& ctx, const std::string& path, const std::vector<Addition>& additions, bool keepOld);
    static std::vector<Addition> FolderFiles(const std::string& folder, const std::string& pattern,
                                             const std::vector<std::string>& skip);

    ZipArchive archive_;
    std::uint64_t partSize_ = 0;
};

}  // namespace ferrolund::archives
