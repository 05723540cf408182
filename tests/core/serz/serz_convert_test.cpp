// SerzConvert: the built-in codec and the outside command, both judged by the target.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "app/app_context.h"
#include "serz/codec.h"
#include "support/scripted_ui.h"
#include "support/temp_folder.h"
#include "tools/serz_convert.h"
#include "serz_test_support.h"

namespace ferrolund::tools {
namespace {

namespace fs = std::filesystem;

constexpr const char* kXml =
    "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n"
    "<cRoot xmlns:d=\"http://www.kuju.com/TnT/2003/Delta\" d:version=\"1.0\">\r\n"
    "\t<Name d:type=\"cDeltaString\">Gr\xC3\xBCn</Name>\r\n"
    "</cRoot>\r\n";

// Sets FERROLUND_SERZ for the life of the object.
class OutsideConverter {
public:
    explicit OutsideConverter(const std::string& prefix) { ::setenv("FERROLUND_SERZ", prefix.c_str(), 1); }
    ~OutsideConverter() { ::unsetenv("FERROLUND_SERZ"); }
};

class SerzConvertTest : public ::testing::Test {
protected:
    void SetUp() override {
        ::unsetenv("FERROLUND_SERZ");
        ASSERT_FALSE(serz::XmlToBinary(kXml, binary_));
        folder_.write("Scenery/Tile A.BIN", binary_);
        folder_.write("Scenery/Tile A.xml", kXml);
        ctx_.appRoot = folder_.system();
        ctx_.ui = &ui_;
    }
    // A system string below the folder, with backslashes and in any case.
    std::string sys(const std::string& relative) const { return folder_.system() + "\\" + relative; }
    std::string read(const std::string& relative) const { return serz::testing::ReadBytes(folder_.path() / relative); }

    ferrolund::testing::TempFolder folder_;
    ferrolund::testing::ScriptedUi ui_;
    app::AppContext ctx_;
    std::string binary_;
};

TEST_F(SerzConvertTest, BuiltInCodecBothWaysWithSystemPaths) {
    EXPECT_FALSE(SerzConvert(ctx_, sys("scenery\\tile a.bin"), sys("Scenery\\out.xml"), SerzDirection::ToXml));
    EXPECT_EQ(read("Scenery/out.xml"), kXml);
    EXPECT_FALSE(SerzConvert(ctx_, sys("Scenery\\out.xml"), sys("Scenery\\out.bin"), SerzDirection::ToBinary));
    EXPECT_TRUE(read("Scenery/out.bin") == binary_);
    EXPECT_TRUE(ui_.shown.empty());
}

TEST_F(SerzConvertTest, FailureLeavesNoTargetNotEvenAnOldOne) {
    folder_.write("old.xml", "an old result");
    auto status = SerzConvert(ctx_, sys("Scenery\\Tile A.xml"), sys("old.xml"), SerzDirection::ToXml);
    ASSERT_TRUE(status);
    EXPECT_NE(status->description.find("not a serialised binary file"), std::string::npos) << status->description;
    EXPECT_FALSE(fs::exists(folder_.path() / "old.xml"));
    EXPECT_FALSE(fs::exists(folder_.path() / "old.xml.partial"));

    status = SerzConvert(ctx_, sys("missing.bin"), sys("new.xml"), SerzDirection::ToXml);
    ASSERT_TRUE(status);
    EXPECT_EQ(status->number, base::err::kFileNotFound);
    EXPECT_FALSE(fs::exists(folder_.path() / "new.xml"));
}

TEST_F(SerzConvertTest, CommandLineOfTheOutsideConverter) {
    EXPECT_EQ(SerzCommandLine("wine C:\\serz.exe", "a b\\c.bin", "d\\e.xml", SerzDirection::ToXml),
              "wine C:\\serz.exe \"a b\\c.bin\" xml:\"d\\e.xml\"");
    EXPECT_EQ(SerzCommandLine("serz", "c.xml", "c.bin", SerzDirection::ToBinary), "serz \"c.xml\" bin:\"c.bin\"");
}

// A stand-in for the outside converter: it notes its words and writes what it is told.
std::string FakeConverter(const ferrolund::testing::TempFolder& folder, const std::string& output) {
    folder.write("fake-serz.sh",
                 "printf '%s\\n' \"$@\" > \"" + (folder.path() / "words.txt").string() + "\"\n"
                 "target=\"${2#*:}\"\n"
                 "printf '" + output + "' > \"$target\"\n");
    return "/bin/sh \"" + (folder.path() / "fake-serz.sh").string() + "\"";
}

TEST_F(SerzConvertTest, OutsideConverterIsRunAndJudgedByItsOutput) {
    OutsideConverter outside(FakeConverter(folder_, "converted"));
    EXPECT_FALSE(SerzConvert(ctx_, sys("Scenery\\tile a.bin"), sys("Scenery\\out.xml"), SerzDirection::ToXml));
    EXPECT_EQ(read("Scenery/out.xml"), "converted");
    std::string expectedWords = (folder_.path() / "Scenery" / "Tile A.BIN").string() + "\n" + "xml:" +
                                (folder_.path() / "Scenery" / "out.xml").string() + "\n";
    EXPECT_EQ(read("words.txt"), expectedWords);
    EXPECT_EQ(ctx_.workingFolder, ctx_.appRoot);
}

TEST_F(SerzConvertTest, OutsideConverterWithEmptyOutputFails) {
    OutsideConverter outside(FakeConverter(folder_, ""));
    auto status = SerzConvert(ctx_, sys("Scenery\\Tile A.xml"), sys("out.bin"), SerzDirection::ToBinary);
    ASSERT_TRUE(status);
    EXPECT_NE(status->description.find("no output"), std::string::npos);
}

TEST_F(SerzConvertTest, ReadingInMemory) {
    std::string xml;
    EXPECT_FALSE(SerzReadXml(ctx_, sys("Scenery\\TILE A.bin"), xml));
    EXPECT_EQ(xml, kXml);
    EXPECT_TRUE(SerzReadXml(ctx_, sys("Scenery\\Tile A.xml"), xml));
    EXPECT_TRUE(xml.empty());
    EXPECT_TRUE(SerzReadXml(ctx_, sys("nothing.bin"), xml));
}

TEST_F(SerzConvertTest, ReadingThroughTheOutsideConverter) {
    OutsideConverter outside(FakeConverter(folder_, "<text/>"));
    std::string xml;
    EXPECT_FALSE(SerzReadXml(ctx_, sys("Scenery\\Tile A.BIN"), xml));
    EXPECT_EQ(xml, "<text/>");
    EXPECT_FALSE(fs::exists(folder_.path() / "TempFiles" / "serz-read.xml"));
}

}  // namespace
}  // namespace ferrolund::tools
