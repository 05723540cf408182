#pragma once
// frmDelRoute, "Check Routes or Scenarios": the routes of the index in one grid, the
// scenarios of the selected route below it, coloured by class, and the route check.

#include <QDialog>
#include <map>
#include <string>
#include <vector>

#include "app/app_context.h"
#include "routes/route_check_command.h"
#include "routes/route_index.h"
#include "routes/scenario_list.h"

class QLabel;
class QPlainTextEdit;
class QProgressBar;
class QPushButton;
class QTableWidget;

namespace ferrolund::screens {

class frmDelRoute : public QDialog {
    Q_OBJECT
public:
    frmDelRoute(app::AppContext& ctx, QWidget* parent = nullptr);
    ~frmDelRoute() override;

    // Reads IndexFiles\RouteIndex.csv into the route grid; false when the file is missing.
    bool loadRoutes();

    QTableWidget* routes() const { return list1_; }
    QTableWidget* scenarios() const { return list3_; }
    QPushButton* button(const std::string& name) const;
    bool running() const { return running_; }

    // Command1, also run by a click on a route.
    void listScenarios();
    // Command26: the count of each class per route, on the report screen.
    void listClassTable();
    // Command12: every route with its scenarios, on the report screen.
    void printRouteList();
    // Command4: the check of the selected route, its lists on the report grid.
    void checkSelectedRoute();
    // Command2: the selected scenarios' folders deleted, after a question; the list again.
    void deleteScenarios();
    // Command20: the lower grid as comma-separated text, to a file chosen in AppRoot\Reports.
    void saveLowerGrid();
    // Command10: stops the running check between two files.
    void abortRun();

    // The outcome of the last check, as the grids were given it.
    const routes::RouteCheckOutcome& lastCheck() const { return lastCheck_; }

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    QPushButton* addButton(const std::string& name, const std::string& caption);
    void setRunning(bool on);
    void showProgress(int percent, const std::string& caption);
    void showScenarios(const routes::ScenarioListing& listing);
    // The first selected route: name, folder; false when none is selected.
    bool selectedRoute(std::string& name, std::string& folder) const;
    // The routes of the grid, in its order.
    routes::RouteIndex listedRoutes() const;
    void showListing(const std::string& routeName, const routes::ReportListing& listing);

    app::AppContext& ctx_;
    QTableWidget* list1_;
    QTableWidget* list3_;
    QLabel* label7_;
    QLabel* label9_;
    QPlainTextEdit* notes_;
    QProgressBar* progress_;
    std::map<std::string, QPushButton*> buttons_;
    std::vector<std::string> scenarioFolders_;  // the folder of each listed scenario, by row
    std::string listedRoute_;                   // the route whose scenarios the lower grid holds
    routes::RouteCheckOutcome lastCheck_;
    bool running_ = false;

    class RunUi;
    friend class RunUi;
};

// Opens the screen, not modal; without a route index it says so and opens nothing.
frmDelRoute* ShowDelRoute(app::AppContext& ctx, QWidget* parent);

}  // namespace ferrolund::screens
