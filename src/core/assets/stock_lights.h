#pragma once
// "Add head-lights" and "Add tail-lights": lamp models hung on a loco or a wagon as
// child entries. The table UKLights.txt holds the lamp positions that suit each model;
// UKCode.txt is the child entry of one lamp. A loco shows the lamps of a British train
// type (its headcode) and is saved beside the original under a name that says which.

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/app_context.h"
#include "assets/asset_row.h"
#include "assets/transform_frame.h"

namespace ferrolund::assets {

enum class LampKind { Head, Tail };

// One line of the lamp table: "name,blueprint,kind,positions...", at most 11 fields.
// The blueprint is the model the positions suit (Provider\Product\...\x.xml); kind 0 is
// a head-light line, any other a tail-light line. The positions (X sideways, Y up, Z
// along the vehicle):
//   head: X,Y,Z of the left lamp on the buffer beam, then Y,Z of the top lamp;
//   tail: X,Y,Z of the lamp.
struct LightTemplate {
    std::string name;
    std::string blueprint;
    std::vector<std::string> positions;
};

inline constexpr std::size_t kMostLightTemplates = 50;

// The lines of the kind, in the table's order, at most 50. Lines starting with "//" and
// lines without a name, blueprint and kind are passed over.
std::vector<LightTemplate> ParseLightTable(std::string_view table, LampKind kind);

// The file of a template's model: GameRoot\Assets\ + blueprint, a final "xml" as "bin".
std::string LightModelFile(const app::AppContext& ctx, const LightTemplate& entry);

// A British train type and the lamp places its headcode lights: 1 left, 2 centre and
// 3 right of the buffer beam, 4 at the top. 0: no second lamp.
struct TrainType {
    const char* caption;
    int first;
    int second;
    const char* suffix;  // added to the item's name
};
inline constexpr std::array<TrainType, 9> kTrainTypes{{
    {"Express Passenger", 2, 4, "_XP-Pass"},
    {"Stopping Passenger", 1, 0, "_Stop-Pass"},
    {"Express Perishable", 1, 2, "_XP-Perishable"},
    {"Express Freight", 1, 4, "_XP-Freight"},
    {"Thru Freight", 1, 3, "_Thru-Freight"},
    {"Light Engine", 3, 0, "_Light-Engine"},
    {"Parcels", 2, 3, "_Parcel"},
    {"Thru Mineral", 2, 0, "_Thru-Mineral"},
    {"Stopping Freight", 4, 0, "_Stop-Freight"},
}};

struct LampPosition {
    std::string x, y, z;
};
// Where a lamp place lies by the template's positions: place 1 as given, 2 in the centre
// of the beam, 3 mirrored (the X negated; a zero X is written as it stands), 4 at the
// top in the centre. A tail lamp has place 1 only. Nothing when the fields are missing.
std::optional<LampPosition> LampPlace(const LightTemplate& entry, LampKind kind, int place);
// A value with its sign turned: a leading '-' dropped, else one put before it. A value
// of zero is given back as it stands.
std::string NegatedValue(std::string_view value);

// The lamp model of a kind, as the child entries name it.
struct LampModel {
    std::string provider, product, blueprintId;
};
LampModel LampModelOf(LampKind kind);

// The files the lamps need that are not there: the lamp model under GameRoot\Assets and
// the shared lighting folder AppRoot\Lumenfold\Assets.
std::vector<std::string> MissingLightFiles(const app::AppContext& ctx, LampKind kind);
// The message that names them.
std::string MissingLightFilesMessage(const std::vector<std::string>& missing);

// The child entries of the lamps at the places given, one filled UKCode template each.
// Nothing when a place has no position in the template.
std::optional<std::string> LampChildren(std::string_view codeTemplate, const LightTemplate& entry, LampKind kind,
                                        const std::vector<int>& places);

// What the person chose for a row: the template (index into the offered list) and, for
// head-lights, the train type (index into kTrainTypes).
struct LightChoice {
    std::size_t templateIndex = 0;
    std::size_t trainType = 0;
};
// Asked per row with the templates offered; nothing means Cancel for that row.
using LightAsk =
    std::function<std::optional<LightChoice>(const AssetRow& row, const std::vector<LightTemplate>& offered)>;

// The lamps of the choice spliced into the blueprint's child list. Head-lights also give
// the item the train type's suffix in its name and languages and a file name beside the
// original (`base` + suffix + ".bin"); tail-lights change the item in place.
TransformResult AddLamps(std::string_view text, std::string_view codeTemplate, const LightTemplate& entry,
                         LampKind kind, std::size_t trainType, const std::string& base);

// The whole command over the selected rows. The templates offered are those of the kind
// whose model is installed.
TransformOutcome AddLights(app::AppContext& ctx, const std::vector<AssetRow>& selected, LampKind kind,
                           const LightAsk& ask);

}  // namespace ferrolund::assets
