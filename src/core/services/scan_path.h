#pragma once
// cScanPath: the one way the program walks a folder tree. A screen makes a scanner, sets
// what it wants, starts it, and gets an event for every matching file or folder while
// the window stays alive (events are let through every tenth entry). There is no result
// list: what a scan finds exists only in the handlers. A scanner serves one scan.

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/ui.h"

namespace ferrolund::services {

// Attribute bits of an entry, as the game's platform numbers them. On this disk an
// entry with none of the others is normal, one that is not writable is read-only, and
// a dot name is hidden; archive, compressed and system never occur.
inline constexpr std::uint32_t kAttrReadOnly = 0x1;
inline constexpr std::uint32_t kAttrHidden = 0x2;
inline constexpr std::uint32_t kAttrSystem = 0x4;
inline constexpr std::uint32_t kAttrDirectory = 0x10;
inline constexpr std::uint32_t kAttrArchive = 0x20;
inline constexpr std::uint32_t kAttrNormal = 0x80;
inline constexpr std::uint32_t kAttrCompressed = 0x800;

// The process-wide cap: while set, a walk stops once more than kScanCap entries of one
// folder have been looked at. The "Find all" commands set it around their scans.
extern bool ScanCapOn;
inline constexpr long kScanCap = 60000;

using ScanTime = std::chrono::system_clock::time_point;

// The raw directory entry, readable through WFDPointer() during an event.
struct FindRecord {
    std::uint32_t attributes = 0;
    ScanTime creationTime;
    ScanTime lastAccessTime;
    ScanTime lastWriteTime;
    std::uint64_t size = 0;
    std::string name;  // Windows-1252
};

// What the detailed events carry: the three times as "yyyy-mm-dd hh:mm" (as stored,
// no change of time zone), the attributes and, for files, the size.
struct ScanDetails {
    std::string creationTime;
    std::string lastAccessTime;
    std::string lastWriteTime;
    std::uint32_t attributes = 0;
    std::uint64_t size = 0;
};

class cScanPath {
public:
    // Events are let through `ui` every tenth entry; it may be null.
    explicit cScanPath(base::Ui* ui = nullptr) : ui_(ui) {}

    // Which attributes may match: an entry passes only if every attribute it has is
    // allowed here.
    bool Archive = false;
    bool Compressed = false;
    bool Folder = false;
    bool Hidden = false;
    bool Normal = true;
    bool ReadOnly = true;
    bool System = false;
    // The time a date test uses: 0 last write, 1 creation, 2 last access.
    int DateType = 0;
    std::optional<ScanTime> FromDate;
    std::optional<ScanTime> ToDate;
    // Bounds of the size test in bytes; below 1 is no bound. The test reads the low
    // 32 bits of a size as a signed number, as the platform did.
    std::int32_t MinimumSize = 0;
    std::int32_t MaximumSize = 0;

    // Names that may match: "*.*" or empty for all; otherwise extensions or, with
    // wildcards, masks, separated by ';'. Stored trimmed; read back without a final ';'.
    void Filter(std::string_view filter);
    std::string Filter() const;

    // Folders and files that produced events in the last scan.
    long DirCount() const { return dirCount_; }
    long FileCount() const { return fileCount_; }
    // The entry of the event being raised; null outside events.
    const FindRecord* WFDPointer() const { return current_; }

    // Name, and folder path with its trailing backslash.
    std::function<void(const std::string& name, const std::string& folder)> DirMatch;
    std::function<void(const std::string& name, const std::string& folder)> FileMatch;
    std::function<void(const ScanDetails& details, const std::string& name, const std::string& folder)> DirMatchEx;
    std::function<void(const ScanDetails& details, const std::string& name, const std::string& folder)> FileMatchEx;
    // A folder that could not be listed (gone, or not readable), with its trailing
    // backslash; the walk carries on as it always does without it.
    std::function<void(const std::string& folder)> DirFailed;

    // Runs the scan to its end. A backslash is added to the caller's `path` if it has
    // none. The queue walk goes breadth first in the folders' own order; the sorted walk
    // gives each folder's files, then its folders, by name, and goes depth first. A
    // folder that cannot be listed ends a queue walk; a missing path gives no events.
    void StartScan(std::string& path, bool recurse, bool sorted, bool useWildcards, bool wantDetails);
    // Ends the walk at the next tenth entry or the next folder, whichever comes first.
    void StopScan() { stop_ = true; }

private:
    bool Passes(const FindRecord& record) const;
    bool LookedAt(long& count);
    void Raise(const FindRecord& record, const std::string& folder);
    void QueueWalk(const std::string& path);
    void SortedWalk(const std::string& folder, const std::string& hostFolder);

    base::Ui* ui_;
    std::string filter_;
    std::vector<std::string> masks_;
    bool recurse_ = false;
    bool wildcards_ = false;
    bool details_ = false;
    bool stop_ = false;
    long dirCount_ = 0;
    long fileCount_ = 0;
    const FindRecord* current_ = nullptr;
};

}  // namespace ferrolund::services
