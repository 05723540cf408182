#include "scenarios/scenario_reader.h"

#include <gtest/gtest.h>

#include "core/tools/testdata_file.h"
#include "support/scripted_ui.h"
#include "tools/serz_convert.h"

namespace ferrolund::scenarios {
namespace {

TEST(ScenarioReader, TheSmallRealScenarioGivesItsConsistsAndVehicles) {
    FERROLUND_READ_TESTDATA(xml, "serz/scenario-small.xml");
    const ScenarioConsists read = ReadConsists(xml, "English");
    ASSERT_EQ(read.consists.size(), 4u);
    const ConsistRow& first = read.consists[0];
    EXPECT_FALSE(first.loose);
    EXPECT_EQ(first.serviceName, "Service1");
    EXPECT_EQ(first.serviceClass, "0");
    EXPECT_EQ(first.driverEngineIndex, "3");
    EXPECT_EQ(first.playerDriver, "0");
    ASSERT_EQ(first.vehicles.size(), 4u);
    EXPECT_EQ(first.vehicles[0].name, "JT Class 220 VT A (DMF)");
    EXPECT_EQ(first.vehicles[0].uniqueNumber, "22003260432");
    EXPECT_EQ(first.vehicles[0].flipped, "0");
    EXPECT_EQ(first.vehicles[3].flipped, "1");
    EXPECT_EQ(first.vehicles[3].name, "JT Class 220 VT F (DMSL)");
    EXPECT_FALSE(first.vehicles[0].provider.empty());
    EXPECT_EQ(xml.compare(static_cast<std::size_t>(first.vehicles[1].namePos - 1), 5, "<Name"), 0);
    std::size_t vehicles = 0;
    for (const ConsistRow& row : read.consists) vehicles += row.vehicles.size();
    EXPECT_EQ(vehicles, 19u);
}

}  // namespace
}  // namespace ferrolund::scenarios
