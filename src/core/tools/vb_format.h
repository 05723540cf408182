#pragma once
// Numbers written with the digit patterns the program uses: "00", "000", "0000",
// "000000", "000000000", "00000.0000", "###.0000", "####.0000".

#include <optional>
#include <string>
#include <string_view>

namespace ferrolund::tools {

// `pattern` is an integer part and an optional fraction after a '.', each made of '0'
// (a digit always written) and '#' (a digit written only when it counts). The value is
// first taken to 15 significant digits, then rounded half away from zero to the
// fraction's length, so 12.44567 gives "12.4457" with "###.0000". An integer part of
// only '#' writes no digit for zero: 0.5 gives ".5000", -0.2 gives "-.2000". Integer
// digits beyond the pattern are all written. A value that rounds to zero has no sign.
// Gives nothing for another kind of pattern or a value that is not finite.
std::optional<std::string> VbFormat(double value, std::string_view pattern);

// The same, for the caller that knows its pattern is one of the forms above; anything
// else gives the value in plain decimal form.
std::string FormatNumber(double value, std::string_view pattern);

}  // namespace ferrolund::tools
