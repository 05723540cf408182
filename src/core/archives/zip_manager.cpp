#include "archives/zip_manager.h"

#include <algorithm>
#include <filesystem>

#include "archives/extract_command.h"
#include "archives/zip_writer.h"
#include "services/scan_path.h"
#include "tools/text_search.h"
#include "tools/codepage.h"
#include "tools/files.h"
#include "tools/host_path.h"

namespace ferrolund::archives {

namespace fs = std::filesystem;

namespace {

constexpr const char* kModule = "frmNewZip";

std::string LastElement(const std::string& path) {
    const std::size_t cut = path.find_last_of("\\/");
    return cut == std::string::npos ? path : path.substr(cut + 1);
}

}  // namespace

std::string WithZipExtension(const std::string& name) {
    if (name.size() >= 4 && tools::LowerCp1252(name.substr(name.size() - 4)) == ".zip") return name;
    return name + ".zip";
}

std::uint64_t PartBytes(const std::string& megabytes) {
    std::string digits = megabytes;
    while (!digits.empty() && digits.front() == ' ') digits.erase(digits.begin());
    while (!digits.empty() && digits.back() == ' ') digits.pop_back();
    if (digits.empty() || digits.size() > 9) return 0;
    if (!std::all_of(digits.begin(), digits.end(), [](char c) { return c >= '0' && c <= '9'; })) return 0;
    return std::stoull(digits) * 1000000ull;
}

bool ZipManager::createArchive(app::AppContext& ctx, const std::string& path, std::uint64_t partSize) {
    closeArchive();
    partSize_ = partSize;
    return rewrite(ctx, WithZipExtension(path), {}, false);
}

bool ZipManager::openArchive(app::AppContext& ctx, const std::string& path) {
    closeArchive();
    if (path.empty()) return false;
    if (base::Status s = archive_.open(path)) {
        ctx.report(s, kModule);
        return false;
    }
    // A set keeps the size of its first part for what is added later.
    partSize_ = archive_.parts().size() > 1 ? static_cast<std::uint64_t>(tools::FileLength(archive_.parts().front()))
                                            : 0;
    destinationFolder.clear();
    return true;
}

void ZipManager::closeArchive() {
    archive_.close();
    partSize_ = 0;
}

bool ZipManager::addFiles(app::AppContext& ctx, const std::vector<std::string>& files) {
    if (!NeedOpenArchive(ctx, isOpen(), "Add anything to it!")) return false;
    std::vector<Addition> additions;
    for (const auto& file : files) additions.push_back({file, LastElement(file)});
    return rewrite(ctx, archive_.path(), additions, true);
}

bool ZipManager::addFolder(app::AppContext& ctx, const std::string& folder, const std::string& pattern) {
    if (!NeedOpenArchive(ctx, isOpen(), "Add anything to it!")) return false;
    return rewrite(ctx, archive_.path(), FolderFiles(folder, pattern, archive_.parts()), true);
}

bool ZipManager::extract(app::AppContext& ctx, bool selectedOnly, const std::vector<std::size_t>& selected,
                         bool toArchiveFolder) {
    return RunExtractCommand(ctx, archive_, {selectedOnly, selected, toArchiveFolder, fullPath}, destinationFolder,
                             kModule);
}

bool ZipManager::process(app::AppContext& ctx, const std::string& folder, bool multiple,
                         const std::string& partMegabytes) {
    const std::uint64_t part = multiple ? PartBytes(partMegabytes) : 0;
    if (multiple && part == 0) {
        if (ctx.ui) {
            ctx.ui->message("You have selected 'Produce multiple Zips', but have not entered a\r\n"
                            "                     file size. Please do so, then try again.",
                            base::Icon::Exclamation);
        }
        return false;
    }
    if (!ctx.ui) return false;
    const auto chosen = ctx.ui->chooseSaveFile("Save Zip File", "Zip|*.zip", ctx.appRoot);
    if (!chosen || chosen->empty()) return false;
    const std::string path = WithZipExtension(*chosen);
    zipFileLabel = "Zip File name:  " + path;
    closeArchive();
    partSize_ = part;
    return rewrite(ctx, path, FolderFiles(folder, {}, {tools::SystemPath(tools::HostPath(path))}), false);
}

std::vector<ZipManager::Addition> ZipManager::FolderFiles(const std::string& folder, const std::string& pattern,
                                                         const std::vector<std::string>& skip) {
    std::vector<Addition> files;
    const fs::path root = tools::HostPath(folder);
    std::vector<fs::path> skipped;
    for (const auto& s : skip) skipped.push_back(fs::weakly_canonical(tools::HostPath(s)));
    const std::string mask = tools::UpperCp1252(pattern);
    std::error_code ec;
    for (fs::recursive_directory_iterator it(root, ec), end; !ec && it != end; it.increment(ec)) {
        if (!it->is_regular_file(ec)) continue;
        const std::string name = tools::SystemPath(it->path().filename());
        if (!mask.empty() && !tools::WildcardMatch(mask, tools::UpperCp1252(name))) continue;
        if (std::find(skipped.begin(), skipped.end(), fs::weakly_canonical(it->path(), ec)) != skipped.end()) continue;
        std::string stored = tools::SystemPath(it->path().lexically_relative(root));
        std::replace(stored.begin(), stored.end(), '/', '\\');
        files.push_back({tools::SystemPath(it->path()), stored});
    }
    std::sort(files.begin(), files.end(), [](const Addition& a, const Addition& b) { return a.stored < b.stored; });
    return files;
}

bool ZipManager::rewrite(app::AppContext& ctx, const std::string& path, const std::vector<Addition>& additions,
                         bool keepOld) {
    ctx.abortFlag = false;
    ZipWriter writer;
    if (base::Status s = writer.create(path, {.level = compressionLevel, .partSize = partSize_})) {
        ctx.report(s, kModule);
        return false;
    }
    std::vector<std::string> replaced;
    for (const auto& a : additions) replaced.push_back(tools::UpperCp1252(a.stored));
    const std::size_t total = (keepOld ? archive_.entries().size() : 0) + additions.size();
    std::size_t done = 0;
    auto step = [&](const std::string& name) {
        ++done;
        if (!ctx.ui) return true;
        ctx.ui->status(0, name);
        ctx.ui->progress(static_cast<int>(done * 100 / std::max<std::size_t>(total, 1)), name);
        ctx.ui->pump();
        return !ctx.abortFlag;
    };
    if (keepOld) {
        for (const auto& entry : archive_.entries()) {
            // An entry of the same name is replaced by the file added.
            if (std::find(replaced.begin(), replaced.end(), tools::UpperCp1252(entry.stored)) != replaced.end()) {
                continue;
            }
            if (base::Status s = writer.addRaw(archive_, entry)) {
                ctx.report(s, kModule);
                return false;
            }
            if (!step(entry.stored)) return false;
        }
    }
    for (const auto& a : additions) {
        if (base::Status s = writer.addFile(a.source, a.stored)) {
            ctx.report(s, kModule);
            continue;
        }
        if (!step(a.stored)) return false;
    }
    archive_.close();
    if (base::Status s = writer.finish()) {
        ctx.report(s, kModule);
        if (keepOld) archive_.open(path);  // the old archive is still there
        return false;
    }
    if (ctx.ui) ctx.ui->progress(0, {});
    if (base::Status s = archive_.open(writer.parts().back())) {
        ctx.report(s, kModule);
        return false;
    }
    return true;
}

}  // namespace ferrolund::archives
