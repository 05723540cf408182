#include "services/crc.h"

#include <gtest/gtest.h>
#include <zlib.h>

#include <random>

#include "core/tools/testdata_file.h"
#include "support/temp_folder.h"

namespace ferrolund::services {
namespace {

// Bit by bit, without tables: the definitions the class's table loops must agree with.
std::uint32_t PlainCrc32(std::string_view bytes) {
    std::uint32_t crc = 0xFFFFFFFF;
    for (unsigned char b : bytes) {
        crc ^= b;
        for (int k = 0; k < 8; ++k) crc = (crc & 1) ? (crc >> 1) ^ 0xEDB88320u : crc >> 1;
    }
    return ~crc;
}

std::uint32_t PlainCrc16(std::string_view bytes) {
    std::uint32_t crc = 0;
    for (unsigned char b : bytes) {
        crc ^= static_cast<std::uint32_t>(b) << 8;
        for (int k = 0; k < 8; ++k) crc = (crc & 0x8000) ? ((crc << 1) ^ 0x1021) & 0xFFFF : (crc << 1) & 0xFFFF;
    }
    return crc;
}

std::string RandomBytes(std::size_t n, unsigned seed) {
    std::mt19937 rng(seed);
    std::string s(n, '\0');
    for (auto& c : s) c = static_cast<char>(rng());
    return s;
}

TEST(clsCRC, CheckValues) {
    clsCRC crc;
    EXPECT_EQ(crc.CalculateString("123456789"), 0x31C3u);
    crc.Algorithm(1);
    EXPECT_EQ(crc.CalculateString("123456789"), 0xCBF43926u);
    EXPECT_EQ(crc.CalculateString(""), 0u);
}

TEST(clsCRC, AgreesWithTheDefinitionsForEveryLengthAndSplit) {
    const std::string data = RandomBytes(300, 1);
    clsCRC crc16;
    clsCRC crc32;
    crc32.Algorithm(-1);
    for (std::size_t length : {0, 1, 7, 8, 9, 15, 16, 17, 63, 64, 65, 299}) {
        const std::string_view part(data.data(), length);
        EXPECT_EQ(crc16.CalculateBytes(part), PlainCrc16(part)) << length;
        EXPECT_EQ(crc32.CalculateBytes(part), PlainCrc32(part)) << length;
        for (std::size_t split : {std::size_t{1}, std::size_t{3}, length / 2}) {
            if (split > length) continue;
            crc32.Clear();
            crc32.AddBytes(part.substr(0, split));
            EXPECT_EQ(crc32.AddBytes(part.substr(split)), PlainCrc32(part)) << length << " split " << split;
            crc16.Clear();
            crc16.AddBytes(part.substr(0, split));
            EXPECT_EQ(crc16.AddBytes(part.substr(split)), PlainCrc16(part)) << length << " split " << split;
        }
    }
    // Unaligned starts inside a buffer.
    for (std::size_t offset = 1; offset < 8; ++offset) {
        const std::string_view part(data.data() + offset, 100);
        EXPECT_EQ(crc32.CalculateBytes(part), PlainCrc32(part)) << offset;
    }
}

TEST(clsCRC, RegistersAlgorithmAndTables) {
    clsCRC crc;
    EXPECT_EQ(crc.Algorithm(), 0);
    EXPECT_EQ(crc.TableBuilds(), 1);
    crc.Algorithm(1);
    EXPECT_EQ(crc.Algorithm(), -1);
    crc.Algorithm(7);
    EXPECT_EQ(crc.TableBuilds(), 2) << "two lets of CRC-32 build its table once";
    crc.Clear();
    EXPECT_EQ(crc.Value(), 0u);

    crc.AddString("abc");
    crc.Algorithm(-1);
    EXPECT_EQ(crc.Value(), 0u) << "a let of the algorithm clears";
    crc.AddBytes(nullptr, 0);
    EXPECT_EQ(crc.Value(), 0u) << "no bytes change nothing";

    crc.Value(0);
    EXPECT_EQ(crc.Value(), 0xFFFFFFFFu) << "the let stores the register as it stands";
    crc.Algorithm(0);
    crc.Value(0x1234);
    EXPECT_EQ(crc.Value(), 0x1234u);
    EXPECT_EQ(crc.TableBuilds(), 2);
}

TEST(clsCRC, FilesAndTheirFailures) {
    testing::TempFolder folder;
    const std::string big = RandomBytes((3 << 20) + 13, 2);  // crosses the read buffer
    folder.write("Big.bin", big);
    folder.write("Empty.bin", "");
    folder.write("Sub/x.txt", "x");
    clsCRC crc;
    crc.Algorithm(1);
    EXPECT_EQ(crc.CalculateFile(folder.system() + "\\BIG.BIN"),
              static_cast<std::uint32_t>(::crc32(0, reinterpret_cast<const Bytef*>(big.data()),
                                                 static_cast<uInt>(big.size()))));
    EXPECT_FALSE(crc.CalculateFile(folder.system() + "\\Empty.bin")) << "an empty file gives no number";
    EXPECT_FALSE(crc.CalculateFile(folder.system() + "\\Missing.bin"));
    EXPECT_FALSE(crc.CalculateFile(folder.system() + "\\Sub")) << "a folder gives no number";
    crc.Algorithm(0);
    EXPECT_EQ(crc.CalculateFile(folder.system() + "\\sub\\X.TXT"), PlainCrc16("x"));
}

TEST(clsCRC, RealGameFileMatchesZlib) {
    const std::string relative = "routes/ff1ebaa8-82f5-43ca-9816-859956f4d56c/Networks/Tracks.bin";
    FERROLUND_READ_TESTDATA(bytes, relative);
    clsCRC crc;
    crc.Algorithm(1);
    const auto value = crc.CalculateFile(ferrolund::testing::TestdataPath(relative).string());
    ASSERT_TRUE(value);
    EXPECT_EQ(*value, static_cast<std::uint32_t>(
                          ::crc32(0, reinterpret_cast<const Bytef*>(bytes.data()), static_cast<uInt>(bytes.size()))));
}

}  // namespace
}  // namespace ferrolund::services
