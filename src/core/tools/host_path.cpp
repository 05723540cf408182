#include "tools/host_path.h"

#include <system_error>
#include <vector>

#include "tools/codepage.h"

namespace ferrolund::tools {

namespace fs = std::filesystem;

namespace {

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

// The entry of `folder` whose name equals `element` without regard to case, if any.
bool FindCaseBlind(const fs::path& folder, std::string_view element, fs::path& found) {
    std::error_code ec;
    for (fs::directory_iterator it(folder, ec), end; !ec && it != end; it.increment(ec)) {
        const std::string name = Cp1252FromUtf8(it->path().filename().string());
        if (EqualsIgnoreCase(name, element)) {
            found = it->path();
            return true;
        }
    }
    return false;
}

}  // namespace

fs::path HostPath(std::string_view systemPath) {
    fs::path current;
    if (!systemPath.empty() && (systemPath.front() == '/' || systemPath.front() == '\\')) {
        current = "/";
    }
    bool onDisk = true;
    for (std::string_view element : SplitElements(systemPath)) {
        const fs::path asWritten = Utf8FromCp1252(element);
        fs::path next = current.empty() ? asWritten : current / asWritten;
        std::error_code ec;
        if (onDisk && element != "." && element != ".." && !fs::exists(next, ec)) {
            fs::path match;
            if (FindCaseBlind(current.empty() ? fs::path(".") : current, element, match)) {
                next = current.empty() ? match.filename() : match;
            } else {
                onDisk = false;
            }
        }
        current = std::move(next);
    }
    return current;
}

std::string SystemPath(const fs::path& hostPath) { return Cp1252FromUtf8(hostPath.string()); }

void ForgetPath(std::string_view) {
    // Every look-up reads the disk afresh, so there is nothing remembered to drop.
}

}  // namespace ferrolund::tools
