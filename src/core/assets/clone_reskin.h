#pragma once
// The reskin clones: what a new paint of an item needs, gathered under a new folder.
// "Clone Scenery for ReSkinning" copies the item's model and textures beside a rewritten
// blueprint; "Clone for Reskin Blueprint" writes a reskin blueprint from the template
// ReSkinBluePrint.txt that points at the original, and copies the item's own textures.

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "app/app_context.h"
#include "assets/clone_asset.h"

namespace ferrolund::assets {

// The endings that make the files travelling with a texture "<name>.TgPcDx": each
// "<name><ending>.TgPcDx" beside it.
inline constexpr std::array<std::string_view, 7> kTextureSiblings{"_Wi", "_WI", "_sm", "_nm", "_nmc", "_night",
                                                                  "night"};
// The siblings of a texture file that exist, each once.
std::vector<std::string> TextureSiblings(const std::string& textureFile);

// The categories of the reskin's name dialog.
inline constexpr std::array<std::string_view, 12> kReskinCategories{
    "Animals",  "Bridges and viaducts", "Clutter", "Commercial industrial buildings", "Domestic buildings",
    "Foliage",  "Locomotoves",          "People",  "Rolling stock",                   "Signals",
    "Stations", "Vehicles!"};

enum class TextureChoice {
    All,      // every texture the model names
    OwnOnly,  // not those shared from a "common" or "numbers" folder; a value that is not
              // relative is also looked for under Assets
};

// The textures of a converted model that a reskin takes, with their siblings; those that
// are not on disk are in `missing` (as formed). A texture found only in its repaired
// spelling is listed under that name.
struct ReskinTextures {
    std::vector<std::string> files;
    std::vector<std::string> missing;
    std::string firstElement;  // the first texture as the model names it
};
ReskinTextures GatherTextures(std::string_view geometryXml, const std::string& geometryFile,
                              const std::string& assetsRoot, TextureChoice choice);

// The model of a blueprint: GeometryID as the blueprint holds it and its file (root +
// value without its marker + ".GeoPcDx"). Empty when the blueprint names none.
struct ModelOf {
    std::string value;
    std::string file;
};
ModelOf BlueprintModel(std::string_view xml, const std::string& root);
// The GeometryID of the reskin's own model: the old value's last element keeps its marker
// with the name after it made the new one, under the new folder.
std::string ReskinGeometryId(std::string_view oldValue, std::string_view newFolder, std::string_view newName);

// The values of ReSkinBluePrint.txt's markers.
struct ReskinFill {
    std::string fileName;      // aaaaaa
    std::string internalName;  // bbbbbb, cccccc (file form)
    std::string category;      // dddddd: "e" and the category without blanks
    std::string provider;      // eeeeee
    std::string product;       // ffffff
    std::string blueprintId;   // gggggg: the original's path, ending ".xml"
    std::string deltaId;       // hhhhhh
    std::string firstTexture;  // iiiiii
    std::string textureId;     // jjjjjj: the new folder behind Assets, "\[00]" and the file name
};
std::string FillReskinTemplate(std::string_view templateText, const ReskinFill& fill);
// The category word of the template: "e" before the category, blanks taken out.
std::string CategoryWord(std::string_view category);

// "Clone Scenery for ReSkinning". Stops at once, saying so, when an item's path holds
// "Procedural".
CloneOutcome CloneSceneryForReskin(app::AppContext& ctx, const std::vector<CloneSource>& sources,
                                   const CloneAsk& ask);
// "Clone for Reskin Blueprint".
CloneOutcome CloneForReskinBlueprint(app::AppContext& ctx, const std::vector<CloneSource>& sources,
                                     const CloneAsk& ask);

inline constexpr std::string_view kProceduralMessage =
    "Procedural items have no single model, so they cannot be cloned for reskinning.";

}  // namespace ferrolund::assets
