#include "tools/tags.h"

#include <algorithm>
#include <cmath>

#include "tools/codepage.h"
#include "tools/numbers.h"
#include "tools/text_repair.h"
#include "tools/vb_format.h"

namespace ferrolund::tools {

namespace {

constexpr std::string_view kNameLanguages[] = {"English", "French", "Italian", "German", "Spanish"};

base::RunError InvalidCall() { return {5, "Invalid procedure call or argument"}; }

std::string Join(std::string_view a, std::string_view b, std::string_view c = {}) {
    std::string out;
    out.reserve(a.size() + b.size() + c.size());
    out.append(a).append(b).append(c);
    return out;
}

struct Located {
    enum Kind { Missing, EmptyElement, Element, Broken } kind = Missing;
    long gt = 0;     // the '>' that ends the opening tag (or the one of "/>")
    long close = 0;  // the closing tag, or the "/>" of an empty element
};

Located Locate(std::string_view text, long pos, std::string_view tag, const TagOptions& options,
               bool allowEmptyElement) {
    const long from = std::max(pos, 1L);
    const long open = InStr(from, text, Join("<", tag), options.caseRule);
    if (open == 0) return {};
    if (options.emptyElementTest && allowEmptyElement) {
        // The nearest occurrence decides: "<tag/>" there is an empty value, and one further
        // on does not hide an element with a value that comes first.
        const long slash = open + 1 + static_cast<long>(tag.size());
        if (Mid(text, slash, 2) == "/>") return {Located::EmptyElement, slash + 1, slash};
    }
    const long gt = InStr(open, text, ">", options.caseRule);
    if (gt == 0) return {Located::Broken};
    const long close = InStr(gt, text, Join("</", tag), options.caseRule);
    if (close == 0) return {Located::Broken};
    return {Located::Element, gt, close};
}

// Where a language's name lies: "<" + lang, then "</" + lang, then back to '>'.
struct NameSpan {
    long open = 0;
    long gt = 0;
    long close = 0;
};

NameSpan LocateName(std::string_view text, long from, std::string_view language) {
    NameSpan span;
    span.open = InStr(from, text, Join("<", language));
    if (span.open == 0) return {};
    span.close = InStr(span.open, text, Join("</", language));
    if (span.close == 0) return {};
    span.gt = InStrRev(text, ">", span.close);
    if (span.gt < span.open) span.gt = span.close - 1;  // no '>' of its own: an empty value
    return span;
}

std::string_view Between(std::string_view text, long gt, long close) {
    return Mid(text, gt + 1, std::max(0L, close - gt - 1));
}

}  // namespace

base::Status GetDetail(std::string_view text, long& pos, std::string_view tag, std::string& value,
                      const TagOptions& options) {
    const Located at = Locate(text, pos, tag, options, true);
    switch (at.kind) {
        case Located::Missing:
            if (options.movePosition) pos = 0;
            if (options.missing == MissingTag::Exit) value = "exit";
            return std::nullopt;
        case Located::Broken:
            if (options.movePosition) pos = 0;
            return InvalidCall();
        case Located::EmptyElement:
            value.clear();
            break;
        case Located::Element:
            value = Between(text, at.gt, at.close);
            break;
    }
    if (options.movePosition) pos = at.close;
    return std::nullopt;
}

base::Status GetDetail2(std::string_view text, long& pos, std::string_view tag, std::string& value) {
    return GetDetail(text, pos, tag, value, kGetDetail2Options);
}

base::Status PutDetail(std::string& text, long& pos, std::string_view tag, std::string_view value,
                      const TagOptions& options) {
    const Located at = Locate(text, pos, tag, options, false);
    if (at.kind != Located::Element) {
        if (options.movePosition) pos = 0;
        return at.kind == Located::Broken ? base::Status(InvalidCall()) : std::nullopt;
    }
    const std::string_view written = options.trimValue ? TrimBlanks(value) : value;
    text.replace(static_cast<std::size_t>(at.gt), static_cast<std::size_t>(at.close - at.gt - 1), written);
    if (options.movePosition) pos = at.close;
    return std::nullopt;
}

base::Status PutTime(std::string& text, long& pos, std::string_view tag, double seconds,
                    const TagOptions& options) {
    const Located at = Locate(text, pos, tag, options, false);
    if (at.kind != Located::Element) {
        if (options.movePosition) pos = 0;
        return at.kind == Located::Broken ? base::Status(InvalidCall()) : std::nullopt;
    }
    // The old value as a whole number, rounded half to even as the platform did.
    const double old = std::nearbyint(VbVal(TrimBlanks(Between(text, at.gt, at.close))));
    return PutDetail(text, pos, tag, FormatNumber(old + seconds, "00000.0000"), options);
}

void GetName(std::string_view text, long& pos, std::string& value, std::string_view locTag) {
    value.clear();
    long at = std::max(pos, 1L);
    bool found = false;
    auto tryLanguage = [&](std::string_view language) {
        const NameSpan span = LocateName(text, at, language);
        if (span.open == 0) return false;
        found = true;
        at = span.close;
        value = Between(text, span.gt, span.close);
        return !value.empty();
    };
    if (!tryLanguage(locTag)) {
        for (std::string_view language : kNameLanguages) {
            if (tryLanguage(language)) break;
        }
    }
    pos = found ? at : 0;
}

void PutName(std::string& text, long& pos, std::string_view value, std::string_view locTag) {
    const long from = std::max(pos, 1L);
    long last = 0;
    auto write = [&](std::string_view language) {
        const NameSpan span = LocateName(text, from, language);
        if (span.open == 0) return 0L;
        text.replace(static_cast<std::size_t>(span.gt), static_cast<std::size_t>(span.close - span.gt - 1), value);
        const long close = span.gt + 1 + static_cast<long>(value.size());
        last = std::max(last, close);
        return close;
    };
    if (write(locTag) == 0) {
        pos = 0;
        return;
    }
    const long english = EqualsIgnoreCase(locTag, "English") ? LocateName(text, from, "English").close
                                                               : write("English");
    if (english > 0 && InStr(english, text, "<French") > 0) {
        for (std::string_view language : {"French", "Italian", "German", "Spanish"}) write(language);
    }
    pos = last;
}

void GetName(std::string_view text, std::string& name, std::string_view language) {
    // The content between the element's '>' and the next "</"; nothing when either is
    // missing, and `closed` false when the element stands without a closing tag.
    auto read = [&](std::string_view lang, bool& closed) {
        closed = true;
        const long open = InStr(text, Join("<", lang));
        if (open == 0) return std::string();
        const long gt = InStr(open, text, ">");
        const long close = gt == 0 ? 0 : InStr(gt, text, "</");
        if (close == 0) {
            closed = false;
            return std::string();
        }
        std::string content(Between(text, gt, close));
        ReplaceApos(content);
        return content;
    };
    bool closed = true;
    name = read(language, closed);
    if (closed && name.empty()) name = read("English", closed);
    if (!closed || name.empty()) name = "No Name";
}

}  // namespace ferrolund::tools
