#include "assets/blueprint_files.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "serz/codec.h"
#include "support/scripted_ui.h"
#include "support/temp_folder.h"

namespace ferrolund::assets {
namespace {

namespace fs = std::filesystem;

std::string Geometry(const std::vector<std::string>& textures, bool ownerFirst = false) {
    std::string xml = "<cHcRGeometry>\r\n";
    if (ownerFirst) xml += "\t<Owner d:id=\"1\"/>\r\n";
    xml += "\t<TextureByName>\r\n";
    for (const auto& t : textures) xml += "\t\t<e d:type=\"cDeltaString\">" + t + "</e>\r\n";
    xml += "\t</TextureByName>\r\n\t<Owner d:id=\"2\">\r\n\t<TextureByName>\r\n\t\t<e>after\\owner</e>\r\n";
    return xml;
}

std::vector<std::string> Lines(const std::string& text) {
    std::vector<std::string> lines;
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = text.find("\r\n", start);
        lines.push_back(text.substr(start, end - start));
        start = end + 2;
    }
    return lines;
}

TEST(CheckTexture, PathsOfTheTextureList) {
    const std::string base = "G\\Assets\\Kuju\\RS\\RailVehicles\\Loco\\";
    const std::string geometry = base + "Body.GeoPcDx";
    struct Case { std::string value; std::string file; };
    const Case cases[] = {
        {"[00]Textures\\wheel", base + "Textures\\wheel.TgPcDx"},
        {"Textures\\[00]wheel", base + "Textures\\wheel.TgPcDx"},
        {"..\\Textures\\x", "G\\Assets\\Kuju\\RS\\RailVehicles\\Textures\\x.TgPcDx"},
        {"..\\..\\Shared\\y", "G\\Assets\\Kuju\\RS\\Shared\\y.TgPcDx"},
        {"..\\..\\..\\RailVehicles\\Common\\z", "G\\Assets\\Kuju\\RS\\RailVehicles\\Common\\z.TgPcDx"},
        {"..\\..\\..\\..\\Other\\w", "G\\Assets\\Kuju\\Other\\w.TgPcDx"},
        {"TEXTURES\\..\\q", base + "TEXTURES\\..\\q.TgPcDx"},  // starting with "text": never relative
    };
    for (const auto& c : cases) {
        ReportList report;
        CheckTexture(Geometry({c.value}), base, geometry, TextureForm::Listing, report);
        EXPECT_EQ(Lines(report.text), std::vector<std::string>{c.file}) << c.value;
    }
}

TEST(CheckTexture, TheOwnerLineEndsTheReading) {
    ReportList report;
    CheckTexture(Geometry({"a"}, true), "B\\", "B\\g.GeoPcDx", TextureForm::Listing, report);
    EXPECT_EQ(report.text, "");
    const auto shown = ShowTexture("<TextureByName>\r\n<e>a</e>\r\n<d:blob>\r\n<e>b</e>\r\n", "B\\", "B\\g.GeoPcDx");
    EXPECT_EQ(shown, std::vector<std::string>{"B\\a.TgPcDx"});
}

TEST(CheckTexture, TheCheckingFormNamesOnlyWhatIsMissing) {
    testing::TempFolder root;
    root.write("Loco/Textures/here.TgPcDx", "x");
    root.write("Loco/Textures/Gr\xC3\xBCn.TgPcDx", "x");  // found by the repaired name
    const std::string base = root.system() + "\\Loco\\";
    ReportList report;
    report.currentBlueprint = "K\\P\\Loco.bin";
    CheckTexture(Geometry({"Textures\\here", "Textures\\gone", "Textures\\Gr\xC3\xBCn"}), base, base + "b.GeoPcDx",
                 TextureForm::Checking, report);
    EXPECT_EQ(Lines(report.text), std::vector<std::string>{base + "Textures\\gone.TgPcDx Called by K\\P\\Loco.bin"});
}

TEST(FindMinMax, SmallestAndLargest) {
    double lo = 1, hi = 1;
    FindMinMax({}, lo, hi);
    EXPECT_EQ(lo, 0);
    EXPECT_EQ(hi, 0);
    FindMinMax({40, -2.5, 900, 7}, lo, hi);
    EXPECT_EQ(lo, -2.5);
    EXPECT_EQ(hi, 900);
}

// A small installation written with the converter: a loco, its geometry, its sounds.
struct Installation {
    testing::TempFolder root;
    testing::ScriptedUi ui;
    app::AppContext ctx;
    Installation() {
        ctx.appRoot = root.system() + "/app";
        fs::create_directories(root.path() / "app/TempFiles");
        ctx.prefs.gameRoot = root.system() + "/game";
        ctx.ui = &ui;
    }
    void binary(const std::string& relative, const std::string& body) {
        std::string bin;
        const std::string xml = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n"
                                "<cBlueprintLoader xmlns:d=\"http://www.kuju.com/TnT/2003/Delta\" d:version=\"1.0\">\r\n" +
                                body + "</cBlueprintLoader>\r\n";
        ASSERT_FALSE(serz::XmlToBinary(xml, bin)) << relative;
        root.write("game/Assets/" + relative, bin);
    }
    std::string asset(const std::string& relative) const { return ctx.gameRoot() + "\\Assets\\" + relative; }
};

std::string Text(const char* name, const std::string& value) {
    return std::string("<") + name + " d:type=\"cDeltaString\">" + value + "</" + name + ">\r\n";
}

TEST(GetAssetBits, ListsBlueprintAnimationsSoundsGeometryAndTextures) {
    Installation g;
    g.binary("K/P/Loco/Loco.bin",
             "<Blueprint>\r\n<cEngineBlueprint d:id=\"1\">\r\n<AnimSet>\r\n" + Text("AnimationName", "Anims\\Doors") +
                 "</AnimSet>\r\n<cEngineSoundComponent>\r\n" + Text("Provider", "K") + Text("Product", "P") +
                 Text("BlueprintID", "Audio\\EngineAudio.xml") + "</cEngineSoundComponent>\r\n" +
                 Text("GeometryID", "K\\P\\Loco\\Body") + "</cEngineBlueprint>\r\n</Blueprint>\r\n");
    g.binary("K/P/Audio/EngineAudio.bin",
             "<SoundComponent>\r\n" + Text("ProxyName", "K\\P\\Audio\\Engine") + Text("ProxyName2", "x") +
                 "</SoundComponent>\r\n<SoundComponent>\r\n" + Text("ProxyName", "K\\P\\Audio\\Gone") +
                 "</SoundComponent>\r\n");
    g.root.write("game/Assets/K/P/Audio/Engine.proxyxml", "<Pathname><Filename>K\\P\\Audio\\idle.wav</Filename></Pathname>");
    g.binary("K/P/Loco/Body.GeoPcDx", "<TextureByName>\r\n" + Text("e", "[00]Textures\\body") + "</TextureByName>\r\n");

    ReportList report;
    GetAssetBits(g.ctx, {"K", "P", "Loco\\Loco.xml"}, report);
    CloseReport(report);
    EXPECT_EQ(Lines(report.text), (std::vector<std::string>{
                                      g.asset("K\\P\\Loco\\Loco.bin"),
                                      g.asset("K\\P\\Loco\\Doors.ban"),
                                      "",
                                      g.asset("K\\P\\Audio\\Engine.proxyxml"),
                                      g.asset("K\\P\\Audio\\idle.wav"),
                                      g.asset("K\\P\\Audio\\Gone.proxyxml") + " Called by " + g.asset("K\\P\\Loco\\Loco.bin"),
                                      g.asset("K\\P\\Loco\\Body.GeoPcDx"),
                                      g.asset("K\\P\\Loco\\Textures\\body.TgPcDx"),
                                      "",
                                      "",
                                      "+++",
                                  }));
}

TEST(GetAssetBits, ALoftListsItsCrossSectionsTextures) {
    Installation g;
    g.binary("K/P/Lofts/Fence.bin", "<cLoftSectionBlueprint>\r\n" + Text("CrossSectionID", "K\\P\\Lofts\\[01]Fence") +
                                        "</cLoftSectionBlueprint>\r\n");
    g.binary("K/P/Lofts/Fence.XSec", "<TextureByName>\r\n" + Text("e", "..\\Shared\\wood") + "</TextureByName>\r\n");
    ReportList report;
    GetAssetBits(g.ctx, {"K", "P", "Lofts\\Fence.xml"}, report);
    EXPECT_EQ(Lines(report.text), (std::vector<std::string>{g.asset("K\\P\\Lofts\\Fence.bin"),
                                                             g.asset("K\\P\\Lofts\\Fence.XSec"),
                                                             g.asset("K\\P\\Shared\\wood.TgPcDx"), ""}));
}

TEST(GetAssetBits, AnUnreadableBlueprintIsListedAndLeftSilently) {
    Installation g;
    g.root.write("game/Assets/K/P/Broken.bin", "SERZ\x01\x02");
    ReportList report;
    GetAssetBits(g.ctx, {"K", "P", "Broken.xml"}, report);
    EXPECT_EQ(Lines(report.text), std::vector<std::string>{g.asset("K\\P\\Broken.bin")});
    EXPECT_TRUE(g.ui.shown.empty());
}

}  // namespace
}  // namespace ferrolund::assets
