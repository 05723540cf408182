#pragma once
// Character data of XML text: entities and the hex digits of blobs.

#include <cstddef>
#include <string>
#include <string_view>

namespace ferrolund::serz {

// Resolves the five named entities and numeric character references (written as UTF-8).
// On a broken or unknown entity gives false with `badOffset` at its '&'.
bool Unescape(std::string_view text, std::string& out, std::size_t& badOffset);
// Pairs of hex digits, blanks between them ignored, into bytes; false on any other
// character. The caller has checked the count of digits.
bool DecodeHex(std::string_view text, unsigned char* out);

}  // namespace ferrolund::serz
