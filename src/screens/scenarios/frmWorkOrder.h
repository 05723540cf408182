#pragma once
// frmWorkOrder, "Work Order": the job sheet of a shunting scenario in a rich text box,
// with a font list, sizes and colours for the selected text, print and save as text.

#include <QDialog>
#include <string>
#include <vector>

#include "app/app_context.h"

class QComboBox;
class QFontComboBox;
class QTextEdit;

namespace ferrolund::screens {

class frmWorkOrder : public QDialog {
    Q_OBJECT
public:
    frmWorkOrder(app::AppContext& ctx, const std::vector<std::string>& lines, QWidget* parent = nullptr);

    QTextEdit* sheet() const { return rtb1_; }
    QFontComboBox* fonts() const { return fonts_; }
    QComboBox* sizes() const { return sizes_; }
    QComboBox* colours() const { return colours_; }

    // The chosen font, size or colour ("Black", "Blue", "Red", "Green") on the selection.
    void applyFont(const QString& family);
    void applySize(int points);
    void applyColour(const QString& colour);
    // Command3: the sheet as plain text to a file chosen in AppRoot\Reports.
    void save();
    void print();

private:
    app::AppContext& ctx_;
    QTextEdit* rtb1_;
    QFontComboBox* fonts_;
    QComboBox* sizes_;
    QComboBox* colours_;
};

// "Display Work Order": reads the scenario and shows its sheet modally; a scenario that
// cannot be read is told.
void ShowWorkOrder(app::AppContext& ctx, QWidget* parent, const std::string& routeFolder,
                   const std::string& scenarioFolder);

}  // namespace ferrolund::screens
