// Numbers as the converter prints and reads them.
#include <gtest/gtest.h>

#include <bit>
#include <cfloat>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <string>

#include "serz/number_text.h"

namespace ferrolund::serz {
namespace {

std::string General(double value, int exponentDigits = 3) {
    char buf[kNumberTextMax];
    return std::string(buf, WriteGeneral(buf, value, exponentDigits));
}

std::string Fixed(double value) {
    char buf[kNumberTextMax];
    return std::string(buf, WriteFixed7(buf, value));
}

std::string Fixed(float value) {
    char buf[kNumberTextMax];
    return std::string(buf, WriteFixed7(buf, value));
}

double Bits(std::uint64_t bits) { return std::bit_cast<double>(bits); }

struct GeneralCase {
    double value;
    int exponentDigits;
    const char* text;
};

TEST(SerzNumberText, GeneralFormMatchesTheConverter) {
    const GeneralCase cases[] = {
        {1.0, 3, "1"},
        {0.0, 3, "0"},
        {-0.0, 3, "-0"},
        {0.5, 3, "0.5"},
        {static_cast<float>(146.162), 3, "146.162"},
        {725.5625, 3, "725.563"},        // an exact tie goes away from zero
        {-725.5625, 3, "-725.563"},
        {1.000025, 3, "1.00002"},        // shortest digits end in 5, the value lies below
        {1.000005, 3, "1.00001"},        // and here above
        {999999.5, 3, "1e+006"},         // the carry makes a new digit and the exponent form
        {123456.0, 3, "123456"},
        {1234567.0, 3, "1.23457e+006"},
        {5769010.0, 3, "5.76901e+006"},
        {5769010.0, 2, "5.76901e+06"},
        {FLT_MAX, 3, "3.40282e+038"},
        {FLT_MAX, 2, "3.40282e+38"},
        {-FLT_MAX, 3, "-3.40282e+038"},
        {1e100, 2, "1e+100"},
        {0.0001, 3, "0.0001"},
        {0.00001, 3, "1e-005"},
        {0.00001, 2, "1e-05"},
        {0.000123456789, 3, "0.000123457"},
        {1e-310, 3, "1e-310"},           // subnormal
        {0.1, 3, "0.1"},
        {100.0, 3, "100"},
        {std::numeric_limits<double>::infinity(), 3, "1.#INF"},
        {-std::numeric_limits<double>::infinity(), 3, "-1.#INF"},
        {Bits(0x7FF8000000000000ULL), 3, "1.#QNAN"},
        {Bits(0xFFF8000000000000ULL), 3, "-1.#IND"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(General(c.value, c.exponentDigits), c.text) << c.value;
    }
}

struct FixedCase {
    float value;
    const char* text;
};

TEST(SerzNumberText, FixedFormOfFloatArrays) {
    const FixedCase cases[] = {
        {1.0f, "1.0000000"},
        {0.0f, "0.0000000"},
        {-0.0f, "-0.0000000"},
        {-34130.91015625f, "-34130.9101563"},  // a tie at the eighth place goes away from zero
        {0.00390625f, "0.0039063"},
        {-0.00390625f, "-0.0039063"},
        {1e-8f, "0.0000000"},
        {-1e-8f, "-0.0000000"},
        {5.9604644775390625e-08f, "0.0000001"},
        {16777216.0f, "16777216.0000000"},
        {FLT_MAX, "340282346638528860000000000000000000000.0000000"},  // seventeen digits, then zeros
        {std::numeric_limits<float>::infinity(), "1.#INF000"},
        {std::bit_cast<float>(0xFFC00000u), "-1.#IND000"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(Fixed(c.value), c.text) << c.value;
    }
}

// The short exact path for 32-bit floats and the general one must agree everywhere.
TEST(SerzNumberText, FloatAndDoubleFixedFormsAgree) {
    std::mt19937 random(7);
    for (int i = 0; i < 200000; ++i) {
        float value = std::bit_cast<float>(static_cast<std::uint32_t>(random()));
        if (std::isnan(value)) continue;
        ASSERT_EQ(Fixed(value), Fixed(static_cast<double>(value))) << std::bit_cast<std::uint32_t>(value);
    }
}

TEST(SerzNumberText, AltEncodingIsTheDoubleInFileOrder) {
    char buf[16];
    EXPECT_EQ(std::string(buf, WriteAltEncoding(buf, 1.0)), "000000000000F03F");
    EXPECT_EQ(std::string(buf, WriteAltEncoding(buf, static_cast<float>(146.162))), "000000202F456240");
    EXPECT_EQ(std::string(buf, WriteAltEncoding(buf, -0.0)), "0000000000000080");
}

TEST(SerzNumberText, IntegersAtTheirLimits) {
    char buf[32];
    EXPECT_EQ(std::string(buf, WriteUnsigned(buf, std::numeric_limits<std::uint64_t>::max())), "18446744073709551615");
    EXPECT_EQ(std::string(buf, WriteSigned(buf, std::numeric_limits<std::int64_t>::min())), "-9223372036854775808");
    EXPECT_EQ(std::string(buf, WriteSigned(buf, 0)), "0");
}

struct ParseCase {
    const char* text;
    bool ok;
    double value;
};

TEST(SerzNumberText, ReadsWhatPrintingGivesAndWhatPeopleType) {
    const ParseCase cases[] = {
        {"1", true, 1.0},
        {"5.76901e+006", true, 5.76901e6},
        {"5.76901e+06", true, 5.76901e6},
        {" 2.5\t", true, 2.5},
        {"+3", true, 3.0},
        {"-0", true, -0.0},
        {"1e400", true, std::numeric_limits<double>::infinity()},
        {"-1e400", true, -std::numeric_limits<double>::infinity()},
        {"1e-400", true, 0.0},
        {"1.#INF", true, std::numeric_limits<double>::infinity()},
        {"-1.#INF000", true, -std::numeric_limits<double>::infinity()},
        {"", false, 0},
        {"abc", false, 0},
        {"1.5x", false, 0},
        {"1 2", false, 0},
        {"1.#JUNK", false, 0},
    };
    for (const auto& c : cases) {
        double value = 12345;
        EXPECT_EQ(ParseDouble(c.text, value), c.ok) << c.text;
        if (c.ok) {
            EXPECT_EQ(value, c.value) << c.text;
            EXPECT_EQ(std::signbit(value), std::signbit(c.value)) << c.text;
        }
    }
    double nan = 0;
    ASSERT_TRUE(ParseDouble("-1.#IND", nan));
    EXPECT_TRUE(std::isnan(nan));
    EXPECT_TRUE(std::signbit(nan));
}

TEST(SerzNumberText, IntegerReadingRejectsJunkAndOverflow) {
    std::uint64_t u = 0;
    std::int64_t s = 0;
    EXPECT_TRUE(ParseUnsigned("18446744073709551615", u));
    EXPECT_FALSE(ParseUnsigned("18446744073709551616", u));
    EXPECT_FALSE(ParseUnsigned("-1", u));
    EXPECT_FALSE(ParseUnsigned("", u));
    EXPECT_TRUE(ParseSigned(" -7 ", s));
    EXPECT_EQ(s, -7);
    EXPECT_FALSE(ParseSigned("7a", s));
    EXPECT_FALSE(ParseSigned("1.5", s));
}

}  // namespace
}  // namespace ferrolund::serz
