// The reference rule read from a tile's records finds what it finds in the tile's XML
// text: the same references in the same order, the same fault with the same line.
#include "routes/record_lines.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <vector>

#include "core/sample/sample_fixture.h"
#include "core/serz/serz_test_support.h"
#include "routes/tile_references.h"
#include "serz/codec.h"

namespace ferrolund::routes {
namespace {

namespace fs = std::filesystem;

struct Found {
    std::vector<TileReference> references;
    std::optional<DescriptionFault> fault;
    bool operator==(const Found&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Found& found) {
    for (const auto& r : found.references) out << "[" << r.provider << "|" << r.product << "|" << r.blueprintId << "] ";
    if (found.fault) out << "fault " << found.fault->what << ": " << found.fault->line;
    return out;
}

template <class Lines>
Found Find(Lines& lines) {
    Found found;
    found.fault = FindReferences(lines, [&](const std::string& p, const std::string& q, const std::string& b) {
        found.references.push_back({p, q, b});
    });
    return found;
}

// The rule on the records and on the converter's text of the same binary.
void ExpectSameAsText(const std::string& binary, const std::string& what, const Found* expected = nullptr) {
    std::string xml;
    ASSERT_FALSE(serz::BinaryToXml(binary, xml)) << what;
    TextLines text(xml);
    RecordLines records(binary);
    const Found onText = Find(text);
    const Found onRecords = Find(records);
    EXPECT_TRUE(records.readToEnd()) << what;
    EXPECT_EQ(onRecords, onText) << what;
    if (expected) {
        EXPECT_EQ(onRecords, *expected) << what;
    }
}

std::string Compiled(const std::string& record) {
    const std::string xml = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<cRecordSet xmlns:d=\"http://www.kuju.com/TnT/2003/Delta\" "
                            "d:version=\"1.0\" d:id=\"1\">\n<Record>\n" + record + "</Record>\n</cRecordSet>\n";
    std::string binary;
    const serz::CodecStatus failed = serz::XmlToBinary(xml, binary);
    EXPECT_FALSE(failed) << (failed ? failed->message : "") << "\n" << xml;
    return binary;
}

std::string Text(const std::string& name, const std::string& value) {
    return "<" + name + " d:type=\"cDeltaString\">" + value + "</" + name + ">\n";
}

// A reference in the converter's five lines.
std::string Block(const std::string& provider, const std::string& product, const std::string& id) {
    return "<BlueprintID>\n<iBlueprintLibrary-cAbsoluteBlueprintID>\n<BlueprintSetID>\n<iBlueprintLibrary-cBlueprintSetID>\n" +
           Text("Provider", provider) + Text("Product", product) +
           "</iBlueprintLibrary-cBlueprintSetID>\n</BlueprintSetID>\n" + Text("BlueprintID", id) +
           "</iBlueprintLibrary-cAbsoluteBlueprintID>\n</BlueprintID>\n";
}

TEST(RecordLines, FindWhatTheTextRuleFinds) {
    struct Case {
        const char* what;
        std::string record;
        Found expected;
    };
    const std::string blob = "<d:blob d:size=\"70\">" + std::string(140, 'A') + "</d:blob>\n";
    const Case cases[] = {
        {"plain references", Block("P", "Q", "a.xml") + Block("Kuju", "RailSimulator", "Trees\\Oak.xml"),
         {{{"P", "Q", "a.xml"}, {"Kuju", "RailSimulator", "Trees\\Oak.xml"}}, {}}},
        {"blank provider or id", Block("", "Q", "x.xml") + Block(" ", "Q", "y.xml") + Block("P", "Q", "") + Block("P", "R", "z.xml"),
         {{{"P", "R", "z.xml"}}, {}}},
        {"characters the text escapes", Block("A&amp;B", "Q&apos;s", "Oak &lt;1&gt;.xml"),
         {{{"A&amp;B", "Q&apos;s", "Oak &lt;1&gt;.xml"}}, {}}},
        {"a provider broken over lines", Block("Brack&#10;enridge", "Q", "a.xml") + Block("P", "Q", "b.xml"),
         {{}, DescriptionFault{"Provider", "\t\t\t\t\t\t<Provider d:type=\"cDeltaString\">Brack"}}},
        {"a product broken over lines", Block("P", "Q", "a.xml") + Block("P", "Q&#10;R", "b.xml"),
         {{{"P", "Q", "a.xml"}}, DescriptionFault{"Product", "\t\t\t\t\t\t<Product d:type=\"cDeltaString\">Q"}}},
        {"an id broken over lines", Block("P", "Q", "a&#10;b.xml") + Block("P", "Q", "c.xml"), {{{"P", "Q", "c.xml"}}, {}}},
        {"an end tag where the product stands", "<x>\n" + Text("Provider", "P") + "</x>\n",
         {{}, DescriptionFault{"Product", "\t\t</x>"}}},
        {"a provider element", "<Provider>\n<x d:type=\"bool\">1</x>\n</Provider>\n",
         {{}, DescriptionFault{"Provider", "\t\t<Provider>"}}},
        {"an empty provider element", "<Provider/>\n", {{}, DescriptionFault{"Provider", "\t\t<Provider/>"}}},
        {"numbers where values are read",
         Text("Provider", "P") + "<Product d:type=\"sInt32\">-7</Product>\n<a/>\n<b/>\n<BlueprintID d:type=\"ref\">12</BlueprintID>\n" +
             Text("Provider", "P") + "<Product d:type=\"sUInt64\">7</Product>\n<a/>\n<b/>\n"
             "<BlueprintID d:numElements=\"2\" d:elementType=\"sFloat32\" d:precision=\"string\">1.5000000 2.0000000</BlueprintID>\n",
         {{{"P", "-7", "12"}, {"P", "7", "1.5000000 2.0000000"}}, {}}},
        {"tag names in any case and longer", "<PROVIDER d:type=\"cDeltaString\">P</PROVIDER>\n" + Text("Product", "Q") +
             "<a/>\n<b/>\n" + Text("BlueprintID", "a.xml") + Text("ProviderName", "N") + Text("Product", "Q") + "<a/>\n<b/>\n" +
             Text("BlueprintID", "b.xml"),
         {{{"P", "Q", "a.xml"}, {"N", "Q", "b.xml"}}, {}}},
        {"a long blob where the id stands", Text("Provider", "P") + Text("Product", "Q") + "<a/>\n" + blob + Text("BlueprintID", "x.xml") +
             Block("P", "Q", "after.xml"),
         {{{"P", "Q", "after.xml"}}, {}}},
        {"a short blob where the product stands",
         Text("Provider", "P") + "<d:blob d:size=\"2\">0A0B</d:blob>\n<a/>\n<b/>\n" + Text("BlueprintID", "x.xml"),
         {{{"P", "0A0B", "x.xml"}}, {}}},
        {"texts over several lines before", Text("Note", "one&#10;two&#10;three") + blob + Block("P", "Q", "a.xml"),
         {{{"P", "Q", "a.xml"}}, {}}},
        {"a reference cut short by the end", Text("Provider", "P") + Text("Product", "Q"), {{}, {}}},
    };
    for (const Case& c : cases) ExpectSameAsText(Compiled(c.record), c.what, &c.expected);
}

TEST(RecordLines, NamesWithLineBreaksOrTagCharacters) {
    using serz::testing::Bytes;
    // Strings: r 0, "a\nb" 1, cDeltaString 2, v 3, "x<Provider" 4, P 5, Product 6, Q 7, m 8,
    // BlueprintID 9, id.xml 10, "k>" 11.
    Bytes file;
    file.u8({0xFF, 0x50}).str("r").u32(0).u32(7);
    file.u8({0xFF, 0x56}).str("a\nb").str("cDeltaString").str("v");
    file.u8({0xFF, 0x56}).str("x<Provider").u16(2).str("P");
    file.u8({0xFF, 0x56}).str("Product").u16(2).str("Q");
    file.u8({0xFF, 0x50}).str("m").u32(0).u32(0).u8({0xFF, 0x70}).u16(8);
    file.u8({0xFF, 0x4E});
    file.u8({0xFF, 0x56}).str("BlueprintID").u16(2).str("id.xml");
    file.u8({0xFF, 0x56}).str("k>").u16(2).u16(3);
    file.u8({0xFF, 0x70}).u16(0);
    const Found expected{{{"P", "Q", "id.xml"}}, {}};
    ExpectSameAsText(file.data(), "odd names", &expected);
}

TEST(RecordLines, TruncatedTileIsNotWhole) {
    const std::string binary = Compiled(Block("P", "Q", "a.xml") + Block("P", "Q", "b.xml"));
    for (std::size_t cut : {binary.size() - 1, binary.size() / 2, std::size_t{12}}) {
        RecordLines records(binary.substr(0, cut));
        Find(records);
        EXPECT_FALSE(records.readToEnd()) << cut;
    }
}

void ExpectSameForEveryBinaryBelow(const fs::path& root) {
    std::size_t files = 0;
    for (const auto& entry : fs::recursive_directory_iterator(root)) {
        if (!entry.is_regular_file() || entry.path().extension() != ".bin") continue;
        std::ifstream in(entry.path(), std::ios::binary);
        const std::string binary((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
        std::string xml;
        if (serz::BinaryToXml(binary, xml)) continue;
        ExpectSameAsText(binary, entry.path().string());
        ++files;
    }
    EXPECT_GT(files, 5u);
}

TEST(RecordLines, EveryBinaryOfTheRealRoute) {
    const fs::path routes = fs::path(FERROLUND_TESTDATA) / "routes";
    if (!fs::exists(routes)) GTEST_SKIP() << "the real routes are not in " << routes.string();
    ExpectSameForEveryBinaryBelow(routes);
}

TEST(RecordLines, EveryBinaryOfTheSample) {
    sample::SampleMade();
    ExpectSameForEveryBinaryBelow(sample::SampleRoot() / "Content");
}

}  // namespace
}  // namespace ferrolund::routes
