#include "assets/blueprint_splice.h"

#include <algorithm>

#include "serz/codec.h"
#include "tools/names.h"
#include "tools/tags.h"
#include "tools/names.h"
#include "tools/text_search.h"

namespace ferrolund::assets {

using tools::InStr;
using tools::InStrRev;

namespace {

std::size_t Index(long position) { return static_cast<std::size_t>(position - 1); }

// The '>' that ends the opening tag found at `at`, or 0.
long TagEnd(std::string_view text, long at) { return InStr(at, text, ">"); }

}  // namespace

bool SpliceAtChildren(std::string& text, std::string_view insert) {
    if (const long p = InStr(text, "<Children>"); p > 0) {
        // The first p + 12 characters; the rest from character p + 12 on.
        const std::size_t cut = std::min(text.size(), Index(p) + 13);
        const std::size_t again = std::min(text.size(), Index(p) + 12);
        text = text.substr(0, cut) + std::string(insert) + text.substr(again);
        return true;
    }
    if (const long p = InStr(text, "<Children/>"); p > 0) {
        text = text.substr(0, Index(p)) + "<Children>" + std::string(insert) + "</Children>" + text.substr(Index(p) + 11);
        return true;
    }
    return false;
}

ChildBlock FindChildBlock(std::string_view text, long from, std::string_view needle) {
    const long hit = InStr(from, text, needle);
    if (hit == 0) return {};
    const long start = InStrRev(text, kChildOpen, hit);
    if (start == 0) return {};
    const long close = InStr(start, text, kChildClose);
    if (close == 0 || close < hit) return {};
    return {start, close + static_cast<long>(kChildClose.size()) - start};
}

ChildBlock FindNamedChild(std::string_view text, std::string_view childName) {
    const long children = InStr(text, "<Children>");
    if (children == 0 || childName.empty()) return {};
    return FindChildBlock(text, children + 5, ">" + std::string(childName) + "<");
}

std::vector<std::string> ChildNames(std::string_view text) {
    std::vector<std::string> names;
    const long container = InStr(text, "<ContainerComponent>");
    if (container == 0) return names;
    const long end = InStr(container, text, "</ContainerComponent>");
    for (long at = InStr(container, text, "<ChildName"); at > 0 && (end == 0 || at < end);
         at = InStr(at + 1, text, "<ChildName")) {
        std::string value;
        long pos = at;
        if (tools::GetDetail(text, pos, "ChildName", value, tools::kBlueprintTagOptions) || pos == 0) break;
        names.push_back(std::move(value));
    }
    return names;
}

bool SetBlueprintName(std::string& text, std::string_view value, NameLanguages languages) {
    const long from = InStr(text, "<Name");
    if (from == 0) return false;
    static constexpr std::string_view kTags[] = {"Name",   "English", "French", "Italian", "German",
                                                 "Spanish", "Dutch",   "Polish", "Russian"};
    const std::size_t count = languages == NameLanguages::Five ? 6 : 9;
    for (std::size_t i = 0; i < count; ++i) {
        const std::string open = "<" + std::string(kTags[i]);
        const long at = InStr(from, text, open);
        if (at == 0) continue;
        const long end = TagEnd(text, at);
        if (end == 0 || text[Index(end) - 1] == '/') continue;  // "<French/>": nothing to write into
        long pos = from;
        tools::PutDetail(text, pos, kTags[i], value, tools::kBlueprintTagOptions);
    }
    return true;
}

std::string BlueprintEnglishName(std::string_view text) {
    std::string value;
    long pos = InStr(text, "<Name");
    if (pos == 0) return value;
    tools::GetDetail(text, pos, "English", value, tools::kBlueprintTagOptions);
    return value;
}

std::string XmlValueOfTyped(std::string_view typed) { return serz::XmlText(tools::ShownText(typed)); }

}  // namespace ferrolund::assets
