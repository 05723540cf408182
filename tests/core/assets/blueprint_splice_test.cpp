#include "assets/blueprint_splice.h"

#include <gtest/gtest.h>

#include <pugixml.hpp>

#include "stock_fixture.h"

namespace ferrolund::assets {
namespace {

using testing::Child;
using testing::CoachXml;
using testing::Upright;

bool WellFormed(const std::string& xml) {
    pugi::xml_document doc;
    return static_cast<bool>(doc.load_string(xml.c_str()));
}

TEST(SpliceAtChildren, CutsAndJoinsAsTheListIsFound) {
    struct Case {
        std::string text;
        std::string expected;
        bool spliced;
    };
    const Case cases[] = {
        // The indentation character behind the tag's CR LF stands on both sides.
        {"<a>\r\n\t<Children>\r\n\t\t<x/>\r\n\t</Children>\r\n</a>",
         "<a>\r\n\t<Children>\r\n\tINS\t\t<x/>\r\n\t</Children>\r\n</a>", true},
        {"<a>\r\n\t<Children/>\r\n</a>", "<a>\r\n\t<Children>INS</Children>\r\n</a>", true},
        {"<a>\r\n\t<children/>\r\n</a>", "<a>\r\n\t<Children>INS</Children>\r\n</a>", true},
        // The full list wins over an empty one further on.
        {"<Children/><Children>\r\n\tz", "<Children/><Children>\r\n\tINS\tz", true},
        {"<a>\r\n\t<Child/>\r\n</a>", "<a>\r\n\t<Child/>\r\n</a>", false},
        {"<Children>", "<Children>INS", true},  // a text ending at the tag does not overrun
    };
    for (const Case& c : cases) {
        std::string text = c.text;
        EXPECT_EQ(SpliceAtChildren(text, "INS"), c.spliced) << c.text;
        EXPECT_EQ(text, c.expected) << c.text;
    }
}

TEST(FindNamedChild, FindsTheWholeBlockOfTheNamedChild) {
    const std::string xml = CoachXml("Smoke", {{"Smoke", Upright("0", "4", "1")}, {"Driver", Upright("1", "2", "3")}});
    struct Case {
        std::string name;
        bool found;
        std::string inside;
    };
    const Case cases[] = {
        {"Smoke", true, ">Smoke<"},
        {"driver", true, ">Driver<"},  // case does not matter
        {"Guard", false, ""},
        {"", false, ""},
        {"Driv", false, ""},  // a part of a name is no name
    };
    for (const Case& c : cases) {
        const ChildBlock block = FindNamedChild(xml, c.name);
        EXPECT_EQ(static_cast<bool>(block), c.found) << c.name;
        if (!block) continue;
        const std::string text = xml.substr(static_cast<std::size_t>(block.start - 1), static_cast<std::size_t>(block.length));
        EXPECT_EQ(text.rfind("<cEntityContainerBlueprint-sChild", 0), 0u) << c.name;
        EXPECT_TRUE(text.ends_with("</cEntityContainerBlueprint-sChild>")) << c.name;
        EXPECT_NE(text.find(c.inside), std::string::npos) << c.name;
        EXPECT_EQ(text.find("<cEntityContainerBlueprint-sChild", 1), std::string::npos) << "one block only: " << c.name;
    }
    // The display name "Smoke" stands before the list and is not taken for the child.
    EXPECT_GT(FindNamedChild(xml, "Smoke").start, static_cast<long>(xml.find("<Children>")));
}

TEST(FindChildBlock, BrokenBlocksAreNotFound) {
    EXPECT_FALSE(FindChildBlock("<x>>A<</x>", 1, ">A<"));  // no block around it
    EXPECT_FALSE(FindChildBlock("<cEntityContainerBlueprint-sChild>>A<", 1, ">A<"));  // no end
    // The closing tag of an earlier block does not end a later one.
    EXPECT_FALSE(FindChildBlock("<cEntityContainerBlueprint-sChild></cEntityContainerBlueprint-sChild>>A<", 1, ">A<"));
}

TEST(ChildNames, ReadsTheListOfTheContainer) {
    EXPECT_EQ(ChildNames(CoachXml("C", {{"Smoke", Upright("0", "0", "0")}, {"Driver", Upright("0", "0", "0")}})),
              (std::vector<std::string>{"Smoke", "Driver"}));
    EXPECT_TRUE(ChildNames(CoachXml("C", {})).empty());
    EXPECT_TRUE(ChildNames("<ChildName>Outside</ChildName>").empty());
}

TEST(SetBlueprintName, WritesNameAndTheLanguagesAsked) {
    const std::string xml = CoachXml("Old", {});
    struct Case {
        NameLanguages languages;
        std::vector<std::string> set;
        std::vector<std::string> kept;
    };
    const Case cases[] = {
        {NameLanguages::Five, {"Name", "English", "French", "Italian", "German", "Spanish"}, {"Dutch", "Polish", "Russian"}},
        {NameLanguages::Eight, {"Name", "English", "French", "Italian", "German", "Spanish", "Dutch", "Polish", "Russian"}, {}},
    };
    for (const Case& c : cases) {
        std::string text = xml;
        ASSERT_TRUE(SetBlueprintName(text, "Neu &amp; Gr\xC3\xBCn", c.languages));
        for (const std::string& tag : c.set)
            EXPECT_NE(text.find(">Neu &amp; Gr\xC3\xBCn</" + tag + ">"), std::string::npos) << tag;
        for (const std::string& tag : c.kept) EXPECT_NE(text.find("\"></" + tag + ">"), std::string::npos) << tag;
        // The description's languages are not the name's.
        const std::size_t description = text.find("<Description>");
        EXPECT_EQ(text.find("Neu", description), std::string::npos);
        EXPECT_TRUE(WellFormed(text));
    }
}

TEST(SetBlueprintName, LanguagesMissingOrEmptyAreLeftOut) {
    std::string text = "<Name d:type=\"cDeltaString\">a</Name><English d:type=\"cDeltaString\">a</English><French/>"
                       "<Other/><Description><French d:type=\"cDeltaString\">keep</French></Description>";
    ASSERT_TRUE(SetBlueprintName(text, "b", NameLanguages::Eight));
    EXPECT_EQ(text, "<Name d:type=\"cDeltaString\">b</Name><English d:type=\"cDeltaString\">b</English><French/>"
                    "<Other/><Description><French d:type=\"cDeltaString\">keep</French></Description>");
    std::string none = "<Blueprint/>";
    EXPECT_FALSE(SetBlueprintName(none, "b", NameLanguages::Five));
    EXPECT_EQ(none, "<Blueprint/>");
}

TEST(XmlValueOfTyped, TypedTextBecomesTheFileForm) {
    const std::pair<std::string, std::string> cases[] = {
        {"Class 58", "Class 58"},
        {"Caf\xE9 & <Bar> \"x\" 'y'", "Caf\xC3\xA9 &amp; &lt;Bar&gt; &quot;x&quot; &apos;y&apos;"},
        {"\xC4\xE8\x9A\xDF", "\xC3\x84\xC3\xA8\xC5\xA1\xC3\x9F"},
        // What the screens hand over is UTF-8 already: written once, not twice.
        {"Stra\xC3\x9F" "e & \xC4\x8C", "Stra\xC3\x9F" "e &amp; \xC4\x8C"},
    };
    for (const auto& [typed, file] : cases) EXPECT_EQ(XmlValueOfTyped(typed), file) << typed;
}

}  // namespace
}  // namespace ferrolund::assets
