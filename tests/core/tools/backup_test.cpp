#include "tools/backup.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "support/temp_folder.h"

namespace ferrolund::tools {
namespace {

namespace fs = std::filesystem;

// The system path of a file below the temporary folder, with a backslash as the
// program writes it.
std::string In(const testing::TempFolder& folder, const std::string& name) { return folder.system() + "\\" + name; }

TEST(MakeBackup, NumberedNamesWithExistingBackups) {
    struct Case {
        int existing;  // .bak, then .bak1, ... already there
        BackupRule rule;
        std::string expected;  // the back-up's name, empty for none
    };
    const Case cases[] = {
        {0, kBackupRule, "Tracks.bin.bak"},
        {1, kBackupRule, "Tracks.bin.bak1"},
        {50, kBackupRule, "Tracks.bin.bak50"},
        {51, kBackupRule, ""},
        {51, kUnlimitedBackupRule, "Tracks.bin.bak51"},
        {70, kUnlimitedBackupRule, "Tracks.bin.bak70"},
        {0, kScenarioBackupRule, "Tracks.bak"},
        {3, kScenarioBackupRule, "Tracks.bak3"},
        {51, kScenarioBackupRule, ""},
    };
    for (const auto& c : cases) {
        testing::TempFolder folder;
        folder.write("Tracks.bin", "new");
        const std::string base = BackupBaseName("Tracks.bin", c.rule);
        for (int n = 0; n < c.existing; ++n) {
            const std::string name = base + (n == 0 ? "" : std::to_string(n));
            folder.write(name, "old " + std::to_string(n));
        }
        const BackupOutcome outcome = MakeBackup(In(folder, "Tracks.bin"), c.rule);
        const std::string label = std::to_string(c.existing) + " existing, expecting " + c.expected;
        EXPECT_FALSE(outcome.error) << label;
        if (c.expected.empty()) {
            EXPECT_EQ(outcome.backup, "") << label;
            EXPECT_EQ(folder.read("Tracks.bin"), "new") << "the file stays where it is: " << label;
        } else {
            EXPECT_EQ(outcome.backup, In(folder, c.expected)) << label;
            EXPECT_EQ(folder.read(c.expected), "new") << label;
            EXPECT_FALSE(fs::exists(folder.path() / "Tracks.bin")) << label;
        }
    }
}

TEST(MakeBackup, OlderBackupsInAnyCaseAndTheSingleForm) {
    struct Case {
        const char* what;
        const char* older;     // an older back-up already there, holding "old"
        const char* asCalled;  // the file's name as the caller writes it
        BackupRule rule;
        const char* expected;  // the new back-up, holding "new"
        const char* kept;      // what then holds "old", or nothing
    };
    const Case cases[] = {
        {"a taken name in any case counts", "SCENARIO.BAK", "scenario.BIN", kScenarioBackupRule, "scenario.bak1",
         "SCENARIO.BAK"},
        {"the single back-up replaces the older one", "Scenario.bak", "Scenario.bin", kSingleBackupRule,
         "Scenario.bak", nullptr},
    };
    for (const auto& c : cases) {
        testing::TempFolder folder;
        folder.write("Scenario.bin", "new");
        folder.write(c.older, "old");
        const BackupOutcome outcome = MakeBackup(In(folder, c.asCalled), c.rule);
        EXPECT_FALSE(outcome.error) << c.what;
        EXPECT_EQ(outcome.backup, In(folder, c.expected)) << c.what;
        EXPECT_EQ(folder.read(c.expected), "new") << c.what;
        if (c.kept != nullptr) {
            EXPECT_EQ(folder.read(c.kept), "old") << c.what;
        }
        EXPECT_EQ(std::distance(fs::directory_iterator(folder.path()), fs::directory_iterator()), c.kept ? 2 : 1)
            << c.what;
    }
}

TEST(MakeBackup, MissingFileIsAnError) {
    testing::TempFolder folder;
    const BackupOutcome outcome = MakeBackup(In(folder, "nothing.bin"));
    ASSERT_TRUE(outcome.error);
    EXPECT_EQ(outcome.error->number, base::err::kFileNotFound);
    EXPECT_EQ(outcome.backup, "");
}

TEST(BackupBaseName, ExtensionOnlyOfTheLastElement) {
    EXPECT_EQ(BackupBaseName("C:\\a.b\\Scenario.bin", kScenarioBackupRule), "C:\\a.b\\Scenario.bak");
    EXPECT_EQ(BackupBaseName("C:\\a.b\\Scenario", kScenarioBackupRule), "C:\\a.b\\Scenario.bak");
    EXPECT_EQ(BackupBaseName("C:\\x\\index.csv", kBackupRule), "C:\\x\\index.csv.bak");
}

TEST(ReplaceWithBackup, TheOldFileIsNeverLost) {
    // Replaced: the new content in place, the old beside it.
    {
        testing::TempFolder folder;
        folder.write("tile.bin", "old");
        folder.write("made.bin", "new");
        std::string backup;
        EXPECT_FALSE(ReplaceWithBackup(In(folder, "made.bin"), In(folder, "tile.bin"), kBackupRule, backup));
        EXPECT_EQ(backup, In(folder, "tile.bin.bak"));
        EXPECT_EQ(folder.read("tile.bin"), "new");
        EXPECT_EQ(folder.read("tile.bin.bak"), "old");
    }
    // The new file can't be copied: the old one gets its name back.
    {
        testing::TempFolder folder;
        folder.write("tile.bin", "old");
        std::string backup = "stale";
        EXPECT_TRUE(ReplaceWithBackup(In(folder, "absent.bin"), In(folder, "tile.bin"), kBackupRule, backup));
        EXPECT_TRUE(backup.empty());
        EXPECT_EQ(folder.read("tile.bin"), "old");
        EXPECT_FALSE(fs::exists(folder.path() / "tile.bin.bak"));
    }
    // No back-up name left under the rule: refused, nothing changed.
    {
        testing::TempFolder folder;
        folder.write("tile.bin", "old");
        folder.write("made.bin", "new");
        folder.write("tile.bin.bak", "b");
        for (int n = 1; n <= 50; ++n) folder.write("tile.bin.bak" + std::to_string(n), "b");
        std::string backup;
        EXPECT_TRUE(ReplaceWithBackup(In(folder, "made.bin"), In(folder, "tile.bin"), kBackupRule, backup));
        EXPECT_EQ(folder.read("tile.bin"), "old");
    }
    // Nothing to replace.
    {
        testing::TempFolder folder;
        folder.write("made.bin", "new");
        std::string backup;
        EXPECT_TRUE(ReplaceWithBackup(In(folder, "made.bin"), In(folder, "tile.bin"), kBackupRule, backup));
        EXPECT_FALSE(fs::exists(folder.path() / "tile.bin"));
    }
}

TEST(ReplaceWithBackup, OverwritingRuleWithEveryNameTaken) {
    struct Case {
        const char* what;
        bool madeExists;
        const char* expected;  // what the target then holds
        bool failed;
    };
    const Case cases[] = {
        {"the new file replaces the old, with no back-up", true, "new", false},
        {"a copy that fails leaves the old file", false, "old", true},
    };
    for (const auto& c : cases) {
        testing::TempFolder folder;
        folder.write("index.csv", "old");
        if (c.madeExists) folder.write("made.csv", "new");
        folder.write("index.csv.bak", "b");
        for (int n = 1; n <= 50; ++n) folder.write("index.csv.bak" + std::to_string(n), "b" + std::to_string(n));
        std::string backup = "stale";
        const base::Status status =
            ReplaceWithBackup(In(folder, "made.csv"), In(folder, "index.csv"), kOverwritingBackupRule, backup);
        EXPECT_EQ(status.has_value(), c.failed) << c.what;
        EXPECT_EQ(backup, "") << c.what;
        EXPECT_EQ(folder.read("index.csv"), c.expected) << c.what;
        EXPECT_EQ(folder.read("index.csv.bak50"), "b50") << c.what;
        EXPECT_FALSE(fs::exists(folder.path() / "index.csv.bak51")) << c.what;
        EXPECT_FALSE(fs::exists(folder.path() / "index.csv.ferrolund-part")) << c.what;
    }
    // While a name is free the rule backs up as kBackupRule does.
    testing::TempFolder folder;
    folder.write("index.csv", "old");
    folder.write("made.csv", "new");
    std::string backup;
    EXPECT_FALSE(ReplaceWithBackup(In(folder, "made.csv"), In(folder, "index.csv"), kOverwritingBackupRule, backup));
    EXPECT_EQ(backup, In(folder, "index.csv.bak"));
    EXPECT_EQ(folder.read("index.csv.bak"), "old");
}

}  // namespace
}  // namespace ferrolund::tools
