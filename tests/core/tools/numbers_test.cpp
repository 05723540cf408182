#include "tools/numbers.h"

#include <gtest/gtest.h>

#include <cctype>
#include <cmath>

#include "tools/guid.h"
#include "tools/vb_format.h"

namespace ferrolund::tools {
namespace {

TEST(VbFormat, PatternsThePartsUse) {
    struct Case {
        double value;
        const char* pattern;
        const char* expected;
    };
    const Case cases[] = {
        {5, "00", "05"},
        {123, "00", "123"},              // digits beyond the pattern are all written
        {0, "00", "00"},
        {2.5, "00", "03"},               // half away from zero
        {-2.5, "00", "-03"},
        {0.5, "00", "01"},
        {7, "000", "007"},
        {42, "0000", "0042"},
        {1234, "000000", "001234"},
        {100000000, "000000000", "100000000"},
        {19800, "00000", "19800"},
        {46800, "00000.0000", "46800.0000"},
        {12.3, "00000.0000", "00012.3000"},
        {12.34567 + 0.1, "###.0000", "12.4457"},
        {0.5, "###.0000", ".5000"},
        {-0.2, "###.0000", "-.2000"},
        {0, "###.0000", ".0000"},
        {-0.00001, "###.0000", ".0000"},    // rounds to zero: no sign
        {1234.56789, "####.0000", "1234.5679"},
        {99999.99995, "###.0000", "100000.0000"},  // the carry runs into the integer part
        {1.005, "0.00", "1.01"},                   // fifteen digits first, then the rounding
        {1e20, "0", "100000000000000000000"},
        {1.5, "0.##", "1.5"},
        {1, "0.##", "1."},
    };
    for (const auto& c : cases) {
        const auto text = VbFormat(c.value, c.pattern);
        ASSERT_TRUE(text) << c.pattern;
        EXPECT_EQ(*text, c.expected) << c.value << " with " << c.pattern;
    }
}

TEST(VbFormat, OtherPatternsAndOddValuesGiveNothing) {
    for (const char* pattern : {"", ".", "0,00", "hh:mm", "0.0.0"}) {
        EXPECT_FALSE(VbFormat(1, pattern)) << pattern;
    }
    EXPECT_FALSE(VbFormat(std::nan(""), "00"));
    EXPECT_FALSE(VbFormat(INFINITY, "00"));
    EXPECT_EQ(FormatNumber(2.25, "x"), "2.25");
}

TEST(Bin2Hex, Table) {
    const std::pair<const char*, const char*> cases[] = {
        {"0000", "0"}, {"1111", "F"}, {"1", "1"}, {"10000", "10"}, {"1010101111001101", "ABCD"},
        {"", ""}, {"012", kNotBinaryText}, {"10 1", kNotBinaryText}, {"x", kNotBinaryText},
    };
    for (const auto& [in, out] : cases) EXPECT_EQ(Bin2Hex(in), out) << in;
}

TEST(Dec2Hex, Table) {
    EXPECT_EQ(Dec2Hex(255), "FF");
    EXPECT_EQ(Dec2Hex(255, 4), "00FF");
    EXPECT_EQ(Dec2Hex(255, 1), "FF");
    EXPECT_EQ(Dec2Hex(0), "0");
    EXPECT_EQ(Dec2Hex(-1), "FFFFFFFF");
    EXPECT_EQ(Dec2Hex(-5000000000LL), "FFFFFFFED5FA0E00");
    EXPECT_EQ(Dec2Hex(0x123456789ALL), "123456789A");
}

TEST(Dec2Bin, Table) {
    EXPECT_EQ(Dec2Bin(5), "101");
    EXPECT_EQ(Dec2Bin(5, 8), "00000101");
    EXPECT_EQ(Dec2Bin(5, 3), "101");
    EXPECT_EQ(Dec2Bin(5, 2), kTooManyBitsText);
    EXPECT_EQ(Dec2Bin(0), "0");
    EXPECT_EQ(Dec2Bin(-1, 8), kTooManyBitsText);
    EXPECT_EQ(Dec2Bin(-1), std::string(32, '1'));
}

TEST(Hex2Dec, Table) {
    EXPECT_EQ(Hex2Dec("FF"), 255);
    EXPECT_EQ(Hex2Dec("ff"), 255);
    EXPECT_EQ(Hex2Dec("10"), 16);
    EXPECT_EQ(Hex2Dec(""), 0);
    EXPECT_EQ(Hex2Dec("G"), -1);    // a character outside the digits counts as -1
    EXPECT_EQ(Hex2Dec("1G"), 15);
}

TEST(HexToDecimalText, BeyondDoublePrecisionAndInvalidDigits) {
    EXPECT_EQ(HexToDecimalText("FFFFFFFFFFFFFFFF"), "18446744073709551615");
    EXPECT_EQ(HexToDecimalText("20000000000001"), "9007199254740993");  // 2^53 + 1
    EXPECT_EQ(HexToDecimalText("1" + std::string(20, '0')), "1208925819614629174706176");
    EXPECT_EQ(HexToDecimalText("0"), "0");
    EXPECT_EQ(HexToDecimalText("00a"), "10");
    EXPECT_FALSE(HexToDecimalText(""));
    EXPECT_FALSE(HexToDecimalText("12G4"));
    EXPECT_FALSE(HexToDecimalText("-1"));
}

TEST(VbVal, LeadingNumberOnly) {
    const std::pair<const char*, double> cases[] = {
        {"42", 42}, {"  -3.5x", -3.5}, {"abc", 0}, {"", 0}, {"1e3", 1000}, {"1e", 1},
        {"2.5.1", 2.5}, {"+7", 7}, {".5", 0.5},
    };
    for (const auto& [text, value] : cases) EXPECT_DOUBLE_EQ(VbVal(text), value) << text;
}

TEST(NewDeltaId, NineDigitsOverTheWholeRange) {
    EXPECT_EQ(NewDeltaId(0.0), "100000000");
    EXPECT_EQ(NewDeltaId(0.5), "550000000");
    EXPECT_EQ(NewDeltaId(0.99999999999), "999999999");
    for (int i = 0; i < 200; ++i) {
        const std::string id = NewDeltaId();
        ASSERT_EQ(id.size(), 9u) << id;
        ASSERT_NE(id[0], '0') << id;
    }
}

TEST(TimeDialog, ConversionBothWaysAndItsGuard) {
    struct Case {
        TimeBoxes in;
        TimeBoxes out;
    };
    const Case cases[] = {
        {{"19800", ""}, {"19800", "0530"}},
        {{"", "0530"}, {"19800", "0530"}},
        {{"1800", ""}, {"1800", "0030"}},     // under an hour: "00" hours
        {{"43200", ""}, {"43200", "1200"}},
        {{"", "2400"}, {"86400", "2400"}},
        {{"100", "0530"}, {"100", "0530"}},   // both filled: nothing happens
        {{"", "0005"}, {"00300", "0005"}},
    };
    for (const auto& c : cases) {
        TimeBoxes boxes = c.in;
        ConvertTimeBoxes(boxes);
        EXPECT_EQ(boxes.simulatorTime, c.out.simulatorTime) << c.in.simulatorTime << "/" << c.in.clockTime;
        EXPECT_EQ(boxes.clockTime, c.out.clockTime) << c.in.simulatorTime << "/" << c.in.clockTime;
    }
}

Guid GuidOf(std::uint32_t d1, std::uint16_t d2, std::uint16_t d3, std::array<std::uint8_t, 8> d4) {
    Guid g;
    g.data1 = d1;
    g.data2 = d2;
    g.data3 = d3;
    g.data4 = d4;
    return g;
}

TEST(GetNewGUID, NumbersOfTheRealRouteAndScenario) {
    // The identities the game itself wrote into the shared route and scenario.
    struct Case {
        Guid guid;
        const char* text;
        const char* first;
        const char* second;
    };
    const Case cases[] = {
        {GuidOf(0xff1ebaa8, 0x82f5, 0x43ca, {0x98, 0x16, 0x85, 0x99, 0x56, 0xf4, 0xd5, 0x6c}),
         "FF1EBAA8-82F5-43CA-9816-859956F4D56C", "4884860738895526568", "7842442978915587736"},
        {GuidOf(0xb01bda98, 0xa8d8, 0x4615, {0xba, 0x62, 0x1b, 0xe3, 0xf3, 0xed, 0xb3, 0x78}),
         "B01BDA98-A8D8-4615-BA62-1BE3F3EDB378", "5050128205786897048", "8697556937125618362"},
    };
    for (const auto& c : cases) {
        const NewIdentity id = IdentityOf(c.guid);
        EXPECT_EQ(id.text, c.text);
        EXPECT_EQ(id.firstNumber, c.first);
        EXPECT_EQ(id.secondNumber, c.second);
    }
}

TEST(GetNewGUID, LeadingZeroFieldsShiftTheText) {
    // data3 0x0001, data2 0x0002, data1 0x00000003 give "1" "2" "3" = 0x123; data4 bytes
    // 0x0A and zeros give "0"s between.
    const NewIdentity id = IdentityOf(GuidOf(3, 2, 1, {0x0A, 0, 0, 0, 0, 0, 0, 0x10}));
    EXPECT_EQ(id.text, "00000003-0002-0001-0A00-000000000010");
    EXPECT_EQ(id.firstNumber, "291");                        // 0x123
    EXPECT_EQ(id.secondNumber, *HexToDecimalText("10" "000000" "A"));
}

TEST(NewGuidText, FormAndVersion) {
    const std::string a = NewGuidText();
    const std::string b = NewGuidText();
    EXPECT_NE(a, b);
    ASSERT_EQ(a.size(), 36u);
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (i == 8 || i == 13 || i == 18 || i == 23) {
            EXPECT_EQ(a[i], '-');
        } else {
            EXPECT_TRUE(std::isdigit(static_cast<unsigned char>(a[i])) || (a[i] >= 'A' && a[i] <= 'F')) << a;
        }
    }
    EXPECT_EQ(a[14], '4');
    const NewIdentity id = GetNewGUID();
    EXPECT_FALSE(id.firstNumber.empty());
    EXPECT_FALSE(id.secondNumber.empty());
}

}  // namespace
}  // namespace ferrolund::tools
