#include "assets/asset_scan.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <mutex>
#include <thread>

#include "assets/asset_rows.h"
#include "assets/blueprint.h"
#include "services/scan_path.h"
#include "tools/codepage.h"
#include "tools/host_path.h"

namespace ferrolund::assets {

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

// The longest the caller's thread goes without looking at the abort flag while it waits
// for the readers, and the most files read ahead of the rows handed over.
constexpr auto kWaitStep = std::chrono::milliseconds(20);
constexpr std::size_t kReadAhead = 1024;
// Rows wait at most this long before they are handed over, however few.
constexpr auto kBatchAge = std::chrono::milliseconds(100);

// One file of the walk, in the list's order, with what became of it.
struct Slot {
    enum class Work { Plain, Blueprint } work = Work::Plain;
    std::string fullPath;
    fs::path hostPath;
    BlueprintRef ref;
    bool invalid = false;  // a path that cannot be split: a message, no row

    std::atomic<bool> done{false};
    RowVerdict verdict = RowVerdict::Drop;
    AssetRow row;
    std::string problem;
};

bool ReadWhole(const fs::path& path, std::string& bytes) {
    std::ifstream in(path, std::ios::binary);
    if (!in) return false;
    in.seekg(0, std::ios::end);
    const std::streamoff size = in.tellg();
    if (size < 0) return false;
    bytes.resize(static_cast<std::size_t>(size));
    in.seekg(0, std::ios::beg);
    if (size > 0 && !in.read(bytes.data(), size)) return false;
    return true;
}

void ReadBlueprint(Slot& slot, const AssetFilter& filter) {
    try {
        std::string bytes;
        if (!ReadWhole(slot.hostPath, bytes)) {
            slot.verdict = RowVerdict::Unreadable;
            slot.problem = "the file could not be read";
            return;
        }
        slot.verdict = BuildBlueprintRow(bytes, slot.fullPath, slot.ref, filter, slot.row, &slot.problem);
    } catch (const std::exception& e) {
        slot.verdict = RowVerdict::Unreadable;
        slot.problem = e.what();
    }
}

class AssetWalk {
public:
    AssetWalk(base::RunContext& ctx, const ScanOptions& options, const RowBatchHandler& onRows)
        : ctx_(ctx), options_(options), onRows_(onRows) {
        filter_ = options.filter;
        if (filter_.quickDrive) {
            filter_.rollingStockOnly = false;
            filter_.excludePreLoad = false;
        }
        totals_.lastIndex = options.firstIndex;
    }
    ~AssetWalk() {
        abandon_ = true;
        StopWorkers();
    }
    AssetWalk(const AssetWalk&) = delete;
    AssetWalk& operator=(const AssetWalk&) = delete;

    ScanTotals Run();

private:
    void StartWorkers();
    void StopWorkers();
    void Worker();
    void OnFile(const std::string& name, const std::string& folder);
    Slot* NewSlot(const std::string& fullPath, const std::string& relative);
    // Hands over finished slots in order; with `waitFor`, waits until at most that many
    // remain unfinished (or the walk is aborted).
    void Drain(std::size_t waitFor);
    void Take(Slot& slot);
    void Flush(bool force);
    bool Aborted();

    base::RunContext& ctx_;
    const ScanOptions& options_;
    const RowBatchHandler& onRows_;
    AssetFilter filter_;
    ScanTotals totals_;
    services::cScanPath walker_{nullptr};
    std::string start_;
    fs::path hostStart_;

    std::deque<std::unique_ptr<Slot>> window_;  // the caller's, in list order
    std::vector<AssetRow> batch_;
    Clock::time_point lastFlush_ = Clock::now();
    Clock::time_point lastAbortCheck_ = Clock::now();
    Clock::time_point lastPump_{};  // the first check lets events through at once

    std::mutex mutex_;
    std::condition_variable work_;
    std::condition_variable finished_;
    std::deque<Slot*> todo_;
    bool closing_ = false;
    std::atomic<bool> abandon_{false};
    std::vector<std::thread> workers_;
};

bool AssetWalk::Aborted() {
    const auto now = Clock::now();
    if (now - lastPump_ >= std::chrono::milliseconds(25)) {
        lastPump_ = now;
        if (ctx_.ui) ctx_.ui->pump();
    }
    const double gap = std::chrono::duration<double>(Clock::now() - lastAbortCheck_).count();
    totals_.longestAbortGapSeconds = std::max(totals_.longestAbortGapSeconds, gap);
    lastAbortCheck_ = Clock::now();
    if (ctx_.abortFlag && !totals_.aborted) {
        totals_.aborted = true;
        walker_.StopScan();
    }
    return totals_.aborted;
}

void AssetWalk::StartWorkers() {
    unsigned count = options_.workers;
    if (count == 0) count = std::clamp(std::thread::hardware_concurrency(), 1u, 8u);
    for (unsigned i = 0; i < count; ++i) {
        try {
            workers_.emplace_back([this] { Worker(); });
        } catch (const std::exception&) {
            break;  // fewer threads; with none the caller reads the files itself
        }
    }
}

void AssetWalk::StopWorkers() {
    {
        std::lock_guard lock(mutex_);
        closing_ = true;
    }
    work_.notify_all();
    for (std::thread& worker : workers_) worker.join();
    workers_.clear();
}

void AssetWalk::Worker() {
    while (true) {
        Slot* slot = nullptr;
        {
            std::unique_lock lock(mutex_);
            work_.wait(lock, [this] { return closing_ || !todo_.empty(); });
            if (todo_.empty() || abandon_) return;
            slot = todo_.front();
            todo_.pop_front();
        }
        ReadBlueprint(*slot, filter_);
        {
            std::lock_guard lock(mutex_);
            slot->done.store(true, std::memory_order_release);
        }
        finished_.notify_one();
    }
}

Slot* AssetWalk::NewSlot(const std::string& fullPath, const std::string& relative) {
    auto slot = std::make_unique<Slot>();
    slot->fullPath = fullPath;
    std::string hostRelative = relative;
    std::replace(hostRelative.begin(), hostRelative.end(), '\\', '/');
    slot->hostPath = hostStart_ / hostRelative;
    window_.push_back(std::move(slot));
    return window_.back().get();
}

void AssetWalk::OnFile(const std::string& name, const std::string& folder) {
    if (Aborted()) return;
    const services::FindRecord* record = walker_.WFDPointer();
    const std::uint64_t size = record ? record->size : 0;
    if (options_.zeroLength && size != 0) return;
    ++totals_.files;
    const std::string fullPath = folder + name;
    const bool keep = filter_.quickDrive ? KeepQuickDrivePath(fullPath, name, size, filter_)
                                         : KeepListedPath(fullPath, name, filter_);
    if (!keep) return;

    const bool blueprint = options_.readBlueprints && name.size() >= 4 &&
                           tools::EqualsIgnoreCase(std::string_view(name).substr(name.size() - 4), ".bin");
    bool invalid = false;
    const auto ref = SplitAssetPath(fullPath, &invalid);
    if (blueprint && !ref && !invalid) return;  // neither under Assets nor under Content

    Slot* slot = NewSlot(fullPath, fullPath.substr(std::min(start_.size(), fullPath.size())));
    slot->invalid = invalid;
    if (ref) slot->ref = *ref;
    if (blueprint && ref) {
        slot->work = Slot::Work::Blueprint;
        if (workers_.empty()) {
            ReadBlueprint(*slot, filter_);
            slot->done = true;
        } else {
            {
                std::lock_guard lock(mutex_);
                todo_.push_back(slot);
            }
            work_.notify_one();
        }
    } else {
        slot->work = Slot::Work::Plain;
        slot->done = true;
    }
    Drain(kReadAhead);
}

void AssetWalk::Take(Slot& slot) {
    if (slot.invalid) {
        // The plain branch numbers the file before it finds the path cannot be split.
        if (slot.work == Slot::Work::Plain) ++totals_.lastIndex;
        totals_.problems.push_back({slot.fullPath, InvalidPathMessage(slot.fullPath)});
        return;
    }
    if (slot.work == Slot::Work::Plain) {
        ++totals_.lastIndex;
        batch_.push_back(PlainRow(slot.ref));
    } else {
        ++totals_.read;
        switch (slot.verdict) {
            case RowVerdict::Drop: return;
            case RowVerdict::Unreadable: totals_.problems.push_back({slot.fullPath, slot.problem}); return;
            case RowVerdict::Counted: ++totals_.lastIndex; return;
            case RowVerdict::Added:
                ++totals_.lastIndex;
                batch_.push_back(std::move(slot.row));
                break;
        }
    }
    batch_.back().index = std::to_string(totals_.lastIndex);
    Flush(false);
}

void AssetWalk::Flush(bool force) {
    if (batch_.empty()) return;
    if (!force && batch_.size() < options_.batchRows && Clock::now() - lastFlush_ < kBatchAge) return;
    totals_.rows += static_cast<long>(batch_.size());
    if (onRows_) onRows_(batch_);
    batch_.clear();
    lastFlush_ = Clock::now();
    if (ctx_.ui) ctx_.ui->progressCount(static_cast<std::size_t>(totals_.read), static_cast<std::size_t>(totals_.files), "files");
}

void AssetWalk::Drain(std::size_t waitFor) {
    while (true) {
        while (!window_.empty() && window_.front()->done.load(std::memory_order_acquire)) {
            Take(*window_.front());
            window_.pop_front();
        }
        if (window_.size() <= waitFor || Aborted()) return;
        std::unique_lock lock(mutex_);
        finished_.wait_for(lock, kWaitStep, [this] { return window_.front()->done.load(std::memory_order_acquire); });
    }
}

ScanTotals AssetWalk::Run() {
    const auto began = Clock::now();
    start_ = options_.startFolder;
    while (start_.size() > 1 && (start_.back() == '\\' || start_.back() == '/')) start_.pop_back();
    start_ += '\\';
    hostStart_ = tools::HostPath(start_);

    walker_.Folder = true;  // to walk into the sub-folders
    walker_.Filter(options_.zeroLength ? std::string("*.*") : options_.fileFilter);
    if (options_.zeroLength) walker_.MaximumSize = 1;
    walker_.FileMatch = [this](const std::string& name, const std::string& folder) { OnFile(name, folder); };
    walker_.DirMatch = [this](const std::string&, const std::string&) { Aborted(); };
    walker_.DirFailed = [this](const std::string& folder) {
        totals_.problems.push_back({folder, "the folder could not be read"});
    };

    StartWorkers();
    std::string path = start_;
    walker_.StartScan(path, true, true, true, false);
    Drain(0);
    if (totals_.aborted) abandon_ = true;
    StopWorkers();
    if (totals_.aborted) {
        // Rows read in order before the stop are kept; the rest is let go.
        while (!window_.empty() && window_.front()->done.load()) {
            Take(*window_.front());
            window_.pop_front();
        }
    }
    Flush(true);
    totals_.seconds = std::chrono::duration<double>(Clock::now() - began).count();
    return totals_;
}

}  // namespace

ScanTotals ScanAssets(base::RunContext& ctx, const ScanOptions& options, const RowBatchHandler& onRows) {
    try {
        AssetWalk walk(ctx, options, onRows);
        return walk.Run();
    } catch (const std::exception& e) {
        ScanTotals totals;
        totals.problems.push_back({options.startFolder, e.what()});
        return totals;
    }
}

}  // namespace ferrolund::assets
