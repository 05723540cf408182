#include "archives/ap_viewer.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "support/scripted_ui.h"
#include "support/temp_folder.h"
#include "zip_fixture.h"

namespace ferrolund::archives {
namespace {

namespace fs = std::filesystem;

struct ViewerTest : ::testing::Test {
    testing::TempFolder root;
    testing::ScriptedUi ui;
    app::AppContext ctx;
    ApViewer viewer;
    ViewerTest() {
        ctx.appRoot = root.system();
        ctx.ui = &ui;
        testing::MakeZip(root.path() / "Route/MainContent.ap",
                         {{"RouteProperties.xml", "<English>R</English>"}, {"Scenarios/", ""}, {"Scenarios/s/a.txt", "A"}});
    }
    std::string ap() const { return root.system() + "\\Route\\MainContent.ap"; }
};

TEST_F(ViewerTest, CommandsWithoutAnArchiveSaySo) {
    EXPECT_FALSE(viewer.extract(ctx, false, {}, true));
    ASSERT_EQ(ui.shown.size(), 1u);
    EXPECT_EQ(ui.shown[0].text, "You must Open an Archive before you can\r\n            Extract anything from it!");
    EXPECT_EQ(ui.shown[0].title, "Error");
}

TEST_F(ViewerTest, OpeningListsCountsAndClosesTheOldOne) {
    testing::MakeZip(root.path() / "other.ap", {{"x.bin", "x"}});
    viewer.openArchive(ctx, root.system() + "\\other.ap");
    viewer.openArchive(ctx, ap());
    EXPECT_EQ(viewer.caption(), "Archive - " + ap());
    EXPECT_EQ(viewer.folderCount(), 1);
    EXPECT_EQ(viewer.fileCount(), 2);
    viewer.openArchive(ctx, root.system() + "\\nothing.ap");
    EXPECT_FALSE(viewer.isOpen());
    EXPECT_EQ(ui.shown.size(), 1u);  // the failure, reported
}

TEST_F(ViewerTest, ExtractSelectedWithoutSelectionStopsBeforeTheFolderQuestion) {
    viewer.openArchive(ctx, ap());
    EXPECT_FALSE(viewer.extract(ctx, true, {}, false));
    EXPECT_EQ(ui.texts(), std::vector<std::string>{"You have not selected any items to unpack"});
    EXPECT_TRUE(ui.dialogTitles.empty());
}

TEST_F(ViewerTest, ExtractAskedAndConfirmedWithFullPathsOnAndOff) {
    viewer.openArchive(ctx, ap());
    ui.folders = {root.system() + "\\chosen"};
    ui.inputs = {root.system() + "\\confirmed"};
    EXPECT_TRUE(viewer.extract(ctx, false, {}, false));
    EXPECT_TRUE(fs::exists(root.path() / "confirmed/Scenarios/s/a.txt"));
    EXPECT_FALSE(fs::exists(root.path() / "chosen"));
    EXPECT_EQ(ui.lastStatus(0), "Extract Completed");
    viewer.fullPath = false;
    EXPECT_TRUE(viewer.extract(ctx, true, {2}, true));
    EXPECT_TRUE(fs::exists(root.path() / "Route/a.txt"));
    ui.folders = {root.system()};
    ui.inputs = {std::string()};
    EXPECT_FALSE(viewer.extract(ctx, false, {}, false));
}

TEST_F(ViewerTest, FindFileAndPatterns) {
    viewer.openArchive(ctx, ap());
    EXPECT_EQ(viewer.findFile(ctx, "a.TXT"), 2u);
    EXPECT_EQ(viewer.findFile(ctx, "zzz.bin"), std::nullopt);
    EXPECT_EQ(ui.texts().back(), "The file  zzz.bin\r\nwas not found.");
    EXPECT_EQ(viewer.findFiles("*.xml"), std::vector<std::size_t>{0});
}

TEST_F(ViewerTest, ViewingAnEntryByItsKind) {
    viewer.openArchive(ctx, ap());
    EXPECT_EQ(viewer.viewEntry(ctx, 0), "<English>R</English>");
    EXPECT_TRUE(fs::exists(root.path() / "TempFiles/RouteProperties.xml"));
    EXPECT_EQ(viewer.viewEntry(ctx, 2), std::nullopt);
}

TEST_F(ViewerTest, ThePartsOfASplitSetAreRenamedOnOpening) {
    testing::WriteFile(root.path() / "set.z01", "1");
    testing::WriteFile(root.path() / "set.z02", "2");
    testing::WriteFile(root.path() / "set.zip", "not a zip");
    viewer.openArchive(ctx, root.system() + "\\set.zip");
    EXPECT_TRUE(fs::exists(root.path() / "set.001"));
    EXPECT_TRUE(fs::exists(root.path() / "set.002"));
    EXPECT_FALSE(fs::exists(root.path() / "set.z01"));
}

}  // namespace
}  // namespace ferrolund::archives
