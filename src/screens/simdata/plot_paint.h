#pragma once
// PlotXy's painting: one routine draws a chart on any surface (the screen, the printer, a
// PNG picture, an SVG drawing), always as vector shapes in device-independent units, so
// it stays sharp at any resolution. It needs Qt's Gui only: the command line draws with
// it too.

#include <QByteArray>
#include <QSizeF>
#include <string>

#include "screens/simdata/plot_export.h"
#include "simdata/plot.h"

class QPainter;

namespace ferrolund::screens {

// Paints the chart on a canvas of `size` units from the painter's origin: the cleared
// canvas, the filled frame, the grid and its labels, the axes' names, the legend and the
// curves. The title is drawn above the frame when `withTitle` is set and there is one.
void PaintPlot(QPainter& painter, const QSizeF& size, const simdata::PlotPicture& picture, bool withTitle = true);

// The chart as a PNG picture of `size` units, drawn at `scale` pixels to a unit.
QByteArray PlotPng(const simdata::PlotPicture& picture, QSizeF size, double scale = 2.0);
// The chart as an SVG drawing of `size` units.
QByteArray PlotSvg(const simdata::PlotPicture& picture, QSizeF size);

}  // namespace ferrolund::screens
