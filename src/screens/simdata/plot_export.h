#pragma once
// A chart saved as a PNG picture or an SVG drawing. The header needs no Qt: the command
// line draws its charts through it.

#include <string>

#include "base/run_error.h"
#include "simdata/plot.h"

namespace ferrolund::screens {

enum class PlotFormat { Png, Svg };

// The size of an exported chart when none is asked for, in device-independent pixels.
inline constexpr int kPlotExportWidth = 960;
inline constexpr int kPlotExportHeight = 640;

// Writes the chart to `path` (a system path) with PaintPlot; a PNG is drawn at two pixels
// to a unit. An existing file is kept as its back-up (".bak", ".bak1", ...). Text needs
// Qt's application object: a process without one (the command line) gets one on the
// offscreen platform for the call.
base::Status ExportPlot(const simdata::PlotPicture& picture, const std::string& path, PlotFormat format,
                        double width = kPlotExportWidth, double height = kPlotExportHeight);

}  // namespace ferrolund::screens
