#pragma once
// ferrolund-cli physics BLUEPRINT

#include <iosfwd>
#include <string>
#include <vector>

#include "app/app_context.h"

namespace ferrolund::cli {

// Prints the two grids of the physics screen for a rail vehicle's blueprint: its own
// values, then those of its simulation blueprint, an item and its value a line, a
// section's head on a line of its own.
int PhysicsVerb(app::AppContext& ctx, const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

}  // namespace ferrolund::cli
