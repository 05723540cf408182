#include "tools/host_path.h"

#include <algorithm>
#include <chrono>
#include <memory>
#include <mutex>
#include <system_error>
#include <unordered_map>
#include <vector>

#include "tools/codepage.h"
#include "tools/names.h"

namespace ferrolund::tools {

namespace fs = std::filesystem;

namespace {

struct Folder;

struct Entry {
    std::string onDisk;              // UTF-8
    std::unique_ptr<Folder> folder;  // what is remembered below it, made as paths go through
};

struct Folder {
    bool listed = false;
    // The folder's time stamp when it was listed, and whether that stamp was old enough
    // to tell a later change from the listing itself (stamps move in coarse ticks).
    fs::file_time_type stamp{};
    bool settled = false;
    // Entries under the key of their name (NameKey); usually one, several when names
    // differ only in case.
    std::unordered_map<std::string, std::vector<Entry>> names;
};

std::mutex gMutex;
Folder gRoot;  // the folder "/"

fs::file_time_type StampOf(const std::string& folder) {
    std::error_code ec;
    const auto stamp = fs::last_write_time(folder, ec);
    return ec ? fs::file_time_type::min() : stamp;
}

// Reads the folder's entries afresh; what is remembered below an entry that is still
// there is kept.
void List(Folder& folder, const std::string& path) {
    std::unordered_map<std::string, std::unique_ptr<Folder>> below;
    for (auto& [key, entries] : folder.names) {
        for (auto& entry : entries) {
            if (entry.folder) below.emplace(entry.onDisk, std::move(entry.folder));
        }
    }
    folder.names.clear();
    folder.stamp = StampOf(path);
    folder.settled = fs::file_time_type::clock::now() - folder.stamp > std::chrono::milliseconds(50);
    std::error_code ec;
    for (fs::directory_iterator it(path, ec), end; !ec && it != end; it.increment(ec)) {
        Entry entry{it->path().filename().string(), nullptr};
        if (auto old = below.find(entry.onDisk); old != below.end()) entry.folder = std::move(old->second);
        folder.names[NameKey(entry.onDisk)].push_back(std::move(entry));
    }
    folder.listed = true;
}

bool IsAscii(std::string_view text) {
    for (char c : text) {
        if (static_cast<unsigned char>(c) >= 0x80) return false;
    }
    return true;
}

// The ways an element of a system path may name a file on disk, in the order they are
// tried: its bytes as they stand when they are UTF-8, then its Windows-1252 reading in
// UTF-8. Plain ASCII has one reading.
struct Readings {
    explicit Readings(std::string_view element) {
        if (IsAscii(element)) {
            names[count++] = std::string(element);
            return;
        }
        if (IsValidUtf8(element)) names[count++] = std::string(element);
        names[count++] = Utf8FromCp1252(element);
    }
    // How a name that is not on disk yet is written there.
    const std::string& asWritten() const { return names[0]; }

    std::string names[2];
    int count = 0;
};

// Walks the remembered tree down a path; the caller holds the lock.
class Walk {
public:
    explicit Walk(bool mayList) : mayList_(mayList) { stack_.push_back({&gRoot, 1}); }

    // The entry that one of the readings names in the current folder, or null. An entry
    // spelt exactly as a reading wins over one that differs in case.
    Entry* Find(const Readings& readings) {
        Folder* folder = stack_.back().folder;
        if (folder == nullptr) return nullptr;
        if (!folder->listed) {
            if (!mayList_) return nullptr;
            List(*folder, path_);
        }
        Entry* found = Lookup(*folder, readings);
        if (found == nullptr && mayList_ && (!folder->settled || StampOf(path_) != folder->stamp)) {
            List(*folder, path_);
            found = Lookup(*folder, readings);
        }
        return found;
    }

    void Enter(Entry& entry) {
        Append(entry.onDisk);
        if (!entry.folder) entry.folder = std::make_unique<Folder>();
        stack_.push_back({entry.folder.get(), path_.size()});
    }

    // Goes on past the remembered tree: the rest of the path is not looked up.
    void Abandon(const std::string& asWritten) {
        Append(asWritten);
        stack_.push_back({nullptr, path_.size()});
    }

    void Leave() {
        if (stack_.size() > 1) stack_.pop_back();
        path_.resize(stack_.back().pathLength);
    }

    bool OnDisk() const { return stack_.back().folder != nullptr; }
    Folder* Current() const { return stack_.back().folder; }
    const std::string& Path() const { return path_; }

private:
    struct Level {
        Folder* folder;
        std::size_t pathLength;
    };
    void Append(const std::string& name) {
        if (path_.back() != '/') path_ += '/';
        path_ += name;
    }

    static Entry* Lookup(Folder& folder, const Readings& readings) {
        for (int r = 0; r < readings.count; ++r) {
            auto it = folder.names.find(NameKey(readings.names[r]));
            if (it == folder.names.end()) continue;
            for (Entry& entry : it->second) {
                for (int k = 0; k < readings.count; ++k) {
                    if (entry.onDisk == readings.names[k]) return &entry;
                }
            }
            return &it->second.front();
        }
        return nullptr;
    }

    bool mayList_;
    std::string path_ = "/";
    std::vector<Level> stack_;
};

bool IsAbsolute(std::string_view path) { return !path.empty() && (path.front() == '/' || path.front() == '\\'); }

// Calls `onElement(element)` for every element of the path, after walking to the
// current folder when the path is relative.
template <typename OnElement>
void Traverse(Walk& walk, std::string_view systemPath, OnElement onElement) {
    if (!IsAbsolute(systemPath)) {
        std::error_code ec;
        for (const auto& element : fs::current_path(ec).relative_path()) {
            const std::string name = element.string();
            if (Entry* entry = walk.Find(Readings(name))) {
                walk.Enter(*entry);
            } else {
                walk.Abandon(name);
            }
        }
    }
    std::size_t start = 0;
    for (std::size_t i = 0; i <= systemPath.size(); ++i) {
        if (i == systemPath.size() || systemPath[i] == '\\' || systemPath[i] == '/') {
            if (i > start) onElement(systemPath.substr(start, i - start));
            start = i + 1;
        }
    }
}

}  // namespace

fs::path HostPath(std::string_view systemPath) {
    std::lock_guard lock(gMutex);
    Walk walk(true);
    std::string result = IsAbsolute(systemPath) ? "/" : "";
    auto append = [&](const std::string& name) {
        if (!result.empty() && result.back() != '/') result += '/';
        result += name;
    };
    Traverse(walk, systemPath, [&](std::string_view element) {
        if (element == "." || element == "..") {
            append(std::string(element));
            if (element == "..") walk.Leave();
            return;
        }
        const Readings readings(element);
        if (Entry* entry = walk.OnDisk() ? walk.Find(readings) : nullptr) {
            append(entry->onDisk);
            walk.Enter(*entry);
        } else {
            append(readings.asWritten());
            walk.Abandon(readings.asWritten());
        }
    });
    return fs::path(std::move(result));
}

std::string SystemPath(const fs::path& hostPath) { return hostPath.string(); }

// The program itself changed something at this path. The remembered listing of its
// folder is corrected in place (a new name added, a removed one dropped, what lay below a
// changed folder forgotten) and the folder's new time stamp is taken as seen, so that the
// next look-up need not read the folder again: a folder that fills with thousands of files
// one after another is never listed more than once.
void ForgetPath(std::string_view systemPath) {
    std::lock_guard lock(gMutex);
    Walk walk(false);
    std::vector<std::string_view> elements;
    Traverse(walk, systemPath, [&](std::string_view element) { elements.push_back(element); });
    if (elements.empty()) {
        gRoot = Folder{};
        return;
    }
    for (std::size_t i = 0; i < elements.size(); ++i) {
        const std::string_view element = elements[i];
        if (element == ".") continue;
        if (element == "..") {
            walk.Leave();
            continue;
        }
        Folder* parent = walk.Current();
        if (parent == nullptr || !parent->listed) return;  // nothing remembered here
        const Readings readings(element);
        Entry* entry = walk.Find(readings);
        const bool last = i + 1 == elements.size();
        if (entry != nullptr && !last) {
            walk.Enter(*entry);
            continue;
        }
        std::error_code ec;
        const std::string parentPath = walk.Path();
        const std::string onDisk = entry ? entry->onDisk : readings.asWritten();
        const bool exists = fs::exists(fs::symlink_status(parentPath + (parentPath.back() == '/' ? "" : "/") + onDisk, ec));
        const std::string key = NameKey(onDisk);
        if (entry == nullptr) {
            if (exists) parent->names[key].push_back(Entry{onDisk, nullptr});
        } else if (!exists) {
            auto& same = parent->names[key];
            same.erase(std::remove_if(same.begin(), same.end(), [&](const Entry& e) { return e.onDisk == onDisk; }),
                       same.end());
            if (same.empty()) parent->names.erase(key);
        } else {
            entry->folder.reset();
        }
        parent->stamp = StampOf(parentPath);
        parent->settled = true;
        return;
    }
}

}  // namespace ferrolund::tools
