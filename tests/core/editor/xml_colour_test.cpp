#include "editor/xml_colour.h"

#include <gtest/gtest.h>

#include <string>

#include "core/tools/testdata_file.h"

namespace ferrolund::editor {
namespace {

using C = XmlColour;
using Spans = std::vector<ColourSpan>;

struct ColourCase {
    const char* name;
    std::string text;
    Spans spans;
};

class ColourRules : public ::testing::TestWithParam<ColourCase> {};

TEST_P(ColourRules, GiveTheSpansInTheirOrder) {
    EXPECT_EQ(ColourText(GetParam().text), GetParam().spans);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, ColourRules,
    ::testing::Values(
        // The tag, " x=" with its blank, the value, the tag again; b=c between the tags stays plain.
        ColourCase{"TagAttributeAndTextWithEquals", R"(<a x="1">b=c</a>)",
                   {{0, 2, C::Tag}, {2, 3, C::AttributeName}, {5, 3, C::AttributeValue}, {8, 1, C::Tag},
                    {12, 4, C::Tag}}},
        ColourCase{"CommentOverSeveralLinesIsGreyAsAWhole", "<a>\n<!-- one\ntwo=\"2\" <b> -->\n</a>",
                   {{0, 3, C::Tag}, {4, 24, C::Comment}, {29, 4, C::Tag}}},
        ColourCase{"Declaration", R"(<?xml version="1.0" encoding="utf-8"?>)",
                   {{0, 5, C::Tag}, {5, 9, C::AttributeName}, {14, 5, C::AttributeValue},
                    {19, 10, C::AttributeName}, {29, 7, C::AttributeValue}, {36, 2, C::Tag}}},
        ColourCase{"SerzValueWithNamespaceAttribute", "\t<Name d:type=\"cDeltaString\">Wagon = 5</Name>",
                   {{1, 5, C::Tag}, {6, 8, C::AttributeName}, {14, 14, C::AttributeValue}, {28, 1, C::Tag},
                    {38, 7, C::Tag}}},
        ColourCase{"NumberValueEndsAtTheFirstNonDigit", "<a n=12x>",
                   {{0, 2, C::Tag}, {2, 3, C::AttributeName}, {5, 2, C::AttributeValue}, {7, 2, C::Tag}}},
        ColourCase{"SingleQuotesAndBlanksAroundTheEqualsSign", "<a d:k = 'v'>",
                   {{0, 2, C::Tag}, {2, 7, C::AttributeName}, {9, 3, C::AttributeValue}, {12, 1, C::Tag}}},
        ColourCase{"EmptyQuotesAreNoValue", R"(<a x="">)", {{0, 8, C::Tag}}},
        ColourCase{"NameWithoutValueIsPartOfTheTag", "<a checked>", {{0, 11, C::Tag}}},
        ColourCase{"BracketsAndBackslashesKeepTheirPlaces", R"(<a x="{\}">{\}</a>)",
                   {{0, 2, C::Tag}, {2, 3, C::AttributeName}, {5, 5, C::AttributeValue}, {10, 1, C::Tag},
                    {14, 4, C::Tag}}},
        ColourCase{"EmptyBracketsAreText", "<> x", {}},
        ColourCase{"TagOverTwoLines", "<a\n  x=\"1\">",
                   {{0, 4, C::Tag}, {4, 3, C::AttributeName}, {7, 3, C::AttributeValue}, {10, 1, C::Tag}}},
        ColourCase{"CommentHoldingATagEndStaysWhole", "<!-- a > b -->x=1<b>",
                   {{0, 14, C::Comment}, {17, 3, C::Tag}}},
        ColourCase{"EmptyCommentNeedsALaterEnd", "<!---->x<!-- y -->",
                   {{0, 18, C::Comment}}},
        ColourCase{"UnclosedCommentRunsToTheEnd", "<a/><!-- x\n<b>", {{0, 4, C::Tag}, {4, 10, C::Comment}}},
        // Before the first tag an attribute is coloured and the tag colour runs on behind it.
        ColourCase{"TextBeforeTheFirstTag", "a x=1 b\nc<d>",
                   {{1, 3, C::AttributeName}, {4, 1, C::AttributeValue}, {5, 2, C::Tag}, {8, 4, C::Tag}}},
        ColourCase{"WindowsLineEnds", "<a>\r\nx=\"1\"\r\n</a>\r\n", {{0, 3, C::Tag}, {12, 4, C::Tag}}}),
    [](const auto& info) { return std::string(info.param.name); });

// The pane colours line by line; together the lines must give what the whole text gives.
Spans ByLines(std::string_view text) {
    Spans all;
    ColourState state;
    std::size_t start = 0;
    while (start <= text.size()) {
        std::size_t end = text.find('\n', start);
        if (end == std::string_view::npos) end = text.size();
        Spans line;
        ColourState carried = ColourState::fromInt(state.toInt());
        ColourLine(text.substr(start, end - start), carried, line);
        state = carried;
        for (ColourSpan span : line) {
            span.start += static_cast<long>(start);
            if (!all.empty() && all.back().colour == span.colour && all.back().start + all.back().length == span.start) {
                all.back().length += span.length;
            } else {
                all.push_back(span);
            }
        }
        // ColourText colours a line end inside a comment or a tag; the pane has none to colour.
        if (end < text.size() && state.mode != ColourState::Mode::Text) {
            const C colour = state.mode == ColourState::Mode::Comment ? C::Comment : C::Tag;
            if (!all.empty() && all.back().colour == colour &&
                all.back().start + all.back().length == static_cast<long>(end)) {
                all.back().length += 1;
            } else {
                all.push_back({static_cast<long>(end), 1, colour});
            }
        }
        if (end == text.size()) break;
        start = end + 1;
    }
    return all;
}

TEST(ColourLine, LineByLineGivesTheSpansOfTheWholeRealFile) {
    FERROLUND_READ_TESTDATA(xml, "serz/scenario-small.xml");
    const Spans whole = ColourText(xml);
    ASSERT_FALSE(whole.empty());
    EXPECT_EQ(ByLines(xml), whole);
    // In a real file the tag colour starts on a "<" or right behind an attribute's value,
    // never on text between tags.
    for (std::size_t i = 0; i < whole.size(); ++i) {
        if (whole[i].colour != C::Tag) continue;
        const bool behindValue = i > 0 && whole[i - 1].colour == C::AttributeValue &&
                                 whole[i - 1].start + whole[i - 1].length == whole[i].start;
        EXPECT_TRUE(xml[static_cast<std::size_t>(whole[i].start)] == '<' || behindValue) << whole[i].start;
    }
}

TEST(ColourState, EveryStateSurvivesItsNumberAndStrangeNumbersStartAfresh) {
    for (auto mode : {ColourState::Mode::Text, ColourState::Mode::Tag, ColourState::Mode::Comment}) {
        for (bool afterTag : {false, true}) {
            for (bool runs : {false, true}) {
                const ColourState state{mode, afterTag, runs};
                EXPECT_EQ(ColourState::fromInt(state.toInt()), state);
            }
        }
    }
    for (int strange : {-1, 3, 16, 1000}) EXPECT_EQ(ColourState::fromInt(strange), ColourState{}) << strange;
}

TEST(RgbOf, ReadsTheStoredBlueGreenRedValues) {
    EXPECT_EQ(RgbOf(C::Plain).red + RgbOf(C::Plain).green + RgbOf(C::Plain).blue, 0);
    const Rgb tag = RgbOf(C::Tag);
    EXPECT_EQ(tag.red, 0);
    EXPECT_EQ(tag.blue, 0xC0);
    const Rgb name = RgbOf(C::AttributeName);
    EXPECT_EQ(name.red, 0xC0);
    EXPECT_EQ(name.green, 0);
    EXPECT_EQ(name.blue, 0xC0);
    EXPECT_EQ(RgbOf(C::AttributeValue).green, 0xC0);
    EXPECT_EQ(RgbOf(C::Comment).red, 0x80);
}

TEST(ColouringRefused, GeometryAndTextureNamesInAnyCase) {
    struct Case {
        const char* name;
        bool refused;
    };
    for (const Case& c : {Case{R"(C:\a\b.GeoPcDx)", true}, Case{"b.GEOPCDX", true}, Case{"b.tgpcdx", true},
                          Case{"b.TgPcDx", true}, Case{"b.bin", false}, Case{"pcdx", false}, Case{"", false},
                          Case{"b.GeoPcDx.xml", false}}) {
        EXPECT_EQ(ColouringRefused(c.name), c.refused) << c.name;
    }
}

}  // namespace
}  // namespace ferrolund::editor
