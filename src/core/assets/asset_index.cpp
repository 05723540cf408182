#include "assets/asset_index.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>

#include "services/report_table.h"
#include "tools/backup.h"
#include "tools/codepage.h"
#include "tools/files.h"
#include "tools/host_path.h"
#include "tools/numbers.h"

namespace ferrolund::assets {

namespace fs = std::filesystem;

namespace {

constexpr const char* kModule = "frmAssets";

// Writes `text` to the file `path` in one go; a short write is an error and leaves no
// file behind.
base::Status WriteWhole(const std::string& path, const std::string& text) {
    const fs::path host = tools::HostPath(path);
    std::ofstream out(host, std::ios::binary | std::ios::trunc);
    out.write(text.data(), static_cast<std::streamsize>(text.size()));
    out.close();
    tools::ForgetPath(path);
    if (out) return {};
    std::error_code ec;
    if (!fs::is_directory(host, ec)) fs::remove(host, ec);
    return base::err::PathFileAccess(path);
}

// `text` becomes the file `path`: written beside it first, then put in place by the
// back-up rule of the index.
base::Status WriteIndexText(const std::string& path, const std::string& text, std::string& backup) {
    backup.clear();
    const std::string scratch = path + ".new";
    if (base::Status failed = WriteWhole(scratch, text)) return failed;
    base::Status result;
    std::error_code ec;
    if (tools::FileExists(path)) {
        result = tools::ReplaceWithBackup(scratch, path, tools::kOverwritingBackupRule, backup);
    } else {
        fs::rename(tools::HostPath(scratch), tools::HostPath(path), ec);
        if (ec) result = base::err::PathFileAccess(path);
        tools::ForgetPath(path);
    }
    fs::remove(tools::HostPath(scratch), ec);
    tools::ForgetPath(scratch);
    return result;
}

}  // namespace

std::string IndexFolder(const base::RunContext& ctx) { return ctx.appPath("IndexFiles"); }
std::string IndexFilePath(const base::RunContext& ctx) { return ctx.appPath("IndexFiles\\index.csv"); }
std::string AppendListPath(const base::RunContext& ctx) { return ctx.appPath("IndexFiles\\indextest.csv"); }

LoadedIndex ParseAssetIndex(const std::string& text) {
    LoadedIndex index;
    index.found = true;
    std::vector<long> lines;
    services::ReportTable table = services::ParseCsv(text, &lines);
    if (table.headings.empty()) {
        index.problems.push_back({1, "The file is empty."});
        return index;
    }
    index.headings = std::move(table.headings);
    index.rows.reserve(table.rows.size());
    for (std::size_t i = 0; i < table.rows.size(); ++i) {
        const auto& cells = table.rows[i];
        if (cells.size() < kAssetColumns) {
            index.problems.push_back({lines[i], std::to_string(cells.size()) + " of " + std::to_string(kAssetColumns) +
                                                    " columns; the line is left out."});
            continue;
        }
        if (cells.size() > kAssetColumns) {
            index.problems.push_back({lines[i], std::to_string(cells.size()) + " columns; those behind the " +
                                                    std::to_string(kAssetColumns) + "th are left out."});
        }
        index.rows.push_back(AssetRow::FromCells(cells));
    }
    return index;
}

LoadedIndex LoadAssetIndex(const std::string& path) {
    if (!tools::FileExists(path)) return {};
    return ParseAssetIndex(tools::ReadTextFile(path));
}

LoadedIndex LoadMainIndex(app::AppContext& ctx, const char* missingMessage) {
    LoadedIndex index = LoadAssetIndex(IndexFilePath(ctx));
    if (!index.found && ctx.ui) ctx.ui->message(missingMessage, base::Icon::Information);
    return index;
}

LoadedIndex OpenRollingStockIndex(app::AppContext& ctx) {
    LoadedIndex index;
    const bool main = !ctx.ui || ctx.ui->ask("Do you wish to use the main Index.csv file - Answer Yes\r\nor\r\n"
                                             "Do you wish to select some other index? - Answer No",
                                             base::Buttons::YesNo, base::Icon::Question) == base::Answer::Yes;
    if (main) {
        index = LoadMainIndex(ctx, kNoIndexMessage);
    } else if (const auto file = ctx.ui->chooseOpenFile("Get User Index File", "Index Files (*.csv|*.csv",
                                                        IndexFolder(ctx))) {
        index = LoadAssetIndex(*file);
    }
    SortByProvider(index.rows);
    return index;
}

std::vector<AssetRow> PickRollingStock(app::AppContext& ctx, const std::vector<AssetRow>& rows,
                                       const std::vector<std::size_t>& chosen) {
    std::vector<AssetRow> picked;
    for (const std::size_t i : chosen)
        if (i < rows.size() && !IsHeadingRow(rows[i])) picked.push_back(rows[i]);
    if (picked.empty() && ctx.ui) {
        ctx.ui->message("You do not appear to have selected any rolling stock", base::Icon::Information);
    }
    return picked;
}

bool IsHeadingRow(const AssetRow& row) { return row.name == kAssetHeadings[3]; }

void SortByProvider(std::vector<AssetRow>& rows) {
    std::stable_sort(rows.begin(), rows.end(),
                     [](const AssetRow& a, const AssetRow& b) { return a.provider < b.provider; });
}

std::string AssetIndexText(const std::vector<AssetRow>& rows) {
    services::ReportTable table;
    table.headings.assign(kAssetHeadings.begin(), kAssetHeadings.end());
    table.rows.reserve(rows.size());
    for (const auto& row : rows) table.rows.push_back(row.Cells());
    return services::CsvText(table);
}

base::Status SaveAssetIndex(const std::string& path, const std::vector<AssetRow>& rows, std::string& backup) {
    return WriteIndexText(path, AssetIndexText(rows), backup);
}

bool SaveStockIndex(app::AppContext& ctx, const std::vector<AssetRow>& rows) {
    if (ctx.ui) {
        const base::Answer answer = ctx.ui->ask(
            "To make an Index file, you must first have set this screen\r\n"
            "to start on 'Assets' and ticked the 'Rolling Stock only' box.\r\n"
            "Then clicked 'Add to List' - Are you ready to save?\r\n"
            "This can take a considerable amount of time to complete.",
            base::Buttons::YesNo, base::Icon::Question);
        if (answer != base::Answer::Yes) return false;
    }
    tools::CreatePath(IndexFolder(ctx));
    std::string backup;
    if (base::Status failed = SaveAssetIndex(IndexFilePath(ctx), rows, backup)) {
        ctx.report(*failed, kModule);
        return false;
    }
    return true;
}

base::Status AppendToIndex(app::AppContext& ctx, const std::vector<AssetRow>& rows, std::string& backup) {
    backup.clear();
    tools::CreatePath(IndexFolder(ctx));
    const std::string list = AppendListPath(ctx);
    if (tools::FileExists(list)) {
        if (base::Status failed = tools::DeleteFile(list)) return failed;
    }
    if (base::Status failed = WriteWhole(list, AssetIndexText(rows))) return failed;
    std::string joined = tools::ReadTextFile(IndexFilePath(ctx));
    // A first part without a final line end would glue its last row to the heading.
    if (!joined.empty() && joined.back() != '\n') joined += "\r\n";
    joined += tools::ReadTextFile(list);
    return WriteIndexText(IndexFilePath(ctx), joined, backup);
}

long LastRunningNumber(std::string_view indexText) {
    const std::size_t comma = indexText.rfind(',');
    if (comma == std::string_view::npos) return 0;
    const double value = tools::VbVal(indexText.substr(comma + 1));
    return std::isfinite(value) && value > 0 && value < 2147483647.0 ? static_cast<long>(value) : 0;
}

long LastRunningNumber(const base::RunContext& ctx) {
    return LastRunningNumber(tools::ReadTextFile(IndexFilePath(ctx)));
}

std::vector<std::string> IndexFiles(const base::RunContext& ctx) {
    std::vector<std::string> files;
    const std::string folder = IndexFolder(ctx);
    std::error_code ec;
    for (fs::directory_iterator it(tools::HostPath(folder), ec), end; !ec && it != end; it.increment(ec)) {
        const std::string name = tools::SystemPath(it->path().filename());
        if (!it->is_regular_file(ec) || name.size() < 4) continue;
        if (tools::LowerCp1252(name.substr(name.size() - 4)) != ".csv") continue;
        files.push_back(folder + "\\" + name);
    }
    std::sort(files.begin(), files.end(),
              [](const std::string& a, const std::string& b) { return tools::LowerCp1252(a) < tools::LowerCp1252(b); });
    return files;
}

}  // namespace ferrolund::assets
