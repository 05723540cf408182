#include "assets/blueprint.h"

#include "tools/codepage.h"
#include "tools/files.h"
#include "tools/tags.h"
#include "tools/text_search.h"

namespace ferrolund::assets {

using tools::InStr;
using tools::Mid;

namespace {

bool Contains(std::string_view text, std::string_view what) { return InStr(text, what) > 0; }

bool EndsWithIgnoreCase(std::string_view text, std::string_view tail) {
    return text.size() >= tail.size() && tools::EqualsIgnoreCase(text.substr(text.size() - tail.size()), tail);
}

// The element's value read from the start of the text; empty when it is not there.
std::string Value(std::string_view xml, std::string_view tag, long pos = 1) {
    std::string value;
    tools::GetDetail(xml, pos, tag, value, tools::kBlueprintTagOptions);
    return value;
}

std::size_t NextSeparator(std::string_view path, std::size_t from) {
    const std::size_t back = path.find('\\', from);
    const std::size_t slash = path.find('/', from);
    return std::min(back, slash);
}

}  // namespace

std::string BlueprintFile(const std::string& gameRoot, const BlueprintRef& ref) {
    std::string file = gameRoot + "\\Assets\\" + ref.provider + "\\" + ref.product + "\\" + ref.blueprintId;
    if (EndsWithIgnoreCase(file, "xml")) file.replace(file.size() - 3, 3, "bin");
    return file;
}

std::optional<BlueprintRef> SplitAssetPath(std::string_view path, bool* invalid) {
    if (invalid) *invalid = false;
    long at = InStr(path, "Assets");
    std::size_t skip = 7;
    if (at == 0) {
        at = InStr(path, "Content");
        skip = 8;
    }
    if (at == 0) return std::nullopt;
    const std::size_t start = static_cast<std::size_t>(at - 1) + skip;
    const std::size_t first = NextSeparator(path, start);
    const std::size_t second = first == std::string_view::npos ? first : NextSeparator(path, first + 1);
    if (start > path.size() || second == std::string_view::npos) {
        if (invalid) *invalid = true;
        return std::nullopt;
    }
    return BlueprintRef{std::string(path.substr(start, first - start)),
                        std::string(path.substr(first + 1, second - first - 1)), std::string(path.substr(second + 1))};
}

std::string InvalidPathMessage(const std::string& path) { return path + " is invalid and contains errors"; }

std::string JoinRowPath(std::string_view provider, std::string_view product, std::string_view blueprintId) {
    return std::string(tools::TrimBlanks(provider)) + "\\" + std::string(tools::TrimBlanks(product)) + "\\" +
           std::string(tools::TrimBlanks(blueprintId));
}

std::optional<BlueprintRef> ReadTriple(std::string_view xml, long pos) {
    BlueprintRef ref{Value(xml, "Provider", pos), Value(xml, "Product", pos), Value(xml, "BlueprintID", pos)};
    if (ref.blueprintId.empty()) return std::nullopt;
    return ref;
}

Classification Classify(std::string_view xml) {
    Classification c;
    bool readValidity = false;
    if (Contains(xml, "<Category")) {
        c.category = Value(xml, "Category");
        if (!c.category.empty() && (c.category[0] == 'e' || c.category[0] == 'E')) c.category.erase(0, 1);
        readValidity = true;
    } else if (Contains(xml, "<EngineType")) {
        c = {Value(xml, "EngineType"), "Yes"};
    } else if (Contains(xml, "<cWagonBlueprint")) {
        c = {Contains(xml, "Passenger") ? "Passenger" : "Freight Wagon", "Yes"};
    } else if (Contains(xml, "<cTenderBlueprint")) {
        c = {"Tender", "Yes"};
    } else if (Contains(xml, "<cTrackSectionBlueprint")) {
        c = {"Track Section", "No"};
    } else if (Contains(xml, "<cRoadSectionBlueprint")) {
        c = {"Road Section", "No"};
    } else if (Contains(xml, "<cLoftSectionBlueprint")) {
        c = {"Road Section", "No"};  // a loft is shown as road
    } else {
        readValidity = true;
    }
    if (readValidity && Contains(xml, "<ValidInScenarios")) {
        const std::string valid = Value(xml, "ValidInScenarios");
        if (tools::EqualsIgnoreCase(valid, "eFalse")) c.inScene = "No";
        if (tools::EqualsIgnoreCase(valid, "eTrue")) c.inScene = "Yes";
    }
    if (c.inScene.empty()) c.inScene = "No";
    return c;
}

bool IsReskin(std::string_view xml) { return Contains(xml, "<cReskinBlueprint>"); }

bool IsRollingStock(std::string_view xml) { return Contains(xml, "<RailVehicle") || IsReskin(xml); }

std::string ClassWord(std::string_view xml) {
    const long blueprint = InStr(xml, "<Blueprint>");
    if (blueprint == 0) return {};
    const long open = InStr(blueprint + 5, xml, "<c");
    if (open == 0) return {};
    const long close = InStr(open, xml, ">");
    if (close == 0) return {};
    return std::string(Mid(xml, open + 2, close - open - 2));
}

std::string CutMarker(std::string_view value) {
    const std::size_t lastSeparator = value.find_last_of('\\');
    const std::size_t open = value.find('[', lastSeparator == std::string_view::npos ? 0 : lastSeparator);
    if (open == std::string_view::npos) return std::string(value);
    const std::size_t close = value.find(']', open);
    if (close == std::string_view::npos) return std::string(value);
    return std::string(value.substr(0, open)) + std::string(value.substr(close + 1));
}

int CountParentSteps(std::string_view value) {
    for (int n = 5; n >= 1; --n) {
        bool all = value.size() >= static_cast<std::size_t>(3 * n);
        for (int k = 0; all && k < n; ++k) all = value.substr(static_cast<std::size_t>(3 * k), 3) == "..\\";
        if (all) return n;
    }
    return 0;
}

std::vector<Dependency> BlueprintDependencies(std::string_view xml, const std::string& gameRoot,
                                              const std::string& assetFolder) {
    const std::string root = gameRoot + "\\Assets\\";
    std::vector<Dependency> found;
    auto add = [&](const char* role, std::string file) { found.push_back({role, std::move(file)}); };

    struct Geometry { const char* tag; const char* element; const char* extension; const char* role; };
    for (const Geometry& g : {Geometry{"<GeometryID", "GeometryID", ".GeoPcDx", "geometry"},
                              Geometry{"<CollisionGeometryID ", "CollisionGeometryID", ".geopcdx", "collision geometry"},
                              Geometry{"<InteriorGeometryID ", "InteriorGeometryID", ".geopcdx", "interior geometry"},
                              Geometry{"<CrossSectionID", "CrossSectionID", ".XSec", "cross-section"}}) {
        const long at = InStr(xml, g.tag);
        if (at == 0) continue;
        const std::string value = Value(xml, g.element, at);
        if (!value.empty()) add(g.role, root + CutMarker(value) + g.extension);
    }
    if (const long anim = InStr(xml, "<AnimSet>"); anim > 0) {
        for (long pos = anim; pos > 0;) {
            std::string value;
            tools::GetDetail(xml, pos, "AnimationName", value);
            if (pos == 0 || value.empty()) break;
            const std::size_t cut = value.find_last_of('\\');
            add("animation", assetFolder + "\\" + (cut == std::string::npos ? value : value.substr(cut + 1)) + ".ban");
        }
    }
    if (const long numbers = InStr(xml, "<NumberingList>"); numbers > 0) {
        const std::string value = Value(xml, "CsvFile", numbers);
        if (!value.empty()) add("numbering list", root + value + ".dcsv");
    }
    if (const long script = InStr(xml, "<ScriptComponent>"); script > 0) {
        const std::string value = Value(xml, "Name", script);
        if (!value.empty()) {
            const std::string lua = root + value + ".lua";
            add("script", tools::FileExists(lua) ? lua : root + value + ".out");
        }
    }
    struct Proxy { const char* tag; const char* element; const char* role; };
    for (const Proxy& p : {Proxy{"<BogieAudioControlName", "BogieAudioControlName", "bogie sound"},
                           Proxy{"<CouplingAudioControlName", "CouplingAudioControlName", "coupling sound"},
                           Proxy{"<SoundComponent>", "ProxyName", "sound proxy"}}) {
        const long at = InStr(xml, p.tag);
        if (at == 0) continue;
        const std::string value = Value(xml, p.element, at);
        if (!value.empty()) add(p.role, root + value + ".proxyxml");
    }
    for (const char* tag : {"<FrontCoupling", "<RearCoupling", "<BogeyBlueprint>", "<HeadOutCameraBlueprint>",
                            "<PrimaryNamedTextureSet>", "<SecondaryNamedTextureSet>", "<EngineSimFile>",
                            "<InteriorCamera>", "<CabOcclusion>"}) {
        const long at = InStr(xml, tag);
        if (at == 0) continue;
        if (const auto ref = ReadTriple(xml, at)) add("linked blueprint", BlueprintFile(gameRoot, *ref));
    }
    if (const long children = InStr(xml, "<Children>"); children > 0) {
        for (long at = InStr(children, xml, "<ChildName "); at > 0; at = InStr(at + 1, xml, "<ChildName ")) {
            if (const auto ref = ReadTriple(xml, at)) add("child", BlueprintFile(gameRoot, *ref));
        }
    }
    if (const long cargo = InStr(xml, "<CargoBlueprintID>"); cargo > 0) {
        const auto ref = ReadTriple(xml, cargo);
        if (ref && !ref->provider.empty()) add("cargo", BlueprintFile(gameRoot, *ref));
    }
    return found;
}

}  // namespace ferrolund::assets
