// XML as a person may type it reads to the same bytes as the converter's own text.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <string>

#include "serz/codec.h"

namespace ferrolund::serz {
namespace {

constexpr const char* kCanonical =
    "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n"
    "<cRoot xmlns:d=\"http://www.kuju.com/TnT/2003/Delta\" d:version=\"1.0\" d:id=\"42\">\r\n"
    "\t<Item d:id=\"-3\">\r\n"
    "\t\t<Name d:type=\"cDeltaString\">a &amp; b</Name>\r\n"
    "\t\t<Mass d:type=\"sFloat32\" d:alt_encoding=\"0000000000000440\" d:precision=\"string\">2.5</Mass>\r\n"
    "\t\t<Empty d:type=\"cDeltaString\"></Empty>\r\n"
    "\t</Item>\r\n"
    "\t<d:nil/>\r\n"
    "</cRoot>\r\n";

TEST(SerzTypedXml, LayoutAndSpellingVariantsGiveTheSameBytes) {
    std::string expected;
    ASSERT_FALSE(XmlToBinary(kCanonical, expected));
    const char* variants[] = {
        // LF only, spaces for tabs, blank lines
        "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n\n<cRoot d:id=\"42\">\n  <Item d:id=\"-3\">\n\n"
        "    <Name d:type=\"cDeltaString\">a &amp; b</Name>\n"
        "    <Mass d:type=\"sFloat32\">2.5</Mass>\n    <Empty d:type=\"cDeltaString\"></Empty>\n  </Item>\n"
        "  <d:nil/>\n</cRoot>",
        // a byte-order mark, no declaration, comments, single quotes, blanks in tags, a
        // character reference, a self-closed empty string, the nil written out
        "\xEF\xBB\xBF<!-- edited --><cRoot  d:id = '42' ><Item d:id='4294967293'>"
        "<Name d:type='cDeltaString'>a &#38; b</Name ><!-- mass --><Mass d:precision=\"string\" d:type=\"sFloat32\""
        " d:alt_encoding=\"FFFFFFFFFFFFFFFF\"> 2.50 </Mass><Empty d:type=\"cDeltaString\"/></Item>"
        "<d:nil></d:nil></cRoot>\r\n\r\n",
        // the value edited in the text wins over a stale alternative encoding
        "<cRoot d:id=\"42\"><Item d:id=\"-3\"><Name d:type=\"cDeltaString\">a &amp; b</Name>"
        "<Mass d:type=\"sFloat32\" d:alt_encoding=\"000000000000F03F\">+25e-1</Mass>"
        "<Empty d:type=\"cDeltaString\"></Empty></Item><d:nil/></cRoot>",
    };
    for (const char* variant : variants) {
        std::string binary;
        auto status = XmlToBinary(variant, binary);
        ASSERT_FALSE(status) << status->message << "\n" << variant;
        EXPECT_TRUE(binary == expected) << variant;
    }
    std::string xml;
    ASSERT_FALSE(BinaryToXml(expected, xml));
    EXPECT_EQ(xml, kCanonical);
}

TEST(SerzTypedXml, TextKeepsItsBlanksAndLineEnds) {
    const std::string typed = "<cRoot><S d:type=\"cDeltaString\">  two\r\nlines  </S></cRoot>";
    std::string binary, xml;
    ASSERT_FALSE(XmlToBinary(typed, binary));
    ASSERT_FALSE(BinaryToXml(binary, xml));
    EXPECT_NE(xml.find(">  two\r\nlines  </S>"), std::string::npos);
}

// Typed floats beyond a 32-bit float's range round as the hardware would, without
// undefined conversions.
TEST(SerzTypedXml, FloatsPastTheLargestRoundToItOrToInfinity) {
    struct Case {
        const char* text;
        std::uint32_t bits;
    };
    const Case cases[] = {
        {"3.4028235e38", 0x7F7FFFFF},
        {"3.40282356e38", 0x7F7FFFFF},
        {"3.4028236e38", 0x7F800000},
        {"-1e39", 0xFF800000},
        {"1e-50", 0x00000000},
        {"-1.#INF", 0xFF800000},
    };
    for (const auto& c : cases) {
        std::string binary;
        ASSERT_FALSE(XmlToBinary(std::string("<R><V d:type=\"sFloat32\">") + c.text + "</V></R>", binary)) << c.text;
        std::uint32_t bits = 0;
        std::memcpy(&bits, binary.data() + binary.size() - 4 - 4, 4);  // before the root's end record
        EXPECT_EQ(bits, c.bits) << c.text;
    }
}

}  // namespace
}  // namespace ferrolund::serz
