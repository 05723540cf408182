#pragma once
// frmShowRoutes, "Select Route": the routes of the index, the scenarios of the chosen one
// coloured by class, and the commands on the selected scenarios: editing, details and
// Work Order (screens handed in), class changes, empty consists, revert, deletion, the
// player's CurrentSave.bin and the list of invalid scenarios.

#include <QDialog>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "app/app_context.h"
#include "routes/scenario_list.h"

class QLabel;
class QListWidget;
class QPushButton;
class QTableWidget;

namespace ferrolund::screens {

class frmListRS;

// The screens this one opens on a scenario folder (a system path). An empty one leaves
// its button greyed.
struct ScenarioScreens {
    std::function<void(const std::string& folder)> edit;                                // "Edit Selected Scenario"
    std::function<void(const std::string& folder, bool looseConsists)> details;         // with the loose consists' positions
    std::function<void(const std::string& folder)> workOrder;                          // "Display Work Order"
};

class frmShowRoutes : public QDialog {
    Q_OBJECT
public:
    frmShowRoutes(app::AppContext& ctx, ScenarioScreens screens, QWidget* parent = nullptr);
    ~frmShowRoutes() override;

    // The route grid from IndexFiles\RouteIndex.csv; false when the file is missing.
    bool loadRoutes();

    QTableWidget* routes() const { return list1_; }
    QTableWidget* scenarios() const { return list3_; }
    QListWidget* savedCopies() const { return file2_; }
    QPushButton* button(const std::string& name) const;
    // The route selected in the upper grid, its folder; empty when none.
    std::string selectedRoute() const;
    // The folders (system paths) of the selected scenario rows, in row order.
    std::vector<std::string> selectedScenarios() const;
    // The saved copy selected in the file list, a system path; empty when none.
    std::string selectedCopy() const;

    void listScenarios();
    void editScenario();
    void showDetails();
    void showWorkOrder();
    void deleteScenarios();
    void removeEmptyConsists();
    void makeStandard(bool timetable);
    void revertScenario();
    void revertRoute();
    void showSavedCopies();
    void saveCurrentSaveAs();
    void overwriteCurrentSave();
    void runWithSave();
    void extractProperties();
    void showInvalidScenarios();

private:
    QPushButton* addCommand(const std::string& name, const std::string& caption, std::function<void()> run);
    // The first selected scenario's folder; says so and gives empty when none is selected.
    std::string oneScenario();
    void tellRevert(int reverted, int deleted);

    app::AppContext& ctx_;
    ScenarioScreens screens_;
    QTableWidget* list1_;
    QTableWidget* list3_;
    QListWidget* file2_;
    QLabel* count_;
    std::string listedRoute_;    // the route whose scenarios List3 shows
    std::string copiesFolder_;   // the scenario whose saved copies File2 shows
    std::map<std::string, QPushButton*> buttons_;
};

// Opens the screen, not modal; without a route index it says so and opens nothing.
frmShowRoutes* ShowShowRoutes(app::AppContext& ctx, ScenarioScreens screens, QWidget* parent);

}  // namespace ferrolund::screens
