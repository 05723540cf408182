// The asset list over the sample installation: the generated stock must come out as the
// manifest says, row for row, and its broken and empty files as problems.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <tuple>
#include <vector>

#include "app/app_context.h"
#include "assets/asset_scan.h"
#include "core/sample/sample_fixture.h"

namespace ferrolund::assets {
namespace {

// Provider\Product\Path to Category, In Scene, Blueprint, Name.
using Listed = std::map<std::string, std::tuple<std::string, std::string, std::string, std::string>>;

struct Expected {
    Listed all, rollingStock;
    std::set<std::string> problems;  // paths below the installation
};

Expected FromManifest() {
    Expected expected;
    for (const sample::ManifestLine& line : sample::ManifestLines(sample::SampleRoot())) {
        std::vector<std::string> f = line.fields;
        if (f.empty() || f[0] != "stock") continue;
        EXPECT_GE(f.size(), 3u);
        f.resize(7);  // the lines of files with no row end in empty fields
        const std::string key = f[1].substr(std::string("Assets\\").size());
        const std::string& kind = f[2];
        if (kind == "broken" || kind == "empty") {
            expected.problems.insert(f[1]);
            continue;
        }
        const auto row = std::make_tuple(f[3], f[4], f[5], f[6]);
        expected.all[key] = row;
        if (kind == "engine" || kind == "wagon" || kind == "coach" || kind == "tender" || kind == "reskin")
            expected.rollingStock[key] = row;
    }
    return expected;
}

struct Result {
    Listed rows;
    std::set<std::string> problems;
    std::vector<std::string> indexes;
};

Result ScanSample(const std::string& below, bool rollingStock) {
    app::AppContext ctx;
    ScanOptions options;
    options.startFolder = sample::SampleRoot().string() + "/Assets/" + below;
    options.filter.rollingStockOnly = rollingStock;
    Result result;
    const ScanTotals totals = ScanAssets(ctx, options, [&](std::vector<AssetRow>& rows) {
        for (const AssetRow& row : rows) {
            result.rows[row.provider + "\\" + row.product + "\\" + row.path] =
                std::make_tuple(row.category, row.inScene, row.blueprint, row.name);
            result.indexes.push_back(row.index);
        }
    });
    const std::string root = sample::SampleRoot().string() + "/";
    for (const ScanProblem& p : totals.problems) {
        std::string path = p.path.substr(root.size());
        std::replace(path.begin(), path.end(), '/', '\\');
        result.problems.insert(path);
    }
    return result;
}

TEST(AssetScanSample, GeneratedStockIsListedAsTheManifestSays) {
    const Expected expected = FromManifest();
    ASSERT_FALSE(expected.all.empty());
    ASSERT_FALSE(expected.problems.empty());

    const Result all = ScanSample("Kestrel", false);
    EXPECT_EQ(all.rows, expected.all);
    EXPECT_EQ(all.problems, expected.problems);
    for (std::size_t i = 0; i < all.indexes.size(); ++i) EXPECT_EQ(all.indexes[i], std::to_string(i + 1));

    const Result rolling = ScanSample("Kestrel", true);
    EXPECT_EQ(rolling.rows, expected.rollingStock);
}

TEST(AssetScanSample, WholeAssetsFolderHoldsTheStockAndNoOtherProblems) {
    const Expected expected = FromManifest();
    const Result all = ScanSample("", false);
    for (const auto& [key, row] : expected.all) {
        const auto found = all.rows.find(key);
        ASSERT_NE(found, all.rows.end()) << key;
        EXPECT_EQ(found->second, row) << key;
    }
    EXPECT_EQ(all.problems, expected.problems);
    EXPECT_GT(all.rows.size(), expected.all.size());
}

}  // namespace
}  // namespace ferrolund::assets
