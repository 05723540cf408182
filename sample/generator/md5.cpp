#include "generator/md5.h"

#include <cmath>
#include <cstring>
#include <string>

namespace ferrolund::sample {

namespace {

constexpr std::uint32_t kShift[64] = {7, 12, 17, 22, 7, 12, 17, 22, 7, 12, 17, 22, 7, 12, 17, 22,
                                      5, 9,  14, 20, 5, 9,  14, 20, 5, 9,  14, 20, 5, 9,  14, 20,
                                      4, 11, 16, 23, 4, 11, 16, 23, 4, 11, 16, 23, 4, 11, 16, 23,
                                      6, 10, 15, 21, 6, 10, 15, 21, 6, 10, 15, 21, 6, 10, 15, 21};

std::uint32_t Rotate(std::uint32_t x, std::uint32_t n) {
    return (x << n) | (x >> (32 - n));
}

}  // namespace

std::array<std::uint8_t, 16> Md5(std::string_view bytes) {
    std::uint32_t table[64];
    for (int i = 0; i < 64; ++i)
        table[i] = static_cast<std::uint32_t>(std::floor(std::fabs(std::sin(i + 1.0)) * 4294967296.0));

    std::string message(bytes);
    const std::uint64_t bits = static_cast<std::uint64_t>(bytes.size()) * 8;
    message += '\x80';
    while (message.size() % 64 != 56) message += '\0';
    for (int b = 0; b < 8; ++b) message += static_cast<char>((bits >> (8 * b)) & 0xFF);

    std::uint32_t h[4] = {0x67452301, 0xefcdab89, 0x98badcfe, 0x10325476};
    for (std::size_t block = 0; block < message.size(); block += 64) {
        std::uint32_t w[16];
        for (int i = 0; i < 16; ++i) {
            const auto* p = reinterpret_cast<const unsigned char*>(message.data() + block + 4 * i);
            w[i] = p[0] | (p[1] << 8) | (p[2] << 16) | (static_cast<std::uint32_t>(p[3]) << 24);
        }
        std::uint32_t a = h[0], b = h[1], c = h[2], d = h[3];
        for (int i = 0; i < 64; ++i) {
            std::uint32_t f;
            int g;
            if (i < 16) {
                f = (b & c) | (~b & d);
                g = i;
            } else if (i < 32) {
                f = (d & b) | (~d & c);
                g = (5 * i + 1) % 16;
            } else if (i < 48) {
                f = b ^ c ^ d;
                g = (3 * i + 5) % 16;
            } else {
                f = c ^ (b | ~d);
                g = (7 * i) % 16;
            }
            const std::uint32_t next = d;
            d = c;
            c = b;
            b += Rotate(a + f + table[i] + w[g], kShift[i]);
            a = next;
        }
        h[0] += a;
        h[1] += b;
        h[2] += c;
        h[3] += d;
    }
    std::array<std::uint8_t, 16> digest{};
    for (int i = 0; i < 16; ++i)
        digest[static_cast<std::size_t>(i)] = static_cast<std::uint8_t>(h[i / 4] >> (8 * (i % 4)));
    return digest;
}

}  // namespace ferrolund::sample
