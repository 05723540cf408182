#pragma once
// PlotXy: the chart of frmGraphs. It paints its picture through PaintPlot, which also
// serves the printer and the exports, and tells the values under the pointer.

#include <QString>
#include <QWidget>
#include <functional>

#include "simdata/plot.h"

namespace ferrolund::screens {

class PlotXy : public QWidget {
    Q_OBJECT
public:
    explicit PlotXy(QWidget* parent = nullptr);

    void setPicture(const simdata::PlotPicture& picture);
    const simdata::PlotPicture& picture() const { return picture_; }

    // Called with "X: 0.50  Y: 1200.0000" while the pointer is over the frame, and with an
    // empty text when it leaves it.
    std::function<void(const QString&)> showValues;
    // The text for a position on the widget; empty outside the frame.
    QString valuesAt(QPointF position) const;

    QSize sizeHint() const override { return {720, 480}; }
    QSize minimumSizeHint() const override { return {420, 320}; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    simdata::PlotPicture picture_;
};

}  // namespace ferrolund::screens
