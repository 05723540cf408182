// Targa pictures: the row orders, packed and plain, grey and colour, and the files that
// must be refused with a reason rather than read past their end.
#include "textures/tga_image.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace ferrolund::textures {
namespace {

// A header of `type` for a width x height picture of `depth` bits.
std::string Header(unsigned type, int width, int height, unsigned depth, unsigned descriptor = 0) {
    std::string h(18, '\0');
    h[2] = char(type);
    h[12] = char(width & 0xFF);
    h[13] = char(width >> 8);
    h[14] = char(height & 0xFF);
    h[15] = char(height >> 8);
    h[16] = char(depth);
    h[17] = char(descriptor);
    return h;
}

std::string Bytes(std::initializer_list<int> values) {
    std::string out;
    for (int v : values) out += char(v);
    return out;
}

using Pixels = std::vector<std::uint8_t>;

TEST(Targa, ReadsEachKindInTheRightPlaces) {
    struct Case {
        const char* what;
        std::string file;
        int width, height;
        Pixels rgba;  // top row first
    };
    // Two by two: file order is B, G, R(, A); the bottom row first unless bit 5 is set.
    const std::vector<Case> cases = {
        {"24-bit, bottom row first", Header(2, 2, 2, 24) + Bytes({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}), 2, 2,
         {9, 8, 7, 255, 12, 11, 10, 255, 3, 2, 1, 255, 6, 5, 4, 255}},
        {"32-bit, top row first", Header(2, 2, 1, 32, 0x28) + Bytes({1, 2, 3, 4, 5, 6, 7, 8}), 2, 1,
         {3, 2, 1, 4, 7, 6, 5, 8}},
        {"32-bit, right to left", Header(2, 2, 1, 32, 0x38) + Bytes({1, 2, 3, 4, 5, 6, 7, 8}), 2, 1,
         {7, 6, 5, 8, 3, 2, 1, 4}},
        {"grey, an identifier skipped", [] {
             std::string h = Header(3, 1, 2, 8, 0x20);
             h[0] = 3;
             return h + "abc" + Bytes({10, 200});
         }(), 1, 2, {10, 10, 10, 255, 200, 200, 200, 255}},
        {"packed colour: a run and a raw packet", Header(10, 3, 1, 24, 0x20) + Bytes({0x81, 1, 2, 3, 0x00, 4, 5, 6}), 3,
         1, {3, 2, 1, 255, 3, 2, 1, 255, 6, 5, 4, 255}},
        {"packed grey", Header(11, 2, 2, 8, 0x20) + Bytes({0x82, 7, 0x00, 9}), 2, 2,
         {7, 7, 7, 255, 7, 7, 7, 255, 7, 7, 7, 255, 9, 9, 9, 255}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        RgbaImage image;
        ASSERT_FALSE(DecodeTga(c.file, image));
        EXPECT_EQ(image.width, c.width);
        EXPECT_EQ(image.height, c.height);
        EXPECT_EQ(image.pixels, c.rgba);
    }
}

TEST(Targa, RefusesWhatItCannotReadWithAReason) {
    struct Case {
        std::string file;
        std::string reason;
    };
    std::string mapped = Header(1, 1, 1, 8) + Bytes({0});
    mapped[1] = 1;
    const std::vector<Case> cases = {
        {"short", "too short"},
        {mapped, "of type 1"},
        {Header(2, 1, 1, 16) + Bytes({0, 0}), "16 bits"},
        {Header(3, 1, 1, 24) + Bytes({0, 0, 0}), "24 bits"},
        {Header(2, 0, 4, 24), "no pixels"},
        {Header(2, 2, 2, 24) + Bytes({1, 2, 3}), "cut short"},
        {Header(10, 2, 1, 24) + Bytes({0x80, 1, 2}), "cut short"},
        {Header(10, 2, 1, 24) + Bytes({0x82, 1, 2, 3}), "runs past"},
        {Header(11, 2, 1, 8) + Bytes({0x80, 1}), "cut short"},
    };
    for (const Case& c : cases) {
        RgbaImage image;
        const base::Status failed = DecodeTga(c.file, image);
        ASSERT_TRUE(failed) << c.reason;
        EXPECT_NE(failed->description.find(c.reason), std::string::npos) << failed->description;
    }
}

}  // namespace
}  // namespace ferrolund::textures
