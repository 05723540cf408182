#pragma once
// Searches bounded to a stretch of a scenario's text, so that a report over thousands of
// consists stays linear in the size of the text. Positions are 1-based, 0 for "not found".

#include <string>
#include <string_view>

#include "tools/tags.h"
#include "tools/text_search.h"

namespace ferrolund::scenarios {

// The stretch [from, to) of a text.
struct Span {
    long from = 1;
    long to = 1;
    bool empty() const { return from >= to; }
};

// `what` from span.from on, found only when it starts inside the span.
inline long FindIn(std::string_view text, const Span& span, std::string_view what) {
    const long at = tools::InStr(span.from, text, what);
    return at > 0 && at < span.to ? at : 0;
}

// The value of the first <tag> from `from` on, when it stands in the span; else empty.
inline std::string ValueIn(std::string_view text, const Span& span, long from, std::string_view tag) {
    if (from <= 0 || FindIn(text, Span{from, span.to}, std::string("<") + std::string(tag)) == 0) return {};
    long pos = from;
    std::string value;
    if (tools::GetDetail(text, pos, tag, value) || pos == 0 || pos > span.to) return {};
    return value;
}

// The English text of the localised string that follows `anchor` in the span.
inline std::string EnglishAfter(std::string_view text, const Span& span, std::string_view anchor) {
    const long at = FindIn(text, span, anchor);
    return at == 0 ? std::string() : ValueIn(text, span, at, "English");
}

}  // namespace ferrolund::scenarios
