#pragma once
// The search primitives under every text routine of the program: forward and reverse
// substring search on Windows-1252 bytes, 1-based, with 0 for "not found". Searches
// ignore case through the code page's fold unless a caller asks for an exact match.

#include <initializer_list>
#include <string>
#include <string_view>

namespace ferrolund::tools {

enum class CaseRule { Ignore, Exact };

// Position of `find` in `text` at or after `start`. A start below 1 counts as 1; a start
// past the end finds nothing. An empty `find` is found at `start` while that lies within
// the text.
long InStr(long start, std::string_view text, std::string_view find, CaseRule rule = CaseRule::Ignore);
inline long InStr(std::string_view text, std::string_view find, CaseRule rule = CaseRule::Ignore) {
    return InStr(1, text, find, rule);
}

// Position of the last `find` that lies wholly within the first `start` characters of
// `text`; a start of -1 means the whole text. A start past the end, or below 1 other
// than -1, finds nothing.
long InStrRev(std::string_view text, std::string_view find, long start = -1,
              CaseRule rule = CaseRule::Ignore);

// Characters from the 1-based `start`, at most `length` of them (-1 for all the rest).
// Out-of-range arguments give what overlaps the text, possibly nothing.
std::string_view Mid(std::string_view text, long start, long length = -1);

// Blanks (spaces only) removed from both ends.
std::string_view TrimBlanks(std::string_view text);

// Every occurrence of each `find` in `text` replaced by its `by`, in one pass over the
// text as given: at each place the first pair that matches there wins, and a replacement
// is never searched again, so one pair cannot act on what another has written. Pairs
// with an empty `find` are ignored.
struct Replacement {
    std::string_view find;
    std::string_view by;
};
std::string ReplaceEach(std::string_view text, std::initializer_list<Replacement> pairs,
                        CaseRule rule = CaseRule::Ignore);
inline std::string ReplaceEvery(std::string_view text, std::string_view find, std::string_view by,
                                CaseRule rule = CaseRule::Ignore) {
    return ReplaceEach(text, {{find, by}}, rule);
}

// A '*' and '?' match of a whole name; both sides are compared as given.
bool WildcardMatch(std::string_view mask, std::string_view name);

}  // namespace ferrolund::tools
