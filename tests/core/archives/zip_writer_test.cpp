#include "app/app_context.h"
#include "archives/zip_writer.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "archives/extract.h"
#include "support/temp_folder.h"
#include "zip_fixture.h"

namespace ferrolund::archives {
namespace {

namespace fs = std::filesystem;
using testing::ReadFile;

struct WriterTest : ::testing::Test {
    testing::TempFolder root;
    std::string sys(const std::string& relative) const { return root.system() + "\\" + relative; }
    fs::path disk(const std::string& relative) const { return root.path() / relative; }

    // Writes an archive of the given files; gives its parts.
    std::vector<std::string> Write(const std::string& name, const std::vector<std::pair<std::string, std::string>>& files,
                                   ZipWriterOptions options) {
        ZipWriter writer;
        EXPECT_FALSE(writer.create(sys(name), options));
        for (const auto& [stored, bytes] : files) {
            std::string onDisk = stored;
            std::replace(onDisk.begin(), onDisk.end(), '\\', '/');
            testing::WriteFile(disk("src/" + onDisk), bytes);
            EXPECT_FALSE(writer.addFile(sys("src\\" + stored), stored));
        }
        EXPECT_FALSE(writer.finish());
        return writer.parts();
    }
};

TEST_F(WriterTest, AnArchiveReadsBackWithEveryByte) {
    const std::string text(300000, 'r');
    const std::string noise = testing::NoiseBytes(70000);
    for (int level : {0, 6, 9}) {
        const std::string name = "level" + std::to_string(level) + ".zip";
        const auto parts = Write(name, {{"a.txt", text}, {"Sub\\b.bin", noise}, {"empty.txt", ""}}, {.level = level});
        ASSERT_EQ(parts.size(), 1u);
        ZipArchive archive;
        ASSERT_FALSE(archive.open(sys(name)));
        ASSERT_EQ(archive.entries().size(), 3u);
        EXPECT_EQ(archive.entries()[1].stored, "Sub\\b.bin");
        EXPECT_EQ(CompressionName(archive.entries()[0].method), level == 0 ? "Stored" : "Deflate");
        std::string back;
        ASSERT_FALSE(archive.read(0, [&](const char* d, std::size_t n) -> base::Status {
            back.append(d, n);
            return {};
        }));
        EXPECT_EQ(back, text);
        if (testing::HaveProgram("unzip")) {
            EXPECT_EQ(testing::Shell("unzip -tqq '" + disk(name).string() + "'"), 0) << name;
        }
    }
}

TEST_F(WriterTest, APartSizeOfOneMillionGivesPartsOfThatSizeThatReadBackAsOne) {
    const std::string big = testing::NoiseBytes(2500000);
    const auto parts = Write("pack.zip", {{"Assets\\big.bin", big}, {"small.txt", "small"}},
                             {.level = 0, .partSize = 1000000});
    ASSERT_EQ(parts.size(), 3u);
    EXPECT_EQ(parts[0], sys("pack.z01"));
    EXPECT_EQ(parts[1], sys("pack.z02"));
    EXPECT_EQ(parts[2], sys("pack.zip"));
    EXPECT_EQ(fs::file_size(disk("pack.z01")), 1000000u);
    EXPECT_EQ(fs::file_size(disk("pack.z02")), 1000000u);
    EXPECT_LE(fs::file_size(disk("pack.zip")), 1000000u);

    ZipArchive archive;
    ASSERT_FALSE(archive.open(sys("pack.zip")));
    EXPECT_EQ(archive.parts().size(), 3u);
    ASSERT_EQ(archive.entries().size(), 2u);
    app::AppContext ctx;
    ExtractOutcome out = ExtractEntries(ctx, archive, AllIndices(archive), {.target = sys("back")});
    EXPECT_EQ(out.written, 2);
    EXPECT_TRUE(out.errors.empty());
    EXPECT_TRUE(ReadFile(disk("back/Assets/big.bin")) == big);
    EXPECT_EQ(ReadFile(disk("back/small.txt")), "small");

    if (testing::HaveProgram("zip") && testing::HaveProgram("unzip")) {
        // Info-ZIP's zip joins a standard split set; unzip then tests every entry.
        const std::string joined = (root.path() / "joined.zip").string();
        ASSERT_EQ(testing::Shell("zip -qq -s 0 '" + disk("pack.zip").string() + "' --out '" + joined + "'"), 0);
        EXPECT_EQ(testing::Shell("unzip -tqq '" + joined + "'"), 0);
    }
    if (testing::HaveProgram("7z")) {
        EXPECT_EQ(testing::Shell("7z t '" + disk("pack.zip").string() + "' > /dev/null"), 0);
    }
}

TEST_F(WriterTest, ASetThatFitsInOnePartIsAnOrdinaryArchive) {
    const auto parts = Write("one.zip", {{"a.txt", "abc"}}, {.level = 6, .partSize = 1000000});
    ASSERT_EQ(parts.size(), 1u);
    ZipArchive archive;
    ASSERT_FALSE(archive.open(sys("one.zip")));
    EXPECT_EQ(archive.entries().size(), 1u);
    if (testing::HaveProgram("unzip")) {
        EXPECT_EQ(testing::Shell("unzip -tqq '" + disk("one.zip").string() + "'"), 0);
    }
}

TEST_F(WriterTest, RawCopiesKeepTheCompressedBytes) {
    testing::MakeZip(disk("old.zip"), {{"x/y.txt", std::string(5000, 'y')}, {"d/", ""}});
    ZipArchive old;
    ASSERT_FALSE(old.open(sys("old.zip")));
    ZipWriter writer;
    ASSERT_FALSE(writer.create(sys("new.zip"), {}));
    for (const auto& e : old.entries()) ASSERT_FALSE(writer.addRaw(old, e));
    ASSERT_FALSE(writer.finish());
    ZipArchive copy;
    ASSERT_FALSE(copy.open(sys("new.zip")));
    ASSERT_EQ(copy.entries().size(), 2u);
    EXPECT_EQ(copy.entries()[0].compressedSize, old.entries()[0].compressedSize);
    EXPECT_TRUE(copy.entries()[1].isFolder);
    app::AppContext ctx;
    ExtractEntries(ctx, copy, {0}, {.target = sys("out")});
    EXPECT_EQ(ReadFile(disk("out/x/y.txt")), std::string(5000, 'y'));
}

TEST_F(WriterTest, AnAbandonedArchiveLeavesTheOldOneAndNoScratch) {
    testing::WriteFile(disk("keep.zip"), "old archive");
    {
        ZipWriter writer;
        ASSERT_FALSE(writer.create(sys("keep.zip"), {}));
        testing::WriteFile(disk("f.txt"), "f");
        ASSERT_FALSE(writer.addFile(sys("f.txt"), "f.txt"));
        EXPECT_TRUE(writer.addFile(sys("missing.txt"), "missing.txt"));
    }
    EXPECT_EQ(ReadFile(disk("keep.zip")), "old archive");
    for (const auto& e : fs::directory_iterator(root.path())) {
        EXPECT_EQ(e.path().string().find("ferrolund-part"), std::string::npos) << e.path();
    }
}

TEST_F(WriterTest, ASplitSetWithADamagedDirectoryIsRefused) {
    Write("dam.zip", {{"big.bin", testing::NoiseBytes(1500000)}}, {.level = 0, .partSize = 1000000});
    std::string last = ReadFile(disk("dam.zip"));
    const std::size_t cd = last.find(std::string("PK\x01\x02", 4));
    ASSERT_NE(cd, std::string::npos);
    last[cd + 1] = 'X';
    testing::WriteFile(disk("dam.zip"), last);
    ZipArchive archive;
    EXPECT_TRUE(archive.open(sys("dam.zip")));
    fs::remove(disk("dam.z01"));
    testing::WriteFile(disk("dam.z01"), "short");
    EXPECT_TRUE(archive.open(sys("dam.zip")));
}

}  // namespace
}  // namespace ferrolund::archives
