#pragma once
// "Select your PreLoad folder": a folder picker that starts at the simulator's folder.

#include <QDialog>
#include <string>

#include "app/app_context.h"

class QLineEdit;
class QTreeView;
class QFileSystemModel;

namespace ferrolund::screens {

class frmPreload : public QDialog {
    Q_OBJECT
public:
    frmPreload(const app::AppContext& ctx, QWidget* parent = nullptr);
    // The text box, as a system path.
    std::string folder() const;
    QLineEdit* textBox() const { return text_; }

private:
    QFileSystemModel* model_ = nullptr;
    QTreeView* tree_ = nullptr;
    QLineEdit* text_ = nullptr;
};

}  // namespace ferrolund::screens
