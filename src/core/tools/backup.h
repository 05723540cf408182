#pragma once
// The back-up rule: before a file is replaced, the old one is renamed beside it. The
// commands differ in how the back-up is named and how far the numbering goes; those
// differences are the rule's parameters.

#include <string>
#include <string_view>

#include "base/run_error.h"

namespace ferrolund::tools {

enum class BackupName {
    AfterName,           // "Tracks.bin" -> "Tracks.bin.bak", "Tracks.bin.bak1", ...
    InsteadOfExtension,  // "Scenario.bin" -> "Scenario.bak", "Scenario.bak1", ...
};

inline constexpr int kNoLastNumber = -1;

struct BackupRule {
    BackupName name = BackupName::AfterName;
    // ".bak" first, then ".bak1" to ".bak<lastNumber>", the first free one; with all
    // taken no back-up is made. kNoLastNumber numbers on until a name is free. 0 allows
    // the single ".bak" only, which then replaces an older ".bak".
    int lastNumber = 50;
    // With every name taken, ReplaceWithBackup puts the new file in all the same, with no
    // back-up; otherwise it refuses.
    bool overwriteWhenFull = false;
};

// "<name>.bak", then ".bak1" to ".bak50": saves of the editor, the asset transforms,
// the index, tiles.
inline constexpr BackupRule kBackupRule{};
// As kBackupRule, but once ".bak" to ".bak50" are all taken the file is replaced without
// a back-up: the asset index.
inline constexpr BackupRule kOverwritingBackupRule{.overwriteWhenFull = true};
// "<base>.bak", then ".bak1" to ".bak50": the scenario's two files and the consist file.
inline constexpr BackupRule kScenarioBackupRule{.name = BackupName::InsteadOfExtension};
// As kScenarioBackupRule, but once ".bak" to ".bak50" are all taken the file is replaced
// without a back-up: the saves of the Scenario Editor.
inline constexpr BackupRule kOverwritingScenarioBackupRule{.name = BackupName::InsteadOfExtension,
                                                           .overwriteWhenFull = true};
// "<name>.bak", then numbered without end: the track file, route details, curve files.
inline constexpr BackupRule kUnlimitedBackupRule{.lastNumber = kNoLastNumber};
// "<base>.bak" alone, replacing an older one: Quick Drive consists in the PreLoad folder.
inline constexpr BackupRule kSingleBackupRule{.name = BackupName::InsteadOfExtension, .lastNumber = 0};

struct BackupOutcome {
    std::string backup;  // the name the file now has; empty when no back-up was made
    base::Status error;   // the file is missing, or the rename failed
};

// Renames the file at `path` (a system path) by the rule. A name counts as taken when
// anything of that name exists, in any case.
BackupOutcome MakeBackup(std::string_view path, const BackupRule& rule = kBackupRule);

// Replaces `target` by the file `made`, after the rule has renamed the target: the way
// the commands that rewrite a game file put their result in. When the copy fails the
// old file gets its name back, so the target is never lost. When the rule has no free
// back-up name left it is refused, with nothing changed, unless the rule says to
// overwrite: the new file is then copied beside the target and renamed over it, so a
// failed copy still leaves the old file whole. `backup` is the old file's new name,
// empty when none was made.
base::Status ReplaceWithBackup(const std::string& made, const std::string& target, const BackupRule& rule,
                              std::string& backup);

// Writes `bytes` as the file `target`: first beside it under a scratch name, then put in
// its place, an existing target renamed by the rule before. A failed write leaves the
// target as it was and no scratch file behind. `backup` is the old file's new name,
// empty when there was none.
base::Status WriteWithBackup(const std::string& target, std::string_view bytes, const BackupRule& rule,
                            std::string& backup);

// The unnumbered back-up name of `path` under the rule.
std::string BackupBaseName(std::string_view path, const BackupRule& rule);

}  // namespace ferrolund::tools
