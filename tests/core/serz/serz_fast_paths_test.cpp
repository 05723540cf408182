// The quick readings of XML text must agree with the plain ones: decimals read eight
// digits a step, array elements parsed where they lie, type names told by a letter, names
// compared sixteen bytes at once; and broken input must still name its line and reason.
#include <gtest/gtest.h>

#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "round_trip.h"
#include "serz/binary_reader.h"
#include "serz/codec.h"
#include "serz/format.h"
#include "serz/number_text.h"
#include "serz/text_scan.h"
#include "serz/xml_names.h"

namespace ferrolund::serz {
namespace {

constexpr std::string_view kHead =
    "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n"
    "<cRoot xmlns:d=\"http://www.kuju.com/TnT/2003/Delta\" d:version=\"1.0\">\r\n";

// The plain decimal at the start of `text`, found one character at a time: the length
// of "[-]digits[.digits]" when it has at most fifteen digits, else -1.
int ReferencePlainLength(std::string_view text) {
    std::size_t i = text.starts_with('-') ? 1 : 0;
    std::size_t whole = i, digits = 0;
    while (i < text.size() && text[i] >= '0' && text[i] <= '9') ++i, ++digits;
    if (i == whole) return -1;
    if (i < text.size() && text[i] == '.') {
        std::size_t fraction = ++i;
        while (i < text.size() && text[i] >= '0' && text[i] <= '9') ++i, ++digits;
        if (i == fraction) return -1;
    }
    return digits > 15 ? -1 : static_cast<int>(i);
}

// ReadPlainDecimal over [text, text + limit) agrees with the reference and from_chars.
void ExpectPlainDecimal(std::string_view text, std::size_t limit) {
    std::string_view visible = text.substr(0, limit);
    int length = ReferencePlainLength(visible);
    double value = 12345;
    const char* stop = ReadPlainDecimal(text.data(), text.data() + limit, value);
    if (length < 0) {
        EXPECT_EQ(stop, nullptr) << text << " within " << limit;
        return;
    }
    ASSERT_EQ(stop, text.data() + length) << text << " within " << limit;
    double expected = 0;
    std::from_chars(text.data(), text.data() + length, expected);
    EXPECT_EQ(std::bit_cast<std::uint64_t>(value), std::bit_cast<std::uint64_t>(expected)) << text;
}

TEST(SerzFastPaths, PlainDecimalsAcrossTheEightDigitSteps) {
    const char* followers[] = {"", " 1", "<", "e5", ".5", "x", "0123456789", "-"};
    for (int sign = 0; sign < 2; ++sign) {
        for (int whole = 0; whole <= 18; ++whole) {
            for (int fraction = -1; fraction <= 18; ++fraction) {  // -1: no point at all
                std::string number = sign ? "-" : "";
                for (int i = 0; i < whole; ++i) number += static_cast<char>('1' + (i * 7 + whole) % 9);
                if (fraction >= 0) number += '.';
                for (int i = 0; i < fraction; ++i) number += static_cast<char>('0' + (i * 3 + fraction) % 10);
                for (const char* follower : followers) {
                    std::string text = number + follower;
                    // The limit cuts the text at every place: nothing past it may count.
                    for (std::size_t limit = 0; limit <= text.size(); ++limit) ExpectPlainDecimal(text, limit);
                }
            }
        }
    }
}

TEST(SerzFastPaths, PlainDecimalsAgreeWithTheReferenceOnRandomText) {
    std::mt19937 random(4242);
    const std::string alphabet = "0123456789000000.-+e x";
    for (int i = 0; i < 200000; ++i) {
        std::string text(random() % 24, ' ');
        for (char& c : text) c = alphabet[random() % alphabet.size()];
        ExpectPlainDecimal(text, text.size());
    }
}

TEST(SerzFastPaths, BareAndTrimmedIntegersReadTheSame) {
    struct Case {
        const char* text;
        bool ok;
        std::int64_t value;
    };
    const Case cases[] = {
        {"0", true, 0},       {"-0", true, 0},     {"+5", true, 5},        {" 5", true, 5},
        {"5 ", true, 5},      {"\t-12\r\n", true, -12}, {"9223372036854775807", true, INT64_MAX},
        {"9223372036854775808", false, 0}, {"-", false, 0}, {"+", false, 0}, {"++1", false, 0},
        {"1 2", false, 0},    {"", false, 0},      {"0x10", false, 0},
    };
    for (const auto& c : cases) {
        std::int64_t value = 77;
        ASSERT_EQ(ParseSigned(c.text, value), c.ok) << c.text;
        if (c.ok) {
            EXPECT_EQ(value, c.value) << c.text;
        }
    }
}

TEST(SerzFastPaths, TypeNamesAndNearMisses) {
    for (int i = 0; i < static_cast<int>(ValueType::Unknown); ++i) {
        auto type = static_cast<ValueType>(i);
        EXPECT_EQ(TypeFromName(TypeName(type)), type) << TypeName(type);
    }
    const char* misses[] = {"", "ref", "Bool", "bool ", "sInt9", "sUInt6", "sInt33", "sInt17", "uInt32",
                            "sUInt65", "sUint32", "sFloat16", "sFloat3", "cDeltaStrinG", "cDeltaStrings"};
    for (const char* miss : misses) EXPECT_EQ(TypeFromName(miss), ValueType::Unknown) << miss;
}

TEST(SerzFastPaths, SameBytesAgreesWithMemcmp) {
    std::string a(64, 'a');
    std::string b(64, 'a');
    for (std::size_t n = 0; n <= 24; ++n) {
        for (std::size_t differ = 0; differ <= 24; ++differ) {
            b = a;
            if (differ < b.size()) b[differ] = 'b';
            bool expected = std::memcmp(a.data(), b.data(), n) == 0;
            // Room to read sixteen bytes, and then as little room as the bytes need.
            EXPECT_EQ(SameBytes(a.data(), b.data(), n, a.data() + 64), expected) << n << " " << differ;
            std::string tight = b.substr(0, n);
            EXPECT_EQ(SameBytes(a.data(), tight.data(), n, tight.data() + n), expected) << n << " " << differ;
        }
    }
}

// The elements of the first array record of `binary`, as doubles.
std::vector<double> ArrayElements(const std::string& binary) {
    BinaryReader reader(binary);
    EXPECT_FALSE(reader.Start());
    Record record;
    while (reader.Next(record)) {
        if (record.kind != Kind::Array) continue;
        std::vector<double> out;
        for (std::uint32_t i = 0; i < record.count; ++i) {
            if (record.type == ValueType::Float64) {
                out.push_back(std::bit_cast<double>(*reinterpret_cast<const std::uint64_t*>(record.payload + 8 * i)));
            } else {
                float single;
                std::memcpy(&single, record.payload + 4 * i, 4);
                out.push_back(single);
            }
        }
        return out;
    }
    ADD_FAILURE() << "no array";
    return {};
}

// Array elements in every form a person may type, between blanks of every kind, in place
// and in a copy (an entity in the text makes one), read as strtod reads each alone.
TEST(SerzFastPaths, ArrayElementsReadAsEachAlone) {
    const char* forms[] = {"1.5", "+1.5", "-0", "0.0000000", "-34130.9101563", "1e3", "1.", ".5", "-.25",
                           "3.40282e+038", "1234567890123456", "0.12345678901234567", "7", "1.#INF",
                           "-1.#INF000", "00000000000000000001.5"};
    const char* separators[] = {" ", "\t", "\r\n", "  \n ", "&#32;"};
    std::mt19937 random(7);
    for (const char* type : {"sFloat32", "sFloat64"}) {
        for (int round = 0; round < 200; ++round) {
            std::size_t count = 1 + random() % 20;
            std::string content = round % 3 == 0 ? " " : "";
            std::vector<double> expected;
            for (std::size_t i = 0; i < count; ++i) {
                const char* form = forms[random() % std::size(forms)];
                if (i > 0) content += separators[random() % std::size(separators)];
                content += form;
                double value = std::string_view(form).find('#') != std::string_view::npos
                                   ? (form[0] == '-' ? -INFINITY : INFINITY)
                                   : std::strtod(form, nullptr);
                expected.push_back(type[1] == 'F' && type[6] == '3' ? static_cast<float>(value) : value);
            }
            std::string xml = std::string(kHead) + "\t<A d:numElements=\"" + std::to_string(count) +
                              "\" d:elementType=\"" + type + "\">" + content + "</A>\r\n</cRoot>\r\n";
            std::string binary;
            auto failure = XmlToBinary(xml, binary);
            ASSERT_FALSE(failure) << failure->message << "\n" << xml;
            std::vector<double> read = ArrayElements(binary);
            ASSERT_EQ(read.size(), expected.size()) << xml;
            for (std::size_t i = 0; i < read.size(); ++i) {
                EXPECT_EQ(std::bit_cast<std::uint64_t>(read[i]), std::bit_cast<std::uint64_t>(expected[i])) << xml;
            }
        }
    }
}

TEST(SerzFastPaths, BrokenNumbersNameTheirLineAndReason) {
    struct Case {
        const char* element;
        const char* reason;
    };
    const Case cases[] = {
        {"<A d:numElements=\"3\" d:elementType=\"sFloat32\">1.5 2.5x 3</A>", "line 4: '2.5x' is not a value of type sFloat32"},
        {"<A d:numElements=\"2\" d:elementType=\"sFloat32\">1.5-2 3</A>", "line 4: '1.5-2' is not a value of type sFloat32"},
        {"<A d:numElements=\"2\" d:elementType=\"sFloat64\">1 2 3</A>", "line 4: <A> holds more elements than d:numElements"},
        {"<A d:numElements=\"3\" d:elementType=\"sFloat32\">1\r\n2</A>", "line 4: <A> holds fewer elements than d:numElements"},
        {"<A d:numElements=\"1\" d:elementType=\"sInt32\">1.5</A>", "line 4: '1.5' is not a value of type sInt32"},
        {"<A d:numElements=\"1\" d:elementType=\"sFloat32\">1.5&amp;</A>", "line 4: '1.5&' is not a value of type sFloat32"},
        {"<V d:type=\"sFloat32\">1.5.5</V>", "line 4: '1.5.5' is not a value of type sFloat32"},
        {"<V d:type=\"sFloat32\">-</V>", "line 4: '-' is not a value of type sFloat32"},
        {"<V d:type=\"sFloat32\"></V>", "line 4: '' is not a value of type sFloat32"},
        {"<V d:type=\"sInt33\">1</V>", "line 4: unknown type 'sInt33'"},
    };
    for (const auto& c : cases) {
        std::string xml = std::string(kHead) + "\t<W>\r\n\t\t" + c.element + "\r\n\t</W>\r\n</cRoot>\r\n";
        std::string binary = "stale";
        auto failure = XmlToBinary(xml, binary);
        ASSERT_TRUE(failure) << c.element;
        EXPECT_NE(failure->message.find(c.reason), std::string::npos) << c.element << ": " << failure->message;
        EXPECT_TRUE(binary.empty());
    }
}

// Names whose successor changes, names that are prefixes of one another and names at the
// very end of the text, where fewer than sixteen bytes remain to be read.
TEST(SerzFastPaths, NamesMetAgainAfterOtherNames) {
    const char* names[] = {"a", "ab", "a-b", "abcdefghijklmnop", "abcdefghijklmnopq", "abcdefghijklmnoq", "b", "ba"};
    std::mt19937 random(11);
    std::string body;
    std::vector<std::string> expected;
    for (int i = 0; i < 400; ++i) {
        const char* name = names[random() % std::size(names)];
        body += std::string("<") + name + " d:type=\"sUInt8\">" + std::to_string(i % 200) + "</" + name + ">";
        expected.push_back(name);
    }
    for (const std::string& head : {std::string(kHead), std::string("<r>")}) {
        std::string xml = head + body + (head.size() > 3 ? "</cRoot>" : "</r>");
        std::string binary, back;
        auto failure = XmlToBinary(xml, binary);
        ASSERT_FALSE(failure) << failure->message;
        BinaryReader reader(binary);
        ASSERT_FALSE(reader.Start());
        Record record;
        std::size_t seen = 0;
        while (reader.Next(record)) {
            if (record.kind != Kind::Value) continue;
            ASSERT_LT(seen, expected.size());
            std::string name = expected[seen];
            if (name == "a-b") name = "a::b";
            EXPECT_EQ(reader.String(record.nameIndex), name) << seen;
            EXPECT_EQ(*record.payload, seen % 200) << seen;
            ++seen;
        }
        EXPECT_EQ(seen, expected.size());
    }
}

// Attributes written as the converter writes them and as a person may type them (blanks
// around '=', single quotes, names that only begin like the known ones, a tag that ends
// within sixteen bytes of the text's end) give the same binary.
TEST(SerzFastPaths, AttributesInEveryWritingReadTheSame) {
    struct Case {
        const char* tag;   // the start tag of an element holding "7" ...
        const char* same;  // ... and another writing of it that must give the same binary
    };
    const Case cases[] = {
        {"<V d:type=\"sInt32\">", "<V d:type = 'sInt32' >"},
        {"<V d:type=\"sInt32\">", "<V\td:type\r\n=\n\"sInt32\">"},
        {"<V d:type=\"sInt32\">", "<V d:typeX=\"sFloat32\" d:type=\"sInt32\">"},
        {"<V d:type=\"sInt32\">", "<V d:type=\"sInt32\" d:alt_encoding=\"0000000000001C40\" d:precision=\"string\">"},
        {"<V d:type=\"sInt32\">", "<V d:alt_encodingX=\"x\" d:precisio=\"y\" d:t=\"z\" d:type=\"sInt32\">"},
        {"<V d:type=\"sInt32\">", "<V d:type='sInt32' d:id=\"9\">"},
        {"<V d:type=\"sInt32\">", "<V d:sizes=\"3\" d:type=\"sInt32\">"},
        {"<V d:type=\"sInt32\">", "<V e:type=\"sFloat32\" d:type=\"sInt32\">"},
        {"<A d:numElements=\"1\" d:elementType=\"sUInt8\">", "<A d:elementType ='sUInt8' d:numElements= \"1\" >"},
        {"<E d:id=\"7\">", "<E d:id='7' d:idx=\"8\">"},
    };
    for (const auto& c : cases) {
        for (const char* tail : {"\r\n\t</W>\r\n</cRoot>\r\n", "</W></cRoot>"}) {
            auto convert = [&](std::string_view tag) {
                std::string name(1, tag[1]);
                std::string body = name == "E" ? "<F d:type=\"sInt32\">7</F>" : "7";
                std::string xml = std::string(kHead) + "\t<W>\r\n\t\t" + std::string(tag) + body + "</" + name + ">" + tail;
                std::string binary;
                auto failure = XmlToBinary(xml, binary);
                EXPECT_FALSE(failure) << failure->message << "\n" << xml;
                return binary;
            };
            EXPECT_EQ(convert(c.tag), convert(c.same)) << c.same;
        }
    }
    // Broken attributes still say where and why, fast form or not.
    const Case broken[] = {
        {"<V d:type=\"sInt32>7</V></W></cRoot>", "line 4: an attribute value is never closed"},
        {"<V d:type=sInt32>7</V></W></cRoot>", "line 4: an attribute value is not in quotes"},
        {"<V d:type>7</V></W></cRoot>", "line 4: attribute 'd:type' has no value"},
        {"<V d:type=\"sInt32\"", "line 4: the text ends inside a tag"},
    };
    for (const auto& c : broken) {
        std::string xml = std::string(kHead) + "\t<W>\r\n\t\t" + c.tag;
        std::string binary;
        auto failure = XmlToBinary(xml, binary);
        ASSERT_TRUE(failure) << c.tag;
        EXPECT_NE(failure->message.find(c.same), std::string::npos) << c.tag << ": " << failure->message;
    }
}

// A name expected after another is taken only when the tag holds it whole: not when the
// tag's name is longer, nor for d:nil, which never enters the table of names.
TEST(SerzFastPaths, ExpectedNamesAreTakenOnlyWhole) {
    std::string xml = std::string(kHead);
    xml += "<a d:type=\"sUInt8\">1</a><b d:type=\"sUInt8\">2</b>";   // b is now expected after a
    xml += "<a d:type=\"sUInt8\">3</a><bb d:type=\"sUInt8\">4</bb>"; // bb begins like b
    xml += "<a d:type=\"sUInt8\">5</a><b-c d:type=\"sUInt8\">6</b-c>";
    xml += "<a d:type=\"sUInt8\">7</a><d:nil/><a d:type=\"sUInt8\">8</a><b/>";
    xml += "</cRoot>\r\n";
    const std::string back = RoundTripped(xml);
    for (const char* line : {"<bb d:type=\"sUInt8\">4</bb>", "<b-c d:type=\"sUInt8\">6</b-c>", "<d:nil/>", "<b/>"}) {
        EXPECT_NE(back.find(line), std::string::npos) << line << "\n" << back;
    }
}

// Random trees over a few names, some alike at the start, in the converter's own form:
// whatever the reader guesses, the binary must give back the very same text.
TEST(SerzFastPaths, RandomTreesComeBackUnchanged) {
    const char* names[] = {"a", "ab", "a-b", "b", "Network-cTrackFollower", "Network-cTrackFollowerX", "e"};
    std::mt19937 random(2024);
    for (int round = 0; round < 50; ++round) {
        std::string xml(kHead);
        std::vector<std::string> open;
        int id = 1;
        // An element without children comes back self-closed, so each gets a value first.
        auto value = [&](const std::string& name, int number) {
            xml += std::string(open.size() + 1, '\t') + "<" + name + " d:type=\"sInt16\">" + std::to_string(number) +
                   "</" + name + ">\r\n";
        };
        auto close = [&] {
            xml += std::string(open.size(), '\t') + "</" + open.back() + ">\r\n";
            open.pop_back();
        };
        for (int step = 0; step < 300; ++step) {
            unsigned choice = random() % 6;
            std::string name = names[random() % std::size(names)];
            if (choice == 0 && open.size() < 12) {
                xml += std::string(open.size() + 1, '\t') + "<" + name + " d:id=\"" + std::to_string(id++) + "\">\r\n";
                open.push_back(name);
                value(name, step);
            } else if (choice == 1 && !open.empty()) {
                close();
            } else if (choice == 2) {
                xml += std::string(open.size() + 1, '\t') + "<" + name + "/>\r\n";
            } else {
                value(name, step - 150);
            }
        }
        while (!open.empty()) close();
        xml += "</cRoot>\r\n";
        ExpectRoundTrip(xml);
    }
}

}  // namespace
}  // namespace ferrolund::serz
