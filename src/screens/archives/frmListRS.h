#pragma once
// frmListRS, "Report": the grid on which the program's lists end. The rows and the
// commands' logic are the ReportGrid model's; this form holds the widgets.

#include <QDialog>
#include <functional>
#include <map>
#include <string>

#include "app/app_context.h"
#include "archives/report_grid.h"
#include "routes/tile_edit_command.h"

class QLabel;
class QLineEdit;
class QPushButton;
class QTableView;

namespace ferrolund::screens {

class ReportGridModel;

class frmListRS : public QDialog {
    Q_OBJECT
public:
    // Takes over the grid the caller made (its mode, heading and rows).
    frmListRS(app::AppContext& ctx, archives::ReportGrid grid, QWidget* parent = nullptr);
    ~frmListRS() override;

    archives::ReportGrid& grid() { return grid_; }
    QTableView* list() const { return list1_; }
    QPushButton* button(const std::string& name) const;
    // The selected rows, and their first column, in row order.
    std::vector<std::size_t> selectedRows() const;
    std::vector<std::string> selectedItems() const;
    // What "Substitute existing scenery item" asks with; dlgMissShape, modal, unless set.
    void setSubstituteDialog(routes::AskSubstitute ask);

    void removeDupes();
    void checkMissing();
    void listProviders();
    void findNext();
    void saveList();
    void loadCsv();
    void clearGrid();
    void printList();
    void selectMainContent();
    void copyRow(int row);
    // "Check Loco for missing files": the blueprints of the selected rows, reported on
    // the report screen.
    void checkLoco();
    // The commands on the route the list came from.
    void substituteItem();
    void removeItems(int kind);
    void fixProviders();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    QPushButton* addButton(const std::string& name, const std::string& caption);
    void addArchiveCommands();
    void showCount();
    // Long work with the commands locked and "&Abort" at hand.
    void runLong(const std::function<void()>& work);

    app::AppContext& ctx_;
    archives::ReportGrid grid_;
    ReportGridModel* model_;
    QTableView* list1_;
    QLabel* label4_;
    QLineEdit* text1_;
    QPushButton* abort_ = nullptr;
    bool running_ = false;
    routes::AskSubstitute askSubstitute_;
    std::map<std::string, QPushButton*> buttons_;
};

// Opens the grid, not modal, deleted when closed.
frmListRS* ShowReportGrid(app::AppContext& ctx, QWidget* parent, archives::ReportGrid grid);

}  // namespace ferrolund::screens
