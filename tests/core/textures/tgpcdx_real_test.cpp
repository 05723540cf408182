// The route's real terrain textures. Each comes with a .dds another program made from
// it, holding the pixels decoded to 32-bit BGRX rather than DXT1 blocks: our .dds keeps
// the blocks, so the two are compared by size fields and by decoded colour, and the way
// back must give the original .TgPcDx byte for byte.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "support/temp_folder.h"
#include "textures/dds_image.h"
#include "textures/tgpcdx_dds.h"

namespace fs = std::filesystem;
using namespace ferrolund;

namespace {

std::string Read(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

std::vector<fs::path> RealTextures() {
    std::vector<fs::path> found;
    const fs::path routes = fs::path(FERROLUND_TESTDATA) / "routes";
    if (!fs::exists(routes)) return found;
    for (const auto& entry : fs::recursive_directory_iterator(routes))
        if (entry.path().extension() == ".TgPcDx") found.push_back(entry.path());
    return found;
}

}  // namespace

TEST(RealTextures, DdsMatchesTheOtherProgramsAndComesBackUnchanged) {
    const std::vector<fs::path> textures = RealTextures();
    if (textures.empty()) GTEST_SKIP() << "no real .TgPcDx under " << FERROLUND_TESTDATA << "/routes";
    for (const fs::path& texture : textures) {
        SCOPED_TRACE(texture.string());
        ferrolund::testing::TempFolder temp;
        const textures::ConversionResult there = textures::TgPcDxToDds(texture.string(), temp.system());
        ASSERT_EQ(there.error, "");
        const std::string ours = Read(there.output);
        const fs::path theirsPath = fs::path(texture).replace_extension(".dds");
        if (fs::exists(theirsPath)) {
            const std::string theirs = Read(theirsPath);
            textures::DdsInfo mine, other;
            ASSERT_EQ(textures::ReadDdsInfo(ours, mine), "");
            ASSERT_EQ(textures::ReadDdsInfo(theirs, other), "");
            EXPECT_EQ(mine.width, other.width);
            EXPECT_EQ(mine.height, other.height);
            ASSERT_EQ(mine.format, "DXT1");
            ASSERT_EQ(other.format, "XRGB 8.8.8.8");
            ASSERT_GE(theirs.size(), 128 + std::size_t{mine.width} * mine.height * 4);
            // Both decoded by the viewer's own decoder, pixel against pixel.
            textures::DdsImage ourImage, theirImage;
            textures::RgbaImage ourPixels, theirPixels;
            ASSERT_FALSE(textures::ReadDds(ours, ourImage));
            ASSERT_FALSE(textures::ReadDds(theirs, theirImage));
            ASSERT_FALSE(textures::DecodeDdsLevel(ourImage, 0, ourPixels));
            ASSERT_FALSE(textures::DecodeDdsLevel(theirImage, 0, theirPixels));
            ASSERT_EQ(ourPixels.pixels.size(), theirPixels.pixels.size());
            int worst = 0;
            for (std::size_t i = 0; i < ourPixels.pixels.size(); ++i) {
                if (i % 4 == 3) continue;  // the reference has no alpha
                worst = std::max(worst, std::abs(int(ourPixels.pixels[i]) - int(theirPixels.pixels[i])));
            }
            // Decoders differ in how they round the blended colours of a block, by a few steps.
            EXPECT_LE(worst, 8) << "largest colour difference";
        }
        // Back over a copy of the original, as the command does it: byte for byte.
        const fs::path copy = temp.path() / "route" / texture.filename();
        fs::create_directories(copy.parent_path());
        fs::copy_file(texture, copy);
        const textures::ConversionResult back = textures::DdsToTgPcDx(there.output, copy.string());
        ASSERT_EQ(back.error, "");
        EXPECT_EQ(Read(copy), Read(texture));
        EXPECT_EQ(Read(back.backup), Read(texture));
        // To a new file the texture goes through its XML, which has no room for the game's
        // marker record: the same texture, read again, gives the same .dds.
        const fs::path fresh = temp.path() / "fresh.TgPcDx";
        ASSERT_EQ(textures::DdsToTgPcDx(there.output, fresh.string()).error, "");
        const textures::ConversionResult again = textures::TgPcDxToDds(fresh.string(), (temp.path() / "again").string());
        ASSERT_EQ(again.error, "");
        EXPECT_EQ(Read(again.output), ours);
    }
}
