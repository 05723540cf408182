#pragma once
// What the route screens' grids share: a read-only grid of whole rows, rows of text in a
// colour, a cell's text, and the legend of the scenario classes.

#include <QColor>
#include <QStringList>
#include <cstdint>
#include <string>
#include <vector>

#include "routes/scenario_list.h"

class QHBoxLayout;
class QTableWidget;
class QWidget;

namespace ferrolund::screens {

// A grid whose rows are selected whole and cannot be edited, its last column stretched.
QTableWidget* MakeGrid(QWidget* parent, const char* name, const QStringList& headings);
// Appends a row of cells, in `colour` when one is given.
void AddRow(QTableWidget* grid, const std::vector<std::string>& cells, const QColor* colour = nullptr);
// The text of a cell, empty when it has none.
std::string Cell(const QTableWidget* grid, int row, int column);
// A legend colour, 0xRRGGBB.
QColor ColourOf(std::uint32_t rgb);
// One label a class, in its colour, named "Legend<n>" after the class.
void AddLegend(QWidget* parent, QHBoxLayout* row, const std::vector<routes::ScenarioKind>& kinds);

}  // namespace ferrolund::screens
