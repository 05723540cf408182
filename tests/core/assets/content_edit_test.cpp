#include "assets/content_edit.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "core/routes/location_test_support.h"
#include "editor/document.h"
#include "support/locked_folder.h"

namespace ferrolund::assets {
namespace {

namespace fs = std::filesystem;
using testing::LocationGame;

const char* const kTileXml =
    "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n"
    "<cRecordSet xmlns:d=\"http://www.kuju.com/TnT/2003/Delta\" d:version=\"1.0\" d:id=\"1\">\r\n"
    "<Record>\r\n<Name d:type=\"cDeltaString\">Brücke</Name>\r\n<Count d:type=\"sInt32\">5</Count>\r\n</Record>\r\n"
    "</cRecordSet>\r\n";

// The value of the first element of `type` in the text, and the text with it replaced.
std::string FirstValue(const std::string& xml, const std::string& type) {
    const std::size_t at = xml.find("d:type=\"" + type + "\">");
    if (at == std::string::npos) return {};
    const std::size_t start = xml.find('>', at) + 1;
    return xml.substr(start, xml.find('<', start) - start);
}
std::string WithFirstValue(std::string xml, const std::string& type, const std::string& value) {
    const std::size_t start = xml.find('>', xml.find("d:type=\"" + type + "\">")) + 1;
    return xml.replace(start, xml.find('<', start) - start, value);
}

// The text without its d:alt_encoding attributes: a float's double form is made anew from
// its text when the file is compiled.
std::string WithoutAltEncoding(std::string xml) {
    for (std::size_t at; (at = xml.find(" d:alt_encoding=\"")) != std::string::npos;)
        xml.erase(at, xml.find('"', at + 18) + 1 - at);
    return xml;
}

std::string ConvertedBack(LocationGame& g, const fs::path& file) {
    std::string xml;
    EXPECT_FALSE(tools::SerzReadXml(g.ctx, file.string(), xml));
    return xml;
}

struct EditGame : LocationGame {
    fs::path folder() const { return root.path() / "game/Content/Routes/Zürich/Scenery"; }
    fs::path madeTile() {
        root.write("game/Content/Routes/Zürich/Scenery/+000000+000000.bin", "");
        const auto source = root.write("tile.xml", kTileXml);
        const fs::path file = folder() / "+000000+000000.bin";
        EXPECT_FALSE(tools::SerzConvert(ctx, source.string(), file.string(), tools::SerzDirection::ToBinary));
        return file;
    }
};

TEST(KindOfContent, ByExtensionInAnyCase) {
    const std::pair<const char*, ContentKind> cases[] = {
        {"Scenario.bin", ContentKind::Serz},       {"a\\b\\TRACK.BIN", ContentKind::Serz},
        {"x.XSec", ContentKind::Serz},             {"model.geopcdx", ContentKind::Serz},
        {"s.proxybin", ContentKind::Serz},         {"readme.TXT", ContentKind::Text},
        {"script.lua", ContentKind::Text},         {"strings.lan", ContentKind::Text},
        {"page.html", ContentKind::Text},          {"RouteProperties.xml", ContentKind::Text},
        {"a.proxyxml", ContentKind::Text},         {"image.png", ContentKind::Picture},
        {"photo.JPG", ContentKind::Picture},       {"t.TgPcDx", ContentKind::Texture},
        {"t.dds", ContentKind::Texture},           {"Scenario.bin.MD5", ContentKind::Other},
        {"noextension", ContentKind::Other},       {"folder.bin\\file", ContentKind::Other},
    };
    for (const auto& [name, kind] : cases) EXPECT_EQ(KindOfContent(name), kind) << name;
}

TEST(ContentEditor, OpensATileAsXmlAndSavesItWithABackup) {
    EditGame g;
    const fs::path file = g.madeTile();
    const std::string before = g.root.read("game/Content/Routes/Zürich/Scenery/+000000+000000.bin");
    ContentEditor editor;
    ASSERT_TRUE(editor.open(g.ctx, file.string()));
    EXPECT_EQ(editor.kind, ContentKind::Serz);
    EXPECT_EQ(FirstValue(editor.text, "sInt32"), "5");

    ASSERT_TRUE(editor.save(g.ctx, WithFirstValue(editor.text, "sInt32", "42")));
    ASSERT_EQ(editor.log.size(), 3u);
    EXPECT_EQ(editor.log[0], "Making Backup of strBin");
    EXPECT_EQ(editor.log[1], "Copying new .bin file");
    EXPECT_EQ(editor.log[2].rfind("Finished at ", 0), 0u);
    EXPECT_EQ(editor.log[2].size(), std::string("Finished at 00:00:00").size());
    EXPECT_EQ(FirstValue(ConvertedBack(g, file), "sInt32"), "42");
    EXPECT_EQ(FirstValue(ConvertedBack(g, file), "cDeltaString"), "Brücke");
    EXPECT_EQ(g.root.read("game/Content/Routes/Zürich/Scenery/+000000+000000.bin.bak"), before);

    // A second save keeps the first back-up and numbers the next.
    ASSERT_TRUE(editor.save(g.ctx, WithFirstValue(editor.text, "sInt32", "43")));
    EXPECT_EQ(g.root.read("game/Content/Routes/Zürich/Scenery/+000000+000000.bin.bak"), before);
    EXPECT_EQ(FirstValue(ConvertedBack(g, g.folder() / "+000000+000000.bin.bak1"), "sInt32"), "42");
    EXPECT_TRUE(g.ui.texts().empty());
}

TEST(ContentEditor, AFailedCompileLeavesTheFileAlone) {
    EditGame g;
    const fs::path file = g.madeTile();
    const std::string before = g.root.read("game/Content/Routes/Zürich/Scenery/+000000+000000.bin");
    ContentEditor editor;
    ASSERT_TRUE(editor.open(g.ctx, file.string()));
    const std::string broken[] = {"", "<cRecordSet", editor.text.substr(0, editor.text.size() / 2), "not xml at all"};
    for (const std::string& text : broken) {
        g.ui.shown.clear();
        EXPECT_FALSE(editor.save(g.ctx, text)) << text;
        EXPECT_EQ(g.root.read("game/Content/Routes/Zürich/Scenery/+000000+000000.bin"), before) << text;
        EXPECT_FALSE(fs::exists(g.folder() / "+000000+000000.bin.bak")) << text;
        EXPECT_TRUE(editor.log.empty()) << text;
        ASSERT_FALSE(g.ui.shown.empty()) << text;
        EXPECT_EQ(g.ui.shown.back().text, editor::kRecompressFailed) << text;
    }
}

TEST(ContentEditor, ALockedFolderLeavesTheFileAloneAndIsReported) {
    EditGame g;
    const fs::path file = g.madeTile();
    const std::string before = g.root.read("game/Content/Routes/Zürich/Scenery/+000000+000000.bin");
    ContentEditor editor;
    ASSERT_TRUE(editor.open(g.ctx, file.string()));
    {
        testing::LockedFolder lock(g.folder());
        if (!lock.locked()) GTEST_SKIP() << "this process can neither lock a folder nor be stopped by its permissions";
        EXPECT_FALSE(editor.save(g.ctx, WithFirstValue(editor.text, "sInt32", "9")));
    }
    EXPECT_EQ(g.root.read("game/Content/Routes/Zürich/Scenery/+000000+000000.bin"), before);
    EXPECT_FALSE(fs::exists(g.folder() / "+000000+000000.bin.bak"));
    EXPECT_EQ(editor.log.size(), 2u);  // no "Finished at"
    ASSERT_FALSE(g.ui.shown.empty());
    EXPECT_EQ(g.ui.shown.back().icon, base::Icon::Critical);
    EXPECT_NE(g.root.read("app/Errors.txt").find("frmEdCont"), std::string::npos);
}

TEST(ContentEditor, TextFilesOpenAsTheyStandAndSaveWithABackup) {
    EditGame g;
    const std::string script = "-- Weiß\r\nfunction Initialise()\r\nend\r\n";
    const fs::path file = g.root.write("game/Content/Routes/Zürich/Scripts/signal.lua", script);
    ContentEditor editor;
    ASSERT_TRUE(editor.open(g.ctx, file.string()));
    EXPECT_EQ(editor.kind, ContentKind::Text);
    EXPECT_EQ(editor.text, script);
    ASSERT_TRUE(editor.save(g.ctx, script + "-- more\r\n"));
    EXPECT_EQ(g.root.read("game/Content/Routes/Zürich/Scripts/signal.lua"), script + "-- more\r\n");
    EXPECT_EQ(g.root.read("game/Content/Routes/Zürich/Scripts/signal.lua.bak"), script);
    EXPECT_EQ(editor.log[1], "Copying new file");
}

TEST(ContentEditor, WhatCannotBeOpenedIsToldAndNothingIsOpen) {
    EditGame g;
    g.root.write("game/Content/Routes/R/Terrain/tile.TgPcDx", "texture");
    g.root.write("game/Content/Routes/R/Scenery/cut.bin", "SERZ\x00\x00\x01\x00\xff");
    g.root.write("game/Content/Routes/R/Scenery/not-serz.bin", "plain words");
    g.root.write("game/Content/Routes/R/picture.png", "png");
    const std::string base = g.game() + "\\Content\\Routes\\R\\";
    struct Case {
        const char* label;
        std::string path;
        bool opened;
        base::Icon icon;
        std::string text;  // a part of the message
    };
    const Case cases[] = {
        {"a texture", base + "Terrain\\tile.TgPcDx", false, base::Icon::Information, kTexturesNotReadable},
        {"a side file", base + "Scenery\\cut.bin.MD5", false, base::Icon::Information,
         "is not a kind of file this editor opens."},
        {"a missing file", base + "Scenery\\missing.bin", false, base::Icon::Critical, "missing.bin"},
        {"a binary cut short", base + "Scenery\\cut.bin", false, base::Icon::Critical, ""},
        {"a binary that is none", base + "Scenery\\not-serz.bin", false, base::Icon::Critical, ""},
        {"a picture", base + "picture.png", true, base::Icon::None, ""},
    };
    for (const Case& c : cases) {
        g.ui.shown.clear();
        ContentEditor editor;
        EXPECT_EQ(editor.open(g.ctx, c.path), c.opened) << c.label;
        EXPECT_EQ(editor.file.empty(), !c.opened) << c.label;
        EXPECT_TRUE(editor.text.empty()) << c.label;
        if (c.opened) {
            EXPECT_TRUE(g.ui.shown.empty()) << c.label;
            EXPECT_FALSE(editor.save(g.ctx, "x")) << c.label;  // a picture is not saved from text
            continue;
        }
        ASSERT_EQ(g.ui.shown.size(), 1u) << c.label;
        EXPECT_EQ(g.ui.shown[0].icon, c.icon) << c.label;
        EXPECT_NE(g.ui.shown[0].text.find(c.text), std::string::npos) << c.label << ": " << g.ui.shown[0].text;
        EXPECT_FALSE(editor.save(g.ctx, "x")) << c.label;
    }
}

TEST(ContentEditor, ARealTileOfTheRouteIsEditedAndReadBackWithTheChange) {
    LocationGame g;
    if (!g.copyRealRoute()) GTEST_SKIP() << "the real route of the test data is not beside the checkout";
    const fs::path folder = g.root.path() / "game/Content/Routes" / testing::kRealRoute / "Scenery";
    fs::permissions(folder, fs::perms::owner_all, fs::perm_options::add);
    const fs::path file = folder / "+000000+000000.bin";
    const std::string before = g.root.read(fs::relative(file, g.root.path()).string());
    ContentEditor editor;
    ASSERT_TRUE(editor.open(g.ctx, file.string()));
    const std::string old = FirstValue(editor.text, "sInt32");
    ASSERT_FALSE(old.empty());
    const std::string changed = old == "7" ? "8" : "7";
    ASSERT_TRUE(editor.save(g.ctx, WithFirstValue(editor.text, "sInt32", changed)));
    const std::string back = ConvertedBack(g, file);
    EXPECT_EQ(FirstValue(back, "sInt32"), changed);
    EXPECT_EQ(WithoutAltEncoding(back), WithoutAltEncoding(editor.text));
    EXPECT_EQ(g.root.read(fs::relative(folder / "+000000+000000.bin.bak", g.root.path()).string()), before);
}

}  // namespace
}  // namespace ferrolund::assets
