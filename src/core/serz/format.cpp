#include "serz/format.h"

namespace ferrolund::serz {

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

ValueType TypeFromName(std::string_view name) {
    // By length, then by the letters that tell the names of that length apart; the whole
    // name is compared last.
    ValueType guess = ValueType::Unknown;
    switch (name.size()) {
        case 4: guess = ValueType::Bool; break;
        case 5: guess = ValueType::Int8; break;
        case 6:
            guess = name[1] == 'U'   ? ValueType::UInt8
                    : name[4] == '1' ? ValueType::Int16
                    : name[4] == '3' ? ValueType::Int32
                                     : ValueType::Int64;
            break;
        case 7:
            guess = name[5] == '1' ? ValueType::UInt16 : name[5] == '3' ? ValueType::UInt32 : ValueType::UInt64;
            break;
        case 8: guess = name[6] == '3' ? ValueType::Float32 : ValueType::Float64; break;
        case 12: guess = ValueType::String; break;
        default: return ValueType::Unknown;
    }
    return TypeName(guess) == name ? guess : ValueType::Unknown;
}

}  // namespace ferrolund::serz
