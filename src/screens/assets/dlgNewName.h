#pragma once
// dlgNewName, "Clone Object with this new name": the file name, internal name and folder
// of a clone, each box opening with the old value and an end mark for the person to
// extend. With the category box it is the reskins' dlgNewName22.

#include <QDialog>
#include <optional>

#include "assets/clone_asset.h"

class QComboBox;
class QLineEdit;

namespace ferrolund::app {
struct AppContext;
}

namespace ferrolund::screens {

class dlgNewName : public QDialog {
    Q_OBJECT
public:
    dlgNewName(app::AppContext& ctx, const assets::CloneNames& offered, bool withCategory, QWidget* parent = nullptr);
    // The boxes' texts (trimmed), as typed.
    assets::CloneNames names() const;
    QLineEdit* fileBox() const { return file_; }
    QLineEdit* nameBox() const { return name_; }
    QLineEdit* folderBox() const { return folder_; }
    QComboBox* categoryBox() const { return category_; }

    // Shows the dialog; nothing when it was cancelled.
    static std::optional<assets::CloneNames> Ask(app::AppContext& ctx, const assets::CloneNames& offered,
                                                 bool withCategory, QWidget* parent);

private:
    void accept() override;
    app::AppContext& ctx_;
    QLineEdit* file_ = nullptr;
    QLineEdit* name_ = nullptr;
    QLineEdit* folder_ = nullptr;
    QComboBox* category_ = nullptr;
};

}  // namespace ferrolund::screens
