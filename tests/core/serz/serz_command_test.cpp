// The serz command: its argument forms, and on failure one line, a non-zero exit and no
// file at the target, partial or whole.
#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include "serz/codec.h"
#include "serz/serz_command.h"
#include "support/temp_folder.h"
#include "serz_test_support.h"

namespace ferrolund::serz {
namespace {

namespace fs = std::filesystem;

constexpr const char* kXml =
    "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n"
    "<cRoot xmlns:d=\"http://www.kuju.com/TnT/2003/Delta\" d:version=\"1.0\" d:id=\"3\">\r\n"
    "\t<V d:type=\"sInt32\">-12</V>\r\n"
    "</cRoot>\r\n";

class SerzCommand : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_FALSE(XmlToBinary(kXml, binary_));
        folder_.write("in.bin", binary_);
        folder_.write("in.xml", kXml);
        folder_.write("In Folder/Stock.XML", kXml);
        folder_.write("x.proxybin", binary_);
        folder_.write("broken.bin", std::string("SERZ\0\0\x01\0\xFF\x50", 10));
    }
    std::string at(const std::string& name) const { return (folder_.path() / name).string(); }
    int run(const std::vector<std::string>& args) {
        err_.str("");
        return RunSerzCommand(args, err_);
    }
    // No file beside the ones made in SetUp, and none with a temporary name.
    bool onlyFilesOfSetUp(std::size_t extra = 0) const {
        std::size_t count = 0;
        for (const auto& entry : fs::recursive_directory_iterator(folder_.path())) {
            if (entry.is_regular_file()) ++count;
            if (entry.path().string().find(".partial") != std::string::npos) return false;
        }
        return count == 5 + extra;
    }

    ferrolund::testing::TempFolder folder_;
    std::string binary_;
    std::ostringstream err_;
};

TEST_F(SerzCommand, TargetFormsAndDirections) {
    struct Case {
        std::vector<std::string> args;
        const char* target;
        bool toXml;
    };
    const std::vector<Case> cases = {
        {{at("in.bin"), "xml:" + at("a.xml")}, "a.xml", true},
        {{at("in.bin"), "/xml:" + at("b.xml")}, "b.xml", true},
        {{at("in.bin"), "XML:" + at("c.xml")}, "c.xml", true},
        {{at("in.xml"), "bin:" + at("d.bin")}, "d.bin", false},
        {{at("in.xml"), "/bin:" + at("e.bin")}, "e.bin", false},
        {{at("In Folder/Stock.XML")}, "In Folder/Stock.BIN", false},
        {{at("x.proxybin")}, "x.proxyxml", true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.target);
        ASSERT_EQ(run(c.args), 0) << err_.str();
        EXPECT_EQ(err_.str(), "");
        std::string written = testing::ReadBytes(at(c.target));
        EXPECT_TRUE(written == (c.toXml ? std::string(kXml) : binary_));
    }
}

TEST_F(SerzCommand, OnlyASourceSwapsTheEndingOfItsName) {
    fs::remove(at("in.xml"));
    ASSERT_EQ(run({at("in.bin")}), 0) << err_.str();
    EXPECT_EQ(testing::ReadBytes(at("in.xml")), kXml);
}

TEST_F(SerzCommand, WrongUseGivesUsageAndWritesNothing) {
    const std::vector<std::vector<std::string>> cases = {
        {},
        {""},
        {at("in.bin"), "xml:" + at("a.xml"), "extra"},
        {at("in.bin"), "txt:" + at("a.xml")},
        {at("in.bin"), "xml:"},
        {at("broken.bin").substr(0, at("broken.bin").size() - 4)},  // no ending to swap
    };
    for (const auto& args : cases) {
        EXPECT_EQ(run(args), 2) << (args.empty() ? "" : args[0]);
        EXPECT_FALSE(err_.str().empty());
        EXPECT_TRUE(onlyFilesOfSetUp());
    }
}

TEST_F(SerzCommand, FailureIsOneLineNamingTheFileAndLeavesNoTarget) {
    struct Case {
        std::vector<std::string> args;
        std::string mentions;
    };
    const std::vector<Case> cases = {
        {{at("broken.bin"), "xml:" + at("out.xml")}, at("broken.bin") + ": at byte 10: the file is truncated"},
        {{at("missing.bin"), "xml:" + at("out.xml")}, at("missing.bin") + ": No such file or directory"},
        {{at("in.bin"), "bin:" + at("out.bin")}, at("in.bin") + ": line 1: "},  // binary read as XML
        {{at("in.xml"), "xml:" + at("out.xml")}, "not a serialised binary file"},
        {{at("in.bin"), "xml:" + at("no such folder/out.xml")}, at("no such folder/out.xml") + ": "},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.args[0]);
        EXPECT_EQ(run(c.args), 1);
        std::string message = err_.str();
        EXPECT_EQ(message.rfind("serz: ", 0), 0u) << message;
        EXPECT_NE(message.find(c.mentions), std::string::npos) << message;
        EXPECT_EQ(message.find('\n'), message.size() - 1) << message;
        EXPECT_FALSE(fs::exists(at("out.xml")));
        EXPECT_FALSE(fs::exists(at("out.bin")));
        EXPECT_TRUE(onlyFilesOfSetUp());
    }
}

}  // namespace
}  // namespace ferrolund::serz
