#pragma once
// MD5 of bytes, for the .MD5 files that the game keeps beside some of its files.

#include <array>
#include <cstdint>
#include <string_view>

namespace ferrolund::sample {

std::array<std::uint8_t, 16> Md5(std::string_view bytes);

}  // namespace ferrolund::sample
