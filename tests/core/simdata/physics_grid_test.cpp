#include "simdata/physics_grid.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "core/sample/sample_fixture.h"
#include "physics_fixture.h"
#include "serz/codec.h"

namespace ferrolund::simdata {
namespace {

using testing::DieselSimXml;
using testing::EngineXml;
using testing::SteamSimXml;

// The converter's own form of a fixture text, as the screen reads it from a .bin.
std::string Converted(const std::string& xml) {
    std::string binary, back;
    EXPECT_FALSE(serz::XmlToBinary(xml, binary));
    EXPECT_FALSE(serz::BinaryToXml(binary, back));
    return back;
}

std::vector<GridRow>::const_iterator Find(const std::vector<GridRow>& rows, const std::string& item, int nth = 0) {
    auto it = rows.begin();
    for (;; ++it) {
        it = std::find_if(it, rows.end(), [&](const GridRow& r) { return r.item == item; });
        if (it == rows.end() || nth-- == 0) return it;
    }
}

std::string DataOf(const std::vector<GridRow>& rows, const std::string& item, int nth = 0) {
    auto it = Find(rows, item, nth);
    return it == rows.end() ? "<no row>" : it->data;
}

std::size_t IndexOf(const std::vector<GridRow>& rows, const std::string& item, int nth = 0) {
    return static_cast<std::size_t>(Find(rows, item, nth) - rows.begin());
}

TEST(PhysicsGrid, ReadsTheBlueprintRowsInOrderWithTheirPositions) {
    const std::string text = Converted(EngineXml("eDiesel", "RailVehicles\\Sim.xml"));
    const GridRead read = ReadGrid(text, GridKind::Blueprint, "/game");
    const auto& rows = read.rows;
    ASSERT_FALSE(rows.empty());
    EXPECT_EQ(rows.front().item, "cEngineBlueprint");
    EXPECT_TRUE(rows.front().heading());
    EXPECT_EQ(DataOf(rows, "Name"), testing::kLocoName);
    EXPECT_EQ(DataOf(rows, "English"), testing::kLocoName);
    EXPECT_EQ(DataOf(rows, "FrontCouplingBlueprintID"),
              testing::kProvider + "\\" + testing::kProduct + "\\RailVehicles\\Couplings\\Buffer.xml");
    EXPECT_EQ(DataOf(rows, "RearCouplingBlueprintID"), "");  // an empty reference
    EXPECT_EQ(DataOf(rows, "Mass"), "80");
    // Both bogeys, each with its own rows, under one head.
    EXPECT_EQ(std::count_if(rows.begin(), rows.end(), [](const GridRow& r) { return r.item == "Bogey"; }), 1);
    EXPECT_EQ(DataOf(rows, "BogeyPivotY", 0), "5.5");
    EXPECT_EQ(DataOf(rows, "BogeyPivotY", 1), "-5.5");
    EXPECT_EQ(DataOf(rows, "BogeyBlueprint", 1),
              testing::kProvider + "\\" + testing::kProduct + "\\RailVehicles\\Bogies\\B2.xml");
    EXPECT_EQ(DataOf(rows, "ControlName", 1), "Reverser");
    EXPECT_EQ(DataOf(rows, "EngineSimulationContainer"),
              testing::kProvider + "\\" + testing::kProduct + "\\RailVehicles\\Sim.xml");
    // "<HeatHaze/>" is an empty row; "<Children/>" leaves its block out; a tag the file
    // lacks is an empty row whose key is where its search began.
    ASSERT_NE(Find(rows, "HeatHaze"), rows.end());
    EXPECT_EQ(DataOf(rows, "HeatHaze"), "");
    EXPECT_TRUE(Find(rows, "HeatHaze")->key.has_value());
    EXPECT_EQ(Find(rows, "Children"), rows.end());
    EXPECT_EQ(Find(rows, "ChildName"), rows.end());
    ASSERT_NE(Find(rows, "EaseOfDerailment"), rows.end());
    EXPECT_EQ(DataOf(rows, "EaseOfDerailment"), "");
    // Every key with a value points at its own tag, and the keys rise through the text.
    long last = 0;
    for (const GridRow& row : rows) {
        if (row.heading() || row.data.empty()) continue;
        EXPECT_EQ(text.compare(static_cast<std::size_t>(*row.key - 1), row.item.size() + 1, "<" + row.item), 0)
            << row.item;
        EXPECT_GT(*row.key, last) << row.item;
        last = *row.key;
    }
    EXPECT_TRUE(std::all_of(read.curves.begin(), read.curves.end(), [](const std::string& f) { return f.empty(); }));
}

TEST(PhysicsGrid, SimulationRowsAndTheCurvesOfTheirKind) {
    struct Case {
        const char* name;
        std::string xml;
        GridKind grid;
        std::vector<std::size_t> curves;  // the curves remembered
    } cases[] = {
        {"diesel", DieselSimXml(), GridKind::Diesel, {0, 1, 2}},
        {"steam", SteamSimXml(), GridKind::Steam, {4, 7}},
        // A steam grid over a diesel's file remembers none of the diesel's curves.
        {"steam list on a diesel", DieselSimXml(), GridKind::Steam, {}},
    };
    for (const Case& c : cases) {
        const GridRead read = ReadGrid(Converted(c.xml), c.grid, "/game");
        for (std::size_t i = 0; i < kCurveCount; ++i) {
            const bool wanted = std::find(c.curves.begin(), c.curves.end(), i) != c.curves.end();
            if (!wanted) {
                EXPECT_EQ(read.curves[i], "") << c.name << " " << i;
                continue;
            }
            const std::string file = kCurves[i].file;
            EXPECT_EQ(read.curves[i], "/game\\Assets\\" + testing::kProvider + "\\" + testing::kProduct +
                                          "\\RailVehicles\\Sim\\" + file)
                << c.name;
        }
        EXPECT_EQ(read.rows.front().item, "cEngineSimBlueprint") << c.name;
        // The localised name's container is a head; the name itself a row.
        EXPECT_TRUE(Find(read.rows, "Name")->heading()) << c.name;
    }
    const auto diesel = ReadGrid(Converted(DieselSimXml()), GridKind::Diesel, "/game").rows;
    EXPECT_EQ(Find(diesel, "Handbrake"), diesel.end());  // "<Handbrake/>": the group is left out
    EXPECT_EQ(std::count_if(diesel.begin(), diesel.end(), [](const GridRow& r) { return r.item == "MaxCylinderPressure"; }),
              1);  // the train brake's row alone
    EXPECT_EQ(DataOf(diesel, "MaxSpeed"), "");  // "<MaxSpeed/>"
    EXPECT_EQ(DataOf(diesel, "MaxForce", 0), "235");
    EXPECT_EQ(DataOf(diesel, "MaxForce", 1), "150");
    EXPECT_EQ(DataOf(diesel, "CabControlName", 1), "BrakeControl");
    EXPECT_EQ(DataOf(diesel, "MaxReleaseRate"), "1.5");  // the train brake's own value
    // A value missing from its section does not borrow one from a later section.
    EXPECT_EQ(DataOf(diesel, "MaxEffectiveSpeed"), "");
    const auto steam = ReadGrid(Converted(SteamSimXml()), GridKind::Steam, "/game").rows;
    EXPECT_EQ(DataOf(steam, "MaxForce", 0), "30");
    // The file has no MaxForce beside MaxPower: that row is empty rather than the safety
    // valve's, which keeps its own.
    EXPECT_EQ(DataOf(steam, "MaxForce", 1), "");
    EXPECT_EQ(DataOf(steam, "MaxForce", 2), "40");
    EXPECT_EQ(DataOf(steam, "NumCylinders"), "3");
}

TEST(PhysicsGrid, TheSampleLocomotivesFillEveryListedSection) {
    const sample::SampleResult* made = nullptr;
    try {
        made = &sample::SampleMade();
    } catch (const std::exception& e) {
        FAIL() << e.what();
    }
    struct Case {
        const char* file;
        GridKind grid;
        std::size_t firstCurve;
    } cases[] = {
        {"Class58\\Simulation\\Class58Sim.bin", GridKind::Diesel, 0},
        {"Merlin\\Simulation\\MerlinSim.bin", GridKind::Steam, 4},
        {"Class58\\Engine\\Class58.bin", GridKind::Blueprint, kCurveCount},
    };
    for (const Case& c : cases) {
        const auto file = std::find_if(made->compiled.begin(), made->compiled.end(),
                                       [&](const sample::CompiledFile& f) { return f.path.ends_with(c.file); });
        ASSERT_NE(file, made->compiled.end()) << c.file;
        const std::string text = Converted(file->xml);
        const GridRead read = ReadGrid(text, c.grid, "G");
        std::size_t heads = 0;
        std::string missing;
        for (const GridRow& row : read.rows) {
            if (row.heading()) ++heads;
            else if (text.compare(static_cast<std::size_t>(*row.key - 1), row.item.size() + 1, "<" + row.item) != 0)
                missing += row.item + " ";
        }
        // Every head of the list is in the sample, and every value.
        std::size_t listed = 0;
        for (const GridTag& tag : GridTags(c.grid))
            if (tag.kind == RowKind::Heading || tag.kind == RowKind::Block) ++listed;
        EXPECT_GE(heads, listed) << c.file;
        EXPECT_EQ(missing, "") << c.file;
        for (std::size_t i = c.firstCurve; i < std::min(c.firstCurve + 4, kCurveCount); ++i)
            EXPECT_TRUE(read.curves[i].ends_with(std::string("Simulation\\") + kCurves[i].file)) << c.file << " " << i;
    }
}

// Edits: each row changes its own occurrence, and only that.
struct EditCase {
    const char* name;
    std::vector<std::pair<std::string, std::string>> edits;  // item (with #n for the n-th), value
    std::vector<std::pair<std::string, std::string>> expect;  // item#n, data after reading the text again
    std::string message = {};                                 // of the last edit
};

class PhysicsEdit : public ::testing::TestWithParam<EditCase> {};

std::pair<std::string, int> Parse(const std::string& item) {
    const std::size_t hash = item.find('#');
    if (hash == std::string::npos) return {item, 0};
    return {item.substr(0, hash), std::stoi(item.substr(hash + 1))};
}

TEST_P(PhysicsEdit, ChangesTheRowsOwnOccurrence) {
    const EditCase& c = GetParam();
    std::string text = Converted(DieselSimXml());
    GridRead read = ReadGrid(text, GridKind::Diesel, "G");
    EditOutcome last;
    for (const auto& [item, value] : c.edits) {
        const auto [tag, nth] = Parse(item);
        const std::size_t index = IndexOf(read.rows, tag, nth);
        ASSERT_LT(index, read.rows.size()) << item;
        last = EditRow(text, read.rows, index, value);
    }
    EXPECT_EQ(last.message, c.message);
    const GridRead again = ReadGrid(text, GridKind::Diesel, "G");
    for (const auto& [item, data] : c.expect) {
        const auto [tag, nth] = Parse(item);
        EXPECT_EQ(DataOf(again.rows, tag, nth), data) << item;
        EXPECT_EQ(DataOf(read.rows, tag, nth), data) << item << " (the edited grid)";
    }
    // The edited grid's keys still point at their tags.
    for (const GridRow& row : read.rows) {
        if (row.heading() || row.data.empty()) continue;
        EXPECT_EQ(text.compare(static_cast<std::size_t>(*row.key - 1), row.item.size() + 1, "<" + row.item), 0)
            << row.item;
    }
}

INSTANTIATE_TEST_SUITE_P(
    Cases, PhysicsEdit,
    ::testing::Values(
        EditCase{"same tag, each at its own place",
                 {{"MaxForce#1", "175"}, {"MaxForce#0", "240"}},
                 {{"MaxForce#0", "240"}, {"MaxForce#1", "175"}, {"MaxPower", "1839"}}},
        EditCase{"a longer value before a later edit",
                 {{"MaxForcePercentOfVehicleWeight#0", "61.123456789"}, {"MaxForcePercentOfVehicleWeight#1", "85"}},
                 {{"MaxForcePercentOfVehicleWeight#0", "61.123456789"}, {"MaxForcePercentOfVehicleWeight#1", "85"}}},
        EditCase{"a shorter value before a later edit of the same tag",
                 {{"MaxQuickReleaseRate#0", ""}, {"MaxQuickReleaseRate#1", "3"}},
                 {{"MaxQuickReleaseRate#0", ""}, {"MaxQuickReleaseRate#1", "3"}}},
        EditCase{"text in a numeric field", {{"IdleRPM", "fast"}}, {{"IdleRPM", "fast"}}},
        EditCase{"what the converter escapes", {{"CabControlName#0", "A & <B>"}},
                 {{"CabControlName#0", "A &amp; &lt;B&gt;"}}},
        EditCase{"an empty element takes no value",
                 {{"MaxSpeed", "120"}},
                 {{"MaxSpeed", ""}},
                 "The Key MaxSpeed is an empty element in this file and takes no value here"},
        EditCase{"a heading is left alone", {{"PowerUnit", "x"}}, {{"IdleRPM", "400"}}},
        EditCase{"a tag the file lacks",
                 {{"MaxEffectiveSpeed", "90"}},
                 {{"MaxEffectiveSpeed", ""}, {"MaxForce#1", "150"}},
                 "The Key MaxEffectiveSpeed was not found"}),
    [](const auto& info) {
        std::string name = info.param.name;
        for (char& ch : name)
            if (!std::isalnum(static_cast<unsigned char>(ch))) ch = '_';
        return name;
    });

TEST(PhysicsGrid, AStaleKeyStillFindsItsTagWhenNoOtherStandsBetween) {
    // As the grid leaves it after an edit elsewhere that it was not told of: the key
    // stands a little before the tag, and the search from it goes on to the tag.
    std::string text = "<A d:type=\"sFloat32\">1</A><B d:type=\"sFloat32\">2</B>";
    std::vector<GridRow> rows{{"B", "2", 1, RowKind::Value}};
    EXPECT_TRUE(EditRow(text, rows, 0, "5").changed);
    EXPECT_EQ(text, "<A d:type=\"sFloat32\">1</A><B d:type=\"sFloat32\">5</B>");
}

TEST(PhysicsGrid, TriplesAreEditedAsPaths) {
    std::string text = Converted(EngineXml("eDiesel", "Sim.xml"));
    GridRead read = ReadGrid(text, GridKind::Blueprint, "G");
    const std::size_t bogey = IndexOf(read.rows, "BogeyBlueprint", 1);
    EXPECT_TRUE(EditRow(text, read.rows, bogey, "Ostvale\\NorthernLines\\Bogies\\Neu.xml").changed);
    const std::size_t coupling = IndexOf(read.rows, "RearCouplingBlueprintID");
    const EditOutcome bad = EditRow(text, read.rows, coupling, "NoSeparators.xml");
    EXPECT_EQ(bad.message, "NoSeparators.xml is invalid and contains errors");
    EXPECT_FALSE(bad.changed);
    const GridRead again = ReadGrid(text, GridKind::Blueprint, "G");
    EXPECT_EQ(DataOf(again.rows, "BogeyBlueprint", 1), "Ostvale\\NorthernLines\\Bogies\\Neu.xml");
    EXPECT_EQ(DataOf(again.rows, "BogeyBlueprint", 0),
              testing::kProvider + "\\" + testing::kProduct + "\\RailVehicles\\Bogies\\B1.xml");
    EXPECT_EQ(DataOf(again.rows, "RearCouplingBlueprintID"), "");
    EXPECT_EQ(DataOf(again.rows, "Mass"), "80");
}

TEST(PhysicsGrid, ShownDataAndCurvePaths) {
    EXPECT_EQ(ShownData("A &amp; B &lt;C&gt; &apos;D&apos;"), "A & B <C> 'D'");
    EXPECT_EQ(ShownData("broken &nope; stays"), "broken &nope; stays");
    EXPECT_EQ(CurveFilePath("G", "P\\Q\\TractiveEffortVsSpeed"), "G\\Assets\\P\\Q\\TractiveEffortVsSpeed.dcsv");
    EXPECT_EQ(CurveFilePath("G", "P\\Q\\TractiveEffortVsSpeed.DCSV"), "G\\Assets\\P\\Q\\TractiveEffortVsSpeed.dcsv");
    EXPECT_EQ(FindElement("<BogeyPivotX>1</BogeyPivotX><Bogey>", 1, "Bogey"), 29);
    EXPECT_EQ(FindElement("<Bogey>", 1, "Bogey", 1), 0);  // the bound comes first
}

}  // namespace
}  // namespace ferrolund::simdata
