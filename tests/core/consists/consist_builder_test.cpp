#include "consists/consist_builder.h"

#include <gtest/gtest.h>

#include <functional>

#include "consist_fixture.h"

namespace ferrolund::consists {
namespace {

using testing::ConsistGame;
using testing::TemplatesXml;

const std::string kIndex =
    "Provider,Product,Path,Name,In Scene,Category,Blueprint,Index\r\n"
    "Ostvale,NorthernLines,RailVehicles\\Class58.bin,Class 58,Yes,Diesel,EngineBlueprint,1\r\n"
    "Ostvale,NorthernLines,RailVehicles\\Hopper.bin,Hopper,Yes,Freight Wagon,WagonBlueprint,2\r\n"
    "Provider,Product,Path,Name,In Scene,Category,Blueprint,Index\r\n"
    "Müller,Straßenbahn,RailVehicles\\Vůz.bin,Vůz,Yes,Freight Wagon,WagonBlueprint,3\r\n";

struct Builder : ConsistGame {
    ConsistBuilder builder{ctx};
    explicit Builder(bool withIndex = true) {
        if (withIndex) root.write("app/IndexFiles/index.csv", kIndex);
        EXPECT_TRUE(saved(TemplatesXml({{"Coal", {{"Ostvale", "NorthernLines", "RailVehicles\\Class58.xml"}}}})));
    }
};

TEST(ConsistBuilder, OpensOnTheSavedConsistsAndTheMainIndex) {
    Builder b;
    ASSERT_TRUE(b.builder.open(true));
    EXPECT_EQ(b.builder.rows().size(), 1u);
    ASSERT_EQ(b.builder.stock().size(), 3u);
    EXPECT_EQ(b.builder.stock()[2].provider, "Müller");
    EXPECT_TRUE(b.ui.shown.empty());
}

TEST(ConsistBuilder, WithoutAnIndexItSaysWhereToGetOne) {
    Builder b(false);
    ASSERT_TRUE(b.builder.open(true));
    EXPECT_TRUE(b.builder.stock().empty());
    EXPECT_EQ(b.ui.texts(), std::vector<std::string>{
                                "You do not appear to have an index file named Index.csv.\n"
                                "A new one can be generated from the Asset Editor, or select one from the 'Files menu'."});
}

// Each command without what it needs says so and changes nothing.
TEST(ConsistBuilder, CommandsWithoutASelectionSaySo) {
    struct Case {
        const char* name;
        std::function<void(ConsistBuilder&)> run;
        const char* message;
    };
    const Case cases[] = {
        {"add nothing", [](ConsistBuilder& b) { b.addSelectedStock({}); }, kNoStockMessage},
        {"add outside a new consist", [](ConsistBuilder& b) { b.addSelectedStock({0}); }, kPlaceStockHint},
        {"insert nowhere", [](ConsistBuilder& b) { b.insertAfter(std::nullopt, {0}, false); }, kNoPlaceMessage},
        {"insert nothing", [](ConsistBuilder& b) { b.insertAfter(0, {}, false); }, kNoStockMessage},
        {"replace nothing", [](ConsistBuilder& b) { b.replaceItems({}, {0}); }, kNoPlaceMessage},
        {"replace with nothing", [](ConsistBuilder& b) { b.replaceItems({0}, {9}); }, kNoStockMessage},
        {"delete nothing", [](ConsistBuilder& b) { b.deleteItems({}); }, kNoDeleteMessage},
        {"rename nothing", [](ConsistBuilder& b) { b.renameConsist({}); }, kNoRenameMessage},
        {"search in vain", [](ConsistBuilder& b) { b.search("Merlin", std::nullopt); }, kSearchFailedMessage},
    };
    for (const Case& c : cases) {
        Builder b;
        ASSERT_TRUE(b.builder.open(true));
        const std::vector<TemplateRow> before = b.builder.rows();
        c.run(b.builder);
        EXPECT_EQ(b.ui.texts(), std::vector<std::string>{c.message}) << c.name;
        EXPECT_EQ(b.builder.rows(), before) << c.name;
    }
}

TEST(ConsistBuilder, ANewConsistGrowsFromTheChosenStockAndIsSaved) {
    Builder b;
    ASSERT_TRUE(b.builder.open(true));
    b.ui.inputs.push_back("Tram & hopper");
    ASSERT_TRUE(b.builder.addNewConsist());
    EXPECT_EQ(b.ui.texts().back(), kNewConsistHint);
    ASSERT_TRUE(b.builder.addSelectedStock({2, 1}));
    ASSERT_EQ(b.builder.rows().size(), 3u);
    EXPECT_EQ(b.builder.rows()[1].blueprintId, "RailVehicles\\Hopper.xml");
    EXPECT_EQ(b.builder.rows()[2].name, "Tram &amp; hopper");
    b.ui.inputs.push_back("3");
    EXPECT_EQ(b.builder.insertAfter(0, {0}, true).size(), 3u);
    EXPECT_TRUE(b.builder.save().written);
    EXPECT_FALSE(b.builder.newConsistMode());
    EXPECT_EQ(b.ui.texts().back(), kReadyMessage);
}

TEST(ConsistBuilder, AGeneratedConsistTakesItsDrawsFromThePool) {
    Builder b;
    ASSERT_TRUE(b.builder.open(true));
    EXPECT_EQ(b.builder.generate(5, 10, SeededRandom(1)), 0u) << "no consist is being made";
    b.ui.inputs.push_back(std::nullopt);
    EXPECT_FALSE(b.builder.beginNewConsist());
    b.ui.inputs.push_back("Block");
    ASSERT_TRUE(b.builder.beginNewConsist());
    EXPECT_EQ(b.builder.generate(4, 0, SeededRandom(3)), 4u);
    const auto& rows = b.builder.rows();
    ASSERT_EQ(rows.size(), 5u);
    for (std::size_t r = 2; r < 5; ++r) {
        EXPECT_EQ(rows[r].blueprintId, rows[1].blueprintId);
        EXPECT_EQ(rows[r].name, "Block");
        EXPECT_NE(rows[r].entryId, rows[1].entryId);
    }
    EXPECT_EQ(b.builder.generate(4, 12, SeededRandom(3)), 0u);
}

}  // namespace
}  // namespace ferrolund::consists
