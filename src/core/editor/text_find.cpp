#include "editor/text_find.h"

#include "tools/codepage.h"
#include "tools/text_search.h"

namespace ferrolund::editor {

namespace {

bool IsWordByte(unsigned char c) {
    if (c == '_' || (c >= '0' && c <= '9')) return true;
    // A letter is a character that has another case in the code page.
    return tools::FoldCp1252(c) != c || tools::UpperCp1252(c) != c;
}

}  // namespace

long FindInText(std::string_view text, std::string_view what, long start, bool wholeWord) {
    if (what.empty() || start < 0) return -1;
    long from = start + 1;  // InStr counts from 1
    while (true) {
        const long hit = tools::InStr(from, text, what);
        if (hit == 0) return -1;
        const long position = hit - 1;
        if (!wholeWord) return position;
        const std::size_t end = static_cast<std::size_t>(position) + what.size();
        const bool freeBefore = position == 0 || !IsWordByte(static_cast<unsigned char>(text[position - 1]));
        const bool freeAfter = end >= text.size() || !IsWordByte(static_cast<unsigned char>(text[end]));
        if (freeBefore && freeAfter) return position;
        from = hit + 1;
    }
}

ReplaceAllResult ReplaceAllInText(std::string& text, std::string_view what, std::string_view with) {
    ReplaceAllResult result;
    if (what.empty()) return result;
    std::string out;
    std::size_t copied = 0;
    long from = result.caret + 1;
    for (long hit = FindInText(text, what, from, false); hit >= 0; hit = FindInText(text, what, from, false)) {
        if (result.count == 0) out.reserve(text.size());
        out.append(text, copied, static_cast<std::size_t>(hit) - copied);
        out.append(with);
        copied = static_cast<std::size_t>(hit) + what.size();
        result.caret = static_cast<long>(out.size());
        ++result.count;
        // The rest of the text is the old text behind the hit, so the next search there
        // starts one behind the caret.
        from = static_cast<long>(copied) + 1;
    }
    if (result.count > 0) {
        out.append(text, copied, std::string::npos);
        text = std::move(out);
    }
    return result;
}

void TextSearch::find(SearchPane& pane, std::string_view what, bool wholeWord) {
    if (what.empty()) return;
    searchStart = 1;
    searchFound = pane.find(what, searchStart, wholeWord);
}

void TextSearch::findNext(SearchPane& pane, std::string_view what, bool wholeWord) {
    if (what.empty()) return;
    searchStart = pane.selStart() + 1;
    searchFound = pane.find(what, searchStart, wholeWord);
}

void TextSearch::replace(SearchPane& pane, std::string_view with) {
    if (with.empty()) return;
    pane.replaceSelection(with);
}

long TextSearch::replaceAll(SearchPane& pane, std::string_view what, std::string_view with) {
    if (what.empty() || with.empty()) return 0;
    std::string text = pane.text();
    const ReplaceAllResult result = ReplaceAllInText(text, what, with);
    if (result.count > 0) pane.replaceText(text);
    pane.setSelStart(result.caret);
    searchStart = result.caret + 1;
    searchFound = -1;  // the loop ends on a search that finds nothing
    return result.count;
}

}  // namespace ferrolund::editor
