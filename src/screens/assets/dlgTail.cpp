#include "screens/assets/dlgTail.h"

#include <QDialogButtonBox>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include "screens/assets/light_template_list.h"

namespace ferrolund::screens {

dlgTail::dlgTail(const std::string& itemName, const std::vector<assets::LightTemplate>& offered, QWidget* parent)
    : QDialog(parent) {
    setObjectName("dlgTail");
    setWindowTitle("Tail Light Templates Available");
    auto* layout = new QVBoxLayout(this);
    templates_ = AddLightTemplateList(layout, itemName, "Select Template for above wagon:-", offered, this);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    QPushButton* ok = buttons->button(QDialogButtonBox::Ok);
    connect(templates_, &QListWidget::itemSelectionChanged, this, [this, ok] { ok->setEnabled(choice().has_value()); });
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(buttons);
    ok->setEnabled(choice().has_value());
    resize(420, 300);
}

std::optional<assets::LightChoice> dlgTail::choice() const {
    const int t = templates_->currentRow();
    if (t < 0 || templates_->selectedItems().isEmpty()) return std::nullopt;
    return assets::LightChoice{static_cast<std::size_t>(t), 0};
}

}  // namespace ferrolund::screens
