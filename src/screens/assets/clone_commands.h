#pragma once
// The Clone menu of the asset lists (frmAssets, frmAssetsAP, frmContent): one set of
// commands over the items a list has selected, however the list finds their files.

#include <QPushButton>
#include <functional>
#include <string>
#include <vector>

#include "app/app_context.h"
#include "assets/clone_asset.h"

class QMenu;
class QWidget;

namespace ferrolund::screens {

struct CloneEntry {
    const char* name;
    int lang;
    const char* caption;
};
inline constexpr CloneEntry kCloneEntries[] = {{"mnuCloneAsset", 533, "Clone selected Asset"},
                                               {"mnuCloneRS", 534, "Clone Selected rolling-stock"},
                                               {"mnuCloneScenery", 535, "Clone Scenery for ReSkinning"},
                                               {"mnuReskinBP", 536, "Clone for Reskin Blueprint"},
                                               {"mnuProvider", 537, "Correct Provider"}};

// The selected items of a list, as the command's level needs them.
using CloneSources = std::function<std::vector<assets::CloneSource>(assets::CloneLevel level)>;

// Runs the entry's command on the items; the names are asked with dlgNewName (or `ask`
// when given) and the report is shown on the report screen.
void RunCloneEntry(app::AppContext& ctx, QWidget* parent, const std::string& name, const CloneSources& sources,
                   const assets::CloneAsk& ask = {});

// A "Clone" button whose menu holds every entry, for the lists without a menu bar.
QPushButton* CloneButton(app::AppContext& ctx, QWidget* parent, CloneSources sources);

}  // namespace ferrolund::screens
