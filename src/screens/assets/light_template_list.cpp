#include "screens/assets/light_template_list.h"

#include <QLabel>
#include <QListWidget>
#include <QVBoxLayout>

#include "screens/app/qt_text.h"

namespace ferrolund::screens {

QListWidget* AddLightTemplateList(QVBoxLayout* layout, const std::string& itemName, const char* prompt,
                                  const std::vector<assets::LightTemplate>& offered, QWidget* owner) {
    auto* name = new QLabel(ToQt(itemName), owner);
    name->setObjectName("lblItem");
    QFont bold = name->font();
    bold.setBold(true);
    name->setFont(bold);
    auto* label = new QLabel(prompt, owner);
    auto* list = new QListWidget(owner);
    list->setObjectName("lstTemplates");
    for (const assets::LightTemplate& entry : offered) {
        auto* item = new QListWidgetItem(ToQt(entry.name), list);
        item->setToolTip(ToQt(entry.blueprint));
    }
    if (list->count() == 1) list->setCurrentRow(0);  // the only one there is
    label->setBuddy(list);
    layout->addWidget(name);
    layout->addWidget(label);
    layout->addWidget(list);
    return list;
}

}  // namespace ferrolund::screens
