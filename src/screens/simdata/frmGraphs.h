#pragma once
// frmGraphs: the performance curves of the locomotive open on the physics screen. One
// curve at a time is drawn from its .dcsv; its points can be retyped, redrawn against the
// file's curve and written back, and the chart printed or saved as PNG or SVG.

#include <QDialog>
#include <array>
#include <string>

#include "app/app_context.h"
#include "simdata/graphs.h"

class QLabel;
class QPrinter;
class QPushButton;
class QTableWidget;

namespace ferrolund::screens {

class PlotXy;

class frmGraphs : public QDialog {
    Q_OBJECT
public:
    frmGraphs(app::AppContext& ctx, const std::string& locoName, bool steam, const simdata::CurveFiles& files,
              QWidget* parent = nullptr);

    void loadCurve(int curve);  // Command1-Command4, Command9-Command12
    void redraw();              // Command7
    void save();                // Command8
    void clearAll();            // Command5
    void print();               // Command13
    void exportChart(bool svg);
    // Draws the chart, titled, on the printer's page.
    void printTo(QPrinter* printer) const;

    const simdata::Graphs& model() const { return model_; }
    PlotXy* plot() const { return plot_; }
    QTableWidget* points() const { return points_; }
    QLabel* label() const { return label_; }
    QLabel* pointerValues() const { return values_; }
    QPushButton* curveButton(int curve) const { return curveButtons_[static_cast<std::size_t>(curve)]; }

private:
    void showModel();
    void takeBoxes();
    // The picture with the curve's label as its title, for the printer and the exports.
    simdata::PlotPicture titledPicture() const;

    app::AppContext& ctx_;
    simdata::Graphs model_;
    std::array<QPushButton*, simdata::kCurveCount> curveButtons_{};
    QPushButton* saveButton_ = nullptr;
    QLabel* label_ = nullptr;
    QLabel* values_ = nullptr;
    QTableWidget* points_ = nullptr;
    PlotXy* plot_ = nullptr;
    bool filling_ = false;
};

// Opens the graphs of a locomotive as a window of its own: the physics screen's "Show
// Graphs". `files` holds each curve's .dcsv path, empty where the vehicle names none.
void ShowGraphs(app::AppContext& ctx, QWidget* parent, const std::string& locoName, bool steam,
                const simdata::CurveFiles& files);

}  // namespace ferrolund::screens
