// Binary to XML: the reader's records written as the converter's text.
#include <bit>
#include <deque>
#include <cstring>
#include <string>
#include <vector>

#if defined(__SSE2__) || defined(_M_X64)
#include <emmintrin.h>
#endif

#include "serz/binary_reader.h"
#include "serz/codec.h"
#include "serz/number_text.h"
#include "serz/output_buffer.h"

namespace ferrolund::serz {

namespace {

constexpr std::string_view kDeclaration = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n";
constexpr std::string_view kRootAttributes = " xmlns:d=\"http://www.kuju.com/TnT/2003/Delta\" d:version=\"1.0\"";
constexpr std::size_t kBlobGroupsPerLine = 4;

template <typename T>
T Load(const unsigned char* p) {
    T value;
    std::memcpy(&value, p, sizeof value);
    return value;
}

char* Copy(char* out, std::string_view text) {
    std::memcpy(out, text.data(), text.size());
    return out + text.size();
}

// One character of text, as an entity when it needs one.
char* EscapedCharacter(char* out, char c) {
    switch (c) {
        case '&': return Copy(out, "&amp;");
        case '<': return Copy(out, "&lt;");
        case '>': return Copy(out, "&gt;");
        case '"': return Copy(out, "&quot;");
        case '\'': return Copy(out, "&apos;");
        default: *out = c; return out + 1;
    }
}

}  // namespace

std::string XmlName(std::string_view name) {
    if (name.empty()) return "e";
    std::string out;
    out.reserve(name.size());
    for (std::size_t i = 0; i < name.size(); ++i) {
        if (name[i] == ':' && i + 1 < name.size() && name[i + 1] == ':') {
            out += '-';
            ++i;
        } else {
            out += name[i];
        }
    }
    return out;
}

namespace {

// The text of a string value with the characters that need one as entities. `out` has
// room for six bytes a character (and sixteen more).
char* Escaped(char* out, std::string_view text) {
    const char* p = text.data();
    const char* end = p + text.size();
#if defined(__SSE2__) || defined(_M_X64)
    // Sixteen characters a step: the chunk is stored whole (the room reserved for the text,
    // six bytes a character, takes it), then kept up to the first that needs an entity.
    while (end - p >= 16) {
        __m128i chunk = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
        __m128i special = _mm_or_si128(
            _mm_or_si128(_mm_cmpeq_epi8(chunk, _mm_set1_epi8('&')), _mm_cmpeq_epi8(chunk, _mm_set1_epi8('<'))),
            _mm_or_si128(_mm_or_si128(_mm_cmpeq_epi8(chunk, _mm_set1_epi8('>')), _mm_cmpeq_epi8(chunk, _mm_set1_epi8('"'))),
                         _mm_cmpeq_epi8(chunk, _mm_set1_epi8('\''))));
        auto mask = static_cast<unsigned>(_mm_movemask_epi8(special));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(out), chunk);
        int plain = mask == 0 ? 16 : std::countr_zero(mask);
        out += plain;
        p += plain;
        if (mask != 0) out = EscapedCharacter(out, *p++);
    }
#endif
    for (; p < end; ++p) out = EscapedCharacter(out, *p);
    return out;
}

// What an element's start tag holds behind its name: the namespace of the root, the id.
char* OpenAttributes(char* out, std::uint32_t id, bool root) {
    if (root) out = Copy(out, kRootAttributes);
    if (id != 0) {
        out = Copy(out, " d:id=\"");
        out = WriteSigned(out, static_cast<std::int32_t>(id));
        *out++ = '"';
    }
    return out;
}

class XmlWriter {
public:
    XmlWriter(BinaryReader& reader, std::string& xml, std::size_t binarySize, const XmlStyle& style)
        : reader_(reader), out_(xml, binarySize * 10 + 256), exponentDigits_(style.exponentDigits) {}

    CodecStatus Run();

private:
    CodecStatus Write(const Record& record);
    std::string_view Name(std::uint16_t index);
    char* Indent(char* out) const;
    char* Scalar(char* out, ValueType type, const unsigned char* p) const;
    void StartTag(const Record& record, std::size_t extra);
    void Value(const Record& record);
    void Array(const Record& record);
    void Blob(const Record& record);

    BinaryReader& reader_;
    OutputBuffer out_;
    int exponentDigits_;
    // The XML form of each string used as a name (no data: not yet needed), pointing into
    // the binary or, when it differs, into `converted_`.
    std::vector<std::string_view> names_;
    std::deque<std::string> converted_;
    std::vector<std::uint16_t> open_;      // names of the open elements, innermost last
    bool startPending_ = false;            // a start tag waits for ">" or "/>"
    bool rootClosed_ = false;
};

std::string_view XmlWriter::Name(std::uint16_t index) {
    if (index < names_.size() && names_[index].data() != nullptr) return names_[index];
    if (index >= names_.size()) names_.resize(index + 1u);
    std::string_view binary = reader_.String(index);
    if (!binary.empty() && binary.find("::") == std::string_view::npos) {
        names_[index] = binary;  // the same in both forms
    } else {
        converted_.push_back(XmlName(binary));
        names_[index] = converted_.back();
    }
    return names_[index];
}

char* XmlWriter::Indent(char* out) const {
    static constexpr std::string_view kTabs = "\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t";
    std::size_t depth = open_.size();
    for (; depth > kTabs.size(); depth -= kTabs.size()) out = Copy(out, kTabs);
    std::memcpy(out, kTabs.data(), depth);
    return out + depth;
}

char* XmlWriter::Scalar(char* out, ValueType type, const unsigned char* p) const {
    switch (type) {
        case ValueType::Bool: *out++ = *p ? '1' : '0'; return out;
        case ValueType::UInt8: return WriteUnsigned(out, *p);
        case ValueType::Int8: return WriteSigned(out, static_cast<std::int8_t>(*p));
        case ValueType::Int16: return WriteSigned(out, Load<std::int16_t>(p));
        case ValueType::UInt16: return WriteUnsigned(out, Load<std::uint16_t>(p));
        case ValueType::Int32: return WriteSigned(out, Load<std::int32_t>(p));
        case ValueType::UInt32: return WriteUnsigned(out, Load<std::uint32_t>(p));
        case ValueType::Int64: return WriteSigned(out, Load<std::int64_t>(p));
        case ValueType::UInt64: return WriteUnsigned(out, Load<std::uint64_t>(p));
        case ValueType::Float32: return WriteGeneral(out, Load<float>(p), exponentDigits_);
        case ValueType::Float64: return WriteGeneral(out, Load<double>(p), exponentDigits_);
        case ValueType::String:
        case ValueType::Unknown: break;
    }
    return out;
}

// "<Name" with the tabs before it; `extra` is the room the caller's attributes need.
void XmlWriter::StartTag(const Record& record, std::size_t extra) {
    std::string_view name = Name(record.nameIndex);
    char* out = out_.Reserve(open_.size() + name.size() + extra + 64);
    out = Indent(out);
    *out++ = '<';
    out_.Commit(Copy(out, name));
}

void XmlWriter::Value(const Record& record) {
    std::string_view name = Name(record.nameIndex);
    std::string_view text = record.type == ValueType::String ? reader_.String(record.stringIndex) : "";
    StartTag(record, 2 * name.size() + 6 * text.size() + kNumberTextMax + 80);
    char* out = out_.Reserve(0);
    out = Copy(out, " d:type=\"");
    if (record.kind == Kind::Reference) {
        out = Copy(out, "ref\">");
        out = WriteSigned(out, static_cast<std::int32_t>(record.id));
    } else {
        out = Copy(out, TypeName(record.type));
        if (IsFloat(record.type)) {
            double value = record.type == ValueType::Float32 ? Load<float>(record.payload) : Load<double>(record.payload);
            out = Copy(out, "\" d:alt_encoding=\"");
            out = WriteAltEncoding(out, value);
            out = Copy(out, "\" d:precision=\"string");
        }
        out = Copy(out, "\">");
        out = record.type == ValueType::String ? Escaped(out, text) : Scalar(out, record.type, record.payload);
    }
    out = Copy(out, "</");
    out = Copy(out, name);
    out_.Commit(Copy(out, ">\r\n"));
}

void XmlWriter::Array(const Record& record) {
    std::string_view name = Name(record.nameIndex);
    std::size_t size = TypeSize(record.type);
    StartTag(record, name.size() + record.count * (kNumberTextMax + 1) + 128);
    char* out = out_.Reserve(0);
    out = Copy(out, " d:numElements=\"");
    out = WriteUnsigned(out, record.count);
    out = Copy(out, "\" d:elementType=\"");
    out = Copy(out, TypeName(record.type));
    out = Copy(out, IsFloat(record.type) ? "\" d:precision=\"string\">" : "\">");
    for (std::uint32_t i = 0; i < record.count; ++i) {
        if (i > 0) *out++ = ' ';
        const unsigned char* p = record.payload + i * size;
        if (record.type == ValueType::Float32) {
            out = WriteFixed7(out, Load<float>(p));
        } else if (record.type == ValueType::Float64) {
            out = WriteFixed7(out, Load<double>(p));
        } else {
            out = Scalar(out, record.type, p);
        }
    }
    out = Copy(out, "</");
    out = Copy(out, name);
    out_.Commit(Copy(out, ">\r\n"));
}

void XmlWriter::Blob(const Record& record) {
    static constexpr char kHex[] = "0123456789ABCDEF";
    std::size_t groups = (record.count + 7) / 8;
    char* out = out_.Reserve(open_.size() + 64 + 2 * record.count + groups * 2 + 16);
    out = Indent(out);
    out = Copy(out, "<d:blob d:size=\"");
    out = WriteUnsigned(out, record.count);
    out = Copy(out, "\">");
    for (std::uint32_t i = 0; i < record.count; ++i) {
        if (i > 0 && i % 8 == 0) {
            if ((i / 8) % kBlobGroupsPerLine == 0) {
                out = Copy(out, "\r\n");
            } else {
                *out++ = ' ';
            }
        }
        *out++ = kHex[record.payload[i] >> 4];
        *out++ = kHex[record.payload[i] & 0xF];
    }
    out_.Commit(Copy(out, "</d:blob>\r\n"));
}

CodecStatus XmlWriter::Write(const Record& record) {
    if (record.kind == Kind::Marker) return std::nullopt;  // the game's own; no text form
    std::size_t at = reader_.recordOffset();
    if (startPending_) {
        startPending_ = false;
        if (record.kind == Kind::Close && record.nameIndex == open_.back()) {
            open_.pop_back();
            out_.Append("/>\r\n");
            rootClosed_ = open_.empty();
            return std::nullopt;
        }
        out_.Append(">\r\n");
    }
    if (rootClosed_) return ErrorAtByte(at, "a record follows the end of the root element");
    if (open_.empty() && record.kind != Kind::Open) {
        return ErrorAtByte(at, "the file does not start with an element");
    }
    switch (record.kind) {
        case Kind::Open: {
            StartTag(record, 40 + kRootAttributes.size());
            out_.Commit(OpenAttributes(out_.Reserve(0), record.id, open_.empty()));
            open_.push_back(record.nameIndex);
            startPending_ = true;
            return std::nullopt;
        }
        case Kind::Close: {
            if (record.nameIndex != open_.back()) {
                return ErrorAtByte(at, "the end of '" + std::string(reader_.String(record.nameIndex)) +
                                           "' closes '" + std::string(reader_.String(open_.back())) + "'");
            }
            open_.pop_back();
            std::string_view name = Name(record.nameIndex);
            char* out = out_.Reserve(open_.size() + name.size() + 8);
            out = Indent(out);
            out = Copy(out, "</");
            out = Copy(out, name);
            out_.Commit(Copy(out, ">\r\n"));
            rootClosed_ = open_.empty();
            return std::nullopt;
        }
        case Kind::Value:
        case Kind::Reference: Value(record); return std::nullopt;
        case Kind::Array: Array(record); return std::nullopt;
        case Kind::Blob: Blob(record); return std::nullopt;
        case Kind::Nil: {
            char* out = out_.Reserve(open_.size() + 16);
            out_.Commit(Copy(Indent(out), "<d:nil/>\r\n"));
            return std::nullopt;
        }
        case Kind::Marker: break;
    }
    return std::nullopt;
}

CodecStatus XmlWriter::Run() {
    if (auto failure = reader_.Start()) return failure;
    out_.Append(kDeclaration);
    Record record;
    while (reader_.Next(record)) {
        if (auto failure = Write(record)) return failure;
    }
    if (reader_.failure()) return reader_.failure();
    if (!rootClosed_) {
        if (open_.empty()) return ErrorAtByte(reader_.offset(), "the file holds no element");
        return ErrorAtByte(reader_.offset(), "the file is truncated: it ends inside '" +
                                                 std::string(reader_.String(open_.back())) + "'");
    }
    out_.Finish();
    return std::nullopt;
}

}  // namespace

std::string XmlText(std::string_view text) {
    std::string out(6 * text.size() + 16, '\0');
    out.resize(static_cast<std::size_t>(Escaped(out.data(), text) - out.data()));
    return out;
}

std::string OpenTagAttributes(std::uint32_t id, bool root) {
    std::string out(kRootAttributes.size() + 32, '\0');
    out.resize(static_cast<std::size_t>(OpenAttributes(out.data(), id, root) - out.data()));
    return out;
}

CodecStatus BinaryToXml(std::string_view binary, std::string& xml, const XmlStyle& style) {
    return Guarded(xml, [&] {
        BinaryReader reader(binary);
        XmlWriter writer(reader, xml, binary.size(), style);
        return writer.Run();
    });
}

}  // namespace ferrolund::serz
