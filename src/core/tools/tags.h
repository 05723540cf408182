#pragma once
// The tag routines: a value is what stands between the '>' of an opening tag and the
// "</" of its closing tag, found by substring search, never by parsing. Positions are
// 1-based and in-and-out: a routine leaves in `pos` where the next search should start,
// and 0 when the tag was not found, so "while pos > 0" walks a whole text. A position
// below 1 counts as 1.
//
// The screens use the routines in slightly different ways; the differences are the
// options below, and there is no second implementation.

#include <string>
#include <string_view>

#include "base/run_error.h"
#include "tools/text_search.h"

namespace ferrolund::tools {

enum class MissingTag {
    KeepValue,  // the value keeps what it had
    Exit,       // the value becomes "exit" (GetDetail2)
};

struct TagOptions {
    // Leave the closing tag's position in `pos` (or 0 when the tag is missing); false
    // leaves `pos` as it was, as the blueprint reader uses it.
    bool movePosition = true;
    CaseRule caseRule = CaseRule::Ignore;
    MissingTag missing = MissingTag::KeepValue;
    // An occurrence written as the empty element "<tag/>" reads as an empty value and
    // leaves `pos` on its "/>". Used by the physics grids; PutDetail ignores it.
    bool emptyElementTest = false;
    // PutDetail writes the value with blanks trimmed from both ends.
    bool trimValue = true;
};

inline constexpr TagOptions kGetDetail2Options{.missing = MissingTag::Exit};
// The blueprint reader's use: the start position is never moved, the value is written
// as given.
inline constexpr TagOptions kBlueprintTagOptions{.movePosition = false, .trimValue = false};
// The physics grids' use: "<tag/>" reads as an empty row.
inline constexpr TagOptions kPhysicsTagOptions{.emptyElementTest = true};

// Finds "<" + tag from pos, the first '>' behind it, and "</" + tag behind that '>'.
// Found: `value` is the text between, pos the closing tag's position. Missing: pos 0,
// the value as the options say. An opening tag without its '>' or closing tag is an
// error value (5, invalid procedure call), with pos 0 and the value kept.
base::Status GetDetail(std::string_view text, long& pos, std::string_view tag, std::string& value,
                      const TagOptions& options = {});
// The same with a missing tag giving "exit".
base::Status GetDetail2(std::string_view text, long& pos, std::string_view tag, std::string& value);

// Rebuilds `text` as everything up to and including that '>', the value, and
// everything from "</" + tag on. pos becomes the closing tag's position as it was in
// the old text. Missing: pos 0, the text unchanged.
base::Status PutDetail(std::string& text, long& pos, std::string_view tag, std::string_view value,
                      const TagOptions& options = {});

// Adds `seconds` to the element's old value, taken as a whole number (rounded half to
// even), and writes the sum with the pattern "00000.0000", as PutDetail does.
base::Status PutTime(std::string& text, long& pos, std::string_view tag, double seconds,
                    const TagOptions& options = {});

// The localised name from pos: "<" + locTag, then "</" + locTag, then back from there
// to '>'; the value is what lies between. An empty value falls through to English,
// French, Italian, German and Spanish, each searched on from where the one before
// left off. pos ends on the closing tag of the last language read, or 0 when none of
// them was found; the value is empty then.
void GetName(std::string_view text, long& pos, std::string& value, std::string_view locTag = "English");

// Writes `value` into the localised name that follows pos: for locTag, for English and,
// when a French element stands after the English one, for French, Italian, German and
// Spanish. Each language is looked for from pos, so all writes land in the same block
// and a translated text ends up with the same name in every language. pos ends on the
// last closing tag written, or 0 when locTag was not found (nothing is written then).
void PutName(std::string& text, long& pos, std::string_view value, std::string_view locTag = "English");

// The blueprint reader's display name: the content of the first "<" + language element
// of the text, from its '>' to the next "</", passed through ReplaceApos; when that is
// empty the same with English; when it is still empty, or the element has no closing
// tag, "No Name".
void GetName(std::string_view text, std::string& name, std::string_view language);

}  // namespace ferrolund::tools
