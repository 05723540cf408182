#include "serz/format.h"

#include <array>

namespace ferrolund::serz {

namespace {

struct TypeInfo {
    std::string_view name;
    std::size_t size;
};

constexpr std::array<TypeInfo, 12> kTypes{{
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

}  // namespace

bool IsKnownKind(std::uint8_t kind) {
    switch (static_cast<Kind>(kind)) {
        case Kind::Open:
        case Kind::Close:
        case Kind::Value:
        case Kind::Array:
        case Kind::Reference:
        case Kind::Nil:
        case Kind::Blob:
        case Kind::Marker:
            return true;
    }
    return false;
}

bool KindHasName(Kind kind) {
    return kind == Kind::Open || kind == Kind::Close || kind == Kind::Value || kind == Kind::Array ||
           kind == Kind::Reference;
}

bool KindHasType(Kind kind) { return kind == Kind::Value || kind == Kind::Array; }

std::string_view TypeName(ValueType type) {
    auto index = static_cast<std::size_t>(type);
    return index < kTypes.size() ? kTypes[index].name : std::string_view{};
}

ValueType TypeFromName(std::string_view name) {
    for (std::size_t i = 0; i < kTypes.size(); ++i) {
        if (kTypes[i].name == name) return static_cast<ValueType>(i);
    }
    return ValueType::Unknown;
}

std::size_t TypeSize(ValueType type) {
    auto index = static_cast<std::size_t>(type);
    return index < kTypes.size() ? kTypes[index].size : 0;
}

bool IsFloat(ValueType type) { return type == ValueType::Float32 || type == ValueType::Float64; }

bool IsSigned(ValueType type) {
    return type == ValueType::Int8 || type == ValueType::Int16 || type == ValueType::Int32 ||
           type == ValueType::Int64;
}

}  // namespace ferrolund::serz
