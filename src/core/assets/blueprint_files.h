#pragma once
// Tracing the files a blueprint needs: the textures of its geometry, its sounds, its
// animations. Results gather in a report list, a line per file, that the caller shows
// and clears.

#include <string>
#include <string_view>
#include <vector>

#include "app/app_context.h"
#include "assets/blueprint.h"

namespace ferrolund::assets {

struct ReportList {
    std::string text;              // lines ended by CR LF
    std::string currentBlueprint;  // named in " Called by " lines
    void add(const std::string& line) { text += line + "\r\n"; }
    void addMissing(const std::string& file) { add(file + " Called by " + currentBlueprint); }
};

enum class TextureForm {
    Listing,       // every texture the geometry names, as formed
    Checking,      // only textures that are missing, with the blueprint that calls them
    ListingToBlob  // the listing form that also stops at the geometry's binary data
};

// One texture a geometry names: its file as formed, and the two characters of its "[nn]"
// marker ("00" without one), which tell its seasonal siblings.
struct TextureEntry {
    std::string file;
    std::string kind;
    std::string element;  // the element's text as the geometry holds it
    std::string value;    // that text without its marker, before any "..\\" is resolved
};
// The texture list of a converted geometry, read to the end of the materials (and, with
// `stopAtBlob`, no further than its binary data).
std::vector<TextureEntry> TextureEntries(std::string_view geometryXml, const std::string& base,
                                         const std::string& geometryFile, bool stopAtBlob);

// The textures of a converted geometry (its XML text). `base` is the geometry file's
// folder ending in '\', `geometryFile` the geometry file's path.
void CheckTexture(std::string_view geometryXml, const std::string& base, const std::string& geometryFile,
                  TextureForm form, ReportList& report);
// The listing form, its lines gathered apart.
std::vector<std::string> ShowTexture(std::string_view geometryXml, const std::string& base,
                                     const std::string& geometryFile);

// The sound files of one audio blueprint (a .bin), added to the report.
void GetAudio(app::AppContext& ctx, const std::string& blueprintFile, ReportList& report);

// Everything a list row depends on: the blueprint, its animations, sounds, geometry and
// textures (or, for a loft, its cross-section's textures).
void GetAssetBits(app::AppContext& ctx, const BlueprintRef& row, ReportList& report);
void GetLoftBits(app::AppContext& ctx, std::string_view blueprintXml, ReportList& report);
// After the last row: the closing mark of a non-empty report.
void CloseReport(ReportList& report);

// The smallest and largest of the values; both 0 for none.
void FindMinMax(const std::vector<double>& values, double& min, double& max);

}  // namespace ferrolund::assets
