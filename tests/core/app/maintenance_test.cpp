#include "app/maintenance.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "support/scripted_ui.h"
#include "support/temp_folder.h"

namespace ferrolund::app {
namespace {

namespace fs = std::filesystem;

struct Fixture {
    testing::TempFolder root;
    testing::ScriptedUi ui;
    AppContext ctx;
    Fixture() {
        ctx.appRoot = (root.path() / "app").string();
        ctx.prefs.gameRoot = (root.path() / "game").string();
        ctx.ui = &ui;
        fs::create_directories(root.path() / "app/TempFiles");
        fs::create_directories(root.path() / "game/Content");
    }
};

TEST(Maintenance, ClearTempFilesLeavesAnEmptyFolderAndAsksNothing) {
    Fixture f;
    f.root.write("app/TempFiles/Scenario.xml", "x");
    f.root.write("app/TempFiles/Scenery/+000000+000000.bin", "x");
    ClearTempFiles(f.ctx);
    EXPECT_TRUE(fs::is_directory(f.root.path() / "app/TempFiles"));
    EXPECT_TRUE(fs::is_empty(f.root.path() / "app/TempFiles"));
    EXPECT_TRUE(f.ui.shown.empty());
}

TEST(Maintenance, BatchTexts) {
    EXPECT_EQ(ReadWriteBatch("C:\\Games\\RailWorks"), "ATTRIB -R \"C:\\Games\\RailWorks\\*.*\" /s /d");
    EXPECT_EQ(FullBackupBatch("G", "B\\Ferrolund_Backup", true),
              "chcp 1252\r\n"
              "copy \"G\\*.*\" \"B\\Ferrolund_Backup\\\"\r\n"
              "call xcopy \"G\\Assets\\*.*\" \"B\\Ferrolund_Backup\\Assets\\*.*\" /s /y\r\n"
              "call xcopy \"G\\Content\\*.*\" \"B\\Ferrolund_Backup\\Content\\*.*\" /s /y\r\n"
              "call xcopy \"G\\Source\\*.*\" \"B\\Ferrolund_Backup\\Source\\*.*\" /s /y");
    EXPECT_EQ(FullBackupBatch("G", "B", false).find("Source"), std::string::npos);
}

TEST(Maintenance, CacheBackupNames) {
    EXPECT_EQ(CacheBackupName("SDBCache.bin"), "SDBCache.bak");
    EXPECT_EQ(CacheBackupName("SDBCache.bin.MD5"), "SDBCache.bin.MD5.bak");
    EXPECT_EQ(CacheBackupName("RVDBCache.bin"), "RVDBCache.bak");
    EXPECT_EQ(CacheBackupName("RVDBCache.bin.MD5"), "RVDBCache.bin.MD5.bak");
}

TEST(Maintenance, DeletingTheCachesTakesThoseThereAndSaysNothing) {
    Fixture f;
    f.root.write("game/Content/RVDBCache.bin", "x");
    f.root.write("game/Content/ConsistTemplates.bin", "keep");
    DeleteCacheFiles(f.ctx);
    EXPECT_FALSE(fs::exists(f.root.path() / "game/Content/RVDBCache.bin"));
    EXPECT_TRUE(fs::exists(f.root.path() / "game/Content/ConsistTemplates.bin"));
    EXPECT_TRUE(f.ui.shown.empty());
}

TEST(Maintenance, RenamingTheCachesKeepsAnOldBackup) {
    Fixture f;
    for (const char* name : kCacheFiles) f.root.write(std::string("game/Content/") + name, name);
    f.root.write("game/Content/RVDBCache.bak", "older");
    RenameCacheFiles(f.ctx);
    EXPECT_EQ(f.root.read("game/Content/SDBCache.bak"), "SDBCache.bin");
    EXPECT_EQ(f.root.read("game/Content/SDBCache.bin.MD5.bak"), "SDBCache.bin.MD5");
    EXPECT_EQ(f.root.read("game/Content/RVDBCache.bin.MD5.bak"), "RVDBCache.bin.MD5");
    EXPECT_EQ(f.root.read("game/Content/RVDBCache.bak"), "older");      // the old back-up stays
    EXPECT_EQ(f.root.read("game/Content/RVDBCache.bin"), "RVDBCache.bin");
    ASSERT_EQ(f.ui.shown.size(), 1u);                                    // through the error path
    EXPECT_EQ(f.ui.shown[0].icon, base::Icon::Critical);
}

TEST(Maintenance, BackupWithoutAPathSaysWhatToDo) {
    Fixture f;
    FullBackup(f.ctx);
    ASSERT_EQ(f.ui.texts(), std::vector<std::string>{"You do not appear to have set up a path for your backups.\n"
                                                     "Go to the Options menu and do this first."});
    EXPECT_EQ(f.ui.shown[0].icon, base::Icon::Exclamation);
    EXPECT_FALSE(fs::exists(f.root.path() / "app/TempFiles/do_clone.bat"));
}

TEST(Maintenance, ReadOnlyFilesBecomeWritable) {
    Fixture f;
    const auto locked = f.root.write("game/Assets/K/P/Unpacked/a.bin", "x");
    const auto other = f.root.write("game/Content/Routes/r/b.bin", "y");
    for (const auto& file : {locked, other}) fs::permissions(file, fs::perms::owner_read);
    MakeReadWrite(f.ctx, f.ctx.gameRoot());
    for (const auto& file : {locked, other}) {
        EXPECT_NE(fs::status(file).permissions() & fs::perms::owner_write, fs::perms::none) << file;
    }
    EXPECT_EQ(f.root.read("app/TempFiles/do_read.bat"), ReadWriteBatch(f.ctx.gameRoot()) + "\r\n");
    EXPECT_EQ(f.ui.texts().back(), "All files are now Read/Write");
    EXPECT_EQ(f.ui.shown.size(), 1u) << f.ui.shown[0].text;
}

TEST(Maintenance, SelectedFolderOnly) {
    Fixture f;
    const auto inside = f.root.write("game/Assets/K/P/a.bin", "x");
    const auto outside = f.root.write("game/Content/b.bin", "y");
    for (const auto& file : {inside, outside}) fs::permissions(file, fs::perms::owner_read);
    f.ui.folders.push_back(f.ctx.gameRoot() + "\\Assets");
    MakeSelectedFolderReadWrite(f.ctx);
    EXPECT_NE(fs::status(inside).permissions() & fs::perms::owner_write, fs::perms::none);
    EXPECT_EQ(fs::status(outside).permissions() & fs::perms::owner_write, fs::perms::none);
}

TEST(Maintenance, FullBackupCopiesRootAssetsContentAndSource) {
    Fixture f;
    f.root.write("game/RailWorks.exe", "exe");
    f.root.write("game/Assets/K/P/a.bin", "a");
    f.root.write("game/Content/Routes/r/RouteProperties.xml", "r");
    f.root.write("game/Source/K/P/s.xml", "s");
    f.ctx.prefs.backupPath = f.root.system() + "/backups";
    FullBackup(f.ctx);
    const std::string folder = f.ctx.prefs.backupPath + "\\Ferrolund_Backup";
    EXPECT_EQ(f.root.read("backups/Ferrolund_Backup/RailWorks.exe"), "exe");
    EXPECT_EQ(f.root.read("backups/Ferrolund_Backup/Assets/K/P/a.bin"), "a");
    EXPECT_EQ(f.root.read("backups/Ferrolund_Backup/Content/Routes/r/RouteProperties.xml"), "r");
    EXPECT_EQ(f.root.read("backups/Ferrolund_Backup/Source/K/P/s.xml"), "s");
    ASSERT_EQ(f.ui.shown.size(), 1u) << f.ui.shown[0].text;
    EXPECT_EQ(f.ui.shown[0].text, "TrainSimulator 2020 Assets,Contents,Source and Root folders have been copied to\n" + folder);
}

TEST(Maintenance, SelectedFolderCancelledDoesNothing) {
    Fixture f;
    MakeSelectedFolderReadWrite(f.ctx);
    EXPECT_TRUE(f.ui.shown.empty());
    EXPECT_FALSE(fs::exists(f.root.path() / "app/TempFiles/do_read.bat"));
}

}  // namespace
}  // namespace ferrolund::app
