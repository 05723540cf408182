#pragma once
// frmMain, "Search For Assets Details" (Identify Object): the blueprints of one file name
// under the simulator's Assets folder.

#include <QDialog>

#include "app/app_context.h"
#include "editor/identify_object.h"

class QComboBox;
class QLineEdit;
class QPushButton;
class QTreeWidget;

namespace ferrolund::screens {

class frmMain : public QDialog {
    Q_OBJECT
public:
    frmMain(app::AppContext& ctx, QWidget* parent = nullptr);

    void scan();       // cmdScan, and Enter in txtAsset
    void clearList();  // Command2

    QLineEdit* asset() const { return txtAsset_; }
    QPushButton* scanButton() const { return cmdScan_; }
    QTreeWidget* files() const { return lstFiles_; }

protected:
    // A close while the walk runs stops the walk first; the screen closes afterwards.
    void closeEvent(QCloseEvent* event) override;

private:
    void addRow(const std::string& row);

    app::AppContext& ctx_;
    editor::IdentifyObject model_;
    QLineEdit* txtPath_ = nullptr;
    QComboBox* cboMask_ = nullptr;
    QLineEdit* txtAsset_ = nullptr;
    QPushButton* cmdScan_ = nullptr;
    QTreeWidget* lstFiles_ = nullptr;
    bool closeAfterScan_ = false;
};

}  // namespace ferrolund::screens
