#pragma once
// frmAssetsAP, "Build List of Assets in .AP files": the .ap archives under a folder, the
// entries of the chosen one, and the asset list of the blueprints chosen among them,
// read straight out of the archive. The list can be saved, or appended to the index.

#include <QDialog>
#include <functional>
#include <string>

#include "app/app_context.h"
#include "assets/ap_assets.h"
#include "assets/clone_asset.h"

class QCheckBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;

namespace ferrolund::screens {

class AssetGrid;

class frmAssetsAP : public QDialog {
    Q_OBJECT
public:
    // `openInEditor` shows a file in the program's editor; without it "Open in Editor" is
    // greyed.
    frmAssetsAP(app::AppContext& ctx, std::function<void(const std::string&)> openInEditor = {},
                QWidget* parent = nullptr);

    AssetGrid* grid() const { return grid_; }
    QListWidget* archiveList() const { return archives_; }
    QListWidget* entryList() const { return entries_; }
    QLineEdit* folderBox() const { return folder_; }
    QLineEdit* entryFilterBox() const { return mask_; }
    QCheckBox* rollingStockBox() const { return rollingStock_; }
    QPushButton* button(const std::string& name) const;

    void findApFiles();
    void chooseArchive(int row);
    void addSelectedEntries();
    void openInEditor();

    // The selected rows as items to clone.
    std::vector<assets::CloneSource> cloneSources(assets::CloneLevel level) const;

private:
    QPushButton* addButton(const std::string& name, const std::string& caption, void (frmAssetsAP::*command)());
    void refilter();

    app::AppContext& ctx_;
    std::function<void(const std::string&)> openInEditor_;
    assets::ApAssetList list_;
    AssetGrid* grid_ = nullptr;
    QLineEdit* folder_ = nullptr;
    QLineEdit* mask_ = nullptr;
    QCheckBox* rollingStock_ = nullptr;
    QListWidget* archives_ = nullptr;
    QListWidget* entries_ = nullptr;
    QLabel* archiveLabel_ = nullptr;
    std::map<std::string, QPushButton*> buttons_;
};

void ShowAssetsAP(app::AppContext& ctx, QWidget* parent, std::function<void(const std::string&)> openInEditor);

}  // namespace ferrolund::screens
