// PlotXy's arithmetic: the frame on the canvas, the grid's labels, and where the points
// of a curve land.
#include <gtest/gtest.h>

#include "simdata/plot.h"

namespace ferrolund::simdata {
namespace {

// A canvas of 600 x 400 units: the frame runs from (100, 100) to (367, 233).
const PlotArea kArea = LayOutPlot(600, 400);

PlotLimits Limits(double xMin, double xMax, double yMin, double yMax) {
    PlotLimits limits;
    limits.XMin = xMin;
    limits.XMax = xMax;
    limits.YMin = yMin;
    limits.YMax = yMax;
    return limits;
}

TEST(PlotXy, TheMarginsAreTheLayoutsTwips) {
    EXPECT_DOUBLE_EQ(kArea.PlotLeft, 100);
    EXPECT_DOUBLE_EQ(kArea.PlotTop, 100);
    EXPECT_DOUBLE_EQ(kArea.PlotRight, 367);  // 600 less 3,500 twips, rounded
    EXPECT_DOUBLE_EQ(kArea.PlotBottom, 233);
    const PlotArea tiny = LayOutPlot(50, 50);
    EXPECT_EQ(tiny.PlotRight, tiny.PlotLeft);
    EXPECT_EQ(tiny.PlotBottom, tiny.PlotTop);
}

struct PlaceCase {
    const char* name;
    double x, y;
    bool drawn;
    double px, py;
};

class PlotPlace : public ::testing::TestWithParam<PlaceCase> {};

TEST_P(PlotPlace, PointsLandInTheFrame) {
    const PlaceCase& c = GetParam();
    const auto at = CurvePen::Place(kArea, Limits(10, 20, 100, 300), c.x, c.y);
    ASSERT_EQ(at.has_value(), c.drawn);
    if (!c.drawn) return;
    EXPECT_NEAR(at->x, c.px, 1e-9);
    EXPECT_NEAR(at->y, c.py, 1e-9);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, PlotPlace,
    ::testing::Values(PlaceCase{"XMinYMaxIsTheTopLeftCorner", 10, 300, true, kArea.PlotLeft, kArea.PlotTop},
                      PlaceCase{"XMaxYMinIsTheBottomRightCorner", 20, 100, true, kArea.PlotRight, kArea.PlotBottom},
                      PlaceCase{"TheMiddle", 15, 200, true, (kArea.PlotLeft + kArea.PlotRight) / 2,
                                (kArea.PlotTop + kArea.PlotBottom) / 2},
                      PlaceCase{"BelowXMinIsSkipped", 9.99, 200, false, 0, 0},
                      PlaceCase{"BelowYMinIsSkipped", 15, 99, false, 0, 0},
                      PlaceCase{"AboveTheMaximumIsPlacedBeyondTheFrame", 25, 200, true,
                                kArea.PlotRight + (kArea.PlotRight - kArea.PlotLeft) / 2,
                                (kArea.PlotTop + kArea.PlotBottom) / 2}),
    [](const auto& info) { return std::string(info.param.name); });

TEST(PlotXy, TheFirstPointOnlyStartsTheLine) {
    CurvePen pen(kArea, Limits(0, 2, 0, 2));
    EXPECT_FALSE(pen.PlotPoint(0, 0));
    EXPECT_FALSE(pen.PlotPoint(-1, 1));  // skipped: the line goes on from (0, 0)
    const auto line = pen.PlotPoint(2, 2);
    ASSERT_TRUE(line);
    EXPECT_DOUBLE_EQ(line->from.x, kArea.PlotLeft);
    EXPECT_DOUBLE_EQ(line->from.y, kArea.PlotBottom);
    EXPECT_DOUBLE_EQ(line->to.x, kArea.PlotRight);
    EXPECT_DOUBLE_EQ(line->to.y, kArea.PlotTop);
    EXPECT_EQ(CurveSegments(kArea, Limits(0, 3, 0, 3), {0, 1, 2, 3}, {0, 1, 2, 3}).size(), 3u);
}

TEST(PlotXy, AnAxisWithoutSpanDrawsNoCurve) {
    const std::vector<double> xs{0, 1, 2}, ys{5, 5, 5};
    const PlotLimits flat = LimitsOf(xs, ys);
    EXPECT_EQ(flat.YMin, flat.YMax);
    EXPECT_TRUE(CurveSegments(kArea, flat, xs, ys).empty());
    EXPECT_TRUE(CurveSegments(kArea, LimitsOf({}, {}), {}, {}).empty());
    EXPECT_FALSE(ValuesAt(kArea, flat, {150, 150}));
    EXPECT_EQ(YGridMarks(kArea, flat).front().label, "5.0000");
}

TEST(PlotXy, GridLinesAndTheirLabels) {
    const PlotLimits limits = Limits(0, 1, -50, 1200.5);
    const std::vector<GridMark> xs = XGridMarks(kArea, limits);
    ASSERT_EQ(xs.size(), 11u);
    EXPECT_DOUBLE_EQ(xs.front().at, kArea.PlotLeft);
    EXPECT_DOUBLE_EQ(xs.back().at, kArea.PlotRight);
    EXPECT_EQ(xs.front().label, "0.00");
    EXPECT_EQ(xs[3].label, "0.30");
    EXPECT_EQ(xs.back().label, "1.00");
    const std::vector<GridMark> ys = YGridMarks(kArea, limits);
    ASSERT_EQ(ys.size(), 11u);
    EXPECT_DOUBLE_EQ(ys.front().at, kArea.PlotTop);
    EXPECT_EQ(ys.front().label, "1200.5000");
    EXPECT_EQ(ys.back().label, "-50.0000");
    EXPECT_DOUBLE_EQ(ys.back().at, kArea.PlotBottom);
}

TEST(PlotXy, TheValuesUnderThePointer) {
    const PlotLimits limits = Limits(0, 10, 0, 100);
    const auto corner = ValuesAt(kArea, limits, {kArea.PlotLeft, kArea.PlotTop});
    ASSERT_TRUE(corner);
    EXPECT_DOUBLE_EQ(corner->x, 0);
    EXPECT_DOUBLE_EQ(corner->y, 100);
    EXPECT_FALSE(ValuesAt(kArea, limits, {kArea.PlotLeft - 1, kArea.PlotTop}));
    EXPECT_FALSE(ValuesAt(kArea, limits, {kArea.PlotLeft, kArea.PlotBottom + 1}));
}

}  // namespace
}  // namespace ferrolund::simdata
