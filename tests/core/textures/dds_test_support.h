#pragma once
// Building small .dds files in memory for the texture tests.

#include <cstdint>
#include <cstring>
#include <string>

namespace ferrolund::testing {

inline void PutWord(std::string& bytes, std::size_t at, std::uint32_t value) {
    for (int i = 0; i < 4; ++i) bytes[at + std::size_t(i)] = char((value >> (8 * i)) & 0xFF);
}

// The 128-byte header of a block-compressed file ("DXT1", "DXT3", "DXT5", or any other code).
inline std::string DxtHeader(const char* fourCc, int width, int height, int mips) {
    std::string bytes(128, '\0');
    std::memcpy(bytes.data(), "DDS ", 4);
    PutWord(bytes, 4, 124);
    PutWord(bytes, 8, mips > 1 ? 0x000A1007 : 0x00081007);
    PutWord(bytes, 12, std::uint32_t(height));
    PutWord(bytes, 16, std::uint32_t(width));
    PutWord(bytes, 28, std::uint32_t(mips));
    PutWord(bytes, 76, 32);
    PutWord(bytes, 80, 0x4);
    std::memcpy(bytes.data() + 84, fourCc, 4);
    return bytes;
}

struct Masks {
    std::uint32_t red, green, blue, alpha;
};

// The header of an uncompressed file; `alpha` 0 leaves the alpha flag off.
inline std::string PlainHeader(int bits, Masks masks, int width, int height, int mips) {
    std::string bytes(128, '\0');
    std::memcpy(bytes.data(), "DDS ", 4);
    PutWord(bytes, 4, 124);
    PutWord(bytes, 8, mips > 1 ? 0x0002100F : 0x0000100F);
    PutWord(bytes, 12, std::uint32_t(height));
    PutWord(bytes, 16, std::uint32_t(width));
    PutWord(bytes, 28, std::uint32_t(mips));
    PutWord(bytes, 76, 32);
    PutWord(bytes, 80, masks.alpha ? 0x41 : 0x40);
    PutWord(bytes, 88, std::uint32_t(bits));
    PutWord(bytes, 92, masks.red);
    PutWord(bytes, 96, masks.green);
    PutWord(bytes, 100, masks.blue);
    PutWord(bytes, 104, masks.alpha);
    return bytes;
}

}  // namespace ferrolund::testing
