#pragma once
// What the commands of the batch interpreter share while one batch runs: the context, the
// working folder, the console text, and the ways to resolve paths and masks.

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "base/run_context.h"
#include "tools/batch_interpreter.h"

namespace ferrolund::tools::batch {

struct Run {
    base::RunContext& ctx;
    std::string folder;     // the working folder, a system path
    BatchOutcome& outcome;
    std::string output;     // what the running command prints
    int depth = 0;          // of nested "call"s of batch files

    void print(const std::string& line) { output += line + "\r\n"; }
    // Records a failure of the running line.
    void fail(const std::string& text, int number = 5) { outcome.errors.push_back({number, text}); }
    void fail(const base::RunError& error) { outcome.errors.push_back(error); }
    // Lets events through and tells whether AbortFlag was set.
    bool aborted();
};

// A path of a command line: absolute as it stands, otherwise below the working folder.
// Backslashes throughout, a last "\" or "\." dropped.
std::string Resolve(const Run& run, std::string_view path);
bool HasWildcards(std::string_view text);
// A whole-name match of '*' and '?' without regard to case.
bool MatchCaseBlind(std::string_view mask, std::string_view name);

struct DiskEntry {
    std::string name;  // as on disk, Windows-1252
    bool folder = false;
};
// The entries of a folder, sorted by name; empty when it cannot be listed.
std::vector<DiskEntry> ListFolder(const std::string& folder);
bool IsFolder(const std::string& path);
bool IsFile(const std::string& path);

// Calls `each` with the full path, the path below `folder`, and whether it is a folder, for
// every file (and, with `folders`, every folder) whose name matches one of the masks; in
// sub-folders too with `recurse`. Files of a folder come before its sub-folders, each by
// name. Stops when AbortFlag is set.
using MatchFunction = std::function<void(const std::string& path, const std::string& relative, bool folder)>;
void Walk(Run& run, const std::string& folder, const std::vector<std::string>& masks, bool recurse, bool folders,
          const MatchFunction& each);

// A word of a command line; a quoted word is never a switch.
struct Word {
    std::string text;
    bool quoted = false;
};
std::vector<Word> Words(std::string_view text);
// Switches ("/s", "/-y", ...) in lower case, and the other words in order. A word that is
// not one of `known` is reported as "Invalid switch - <word>" and gives false.
bool SplitSwitches(Run& run, const std::vector<Word>& words, std::initializer_list<const char*> known,
                   std::vector<std::string>& switches, std::vector<std::string>& positional);
bool Has(const std::vector<std::string>& switches, const char* which);

// Splits "folder\mask" (a folder alone means every file in it); mask "*.*" means all.
void SplitMask(const Run& run, std::string_view argument, std::string& folder, std::string& mask);

// The commands, given the words after the command's name.
void Xcopy(Run& run, const std::vector<Word>& words);
void Copy(Run& run, const std::vector<Word>& words);
void Del(Run& run, const std::vector<Word>& words);
void Attrib(Run& run, const std::vector<Word>& words);
// "7za" lines are served by the archive layer, which hands its handler over here
// (archives::ServeBatchArchives); until it has, such a line is reported as a command the
// batch files cannot run.
using LineCommand = void (*)(Run& run, const std::vector<Word>& words);
void SetSevenZipCommand(LineCommand command);
void SevenZip(Run& run, const std::vector<Word>& words);
void Serz(Run& run, const std::vector<Word>& words);

}  // namespace ferrolund::tools::batch
