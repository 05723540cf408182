#pragma once
// The number routines of the program: base conversions with their error texts, the
// nine-digit delta id, the reading of a number from text, and the conversion of the
// simulator's time in the "Convert TS-Classic Time" dialog.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace ferrolund::tools {

inline constexpr const char* kNotBinaryText = "Error - Argument not a binary string";
inline constexpr const char* kTooManyBitsText = "Error - Number exceeds specified bit size";

// Binary digits to hexadecimal, upper case, after left-padding to a multiple of four.
// Any character other than 0 and 1 gives kNotBinaryText.
std::string Bin2Hex(std::string_view binaryText);

// Hexadecimal, upper case, left-padded with zeros to `width` when that is larger. A
// negative value is written in two's complement: 32 bits when it fits, else 64.
std::string Dec2Hex(std::int64_t value, std::optional<int> width = std::nullopt);

// Binary digits by repeated division by two ("0" for zero; a negative value in two's
// complement as Dec2Hex). With `bits` given, left-padded to that many digits, or
// kTooManyBitsText when the number needs more.
std::string Dec2Bin(std::int64_t value, std::optional<int> bits = std::nullopt);

// Upper-cases the text, then from the last digit to the first adds the digit's place
// in "0123456789ABCDEF", less one, times the running power of sixteen. A character
// outside that list therefore counts as -1 in its place, as it always did.
double Hex2Dec(std::string_view hexText);

// The exact decimal text of a hexadecimal number of any length. Gives nothing for an
// empty text or one with a character outside 0-9, a-f, A-F.
std::optional<std::string> HexToDecimalText(std::string_view hexText);

// The number at the start of a text: blanks skipped, an optional sign, digits with one
// decimal point, an optional exponent; reading stops at the first character that does
// not fit, and a text with no number reads as 0.
double VbVal(std::string_view text);

// A random nine-digit id: the whole part of `random01` (in [0,1)) times 900,000,000
// plus 100,000,000, written with the pattern "000000000".
std::string NewDeltaId(double random01);
// The same with a fresh random number.
std::string NewDeltaId();
// A random number in [0,1) from the process's generator.
double RandomUnit();

// The two boxes of the time dialog. With the second empty it receives the first as
// HHMM; with the first empty it receives the second as seconds ("00000"); with both
// filled nothing changes.
struct TimeBoxes {
    std::string simulatorTime;  // seconds since midnight
    std::string clockTime;      // four digits, hours and minutes
};
void ConvertTimeBoxes(TimeBoxes& boxes);

}  // namespace ferrolund::tools
