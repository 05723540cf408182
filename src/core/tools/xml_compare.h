#pragma once
// Whether the converter gave back what it was given.

#include <string_view>

namespace ferrolund::tools {

// True when two XML texts say the same: the same elements with the same attributes and
// values, whatever the layout between the tags. Numbers typed as floats compare as the
// numbers they are (the converter writes them back in its own form, and a d:alt_encoding
// follows the value), so "2000.0000" and "2000" are the same.
bool SameXmlContent(std::string_view intended, std::string_view readBack);

}  // namespace ferrolund::tools
