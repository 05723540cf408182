// The file commands of the batch interpreter: xcopy, copy, del and attrib.
#include <filesystem>

#include "tools/batch_run.h"
#include "tools/codepage.h"
#include "tools/files.h"
#include "tools/host_path.h"

namespace ferrolund::tools::batch {

namespace fs = std::filesystem;

namespace {

bool IsReadOnly(const std::string& path) {
    std::error_code ec;
    const fs::perms p = fs::status(HostPath(path), ec).permissions();
    return !ec && (p & fs::perms::owner_write) == fs::perms::none;
}

void SetReadOnly(const std::string& path, bool readOnly) {
    std::error_code ec;
    const fs::perms write = fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;
    if (readOnly) fs::permissions(HostPath(path), write, fs::perm_options::remove, ec);
    else fs::permissions(HostPath(path), fs::perms::owner_write, fs::perm_options::add, ec);
}

// Asks before a file is replaced; true to go on with the copy.
bool MayReplace(Run& run, const std::string& target) {
    if (!run.ctx.ui) return false;
    return run.ctx.ui->ask("Overwrite " + target + " (Yes/No)?", base::Buttons::YesNo, base::Icon::Question) ==
           base::Answer::Yes;
}

// Copies one file, making its folder; false when it failed (and was reported).
bool CopyOne(Run& run, const std::string& from, const std::string& to) {
    const std::size_t cut = to.rfind('\\');
    if (cut != std::string::npos && !CreatePath(to.substr(0, cut))) {
        run.fail(base::err::PathNotFound(to.substr(0, cut)));
        return false;
    }
    if (base::Status s = CopyFileReplacing(from, to)) {
        run.fail(*s);
        return false;
    }
    ForgetPath(to);
    return true;
}

// A destination "<folder>\*.*" names the folder.
std::string WithoutAllMask(const std::string& path, bool& hadMask) {
    hadMask = path.ends_with("\\*.*") || path == "*.*";
    return hadMask ? path.substr(0, path.size() >= 4 ? path.size() - 4 : 0) : path;
}

}  // namespace

void Xcopy(Run& run, const std::vector<Word>& words) {
    std::vector<std::string> sw, args;
    if (!SplitSwitches(run, words, {"/s", "/e", "/y", "/-y", "/i", "/c", "/q", "/f"}, sw, args)) return;
    if (args.empty() || args.size() > 2) {
        run.fail("Invalid number of parameters");
        return;
    }
    std::string folder, mask;
    SplitMask(run, args[0], folder, mask);
    const bool single = !HasWildcards(mask) && IsFile(folder + "\\" + mask);
    if (!IsFolder(folder)) {
        run.fail(base::err::FileNotFound(Resolve(run, args[0])));
        return;
    }
    bool hadMask = false;
    const std::string dest = WithoutAllMask(args.size() > 1 ? Resolve(run, args[1]) : run.folder, hadMask);
    const bool endsInSlash = args.size() > 1 && (args[1].ends_with('\\') || args[1].ends_with('/'));
    const bool toFolder = !single || hadMask || endsInSlash || Has(sw, "/i") || IsFolder(dest) || args.size() == 1;
    const bool recurse = Has(sw, "/s") || Has(sw, "/e");
    const bool ask = !Has(sw, "/y") || Has(sw, "/-y");
    long copied = 0;
    long matched = 0;
    bool stop = false;
    if (Has(sw, "/e")) {
        Walk(run, folder, {"*"}, true, true, [&](const std::string&, const std::string& relative, bool isFolder) {
            if (isFolder) CreatePath(dest + "\\" + relative);
        });
    }
    Walk(run, folder, {mask}, recurse, false, [&](const std::string& path, const std::string& relative, bool) {
        if (stop) return;
        const std::string target = toFolder ? dest + "\\" + relative : dest;
        if (ask && IsFile(target) && !MayReplace(run, target)) return;
        if (Has(sw, "/f")) run.print(path + " -> " + target);
        else if (!Has(sw, "/q")) run.print(path);
        ++matched;
        if (CopyOne(run, path, target)) ++copied;
        else stop = !Has(sw, "/c");
    });
    // A file named without wildcards that is nowhere found is a failure, as on the console.
    if (matched == 0 && !HasWildcards(mask)) {
        run.print("File not found - " + mask);
        run.fail(base::err::FileNotFound(folder + "\\" + mask));
    }
    run.print(std::to_string(copied) + " File(s) copied");
}

void Copy(Run& run, const std::vector<Word>& words) {
    std::vector<std::string> sw, args;
    if (!SplitSwitches(run, words, {"/y", "/-y", "/b", "/v"}, sw, args)) return;
    if (args.empty() || args.size() > 2) {
        run.fail("The syntax of the command is incorrect.");
        return;
    }
    if (args[0].find('+') != std::string::npos) {
        run.fail("Joining files with '+' is not done by this program's batch files: copy " + args[0]);
        return;
    }
    std::string folder, mask;
    SplitMask(run, args[0], folder, mask);
    std::vector<std::pair<std::string, std::string>> files;
    Walk(run, folder, {mask}, false, false,
         [&](const std::string& path, const std::string& relative, bool) { files.emplace_back(path, relative); });
    if (files.empty()) {
        run.fail(base::err::FileNotFound(Resolve(run, args[0])));
        return;
    }
    const std::string dest = args.size() > 1 ? Resolve(run, args[1]) : run.folder;
    const bool toFolder = IsFolder(dest) || args.size() == 1 || args[1].ends_with('\\') || args[1].ends_with('/');
    if (!toFolder && files.size() > 1) {
        run.fail("Copying several files into one file is not done by this program's batch files: " + dest);
        return;
    }
    long copied = 0;
    for (const auto& [path, name] : files) {
        const std::string target = toFolder ? dest + "\\" + name : dest;
        if (Has(sw, "/-y") && IsFile(target) && !MayReplace(run, target)) continue;
        if (files.size() > 1) run.print(path);
        if (CopyOne(run, path, target)) ++copied;
    }
    run.print("        " + std::to_string(copied) + " file(s) copied.");
}

void Del(Run& run, const std::vector<Word>& words) {
    std::vector<std::string> sw, args;
    if (!SplitSwitches(run, words, {"/s", "/q", "/f"}, sw, args)) return;
    if (args.empty()) {
        run.fail("The syntax of the command is incorrect.");
        return;
    }
    for (const auto& arg : args) {
        std::string folder, mask;
        SplitMask(run, arg, folder, mask);
        if (mask == "*.*" || mask == "*") {
            if (!Has(sw, "/q") && (!run.ctx.ui || run.ctx.ui->ask(folder + "\\*, Are you sure (Y/N)?", base::Buttons::YesNo,
                                                                 base::Icon::Question) != base::Answer::Yes)) {
                continue;
            }
        }
        long found = 0;
        Walk(run, folder, {mask}, Has(sw, "/s"), false, [&](const std::string& path, const std::string&, bool) {
            ++found;
            if (IsReadOnly(path) && !Has(sw, "/f")) {
                run.fail({base::err::kPermissionDenied, "Access is denied - " + path});
                return;
            }
            std::error_code ec;
            fs::remove(HostPath(path), ec);
            ForgetPath(path);
            if (ec) run.fail(base::err::PathFileAccess(path));
            else if (Has(sw, "/s")) run.print("Deleted file - " + path);
        });
        if (found == 0) run.print("Could Not Find " + folder + "\\" + mask);
    }
}

void Attrib(Run& run, const std::vector<Word>& words) {
    std::vector<Word> rest;
    int readOnly = 0;  // +1 set, -1 clear
    for (const Word& w : words) {
        const std::string lower = LowerCp1252(w.text);
        if (!w.quoted && (lower == "+r" || lower == "-r")) {
            readOnly = lower[0] == '+' ? 1 : -1;
        } else if (!w.quoted && w.text.size() == 2 && (w.text[0] == '+' || w.text[0] == '-')) {
            run.fail("The attribute " + w.text + " does not exist on this disk; only R (read-only) does.");
            return;
        } else {
            rest.push_back(w);
        }
    }
    std::vector<std::string> sw, args;
    if (!SplitSwitches(run, rest, {"/s", "/d"}, sw, args)) return;
    if (readOnly == 0 || args.size() > 1) {
        run.fail("ATTRIB is used by this program's batch files only to set or clear R: attrib " +
                 (args.empty() ? std::string() : args[0]));
        return;
    }
    std::string folder, mask;
    SplitMask(run, args.empty() ? std::string("*.*") : args[0], folder, mask);
    if (!IsFolder(folder)) {
        run.fail(base::err::PathNotFound(folder));
        return;
    }
    Walk(run, folder, {mask}, Has(sw, "/s"), Has(sw, "/d"),
         [&](const std::string& path, const std::string&, bool) { SetReadOnly(path, readOnly > 0); });
}

}  // namespace ferrolund::tools::batch
