#include "screens/simdata/PlotXy.h"

#include <QMouseEvent>
#include <QPainter>

#include "screens/simdata/plot_paint.h"
#include "tools/vb_format.h"

namespace ferrolund::screens {

PlotXy::PlotXy(QWidget* parent) : QWidget(parent) {
    setObjectName("PlotXy");
    setMouseTracking(true);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void PlotXy::setPicture(const simdata::PlotPicture& picture) {
    picture_ = picture;
    update();
}

QString PlotXy::valuesAt(QPointF position) const {
    const simdata::PlotArea area = simdata::LayOutPlot(width(), height());
    const auto values = simdata::ValuesAt(area, picture_.limits, {position.x(), position.y()});
    if (!values) return {};
    return QString::fromStdString("X: " + tools::FormatNumber(values->x, "0.00") +
                                  "  Y: " + tools::FormatNumber(values->y, "0.0000"));
}

void PlotXy::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    // The screen names the curve in its label above the chart.
    PaintPlot(painter, size(), picture_, false);
}

void PlotXy::mouseMoveEvent(QMouseEvent* event) {
    if (showValues) showValues(valuesAt(event->position()));
    QWidget::mouseMoveEvent(event);
}

void PlotXy::leaveEvent(QEvent* event) {
    if (showValues) showValues({});
    QWidget::leaveEvent(event);
}

}  // namespace ferrolund::screens
