#include "tools/tags.h"

#include <gtest/gtest.h>

#include "core/tools/testdata_file.h"

namespace ferrolund::tools {
namespace {

constexpr const char* kRouteProperties = "routes/ff1ebaa8-82f5-43ca-9816-859956f4d56c/RouteProperties.xml";
constexpr const char* kScenarioProperties =
    "routes/ff1ebaa8-82f5-43ca-9816-859956f4d56c/Scenarios/b01bda98-a8d8-4615-ba62-1be3f3edb378/"
    "ScenarioProperties.xml";

struct GetCase {
    const char* what;
    std::string text;
    long pos;
    std::string tag;
    TagOptions options;
    std::string expectedValue;
    long expectedPos;
    bool expectError = false;
};

TEST(GetDetail, Table) {
    const GetCase cases[] = {
        {"plain element", "<a><Name>Loco</Name>", 1, "Name", {}, "Loco", 14},
        {"case ignored", "<a><NAME>Loco</name>", 1, "Name", {}, "Loco", 14},
        {"attributes skipped", "<T d:type=\"x\">43200</T>", 1, "T", {}, "43200", 20},
        {"pos 0 counts as 1", "<T>v</T>", 0, "T", {}, "v", 5},
        {"negative pos counts as 1", "<T>v</T>", -10, "T", {}, "v", 5},
        {"search starts at pos", "<T>1</T><T>2</T>", 2, "T", {}, "2", 13},
        {"missing keeps the value", "<A>1</A>", 1, "B", {}, "old", 0},
        {"missing gives exit", "<A>1</A>", 1, "B", kGetDetail2Options, "exit", 0},
        {"prefix of a longer tag", "<NameX>a</NameX><Name>b</Name>", 1, "Name", {}, "a", 9},
        {"exact case", "<name>a</name><Name>b</Name>", 1, "Name", {.caseRule = CaseRule::Exact}, "b", 22},
        {"position left alone", "<T>v</T>", 1, "T", kBlueprintTagOptions, "v", 1},
        {"missing, position left alone", "<A>1</A>", 3, "B", kBlueprintTagOptions, "old", 3},
        {"empty element first", "<M/><M>5</M>", 1, "M", kPhysicsTagOptions, "", 3},
        {"a later empty element hides nothing", "<M>5</M><M/>", 1, "M", kPhysicsTagOptions, "5", 5},
        {"empty element not tested", "<M/><M>5</M>", 1, "M", {}, "<M>5", 9},
        {"no closing tag", "<Name>abc", 1, "Name", {}, "old", 0, true},
        {"no '>' at all", "<Name", 1, "Name", {}, "old", 0, true},
        {"empty value", "<T></T>", 1, "T", {}, "", 4},
    };
    for (const auto& c : cases) {
        long pos = c.pos;
        std::string value = "old";
        const base::Status status = GetDetail(c.text, pos, c.tag, value, c.options);
        EXPECT_EQ(value, c.expectedValue) << c.what;
        EXPECT_EQ(pos, c.expectedPos) << c.what;
        EXPECT_EQ(status.has_value(), c.expectError) << c.what;
        if (status) {
            EXPECT_EQ(status->number, 5) << c.what;
        }
    }
}

TEST(GetDetail2, MissingTagGivesExit) {
    long pos = 1;
    std::string value = "kept";
    GetDetail2("<StartTime>5</StartTime>", pos, "DurationMins", value);
    EXPECT_EQ(value, "exit");
    EXPECT_EQ(pos, 0);
}

TEST(GetDetail, WhileLoopVisitsEveryElement) {
    const std::string text = "<UUID><e>1</e><e>22</e><E>333</E></UUID><e>4</e>";
    std::vector<std::string> seen;
    long pos = 1;
    while (true) {
        std::string value;
        GetDetail(text, pos, "e", value);
        if (pos == 0) break;
        seen.push_back(value);
    }
    EXPECT_EQ(seen, (std::vector<std::string>{"1", "22", "333", "4"}));
}

struct PutCase {
    const char* what;
    std::string text;
    long pos;
    std::string tag;
    std::string value;
    TagOptions options;
    std::string expectedText;
    long expectedPos;
};

TEST(PutDetail, Table) {
    const PutCase cases[] = {
        {"value trimmed", "<a> x </a>", 1, "a", "  new ", {}, "<a>new</a>", 7},
        {"as given", "<a>x</a>", 1, "a", " new ", kBlueprintTagOptions, "<a> new </a>", 1},
        {"missing", "<a>x</a>", 1, "b", "new", {}, "<a>x</a>", 0},
        {"attributes kept", "<H d:type=\"f\">1.5</H>", 1, "h", "2", {}, "<H d:type=\"f\">2</H>", 18},
        {"from pos", "<a>1</a><a>2</a>", 3, "a", "9", {}, "<a>1</a><a>9</a>", 13},
    };
    for (const auto& c : cases) {
        std::string text = c.text;
        long pos = c.pos;
        EXPECT_FALSE(PutDetail(text, pos, c.tag, c.value, c.options)) << c.what;
        EXPECT_EQ(text, c.expectedText) << c.what;
        EXPECT_EQ(pos, c.expectedPos) << c.what;
    }
}

TEST(PutDetail, LoopWhilePosAboveZeroSetsTheTagThroughout) {
    for (const std::string value : {"1", "100000"}) {
        std::string text = "<x><v>10</v><w>3</w><V>2</V><v>777</v></x>";
        long pos = 1;
        int rounds = 0;
        while (pos > 0 && rounds < 10) {
            PutDetail(text, pos, "v", value);
            ++rounds;
        }
        EXPECT_EQ(rounds, 4) << value;
        EXPECT_EQ(text, "<x><v>" + value + "</v><w>3</w><V>" + value + "</V><v>" + value + "</v></x>");
    }
}

TEST(PutDetail, BrokenElementIsAnErrorAndChangesNothing) {
    // An empty element is no value to write, even with the physics grids' options.
    for (const std::string original : {"<a>x", "<a/>"}) {
        std::string text = original;
        long pos = 1;
        const base::Status status = PutDetail(text, pos, "a", "y", kPhysicsTagOptions);
        ASSERT_TRUE(status) << original;
        EXPECT_EQ(status->number, 5);
        EXPECT_EQ(text, original);
        EXPECT_EQ(pos, 0);
    }
}

TEST(PutTime, AddsSecondsToTheWholeOldValue) {
    struct Case {
        std::string old;
        double seconds;
        std::string expected;
    };
    const Case cases[] = {
        {"43200", 3600, "46800.0000"},
        {"43200.6", 0, "43201.0000"},
        {"100.5", 0, "00100.0000"},  // half to even
        {"101.5", 0, "00102.0000"},
        {"0", 59, "00059.0000"},
        {" 7 ", -7, "00000.0000"},
    };
    for (const auto& c : cases) {
        std::string text = "<StartTime d:type=\"sFloat32\">" + c.old + "</StartTime>";
        long pos = 1;
        PutTime(text, pos, "StartTime", c.seconds);
        EXPECT_EQ(text, "<StartTime d:type=\"sFloat32\">" + c.expected + "</StartTime>") << c.old;
        EXPECT_GT(pos, 0);
    }
}

TEST(GetName, LocalisedNameAndItsFallThrough) {
    struct Case {
        const char* what;
        std::string text;
        std::string locTag;
        std::string expected;
        bool found;
    };
    const Case cases[] = {
        {"English", "<English d:type=\"s\">Loco</English><French>L</French>", "English", "Loco", true},
        {"empty English falls to French", "<English></English><French>Train</French>", "English", "Train", true},
        {"German chosen", "<English>E</English><German>G</German>", "German", "G", true},
        {"empty German, English after it", "<German></German><English>E</English>", "German", "E", true},
        {"empty German, English only before it", "<English>E</English><German></German>", "German", "", true},
        {"all empty", "<English></English><French></French>", "English", "", true},
        {"no language at all", "<Name>x</Name>", "English", "", false},
        {"case of the tag ignored", "<ENGLISH>A</english>", "English", "A", true},
    };
    for (const auto& c : cases) {
        long pos = 1;
        std::string value = "old";
        GetName(c.text, pos, value, c.locTag);
        EXPECT_EQ(value, c.expected) << c.what;
        EXPECT_EQ(pos > 0, c.found) << c.what;
    }
}

const std::string kNameBlock =
    "<DisplayName><English d:type=\"s\">Old</English><French d:type=\"s\"></French>"
    "<Italian d:type=\"s\"></Italian><German d:type=\"s\">Alt</German><Spanish d:type=\"s\"></Spanish>"
    "<Dutch d:type=\"s\">Oud</Dutch></DisplayName><Description><English>D</English></Description>";

TEST(PutName, WritesEveryLanguageOfTheBlock) {
    for (const std::string locTag : {"English", "German"}) {
        std::string text = kNameBlock;
        long pos = 1;
        PutName(text, pos, "New", locTag);
        for (const char* language : {"English", "French", "Italian", "German", "Spanish"}) {
            long at = 1;
            std::string value;
            GetDetail(text, at, language, value);
            EXPECT_EQ(value, "New") << language << " with " << locTag;
        }
        EXPECT_NE(text.find("\">Oud</Dutch>"), std::string::npos) << "Dutch is not touched";
        EXPECT_NE(text.find("<English>D</English>"), std::string::npos) << "the next block is not touched";
        EXPECT_EQ(text.substr(static_cast<std::size_t>(pos - 1), 10), "</Spanish>");
    }
}

TEST(PutName, WithoutFrenchOnlyTheChosenLanguageAndEnglish) {
    std::string text = "<English>a</English><German>b</German><Italian>c</Italian>";
    long pos = 1;
    PutName(text, pos, "X", "German");
    EXPECT_EQ(text, "<English>X</English><German>X</German><Italian>c</Italian>");
}

TEST(PutName, MissingLanguageChangesNothing) {
    std::string text = "<Name>x</Name>";
    long pos = 1;
    PutName(text, pos, "X");
    EXPECT_EQ(text, "<Name>x</Name>");
    EXPECT_EQ(pos, 0);
}

TEST(BlueprintGetName, Table) {
    struct Case {
        const char* what;
        std::string text;
        std::string language;
        std::string expected;
    };
    const Case cases[] = {
        {"plain", "<Name><English d:type=\"s\">Class 47</English></Name>", "English", "Class 47"},
        {"repaired for the file", "<English>O'Brien</English>", "English", "O&quot;Brien"},
        {"empty language falls to English", "<English>E</English><German></German>", "German", "E"},
        {"neither", "<Name>x</Name>", "German", "No Name"},
        {"both empty", "<English></English><German></German>", "German", "No Name"},
        {"no closing tag", "<German>abc", "German", "No Name"},
    };
    for (const auto& c : cases) {
        std::string name = "old";
        GetName(c.text, name, c.language);
        EXPECT_EQ(name, c.expected) << c.what;
    }
}

TEST(TagsOnRealFiles, RoutePropertiesNameIdentityAndTemplate) {
    FERROLUND_READ_TESTDATA(xml, kRouteProperties);
    long pos = 1;
    std::string value;
    GetDetail(xml, pos, "English", value);
    EXPECT_EQ(value, "HSL-alue");

    pos = 1;
    GetDetail(xml, pos, "DevString", value);
    EXPECT_EQ(value, "ff1ebaa8-82f5-43ca-9816-859956f4d56c");

    pos = InStr(xml, "<UUID>");
    std::string first;
    std::string second;
    GetDetail(xml, pos, "e", first);
    GetDetail(xml, pos, "e", second);
    EXPECT_EQ(first, "4884860738895526568");
    EXPECT_EQ(second, "7842442978915587736");

    pos = InStr(xml, "<BlueprintID>");
    std::string provider;
    std::string product;
    std::string id;
    GetDetail(xml, pos, "Provider", provider);
    GetDetail(xml, pos, "Product", product);
    GetDetail(xml, pos, "BlueprintID", id);
    EXPECT_EQ(provider, "DTG");
    EXPECT_EQ(product, "Academy");
    EXPECT_EQ(id, "TemplateRoutes\\TSA_RouteTemplate.xml");

    pos = 1;
    GetName(xml, pos, value);
    EXPECT_EQ(value, "HSL-alue");
}

TEST(TagsOnRealFiles, ScenarioPropertiesInReadingOrder) {
    FERROLUND_READ_TESTDATA(xml, kScenarioProperties);
    long pos = InStr(xml, "<DisplayName>");
    std::string value;
    GetName(xml, pos, value);
    EXPECT_EQ(value, "Testiajot");
    pos = InStr(pos, xml, "<Description>");
    GetName(xml, pos, value);
    EXPECT_EQ(value, "Testaa rataa");

    const std::pair<const char*, const char*> inOrder[] = {
        {"<ScenarioClass", "eFreeRoamScenarioClass"}, {"StartTime", "43200"}, {"DurationMins", "0"},
        {"StartDD", "1"}, {"StartMM", "3"}, {"StartYYYY", "2017"}, {"Season", "SEASON_SUMMER"},
        {"Provider", "Kuju"}, {"Product", "RailSimulatorCore"}, {"BlueprintID", "Weather\\RW_Clear.xml"},
    };
    for (const auto& [tag, expected] : inOrder) {
        const std::string name = tag[0] == '<' ? std::string(tag + 1) : std::string(tag);
        GetDetail(xml, pos, name, value);
        EXPECT_EQ(value, expected) << tag;
        EXPECT_GT(pos, 0) << tag;
    }
}

TEST(TagsOnRealFiles, PutNameThenGetNameOnTheScenario) {
    FERROLUND_READ_TESTDATA(xml, kScenarioProperties);
    long pos = InStr(xml, "<DisplayName>");
    PutName(xml, pos, "Koeajo \xE4");
    pos = InStr(pos, xml, "<Description>");
    ASSERT_GT(pos, 0) << "the description is still ahead of the position PutName left";
    PutName(xml, pos, "Kuvaus");

    pos = 1;
    std::string value;
    GetName(xml, pos, value);
    EXPECT_EQ(value, "Koeajo \xE4");
    pos = InStr(xml, "<Description>");
    GetName(xml, pos, value, "Spanish");
    EXPECT_EQ(value, "Kuvaus");
}

}  // namespace
}  // namespace ferrolund::tools
