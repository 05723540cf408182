#pragma once
// frmScenario, "Scenario Details": a scenario's properties, its services and the report
// of every consist (service, origin, times, stops, instructions) in a two-column grid.
// Only the "Standard Scenario" / "Timetable Scenario" pair changes anything: the
// Timetabled flags of the scenario text held by the screen.

#include <QDialog>
#include <array>
#include <string>

#include "app/app_context.h"
#include "scenarios/scenario_report.h"
#include "scenarios/scenario_texts.h"

class QLineEdit;
class QListWidget;
class QPushButton;
class QRadioButton;
class QTableWidget;

namespace ferrolund::screens {

class frmScenario : public QDialog {
    Q_OBJECT
public:
    frmScenario(app::AppContext& ctx, scenarios::ScenarioTexts texts, const scenarios::ReportOptions& options,
                QWidget* parent = nullptr);

    QTableWidget* grid() const { return vsfg1_; }
    QListWidget* services() const { return list1_; }
    QLineEdit* field(int index) const { return text1_.at(static_cast<std::size_t>(index)); }
    QLineEdit* playersConsist() const { return players_; }
    // The vehicles of the driven consist: name, and a reskin's asset as Provider/Product/BlueprintID.
    QListWidget* playersStock() const { return stock_; }
    QRadioButton* standardOption() const { return option_[0]; }
    QRadioButton* timetableOption() const { return option_[1]; }
    bool timetableFlag() const { return timetable_; }
    // The texts as the screen holds them, the Timetabled flags as last chosen.
    const scenarios::ScenarioTexts& texts() const { return texts_; }

    // The option pair: Timetable asks first and sets every flag to 1; Standard sets them to 0.
    void chooseTimetable(bool timetable);
    // "Save to Excel": the grid to a .csv, .txt or .xls file chosen in AppRoot\Reports.
    void saveGrid();
    // The right mouse button on a cell: the whole cell in a small text window.
    void showCell(int row, int column);
    void print();

private:
    void fillFields();
    void fillConsists();
    void fillReport(const scenarios::ReportOptions& options);

    app::AppContext& ctx_;
    scenarios::ScenarioTexts texts_;
    bool timetable_ = false;
    std::array<QLineEdit*, 12> text1_{};
    QLineEdit* players_;
    QListWidget* stock_;
    QListWidget* list1_;
    QTableWidget* vsfg1_;
    std::array<QRadioButton*, 2> option_{};
};

// "Display Details of Selected Scenario", once the route screen has asked whether loose
// consists are to be listed and found the Scenario.bin: reads the scenario and shows the
// screen modally. A scenario that cannot be read is told and not shown.
void ShowScenarioDetails(app::AppContext& ctx, QWidget* parent, const std::string& routeFolder,
                         const std::string& scenarioFolder, bool includeLoose);

}  // namespace ferrolund::screens
