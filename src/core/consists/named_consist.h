#pragma once
// "Save as Named Consist" of the Scenario Editor: one consist of the open scenario added,
// under a name the person gives, to the saved consists of ConsistTemplates.bin.

#include <string>
#include <string_view>
#include <vector>

#include "app/app_context.h"
#include "consists/consist_rows.h"
#include "consists/consist_templates.h"

namespace ferrolund::consists {

inline constexpr const char* kNoConsistSelectedMessage = "You do not appear to have selected a consist?";
inline constexpr const char* kNamePrompt = "Type Name for consist ";
inline constexpr const char* kNameTitle = "Rename Consist";
inline constexpr const char* kNoVehiclesMessage = "The selected consist has no rolling stock to save.";

// The rows of consist `consist` (from 0) of the scenario's XML under the identity: one a
// vehicle, up to the first vehicle without a name, each with its base Provider, Product,
// BlueprintID and Flipped (a reskin is not carried) and a fresh entry id.
std::vector<TemplateRow> ScenarioConsistRows(std::string_view scenarioXml, int consist, const ConsistIdentity& identity,
                                             std::string_view languageTag);

// Asks for the name ("Type Name for consist " and the consist's service name) and adds the
// consist to the saved consists, as the builder's save writes them: compiled aside, the
// old file kept as a back-up. A cancelled question writes nothing; an empty answer gives a
// consist without a name.
SaveResult SaveNamedConsist(app::AppContext& ctx, std::string_view scenarioXml, int consist);

}  // namespace ferrolund::consists
