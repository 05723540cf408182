#pragma once
// The facts of the game's serialised binary form that both directions of the codec share:
// the file head, the record kinds, the value types and the size of the line cache.

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace ferrolund::serz {

// "SERZ" followed by the version word 00 00 01 00.
inline constexpr std::string_view kMagic{"SERZ\0\0\x01\0", 8};

// The byte that announces a record written in full (its header then enters the cache).
inline constexpr std::uint8_t kFullRecord = 0xFF;
// A string index with this value announces a new string written in place.
inline constexpr std::uint16_t kNewString = 0xFFFF;
// Slots 0..254 of the line cache; the cursor wraps from the last back to the first.
inline constexpr int kCacheSlots = 255;

enum class Kind : std::uint8_t {
    Open = 0x50,       // element start: u32 id, u32 count of direct children
    Close = 0x70,      // element end
    Value = 0x56,      // a named, typed scalar
    Array = 0x41,      // a named run of scalars: u8 count, then the values
    Reference = 0x52,  // a named u32 pointing at an element's id
    Nil = 0x4E,        // an empty slot
    Blob = 0x42,       // u32 size, then raw bytes
    Marker = 0x43,     // written by the game only: 1 byte then u32; it has no text form
};

// Whether a byte following the full-record mark names a kind this codec knows.
bool IsKnownKind(std::uint8_t kind);
// Whether the header of the kind carries a name, and a type name.
bool KindHasName(Kind kind);
bool KindHasType(Kind kind);

enum class ValueType : std::uint8_t {
    Bool,
    UInt8,
    Int8,
    Int16,
    UInt16,
    Int32,
    UInt32,
    Int64,
    UInt64,
    Float32,
    Float64,
    String,  // cDeltaString: an index into the string table
    Unknown,
};

namespace detail {
struct TypeInfo {
    std::string_view name;
    std::size_t size;
};
// In the order of ValueType.
inline constexpr std::array<TypeInfo, 12> kTypes{{
    {"bool", 1},
    {"sUInt8", 1},
    {"sInt8", 1},
    {"sInt16", 2},
    {"sUInt16", 2},
    {"sInt32", 4},
    {"sUInt32", 4},
    {"sInt64", 8},
    {"sUInt64", 8},
    {"sFloat32", 4},
    {"sFloat64", 8},
    {"cDeltaString", 0},
}};
}  // namespace detail

// The type name as the files spell it ("sFloat32", "cDeltaString", ...), and back.
constexpr std::string_view TypeName(ValueType type) {
    auto index = static_cast<std::size_t>(type);
    return index < detail::kTypes.size() ? detail::kTypes[index].name : std::string_view{};
}
ValueType TypeFromName(std::string_view name);
// Bytes of one value in the file; 0 for strings, which are string references.
constexpr std::size_t TypeSize(ValueType type) {
    auto index = static_cast<std::size_t>(type);
    return index < detail::kTypes.size() ? detail::kTypes[index].size : 0;
}
constexpr bool IsFloat(ValueType type) { return type == ValueType::Float32 || type == ValueType::Float64; }
constexpr bool IsSigned(ValueType type) {
    return type == ValueType::Int8 || type == ValueType::Int16 || type == ValueType::Int32 ||
           type == ValueType::Int64;
}

}  // namespace ferrolund::serz
