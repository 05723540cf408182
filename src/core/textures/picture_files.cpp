#include "textures/picture_files.h"

#include <algorithm>
#include <filesystem>

#include "tools/codepage.h"
#include "tools/host_path.h"
#include "tools/names.h"
#include "tools/text_search.h"

namespace ferrolund::textures {

namespace {

bool EndsWithNoCase(std::string_view name, std::string_view end) {
    return name.size() >= end.size() && tools::EqualsIgnoreCase(name.substr(name.size() - end.size()), end);
}

}  // namespace

std::vector<std::string> FilterMasks(std::string_view filterText) {
    std::vector<std::string> masks;
    while (!filterText.empty()) {
        const std::size_t semi = filterText.find(';');
        const std::string_view mask = tools::TrimBlanks(filterText.substr(0, semi));
        if (!mask.empty()) masks.push_back(tools::FoldUtf8(mask));
        filterText = semi == std::string_view::npos ? std::string_view{} : filterText.substr(semi + 1);
    }
    if (masks.empty()) masks.emplace_back("*.*");
    return masks;
}

std::vector<std::string> FilesMatching(const std::string& folder, std::string_view filterText) {
    const std::vector<std::string> masks = FilterMasks(filterText);
    std::vector<std::pair<std::string, std::string>> found;  // folded name, name
    std::error_code ec;
    for (std::filesystem::directory_iterator it(tools::HostPath(folder), ec), end; !ec && it != end; it.increment(ec)) {
        std::error_code kind;
        if (!it->is_regular_file(kind)) continue;
        const std::string name = it->path().filename().string();
        const std::string folded = tools::FoldUtf8(name);
        const bool match = std::any_of(masks.begin(), masks.end(), [&](const std::string& mask) {
            return mask == "*.*" || tools::WildcardMatch(mask, folded);
        });
        if (match) found.emplace_back(folded, name);
    }
    std::sort(found.begin(), found.end());
    std::vector<std::string> names;
    for (auto& [folded, name] : found) names.push_back(std::move(name));
    return names;
}

PictureKind KindOfPicture(std::string_view name) {
    if (EndsWithNoCase(name, ".TgPcDx")) return PictureKind::Texture;
    if (EndsWithNoCase(name, ".dds")) return PictureKind::Dds;
    if (EndsWithNoCase(name, ".tga")) return PictureKind::Targa;
    return PictureKind::Picture;
}

}  // namespace ferrolund::textures
