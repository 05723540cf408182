// Texture conversion: .dds headers, the way there and back on generated and real files, and
// bad inputs that must leave every file as it was.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>

#include "generator/texture_sample.h"
#include "serz/codec.h"
#include "support/locked_folder.h"
#include "support/temp_folder.h"
#include "textures/tgpcdx_dds.h"

namespace fs = std::filesystem;
using namespace ferrolund;
using namespace ferrolund::textures;

namespace {

constexpr const char* kDxt1 = "HC_IMAGE_FORMAT_COMPRESSED";
constexpr const char* kDxt3 = "HC_IMAGE_FORMAT_COMPRESSED_EXPL_ALPHA";
constexpr const char* kDxt5 = "HC_IMAGE_FORMAT_COMPRESSED_INTERP_ALPHA";
constexpr const char* kRgb = "HC_IMAGE_FORMAT_COL888";
constexpr const char* kArgb = "HC_IMAGE_FORMAT_COLA8888";

std::string Binary(const std::string& xml) {
    std::string binary;
    EXPECT_FALSE(serz::XmlToBinary(xml, binary));
    return binary;
}

std::string Read(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

unsigned Byte(const std::string& bytes, std::size_t offset) { return static_cast<unsigned char>(bytes[offset]); }

// Every file below `folder` with its bytes, to show a failed command changed nothing.
std::map<std::string, std::string> Snapshot(const fs::path& folder) {
    std::map<std::string, std::string> files;
    for (const auto& entry : fs::recursive_directory_iterator(folder))
        if (entry.is_regular_file()) files[entry.path().string()] = Read(entry.path());
    return files;
}

}  // namespace

TEST(DdsHeader, FollowsTheFormatSizeAndLevels) {
    struct Case {
        const char* tag;
        unsigned width, height, levels;
        std::vector<std::pair<std::size_t, unsigned>> bytes;  // offset, value
    };
    const std::vector<Case> cases = {
        {kDxt1, 256, 128, 1, {{8, 0x09}, {9, 0x10}, {10, 0x08}, {12, 128}, {16, 0}, {17, 1}, {20, 0x00}, {21, 0x40},
                              {28, 1}, {76, 0x20}, {80, 4}, {84, 'D'}, {87, '1'}, {108, 0}, {109, 0}, {110, 0}}},
        {kDxt3, 64, 64, 7, {{10, 0x0A}, {21, 0x10}, {28, 7}, {87, '3'}, {108, 8}, {109, 0x10}, {110, 0x40}}},
        {kDxt5, 2048, 2048, 2, {{10, 0x0A}, {13, 8}, {17, 8}, {20, 0}, {22, 0x40}, {87, '5'}, {108, 8}}},
        {kArgb, 512, 512, 10, {{10, 0x0A}, {20, 0}, {21, 0x10}, {22, 0}, {28, 10}, {80, 0x41}, {84, 0}, {88, 0x20},
                                {94, 0xFF}, {97, 0xFF}, {100, 0xFF}, {107, 0xFF}, {108, 0}, {109, 0x10}}},
        {kRgb, 16, 8, 1, {{10, 0x08}, {21, 0}, {22, 0x40}, {80, 0x41}, {88, 0x20}, {109, 0x10}}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.tag) + " levels " + std::to_string(c.levels));
        const std::string xml = sample::TextureXml(c.tag, c.width, c.height, c.levels);
        TextureImage image;
        ASSERT_EQ(ReadTextureXml(xml, image), "");
        const std::string header = DdsHeader(image);
        ASSERT_EQ(header.size(), 128u);
        EXPECT_EQ(header.substr(0, 5), std::string("DDS \x7C", 5));
        for (const auto& [offset, value] : c.bytes) EXPECT_EQ(Byte(header, offset), value) << "offset " << offset;
        std::string error;
        const std::string dds = MakeDds(xml, image, error);
        EXPECT_EQ(error, "");
        EXPECT_EQ(dds.size(), 128 + image.PixelBytes());
    }
}

TEST(TextureConversion, EveryFormatGoesThereAndBackUnchanged) {
    struct Case {
        const char* tag;
        unsigned levels;
    };
    for (const Case c : {Case{kDxt1, 1}, Case{kDxt3, 5}, Case{kDxt5, 9}, Case{kRgb, 3}, Case{kArgb, 16}}) {
        SCOPED_TRACE(c.tag);
        ferrolund::testing::TempFolder temp;
        const std::string original = Binary(sample::TextureXml(c.tag, 64, 32, c.levels, 7));
        const fs::path source = temp.write("Tëxturé/Bahnhöf.TgPcDx", original);
        const ConversionResult there = TgPcDxToDds(source.string(), (temp.path() / "TempDDS").string());
        ASSERT_EQ(there.error, "");
        EXPECT_EQ(there.mipCount, c.levels);
        EXPECT_EQ(there.label, FindFormat(c.tag)->label);
        EXPECT_TRUE(fs::exists(temp.path() / "TempDDS/Bahnhöf.dat"));
        const ConversionResult back = DdsToTgPcDx(there.output, source.string());
        ASSERT_EQ(back.error, "");
        EXPECT_EQ(Read(source), original);
        EXPECT_EQ(Read(back.backup), original);  // the old file kept as a back-up
        EXPECT_FALSE(fs::exists(temp.path() / "TempDDS/Bahnhöf.bin"));
    }
}

TEST(TextureConversion, EditedPixelsReachTheTexture) {
    ferrolund::testing::TempFolder temp;
    const fs::path source = temp.write("a.TgPcDx", Binary(sample::TextureXml(kDxt5, 8, 8, 2)));
    const ConversionResult there = TgPcDxToDds(source.string(), temp.system());
    ASSERT_EQ(there.error, "");
    std::string dds = Read(there.output);
    for (std::size_t i = 128; i < dds.size(); ++i) dds[i] = static_cast<char>(i);
    std::ofstream(there.output, std::ios::binary) << dds;
    ASSERT_EQ(DdsToTgPcDx(there.output, (temp.path() / "b.TgPcDx").string()).error, "");
    std::string xml;
    ASSERT_FALSE(serz::BinaryToXml(Read(temp.path() / "b.TgPcDx"), xml));
    TextureImage image;
    ASSERT_EQ(ReadTextureXml(xml, image), "");
    std::string error;
    EXPECT_EQ(MakeDds(xml, image, error), dds);
}

TEST(TextureConversion, QuotesAroundThePixelsComeBackFromHashes) {
    const std::string xml = sample::TextureXml(kDxt1, 4, 4, 1, 1, "say \"cheese\" #1");
    TextureImage image;
    ASSERT_EQ(ReadTextureXml(xml, image), "");
    const std::string side = SideFileText(image);
    EXPECT_EQ(side.find("\"cheese"), std::string::npos);
    TextureImage read;
    ASSERT_TRUE(ReadSideFile(side, read));
    std::string error;
    const std::string rebuilt = RebuildXml(read, MakeDds(xml, image, error));
    EXPECT_NE(rebuilt.find("say \"cheese\" \"1"), std::string::npos);
}

TEST(TextureConversion, RefusesWhatItCannotConvert) {
    struct Case {
        std::string xml;
        std::string message;
    };
    const std::string dxt = sample::TextureXml(kDxt1, 4, 4, 1);
    std::string shortBlob = dxt;
    shortBlob.replace(shortBlob.find("d:size=\"8\""), 10, "d:size=\"9\"");
    std::string badHex = dxt;
    badHex[badHex.find("</d:blob") - 1] = 'G';
    const std::vector<Case> cases = {
        {sample::TextureXml(kDxt1, 4, 4, 17), std::string(kUnableToConvert) + "\n" + kMultipleTexture},
        {sample::TextureXml("HC_IMAGE_FORMAT_PALETTE8", 4, 4, 1), std::string(kUnableToConvert) + "\nHC_IMAGE_FORMAT_PALETTE8"},
        {"<cRecordSet><Record/></cRecordSet>", kNotATexture},
        {"<x><Format>HC_IMAGE_FORMAT_COMPRESSED</Format></x>", kNotATexture},
        {shortBlob, "Level 1 of the texture is shorter than its 9 bytes."},
        {badHex, "Level 1 of the texture holds more than its 8 bytes or a character that is no hex digit."},
    };
    for (const Case& c : cases) {
        TextureImage image;
        std::string message = ReadTextureXml(c.xml, image);
        if (message.empty()) MakeDds(c.xml, image, message);
        EXPECT_EQ(message, c.message);
    }
    TextureImage sixteen;
    EXPECT_EQ(ReadTextureXml(sample::TextureXml(kDxt1, 4, 4, 16), sixteen), "");
}

TEST(TextureConversion, BadFilesChangeNothing) {
    struct Case {
        const char* name;
        std::string source;                       // the .TgPcDx to convert, empty: made from a texture
        void (*spoil)(const fs::path& dds);       // what is done to the .dds before the way back
        std::string message;
    };
    const std::string mismatch =
        "The .dds file no longer matches the texture it was made from. It must be saved as DXT5 ARGB, 16 x 16, with 3 "
        "mip-maps.";
    const std::vector<Case> cases = {
        {"not a serz file", "plain text", nullptr, kNotATexture},
        {"truncated blob", Binary(sample::TextureXml(kDxt5, 16, 16, 3)).substr(0, 300), nullptr, kNotATexture},
        {"serz but no texture", Binary("<cRecordSet><Record/></cRecordSet>"), nullptr, kNotATexture},
        {"truncated .dds", "", [](const fs::path& p) { fs::resize_file(p, fs::file_size(p) - 16); }, mismatch},
        {"longer .dds", "", [](const fs::path& p) { fs::resize_file(p, fs::file_size(p) + 16); }, mismatch},
        {"other format", "", [](const fs::path& p) { std::fstream f(p, std::ios::in | std::ios::out | std::ios::binary); f.seekp(87); f.put('1'); }, mismatch},
        {"other level count", "", [](const fs::path& p) { std::fstream f(p, std::ios::in | std::ios::out | std::ios::binary); f.seekp(28); f.put(2); }, mismatch},
        {"not a .dds", "", [](const fs::path& p) { std::ofstream(p, std::ios::binary) << "GIF89a"; }, "This is not a .dds file."},
        {"no side file", "", [](const fs::path& p) { fs::remove(fs::path(p).replace_extension(".dat")); }, kNoSideFile},
        {"broken side file", "", [](const fs::path& p) { std::ofstream(fs::path(p).replace_extension(".dat")) << "3\r\n\"abc"; }, kNoSideFile},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        ferrolund::testing::TempFolder temp;
        const std::string original = c.source.empty() ? Binary(sample::TextureXml(kDxt5, 16, 16, 3)) : c.source;
        const fs::path source = temp.write("route/Zürich.TgPcDx", original);
        const ConversionResult there = TgPcDxToDds(source.string(), (temp.path() / "TempDDS").string());
        if (!c.spoil) {
            EXPECT_EQ(there.error, c.message);
            EXPECT_FALSE(fs::exists(temp.path() / "TempDDS"));
            continue;
        }
        ASSERT_EQ(there.error, "");
        c.spoil(there.output);
        const auto before = Snapshot(temp.path());
        EXPECT_EQ(DdsToTgPcDx(there.output, source.string()).error, c.message);
        EXPECT_EQ(Snapshot(temp.path()), before);
    }
}

TEST(TextureConversion, WrongExtensionIsRefused) {
    ferrolund::testing::TempFolder temp;
    const fs::path source = temp.write("a.bin", Binary(sample::TextureXml(kDxt1, 4, 4, 1)));
    EXPECT_EQ(TgPcDxToDds(source.string(), temp.system()).error, kNotTgPcDx);
}

TEST(TextureConversion, ReadOnlyTargetKeepsTheOriginal) {
    ferrolund::testing::TempFolder temp;
    const std::string original = Binary(sample::TextureXml(kDxt3, 8, 8, 2));
    const fs::path source = temp.write("route/t.TgPcDx", original);
    const ConversionResult there = TgPcDxToDds(source.string(), (temp.path() / "TempDDS").string());
    ASSERT_EQ(there.error, "");
    std::string dds = Read(there.output);
    dds.back() ^= 0x5A;
    std::ofstream(there.output, std::ios::binary) << dds;
    {
        ferrolund::testing::LockedFolder lock(temp.path() / "route");
        if (!lock.locked()) GTEST_SKIP() << "the folder cannot be locked against this user";
        EXPECT_NE(DdsToTgPcDx(there.output, source.string()).error, "");
    }
    EXPECT_EQ(Read(source), original);
    EXPECT_EQ(fs::directory_iterator(temp.path() / "route")->path().filename(), "t.TgPcDx");
    EXPECT_FALSE(fs::exists(temp.path() / "TempDDS/t.bin"));
}
