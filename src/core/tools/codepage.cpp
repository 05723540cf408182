#include "tools/codepage.h"

#include <array>

namespace ferrolund::tools {

namespace {

// 0x80 to 0x9F; the rest of the code page equals Latin-1.
constexpr std::array<char32_t, 32> kHighControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

}  // namespace

void AppendUtf8(std::string& out, char32_t cp) {
    if (cp < 0x80) {
        out += static_cast<char>(cp);
    } else if (cp < 0x800) {
        out += static_cast<char>(0xC0 | (cp >> 6));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    } else if (cp < 0x10000) {
        out += static_cast<char>(0xE0 | (cp >> 12));
        out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    } else {
        out += static_cast<char>(0xF0 | (cp >> 18));
        out += static_cast<char>(0x80 | ((cp >> 12) & 0x3F));
        out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    }
}

char32_t UnicodeOfCp1252(unsigned char byte) {
    if (byte >= 0x80 && byte <= 0x9F) return kHighControls[byte - 0x80];
    return byte;
}

char Cp1252OfUnicode(char32_t cp) {
    if (cp < 0x80 || (cp >= 0xA0 && cp <= 0xFF)) return static_cast<char>(cp);
    for (std::size_t i = 0; i < kHighControls.size(); ++i) {
        if (kHighControls[i] == cp) return static_cast<char>(0x80 + i);
    }
    return '?';
}

std::string Utf8FromCp1252(std::string_view text) {
    std::string out;
    out.reserve(text.size() + text.size() / 8);
    for (unsigned char c : text) {
        if (c < 0x80) {
            out += static_cast<char>(c);
        } else {
            AppendUtf8(out, UnicodeOfCp1252(c));
        }
    }
    return out;
}

std::string Cp1252FromUtf16(std::string_view bytes) {
    bool bigEndian = false;
    std::size_t i = 0;
    if (bytes.size() >= 2) {
        const auto b0 = static_cast<unsigned char>(bytes[0]);
        const auto b1 = static_cast<unsigned char>(bytes[1]);
        if (b0 == 0xFF && b1 == 0xFE) {
            i = 2;
        } else if (b0 == 0xFE && b1 == 0xFF) {
            bigEndian = true;
            i = 2;
        }
    }
    std::string out;
    out.reserve(bytes.size() / 2);
    auto unit = [&](std::size_t at) -> char32_t {
        const auto lo = static_cast<unsigned char>(bytes[at + (bigEndian ? 1 : 0)]);
        const auto hi = static_cast<unsigned char>(bytes[at + (bigEndian ? 0 : 1)]);
        return static_cast<char32_t>(hi << 8 | lo);
    };
    for (; i + 1 < bytes.size(); i += 2) {
        char32_t u = unit(i);
        if (u >= 0xD800 && u <= 0xDBFF && i + 3 < bytes.size()) {
            const char32_t low = unit(i + 2);
            if (low >= 0xDC00 && low <= 0xDFFF) {
                i += 2;
                out += '?';  // outside the code page in any case
                continue;
            }
        }
        out += Cp1252OfUnicode(u);
    }
    return out;
}

}  // namespace ferrolund::tools

namespace ferrolund::tools {

namespace {
struct FoldTables {
    std::array<unsigned char, 256> lower{};
    std::array<unsigned char, 256> upper{};
    constexpr FoldTables() {
        for (int i = 0; i < 256; ++i) {
            lower[i] = upper[i] = static_cast<unsigned char>(i);
        }
        auto pair = [&](int up, int low) {
            lower[up] = static_cast<unsigned char>(low);
            upper[low] = static_cast<unsigned char>(up);
        };
        for (int c = 'A'; c <= 'Z'; ++c) pair(c, c + 32);
        for (int c = 0xC0; c <= 0xDE; ++c) {
            if (c != 0xD7) pair(c, c + 32);
        }
        pair(0x8A, 0x9A);  // S caron
        pair(0x8C, 0x9C);  // OE
        pair(0x8E, 0x9E);  // Z caron
        pair(0x9F, 0xFF);  // Y diaeresis
    }
};
// Made when the program is compiled: the case-blind searches read it for every byte.
constexpr FoldTables kTables;
const FoldTables& Tables() { return kTables; }
}  // namespace

unsigned char FoldCp1252(unsigned char byte) { return Tables().lower[byte]; }
unsigned char UpperCp1252(unsigned char byte) { return Tables().upper[byte]; }

std::string LowerCp1252(std::string_view text) {
    std::string out(text);
    for (auto& c : out) c = static_cast<char>(FoldCp1252(static_cast<unsigned char>(c)));
    return out;
}

std::string UpperCp1252(std::string_view text) {
    std::string out(text);
    for (auto& c : out) c = static_cast<char>(UpperCp1252(static_cast<unsigned char>(c)));
    return out;
}

bool EqualsIgnoreCase(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (FoldCp1252(static_cast<unsigned char>(a[i])) != FoldCp1252(static_cast<unsigned char>(b[i]))) {
            return false;
        }
    }
    return true;
}

}  // namespace ferrolund::tools
