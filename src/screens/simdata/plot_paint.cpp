#include "screens/simdata/plot_paint.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QFont>
#include <QFontMetricsF>
#include <QImage>
#include <QPainter>
#include <QSvgGenerator>
#include <clocale>
#include <memory>

#include "tools/backup.h"
#include "tools/names.h"

namespace ferrolund::screens {

namespace {

QColor FrameFill() { return QColor(152, 245, 255); }
constexpr double kLabelGap = 4;      // between the frame and its labels
constexpr double kFontPixels = 12;   // the labels' size, in canvas units

QString Shown(const std::string& bytes) { return QString::fromStdString(tools::ShownText(bytes)); }

QFont PlotFont(bool bold = false) {
    QFont font;
    font.setPixelSize(static_cast<int>(kFontPixels));
    font.setBold(bold);
    return font;
}

void PaintGrid(QPainter& painter, const simdata::PlotArea& area, const simdata::PlotLimits& limits,
               double lineHeight) {
    painter.setPen(QPen(Qt::black, 0.5));
    for (const simdata::GridMark& mark : simdata::XGridMarks(area, limits)) {
        painter.drawLine(QPointF(mark.at, area.PlotTop), QPointF(mark.at, area.PlotBottom));
        const QRectF box(mark.at - 50, area.PlotBottom + kLabelGap, 100, lineHeight);
        painter.drawText(box, Qt::AlignHCenter | Qt::AlignTop, Shown(mark.label));
    }
    for (const simdata::GridMark& mark : simdata::YGridMarks(area, limits)) {
        painter.drawLine(QPointF(area.PlotLeft, mark.at), QPointF(area.PlotRight, mark.at));
        const QRectF box(0, mark.at - lineHeight / 2, area.PlotLeft - kLabelGap, lineHeight);
        painter.drawText(box, Qt::AlignRight | Qt::AlignVCenter, Shown(mark.label));
    }
}

void PaintLegend(QPainter& painter, const simdata::PlotArea& area, const simdata::PlotPicture& picture,
                 double lineHeight) {
    double y = area.PlotTop;
    const double x = area.PlotRight + 16;
    for (const simdata::PlotCurve& curve : picture.curves) {
        if (curve.legend.empty()) continue;
        painter.setPen(QPen(QColor(curve.red, curve.green, curve.blue), 3));
        painter.drawLine(QPointF(x, y + lineHeight / 2), QPointF(x + 24, y + lineHeight / 2));
        painter.setPen(Qt::black);
        painter.drawText(QRectF(x + 30, y, 1000, lineHeight), Qt::AlignLeft | Qt::AlignVCenter, Shown(curve.legend));
        y += lineHeight * 1.5;
    }
}

}  // namespace

void PaintPlot(QPainter& painter, const QSizeF& size, const simdata::PlotPicture& picture, bool withTitle) {
    painter.save();
    // The frame and the grid run along whole units: drawn sharp, without smoothing.
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setRenderHint(QPainter::TextAntialiasing, true);
    painter.fillRect(QRectF(QPointF(0, 0), size), Qt::white);
    const simdata::PlotArea area = simdata::LayOutPlot(size.width(), size.height());
    const QRectF frame(QPointF(area.PlotLeft, area.PlotTop), QPointF(area.PlotRight, area.PlotBottom));
    painter.setFont(PlotFont());
    const double lineHeight = QFontMetricsF(painter.font()).height();

    painter.setPen(QPen(Qt::black, 1));
    painter.setBrush(FrameFill());
    painter.drawRect(frame);
    painter.setBrush(Qt::NoBrush);
    PaintGrid(painter, area, picture.limits, lineHeight);

    painter.setPen(Qt::black);
    painter.setFont(PlotFont(true));
    const double xNameTop = area.PlotBottom + kLabelGap + lineHeight + kLabelGap;
    painter.drawText(QRectF(area.PlotLeft, xNameTop, frame.width(), lineHeight), Qt::AlignHCenter | Qt::AlignTop,
                     Shown(picture.xAxis));
    painter.drawText(QRectF(kLabelGap, area.PlotTop - lineHeight - kLabelGap, size.width(), lineHeight),
                     Qt::AlignLeft | Qt::AlignBottom, Shown(picture.yAxis));
    if (withTitle && !picture.title.empty()) {
        painter.drawText(QRectF(0, kLabelGap, size.width(), area.PlotTop - 2 * lineHeight - kLabelGap),
                         Qt::AlignHCenter | Qt::AlignVCenter, Shown(picture.title));
    }
    painter.setFont(PlotFont());
    PaintLegend(painter, area, picture, lineHeight);

    // Curves stay within the frame: a point above the limits is placed, but not drawn
    // over the labels.
    painter.setClipRect(frame.adjusted(-2, -2, 2, 2));
    painter.setRenderHint(QPainter::Antialiasing, true);
    for (const simdata::PlotCurve& curve : picture.curves) {
        painter.setPen(QPen(QColor(curve.red, curve.green, curve.blue), 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        for (const simdata::PlotSegment& line : simdata::CurveSegments(area, picture.limits, curve.xs, curve.ys))
            painter.drawLine(QPointF(line.from.x, line.from.y), QPointF(line.to.x, line.to.y));
    }
    painter.restore();
}

QByteArray PlotPng(const simdata::PlotPicture& picture, QSizeF size, double scale) {
    QImage image((size * scale).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale);
    {
        QPainter painter(&image);
        PaintPlot(painter, size, picture);
    }
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}

QByteArray PlotSvg(const simdata::PlotPicture& picture, QSizeF size) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QSvgGenerator svg;
    svg.setOutputDevice(&buffer);
    svg.setSize(size.toSize());
    svg.setViewBox(QRectF(QPointF(0, 0), size));
    svg.setTitle(Shown(picture.title));
    {
        QPainter painter(&svg);
        PaintPlot(painter, size, picture);
    }
    return bytes;
}

base::Status ExportPlot(const simdata::PlotPicture& picture, const std::string& path, PlotFormat format, double width,
                        double height) {
    // The application keeps the argument list for its life, and takes the options it
    // knows out of it: the list is made anew for each call and outlives the application.
    static char name[] = "ferrolund", option[] = "-platform", platform[] = "offscreen";
    char* argv[] = {name, option, platform, nullptr};
    int argc = 3;
    std::unique_ptr<QGuiApplication> session;
    if (!QCoreApplication::instance()) {
        session = std::make_unique<QGuiApplication>(argc, argv);
        // Numbers are read and written alike whatever the user's language.
        std::setlocale(LC_NUMERIC, "C");
    }
    const QSizeF size(width, height);
    const QByteArray bytes = format == PlotFormat::Svg ? PlotSvg(picture, size) : PlotPng(picture, size);
    if (bytes.isEmpty()) return base::err::PathFileAccess(path);
    std::string backup;
    return tools::WriteWithBackup(path, std::string_view(bytes.constData(), static_cast<std::size_t>(bytes.size())),
                                  tools::kBackupRule, backup);
}

}  // namespace ferrolund::screens
