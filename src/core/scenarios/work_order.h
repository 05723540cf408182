#pragma once
// The Work Order: a job sheet for the driven train of a shunting scenario, as lines of
// text: the scenario's header, the train's initial stock, and for each instruction where
// it goes, what it does there and with which wagons.

#include <string>
#include <string_view>
#include <vector>

#include "app/app_context.h"
#include "base/run_error.h"

namespace ferrolund::scenarios {

inline constexpr const char* kNoWagonNumbers1 = "There are no wagon numbers in this scenario, so no";
inline constexpr const char* kNoWagonNumbers2 = "Work Order can be constructed.";

// The sheet's words for an Operation value of a target; empty for one that changes
// nothing ("Default", "Marshall") or is unknown.
std::string OperationWords(std::string_view operation);

// The lines of the sheet. A FreeRoam scenario, or one whose properties mention
// "timetable", gives the header alone; so does a scenario without a driven consist.
std::vector<std::string> WorkOrderLines(const std::string& routeName, std::string_view propertiesXml,
                                        std::string_view scenarioXml, std::string_view languageTag = "English");

// Reads the route's scenario and gives the sheet's lines; the route is named as the route
// index names it. A missing or unreadable file is an error value naming it.
base::Status LoadWorkOrder(app::AppContext& ctx, const std::string& routeFolder, const std::string& scenarioFolder,
                           std::vector<std::string>& lines);

}  // namespace ferrolund::scenarios
