#include "tools/host_path.h"

#include <chrono>
#include <memory>
#include <mutex>
#include <system_error>
#include <unordered_map>
#include <vector>

#include "tools/codepage.h"

namespace ferrolund::tools {

namespace fs = std::filesystem;

namespace {

struct Folder {
    bool listed = false;
    // The folder's time stamp when it was listed, and whether that stamp was old enough
    // to tell a later change from the listing itself (stamps move in coarse ticks).
    fs::file_time_type stamp{};
    bool settled = false;
    // Names on disk (UTF-8) under their folded Windows-1252 form.
    std::unordered_map<std::string, std::vector<std::string>> names;
    // Folders below, by their name on disk; made as a path goes through them.
    std::unordered_map<std::string, std::unique_ptr<Folder>> children;
};

std::mutex gMutex;
Folder gRoot;  // the folder "/"

fs::file_time_type StampOf(const fs::path& folder) {
    std::error_code ec;
    const auto stamp = fs::last_write_time(folder, ec);
    return ec ? fs::file_time_type::min() : stamp;
}

void List(Folder& folder, const fs::path& path) {
    folder.names.clear();
    folder.stamp = StampOf(path);
    folder.settled = fs::file_time_type::clock::now() - folder.stamp > std::chrono::milliseconds(50);
    std::error_code ec;
    for (fs::directory_iterator it(path, ec), end; !ec && it != end; it.increment(ec)) {
        std::string onDisk = it->path().filename().string();
        folder.names[LowerCp1252(Cp1252FromUtf8(onDisk))].push_back(std::move(onDisk));
    }
    folder.listed = true;
}

std::vector<std::string_view> SplitElements(std::string_view path) {
    std::vector<std::string_view> parts;
    std::size_t start = 0;
    for (std::size_t i = 0; i <= path.size(); ++i) {
        if (i == path.size() || path[i] == '\\' || path[i] == '/') {
            if (i > start) parts.push_back(path.substr(start, i - start));
            start = i + 1;
        }
    }
    return parts;
}

// Walks remembered folders down a path; the caller holds the lock.
class Walk {
public:
    explicit Walk(bool mayList) : mayList_(mayList) { stack_.push_back(&gRoot); }

    // The name on disk of `element` in the current folder, or nothing. Entering it as a
    // folder is left to Enter().
    const std::string* Find(std::string_view element, const std::string& asWritten) {
        Folder* folder = stack_.back();
        if (folder == nullptr) return nullptr;
        if (!folder->listed) {
            if (!mayList_) return nullptr;
            List(*folder, path_);
        }
        const std::string key = LowerCp1252(element);
        auto it = folder->names.find(key);
        if (it == folder->names.end() && mayList_ && (!folder->settled || StampOf(path_) != folder->stamp)) {
            List(*folder, path_);
            it = folder->names.find(key);
        }
        if (it == folder->names.end()) return nullptr;
        for (const std::string& name : it->second) {
            if (name == asWritten) return &name;
        }
        return &it->second.front();
    }

    void Enter(const std::string& onDisk) {
        Folder* folder = stack_.back();
        path_ /= onDisk;
        if (folder == nullptr) {
            stack_.push_back(nullptr);
            return;
        }
        auto& child = folder->children[onDisk];
        if (!child) child = std::make_unique<Folder>();
        stack_.push_back(child.get());
    }

    void Leave() {
        path_ = path_.parent_path();
        if (stack_.size() > 1) stack_.pop_back();
    }

    // Leaves the remembered tree: the rest of the path is not looked up.
    void Abandon(const std::string& asWritten) {
        path_ /= asWritten;
        stack_.push_back(nullptr);
    }

    bool OnDisk() const { return stack_.back() != nullptr; }
    Folder* Current() const { return stack_.back(); }
    Folder* Parent() const { return stack_.size() > 1 ? stack_[stack_.size() - 2] : nullptr; }

private:
    bool mayList_;
    fs::path path_ = "/";
    std::vector<Folder*> stack_;
};

// Goes down the elements of `systemPath` (after those of the current folder when it is
// relative), giving back the path as found and as the caller wrote it.
template <typename OnElement>
void Traverse(Walk& walk, std::string_view systemPath, OnElement onElement) {
    const bool absolute = !systemPath.empty() && (systemPath.front() == '/' || systemPath.front() == '\\');
    if (!absolute) {
        std::error_code ec;
        const fs::path here = fs::current_path(ec);
        for (const auto& element : here.relative_path()) {
            const std::string name = element.string();
            const std::string* onDisk = walk.Find(Cp1252FromUtf8(name), name);
            if (onDisk != nullptr) {
                walk.Enter(*onDisk);
            } else {
                walk.Abandon(name);
            }
        }
    }
    for (std::string_view element : SplitElements(systemPath)) onElement(element);
}

}  // namespace

fs::path HostPath(std::string_view systemPath) {
    std::lock_guard lock(gMutex);
    Walk walk(true);
    const bool absolute = !systemPath.empty() && (systemPath.front() == '/' || systemPath.front() == '\\');
    fs::path result = absolute ? fs::path("/") : fs::path();
    Traverse(walk, systemPath, [&](std::string_view element) {
        const std::string asWritten = Utf8FromCp1252(element);
        if (element == ".") {
            result /= asWritten;
        } else if (element == "..") {
            result /= asWritten;
            walk.Leave();
        } else if (!walk.OnDisk()) {
            result /= asWritten;
        } else if (const std::string* onDisk = walk.Find(element, asWritten)) {
            result /= *onDisk;
            walk.Enter(*onDisk);
        } else {
            result /= asWritten;
            walk.Abandon(asWritten);
        }
    });
    return result;
}

std::string SystemPath(const fs::path& hostPath) { return Cp1252FromUtf8(hostPath.string()); }

void ForgetPath(std::string_view systemPath) {
    std::lock_guard lock(gMutex);
    Walk walk(false);
    std::string lastName;
    bool known = true;
    Traverse(walk, systemPath, [&](std::string_view element) {
        if (!known || element == ".") return;
        if (element == "..") {
            walk.Leave();
            return;
        }
        const std::string asWritten = Utf8FromCp1252(element);
        const std::string* onDisk = walk.Find(element, asWritten);
        lastName = onDisk != nullptr ? *onDisk : asWritten;
        if (onDisk == nullptr && walk.OnDisk()) {
            // Not in the listing: the listing itself is what must be read again.
            walk.Current()->listed = false;
            known = false;
            return;
        }
        walk.Enter(lastName);
    });
    if (!known) return;
    if (Folder* parent = walk.Parent()) {
        parent->listed = false;
        parent->names.clear();
        parent->children.erase(lastName);
    } else if (walk.Current() == &gRoot) {
        gRoot = Folder{};
    }
}

}  // namespace ferrolund::tools
