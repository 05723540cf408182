// The default sample against its own manifest and its sources.
#include <gtest/gtest.h>
#include <zlib.h>

#include <cstdio>
#include <set>

#include "sample_fixture.h"
#include "serz/codec.h"
#include "tools/host_path.h"

namespace ferrolund::sample {
namespace {

namespace fs = std::filesystem;

std::string Crc(const std::string& bytes) {
    char text[12];
    std::snprintf(
        text, sizeof text, "%08lX",
        crc32(crc32(0L, Z_NULL, 0), reinterpret_cast<const Bytef*>(bytes.data()), static_cast<uInt>(bytes.size())));
    return text;
}

std::string Lower(std::string text) {
    for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return text;
}

TEST(Sample, EveryBinaryConvertsBackToItsSourceXml) {
    const SampleResult& made = SampleMade();
    ASSERT_GT(made.compiled.size(), 20u);
    std::map<std::string, std::map<std::string, std::string>> archives;
    for (const CompiledFile& file : made.compiled) {
        std::string binary;
        if (file.archive.empty()) {
            binary = ReadBytes(OnDisk(SampleRoot(), file.path));
        } else {
            if (!archives.count(file.archive))
                archives[file.archive] = ArchiveMembers(OnDisk(SampleRoot(), file.archive));
            binary = archives[file.archive][file.path];
        }
        ASSERT_EQ(binary.compare(0, 4, "SERZ"), 0) << file.path;
        std::string xml;
        const auto error = serz::BinaryToXml(binary, xml);
        ASSERT_FALSE(error) << file.path << ": " << error->message;
        EXPECT_EQ(xml, file.xml) << file.path << (file.archive.empty() ? "" : " in " + file.archive);
    }
}

TEST(Sample, ManifestMatchesTheDisk) {
    SampleMade();
    std::set<std::string> listed;
    std::size_t members = 0;
    for (const ManifestLine& line : ManifestLines(SampleRoot())) {
        const auto& f = line.fields;
        if (f[0] == "file") {
            ASSERT_EQ(f.size(), 4u);
            const std::string bytes = ReadBytes(OnDisk(SampleRoot(), f[1]));
            EXPECT_EQ(std::to_string(bytes.size()), f[2]) << f[1];
            EXPECT_EQ(Crc(bytes), f[3]) << f[1];
            listed.insert(OnDisk(SampleRoot(), f[1]).lexically_normal().string());
        } else if (f[0] == "member") {
            ASSERT_EQ(f.size(), 5u);
            const auto inside = ArchiveMembers(OnDisk(SampleRoot(), f[1]));
            ASSERT_TRUE(inside.count(f[2])) << f[1] << " lacks " << f[2];
            EXPECT_EQ(std::to_string(inside.at(f[2]).size()), f[3]);
            EXPECT_EQ(Crc(inside.at(f[2])), f[4]);
            ++members;
        }
    }
    std::set<std::string> onDisk;
    for (const auto& entry : fs::recursive_directory_iterator(SampleRoot()))
        if (entry.is_regular_file() && entry.path().filename() != kManifestName)
            onDisk.insert(entry.path().lexically_normal().string());
    EXPECT_EQ(onDisk, listed);
    EXPECT_EQ(SampleMade().files, listed.size() + members);
}

TEST(Sample, ReferenceStatesHoldOnTheDisk) {
    SampleMade();
    std::map<std::string, int> states;
    for (const ManifestLine& line : ManifestLines(SampleRoot())) {
        const auto& f = line.fields;
        if (f[0] != "reference") continue;
        ASSERT_EQ(f.size(), 6u);
        ++states[f[1]];
        std::string path = "Assets\\" + f[2] + "\\" + f[3] + "\\" + f[4];
        if (Lower(path).ends_with("xml")) path = path.substr(0, path.size() - 3) + "bin";
        const bool exact = fs::exists(OnDisk(SampleRoot(), path));
        const bool folded = fs::exists(tools::HostPath((SampleRoot().string() + "\\" + path)));
        SCOPED_TRACE(path);
        const bool expectExact = f[1] == "present", expectFolded = expectExact || f[1] == "case";
        EXPECT_EQ(exact, expectExact);
        EXPECT_EQ(folded, expectFolded);
    }
    for (const char* state : {"present", "case", "archived", "missing"}) EXPECT_GT(states[state], 0) << state;
}

TEST(Sample, RoutesAndScenariosAreAsListed) {
    SampleMade();
    std::map<std::string, std::string> forms;
    std::size_t scenarios = 0;
    for (const ManifestLine& line : ManifestLines(SampleRoot())) {
        const auto& f = line.fields;
        if (f[0] == "route") {
            ASSERT_GE(f.size(), 3u);
            forms[f[2]] += f[2] == "no-properties" ? "" : "x";
            const fs::path folder = OnDisk(SampleRoot(), "Content\\Routes\\" + f[1]);
            const bool properties = fs::exists(folder / "RouteProperties.xml");
            const bool archive = fs::exists(folder / "MainContent.ap");
            EXPECT_EQ(properties, f[2] == "loose") << f[1];
            EXPECT_EQ(archive && !properties, f[2] == "archive") << f[1];
            std::string text = properties ? ReadBytes(folder / "RouteProperties.xml") : std::string();
            if (archive) text = ArchiveMembers(folder / "MainContent.ap")["RouteProperties.xml"];
            if (f[2] != "no-properties") {
                ASSERT_EQ(f.size(), 4u);
                std::string escaped;
                for (const char c : f[3]) escaped += c == '&' ? std::string("&amp;") : std::string(1, c);
                EXPECT_NE(text.find(">" + escaped + "<"), std::string::npos) << f[3];
            }
        } else if (f[0] == "scenario") {
            ASSERT_EQ(f.size(), 5u);
            ++scenarios;
            const std::string text = ReadBytes(
                OnDisk(SampleRoot(), "Content\\Routes\\" + f[1] + "\\Scenarios\\" + f[2] + "\\ScenarioProperties.xml"));
            EXPECT_NE(text.find(">" + f[3] + "</ScenarioClass>"), std::string::npos) << f[2];
            EXPECT_NE(text.find("<English d:type=\"cDeltaString\">" + f[4] + "<"), std::string::npos) << f[2];
        }
    }
    EXPECT_EQ(forms, (std::map<std::string, std::string>{{"loose", "xx"}, {"archive", "x"}, {"no-properties", ""}}));
    EXPECT_GE(scenarios, 6u);
}

}  // namespace
}  // namespace ferrolund::sample
