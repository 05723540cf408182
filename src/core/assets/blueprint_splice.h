#pragma once
// The places where the rolling-stock transforms cut a blueprint's XML text and join it
// again: the list of child entities, one child's block, the display name. Positions are
// 1-based with 0 for not found, and every search ignores case, as in the blueprint reader.

#include <string>
#include <string_view>
#include <vector>

namespace ferrolund::assets {

// The closing tag of a child block; the block ends with all 35 of its characters.
inline constexpr std::string_view kChildOpen = "<cEntityContainerBlueprint-sChild";
inline constexpr std::string_view kChildClose = "</cEntityContainerBlueprint-sChild>";

// Puts `insert` at the head of the child list. With "<Children>" at p the text is cut
// behind its first p + 12 characters (the tag, its CR LF and the indentation character
// of the next line) and joined again from character p + 12, so that indentation
// character stands on both sides of the insert. With only "<Children/>" at p the empty
// element becomes "<Children>" + insert + "</Children>". False, the text unchanged, when
// the blueprint has neither.
bool SpliceAtChildren(std::string& text, std::string_view insert);

// A child block: from its "<cEntityContainerBlueprint-sChild" to the end of its closing tag.
struct ChildBlock {
    long start = 0;   // 1-based; 0 when not found
    long length = 0;  // closing tag included
    explicit operator bool() const { return start > 0; }
};

// The block around the first `needle` at or after `from`: back from the hit to the block's
// opening tag, forward from there to its closing tag. Nothing when the needle, the opening
// tag before it or the closing tag after it is missing.
ChildBlock FindChildBlock(std::string_view text, long from, std::string_view needle);

// The block of the child entry named `childName` (its ChildName value as the file holds
// it), searched from 5 characters into the first "<Children>".
ChildBlock FindNamedChild(std::string_view text, std::string_view childName);

// The ChildName values under the first "<ContainerComponent>", in order, as the file
// holds them.
std::vector<std::string> ChildNames(std::string_view text);

// Which of the localised names a name change writes.
enum class NameLanguages {
    Five,   // English, French, Italian, German, Spanish
    Eight,  // those and, where the blueprint has them, Dutch, Polish, Russian
};

// Writes `value` (file form) into Name and the localised names, each searched from the
// first "<Name". A language missing from the blueprint, or standing as an empty element,
// is left out. False when the blueprint has no "<Name".
bool SetBlueprintName(std::string& text, std::string_view value, NameLanguages languages);

// The English display name as the file holds it (file form), or empty.
std::string BlueprintEnglishName(std::string_view text);

// Text typed on the screen (UTF-8, or Windows-1252 where it is not well-formed UTF-8) in
// the form the converter's XML holds it:
// UTF-8 with '&', '<', '>', '"' and '\'' written as entities.
std::string XmlValueOfTyped(std::string_view typed);

}  // namespace ferrolund::assets
