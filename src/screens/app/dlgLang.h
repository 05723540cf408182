#pragma once
// "Select Language": the language files of the program's Language folder.

#include <QDialog>
#include <string>

#include "app/app_context.h"

class QListWidget;

namespace ferrolund::screens {

class dlgLang : public QDialog {
    Q_OBJECT
public:
    dlgLang(app::AppContext& ctx, QWidget* parent = nullptr);
    // The file picked with OK ("Lang_German.txt"), or empty.
    std::string chosenFile() const { return chosen_; }
    QListWidget* list() const { return list_; }

private:
    QListWidget* list_ = nullptr;
    std::string chosen_;
};

}  // namespace ferrolund::screens
