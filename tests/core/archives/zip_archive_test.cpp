#include "app/app_context.h"
#include "archives/zip_archive.h"

#include <gtest/gtest.h>

#include "archives/extract.h"
#include "support/scripted_ui.h"
#include "support/temp_folder.h"
#include "zip_fixture.h"

namespace ferrolund::archives {
namespace {

namespace fs = std::filesystem;
using testing::MakeZip;
using testing::ReadFile;

struct ArchiveTest : ::testing::Test {
    testing::TempFolder root;
    testing::ScriptedUi ui;
    app::AppContext ctx;
    ArchiveTest() {
        ctx.appRoot = root.system();
        ctx.ui = &ui;
    }
    std::string sys(const std::string& relative) const { return root.system() + "\\" + relative; }
    fs::path disk(const std::string& relative) const { return root.path() / relative; }
};

TEST(SafeEntryPath, RefusesNamesThatClimbOut) {
    const std::pair<const char*, const char*> cases[] = {
        {"a/b.txt", "a\\b.txt"},          {"Scenarios\\x\\Scenario.bin", "Scenarios\\x\\Scenario.bin"},
        {"./a", "a"},                     {"a//b", "a\\b"},
        {"dir/", "dir"},                  {"..", ""},
        {"../evil.txt", ""},              {"a/../../evil.txt", ""},
        {"a\\..\\b", ""},                 {"/etc/passwd", ""},
        {"\\\\server\\share\\x", ""},     {"C:\\x.txt", ""},
        {"C:x.txt", ""},                  {"a/b:stream", ""},
        {".", ""},                        {"", ""},
        {"..a/b..", "..a\\b.."},
    };
    for (const auto& [stored, expected] : cases) EXPECT_EQ(SafeEntryPath(stored), expected) << stored;
}

TEST_F(ArchiveTest, ListsEntriesWithTheirFields) {
    MakeZip(disk("MainContent.ap"), {{"RouteProperties.xml", std::string(1000, 'x')},
                                      {"Scenarios/", ""},
                                      {"Scenarios/abc/Scenario.bin", "bin"}});
    ZipArchive archive;
    ASSERT_FALSE(archive.open(sys("MainContent.ap")));
    ASSERT_EQ(archive.entries().size(), 3u);
    const ArchiveEntry& first = archive.entries()[0];
    EXPECT_EQ(first.name, "RouteProperties.xml");
    EXPECT_EQ(first.path, "");
    EXPECT_EQ(first.size, 1000u);
    EXPECT_LT(first.compressedSize, 100u);
    EXPECT_EQ(CompressionName(first.method), "Deflate");
    EXPECT_TRUE(archive.entries()[1].isFolder);
    EXPECT_EQ(archive.entries()[1].name, "Scenarios");
    EXPECT_EQ(archive.entries()[2].stored, "Scenarios\\abc\\Scenario.bin");
    EXPECT_EQ(archive.entries()[2].path, "Scenarios\\abc");
    EXPECT_EQ(archive.entries()[2].name, "Scenario.bin");
    EXPECT_EQ(FormatEntryTime(0).size(), 19u);
}

TEST_F(ArchiveTest, ReopeningReplacesTheList) {
    MakeZip(disk("a.ap"), {{"one.txt", "1"}, {"two.txt", "2"}});
    MakeZip(disk("b.ap"), {{"three.txt", "3"}});
    ZipArchive archive;
    ASSERT_FALSE(archive.open(sys("a.ap")));
    ASSERT_FALSE(archive.open(sys("b.ap")));
    ASSERT_EQ(archive.entries().size(), 1u);
    EXPECT_EQ(archive.entries()[0].name, "three.txt");
    EXPECT_EQ(archive.path(), sys("b.ap"));
}

TEST_F(ArchiveTest, FullPathsOnKeepsFoldersAndOffPutsFilesFlat) {
    MakeZip(disk("x.ap"), {{"top.txt", "T"}, {"Sub/Deeper/in.txt", "IN"}});
    ZipArchive archive;
    ASSERT_FALSE(archive.open(sys("x.ap")));
    ExtractOutcome on = ExtractEntries(ctx, archive, AllIndices(archive), {.target = sys("on"), .fullPaths = true});
    EXPECT_EQ(on.written, 2);
    EXPECT_EQ(ReadFile(disk("on/Sub/Deeper/in.txt")), "IN");
    ExtractOutcome off = ExtractEntries(ctx, archive, AllIndices(archive), {.target = sys("off"), .fullPaths = false});
    EXPECT_EQ(off.written, 2);
    EXPECT_EQ(ReadFile(disk("off/in.txt")), "IN");
    EXPECT_FALSE(fs::exists(disk("off/Sub")));
    EXPECT_TRUE(ui.pumps > 0);
}

TEST_F(ArchiveTest, ClimbingEntriesAreRefusedAndNeverWritten) {
    MakeZip(disk("bad/evil.ap"), {{"../outside.txt", "no"},
                                  {"ok/../../../outside2.txt", "no"},
                                  {"/tmp/ferrolund-absolute-test.txt", "no"},
                                  {"C:/Windows/x.txt", "no"},
                                  {"good.txt", "yes"}});
    ZipArchive archive;
    ASSERT_FALSE(archive.open(sys("bad\\evil.ap")));
    ExtractOutcome out = ExtractEntries(ctx, archive, AllIndices(archive), {.target = sys("bad\\t\\u")});
    EXPECT_EQ(out.written, 1);
    EXPECT_EQ(out.refused.size(), 4u);
    EXPECT_EQ(ReadFile(disk("bad/t/u/good.txt")), "yes");
    EXPECT_FALSE(fs::exists(disk("bad/t/outside.txt")));
    EXPECT_FALSE(fs::exists(disk("outside2.txt")));
    EXPECT_FALSE(fs::exists("/tmp/ferrolund-absolute-test.txt"));
    EXPECT_FALSE(fs::exists(disk("bad/t/u/C:")));
}

TEST_F(ArchiveTest, AFileThatIsNoArchiveGivesAnError) {
    testing::WriteFile(disk("plain.ap"), "This is not an archive at all, only text.");
    ZipArchive archive;
    const base::Status status = archive.open(sys("plain.ap"));
    ASSERT_TRUE(status);
    EXPECT_NE(status->description.find("plain.ap"), std::string::npos);
    EXPECT_FALSE(archive.isOpen());
    EXPECT_TRUE(archive.entries().empty());
    EXPECT_TRUE(archive.open(sys("missing.ap")));
    testing::WriteFile(disk("empty.ap"), "");
    EXPECT_TRUE(archive.open(sys("empty.ap")));
}

TEST_F(ArchiveTest, ATruncatedArchiveTakesTheErrorPath) {
    MakeZip(disk("whole.ap"), {{"a.bin", testing::NoiseBytes(50000)}, {"b.bin", testing::NoiseBytes(50000, 2)}});
    const std::string bytes = ReadFile(disk("whole.ap"));
    for (std::size_t keep : {bytes.size() - 10, bytes.size() / 2, std::size_t{30}}) {
        testing::WriteFile(disk("cut.ap"), bytes.substr(0, keep));
        ZipArchive archive;
        EXPECT_TRUE(archive.open(sys("cut.ap"))) << keep;
    }
}

TEST_F(ArchiveTest, DamagedDataLeavesNoHalfFileAndKeepsTheOldOne) {
    const std::string payload = std::string(200000, 'a') + testing::NoiseBytes(1000);
    MakeZip(disk("dmg.ap"), {{"data.bin", payload}});
    std::string bytes = ReadFile(disk("dmg.ap"));
    // Spoil the compressed data behind the local header.
    for (std::size_t i = 60; i < 400; ++i) bytes[i] = static_cast<char>(bytes[i] ^ 0x5a);
    testing::WriteFile(disk("dmg.ap"), bytes);
    testing::WriteFile(disk("target/data.bin"), "the user's own file");
    ZipArchive archive;
    ASSERT_FALSE(archive.open(sys("dmg.ap")));
    ExtractOutcome out = ExtractEntries(ctx, archive, AllIndices(archive), {.target = sys("target")});
    EXPECT_EQ(out.written, 0);
    ASSERT_EQ(out.errors.size(), 1u);
    EXPECT_EQ(ReadFile(disk("target/data.bin")), "the user's own file");
    EXPECT_EQ(std::distance(fs::directory_iterator(disk("target")), fs::directory_iterator()), 1);
}

TEST_F(ArchiveTest, TheFourRulesForAFileThatExists) {
    MakeZip(disk("o.ap"), {{"f.txt", "NEW"}});
    ZipArchive archive;
    ASSERT_FALSE(archive.open(sys("o.ap")));
    struct Case {
        Overwrite rule;
        const char* f;
        const char* f1;
    };
    const Case cases[] = {
        {Overwrite::All, "NEW", nullptr},
        {Overwrite::Skip, "OLD", nullptr},
        {Overwrite::RenameNew, "OLD", "NEW"},
        {Overwrite::RenameExisting, "NEW", "OLD"},
    };
    int n = 0;
    for (const auto& c : cases) {
        const std::string folder = "rule" + std::to_string(n++);
        testing::WriteFile(disk(folder + "/f.txt"), "OLD");
        ExtractEntries(ctx, archive, {0}, {.target = sys(folder), .overwrite = c.rule});
        EXPECT_EQ(ReadFile(disk(folder + "/f.txt")), c.f) << folder;
        EXPECT_EQ(fs::exists(disk(folder + "/f_1.txt")), c.f1 != nullptr) << folder;
        if (c.f1) {
            EXPECT_EQ(ReadFile(disk(folder + "/f_1.txt")), c.f1) << folder;
        }
    }
}

TEST_F(ArchiveTest, AbortStopsBetweenEntries) {
    MakeZip(disk("ab.ap"), {{"1.txt", "1"}, {"2.txt", "2"}});
    ZipArchive archive;
    ASSERT_FALSE(archive.open(sys("ab.ap")));
    ctx.abortFlag = true;
    ExtractOutcome out = ExtractEntries(ctx, archive, AllIndices(archive), {.target = sys("ab")});
    EXPECT_TRUE(out.aborted);
    EXPECT_EQ(out.written, 0);
}

TEST_F(ArchiveTest, FindsTheEarlierPartsOfASplitSet) {
    testing::WriteFile(disk("set.z01"), "x");
    testing::WriteFile(disk("set.z02"), "x");
    testing::WriteFile(disk("set.z04"), "x");
    EXPECT_EQ(EarlierParts(sys("set.zip")), (std::vector<std::string>{sys("set.z01"), sys("set.z02")}));
    EXPECT_TRUE(EarlierParts(sys("other.zip")).empty());
}

}  // namespace
}  // namespace ferrolund::archives
