// frmGraphs and PlotXy: the curve buttons of the family, the chart as drawn, the retyped
// points redrawn and saved, printing and the exports.
#include <QApplication>
#include <QImage>
#include <QLabel>
#include <QMouseEvent>
#include <QPrinter>
#include <QPushButton>
#include <QTableWidget>
#include <filesystem>
#include <gtest/gtest.h>

#include "screens/app/screen_fixture.h"
#include "core/simdata/dcsv_fixture.h"
#include "screens/simdata/PlotXy.h"
#include "screens/simdata/frmGraphs.h"
#include "screens/simdata/plot_paint.h"
#include "simdata/plot.h"

namespace ferrolund::screens {
namespace {

namespace fs = std::filesystem;

struct GraphsFixture : testing::ScreenFixture {
    simdata::CurveFiles files{};
    std::string put(int curve, const std::string& text) {
        const std::string relative =
            "RailWorks/Assets/Ostvale/Lokomotivé/Simulation/" + std::string(simdata::kCurves[static_cast<std::size_t>(curve)].file);
        files[static_cast<std::size_t>(curve)] = root.write(relative, text).string();
        return relative;
    }
};

// Pixels of the colour in the image, or only within the rectangle when one is given.
int CountPixels(const QImage& image, QRgb colour, QRect within = {}) {
    if (within.isNull()) within = image.rect();
    int count = 0;
    for (int y = within.top(); y <= within.bottom(); ++y)
        for (int x = within.left(); x <= within.right(); ++x)
            if ((image.pixel(x, y) & 0xffffff) == (colour & 0xffffff)) ++count;
    return count;
}

QImage Shot(QWidget& widget) { return widget.grab().toImage().convertToFormat(QImage::Format_RGB32); }

TEST(frmGraphs, ShowsTheButtonsOfTheLocosFamily) {
    GraphsFixture f;
    for (bool steam : {false, true}) {
        frmGraphs screen(f.ctx, "Loco", steam, f.files);
        screen.show();
        for (int curve = 0; curve < 8; ++curve) {
            EXPECT_EQ(screen.curveButton(curve)->isVisible(), (curve >= 4) == steam) << curve;
            EXPECT_EQ(screen.curveButton(curve)->objectName(),
                      QString("Command%1").arg(curve < 4 ? curve + 1 : curve + 5));
        }
        EXPECT_FALSE(screen.findChild<QPushButton*>("Command8")->isEnabled());
        screen.findChild<QPushButton*>(steam ? "Command11" : "Command2")->click();
    }
    EXPECT_EQ(f.ui.texts(), (std::vector<std::string>{"No DynamicBrakeEffortVsSpeed.dcsv file found for this loco",
                                                      "No TractiveEffortLinearVsSpeed.dcsv file found for this loco"}));
}

TEST(frmGraphs, DrawsRetypesRedrawsAndSaves) {
    GraphsFixture f;
    const std::string file = f.put(0, testing::DcsvText({{"0", "0"}, {"0.25", "120000"}, {"0.5", "180000"},
                                                         {"0.75", "210000"}, {"1", "220000"}}));
    frmGraphs screen(f.ctx, "Ostvale Class 58 Gärtner", false, f.files);
    screen.show();
    screen.findChild<QPushButton*>("Command1")->click();
    EXPECT_EQ(screen.label()->text(), QString::fromUtf8("TractiveEffortVsThrottle Data for Ostvale Class 58 Gärtner"));
    EXPECT_EQ(screen.points()->item(1, 1)->text(), "120000");
    EXPECT_EQ(screen.points()->item(5, 0)->text(), "");
    EXPECT_TRUE(screen.findChild<QPushButton*>("Command8")->isEnabled());

    QImage chart = Shot(*screen.plot());
    const simdata::PlotArea area = simdata::LayOutPlot(screen.plot()->width(), screen.plot()->height());
    EXPECT_GT(CountPixels(chart, qRgb(152, 245, 255)), 1000);
    EXPECT_GT(CountPixels(chart, qRgb(255, 0, 0)), 50);
    EXPECT_EQ(CountPixels(chart, qRgb(0, 255, 0)), 0);
    // The frame's outline: black along its left and bottom edges, away from the curve.
    const int left = static_cast<int>(area.PlotLeft), bottom = static_cast<int>(area.PlotBottom);
    for (int along = 3; along < 12; ++along) {
        EXPECT_EQ(chart.pixel(left, static_cast<int>(area.PlotTop) + along) & 0xffffff, 0u) << along;
        EXPECT_EQ(chart.pixel(left + along, bottom) & 0xffffff, 0u) << along;
        EXPECT_EQ(chart.pixel(left + along, static_cast<int>(area.PlotTop) + along), qRgb(152, 245, 255)) << along;
    }
    testing::Screenshot(screen, "frmGraphs");

    screen.points()->item(1, 1)->setText("60000");
    screen.findChild<QPushButton*>("Command7")->click();
    chart = Shot(*screen.plot());
    EXPECT_GT(CountPixels(chart, qRgb(0, 255, 0)), 50);
    testing::Screenshot(screen, "frmGraphs_redrawn");

    screen.findChild<QPushButton*>("Command8")->click();
    EXPECT_TRUE(f.ui.shown.empty());
    EXPECT_NE(f.root.read(file).find(">60000</Y>"), std::string::npos);
    EXPECT_NE(f.root.read(file + ".bak").find(">120000</Y>"), std::string::npos);

    screen.findChild<QPushButton*>("Command5")->click();
    EXPECT_EQ(screen.label()->text(), "");
    EXPECT_EQ(screen.points()->item(0, 0)->text(), "");
    chart = Shot(*screen.plot());
    EXPECT_EQ(CountPixels(chart, qRgb(255, 0, 0)), 0);
    EXPECT_GT(CountPixels(chart, qRgb(152, 245, 255)), 1000);
}

TEST(frmGraphs, AFlatCurveDrawsTheFrameOnly) {
    GraphsFixture f;
    f.put(3, testing::DcsvText({{"0", "1"}, {"0.5", "1"}, {"1", "1"}}));
    frmGraphs screen(f.ctx, "Loco", false, f.files);
    screen.show();
    screen.loadCurve(3);
    const QImage chart = Shot(*screen.plot());
    const simdata::PlotArea area = simdata::LayOutPlot(screen.plot()->width(), screen.plot()->height());
    const QRect frame(QPoint(static_cast<int>(area.PlotLeft), static_cast<int>(area.PlotTop)),
                      QPoint(static_cast<int>(area.PlotRight), static_cast<int>(area.PlotBottom)));
    EXPECT_EQ(CountPixels(chart, qRgb(255, 0, 0), frame), 0);  // the legend alone is red
    EXPECT_GT(CountPixels(chart, qRgb(152, 245, 255)), 1000);
    EXPECT_TRUE(f.ui.shown.empty());
}

TEST(frmGraphs, TellsTheValuesUnderThePointerAndFollowsItsSize) {
    GraphsFixture f;
    f.put(0, testing::DcsvText({{"0", "0"}, {"1", "1000"}}));
    frmGraphs screen(f.ctx, "Loco", false, f.files);
    screen.show();
    screen.loadCurve(0);
    PlotXy* plot = screen.plot();
    const simdata::PlotArea area = simdata::LayOutPlot(plot->width(), plot->height());
    const QPointF corner(area.PlotLeft, area.PlotTop);
    QMouseEvent move(QEvent::MouseMove, corner, plot->mapToGlobal(corner), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(plot, &move);
    EXPECT_EQ(screen.pointerValues()->text(), "X: 0.00  Y: 1000.0000");
    EXPECT_EQ(plot->valuesAt(QPointF(2, 2)), "");

    const int before = plot->width();
    screen.resize(screen.width() + 300, screen.height() + 200);
    QApplication::processEvents();
    EXPECT_GT(plot->width(), before);
}

TEST(frmGraphs, PrintsAfterTheLandscapeQuestionAndExports) {
    GraphsFixture f;
    f.put(0, testing::DcsvText({{"0", "0"}, {"0.5", "150000"}, {"1", "200000"}}));
    frmGraphs screen(f.ctx, "Class 58 Gärtner", false, f.files);
    screen.show();
    screen.loadCurve(0);

    f.ui.answers.push_back(base::Answer::Cancel);
    screen.findChild<QPushButton*>("Command13")->click();
    ASSERT_EQ(f.ui.shown.size(), 1u);
    EXPECT_EQ(f.ui.shown[0].text, "You must switch your printer to Landscape format\r\nbefore using this option.");
    EXPECT_TRUE(f.ui.shown[0].question);

    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setPageOrientation(QPageLayout::Landscape);
    const fs::path pdf = f.root.path() / "chart.pdf";
    printer.setOutputFileName(QString::fromStdString(pdf.string()));
    screen.printTo(&printer);
    EXPECT_GT(fs::file_size(pdf), 1000u);

    const fs::path png = f.root.path() / "Bilder" / "Kurvé";
    fs::create_directories(png.parent_path());
    f.ui.files.push_back(png.string());
    screen.findChild<QPushButton*>("cmdSavePng")->click();
    const std::string pngBytes = f.root.read("Bilder/Kurvé.png");
    EXPECT_EQ(pngBytes.substr(1, 3), "PNG");
    QImage picture;
    ASSERT_TRUE(picture.loadFromData(reinterpret_cast<const uchar*>(pngBytes.data()), static_cast<int>(pngBytes.size())));
    EXPECT_EQ(picture.width(), 2 * kPlotExportWidth);  // drawn at twice the units: sharp on fine screens

    f.ui.files.push_back((f.root.path() / "Bilder" / "Kurvé.svg").string());
    screen.findChild<QPushButton*>("cmdSaveSvg")->click();
    const std::string svg = f.root.read("Bilder/Kurvé.svg");
    for (const char* text : {"Throttle", "Tractive Effort", "200000.0000", "0.50", "From the file", "Gärtner"})
        EXPECT_NE(svg.find(text), std::string::npos) << text;
    EXPECT_EQ(f.ui.shown.size(), 1u);
}

TEST(frmGraphs, ShowGraphsOpensAWindowOfItsOwn) {
    GraphsFixture f;
    ShowGraphs(f.ctx, nullptr, "Loco", true, f.files);
    frmGraphs* shown = nullptr;
    for (QWidget* widget : QApplication::topLevelWidgets())
        if (auto* graphs = qobject_cast<frmGraphs*>(widget); graphs && graphs->isVisible()) shown = graphs;
    ASSERT_NE(shown, nullptr);
    EXPECT_TRUE(shown->model().steam());
    QPointer<frmGraphs> watch(shown);
    shown->close();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(watch.isNull());
}

}  // namespace
}  // namespace ferrolund::screens
