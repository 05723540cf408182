#pragma once
// The attributes of a start tag that the XML reader hands on, and the ones it meets most,
// as the converter writes them, for recognising them at one glance.

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace ferrolund::serz {

// Whether `text` is the literal `word`; the comparison has a fixed length, so it is
// compiled inline.
template <std::size_t N>
inline bool IsWord(std::string_view text, const char (&word)[N]) {
    return text.size() == N - 1 && std::memcmp(text.data(), word, N - 1) == 0;
}

// The attributes of a start tag that the codec reads; others are passed over.
struct Attributes {
    std::string_view id, type, numElements, elementType, size;
    bool hasId = false, hasType = false, hasNumElements = false, hasElementType = false, hasSize = false;
};

enum class AttributeField : std::uint8_t { Type, Id, NumElements, ElementType, Size, Other };

inline AttributeField FieldOf(std::string_view key) {
    if (key.size() < 4 || key[0] != 'd' || key[1] != ':') return AttributeField::Other;
    if (IsWord(key, "d:type")) return AttributeField::Type;
    if (IsWord(key, "d:id")) return AttributeField::Id;
    if (IsWord(key, "d:numElements")) return AttributeField::NumElements;
    if (IsWord(key, "d:elementType")) return AttributeField::ElementType;
    if (IsWord(key, "d:size")) return AttributeField::Size;
    return AttributeField::Other;
}

inline void SetAttribute(Attributes& a, AttributeField field, std::string_view value) {
    switch (field) {
        case AttributeField::Type: a.type = value, a.hasType = true; break;
        case AttributeField::Id: a.id = value, a.hasId = true; break;
        case AttributeField::NumElements: a.numElements = value, a.hasNumElements = true; break;
        case AttributeField::ElementType: a.elementType = value, a.hasElementType = true; break;
        case AttributeField::Size: a.size = value, a.hasSize = true; break;
        case AttributeField::Other: break;
    }
}

// An attribute as the converter writes it, from its name to the opening quote, padded so
// that sixteen bytes of it can be read at once.
struct WrittenAttribute {
    char text[16];
    std::size_t length;
    AttributeField field;
};
inline constexpr WrittenAttribute kWrittenAttributes[] = {
    {"d:type=\"", 8, AttributeField::Type},
    {"d:id=\"", 6, AttributeField::Id},
    {"d:numElements=\"", 15, AttributeField::NumElements},
    {"d:elementType=\"", 15, AttributeField::ElementType},
    {"d:size=\"", 8, AttributeField::Size},
    {{'d', ':', 'a', 'l', 't', '_', 'e', 'n', 'c', 'o', 'd', 'i', 'n', 'g', '=', '"'}, 16, AttributeField::Other},
    {"d:precision=\"", 13, AttributeField::Other},
};

// The one of kWrittenAttributes that "d:" and `letter` may begin, or null.
inline const WrittenAttribute* WrittenAttributeFor(char letter) {
    switch (letter) {
        case 't': return &kWrittenAttributes[0];
        case 'i': return &kWrittenAttributes[1];
        case 'n': return &kWrittenAttributes[2];
        case 'e': return &kWrittenAttributes[3];
        case 's': return &kWrittenAttributes[4];
        case 'a': return &kWrittenAttributes[5];
        case 'p': return &kWrittenAttributes[6];
        default: return nullptr;
    }
}

}  // namespace ferrolund::serz
