#include "serz/binary_reader.h"

#include <cstring>
#include <string>

namespace ferrolund::serz {

namespace {

int SequenceLength(unsigned char lead) { return lead < 0xC0 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4; }

std::string Hex(unsigned value) {
    static constexpr char kHex[] = "0123456789ABCDEF";
    return std::string{kHex[(value >> 4) & 0xF], kHex[value & 0xF]};
}

}  // namespace

long long Utf8Bytes(const unsigned char* text, std::size_t limit, std::uint64_t characters) {
    std::size_t at = 0;
    while (characters > 0) {
        if (at >= limit) return -1;
        // Eight plain ASCII characters at a time.
        if (characters >= 8 && limit - at >= 8 && (Load<std::uint64_t>(text + at) & 0x8080808080808080ULL) == 0) {
            at += 8;
            characters -= 8;
            continue;
        }
        at += static_cast<std::size_t>(SequenceLength(text[at]));
        --characters;
    }
    return at <= limit ? static_cast<long long>(at) : -1;
}

long long Utf8Characters(std::string_view text) {
    long long characters = 0;
    std::size_t at = 0;
    while (at < text.size()) {
        at += static_cast<std::size_t>(SequenceLength(static_cast<unsigned char>(text[at])));
        ++characters;
    }
    return at == text.size() ? characters : -1;
}

BinaryReader::BinaryReader(std::string_view bytes)
    : begin_(reinterpret_cast<const unsigned char*>(bytes.data())), pos_(begin_), end_(begin_ + bytes.size()) {}

CodecStatus BinaryReader::Start() {
    std::size_t size = static_cast<std::size_t>(end_ - begin_);
    if (size < kMagic.size() || std::memcmp(begin_, kMagic.data(), kMagic.size()) != 0) {
        return ErrorAtByte(0, "not a serialised binary file (the head is not SERZ 00 00 01 00)");
    }
    pos_ = begin_ + kMagic.size();
    return std::nullopt;
}

bool BinaryReader::Fail(std::size_t offset, std::string_view reason) {
    failure_ = ErrorAtByte(offset, reason);
    return false;
}

bool BinaryReader::Truncated(std::size_t bytes, std::string_view what) {
    return Fail(offset(), "the file is truncated: " + std::to_string(bytes) + " bytes wanted for " +
                              std::string(what) + ", " + std::to_string(end_ - pos_) + " remain");
}

bool BinaryReader::ReadNewString(std::uint16_t& index) {
    if (!Need(2, "a string reference")) return false;
    std::size_t at = offset();
    index = Load<std::uint16_t>(pos_);
    pos_ += 2;
    if (index != kNewString) {
        if (index < strings_.size()) return true;
        return Fail(at, "string index " + std::to_string(index) + " is out of range (the table holds " +
                            std::to_string(strings_.size()) + ")");
    }
    if (!Need(4, "a string length")) return false;
    std::uint32_t characters = Load<std::uint32_t>(pos_);
    pos_ += 4;
    long long bytes = Utf8Bytes(pos_, static_cast<std::size_t>(end_ - pos_), characters);
    if (bytes < 0) {
        return Fail(at, "the file is truncated: a string of " + std::to_string(characters) +
                            " characters runs past the end");
    }
    if (strings_.size() >= kNewString) return Fail(at, "the string table holds more than 65535 strings");
    index = static_cast<std::uint16_t>(strings_.size());
    strings_.emplace_back(reinterpret_cast<const char*>(pos_), static_cast<std::size_t>(bytes));
    pos_ += bytes;
    return true;
}

bool BinaryReader::ReadHeader(CacheEntry& entry) {
    if (!Need(1, "a record kind")) return false;
    unsigned char kind = *pos_;
    if (!IsKnownKind(kind)) return Fail(offset(), "unknown record kind " + Hex(kind));
    ++pos_;
    entry.kind = static_cast<Kind>(kind);
    if (KindHasName(entry.kind) && !ReadString(entry.name)) return false;
    if (KindHasType(entry.kind)) {
        std::size_t at = offset();
        std::uint16_t typeIndex = 0;
        if (!ReadString(typeIndex)) return false;
        entry.type = TypeFromName(strings_[typeIndex]);
        if (entry.type == ValueType::Unknown) {
            return Fail(at, "unknown value type '" + std::string(strings_[typeIndex]) + "'");
        }
        if (entry.kind == Kind::Array && entry.type == ValueType::String) {
            return Fail(at, "an array of cDeltaString cannot be written as text");
        }
    }
    cache_[cursor_] = entry;
    filled_[cursor_] = true;
    cursor_ = (cursor_ + 1) % kCacheSlots;
    return true;
}

bool BinaryReader::NextFull(Record& record, std::size_t at) {
    unsigned char lead = *pos_++;
    CacheEntry entry;
    if (lead == kFullRecord) {
        if (!ReadHeader(entry)) return false;
    } else {
        return Fail(at, "line cache slot " + std::to_string(lead) + " is used before it was filled");
    }
    record = Record{};
    record.kind = entry.kind;
    record.nameIndex = entry.name;
    record.type = entry.type;
    return ReadPayload(record);
}

}  // namespace ferrolund::serz
