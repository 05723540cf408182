// frmAssets: the Clone menu, on the selected rows of the list.
#include "assets/clone_asset.h"
#include "screens/assets/clone_commands.h"
#include "screens/assets/frmAssets.h"
#include "tools/text_search.h"

namespace ferrolund::screens {

std::function<void()> frmAssets::cloneCommand(const std::string& name) {
    return [this, name] {
        setRunning(true);
        RunCloneEntry(ctx_, this, name, [this](assets::CloneLevel) {
            std::vector<assets::CloneSource> sources;
            for (const assets::AssetRow& r : selectedAssetRows())
                if (!tools::TrimBlanks(r.provider).empty()) sources.push_back(assets::SourceOfRow(ctx_, r));
            return sources;
        });
        setRunning(false);
    };
}

}  // namespace ferrolund::screens
