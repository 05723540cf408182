// The 7za lines of the batch interpreter, served by the built-in archive access.
#include "archives/batch_7za.h"

#include <cinttypes>
#include <cstdio>

#include "archives/extract.h"
#include "archives/overlength.h"
#include "archives/zip_archive.h"
#include "tools/batch_run.h"
#include "tools/codepage.h"

namespace ferrolund::archives {

using namespace tools::batch;
using tools::LowerCp1252;

namespace {

// Whether a name given on the command line selects the entry: the pattern matches the
// stored path or one of its folders (so a folder brings all it holds), from the archive's
// root, or with -r from any folder of the path.
bool Selects(const std::string& pattern, const ArchiveEntry& entry, bool recurse) {
    std::string mask = pattern;
    for (char& c : mask) {
        if (c == '/') c = '\\';
    }
    std::string path = entry.stored;
    if (!path.empty() && path.back() == '\\') path.pop_back();
    for (std::size_t start = 0; start < path.size();) {
        for (std::size_t end = path.find('\\', start);; end = path.find('\\', end + 1)) {
            const std::string part = path.substr(start, end == std::string::npos ? std::string::npos : end - start);
            if (MatchCaseBlind(mask, part)) return true;
            if (end == std::string::npos) break;
        }
        if (!recurse) break;
        const std::size_t next = path.find('\\', start);
        if (next == std::string::npos) break;
        start = next + 1;
    }
    return false;
}

std::string Listing(const ZipArchive& archive, const std::vector<std::size_t>& indices) {
    std::string text = "Archive: " + archive.path() + "\r\n\r\n";
    text += "Date                        Size   Compressed  Name\r\n";
    std::uint64_t size = 0, packed = 0;
    long files = 0, folders = 0;
    for (std::size_t i : indices) {
        const ArchiveEntry& e = archive.entries()[i];
        char numbers[64];
        std::snprintf(numbers, sizeof numbers, "%12" PRIu64 " %12" PRIu64, e.size, e.compressedSize);
        text += FormatEntryTime(e.modified) + " " + numbers + "  " + e.stored + "\r\n";
        size += e.size;
        packed += e.compressedSize;
        (e.isFolder ? folders : files) += 1;
    }
    text += "\r\n" + std::to_string(files) + " files, " + std::to_string(folders) + " folders, " +
            std::to_string(size) + " bytes (" + std::to_string(packed) + " packed)\r\n";
    return text;
}

}  // namespace

void SevenZipLine(Run& run, const std::vector<Word>& words) {
    if (words.empty()) {
        run.fail("Command Line Error: the command is missing");
        return;
    }
    const std::string command = LowerCp1252(words[0].text);
    if (command != "x" && command != "e" && command != "l") {
        run.fail("Command Line Error: the command " + words[0].text + " is not one this program's batch files use");
        return;
    }
    ExtractOptions options;
    options.target = run.folder;
    options.fullPaths = command == "x";
    bool recurse = false, yes = false, modeGiven = false;
    std::vector<std::string> args;
    for (std::size_t i = 1; i < words.size(); ++i) {
        const std::string& w = words[i].text;
        const std::string lower = LowerCp1252(w);
        if (w.empty() || w[0] != '-') {
            args.push_back(w);
        } else if (lower.starts_with("-o")) {
            options.target = Resolve(run, w.substr(2));
        } else if (lower == "-aoa" || lower == "-aos" || lower == "-aou" || lower == "-aot") {
            modeGiven = true;
            options.overwrite = lower == "-aoa"   ? Overwrite::All
                                : lower == "-aos" ? Overwrite::Skip
                                : lower == "-aou" ? Overwrite::RenameNew
                                                  : Overwrite::RenameExisting;
        } else if (lower == "-r" || lower == "-r-") {
            recurse = lower == "-r";
        } else if (lower == "-y") {
            yes = true;
        } else {
            run.fail("Command Line Error: Unknown switch: " + w);
            return;
        }
    }
    if (!modeGiven) options.overwrite = yes ? Overwrite::All : Overwrite::Ask;
    if (args.empty()) {
        run.fail("Command Line Error: the archive is missing");
        return;
    }
    std::vector<std::string> archivePaths;
    if (HasWildcards(args[0])) {
        std::string folder, mask;
        SplitMask(run, args[0], folder, mask);
        Walk(run, folder, {mask}, false, false,
             [&](const std::string& path, const std::string&, bool) { archivePaths.push_back(path); });
    } else {
        archivePaths.push_back(Resolve(run, args[0]));
    }
    if (archivePaths.empty()) run.print("No archive matches " + args[0]);
    const std::vector<std::string> names(args.begin() + 1, args.end());
    for (const std::string& path : archivePaths) {
        if (run.outcome.aborted) return;
        if (IsOverlength(path)) {
            run.outcome.overlength.push_back(path);
            run.print(path + " is over 2 gigabytes and was passed over");
            continue;
        }
        ZipArchive archive;
        if (base::Status s = archive.open(path)) {
            run.fail(*s);
            continue;
        }
        std::vector<std::size_t> chosen;
        for (const ArchiveEntry& e : archive.entries()) {
            if (names.empty() || std::any_of(names.begin(), names.end(),
                                              [&](const std::string& n) { return Selects(n, e, recurse); })) {
                chosen.push_back(e.index);
            }
        }
        if (command == "l") {
            run.output += Listing(archive, chosen);
            continue;
        }
        run.print("Extracting archive: " + path);
        const ExtractOutcome out = ExtractEntries(run.ctx, archive, chosen, options);
        for (const auto& name : out.refused) {
            run.fail("The entry " + name + " of " + path + " names a place outside " + options.target +
                     " and was not unpacked");
        }
        for (const auto& error : out.errors) run.fail(error);
        if (out.aborted) run.outcome.aborted = true;
        run.print(out.refused.empty() && out.errors.empty() ? "Everything is Ok" : "There were errors");
        run.print("Files: " + std::to_string(out.written) + (out.skipped ? ", skipped: " + std::to_string(out.skipped) : ""));
    }
}

void ServeBatchArchives() { tools::batch::SetSevenZipCommand(&SevenZipLine); }

}  // namespace ferrolund::archives
