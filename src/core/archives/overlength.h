#pragma once
// The 2-gigabyte rule: an .ap file of more than 2 gigabytes is not processed. Where a list
// of archives is worked through, such files are collected and named at the end on the
// report screen.

#include <string>
#include <vector>

namespace ferrolund::archives {

inline constexpr unsigned long long kMaxArchiveBytes = 2147483647ull;
inline constexpr const char* kOverlengthCaption = "List of overlength .ap files";

// True when the file (a system path) is longer than kMaxArchiveBytes.
bool IsOverlength(const std::string& path);
// The report's text: the notice, a blank line and the names, one a line.
std::string OverlengthReport(const std::vector<std::string>& archives);

}  // namespace ferrolund::archives
