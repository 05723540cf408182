#include <gtest/gtest.h>

#include <sstream>

#include "cli/cli.h"
#include "generator/make_sample.h"
#include "support/temp_folder.h"

namespace ferrolund::cli {
namespace {

TEST(MakeSampleVerb, ArgumentsAndOutcome) {
    testing::TempFolder root;
    const std::string dir = (root.path() / "Sample").string();
    struct Case {
        std::vector<std::string> args;
        int code;
        std::string inOut, inErr;
    };
    const Case cases[] = {
        {{"make-sample"}, 2, "", "usage: ferrolund-cli make-sample DIR"},
        {{"make-sample", dir, "--tiles"}, 2, "", "--tiles needs a count"},
        {{"make-sample", dir, "--assets", "many"}, 2, "", "--assets needs a count"},
        {{"make-sample", dir, "--tiles", "-3"}, 2, "", "--tiles needs a count"},
        {{"make-sample", dir, "extra"}, 2, "", "unexpected extra"},
        {{"make-sample", dir, "--scenario-mb", "x"}, 2, "", "--scenario-mb needs a count"},
        {{"make-sample", dir, "--tiles", "2", "--assets", "3", "--scenario-mb", "2"}, 0,
         "Sample installation written to " + dir, ""},
        {{"make-sample", dir}, 1, "", "is not empty"},
    };
    for (const Case& c : cases) {
        std::ostringstream out, err;
        EXPECT_EQ(RunCli(c.args, root.system(), out, err), c.code) << c.args.size();
        EXPECT_NE(out.str().find(c.inOut), std::string::npos) << out.str();
        EXPECT_NE(err.str().find(c.inErr), std::string::npos) << err.str();
    }
    EXPECT_TRUE(std::filesystem::exists(root.path() / "Sample" / sample::kManifestName));
    // The busy scenario grew to the size asked for: about 2 MB of XML, under half that as binary.
    const auto busy = root.path() / "Sample" / "Content" / "Routes" / "3f6a2c1e-7b4d-4e8a-9c21-5d0e8b7a4f10" /
                      "Scenarios" / "c4e8a1b2-9d3f-4a5e-b6c7-d8e9f0a1b2c3";
    EXPECT_GT(std::filesystem::file_size(busy / "Scenario.bin"), 200'000u);
    EXPECT_EQ(std::filesystem::file_size(busy / "CurrentSave.bin"), std::filesystem::file_size(busy / "Scenario.bin"));
}

}  // namespace
}  // namespace ferrolund::cli
