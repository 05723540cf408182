// The real files: the converter's own pairs in each direction their origin allows, and
// the whole sample route through binary, XML, binary and XML again.
#include <gtest/gtest.h>

#include <cctype>

#include "serz/codec.h"
#include "serz_test_support.h"

namespace ferrolund::serz {
namespace {

using testing::ReadBytes;
using testing::SerzSamples;
using testing::WithLf;

struct Pair {
    const char* from;
    const char* to;
};

std::string PairName(const ::testing::TestParamInfo<Pair>& info) {
    std::string name = info.param.from;
    for (char& c : name) {
        if (!std::isalnum(static_cast<unsigned char>(c))) c = '_';
    }
    return name;
}

class SerzRealFiles : public ::testing::TestWithParam<Pair> {
protected:
    void SetUp() override {
        if (!std::filesystem::is_directory(testing::SerzSamples())) {
            GTEST_SKIP() << "the shared test data folder " << testing::SerzSamples() << " is absent";
        }
    }
};

using SerzSampleToXml = SerzRealFiles;
using SerzSampleToBinary = SerzRealFiles;

TEST_P(SerzSampleToXml, GivesTheConvertersText) {
    std::string xml;
    auto status = BinaryToXml(ReadBytes(testing::SerzSamples() / GetParam().from), xml);
    ASSERT_FALSE(status) << status->message;
    EXPECT_TRUE(testing::AllCrLf(xml));
    EXPECT_EQ(WithLf(xml), ReadBytes(testing::SerzSamples() / GetParam().to));
}

// Every sample's XML was written by the converter, game-written binaries included.
INSTANTIATE_TEST_SUITE_P(SerzPairs, SerzSampleToXml,
                         ::testing::Values(Pair{"route-properties.bin", "route-properties.xml"},
                                           Pair{"scenery-item.bin", "scenery-item.xml"},
                                           Pair{"const-test.bin", "const-test.xml"},
                                           Pair{"scenery-tile.bin", "scenery-tile.xml"},
                                           Pair{"scenario-small.bin", "scenario-small.xml"},
                                           Pair{"scenario-game.bin", "scenario-game.xml"}),
                         PairName);

TEST_P(SerzSampleToBinary, GivesTheConvertersBytes) {
    std::string binary;
    auto status = XmlToBinary(ReadBytes(testing::SerzSamples() / GetParam().from), binary);
    ASSERT_FALSE(status) << status->message;
    std::string expected = ReadBytes(testing::SerzSamples() / GetParam().to);
    ASSERT_EQ(binary.size(), expected.size());
    EXPECT_TRUE(binary == expected) << "same length, different bytes";
}

// Only binaries the converter wrote; scenario-game.bin came from the game itself.
INSTANTIATE_TEST_SUITE_P(SerzPairs, SerzSampleToBinary,
                         ::testing::Values(Pair{"route-properties.xml", "route-properties.bin"},
                                           Pair{"scenery-item.xml", "scenery-item.bin"},
                                           Pair{"const-test.xml", "const-test.bin"},
                                           Pair{"scenario-small.xml", "scenario-small.bin"},
                                           Pair{"scenario-game.xml", "scenario-game.serz.bin"}),
                         PairName);

TEST(SerzSample, ConverterWrittenBinaryRoundTripsUnchanged) {
    if (!std::filesystem::is_directory(testing::SerzSamples())) {
        GTEST_SKIP() << "the shared test data folder " << testing::SerzSamples() << " is absent";
    }
    for (const char* name : {"scenario-game.serz.bin", "route-properties.bin", "scenario-small.bin"}) {
        std::string original = ReadBytes(testing::SerzSamples() / name);
        std::string xml, binary;
        ASSERT_FALSE(BinaryToXml(original, xml)) << name;
        ASSERT_FALSE(XmlToBinary(xml, binary)) << name;
        EXPECT_TRUE(binary == original) << name;
    }
}

// Removes the d:alt_encoding attributes, which keep the digits that a game-written float
// has beyond what the text shows.
std::string WithoutAltEncoding(const std::string& xml) {
    std::string out;
    out.reserve(xml.size());
    std::size_t at = 0;
    constexpr std::string_view kAttribute = " d:alt_encoding=\"";
    for (;;) {
        std::size_t found = xml.find(kAttribute, at);
        if (found == std::string::npos) break;
        out.append(xml, at, found - at);
        at = xml.find('"', found + kAttribute.size()) + 1;
    }
    out.append(xml, at, std::string::npos);
    return out;
}

TEST(SerzSample, RouteFilesReachAFixedPointAfterOnePass) {
    if (!std::filesystem::is_directory(testing::RouteSamples())) {
        GTEST_SKIP() << "the shared test data folder " << testing::RouteSamples() << " is absent";
    }
    int files = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(testing::RouteSamples())) {
        std::string extension = entry.path().extension().string();
        if (extension != ".bin" && extension != ".TgPcDx") continue;
        SCOPED_TRACE(entry.path().string());
        ++files;
        std::string xml1, binary2, xml2, binary3, xml3;
        auto status = BinaryToXml(ReadBytes(entry.path()), xml1);
        ASSERT_FALSE(status) << status->message;
        ASSERT_FALSE(XmlToBinary(xml1, binary2));
        ASSERT_FALSE(BinaryToXml(binary2, xml2));
        EXPECT_TRUE(WithoutAltEncoding(xml1) == WithoutAltEncoding(xml2));
        ASSERT_FALSE(XmlToBinary(xml2, binary3));
        ASSERT_FALSE(BinaryToXml(binary3, xml3));
        EXPECT_TRUE(binary3 == binary2);
        EXPECT_TRUE(xml3 == xml2);
    }
    EXPECT_GT(files, 40);
}

}  // namespace
}  // namespace ferrolund::serz
