#pragma once
// The screen model of frmAssetsAP, "Build List of Assets in .AP files": the .ap files
// found under a folder, the entries of the chosen archive that pass the entry filter,
// and the asset list built from chosen blueprints inside the archive, read in memory
// without unpacking. The list is saved or appended to the asset index like the list of
// frmAssets.

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/app_context.h"
#include "archives/zip_archive.h"
#include "assets/asset_filter.h"
#include "assets/asset_row.h"
#include "base/run_error.h"

namespace ferrolund::assets {

inline constexpr const char* kDefaultEntryMask = "*.GeoPcDx";
inline constexpr const char* kApIndexSavedMessage = "Your AP-Index.csv file is in your Data folder";

struct ApEntryFilter {
    // "Rolling stock only": under RailVehicles, in an Engine, Tender, Freight or
    // Passenger folder, and free of the words that mark parts, scenery and the like.
    bool rollingStockOnly = false;
    // The entry filter box, matched against the entry's name without regard to case;
    // "*" or empty takes all.
    std::string mask = kDefaultEntryMask;
};

// Whether an entry (its stored name, backslashes) is shown.
bool ApEntryPasses(std::string_view stored, const ApEntryFilter& filter);

// An archive's entries that pass the filter, folders left out. `error` is set when the
// file cannot be read as an archive.
struct ApListing {
    std::string archive;
    std::vector<archives::ArchiveEntry> entries;
    base::Status error;
};
ApListing ListApEntries(const std::string& archivePath, const ApEntryFilter& filter);

// The list's rows of chosen entries (indices) of an open archive, read in memory. A
// blueprint (.bin) becomes a row as a loose file does, by `filter`; any other entry a row
// of Provider, Product and Path. The path an entry would have on disk (the archive's
// folder and its stored name) gives the Provider and Product. Rows are numbered on from
// `lastNumber`, which is left at the last number given. An entry that cannot be read, or
// whose path cannot be split, is named in `problems`; the rest go on. Stops between two
// entries when the abort flag is set.
std::vector<AssetRow> ApEntryRows(base::RunContext& ctx, const archives::ZipArchive& archive,
                                  const std::vector<std::size_t>& indices, const AssetFilter& filter, long& lastNumber,
                                  std::vector<std::string>& problems);

class ApAssetList {
public:
    ApEntryFilter filter;

    // "Find .ap files": the running number goes on from the last one of index.csv; the
    // archives under `folder` (a system path) are found by the folder walker. Those over
    // 2 gigabytes are set apart (overlength()).
    void findApFiles(app::AppContext& ctx, const std::string& folder);
    const std::vector<std::string>& apFiles() const { return apFiles_; }
    const std::vector<std::string>& overlength() const { return overlength_; }
    long lastNumber() const { return lastNumber_; }

    // Choosing an archive: it is opened and its entries that pass the filter listed. A
    // file that is no archive is reported and lists nothing; gives false then.
    bool chooseArchive(app::AppContext& ctx, const std::string& path);
    // Lists the open archive again, after the filter changed.
    void refreshEntries();
    const archives::ZipArchive& archive() const { return archive_; }
    const std::vector<archives::ArchiveEntry>& entries() const { return entries_; }

    // Selected entries (archive indices) go to the list by ApEntryRows, with the
    // rolling-stock choice of the filter and the name language of the settings, numbered
    // on from lastNumber(). Gives the number of rows added.
    std::size_t addEntries(app::AppContext& ctx, const std::vector<std::size_t>& indices,
                           std::vector<std::string>& problems);
    const std::vector<AssetRow>& rows() const { return rows_; }
    void clearRows() { rows_.clear(); }

    // "Save .ap index": the archives found, a line each as "<name>,<folder>" (a cell
    // holding a comma quoted), as AppRoot\Data\AP-Index.csv, then the message that says
    // where it is. False when it could not be written (reported).
    bool saveApIndex(app::AppContext& ctx) const;
    // "Append to your Index.csv file" with the rows of the list.
    bool appendToIndex(app::AppContext& ctx) const;

    // "Open in Editor": the entry is unpacked into AppRoot\TempFiles and made writable;
    // a GeoPcDx, TgPcDx, dcsv or .bin entry is converted to XML there. Gives the file to
    // show (the XML, or the entry itself for other kinds); nothing, after the message,
    // when no archive is open or the entry could not be unpacked.
    std::optional<std::string> openInEditor(app::AppContext& ctx, std::size_t index) const;

    // The entries of the open archive that would lie in `folder` (a path below the
    // simulator's Assets) unpacked below `intoRoot` at their place behind Assets, so that
    // an item of the list can be cloned from there. Gives the number of files unpacked;
    // 0, after the message, when no archive is open.
    long unpackFolder(app::AppContext& ctx, const std::string& folder, const std::string& intoRoot) const;

private:
    archives::ZipArchive archive_;
    std::vector<archives::ArchiveEntry> entries_;
    std::vector<std::string> apFiles_;
    std::vector<std::string> overlength_;
    std::vector<AssetRow> rows_;
    long lastNumber_ = 0;
};

}  // namespace ferrolund::assets
