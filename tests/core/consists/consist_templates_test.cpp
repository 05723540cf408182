#include "consists/consist_templates.h"

#include <gtest/gtest.h>

#include <functional>
#include <regex>

#include "consist_fixture.h"
#include "consists/consist_rows.h"
#include "core/sample/sample_fixture.h"
#include "support/locked_folder.h"
#include "tools/serz_convert.h"
#include "tools/xml_compare.h"

namespace ferrolund::consists {
namespace {

namespace fs = std::filesystem;
using testing::Consist;
using testing::ConsistGame;
using testing::TemplatesXml;
using testing::Vehicle;

const Vehicle kLoco{"Ostvale", "NorthernLines", "RailVehicles\\Class58\\Class58.xml", "0", "300000011"};
const Vehicle kHopper{"Ostvale", "NorthernLines", "RailVehicles\\Hopper\\Hopper.xml", "1", "300000012"};
const Vehicle kTram{"Müller", "Straßenbahn", "RailVehicles\\Vůz\\Vůz.xml", "0", "300000013"};

std::vector<Consist> TwoConsists() {
    return {{"Coal &amp; coke", {kLoco, kHopper}, "200000001", "AAAAAAAA-0000-4000-8000-000000000001"},
            {"Straßenbahn č. 5", {kTram}, "200000002", "BBBBBBBB-0000-4000-8000-000000000002"}};
}

// The rows of a file as the converter gives it back.
std::vector<TemplateRow> ReadBack(ConsistGame& g) {
    std::string xml;
    EXPECT_FALSE(tools::SerzReadXml(g.ctx, g.file().string(), xml));
    TemplateFile file;
    EXPECT_TRUE(ParseConsistTemplates(xml, file));
    return file.rows;
}

TEST(ConsistTemplates, EveryVehicleIsARowOfItsConsist) {
    TemplateFile file;
    ASSERT_TRUE(ParseConsistTemplates(TemplatesXml(TwoConsists()), file));
    ASSERT_EQ(file.rows.size(), 3u);
    EXPECT_EQ(file.rows[0], (TemplateRow{"Coal &amp; coke", "AAAAAAAA-0000-4000-8000-000000000001", "200000001",
                                         "Ostvale", "NorthernLines", "RailVehicles\\Class58\\Class58.xml", "0",
                                         "300000011"}));
    EXPECT_EQ(file.rows[1].flipped, "1");
    EXPECT_EQ(file.rows[1].entryId, "300000012");
    EXPECT_EQ(file.rows[2], (TemplateRow{"Straßenbahn č. 5", "BBBBBBBB-0000-4000-8000-000000000002", "200000002",
                                         "Müller", "Straßenbahn", "RailVehicles\\Vůz\\Vůz.xml", "0", "300000013"}));
    // The head ends with its last whole line.
    EXPECT_EQ(file.head.substr(file.head.size() - 10), "<Record>\r\n");
}

TEST(ConsistTemplates, AnEmptyEnglishNameFallsBackToFrench) {
    std::string xml = TemplatesXml({{"", {kLoco}}});
    xml.replace(xml.find("<French d:type=\"cDeltaString\"></French>"), 40,
                "<French d:type=\"cDeltaString\">Train du charbon</French>");
    TemplateFile file;
    ASSERT_TRUE(ParseConsistTemplates(xml, file));
    ASSERT_EQ(file.rows.size(), 1u);
    EXPECT_EQ(file.rows[0].name, "Train du charbon");
}

TEST(ConsistTemplates, TextsThatAreNoSavedConsistsAreRefused) {
    const std::string unclosed = TemplatesXml(TwoConsists()).substr(0, TemplatesXml(TwoConsists()).rfind("</cConsistTemplate>"));
    for (const std::string& xml : {std::string(), std::string("<cRecordSet><Record></Record></cRecordSet>"), unclosed}) {
        TemplateFile file;
        EXPECT_FALSE(ParseConsistTemplates(xml, file)) << xml.size();
    }
}

TEST(ConsistTemplates, TheWrittenTextCompilesBackToTheSameRowsAndIds) {
    ConsistGame g;
    TemplateFile file;
    ASSERT_TRUE(ParseConsistTemplates(TemplatesXml(TwoConsists()), file));
    TemplateTexts texts;
    ASSERT_FALSE(ReadTemplateTexts(g.ctx, texts));
    ASSERT_TRUE(g.saved(ConsistTemplatesXml(file, texts)));
    EXPECT_EQ(ReadBack(g), file.rows);
}

TEST(ConsistTemplates, TheSampleFileIsWrittenBackAsTheConverterWroteIt) {
    ConsistGame g;
    std::string xml;
    ASSERT_FALSE(tools::SerzReadXml(g.ctx, sample::OnDisk(sample::SampleRoot(), "Content\\ConsistTemplates.bin").string(), xml));
    TemplateFile file;
    ASSERT_TRUE(ParseConsistTemplates(xml, file));
    ASSERT_EQ(ConsistSpans(file.rows).size(), 3u);
    EXPECT_EQ(file.rows[3].name, "Merlin &amp; coaches");
    TemplateTexts texts;
    ASSERT_FALSE(ReadTemplateTexts(g.ctx, texts));
    const std::string written = ConsistTemplatesXml(file, texts);
    // Our templates say what the game's file says, element for element.
    EXPECT_TRUE(tools::SameXmlContent(xml, written)) << written;
}

TEST(ConsistTemplates, NeighbouringConsistsOfOneNameBecomeOneAtTheSave) {
    ConsistGame g;
    std::vector<Consist> consists = TwoConsists();
    consists[1].name = "COAL &amp; COKE";  // names compare without regard to case
    TemplateFile file;
    ASSERT_TRUE(ParseConsistTemplates(TemplatesXml(consists), file));
    TemplateTexts texts;
    ASSERT_FALSE(ReadTemplateTexts(g.ctx, texts));
    ASSERT_TRUE(g.saved(ConsistTemplatesXml(file, texts)));
    const std::vector<TemplateRow> rows = ReadBack(g);
    ASSERT_EQ(rows.size(), 3u);
    ASSERT_EQ(ConsistSpans(rows).size(), 1u);
    for (const TemplateRow& row : rows) {
        EXPECT_EQ(row.name, "Coal &amp; coke");
        EXPECT_EQ(row.consistId, "200000001");
        EXPECT_EQ(row.key, "AAAAAAAA-0000-4000-8000-000000000001");
    }
    EXPECT_EQ(rows[2].entryId, "300000013");
}

TEST(ConsistTemplates, RenamingPartOfAConsistSplitsItUnderOneKey) {
    ConsistGame g;
    TemplateFile file;
    ASSERT_TRUE(ParseConsistTemplates(TemplatesXml({{"Coal", {kLoco, kHopper, kHopper}}}), file));
    RenameRows(file.rows, {1, 2}, FileFormName("Coal & more"));
    TemplateTexts texts;
    ASSERT_FALSE(ReadTemplateTexts(g.ctx, texts));
    ASSERT_TRUE(g.saved(ConsistTemplatesXml(file, texts)));
    const std::vector<TemplateRow> rows = ReadBack(g);
    const std::vector<ConsistSpan> spans = ConsistSpans(rows);
    ASSERT_EQ(spans.size(), 2u);
    EXPECT_EQ(spans[0].end, 1u);
    EXPECT_EQ(rows[0].name, "Coal");
    EXPECT_EQ(rows[1].name, "Coal &amp; more");
    EXPECT_EQ(rows[0].key, rows[1].key);
}

TEST(LoadConsistTemplates, WithoutAFileItAsksWhetherToMakeOne) {
    struct Case {
        base::Answer answer;
        LoadState state;
    };
    for (const Case& c : {Case{base::Answer::No, LoadState::Declined}, Case{base::Answer::Yes, LoadState::New}}) {
        ConsistGame g;
        g.ui.answers.push_back(c.answer);
        const LoadedTemplates loaded = LoadConsistTemplates(g.ctx, false);
        EXPECT_EQ(loaded.state, c.state);
        ASSERT_EQ(g.ui.shown.size(), 1u);
        EXPECT_EQ(g.ui.shown[0].text, "You currently don't have any saved consists.\nDo you wish to create some?");
        EXPECT_TRUE(loaded.file.rows.empty());
        if (c.state == LoadState::New) {
            EXPECT_TRUE(std::regex_search(loaded.file.head, std::regex("<cRecordSet [^>]*d:id=\"[1-9][0-9]{8}\">")))
                << loaded.file.head;
        }
        EXPECT_FALSE(fs::exists(g.file()));
    }
}

TEST(LoadConsistTemplates, AFileThatIsNoSavedConsistsIsRefusedUntouched) {
    const std::vector<std::string> contents = {std::string("SERZ\0\0\1\0 broken", 15), "not a binary file"};
    for (const std::string& bytes : contents) {
        ConsistGame g;
        g.root.write("game/Content/ConsistTemplates.bin", bytes);
        const LoadedTemplates loaded = LoadConsistTemplates(g.ctx, false);
        EXPECT_EQ(loaded.state, LoadState::Invalid);
        ASSERT_EQ(g.ui.texts(), std::vector<std::string>{"This Consist Template file appears to be invalid."});
        EXPECT_EQ(g.ui.shown[0].icon, base::Icon::Critical);
        EXPECT_EQ(g.bytes(), bytes);
    }
    ConsistGame g;
    ASSERT_TRUE(g.saved("<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n<cRecordSet xmlns:d=\"http://www.kuju.com/TnT/2003/Delta\" "
                        "d:version=\"1.0\">\r\n\t<Record/>\r\n</cRecordSet>\r\n"));
    EXPECT_EQ(LoadConsistTemplates(g.ctx, false).state, LoadState::Invalid);
}

TEST(LoadConsistTemplates, MissingStockIsToldUnlessSuppressedAndKeptEitherWay) {
    const Vehicle entity{"Ostvale", "NorthernLines", "RailVehicles\\Coal &amp; Coke\\Wagon.xml", "0", "300000021"};
    for (const bool suppress : {false, true}) {
        ConsistGame g;
        g.install("Ostvale/NorthernLines/RailVehicles/Class58/Class58.bin");
        g.install("Müller/Straßenbahn/RailVehicles/Vůz/Vůz.bin");
        g.install("Ostvale/NorthernLines/RailVehicles/Coal & Coke/Wagon.bin");  // found by its decoded name
        ASSERT_TRUE(g.saved(TemplatesXml({{"Coal", {kLoco, kHopper, entity}}, {"Tram", {kTram}}})));
        const LoadedTemplates loaded = LoadConsistTemplates(g.ctx, suppress);
        ASSERT_EQ(loaded.state, LoadState::Loaded);
        EXPECT_EQ(loaded.file.rows.size(), 4u);
        EXPECT_EQ(loaded.missing, (std::vector<bool>{false, true, false, false}));
        if (suppress) {
            EXPECT_TRUE(g.ui.shown.empty());
            continue;
        }
        ASSERT_EQ(g.ui.shown.size(), 1u);
        EXPECT_EQ(g.ui.shown[0].title, "Missing rolling-stock");
        EXPECT_EQ(g.ui.shown[0].text, "The following rolling-stock listed in the consist is missing\n" + g.ctx.gameRoot() +
                                          "\\Assets\\Ostvale\\NorthernLines\\RailVehicles\\Hopper\\Hopper.bin");
    }
}

TEST(SaveConsistTemplates, TheOldFileIsKeptAsABackUpAtEachSave) {
    ConsistGame g;
    ASSERT_TRUE(g.saved(TemplatesXml(TwoConsists())));
    const std::string original = g.bytes();
    TemplateFile file;
    ASSERT_TRUE(ParseConsistTemplates(TemplatesXml(TwoConsists()), file));
    DeleteRows(file.rows, {0});
    const SaveResult first = SaveConsistTemplates(g.ctx, file);
    EXPECT_TRUE(first.written);
    EXPECT_EQ(g.ui.texts(), std::vector<std::string>{"Your new ConsistTemplate.bin file is now ready for use."});
    EXPECT_EQ(g.root.read("game/Content/ConsistTemplates.bak"), original);
    EXPECT_EQ(ReadBack(g), file.rows);
    const std::string second = g.bytes();
    FlipRows(file.rows, {0});
    EXPECT_TRUE(SaveConsistTemplates(g.ctx, file).written);
    EXPECT_EQ(g.root.read("game/Content/ConsistTemplates.bak1"), second);
    EXPECT_EQ(ReadBack(g)[0].flipped, "0");
}

TEST(SaveConsistTemplates, AFileIsMadeWhereThereWasNone) {
    ConsistGame g;
    TemplateTexts texts;
    ASSERT_FALSE(ReadTemplateTexts(g.ctx, texts));
    TemplateFile file{NewHead(texts), {}};
    AppendStock(file.rows, NewConsistIdentity("Empties"), {assets::AssetRow::FromCells({"Ostvale", "NorthernLines", "RailVehicles\\Hopper.bin"})});
    EXPECT_TRUE(SaveConsistTemplates(g.ctx, file).written);
    const std::vector<TemplateRow> rows = ReadBack(g);
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_EQ(rows[0].blueprintId, "RailVehicles\\Hopper.xml");
    EXPECT_FALSE(fs::exists(g.root.path() / "game/Content/ConsistTemplates.bak"));
}

// Whatever goes wrong, the saved consists stay as they were and nothing is renamed.
TEST(SaveConsistTemplates, AFailedSaveLeavesTheOriginalUntouched) {
    struct Case {
        const char* name;
        std::function<void(ConsistGame&, TemplateFile&)> spoil;
    };
    const Case cases[] = {
        {"the text does not compile", [](ConsistGame&, TemplateFile& file) { file.rows[0].provider = "<Broken"; }},
        {"no consists are left", [](ConsistGame&, TemplateFile& file) { file.rows.clear(); }},
        {"a template is missing", [](ConsistGame& g, TemplateFile&) { fs::remove(g.root.path() / "app/Templates/ConsistName.txt"); }},
    };
    for (const Case& c : cases) {
        ConsistGame g;
        ASSERT_TRUE(g.saved(TemplatesXml(TwoConsists())));
        const std::string original = g.bytes();
        TemplateFile file;
        ASSERT_TRUE(ParseConsistTemplates(TemplatesXml(TwoConsists()), file));
        c.spoil(g, file);
        EXPECT_FALSE(SaveConsistTemplates(g.ctx, file).written) << c.name;
        ASSERT_FALSE(g.ui.texts().empty()) << c.name;
        const bool told = g.ui.texts()[0].rfind(kNotWrittenMessage, 0) == 0 || g.ui.texts()[0] == kNothingToSaveMessage;
        EXPECT_TRUE(told) << c.name << ": " << g.ui.texts()[0];
        EXPECT_EQ(g.bytes(), original) << c.name;
        EXPECT_FALSE(fs::exists(g.root.path() / "game/Content/ConsistTemplates.bak")) << c.name;
    }
}

TEST(SaveConsistTemplates, AReadOnlyContentFolderLeavesTheOriginalUntouched) {
    ConsistGame g;
    ASSERT_TRUE(g.saved(TemplatesXml(TwoConsists())));
    const std::string original = g.bytes();
    TemplateFile file;
    ASSERT_TRUE(ParseConsistTemplates(TemplatesXml(TwoConsists()), file));
    FlipRows(file.rows, {0, 1, 2});
    {
        ::ferrolund::testing::LockedFolder locked(g.root.path() / "game/Content");
        if (!locked.locked()) GTEST_SKIP() << "the folder cannot be locked against this user (the superuser)";
        EXPECT_FALSE(SaveConsistTemplates(g.ctx, file).written);
    }
    EXPECT_EQ(g.ui.texts()[0].rfind(kNotWrittenMessage, 0), 0u);
    EXPECT_EQ(g.bytes(), original);
    EXPECT_EQ(std::distance(fs::directory_iterator(g.root.path() / "game/Content"), fs::directory_iterator{}), 1);
}

}  // namespace
}  // namespace ferrolund::consists
