#include "screens/routes/scenario_grid.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QTableWidget>

#include "screens/app/qt_text.h"

namespace ferrolund::screens {

QTableWidget* MakeGrid(QWidget* parent, const char* name, const QStringList& headings) {
    auto* grid = new QTableWidget(0, static_cast<int>(headings.size()), parent);
    grid->setObjectName(name);
    grid->setHorizontalHeaderLabels(headings);
    grid->setEditTriggers(QAbstractItemView::NoEditTriggers);
    grid->setSelectionBehavior(QAbstractItemView::SelectRows);
    grid->setSelectionMode(QAbstractItemView::ExtendedSelection);
    grid->verticalHeader()->hide();
    grid->verticalHeader()->setDefaultSectionSize(grid->fontMetrics().height() + 4);
    grid->horizontalHeader()->setStretchLastSection(true);
    return grid;
}

void AddRow(QTableWidget* grid, const std::vector<std::string>& cells, const QColor* colour) {
    const int row = grid->rowCount();
    grid->insertRow(row);
    for (std::size_t c = 0; c < cells.size() && static_cast<int>(c) < grid->columnCount(); ++c) {
        auto* item = new QTableWidgetItem(ToQt(cells[c]));
        if (colour) item->setForeground(*colour);
        grid->setItem(row, static_cast<int>(c), item);
    }
}

std::string Cell(const QTableWidget* grid, int row, int column) {
    const QTableWidgetItem* item = grid->item(row, column);
    return item ? FromQt(item->text()) : std::string();
}

QColor ColourOf(std::uint32_t rgb) { return QColor((rgb >> 16) & 0xff, (rgb >> 8) & 0xff, rgb & 0xff); }

void AddLegend(QWidget* parent, QHBoxLayout* row, const std::vector<routes::ScenarioKind>& kinds) {
    for (routes::ScenarioKind kind : kinds) {
        const routes::ScenarioLegend* entry = routes::LegendOf(kind);
        if (!entry) continue;
        auto* label = new QLabel(QString::fromLatin1(entry->label), parent);
        label->setObjectName(QString("Legend%1").arg(static_cast<int>(kind)));
        QPalette palette = label->palette();
        palette.setColor(QPalette::WindowText, ColourOf(entry->rgb));
        label->setPalette(palette);
        row->addWidget(label);
    }
}

}  // namespace ferrolund::screens
