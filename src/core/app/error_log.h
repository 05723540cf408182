#pragma once
// The error log "Errors.txt" and the stop box of an unexpected failure.

#include <chrono>
#include <string>

namespace ferrolund::app {

struct AppContext;

// "Unexpected Error in Ferrolund V1.0.0001"
std::string UnexpectedErrorTitle();
// The entry appended to Errors.txt, lines ended by CR LF.
std::string FormatErrorLogEntry(std::chrono::system_clock::time_point when, const std::string& description,
                                const std::string& routine, int number, const std::string& module);
// The text of the stop box.
std::string FormatErrorMessage(const std::string& description, const std::string& routine, int number,
                               const std::string& module);
// Appends an entry to AppRoot\Errors.txt, without a box: for the files a long walk passes
// over and names in its own report. A failure inside is passed over.
void AppendErrorLog(AppContext& ctx, const std::string& description, const std::string& routine, int number,
                    const std::string& module);
// Appends to AppRoot\Errors.txt and shows the stop box; a failure inside is passed over.
void ReportUnexpectedError(AppContext& ctx, const std::string& description, const std::string& routine,
                           int number, const std::string& module);

inline constexpr int kErrorLogWidth = 80;

}  // namespace ferrolund::app
