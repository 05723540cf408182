#include "assets/missing_assets.h"

#include "assets/asset_scan.h"
#include "assets/blueprint_files.h"
#include "tools/codepage.h"
#include "tools/files.h"
#include "tools/host_path.h"
#include "tools/text_search.h"

namespace ferrolund::assets {

namespace {

constexpr const char* kModule = "frmAssets";

std::vector<std::string> Lines(const std::string& text) {
    std::vector<std::string> lines;
    std::size_t start = 0;
    while (start < text.size()) {
        std::size_t end = text.find('\n', start);
        if (end == std::string::npos) end = text.size();
        std::string line = text.substr(start, end - start);
        if (!line.empty() && line.back() == '\r') line.pop_back();
        lines.push_back(std::move(line));
        start = end + 1;
    }
    return lines;
}

void Tell(app::AppContext& ctx, const std::string& text, base::Icon icon = base::Icon::Exclamation) {
    if (ctx.ui) ctx.ui->message(text, icon);
}

// The name the file has on disk, which may differ in case from the line that named it.
std::string DiskName(const std::string& file) {
    return tools::SystemPath(tools::HostPath(file).filename());
}

bool EndsWithIgnoreCase(const std::string& text, std::string_view tail) {
    return text.size() >= tail.size() && tools::EqualsIgnoreCase(std::string_view(text).substr(text.size() - tail.size()), tail);
}

}  // namespace

std::optional<std::vector<MissingAssetJob>> ReadMissingAssets(app::AppContext& ctx) {
    const std::string file = ctx.appPath("Reports\\MissingAssets.csv");
    if (!tools::FileExists(file)) {
        Tell(ctx, ctx.langText(506, "Your missing assets file could not be found, must be saved as", kModule) +
                      "\nReports\\MissingAssets.csv");
        return std::nullopt;
    }
    std::vector<MissingAssetJob> jobs;
    for (const std::string& line : Lines(tools::ReadTextFile(file))) {
        const std::string path(tools::TrimBlanks(line));
        if (path.empty()) continue;
        const std::size_t cut = path.find_last_of('\\');
        if (cut == std::string::npos) {
            jobs.push_back({{}, path});
        } else {
            jobs.push_back({path.substr(0, cut), path.substr(cut + 1)});
        }
    }
    return jobs;
}

JobScan ListScan(AssetFilter filter) {
    return [filter](app::AppContext& ctx, const MissingAssetJob& job) {
        ScanOptions options;
        options.startFolder = job.folder;
        options.filter = filter;
        options.filter.onlyFileName = job.fileName;
        options.readBlueprints = true;
        options.firstIndex = 0;
        std::vector<AssetRow> rows;
        const ScanTotals totals = ScanAssets(ctx, options, [&](std::vector<AssetRow>& batch) {
            for (AssetRow& row : batch) rows.push_back(std::move(row));
        });
        for (const ScanProblem& problem : totals.problems)
            ctx.report(base::RunError{base::err::kPathNotFound, problem.path + ": " + problem.message}, kModule);
        return rows;
    };
}

MissingAssetsOutcome ProcessMissingAssets(app::AppContext& ctx, const JobScan& scan) {
    MissingAssetsOutcome outcome;
    const auto jobs = ReadMissingAssets(ctx);
    if (!jobs) {
        outcome.noFile = true;
        return outcome;
    }
    for (std::size_t done = 0; done < jobs->size(); ++done) {
        if (ctx.ui) {
            ctx.ui->progress(static_cast<int>(100 * done / jobs->size()), {});
            ctx.ui->pump();
        }
        if (ctx.abortFlag) {
            outcome.aborted = true;
            break;
        }
        for (AssetRow& row : scan(ctx, (*jobs)[done])) outcome.rows.push_back(std::move(row));
    }
    if (ctx.ui) ctx.ui->progress(-1, {});
    if (outcome.aborted) return outcome;
    if (ctx.ui) ctx.ui->status(0, std::to_string(outcome.rows.size()));
    ReportList report;
    for (const AssetRow& row : outcome.rows) {
        if (ctx.abortFlag) {
            outcome.aborted = true;
            break;
        }
        GetAssetBits(ctx, {row.provider, row.product, row.path}, report);
        if (ctx.ui) ctx.ui->pump();
    }
    CloseReport(report);
    outcome.report = std::move(report.text);
    return outcome;
}

std::string SaveMissingFiles(app::AppContext& ctx, const std::string& report) {
    tools::CreatePath(ctx.appPath("Reports"));
    const std::string file = ctx.appPath("Reports\\MissingFiles.txt");
    return tools::WriteTextFile(ctx, file, report) ? file : std::string();
}

PackageOutcome PackageMissingAssets(app::AppContext& ctx) {
    PackageOutcome outcome;
    const std::string list = ctx.appPath("Reports\\MissingFiles.txt");
    if (!tools::FileExists(list)) {
        outcome.noFile = true;
        Tell(ctx, ctx.langText(507, "Your missing files file could not be found, must be saved as", kModule) +
                      "\nReports\\MissingFiles.txt");
        return outcome;
    }
    const std::string package = ctx.appPath("NewPackage\\Assets");
    tools::CreatePath(package);
    auto copy = [&](const std::string& file, const std::string& folder) {
        const std::string target = folder + "\\" + DiskName(file);
        if (const base::Status failed = tools::CopyFileReplacing(file, target)) {
            outcome.problems.push_back(file + ": " + failed->description);
            ctx.report(*failed, kModule);
            return;
        }
        outcome.copied.push_back(target);
    };
    for (const std::string& raw : Lines(tools::ReadTextFile(list))) {
        const std::string line(tools::TrimBlanks(raw));
        if (line == "+++") break;
        if (line.empty()) continue;
        if (ctx.abortFlag) {
            outcome.aborted = true;
            break;
        }
        const long p = tools::InStr(line, "Assets");
        const std::size_t cut = line.find_last_of('\\');
        if (p == 0 || cut == std::string::npos || cut < static_cast<std::size_t>(p + 6)) {
            outcome.problems.push_back(line + ": not a file below Assets");
            ctx.report(base::err::PathNotFound(line), kModule);
            continue;
        }
        const std::size_t from = static_cast<std::size_t>(p) + 6;  // behind "Assets\"
        const std::string folder = package + "\\" + line.substr(from, cut - from);
        tools::CreatePath(folder);
        copy(line, folder);
        if (!EndsWithIgnoreCase(line, ".tgpcdx")) continue;
        for (const char* suffix : {"_Au", "_Sp", "_Wi"}) {
            const std::string sibling = line.substr(0, line.size() - 7) + suffix + line.substr(line.size() - 7);
            if (tools::FileExists(sibling)) copy(sibling, folder);
        }
    }
    return outcome;
}

}  // namespace ferrolund::assets
