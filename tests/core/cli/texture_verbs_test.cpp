// The texture commands of ferrolund-cli: there and back through files, and the answers to
// wrong arguments and bad files.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "generator/texture_sample.h"
#include "serz/codec.h"
#include "support/cli_run.h"
#include "support/temp_folder.h"

namespace fs = std::filesystem;
using namespace ferrolund;

namespace {

std::string Read(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

}  // namespace

TEST(TextureVerbs, ThereInfoAndBack) {
    ferrolund::testing::TempFolder temp;
    std::string binary;
    ASSERT_FALSE(serz::XmlToBinary(sample::TextureXml("HC_IMAGE_FORMAT_COMPRESSED_EXPL_ALPHA", 32, 16, 4), binary));
    const fs::path texture = temp.write("Strecke/Gleisbett_Ä.TgPcDx", binary);
    const std::string app = temp.system();

    const auto there = ferrolund::testing::Cli({"tex2dds", texture.string()}, app);
    ASSERT_EQ(there.code, 0) << there.err;
    const fs::path dds = temp.path() / "TempDDS" / "Gleisbett_Ä.dds";
    EXPECT_NE(there.out.find("DXT3 ARGB\t4 mip-maps"), std::string::npos) << there.out;
    ASSERT_TRUE(fs::exists(dds));

    const auto info = ferrolund::testing::Cli({"dds-info", dds.string()}, app);
    EXPECT_EQ(info.code, 0);
    EXPECT_NE(info.out.find("\tDXT3\t32 x 16\t4 mip-maps"), std::string::npos) << info.out;

    const auto back = ferrolund::testing::Cli({"dds2tex", dds.string(), texture.string()}, app);
    ASSERT_EQ(back.code, 0) << back.err;
    EXPECT_EQ(Read(texture), binary);
    EXPECT_TRUE(fs::exists(temp.path() / "Strecke/Gleisbett_Ä.TgPcDx.bak"));
}

TEST(TextureVerbs, WrongArgumentsAndBadFiles) {
    ferrolund::testing::TempFolder temp;
    const fs::path junk = temp.write("junk.TgPcDx", "not a texture");
    const fs::path gif = temp.write("picture.dds", "GIF89a");
    struct Case {
        std::vector<std::string> args;
        int code;
        std::string err;
    };
    const std::vector<Case> cases = {
        {{"tex2dds"}, 2, "usage: tex2dds FILE|FOLDER... [--out DIR]"},
        {{"tex2dds", junk.string(), "--out"}, 2, "usage: tex2dds"},
        {{"dds2tex", gif.string()}, 2, "usage: dds2tex DDS TGPCDX"},
        {{"dds-info"}, 2, "usage: dds-info FILE..."},
        {{"tex2dds", junk.string(), "--out", temp.system()}, 1, "This does not appear to be a .TgPcDx texture file?"},
        {{"dds2tex", gif.string(), junk.string()}, 1, "No header file found in TempFiles"},
        {{"dds-info", gif.string()}, 1, "This is not a .dds file."},
        {{"dds-info", (temp.path() / "absent.dds").string()}, 1, "Unable to read the file."},
    };
    for (const Case& c : cases) {
        const auto run = ferrolund::testing::Cli(c.args, temp.system());
        EXPECT_EQ(run.code, c.code) << c.args.front();
        EXPECT_NE(run.err.find(c.err), std::string::npos) << run.err;
    }
    EXPECT_EQ(Read(junk), "not a texture");
}
