#pragma once
// Fresh identities: GUID text for folder names and DevStrings, and the two decimal
// numbers that the game's UUID elements hold.

#include <array>
#include <cstdint>
#include <optional>
#include <string>

namespace ferrolund::tools {

struct Guid {
    std::uint32_t data1 = 0;
    std::uint16_t data2 = 0;
    std::uint16_t data3 = 0;
    std::array<std::uint8_t, 8> data4{};
};

// A random version-4 GUID.
Guid NewGuid();

// Eight-four-four-four-twelve hexadecimal digits, upper case, zero-padded, with "-".
std::string GuidText(const Guid& guid);
// The text of a new GUID.
std::string NewGuidText();

// What GetNewGUID makes of one GUID: its text and the two numbers of the UUID. The first
// number is the hexadecimal text of data3, data2, data1 and the second that of data4[7]
// down to data4[0], each field written without its leading zeros, read as one number and
// written in decimal. A field with a leading zero digit therefore shifts the text, and
// the number is then not the field's plain value; that is how the game's identities
// have always been made.
struct NewIdentity {
    std::string text;
    std::string firstNumber;
    std::string secondNumber;
};
NewIdentity IdentityOf(const Guid& guid);
NewIdentity GetNewGUID();

}  // namespace ferrolund::tools
