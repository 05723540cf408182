#pragma once
// frmFindLoco, "Find loco in routes": the scenarios of a route, the rolling stock they
// use, and the consists of Content\ConsistTemplates.bin checked against that stock.

#include <QDialog>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "app/app_context.h"
#include "routes/route_index.h"
#include "routes/scenario_list.h"

class QLabel;
class QListWidget;
class QPushButton;
class QTableWidget;

namespace ferrolund::screens {

class frmFindLoco : public QDialog {
    Q_OBJECT
public:
    frmFindLoco(app::AppContext& ctx, const routes::RouteIndex& routes, QWidget* parent = nullptr);

    QTableWidget* routes() const { return list1_; }
    QTableWidget* scenarios() const { return list3_; }
    QListWidget* results() const { return list2_; }
    QPushButton* button(const std::string& name) const;
    // The question of dlgNotInScenarios; tests answer it themselves.
    std::function<bool(bool& ignoreListed)> askIgnore;

    void listScenarios();  // Command1
    void listStock();      // Command15: the stock of every listed scenario, each once
    void checkConsists();  // Command2

private:
    void showLines(const std::vector<std::string>& lines);
    void setRunning(bool on);

    app::AppContext& ctx_;
    QTableWidget* list1_;
    QTableWidget* list3_;
    QListWidget* list2_;
    QLabel* label1_;
    std::map<std::string, QPushButton*> buttons_;
    std::vector<routes::ScenarioRow> listed_;
    std::vector<std::string> stock_;
    bool stockRead_ = false;
};

}  // namespace ferrolund::screens
