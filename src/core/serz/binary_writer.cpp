#include "serz/binary_writer.h"

#include <algorithm>
#include <cstring>

#include "serz/binary_reader.h"

namespace ferrolund::serz {

BinaryWriter::BinaryWriter(std::string& out, std::size_t expected)
    : out_(out, expected), slotsByName_(1) {
    typeIndex_.fill(kNone);
    out_.Append(kMagic);
}

bool BinaryWriter::Fail(std::string reason) {
    failure_ = std::move(reason);
    return false;
}

void BinaryWriter::Put16(std::uint16_t value) {
    char* p = out_.Reserve(2);
    std::memcpy(p, &value, 2);
    out_.Commit(p + 2);
}

void BinaryWriter::Put32(std::uint32_t value) {
    char* p = out_.Reserve(4);
    std::memcpy(p, &value, 4);
    out_.Commit(p + 4);
}

int BinaryWriter::FindString(std::string_view text, std::uint64_t hash) const {
    return index_.Find(hash, [&](int i) {
        const Span& span = strings_[static_cast<std::size_t>(i)];
        return span.length == text.size() &&
               (text.empty() || std::memcmp(stringBytes_.data() + span.offset, text.data(), text.size()) == 0);
    });
}

// Writes the reference to `text`, adding it to the table (in place, after FFFF and its
// character count) when it is new.
bool BinaryWriter::WriteString(std::string_view text, int& index) {
    std::uint64_t hash = HashText(text);
    index = FindString(text, hash);
    if (index != kNone) {
        Put16(static_cast<std::uint16_t>(index));
        return true;
    }
    long long characters = Utf8Characters(text);
    if (characters < 0) return Fail("the text ends inside a UTF-8 character");
    if (strings_.size() >= kNewString) return Fail("more than 65535 different strings");
    Put16(kNewString);
    Put32(static_cast<std::uint32_t>(characters));
    strings_.push_back({stringBytes_.size(), text.size()});
    stringBytes_.append(text);
    index_.Add(hash);
    out_.Append(text);
    index = static_cast<int>(strings_.size() - 1);
    return true;
}

int BinaryWriter::FindCached(const CacheKey& key) const {
    for (std::uint8_t slot : slotsByName_[static_cast<std::size_t>(key.name + 1)]) {
        if (slots_[slot] == key) return slot;
    }
    return kNone;
}

void BinaryWriter::StoreCached(const CacheKey& key) {
    if (filled_[cursor_]) {
        auto& list = slotsByName_[static_cast<std::size_t>(slots_[cursor_].name + 1)];
        list.erase(std::find(list.begin(), list.end(), static_cast<std::uint8_t>(cursor_)));
    }
    slots_[cursor_] = key;
    filled_[cursor_] = true;
    auto listIndex = static_cast<std::size_t>(key.name + 1);
    if (slotsByName_.size() <= listIndex) slotsByName_.resize(listIndex + 1);
    slotsByName_[listIndex].push_back(static_cast<std::uint8_t>(cursor_));
    cursor_ = (cursor_ + 1) % kCacheSlots;
}

int BinaryWriter::TypeIndex(ValueType type) const { return typeIndex_[static_cast<std::size_t>(type)]; }

bool BinaryWriter::Header(Kind kind, NameRef* name, ValueType type, bool hasType) {
    CacheKey key{kind, kNone, kNone};
    bool known = true;
    if (name != nullptr) {
        if (name->index == kNone) name->index = FindString(name->text, HashText(name->text));
        key.name = name->index;
        known = key.name != kNone;
    }
    if (hasType) {
        key.type = TypeIndex(type);
        known = known && key.type != kNone;
    }
    if (known) {
        int slot = FindCached(key);
        if (slot != kNone) {
            out_.Put(static_cast<char>(slot));
            return true;
        }
    }
    out_.Put(static_cast<char>(kFullRecord));
    out_.Put(static_cast<char>(kind));
    if (name != nullptr) {
        if (name->index != kNone) {
            Put16(static_cast<std::uint16_t>(name->index));
        } else if (!WriteString(name->text, name->index)) {
            return false;
        }
        key.name = name->index;
    }
    if (hasType) {
        if (!WriteString(TypeName(type), key.type)) return false;
        typeIndex_[static_cast<std::size_t>(type)] = key.type;
    }
    StoreCached(key);
    return true;
}

void BinaryWriter::CountChild() {
    if (!open_.empty()) ++open_.back().second;
}

bool BinaryWriter::Open(NameRef& name, std::uint32_t id) {
    if (!Header(Kind::Open, &name, ValueType::Unknown, false)) return false;
    CountChild();
    Put32(id);
    open_.emplace_back(out_.size(), 0);
    Put32(0);
    return true;
}

bool BinaryWriter::Close(NameRef& name) {
    if (open_.empty()) return Fail("an end tag without a start");
    if (!Header(Kind::Close, &name, ValueType::Unknown, false)) return false;
    auto [offset, count] = open_.back();
    std::memcpy(out_.At(offset), &count, 4);
    open_.pop_back();
    return true;
}

bool BinaryWriter::Value(NameRef& name, ValueType type, const void* bytes) {
    if (!Header(Kind::Value, &name, type, true)) return false;
    CountChild();
    out_.Append({static_cast<const char*>(bytes), TypeSize(type)});
    return true;
}

bool BinaryWriter::StringValue(NameRef& name, std::string_view text) {
    if (!Header(Kind::Value, &name, ValueType::String, true)) return false;
    CountChild();
    int index = kNone;
    return WriteString(text, index);
}

bool BinaryWriter::Array(NameRef& name, ValueType type, std::uint8_t count, const void* bytes) {
    if (!Header(Kind::Array, &name, type, true)) return false;
    CountChild();
    out_.Put(static_cast<char>(count));
    out_.Append({static_cast<const char*>(bytes), count * TypeSize(type)});
    return true;
}

bool BinaryWriter::Reference(NameRef& name, std::uint32_t target) {
    if (!Header(Kind::Reference, &name, ValueType::Unknown, false)) return false;
    CountChild();
    Put32(target);
    return true;
}

bool BinaryWriter::Nil() {
    if (!Header(Kind::Nil, nullptr, ValueType::Unknown, false)) return false;
    CountChild();
    return true;
}

// A blob is not counted among its element's children: the game's own textures say so.
char* BinaryWriter::Blob(std::uint32_t size) {
    if (!Header(Kind::Blob, nullptr, ValueType::Unknown, false)) return nullptr;
    Put32(size);
    char* room = out_.Reserve(size);
    out_.Commit(room + size);
    return room;
}

}  // namespace ferrolund::serz
