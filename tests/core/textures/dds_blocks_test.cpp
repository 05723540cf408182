// Hand-made DXT1/3/5 blocks decoded through the .dds reader, against pixels worked out
// here from the block rules: 5:6:5 endpoints widened to 8 bits, the four-colour and the
// three-colour-plus-transparent-black modes of DXT1 (DXT3/5 colour is always four-colour),
// DXT3's explicit 4-bit alpha and DXT5's interpolated alpha with its 8- and 6-value modes.
#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <string>
#include <vector>

#include "dds_test_support.h"
#include "textures/dds_image.h"

namespace ferrolund::textures {
namespace {

using Rgba = std::array<int, 4>;

Rgba Expand565(std::uint16_t c) {
    const int r = (c >> 11) & 31, g = (c >> 5) & 63, b = c & 31;
    return {(r << 3) | (r >> 2), (g << 2) | (g >> 4), (b << 3) | (b >> 2), 255};
}

std::uint16_t U16(const std::string& b, std::size_t at) {
    return std::uint16_t(std::uint8_t(b[at]) | (std::uint8_t(b[at + 1]) << 8));
}

// The 16 pixels of an 8-byte colour block, in row order.
std::array<Rgba, 16> ColourBlock(const std::string& b, std::size_t at, bool threeColourAllowed) {
    const std::uint16_t c0 = U16(b, at), c1 = U16(b, at + 2);
    const Rgba e0 = Expand565(c0), e1 = Expand565(c1);
    std::array<Rgba, 4> palette{e0, e1, {}, {}};
    for (int k = 0; k < 3; ++k) {
        if (c0 > c1 || !threeColourAllowed) {
            palette[2][k] = (2 * e0[k] + e1[k]) / 3;
            palette[3][k] = (e0[k] + 2 * e1[k]) / 3;
        } else {
            palette[2][k] = (e0[k] + e1[k]) / 2;
            palette[3][k] = 0;
        }
    }
    palette[2][3] = 255;
    palette[3][3] = (c0 > c1 || !threeColourAllowed) ? 255 : 0;
    std::array<Rgba, 16> out{};
    for (int i = 0; i < 16; ++i) {
        const int index = (std::uint8_t(b[at + 4 + std::size_t(i / 4)]) >> (2 * (i % 4))) & 3;
        out[std::size_t(i)] = palette[std::size_t(index)];
    }
    return out;
}

std::array<int, 16> ExplicitAlpha(const std::string& b, std::size_t at) {
    std::array<int, 16> out{};
    for (int i = 0; i < 16; ++i) {
        const int nibble = (std::uint8_t(b[at + std::size_t(i / 2)]) >> (4 * (i % 2))) & 15;
        out[std::size_t(i)] = nibble * 17;
    }
    return out;
}

std::array<int, 16> InterpolatedAlpha(const std::string& b, std::size_t at) {
    const int a0 = std::uint8_t(b[at]), a1 = std::uint8_t(b[at + 1]);
    std::array<int, 8> values{a0, a1};
    if (a0 > a1) {
        for (int i = 1; i <= 6; ++i) values[std::size_t(i + 1)] = ((7 - i) * a0 + i * a1) / 7;
    } else {
        for (int i = 1; i <= 4; ++i) values[std::size_t(i + 1)] = ((5 - i) * a0 + i * a1) / 5;
        values[6] = 0;
        values[7] = 255;
    }
    std::uint64_t bits = 0;
    for (int i = 0; i < 6; ++i) bits |= std::uint64_t(std::uint8_t(b[at + 2 + std::size_t(i)])) << (8 * i);
    std::array<int, 16> out{};
    for (int i = 0; i < 16; ++i) out[std::size_t(i)] = values[(bits >> (3 * i)) & 7];
    return out;
}

std::array<Rgba, 16> ReferenceBlock(const std::string& format, const std::string& block) {
    if (format == "DXT1") return ColourBlock(block, 0, true);
    auto pixels = ColourBlock(block, 8, false);
    const auto alpha = format == "DXT3" ? ExplicitAlpha(block, 0) : InterpolatedAlpha(block, 0);
    for (int i = 0; i < 16; ++i) pixels[std::size_t(i)][3] = alpha[std::size_t(i)];
    return pixels;
}

std::string Bytes(std::initializer_list<int> values) {
    std::string out;
    for (int v : values) out.push_back(char(v));
    return out;
}

struct BlockCase {
    const char* name;
    const char* format;
    std::string block;
    // Pixels whose value is fixed by the rules exactly: index in the block and RGBA.
    std::vector<std::pair<int, Rgba>> exact;
};

class DdsBlockTest : public ::testing::TestWithParam<BlockCase> {};

TEST_P(DdsBlockTest, DecodesAsTheBlockRulesSay) {
    const BlockCase& c = GetParam();
    std::string file = testing::DxtHeader(c.format, 4, 4, 1) + c.block;
    DdsImage image;
    ASSERT_FALSE(ReadDds(file, image).has_value());
    RgbaImage rgba;
    ASSERT_FALSE(DecodeDdsLevel(image, 0, rgba).has_value());
    ASSERT_EQ(rgba.pixels.size(), 64u);
    const auto expected = ReferenceBlock(c.format, c.block);
    for (int i = 0; i < 16; ++i) {
        for (int k = 0; k < 4; ++k) {
            // Interpolated values may round either way by one.
            EXPECT_LE(std::abs(int(rgba.pixels[std::size_t(i * 4 + k)]) - expected[std::size_t(i)][std::size_t(k)]), 1)
                << "pixel " << i << " channel " << k;
        }
    }
    for (const auto& [index, value] : c.exact) {
        for (int k = 0; k < 4; ++k) {
            EXPECT_EQ(rgba.pixels[std::size_t(index * 4 + k)], value[std::size_t(k)]) << "pixel " << index << " channel " << k;
        }
    }
}

// Colour 0xF800 is pure red, 0x001F pure blue, 0x07E0 pure green; index bytes 0xE4 give
// the indices 0,1,2,3 along each row.
INSTANTIATE_TEST_SUITE_P(
    Blocks, DdsBlockTest,
    ::testing::Values(
        BlockCase{"dxt1_four_colour", "DXT1", Bytes({0x00, 0xF8, 0x1F, 0x00, 0xE4, 0xE4, 0xE4, 0xE4}),
                  {{0, {255, 0, 0, 255}}, {1, {0, 0, 255, 255}}, {2, {170, 0, 85, 255}}, {3, {85, 0, 170, 255}}}},
        BlockCase{"dxt1_three_colour_transparent_black", "DXT1", Bytes({0x1F, 0x00, 0x00, 0xF8, 0xE4, 0xE4, 0xE4, 0xE4}),
                  {{0, {0, 0, 255, 255}}, {1, {255, 0, 0, 255}}, {3, {0, 0, 0, 0}}, {15, {0, 0, 0, 0}}}},
        BlockCase{"dxt1_equal_endpoints_three_colour", "DXT1", Bytes({0xE0, 0x07, 0xE0, 0x07, 0xFF, 0x00, 0xAA, 0x55}),
                  {{0, {0, 0, 0, 0}}, {4, {0, 255, 0, 255}}}},
        BlockCase{"dxt1_odd_565_widening", "DXT1", Bytes({0x41, 0x08, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00}),
                  {{0, {8, 8, 8, 255}}}},
        BlockCase{"dxt3_explicit_alpha", "DXT3",
                  Bytes({0x10, 0x32, 0x54, 0x76, 0x98, 0xBA, 0xDC, 0xFE, 0x00, 0xF8, 0x1F, 0x00, 0xE4, 0x1B, 0xE4, 0x1B}),
                  {{0, {255, 0, 0, 0}}, {1, {0, 0, 255, 17}}, {15, {255, 0, 0, 255}}}},
        BlockCase{"dxt3_colour_never_transparent", "DXT3",
                  Bytes({0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x1F, 0x00, 0x00, 0xF8, 0xFF, 0xFF, 0xFF, 0xFF}),
                  {{0, {170, 0, 85, 255}}}},
        BlockCase{"dxt5_eight_alpha_values", "DXT5",
                  Bytes({0xFF, 0x00, 0x88, 0xC6, 0xFA, 0x88, 0xC6, 0xFA, 0x00, 0xF8, 0x1F, 0x00, 0xE4, 0xE4, 0xE4, 0xE4}),
                  {{0, {255, 0, 0, 255}}, {1, {0, 0, 255, 0}}}},
        BlockCase{"dxt5_six_alpha_values_with_0_and_255", "DXT5",
                  Bytes({0x20, 0xC0, 0x88, 0xC6, 0xFA, 0x88, 0xC6, 0xFA, 0x00, 0xF8, 0x1F, 0x00, 0xE4, 0xE4, 0xE4, 0xE4}),
                  {{0, {255, 0, 0, 0x20}}, {1, {0, 0, 255, 0xC0}}, {6, {170, 0, 85, 0}}, {7, {85, 0, 170, 255}}}},
        BlockCase{"dxt5_colour_four_colour_even_when_c0_below_c1", "DXT5",
                  Bytes({0x80, 0x80, 0, 0, 0, 0, 0, 0, 0x1F, 0x00, 0x00, 0xF8, 0xE4, 0xE4, 0xE4, 0xE4}),
                  {{3, {170, 0, 85, 0x80}}, {2, {85, 0, 170, 0x80}}}}),
    [](const auto& info) { return std::string(info.param.name); });

// Blocks land where they belong and a picture that is no multiple of 4 is cut at its edge.
TEST(DdsBlockPlacement, EachBlockFillsItsOwnCornerOfAnOddSizedPicture) {
    // 6x5: two by two blocks of solid red, green, blue and white (index 0 everywhere).
    const int colours[4] = {0xF800, 0x07E0, 0x001F, 0xFFFF};
    std::string file = testing::DxtHeader("DXT1", 6, 5, 1);
    for (int c : colours) file += Bytes({c & 0xFF, c >> 8, 0, 0, 0, 0, 0, 0});
    DdsImage image;
    ASSERT_FALSE(ReadDds(file, image).has_value());
    RgbaImage rgba;
    ASSERT_FALSE(DecodeDdsLevel(image, 0, rgba).has_value());
    ASSERT_EQ(rgba.width, 6);
    ASSERT_EQ(rgba.height, 5);
    ASSERT_EQ(rgba.pixels.size(), std::size_t(6 * 5 * 4));
    auto at = [&](int x, int y) {
        const std::size_t i = std::size_t(y * 6 + x) * 4;
        return Rgba{rgba.pixels[i], rgba.pixels[i + 1], rgba.pixels[i + 2], rgba.pixels[i + 3]};
    };
    EXPECT_EQ(at(0, 0), (Rgba{255, 0, 0, 255}));
    EXPECT_EQ(at(3, 3), (Rgba{255, 0, 0, 255}));
    EXPECT_EQ(at(4, 0), (Rgba{0, 255, 0, 255}));
    EXPECT_EQ(at(5, 3), (Rgba{0, 255, 0, 255}));
    EXPECT_EQ(at(0, 4), (Rgba{0, 0, 255, 255}));
    EXPECT_EQ(at(5, 4), (Rgba{255, 255, 255, 255}));
}

// A level tall enough to be split between threads decodes each row of blocks in its place.
TEST(DdsBlockPlacement, TallLevelKeepsEveryRowOfBlocksInPlace) {
    constexpr int kWidth = 8, kHeight = 1024;
    std::string file = testing::DxtHeader("DXT5", kWidth, kHeight, 1);
    for (int row = 0; row < kHeight / 4; ++row) {
        for (int column = 0; column < kWidth / 4; ++column) {
            // Alpha is the row number (both endpoints, index 0); colour black.
            file += Bytes({row & 0xFF, row & 0xFF, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0});
        }
    }
    DdsImage image;
    ASSERT_FALSE(ReadDds(file, image).has_value());
    RgbaImage rgba;
    ASSERT_FALSE(DecodeDdsLevel(image, 0, rgba).has_value());
    for (int y = 0; y < kHeight; ++y) {
        for (int x = 0; x < kWidth; ++x) {
            ASSERT_EQ(rgba.pixels[std::size_t(y * kWidth + x) * 4 + 3], (y / 4) & 0xFF) << x << "," << y;
        }
    }
}

}  // namespace
}  // namespace ferrolund::textures
