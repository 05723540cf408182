#pragma once
// What a rail vehicle's blueprint is (locomotive, wagon, tender), its display name, the
// engine type of a locomotive, and the details a vehicle placed in a scenario takes from
// its blueprint (mass, a running number, fuel order). Blueprints are converted in memory;
// the decisions are substring tests on the converted text.

#include <functional>
#include <string>
#include <string_view>

#include "app/app_context.h"
#include "base/run_error.h"

namespace ferrolund::scenarios {

enum class StockKind { Loco, Wagon, Tender };

// The decisions on a blueprint's XML text.
bool IsLocoXml(std::string_view xml);
bool IsWagonXml(std::string_view xml);
bool IsTenderXml(std::string_view xml);
// The display name: LocTag, then English, French, Italian, German, Spanish, then Name,
// then "Unnamed"; raw (the screens decode it).
std::string StockNameXml(std::string_view xml, std::string_view languageTag);

// `path` is the blueprint's system path (.bin or .xml). A file the converter cannot read
// is an error value, with the flag false. The language is ctx.prefs.language.
base::Status IsItALoco(app::AppContext& ctx, const std::string& path, bool& isLoco, std::string& name,
                       std::string& engineType);
base::Status IsItAWagon(app::AppContext& ctx, const std::string& path, bool& isWagon, std::string& name);
base::Status IsItATender(app::AppContext& ctx, const std::string& path, bool& isTender, std::string& name);

struct StockDetails {
    std::string blueprintXml;
    std::string mass;    // Mass after <RailVehicleComponent
    std::string number;  // a running number from the numbering list, "" when none
    int fuelOrder = 0;   // 0 no CoalFuel, 1 WaterFuel behind CoalFuel, 2 WaterFuel ahead of it
};

// A number in [0, 1); tests pass a fixed sequence.
using RandomSource = std::function<double()>;

// The numbering list's short cut: r = floor((count - 2) * random) + 1 (1 when that is 0),
// count of "<Name" capped once it passes 20; the number is the first Name from
// (first "<Name" - first "<cCSVItem") * r. Empty for a list without "<Name".
std::string PickRunningNumber(std::string_view numberingXml, const RandomSource& random);

base::Status GetStockDetails(app::AppContext& ctx, const std::string& path, StockDetails& details,
                             const RandomSource& random = {});

}  // namespace ferrolund::scenarios
