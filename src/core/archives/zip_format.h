#pragma once
// The few record layouts of the Zip format that this program reads or writes itself:
// little-endian numbers in byte strings, and the signatures of the records.

#include <cstdint>
#include <string>
#include <string_view>

namespace ferrolund::archives::zipfmt {

inline constexpr std::uint32_t kLocalHeader = 0x04034b50;
inline constexpr std::uint32_t kCentralHeader = 0x02014b50;
inline constexpr std::uint32_t kEndOfDirectory = 0x06054b50;
inline constexpr std::uint32_t kEnd64 = 0x06064b50;
inline constexpr std::uint32_t kEnd64Locator = 0x07064b50;
inline constexpr std::uint32_t kDataDescriptor = 0x08074b50;  // also the mark at the start of a split set
inline constexpr std::uint16_t kZip64Extra = 0x0001;

inline std::uint16_t Get16(std::string_view b, std::size_t at) {
    return static_cast<std::uint16_t>(static_cast<unsigned char>(b[at]) |
                                      static_cast<unsigned char>(b[at + 1]) << 8);
}
inline std::uint32_t Get32(std::string_view b, std::size_t at) {
    return static_cast<std::uint32_t>(Get16(b, at)) | static_cast<std::uint32_t>(Get16(b, at + 2)) << 16;
}
inline std::uint64_t Get64(std::string_view b, std::size_t at) {
    return static_cast<std::uint64_t>(Get32(b, at)) | static_cast<std::uint64_t>(Get32(b, at + 4)) << 32;
}
inline void Set16(std::string& b, std::size_t at, std::uint16_t v) {
    b[at] = static_cast<char>(v & 0xff);
    b[at + 1] = static_cast<char>(v >> 8);
}
inline void Set32(std::string& b, std::size_t at, std::uint32_t v) {
    Set16(b, at, static_cast<std::uint16_t>(v & 0xffff));
    Set16(b, at + 2, static_cast<std::uint16_t>(v >> 16));
}
inline void Set64(std::string& b, std::size_t at, std::uint64_t v) {
    Set32(b, at, static_cast<std::uint32_t>(v & 0xffffffffu));
    Set32(b, at + 4, static_cast<std::uint32_t>(v >> 32));
}
inline void Put16(std::string& b, std::uint16_t v) {
    b.push_back(static_cast<char>(v & 0xff));
    b.push_back(static_cast<char>(v >> 8));
}
inline void Put32(std::string& b, std::uint32_t v) {
    Put16(b, static_cast<std::uint16_t>(v & 0xffff));
    Put16(b, static_cast<std::uint16_t>(v >> 16));
}
inline void Put64(std::string& b, std::uint64_t v) {
    Put32(b, static_cast<std::uint32_t>(v & 0xffffffffu));
    Put32(b, static_cast<std::uint32_t>(v >> 32));
}

}  // namespace ferrolund::archives::zipfmt
