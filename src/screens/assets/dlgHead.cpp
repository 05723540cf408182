#include "screens/assets/dlgHead.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include "screens/app/qt_text.h"
#include "screens/assets/light_template_list.h"

namespace ferrolund::screens {

dlgHead::dlgHead(const std::string& itemName, const std::vector<assets::LightTemplate>& offered, QWidget* parent)
    : QDialog(parent) {
    setObjectName("dlgHead");
    setWindowTitle("Head Light Templates Available");
    auto* layout = new QVBoxLayout(this);
    templates_ = AddLightTemplateList(layout, itemName, "Select Template for above Loco.", offered, this);
    auto* typeLabel = new QLabel("Select Train Type", this);
    types_ = new QListWidget(this);
    types_->setObjectName("lstTrainType");
    for (const assets::TrainType& type : assets::kTrainTypes) types_->addItem(type.caption);
    typeLabel->setBuddy(types_);
    layout->addWidget(typeLabel);
    layout->addWidget(types_);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    QPushButton* ok = buttons->button(QDialogButtonBox::Ok);
    auto update = [this, ok] { ok->setEnabled(choice().has_value()); };
    connect(templates_, &QListWidget::itemSelectionChanged, this, update);
    connect(types_, &QListWidget::itemSelectionChanged, this, update);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(buttons);
    update();
    resize(420, 460);
}

std::optional<assets::LightChoice> dlgHead::choice() const {
    const int t = templates_->currentRow(), type = types_->currentRow();
    if (t < 0 || type < 0 || templates_->selectedItems().isEmpty() || types_->selectedItems().isEmpty())
        return std::nullopt;
    return assets::LightChoice{static_cast<std::size_t>(t), static_cast<std::size_t>(type)};
}

}  // namespace ferrolund::screens
