#include "screens/services/print_preview.h"

#include <QAbstractItemModel>
#include <QFontMetrics>
#include <QPainter>
#include <QPrintPreviewDialog>
#include <QPrinter>

namespace ferrolund::screens {

PrintLayout LayoutOf(int printSource) {
    PrintLayout layout;
    layout.wide = printSource == 2 || printSource == 3 || printSource == 5 || printSource == 6;
    if (printSource == 2 || printSource == 3 || printSource == 5) layout.fontPoints = 8;
    if (printSource == 77) layout.fontPoints = 12;
    layout.footer = "Page %1";
    layout.titleInFooter = printSource == 8 || printSource == 15;
    return layout;
}

void RenderGrid(QPrinter& printer, const QAbstractItemModel& model, const PrintLayout& layout, const QString& title) {
    printer.setPageOrientation(layout.wide ? QPageLayout::Landscape : QPageLayout::Portrait);
    QPainter painter(&printer);
    if (!painter.isActive()) return;
    QFont font("MS Serif");
    font.setStyleHint(QFont::Serif);
    if (layout.fontPoints > 0) font.setPointSize(layout.fontPoints);
    painter.setFont(font);
    const QFontMetrics metrics(font, painter.device());
    const QRect page = painter.viewport().adjusted(0, 0, 0, 0);
    const int lineHeight = metrics.height() + 2;
    const int footerTop = page.height() - lineHeight;
    const int columns = model.columnCount();
    // Column widths from the widest text, shared out over the page's width.
    std::vector<int> widths(static_cast<std::size_t>(columns), metrics.horizontalAdvance("MMMM"));
    for (int c = 0; c < columns; ++c) {
        widths[static_cast<std::size_t>(c)] = std::max(widths[static_cast<std::size_t>(c)],
            metrics.horizontalAdvance(model.headerData(c, Qt::Horizontal).toString()) + 12);
        for (int r = 0; r < std::min(model.rowCount(), 500); ++r) {
            widths[static_cast<std::size_t>(c)] = std::max(
                widths[static_cast<std::size_t>(c)], metrics.horizontalAdvance(model.index(r, c).data().toString()) + 12);
        }
    }
    int total = 0;
    for (int w : widths) total += w;
    const double scale = total > page.width() ? static_cast<double>(page.width()) / total : 1.0;
    int pageNumber = 1;
    auto footer = [&] {
        QString text = layout.footer.arg(pageNumber);
        if (layout.titleInFooter) text = title + "    " + text;
        painter.drawText(QRect(0, footerTop, page.width(), lineHeight), Qt::AlignRight | Qt::AlignVCenter, text);
    };
    auto line = [&](int y, const std::function<QString(int)>& textOf, bool bold) {
        QFont f = font;
        f.setBold(bold);
        painter.setFont(f);
        int x = 0;
        for (int c = 0; c < columns; ++c) {
            const int w = static_cast<int>(widths[static_cast<std::size_t>(c)] * scale);
            painter.drawText(QRect(x, y, w - 4, lineHeight), Qt::AlignLeft | Qt::AlignVCenter,
                             metrics.elidedText(textOf(c), Qt::ElideRight, w - 4));
            x += w;
        }
        painter.setFont(font);
    };
    auto heading = [&](int y) { line(y, [&](int c) { return model.headerData(c, Qt::Horizontal).toString(); }, true); };
    int y = 0;
    heading(y);
    y += lineHeight;
    for (int r = 0; r < model.rowCount(); ++r) {
        if (y + lineHeight > footerTop) {
            footer();
            printer.newPage();
            ++pageNumber;
            y = 0;
            heading(y);
            y += lineHeight;
        }
        line(y, [&](int c) { return model.index(r, c).data().toString(); }, false);
        y += lineHeight;
    }
    footer();
}

void PrintPreviewGrid(QWidget* parent, const QAbstractItemModel& model, int printSource, const QString& title) {
    QPrinter printer(QPrinter::HighResolution);
    const PrintLayout layout = LayoutOf(printSource);
    printer.setPageOrientation(layout.wide ? QPageLayout::Landscape : QPageLayout::Portrait);
    if (printer.printerName().isEmpty()) printer.setOutputFormat(QPrinter::PdfFormat);
    QPrintPreviewDialog dialog(&printer, parent);
    dialog.setObjectName("fEZPrint");
    dialog.setWindowTitle("Print Preview");
    QObject::connect(&dialog, &QPrintPreviewDialog::paintRequested, &dialog,
                     [&](QPrinter* p) { RenderGrid(*p, model, layout, title); });
    dialog.exec();
}

}  // namespace ferrolund::screens
