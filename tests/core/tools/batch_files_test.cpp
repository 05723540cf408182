// The console commands of the batch interpreter, one test per form.
#include <gtest/gtest.h>

#include <filesystem>

#include "batch_test_fixture.h"
#include "tools/tool_runner.h"

namespace ferrolund::tools {
namespace {

namespace fs = std::filesystem;
using testing::BatchFixture;

bool ReadOnly(const fs::path& p) { return (fs::status(p).permissions() & fs::perms::owner_write) == fs::perms::none; }

TEST(BatchLines, ChcpRemEchoAndTheAtSign) {
    BatchFixture f;
    EXPECT_FALSE(f.run("@echo off\r\nchcp 1252\r\nrem a comment\r\n:: another\r\n\r\n"));
    EXPECT_EQ(f.outcome.commands, 3);
    EXPECT_NE(f.outcome.console.find("Active code page: 1252"), std::string::npos);
    EXPECT_TRUE(f.run("chcp x"));
}

TEST(BatchLines, AnythingElseIsReportedAndTheRunGoesOn) {
    BatchFixture f;
    f.root.write("a.txt", "a");
    const base::Status s = f.run("regsvr32.exe \"x.ocx\"\r\ncopy \"" + f.sys("a.txt") + "\" \"" + f.sys("b.txt") + "\"");
    ASSERT_TRUE(s);
    EXPECT_NE(s->description.find("regsvr32.exe"), std::string::npos);
    EXPECT_TRUE(f.exists("b.txt"));
    ASSERT_EQ(f.outcome.errors.size(), 1u);
    // Unknown switches are reported too, and the command does nothing.
    EXPECT_TRUE(f.run("xcopy \"" + f.sys("a.txt") + "\" \"" + f.sys("c") + "\\\" /z"));
    EXPECT_EQ(f.outcome.errors[0].description, "Invalid switch - /z");
    EXPECT_FALSE(f.exists("c"));
}

TEST(BatchLines, AMissingBatchIsAnError) {
    BatchFixture f;
    EXPECT_TRUE(RunBatchFile(f.ctx, f.sys("nothing.bat")));
}

TEST(BatchLines, CallRunsACommandOrAnotherBatch) {
    BatchFixture f;
    f.root.write("src/a.txt", "a");
    f.root.write("sub/inner.bat", "copy \"" + f.sys("src\\a.txt") + "\" \"copied.txt\"\r\n");
    EXPECT_FALSE(f.run("call xcopy \"" + f.sys("src") + "\\*.*\" \"" + f.sys("dst") + "\\*.*\" /s /y\r\n"
                       "CALL sub\\inner.bat"));
    EXPECT_TRUE(f.exists("dst/a.txt"));
    // The called batch runs in its own folder.
    EXPECT_TRUE(f.exists("sub/copied.txt"));
}

TEST(BatchLines, PauseShowsTheConsole) {
    BatchFixture f;
    f.root.write("a.txt", "a");
    EXPECT_FALSE(f.run("copy \"" + f.sys("a.txt") + "\" \"" + f.sys("b.txt") + "\"\r\nPause"));
    ASSERT_EQ(f.ui.texts().size(), 1u);
    EXPECT_NE(f.ui.texts()[0].find("1 file(s) copied."), std::string::npos);
    EXPECT_TRUE(f.ui.texts()[0].ends_with("Press any key to continue . . ."));
}

TEST(BatchXcopy, SubFoldersWithoutEmptyOnesAndOverwriting) {
    BatchFixture f;
    f.root.write("from/top.txt", "new");
    f.root.write("from/A/B/deep.bin", "deep");
    fs::create_directories(f.disk("from/Empty"));
    f.root.write("to/top.txt", "old");
    EXPECT_FALSE(f.run("call xcopy \"" + f.sys("from") + "\\*.*\" \"" + f.sys("to") + "\\*.*\" /s /y"));
    EXPECT_EQ(f.root.read("to/top.txt"), "new");
    EXPECT_EQ(f.root.read("to/A/B/deep.bin"), "deep");
    EXPECT_FALSE(f.exists("to/Empty"));
    EXPECT_NE(f.outcome.console.find("2 File(s) copied"), std::string::npos);
    // /e copies the empty folders as well.
    EXPECT_FALSE(f.run("xcopy \"" + f.sys("from") + "\" \"" + f.sys("to2") + "\" /e /i /y"));
    EXPECT_TRUE(fs::is_directory(f.disk("to2/Empty")));
}

TEST(BatchXcopy, WithoutYAFileThatExistsIsAskedFor) {
    BatchFixture f;
    f.root.write("from/a.txt", "new");
    f.root.write("from/b.txt", "new");
    f.root.write("to/a.txt", "old");
    f.root.write("to/b.txt", "old");
    f.ui.answers = {base::Answer::No, base::Answer::Yes};
    EXPECT_FALSE(f.run("xcopy \"" + f.sys("from") + "\\*.*\" \"" + f.sys("to") + "\" /I"));
    EXPECT_EQ(f.root.read("to/a.txt"), "old");
    EXPECT_EQ(f.root.read("to/b.txt"), "new");
    EXPECT_EQ(f.ui.texts()[0], "Overwrite " + f.sys("to") + "\\a.txt (Yes/No)?");
}

TEST(BatchXcopy, OneFileIntoAFolderAndCarryingOnAfterErrors) {
    BatchFixture f;
    f.root.write("Assets/P/Q/x.bin", "x");
    EXPECT_FALSE(f.run("call Xcopy \"" + f.sys("Assets\\P\\Q\\x.bin") + "\" \"" + f.sys("Pack\\P\\Q") + "\\\" /I /C /S"));
    EXPECT_EQ(f.root.read("Pack/P/Q/x.bin"), "x");
    EXPECT_TRUE(f.run("xcopy \"" + f.sys("nowhere") + "\\*.*\" \"" + f.sys("to") + "\" /s /y"));
}

TEST(BatchXcopy, ANamedFileThatIsNowhereIsAFailureAndTheNextLineStillRuns) {
    BatchFixture f;
    f.root.write("Assets/P/Q/x.bin", "x");
    f.root.write("Assets/P/Q/Sub/y.bin", "y");
    EXPECT_TRUE(f.run("xcopy \"" + f.sys("Assets\\P\\Q\\gone.bin") + "\" \"" + f.sys("Pack\\P\\Q") +
                      "\\\" /I /C /S\r\nxcopy \"" + f.sys("Assets\\P\\Q\\y.bin") + "\" \"" + f.sys("Pack\\P\\Q") +
                      "\\\" /I /C /S"));
    ASSERT_EQ(f.outcome.errors.size(), 1u);
    EXPECT_NE(f.outcome.errors[0].description.find("gone.bin"), std::string::npos);
    EXPECT_NE(f.outcome.console.find("File not found - gone.bin"), std::string::npos);
    // /S finds the named file in the sub-folders too, and keeps their place.
    EXPECT_EQ(f.root.read("Pack/P/Q/Sub/y.bin"), "y");
    EXPECT_FALSE(f.exists("Pack/P/Q/x.bin"));
}

TEST(BatchCopy, FilesOfAFolderWithoutItsSubFolders) {
    BatchFixture f;
    f.root.write("game/RailWorks.exe", "exe");
    f.root.write("game/a.dll", "dll");
    f.root.write("game/Assets/x.bin", "x");
    fs::create_directories(f.disk("backup"));
    EXPECT_FALSE(f.run("chcp 1252\r\ncopy \"" + f.sys("game") + "\\*.*\" \"" + f.sys("backup") + "\\\""));
    EXPECT_TRUE(f.exists("backup/RailWorks.exe"));
    EXPECT_TRUE(f.exists("backup/a.dll"));
    EXPECT_FALSE(f.exists("backup/Assets"));
    EXPECT_TRUE(f.run("copy \"" + f.sys("game") + "\\*.*\" \"" + f.sys("one.txt") + "\""));
    EXPECT_FALSE(f.exists("one.txt"));
}

TEST(BatchDel, SubFoldersQuestionsAndReadOnlyFiles) {
    BatchFixture f;
    f.root.write("d/a.bin", "a");
    f.root.write("d/keep.txt", "k");
    f.root.write("d/s/b.bin", "b");
    EXPECT_FALSE(f.run("DEL \"" + f.sys("d") + "\\*.bin\" /S"));
    EXPECT_FALSE(f.exists("d/a.bin"));
    EXPECT_FALSE(f.exists("d/s/b.bin"));
    EXPECT_TRUE(f.exists("d/keep.txt"));
    EXPECT_TRUE(f.exists("d/s"));
    // Every file of a folder: asked first, unless /Q.
    f.ui.answers = {base::Answer::No};
    EXPECT_FALSE(f.run("del \"" + f.sys("d") + "\\*.*\""));
    EXPECT_TRUE(f.exists("d/keep.txt"));
    EXPECT_EQ(f.ui.texts().back(), f.sys("d") + "\\*, Are you sure (Y/N)?");
    f.root.write("r/ro.txt", "r");
    fs::permissions(f.disk("r/ro.txt"), fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write,
                    fs::perm_options::remove);
    EXPECT_TRUE(f.run("del \"" + f.sys("r") + "\\ro.txt\""));
    EXPECT_TRUE(f.exists("r/ro.txt"));
    EXPECT_FALSE(f.run("del /f /q \"" + f.sys("r") + "\\*.*\""));
    EXPECT_FALSE(f.exists("r/ro.txt"));
}

TEST(BatchAttrib, ClearsAndSetsReadOnlyInSubFolders) {
    BatchFixture f;
    f.root.write("t/a.txt", "a");
    f.root.write("t/s/b.txt", "b");
    EXPECT_FALSE(f.run("ATTRIB +R \"" + f.sys("t") + "\\*.*\" /s"));
    EXPECT_TRUE(ReadOnly(f.disk("t/a.txt")));
    EXPECT_TRUE(ReadOnly(f.disk("t/s/b.txt")));
    EXPECT_FALSE(f.run("ATTRIB -R \"" + f.sys("t") + "\\*.*\" /s /d"));
    EXPECT_FALSE(ReadOnly(f.disk("t/a.txt")));
    EXPECT_FALSE(ReadOnly(f.disk("t/s/b.txt")));
    EXPECT_TRUE(f.run("attrib +H \"" + f.sys("t") + "\\*.*\""));
}

TEST(BatchFor, EachFileBelowAFolderWithItsParts) {
    BatchFixture f;
    f.root.write("Assets/P1/Q1/MainContent.ap", "1");
    f.root.write("Assets/P2/Q2/Other.AP", "2");
    f.root.write("Assets/P2/Q2/skip.txt", "3");
    const base::Status forStatus = f.run("for /R \"" + f.sys("Assets") + "\" %%f in (*.ap) do copy \"%%f\" \"%%~dpf%%~nf.copy\"");
    EXPECT_FALSE(forStatus) << forStatus->description;
    EXPECT_TRUE(f.exists("Assets/P1/Q1/MainContent.copy"));
    EXPECT_TRUE(f.exists("Assets/P2/Q2/Other.copy"));
    EXPECT_FALSE(f.exists("Assets/P2/Q2/skip.copy"));
    EXPECT_TRUE(f.run("for %%f do nothing"));
}

TEST(BatchLines, OutputToAFileReplacesOrAppends) {
    BatchFixture f;
    EXPECT_FALSE(f.run("chcp 1252 > \"out.txt\"\r\nchcp 850 >> out.txt"));
    EXPECT_EQ(f.root.read("out.txt"), "Active code page: 1252\r\nActive code page: 850\r\n");
    EXPECT_EQ(f.outcome.console, "");
}

TEST(BatchLines, ToolRunnerHandsBatchFilesToTheInterpreter) {
    BatchFixture f;
    f.root.write("w/a.txt", "a");
    f.root.write("w/job.bat", "copy \"a.txt\" \"b.txt\"\r\nnonsense\r\n");
    SetWorkingFolder(f.ctx, f.sys("w"));
    EXPECT_GT(ToolRunner(f.ctx, "job.bat", true, WindowStyle::Normal), 0);
    EXPECT_TRUE(f.exists("w/b.txt"));
    ASSERT_EQ(f.ui.shown.size(), 1u);  // the failure of the second line, reported once
    EXPECT_NE(f.ui.shown[0].text.find("nonsense"), std::string::npos);
}

TEST(BatchLines, AbortStopsTheRun) {
    BatchFixture f;
    f.root.write("a.txt", "a");
    f.ctx.abortFlag = true;
    f.run("copy \"a.txt\" \"b.txt\"");
    EXPECT_TRUE(f.outcome.aborted);
    EXPECT_FALSE(f.exists("b.txt"));
}

}  // namespace
}  // namespace ferrolund::tools
