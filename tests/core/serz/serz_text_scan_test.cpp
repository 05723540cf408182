// The XML text is scanned and written sixteen characters a step where it can be: names,
// blanks, indentation and escaped strings must come out the same at every length and
// at every place a special character may sit in a chunk.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "round_trip.h"
#include "serz/codec.h"

namespace ferrolund::serz {
namespace {

constexpr std::string_view kHead =
    "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n"
    "<cRecordSet xmlns:d=\"http://www.kuju.com/TnT/2003/Delta\" d:version=\"1.0\">\r\n";

std::string Escape(std::string_view text) {
    std::string out;
    for (char c : text) {
        switch (c) {
            case '&': out += "&amp;"; break;
            case '<': out += "&lt;"; break;
            case '>': out += "&gt;"; break;
            case '"': out += "&quot;"; break;
            case '\'': out += "&apos;"; break;
            default: out += c;
        }
    }
    return out;
}

TEST(SerzTextScan, StringsKeepTheirEntitiesAtEveryPlace) {
    const char specials[] = {'&', '<', '>', '"', '\''};
    for (std::size_t length = 0; length <= 40; ++length) {
        for (std::size_t at = 0; at <= length; ++at) {
            std::string text(length, 'a');
            for (std::size_t i = 0; i < length; ++i) text[i] = static_cast<char>('a' + i % 26);
            if (at < length) text[at] = specials[(length + at) % 5];
            if (length > 20) text[length - 1] = '&';  // a second one after a long plain run
            std::string xml = std::string(kHead) + "\t<S d:type=\"cDeltaString\">" + Escape(text) + "</S>\r\n</cRecordSet>\r\n";
            ExpectRoundTrip(xml);
        }
    }
}

// Names of every length (across the sixteen-character steps, with "-" for "::"), nested
// deeper than the block of tabs the writer copies at once.
TEST(SerzTextScan, LongNamesAndDeepNesting) {
    std::string xml(kHead);
    const int depth = 45;
    std::vector<std::string> names;
    for (int level = 1; level <= depth; ++level) {
        std::string name = "N" + std::string(static_cast<std::size_t>(level % 37), 'x') + "-c" + std::to_string(level);
        names.push_back(name);
        xml += std::string(static_cast<std::size_t>(level), '\t') + "<" + name + " d:id=\"" + std::to_string(level) + "\">\r\n";
        xml += std::string(static_cast<std::size_t>(level + 1), '\t') + "<V" + std::string(static_cast<std::size_t>(level), 'v') +
               " d:type=\"sInt32\">-" + std::to_string(level) + "</V" + std::string(static_cast<std::size_t>(level), 'v') + ">\r\n";
    }
    for (int level = depth; level >= 1; --level) {
        xml += std::string(static_cast<std::size_t>(level), '\t') + "</" + names[static_cast<std::size_t>(level - 1)] + ">\r\n";
    }
    xml += "</cRecordSet>\r\n";
    ExpectRoundTrip(xml);

    // Any run of blanks between the tags reads the same.
    std::string loose;
    std::size_t line = 0;
    for (char c : xml) {
        if (c == '\t') continue;
        loose += c;
        if (c == '\n') {
            ++line;
            loose += std::string(line % 40, line % 2 != 0 ? ' ' : '\t');
        }
    }
    std::string binary, looseBinary;
    ASSERT_FALSE(XmlToBinary(xml, binary));
    auto failure = XmlToBinary(loose, looseBinary);
    ASSERT_FALSE(failure) << failure->message;
    EXPECT_EQ(looseBinary, binary);
}

struct BrokenText {
    const char* body;  // after the head, which holds two lines
    const char* message;
};

// Failures inside long names and long blank runs still name the line and the reason.
TEST(SerzTextScan, BrokenTextNamesTheLine) {
    const BrokenText cases[] = {
        {"\t<AVeryLongElementNameBeyondSixteen d:type=\"sInt32\">x</AVeryLongElementNameBeyondSixteen>\r\n</cRecordSet>\r\n",
         "line 3: 'x' is not a value of type sInt32"},
        {"\t<AVeryLongElementNameBeyondSixteenA>\r\n\t</AVeryLongElementNameBeyondSixteenB>\r\n</cRecordSet>\r\n",
         "line 4: </AVeryLongElementNameBeyondSixteenB> ends <AVeryLongElementNameBeyondSixteenA>"},
        {"\t<Short d:type=\"sInt32\">1</Shorter>\r\n</cRecordSet>\r\n", "line 3: </Shorter> ends <Short>"},
        {"\r\n\r\n                                        \t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\r\n"
         "\t<S d:type=\"cDeltaString\">a &bogus; b</S>\r\n</cRecordSet>\r\n",
         "line 6: an unknown or broken entity"},
        {"\t<AVeryLongElementNameBeyondSixteen", "line 3: the text ends inside a tag"},
        {"\t<F d:type=\"sFloat32\">1.5.5</F>\r\n</cRecordSet>\r\n", "line 3: '1.5.5' is not a value of type sFloat32"},
        {"\t<F d:numElements=\"2\" d:elementType=\"sFloat32\">1.0000000 -.</F>\r\n</cRecordSet>\r\n",
         "line 3: '-.' is not a value of type sFloat32"},
    };
    for (const auto& c : cases) {
        std::string binary = "stale";
        auto failure = XmlToBinary(std::string(kHead) + c.body, binary);
        ASSERT_TRUE(failure) << c.body;
        EXPECT_EQ(failure->message, c.message);
        EXPECT_TRUE(binary.empty());
    }
}

}  // namespace
}  // namespace ferrolund::serz
