#pragma once
// Names and values pass between the game's XML and the screen through these four
// routines. XML text holds what the converter wrote in UTF-8 as byte pairs, a broken
// three-byte form "EF BF xx", and entities; the screen shows single Windows-1252
// characters. FixEntities and FixEntitiesCopy go from file form to screen form,
// ReplaceApos and ReplaceApos2 back. Their tables are not inverses of each other and
// must stay as they are, entries that never fire and entries that look wrong included.
//
// Positions inside these routines were 16-bit: a hit beyond 32767 is an overflow. It is
// given back as an error value (once per call) and the routine goes on with its next
// pass, leaving that hit and any later one of the same pass as they are.

#include <string>
#include <string_view>

#include "base/run_error.h"
#include "base/ui.h"

namespace ferrolund::tools {

// In place; lets pending events through at its end when it had something to do.
base::Status FixEntities(std::string& text, base::Ui* ui = nullptr);
std::string FixEntitiesCopy(std::string_view text);
std::string FixEntitiesCopy(std::string_view text, base::Status& overflow);

base::Status ReplaceApos(std::string& text);
base::Status ReplaceApos2(std::string& text);

}  // namespace ferrolund::tools
