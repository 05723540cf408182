#include "tools/text_search.h"

#include <gtest/gtest.h>

#include <random>

#include "tools/codepage.h"
#include "tools/text_replace.h"

namespace ferrolund::tools {
namespace {

struct ForwardCase {
    long start;
    std::string text;
    std::string find;
    CaseRule rule;
    long expected;
};

TEST(InStr, Table) {
    const ForwardCase cases[] = {
        {1, "abcABC", "bc", CaseRule::Ignore, 2},
        {1, "abcABC", "BC", CaseRule::Ignore, 2},
        {1, "abcABC", "BC", CaseRule::Exact, 5},
        {3, "abcABC", "bc", CaseRule::Ignore, 5},
        {0, "abc", "a", CaseRule::Ignore, 1},            // below 1 counts as 1
        {-9, "abc", "c", CaseRule::Ignore, 3},
        {4, "abc", "c", CaseRule::Ignore, 0},            // past the end
        {1, "", "a", CaseRule::Ignore, 0},
        {2, "abc", "", CaseRule::Ignore, 2},             // empty find: the start
        {4, "abc", "", CaseRule::Ignore, 0},
        {1, "ab", "abc", CaseRule::Ignore, 0},           // longer than the text
        {1, "x\xC4y", "\xE4", CaseRule::Ignore, 2},      // accented capital folds
        {1, "x\xC4y", "\xE4", CaseRule::Exact, 0},
        {1, "<Name>", "<name", CaseRule::Ignore, 1},     // tags start with '<'
        {2, "<a<A<b", "<b", CaseRule::Ignore, 5},
        {1, "\x8A\x9A", "\x9A\x9A", CaseRule::Ignore, 1},  // S caron pair
        {1, "aaab", "aab", CaseRule::Ignore, 2},         // restart after a partial match
    };
    for (const auto& c : cases) {
        EXPECT_EQ(InStr(c.start, c.text, c.find, c.rule), c.expected)
            << "InStr(" << c.start << ", \"" << c.text << "\", \"" << c.find << "\")";
    }
}

struct ReverseCase {
    std::string text;
    std::string find;
    long start;
    long expected;
};

TEST(InStrRev, Table) {
    const ReverseCase cases[] = {
        {"abcabc", "abc", -1, 4},
        {"abcabc", "abc", 6, 4},
        {"abcabc", "abc", 5, 1},    // the match must end within the first `start` characters
        {"abcabc", "ABC", 3, 1},
        {"abcabc", "abc", 2, 0},
        {"abcabc", "abc", 7, 0},    // past the end
        {"abcabc", "abc", 0, 0},
        {"<a>x</a>", ">", 5, 3},    // back from a closing tag to the '>'
        {"abc", "", 2, 2},
        {"", "a", -1, 0},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(InStrRev(c.text, c.find, c.start), c.expected)
            << "InStrRev(\"" << c.text << "\", \"" << c.find << "\", " << c.start << ")";
    }
    EXPECT_EQ(InStrRev("aBc", "b", -1, CaseRule::Exact), 0);
}

// The fast paths must agree with a plain search that folds every byte.
TEST(InStr, AgreesWithPlainFoldedSearchOnRandomText) {
    std::mt19937 rng(7);
    const std::string alphabet = "<>aAbB\xC4\xE4\x8A\x9A/";
    auto randomText = [&](std::size_t n) {
        std::string s;
        for (std::size_t i = 0; i < n; ++i) s += alphabet[rng() % alphabet.size()];
        return s;
    };
    for (int round = 0; round < 2000; ++round) {
        const std::string text = randomText(rng() % 40);
        const std::string find = randomText(1 + rng() % 3);
        const long start = static_cast<long>(rng() % 42);
        const std::string lowerText = LowerCp1252(text);
        const std::string lowerFind = LowerCp1252(find);
        const auto from = static_cast<std::size_t>(std::max(start, 1L) - 1);
        const auto at = from >= text.size() ? std::string::npos : lowerText.find(lowerFind, from);
        const long expected = at == std::string::npos ? 0 : static_cast<long>(at) + 1;
        ASSERT_EQ(InStr(start, text, find), expected) << text << " / " << find << " from " << start;

        const auto back = lowerText.rfind(lowerFind);
        const long expectedBack = back == std::string::npos ? 0 : static_cast<long>(back) + 1;
        ASSERT_EQ(InStrRev(text, find), expectedBack) << text << " / " << find;

        // Back from a start: the last match that ends within the first `start` characters.
        const long length = static_cast<long>(text.size());
        const long findLength = static_cast<long>(find.size());
        const long within = start >= 1 && start <= length && start >= findLength
                                ? static_cast<long>(lowerText.rfind(lowerFind, static_cast<std::size_t>(start - findLength)))
                                : -1;
        const long expectedWithin = within < 0 ? 0 : within + 1;
        ASSERT_EQ(InStrRev(text, find, start), expectedWithin) << text << " / " << find << " back from " << start;
    }
}

TEST(Mid, OutOfRangeArgumentsGiveTheOverlap) {
    EXPECT_EQ(Mid("abcdef", 2, 3), "bcd");
    EXPECT_EQ(Mid("abcdef", 5), "ef");
    EXPECT_EQ(Mid("abcdef", 5, 10), "ef");
    EXPECT_EQ(Mid("abcdef", 7), "");
    EXPECT_EQ(Mid("abcdef", 0, 2), "ab");
    EXPECT_EQ(Mid("abcdef", 2, 0), "");
}

TEST(ReplaceAll, EveryOccurrenceOnceAndNeverInsideTheReplacement) {
    struct Case {
        std::string text, find, by;
        CaseRule rule;
        std::string expected;
        long count;
    };
    const Case cases[] = {
        {"a-b-c", "-", "--", CaseRule::Ignore, "a--b--c", 2},            // the replacement holds the text
        {"MTU MTU MTU", "MTU MTU", "MTU", CaseRule::Ignore, "MTU MTU", 1},  // searched on behind the replacement
        {"BG_Modern bg_modern", "BG_MODERN", "X", CaseRule::Ignore, "X X", 2},
        {"BG_Modern bg_modern", "bg_modern", "X", CaseRule::Exact, "BG_Modern X", 1},
        {"\xC9t\xE9 \xE9t\xE9", "\xE9T\xE9", "summer", CaseRule::Ignore, "summer summer", 2},
        {"abc", "", "x", CaseRule::Ignore, "abc", 0},
        {"abc", "abc", "", CaseRule::Ignore, "", 1},
    };
    for (const Case& c : cases) {
        std::string text = c.text;
        EXPECT_EQ(ReplaceAll(text, c.find, c.by, c.rule), c.count) << c.text;
        EXPECT_EQ(text, c.expected) << c.text;
    }
}

TEST(TrimBlanks, OnlySpacesGo) {
    EXPECT_EQ(TrimBlanks("  a b  "), "a b");
    EXPECT_EQ(TrimBlanks("\ta\t"), "\ta\t");
    EXPECT_EQ(TrimBlanks("   "), "");
}

}  // namespace
}  // namespace ferrolund::tools
