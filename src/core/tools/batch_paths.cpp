#include <algorithm>
#include <filesystem>

#include "tools/batch_run.h"
#include "tools/codepage.h"
#include "tools/host_path.h"
#include "tools/text_search.h"

namespace ferrolund::tools::batch {

namespace fs = std::filesystem;

namespace {

bool IsAbsolute(std::string_view path) {
    return !path.empty() && (path[0] == '\\' || path[0] == '/' || (path.size() > 1 && path[1] == ':'));
}

}  // namespace

std::string Resolve(const Run& run, std::string_view path) {
    std::string result = IsAbsolute(path) || run.folder.empty() ? std::string(path) : run.folder + "\\" + std::string(path);
    // "folder\." and "folder\" name the folder itself.
    while (result.size() > 1 && (result.ends_with("\\.") || result.back() == '\\' || result.back() == '/')) {
        result.resize(result.size() - (result.back() == '.' ? 2 : 1));
    }
    return result;
}

bool HasWildcards(std::string_view text) { return text.find_first_of("*?") != std::string_view::npos; }

bool MatchCaseBlind(std::string_view mask, std::string_view name) {
    // "*.*" means every name, with or without a point, as on the console.
    if (mask == "*.*" || mask == "*") return true;
    return WildcardMatch(UpperCp1252(mask), UpperCp1252(name));
}

std::vector<DiskEntry> ListFolder(const std::string& folder) {
    std::vector<DiskEntry> entries;
    std::error_code ec;
    for (fs::directory_iterator it(HostPath(folder), ec), end; !ec && it != end; it.increment(ec)) {
        std::error_code kind;
        entries.push_back({SystemPath(it->path().filename()), it->is_directory(kind)});
    }
    std::sort(entries.begin(), entries.end(), [](const DiskEntry& a, const DiskEntry& b) {
        return UpperCp1252(a.name) < UpperCp1252(b.name);
    });
    return entries;
}

bool IsFolder(const std::string& path) {
    std::error_code ec;
    return fs::is_directory(HostPath(path), ec);
}

bool IsFile(const std::string& path) {
    std::error_code ec;
    return fs::is_regular_file(HostPath(path), ec);
}

void SplitMask(const Run& run, std::string_view argument, std::string& folder, std::string& mask) {
    const std::string full = Resolve(run, argument);
    if (!HasWildcards(full) && IsFolder(full)) {
        folder = full;
        mask = "*.*";
        return;
    }
    const std::size_t cut = full.find_last_of("\\/");
    folder = cut == std::string::npos ? run.folder : full.substr(0, cut);
    mask = cut == std::string::npos ? full : full.substr(cut + 1);
    if (folder.empty()) folder = full.substr(0, cut + 1);
}

void Walk(Run& run, const std::string& folder, const std::vector<std::string>& masks, bool recurse, bool folders,
          const MatchFunction& each) {
    struct Step {
        std::string path, relative;
    };
    // Depth first, each folder's files before its sub-folders.
    std::vector<Step> pending{{folder, ""}};
    while (!pending.empty()) {
        const Step step = pending.back();
        pending.pop_back();
        const std::vector<DiskEntry> entries = ListFolder(step.path);
        auto matches = [&](const std::string& name) {
            return std::any_of(masks.begin(), masks.end(), [&](const std::string& m) { return MatchCaseBlind(m, name); });
        };
        for (const auto& e : entries) {
            if (run.aborted()) return;
            if ((!e.folder || folders) && matches(e.name)) {
                each(step.path + "\\" + e.name, step.relative.empty() ? e.name : step.relative + "\\" + e.name, e.folder);
            }
        }
        if (!recurse) continue;
        for (auto it = entries.rbegin(); it != entries.rend(); ++it) {
            if (it->folder) {
                pending.push_back({step.path + "\\" + it->name,
                                   step.relative.empty() ? it->name : step.relative + "\\" + it->name});
            }
        }
    }
}

std::vector<Word> Words(std::string_view text) {
    std::vector<Word> words;
    Word current;
    bool quoted = false, have = false;
    for (char c : text) {
        if (c == '"') {
            quoted = !quoted;
            have = true;
            current.quoted = true;
        } else if ((c == ' ' || c == '\t') && !quoted) {
            if (have) words.push_back(current);
            current = {};
            have = false;
        } else {
            current.text += c;
            have = true;
        }
    }
    if (have) words.push_back(current);
    return words;
}

bool SplitSwitches(Run& run, const std::vector<Word>& words, std::initializer_list<const char*> known,
                   std::vector<std::string>& switches, std::vector<std::string>& positional) {
    for (const Word& w : words) {
        const bool isSwitch = !w.quoted && w.text.size() >= 2 && w.text.size() <= 3 && w.text[0] == '/' &&
                              w.text.find_first_of("\\/", 1) == std::string::npos;
        if (!isSwitch) {
            positional.push_back(w.text);
            continue;
        }
        const std::string lower = LowerCp1252(w.text);
        if (std::none_of(known.begin(), known.end(), [&](const char* k) { return lower == k; })) {
            run.fail("Invalid switch - " + w.text);
            return false;
        }
        switches.push_back(lower);
    }
    return true;
}

bool Has(const std::vector<std::string>& switches, const char* which) {
    return std::find(switches.begin(), switches.end(), which) != switches.end();
}

}  // namespace ferrolund::tools::batch
