#include "tools/names.h"

#include <gtest/gtest.h>

#include <string>

namespace ferrolund::tools {
namespace {

TEST(ShownText, UTF8StaysAndEverythingElseReadsAsWindows1252) {
    const struct {
        const char* name;
        std::string bytes;
        std::string shown;
    } cases[] = {
        {"ASCII", "Kuju\\RailSimulator", "Kuju\\RailSimulator"},
        {"UTF-8 e acute", "Caf\xC3\xA9", "Caf\xC3\xA9"},
        {"UTF-8 c caron", "\xC4\x8C" "esk\xC3\xA9", "\xC4\x8C" "esk\xC3\xA9"},
        {"UTF-8 U+FFE9 is not read as three letters", "A\xEF\xBF\xA9" "B", "A\xEF\xBF\xA9" "B"},
        {"Windows-1252 e acute", "Caf\xE9", "Caf\xC3\xA9"},
        {"Windows-1252 u umlaut and sharp s", "Br\xFC" "cke Stra\xDF" "e", "Br\xC3\xBC" "cke Stra\xC3\x9F" "e"},
        {"Windows-1252 euro and S caron", "\x80\x8A", "\xE2\x82\xAC\xC5\xA0"},
        {"a lone lead byte", "\xC3", "\xC3\x83"},
        {"an overlong form is not UTF-8", "\xC0\xAF", "\xC3\x80\xC2\xAF"},
        {"a surrogate is not UTF-8", "\xED\xA0\x80", "\xC3\xAD\xC2\xA0\xE2\x82\xAC"},
        {"both in one name", "Gr\xC3\xBC\xDF", "Gr\xC3\xBC\xC3\x9F"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(ShownText(c.bytes), c.shown) << c.name;
        EXPECT_TRUE(IsValidUtf8(ShownText(c.bytes))) << c.name;
        EXPECT_EQ(IsValidUtf8(c.bytes), c.bytes == c.shown) << c.name;
    }
}

TEST(NameKey, OneKeyWhateverTheCaseAndTheEncoding) {
    const struct {
        std::string a;
        std::string b;
        bool same;
    } cases[] = {
        {"CAF\xC3\x89", "caf\xC3\xA9", true},          // É/é in UTF-8
        {"CAF\xC9", "caf\xC3\xA9", true},              // É in Windows-1252, é in UTF-8
        {"\xC3\x9C" "ber", "\xC3\xBC" "BER", true},    // Ü/ü
        {"\xC4\x8C" "ESK\xC3\x89", "\xC4\x8D" "esk\xC3\xA9", true},  // Č/č
        {"\xC5\x81\xC3\x93" "D\xC5\xB9", "\xC5\x82\xC3\xB3" "d\xC5\xBA", true},  // Ł Ó Ź
        {"STRA\xE1\xBA\x9E" "E", "stra\xC3\x9F" "e", true},  // capital sharp s
        {"\xD0\x9C\xD0\x9E\xD0\xA1\xD0\x9A\xD0\x92\xD0\x90", "\xD0\xBC\xD0\xBE\xD1\x81\xD0\xBA\xD0\xB2\xD0\xB0", true},
        {"\xEF\xBF\xA9", "\xEF\xBF\xA9", true},
        {"caf\xC3\xA9", "cafe", false},                // an accent is not a case
        {"\xC4\x8D", "c", false},
        {"Stra\xC3\x9F" "e", "Strasse", false},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(NameKey(c.a) == NameKey(c.b), c.same) << c.a << " / " << c.b;
    }
}

TEST(LowerCodePoint, PairsOfTheAlphabetsInUse) {
    const std::pair<char32_t, char32_t> cases[] = {
        {U'A', U'a'}, {U'z', U'z'}, {0xC9, 0xE9}, {0xD7, 0xD7}, {0xDF, 0xDF}, {0x10C, 0x10D}, {0x10D, 0x10D},
        {0x141, 0x142}, {0x179, 0x17A}, {0x17D, 0x17E}, {0x178, 0xFF}, {0x130, U'i'}, {0x131, 0x131},
        {0x391, 0x3B1}, {0x3A2, 0x3A2}, {0x401, 0x451}, {0x42F, 0x44F}, {0xFF21, 0xFF41}, {0xFFE9, 0xFFE9},
    };
    for (const auto& [from, to] : cases) EXPECT_EQ(LowerCodePoint(from), to) << static_cast<unsigned>(from);
}

}  // namespace
}  // namespace ferrolund::tools
