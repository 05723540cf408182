#pragma once
// frmGraphs' state: the performance curves of one locomotive, one of them loaded at a
// time into 21 pairs of boxes that the user may retype, redraw and write back.

#include <array>
#include <cstddef>
#include <string>

#include "base/run_context.h"
#include "simdata/curves.h"
#include "simdata/plot.h"

namespace ferrolund::simdata {

// The screen shows this many points of a curve; a save leaves later items as they were.
inline constexpr std::size_t kShownPoints = 21;

// The file's curve is drawn red, a retyped one green.
inline constexpr unsigned char kFileCurveColour[3] = {255, 0, 0};
inline constexpr unsigned char kRetypedCurveColour[3] = {0, 255, 0};
inline constexpr const char* kFileCurveLegend = "From the file";
inline constexpr const char* kRetypedCurveLegend = "Retyped";

class Graphs {
public:
    Graphs(std::string locoName, bool steam, CurveFiles files);

    // The curves of the locomotive's family, in the order of their buttons.
    std::array<int, 4> shownCurves() const;
    bool steam() const { return steam_; }
    const CurveFiles& files() const { return files_; }

    // Command1 to Command4, Command9 to Command12: reads the curve's file into the boxes
    // and draws it red. Without a file: "No <name>.dcsv file found for this loco"; a
    // malformed one: its message. Both leave the screen as it was and give false.
    bool loadCurve(base::RunContext& ctx, int curve);

    // Command7: the pairs of the boxes up to the first empty X, as numbers (text that is
    // not a number counts 0), set the limits and are drawn green over the file's red.
    void redraw();

    // Command8: the boxes' values go into the loaded file's items, the old file is kept
    // as ".bak", ".bak1", ... True when the file was written; a malformed value is told,
    // a failed write goes to the error log, and the file stays as it was.
    bool save(base::RunContext& ctx);

    // Command5: the empty frame, no label, empty boxes.
    void clear();

    // The texts of the boxes, X and Y; the screen keeps them up to date.
    std::array<std::string, kShownPoints> XValues;
    std::array<std::string, kShownPoints> YValues;

    const std::string& label() const { return label_; }
    // The loaded curve (0 to 7), or -1.
    int curve() const { return curve_; }
    const PlotPicture& picture() const { return picture_; }

private:
    void showFilePoints();
    void setRetyped(std::vector<double> xs, std::vector<double> ys);

    std::string locoName_;
    bool steam_;
    CurveFiles files_;
    int curve_ = -1;
    std::string text_;  // the loaded file, whole
    std::string label_;
    PlotCurve fileCurve_;
    PlotPicture picture_;
};

}  // namespace ferrolund::simdata
