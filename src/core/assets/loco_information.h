#pragma once
// "Add LocoInformation": a thumbnail kept in AppRoot\Thumbnails becomes the picture the
// simulator shows for a vehicle, LocoInformation\image.png beside its blueprint.

#include <functional>
#include <string>
#include <vector>

#include "app/app_context.h"
#include "assets/asset_row.h"

namespace ferrolund::assets {

// Writes the picture `jpg` as the PNG file `png` (both system paths); true when done.
using PictureConverter = std::function<bool(const std::string& jpg, const std::string& png)>;

struct LocoInformationOutcome {
    std::vector<std::string> written;  // the image.png files now in place
    bool cancelled = false;
};

// Asks first (OK/Cancel). For each row: Thumbnails\<name>.jpg, converted to
// Thumbnails\<name>.png, copied to <blueprint folder>\LocoInformation\image.png (an
// image.png already there is kept by the back-up rule), the .png in Thumbnails deleted.
// A row without a thumbnail is told and passed over.
LocoInformationOutcome AddLocoInformation(app::AppContext& ctx, const std::vector<AssetRow>& rows,
                                          const PictureConverter& convert);

}  // namespace ferrolund::assets
