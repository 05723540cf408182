#pragma once
// dlgHead, "Head Light Templates Available": for one loco, the lamp template that suits
// it and the train type whose headcode its lamps show.

#include <QDialog>
#include <optional>
#include <string>
#include <vector>

#include "assets/stock_lights.h"

class QListWidget;

namespace ferrolund::screens {

class dlgHead : public QDialog {
    Q_OBJECT
public:
    // `itemName` is the loco's name as the list shows it.
    dlgHead(const std::string& itemName, const std::vector<assets::LightTemplate>& offered, QWidget* parent = nullptr);
    QListWidget* templateList() const { return templates_; }
    QListWidget* trainTypeList() const { return types_; }
    // The choice made; nothing until both lists have a selection.
    std::optional<assets::LightChoice> choice() const;

private:
    QListWidget* templates_ = nullptr;
    QListWidget* types_ = nullptr;
};

}  // namespace ferrolund::screens
