#pragma once
// The records of a binary file with the place their text takes in the XML that
// BinaryToXml writes, found without writing that text: how many lines each record's text
// spans, after the same checks of the element structure that the converter makes. A file
// this walk reads to its end is one the converter turns into text, and the lines add up
// to the lines of that text. For readers that want a few values out of a file quickly
// and must still answer in terms of its text.

#include <cstdint>
#include <string_view>
#include <vector>

#include "serz/binary_reader.h"
#include "serz/codec_status.h"

namespace ferrolund::serz {

struct LaidRecord {
    Record record;
    // Lines of the XML the record's text starts or fills; 0 for the game's marker record
    // and for a close written into its element's "<Name/>".
    std::uint32_t lines = 0;
};

class XmlLayout {
public:
    // The declaration line, before the first record's text.
    static constexpr std::uint32_t kDeclarationLines = 1;

    // `binary` must outlive the walk.
    explicit XmlLayout(std::string_view binary);

    // The next record; false at the end of the file, or on a fault, which then stays in
    // failure() and is the one the converter would give.
    bool Next(LaidRecord& laid);
    // After Next gave false: whether the whole file was read without fault.
    bool Complete() const { return done_ && !failure_; }
    const CodecStatus& failure() const { return failure_; }
    std::string_view String(std::uint16_t index) const { return reader_.String(index); }

private:
    bool Fail(CodecStatus status);
    bool End();
    std::uint32_t LineFeeds(std::uint16_t index) {
        return index < lineFeeds_.size() && lineFeeds_[index] != 0 ? lineFeeds_[index] - 1 : CountLineFeeds(index);
    }
    std::uint32_t CountLineFeeds(std::uint16_t index);

    BinaryReader reader_;
    std::vector<std::uint16_t> open_;
    std::vector<std::uint32_t> lineFeeds_;  // of each string met, + 1; 0 while not counted
    bool started_ = false;
    bool startPending_ = false;  // an open's text waits to learn whether it ends in "/>"
    bool rootClosed_ = false;
    bool done_ = false;
    CodecStatus failure_;
};

}  // namespace ferrolund::serz
