#pragma once
// The rolling-stock transforms of the asset list that rename an item, rescale the
// distances of its geometry's levels of detail, and list, remove or straighten its
// child entries. Each runs on the transform frame; the text routines behind them are
// given apart so that other transforms can use them.

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/app_context.h"
#include "assets/asset_row.h"
#include "assets/blueprint_splice.h"
#include "assets/transform_frame.h"

namespace ferrolund::assets {

// --- "Change Name" (also "Rename Selected Asset") ---

// What a name change writes besides the names.
enum class NameChange {
    NamesOnly,         // "Change Name"
    NamesAndKeys,      // "Change Loco Name/Localized/Key": the Key entries emptied too, and
                       // an engine's own name set where the blueprint has an EngineType
};

// Asks the new name once; a '#' in it stands for each item's old name. Name and all the
// localised names the blueprint has are set; the row's Name cell follows.
TransformOutcome ChangeName(app::AppContext& ctx, const std::vector<AssetRow>& selected,
                            NameChange kind = NameChange::NamesOnly);
// The text with the new name (file form) written as the change of `kind` writes it;
// false when the blueprint has no name to change.
bool WriteNewName(std::string& text, std::string_view value, NameChange kind);
// The typed name (Windows-1252, '#' for the old one) in file form, for an item whose
// English name is `oldName` in file form.
std::string NewNameValue(std::string_view typed, std::string_view oldName);

// --- "Change LODs" ---

inline constexpr double kMinLodLimit = 4000;
inline constexpr double kMaxLodLimit = 10000;
// A MinLOD above 4000 is taken as 4000, a MaxLOD above 10000 as 10000.
double ClampMinLod(double value);
double ClampMaxLod(double value);
// A distance as the geometry gets it: "####.0000", without its fraction when that is
// ".0000"; a value that would leave no digit at all is "0".
std::string LodText(double value);

struct LodChange {
    std::vector<double> old;  // the values read, at most 50
    double oldMin = 0, oldMax = 0;
};
// Rescales the values of every "<LOD>" block from their old range to [newMin, newMax].
// Nothing when there are no values or their range is zero (nothing is to be written).
std::optional<std::string> RescaleLods(std::string_view text, double newMin, double newMax, LodChange& change);

TransformOutcome ChangeLods(app::AppContext& ctx, const std::vector<AssetRow>& selected, double minLod,
                            double maxLod);

// --- "Display Child Entries." ---

struct ChildEntries {
    std::string caption;  // "Child Entries For:-"
    std::string name;     // the row's name
    std::vector<std::string> names;  // ChildName values, file form
};
// The child entries of the first selected row; with more rows selected it says that only
// the first is shown. Nothing, after a message, with no row or an unreadable blueprint.
std::optional<ChildEntries> DisplayChildEntries(app::AppContext& ctx, const std::vector<AssetRow>& selected);

// --- " Remove Selected Child Entries." ---

// The answers of the name dialog: the file to write beside the original (".bin" is added
// when it has no extension) and the item's new internal name (Windows-1252).
struct SaveAsChoice {
    std::string fileName;
    std::string internalName;
};
// Asked per row with the row and its file's base name; nothing means Cancel.
using SaveAsAsk = std::function<std::optional<SaveAsChoice>(const AssetRow& row, const std::string& base)>;

// Asks the row's new names and puts them into the result: the file to write beside the
// original, and the item's names in `languages`. False when the person called the row
// off (no answer or no file name).
bool ApplySaveAs(const SaveAsAsk& ask, TransformRow& row, TransformResult& result, NameLanguages languages);

// Drops the block of each named child (one block per name given); gives how many went.
int RemoveChildBlocks(std::string& text, const std::vector<std::string>& childNames);

TransformOutcome RemoveChildEntries(app::AppContext& ctx, const std::vector<AssetRow>& selected,
                                    const std::vector<std::string>& childNames, const SaveAsAsk& ask);

// --- "Correct Selected Smoke Stack" ---

// The named child's placement keeps its position and loses any turn or tilt, so that an
// emitter hung on the model stands upright again: the first twelve values of its matrix
// become those of no rotation. Unfit when the child or its matrix is missing; Nothing when
// it already stands upright.
TransformResult StraightenChild(std::string_view text, std::string_view childName);

TransformOutcome CorrectSmokeStack(app::AppContext& ctx, const std::vector<AssetRow>& selected,
                                   const std::string& childName);

}  // namespace ferrolund::assets
