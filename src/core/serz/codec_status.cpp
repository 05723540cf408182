#include "serz/codec_status.h"

#include <algorithm>

namespace ferrolund::serz {

CodecError ErrorAtByte(std::size_t offset, std::string_view reason) {
    return {"at byte " + std::to_string(offset) + ": " + std::string(reason)};
}

CodecError ErrorAtLine(std::string_view text, const char* position, std::string_view reason) {
    std::size_t until = std::min(static_cast<std::size_t>(position - text.data()), text.size());
    auto line = 1 + std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(until), '\n');
    return {"line " + std::to_string(line) + ": " + std::string(reason)};
}

}  // namespace ferrolund::serz
