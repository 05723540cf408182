#pragma once
// Walks the records of a binary file one by one, resolving the string table and the line
// cache, so that what it hands out is complete: kind, name, type and payload.

#include <array>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <vector>

#include "serz/codec_status.h"
#include "serz/format.h"

namespace ferrolund::serz {

template <typename T>
T Load(const unsigned char* p) {
    T value;
    std::memcpy(&value, p, sizeof value);
    return value;
}

struct Record {
    Kind kind = Kind::Nil;
    std::uint16_t nameIndex = 0;   // into the string table, for kinds with a name
    ValueType type = ValueType::Unknown;  // value type, or the element type of an array
    std::uint32_t id = 0;          // open: the element's id (0: none); reference: the target
    std::uint32_t count = 0;       // open: children as stored; array: elements; blob: bytes
    std::uint16_t stringIndex = 0; // a cDeltaString value
    const unsigned char* payload = nullptr;  // scalar, array elements or blob bytes
};

class BinaryReader {
public:
    // `bytes` must outlive the reader; the magic is checked by Start.
    explicit BinaryReader(std::string_view bytes);

    CodecStatus Start();
    // Reads the next record. False at the end of the data or on a failure, which then
    // stays in `failure()`.
    // A record whose line is in the cache (most of a file) is read here, inline: a tile
    // holds thousands of records.
    bool Next(Record& record) {
        if (failure_ || pos_ == end_) return false;
        const std::size_t at = recordOffset_ = offset();
        const unsigned char lead = *pos_;
        if (lead == kFullRecord || !filled_[lead]) return NextFull(record, at);
        ++pos_;
        const CacheEntry& entry = cache_[lead];
        record = Record{};
        record.kind = entry.kind;
        record.nameIndex = entry.name;
        record.type = entry.type;
        return ReadPayload(record);
    }

    const CodecStatus& failure() const { return failure_; }
    bool AtEnd() const { return pos_ == end_; }
    std::size_t offset() const { return static_cast<std::size_t>(pos_ - begin_); }
    // Where the record last handed out by Next begins.
    std::size_t recordOffset() const { return recordOffset_; }
    std::string_view String(std::uint16_t index) const { return strings_[index]; }

private:
    struct CacheEntry {
        Kind kind = Kind::Nil;
        std::uint16_t name = 0;
        ValueType type = ValueType::Unknown;
    };

    bool Fail(std::size_t offset, std::string_view reason);
    bool Need(std::size_t bytes, std::string_view what) {
        return static_cast<std::size_t>(end_ - pos_) >= bytes || Truncated(bytes, what);
    }
    bool Truncated(std::size_t bytes, std::string_view what);
    bool ReadString(std::uint16_t& index) {
        if (end_ - pos_ >= 2) {
            index = Load<std::uint16_t>(pos_);
            if (index != kNewString && index < strings_.size()) {
                pos_ += 2;
                return true;
            }
        }
        return ReadNewString(index);
    }
    // A string met for the first time, or a failure.
    bool ReadNewString(std::uint16_t& index);
    bool ReadHeader(CacheEntry& entry);
    bool NextFull(Record& record, std::size_t at);
    bool ReadPayload(Record& record) {
        switch (record.kind) {
            case Kind::Open:
                if (!Need(8, "an element's id and child count")) return false;
                record.id = Load<std::uint32_t>(pos_);
                record.count = Load<std::uint32_t>(pos_ + 4);
                pos_ += 8;
                return true;
            case Kind::Value:
                if (record.type == ValueType::String) return ReadString(record.stringIndex);
                if (!Need(TypeSize(record.type), "a value")) return false;
                record.payload = pos_;
                pos_ += TypeSize(record.type);
                return true;
            case Kind::Array:
                if (!Need(1, "an array's element count")) return false;
                record.count = *pos_++;
                if (!Need(record.count * TypeSize(record.type), "an array's elements")) return false;
                record.payload = pos_;
                pos_ += record.count * TypeSize(record.type);
                return true;
            case Kind::Reference:
                if (!Need(4, "a reference")) return false;
                record.id = Load<std::uint32_t>(pos_);
                pos_ += 4;
                return true;
            case Kind::Blob:
                if (!Need(4, "a blob's size")) return false;
                record.count = Load<std::uint32_t>(pos_);
                pos_ += 4;
                if (!Need(record.count, "a blob")) return false;
                record.payload = pos_;
                pos_ += record.count;
                return true;
            case Kind::Marker:
                if (!Need(5, "the game's marker record")) return false;
                pos_ += 5;
                return true;
            case Kind::Close:
            case Kind::Nil:
                return true;
        }
        return true;
    }

    const unsigned char* begin_;
    const unsigned char* pos_;
    const unsigned char* end_;
    std::vector<std::string_view> strings_;
    std::array<CacheEntry, kCacheSlots> cache_{};
    std::array<bool, kCacheSlots> filled_{};
    int cursor_ = 0;
    std::size_t recordOffset_ = 0;
    CodecStatus failure_;
};

// How many bytes make up `characters` characters of UTF-8 starting at `text` (a lead byte
// decides its sequence's length), or -1 when they run past `limit` bytes.
long long Utf8Bytes(const unsigned char* text, std::size_t limit, std::uint64_t characters);
// The number of characters of `text`, counted the same way; -1 when a sequence is cut off.
long long Utf8Characters(std::string_view text);

}  // namespace ferrolund::serz
