#pragma once
// frmContent, "Build List of Content": the files under GameRoot\Content\Routes in the
// asset screens' shared grid, with the walk, zero-length, delete and "Save .bin grid"
// commands around it; a double click on a row's first column opens its file in
// frmEdCont. The logic is the ContentList model's; this form holds the widgets.

#include <QDialog>
#include <map>
#include <string>
#include <vector>

#include "app/app_context.h"
#include "assets/content_list.h"

class QLineEdit;
class QPushButton;

namespace ferrolund::screens {

class AssetGrid;
class frmEdCont;

class frmContent : public QDialog {
    Q_OBJECT
public:
    explicit frmContent(app::AppContext& ctx, QWidget* parent = nullptr);

    AssetGrid* grid() const { return grid_; }
    QPushButton* button(const std::string& name) const;
    QLineEdit* folder() const { return folder_; }

    void addToList();
    void findZeroLength();
    void deleteSelected();
    void saveBinGrid();
    // The file of a grid row: where the walk found it, else rebuilt from the cells.
    std::string rowFile(std::size_t row) const;
    // Opens the row's file in the small editor; null when it could not be opened.
    frmEdCont* openRow(std::size_t row);

private:
    QPushButton* addButton(const std::string& name, int langNumber, const std::string& fallback);
    std::string lang(int n, const std::string& fallback) const;
    // The model's rows of the grid, with the paths the walks found.
    std::vector<assets::ContentRow> gridRows() const;
    // The rows the model now holds go on the end of the grid.
    void takeRows();
    void running(bool on);

    app::AppContext& ctx_;
    assets::ContentList list_;
    std::map<std::string, std::string> paths_;  // the tab-joined cells of a walked row, to its file
    AssetGrid* grid_;
    QLineEdit* folder_;
    QPushButton* abort_;
    std::map<std::string, QPushButton*> buttons_;
};

// Opens the screen, not modal, deleted when closed.
frmContent* ShowContent(app::AppContext& ctx, QWidget* parent);

}  // namespace ferrolund::screens
