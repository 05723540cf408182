// The route's real terrain textures. Each comes with a .dds another program made from
// it, holding the pixels decoded to 32-bit BGRX rather than DXT1 blocks: our .dds keeps
// the blocks, so the two are compared by size fields and by decoded colour, and the way
// back must give the original .TgPcDx byte for byte.
#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "support/temp_folder.h"
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

std::uint32_t Le(const std::string& b, std::size_t at, int bytes) {
    std::uint32_t v = 0;
    for (int i = bytes - 1; i >= 0; --i) v = (v << 8) | static_cast<unsigned char>(b[at + i]);
    return v;
}

// The colour (R, G, B) of pixel x, y of the first level of a DXT1 .dds.
std::array<int, 3> Dxt1Pixel(const std::string& dds, unsigned width, unsigned x, unsigned y) {
    const std::size_t block = 128 + (std::size_t{y / 4} * (width / 4) + x / 4) * 8;
    const std::uint32_t c0 = Le(dds, block, 2), c1 = Le(dds, block + 2, 2);
    auto rgb = [](std::uint32_t c) {
        const int r = int(c >> 11), g = int((c >> 5) & 63), b = int(c & 31);
        return std::array<int, 3>{(r << 3) | (r >> 2), (g << 2) | (g >> 4), (b << 3) | (b >> 2)};
    };
    const auto a = rgb(c0), b = rgb(c1);
    const unsigned index = (Le(dds, block + 4, 4) >> (2 * ((y % 4) * 4 + x % 4))) & 3;
    std::array<int, 3> out{};
    for (int i = 0; i < 3; ++i) {
        if (index == 0) out[i] = a[i];
        else if (index == 1) out[i] = b[i];
        else if (c0 > c1) out[i] = index == 2 ? (2 * a[i] + b[i]) / 3 : (a[i] + 2 * b[i]) / 3;
        else out[i] = index == 2 ? (a[i] + b[i]) / 2 : 0;
    }
    return out;
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
            int worst = 0;
            for (unsigned y = 0; y < mine.height; ++y)
                for (unsigned x = 0; x < mine.width; ++x) {
                    const auto colour = Dxt1Pixel(ours, mine.width, x, y);
                    const std::size_t at = 128 + (std::size_t{y} * mine.width + x) * 4;
                    for (int i = 0; i < 3; ++i)  // BGRX: blue first
                        worst = std::max(worst, std::abs(colour[i] - static_cast<unsigned char>(theirs[at + 2 - i])));
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
