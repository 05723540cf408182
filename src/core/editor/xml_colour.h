#pragma once
// The colours of "Highlight XML" (colorhtml): which span of the text gets which colour.
// The rules are painted in this order, each over the one before:
//   1. a whole tag, "<" to the next ">", in the tag colour;
//   2. an attribute, a blank and a name ending in "=" followed by a quoted value or a
//      number, gets the name colour for the blank, the name and the "=", the value colour
//      for the value, and the tag colour again behind it;
//   3. text between a ">" and the next "<" that holds an "=" is plain again, so text
//      such as "b=c" between two tags stays black;
//   4. a comment, "<!--" to the first "-->" behind at least one character, is grey as a
//      whole.
// The text is read a line at a time, with a state carried from one line to the next, so
// that a pane can colour only the lines it shows. A tag or a comment may run over several
// lines; an attribute stands on one. Text between tags counts as followed by a "<" when
// its line ends, and a comment that is never closed is grey to the end of the text.
//
// Text is Windows-1252 bytes; only the ASCII characters take part in the rules, so a
// caller may pass any one byte per character.

#include <cstdint>
#include <string_view>
#include <vector>

namespace ferrolund::editor {

// The colour indices of the table; Plain is what a span without colour shows.
enum class XmlColour : std::uint8_t { Plain = 0, Tag = 1, AttributeName = 2, AttributeValue = 3, Comment = 4 };

// The five stored values of the colour table, blue-green-red, by index.
inline constexpr std::uint32_t kXmlColourTable[5] = {0x000000, 0xC00000, 0xC000C0, 0x00C000, 0x808080};

struct Rgb {
    int red = 0;
    int green = 0;
    int blue = 0;
};
Rgb RgbOf(XmlColour colour);

struct ColourSpan {
    long start = 0;  // 0-based, in characters of the line (or text)
    long length = 0;
    XmlColour colour = XmlColour::Plain;

    bool operator==(const ColourSpan&) const = default;
};

// What one line leaves for the next.
struct ColourState {
    enum class Mode : std::uint8_t { Text, Tag, Comment };
    Mode mode = Mode::Text;
    // A tag or comment has ended since the start of the text: text from here to the next
    // "<" is text between tags.
    bool afterTag = false;
    // Text before the first tag that follows an attribute shows the tag colour.
    bool tagColourRuns = false;

    // The state as one small number, for a widget that keeps one per line; -1 and any
    // number no state gives read as the state of the text's start.
    int toInt() const;
    static ColourState fromInt(int value);
    bool operator==(const ColourState&) const = default;
};

// Appends the coloured spans of one line (without its line end), left to right, adjacent
// spans of one colour joined; plain stretches give no span.
void ColourLine(std::string_view line, ColourState& state, std::vector<ColourSpan>& spans);

// The spans of a whole text, lines ended by "\n" or "\r\n"; positions count in the text.
std::vector<ColourSpan> ColourText(std::string_view text);

// Colouring is refused for geometry and texture files: a name ending in "geopcdx" or
// "tgpcdx", compared without case.
bool ColouringRefused(std::string_view documentName);

}  // namespace ferrolund::editor
