#pragma once
// The second half of the route check: from the assets a route uses to their geometry,
// the textures of that geometry (with the seasonal siblings its kind asks for and the
// companions of normal maps), the terrain's textures and the sound files.

#include <string>
#include <string_view>
#include <vector>

#include "app/app_context.h"
#include "routes/route_check.h"

namespace ferrolund::routes {

struct GeometryFile {
    std::string file;
    std::string caller;  // the blueprint that names it
};

struct TextureCheck {
    std::vector<GeometryFile> geometry;  // FindGeopcdx
    std::vector<std::string> textures;   // TextureList
    std::vector<std::string> audio;      // AudioList
    std::vector<std::string> proxies;    // the sound proxies the audio came through
    std::string missingText;             // one line a missing file
    bool aborted = false;
};

// The siblings a texture of this kind must have, as suffixes in front of ".TgPcDx":
// "" always, then "_WI" (08), "_SP", "_WI" (09), "_AU", "_WI" (0c), "_SP", "_AU", "_WI" (0d).
std::vector<std::string> SeasonalSuffixes(std::string_view kind);

// FindGeopcdx: the geometry, cross-section, animation and script files of each blueprint
// that exist. Audio blueprints (a path with "\Audio\") go through GetAudio instead.
void FindGeopcdx(app::AppContext& ctx, const std::vector<std::string>& assets, TextureCheck& check);

// FindTextures: each geometry's textures; then the terrain's, from the route's
// RouteProperties.xml. With a provider and product in the rule (FindTextures3) the
// terrain counts only when its blueprint is of that provider and product.
void FindTextures(app::AppContext& ctx, const std::string& routePath, TextureCheck& check, const WalkRule& rule = {});

}  // namespace ferrolund::routes
