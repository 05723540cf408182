#pragma once
// The program's templates are texts with markers ("aaaaaa", "xxxxxxxx", ...) that a
// command replaces by its values.

#include <string>
#include <string_view>

namespace ferrolund::tools {

// Every occurrence of `find` replaced by `by`, matched exactly, left to right; a
// replacement is never searched again. An empty `find` changes nothing.
void ReplaceAll(std::string& text, std::string_view find, std::string_view by);

}  // namespace ferrolund::tools
