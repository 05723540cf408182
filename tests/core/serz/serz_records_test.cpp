// Hand-made binaries of each record kind and value type, their text, and the way back.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "serz/codec.h"
#include "serz_test_support.h"

namespace ferrolund::serz {
namespace {

using testing::Bytes;

constexpr const char* kHead =
    "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n"
    "<cRoot xmlns:d=\"http://www.kuju.com/TnT/2003/Delta\" d:version=\"1.0\">\r\n";
constexpr const char* kTail = "</cRoot>\r\n";

// A converter-shaped file: a root "cRoot" (string 0) without id holding `children`
// records, `body` (which may refer to string 0 only), and the root's end.
std::string InRoot(const Bytes& body, std::uint32_t children) {
    Bytes file;
    file.u8({0xFF, 0x50}).str("cRoot").u32(0).u32(children);
    file.text(body.data().substr(8));
    file.u8({0xFF, 0x70}).u16(0);
    return file.data();
}

std::string ToXml(const std::string& binary, const XmlStyle& style = {}) {
    std::string xml;
    auto status = BinaryToXml(binary, xml, style);
    EXPECT_FALSE(status) << status->message;
    return xml;
}

std::string ToBinary(const std::string& xml) {
    std::string binary;
    auto status = XmlToBinary(xml, binary);
    EXPECT_FALSE(status) << status->message;
    return binary;
}

struct ValueCase {
    const char* type;
    std::vector<int> payload;
    const char* line;  // the element's line without its tabs and line end
};

TEST(SerzRecords, EachValueTypeBothWays) {
    const ValueCase cases[] = {
        {"bool", {0x01}, "<V d:type=\"bool\">1</V>"},
        {"bool", {0x00}, "<V d:type=\"bool\">0</V>"},
        {"sUInt8", {0xFF}, "<V d:type=\"sUInt8\">255</V>"},
        {"sInt8", {0xFF}, "<V d:type=\"sInt8\">-1</V>"},
        {"sInt16", {0xFE, 0xFF}, "<V d:type=\"sInt16\">-2</V>"},
        {"sUInt16", {0xFE, 0xFF}, "<V d:type=\"sUInt16\">65534</V>"},
        {"sInt32", {0x00, 0x00, 0x00, 0x80}, "<V d:type=\"sInt32\">-2147483648</V>"},
        {"sUInt32", {0xFF, 0xFF, 0xFF, 0xFF}, "<V d:type=\"sUInt32\">4294967295</V>"},
        {"sInt64", {0, 0, 0, 0, 0, 0, 0, 0x80}, "<V d:type=\"sInt64\">-9223372036854775808</V>"},
        {"sUInt64", {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF}, "<V d:type=\"sUInt64\">18446744073709551615</V>"},
        {"sFloat32", {0x00, 0x00, 0x80, 0x3F},
         "<V d:type=\"sFloat32\" d:alt_encoding=\"000000000000F03F\" d:precision=\"string\">1</V>"},
        {"sFloat32", {0x00, 0x10, 0x35, 0x44},
         "<V d:type=\"sFloat32\" d:alt_encoding=\"0000000000A28640\" d:precision=\"string\">724.25</V>"},
        {"sFloat64", {0x9A, 0x99, 0x99, 0x99, 0x99, 0x99, 0xB9, 0x3F},
         "<V d:type=\"sFloat64\" d:alt_encoding=\"9A9999999999B93F\" d:precision=\"string\">0.1</V>"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.type);
        Bytes body;
        body.u8({0xFF, 0x56}).str("V").str(c.type);
        for (int b : c.payload) body.u8({b});
        std::string binary = InRoot(body, 1);
        std::string xml = ToXml(binary);
        EXPECT_EQ(xml, std::string(kHead) + "\t" + c.line + "\r\n" + kTail);
        EXPECT_TRUE(ToBinary(xml) == binary);
    }
}

TEST(SerzRecords, AnyNonZeroBoolPrintsOneAndComesBackAsOne) {
    Bytes body;
    body.u8({0xFF, 0x56}).str("V").str("bool").u8({0x07});
    std::string xml = ToXml(InRoot(body, 1));
    EXPECT_NE(xml.find("<V d:type=\"bool\">1</V>"), std::string::npos);
    Bytes one;
    one.u8({0xFF, 0x56}).str("V").str("bool").u8({0x01});
    EXPECT_TRUE(ToBinary(xml) == InRoot(one, 1));
}

TEST(SerzRecords, StringsAreEscapedAndCountedInCharacters) {
    // "Žďár & <x> \"q\" 'a' €": accented letters of two bytes, the euro sign of three.
    const std::string text = "\xC5\xBD\xC4\x8F\xC3\xA1r & <x> \"q\" 'a' \xE2\x82\xAC";
    Bytes body;
    body.u8({0xFF, 0x56}).str("S").str("cDeltaString").str(text, 20);
    std::string binary = InRoot(body, 1);
    std::string xml = ToXml(binary);
    EXPECT_NE(xml.find("<S d:type=\"cDeltaString\">\xC5\xBD\xC4\x8F\xC3\xA1r &amp; &lt;x&gt; &quot;q&quot; &apos;a&apos; "
                       "\xE2\x82\xAC</S>"),
              std::string::npos);
    EXPECT_TRUE(ToBinary(xml) == binary);
}

TEST(SerzRecords, EmptyStringIsNeverSelfClosed) {
    Bytes body;
    body.u8({0xFF, 0x56}).str("GUID").str("cDeltaString").str("");
    std::string binary = InRoot(body, 1);
    std::string xml = ToXml(binary);
    EXPECT_NE(xml.find("\t<GUID d:type=\"cDeltaString\"></GUID>\r\n"), std::string::npos);
    EXPECT_TRUE(ToBinary(xml) == binary);
}

TEST(SerzRecords, NamesWithDoubleColonsDashesAndNone) {
    Bytes body;
    body.u8({0xFF, 0x50}).str("Network::cTrackRibbon").u32(0xFFFFFFFE).u32(1);  // string 1
    body.u8({0xFF, 0x56}).str("").str("sInt32").u32(5);                          // strings 2, 3
    body.u8({0xFF, 0x70}).u16(1);
    std::string xml = ToXml(InRoot(body, 1));
    EXPECT_EQ(xml, std::string(kHead) +
                       "\t<Network-cTrackRibbon d:id=\"-2\">\r\n"
                       "\t\t<e d:type=\"sInt32\">5</e>\r\n"
                       "\t</Network-cTrackRibbon>\r\n" + kTail);
    // Back, "-" becomes "::" and "e" stays "e"; so "a-b" returns as "a::b".
    Bytes expected;
    expected.u8({0xFF, 0x50}).str("Network::cTrackRibbon").u32(0xFFFFFFFE).u32(1);
    expected.u8({0xFF, 0x56}).str("e").str("sInt32").u32(5);
    expected.u8({0xFF, 0x70}).u16(1);
    EXPECT_TRUE(ToBinary(xml) == InRoot(expected, 1));
    std::string dashed = ToBinary("<a-b><c d:type=\"bool\">1</c></a-b>");
    EXPECT_NE(dashed.find("a::b"), std::string::npos);
}

TEST(SerzRecords, EmptyElementsSelfCloseWithTheirIds) {
    Bytes body;
    body.u8({0xFF, 0x50}).str("Empty").u32(0).u32(0);
    body.u8({0xFF, 0x70}).u16(1);
    body.u8({0xFF, 0x50}).str("cObject").u32(1165289384).u32(0);
    body.u8({0xFF, 0x70}).u16(2);
    std::string binary = InRoot(body, 2);
    std::string xml = ToXml(binary);
    EXPECT_EQ(xml, std::string(kHead) + "\t<Empty/>\r\n\t<cObject d:id=\"1165289384\"/>\r\n" + kTail);
    EXPECT_TRUE(ToBinary(xml) == binary);
}

TEST(SerzRecords, ReferencesNilsAndArrays) {
    Bytes body;
    body.u8({0xFF, 0x52}).str("Target").u32(0xFFFFFFFB);
    body.u8({0xFF, 0x4E});
    body.u8({0xFF, 0x41}).str("RXAxis").str("sFloat32").u8({4}).f32(0.9657443f).f32(-0.0f).f32(1.0f).f32(-34130.91015625f);
    body.u8({0xFF, 0x41}).str("Ids").str("sInt16").u8({2}).u16(0xFFFF).u16(7);
    std::string binary = InRoot(body, 4);
    std::string xml = ToXml(binary);
    EXPECT_EQ(xml, std::string(kHead) +
                       "\t<Target d:type=\"ref\">-5</Target>\r\n"
                       "\t<d:nil/>\r\n"
                       "\t<RXAxis d:numElements=\"4\" d:elementType=\"sFloat32\" d:precision=\"string\">"
                       "0.9657443 -0.0000000 1.0000000 -34130.9101563</RXAxis>\r\n"
                       "\t<Ids d:numElements=\"2\" d:elementType=\"sInt16\">-1 7</Ids>\r\n" + kTail);
    std::string back = ToBinary(xml);
    // The last float comes back as the text holds it.
    Bytes expected;
    expected.u8({0xFF, 0x52}).str("Target").u32(0xFFFFFFFB);
    expected.u8({0xFF, 0x4E});
    expected.u8({0xFF, 0x41}).str("RXAxis").str("sFloat32").u8({4}).f32(0.9657443f).f32(-0.0f).f32(1.0f).f32(-34130.9101563f);
    expected.u8({0xFF, 0x41}).str("Ids").str("sInt16").u8({2}).u16(0xFFFF).u16(7);
    EXPECT_TRUE(back == InRoot(expected, 4));
}

TEST(SerzRecords, BlobLayoutFourGroupsOfEightBytesALine) {
    struct Case {
        std::uint32_t size;
        const char* text;
    };
    const Case cases[] = {
        {0, "\t<d:blob d:size=\"0\"></d:blob>\r\n"},
        {3, "\t<d:blob d:size=\"3\">000102</d:blob>\r\n"},
        {20, "\t<d:blob d:size=\"20\">0001020304050607 08090A0B0C0D0E0F 10111213</d:blob>\r\n"},
        {40,
         "\t<d:blob d:size=\"40\">0001020304050607 08090A0B0C0D0E0F 1011121314151617 18191A1B1C1D1E1F\r\n"
         "2021222324252627</d:blob>\r\n"},
    };
    for (const auto& c : cases) {
        Bytes body;
        body.u8({0xFF, 0x42}).u32(c.size);
        for (std::uint32_t i = 0; i < c.size; ++i) body.u8({static_cast<int>(i)});
        std::string binary = InRoot(body, 0);  // a blob is not counted as a child
        std::string xml = ToXml(binary);
        EXPECT_EQ(xml, std::string(kHead) + c.text + kTail);
        EXPECT_TRUE(ToBinary(xml) == binary) << c.size;
    }
}

TEST(SerzRecords, ExponentWidthIsASetting) {
    Bytes body;
    body.u8({0xFF, 0x56}).str("V").str("sFloat64").f64(5769010.0);
    std::string binary = InRoot(body, 1);
    EXPECT_NE(ToXml(binary).find(">5.76901e+006<"), std::string::npos);
    EXPECT_NE(ToXml(binary, XmlStyle{2}).find(">5.76901e+06<"), std::string::npos);
}

TEST(SerzRecords, GameMarkerIsSkippedButTakesItsCacheSlot) {
    Bytes file;
    file.u8({0xFF, 0x43, 0x00}).u32(0x414);            // slot 0
    file.u8({0xFF, 0x50}).str("cRoot").u32(7).u32(0);  // slot 1
    file.u8({0xFF, 0x56}).str("V").str("bool").u8({1});  // slot 2
    file.u8({2, 0});                                    // slot 2 again
    file.u8({0xFF, 0x70}).u16(0);
    EXPECT_EQ(ToXml(file.data()), "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n"
                                  "<cRoot xmlns:d=\"http://www.kuju.com/TnT/2003/Delta\" d:version=\"1.0\" d:id=\"7\">\r\n"
                                  "\t<V d:type=\"bool\">1</V>\r\n"
                                  "\t<V d:type=\"bool\">0</V>\r\n"
                                  "</cRoot>\r\n");
}

TEST(SerzRecords, ChildCountsAreTheTrueCounts) {
    // The game writes 0 for the root of a saved game; the converter writes the count.
    Bytes file;
    file.u8({0xFF, 0x50}).str("cRoot").u32(0).u32(0);
    file.u8({0xFF, 0x4E});
    file.u8({0xFF, 0x56}).str("V").str("bool").u8({1});
    file.u8({0xFF, 0x70}).u16(0);
    std::string binary = ToBinary(ToXml(file.data()));
    std::uint32_t count = 0;
    std::memcpy(&count, binary.data() + 8 + 2 + 2 + 4 + 5 + 4, 4);
    EXPECT_EQ(count, 2u);
}

// More distinct headers than the cache holds: the ring wraps, an evicted header is
// written in full again and stored at the cursor, one still in the ring as its slot.
TEST(SerzRecords, LineCacheWrapsAndStaysExact) {
    auto element = [](int i) {
        return "\t<A" + std::to_string(i) + " d:type=\"sInt32\">0</A" + std::to_string(i) + ">\r\n";
    };
    std::string xml = std::string(kHead);
    for (int i = 0; i < 256; ++i) xml += element(i);
    xml += element(0) + element(2) + element(1);
    xml += kTail;
    std::string binary = ToBinary(xml);
    // Slots: the root 0, A0 1, A1 2, A2 3 ... A253 254; A254 wraps to 0 and A255 to 1.
    // A0 is then gone and is written in full into slot 2, evicting A1; A2 is still in
    // slot 3. Strings: cRoot 0, A0 1, sInt32 2, A1 3.
    const std::string tail = std::string("\xFF\x56\x01\x00\x02\x00\0\0\0\0", 10) +  // A0 in full
                             std::string("\x03\0\0\0\0", 5) +                        // A2 from its slot
                             std::string("\xFF\x56\x03\x00\x02\x00\0\0\0\0", 10) +  // A1 in full
                             std::string("\xFF\x70\x00\x00", 4);
    ASSERT_GT(binary.size(), tail.size());
    EXPECT_TRUE(binary.substr(binary.size() - tail.size()) == tail);
    EXPECT_EQ(ToXml(binary), xml);
}

}  // namespace
}  // namespace ferrolund::serz
