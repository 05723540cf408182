#include "consists/named_consist.h"

#include <gtest/gtest.h>

#include "consist_fixture.h"
#include "core/tools/testdata_file.h"
#include "support/cli_run.h"
#include "tools/serz_convert.h"

namespace ferrolund::consists {
namespace {

namespace fs = std::filesystem;
using testing::ConsistGame;
using testing::TemplatesXml;

std::vector<TemplateRow> ReadBack(ConsistGame& g) {
    std::string xml;
    EXPECT_FALSE(tools::SerzReadXml(g.ctx, g.file().string(), xml));
    TemplateFile file;
    EXPECT_TRUE(ParseConsistTemplates(xml, file));
    return file.rows;
}

TEST(NamedConsist, AScenarioConsistIsAddedBehindTheSavedOnes) {
    FERROLUND_READ_TESTDATA(xml, "serz/scenario-small.xml");
    ConsistGame g;
    ASSERT_TRUE(g.saved(TemplatesXml({{"Coal", {{"Ostvale", "NorthernLines", "RailVehicles\\Class58.xml"}}}})));
    const std::string original = g.bytes();
    g.ui.inputs.push_back("Voyager – 4 car");
    EXPECT_TRUE(SaveNamedConsist(g.ctx, xml, 0).written);
    ASSERT_GE(g.ui.shown.size(), 1u);
    EXPECT_EQ(g.ui.shown.back().text, kReadyMessage);
    EXPECT_EQ(g.root.read("game/Content/ConsistTemplates.bak"), original);
    const std::vector<TemplateRow> rows = ReadBack(g);
    ASSERT_EQ(rows.size(), 5u);
    EXPECT_EQ(rows[0].name, "Coal");
    EXPECT_EQ(rows[1].name, "Voyager – 4 car");
    EXPECT_EQ(rows[1].provider, "JustTrains");
    EXPECT_EQ(rows[1].blueprintId, "railvehicles\\diesel\\220\\default\\engine\\a25_locomotive_220_dmf.xml");
    EXPECT_EQ(rows[3].flipped, "0");
    EXPECT_EQ(rows[4].flipped, "1");
    EXPECT_EQ(rows[1].key, rows[4].key);
    EXPECT_NE(rows[1].entryId, rows[2].entryId);
}

TEST(NamedConsist, ReskinsAreNotCarriedAndANewFileIsMadeWhenThereIsNone) {
    const std::string reskinned =
        "<cConsist d:id=\"9\"><RailVehicles><cOwnedEntity d:id=\"1\"><Component><cWagon><Flipped d:type=\"bool\">1</Flipped>"
        "</cWagon></Component><BlueprintID><iBlueprintLibrary-cAbsoluteBlueprintID><BlueprintSetID>"
        "<iBlueprintLibrary-cBlueprintSetID><Provider d:type=\"cDeltaString\">Prov</Provider>"
        "<Product d:type=\"cDeltaString\">Prod</Product></iBlueprintLibrary-cBlueprintSetID></BlueprintSetID>"
        "<BlueprintID d:type=\"cDeltaString\">Base.xml</BlueprintID></iBlueprintLibrary-cAbsoluteBlueprintID></BlueprintID>"
        "<ReskinBlueprintID><iBlueprintLibrary-cAbsoluteBlueprintID><BlueprintSetID><iBlueprintLibrary-cBlueprintSetID>"
        "<Provider d:type=\"cDeltaString\">RProv</Provider><Product d:type=\"cDeltaString\">RProd</Product>"
        "</iBlueprintLibrary-cBlueprintSetID></BlueprintSetID><BlueprintID d:type=\"cDeltaString\">Green.xml</BlueprintID>"
        "</iBlueprintLibrary-cAbsoluteBlueprintID></ReskinBlueprintID><Name d:type=\"cDeltaString\">Van</Name>"
        "</cOwnedEntity></RailVehicles><Driver/></cConsist>";
    const std::string scenario = "<?xml version=\"1.0\"?><cRecordSet><Record>" + reskinned + "</Record></cRecordSet>";
    ConsistGame g;
    g.ui.inputs.push_back("");  // an empty name is written as it is
    EXPECT_TRUE(SaveNamedConsist(g.ctx, scenario, 0).written);
    const std::vector<TemplateRow> rows = ReadBack(g);
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_EQ(rows[0].name, "");
    EXPECT_EQ(rows[0].provider, "Prov");
    EXPECT_EQ(rows[0].blueprintId, "Base.xml");
    EXPECT_EQ(rows[0].flipped, "1");
    EXPECT_EQ(g.ui.dialogTitles, std::vector<std::string>{"Rename Consist"});
}

TEST(NamedConsist, NothingIsWrittenWithoutAConsistANameOrAValidFile) {
    const std::string scenario = "<cRecordSet><Record></Record></cRecordSet>";
    ConsistGame g;
    EXPECT_FALSE(SaveNamedConsist(g.ctx, scenario, -1).written);
    EXPECT_FALSE(SaveNamedConsist(g.ctx, scenario, 0).written);
    EXPECT_EQ(g.ui.texts(), (std::vector<std::string>{kNoConsistSelectedMessage, kNoConsistSelectedMessage}));
    EXPECT_FALSE(fs::exists(g.file()));

    FERROLUND_READ_TESTDATA(xml, "serz/scenario-small.xml");
    g.ui.inputs.push_back(std::nullopt);  // the question cancelled
    EXPECT_FALSE(SaveNamedConsist(g.ctx, xml, 1).written);
    EXPECT_FALSE(fs::exists(g.file()));
    g.root.write("game/Content/ConsistTemplates.bin", "garbage");
    g.ui.inputs.push_back("Name");
    EXPECT_FALSE(SaveNamedConsist(g.ctx, xml, 1).written);
    EXPECT_EQ(g.ui.texts().back(), kInvalidFileMessage);
    EXPECT_EQ(g.bytes(), "garbage");
}

TEST(ConsistTemplatesVerb, ListsTheConsistsAndTheirMissingStock) {
    ConsistGame g;
    g.install("Ostvale/NorthernLines/RailVehicles/Class58.bin");
    const std::vector<std::string> game = {"--game-root", g.ctx.gameRoot()};
    auto run = [&](std::vector<std::string> args) {
        args.insert(args.end(), game.begin(), game.end());
        return ::ferrolund::testing::Cli(args, g.ctx.appRoot);
    };
    auto none = run({"consist-templates"});
    EXPECT_EQ(none.code, 0) << none.err;
    EXPECT_EQ(none.out, "You currently don't have any saved consists.\n");

    ASSERT_TRUE(g.saved(TemplatesXml({{"Coal &amp; coke",
                                       {{"Ostvale", "NorthernLines", "RailVehicles\\Class58.xml"},
                                        {"Ostvale", "NorthernLines", "RailVehicles\\Hopper.xml", "1"}}},
                                      {"Güterzug", {{"Ostvale", "NorthernLines", "RailVehicles\\Class58.xml"}}}})));
    auto all = run({"consist-templates"});
    EXPECT_EQ(all.code, 0) << all.err;
    EXPECT_EQ(all.out,
              "Coal & coke\t2 vehicles\n"
              "\tOstvale\\NorthernLines\\RailVehicles\\Class58.xml\n"
              "\tOstvale\\NorthernLines\\RailVehicles\\Hopper.xml\tflipped\tmissing\n"
              "Güterzug\t1 vehicles\n"
              "\tOstvale\\NorthernLines\\RailVehicles\\Class58.xml\n"
              "2 consists, 3 vehicles, 1 missing\n");
    auto missing = run({"consist-templates", "--missing"});
    EXPECT_EQ(missing.code, 3);
    EXPECT_EQ(missing.out,
              "Coal & coke\t2 vehicles\n"
              "\tOstvale\\NorthernLines\\RailVehicles\\Hopper.xml\tflipped\tmissing\n"
              "2 consists, 3 vehicles, 1 missing\n");
    EXPECT_EQ(run({"consist-templates", "extra"}).code, 2);
    g.root.write("game/Content/ConsistTemplates.bin", "garbage");
    EXPECT_EQ(run({"consist-templates"}).code, 1);
}

}  // namespace
}  // namespace ferrolund::consists
