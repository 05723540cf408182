#include "cli/verb_dcsv.h"

#include <ostream>
#include <stdexcept>
#include <utility>

#include "cli/shared_options.h"
#include "screens/simdata/plot_export.h"
#include "simdata/curves.h"
#include "simdata/dcsv.h"
#include "simdata/dcsv_process.h"
#include "simdata/graphs.h"
#include "tools/files.h"
#include "tools/names.h"

namespace ferrolund::cli {

namespace {

constexpr const char* kUsage = "dcsv FILE [--png OUT] [--svg OUT] [--size WxH] [--process]";

int Usage(std::ostream& err) {
    err << "ferrolund-cli: usage: " << kUsage << "\n";
    return kExitUsage;
}

simdata::PlotPicture PictureOf(const std::string& file, const std::vector<simdata::DcsvPoint>& points) {
    simdata::PlotPicture picture;
    const std::size_t slash = file.find_last_of("\\/");
    picture.title = slash == std::string::npos ? file : file.substr(slash + 1);
    const int curve = simdata::CurveForFile(file);
    picture.xAxis = curve >= 0 ? simdata::kCurves[static_cast<std::size_t>(curve)].xAxis : "X";
    picture.yAxis = curve >= 0 ? simdata::kCurves[static_cast<std::size_t>(curve)].yAxis : "Y";
    simdata::PlotCurve line;
    line.red = simdata::kFileCurveColour[0];
    line.green = simdata::kFileCurveColour[1];
    line.blue = simdata::kFileCurveColour[2];
    line.legend = simdata::kFileCurveLegend;
    for (const simdata::DcsvPoint& point : points) {
        line.xs.push_back(simdata::DcsvNumber(point.x));
        line.ys.push_back(simdata::DcsvNumber(point.y));
    }
    picture.limits = simdata::LimitsOf(line.xs, line.ys);
    picture.curves.push_back(std::move(line));
    return picture;
}

bool ParseSize(const std::string& text, double& width, double& height) {
    const std::size_t x = text.find_first_of("xX");
    if (x == std::string::npos) return false;
    try {
        std::size_t used = 0;
        const int w = std::stoi(text.substr(0, x), &used);
        if (used != x) return false;
        const int h = std::stoi(text.substr(x + 1), &used);
        if (used != text.size() - x - 1 || w < 100 || h < 100 || w > 20000 || h > 20000) return false;
        width = w;
        height = h;
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

}  // namespace

int DcsvVerb(app::AppContext& ctx, const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    std::string file, png, svg;
    bool process = false;
    double width = screens::kPlotExportWidth, height = screens::kPlotExportHeight;
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string& arg = args[i];
        if (arg == "--png" || arg == "--svg" || arg == "--size") {
            if (++i == args.size()) return Usage(err);
            if (arg == "--png") png = args[i];
            if (arg == "--svg") svg = args[i];
            if (arg == "--size" && !ParseSize(args[i], width, height)) return Usage(err);
        } else if (arg == "--process") {
            process = true;
        } else if (arg.rfind("--", 0) == 0 || !file.empty()) {
            return Usage(err);
        } else {
            file = arg;
        }
    }
    if (file.empty()) return Usage(err);
    if (!tools::FileExists(file)) {
        err << tools::ShownText(file) << ": the file does not exist or cannot be read\n";
        return kExitFailed;
    }
    if (process) {
        const simdata::ProcessOutcome outcome = simdata::ProcessDcsv(ctx, {file});
        if (outcome.improved == 0) return kExitFailed;
    }
    std::vector<simdata::DcsvPoint> points;
    if (std::string fault = simdata::ReadDcsvPoints(tools::ReadTextFile(file), points); !fault.empty()) {
        err << tools::ShownText(file) << ": " << tools::ShownText(fault) << "\n";
        return kExitFailed;
    }
    if (png.empty() && svg.empty()) {
        if (!process) {
            for (const simdata::DcsvPoint& point : points)
                out << tools::ShownText(point.x) << "," << tools::ShownText(point.y) << "\n";
        }
        return kExitDone;
    }
    const simdata::PlotPicture picture = PictureOf(file, points);
    int code = kExitDone;
    const std::pair<const std::string*, screens::PlotFormat> targets[] = {{&png, screens::PlotFormat::Png},
                                                                          {&svg, screens::PlotFormat::Svg}};
    for (const auto& [target, format] : targets) {
        if (target->empty()) continue;
        if (const base::Status failed = screens::ExportPlot(picture, *target, format, width, height)) {
            err << tools::ShownText(*target) << ": " << tools::ShownText(failed->description) << "\n";
            code = kExitFailed;
            continue;
        }
        out << tools::ShownText(*target) << "\n";
    }
    return code;
}

}  // namespace ferrolund::cli
