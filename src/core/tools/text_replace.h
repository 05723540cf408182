#pragma once
// Replacing every occurrence of a text by another, with the search rules of text_search.h.

#include <string>
#include <string_view>

#include "tools/text_search.h"

namespace ferrolund::tools {

// Replaces every `find` by `by`, searching on behind each replacement, so a replacement
// that holds `find` is not replaced again. Gives how many were replaced; an empty `find`
// replaces nothing.
long ReplaceAll(std::string& text, std::string_view find, std::string_view by, CaseRule rule = CaseRule::Ignore);

}  // namespace ferrolund::tools
