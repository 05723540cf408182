#include "simdata/graphs.h"

#include <algorithm>
#include <utility>

#include "simdata/dcsv.h"
#include "tools/files.h"

namespace ferrolund::simdata {

namespace {

std::string CurveName(int curve) {
    const std::string file = kCurves[static_cast<std::size_t>(curve)].file;
    return file.substr(0, file.rfind('.'));
}

PlotCurve Coloured(const unsigned char (&colour)[3], const char* legend) {
    PlotCurve curve;
    curve.red = colour[0];
    curve.green = colour[1];
    curve.blue = colour[2];
    curve.legend = legend;
    return curve;
}

}  // namespace

Graphs::Graphs(std::string locoName, bool steam, CurveFiles files)
    : locoName_(std::move(locoName)), steam_(steam), files_(std::move(files)) {
    clear();
}

std::array<int, 4> Graphs::shownCurves() const {
    return steam_ ? std::array<int, 4>{4, 5, 6, 7} : std::array<int, 4>{0, 1, 2, 3};
}

bool Graphs::loadCurve(base::RunContext& ctx, int curve) {
    if (curve < 0 || curve >= static_cast<int>(kCurveCount)) return false;
    const std::string& path = files_[static_cast<std::size_t>(curve)];
    if (path.empty() || !tools::FileExists(path)) {
        ctx.ui->message("No " + CurveName(curve) + ".dcsv file found for this loco", base::Icon::Exclamation);
        return false;
    }
    std::string text = tools::ReadTextFile(path);
    std::vector<DcsvPoint> points;
    if (std::string fault = ReadDcsvPoints(text, points); !fault.empty()) {
        ctx.ui->message(fault, base::Icon::Exclamation);
        return false;
    }
    XValues.fill({});
    YValues.fill({});
    for (std::size_t i = 0; i < std::min(points.size(), kShownPoints); ++i) {
        XValues[i] = points[i].x;
        YValues[i] = points[i].y;
    }
    const CurveInfo& info = kCurves[static_cast<std::size_t>(curve)];
    curve_ = curve;
    text_ = std::move(text);
    label_ = info.label + locoName_;
    picture_.xAxis = info.xAxis;
    picture_.yAxis = info.yAxis;
    showFilePoints();
    return true;
}

void Graphs::showFilePoints() {
    fileCurve_ = Coloured(kFileCurveColour, kFileCurveLegend);
    for (std::size_t i = 0; i < kShownPoints && !XValues[i].empty(); ++i) {
        fileCurve_.xs.push_back(DcsvNumber(XValues[i]));
        fileCurve_.ys.push_back(DcsvNumber(YValues[i]));
    }
    picture_.title = label_;
    picture_.limits = LimitsOf(fileCurve_.xs, fileCurve_.ys);
    picture_.curves = {fileCurve_};
}

void Graphs::redraw() {
    std::vector<double> xs, ys;
    for (std::size_t i = 0; i < kShownPoints && !XValues[i].empty(); ++i) {
        xs.push_back(DcsvNumber(XValues[i]));
        ys.push_back(DcsvNumber(YValues[i]));
    }
    setRetyped(std::move(xs), std::move(ys));
}

void Graphs::setRetyped(std::vector<double> xs, std::vector<double> ys) {
    picture_.limits = LimitsOf(xs, ys);
    picture_.curves.clear();
    if (!fileCurve_.xs.empty()) picture_.curves.push_back(fileCurve_);
    PlotCurve retyped = Coloured(kRetypedCurveColour, kRetypedCurveLegend);
    retyped.xs = std::move(xs);
    retyped.ys = std::move(ys);
    picture_.curves.push_back(std::move(retyped));
}

bool Graphs::save(base::RunContext& ctx) {
    if (curve_ < 0) return false;
    std::vector<DcsvPoint> points;
    for (std::size_t i = 0; i < kShownPoints; ++i) points.push_back({XValues[i], YValues[i]});
    std::string text = text_;
    if (std::string fault = PutDcsvPoints(text, points); !fault.empty()) {
        ctx.ui->message(fault, base::Icon::Exclamation);
        return false;
    }
    std::string backup;
    if (base::Status failed = WriteDcsvText(files_[static_cast<std::size_t>(curve_)], text, backup)) {
        ctx.report(*failed, "frmGraphs");
        return false;
    }
    text_ = std::move(text);
    // What the file now holds is the red curve from here on.
    std::vector<DcsvPoint> saved;
    ReadDcsvPoints(text_, saved);
    fileCurve_ = Coloured(kFileCurveColour, kFileCurveLegend);
    for (std::size_t i = 0; i < std::min(saved.size(), kShownPoints); ++i) {
        fileCurve_.xs.push_back(DcsvNumber(saved[i].x));
        fileCurve_.ys.push_back(DcsvNumber(saved[i].y));
    }
    std::vector<PlotCurve> curves;
    if (!fileCurve_.xs.empty()) curves.push_back(fileCurve_);
    for (PlotCurve& shown : picture_.curves)
        if (shown.legend == kRetypedCurveLegend) curves.push_back(std::move(shown));
    picture_.curves = std::move(curves);
    return true;
}

void Graphs::clear() {
    XValues.fill({});
    YValues.fill({});
    label_.clear();
    fileCurve_ = {};
    picture_ = {};
}

}  // namespace ferrolund::simdata
