#pragma once
// The places in a rail vehicle's blueprint text that decide what it sounds like: the
// bogie's sound, the link of a sound child entry, the settings of a cab control. Text
// routines only, found by substring search without regard to case, as the transforms
// of the asset list use them.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ferrolund::assets {

// Where the simulator's own bogie sounds lie; a bogie value is this and one word.
inline constexpr std::string_view kBogieSoundBase = "Kuju\\RailSimulator\\Audio\\RailNetwork\\Bogies\\";

// The value of the first BogieAudioControlName (file form); nothing when the blueprint has
// no such element.
std::optional<std::string> BogieAudio(std::string_view text);
// Writes the value into the first BogieAudioControlName; false when there is none.
bool SetBogieAudio(std::string& text, std::string_view value);

// Rewrites the BlueprintID of a sound link: the "<BlueprintID d:type" element whose value
// holds the 1-based position `at`, or else the first one behind `at` that lies in the same
// child entry. False, the text unchanged, when there is none.
bool SetLinkAt(std::string& text, long at, std::string_view blueprintId);

// Writes `value` into the element `tag` of the control whose name is `controlName`: the
// first "<controlName></ControlName>" and the tag behind it, before that control's block
// ends. False, the text unchanged, when the control or its element is missing.
bool SetControlDetail(std::string& text, std::string_view controlName, std::string_view tag, std::string_view value);

// Puts `piece` behind the 1-based position `after` (the character at `after` stays in
// front of it).
void InsertBehind(std::string& text, long after, std::string_view piece);

// The matrix values ("<e" elements, not "<Element>") from the 1-based position `from` on:
// writes `values` into as many of them, in order. False when fewer than that follow.
bool SetMatrixValues(std::string& text, long from, const std::vector<std::string>& values);

}  // namespace ferrolund::assets
