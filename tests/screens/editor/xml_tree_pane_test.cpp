#include <QApplication>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTreeView>
#include <gtest/gtest.h>

#include "editor_fixture.h"
#include "screens/editor/XmlTreeModel.h"
#include "screens/editor/XmlTreePane.h"

namespace ferrolund::screens {
namespace {

constexpr const char* kXml =
    "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n"
    "<cRecordSet xmlns:d=\"http://www.kuju.com/TnT/2003/Delta\" d:version=\"1.0\" d:id=\"1\">\r\n"
    "\t<Record>\r\n"
    "\t\t<cConsist d:id=\"2\">\r\n"
    "\t\t\t<Name d:type=\"cDeltaString\">Coal train</Name>\r\n"
    "\t\t\t<ServiceName d:type=\"cDeltaString\">Empty coal</ServiceName>\r\n"
    "\t\t</cConsist>\r\n"
    "\t</Record>\r\n"
    "</cRecordSet>\r\n";

struct Pane : testing::EditorFixture {
    QTabWidget tabs;
    XmlTreePane* pane = new XmlTreePane(ctx);
    std::string path;
    Pane() {
        tabs.addTab(new QWidget, "Text Editor");
        tabs.addTab(pane, "XML Editor");
        tabs.setCurrentIndex(1);
        tabs.resize(760, 420);
        tabs.show();
        path = root.write("TempFiles/Scenario.xml", kXml).string();
        pane->setDocumentName("C:\\RailWorks\\Content\\Routes\\r\\Scenarios\\s\\Scenario.bin");
        pane->load(path);
    }
    QModelIndex indexOf(editor::NodeId node) const { return pane->model()->indexOf(node); }
    void click(editor::NodeId node) { pane->tree()->setCurrentIndex(indexOf(node)); }
};

TEST(XmlTreePane, ShowsTheFirstEntryOpenedAndFillsTheBoxesOnAClick) {
    Pane p;
    EXPECT_TRUE(p.pane->tree()->isExpanded(p.indexOf(0)));
    EXPECT_EQ(p.pane->model()->data(p.indexOf(0), Qt::DisplayRole).toString(), "cRecordSet");
    EXPECT_EQ(p.pane->model()->rowCount({}), 1);
    EXPECT_FALSE(p.pane->characters()->isEnabled());

    p.click(0);
    EXPECT_EQ(p.pane->attributes()->count(), 3);
    EXPECT_EQ(p.pane->attributes()->item(2)->text(), "d:id");
    EXPECT_FALSE(p.pane->attributeValue()->isEnabled());
    p.pane->attributes()->setCurrentRow(1);
    EXPECT_EQ(p.pane->attributeValue()->text(), "1.0");
    EXPECT_TRUE(p.pane->attributeValue()->isEnabled());

    p.click(3);  // Name
    EXPECT_EQ(p.pane->characters()->toPlainText(), "Coal train");
    EXPECT_EQ(p.pane->attributeValue()->text(), "");
    EXPECT_EQ(p.tabs.tabText(1), "XML Editor");  // filling the boxes marks nothing
    testing::Screenshot(p.tabs, "XmlTreePane");

    p.pane->characters()->setPlainText("Freight");
    EXPECT_EQ(p.tabs.tabText(1), "XML Editor*");
    EXPECT_EQ(p.pane->editor().tree.characters(3), "Freight");
    p.pane->characters()->setPlainText("Freight 2");
    EXPECT_EQ(p.tabs.tabText(1), "XML Editor*");  // one mark only
    // The next document starts unmarked.
    p.pane->load(p.path);
    EXPECT_EQ(p.tabs.tabText(1), "XML Editor");
    EXPECT_EQ(p.pane->editor().tree.characters(3), "Coal train");
}

TEST(XmlTreePane, RenamingRefusesBlanksAndMarksTheTab) {
    Pane p;
    XmlTreeModel* model = p.pane->model();
    EXPECT_FALSE(model->setData(p.indexOf(3), "Full name", Qt::EditRole));
    EXPECT_EQ(model->data(p.indexOf(3), Qt::DisplayRole).toString(), "Name");
    EXPECT_EQ(p.ui.texts(), std::vector<std::string>{"Node names cannot have spaces!"});
    EXPECT_EQ(p.tabs.tabText(1), "XML Editor");
    EXPECT_TRUE(model->setData(p.indexOf(3), "Title", Qt::EditRole));
    EXPECT_EQ(model->data(p.indexOf(3), Qt::DisplayRole).toString(), "Title");
    EXPECT_EQ(p.tabs.tabText(1), "XML Editor*");
}

TEST(XmlTreePane, FindStopsAtEachHitAndFindAllMarksThemAll) {
    Pane p;
    std::vector<QString> asked;
    p.pane->askContinue = [&] {
        asked.push_back(p.pane->model()->data(p.pane->tree()->currentIndex(), Qt::DisplayRole).toString());
        return true;
    };
    p.pane->searchBox()->setText("name");
    p.pane->find();
    EXPECT_EQ(asked, (std::vector<QString>{"Name", "ServiceName"}));
    EXPECT_EQ(p.pane->editor().bold.size(), 1u);  // old marks go at each hit
    EXPECT_EQ(p.pane->editor().tree.characters(3), "Coal train");  // passing by changes nothing

    p.pane->askContinue = [] { return false; };
    p.pane->searchBox()->setText("coal");
    p.pane->findInText();
    EXPECT_EQ(p.pane->tree()->currentIndex(), p.indexOf(3));
    EXPECT_EQ(p.pane->characters()->toPlainText(), "Coal train");
    EXPECT_EQ(p.tabs.tabText(1), "XML Editor");

    p.pane->searchBox()->setText("C");
    p.pane->findAll();
    const auto bold = p.pane->model()->data(p.indexOf(2), Qt::FontRole).value<QFont>();
    EXPECT_TRUE(bold.bold());
    EXPECT_EQ(p.pane->editor().bold.size(), 4u);  // cRecordSet, Record, cConsist, ServiceName
    EXPECT_EQ(p.pane->tree()->selectionModel()->selectedIndexes().size(), 4);
    EXPECT_TRUE(p.ui.shown.empty());
    p.pane->searchBox()->setText("zzz");
    p.pane->findAll();
    EXPECT_EQ(p.ui.texts(), std::vector<std::string>{"Not found"});
    EXPECT_TRUE(p.pane->editor().bold.empty());
}

TEST(XmlTreePane, ALongTreeOpensButRefusesTheSearches) {
    Pane p;
    std::string big = "<r>";
    for (int i = 0; i < 65500; ++i) big += "<e/>";
    big += "</r>";
    p.pane->load(p.root.write("TempFiles/Big.xml", big).string());
    EXPECT_EQ(p.pane->model()->rowCount(p.indexOf(0)), 65500);
    p.pane->askContinue = [] { return true; };
    p.pane->searchBox()->setText("e");
    p.pane->find();
    p.pane->findAll();
    p.pane->findInText();
    ASSERT_EQ(p.ui.shown.size(), 3u);
    EXPECT_EQ(p.ui.shown[2].text,
              "Unfortunately, this file is too long for this Search to work.\n"
              "Please open in the Ferrolund editor and run Search there.");
}

TEST(XmlTreePane, ABrokenFileKeepsWhatWasReadAndIsReported) {
    Pane p;
    p.pane->load(p.root.write("TempFiles/Broken.xml", "<a><b>text</b><c>").string());
    EXPECT_GE(p.pane->editor().tree.count(), 2u);
    ASSERT_EQ(p.ui.shown.size(), 1u);
    EXPECT_EQ(p.ui.shown[0].icon, base::Icon::Critical);
    p.pane->clear();
    EXPECT_EQ(p.pane->model()->rowCount({}), 0);
}

}  // namespace
}  // namespace ferrolund::screens
