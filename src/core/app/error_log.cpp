#include "app/error_log.h"

#include <ctime>
#include <fstream>
#include <vector>

#include "app/app_context.h"
#include "app/version.h"
#include "tools/host_path.h"

namespace ferrolund::app {

namespace {

const char* const kMonths[] = {"January", "February", "March",     "April",   "May",      "June",
                               "July",    "August",   "September", "October", "November", "December"};

std::string TwoDigits(int n) { return (n < 10 ? "0" : "") + std::to_string(n); }

// "MMMM DD, YYYY  at hh:mm:ss AMPM" in local time.
std::string LogStamp(std::chrono::system_clock::time_point when) {
    const std::time_t t = std::chrono::system_clock::to_time_t(when);
    std::tm tm{};
    localtime_r(&t, &tm);
    int hour12 = tm.tm_hour % 12;
    if (hour12 == 0) hour12 = 12;
    return std::string(kMonths[tm.tm_mon]) + " " + TwoDigits(tm.tm_mday) + ", " + std::to_string(tm.tm_year + 1900) +
           "  at " + TwoDigits(hour12) + ":" + TwoDigits(tm.tm_min) + ":" + TwoDigits(tm.tm_sec) + " " +
           (tm.tm_hour < 12 ? "AM" : "PM");
}

// Breaks text at blanks into lines no wider than the log; a word wider than that stands alone.
std::vector<std::string> WrapAtBlanks(const std::string& text) {
    std::vector<std::string> lines;
    std::string line;
    std::size_t pos = 0;
    while (pos <= text.size()) {
        std::size_t blank = text.find(' ', pos);
        if (blank == std::string::npos) blank = text.size();
        const std::string word = text.substr(pos, blank - pos);
        if (!line.empty() && line.size() + 1 + word.size() > static_cast<std::size_t>(kErrorLogWidth)) {
            lines.push_back(line);
            line = word;
        } else {
            line += (line.empty() ? "" : " ") + word;
        }
        pos = blank + 1;
    }
    lines.push_back(line);
    return lines;
}

}  // namespace

std::string UnexpectedErrorTitle() {
    std::string revision = std::to_string(kVersionRevision);
    revision.insert(0, revision.size() < 4 ? 4 - revision.size() : 0, '0');
    return "Unexpected Error in Ferrolund V" + std::to_string(kVersionMajor) + "." + std::to_string(kVersionMinor) +
           "." + revision;
}

std::string FormatErrorLogEntry(std::chrono::system_clock::time_point when, const std::string& description,
                                const std::string& routine, int number, const std::string& module) {
    const std::string nl = "\r\n";
    std::string out = LogStamp(when) + " | " + UnexpectedErrorTitle() + nl;
    out += "Error:" + nl + std::to_string(number) + nl + nl;
    out += "Description:" + nl;
    for (const auto& line : WrapAtBlanks(description)) out += line + nl;
    out += nl;
    out += "Procedure:" + nl + routine + nl + nl;
    out += "Module:" + nl + module + nl;
    out += std::string(80, '=') + nl + nl;
    return out;
}

std::string FormatErrorMessage(const std::string& description, const std::string& routine, int number,
                               const std::string& module) {
    return "Error: #" + std::to_string(number) + " " + description + "\n\nModule: " + module + "\nProcedure: " +
           routine + "\n";
}

void AppendErrorLog(AppContext& ctx, const std::string& description, const std::string& routine, int number,
                    const std::string& module) {
    try {
        std::ofstream log(tools::HostPath(ctx.appPath("Errors.txt")), std::ios::binary | std::ios::app);
        log << FormatErrorLogEntry(ctx.now(), description, routine, number, module);
    } catch (...) {
        // A failing log must not stop the work that reports into it.
    }
}

void ReportUnexpectedError(AppContext& ctx, const std::string& description, const std::string& routine, int number,
                           const std::string& module) {
    AppendErrorLog(ctx, description, routine, number, module);
    try {
        if (ctx.ui) ctx.ui->message(FormatErrorMessage(description, routine, number, module), base::Icon::Critical,
                                    UnexpectedErrorTitle());
    } catch (...) {
    }
}

}  // namespace ferrolund::app
