#include "editor/xml_tree.h"

#include <gtest/gtest.h>

#include <string>

#include "core/tools/testdata_file.h"
#include "support/scripted_ui.h"
#include "support/temp_folder.h"

namespace ferrolund::editor {
namespace {

struct Tree : ::testing::Test {
    testing::ScriptedUi ui;
    app::AppContext ctx;
    XmlTreeEditor editor;
    Tree() { ctx.ui = &ui; }
};

constexpr const char* kSmall =
    "<?xml version=\"1.0\"?>\n<a x=\"1\" y=\"&lt;2&gt;\"><b>one<c/>two<![CDATA[ & three]]></b><!-- note --><B k=\"v\"/></a>";

TEST_F(Tree, ElementsInDocumentOrderWithKeysAttributesAndJoinedText) {
    ASSERT_FALSE(editor.tree.loadText(kSmall));
    const XmlNodeTree& t = editor.tree;
    ASSERT_EQ(t.count(), 4u);
    EXPECT_EQ(t.childCount(kNoNode), 1u);
    EXPECT_EQ(t.child(kNoNode, 0), 0u);
    EXPECT_EQ(t.name(0), "a");
    EXPECT_EQ(t.childCount(0), 2u);
    EXPECT_EQ(t.child(0, 0), 1u);
    EXPECT_EQ(t.child(0, 1), 3u);
    EXPECT_EQ(t.child(0, 2), kNoNode);
    EXPECT_EQ(t.child(1, 0), 2u);
    EXPECT_EQ(t.parent(2), 1u);
    EXPECT_EQ(t.parent(0), kNoNode);
    EXPECT_EQ(t.row(3), 1u);
    EXPECT_EQ(t.key(0), "1nod");
    EXPECT_EQ(t.key(3), "4nod");
    EXPECT_EQ(t.characters(1), "onetwo & three");  // the pieces joined
    ASSERT_EQ(t.attributes(0).size(), 2u);
    EXPECT_EQ(t.attributes(0)[1].name, "y");
    EXPECT_EQ(t.attributes(0)[1].value, "<2>");
    EXPECT_TRUE(t.attributes(2).empty());
    EXPECT_EQ(t.name(99), "");
}

TEST_F(Tree, KeysAreFoundWithoutCaseAndNothingElseIs) {
    ASSERT_FALSE(editor.tree.loadText(kSmall));
    struct Case {
        const char* key;
        NodeId node;
    };
    for (const Case& c : {Case{"1nod", 0}, Case{"4NOD", 3}, Case{"2Nod", 1}, Case{"0nod", kNoNode},
                          Case{"5nod", kNoNode}, Case{"nod1", kNoNode}, Case{"01nod", kNoNode},
                          Case{"nod", kNoNode}, Case{"", kNoNode}, Case{"99999999999999999999nod", kNoNode}}) {
        EXPECT_EQ(editor.tree.find(c.key), c.node) << c.key;
    }
}

TEST_F(Tree, TextKeepsItsUtf8) {
    ASSERT_FALSE(editor.tree.loadText("<N\xC3\xA1" "dra\xC5\xBE\xC3\xAD n=\"caf\xC3\xA9\">\xE2\x82\xAC \xE4\xB8\xAD</N\xC3\xA1"
                                      "dra\xC5\xBE\xC3\xAD>"));
    EXPECT_EQ(editor.tree.name(0), "N\xC3\xA1" "dra\xC5\xBE\xC3\xAD");  // c caron has no Windows-1252 byte
    EXPECT_EQ(editor.tree.attributes(0)[0].value, "caf\xC3\xA9");
    EXPECT_EQ(editor.tree.characters(0), "\xE2\x82\xAC \xE4\xB8\xAD");
}

TEST_F(Tree, EmptyMissingAndBrokenFiles) {
    EXPECT_FALSE(editor.tree.loadText(""));
    EXPECT_EQ(editor.tree.count(), 0u);
    EXPECT_EQ(editor.tree.childCount(kNoNode), 0u);
    EXPECT_FALSE(editor.tree.load("/no/such/folder/file.xml"));
    EXPECT_EQ(editor.tree.count(), 0u);
    // What was read before the fault stays.
    const base::Status status = editor.tree.loadText("<a><b><c>x</c></b><d>");
    ASSERT_TRUE(status);
    EXPECT_NE(status->description.find("The XML text could not be read"), std::string::npos);
    EXPECT_GE(editor.tree.count(), 3u);
    EXPECT_EQ(editor.tree.name(2), "c");
}

TEST_F(Tree, DeepNestingDoesNotExhaustTheStack) {
    std::string text;
    const int depth = 100000;
    for (int i = 0; i < depth; ++i) text += "<e>";
    for (int i = 0; i < depth; ++i) text += "</e>";
    ASSERT_FALSE(editor.tree.loadText(text));
    EXPECT_EQ(editor.tree.count(), static_cast<std::size_t>(depth));
    EXPECT_EQ(editor.tree.parent(depth - 1), static_cast<NodeId>(depth - 2));
}

TEST_F(Tree, ClickingFillsTheBoxesWithoutMarkingTypingMarks) {
    ASSERT_FALSE(editor.tree.loadText(kSmall));
    editor.updatingFromNode = true;
    const XmlTreeEditor::Boxes boxes = editor.select("2NOD");
    editor.charactersChanged(boxes.characters);  // the box filled from the entry
    editor.updatingFromNode = false;
    EXPECT_EQ(editor.selected, 1u);
    EXPECT_TRUE(boxes.attributeNames.empty());
    EXPECT_FALSE(editor.dirty);

    editor.select("1nod");
    EXPECT_EQ(editor.attributeValue(0), "1");
    EXPECT_EQ(editor.attributeValue(7), "");
    editor.charactersChanged("typed");
    EXPECT_TRUE(editor.dirty);
    EXPECT_EQ(editor.tree.characters(0), "typed");
    // Emptying the box before the next entry's text is shown leaves the entry's text.
    editor.updatingFromNode = true;
    editor.charactersChanged("");
    editor.select("2nod");
    editor.updatingFromNode = false;
    EXPECT_EQ(editor.tree.characters(0), "typed");
    EXPECT_EQ(editor.select("nothing").attributeNames.size(), 0u);
    EXPECT_EQ(editor.selected, kNoNode);
}

TEST_F(Tree, ARenameWithABlankIsRefusedAndLeavesTheTreeAsItWas) {
    ASSERT_FALSE(editor.tree.loadText(kSmall));
    EXPECT_FALSE(editor.rename(ctx, 1, "new name"));
    EXPECT_EQ(editor.tree.name(1), "b");
    EXPECT_FALSE(editor.dirty);
    ASSERT_EQ(ui.shown.size(), 1u);
    EXPECT_EQ(ui.shown[0].text, "Node names cannot have spaces!");
    EXPECT_EQ(ui.shown[0].title, "Invalid character");
    EXPECT_EQ(ui.shown[0].icon, base::Icon::Exclamation);

    EXPECT_TRUE(editor.rename(ctx, 1, "Renamed"));
    EXPECT_EQ(editor.tree.name(1), "Renamed");
    EXPECT_TRUE(editor.dirty);
}

TEST_F(Tree, SearchesWalkTheEntriesInOrderWithoutCase) {
    ASSERT_FALSE(editor.tree.loadText(kSmall));
    TreeSearch search;
    std::vector<NodeId> seen;
    search.walk(ctx, editor.tree, "b", TreeSearchField::EntryText, [&](NodeId n) {
        seen.push_back(n);
        return true;  // Continue
    });
    EXPECT_EQ(seen, (std::vector<NodeId>{1, 3}));
    EXPECT_TRUE(search.found);
    seen.clear();
    search.walk(ctx, editor.tree, "B", TreeSearchField::EntryText, [&](NodeId n) {
        seen.push_back(n);
        return false;  // OK: this is the one
    });
    EXPECT_EQ(seen, std::vector<NodeId>{1});
    seen.clear();
    search.walk(ctx, editor.tree, "TWO", TreeSearchField::Characters, [&](NodeId n) {
        seen.push_back(n);
        return true;
    });
    EXPECT_EQ(seen, std::vector<NodeId>{1});
    EXPECT_TRUE(ui.shown.empty());

    EXPECT_EQ(search.findAll(ctx, editor.tree, "b"), (std::vector<NodeId>{1, 3}));
    EXPECT_TRUE(search.findAll(ctx, editor.tree, "zzz").empty());
    EXPECT_FALSE(search.found);
    EXPECT_EQ(ui.texts(), std::vector<std::string>{"Not found"});
}

std::string Elements(std::size_t count) {
    std::string text = "<r>";
    for (std::size_t i = 1; i < count; ++i) text += "<e/>";
    return text + "</r>";
}

TEST_F(Tree, EachSearchRefusesATreeOfMoreThan65500Entries) {
    TreeSearch search;
    ASSERT_FALSE(editor.tree.loadText(Elements(kTreeSearchLimit)));
    EXPECT_EQ(search.findAll(ctx, editor.tree, "e").size(), kTreeSearchLimit - 1);

    ASSERT_FALSE(editor.tree.loadText(Elements(kTreeSearchLimit + 1)));
    EXPECT_EQ(editor.tree.count(), 65501u);
    ui.shown.clear();
    int hits = 0;
    search.walk(ctx, editor.tree, "e", TreeSearchField::EntryText, [&](NodeId) { return ++hits > 0; });
    search.walk(ctx, editor.tree, "e", TreeSearchField::Characters, [&](NodeId) { return ++hits > 0; });
    EXPECT_TRUE(search.findAll(ctx, editor.tree, "e").empty());
    EXPECT_EQ(hits, 0);
    ASSERT_EQ(ui.shown.size(), 3u);
    for (const auto& shown : ui.shown) {
        EXPECT_EQ(shown.text,
                  "Unfortunately, this file is too long for this Search to work.\n"
                  "Please open in the Ferrolund editor and run Search there.");
        EXPECT_EQ(shown.icon, base::Icon::Exclamation);
    }
}

TEST(WithDirtyMark, OneMarkAtTheEnd) {
    EXPECT_EQ(WithDirtyMark("XML Editor", true), "XML Editor*");
    EXPECT_EQ(WithDirtyMark("XML Editor*", true), "XML Editor*");
    EXPECT_EQ(WithDirtyMark("XML Editor*", false), "XML Editor");
    EXPECT_EQ(WithDirtyMark("XML Editor", false), "XML Editor");
    EXPECT_EQ(WithDirtyMark("", true), "*");
    EXPECT_EQ(WithDirtyMark("", false), "");
}

TEST_F(Tree, ARealScenarioOpensWhole) {
    FERROLUND_READ_TESTDATA(xml, "serz/scenario-small.xml");
    testing::TempFolder folder;
    const auto path = folder.write("Scenario.xml", xml);
    ASSERT_FALSE(editor.tree.load(path.string()));
    ASSERT_GT(editor.tree.count(), 10u);
    EXPECT_EQ(editor.tree.name(0), "cRecordSet");
    // Every element of the file is an entry.
    std::size_t opening = 0;
    for (std::size_t at = xml.find('<'); at != std::string::npos; at = xml.find('<', at + 1)) {
        const char next = at + 1 < xml.size() ? xml[at + 1] : '\0';
        if (next != '/' && next != '?' && next != '!') ++opening;
    }
    EXPECT_EQ(editor.tree.count(), opening);
}

}  // namespace
}  // namespace ferrolund::editor
