#pragma once
// PlotXy's arithmetic: where the frame of a chart lies on its canvas, where the grid lines
// and their labels go, and where a point of a curve is drawn. Canvas units are
// device-independent pixels; the margins are the program's layout in twips, 15 to a pixel.
// The painting itself is the screens' business.

#include <optional>
#include <string>
#include <vector>

namespace ferrolund::simdata {

inline constexpr double kTwipsPerUnit = 15.0;
// The margins around the frame, in twips: PlotLeft, the space right of PlotRight, the
// space below PlotBottom, and PlotTop.
inline constexpr double kPlotLeftTwips = 1500, kPlotRightMarginTwips = 3500, kPlotBottomMarginTwips = 2500,
                        kPlotTopTwips = 1500;

// The frame on the canvas.
struct PlotArea {
    double PlotLeft = 0, PlotTop = 0, PlotRight = 0, PlotBottom = 0;
};

// The frame of a canvas of the given size, its right and bottom edges rounded to whole
// units. A canvas too small for the margins gets a frame
// of no width or height rather than a reversed one.
PlotArea LayOutPlot(double width, double height);

// The values at the frame's edges and the number of grid steps along each axis.
struct PlotLimits {
    double XMin = 0, XMax = 0, YMin = 0, YMax = 0;
    int XSteps = 10, YSteps = 10;
};

// The limits of a curve: FindMin and FindMax of each axis, 10 steps each.
PlotLimits LimitsOf(const std::vector<double>& xs, const std::vector<double>& ys);

// A grid line: its place along the axis, on the canvas, and its label ("0.00" for X,
// "0.0000" for Y).
struct GridMark {
    double at = 0;
    std::string label;
};

// The vertical lines, from PlotLeft (labelled XMin) to PlotRight (labelled XMax).
std::vector<GridMark> XGridMarks(const PlotArea& area, const PlotLimits& limits);
// The horizontal lines, from PlotTop (labelled YMax) down to PlotBottom (labelled YMin).
std::vector<GridMark> YGridMarks(const PlotArea& area, const PlotLimits& limits);

struct PlotPosition {
    double x = 0, y = 0;
};

struct PlotSegment {
    PlotPosition from, to;
};

// The walk of PlotPoint along one curve: each point is placed in the frame, and a line
// runs from the previous point to it; the first point only sets where the line starts.
class CurvePen {
public:
    CurvePen(const PlotArea& area, const PlotLimits& limits) : area_(area), limits_(limits) {}

    // A point below XMin or YMin is skipped, and so is every point of a curve whose
    // limits have no span on an axis (all values equal): such a curve cannot be scaled.
    // Gives the line to draw, if there is one.
    std::optional<PlotSegment> PlotPoint(double x, double y);

    // Where a point lies on the canvas, if it may be drawn at all (as above).
    static std::optional<PlotPosition> Place(const PlotArea& area, const PlotLimits& limits, double x, double y);

private:
    PlotArea area_;
    PlotLimits limits_;
    PlotPosition previous_;
    bool started_ = false;  // a previous position is set
};

// The lines of a whole curve, the points walked in the order given.
std::vector<PlotSegment> CurveSegments(const PlotArea& area, const PlotLimits& limits, const std::vector<double>& xs,
                                       const std::vector<double>& ys);

// The values under a canvas position inside the frame; nothing outside it or when an
// axis has no span.
std::optional<PlotPosition> ValuesAt(const PlotArea& area, const PlotLimits& limits, PlotPosition at);

// One curve to draw: the values, the colour and what the legend calls it.
struct PlotCurve {
    std::vector<double> xs, ys;
    unsigned char red = 0, green = 0, blue = 0;
    std::string legend;
};

// Everything a chart shows; the screens, the printer and the exports paint it alike.
struct PlotPicture {
    std::string title;   // above the frame; empty for none
    std::string xAxis;   // the axes' names
    std::string yAxis;
    PlotLimits limits;
    std::vector<PlotCurve> curves;
};

}  // namespace ferrolund::simdata
