#include "assets/stock_transforms.h"

#include <gtest/gtest.h>

#include <pugixml.hpp>

#include "assets/blueprint_splice.h"
#include "stock_fixture.h"

namespace ferrolund::assets {
namespace {

using testing::CoachXml;
using testing::GeometryXml;
using testing::Tilted;
using testing::Upright;

TEST(NewNameValue, TheHashStandsForTheOldName) {
    struct Case {
        std::string typed, old, value;
    };
    const Case cases[] = {
        {"Class 58", "Old", "Class 58"},
        {"# (weathered)", "Old &amp; Grey", "Old &amp; Grey (weathered)"},  // the old name stays in file form
        {"#-#", "A", "A-A"},
        {"#", "", ""},
        {"Gr\xFCn & #", "Caf\xC3\xA9", "Gr\xC3\xBCn &amp; Caf\xC3\xA9"},
    };
    for (const Case& c : cases) EXPECT_EQ(NewNameValue(c.typed, c.old), c.value) << c.typed;
}

TEST(LodText, FourPlacesUnlessTheyAreAllNought) {
    const std::pair<double, std::string> cases[] = {
        {2000, "2000"},       {1234.5, "1234.5000"}, {10000, "10000"},  {0.5, ".5000"},
        {1999.99999, "2000"}, {0, "0"},              {250.125, "250.1250"}, {-3, "-3"},
    };
    for (const auto& [value, text] : cases) EXPECT_EQ(LodText(value), text) << value;
}

std::vector<std::string> LodValues(const std::string& text) {
    std::vector<std::string> values;
    pugi::xml_document doc;
    doc.load_string(text.c_str());
    for (const auto& e : doc.select_nodes("//LOD/e")) values.emplace_back(e.node().text().get());
    return values;
}

TEST(RescaleLods, MapsTheOldRangeOntoTheNew) {
    struct Case {
        std::vector<std::vector<std::string>> lods;
        double newMin, newMax;
        std::vector<std::string> expected;  // empty: nothing to write
    };
    const Case cases[] = {
        {{{"100", "550", "1000"}}, 0, 2000, {"0", "1000", "2000"}},
        {{{"100", "1000"}, {"400"}}, 50, 950, {"50", "950", "350"}},  // one range over all blocks
        {{{"10", "20", "0", "30"}}, 100, 300, {"100", "300", "0", "30"}},  // a zero ends its block
        {{{"1", "4"}}, 0, 1000.25, {"0", "1000.2500"}},
        {{{"500", "500"}}, 0, 2000, {}},  // no range: nothing changes
        {{{"0", "300"}}, 0, 2000, {}},    // nothing read
    };
    for (const Case& c : cases) {
        LodChange change;
        const std::optional<std::string> out = RescaleLods(GeometryXml(c.lods), c.newMin, c.newMax, change);
        if (c.expected.empty()) {
            EXPECT_FALSE(out) << c.lods.front().front();
            continue;
        }
        ASSERT_TRUE(out) << c.lods.front().front();
        EXPECT_EQ(LodValues(*out), c.expected);
    }
}

TEST(RescaleLods, ReadsNoMoreThanFiftyValues) {
    std::vector<std::string> many;
    for (int i = 1; i <= 60; ++i) many.push_back(std::to_string(i));
    LodChange change;
    const auto out = RescaleLods(GeometryXml({many}), 0, 49, change);
    ASSERT_TRUE(out);
    EXPECT_EQ(change.old.size(), 50u);
    EXPECT_EQ(change.oldMax, 50);
    const auto values = LodValues(*out);
    EXPECT_EQ(values[49], "49");
    EXPECT_EQ(values[50], "51");  // beyond the fiftieth: untouched
}

TEST(RemoveChildBlocks, DropsEachNamedBlockAndNothingElse) {
    const std::string xml = CoachXml("Smoke", {{"Smoke", Upright("0", "4", "1")}, {"Driver", Upright("1", "2", "3")},
                                               {"Guard", Upright("1", "2", "3")}});
    struct Case {
        std::vector<std::string> names;
        int removed;
        std::vector<std::string> left;
    };
    const Case cases[] = {
        {{"Driver"}, 1, {"Smoke", "Guard"}},
        {{"Smoke", "Guard"}, 2, {"Driver"}},
        {{"Smoke", "Driver", "Guard"}, 3, {}},
        {{"Nobody"}, 0, {"Smoke", "Driver", "Guard"}},
    };
    for (const Case& c : cases) {
        std::string text = xml;
        EXPECT_EQ(RemoveChildBlocks(text, c.names), c.removed);
        EXPECT_EQ(ChildNames(text), c.left);
        pugi::xml_document doc;
        EXPECT_TRUE(doc.load_string(text.c_str()));
        EXPECT_NE(text.find("<Name d:type=\"cDeltaString\">Smoke</Name>"), std::string::npos);  // the name stays
    }
}

TEST(StraightenChild, TakesOutTheTurnAndKeepsThePlace) {
    const std::string xml = CoachXml("C", {{"Driver", Tilted()}, {"Smoke", Tilted()}});
    const TransformResult result = StraightenChild(xml, "Smoke");
    ASSERT_EQ(result.verdict, TransformResult::Verdict::Changed);
    pugi::xml_document doc;
    ASSERT_TRUE(doc.load_string(result.text.c_str()));
    std::vector<std::vector<std::string>> matrices;
    for (const auto& element : doc.select_nodes("//Element")) {
        matrices.emplace_back();
        for (const auto& e : element.node().children("e")) matrices.back().emplace_back(e.text().get());
    }
    ASSERT_EQ(matrices.size(), 2u);
    EXPECT_EQ(matrices[0], Tilted());  // the other child is not touched
    EXPECT_EQ(matrices[1], Upright("-1.25", "4.5", "7.75"));
}

TEST(StraightenChild, RowsThatDoNotSuit) {
    using Verdict = TransformResult::Verdict;
    struct Case {
        std::string xml, child;
        Verdict verdict;
    };
    std::string noMatrix = CoachXml("C", {{"Smoke", Tilted()}});
    noMatrix.erase(noMatrix.find("<Matrix>"), noMatrix.find("</Matrix>") + 9 - noMatrix.find("<Matrix>"));
    const Case cases[] = {
        {CoachXml("C", {{"Smoke", Upright("0", "4", "1")}}), "Smoke", Verdict::Nothing},
        {CoachXml("C", {{"Smoke", Tilted()}}), "Chimney", Verdict::Unfit},
        {CoachXml("C", {}), "Smoke", Verdict::Unfit},
        {noMatrix, "Smoke", Verdict::Unfit},
    };
    for (const Case& c : cases) {
        const TransformResult result = StraightenChild(c.xml, c.child);
        EXPECT_EQ(result.verdict, c.verdict) << c.child;
        EXPECT_FALSE(result.reason.empty());
    }
}

}  // namespace
}  // namespace ferrolund::assets
