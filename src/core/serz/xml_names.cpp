#include "serz/xml_names.h"

#include <cstring>

#if defined(__SSE2__) || defined(_M_X64)
#include <emmintrin.h>
#endif

namespace ferrolund::serz {

bool SameBytes(const char* a, const char* b, std::size_t n, const char* limit) {
#if defined(__SSE2__) || defined(_M_X64)
    if (n <= 16 && limit - a >= 16 && limit - b >= 16) {
        __m128i equal = _mm_cmpeq_epi8(_mm_loadu_si128(reinterpret_cast<const __m128i*>(a)),
                                       _mm_loadu_si128(reinterpret_cast<const __m128i*>(b)));
        auto differ = ~static_cast<unsigned>(_mm_movemask_epi8(equal)) & ((1u << n) - 1);
        return differ == 0;
    }
#else
    (void)limit;
#endif
    return n == 0 || std::memcmp(a, b, n) == 0;
}

std::uint32_t XmlNames::Find(std::string_view xml, std::uint32_t after) {
    if (after != kNoName) {
        std::uint32_t guess = entries_[after].next;
        if (guess != kNoName && entries_[guess].xml.size() == xml.size() &&
            SameBytes(entries_[guess].xml.data(), xml.data(), xml.size(), limit_)) {
            return guess;
        }
    }
    std::uint32_t found = Look(xml);
    if (after != kNoName) entries_[after].next = found;
    return found;
}

std::uint32_t XmlNames::Look(std::string_view xml) {
    std::uint64_t hash = HashText(xml);
    int found = index_.Find(hash, [&](int i) {
        std::string_view known = entries_[static_cast<std::size_t>(i)].xml;
        return known.size() == xml.size() && SameBytes(known.data(), xml.data(), xml.size(), limit_);
    });
    if (found != TextIndex::kNone) return static_cast<std::uint32_t>(found);
    Entry entry{xml, {xml}};
    if (std::memchr(xml.data(), '-', xml.size()) != nullptr) {
        std::string& binary = converted_.emplace_back();
        binary.reserve(xml.size() + 8);
        for (char c : xml) {
            if (c == '-') {
                binary += "::";
            } else {
                binary += c;
            }
        }
        entry.binary.text = binary;
    }
    entries_.push_back(entry);
    index_.Add(hash);
    return static_cast<std::uint32_t>(entries_.size() - 1);
}

}  // namespace ferrolund::serz
