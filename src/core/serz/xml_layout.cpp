#include "serz/xml_layout.h"

#include <algorithm>
#include <string>

namespace ferrolund::serz {

namespace {

constexpr std::size_t kBytesPerGroup = 8;
constexpr std::size_t kGroupsPerLine = 4;

// Lines of hex a blob of `bytes` takes: four groups of eight bytes a line.
std::uint32_t BlobLines(std::uint32_t bytes) {
    const std::size_t groups = (bytes + kBytesPerGroup - 1) / kBytesPerGroup;
    return static_cast<std::uint32_t>(groups == 0 ? 1 : 1 + (groups - 1) / kGroupsPerLine);
}

}  // namespace

XmlLayout::XmlLayout(std::string_view binary) : reader_(binary) {}

bool XmlLayout::Fail(CodecStatus status) {
    failure_ = std::move(status);
    done_ = true;
    return false;
}

std::uint32_t XmlLayout::CountLineFeeds(std::uint16_t index) {
    if (index >= lineFeeds_.size()) lineFeeds_.resize(index + 1u, 0);
    const std::string_view text = reader_.String(index);
    lineFeeds_[index] = 1 + static_cast<std::uint32_t>(std::count(text.begin(), text.end(), '\n'));
    return lineFeeds_[index] - 1;
}

bool XmlLayout::End() {
    done_ = true;
    if (reader_.failure()) return Fail(reader_.failure());
    if (rootClosed_) return false;
    if (open_.empty()) return Fail(ErrorAtByte(reader_.offset(), "the file holds no element"));
    return Fail(ErrorAtByte(reader_.offset(), "the file is truncated: it ends inside '" +
                                                  std::string(reader_.String(open_.back())) + "'"));
}

bool XmlLayout::Next(LaidRecord& laid) {
    if (done_) return false;
    if (!started_) {
        started_ = true;
        if (auto failure = reader_.Start()) return Fail(std::move(failure));
    }
    Record& record = laid.record;
    if (!reader_.Next(record)) return End();
    laid.lines = 0;
    if (record.kind == Kind::Marker) return true;  // no text at all
    const std::size_t at = reader_.recordOffset();
    if (startPending_) {
        startPending_ = false;
        if (record.kind == Kind::Close && record.nameIndex == open_.back()) {
            open_.pop_back();
            rootClosed_ = open_.empty();
            return true;
        }
    }
    if (rootClosed_) return Fail(ErrorAtByte(at, "a record follows the end of the root element"));
    if (open_.empty() && record.kind != Kind::Open) {
        return Fail(ErrorAtByte(at, "the file does not start with an element"));
    }
    switch (record.kind) {
        case Kind::Open:
            laid.lines = 1 + LineFeeds(record.nameIndex);
            open_.push_back(record.nameIndex);
            startPending_ = true;
            break;
        case Kind::Close:
            if (record.nameIndex != open_.back()) {
                return Fail(ErrorAtByte(at, "the end of '" + std::string(reader_.String(record.nameIndex)) +
                                                "' closes '" + std::string(reader_.String(open_.back())) + "'"));
            }
            open_.pop_back();
            laid.lines = 1 + LineFeeds(record.nameIndex);
            rootClosed_ = open_.empty();
            break;
        case Kind::Value:
        case Kind::Reference:
        case Kind::Array:
            laid.lines = 1 + 2 * LineFeeds(record.nameIndex);
            if (record.kind == Kind::Value && record.type == ValueType::String)
                laid.lines += LineFeeds(record.stringIndex);
            break;
        case Kind::Blob: laid.lines = BlobLines(record.count); break;
        case Kind::Nil: laid.lines = 1; break;
        case Kind::Marker: break;
    }
    return true;
}

}  // namespace ferrolund::serz
