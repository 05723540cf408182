// One blueprint's bytes turned into a row of the asset list, or not.
#include "assets/asset_rows.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "serz/codec.h"

namespace ferrolund::assets {
namespace {

std::string Str(const std::string& name, const std::string& value) {
    return "<" + name + " d:type=\"cDeltaString\">" + value + "</" + name + ">";
}

std::string Binary(const std::string& body, const std::string& name) {
    const std::string xml =
        "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n<cBlueprintLoader xmlns:d=\"http://www.kuju.com/TnT/2003/Delta\" "
        "d:version=\"1.0\"><Blueprint>" +
        body.substr(0, body.find('>') + 1) + "<Name><Localisation-cUserLocalisedString>" + Str("English", name) +
        "</Localisation-cUserLocalisedString></Name>" + body.substr(body.find('>') + 1) +
        "</Blueprint></cBlueprintLoader>";
    std::string binary;
    EXPECT_FALSE(serz::XmlToBinary(xml, binary)) << xml;
    return binary;
}

const std::string kWagon = "<cWagonBlueprint d:id=\"12\"><RailVehicleComponent/></cWagonBlueprint>";
const std::string kScenery = "<cSceneryBlueprint>" + Str("Category", "eScenery") + "</cSceneryBlueprint>";
const std::string kNoCategory = "<cSceneryBlueprint>" + Str("Category", "") + "</cSceneryBlueprint>";
const std::string kTrack = "<cTrackSectionBlueprint/>";
const std::string kReskin = "<cReskinBlueprint></cReskinBlueprint>";

constexpr const char* kPath = "C:\\RW\\Assets\\Prov\\Prod\\RailVehicles\\Wagons\\w.bin";

AssetFilter With(bool rolling, const std::string& category = {}) {
    AssetFilter f;
    f.rollingStockOnly = rolling;
    f.category = category;
    return f;
}

TEST(AssetRows, BlueprintVerdicts) {
    struct Case {
        const char* label;
        std::string bytes;
        std::string path;
        AssetFilter filter;
        RowVerdict verdict;
        std::string category;
    };
    const std::vector<Case> cases = {
        {"wagon", Binary(kWagon, "Box, red"), kPath, With(true), RowVerdict::Added, "Freight Wagon"},
        {"Freight finds wagons", Binary(kWagon, "Box"), kPath, With(false, "freight"), RowVerdict::Added,
         "Freight Wagon"},
        {"other category drops", Binary(kWagon, "Box"), kPath, With(false, "Tender"), RowVerdict::Drop, ""},
        {"scenery is no rolling stock", Binary(kScenery, "Shed"), kPath, With(true), RowVerdict::Drop, ""},
        {"scenery listed", Binary(kScenery, "Shed"), kPath, With(false), RowVerdict::Added, "Scenery"},
        {"category matched without case", Binary(kScenery, "Shed"), kPath, With(false, "SCENERY"), RowVerdict::Added,
         "Scenery"},
        {"reskin is rolling stock", Binary(kReskin, "Blue"), kPath, With(true), RowVerdict::Added, ""},
        {"no name drops", Binary(kWagon, ""), kPath, With(false), RowVerdict::Drop, ""},
        {"empty category, no filter", Binary(kNoCategory, "X"), kPath, With(false), RowVerdict::Added, ""},
        {"empty category, No Category", Binary(kNoCategory, "X"), kPath, With(false, "No Category"),
         RowVerdict::Added, ""},
        {"empty category, other filter", Binary(kNoCategory, "X"), kPath, With(false, "Scenery"), RowVerdict::Drop,
         ""},
        {"No Category needs a Category element", Binary(kTrack, "T"), kPath, With(false, "No Category"),
         RowVerdict::Drop, ""},
        {"simulation is counted, not shown", Binary(kWagon, "Sim"),
         "C:\\RW\\Assets\\Prov\\Prod\\RailVehicles\\Simulation\\s.bin", With(false), RowVerdict::Counted, ""},
        {"truncated", Binary(kWagon, "Box").substr(0, 40), kPath, With(false), RowVerdict::Unreadable, ""},
        {"empty file", "", kPath, With(false), RowVerdict::Unreadable, ""},
        {"foreign file", "not a blueprint at all", kPath, With(false), RowVerdict::Unreadable, ""},
    };
    const BlueprintRef ref{"Prov", "Prod", "RailVehicles\\Wagons\\w.bin"};
    for (const Case& c : cases) {
        AssetRow row;
        std::string failure;
        EXPECT_EQ(BuildBlueprintRow(c.bytes, c.path, ref, c.filter, row, &failure), c.verdict) << c.label;
        EXPECT_EQ(failure.empty(), c.verdict != RowVerdict::Unreadable) << c.label;
        if (c.verdict == RowVerdict::Added) {
            EXPECT_EQ(row.category, c.category) << c.label;
        }
    }
}

TEST(AssetRows, RowColumnsAndCommas) {
    AssetRow row;
    ASSERT_EQ(BuildBlueprintRow(Binary(kWagon, "Box, red, old"), kPath,
                                {"Prov", "Prod", "RailVehicles\\Wagons\\w.bin"}, With(true), row),
              RowVerdict::Added);
    const AssetRow expected{"Prov", "Prod", "RailVehicles\\Wagons\\w.bin", "Box red old", "Yes", "Freight Wagon",
                            "WagonBlueprint d:id=\"12\"", ""};
    EXPECT_EQ(row, expected);
    EXPECT_EQ(PlainRow({"A", "B", "c\\d.txt"}), (AssetRow{"A", "B", "c\\d.txt", "", "", "", "", ""}));
}

}  // namespace
}  // namespace ferrolund::assets
