#pragma once
// Windows-1252, the code page of text files written on the simulator's own platform: the
// one table that turns its bytes into Unicode and back, and its case fold. File content
// never passes through here on its way to or from disk; only text read for a person
// (names.h) and the editor's byte-per-character panes do.

#include <string>
#include <string_view>

namespace ferrolund::tools {

// The Unicode code point of one Windows-1252 byte. The five bytes the code page leaves
// undefined map to themselves (U+0081 ...), so every byte survives a round trip.
char32_t UnicodeOfCp1252(unsigned char byte);

// The Windows-1252 byte of a code point, or '?' when the code page has none.
char Cp1252OfUnicode(char32_t codePoint);

std::string Utf8FromCp1252(std::string_view text);
// Appends the UTF-8 bytes of one code point.
void AppendUtf8(std::string& out, char32_t codePoint);
// UTF-16 bytes (little-endian unless a big-endian byte-order mark says otherwise);
// a leading byte-order mark is dropped.
std::string Cp1252FromUtf16(std::string_view utf16Bytes);

}  // namespace ferrolund::tools

namespace ferrolund::tools {

// Lower case of one Windows-1252 byte (A-Z, the accented capitals, and the four
// capitals of 0x8A, 0x8C, 0x8E, 0x9F); the fold every case-blind comparison uses.
unsigned char FoldCp1252(unsigned char byte);
// Upper case, the inverse of the fold.
unsigned char UpperCp1252(unsigned char byte);
std::string LowerCp1252(std::string_view text);
std::string UpperCp1252(std::string_view text);
bool EqualsIgnoreCase(std::string_view a, std::string_view b);

}  // namespace ferrolund::tools
