#pragma once
// The rolling-stock transforms that add to or take from what a vehicle carries:
// passengers in a coach, a conductor beside a driver, a dead (unmanned) copy of a loco,
// and the mass and capacity of freight cars. Each runs on the transform frame; the text
// routines behind them are given apart for the tests and for other commands.

#include <string>
#include <string_view>
#include <vector>

#include "app/app_context.h"
#include "assets/asset_row.h"
#include "assets/stock_transforms.h"
#include "assets/transform_frame.h"

namespace ferrolund::assets {

// --- "Add Passengers to Carriages" ---

// The template that suits a coach, by its file's base name: brake and guard's coaches
// (BCK, BFK, GUARD) take "AddPassengers3.txt", Mk1 coaches "AddPassengers.txt", the
// rest "AddPassengers2.txt".
std::string PassengerTemplate(std::string_view base);

// Splices the passengers at the head of the child list. False, the text unchanged, when
// the blueprint has no child list.
bool AddPassengerChildren(std::string& text, std::string_view passengers);

// Per row: the name dialog (`ask`, nothing for Cancel), the template spliced, the names
// set; the result is written beside the original under the new name, and the original is
// compiled again in its place.
TransformOutcome AddPassengers(app::AppContext& ctx, const std::vector<AssetRow>& selected, const SaveAsAsk& ask);

// --- "Make Selected Stock Dead" ---

// Takes out the whole child list, from the line break before "<Children>" to the end of
// "</Children>". False when there is no "<Children>".
bool RemoveChildList(std::string& text);

// Per row: the list of children goes, the names are asked and set, and the result is
// written beside the original, which stays as it was.
TransformOutcome MakeDead(app::AppContext& ctx, const std::vector<AssetRow>& selected, const SaveAsAsk& ask);

// --- "Add Conductor to US Diesel" ---

// The value of a number with its sign turned: "-1.2" gives "1.2", "1.2" gives "-1.2".
std::string FlipSign(std::string_view value);

// Puts a conductor behind the driver's child block: a copy of it named Conductor, on the
// other side of the cab (the sideways offset of its matrix, the 13th value, turned), with
// the driver's seat WP_04_02 made WP_04_01. False, the text unchanged, without a driver.
bool AddConductorChild(std::string& text);

// Without a driver the blueprint is compiled again unchanged.
TransformOutcome AddConductor(app::AppContext& ctx, const std::vector<AssetRow>& selected);

// --- "Correct Mass/Capacity of Selected" ---

struct MassCapacity {
    std::string mass;      // as typed
    std::string capacity;  // as typed
};

// The mass written; an empty "<CargoDef/>" becomes the template `cargoDef`; then the
// capacity written where there is one. False when the blueprint has neither a mass nor a
// capacity to write.
bool SetMassCapacity(std::string& text, const MassCapacity& values, std::string_view cargoDef);

// The same values for every selected car; "CargoDef.txt" from the templates.
TransformOutcome CorrectMassCapacity(app::AppContext& ctx, const std::vector<AssetRow>& selected,
                                     const MassCapacity& values);

}  // namespace ferrolund::assets
