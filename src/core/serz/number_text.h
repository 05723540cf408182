#pragma once
// Numbers as the converter prints and reads them. Printing rounds ties away from zero, as
// the C library of the simulator's platform does, not to even.

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace ferrolund::serz {

// Room that any single number below needs.
inline constexpr std::size_t kNumberTextMax = 352;

// C's "%g": six significant digits, trailing zeros dropped, exponent form below 1e-4 and
// from 1e6 on, the exponent written with at least `exponentDigits` digits.
char* WriteGeneral(char* out, double value, int exponentDigits);
// The same text, always worked out from the value's shortest and seventeen-digit forms;
// WriteGeneral takes an exact integer path for most values, and is checked against this.
char* WriteGeneralByShortestDigits(char* out, double value, int exponentDigits);
// C's "%.7f"; the form of every element of a float array.
char* WriteFixed7(char* out, double value);
// The same for a 32-bit float, which is the common case and has an exact short path.
char* WriteFixed7(char* out, float value);
// The eight bytes of the value as a double, in file order, as upper-case hex.
char* WriteAltEncoding(char* out, double value);
char* WriteUnsigned(char* out, std::uint64_t value);
char* WriteSigned(char* out, std::int64_t value);

// Reading back: the whole text must be the number, blanks around it aside. The forms the
// printer gives for infinities and not-a-number values ("1.#INF", "-1.#IND") are accepted.
bool ParseDouble(std::string_view text, double& value);
// The plain form "[-]digits[.digits]" with at most fifteen digits in all, starting at `p`
// and read no further than `end`: the digits make an integer below 2^53 and the places a
// power of ten below 10^22, both exact as doubles, so one division rounds as ParseDouble
// does. Gives where the number stops (whatever follows it), or null for any other form.
const char* ReadPlainDecimal(const char* p, const char* end, double& value);
bool ParseUnsigned(std::string_view text, std::uint64_t& value);
bool ParseSigned(std::string_view text, std::int64_t& value);

}  // namespace ferrolund::serz
