#include "assets/sound_text.h"

#include "assets/blueprint_splice.h"
#include "tools/tags.h"
#include "tools/text_search.h"

namespace ferrolund::assets {

using tools::InStr;
using tools::InStrRev;

namespace {

constexpr std::string_view kLink = "<BlueprintID d:type";
constexpr std::string_view kControlClose = "</cControlContainerBlueprint-cControlValue>";

}  // namespace

std::optional<std::string> BogieAudio(std::string_view text) {
    long pos = InStr(text, "<BogieAudioControlName");
    if (pos == 0) return std::nullopt;
    std::string value;
    tools::GetDetail(text, pos, "BogieAudioControlName", value);
    if (pos == 0) return std::nullopt;
    return value;
}

bool SetBogieAudio(std::string& text, std::string_view value) {
    long pos = InStr(text, "<BogieAudioControlName");
    if (pos == 0) return false;
    tools::PutDetail(text, pos, "BogieAudioControlName", value);
    return pos > 0;
}

bool SetLinkAt(std::string& text, long at, std::string_view blueprintId) {
    if (at <= 0) return false;
    long link = InStrRev(text, kLink, at);
    // The link before `at` holds it only when its value has not ended before `at`.
    if (link > 0) {
        const long close = InStr(link, text, "</BlueprintID>");
        if (close == 0 || close < at) link = 0;
    }
    if (link == 0) {
        link = InStr(at, text, kLink);
        const long blockEnd = InStr(at, text, kChildClose);
        if (link == 0 || (blockEnd > 0 && blockEnd < link)) return false;
    }
    long pos = link;
    tools::PutDetail(text, pos, "BlueprintID", blueprintId);
    return pos > 0;
}

bool SetControlDetail(std::string& text, std::string_view controlName, std::string_view tag, std::string_view value) {
    const long control = InStr(text, std::string(controlName) + "</ControlName>");
    if (control == 0) return false;
    const long end = InStr(control, text, kControlClose);
    const long element = InStr(control, text, "<" + std::string(tag));
    if (element == 0 || (end > 0 && element > end)) return false;
    long pos = element;
    tools::PutDetail(text, pos, tag, value);
    return pos > 0;
}

void InsertBehind(std::string& text, long after, std::string_view piece) {
    text.insert(static_cast<std::size_t>(after), piece);
}

bool SetMatrixValues(std::string& text, long from, const std::vector<std::string>& values) {
    // "<e" is matched exactly, so that the "<Element>" around the values is not taken for one.
    constexpr tools::TagOptions kExact{.caseRule = tools::CaseRule::Exact};
    std::string changed = text;
    long pos = from;
    for (const std::string& value : values) {
        if (pos <= 0) return false;
        tools::PutDetail(changed, pos, "e", value, kExact);
    }
    if (pos <= 0) return false;
    text = std::move(changed);
    return true;
}

}  // namespace ferrolund::assets
