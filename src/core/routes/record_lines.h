#pragma once
// The lines of a tile's XML text as the reference rule reads them (tile_references.h),
// answered from the decoded records of the binary file without writing the text: which
// lines hold "<Provider", and the value of a line that holds one cDeltaString value.
// The few lines whose answer only their written form gives (a number or a blob where a
// value is read, a name or a value with characters the text escapes or breaks on, the
// line an error shows) are taken from the file's XML, made once when first needed.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "serz/xml_layout.h"

namespace ferrolund::routes {

class RecordLines {
public:
    // `binary` must outlive the reader.
    explicit RecordLines(std::string_view binary);

    bool next();
    bool nextProviderLine();
    bool valueAfterTag(std::string& value);
    bool value(std::string& value);
    std::string text() { return std::string(written()); }

    // Reads the records that are left: true when the whole file converts to text, which
    // is when the lines given were those of its text.
    bool readToEnd();

private:
    // What a line is, as far as the rule asks.
    enum class Shape : std::uint8_t {
        Bare,     // holds no value: a tag, an end tag, a nil, part of a text that spans lines
        String,   // one cDeltaString value on one line, its text as written
        Written,  // ask the written line
    };

    // Facts of a string of the file, by its index.
    enum Fact : std::uint8_t {
        kKnown = 1,
        kPlainName = 2,      // as a name, has no '<', '>' or line feed
        kProviderName = 4,   // as a name, starts with "provider", any case
        kPlainValue = 8,     // as a value, written as it is: nothing escaped
    };
    std::uint8_t FactsOf(std::uint16_t index) {
        return index < facts_.size() && facts_[index] != 0 ? facts_[index] : LearnFacts(index);
    }
    std::uint8_t LearnFacts(std::uint16_t index);
    // Whether the line on which a record's text starts may hold "<Provider".
    bool MayHoldTag(const serz::Record& record);
    void Enter(const serz::Record& record, std::uint32_t lines);
    std::string_view written();

    std::string_view binary_;
    serz::XmlLayout layout_;
    std::vector<std::uint8_t> facts_;
    std::size_t line_ = 0;        // of the current line, from 1
    std::uint32_t left_ = 0;      // lines of the current record after the current one
    bool plainName_ = true;       // the current record's name leaves its lines regular
    Shape shape_ = Shape::Bare;
    std::uint16_t string_ = 0;    // the value of a String line

    std::string xml_;             // the file's XML, once needed
    bool xmlMade_ = false;
    std::size_t cursorLine_ = 1;  // a line of xml_ and where it starts
    std::size_t cursorAt_ = 0;
};

}  // namespace ferrolund::routes
