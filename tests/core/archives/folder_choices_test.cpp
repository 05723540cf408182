#include "archives/folder_choices.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "support/scripted_ui.h"
#include "support/temp_folder.h"

namespace ferrolund::archives {
namespace {

namespace fs = std::filesystem;

struct FolderTest : ::testing::Test {
    testing::TempFolder root;
    testing::ScriptedUi ui;
    app::AppContext ctx;
    FolderTest() {
        ctx.appRoot = root.system() + "\\Prog";
        ctx.prefs.gameRoot = root.system() + "\\RW";
        ctx.ui = &ui;
        root.write("RW/Temp/a.tmp", "a");
        root.write("RW/Temp/sub/b.tmp", "b");
        root.write("RW/Keep/user.bin", "mine");
    }
    std::string temp() const { return GameTempFolder(ctx); }
};

TEST_F(FolderTest, TheTempFolderIsBelowTheSimulatorAndNothingWithoutOne) {
    EXPECT_EQ(temp(), root.system() + "\\RW\\Temp");
    ctx.prefs.gameRoot.clear();
    EXPECT_EQ(temp(), "");
    EXPECT_FALSE(ClearFolder(ctx, temp()));
    EXPECT_EQ(DeleteSelectedFiles(ctx, temp(), {root.system() + "\\RW\\Temp\\a.tmp"}), 0);
    EXPECT_TRUE(fs::exists(root.path() / "RW/Temp/a.tmp"));
}

TEST_F(FolderTest, DeleteSelectedDeletesOnlyFilesInsideTheFolder) {
    const std::vector<std::string> files = {
        temp() + "\\A.TMP",                         // another case of the same name
        temp() + "\\sub\\b.tmp",
        root.system() + "\\RW\\Keep\\user.bin",    // beside the folder
        temp() + "\\..\\Keep\\user.bin",           // climbing out of it
        temp() + "\\missing.tmp",
    };
    EXPECT_EQ(DeleteSelectedFiles(ctx, temp(), files), 2);
    EXPECT_FALSE(fs::exists(root.path() / "RW/Temp/a.tmp"));
    EXPECT_FALSE(fs::exists(root.path() / "RW/Temp/sub/b.tmp"));
    EXPECT_EQ(root.read("RW/Keep/user.bin"), "mine");
    EXPECT_EQ(ui.shown.size(), 3u);  // the two refused and the missing one, reported
}

TEST_F(FolderTest, DeleteAllEmptiesTheFolderAndMakesItAgain) {
    EXPECT_TRUE(ClearFolder(ctx, temp()));
    EXPECT_TRUE(fs::is_directory(root.path() / "RW/Temp"));
    EXPECT_TRUE(fs::is_empty(root.path() / "RW/Temp"));
    EXPECT_EQ(root.read("RW/Keep/user.bin"), "mine");
    fs::remove_all(root.path() / "RW/Temp");
    EXPECT_TRUE(ClearFolder(ctx, temp()));  // a missing folder is made
    EXPECT_TRUE(fs::is_directory(root.path() / "RW/Temp"));
    EXPECT_TRUE(ui.shown.empty());
}

TEST_F(FolderTest, ConfirmMakesANewFolderAndAsksAboutAnExistingOne) {
    const struct {
        const char* what;
        std::string folder, name;
        std::optional<base::Answer> answer;
        std::optional<std::string> result;
    } cases[] = {
        {"new name made", root.system() + "\\out\\", "Unpacked", std::nullopt, root.system() + "\\out\\Unpacked"},
        {"existing, Yes", root.system(), "RW", base::Answer::Yes, root.system() + "\\RW"},
        {"existing, No", root.system(), "RW", base::Answer::No, std::nullopt},
        {"no new name: the folder itself", root.system() + "\\RW\\Keep", "", base::Answer::Yes,
         root.system() + "\\RW\\Keep"},
        {"no folder chosen", "", "x", std::nullopt, std::nullopt},
    };
    for (const auto& c : cases) {
        ui.shown.clear();
        if (c.answer) ui.answers = {*c.answer};
        EXPECT_EQ(ConfirmUnpackFolder(ctx, c.folder, c.name), c.result) << c.what;
        EXPECT_EQ(ui.shown.size(), c.answer ? 1u : 0u) << c.what;
        if (c.answer) {
            EXPECT_EQ(ui.shown[0].text, "A folder with that name already exists. Do you wish to proceed?");
        }
    }
    EXPECT_TRUE(fs::is_directory(root.path() / "out/Unpacked"));
}

}  // namespace
}  // namespace ferrolund::archives
