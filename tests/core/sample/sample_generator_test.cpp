// The generator's parts and its behaviour on options and on broken sources.
#include <gtest/gtest.h>

#include "generator/make_sample.h"
#include "generator/md5.h"
#include "generator/textures.h"
#include "sample_fixture.h"
#include "support/temp_folder.h"

namespace ferrolund::sample {
namespace {

namespace fs = std::filesystem;

TEST(SampleGuid, TextAndHalvesAgreeWithTheGame) {
    // Pairs as the game writes them side by side in a cGUID.
    struct Case {
        const char* text;
        std::uint64_t u0, u1;
    };
    const Case cases[] = {
        {"0ecf6b26-9b3a-4228-bb35-1bdbc3c6e223", 4767230879230552870ULL, 2585847680561001915ULL},
        {"b01bda98-a8d8-4615-ba62-1be3f3edb378", 5050128205786897048ULL, 8697556937125618362ULL},
        {"00000000-0000-0000-0000-000000000000", 0, 0},
    };
    for (const Case& c : cases) {
        std::uint64_t u0 = 1, u1 = 1;
        EXPECT_TRUE(ParseGuid(c.text, u0, u1)) << c.text;
        EXPECT_EQ(u0, c.u0) << c.text;
        EXPECT_EQ(u1, c.u1) << c.text;
        EXPECT_EQ(GuidText(c.u0, c.u1), c.text);
    }
    std::uint64_t u0 = 0, u1 = 0;
    for (const char* bad : {"", "0ecf6b26-9b3a-4228-bb35-1bdbc3c6e22", "0ecf6b26x9b3a-4228-bb35-1bdbc3c6e223",
                            "0ecf6b26-9b3a-4228-bb35-1bdbc3c6e22g"})
        EXPECT_FALSE(ParseGuid(bad, u0, u1)) << bad;
}

TEST(SampleCount, OnlyPlainDigits) {
    struct Case {
        const char* text;
        bool ok;
        int value;
    };
    const Case cases[] = {{"12", true, 12}, {"0", true, 0},   {"007", true, 7},
                          {"", false, 0},   {"-3", false, 0}, {"+3", false, 0},
                          {"3x", false, 0}, {" 3", false, 0}, {"99999999999", false, 0}};
    for (const Case& c : cases) {
        int value = -1;
        EXPECT_EQ(ParseCount(c.text, value), c.ok) << c.text;
        EXPECT_EQ(c.ok ? value : 0, c.value) << c.text;
    }
}

TEST(SampleMd5, KnownDigests) {
    struct Case {
        std::string input;
        const char* hex;
    };
    const Case cases[] = {
        {"", "d41d8cd98f00b204e9800998ecf8427e"},
        {"abc", "900150983cd24fb0d6963f7d28e17f72"},
        {std::string(1000, 'a'), "cabe45dcc9ae5b66ba86600cca6b8ba8"},
    };
    for (const Case& c : cases) {
        std::string hex;
        for (const auto byte : Md5(c.input)) {
            static const char kDigits[] = "0123456789abcdef";
            hex += kDigits[byte >> 4];
            hex += kDigits[byte & 15];
        }
        EXPECT_EQ(hex, c.hex) << c.input.size();
    }
}

TEST(SampleTextures, LevelSizesAndBlobText) {
    struct Case {
        PixelFormat format;
        int w, h;
        std::size_t size;
    };
    const Case cases[] = {
        {PixelFormat::Dxt1, 64, 64, 2048}, {PixelFormat::Dxt1, 2, 1, 8},   {PixelFormat::Dxt3, 32, 16, 512},
        {PixelFormat::Dxt5, 4, 4, 16},     {PixelFormat::Rgb, 16, 8, 384}, {PixelFormat::Argb, 1, 1, 4},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(LevelSize(c.format, c.w, c.h), c.size);
        EXPECT_EQ(LevelPixels(c.format, c.w, c.h, "seed").size(), c.size);
    }
    EXPECT_EQ(LevelPixels(PixelFormat::Dxt1, 8, 8, "a"), LevelPixels(PixelFormat::Dxt1, 8, 8, "a"));
    EXPECT_NE(LevelPixels(PixelFormat::Dxt1, 8, 8, "a"), LevelPixels(PixelFormat::Dxt1, 8, 8, "b"));
    std::string bytes;
    for (int i = 0; i < 36; ++i) bytes += static_cast<char>(i);
    EXPECT_EQ(BlobText(bytes),
              "<d:blob d:size=\"36\">0001020304050607 08090A0B0C0D0E0F 1011121314151617 18191A1B1C1D1E1F\n"
              "20212223</d:blob>");
}

std::string TreeBytes(const fs::path& root) {
    std::map<std::string, std::string> files;
    for (const auto& entry : fs::recursive_directory_iterator(root))
        if (entry.is_regular_file()) files[fs::relative(entry.path(), root).string()] = ReadBytes(entry.path());
    std::string all;
    for (const auto& [name, bytes] : files) all += name + '\n' + bytes;
    return all;
}

TEST(SampleRuns, TwoRunsGiveIdenticalTrees) {
    testing::TempFolder folder;
    SampleResult first, second;
    ASSERT_FALSE(MakeSample(folder.path() / "a", {}, first));
    ASSERT_FALSE(MakeSample(folder.path() / "b", {}, second));
    EXPECT_EQ(first.files, second.files);
    EXPECT_EQ(TreeBytes(folder.path() / "a"), TreeBytes(folder.path() / "b"));
}

TEST(SampleRuns, ScaleOptionsSetTheCounts) {
    testing::TempFolder folder;
    SampleOptions options;
    options.tiles = 30;
    options.assets = 1003;
    SampleResult result;
    ASSERT_FALSE(MakeSample(folder.path(), options, result));
    const auto lines = ManifestLines(folder.path());
    ASSERT_FALSE(lines.empty());
    EXPECT_EQ(lines[0].fields, (std::vector<std::string>{"sample", "1", "30", "1003"}));
    const fs::path generated = folder.path() / "Assets/Brackenridge/Generated/Scenery";
    EXPECT_TRUE(fs::exists(generated / "Set_001/Item_01002.bin"));
    EXPECT_FALSE(fs::exists(generated / "Set_001/Item_01003.bin"));
    std::size_t tiles = 0;
    for (const auto& entry :
         fs::directory_iterator(folder.path() / "Content/Routes/3f6a2c1e-7b4d-4e8a-9c21-5d0e8b7a4f10/Scenery"))
        tiles += entry.path().filename().string().starts_with("+0000");
    EXPECT_EQ(tiles, 30u + 1u);  // the generated ones and one made by hand
}

TEST(SampleRuns, ANonEmptyFolderIsRefused) {
    testing::TempFolder folder;
    folder.write("keep.txt", "mine");
    SampleResult result;
    const auto failure = MakeSample(folder.path(), {}, result);
    ASSERT_TRUE(failure);
    EXPECT_NE(failure->find("is not empty"), std::string::npos);
    EXPECT_EQ(folder.read("keep.txt"), "mine");
}

TEST(SampleRuns, BrokenSourcesNameTheFileAndLine) {
    struct Case {
        const char* source;
        std::string from, to;  // the first `from` in the source becomes `to`
        const char* expected;
    };
    const Case cases[] = {
        {"blueprints/wagon.xml", "<Mass d:type", "<Mass d:typo", "sample source blueprints/wagon.xml, line 30:"},
        {"blueprints/wagon.xml", "</RailVehicleComponent>", "</RailVehicle>",
         "sample source blueprints/wagon.xml, line 46:"},
        {"common/guid.xml", "{{g.u0}}", "{{g.zz}}", "sample source common/guid.xml, line 3: unknown name {{g.zz}}"},
        {"common/far-matrix.xml", "{{y}}</Height>", "{{why}}</Height>", "far-matrix.xml, line 2: unknown name"},
        {"scenarios/consist.xml", "{{@$vehicles}}", "{{@scenarios/nowhere.xml}}",
         "sample source scenarios/nowhere.xml does not exist"},
        {"plan.txt", "set\t", "sett\t", "sample source plan.txt, line 5: unknown line kind sett"},
        {"plan.txt", "\tDXT1\t64\t64\t4", "\tDXT9\t64\t64\t4", "unknown texture format DXT9"},
        {"textures/level.xml", "{{blob}}", "{{blob", "sample source textures/level.xml, line 6: a {{ without }}"},
    };
    for (const Case& c : cases) {
        SourceSet sources = EmbeddedSources();
        std::string& text = sources.at(c.source);
        const std::size_t at = text.find(c.from);
        ASSERT_NE(at, std::string::npos) << c.source << ": " << c.from;
        text.replace(at, c.from.size(), c.to);
        testing::TempFolder folder;
        SampleResult result;
        const auto failure = MakeSample(folder.path() / "out", {}, result, sources);
        ASSERT_TRUE(failure) << c.source;
        EXPECT_NE(failure->find(c.expected), std::string::npos) << *failure;
    }
}

}  // namespace
}  // namespace ferrolund::sample
