#pragma once
// frmKickStart, the Scenario Editor: the "Scenario Details" of one scenario, its consists
// and the selected consist's stock. Every edit stays in the two texts until "Save Changes
// to Scenario" writes both files back through the scenario save, which keeps back-ups.

#include <QDialog>
#include <array>
#include <string>
#include <vector>

#include "app/app_context.h"
#include "scenarios/scenario_reader.h"
#include "scenarios/scenario_save.h"
#include "scenarios/scenario_texts.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QTableWidget;

namespace ferrolund::screens {

// "Set Weather": a blueprint of the weather folder, and "Blank Extension Blueprint".
class dlgWeather : public QDialog {
    Q_OBJECT
public:
    dlgWeather(app::AppContext& ctx, const std::string& folder, QWidget* parent = nullptr);
    // The chosen file's full path (a system path), empty when none is chosen.
    std::string chosenFile() const;
    bool blankExtension() const;
    QLineEdit* fileBox() const { return file_; }
    QCheckBox* blankBox() const { return blank_; }

private:
    QLineEdit* file_;
    QCheckBox* blank_;
};

class frmKickStart : public QDialog {
    Q_OBJECT
public:
    frmKickStart(app::AppContext& ctx, scenarios::ScenarioTexts texts, QWidget* parent = nullptr);

    QLineEdit* box(int n) const { return text1_[static_cast<std::size_t>(n)]; }
    QLineEdit* authorBox() const { return author_; }
    QLineEdit* startLocationBox() const { return startLocation_; }
    QTableWidget* consistGrid() const { return consists_; }
    QTableWidget* stockGrid() const { return stock_; }
    QPushButton* saveButton() const { return save_; }
    QPushButton* closeButton() const { return close_; }
    bool dirty() const { return dirty_; }
    const scenarios::ScenarioTexts& texts() const { return texts_; }
    std::vector<std::string>& preload() { return preload_; }

    // Box 3 left with Tab or Enter: every consist moves by the change of the time.
    void startTimeLeft();
    // An option of the class chosen; false when the question was cancelled.
    bool chooseClass(int option);
    // Applies what "Set Weather" gave.
    void applyWeather(const std::string& file, bool blankExtension);
    // Command1: true when both files were written (the screen then closes).
    bool saveChanges();
    void runRailWorks();
    // The details window of the selected stock row, opened or brought up to date.
    void showStockDetails();
    // cmdConsist: the selected consist added to the saved consists (frmKickStart_named.cpp).
    void saveNamedConsist();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void buildDetails(QWidget* page);
    void fillDetails();
    void fillConsists();
    void fillStock(int consist);
    void setClassOption(int option);
    void markDirty() { dirty_ = true; }
    void openWeatherDialog();
    std::string langText(int n, const std::string& fallback);

    app::AppContext& ctx_;
    scenarios::ScenarioTexts texts_;
    scenarios::ScenarioConsists read_;
    std::string loadedTime_;
    std::string scenarioClass_;
    std::string weatherRoot_;
    std::vector<std::string> preload_;
    bool dirty_ = false;
    bool saved_ = false;
    int classOption_ = -1;

    std::array<QLineEdit*, 15> text1_{};
    std::array<QRadioButton*, 5> classes_{};
    QLineEdit* author_ = nullptr;
    QLineEdit* startLocation_ = nullptr;
    QLabel* authorLabel_ = nullptr;
    QLabel* startLocationLabel_ = nullptr;
    QComboBox* season_ = nullptr;
    QCheckBox* allConsists_ = nullptr;
    QCheckBox* suppress_ = nullptr;
    QTableWidget* consists_ = nullptr;
    QTableWidget* stock_ = nullptr;
    QPushButton* save_ = nullptr;
    QPushButton* close_ = nullptr;
    QDialog* details_ = nullptr;
};

// Loads the scenario in `folder` (refusing a Quick Drive template, warning about a Career
// scenario) and opens the editor, not modal, deleted when closed; null when the scenario
// could not be opened (the user has been told why).
frmKickStart* ShowScenarioEditor(app::AppContext& ctx, QWidget* parent, const std::string& folder);

}  // namespace ferrolund::screens
