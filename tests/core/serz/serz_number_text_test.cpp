// Numbers as the converter prints and reads them.
#include <gtest/gtest.h>

#include <bit>
#include <charconv>
#include <cstdio>
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

std::string GeneralByShortestDigits(double value) {
    char buf[kNumberTextMax];
    return std::string(buf, WriteGeneralByShortestDigits(buf, value, 3));
}

// Values at the edges of the exact integer path of "%g": its range ends, carries, ties,
// whole numbers with a positive binary exponent, and the 25-bit mantissa limit.
TEST(SerzNumberText, GeneralFormAtTheEdgesOfTheIntegerPath) {
    const GeneralCase cases[] = {
        {0.0001f, 3, "0.0001"},                    // a float just below 1e-4: the general path
        {0.00010000001, 3, "0.0001"},
        {static_cast<float>(0.000123456), 3, "0.000123456"},
        {static_cast<float>(0.00099999994), 3, "0.001"},  // rounds up into the next decade
        {999999.4375, 3, "999999"},
        {999999.5, 3, "1e+006"},
        {999999.9375f, 3, "1e+006"},
        {524288.0, 3, "524288"},                   // a power of two: binary exponent above 0
        {65536.5, 3, "65536.5"},
        {123456.5, 3, "123457"},                   // an exact tie of the last kept digit
        {-123457.5, 3, "-123458"},
        {2.5, 3, "2.5"},
        {0.0625, 3, "0.0625"},
        {1.0000005, 3, "1"},                       // 1.0000005 lies below the tie as a double
        {static_cast<double>(16777215.0f) / 32, 3, "524288"},
        {33554431.0 / 67108864, 3, "0.5"},         // 25-bit mantissa: still the integer path
        {67108863.0 / 134217728, 3, "0.5"},        // 26 bits: the general path
        {1.0 / 3, 3, "0.333333"},                  // a long mantissa: the general path
    };
    for (const auto& c : cases) {
        EXPECT_EQ(General(c.value, c.exponentDigits), c.text) << c.value;
        EXPECT_EQ(GeneralByShortestDigits(c.value), c.text) << c.value;
    }
}

// The integer path and the digit-string one agree on every float and on doubles with
// short mantissas, spread over the whole range and packed near decimal ties.
TEST(SerzNumberText, GeneralFormPathsAgreeOnARandomSweep) {
    std::mt19937_64 random(2024);
    for (int i = 0; i < 400000; ++i) {
        std::uint64_t bits = random();
        double value = 0;
        switch (i % 4) {
            case 0: value = std::bit_cast<float>(static_cast<std::uint32_t>(bits)); break;
            case 1: value = static_cast<float>(static_cast<double>(bits % 2000000000) / 1000.0); break;
            case 2: value = static_cast<double>(bits % 33554432) * std::ldexp(1.0, static_cast<int>(bits >> 58) - 40); break;
            default: value = static_cast<float>((static_cast<double>(bits % 1000000) + 0.5) * std::pow(10.0, static_cast<int>(bits >> 60) % 10 - 9));
        }
        if (std::isnan(value)) continue;
        ASSERT_EQ(General(value), GeneralByShortestDigits(value)) << std::bit_cast<std::uint64_t>(value);
        ASSERT_EQ(General(-value), GeneralByShortestDigits(-value)) << std::bit_cast<std::uint64_t>(value);
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

// Every plain and exponent form reads as the general reading of the standard library
// does: the short path for up to fifteen digits must give the very same double.
TEST(SerzNumberText, PlainDecimalsReadAsTheGeneralReadingDoes) {
    const char* texts[] = {
        "0.0000000", "-0.0000000", "0", "-0", "007", "12.50", "-34130.9101563", "0.1", "0.3",
        "123456789012345", "1234567890123456", "12345678901234567890123", "0.123456789012345",
        "0.1234567890123456", "9007199254740993", "1.7976931348623157e308", "4.9e-324", "1e22",
        "1e23", "3.40282e+038", "1.", ".5", "-.5", "1.e5",
    };
    for (const char* text : texts) {
        std::string_view view(text);
        double expected = 0;
        auto r = std::from_chars(view.data(), view.data() + view.size(), expected);
        bool valid = r.ec == std::errc{} && r.ptr == view.data() + view.size();
        double value = 0;
        ASSERT_EQ(ParseDouble(text, value), valid) << text;
        if (valid) {
            EXPECT_EQ(std::bit_cast<std::uint64_t>(value), std::bit_cast<std::uint64_t>(expected)) << text;
        }
    }
    std::mt19937_64 random(99);
    char buf[64];
    for (int i = 0; i < 200000; ++i) {
        std::uint64_t bits = random();
        double source = static_cast<double>(bits % 100000000000000ULL) / std::pow(10.0, static_cast<int>(bits >> 60));
        if (bits & 1) source = -source;
        int places = static_cast<int>((bits >> 50) % 12);
        int length = std::snprintf(buf, sizeof buf, "%.*f", places, source);
        double expected = 0;
        std::from_chars(buf, buf + length, expected);
        double value = 0;
        ASSERT_TRUE(ParseDouble(std::string_view(buf, static_cast<std::size_t>(length)), value)) << buf;
        ASSERT_EQ(std::bit_cast<std::uint64_t>(value), std::bit_cast<std::uint64_t>(expected)) << buf;
    }
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
