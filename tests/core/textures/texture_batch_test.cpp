// A folder of textures to .dds: which files are taken, a bad one among them, the abort,
// and the viewer's file filter.
#include "textures/texture_batch.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "generator/texture_sample.h"
#include "serz/codec.h"
#include "support/cli_run.h"
#include "support/scripted_ui.h"
#include "support/temp_folder.h"
#include "textures/picture_files.h"

namespace ferrolund::textures {
namespace {

namespace fs = std::filesystem;

std::string Texture(unsigned seed) {
    std::string binary;
    EXPECT_FALSE(serz::XmlToBinary(sample::TextureXml("HC_IMAGE_FORMAT_COMPRESSED", 16, 16, 2, seed), binary));
    return binary;
}

// The name after the last separator of a system path.
std::string NameOf(const std::string& path) { return path.substr(path.find_last_of("\\/") + 1); }

struct Folder {
    testing::TempFolder root;
    testing::ScriptedUi ui;
    struct Ctx : base::RunContext {
        void report(const base::RunError&, const std::string&) override {}
    } ctx;
    std::string folder = (root.path() / "Gelände_ß").string();
    std::string out = (root.path() / "out").string();
    Folder() {
        ctx.ui = &ui;
        for (const char* name : {"b_č.TgPcDx", "a.TGPCDX", "d.TgPcDx", "e.TgPcDx"}) root.write(std::string("Gelände_ß/") + name, Texture(name[0]));
        root.write("Gelände_ß/c.TgPcDx", "no texture");
        root.write("Gelände_ß/notes.txt", "x");
        root.write("Gelände_ß/below/f.TgPcDx", Texture(6));
    }
};

TEST(TextureFolder, TakesTheTexturesDirectlyInTheFolderInOrder) {
    Folder f;
    std::vector<std::string> names;
    for (const std::string& file : TexturesInFolder(f.folder)) names.push_back(NameOf(file));
    EXPECT_EQ(names, (std::vector<std::string>{"a.TGPCDX", "b_č.TgPcDx", "c.TgPcDx", "d.TgPcDx", "e.TgPcDx"}));
    EXPECT_TRUE(TexturesInFolder((f.root.path() / "missing").string()).empty());
}

TEST(TextureFolder, ABadFileIsToldAndTheRestConverted) {
    Folder f;
    std::vector<std::string> told;
    const BatchSummary summary = ConvertTextures(f.ctx, TexturesInFolder(f.folder), f.out,
                                                 [&](const std::string& file, const ConversionResult& result) {
                                                     told.push_back(NameOf(file) + ":" + result.error);
                                                 });
    EXPECT_EQ(summary.converted, 4u);
    EXPECT_EQ(summary.failed, 1u);
    EXPECT_FALSE(summary.aborted);
    EXPECT_EQ(told.at(2), std::string("c.TgPcDx:") + kNotATexture);
    EXPECT_TRUE(fs::exists(fs::path(f.out) / "b_č.dds"));
    EXPECT_TRUE(fs::exists(fs::path(f.out) / "e.dat"));
    EXPECT_GE(f.ui.pumps, 5);  // before each file at least
    EXPECT_EQ(f.ui.progressSteps.back().first, 100);
}

TEST(TextureFolder, AbortStopsBeforeTheNextFileAndLeavesTheWrittenOnesWhole) {
    Folder f;
    std::size_t seen = 0;
    const BatchSummary summary = ConvertTextures(f.ctx, TexturesInFolder(f.folder), f.out,
                                                 [&](const std::string&, const ConversionResult&) {
                                                     if (++seen == 2) f.ctx.abortFlag = true;  // "&Abort" clicked
                                                 });
    EXPECT_TRUE(summary.aborted);
    EXPECT_EQ(summary.converted, 2u);
    EXPECT_EQ(seen, 2u);
    EXPECT_FALSE(fs::exists(fs::path(f.out) / "d.dds"));
    for (const char* name : {"a.dds", "b_č.dds"}) {
        DdsInfo info;
        std::string bytes = f.root.read("out/" + std::string(name));
        EXPECT_EQ(ReadDdsInfo(bytes, info), "") << name;
        EXPECT_EQ(info.pixelBytes, 128u + 32u) << name;  // 16x16 and 8x8 DXT1 levels
    }
}

TEST(TextureFolder, AStopWhileALargeTextureIsWrittenLeavesNothingOfIt) {
    testing::TempFolder root;
    std::string binary;
    ASSERT_FALSE(serz::XmlToBinary(sample::TextureXml("HC_IMAGE_FORMAT_COMPRESSED_INTERP_ALPHA", 1024, 1024, 2), binary));
    const std::string texture = root.write("groß.TgPcDx", binary).string();
    const std::string out = (root.path() / "out").string();
    for (int stopAt = 1; stopAt <= 3; ++stopAt) {  // after reading, after converting, between megabytes
        int asked = 0;
        const ConversionResult result = TgPcDxToDds(texture, out, [&] { return ++asked == stopAt; });
        EXPECT_TRUE(result.stopped) << stopAt;
        EXPECT_FALSE(fs::exists(fs::path(out) / "groß.dds")) << stopAt;
        EXPECT_FALSE(fs::exists(fs::path(out) / "groß.dat")) << stopAt;
    }
    int asked = 0;
    const ConversionResult whole = TgPcDxToDds(texture, out, [&] { return ++asked > 100; });
    EXPECT_EQ(whole.error, "");
    EXPECT_EQ(asked, 3);  // 1.25 MB of pixels: one stop between the two megabytes written
    EXPECT_EQ(fs::file_size(fs::path(out) / "groß.dds"), 128u + 1024u * 1024u + 512u * 512u);
}

TEST(TextureFolder, CommandLineTakesAFolderAndTellsEachFile) {
    Folder f;
    const auto run = testing::Cli({"tex2dds", f.folder, "--out", f.out}, f.root.system());
    EXPECT_EQ(run.code, 1);  // c.TgPcDx is no texture
    EXPECT_NE(run.err.find("c.TgPcDx: " + std::string(kNotATexture)), std::string::npos) << run.err;
    EXPECT_NE(run.out.find("e.dds\tDXT1 ARGB\t2 mip-maps"), std::string::npos) << run.out;
    EXPECT_TRUE(fs::exists(fs::path(f.out) / "a.dds"));

    const auto empty = testing::Cli({"tex2dds", (f.root.path() / "out").string()}, f.root.system());
    EXPECT_EQ(empty.code, 1);
    EXPECT_NE(empty.err.find("no .TgPcDx files in this folder"), std::string::npos);
}

TEST(PictureFilter, MasksAndMatches) {
    testing::TempFolder root;
    for (const char* name : {"Brücke.PNG", "b.tga", "c.TgPcDx", "d.dds", "e.jpg", "Ärger.Png", "noext"})
        root.write(std::string("Texturen_é/") + name, "x");
    root.write("Texturen_é/sub/f.png", "x");
    const std::string folder = (root.path() / "Texturen_é").string();
    struct Case {
        std::string filter;
        std::vector<std::string> names;
    };
    const std::vector<Case> cases = {
        {kPictureFilter, {"b.tga", "Brücke.PNG", "c.TgPcDx", "d.dds", "Ärger.Png"}},
        {"", {"b.tga", "Brücke.PNG", "c.TgPcDx", "d.dds", "e.jpg", "noext", "Ärger.Png"}},
        {"*.*", {"b.tga", "Brücke.PNG", "c.TgPcDx", "d.dds", "e.jpg", "noext", "Ärger.Png"}},
        {" *.png ; ;*.JPG", {"Brücke.PNG", "e.jpg", "Ärger.Png"}},
        {"brü*", {"Brücke.PNG"}},
        {"*.bmp", {}},
    };
    for (const Case& c : cases) EXPECT_EQ(FilesMatching(folder, c.filter), c.names) << c.filter;
    EXPECT_EQ(FilterMasks(""), std::vector<std::string>{"*.*"});
    EXPECT_EQ(KindOfPicture("x.tgpcdx"), PictureKind::Texture);
    EXPECT_EQ(KindOfPicture("x.DDS"), PictureKind::Dds);
    EXPECT_EQ(KindOfPicture("x.dds.png"), PictureKind::Picture);
}

}  // namespace
}  // namespace ferrolund::textures
