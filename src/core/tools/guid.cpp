#include "tools/guid.h"

#include <cstdio>
#include <mutex>
#include <random>

#include "tools/numbers.h"

namespace ferrolund::tools {

namespace {

std::string HexNoZeros(std::uint64_t value) { return Dec2Hex(static_cast<std::int64_t>(value)); }

}  // namespace

Guid NewGuid() {
    static std::mutex mutex;
    static std::mt19937_64 engine{std::random_device{}()};
    std::array<std::uint8_t, 16> bytes{};
    {
        std::lock_guard lock(mutex);
        for (std::size_t i = 0; i < bytes.size(); i += 8) {
            std::uint64_t r = engine();
            for (std::size_t k = 0; k < 8; ++k, r >>= 8) bytes[i + k] = static_cast<std::uint8_t>(r);
        }
    }
    Guid g;
    g.data1 = static_cast<std::uint32_t>(bytes[0]) << 24 | static_cast<std::uint32_t>(bytes[1]) << 16 |
              static_cast<std::uint32_t>(bytes[2]) << 8 | bytes[3];
    g.data2 = static_cast<std::uint16_t>(bytes[4] << 8 | bytes[5]);
    g.data3 = static_cast<std::uint16_t>(((bytes[6] << 8 | bytes[7]) & 0x0FFF) | 0x4000);  // version 4
    for (std::size_t k = 0; k < 8; ++k) g.data4[k] = bytes[8 + k];
    g.data4[0] = static_cast<std::uint8_t>((g.data4[0] & 0x3F) | 0x80);  // RFC 4122 variant
    return g;
}

std::string GuidText(const Guid& g) {
    char buffer[40];
    std::snprintf(buffer, sizeof buffer, "%08X-%04X-%04X-%02X%02X-%02X%02X%02X%02X%02X%02X", g.data1,
                  static_cast<unsigned>(g.data2), static_cast<unsigned>(g.data3), g.data4[0], g.data4[1],
                  g.data4[2], g.data4[3], g.data4[4], g.data4[5], g.data4[6], g.data4[7]);
    return buffer;
}

std::string NewGuidText() { return GuidText(NewGuid()); }

NewIdentity IdentityOf(const Guid& g) {
    NewIdentity id;
    id.text = GuidText(g);
    const std::string first = HexNoZeros(g.data3) + HexNoZeros(g.data2) + HexNoZeros(g.data1);
    std::string second;
    for (std::size_t k = 8; k-- > 0;) second += HexNoZeros(g.data4[k]);
    id.firstNumber = HexToDecimalText(first).value_or("");
    id.secondNumber = HexToDecimalText(second).value_or("");
    return id;
}

NewIdentity GetNewGUID() { return IdentityOf(NewGuid()); }

}  // namespace ferrolund::tools
