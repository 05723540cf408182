#pragma once
// clsCRC: CRC-16 (CCITT form, initial value 0, no final complement) and CRC-32 (the
// standard reflected table of 0xEDB88320, initial 0xFFFFFFFF, final complement) over
// bytes, strings and files. The packager compares a file with its original by it.

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace ferrolund::services {

class clsCRC {
public:
    // Starts with CRC-16 selected and cleared.
    clsCRC();

    // Runs the bytes through the register of the chosen algorithm; gives Value().
    std::uint32_t AddBytes(const void* data, std::size_t size);
    std::uint32_t AddBytes(std::string_view bytes) { return AddBytes(bytes.data(), bytes.size()); }
    // Strings are Windows-1252 bytes already: the same as AddBytes.
    std::uint32_t AddString(std::string_view text) { return AddBytes(text); }

    // 0 for CRC-16; any other value is stored as -1 and selects CRC-32. Selecting builds
    // that algorithm's table the first time, and clears.
    int Algorithm() const { return algorithm_; }
    void Algorithm(int value);

    std::uint32_t CalculateBytes(const void* data, std::size_t size);
    std::uint32_t CalculateBytes(std::string_view bytes) { return CalculateBytes(bytes.data(), bytes.size()); }
    std::uint32_t CalculateString(std::string_view text) { return CalculateBytes(text); }
    // The whole file (a system path); nothing for a missing, unreadable or empty file.
    std::optional<std::uint32_t> CalculateFile(const std::string& path);

    // CRC-32: the complement of the register; CRC-16: the register itself.
    std::uint32_t Value() const;
    // Stores the number in the chosen register as it stands.
    void Value(std::uint32_t value);
    // CRC-16 register to 0, CRC-32 register to 0xFFFFFFFF.
    void Clear();

    // How many tables this object has built so far.
    int TableBuilds() const { return tableBuilds_; }

private:
    using Table = std::array<std::uint32_t, 256>;

    int algorithm_ = 0;
    std::uint32_t crc16Register_ = 0;
    std::uint32_t crc32Register_ = 0xFFFFFFFF;
    std::unique_ptr<Table> crc16Table_;
    // Eight tables for the loop that takes eight bytes a step; the first is the
    // standard table.
    std::unique_ptr<std::array<Table, 8>> crc32Tables_;
    int tableBuilds_ = 0;
};

}  // namespace ferrolund::services
