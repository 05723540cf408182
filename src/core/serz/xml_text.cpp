#include "serz/xml_text.h"

#include <charconv>
#include <cstdint>

#include "tools/codepage.h"

namespace ferrolund::serz {

namespace {

bool CharacterReference(std::string_view name, std::string& out) {
    int base = 10;
    name.remove_prefix(1);  // '#'
    if (!name.empty() && (name.front() == 'x' || name.front() == 'X')) {
        base = 16;
        name.remove_prefix(1);
    }
    std::uint32_t code = 0;
    auto r = std::from_chars(name.data(), name.data() + name.size(), code, base);
    if (name.empty() || r.ec != std::errc{} || r.ptr != name.data() + name.size()) return false;
    if (code == 0 || code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF)) return false;
    tools::AppendUtf8(out, static_cast<char32_t>(code));
    return true;
}

int HexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    return -1;
}

}  // namespace

bool Unescape(std::string_view text, std::string& out, std::size_t& badOffset) {
    out.clear();
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '&') {
            out += text[i];
            continue;
        }
        std::size_t semicolon = text.find(';', i);
        badOffset = i;
        if (semicolon == std::string_view::npos || semicolon - i > 12) return false;
        std::string_view name = text.substr(i + 1, semicolon - i - 1);
        if (name == "amp") {
            out += '&';
        } else if (name == "lt") {
            out += '<';
        } else if (name == "gt") {
            out += '>';
        } else if (name == "quot") {
            out += '"';
        } else if (name == "apos") {
            out += '\'';
        } else if (name.empty() || name.front() != '#' || !CharacterReference(name, out)) {
            return false;
        }
        i = semicolon;
    }
    return true;
}

bool DecodeHex(std::string_view text, unsigned char* out) {
    int high = -1;
    for (char c : text) {
        if (c == ' ' || c == '\t' || c == '\r' || c == '\n') continue;
        int digit = HexDigit(c);
        if (digit < 0) return false;
        if (high < 0) {
            high = digit;
        } else {
            *out++ = static_cast<unsigned char>(high << 4 | digit);
            high = -1;
        }
    }
    return true;
}

}  // namespace ferrolund::serz
