#include "tools/text_repair.h"

#include <gtest/gtest.h>

#include "support/scripted_ui.h"

namespace ferrolund::tools {
namespace {

struct RepairCase {
    const char* what;
    std::string in;
    std::string out;
};

TEST(FixEntities, Table) {
    const RepairCase cases[] = {
        {"plain text unchanged", "Plain <b>text</b>", "Plain <b>text</b>"},
        {"screen form stays", "Stra\xDF" "e \xE4", "Stra\xDF" "e \xE4"},
        {"ampersand escaped twice", "&amp;amp;", "&"},
        {"apostrophe escaped twice", "O&amp;apos;Brien", "O'Brien"},
        {"quote goes to the apostrophe", "&quot;x&QUOT;", "'x'"},
        {"UTF-8 pairs", "M\xC3\xBCller \xC3\x84 \xC3\x9F \xC3\xA9", "M\xFCller \xC4 \xDF \xE9"},
        {"broken three-byte form", "M\xEF\xBF\xBCller Stra\xEF\xBF\x9F" "e", "M\xFCller Stra\xDF" "e"},
        {"one half", "\xEF\xBE\xBD", "\xBD"},
        {"e circumflex pair", "\xC3\xAA", "\xEA"},
        {"the pair ReplaceApos writes for it is not read back", "\xC3\xEA", "\xC3\xEA"},
        {"u grave as the table has it", "\xC3\xF9", "\xF9"},
        {"a acute by the broken form", "\xEF\xBF\xA1", "\xE1"},
        {"unknown pair stays", "\xC3\xBF", "\xC3\xBF"},
        // The searches ignore case, so the fold of the lead byte matches as well.
        {"lead byte in lower case", "\xE3\xBC", "\xFC"},
    };
    for (const auto& c : cases) {
        std::string text = c.in;
        EXPECT_FALSE(FixEntities(text)) << c.what;
        EXPECT_EQ(text, c.out) << c.what;
        EXPECT_EQ(FixEntitiesCopy(c.in), c.out) << c.what;
    }
}

TEST(FixEntities, PumpsEventsOnlyWhenItHadSomethingToDo) {
    testing::ScriptedUi ui;
    std::string plain = "nothing here";
    FixEntities(plain, &ui);
    EXPECT_EQ(ui.pumps, 0);
    std::string escaped = "a &amp; b";
    FixEntities(escaped, &ui);
    EXPECT_EQ(ui.pumps, 1);
}

TEST(FixEntitiesCopy, LeavesTheArgumentAlone) {
    const std::string original = "&amp;";
    EXPECT_EQ(FixEntitiesCopy(original), "&");
    EXPECT_EQ(original, "&amp;");
}

TEST(ReplaceApos, Table) {
    const RepairCase cases[] = {
        {"apostrophe", "O'Brien", "O&quot;Brien"},
        {"ampersand and sharp s", "Stra\xDF" "e & Co", "Stra\xEF\xBF\x9F" "e &amp; Co"},
        {"u umlaut in the broken form", "M\xFCller", "M\xEF\xBF\xBCller"},
        {"a umlaut and a acute broken too", "\xE4\xE1", "\xEF\xBF\xA4\xEF\xBF\xA1"},
        {"capitals and o umlaut as pairs", "\xC4\xD6\xDC\xF6", "\xC3\x84\xC3\x96\xC3\x9C\xC3\xB6"},
        {"escaped apostrophe and quote survive", "&apos; &QUOT;", "&apos; &QUOT;"},
        {"escaped ampersand is escaped again", "&amp;", "&amp;amp;"},
        {"one half", "\xBD" "x", "\xC2\xBD" "x"},
        {"ae in the broken form", "\xE6", "\xEF\xBF\xA6"},
        // The step of three after a two-byte pair skips the character behind it.
        {"second capital skipped", "\xC4\xC4", "\xC3\x84\xC4"},
        {"n tilde steps by two", "\xF1\xF1", "\xC3\xB1\xC3\xB1"},
    };
    for (const auto& c : cases) {
        std::string text = c.in;
        EXPECT_FALSE(ReplaceApos(text)) << c.what;
        EXPECT_EQ(text, c.out) << c.what;
    }
}

TEST(ReplaceApos2, Table) {
    const RepairCase cases[] = {
        {"apostrophe", "O'Brien", "O&apos;Brien"},
        {"ampersand", "A & B", "A &amp; B"},
        {"only apo is spared", "&APOS; &quot;", "&APOS; &amp;quot;"},
        {"letters as pairs", "\xDF\xE4\xC4\xF6\xE9", "\xC3\x9F\xC3\xA4\xC3\x84\xC3\xB6\xC3\xA9"},
        {"ae written as the sharp s pair", "\xE6", "\xC3\x9F"},
        // Pass 4 skips the second u after its step of three; pass 11 picks it up.
        {"two u umlauts", "\xFC\xFC", "\xC3\xBC\xC3\xBC"},
    };
    for (const auto& c : cases) {
        std::string text = c.in;
        EXPECT_FALSE(ReplaceApos2(text)) << c.what;
        EXPECT_EQ(text, c.out) << c.what;
    }
}

TEST(TextRepair, RoundTrips) {
    struct Case {
        std::string screen;
        base::Status (*toFile)(std::string&);
        std::string back;
    };
    const Case cases[] = {
        {"O'Brien", ReplaceApos, "O'Brien"},
        {"O'Brien", ReplaceApos2, "O'Brien"},
        {"M\xFCller", ReplaceApos, "M\xFCller"},
        {"Stra\xDF" "e & Co", ReplaceApos, "Stra\xDF" "e & Co"},
        {"\xE6", ReplaceApos2, "\xDF"},  // the table writes the pair of the sharp s
        {"\xE6", ReplaceApos, "\xE6"},
    };
    for (const auto& c : cases) {
        std::string text = c.screen;
        c.toFile(text);
        FixEntities(text);
        EXPECT_EQ(text, c.back) << c.screen;
    }
}

TEST(TextRepair, HitBeyond32767IsAnOverflowAndIsLeft) {
    std::string text = "&amp;" + std::string(40000, 'x') + "&amp;";
    const base::Status status = FixEntities(text);
    ASSERT_TRUE(status);
    EXPECT_EQ(status->number, base::err::kOverflow);
    EXPECT_EQ(text, "&" + std::string(40000, 'x') + "&amp;");

    base::Status copyStatus;
    EXPECT_EQ(FixEntitiesCopy("&amp;" + std::string(40000, 'x'), copyStatus), "&" + std::string(40000, 'x'));
    EXPECT_FALSE(copyStatus);
}

TEST(TextRepair, EarlierReplacementsCanBringAHitBelowTheLimit) {
    // 1000 escaped ampersands shrink the text by 4000, pulling the last one from 33001
    // to 29001; each search starts again from the start, so it is replaced in time.
    std::string text;
    for (int i = 0; i < 1000; ++i) text += "&amp;";
    text += std::string(33000 - text.size(), 'x') + "&amp;";
    EXPECT_FALSE(FixEntities(text));
    EXPECT_EQ(text, std::string(1000, '&') + std::string(28000, 'x') + "&");
}

TEST(TextRepair, ACharacterThatItsOwnPairContainsRunsIntoTheOverflow) {
    // The pair of e circumflex ends in e circumflex itself and the step is one, so the
    // pass finds its own output again until the position overflows.
    for (auto routine : {ReplaceApos, ReplaceApos2}) {
        std::string text = "\xEA";
        const base::Status status = routine(text);
        ASSERT_TRUE(status);
        EXPECT_EQ(status->number, base::err::kOverflow);
        EXPECT_EQ(text, std::string(32767, '\xC3') + "\xEA");
    }
}

}  // namespace
}  // namespace ferrolund::tools
