#pragma once
// frmAssets, "Build List of Assets": the working list of the asset tools. It walks a
// folder under the game's Assets, lists what it finds in eight columns, saves the list
// as the asset index, and runs the checks and edits on the rows selected in it.

#include <QDialog>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "app/app_context.h"
#include "assets/asset_row.h"
#include "assets/asset_scan.h"
#include "assets/file_check.h"
#include "assets/stock_lights.h"
#include "assets/stock_transforms.h"
#include "assets/transform_frame.h"

class QAction;
class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QMenu;
class QProgressBar;
class QPushButton;
class QSpinBox;

namespace ferrolund::screens {

class AssetGrid;

class frmAssets : public QDialog {
    Q_OBJECT
public:
    explicit frmAssets(app::AppContext& ctx, QWidget* parent = nullptr);
    ~frmAssets() override;

    AssetGrid* grid() const { return grid_; }
    QPushButton* button(const std::string& name) const;
    QAction* action(const std::string& name) const;
    QLineEdit* folderBox() const { return folder_; }
    QComboBox* categoryBox() const { return category_; }
    QLineEdit* filterBox() const { return filter_; }
    QCheckBox* rollingStockBox() const { return rollingStock_; }
    QCheckBox* defaultFoldersBox() const { return defaultFolders_; }
    QCheckBox* excludePreLoadBox() const { return excludePreLoad_; }
    QListWidget* childList() const { return children_; }
    // The files the last walk could not list, and why.
    const std::vector<assets::ScanProblem>& lastProblems() const { return lastProblems_; }
    QLabel* preview() const { return preview_; }

    // The rows of the list as asset rows.
    assets::AssetRow row(std::size_t index) const;
    std::vector<std::size_t> selectedRows() const;

    void addToList();
    void findZeroLength();
    void listQuickDrive();
    void saveStockIndex();
    void deleteSelected();
    void showRow(int row);
    void changeName();
    void changeLods();
    void displayChildEntries();
    void removeChildEntries();
    void correctSmokeStack();
    void addLights(assets::LampKind kind);
    void addCabOcclusions(const std::string& classDigits);
    void checkFiles(assets::RowReport kind);
    void whereIsItUsed();
    // "Display Physics": the physics screen for the first selected row.
    void displayPhysics();
    void addLocoInformation();
    void processMissingAssets();
    void packageMissingAssets();

private:
    enum class ScanMode { List, ZeroLength, QuickDrive };
    void buildMenus();
    void buildButtons();
    QPushButton* addButton(const std::string& name, int langNumber, const std::string& fallback,
                           std::function<void()> command);
    QAction* addAction(QMenu* menu, const std::string& name, int langNumber, const std::string& fallback,
                       std::function<void()> command);
    std::string lang(int n, const std::string& fallback = {}) const;
    void runScan(ScanMode mode, const std::string& onlyFileName = {});
    void setRunning(bool on);
    std::vector<assets::AssetRow> selectedAssetRows() const;
    // The choices of the boxes above the list.
    assets::AssetFilter screenFilter() const;
    // Runs an edit over the selected rows; the rows written take their new cells.
    void runTransform(const std::function<assets::TransformOutcome(const std::vector<assets::AssetRow>&)>& transform);
    void showOutcome(const assets::TransformOutcome& outcome, const std::vector<std::size_t>& indices);
    std::vector<std::string> chosenChildren() const;
    void showMissingAssetCommands();
    // The command behind an entry of the Edit or Check Assets menu; empty for one that
    // is not part of this build.
    std::function<void()> editCommand(const std::string& name);
    std::function<void()> checkCommand(const std::string& name);
    // The command behind an entry of the Update Sounds menu or a script entry of the Edit menu.
    std::function<void()> soundCommand(const std::string& name);
    // The Edit menu's rolling-stock transforms that add, remove or set things.
    std::function<void()> stockCommand(const std::string& name);
    // The name dialog for a row, with `suffix` chosen first.
    assets::SaveAsAsk coachNameAsk(const std::string& suffix);
    void correctMassCapacity();
    void makeBetterSnow();
    // The command behind an entry of the Clone menu.
    std::function<void()> cloneCommand(const std::string& name);

    app::AppContext& ctx_;
    AssetGrid* grid_ = nullptr;
    QLineEdit* folder_ = nullptr;
    QComboBox* category_ = nullptr;
    QLineEdit* filter_ = nullptr;
    QCheckBox* rollingStock_ = nullptr;
    QCheckBox* defaultFolders_ = nullptr;
    QCheckBox* excludePreLoad_ = nullptr;
    QSpinBox* minLod_ = nullptr;
    QSpinBox* maxLod_ = nullptr;
    QListWidget* children_ = nullptr;
    QLabel* childrenTitle_ = nullptr;
    QLabel* preview_ = nullptr;
    QProgressBar* progress_ = nullptr;
    QPushButton* abort_ = nullptr;
    std::map<std::string, QPushButton*> buttons_;
    std::map<std::string, QAction*> actions_;
    bool readBlueprints_ = false;
    bool zeroLengthMode_ = false;
    bool runScanAfterDelete_ = false;
    std::vector<assets::ScanProblem> lastProblems_;
    std::vector<std::string> childNames_;  // as the blueprint holds them
};

// Opens the screen, for the main menu's "Asset Editor".
void ShowAssets(app::AppContext& ctx, QWidget* parent);

}  // namespace ferrolund::screens
