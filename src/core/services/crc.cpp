#include "services/crc.h"

#include <bit>
#include <cstdio>
#include <cstring>
#include <vector>

#include "tools/host_path.h"

namespace ferrolund::services {

namespace {

std::uint32_t Crc16Update(std::uint32_t reg, const std::uint8_t* p, std::size_t n, const std::array<std::uint32_t, 256>& table) {
    for (std::size_t i = 0; i < n; ++i) {
        const std::uint32_t index = (p[i] ^ (reg >> 8)) & 0xFF;
        reg = (table[index] ^ (reg << 8)) & 0xFFFF;
    }
    return reg;
}

std::uint32_t Crc32Update(std::uint32_t reg, const std::uint8_t* p, std::size_t n,
                          const std::array<std::array<std::uint32_t, 256>, 8>& t) {
    while (n >= 8) {
        std::uint32_t lo;
        std::uint32_t hi;
        std::memcpy(&lo, p, 4);
        std::memcpy(&hi, p + 4, 4);
        if constexpr (std::endian::native == std::endian::big) {
            lo = __builtin_bswap32(lo);
            hi = __builtin_bswap32(hi);
        }
        lo ^= reg;
        reg = t[7][lo & 0xFF] ^ t[6][(lo >> 8) & 0xFF] ^ t[5][(lo >> 16) & 0xFF] ^ t[4][lo >> 24] ^
              t[3][hi & 0xFF] ^ t[2][(hi >> 8) & 0xFF] ^ t[1][(hi >> 16) & 0xFF] ^ t[0][hi >> 24];
        p += 8;
        n -= 8;
    }
    for (std::size_t i = 0; i < n; ++i) reg = (reg >> 8) ^ t[0][(reg ^ p[i]) & 0xFF];
    return reg;
}

}  // namespace

clsCRC::clsCRC() { Algorithm(0); }

void clsCRC::Algorithm(int value) {
    algorithm_ = value == 0 ? 0 : -1;
    if (algorithm_ == 0 && !crc16Table_) {
        crc16Table_ = std::make_unique<Table>();
        for (std::uint32_t i = 0; i < 256; ++i) {
            std::uint32_t crc = 0;
            std::uint32_t c = i << 8;
            for (int k = 0; k < 8; ++k) {
                crc = ((crc ^ c) & 0x8000) ? (crc << 1) ^ 0x1021 : crc << 1;
                c <<= 1;
            }
            (*crc16Table_)[i] = crc & 0xFFFF;
        }
        ++tableBuilds_;
    } else if (algorithm_ != 0 && !crc32Tables_) {
        crc32Tables_ = std::make_unique<std::array<Table, 8>>();
        auto& t = *crc32Tables_;
        for (std::uint32_t i = 0; i < 256; ++i) {
            std::uint32_t crc = i;
            for (int k = 0; k < 8; ++k) crc = (crc & 1) ? (crc >> 1) ^ 0xEDB88320u : crc >> 1;
            t[0][i] = crc;
        }
        for (std::size_t s = 1; s < 8; ++s) {
            for (std::size_t i = 0; i < 256; ++i) t[s][i] = (t[s - 1][i] >> 8) ^ t[0][t[s - 1][i] & 0xFF];
        }
        ++tableBuilds_;
    }
    Clear();
}

std::uint32_t clsCRC::AddBytes(const void* data, std::size_t size) {
    const auto* p = static_cast<const std::uint8_t*>(data);
    if (size > 0) {
        if (algorithm_ == 0) {
            crc16Register_ = Crc16Update(crc16Register_, p, size, *crc16Table_);
        } else {
            crc32Register_ = Crc32Update(crc32Register_, p, size, *crc32Tables_);
        }
    }
    return Value();
}

std::uint32_t clsCRC::CalculateBytes(const void* data, std::size_t size) {
    Clear();
    return AddBytes(data, size);
}

std::optional<std::uint32_t> clsCRC::CalculateFile(const std::string& path) {
    std::FILE* file = std::fopen(tools::HostPath(path).c_str(), "rb");
    if (file == nullptr) return std::nullopt;
    Clear();
    std::vector<char> buffer(1 << 20);
    std::size_t total = 0;
    std::size_t got = 0;
    while ((got = std::fread(buffer.data(), 1, buffer.size(), file)) > 0) {
        AddBytes(buffer.data(), got);
        total += got;
    }
    const bool failed = std::ferror(file) != 0;
    std::fclose(file);
    if (failed || total == 0) return std::nullopt;
    return Value();
}

std::uint32_t clsCRC::Value() const { return algorithm_ == 0 ? crc16Register_ : ~crc32Register_; }

void clsCRC::Value(std::uint32_t value) {
    if (algorithm_ == 0) {
        crc16Register_ = value;
    } else {
        crc32Register_ = value;
    }
}

void clsCRC::Clear() {
    crc16Register_ = 0;
    crc32Register_ = 0xFFFFFFFF;
}

}  // namespace ferrolund::services
