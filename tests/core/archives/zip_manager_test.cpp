#include "archives/zip_manager.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "support/scripted_ui.h"
#include "support/temp_folder.h"
#include "zip_fixture.h"

namespace ferrolund::archives {
namespace {

namespace fs = std::filesystem;

struct ManagerTest : ::testing::Test {
    testing::TempFolder root;
    testing::ScriptedUi ui;
    app::AppContext ctx;
    ZipManager zip;
    ManagerTest() {
        ctx.appRoot = root.system();
        ctx.ui = &ui;
        root.write("Pack/InstallMe.bat", "xcopy /s /y");
        root.write("Pack/Assets/Kuju/Stock/loco.bin", testing::NoiseBytes(3000));
        root.write("Pack/Assets/Kuju/Stock/loco.xml", "<x/>");
    }
    std::vector<std::string> stored() const {
        std::vector<std::string> names;
        for (const auto& e : zip.archive().entries()) names.push_back(e.stored);
        return names;
    }
};

TEST(ZipNames, ExtensionAndPartSize) {
    EXPECT_EQ(WithZipExtension("Route"), "Route.zip");
    EXPECT_EQ(WithZipExtension("Route.ZIP"), "Route.ZIP");
    EXPECT_EQ(WithZipExtension("Route.zipper"), "Route.zipper.zip");
    const struct {
        const char* text;
        std::uint64_t bytes;
    } cases[] = {{"10", 10000000}, {" 1 ", 1000000}, {"0", 0}, {"", 0}, {"1.5", 0}, {"-3", 0}, {"ten", 0},
                 {"9999999999", 0}};
    for (const auto& c : cases) EXPECT_EQ(PartBytes(c.text), c.bytes) << c.text;
}

TEST_F(ManagerTest, CommandsWithoutAnArchiveNameWhatTheyCannotDo) {
    EXPECT_FALSE(zip.addFiles(ctx, {root.system() + "\\Pack\\InstallMe.bat"}));
    EXPECT_FALSE(zip.addFolder(ctx, root.system() + "\\Pack", ""));
    EXPECT_FALSE(zip.extract(ctx, false, {}, true));
    ASSERT_EQ(ui.shown.size(), 3u);
    EXPECT_EQ(ui.shown[0].text, "You must Open an Archive before you can\r\n            Add anything to it!");
    EXPECT_EQ(ui.shown[2].text, "You must Open an Archive before you can\r\n            Extract anything from it!");
    EXPECT_EQ(ui.shown[0].title, "Error");
}

TEST_F(ManagerTest, NewArchiveThenFilesAndAFolderWithAPattern) {
    ASSERT_TRUE(zip.createArchive(ctx, root.system() + "\\New", 0));
    EXPECT_TRUE(fs::exists(root.path() / "New.zip"));
    EXPECT_TRUE(zip.archive().entries().empty());
    ASSERT_TRUE(zip.addFiles(ctx, {root.system() + "\\Pack\\InstallMe.bat"}));
    ASSERT_TRUE(zip.addFolder(ctx, root.system() + "\\Pack\\Assets", "*.BIN"));
    EXPECT_EQ(stored(), (std::vector<std::string>{"InstallMe.bat", "Kuju\\Stock\\loco.bin"}));
    // Adding a file of a name already stored replaces that entry.
    root.write("Pack/InstallMe.bat", "new text");
    ASSERT_TRUE(zip.addFiles(ctx, {root.system() + "\\Pack\\InstallMe.bat"}));
    EXPECT_EQ(stored(), (std::vector<std::string>{"Kuju\\Stock\\loco.bin", "InstallMe.bat"}));
    ASSERT_TRUE(zip.extract(ctx, false, {}, true));
    EXPECT_EQ(root.read("InstallMe.bat"), "new text");
    EXPECT_EQ(root.read("Kuju/Stock/loco.bin"), testing::NoiseBytes(3000));
    EXPECT_TRUE(ui.shown.empty());
}

TEST_F(ManagerTest, ProcessWarnsOfAMissingPartSizeBeforeAnyDialog) {
    for (const char* size : {"0", "", "x"}) {
        ui.shown.clear();
        EXPECT_FALSE(zip.process(ctx, root.system() + "\\Pack", true, size));
        ASSERT_EQ(ui.shown.size(), 1u);
        EXPECT_EQ(ui.shown[0].text,
                  "You have selected 'Produce multiple Zips', but have not entered a\r\n"
                  "                     file size. Please do so, then try again.");
    }
    EXPECT_TRUE(ui.dialogTitles.empty());
    EXPECT_FALSE(zip.process(ctx, root.system() + "\\Pack", false, ""));  // the save dialog cancelled
    EXPECT_FALSE(zip.isOpen());
}

TEST_F(ManagerTest, ProcessZipsTheFolderInPartsThatReadBackWhole) {
    root.write("Pack/Assets/Kuju/Stock/big.dat", testing::NoiseBytes(2500000, 7));
    ui.files = {root.system() + "\\out\\Package.zip"};
    fs::create_directories(root.path() / "out");
    ASSERT_TRUE(zip.process(ctx, root.system() + "\\Pack", true, "1"));
    EXPECT_EQ(zip.zipFileLabel, "Zip File name:  " + root.system() + "\\out\\Package.zip");
    EXPECT_TRUE(fs::exists(root.path() / "out/Package.z01"));
    EXPECT_EQ(fs::file_size(root.path() / "out/Package.z01"), 1000000u);
    EXPECT_EQ(stored().size(), 4u);
    ZipManager again;
    ASSERT_TRUE(again.openArchive(ctx, root.system() + "\\out\\Package.zip"));
    EXPECT_EQ(again.partSize(), 1000000u);
    ASSERT_TRUE(again.extract(ctx, false, {}, true));
    EXPECT_EQ(root.read("out/Assets/Kuju/Stock/big.dat"), testing::NoiseBytes(2500000, 7));
}

TEST_F(ManagerTest, AnAbortedAddKeepsTheOldArchiveWhole) {
    ASSERT_TRUE(zip.createArchive(ctx, root.system() + "\\Keep.zip", 0));
    ASSERT_TRUE(zip.addFiles(ctx, {root.system() + "\\Pack\\InstallMe.bat"}));
    const std::string before = testing::ReadFile(root.path() / "Keep.zip");
    struct AbortingUi : testing::ScriptedUi {
        app::AppContext* ctx = nullptr;
        void progress(int, const std::string&) override { ctx->abortFlag = true; }
    } aborting;
    aborting.ctx = &ctx;
    ctx.ui = &aborting;
    EXPECT_FALSE(zip.addFolder(ctx, root.system() + "\\Pack\\Assets", ""));
    EXPECT_EQ(testing::ReadFile(root.path() / "Keep.zip"), before);
}

TEST_F(ManagerTest, ACorruptArchiveIsReportedAndNothingIsOpen) {
    root.write("bad.zip", std::string("PK\x05\x06", 4) + std::string(10, '\xff'));
    EXPECT_FALSE(zip.openArchive(ctx, root.system() + "\\bad.zip"));
    EXPECT_FALSE(zip.isOpen());
    EXPECT_EQ(ui.shown.size(), 1u);
}

}  // namespace
}  // namespace ferrolund::archives
