#include "services/scan_path.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <ctime>
#include <deque>
#include <filesystem>
#include <system_error>
#include <vector>

#include "tools/codepage.h"
#include "tools/host_path.h"
#include "tools/text_search.h"

namespace ferrolund::services {

bool ScanCapOn = false;

namespace fs = std::filesystem;

namespace {

ScanTime TimeOf(const struct statx_timestamp& t) {
    return ScanTime(std::chrono::duration_cast<ScanTime::duration>(std::chrono::seconds(t.tv_sec) +
                                                                   std::chrono::nanoseconds(t.tv_nsec)));
}

// The find record of one entry; false when it vanished before it could be read.
bool ReadRecord(const fs::path& hostPath, FindRecord& record) {
    struct statx sx {};
    if (::statx(AT_FDCWD, hostPath.c_str(), 0, STATX_BASIC_STATS | STATX_BTIME, &sx) != 0 &&
        ::statx(AT_FDCWD, hostPath.c_str(), AT_SYMLINK_NOFOLLOW, STATX_BASIC_STATS | STATX_BTIME, &sx) != 0) {
        return false;
    }
    const std::string onDisk = hostPath.filename().string();
    record.name = onDisk;
    record.attributes = 0;
    if (S_ISDIR(sx.stx_mode)) record.attributes |= kAttrDirectory;
    if (!onDisk.empty() && onDisk.front() == '.') record.attributes |= kAttrHidden;
    if ((sx.stx_mode & S_IWUSR) == 0) record.attributes |= kAttrReadOnly;
    if (record.attributes == 0) record.attributes = kAttrNormal;
    record.size = S_ISDIR(sx.stx_mode) ? 0 : sx.stx_size;
    record.lastWriteTime = TimeOf(sx.stx_mtime);
    record.lastAccessTime = TimeOf(sx.stx_atime);
    record.creationTime = (sx.stx_mask & STATX_BTIME) ? TimeOf(sx.stx_btime) : TimeOf(sx.stx_ctime);
    return true;
}

std::string TimeText(ScanTime time) {
    const std::time_t seconds = std::chrono::system_clock::to_time_t(time);
    std::tm parts{};
    gmtime_r(&seconds, &parts);
    char buffer[32];
    std::strftime(buffer, sizeof buffer, "%Y-%m-%d %H:%M", &parts);
    return buffer;
}

bool IsFolder(const FindRecord& record) { return (record.attributes & kAttrDirectory) != 0; }

}  // namespace

void cScanPath::Filter(std::string_view filter) { filter_ = std::string(tools::TrimBlanks(filter)); }

std::string cScanPath::Filter() const {
    if (!filter_.empty() && filter_.back() == ';') return filter_.substr(0, filter_.size() - 1);
    return filter_;
}

bool cScanPath::Passes(const FindRecord& record) const {
    const bool folder = IsFolder(record);
    if (filter_ != "*.*" && !folder) {
        const std::string name = tools::UpperCp1252(record.name);
        if (wildcards_) {
            if (std::none_of(masks_.begin(), masks_.end(), [&](const std::string& mask) { return tools::WildcardMatch(mask, name); })) {
                return false;
            }
        } else {
            const auto point = name.rfind('.');
            if (point == std::string::npos) return false;
            if (tools::InStr(filter_, name.substr(point + 1) + ";", tools::CaseRule::Exact) == 0) return false;
        }
    }
    const std::pair<std::uint32_t, bool> allowed[] = {
        {kAttrArchive, Archive}, {kAttrCompressed, Compressed}, {kAttrDirectory, Folder}, {kAttrHidden, Hidden},
        {kAttrNormal, Normal},   {kAttrReadOnly, ReadOnly},     {kAttrSystem, System},
    };
    for (const auto& [bit, allow] : allowed) {
        if ((record.attributes & bit) != 0 && !allow) return false;
    }
    if (!folder) {
        const auto low = static_cast<std::int32_t>(static_cast<std::uint32_t>(record.size & 0xFFFFFFFF));
        if (MinimumSize >= 1 && low < MinimumSize) return false;
        if (MaximumSize >= 1 && low > MaximumSize) return false;
    }
    if (FromDate || ToDate) {
        const ScanTime time = DateType == 1   ? record.creationTime
                              : DateType == 2 ? record.lastAccessTime
                                              : record.lastWriteTime;
        if (FromDate && time < *FromDate) return false;
        if (ToDate && time > *ToDate) return false;
    }
    return true;
}

// Counts one entry of the current folder; lets events through every tenth. True when
// the folder's loop must be left.
bool cScanPath::LookedAt(long& count) {
    ++count;
    if (ScanCapOn && count > kScanCap) stop_ = true;
    if (count % 10 != 0) return false;
    if (ui_ != nullptr) ui_->pump();
    return stop_;
}

void cScanPath::Raise(const FindRecord& record, const std::string& folder) {
    current_ = &record;
    const bool isFolder = IsFolder(record);
    if (details_) {
        const ScanDetails details{TimeText(record.creationTime), TimeText(record.lastAccessTime),
                                  TimeText(record.lastWriteTime), record.attributes, record.size};
        const auto& handler = isFolder ? DirMatchEx : FileMatchEx;
        if (handler) handler(details, record.name, folder);
    } else {
        const auto& handler = isFolder ? DirMatch : FileMatch;
        if (handler) handler(record.name, folder);
    }
    current_ = nullptr;
}

void cScanPath::StartScan(std::string& path, bool recurse, bool sorted, bool useWildcards, bool wantDetails) {
    if (path.empty() || path.back() != '\\') path += '\\';
    dirCount_ = 0;
    fileCount_ = 0;
    recurse_ = recurse;
    wildcards_ = useWildcards;
    details_ = wantDetails;

    masks_.clear();
    if (filter_.empty()) filter_ = "*.*";
    if (filter_ == "*.*") {
        masks_.push_back(filter_);
    } else {
        filter_ = tools::UpperCp1252(filter_) + ";";
        std::string_view rest(filter_.data(), filter_.size() - 1);
        while (true) {
            const auto split = rest.find(';');
            masks_.emplace_back(rest.substr(0, split));
            if (split == std::string_view::npos) break;
            rest.remove_prefix(split + 1);
        }
    }
    stop_ = false;

    if (sorted) {
        SortedWalk(path, tools::HostPath(path).string());
    } else {
        QueueWalk(path);
    }
}

void cScanPath::QueueWalk(const std::string& path) {
    std::deque<std::pair<std::string, fs::path>> queue;
    queue.emplace_back(path, tools::HostPath(path));
    while (!stop_ && !queue.empty()) {
        const auto [folder, hostFolder] = std::move(queue.front());
        queue.pop_front();
        std::error_code ec;
        fs::directory_iterator it(hostFolder, ec);
        if (ec) {
            if (DirFailed) DirFailed(folder);
            return;  // the walk ends here, the rest of the queue unvisited
        }
        long count = 0;
        for (fs::directory_iterator end; it != end; it.increment(ec)) {
            FindRecord record;
            if (ReadRecord(it->path(), record) && Passes(record)) {
                if (IsFolder(record)) {
                    if (recurse_) queue.emplace_back(folder + record.name + "\\", it->path());
                    ++dirCount_;
                } else {
                    ++fileCount_;
                }
                Raise(record, folder);
            }
            if (LookedAt(count)) break;
        }
    }
}

void cScanPath::SortedWalk(const std::string& folder, const std::string& hostFolder) {
    struct Found {
        std::string key;  // '0' for a file, '1' for a folder, then the name
        FindRecord record;
        fs::path host;
    };
    std::vector<Found> found;
    std::error_code ec;
    fs::directory_iterator it(hostFolder, ec);
    if (ec) {
        if (DirFailed) DirFailed(folder);
        return;
    }
    long count = 0;
    for (fs::directory_iterator end; it != end; it.increment(ec)) {
        Found entry;
        if (ReadRecord(it->path(), entry.record) && Passes(entry.record)) {
            entry.key = (IsFolder(entry.record) ? "1" : "0") + entry.record.name;
            entry.host = it->path();
            found.push_back(std::move(entry));
        }
        if (LookedAt(count)) break;
    }
    std::sort(found.begin(), found.end(), [](const Found& a, const Found& b) {
        const std::string fa = tools::LowerCp1252(a.key);
        const std::string fb = tools::LowerCp1252(b.key);
        return fa != fb ? fa < fb : a.key < b.key;
    });
    for (Found& entry : found) {
        if (stop_) return;
        if (details_) ReadRecord(entry.host, entry.record);  // looked up anew for its details
        if (IsFolder(entry.record)) {
            Raise(entry.record, folder);
            if (recurse_) {
                ++dirCount_;
                SortedWalk(folder + entry.record.name + "\\", entry.host.string());
            }
        } else {
            ++fileCount_;
            Raise(entry.record, folder);
        }
    }
}

}  // namespace ferrolund::services
