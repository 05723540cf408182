#pragma once
// The eight performance curves of a vehicle's simulation blueprint. The physics screen
// learns where each curve's .dcsv lies from the CsvFile rows it reads; the graphs screen
// draws them. The order is that of the graphs screen's buttons: the first four belong to
// diesel and electric locomotives, the last four to steam.

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace ferrolund::simdata {

struct CurveInfo {
    const char* file;   // the .dcsv's name, "TractiveEffortVsThrottle.dcsv"
    const char* label;  // the caption before the loco's name, "TractiveEffortVsThrottle Data for "
    bool steam;         // shown for steam locomotives rather than diesel and electric
    const char* xAxis;  // the axes' names
    const char* yAxis;
};

inline constexpr std::size_t kCurveCount = 8;

inline constexpr std::array<CurveInfo, kCurveCount> kCurves{{
    {"TractiveEffortVsThrottle.dcsv", "TractiveEffortVsThrottle Data for ", false, "Throttle", "Tractive Effort"},
    {"DynamicBrakeEffortVsSpeed.dcsv", "DynamicBrakeEffortVsSpeed Data for ", false, "Speed", "Brake Effort"},
    {"TractiveEffortVsSpeed.dcsv", "TractiveEffortVsSpeed Data for ", false, "Speed", "Tractive Effort"},
    {"TractiveEffortVFieldDivertProportion.dcsv", "TractiveEffortVFieldDivertProportion Data for ", false,
     "Field Divert Proportion", "Tractive Effort"},
    {"BurnRateVsSteamUsageRate.dcsv", "BurnRateVsSteamUsageRate Data for ", true, "Steam Usage", "Burn Rate"},
    {"ConditionChangeVsTemp.dcsv", "ConditionChangeVsTemp Data for ", true, "Temperature", "Condition Change"},
    {"TractiveEffortLinearVsSpeed.dcsv", "TractiveEffortLinearVsSpeed Data for ", true, "Speed", "Tractive Effort"},
    {"TractiveEffortVsCutoff.dcsv", "TractiveEffortVsCutoff Data for ", true, "Cut-off", "Tractive Effort"},
}};

// Where each curve's .dcsv lies (system paths); empty where the vehicle names none.
using CurveFiles = std::array<std::string, kCurveCount>;

// The curve whose data file `csvFile` names (its last path part, compared without regard
// to case; the extension may be .dcsv or .csv), or -1.
int CurveForFile(std::string_view csvFile);

}  // namespace ferrolund::simdata
