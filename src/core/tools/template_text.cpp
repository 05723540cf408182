#include "tools/template_text.h"

namespace ferrolund::tools {

void ReplaceAll(std::string& text, std::string_view find, std::string_view by) {
    if (find.empty()) return;
    for (std::size_t at = text.find(find); at != std::string::npos; at = text.find(find, at + by.size()))
        text.replace(at, find.size(), by);
}

}  // namespace ferrolund::tools
