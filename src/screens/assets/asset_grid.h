#pragma once
// The list that the asset screens share (the asset list, the .ap asset list, the content
// list): the grid over a ListGrid, and the commands they all offer on it: find, show
// all, select and unselect all, hide columns, clear, save, load, restore, print and copy.
// Each screen gives its columns and puts its own commands around it.

#include <QAbstractTableModel>
#include <QWidget>
#include <map>
#include <string>
#include <vector>

#include "app/app_context.h"
#include "assets/list_grid.h"

class QCheckBox;
class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTableView;
class QWidget;

namespace ferrolund::screens {

class ListGridModel : public QAbstractTableModel {
    Q_OBJECT
public:
    explicit ListGridModel(assets::ListGrid& grid, QObject* parent = nullptr)
        : QAbstractTableModel(parent), grid_(grid) {}
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    // Rows appended to the grid since the view last heard of it.
    void rowsAppended(std::size_t before);
    void refresh();

private:
    assets::ListGrid& grid_;
};

struct AssetGridSetup {
    std::vector<std::string> headings;
    std::vector<int> widthsTwips;     // one a column; missing ones are sized to content
    std::string langModule = "frmAssets";
    int printSource = 5;
    std::string printTitle;
};

class AssetGrid : public QWidget {
    Q_OBJECT
public:
    AssetGrid(app::AppContext& ctx, const AssetGridSetup& setup, QWidget* parent = nullptr);

    assets::ListGrid& grid() { return grid_; }
    QTableView* view() const { return view_; }
    QPushButton* button(const std::string& name) const;
    // The check boxes of "Hide Columns", in a row under the list.
    QGroupBox* hideColumnsBox() const { return hideBox_; }
    // The selected data rows, in row order.
    std::vector<std::size_t> selectedRows() const;
    void selectRows(const std::vector<std::size_t>& rows);
    // The list's own commands, off while a screen's long work runs; the list itself can
    // still be scrolled and read.
    void setCommandsEnabled(bool on);

    // The rows go on the end of the list and the totals follow; the view keeps its place.
    void appendRows(std::vector<std::vector<std::string>> rows);
    // After the screen changed the grid itself.
    void refresh();

    void findFirstInstance();
    void showAll();
    void selectAll();
    void unselectAll();
    void clearList();
    void saveList();
    void loadList();
    void restoreList();
    void printList();
    void copySelection();

signals:
    void rowClicked(int row);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    std::string lang(int n, const std::string& fallback) const;
    QPushButton* addButton(const std::string& name, int langNumber, const std::string& fallback);
    void showTotals();
    std::size_t findColumn() const;
    void applyWidths();

    app::AppContext& ctx_;
    AssetGridSetup setup_;
    assets::ListGrid grid_;
    ListGridModel* model_ = nullptr;
    QTableView* view_ = nullptr;
    QLineEdit* findText_ = nullptr;
    QComboBox* findColumn_ = nullptr;
    QLabel* total_ = nullptr;
    QLabel* selected_ = nullptr;
    QGroupBox* hideBox_ = nullptr;
    std::vector<QCheckBox*> hideChecks_;
    std::map<std::string, QPushButton*> buttons_;
};

// The "..." button beside a folder box: the folder chosen goes into the box, ending in '\'.
QPushButton* FolderButton(app::AppContext& ctx, QLineEdit* box, const std::string& title, QWidget* parent);

}  // namespace ferrolund::screens
