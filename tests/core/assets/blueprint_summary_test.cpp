// The summary read from a blueprint's records must say exactly what the text reader says
// on the converter's XML of the same file: real files, the sample, and shapes made to
// trip a record walk up.
#include "assets/blueprint_summary.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "core/sample/sample_fixture.h"
#include "core/serz/serz_test_support.h"
#include "serz/codec.h"

namespace ferrolund::assets {
namespace {

namespace fs = std::filesystem;

constexpr const char* kLanguages[] = {"English", "French", "German", "d", "Eng"};

// The binary of a blueprint holding `body` inside its Blueprint element.
std::string BlueprintBinary(const std::string& body, const std::string& blueprintTag = "<Blueprint>") {
    const std::string xml =
        "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n"
        "<cBlueprintLoader xmlns:d=\"http://www.kuju.com/TnT/2003/Delta\" d:version=\"1.0\">\r\n"
        "<Blueprint2 d:type=\"cDeltaString\">x</Blueprint2>\r\n" +
        blueprintTag + "\r\n" + body + "\r\n</Blueprint>\r\n</cBlueprintLoader>\r\n";
    std::string binary;
    const auto status = serz::XmlToBinary(xml, binary);
    EXPECT_FALSE(status) << (status ? status->message : "") << "\n" << xml;
    return binary;
}

std::string Str(const std::string& name, const std::string& value) {
    return "<" + name + " d:type=\"cDeltaString\">" + value + "</" + name + ">\r\n";
}

std::string Names(const std::string& english, const std::string& french = "") {
    return "<Name><Localisation-cUserLocalisedString>\r\n" + Str("English", english) + Str("French", french) +
           "</Localisation-cUserLocalisedString></Name>\r\n";
}

// Compares the two readers on one binary in every language; gives the fast summary.
BlueprintSummary ExpectSameAnswers(const std::string& binary, const std::string& label) {
    std::string xml;
    const bool converts = !serz::BinaryToXml(binary, xml);
    BlueprintSummary english;
    for (const char* language : kLanguages) {
        BlueprintSummary fast;
        std::string failure;
        const bool read = SummariseBlueprint(binary, language, fast, &failure);
        EXPECT_EQ(read, converts) << label << " " << failure;
        if (!read || !converts) continue;
        const BlueprintSummary text = SummariseXml(xml, language);
        EXPECT_EQ(fast.classification.category, text.classification.category) << label << " " << language;
        EXPECT_EQ(fast.classification.inScene, text.classification.inScene) << label << " " << language;
        EXPECT_EQ(fast.hasCategory, text.hasCategory) << label << " " << language;
        EXPECT_EQ(fast.rollingStock, text.rollingStock) << label << " " << language;
        EXPECT_EQ(fast.reskin, text.reskin) << label << " " << language;
        EXPECT_EQ(fast.classWord, text.classWord) << label << " " << language;
        EXPECT_EQ(fast.name, text.name) << label << " " << language;
        if (std::string(language) == "English") english = fast;
    }
    return english;
}

struct Shape {
    const char* label;
    std::string body;
    std::string category, inScene, classWord, name;
    bool rollingStock, reskin, readAsText;
    std::string blueprintTag = "<Blueprint>";
};

TEST(BlueprintSummary, MadeShapesAgreeWithTheTextReader) {
    const std::vector<Shape> shapes = {
        {"engine", "<cEngineBlueprint d:id=\"4711\">" + Names("Class 58") + "<RailVehicleComponent/>" +
                       Str("EngineType", "eDiesel") + "</cEngineBlueprint>",
         "eDiesel", "Yes", "EngineBlueprint d:id=\"4711\"", "Class 58", true, false, false},
        {"scenery category", "<cSceneryBlueprint>" + Names("Shed") + Str("Category", "eScenery") +
                                 Str("ValidInScenarios", "eTrue") + "</cSceneryBlueprint>",
         "Scenery", "Yes", "SceneryBlueprint", "Shed", false, false, false},
        {"category losing any e", "<cX>" + Names("Lift") + Str("CATEGORY", "elevators") +
                                      Str("ValidInScenarios", "eFalse") + "</cX>",
         "levators", "No", "X", "Lift", false, false, false},
        {"category as container", "<cX>" + Names("Box") + "<Category>" + Str("Inner", "eTrack") + "</Category></cX>", "?",
         "No", "X", "Box", false, false, true},
        {"empty category element", "<cX>" + Names("Empty") + "<Category/></cX>", "?", "No", "X", "Empty", false,
         false, true},
        {"wagon with passenger text", "<cWagonBlueprint>" + Names("Coach") + "<RailVehicleComponent/>" +
                                          Str("Note", "first PASSENGERs") + "</cWagonBlueprint>",
         "Passenger", "Yes", "WagonBlueprint", "Coach", true, false, false},
        {"wagon with passenger name", "<cWagonBlueprint>" + Names("Coach") + "<PassengerSeat/></cWagonBlueprint>",
         "Passenger", "Yes", "WagonBlueprint", "Coach", false, false, false},
        {"wagon split by entity", "<cWagonBlueprint>" + Names("Box") + Str("Note", "Passen&amp;ger") +
                                      "</cWagonBlueprint>",
         "Freight Wagon", "Yes", "WagonBlueprint", "Box", false, false, false},
        {"tender", "<cTenderBlueprint>" + Names("Tender") + Str("ValidInScenarios", "eFalse") + "</cTenderBlueprint>",
         "Tender", "Yes", "TenderBlueprint", "Tender", false, false, false},
        {"track", "<cTrackSectionBlueprint>" + Names("Rail") + "</cTrackSectionBlueprint>", "Track Section", "No",
         "TrackSectionBlueprint", "Rail", false, false, false},
        {"loft shown as road", "<cLoftSectionBlueprint>" + Names("Wall") + "</cLoftSectionBlueprint>", "Road Section",
         "No", "LoftSectionBlueprint", "Wall", false, false, false},
        {"reskin", "<cReskinBlueprint>" + Names("Blue") + "</cReskinBlueprint>", "", "No", "ReskinBlueprint", "Blue",
         true, true, false},
        {"reskin with an id is no reskin tag", "<cReskinBlueprint d:id=\"7\">" + Names("Blue") + "</cReskinBlueprint>",
         "", "No", "ReskinBlueprint d:id=\"7\"", "Blue", false, false, false},
        {"self-closed reskin tag", "<cX>" + Names("Plain") + "<cReskinBlueprint/></cX>", "", "No", "X", "Plain",
         false, false, false},
        {"self-closed class tag", "<cEmpty/>" + Names("Odd"), "", "No", "Empty/", "Odd", false, false, false},
        {"class tag as a value", Str("cValue", "1") + Names("Odd"), "", "No", "Value d:type=\"cDeltaString\"", "Odd",
         false, false, true},
        {"blueprint tag with an id", "<cX>" + Names("Id") + "</cX>", "", "No", "", "Id", false, false, false,
         "<Blueprint d:id=\"5\">"},
        {"no name at all", "<cX>" + Str("Category", "eScenery") + "</cX>", "Scenery", "No", "X", "No Name", false,
         false, false},
        {"empty english", "<cX>" + Names("") + "</cX>", "", "No", "X", "No Name", false, false, false},
        {"entity in name", "<cX>" + Names("Tom&apos;s &amp; Co") + "</cX>", "", "No", "X", "", false, false, false},
        {"accented name", "<cX>" + Names("Gro\xc3\x9f" "e Br\xc3\xbc" "cke") + "</cX>", "", "No", "X", "", false,
         false, false},
        {"language as container", "<cX><English><Inner/></English></cX>", "", "No", "X", "", false, false, true},
        {"double colon names", "<cX>" + Names("Pair") + "<Tender-cTenderBlueprint/></cX>", "", "No", "X", "Pair",
         false, false, false},
    };
    for (const Shape& shape : shapes) {
        const std::string binary = BlueprintBinary(shape.body, shape.blueprintTag);
        const BlueprintSummary got = ExpectSameAnswers(binary, shape.label);
        if (shape.category != "?") {  // "?": whatever the text reader makes of it
            EXPECT_EQ(got.classification.category, shape.category) << shape.label;
        }
        EXPECT_EQ(got.classification.inScene, shape.inScene) << shape.label;
        EXPECT_EQ(got.classWord, shape.classWord) << shape.label;
        if (!shape.name.empty()) {
            EXPECT_EQ(got.name, shape.name) << shape.label;
        }
        EXPECT_EQ(got.rollingStock, shape.rollingStock) << shape.label;
        EXPECT_EQ(got.reskin, shape.reskin) << shape.label;
        EXPECT_EQ(got.readAsText, shape.readAsText) << shape.label;
    }
}

TEST(BlueprintSummary, BrokenBytesAreUnreadableLikeTheConverterSaysSo) {
    const std::string good = BlueprintBinary("<cX>" + Names("Fine") + "</cX>");
    const std::vector<std::pair<const char*, std::string>> cases = {
        {"empty", ""},
        {"foreign", "PK\x03\x04 this is a zip"},
        {"magic only", good.substr(0, 8)},
        {"cut in half", good.substr(0, good.size() / 2)},
        {"last byte missing", good.substr(0, good.size() - 1)},
    };
    for (const auto& [label, bytes] : cases) {
        BlueprintSummary summary;
        std::string failure;
        EXPECT_FALSE(SummariseBlueprint(bytes, "English", summary, &failure)) << label;
        EXPECT_FALSE(failure.empty()) << label;
        ExpectSameAnswers(bytes, label);
    }
}

// Compares every .bin below the folder; counts them, and those the record walk had to
// leave to the text reader.
void CompareFolder(const fs::path& folder, int& compared, int& readAsText) {
    std::error_code ec;
    for (fs::recursive_directory_iterator it(folder, ec), end; it != end; it.increment(ec)) {
        if (!it->is_regular_file()) continue;
        std::string extension = it->path().extension().string();
        for (char& c : extension) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
        if (extension != ".bin") continue;
        if (ExpectSameAnswers(serz::testing::ReadBytes(it->path()), it->path().string()).readAsText) ++readAsText;
        ++compared;
    }
}

TEST(BlueprintSummary, RealGameFilesAgreeWithTheTextReader) {
    if (!fs::exists(serz::testing::TestData())) GTEST_SKIP() << "the real game files are not on this machine";
    int compared = 0, readAsText = 0;
    CompareFolder(serz::testing::TestData(), compared, readAsText);
    EXPECT_GT(compared, 10);
    // The game's own blueprints are answered from their records.
    EXPECT_EQ(readAsText, 0) << compared;
}

TEST(BlueprintSummary, SampleBlueprintsAgreeWithTheTextReader) {
    int compared = 0, readAsText = 0;
    CompareFolder(sample::SampleRoot(), compared, readAsText);
    EXPECT_GT(compared, 20);
    EXPECT_EQ(readAsText, 0) << compared;
}

}  // namespace
}  // namespace ferrolund::assets
