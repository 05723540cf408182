#pragma once
// frmMissList, "Missing Rolling Stock in All Scenarios": the rows route, scenario,
// blueprint that "List Stock missing in all scenarios" gathers in TempFiles\Test.csv,
// loaded, saved, cleared and rid of repeated rows.

#include <QDialog>
#include <map>
#include <string>
#include <vector>

#include "app/app_context.h"

class QLabel;
class QPushButton;
class QTableWidget;

namespace ferrolund::screens {

class frmMissList : public QDialog {
    Q_OBJECT
public:
    // Shows the rows of TempFiles\Test.csv when that file exists.
    frmMissList(app::AppContext& ctx, QWidget* parent = nullptr);

    QTableWidget* grid() const { return list1_; }
    QPushButton* button(const std::string& name) const;

    // The rows of a comma-separated text replace the grid's; a first line that is the
    // grid's own heading row (as "Save" writes it) is not a row.
    void showCsv(const std::string& text);
    void loadCsv();           // Command4, "Load CSV"
    void saveGrid();          // Command5
    void removeDuplicates();  // Command1, "Remove Duplicate Rows"
    void clearGrid();         // Command3, "Clear Grid"

private:
    std::vector<std::vector<std::string>> rows() const;
    void setRows(const std::vector<std::vector<std::string>>& rows);

    app::AppContext& ctx_;
    QTableWidget* list1_;
    QLabel* label2_;
    std::map<std::string, QPushButton*> buttons_;
};

}  // namespace ferrolund::screens
