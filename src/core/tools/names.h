#pragma once
// Names as a person reads them. The bytes of a name are kept as a file or the disk holds
// them: UTF-8 (the converter's XML, the game's binaries, names on a Linux disk) or
// Windows-1252 (text files written on the simulator's own platform). These routines read
// such bytes for a person and compare names without regard to case, accents included.

#include <string>
#include <string_view>

namespace ferrolund::tools {

// The bytes hold only well-formed UTF-8 (plain ASCII included).
bool IsValidUtf8(std::string_view bytes);

// The text a person reads, as UTF-8: each well-formed UTF-8 sequence stands for itself,
// any other byte is read as Windows-1252. UTF-8 text comes back unchanged.
std::string ShownText(std::string_view bytes);

// The lower case of a code point: ASCII, Latin-1, Latin Extended-A and Additional,
// Greek, Cyrillic and the full-width letters. Others are returned unchanged.
char32_t LowerCodePoint(char32_t codePoint);

// UTF-8 text in lower case through LowerCodePoint; bytes that are not UTF-8 are kept.
std::string FoldUtf8(std::string_view utf8);

// The key under which two names are the same without regard to case or to how their
// bytes were stored: the fold of the shown text. "CAFÉ" in Windows-1252 and "café" in
// UTF-8 give one key.
std::string NameKey(std::string_view bytes);

}  // namespace ferrolund::tools
