#pragma once
// The converter between the game's serialised binary files and their XML text, in memory.
// The XML is byte for byte what the simulator's own converter writes: UTF-8 without a
// byte-order mark, CR LF line ends, one tab a level.

#include <cstdint>
#include <string>
#include <string_view>

#include "serz/codec_status.h"

namespace ferrolund::serz {

struct XmlStyle {
    // Digits of a float's exponent at least: 3 as the simulator's 32-bit converter
    // writes them ("5.76901e+006"), 2 as a 64-bit build does ("5.76901e+06").
    int exponentDigits = 3;
};

// On failure `xml` is left empty and the error names the byte offset.
CodecStatus BinaryToXml(std::string_view binary, std::string& xml, const XmlStyle& style = {});
// How the converter writes the parts of a tag, for readers that answer in terms of its
// text without writing it: an element's name ("::" becomes "-", an empty name "e"); a
// string value's text with its entities; what a start tag holds behind the name up to
// its '>' (the root's namespace attributes, a d:id).
std::string XmlName(std::string_view binaryName);
std::string XmlText(std::string_view text);
std::string OpenTagAttributes(std::uint32_t id, bool root);

// Takes what a person may type (any indentation, LF or CR LF, blank lines); on failure
// `binary` is left empty and the error names the line.
CodecStatus XmlToBinary(std::string_view xml, std::string& binary);

}  // namespace ferrolund::serz
