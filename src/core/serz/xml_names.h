#pragma once
// The element names met in XML text, each turned once into its binary form ("-" becomes
// "::") and kept with its number in the string table, so that a name met again costs one
// hash look-up, or less: the name that followed a name last time is tried first.

#include <cstdint>
#include <cstring>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

#if defined(__SSE2__) || defined(_M_X64)
#include <emmintrin.h>
#endif

#include "serz/binary_writer.h"
#include "serz/text_index.h"

namespace ferrolund::serz {

// Whether the `n` bytes at `a` and at `b` are the same, `n` at most 16, where sixteen
// bytes may be read at each.
inline bool SameShortBytes(const char* a, const char* b, std::size_t n) {
#if defined(__SSE2__) || defined(_M_X64)
    __m128i equal = _mm_cmpeq_epi8(_mm_loadu_si128(reinterpret_cast<const __m128i*>(a)),
                                   _mm_loadu_si128(reinterpret_cast<const __m128i*>(b)));
    return (~static_cast<unsigned>(_mm_movemask_epi8(equal)) & ((1u << n) - 1)) == 0;
#else
    return std::memcmp(a, b, n) == 0;
#endif
}

// Whether the `n` bytes at `a` and at `b` are the same; both may be read up to `limit`.
inline bool SameBytes(const char* a, const char* b, std::size_t n, const char* limit) {
    if (n <= 16 && limit - a >= 16 && limit - b >= 16) return SameShortBytes(a, b, n);
    return n == 0 || std::memcmp(a, b, n) == 0;
}

class XmlNames {
public:
    static constexpr std::uint32_t kNoName = 0xFFFFFFFF;

    // `text` is the XML the names lie in; it must outlive the table.
    explicit XmlNames(std::string_view text) : limit_(text.data() + text.size()) {}

    // The number of the name `xml` (a view into the text), added when it is new. `after`
    // is the number of the name read before it, or kNoName.
    std::uint32_t Find(std::string_view xml, std::uint32_t after);

    // The name that followed `name` last time, or kNoName.
    std::uint32_t Following(std::uint32_t name) const { return name == kNoName ? kNoName : entries_[name].next; }

    std::string_view Xml(std::uint32_t name) const { return entries_[name].xml; }
    NameRef& Binary(std::uint32_t name) { return entries_[name].binary; }

private:
    struct Entry {
        std::string_view xml;
        NameRef binary;
        std::uint32_t next = kNoName;  // the name that followed this one last time
    };

    std::uint32_t Look(std::string_view xml);

    const char* limit_;
    std::vector<Entry> entries_;
    TextIndex index_;
    std::deque<std::string> converted_;  // binary forms that differ from the XML
};

}  // namespace ferrolund::serz
