#pragma once
// Scanning XML text sixteen characters a step where sixteen remain: blanks, the ends of
// names, single characters, and short runs of bytes compared at once.

#include <array>
#include <bit>
#include <cstddef>
#include <cstring>
#include <string_view>

#if defined(__SSE2__) || defined(_M_X64)
#include <emmintrin.h>
#endif

namespace ferrolund::serz {

inline bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

// The characters that end a name in a tag.
inline constexpr std::array<bool, 256> kNameEnds = [] {
    std::array<bool, 256> ends{};
    for (unsigned char c : std::string_view(" \t\r\n>/=<")) ends[c] = true;
    return ends;
}();

#if defined(__SSE2__) || defined(_M_X64)
// Bit i set when character i of the chunk is a blank.
inline unsigned BlankMask(__m128i chunk) {
    __m128i hit = _mm_or_si128(_mm_or_si128(_mm_cmpeq_epi8(chunk, _mm_set1_epi8(' ')), _mm_cmpeq_epi8(chunk, _mm_set1_epi8('\t'))),
                               _mm_or_si128(_mm_cmpeq_epi8(chunk, _mm_set1_epi8('\r')), _mm_cmpeq_epi8(chunk, _mm_set1_epi8('\n'))));
    return static_cast<unsigned>(_mm_movemask_epi8(hit));
}

// Bit i set when character i of the chunk ends a name (see kNameEnds).
inline unsigned NameEndMask(__m128i chunk) {
    __m128i hit = _mm_or_si128(_mm_or_si128(_mm_cmpeq_epi8(chunk, _mm_set1_epi8('>')), _mm_cmpeq_epi8(chunk, _mm_set1_epi8('/'))),
                               _mm_or_si128(_mm_cmpeq_epi8(chunk, _mm_set1_epi8('=')), _mm_cmpeq_epi8(chunk, _mm_set1_epi8('<'))));
    return BlankMask(chunk) | static_cast<unsigned>(_mm_movemask_epi8(hit));
}
#endif

// Where the name starting at `p` ends: at the first character of kNameEnds or the end.
inline const char* NameEnd(const char* p, const char* end) {
#if defined(__SSE2__) || defined(_M_X64)
    for (; end - p >= 16; p += 16) {  // sixteen characters a step while sixteen remain
        unsigned mask = NameEndMask(_mm_loadu_si128(reinterpret_cast<const __m128i*>(p)));
        if (mask != 0) return p + std::countr_zero(mask);
    }
#endif
    while (p < end && !kNameEnds[static_cast<unsigned char>(*p)]) ++p;
    return p;
}

// The first character from `p` on that is not a blank, or the end, sixteen characters a
// step; BlanksEnd below tries the common cases first.
inline const char* BlankRunEnd(const char* p, const char* end) {
#if defined(__SSE2__) || defined(_M_X64)
    for (; end - p >= 16; p += 16) {
        unsigned mask = ~BlankMask(_mm_loadu_si128(reinterpret_cast<const __m128i*>(p))) & 0xFFFFu;
        if (mask != 0) return p + std::countr_zero(mask);
    }
#endif
    while (p < end && IsBlank(*p)) ++p;
    return p;
}

// The same, quick where there is no blank or one space, as between the parts of a tag.
inline const char* BlanksEnd(const char* p, const char* end) {
    if (p == end || !IsBlank(*p)) return p;
    if (end - p >= 2 && !IsBlank(p[1])) return p + 1;
    return BlankRunEnd(p, end);
}

// The first `c` from `p` on, or null.
inline const char* FindChar(const char* p, const char* end, char c) {
#if defined(__SSE2__) || defined(_M_X64)
    __m128i wanted = _mm_set1_epi8(c);
    for (; end - p >= 16; p += 16) {
        __m128i chunk = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
        auto mask = static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi8(chunk, wanted)));
        if (mask != 0) return p + std::countr_zero(mask);
    }
#endif
    for (; p < end; ++p) {
        if (*p == c) return p;
    }
    return nullptr;
}

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

}  // namespace ferrolund::serz
