#include "app/app_context.h"
#include "tools/files.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>

#include "support/scripted_ui.h"
#include "support/temp_folder.h"

namespace ferrolund::tools {
namespace {

namespace fs = std::filesystem;
using testing::ScriptedUi;
using testing::TempFolder;

struct Fixture {
    TempFolder root;
    ScriptedUi ui;
    app::AppContext ctx;
    Fixture() {
        ctx.appRoot = root.system();
        ctx.ui = &ui;
    }
    std::string at(const std::string& relative) const { return root.system() + "\\" + relative; }
};

TEST(Files, ReadTextFileKeepsEveryByte) {
    Fixture f;
    std::string all;
    for (int i = 0; i < 256; ++i) all += static_cast<char>(i);
    all += "\r\nline\r\n";
    f.root.write("all.bin", all);
    EXPECT_EQ(ReadTextFile(f.at("all.bin")), all);
    EXPECT_EQ(ReadTextFile(f.at("missing.xml")), "");
    EXPECT_TRUE(f.ui.shown.empty());
}

TEST(Files, MarkerFilesAreReadAsUtf16WhateverTheCase) {
    using namespace std::string_literals;
    Fixture f;
    const std::string utf16 = "\xFF\xFEM\0\xFC\0n\0\r\0\n\0"s;
    for (const char* name : {"a.mkr", "b.MKR", "c.Mkr"}) {
        f.root.write(name, utf16);
        EXPECT_EQ(ReadTextFile(f.at(name)), "M\xFCn\r\n") << name;
    }
    f.root.write("d.txt", utf16);
    EXPECT_EQ(ReadTextFile(f.at("d.txt")), utf16);
}

TEST(Files, PathsAreFoundWithoutRegardToCase) {
    Fixture f;
    f.root.write("Assets/Kuju/RailSimulator/Blueprint.xml", "x");
    EXPECT_EQ(ReadTextFile(f.at("ASSETS\\kuju\\railsimulator\\BLUEPRINT.XML")), "x");
    EXPECT_TRUE(FileExists(f.at("assets\\KUJU\\RailSimulator\\blueprint.xml")));
}

TEST(Files, WriteTextFileWarnsWhenTheFileIsEmpty) {
    Fixture f;
    EXPECT_TRUE(WriteTextFile(f.ctx, f.at("out.xml"), "<a/>"));
    EXPECT_EQ(f.root.read("out.xml"), "<a/>");
    EXPECT_TRUE(f.ui.shown.empty());
    EXPECT_GT(f.ui.pumps, 0);

    EXPECT_FALSE(WriteTextFile(f.ctx, f.at("empty.xml"), ""));
    ASSERT_EQ(f.ui.texts(), std::vector<std::string>{"An error occurred while writing " + f.at("empty.xml")});
    EXPECT_EQ(f.ui.shown[0].icon, base::Icon::Exclamation);
    EXPECT_TRUE(fs::exists(f.root.path() / "empty.xml"));
}

TEST(Files, WriteTextFileIntoAMissingFolderReportsAndWarns) {
    Fixture f;
    EXPECT_FALSE(WriteTextFile(f.ctx, f.at("no\\such\\folder\\x.xml"), "text"));
    ASSERT_EQ(f.ui.shown.size(), 2u);
    EXPECT_EQ(f.ui.shown[0].icon, base::Icon::Critical);  // the error log's stop box
    EXPECT_EQ(f.ui.shown[1].text, "An error occurred while writing " + f.at("no\\such\\folder\\x.xml"));
    EXPECT_NE(f.root.read("Errors.txt").find("Path/File access error"), std::string::npos);
}

TEST(Files, WriteBatchEndsWithALineEnd) {
    Fixture f;
    EXPECT_FALSE(WriteBatch(f.at("do_read.bat"), "chcp 1252\r\nATTRIB -R \"x\\*.*\" /s /d"));
    EXPECT_EQ(f.root.read("do_read.bat"), "chcp 1252\r\nATTRIB -R \"x\\*.*\" /s /d\r\n");
    EXPECT_TRUE(WriteBatch(f.at("nowhere\\do_read.bat"), "x"));
}

TEST(Files, FileAndFolderTests) {
    Fixture f;
    f.root.write("sub/file.txt", "1");
    EXPECT_TRUE(FileExists(f.at("sub\\file.txt")));
    EXPECT_FALSE(FileExists(f.at("sub")));          // a folder is no file
    EXPECT_FALSE(FileExists(f.at("sub\\none.txt")));

    std::string folder = f.at("sub\\");
    EXPECT_TRUE(FolderExists(folder));
    EXPECT_EQ(folder, f.at("sub"));                 // the trailing backslash is gone
    std::string missing = f.at("nothing");
    EXPECT_FALSE(FolderExists(missing));
    EXPECT_TRUE(fs::is_empty(f.root.path() / "sub") == false);
    EXPECT_EQ(fs::directory_iterator(f.root.path() / "sub")->path().filename(), "file.txt");  // no probe file left
}

TEST(Files, UnreadableAndUnwritableCountAsMissing) {
    if (::geteuid() == 0) GTEST_SKIP() << "running as root: permissions do not stop root";
    Fixture f;
    const auto file = f.root.write("locked.txt", "1");
    fs::permissions(file, fs::perms::none);
    EXPECT_FALSE(FileExists(f.at("locked.txt")));
    fs::create_directories(f.root.path() / "ro");
    fs::permissions(f.root.path() / "ro", fs::perms::owner_read | fs::perms::owner_exec);
    std::string ro = f.at("ro");
    EXPECT_FALSE(FolderExists(ro));
}

TEST(Files, CreatePathMakesEveryLevel) {
    Fixture f;
    EXPECT_TRUE(CreatePath(f.at("a\\b\\c")));
    EXPECT_TRUE(fs::is_directory(f.root.path() / "a/b/c"));
    EXPECT_TRUE(CreatePath(f.at("a\\b\\c")));       // existing is fine
    f.root.write("plain", "x");
    EXPECT_FALSE(CreatePath(f.at("plain\\below")));
}

TEST(Files, DeleteFolderTreeIsForcedAndReportsAMissingFolder) {
    Fixture f;
    const auto file = f.root.write("TempFiles/deep/x.bin", "x");
    fs::permissions(file, fs::perms::owner_read);
    fs::permissions(file.parent_path(), fs::perms::owner_read | fs::perms::owner_exec);
    EXPECT_FALSE(DeleteFolderTree(f.ctx, f.at("tempfiles")));
    EXPECT_FALSE(fs::exists(f.root.path() / "TempFiles"));
    const base::Status missing = DeleteFolderTree(f.ctx, f.at("TempFiles"));
    ASSERT_TRUE(missing);
    EXPECT_EQ(missing->number, base::err::kPathNotFound);
}

TEST(Files, CopyFolderTreeWithAndWithoutOverwrite) {
    Fixture f;
    f.root.write("from/a.txt", "new a");
    f.root.write("from/sub/b.txt", "new b");
    f.root.write("to/a.txt", "old a");
    const base::Status refused = CopyFolderTree(f.at("from"), f.at("to"), false);
    ASSERT_TRUE(refused);
    EXPECT_EQ(f.root.read("to/a.txt"), "old a");
    EXPECT_EQ(f.root.read("to/sub/b.txt"), "new b");
    EXPECT_FALSE(CopyFolderTree(f.at("from"), f.at("to"), true));
    EXPECT_EQ(f.root.read("to/a.txt"), "new a");
    EXPECT_TRUE(CopyFolderTree(f.at("none"), f.at("to"), true));
}

TEST(Files, AccentedNamesReachTheDiskAsUtf8) {
    Fixture f;
    EXPECT_TRUE(WriteTextFile(f.ctx, f.at("Gr\xFCn.txt"), "x"));   // Windows-1252 u umlaut
    EXPECT_TRUE(fs::exists(f.root.path() / "Gr\xC3\xBCn.txt"));
    EXPECT_EQ(ReadTextFile(f.at("GR\xDCN.TXT")), "x");               // capital U umlaut finds it
}

}  // namespace
}  // namespace ferrolund::tools
