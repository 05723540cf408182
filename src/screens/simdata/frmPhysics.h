#pragma once
// frmPhysics, "Display Physics": the physics of one rail vehicle in two grids of named
// values, its blueprint above and its simulation blueprint below, edited in place in the
// Data column and saved back to each file on its own.

#include <QDialog>
#include <functional>
#include <string>

#include "app/app_context.h"
#include "simdata/physics_document.h"

class QLabel;
class QPushButton;
class QTableWidget;
class QTableWidgetItem;

namespace ferrolund::screens {

class frmPhysics : public QDialog {
    Q_OBJECT
public:
    // Opens the graphs of the vehicle's curves.
    using GraphsHandler =
        std::function<void(const std::string& locoName, bool steam, const simdata::CurveFiles& curves)>;

    // Shows a document that OpenPhysics has filled.
    frmPhysics(app::AppContext& ctx, simdata::PhysicsDocument doc, QWidget* parent = nullptr);

    // "Show Graphs" is enabled when a handler is set and the simulation grid is filled.
    void setGraphsHandler(GraphsHandler handler);

    QTableWidget* grid(simdata::PhysicsGrid which) const;
    QPushButton* button(const char* name) const;
    QLabel* nameLabel() const { return name_; }
    const simdata::PhysicsDocument& document() const { return doc_; }

    // "Add Simulation File to Grid" and "Steam Simulation": the simulation file into the
    // lower grid, after asking about unsaved edits.
    void addSimulation();
    // The two save buttons.
    void save(simdata::PhysicsGrid which);
    void showGraphs();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    QTableWidget* makeGrid(const char* name, simdata::PhysicsGrid which);
    void fill(simdata::PhysicsGrid which);
    void cellChanged(simdata::PhysicsGrid which, QTableWidgetItem* item);
    void enableCommands();

    app::AppContext& ctx_;
    simdata::PhysicsDocument doc_;
    GraphsHandler graphs_;
    QLabel* name_ = nullptr;
    QTableWidget* vsfg1_ = nullptr;
    QTableWidget* vsfg2_ = nullptr;
    QPushButton* addSim_ = nullptr;
    QPushButton* steamSim_ = nullptr;
    QPushButton* saveBlueprint_ = nullptr;
    QPushButton* saveSimulation_ = nullptr;
    QPushButton* graphsButton_ = nullptr;
    bool filling_ = false;
};

// Opens the screen for the blueprint at `path` (a system path); a file that is missing,
// unreadable or not a rail vehicle's blueprint is told instead, and nothing opens.
frmPhysics* ShowPhysics(app::AppContext& ctx, QWidget* parent, const std::string& path,
                        frmPhysics::GraphsHandler graphs = {});

}  // namespace ferrolund::screens
