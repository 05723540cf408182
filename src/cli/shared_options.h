#pragma once
// The options every command shares. They may stand anywhere on the line, before or after
// the command's name and among its own arguments; after "--" every word is an argument.

#include <deque>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

namespace ferrolund::cli {

struct SharedOptions {
    std::string gameRoot;              // --game-root DIR
    std::optional<bool> defaultYes;    // --yes / --no
    std::deque<std::string> answers;   // --answer TEXT, in order
    bool progressLines = false;        // --progress
    bool help = false;                 // --help, -h
    bool version = false;              // --version
};

// The exit codes of every command.
inline constexpr int kExitDone = 0;
inline constexpr int kExitFailed = 1;
inline constexpr int kExitUsage = 2;
inline constexpr int kExitMissing = 3;

// Takes the shared options out of `args`; what is left (the command's name first, then its
// own arguments) goes to `rest`. A shared option that lacks its value is a usage error,
// told on `err`: false then.
bool SplitSharedOptions(const std::vector<std::string>& args, SharedOptions& shared, std::vector<std::string>& rest,
                        std::ostream& err);

}  // namespace ferrolund::cli
