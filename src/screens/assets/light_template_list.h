#pragma once
// The part dlgHead and dlgTail share: the item's name, the prompt and the list of lamp
// templates offered for it.

#include <string>
#include <vector>

#include "assets/stock_lights.h"

class QListWidget;
class QVBoxLayout;
class QWidget;

namespace ferrolund::screens {

// Adds the name, the prompt and the list (named "lstTemplates") to the layout.
QListWidget* AddLightTemplateList(QVBoxLayout* layout, const std::string& itemName, const char* prompt,
                                  const std::vector<assets::LightTemplate>& offered, QWidget* owner);

}  // namespace ferrolund::screens
