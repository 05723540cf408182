#include "editor/identify_object.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <regex>
#include <string>

#include "serz/codec.h"
#include "support/scripted_ui.h"
#include "support/temp_folder.h"

namespace ferrolund::editor {
namespace {

TEST(BlueprintFileName, AnXmlEndingBecomesBin) {
    struct Case {
        const char* asset;
        const char* file;
    };
    for (const Case& c : {Case{"Foo.xml", "Foo.bin"}, Case{"Foo.XML", "Foo.bin"}, Case{"Foo.bin", "Foo.bin"},
                          Case{"xml", "bin"}, Case{"Foo", "Foo"}, Case{"", ""}}) {
        EXPECT_EQ(BlueprintFileName(c.asset), c.file) << c.asset;
    }
}

std::string Blueprint(const std::string& english, const std::string& category) {
    std::string xml =
        "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n"
        "<cBlueprintLoader xmlns:d=\"http://www.kuju.com/TnT/2003/Delta\" d:version=\"1.0\">\r\n"
        "\t<Blueprint>\r\n\t\t<cWagonBlueprint>\r\n"
        "\t\t\t<Name d:type=\"cDeltaString\">wagon</Name>\r\n"
        "\t\t\t<DisplayName>\r\n\t\t\t\t<Localisation-cUserLocalisedString>\r\n"
        "\t\t\t\t\t<English d:type=\"cDeltaString\">" + english + "</English>\r\n"
        "\t\t\t\t</Localisation-cUserLocalisedString>\r\n\t\t\t</DisplayName>\r\n";
    if (!category.empty()) xml += "\t\t\t<Category d:type=\"cDeltaString\">" + category + "</Category>\r\n";
    return xml + "\t\t</cWagonBlueprint>\r\n\t</Blueprint>\r\n</cBlueprintLoader>\r\n";
}

TEST(DescribeBlueprint, ProviderProductPathNameAndCategory) {
    const IdentifiedObject o = DescribeBlueprint(
        "D:\\Assets\\RailWorks", "D:\\Assets\\RailWorks\\Assets\\Kuju\\RailSimulator\\RailVehicles\\Box\\Foo.bin",
        Blueprint("Box Wagon", "eFreight"), "English");
    EXPECT_EQ(o.provider, "Kuju");
    EXPECT_EQ(o.product, "RailSimulator");
    EXPECT_EQ(o.path, "RailVehicles\\Box\\Foo.bin");
    EXPECT_EQ(o.name, "Box Wagon");
    EXPECT_EQ(o.category, "Freight");
    EXPECT_EQ(o.row(), "Kuju\tRailSimulator\tRailVehicles\\Box\\Foo.bin\tBox Wagon\tFreight");

    const IdentifiedObject bare = DescribeBlueprint("R", "R\\Assets\\P\\Q\\x.bin", Blueprint("", ""), "English");
    EXPECT_EQ(bare.name, "No Name");
    EXPECT_EQ(bare.category, "");
    EXPECT_EQ(bare.path, "x.bin");
    // Only a leading lower-case "e" goes.
    EXPECT_EQ(DescribeBlueprint("R", "R\\Assets\\P\\Q\\x.bin", Blueprint("n", "Electric"), "English").category,
              "Electric");
    // Text that is no blueprint at all.
    const IdentifiedObject nothing = DescribeBlueprint("R", "R\\elsewhere\\x.bin", "", "English");
    EXPECT_EQ(nothing.row(), "\t\t\tNo Name\t");
}

struct Identify : ::testing::Test {
    testing::TempFolder root;
    testing::ScriptedUi ui;
    app::AppContext ctx;
    IdentifyObject screen;

    Identify() {
        ctx.ui = &ui;
        ctx.appRoot = (root.path() / "app").string();
        ctx.prefs.gameRoot = (root.path() / "RailWorks").string();
    }
    void blueprint(const std::string& relative, const std::string& english, const std::string& category) {
        std::string binary;
        ASSERT_FALSE(serz::XmlToBinary(Blueprint(english, category), binary));
        root.write("RailWorks/Assets/" + relative, binary);
    }
};

TEST_F(Identify, FindsEveryBlueprintOfTheNameWhateverItsCase) {
    blueprint("Kuju/RailSimulator/RailVehicles/Foo.bin", "Box Wagon", "eFreight");
    blueprint("Other/Pack/Wagons/FOO.bin", "Other Wagon", "");
    blueprint("Other/Pack/Wagons/Bar.bin", "Bar", "");
    root.write("RailWorks/Assets/Other/Pack/Wagons/Foo.xml", "not searched");
    std::vector<std::string> rows;
    std::string asset = "foo.xml";
    screen.scanClicked(ctx, asset, [&](const std::string& row) { rows.push_back(row); });
    EXPECT_EQ(asset, "foo.bin");
    EXPECT_EQ(screen.caption, "Scan");
    EXPECT_EQ(rows, screen.rows);
    std::sort(rows.begin(), rows.end());
    EXPECT_EQ(rows, (std::vector<std::string>{"Kuju\tRailSimulator\tRailVehicles\\Foo.bin\tBox Wagon\tFreight",
                                              "Other\tPack\tWagons\\FOO.bin\tOther Wagon\t"}));
    EXPECT_TRUE(ui.shown.empty());

    screen.clear(asset);
    EXPECT_EQ(asset, "");
    EXPECT_TRUE(screen.rows.empty());
}

TEST_F(Identify, StopEndsTheWalk) {
    for (const char* provider : {"A", "B", "C", "D"}) {
        blueprint(std::string(provider) + "/P/Foo.bin", provider, "");
    }
    std::string asset = "Foo.bin";
    std::vector<std::string> captions;
    screen.scanClicked(ctx, asset, [&](const std::string&) {
        captions.push_back(screen.caption);
        std::string typed = asset;
        screen.scanClicked(ctx, typed);  // the Stop click, let through by the walk
        captions.push_back(screen.caption);
    });
    EXPECT_EQ(screen.rows.size(), 1u);
    EXPECT_EQ(captions, (std::vector<std::string>{"Stop", "Scan"}));
    EXPECT_EQ(screen.caption, "Scan");
}

TEST_F(Identify, ABrokenBlueprintIsReportedAndStillListed) {
    root.write("RailWorks/Assets/P/Q/Foo.bin", "SERZ broken");
    std::string asset = "Foo.bin";
    screen.scanClicked(ctx, asset);
    ASSERT_EQ(screen.rows.size(), 1u);
    EXPECT_EQ(screen.rows[0], "P\tQ\tFoo.bin\tNo Name\t");
    ASSERT_EQ(ui.shown.size(), 1u);  // the error path's stop box
    EXPECT_EQ(ui.shown[0].icon, base::Icon::Critical);
}

TEST(NewGuidAndDeltaId, LowerCaseGuidAndNineDigits) {
    const std::regex form("[0-9a-f]{8}-[0-9a-f]{4}-[0-9a-f]{4}-[0-9a-f]{4}-[0-9a-f]{12}\n[1-9][0-9]{8}");
    const std::string first = NewGuidAndDeltaId();
    EXPECT_TRUE(std::regex_match(first, form)) << first;
    EXPECT_NE(NewGuidAndDeltaId(), first);
}

}  // namespace
}  // namespace ferrolund::editor
