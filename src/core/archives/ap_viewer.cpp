#include "archives/ap_viewer.h"

#include <filesystem>

#include "archives/extract.h"
#include "services/scan_path.h"
#include "tools/text_search.h"
#include "tools/codepage.h"
#include "tools/files.h"
#include "tools/host_path.h"
#include "tools/serz_convert.h"

namespace ferrolund::archives {

namespace fs = std::filesystem;

namespace {

constexpr const char* kModule = "frmNewAP";

std::string Extension(const std::string& name) {
    const std::size_t dot = name.rfind('.');
    return dot == std::string::npos ? std::string() : tools::LowerCp1252(name.substr(dot + 1));
}

}  // namespace

void ApViewer::openArchive(app::AppContext& ctx, const std::string& path) {
    closeArchive();
    if (path.empty()) return;
    // The parts of a split set named <base>z01 ... become <base>001 ...
    const std::string base = path.size() >= 3 ? path.substr(0, path.size() - 3) : path;
    for (int n = 1; n <= 99; ++n) {
        const std::string digits = std::string(n < 10 ? "0" : "") + std::to_string(n);
        const std::string source = base + "z" + digits;
        if (!tools::FileExists(source)) break;
        std::error_code ec;
        fs::rename(tools::HostPath(source), tools::HostPath(base + "0" + digits), ec);
        tools::ForgetPath(source);
        tools::ForgetPath(base + "0" + digits);
    }
    if (base::Status status = archive_.open(path)) ctx.report(status, kModule);
    if (ctx.ui) {
        for (const auto& e : archive_.entries()) ctx.ui->status(0, e.name);
        ctx.ui->pump();
    }
    includeSubDirectories = true;
    fullPath = true;
    destinationFolder.clear();
}

void ApViewer::closeArchive() { archive_.close(); }

std::string ApViewer::caption() const { return isOpen() ? "Archive - " + archive_.path() : "Extract from .AP file"; }

long ApViewer::folderCount() const {
    long n = 0;
    for (const auto& e : archive_.entries()) n += e.isFolder ? 1 : 0;
    return n;
}

long ApViewer::fileCount() const { return static_cast<long>(archive_.entries().size()) - folderCount(); }

bool ApViewer::extract(app::AppContext& ctx, bool selectedOnly, const std::vector<std::size_t>& selected,
                       bool toArchiveFolder) {
    return RunExtractCommand(ctx, archive_, {selectedOnly, selected, toArchiveFolder, fullPath}, destinationFolder,
                             kModule);
}

std::optional<std::size_t> ApViewer::findFile(app::AppContext& ctx, const std::string& name) const {
    for (const auto& e : archive_.entries()) {
        if (tools::EqualsIgnoreCase(e.name, name)) return e.index;
    }
    if (ctx.ui) ctx.ui->message("The file  " + name + "\r\nwas not found.", base::Icon::Information);
    return std::nullopt;
}

std::vector<std::size_t> ApViewer::findFiles(const std::string& pattern) const {
    std::vector<std::size_t> found;
    const std::string mask = tools::UpperCp1252(pattern);
    for (const auto& e : archive_.entries()) {
        if (tools::WildcardMatch(mask, tools::UpperCp1252(e.name))) found.push_back(e.index);
    }
    return found;
}

std::optional<std::string> ApViewer::viewEntry(app::AppContext& ctx, std::size_t index) {
    if (!isOpen() || index >= archive_.entries().size()) return std::nullopt;
    const ArchiveEntry& entry = archive_.entries()[index];
    const std::string ext = Extension(entry.name);
    const bool texture = ext == "tgpcdx";
    tools::CreatePath(ctx.appPath("TempFiles"));
    tools::CreatePath(ctx.appPath("TempDDS"));
    const std::string folder = ctx.appPath(texture ? "TempDDS" : "TempFiles");
    const ExtractOutcome out = ExtractEntries(ctx, archive_, {index}, {.target = folder, .fullPaths = false,
                                                                       .showProgress = false});
    for (const auto& error : out.errors) ctx.report(error, kModule);
    if (out.written != 1) return std::nullopt;
    const std::string file = folder + "\\" + entry.name;
    if (ext == "xml" || ext == "proxyxml") return tools::ReadTextFile(file);
    if (ext != "bin" && ext != "geopcdx" && !texture) return std::nullopt;
    const std::string base = file.substr(0, file.size() - ext.size());
    if (ext != "bin") tools::CopyFileReplacing(file, base + "bin");
    if (base::Status s = tools::SerzConvert(ctx, base + "bin", base + "xml", tools::SerzDirection::ToXml)) {
        ctx.report(s, kModule);
        return std::nullopt;
    }
    return tools::ReadTextFile(base + "xml");
}

}  // namespace ferrolund::archives
