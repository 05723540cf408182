#pragma once
// The file list of the texture viewer: the names in a folder that pass its filter box, a
// list of masks such as "*.TgPcDx;*.dds;*.png;*.tga".

#include <string>
#include <string_view>
#include <vector>

namespace ferrolund::textures {

inline constexpr const char* kPictureFilter = "*.TgPcDx;*.dds;*.png;*.tga";

// The masks of the filter box; an emptied box means "*.*", every file.
std::vector<std::string> FilterMasks(std::string_view filterText);
// The names of the files directly in `folder` (a system path) that match one of the
// masks, compared without regard to case ("*.*" also takes names without a point),
// sorted by name without regard to case.
std::vector<std::string> FilesMatching(const std::string& folder, std::string_view filterText);

// What a picture file is to the viewer, from its name.
enum class PictureKind { Texture, Dds, Targa, Picture };
PictureKind KindOfPicture(std::string_view name);

}  // namespace ferrolund::textures
