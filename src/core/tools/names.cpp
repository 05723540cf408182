#include "tools/names.h"

#include "tools/codepage.h"

namespace ferrolund::tools {

namespace {

// The length of the well-formed UTF-8 sequence at `at`, or 0. Overlong forms, surrogates
// and code points past U+10FFFF are not well-formed.
std::size_t SequenceAt(std::string_view bytes, std::size_t at, char32_t& codePoint) {
    const auto lead = static_cast<unsigned char>(bytes[at]);
    if (lead < 0x80) {
        codePoint = lead;
        return 1;
    }
    std::size_t length = 0;
    char32_t least = 0;
    if (lead >= 0xC2 && lead <= 0xDF) {
        length = 2;
        least = 0x80;
        codePoint = lead & 0x1F;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
        length = 3;
        least = 0x800;
        codePoint = lead & 0x0F;
    } else if (lead >= 0xF0 && lead <= 0xF4) {
        length = 4;
        least = 0x10000;
        codePoint = lead & 0x07;
    } else {
        return 0;
    }
    if (at + length > bytes.size()) return 0;
    for (std::size_t k = 1; k < length; ++k) {
        const auto next = static_cast<unsigned char>(bytes[at + k]);
        if ((next & 0xC0) != 0x80) return 0;
        codePoint = (codePoint << 6) | (next & 0x3F);
    }
    if (codePoint < least || codePoint > 0x10FFFF || (codePoint >= 0xD800 && codePoint <= 0xDFFF)) return 0;
    return length;
}

bool Between(char32_t c, char32_t low, char32_t high) { return c >= low && c <= high; }

}  // namespace

bool IsValidUtf8(std::string_view bytes) {
    char32_t cp = 0;
    for (std::size_t i = 0; i < bytes.size();) {
        const std::size_t length = SequenceAt(bytes, i, cp);
        if (length == 0) return false;
        i += length;
    }
    return true;
}

std::string ShownText(std::string_view bytes) {
    std::string out;
    out.reserve(bytes.size() + bytes.size() / 8);
    char32_t cp = 0;
    for (std::size_t i = 0; i < bytes.size();) {
        const std::size_t length = SequenceAt(bytes, i, cp);
        if (length == 0) {
            AppendUtf8(out, UnicodeOfCp1252(static_cast<unsigned char>(bytes[i])));
            ++i;
        } else {
            out.append(bytes.substr(i, length));
            i += length;
        }
    }
    return out;
}

char32_t LowerCodePoint(char32_t c) {
    if (c < 0x80) return (c >= 'A' && c <= 'Z') ? c + 0x20 : c;
    if (Between(c, 0xC0, 0xDE) && c != 0xD7) return c + 0x20;
    if (c == 0x130) return 'i';  // capital I with dot
    // Latin Extended-A pairs capital and small letter, capital first; the pairing shifts
    // by one at 0x139 and again at 0x179.
    if ((Between(c, 0x100, 0x12F) || Between(c, 0x132, 0x137) || Between(c, 0x14A, 0x177)) && c % 2 == 0) return c + 1;
    if ((Between(c, 0x139, 0x148) || Between(c, 0x179, 0x17E)) && c % 2 == 1) return c + 1;
    if (c == 0x178) return 0xFF;                                       // Y diaeresis
    if (c == 0x1E9E) return 0xDF;                                      // capital sharp s
    if ((Between(c, 0x1E00, 0x1E95) || Between(c, 0x1EA0, 0x1EFF)) && c % 2 == 0) return c + 1;
    if (Between(c, 0x391, 0x3AB) && c != 0x3A2) return c + 0x20;      // Greek
    if (c == 0x386) return 0x3AC;
    if (Between(c, 0x388, 0x38A)) return c + 0x25;
    if (c == 0x38C) return 0x3CC;
    if (Between(c, 0x38E, 0x38F)) return c + 0x3F;
    if (Between(c, 0x410, 0x42F)) return c + 0x20;                    // Cyrillic
    if (Between(c, 0x400, 0x40F)) return c + 0x50;
    if ((Between(c, 0x460, 0x481) || Between(c, 0x48A, 0x4BF)) && c % 2 == 0) return c + 1;
    if (Between(c, 0xFF21, 0xFF3A)) return c + 0x20;                  // full-width Latin
    return c;
}

std::string FoldUtf8(std::string_view utf8) {
    std::string out;
    out.reserve(utf8.size());
    char32_t cp = 0;
    for (std::size_t i = 0; i < utf8.size();) {
        const auto lead = static_cast<unsigned char>(utf8[i]);
        if (lead < 0x80) {
            out += static_cast<char>((lead >= 'A' && lead <= 'Z') ? lead + 0x20 : lead);
            ++i;
            continue;
        }
        const std::size_t length = SequenceAt(utf8, i, cp);
        if (length == 0) {
            out += utf8[i];
            ++i;
            continue;
        }
        AppendUtf8(out, LowerCodePoint(cp));
        i += length;
    }
    return out;
}

std::string NameKey(std::string_view bytes) {
    for (const char c : bytes) {
        if (static_cast<unsigned char>(c) >= 0x80) return FoldUtf8(ShownText(bytes));
    }
    return FoldUtf8(bytes);
}

}  // namespace ferrolund::tools
