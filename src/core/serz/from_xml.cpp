// XML to binary: a reader of the converter's XML that takes what a person may type (any
// indentation, LF or CR LF, blank lines, comments) and feeds the binary writer.
#include <array>
#include <bit>
#include <cmath>
#include <cstring>
#include <limits>
#include <string>
#include <vector>

#include "serz/binary_writer.h"
#include "serz/codec.h"
#include "serz/number_text.h"
#include "serz/text_scan.h"
#include "serz/xml_attributes.h"
#include "serz/xml_names.h"
#include "serz/xml_text.h"

namespace ferrolund::serz {

namespace {

// The nearest float. Past the largest float a value rounds to it or, from the midpoint
// to the next power of two on, to infinity (a plain conversion is undefined there).
float ToFloat(double value) {
    constexpr double kMax = std::numeric_limits<float>::max();
    constexpr double kMidpoint = 3.4028235677973366e38;
    double magnitude = std::fabs(value);
    if (!(magnitude > kMax) || std::isinf(value)) return static_cast<float>(value);
    float rounded = magnitude < kMidpoint ? std::numeric_limits<float>::max() : std::numeric_limits<float>::infinity();
    return std::signbit(value) ? -rounded : rounded;
}

class XmlReader {
public:
    XmlReader(std::string_view xml, BinaryWriter& writer)
        : text_(xml), p_(xml.data()), end_(xml.data() + xml.size()), writer_(writer), names_(xml) {}

    CodecStatus Run();

private:
    bool Fail(const char* at, std::string_view reason);
    bool Match(std::string_view what);
    void SkipBlanks() { p_ = BlanksEnd(p_, end_); }
    bool SkipMarkup();
    bool ReadName(std::string_view& name);
    bool ReadAttributes(Attributes& attributes, bool& selfClosing);
    bool ReadEndTag(std::string_view name);
    bool ReadContent(std::string_view name, bool selfClosing, std::string_view& content);
    std::uint32_t ExpectedName();
    bool Element();
    bool EndTag();
    bool Value(std::uint32_t name, const Attributes& attributes, bool selfClosing, const char* at);
    bool Array(std::uint32_t name, const Attributes& attributes, bool selfClosing, const char* at);
    bool Blob(const Attributes& attributes, bool selfClosing, const char* at);
    bool Scalar(std::string_view text, const char* readable, ValueType type, unsigned char* bytes, const char* at);
    const char* ReadableEnd(std::string_view content) const;
    bool Written(bool ok, const char* at);

    std::string_view text_;
    const char* p_;
    const char* end_;
    BinaryWriter& writer_;
    XmlNames names_;
    std::uint32_t place_ = XmlNames::kNoName;  // after which tag the reader stands (XmlNames::After)
    std::vector<std::uint32_t> open_;  // names of the open elements, innermost last
    bool rootSeen_ = false;
    std::string unescaped_;
    std::array<unsigned char, 255 * 8> elements_;  // the most an array holds
    CodecStatus failure_;
};

bool XmlReader::Fail(const char* at, std::string_view reason) {
    if (!failure_) failure_ = ErrorAtLine(text_, at, reason);
    return false;
}

bool XmlReader::Written(bool ok, const char* at) { return ok || Fail(at, writer_.failure()); }

// Passes over `what` when the text goes on with it.
bool XmlReader::Match(std::string_view what) {
    if (static_cast<std::size_t>(end_ - p_) < what.size() || std::memcmp(p_, what.data(), what.size()) != 0) {
        return false;
    }
    p_ += what.size();
    return true;
}

// Passes over blanks, comments and processing instructions; false on one left open.
bool XmlReader::SkipMarkup() {
    for (;;) {
        SkipBlanks();
        if (end_ - p_ >= 2 && p_[0] == '<' && p_[1] != '!' && p_[1] != '?') return true;  // a tag
        std::string_view rest(p_, static_cast<std::size_t>(end_ - p_));
        std::string_view close;
        if (rest.starts_with("<!--")) {
            close = "-->";
        } else if (rest.starts_with("<?")) {
            close = "?>";
        } else {
            return true;
        }
        std::size_t found = rest.find(close, 2);
        if (found == std::string_view::npos) return Fail(p_, "a comment or declaration is never closed");
        p_ += found + close.size();
    }
}

bool XmlReader::ReadName(std::string_view& name) {
    const char* start = p_;
    p_ = NameEnd(p_, end_);
    name = {start, static_cast<std::size_t>(p_ - start)};
    return !name.empty() || Fail(start, "a tag has no name");
}

bool XmlReader::ReadAttributes(Attributes& a, bool& selfClosing) {
    for (;;) {
        SkipBlanks();
        if (p_ == end_) return Fail(p_, "the text ends inside a tag");
        if (*p_ == '>') {
            ++p_;
            selfClosing = false;
            return true;
        }
        if (*p_ == '/') {
            ++p_;
            selfClosing = true;
            return Match(">") || Fail(p_, "'/' in a tag is not followed by '>'");
        }
        AttributeField field = AttributeField::Other;
        char quote = '"';
        const WrittenAttribute* written = end_ - p_ >= 16 && p_[0] == 'd' && p_[1] == ':' ? WrittenAttributeFor(p_[2]) : nullptr;
        if (written != nullptr && SameShortBytes(p_, written->text, written->length)) {
            p_ += written->length;  // as the converter writes it, up to the opening quote
            field = written->field;
        } else {
            std::string_view key;
            if (!ReadName(key)) return false;
            SkipBlanks();
            if (!Match("=")) return Fail(p_, "attribute '" + std::string(key) + "' has no value");
            SkipBlanks();
            if (p_ == end_ || (*p_ != '"' && *p_ != '\'')) return Fail(p_, "an attribute value is not in quotes");
            quote = *p_++;
            field = FieldOf(key);
        }
        const char* start = p_;
        const char* stop = FindChar(p_, end_, quote);
        if (stop == nullptr) return Fail(start, "an attribute value is never closed");
        p_ = stop + 1;
        SetAttribute(a, field, {start, static_cast<std::size_t>(stop - start)});
    }
}

bool XmlReader::ReadEndTag(std::string_view name) {
    std::size_t length = name.size() + 3;  // "</name>", as written in the common case
    if (static_cast<std::size_t>(end_ - p_) >= length && p_[0] == '<' && p_[1] == '/' && p_[length - 1] == '>' &&
        SameBytes(p_ + 2, name.data(), name.size(), end_)) {
        p_ += length;
        return true;
    }
    const char* at = p_;
    if (!Match("</")) return Fail(p_, "expected the end tag </" + std::string(name) + ">");
    std::string_view found;
    if (!ReadName(found)) return false;
    SkipBlanks();
    if (found != name) return Fail(at, "</" + std::string(found) + "> ends <" + std::string(name) + ">");
    return Match(">") || Fail(p_, "the end tag </" + std::string(name) + "> is not closed");
}

// The text of an element that holds only text, up to its end tag, with entities resolved.
bool XmlReader::ReadContent(std::string_view name, bool selfClosing, std::string_view& content) {
    content = {};
    if (selfClosing) return true;
    const char* start = p_;
    const char* stop = FindChar(p_, end_, '<');
    if (stop == nullptr) return Fail(start, "the text ends inside <" + std::string(name) + ">");
    content = {start, static_cast<std::size_t>(stop - start)};
    p_ = stop;
    if (FindChar(start, stop, '&') != nullptr) {
        std::size_t bad = 0;
        if (!Unescape(content, unescaped_, bad)) return Fail(start + bad, "an unknown or broken entity");
        content = unescaped_;
    }
    return ReadEndTag(name);
}

// A float or double in file order.
void StoreFloat(double value, ValueType type, unsigned char* bytes) {
    if (type == ValueType::Float64) {
        std::memcpy(bytes, &value, 8);
        return;
    }
    float single = ToFloat(value);
    std::memcpy(bytes, &single, 4);
}

// How far the text of `content` may be read past its end: to the end of the XML when it
// lies there, else (entities resolved into a copy) only to its own end.
const char* XmlReader::ReadableEnd(std::string_view content) const {
    bool copied = content.data() == unescaped_.data();
    return copied || content.empty() ? content.data() + content.size() : end_;
}

// `readable` is how far the text may be read past its end (a blank or '<' stops a number).
bool XmlReader::Scalar(std::string_view text, const char* readable, ValueType type, unsigned char* bytes, const char* at) {
    auto bad = [&] { return Fail(at, "'" + std::string(text) + "' is not a value of type " + std::string(TypeName(type))); };
    if (IsFloat(type)) {
        double value = 0;
        const char* end = text.data() + text.size();
        if (ReadPlainDecimal(text.data(), readable, value) != end && !ParseDouble(text, value)) return bad();
        StoreFloat(value, type, bytes);
        return true;
    }
    std::size_t size = TypeSize(type);
    std::uint64_t bits = 0;
    if (IsSigned(type)) {
        std::int64_t value = 0;
        std::int64_t limit = size == 8 ? std::numeric_limits<std::int64_t>::max() : (std::int64_t{1} << (8 * size - 1)) - 1;
        if (!ParseSigned(text, value) || value > limit || value < -limit - 1) return bad();
        bits = static_cast<std::uint64_t>(value);
    } else {
        std::uint64_t value = 0;
        std::uint64_t limit = size == 8 ? std::numeric_limits<std::uint64_t>::max() : (std::uint64_t{1} << (8 * size)) - 1;
        if (!ParseUnsigned(text, value) || value > limit) return bad();
        bits = type == ValueType::Bool ? (value != 0) : value;
    }
    std::memcpy(bytes, &bits, size);  // little-endian: the low bytes come first
    return true;
}

// A d:id or reference: a signed or unsigned 32-bit number.
bool ParseId(std::string_view text, std::uint32_t& id) {
    std::int64_t value = 0;
    if (!ParseSigned(text, value) || value < std::numeric_limits<std::int32_t>::min() ||
        value > std::numeric_limits<std::uint32_t>::max()) {
        return false;
    }
    id = static_cast<std::uint32_t>(value);
    return true;
}

bool XmlReader::Value(std::uint32_t name, const Attributes& a, bool selfClosing, const char* at) {
    std::string_view content;
    if (!ReadContent(names_.Xml(name), selfClosing, content)) return false;
    NameRef& binaryName = names_.Binary(name);
    if (a.type == "ref") {
        std::uint32_t target = 0;
        if (!ParseId(content, target)) return Fail(at, "'" + std::string(content) + "' is not a reference");
        return Written(writer_.Reference(binaryName, target), at);
    }
    ValueType type = TypeFromName(a.type);
    if (type == ValueType::Unknown) return Fail(at, "unknown type '" + std::string(a.type) + "'");
    if (type == ValueType::String) return Written(writer_.StringValue(binaryName, content), at);
    unsigned char bytes[8];
    return Scalar(content, ReadableEnd(content), type, bytes, at) && Written(writer_.Value(binaryName, type, bytes), at);
}

bool XmlReader::Array(std::uint32_t nameNumber, const Attributes& a, bool selfClosing, const char* at) {
    std::string_view name = names_.Xml(nameNumber);
    ValueType type = TypeFromName(a.elementType);
    if (type == ValueType::Unknown || type == ValueType::String) {
        return Fail(at, "unknown array element type '" + std::string(a.elementType) + "'");
    }
    std::uint64_t declared = 0;
    if (!ParseUnsigned(a.numElements, declared) || declared > 255) {
        return Fail(at, "d:numElements '" + std::string(a.numElements) + "' is not a count from 0 to 255");
    }
    std::string_view content;
    if (!ReadContent(name, selfClosing, content)) return false;
    std::size_t size = TypeSize(type);
    const char* p = content.data();
    const char* stop = p + content.size();
    const char* readable = ReadableEnd(content);
    std::size_t count = 0;
    for (;; ++count) {
        while (p < stop && IsBlank(*p)) ++p;
        if (p == stop) break;
        if (count == declared) return Fail(at, "<" + std::string(name) + "> holds more elements than d:numElements");
        unsigned char* bytes = &elements_[count * size];
        double value = 0;
        const char* next = IsFloat(type) ? ReadPlainDecimal(p, readable, value) : nullptr;
        if (next != nullptr && (next == stop || IsBlank(*next))) {
            StoreFloat(value, type, bytes);  // the common form, read and delimited at once
            p = next;
            continue;
        }
        const char* start = p;
        while (p < stop && !IsBlank(*p)) ++p;
        if (!Scalar({start, static_cast<std::size_t>(p - start)}, p, type, bytes, at)) return false;
    }
    if (count != declared) return Fail(at, "<" + std::string(name) + "> holds fewer elements than d:numElements");
    return Written(writer_.Array(names_.Binary(nameNumber), type, static_cast<std::uint8_t>(count), elements_.data()), at);
}

bool XmlReader::Blob(const Attributes& a, bool selfClosing, const char* at) {
    std::uint64_t size = 0;
    if (!a.hasSize || !ParseUnsigned(a.size, size) || size > std::numeric_limits<std::uint32_t>::max()) {
        return Fail(at, "a blob needs a d:size from 0 to 4294967295");
    }
    std::string_view content;
    if (!ReadContent("d:blob", selfClosing, content)) return false;
    std::size_t digits = 0;
    for (char c : content) digits += !IsBlank(c);
    if (digits != 2 * size) {
        return Fail(at, "a blob of d:size " + std::to_string(size) + " holds " + std::to_string(digits) + " hex digits");
    }
    char* out = writer_.Blob(static_cast<std::uint32_t>(size));
    if (out == nullptr) return Written(false, at);
    if (!DecodeHex(content, reinterpret_cast<unsigned char*>(out))) return Fail(at, "a blob holds a character that is not a hex digit");
    return true;
}

// The name that came next at this place last time, passed over when the tag at hand has
// it; else kNoName and nothing is passed over.
std::uint32_t XmlReader::ExpectedName() {
    std::uint32_t guess = names_.Following(place_);
    if (guess == XmlNames::kNoName) return guess;
    std::string_view name = names_.Xml(guess);
    if (static_cast<std::size_t>(end_ - p_) <= name.size() || !kNameEnds[static_cast<unsigned char>(p_[name.size()])] ||
        !SameBytes(p_, name.data(), name.size(), end_)) {
        return XmlNames::kNoName;
    }
    p_ += name.size();
    return guess;
}

bool XmlReader::Element() {
    const char* at = p_++;
    std::string_view name;
    std::uint32_t number = ExpectedName();
    if (number != XmlNames::kNoName) {
        name = names_.Xml(number);
    } else if (!ReadName(name)) {
        return false;
    }
    Attributes a;
    bool selfClosing = false;
    if (!ReadAttributes(a, selfClosing)) return false;
    if (open_.empty()) {
        if (rootSeen_) return Fail(at, "a second element follows the root element");
        rootSeen_ = true;
        // A binary file starts with an element that opens; a value there could not be read.
        if (a.hasType || a.hasNumElements || a.hasElementType || name == "d:nil" || name == "d:blob") {
            return Fail(at, "the root element holds a value, not elements");
        }
    }
    if (number == XmlNames::kNoName) {  // d:nil and d:blob are never in the table
        if (name == "d:nil") {
            if (!selfClosing && !ReadEndTag(name)) return false;
            return Written(writer_.Nil(), at);
        }
        if (name == "d:blob") return Blob(a, selfClosing, at);
        number = names_.Find(name, place_);
    }
    place_ = XmlNames::After(number, false);
    if (a.hasType) return Value(number, a, selfClosing, at);
    if (a.hasNumElements || a.hasElementType) return Array(number, a, selfClosing, at);
    std::uint32_t id = 0;
    if (a.hasId && !ParseId(a.id, id)) return Fail(at, "d:id '" + std::string(a.id) + "' is not a 32-bit number");
    NameRef& binaryName = names_.Binary(number);
    if (!Written(writer_.Open(binaryName, id), at)) return false;
    if (selfClosing) return Written(writer_.Close(binaryName), at);
    open_.push_back(number);
    return true;
}

bool XmlReader::EndTag() {
    const char* at = p_;
    if (open_.empty()) return Fail(at, "an end tag without a start tag");
    std::uint32_t name = open_.back();
    if (!ReadEndTag(names_.Xml(name))) return false;
    open_.pop_back();
    place_ = XmlNames::After(name, true);
    return Written(writer_.Close(names_.Binary(name)), at);
}

CodecStatus XmlReader::Run() {
    if (end_ - p_ >= 3 && std::memcmp(p_, "\xEF\xBB\xBF", 3) == 0) p_ += 3;  // a byte-order mark
    for (;;) {
        if (!SkipMarkup()) return failure_;
        if (p_ == end_) break;
        if (*p_ != '<') {
            return ErrorAtLine(text_, p_, open_.empty() ? "text outside the root element"
                                                         : "text inside <" + std::string(names_.Xml(open_.back())) +
                                                               ">, which holds elements");
        }
        bool ok = (p_ + 1 < end_ && p_[1] == '/') ? EndTag() : Element();
        if (!ok) return failure_;
    }
    if (!open_.empty()) return ErrorAtLine(text_, p_, "the text ends inside <" + std::string(names_.Xml(open_.back())) + ">");
    if (!rootSeen_) return ErrorAtLine(text_, p_, "the text holds no element");
    writer_.Finish();
    return std::nullopt;
}

}  // namespace

CodecStatus XmlToBinary(std::string_view xml, std::string& binary) {
    return Guarded(binary, [&] {
        BinaryWriter writer(binary, xml.size() / 6 + 256);
        XmlReader reader(xml, writer);
        return reader.Run();
    });
}

}  // namespace ferrolund::serz
