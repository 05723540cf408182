#pragma once
// frmNewAP, "Extract from .AP file": one .ap archive in a grid, a row an entry, with the
// extract and search commands of its menus and a pane that shows an entry's text. The
// archive and the commands' logic are the ApViewer model's; this form holds the widgets.

#include <QDialog>
#include <string>
#include <vector>

#include "app/app_context.h"
#include "archives/ap_viewer.h"

class QAction;
class QCheckBox;
class QLabel;
class QMenu;
class QPlainTextEdit;
class QPushButton;
class QTableView;

namespace ferrolund::screens {

class ApEntriesModel;

class frmNewAP : public QDialog {
    Q_OBJECT
public:
    // With `openAtLoad` (CommandSelectedAP of another screen) that archive is opened at once.
    frmNewAP(app::AppContext& ctx, const std::string& openAtLoad = {}, QWidget* parent = nullptr);
    ~frmNewAP() override;

    archives::ApViewer& viewer() { return viewer_; }
    QTableView* grid() const { return vsfg1_; }
    QAction* action(const std::string& name) const;
    // The entry indices of the selected rows, in order.
    std::vector<std::size_t> selectedEntries() const;

    void openArchive(const std::string& path);
    void chooseAndOpen();
    void closeArchive();
    void refresh();
    // The four extract commands.
    void extract(bool selectedOnly, bool toArchiveFolder);
    void findFile();
    void findFiles();
    void findApFiles();
    // "Open .bin" of the pop-up on a row: the entry's text in the pane.
    void viewRow(int row);
    // The pop-up a right click on a row opens ("Open .bin"), aimed at that row.
    QMenu* entryMenu(int row);

private:
    QAction* addAction(QMenu* menu, const char* name, const char* caption);
    void fill();
    void syncOptions();

    app::AppContext& ctx_;
    archives::ApViewer viewer_;
    ApEntriesModel* model_;
    QTableView* vsfg1_;
    QCheckBox* includeSub_;
    QCheckBox* fullPath_;
    QLabel* dirs_;
    QLabel* files_;
    QLabel* status_;
    QPlainTextEdit* text_;
    QPushButton* abort_;
    QMenu* apFiles_;   // mnuAPFiles
    int menuRow_ = -1;  // the row the pop-up was opened on
    std::vector<QAction*> actions_;
};

// Opens the screen, not modal, deleted when closed.
frmNewAP* ShowArchiveScreen(app::AppContext& ctx, QWidget* parent, const std::string& openAtLoad = {});

}  // namespace ferrolund::screens
