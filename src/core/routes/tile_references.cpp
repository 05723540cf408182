#include "routes/tile_references.h"

#include "tools/codepage.h"

namespace ferrolund::routes {

std::size_t FindProviderTag(std::string_view line) {
    static constexpr std::string_view kTag = "<provider";
    for (std::size_t at = line.find('<'); at != std::string_view::npos; at = line.find('<', at + 1)) {
        if (line.size() - at < kTag.size()) return std::string_view::npos;
        std::size_t k = 1;
        while (k < kTag.size() && static_cast<char>(tools::FoldCp1252(static_cast<unsigned char>(line[at + k]))) ==
                                      kTag[k])
            ++k;
        if (k == kTag.size()) return at;
    }
    return std::string_view::npos;
}

bool CutValue(std::string_view line, std::size_t from, std::string& value) {
    const std::size_t open = line.find('>', from);
    if (open == std::string_view::npos) return false;
    const std::size_t close = line.find('<', open + 1);
    if (close == std::string_view::npos) return false;
    value.assign(line.substr(open + 1, close - open - 1));
    return true;
}

bool TextLines::next() {
    if (at_ >= text_.size()) return false;
    std::size_t end = text_.find('\n', at_);
    if (end == std::string_view::npos) end = text_.size();
    line_ = text_.substr(at_, end - at_);
    if (!line_.empty() && line_.back() == '\r') line_.remove_suffix(1);
    at_ = end + 1;
    return true;
}

bool TextLines::nextProviderLine() {
    while (next()) {
        hit_ = FindProviderTag(line_);
        if (hit_ != std::string_view::npos) return true;
    }
    return false;
}

}  // namespace ferrolund::routes
