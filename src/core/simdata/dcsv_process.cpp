#include "simdata/dcsv_process.h"

#include <algorithm>
#include <charconv>
#include <system_error>

#include "tools/files.h"
#include "tools/text_search.h"

namespace ferrolund::simdata {

namespace {

std::string_view Trimmed(std::string_view text) {
    const auto first = text.find_first_not_of(" \t\r\n");
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t\r\n") - first + 1);
}

// The whole field is a decimal number (the source files are written with a point).
bool IsNumber(std::string_view field) {
    field = Trimmed(field);
    if (!field.empty() && field.front() == '+') field.remove_prefix(1);
    if (field.empty()) return false;
    double value = 0;
    const auto [end, error] = std::from_chars(field.data(), field.data() + field.size(), value);
    return error == std::errc() && end == field.data() + field.size();
}

std::string FileName(const std::string& path) {
    const auto slash = path.find_last_of("\\/");
    return slash == std::string::npos ? path : path.substr(slash + 1);
}

}  // namespace

std::string SourceCsvOf(const std::string& dcsvPath) {
    // Either separator: a path typed on this system's command line has forward ones.
    const long at = std::max(tools::InStrRev(dcsvPath, "\\Assets\\"), tools::InStrRev(dcsvPath, "/Assets/"));
    if (at == 0) return {};
    std::string source = dcsvPath;
    source.replace(static_cast<std::size_t>(at), 6, "Source");
    const auto slash = source.find_last_of("\\/");
    const auto dot = source.rfind('.');
    if (dot != std::string::npos && dot > slash) source.erase(dot);
    return source + ".csv";
}

std::vector<DcsvPoint> ReadSourceCsv(std::string_view csvText) {
    std::vector<DcsvPoint> points;
    std::size_t start = 0;
    while (start < csvText.size()) {
        auto end = csvText.find('\n', start);
        if (end == std::string_view::npos) end = csvText.size();
        const std::string_view line = csvText.substr(start, end - start);
        start = end + 1;
        std::vector<std::string_view> fields;
        for (std::size_t from = 0;;) {
            const auto comma = line.find(',', from);
            fields.push_back(line.substr(from, comma == std::string_view::npos ? std::string_view::npos : comma - from));
            if (comma == std::string_view::npos) break;
            from = comma + 1;
        }
        std::size_t first = 0;
        if (fields.size() >= 3 && !IsNumber(fields[0])) first = 1;
        if (fields.size() < first + 2 || !IsNumber(fields[first]) || !IsNumber(fields[first + 1])) continue;
        points.push_back({std::string(Trimmed(fields[first])), std::string(Trimmed(fields[first + 1]))});
    }
    return points;
}

ProcessOutcome ProcessDcsv(base::RunContext& ctx, const std::vector<std::string>& files) {
    ProcessOutcome outcome;
    for (const std::string& file : files) {
        const std::string source = SourceCsvOf(file);
        if (source.empty() || !tools::FileExists(source)) {
            ctx.ui->message("The original Source .csv for " + FileName(file) + " could not be found",
                            base::Icon::Exclamation);
            ++outcome.unfound;
            continue;
        }
        std::string text = tools::ReadTextFile(file);
        std::string fault = text.empty() ? "The file " + file + " could not be read." : std::string();
        if (fault.empty()) fault = PutDcsvPoints(text, ReadSourceCsv(tools::ReadTextFile(source)));
        if (!fault.empty()) {
            ctx.ui->message(fault, base::Icon::Exclamation);
            ++outcome.failed;
            continue;
        }
        std::string backup;
        if (base::Status failed = WriteDcsvText(file, text, backup)) {
            ctx.report(*failed, "frmMarkers");
            ++outcome.failed;
            continue;
        }
        ++outcome.improved;
    }
    ctx.ui->message("Precision of .DCSV files has been improved, a backup has been made.", base::Icon::Information);
    return outcome;
}

}  // namespace ferrolund::simdata
