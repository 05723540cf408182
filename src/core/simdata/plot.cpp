#include "simdata/plot.h"

#include <algorithm>
#include <cmath>

#include "simdata/dcsv.h"
#include "tools/vb_format.h"

namespace ferrolund::simdata {

PlotArea LayOutPlot(double width, double height) {
    PlotArea area;
    area.PlotLeft = kPlotLeftTwips / kTwipsPerUnit;
    area.PlotTop = kPlotTopTwips / kTwipsPerUnit;
    // Whole units, so that the frame's lines fall on whole pixels of a plain screen.
    area.PlotRight = std::max(area.PlotLeft, std::round(width - kPlotRightMarginTwips / kTwipsPerUnit));
    area.PlotBottom = std::max(area.PlotTop, std::round(height - kPlotBottomMarginTwips / kTwipsPerUnit));
    return area;
}

PlotLimits LimitsOf(const std::vector<double>& xs, const std::vector<double>& ys) {
    PlotLimits limits;
    limits.XMin = FindMin(xs);
    limits.XMax = FindMax(xs);
    limits.YMin = FindMin(ys);
    limits.YMax = FindMax(ys);
    return limits;
}

namespace {

// The lines of one axis: `steps` + 1 of them from `first` to `last` on the canvas,
// labelled from `firstValue` to `lastValue`.
std::vector<GridMark> Marks(double first, double last, double firstValue, double lastValue, int steps,
                            const char* pattern) {
    std::vector<GridMark> marks;
    steps = std::max(steps, 1);
    const double pitch = (last - first) / steps;
    const double labelPitch = (lastValue - firstValue) / steps;
    for (int i = 0; i <= steps; ++i)
        marks.push_back({first + pitch * i, tools::FormatNumber(firstValue + labelPitch * i, pattern)});
    return marks;
}

}  // namespace

std::vector<GridMark> XGridMarks(const PlotArea& area, const PlotLimits& limits) {
    return Marks(area.PlotLeft, area.PlotRight, limits.XMin, limits.XMax, limits.XSteps, "0.00");
}

std::vector<GridMark> YGridMarks(const PlotArea& area, const PlotLimits& limits) {
    return Marks(area.PlotTop, area.PlotBottom, limits.YMax, limits.YMin, limits.YSteps, "0.0000");
}

std::optional<PlotPosition> CurvePen::Place(const PlotArea& area, const PlotLimits& limits, double x, double y) {
    const double dx = x - limits.XMin;
    const double dy = y - limits.YMin;
    if (dx < 0 || dy < 0) return std::nullopt;
    const double xSpan = limits.XMax - limits.XMin;
    const double ySpan = limits.YMax - limits.YMin;
    if (xSpan == 0 || ySpan == 0) return std::nullopt;
    return PlotPosition{area.PlotLeft + dx / xSpan * (area.PlotRight - area.PlotLeft),
                        area.PlotBottom - dy / ySpan * (area.PlotBottom - area.PlotTop)};
}

std::optional<PlotSegment> CurvePen::PlotPoint(double x, double y) {
    const std::optional<PlotPosition> at = Place(area_, limits_, x, y);
    if (!at) return std::nullopt;
    const PlotSegment line{previous_, *at};
    const bool drawn = started_;
    previous_ = *at;
    started_ = true;
    if (!drawn) return std::nullopt;
    return line;
}

std::vector<PlotSegment> CurveSegments(const PlotArea& area, const PlotLimits& limits, const std::vector<double>& xs,
                                       const std::vector<double>& ys) {
    std::vector<PlotSegment> lines;
    CurvePen pen(area, limits);
    for (std::size_t i = 0; i < std::min(xs.size(), ys.size()); ++i) {
        if (std::optional<PlotSegment> line = pen.PlotPoint(xs[i], ys[i])) lines.push_back(*line);
    }
    return lines;
}

std::optional<PlotPosition> ValuesAt(const PlotArea& area, const PlotLimits& limits, PlotPosition at) {
    const double width = area.PlotRight - area.PlotLeft;
    const double height = area.PlotBottom - area.PlotTop;
    if (width <= 0 || height <= 0) return std::nullopt;
    if (at.x < area.PlotLeft || at.x > area.PlotRight || at.y < area.PlotTop || at.y > area.PlotBottom)
        return std::nullopt;
    if (limits.XMax == limits.XMin || limits.YMax == limits.YMin) return std::nullopt;
    return PlotPosition{limits.XMin + (at.x - area.PlotLeft) / width * (limits.XMax - limits.XMin),
                        limits.YMin + (area.PlotBottom - at.y) / height * (limits.YMax - limits.YMin)};
}

}  // namespace ferrolund::simdata
