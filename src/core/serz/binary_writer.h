#pragma once
// Writes records in the binary form as the simulator's converter does: one string table
// for names, type names and string values; the 255-slot line cache, where a record whose
// header is anywhere in the ring is written as its slot; and true child counts.

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "serz/format.h"
#include "serz/output_buffer.h"
#include "serz/text_index.h"

namespace ferrolund::serz {

// A record's name as the caller hands it over: the text in binary form, and its number in
// the string table, which the writer fills in once it has found or written the text, so
// that a caller who keeps the NameRef pays for the look-up once.
struct NameRef {
    std::string_view text;
    int index = TextIndex::kNone;
};

class BinaryWriter {
public:
    // `expected` is a guess of the output size.
    BinaryWriter(std::string& out, std::size_t expected);

    // Each returns false when the record cannot be written; `failure()` tells why.
    bool Open(NameRef& name, std::uint32_t id);
    bool Close(NameRef& name);
    // A scalar of a fixed-size type, its bytes in file order.
    bool Value(NameRef& name, ValueType type, const void* bytes);
    bool StringValue(NameRef& name, std::string_view text);
    // `count` elements of a fixed-size type, their bytes in file order.
    bool Array(NameRef& name, ValueType type, std::uint8_t count, const void* bytes);
    bool Reference(NameRef& name, std::uint32_t target);
    bool Nil();
    // Room for the `size` bytes of a blob, to be filled by the caller at once.
    char* Blob(std::uint32_t size);
    // Cuts the output to what was written.
    void Finish() { out_.Finish(); }

    const std::string& failure() const { return failure_; }

private:
    static constexpr int kNone = TextIndex::kNone;

    struct CacheKey {
        Kind kind = Kind::Nil;
        int name = kNone;
        int type = kNone;
        bool operator==(const CacheKey&) const = default;
    };
    struct Span {
        std::size_t offset;
        std::size_t length;
    };

    // `name` is null for the kinds without one.
    bool Header(Kind kind, NameRef* name, ValueType type, bool hasType);
    int TypeIndex(ValueType type) const;
    int FindString(std::string_view text, std::uint64_t hash) const;
    bool WriteString(std::string_view text, int& index);
    int FindCached(const CacheKey& key) const;
    void StoreCached(const CacheKey& key);
    void CountChild();
    void Put16(std::uint16_t value);
    void Put32(std::uint32_t value);
    bool Fail(std::string reason);

    OutputBuffer out_;
    std::string failure_;
    // The string table: each string's bytes, one after another in a compact area that
    // look-ups compare against (the copies in the output lie far apart), and an index.
    std::string stringBytes_;
    std::vector<Span> strings_;
    TextIndex index_;
    // The string index of each value type's name, once it is in the table.
    std::array<int, static_cast<std::size_t>(ValueType::Unknown)> typeIndex_;
    // The line cache, and per name index the slots whose key has that name (nameless
    // kinds under index 0, so the lists are offset by one).
    std::array<CacheKey, kCacheSlots> slots_{};
    std::array<bool, kCacheSlots> filled_{};
    std::vector<std::vector<std::uint8_t>> slotsByName_;
    int cursor_ = 0;
    // Offsets of the child counts of the open elements, with the counts so far.
    std::vector<std::pair<std::size_t, std::uint32_t>> open_;
};

}  // namespace ferrolund::serz
