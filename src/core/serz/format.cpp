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
    for (std::size_t i = 0; i < detail::kTypes.size(); ++i) {
        std::string_view known = detail::kTypes[i].name;
        // Lengths and last letters first: most names differ there, and cheaply.
        if (known.size() == name.size() && known.back() == name.back() && known == name) return static_cast<ValueType>(i);
    }
    return ValueType::Unknown;
}

}  // namespace ferrolund::serz
