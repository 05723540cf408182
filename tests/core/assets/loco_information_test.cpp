#include "assets/loco_information.h"

#include <gtest/gtest.h>

#include <fstream>

#include "asset_check_fixture.h"
#include "tools/host_path.h"
#include "support/locked_folder.h"

namespace ferrolund::assets::checks {
namespace {

// Stands in for the picture writer: the PNG holds "png:" and the JPEG's bytes.
bool FakePng(const std::string& jpg, const std::string& png) {
    std::ofstream out(tools::HostPath(png), std::ios::binary);
    out << "png:" << tools::ReadTextFile(jpg);
    return out.good();
}

struct Pictures : Installation {
    const AssetRow row = Row("K", "P\xC3\xA9", "Loco\\Class 58.bin", "Class 58: Br\xC3\xBC" "der");
    Pictures() {
        file("K/P\xC3\xA9/Loco/Class 58.bin");
        root.write("app/Thumbnails/Class 58 Br\xC3\xBC" "der.jpg", "jpeg");
    }
    fs::path info(const std::string& name = "image.png") const {
        return root.path() / "game/Assets/K/P\xC3\xA9/Loco/LocoInformation" / name;
    }
    fs::path png() const { return root.path() / ("app/Thumbnails/Class 58 Br\xC3\xBC" "der.png"); }
};

TEST(AddLocoInformation, ThePictureGoesBesideTheBlueprint) {
    Pictures p;
    p.ui.answers = {base::Answer::Ok};
    const LocoInformationOutcome outcome = AddLocoInformation(p.ctx, {p.row}, FakePng);
    ASSERT_EQ(outcome.written.size(), 1u);
    EXPECT_EQ(tools::ReadTextFile(p.info().string()), "png:jpeg");
    EXPECT_FALSE(fs::exists(p.png()));
    EXPECT_EQ(p.ui.texts(), (std::vector<std::string>{
                                "If you have a thumbnail for this loco in the \nThumbnails folder, this option will allow you "
                                "to\nconvert it to .png and save in the LocoInformation\nfolder.",
                                "The picture has been saved as image.png in the LocoInformation folder."}));
}

TEST(AddLocoInformation, CasesThatWriteNothing) {
    struct Case {
        const char* what;
        base::Answer answer;
        bool thumbnail;
        bool converts;
        std::string told;  // the second message, if any
    };
    const Case cases[] = {
        {"cancelled", base::Answer::Cancel, true, true, ""},
        {"no thumbnail", base::Answer::Ok, false, true,
         "There does not appear to be a thumbnail for\nthis loco in your Ferrolund\\Thumbnails folder?"},
        {"the converter fails", base::Answer::Ok, true, false, ""},
    };
    for (const Case& c : cases) {
        Pictures p;
        if (!c.thumbnail) fs::remove(p.root.path() / ("app/Thumbnails/Class 58 Br\xC3\xBC" "der.jpg"));
        p.ui.answers = {c.answer};
        const LocoInformationOutcome outcome = AddLocoInformation(
            p.ctx, {p.row}, c.converts ? PictureConverter(FakePng) : [](const std::string&, const std::string&) { return false; });
        EXPECT_TRUE(outcome.written.empty()) << c.what;
        EXPECT_FALSE(fs::exists(p.info())) << c.what;
        EXPECT_FALSE(fs::exists(p.png())) << c.what;
        if (!c.told.empty()) {
            ASSERT_GE(p.ui.texts().size(), 2u) << c.what;
            EXPECT_EQ(p.ui.texts()[1], c.told) << c.what;
        }
    }
}

TEST(AddLocoInformation, AnOldPictureIsKeptOrLeftWhole) {
    {
        Pictures p;
        p.root.write("game/Assets/K/P\xC3\xA9/Loco/LocoInformation/image.png", "old");
        p.ui.answers = {base::Answer::Ok};
        AddLocoInformation(p.ctx, {p.row}, FakePng);
        EXPECT_EQ(tools::ReadTextFile(p.info().string()), "png:jpeg");
        EXPECT_EQ(tools::ReadTextFile(p.info("image.png.bak").string()), "old");
    }
    {
        // Every back-up name taken: the old picture stays as it was.
        Pictures p;
        p.root.write("game/Assets/K/P\xC3\xA9/Loco/LocoInformation/image.png", "old");
        p.root.write("game/Assets/K/P\xC3\xA9/Loco/LocoInformation/image.png.bak", "b");
        for (int n = 1; n <= 50; ++n)
            p.root.write("game/Assets/K/P\xC3\xA9/Loco/LocoInformation/image.png.bak" + std::to_string(n), "b");
        p.ui.answers = {base::Answer::Ok};
        const LocoInformationOutcome outcome = AddLocoInformation(p.ctx, {p.row}, FakePng);
        EXPECT_TRUE(outcome.written.empty());
        EXPECT_EQ(tools::ReadTextFile(p.info().string()), "old");
        EXPECT_FALSE(fs::exists(p.png()));
    }
}

TEST(AddLocoInformation, AReadOnlyFolderLosesNothing) {
    Pictures p;
    p.root.write("game/Assets/K/P\xC3\xA9/Loco/LocoInformation/image.png", "old");
    LocoInformationOutcome outcome;
    {
        ferrolund::testing::LockedFolder lock(p.info().parent_path());
        if (!lock.locked()) GTEST_SKIP() << "the folder cannot be locked against this user";
        p.ui.answers = {base::Answer::Ok};
        outcome = AddLocoInformation(p.ctx, {p.row}, FakePng);
    }
    EXPECT_TRUE(outcome.written.empty());
    EXPECT_EQ(tools::ReadTextFile(p.info().string()), "old");
}

}  // namespace
}  // namespace ferrolund::assets::checks
