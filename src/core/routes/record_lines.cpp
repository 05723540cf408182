#include "routes/record_lines.h"

#include "routes/tile_references.h"
#include "serz/codec.h"
#include "tools/codepage.h"

namespace ferrolund::routes {

namespace {

bool StartsWithProvider(std::string_view name) {
    static constexpr std::string_view kName = "provider";
    if (name.size() < kName.size()) return false;
    for (std::size_t k = 0; k < kName.size(); ++k)
        if (static_cast<char>(tools::FoldCp1252(static_cast<unsigned char>(name[k]))) != kName[k]) return false;
    return true;
}

}  // namespace

RecordLines::RecordLines(std::string_view binary) : binary_(binary), layout_(binary) {}

std::uint8_t RecordLines::LearnFacts(std::uint16_t index) {
    if (index >= facts_.size()) facts_.resize(index + 1u, 0);
    const std::string_view text = layout_.String(index);
    std::uint8_t facts = kKnown;
    // One pass over the text: a name is plain without '<', '>' and line feeds; a value is
    // plain without those and without the characters the converter escapes.
    bool plainName = true;
    bool plainValue = true;
    for (const char c : text) {
        switch (c) {
            case '<':
            case '>':
            case '\n': plainName = plainValue = false; break;
            case '&':
            case '"':
            case '\'': plainValue = false; break;
            default: break;
        }
    }
    if (plainName) facts |= kPlainName;
    if (StartsWithProvider(text)) facts |= kProviderName;
    if (plainValue) facts |= kPlainValue;
    facts_[index] = facts;
    return facts;
}

bool RecordLines::MayHoldTag(const serz::Record& record) {
    using serz::Kind;
    switch (record.kind) {
        case Kind::Open:
        case Kind::Value:
        case Kind::Reference:
        case Kind::Array: {
            const std::uint8_t facts = FactsOf(record.nameIndex);
            return (facts & kProviderName) != 0 || (facts & kPlainName) == 0;
        }
        case Kind::Close: return (FactsOf(record.nameIndex) & kPlainName) == 0;
        case Kind::Nil:
        case Kind::Blob:
        case Kind::Marker: break;
    }
    return false;
}

void RecordLines::Enter(const serz::Record& record, std::uint32_t lines) {
    using serz::Kind;
    left_ = lines - 1;
    shape_ = Shape::Bare;
    const bool named = record.kind != Kind::Nil && record.kind != Kind::Blob;
    const std::uint8_t facts = named ? FactsOf(record.nameIndex) : std::uint8_t{kPlainName};
    plainName_ = (facts & kPlainName) != 0;
    if (!plainName_) {
        shape_ = Shape::Written;
        return;
    }
    switch (record.kind) {
        case Kind::Open: break;
        case Kind::Value:
        case Kind::Reference:
        case Kind::Array:
            shape_ = Shape::Written;
            if (record.kind == Kind::Value && record.type == serz::ValueType::String) {
                string_ = record.stringIndex;
                if (lines > 1)
                    shape_ = Shape::Bare;  // its first line ends inside the text
                else if (FactsOf(string_) & kPlainValue)
                    shape_ = Shape::String;
            }
            break;
        case Kind::Blob:
            if (lines == 1) shape_ = Shape::Written;  // the hex is the line's value
            break;
        case Kind::Close:
        case Kind::Nil:
        case Kind::Marker: break;
    }
}

bool RecordLines::next() {
    if (line_ == 0) {
        line_ = serz::XmlLayout::kDeclarationLines;  // no tag, no value
        return true;
    }
    if (left_ > 0) {
        // A later line of a text, a blob or a name that spans lines.
        --left_;
        ++line_;
        shape_ = plainName_ ? Shape::Bare : Shape::Written;
        return true;
    }
    serz::LaidRecord laid;
    do {
        if (!layout_.Next(laid)) return false;
    } while (laid.lines == 0);
    ++line_;
    Enter(laid.record, laid.lines);
    return true;
}

bool RecordLines::nextProviderLine() {
    // The lines left of the current record: with a plain name they hold no tag.
    if (line_ == 0) line_ = serz::XmlLayout::kDeclarationLines;
    for (; left_ > 0; --left_) {
        ++line_;
        if (!plainName_ && FindProviderTag(written()) != std::string_view::npos) {
            --left_;
            shape_ = Shape::Written;
            return true;
        }
    }
    serz::LaidRecord laid;
    while (layout_.Next(laid)) {
        if (laid.lines == 0) continue;
        if (!MayHoldTag(laid.record)) {
            line_ += laid.lines;
            continue;
        }
        ++line_;
        Enter(laid.record, laid.lines);
        if (plainName_) return true;  // a name that starts with "provider"
        if (FindProviderTag(written()) != std::string_view::npos) return true;
        for (; left_ > 0; --left_) {
            ++line_;
            if (FindProviderTag(written()) != std::string_view::npos) {
                --left_;
                shape_ = Shape::Written;
                return true;
            }
        }
    }
    return false;
}

bool RecordLines::valueAfterTag(std::string& value) {
    if (shape_ != Shape::Written) return this->value(value);
    const std::string_view line = written();
    const std::size_t hit = FindProviderTag(line);
    return CutValue(line, hit == std::string_view::npos ? 0 : hit, value);
}

bool RecordLines::value(std::string& value) {
    switch (shape_) {
        case Shape::Bare: return false;
        case Shape::String: value.assign(layout_.String(string_)); return true;
        case Shape::Written: break;
    }
    return CutValue(written(), 0, value);
}

bool RecordLines::readToEnd() {
    serz::LaidRecord laid;
    while (layout_.Next(laid)) {
    }
    return layout_.Complete();
}

std::string_view RecordLines::written() {
    if (!xmlMade_) {
        xmlMade_ = true;
        if (serz::BinaryToXml(binary_, xml_)) xml_.clear();  // then the walk fails as well
    }
    const std::string_view xml = xml_;
    while (cursorLine_ < line_ && cursorAt_ < xml.size()) {
        const std::size_t end = xml.find('\n', cursorAt_);
        cursorAt_ = end == std::string_view::npos ? xml.size() : end + 1;
        ++cursorLine_;
    }
    if (cursorLine_ != line_ || cursorAt_ >= xml.size()) return {};
    std::size_t end = xml.find('\n', cursorAt_);
    if (end == std::string_view::npos) end = xml.size();
    std::string_view line = xml.substr(cursorAt_, end - cursorAt_);
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    return line;
}

}  // namespace ferrolund::routes
