#pragma once
// Reading a blueprint once it is XML text: how an asset is named, what kind of asset it
// is, and which files it depends on. Nothing here parses XML: a blueprint is one long
// string and a value is what stands between two substrings, found without regard to case.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ferrolund::assets {

// The triple that names an asset under GameRoot\Assets.
struct BlueprintRef {
    std::string provider;
    std::string product;
    std::string blueprintId;  // relative to Provider\Product, with its extension
};

// GameRoot\Assets\Provider\Product\BlueprintID with a final "xml" (any case) made "bin".
std::string BlueprintFile(const std::string& gameRoot, const BlueprintRef& ref);

// The triple of a full path: behind the first "Assets" (else "Content"), the next two
// folders and the rest. Nothing for a path with neither word, or without its second
// separator (`invalid` is then set, for the caller's message).
std::optional<BlueprintRef> SplitAssetPath(std::string_view path, bool* invalid = nullptr);
// The message of a path that cannot be split.
std::string InvalidPathMessage(const std::string& path);

// A grid row's path: the three cells trimmed and joined with '\'. "\\\" is an empty row.
std::string JoinRowPath(std::string_view provider, std::string_view product, std::string_view blueprintId);
inline constexpr std::string_view kEmptyRowPath = "\\\\";

// The Provider, Product and BlueprintID that follow `pos` in the text (each searched from
// `pos`); nothing when the BlueprintID is empty.
std::optional<BlueprintRef> ReadTriple(std::string_view xml, long pos);

// Category and In Scene as the asset list shows them.
struct Classification {
    std::string category;
    std::string inScene;
};
Classification Classify(std::string_view xml);
bool IsReskin(std::string_view xml);
// Rolling stock: a rail vehicle, or a reskin of one.
bool IsRollingStock(std::string_view xml);
// The class of the blueprint without its leading "c": "EngineBlueprint", ...
std::string ClassWord(std::string_view xml);

// A value with a "[..]" marker in its last path element loses it: the part before '['
// joined to the part after the first ']' behind it.
std::string CutMarker(std::string_view value);
// 5, 4, 3, 2 or 1 when the value starts with that many "..\", 0 otherwise.
int CountParentSteps(std::string_view value);

// One file a blueprint depends on.
struct Dependency {
    std::string role;  // "geometry", "texture set", "script", ...
    std::string file;
};
// Every file the blueprint names, by the reader's vocabulary, in the vocabulary's order.
// `assetFolder` is the folder of the blueprint file itself (for animations).
std::vector<Dependency> BlueprintDependencies(std::string_view xml, const std::string& gameRoot,
                                              const std::string& assetFolder);

}  // namespace ferrolund::assets
