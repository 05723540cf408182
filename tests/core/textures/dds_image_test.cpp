// The .dds container: uncompressed channel orders, where each mip level lies, refusals of
// damaged or unsupported files, loading from disk, and the real terrain textures.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "dds_test_support.h"
#include "support/temp_folder.h"
#include "textures/dds_image.h"
#include "core/tools/testdata_file.h"

namespace ferrolund::textures {
namespace {

using testing::DxtHeader;
using testing::Masks;
using testing::PlainHeader;

constexpr Masks kArgb{0x00FF0000, 0x0000FF00, 0x000000FF, 0xFF000000};
constexpr Masks kXrgb{0x00FF0000, 0x0000FF00, 0x000000FF, 0};
constexpr Masks kAbgr{0x000000FF, 0x0000FF00, 0x00FF0000, 0xFF000000};

struct PlainCase {
    const char* name;
    int bits;
    Masks masks;
    DdsFormat format;
    std::string pixel;                 // one pixel as stored
    std::vector<std::uint8_t> rgba;    // as decoded
};

class DdsPlainTest : public ::testing::TestWithParam<PlainCase> {};

TEST_P(DdsPlainTest, ChannelsComeOutInRgbaOrder) {
    const PlainCase& c = GetParam();
    // 3x2 pixels, all alike but the last, which is its bytes reversed.
    std::string last(c.pixel.rbegin(), c.pixel.rend());
    std::string file = PlainHeader(c.bits, c.masks, 3, 2, 1);
    for (int i = 0; i < 5; ++i) file += c.pixel;
    file += last;
    DdsImage image;
    ASSERT_FALSE(ReadDds(file, image).has_value());
    EXPECT_EQ(image.format, c.format);
    RgbaImage rgba;
    ASSERT_FALSE(DecodeDdsLevel(image, 0, rgba).has_value());
    ASSERT_EQ(rgba.pixels.size(), 24u);
    EXPECT_EQ(std::vector<std::uint8_t>(rgba.pixels.begin(), rgba.pixels.begin() + 4), c.rgba);
    EXPECT_EQ(std::vector<std::uint8_t>(rgba.pixels.begin() + 16, rgba.pixels.begin() + 20), c.rgba);
    EXPECT_NE(std::vector<std::uint8_t>(rgba.pixels.begin() + 20, rgba.pixels.end()), c.rgba);
}

INSTANTIATE_TEST_SUITE_P(
    Orders, DdsPlainTest,
    ::testing::Values(
        // Stored B, G, R, A in memory for the usual A8R8G8B8.
        PlainCase{"a8r8g8b8", 32, kArgb, DdsFormat::A8R8G8B8, "\x11\x22\x33\x44", {0x33, 0x22, 0x11, 0x44}},
        PlainCase{"x8r8g8b8_is_opaque", 32, kXrgb, DdsFormat::X8R8G8B8, "\x11\x22\x33\x44", {0x33, 0x22, 0x11, 0xFF}},
        PlainCase{"r8g8b8", 24, {0x00FF0000, 0x0000FF00, 0x000000FF, 0}, DdsFormat::R8G8B8, "\x11\x22\x33",
                  {0x33, 0x22, 0x11, 0xFF}},
        PlainCase{"a8b8g8r8", 32, kAbgr, DdsFormat::A8R8G8B8, "\x11\x22\x33\x44", {0x11, 0x22, 0x33, 0x44}}),
    [](const auto& info) { return std::string(info.param.name); });

struct MipCase {
    const char* name;
    std::string header;
    std::vector<DdsLevel> levels;
};

class DdsMipTest : public ::testing::TestWithParam<MipCase> {};

TEST_P(DdsMipTest, LevelsLieOneBehindAnother) {
    const MipCase& c = GetParam();
    const DdsLevel& last = c.levels.back();
    std::string file = c.header + std::string(last.offset + last.size - 128, '\x5A');
    DdsImage image;
    ASSERT_FALSE(ReadDds(file, image).has_value());
    ASSERT_EQ(image.levels.size(), c.levels.size());
    for (std::size_t i = 0; i < c.levels.size(); ++i) {
        EXPECT_EQ(image.levels[i].width, c.levels[i].width) << i;
        EXPECT_EQ(image.levels[i].height, c.levels[i].height) << i;
        EXPECT_EQ(image.levels[i].offset, c.levels[i].offset) << i;
        EXPECT_EQ(image.levels[i].size, c.levels[i].size) << i;
        RgbaImage rgba;
        ASSERT_FALSE(DecodeDdsLevel(image, int(i), rgba).has_value());
        EXPECT_EQ(rgba.pixels.size(), std::size_t(c.levels[i].width * c.levels[i].height * 4));
    }
}

INSTANTIATE_TEST_SUITE_P(
    Mips, DdsMipTest,
    ::testing::Values(
        MipCase{"dxt1_256x128", DxtHeader("DXT1", 256, 128, 3),
                {{256, 128, 128, 16384}, {128, 64, 16512, 4096}, {64, 32, 20608, 1024}}},
        // Levels below 4x4 still take a whole block each.
        MipCase{"dxt5_8x2_to_1x1", DxtHeader("DXT5", 8, 2, 4),
                {{8, 2, 128, 32}, {4, 1, 160, 16}, {2, 1, 176, 16}, {1, 1, 192, 16}}},
        MipCase{"dxt3_no_count_is_one_level", DxtHeader("DXT3", 16, 16, 0), {{16, 16, 128, 256}}},
        MipCase{"r8g8b8_5x3", PlainHeader(24, {0xFF0000, 0xFF00, 0xFF, 0}, 5, 3, 3),
                {{5, 3, 128, 45}, {2, 1, 173, 6}, {1, 1, 179, 3}}},
        MipCase{"a8r8g8b8_4x4", PlainHeader(32, kArgb, 4, 4, 3), {{4, 4, 128, 64}, {2, 2, 192, 16}, {1, 1, 208, 4}}}),
    [](const auto& info) { return std::string(info.param.name); });

std::string WithWord(std::string bytes, std::size_t at, std::uint32_t value) {
    testing::PutWord(bytes, at, value);
    return bytes;
}

struct BadCase {
    const char* name;
    std::string bytes;
    const char* says;  // part of the message
};

class DdsBadFileTest : public ::testing::TestWithParam<BadCase> {};

TEST_P(DdsBadFileTest, IsRefusedWithAMessage) {
    const BadCase& c = GetParam();
    DdsImage image;
    const auto failure = ReadDds(c.bytes, image);
    ASSERT_TRUE(failure.has_value());
    EXPECT_NE(failure->description.find(c.says), std::string::npos) << failure->description;
    EXPECT_TRUE(image.levels.empty());
}

const std::string kGoodDxt1 = DxtHeader("DXT1", 8, 8, 4) + std::string(32 + 8 + 8 + 8, '\0');

INSTANTIATE_TEST_SUITE_P(
    Files, DdsBadFileTest,
    ::testing::Values(
        BadCase{"empty", "", "not a .dds"},
        BadCase{"png", "\x89PNG\r\n\x1a\n", "not a .dds"},
        BadCase{"magic_only", "DDS ", "cut short inside its header"},
        BadCase{"header_cut", kGoodDxt1.substr(0, 100), "cut short inside its header"},
        BadCase{"header_size_wrong", WithWord(kGoodDxt1, 4, 100), "header is damaged"},
        BadCase{"zero_width", WithWord(kGoodDxt1, 16, 0), "size 0x8"},
        BadCase{"huge_height", WithWord(kGoodDxt1, 12, 100000), "size 8x100000"},
        BadCase{"dx10", DxtHeader("DX10", 8, 8, 1) + std::string(64, '\0'), "DX10 cannot be shown"},
        BadCase{"ati2", DxtHeader("ATI2", 8, 8, 1) + std::string(64, '\0'), "ATI2 cannot be shown"},
        BadCase{"sixteen_bits", PlainHeader(16, {0xF800, 0x7E0, 0x1F, 0}, 2, 2, 1) + std::string(8, '\0'),
                "16 bits a pixel"},
        BadCase{"nibble_masks", PlainHeader(32, {0xF00, 0xF0, 0xF, 0}, 2, 2, 1) + std::string(16, '\0'),
                "one whole byte"},
        BadCase{"odd_alpha_mask", PlainHeader(32, {0xFF0000, 0xFF00, 0xFF, 0xF0000000}, 2, 2, 1) + std::string(16, '\0'),
                "alpha mask"},
        BadCase{"neither_rgb_nor_dxt", WithWord(kGoodDxt1, 80, 0x20000), "neither RGB nor DXT"},
        BadCase{"too_many_mips", WithWord(kGoodDxt1, 28, 5), "has at most 4"},
        BadCase{"last_mip_cut", kGoodDxt1.substr(0, kGoodDxt1.size() - 1), "mip level 4 of 4"},
        BadCase{"first_level_cut", DxtHeader("DXT5", 2048, 2048, 1) + std::string(1000, '\0'), "mip level 1 of 1"}),
    [](const auto& info) { return std::string(info.param.name); });

// Every cut of a good file is refused, never read past its end.
TEST(DdsBadFile, EveryTruncationIsRefused) {
    DdsImage image;
    ASSERT_FALSE(ReadDds(kGoodDxt1, image).has_value());
    for (std::size_t length = 0; length < kGoodDxt1.size(); ++length) {
        EXPECT_TRUE(ReadDds(kGoodDxt1.substr(0, length), image).has_value()) << length;
    }
}

TEST(DdsBadFile, LevelOutsideTheChainIsAnError) {
    DdsImage image;
    ASSERT_FALSE(ReadDds(kGoodDxt1, image).has_value());
    RgbaImage rgba;
    for (int level : {-1, 4, 100}) {
        const auto failure = DecodeDdsLevel(image, level, rgba);
        ASSERT_TRUE(failure.has_value()) << level;
        EXPECT_EQ(failure->number, base::err::kSubscriptOutOfRange);
    }
    DdsImage never;
    EXPECT_TRUE(DecodeDdsLevel(never, 0, rgba).has_value());
}

TEST(DdsLoad, ReadsAFileWithAnAccentedNameAndReportsAMissingOne) {
    testing::TempFolder folder;
    const auto path = folder.write("Texturé/Wagon_Grün.dds", kGoodDxt1);
    DdsImage image;
    ASSERT_FALSE(LoadDds(path, image).has_value());
    EXPECT_EQ(image.format, DdsFormat::Dxt1);
    EXPECT_EQ(image.levels.size(), 4u);

    const auto failure = LoadDds(folder.path() / "Texturé" / "Weiß.dds", image);
    ASSERT_TRUE(failure.has_value());
    EXPECT_EQ(failure->number, base::err::kFileNotFound);
    EXPECT_NE(failure->description.find("Weiß.dds"), std::string::npos) << failure->description;
}

TEST(DdsFormatNames, NameEachFormat) {
    EXPECT_STREQ(DdsFormatName(DdsFormat::Dxt1), "DXT1");
    EXPECT_STREQ(DdsFormatName(DdsFormat::Dxt5), "DXT5");
    EXPECT_STREQ(DdsFormatName(DdsFormat::X8R8G8B8), "X8R8G8B8");
}

class DdsRealTerrainTest : public ::testing::TestWithParam<const char*> {};

TEST_P(DdsRealTerrainTest, DecodesToAWholePicture) {
    const std::string relative =
        std::string("routes/ff1ebaa8-82f5-43ca-9816-859956f4d56c/Terrain/textures/") + GetParam() + ".dds";
    FERROLUND_READ_TESTDATA(bytes, relative);
    DdsImage image;
    const auto failure = ReadDds(bytes, image);
    ASSERT_FALSE(failure.has_value()) << failure->description;
    EXPECT_EQ(image.width, 256);
    EXPECT_EQ(image.height, 256);
    EXPECT_EQ(image.format, DdsFormat::X8R8G8B8);
    ASSERT_EQ(image.levels.size(), 1u);
    RgbaImage rgba;
    ASSERT_FALSE(DecodeDdsLevel(image, 0, rgba).has_value());
    ASSERT_EQ(rgba.pixels.size(), std::size_t(256 * 256 * 4));
    std::size_t lit = 0, opaque = 0;
    for (std::size_t i = 0; i < rgba.pixels.size(); i += 4) {
        if (rgba.pixels[i] | rgba.pixels[i + 1] | rgba.pixels[i + 2]) ++lit;
        if (rgba.pixels[i + 3] == 255) ++opaque;
    }
    EXPECT_GT(lit, rgba.pixels.size() / 8);
    EXPECT_EQ(opaque, rgba.pixels.size() / 4);
}

INSTANTIATE_TEST_SUITE_P(Route, DdsRealTerrainTest,
                         ::testing::Values("tile_-8_-8", "tile_-8_00", "tile_00_-8", "tile_00_00"),
                         [](const auto& info) {
                             std::string name = info.param;
                             for (char& ch : name) if (ch == '-') ch = 'm';
                             return name;
                         });

}  // namespace
}  // namespace ferrolund::textures
