#include "tools/codepage.h"

#include <gtest/gtest.h>

namespace ferrolund::tools {
namespace {

TEST(Codepage, EveryByteSurvivesTheTripThroughUnicode) {
    for (int i = 1; i < 256; ++i) {
        const auto byte = static_cast<unsigned char>(i);
        EXPECT_EQ(static_cast<unsigned char>(Cp1252OfUnicode(UnicodeOfCp1252(byte))), byte) << i;
    }
    EXPECT_EQ(Cp1252OfUnicode(0x4E2D), '?');  // a CJK character has no byte
}

TEST(Codepage, KnownCharacters) {
    struct Case { std::string cp1252; std::string utf8; };
    const Case cases[] = {
        {"M\xFCller", "M\xC3\xBCller"},          // u umlaut
        {"\x80", "\xE2\x82\xAC"},                // euro sign
        {"\x9F", "\xC5\xB8"},                    // Y diaeresis
        {"\x81", "\xC2\x81"},                    // undefined byte kept as itself
        {"plain", "plain"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(Utf8FromCp1252(c.cp1252), c.utf8);
    }
}

TEST(Codepage, Utf16WithAndWithoutByteOrderMark) {
    using namespace std::string_literals;
    EXPECT_EQ(Cp1252FromUtf16("\xFF\xFEH\0i\0"s), "Hi");
    EXPECT_EQ(Cp1252FromUtf16("\xFE\xFF\0H\0i"s), "Hi");
    EXPECT_EQ(Cp1252FromUtf16("H\0\xFC\0"s), "H\xFC");
    EXPECT_EQ(Cp1252FromUtf16("\xAC\x20"s), "\x80");     // euro sign
    EXPECT_EQ(Cp1252FromUtf16("A\0B"s), "A");             // odd byte dropped
}

TEST(Codepage, CaseFold) {
    EXPECT_TRUE(EqualsIgnoreCase("RouteProperties.XML", "routeproperties.xml"));
    EXPECT_TRUE(EqualsIgnoreCase("\xC4pfel", "\xE4PFEL"));   // A umlaut
    EXPECT_TRUE(EqualsIgnoreCase("\x8A\x8C\x8E\x9F", "\x9A\x9C\x9E\xFF"));
    EXPECT_FALSE(EqualsIgnoreCase("\xD7", "\xF7"));         // multiply and divide signs are no pair
    EXPECT_FALSE(EqualsIgnoreCase("abc", "abcd"));
    EXPECT_EQ(UpperCp1252("stra\xDF" "e"), "STRA\xDF" "E");  // sharp s has no capital here
}

}  // namespace
}  // namespace ferrolund::tools
