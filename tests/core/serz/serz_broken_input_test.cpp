// Broken input of every kind gives an error that says where and why, and no output.
#include <gtest/gtest.h>

#include <string>

#include "serz/codec.h"
#include "serz_test_support.h"

namespace ferrolund::serz {
namespace {

using testing::Fixtures;
using testing::ReadBytes;

struct BrokenCase {
    const char* file;
    const char* reason;  // a part of the message
};

std::string BrokenFile(const char* name) {
    auto path = Fixtures() / "broken" / name;
    EXPECT_TRUE(std::filesystem::exists(path)) << path;
    return ReadBytes(path);
}

// Each fixture fails with its reason and leaves the output empty.
template <std::size_t N, typename Conversion>
void ExpectFailures(const BrokenCase (&cases)[N], Conversion convert) {
    for (const auto& c : cases) {
        std::string out = "stale";
        CodecStatus status = convert(BrokenFile(c.file), out);
        ASSERT_TRUE(status) << c.file;
        EXPECT_NE(status->message.find(c.reason), std::string::npos) << c.file << ": " << status->message;
        EXPECT_TRUE(out.empty()) << c.file;
    }
}

TEST(SerzBrokenInput, BinaryFailuresNameTheByteAndTheReason) {
    const BrokenCase cases[] = {
        {"empty.bin", "at byte 0: not a serialised binary file"},
        {"wrong-magic.bin", "at byte 0: not a serialised binary file"},
        {"head-only.bin", "at byte 8: the file holds no element"},
        {"truncated-string.bin", "at byte 10: the file is truncated: a string of 10 characters"},
        {"unfilled-slot.bin", "at byte 8: line cache slot 5 is used before it was filled"},
        {"string-index-out-of-range.bin", "at byte 10: string index 7 is out of range (the table holds 0)"},
        {"utf8-past-end.bin", "at byte 10: the file is truncated: a string of 10 characters"},
        {"absurd-string-length.bin", "the file is truncated: a string of 4294967280 characters"},
        {"absurd-blob-size.bin", "the file is truncated: 2147483647 bytes wanted for a blob"},
        {"unknown-kind.bin", "unknown record kind 99"},
        {"unknown-type.bin", "unknown value type 'sFoo'"},
        {"unclosed-root.bin", "the file is truncated: it ends inside 'cRoot'"},
        {"mismatched-close.bin", "the end of 'cRoot' closes 'Inner'"},
        {"record-after-root.bin", "a record follows the end of the root element"},
        {"array-of-strings.bin", "an array of cDeltaString cannot be written as text"},
        {"truncated-array.bin", "at byte 53: the file is truncated: 64 bytes wanted for an array's elements, 8 remain"},
        {"value-before-root.bin", "the file does not start with an element"},
    };
    ExpectFailures(cases, [](const std::string& in, std::string& out) { return BinaryToXml(in, out); });
}

TEST(SerzBrokenInput, XmlFailuresNameTheLineAndTheReason) {
    const BrokenCase cases[] = {
        {"not-well-formed.xml", "line 5: </a> ends <b>"},
        {"unknown-type.xml", "line 3: unknown type 'sFoo'"},
        {"bad-number.xml", "line 3: '12a' is not a value of type sInt32"},
        {"out-of-range.xml", "line 3: '256' is not a value of type sUInt8"},
        {"array-count.xml", "line 3: <A> holds fewer elements than d:numElements"},
        {"array-too-long.xml", "line 3: d:numElements '300' is not a count from 0 to 255"},
        {"blob-digits.xml", "line 3: a blob of d:size 4 holds 7 hex digits"},
        {"blob-not-hex.xml", "line 3: a blob holds a character that is not a hex digit"},
        {"unclosed-comment.xml", "line 3: a comment or declaration is never closed"},
        {"text-outside.xml", "line 3: text inside <cRoot>, which holds elements"},
        {"two-roots.xml", "line 4: a second element follows the root element"},
        {"unterminated-attribute.xml", "line 3:"},
        {"unknown-entity.xml", "line 3: an unknown or broken entity"},
        {"empty.xml", "line 1: the text holds no element"},
        {"unclosed-root.xml", "line 4: the text ends inside <cRoot>"},
        {"bad-id.xml", "line 3: d:id '12x' is not a 32-bit number"},
        {"value-holds-element.xml", "line 3: expected the end tag </V>"},
        {"cut-utf8.xml", "line 3: the text ends inside a UTF-8 character"},
    };
    ExpectFailures(cases, [](const std::string& in, std::string& out) { return XmlToBinary(in, out); });
}

// A binary file starts with an element that opens, so a root holding a value is refused
// where it stands instead of giving a file that cannot be read back.
TEST(SerzBrokenInput, RootThatHoldsAValueIsRefused) {
    const char* roots[] = {
        "<d:nil/>",
        "\r\n<d:nil></d:nil>",
        "<V d:type=\"sInt32\">1</V>",
        "<A d:numElements=\"1\" d:elementType=\"sInt8\">1</A>",
        "<!-- x -->\n<d:blob d:size=\"1\">00</d:blob>",
    };
    for (const char* root : roots) {
        std::string binary = "stale";
        CodecStatus status = XmlToBinary(root, binary);
        ASSERT_TRUE(status) << root;
        std::string line = std::string_view(root).find('\n') == std::string_view::npos ? "line 1: " : "line 2: ";
        EXPECT_EQ(status->message, line + "the root element holds a value, not elements") << root;
        EXPECT_TRUE(binary.empty());
    }
    std::string binary, xml;
    ASSERT_FALSE(XmlToBinary("<r/>", binary));
    EXPECT_FALSE(BinaryToXml(binary, xml));
}

// A small file written by the codec, cut at every length, fails cleanly each time.
TEST(SerzBrokenInput, EveryTruncationFailsCleanly) {
    const std::string xml =
        "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n"
        "<cRoot xmlns:d=\"http://www.kuju.com/TnT/2003/Delta\" d:version=\"1.0\" d:id=\"-9\">\r\n"
        "\t<Name d:type=\"cDeltaString\">Kuju &amp; co</Name>\r\n"
        "\t<M d:type=\"sFloat32\" d:alt_encoding=\"000000000000F03F\" d:precision=\"string\">1</M>\r\n"
        "\t<R d:numElements=\"2\" d:elementType=\"sFloat32\" d:precision=\"string\">1.0000000 2.0000000</R>\r\n"
        "\t<T d:type=\"ref\">12</T>\r\n"
        "\t<d:nil/>\r\n"
        "\t<d:blob d:size=\"3\">0A0B0C</d:blob>\r\n"
        "</cRoot>\r\n";
    std::string binary;
    ASSERT_FALSE(XmlToBinary(xml, binary));
    for (std::size_t length = 0; length < binary.size(); ++length) {
        std::string out;
        EXPECT_TRUE(BinaryToXml(binary.substr(0, length), out)) << length;
        EXPECT_TRUE(out.empty());
    }
    // The text is complete once the root's end tag is; every shorter cut fails.
    std::size_t complete = xml.rfind('>') + 1;
    for (std::size_t length = 0; length < complete; ++length) {
        std::string out;
        EXPECT_TRUE(XmlToBinary(xml.substr(0, length), out)) << length;
    }
}

// Flipping single bytes of a valid file never crashes and never passes junk silently:
// either an error, or XML that reads back.
TEST(SerzBrokenInput, CorruptedBytesGiveAnErrorOrReadableText) {
    std::string binary;
    ASSERT_FALSE(XmlToBinary("<cRoot d:id=\"5\"><V d:type=\"sInt32\">7</V><S d:type=\"cDeltaString\">x</S>"
                             "<A d:numElements=\"1\" d:elementType=\"sFloat64\">2</A><V d:type=\"sInt32\">8</V></cRoot>",
                             binary));
    for (std::size_t at = 8; at < binary.size(); ++at) {
        for (int value : {0x00, 0x01, 0x7F, 0xFE, 0xFF}) {
            std::string corrupt = binary;
            corrupt[at] = static_cast<char>(value);
            std::string xml, back;
            if (!BinaryToXml(corrupt, xml)) {
                EXPECT_FALSE(XmlToBinary(xml, back)) << "byte " << at << " set to " << value << "\n" << xml;
            }
        }
    }
}

}  // namespace
}  // namespace ferrolund::serz
