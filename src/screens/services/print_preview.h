#pragma once
// fEZPrint: the print preview of a grid. Each PrintSource has its orientation, font size
// and footer; printing to a PDF file works when no printer is installed.

#include <QString>

class QAbstractItemModel;
class QPrinter;
class QWidget;

namespace ferrolund::screens {

struct PrintLayout {
    bool wide = false;       // the wide page orientation
    int fontPoints = 0;      // 0 keeps the printer's own size
    QString footer;          // "<title>    Page n" at the right of each page
    bool titleInFooter = false;
};

// 2 report grid, 3 missing list, 5 asset lists, 6 scenario details, 8 providers,
// 15 the editor's route list, 77 a text list.
PrintLayout LayoutOf(int printSource);

// Draws the model's rows, heading first, page after page.
void RenderGrid(QPrinter& printer, const QAbstractItemModel& model, const PrintLayout& layout, const QString& title);

// Opens the preview (caption "Print Preview") of the grid.
void PrintPreviewGrid(QWidget* parent, const QAbstractItemModel& model, int printSource, const QString& title);

}  // namespace ferrolund::screens
