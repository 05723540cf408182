#pragma once
// frmConsistBuilder, "Saved Consists": the player's saved consists as one row a vehicle,
// above the stock to build them from (an asset index or a pool of wagons). Consists are
// made, edited or generated here and written back whole by Save.

#include <QDialog>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "app/app_context.h"
#include "consists/consist_builder.h"

class QAction;
class QLineEdit;
class QMenu;
class QPushButton;
class QTableWidget;

namespace ferrolund::screens {

class frmConsistBuilder : public QDialog {
    Q_OBJECT
public:
    // `builder` has been opened.
    frmConsistBuilder(app::AppContext& ctx, consists::ConsistBuilder builder, QWidget* parent = nullptr);

    consists::ConsistBuilder& builder() { return builder_; }
    QTableWidget* consistGrid() const { return vsfg_; }
    QTableWidget* stockGrid() const { return vsfg1_; }
    QLineEdit* searchBox() const { return search_; }
    QMenu* editMenu() const { return pop1_; }
    // A button or menu item by its name ("Command8", "mnuFlip", ...).
    QPushButton* button(const std::string& name) const;
    QAction* action(const std::string& name) const;
    // The source of the draws of "Generate Consist"; seeded from the clock unless set.
    void setRandomSource(consists::RandomSource random) { random_ = std::move(random); }

    void selectIndexFile();
    void loadPool();
    void generateConsist();
    void clearGrid();
    void addNewConsist();
    void addSelectedStock();
    void insertAfter(bool multiple);
    void replaceItems();
    void deleteItems();
    void flipItems();
    void renameConsist();
    void search();
    void searchStock();
    void save();

private:
    QPushButton* addButton(const std::string& name, const char* caption);
    QAction* addAction(QMenu* menu, const std::string& name, const char* caption);
    void fillConsists(const std::vector<std::size_t>& select = {});
    void fillStock();
    std::vector<std::size_t> selectedRows(const QTableWidget* grid) const;
    std::optional<std::size_t> currentRow(const QTableWidget* grid) const;
    void showRow(QTableWidget* grid, std::size_t row);

    app::AppContext& ctx_;
    consists::ConsistBuilder builder_;
    consists::RandomSource random_;
    QTableWidget* vsfg_ = nullptr;
    QTableWidget* vsfg1_ = nullptr;
    QLineEdit* search_ = nullptr;
    QMenu* pop1_ = nullptr;
    std::map<std::string, QPushButton*> buttons_;
    std::map<std::string, QAction*> actions_;
};

// The main menu's "Build or Edit Consists": asks whether to suppress the messages about
// missing stock, reads the saved consists and opens the screen, not modal, deleted when
// closed. Null when there is nothing to show (no file and none wanted, or an invalid one).
frmConsistBuilder* ShowConsistBuilder(app::AppContext& ctx, QWidget* parent);

}  // namespace ferrolund::screens
