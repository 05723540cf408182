#pragma once
// frmDelRoute, "Check Routes or Scenarios": the routes of the index in one grid, the
// scenarios of the selected route below it, coloured by class, and the route check.

#include <QDialog>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "app/app_context.h"
#include "routes/route_check_command.h"
#include "routes/route_index.h"
#include "routes/scenario_list.h"

class QAction;
class QGridLayout;
class QLabel;
class QMenu;
class QPlainTextEdit;
class QProgressBar;
class QPushButton;
class QTableWidget;

namespace ferrolund::screens {

class frmListRS;

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

    // What the areas whose commands stand on this screen build on.
    app::AppContext& context() const { return ctx_; }
    // A command button, placed after the others. A `locked` one is disabled while a long
    // run is under way.
    QPushButton* addCommand(const std::string& name, const std::string& caption, std::function<void()> run,
                            bool locked = true);
    // An entry of the "Miscellaneous" menu.
    QAction* addMiscCommand(const std::string& name, const std::string& caption, std::function<void()> run);
    // Long work: the commands locked, "&Abort" shown, the progress on this screen's bar,
    // AbortFlag cleared first. False, doing nothing, while another run is under way.
    bool runLong(const std::function<void()>& work);
    // The first selected route: name, folder, and the scenario folders of the lower grid
    // when it lists that route. False when no route is selected.
    bool selectedRoute(routes::CheckedRoute& route) const;
    // The selected rows of the lower grid that are scenarios, in row order.
    std::vector<routes::ScenarioRow> selectedScenarios() const;
    // Every scenario row of the lower grid.
    std::vector<routes::ScenarioRow> listedScenarios() const;
    // The routes of the grid, in its order.
    routes::RouteIndex listedRoutes() const;
    // Replaces the lower grid's rows.
    void showScenarios(const routes::ScenarioListing& listing);
    // A list on the report grid in the given mode, for the route named; saved first as
    // Reports\<route name><suffix> when the list has a suffix.
    frmListRS* showListing(const routes::CheckedRoute& route, const routes::ReportListing& listing, int mode);
    // The notes box under the lower grid; hidden when empty.
    void showNotes(const std::string& text);
    // "Items of Stock".
    void showStockCount(std::size_t count);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    QPushButton* addButton(const std::string& name, const std::string& caption);
    void setRunning(bool on);
    void showProgress(int percent, const std::string& caption);

    app::AppContext& ctx_;
    QTableWidget* list1_;
    QTableWidget* list3_;
    QLabel* label7_;
    QLabel* label9_;
    QLabel* label5_;
    QMenu* misc_;
    QGridLayout* buttonGrid_;
    int placed_ = 0;  // buttons in the grid
    QPlainTextEdit* notes_;
    QProgressBar* progress_;
    std::map<std::string, QPushButton*> buttons_;
    std::vector<QPushButton*> locked_;  // disabled while a run is under way
    routes::RouteCheckOutcome lastCheck_;
    bool running_ = false;

    class RunUi;
    friend class RunUi;
};

// Opens the screen, not modal; without a route index it says so and opens nothing.
frmDelRoute* ShowDelRoute(app::AppContext& ctx, QWidget* parent);

}  // namespace ferrolund::screens
