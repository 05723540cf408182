#include "assets/ap_assets.h"

#include <filesystem>

#include "archives/extract.h"
#include "archives/extract_command.h"
#include "archives/overlength.h"
#include "assets/asset_filter.h"
#include "assets/asset_index.h"
#include "assets/asset_rows.h"
#include "services/report_table.h"
#include "services/scan_path.h"
#include "tools/codepage.h"
#include "tools/files.h"
#include "tools/host_path.h"
#include "tools/serz_convert.h"
#include "tools/text_search.h"

namespace ferrolund::assets {

namespace fs = std::filesystem;

namespace {

constexpr const char* kModule = "frmAssetsAP";

// Rolling stock lies under RailVehicles in one of these folders.
constexpr std::string_view kStockFolders[] = {"\\Engine\\", "\\Tender\\", "\\Freight\\", "\\Passenger\\"};

// Parts of a vehicle and other things that are no vehicle of their own.
constexpr std::string_view kPartWords[] = {
    "Interactive\\", "\\Textures\\", "Audio\\", "Particles\\", "PreLoad\\", "Couplings\\",
    "Digits",        "Canvas.",      "Decal",   "interior",    "Blueprint", "characters",
    "PassengerView", "Pivot",        "CoachInteriorLight",     "Passengers"};

// Beyond the asset list's words for what is no rolling stock (less "Texture", caught
// above only in a Textures folder): bogies and passenger views.
constexpr std::string_view kMoreNotStockWords[] = {"bogie", "passview"};

template <std::size_t N>
bool HasAny(std::string_view text, const std::string_view (&words)[N]) {
    for (std::string_view word : words)
        if (tools::InStr(text, word) != 0) return true;
    return false;
}

std::string Extension(const std::string& name) {
    const std::size_t dot = name.rfind('.');
    return dot == std::string::npos ? std::string() : tools::LowerCp1252(name.substr(dot + 1));
}

// Paths given by a person may use either separator.
std::string FolderOf(const std::string& path) {
    const std::size_t slash = path.find_last_of("\\/");
    return slash == std::string::npos ? std::string() : path.substr(0, slash);
}

// "<name>,<folder>" a line into AppRoot\<folder>\<file>, then the message.
bool SaveNameFolderList(app::AppContext& ctx, const std::string& folder, const std::string& file,
                        const std::vector<std::string>& paths, const char* message) {
    tools::CreatePath(ctx.appPath(folder));
    services::ReportTable table;
    for (const auto& path : paths) {
        const std::size_t slash = path.find_last_of("\\/");
        table.rows.push_back({slash == std::string::npos ? path : path.substr(slash + 1), FolderOf(path)});
    }
    if (base::Status failed = services::SaveReportTable(ctx.appPath(folder + "\\" + file), table)) {
        ctx.report(*failed, kModule);
        return false;
    }
    if (ctx.ui) ctx.ui->message(message, base::Icon::Information);
    return true;
}

}  // namespace

bool ApEntryPasses(std::string_view stored, const ApEntryFilter& filter) {
    const std::size_t slash = stored.rfind('\\');
    const std::string_view name = slash == std::string_view::npos ? stored : stored.substr(slash + 1);
    if (!filter.mask.empty() && filter.mask != "*" &&
        !tools::WildcardMatch(tools::UpperCp1252(filter.mask), tools::UpperCp1252(name))) {
        return false;
    }
    if (!filter.rollingStockOnly) return true;
    // Words that open with a separator match at the start of the name as well.
    const std::string path = "\\" + std::string(stored);
    if (tools::InStr(path, "RailVehicles") == 0 || !HasAny(path, kStockFolders)) return false;
    return !HasAny(path, kPartWords) && !HoldsNotRollingStockWord(path, false) && !HasAny(path, kMoreNotStockWords);
}

ApListing ListApEntries(const std::string& archivePath, const ApEntryFilter& filter) {
    ApListing listing;
    listing.archive = archivePath;
    archives::ZipArchive archive;
    listing.error = archive.open(archivePath);
    if (listing.error) return listing;
    for (const auto& entry : archive.entries())
        if (!entry.isFolder && ApEntryPasses(entry.stored, filter)) listing.entries.push_back(entry);
    return listing;
}

void ApAssetList::findApFiles(app::AppContext& ctx, const std::string& folder) {
    tools::CreatePath(IndexFolder(ctx));
    lastNumber_ = LastRunningNumber(ctx);
    apFiles_.clear();
    overlength_.clear();
    services::cScanPath scan(ctx.ui);
    scan.Folder = true;  // folders must match for the walk to go down into them
    scan.Filter("*.ap");
    scan.FileMatchEx = [&](const services::ScanDetails& details, const std::string& name, const std::string& at) {
        if (ctx.abortFlag) {
            scan.StopScan();
            return;
        }
        (details.size > archives::kMaxArchiveBytes ? overlength_ : apFiles_).push_back(at + name);
    };
    std::string root = folder;
    scan.StartScan(root, true, true, true, true);
}

bool ApAssetList::chooseArchive(app::AppContext& ctx, const std::string& path) {
    archive_.close();
    entries_.clear();
    if (base::Status failed = archive_.open(path)) {
        ctx.report(*failed, kModule);
        return false;
    }
    refreshEntries();
    return true;
}

void ApAssetList::refreshEntries() {
    entries_.clear();
    for (const auto& entry : archive_.entries())
        if (!entry.isFolder && ApEntryPasses(entry.stored, filter)) entries_.push_back(entry);
}

std::vector<AssetRow> ApEntryRows(base::RunContext& ctx, const archives::ZipArchive& archive,
                                  const std::vector<std::size_t>& indices, const AssetFilter& filter, long& lastNumber,
                                  std::vector<std::string>& problems) {
    std::vector<AssetRow> rows;
    const std::string folder = FolderOf(archive.path());
    for (const std::size_t index : indices) {
        if (ctx.ui) ctx.ui->pump();
        if (ctx.abortFlag) break;
        if (index >= archive.entries().size() || archive.entries()[index].isFolder) continue;
        const archives::ArchiveEntry& entry = archive.entries()[index];
        const std::string fullPath = folder + "\\" + entry.stored;
        bool invalid = false;
        const std::optional<BlueprintRef> ref = SplitAssetPath(fullPath, &invalid);
        if (!ref) {
            if (invalid) problems.push_back(InvalidPathMessage(fullPath));
            continue;
        }
        if (Extension(entry.name) != "bin") {
            rows.push_back(PlainRow(*ref));
            rows.back().index = std::to_string(++lastNumber);
            continue;
        }
        std::string bytes;
        bytes.reserve(static_cast<std::size_t>(entry.size));
        const base::Status read = archive.read(index, [&](const char* data, std::size_t length) -> base::Status {
            bytes.append(data, length);
            return {};
        });
        if (read) {
            problems.push_back(read->description);
            continue;
        }
        AssetRow row;
        std::string failure;
        switch (BuildBlueprintRow(bytes, fullPath, *ref, filter, row, &failure)) {
            case RowVerdict::Added:
                row.index = std::to_string(++lastNumber);
                rows.push_back(std::move(row));
                break;
            case RowVerdict::Counted:
                ++lastNumber;
                break;
            case RowVerdict::Unreadable:
                problems.push_back(fullPath + ": " + failure);
                break;
            case RowVerdict::Drop:
                break;
        }
    }
    return rows;
}

std::size_t ApAssetList::addEntries(app::AppContext& ctx, const std::vector<std::size_t>& indices,
                                    std::vector<std::string>& problems) {
    AssetFilter rowFilter;
    rowFilter.rollingStockOnly = filter.rollingStockOnly;
    if (!ctx.prefs.language.empty()) rowFilter.language = ctx.prefs.language;
    std::vector<AssetRow> added = ApEntryRows(ctx, archive_, indices, rowFilter, lastNumber_, problems);
    rows_.insert(rows_.end(), added.begin(), added.end());
    return added.size();
}

bool ApAssetList::saveApIndex(app::AppContext& ctx) const {
    return SaveNameFolderList(ctx, "Data", "AP-Index.csv", apFiles_, kApIndexSavedMessage);
}

bool ApAssetList::appendToIndex(app::AppContext& ctx) const {
    std::string backup;
    if (base::Status failed = AppendToIndex(ctx, rows_, backup)) {
        ctx.report(*failed, kModule);
        return false;
    }
    return true;
}

std::optional<std::string> ApAssetList::openInEditor(app::AppContext& ctx, std::size_t index) const {
    if (!archives::NeedOpenArchive(ctx, archive_.isOpen(), "Extract anything from it!")) return std::nullopt;
    if (index >= archive_.entries().size()) return std::nullopt;
    const archives::ArchiveEntry& entry = archive_.entries()[index];
    const std::string folder = ctx.appPath("TempFiles");
    tools::CreatePath(folder);
    const archives::ExtractOutcome out =
        archives::ExtractEntries(ctx, archive_, {index}, {.target = folder, .fullPaths = false, .showProgress = false});
    for (const auto& error : out.errors) ctx.report(error, kModule);
    if (out.written != 1) return std::nullopt;
    const std::string file = folder + "\\" + entry.name;
    std::error_code ec;
    fs::permissions(tools::HostPath(file), fs::perms::owner_read | fs::perms::owner_write, fs::perm_options::add, ec);
    const std::string ext = Extension(entry.name);
    if (ext != "bin" && ext != "geopcdx" && ext != "tgpcdx" && ext != "dcsv") return file;
    // The converter goes by the name: the entry is copied to <base>.bin first.
    const std::string base = file.substr(0, file.size() - ext.size());
    if (ext != "bin") {
        if (base::Status failed = tools::CopyFileReplacing(file, base + "bin")) {
            ctx.report(*failed, kModule);
            return std::nullopt;
        }
    }
    if (base::Status failed = tools::SerzConvert(ctx, base + "bin", base + "xml", tools::SerzDirection::ToXml)) {
        ctx.report(*failed, kModule);
        return std::nullopt;
    }
    return base + "xml";
}

long ApAssetList::unpackFolder(app::AppContext& ctx, const std::string& folder, const std::string& intoRoot) const {
    if (!archives::NeedOpenArchive(ctx, archive_.isOpen(), "Extract anything from it!")) return 0;
    const std::string archiveFolder = FolderOf(archive_.path());
    std::vector<std::size_t> picked;
    std::string relative;  // the archive's folder behind Assets
    for (const archives::ArchiveEntry& entry : archive_.entries()) {
        if (entry.isFolder) continue;
        const std::string fullPath = archiveFolder + "\\" + entry.stored;
        if (fullPath.size() <= folder.size() + 1 || fullPath[folder.size()] != '\\' ||
            !tools::EqualsIgnoreCase(std::string_view(fullPath).substr(0, folder.size()), folder))
            continue;
        const std::optional<BlueprintRef> ref = SplitAssetPath(fullPath);
        if (!ref) continue;
        const std::string behind = ref->provider + "\\" + ref->product + "\\" + ref->blueprintId;
        if (behind.size() < entry.stored.size()) continue;
        relative = behind.substr(0, behind.size() - entry.stored.size());
        if (!relative.empty() && relative.back() == '\\') relative.pop_back();
        picked.push_back(entry.index);
    }
    if (picked.empty()) return 0;
    const archives::ExtractOutcome out = archives::ExtractEntries(
        ctx, archive_, picked, {.target = intoRoot + "\\" + relative, .fullPaths = true, .showProgress = false});
    for (const auto& error : out.errors) ctx.report(error, kModule);
    return out.written;
}

}  // namespace ferrolund::assets
