#include "editor/xml_colour.h"

#include "tools/codepage.h"

namespace ferrolund::editor {

namespace {

bool IsWordChar(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// The characters an attribute's name may run over: word characters, blanks, ':', '-', '.'.
bool IsNameRunChar(char c) {
    return IsWordChar(c) || c == ' ' || c == '\t' || c == '\f' || c == '\v' || c == '\r' || c == ':' || c == '-' ||
           c == '.';
}

// Collects spans, joining neighbours of one colour and leaving plain stretches out.
class Painter {
public:
    Painter(std::vector<ColourSpan>& spans, long offset) : spans_(spans), offset_(offset) {}

    void paint(std::size_t from, std::size_t to, XmlColour colour) {
        if (to <= from || colour == XmlColour::Plain) return;
        const long start = offset_ + static_cast<long>(from);
        const long length = static_cast<long>(to - from);
        if (!spans_.empty()) {
            ColourSpan& last = spans_.back();
            if (last.colour == colour && last.start + last.length == start) {
                last.length += length;
                return;
            }
        }
        spans_.push_back({start, length, colour});
    }

private:
    std::vector<ColourSpan>& spans_;
    long offset_;
};

struct AttributeMatch {
    std::size_t nameEnd = 0;   // behind the "="
    std::size_t valueEnd = 0;  // behind the value
    std::size_t runEnd = 0;    // where the name's run of characters stopped
};

// An attribute at `i`, a blank followed by a word character, within [i, end).
bool MatchAttribute(std::string_view line, std::size_t i, std::size_t end, AttributeMatch& m) {
    std::size_t j = i + 1;
    while (j < end && IsNameRunChar(line[j])) ++j;
    m.runEnd = j;
    if (j >= end || line[j] != '=') return false;
    ++j;
    while (j < end && line[j] == ' ') ++j;
    m.nameEnd = j;  // blanks behind the "=" belong to the name
    if (j >= end) return false;
    const char c = line[j];
    if (c == '"' || c == '\'') {
        const std::size_t close = line.find(c, j + 1);
        if (close == std::string_view::npos || close >= end || close == j + 1) return false;
        m.valueEnd = close + 1;
        return true;
    }
    if (!IsDigit(c)) return false;
    while (j < end && IsDigit(line[j])) ++j;
    m.valueEnd = j;
    return true;
}

// Paints [from, to) in `base` with the attributes on top; behind an attribute the tag
// colour runs on. Gives true when an attribute was found.
bool PaintWithAttributes(std::string_view line, std::size_t from, std::size_t to, XmlColour base,
                         Painter& painter) {
    XmlColour current = base;
    std::size_t plainFrom = from;
    std::size_t i = from;
    bool found = false;
    while (i + 1 < to) {
        const std::size_t blank = line.find(' ', i);
        if (blank == std::string_view::npos || blank + 1 >= to) break;
        if (!IsWordChar(line[blank + 1])) {
            i = blank + 1;
            continue;
        }
        AttributeMatch m;
        if (!MatchAttribute(line, blank, to, m)) {
            i = m.runEnd > blank + 1 ? m.runEnd : blank + 1;
            continue;
        }
        painter.paint(plainFrom, blank, current);
        painter.paint(blank, m.nameEnd, XmlColour::AttributeName);
        painter.paint(m.nameEnd, m.valueEnd, XmlColour::AttributeValue);
        current = XmlColour::Tag;
        plainFrom = i = m.valueEnd;
        found = true;
    }
    painter.paint(plainFrom, to, current);
    return found;
}

// The next "<" that opens a tag: "<>" is no tag, while a "<" at the line's end is one
// (the line end counts as its content).
std::size_t NextTagOpen(std::string_view line, std::size_t from) {
    for (std::size_t lt = line.find('<', from); lt != std::string_view::npos; lt = line.find('<', lt + 1)) {
        if (lt + 1 >= line.size() || line[lt + 1] != '>') return lt;
    }
    return std::string_view::npos;
}

void EndTagOrComment(ColourState& state) {
    state.mode = ColourState::Mode::Text;
    state.afterTag = true;
    state.tagColourRuns = false;
}

}  // namespace

Rgb RgbOf(XmlColour colour) {
    const std::uint32_t stored = kXmlColourTable[static_cast<int>(colour)];
    return {static_cast<int>(stored % 256), static_cast<int>((stored / 256) % 256), static_cast<int>(stored / 65536)};
}

int ColourState::toInt() const {
    return static_cast<int>(mode) | (afterTag ? 4 : 0) | (tagColourRuns ? 8 : 0);
}

ColourState ColourState::fromInt(int value) {
    ColourState state;
    if (value < 0 || value > 15 || (value & 3) == 3) return state;
    state.mode = static_cast<Mode>(value & 3);
    state.afterTag = (value & 4) != 0;
    state.tagColourRuns = (value & 8) != 0;
    return state;
}

namespace {

void ColourLineAt(std::string_view line, ColourState& state, std::vector<ColourSpan>& spans, long offset) {
    Painter painter(spans, offset);
    const std::size_t n = line.size();
    std::size_t pos = 0;
    while (pos < n) {
        switch (state.mode) {
            case ColourState::Mode::Comment: {
                const std::size_t close = line.find("-->", pos);
                if (close == std::string_view::npos) {
                    painter.paint(pos, n, XmlColour::Comment);
                    pos = n;
                } else {
                    painter.paint(pos, close + 3, XmlColour::Comment);
                    pos = close + 3;
                    EndTagOrComment(state);
                }
                break;
            }
            case ColourState::Mode::Tag: {
                const std::size_t gt = line.find('>', pos);
                const std::size_t stop = gt == std::string_view::npos ? n : gt + 1;
                PaintWithAttributes(line, pos, stop, XmlColour::Tag, painter);
                pos = stop;
                if (gt != std::string_view::npos) EndTagOrComment(state);
                break;
            }
            case ColourState::Mode::Text: {
                const std::size_t lt = NextTagOpen(line, pos);
                const std::size_t stop = lt == std::string_view::npos ? n : lt;
                // Between tags the text is plain whatever it holds; before the first tag
                // attributes are coloured as anywhere, and the tag colour runs on behind them.
                if (!state.afterTag) {
                    const XmlColour base = state.tagColourRuns ? XmlColour::Tag : XmlColour::Plain;
                    if (PaintWithAttributes(line, pos, stop, base, painter)) state.tagColourRuns = true;
                }
                pos = stop;
                if (lt == std::string_view::npos) break;
                if (line.substr(lt, 4) == "<!--") {
                    const std::size_t close = lt + 5 <= n ? line.find("-->", lt + 5) : std::string_view::npos;
                    if (close == std::string_view::npos) {
                        painter.paint(lt, n, XmlColour::Comment);
                        state.mode = ColourState::Mode::Comment;
                        pos = n;
                    } else {
                        painter.paint(lt, close + 3, XmlColour::Comment);
                        pos = close + 3;
                        EndTagOrComment(state);
                    }
                } else {
                    state.mode = ColourState::Mode::Tag;
                }
                break;
            }
        }
    }
}

}  // namespace

void ColourLine(std::string_view line, ColourState& state, std::vector<ColourSpan>& spans) {
    ColourLineAt(line, state, spans, 0);
}

std::vector<ColourSpan> ColourText(std::string_view text) {
    std::vector<ColourSpan> spans;
    ColourState state;
    std::size_t start = 0;
    while (start <= text.size()) {
        std::size_t end = text.find('\n', start);
        const bool last = end == std::string_view::npos;
        if (last) end = text.size();
        std::size_t lineEnd = end;
        if (lineEnd > start && text[lineEnd - 1] == '\r') --lineEnd;
        ColourLineAt(text.substr(start, lineEnd - start), state, spans, static_cast<long>(start));
        // A comment or tag going on over the line end colours the line end as well.
        if (!last && state.mode != ColourState::Mode::Text) {
            const XmlColour colour =
                state.mode == ColourState::Mode::Comment ? XmlColour::Comment : XmlColour::Tag;
            Painter(spans, 0).paint(lineEnd, end + 1, colour);
        }
        if (last) break;
        start = end + 1;
    }
    return spans;
}

bool ColouringRefused(std::string_view documentName) {
    auto endsWith = [&](std::string_view ending) {
        return documentName.size() >= ending.size() &&
               tools::EqualsIgnoreCase(documentName.substr(documentName.size() - ending.size()), ending);
    };
    return endsWith("geopcdx") || endsWith("tgpcdx");
}

}  // namespace ferrolund::editor
