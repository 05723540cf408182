#pragma once
// dlgTail, "Tail Light Templates Available": for one wagon, the lamp template that suits it.

#include <QDialog>
#include <optional>
#include <string>
#include <vector>

#include "assets/stock_lights.h"

class QListWidget;

namespace ferrolund::screens {

class dlgTail : public QDialog {
    Q_OBJECT
public:
    dlgTail(const std::string& itemName, const std::vector<assets::LightTemplate>& offered, QWidget* parent = nullptr);
    QListWidget* templateList() const { return templates_; }
    // The template chosen; nothing until the list has a selection.
    std::optional<assets::LightChoice> choice() const;

private:
    QListWidget* templates_ = nullptr;
};

}  // namespace ferrolund::screens
