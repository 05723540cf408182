// The layout walk against the converter: the lines it counts are the lines of the text,
// record by record, and a file it refuses is one the converter refuses, for the same reason.
#include "serz/xml_layout.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "serz/codec.h"
#include "serz_test_support.h"

namespace ferrolund::serz {
namespace {

namespace fs = std::filesystem;
using testing::Bytes;

// The lines of a text as the route check splits them: on LF, the CR before it dropped.
std::vector<std::string> TextLines(const std::string& text) {
    std::vector<std::string> lines;
    for (std::size_t at = 0; at < text.size();) {
        std::size_t end = text.find('\n', at);
        if (end == std::string::npos) end = text.size();
        std::string line = text.substr(at, end - at);
        if (!line.empty() && line.back() == '\r') line.pop_back();
        lines.push_back(line);
        at = end + 1;
    }
    return lines;
}

// Each named record's text starts on the line the layout puts it, and the lines add up.
void ExpectLaidOutAsWritten(const std::string& binary, const std::string& what) {
    std::string xml;
    ASSERT_FALSE(BinaryToXml(binary, xml)) << what;
    const std::vector<std::string> lines = TextLines(xml);
    XmlLayout layout(binary);
    LaidRecord laid;
    std::size_t line = XmlLayout::kDeclarationLines;
    while (layout.Next(laid)) {
        const Kind kind = laid.record.kind;
        if (laid.lines > 0 && kind != Kind::Nil && kind != Kind::Blob) {
            ASSERT_LT(line, lines.size()) << what;
            std::string name(layout.String(laid.record.nameIndex));
            for (std::size_t at = name.find("::"); at != std::string::npos; at = name.find("::", at)) name.replace(at, 2, "-");
            const std::string tag = (kind == Kind::Close ? "</" : "<") + (name.empty() ? "e" : name.substr(0, name.find('\n')));
            EXPECT_EQ(lines[line].find_first_not_of('\t'), lines[line].find(tag)) << what << ", line " << line + 1;
        }
        line += laid.lines;
    }
    EXPECT_TRUE(layout.Complete()) << what;
    EXPECT_EQ(line, lines.size()) << what;
}

TEST(XmlLayout, LinesOfEveryRealFileAreThoseOfItsText) {
    if (!fs::exists(testing::TestData())) GTEST_SKIP() << "the real files are not in " << testing::TestData().string();
    std::size_t files = 0;
    for (const auto& entry : fs::recursive_directory_iterator(testing::TestData())) {
        if (!entry.is_regular_file()) continue;
        const std::string binary = testing::ReadBytes(entry.path());
        if (!binary.starts_with(std::string_view("SERZ", 4))) continue;
        std::string xml;
        if (BinaryToXml(binary, xml)) continue;  // refused files are the next test's matter
        ExpectLaidOutAsWritten(binary, entry.path().string());
        ++files;
    }
    EXPECT_GT(files, 10u);
}

TEST(XmlLayout, TextsBlobsAndNamesThatSpanLines) {
    // Root "r" (0), then: a text of three lines named "a\nb" (1, type 2, value 3); a blob of
    // 70 bytes (three lines of hex); an empty element "m" (4) written "<m/>"; a nil.
    Bytes file;
    file.u8({0xFF, 0x50}).str("r").u32(0).u32(4);
    file.u8({0xFF, 0x56}).str("a\nb").str("cDeltaString").str("x\ny\nz");
    file.u8({0xFF, 0x42}).u32(70).text(std::string(70, '\x5A'));
    file.u8({0xFF, 0x50}).str("m").u32(7).u32(0).u8({0xFF, 0x70}).u16(4);
    file.u8({0xFF, 0x43, 1}).u32(9);  // the game's marker: no text
    file.u8({0xFF, 0x4E});
    file.u8({0xFF, 0x70}).u16(0);
    ExpectLaidOutAsWritten(file.data(), "hand-made");
    std::vector<std::uint32_t> lines;
    XmlLayout layout(file.data());
    LaidRecord laid;
    while (layout.Next(laid)) lines.push_back(laid.lines);
    EXPECT_EQ(lines, (std::vector<std::uint32_t>{1, 5, 3, 1, 0, 0, 1, 1}));
}

TEST(XmlLayout, RefusesWhatTheConverterRefusesWithItsMessage) {
    const Bytes element = Bytes().u8({0xFF, 0x50}).str("r").u32(0).u32(0);
    struct Case {
        const char* what;
        std::string binary;
    };
    const Case cases[] = {
        {"not a binary file", "<?xml version=\"1.0\"?>"},
        {"no element", Bytes().data()},
        {"a value first", Bytes().u8({0xFF, 0x56}).str("v").str("bool").u8({1}).data()},
        {"ends inside the root", element.data()},
        {"the wrong end", Bytes(element).u8({0xFF, 0x70}).str("s").data()},
        {"a record after the root", Bytes(element).u8({0xFF, 0x70}).u16(0).u8({0xFF, 0x4E}).data()},
        {"a string cut off", Bytes(element).u8({0xFF, 0x56}).str("v").str("cDeltaString").u16(0xFFFF).u32(9).data()},
        {"an unknown kind", Bytes(element).u8({0xFF, 0x11}).data()},
    };
    for (const Case& c : cases) {
        std::string xml;
        const CodecStatus converter = BinaryToXml(c.binary, xml);
        ASSERT_TRUE(converter) << c.what;
        XmlLayout layout(c.binary);
        LaidRecord laid;
        while (layout.Next(laid)) {
        }
        EXPECT_FALSE(layout.Complete()) << c.what;
        ASSERT_TRUE(layout.failure()) << c.what;
        EXPECT_EQ(layout.failure()->message, converter->message) << c.what;
    }
}

}  // namespace
}  // namespace ferrolund::serz
