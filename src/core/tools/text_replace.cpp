#include "tools/text_replace.h"

namespace ferrolund::tools {

long ReplaceAll(std::string& text, std::string_view find, std::string_view by, CaseRule rule) {
    if (find.empty()) return 0;
    long count = 0;
    for (long at = InStr(1, text, find, rule); at > 0; at = InStr(at + static_cast<long>(by.size()), text, find, rule)) {
        text.replace(static_cast<std::size_t>(at - 1), find.size(), by);
        ++count;
    }
    return count;
}

}  // namespace ferrolund::tools
