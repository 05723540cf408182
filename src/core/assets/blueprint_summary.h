#pragma once
// What the asset list needs to know of one blueprint (its category, whether it is rolling
// stock or a reskin, its class word and display name), read straight from the binary file.
// The answers are those the text reader gives on the XML the converter writes for the
// file; a file whose shape the record walk cannot answer for exactly is converted in
// memory and read as text instead.

#include <string>
#include <string_view>

#include "assets/blueprint.h"

namespace ferrolund::assets {

struct BlueprintSummary {
    Classification classification;
    bool hasCategory = false;  // the category came from a Category element
    bool rollingStock = false;
    bool reskin = false;
    std::string classWord;  // without its leading "c"
    std::string name;       // the display name, "No Name" when there is none
    bool readAsText = false;  // the answer came from the converted text

    bool operator==(const BlueprintSummary& other) const {
        return classification.category == other.classification.category && hasCategory == other.hasCategory &&
               classification.inScene == other.classification.inScene && rollingStock == other.rollingStock &&
               reskin == other.reskin && classWord == other.classWord && name == other.name;
    }
};

// The text reader's answers on a blueprint's XML, the name in `language`.
BlueprintSummary SummariseXml(std::string_view xml, std::string_view language);

// The same answers from the binary. False when the converter could not turn the bytes
// into text (a truncated or foreign file); `failure` then says why.
bool SummariseBlueprint(std::string_view binary, std::string_view language, BlueprintSummary& summary,
                        std::string* failure = nullptr);

}  // namespace ferrolund::assets
