#pragma once
// Tiles written as the converter writes them, for the tile edit tests.

#include <string>
#include <vector>

#include "assets/blueprint.h"

namespace ferrolund::routes::testing_tiles {

using assets::BlueprintRef;

// A scenery entity as the converter writes it, with its reference.
inline std::string Entity(int id, const BlueprintRef& ref) {
    return "\t\t<cDynamicEntity d:id=\"" + std::to_string(id) +
           "\">\r\n\t\t\t<BlueprintID>\r\n\t\t\t\t<iBlueprintLibrary-cAbsoluteBlueprintID>\r\n"
           "\t\t\t\t\t<BlueprintSetID>\r\n\t\t\t\t\t\t<iBlueprintLibrary-cBlueprintSetID>\r\n"
           "\t\t\t\t\t\t\t<Provider d:type=\"cDeltaString\">" +
           ref.provider + "</Provider>\r\n\t\t\t\t\t\t\t<Product d:type=\"cDeltaString\">" + ref.product +
           "</Product>\r\n\t\t\t\t\t\t</iBlueprintLibrary-cBlueprintSetID>\r\n\t\t\t\t\t</BlueprintSetID>\r\n"
           "\t\t\t\t\t<BlueprintID d:type=\"cDeltaString\">" +
           ref.blueprintId +
           "</BlueprintID>\r\n\t\t\t\t</iBlueprintLibrary-cAbsoluteBlueprintID>\r\n\t\t\t</BlueprintID>\r\n"
           "\t\t</cDynamicEntity>\r\n";
}

inline std::string Tile(const std::vector<BlueprintRef>& refs) {
    std::string xml = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n<cRecordSet "
                      "xmlns:d=\"http://www.kuju.com/TnT/2003/Delta\" d:version=\"1.0\" d:id=\"1\">\r\n\t<Record>\r\n";
    int id = 100;
    for (const auto& ref : refs) xml += Entity(id++, ref);
    return xml + "\t</Record>\r\n</cRecordSet>\r\n";
}

inline const BlueprintRef kTree{"Kuju", "RailSimulator", "Scenery\\Trees\\Oak.xml"};
inline const BlueprintRef kBigTree{"Kuju", "RailSimulator", "Scenery\\Trees\\BigOak.xml"};
inline const BlueprintRef kOtherOak{"Hartwell", "SteamHeritage", "Scenery\\Trees\\Oak.xml"};
inline const BlueprintRef kBirch{"Hartwell", "SteamHeritage", "Scenery\\Trees\\Birch.xml"};

}  // namespace ferrolund::routes::testing_tiles
