#pragma once
// What the tests of the loco fittings (lamps, occlusions, wheelslip, air brakes) share:
// the program's own templates put in a test's program folder, and values read back from
// a blueprint's text.

#include <string>

#include "serz/codec.h"
#include "stock_fixture.h"
#include "tools/files.h"
#include "tools/tags.h"
#include "tools/text_search.h"

namespace ferrolund::assets::testing {

// A template as the program ships it.
inline std::string ShippedTemplate(const std::string& name) {
    return tools::ReadTextFile(std::string(FERROLUND_SOURCE_DIR) + "/data/Templates/" + name);
}

inline void InstallTemplate(Game& game, const std::string& name) {
    game.folder.write("app/Templates/" + name, ShippedTemplate(name));
}

// The value of the first element `tag` from `from` on.
inline std::string TagValueAt(const std::string& xml, const std::string& tag, long from = 1) {
    std::string value;
    long pos = from;
    tools::GetDetail(xml, pos, tag, value);
    return value;
}

// The BlueprintID of the first blueprint reference from `from` on.
inline std::string ReferenceId(const std::string& xml, long from) {
    return TagValueAt(xml, "BlueprintID", tools::InStr(from, xml, "<BlueprintID d:"));
}

inline bool Compiles(const std::string& xml) {
    std::string binary;
    return !serz::XmlToBinary(xml, binary);
}

}  // namespace ferrolund::assets::testing
