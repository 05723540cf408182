#include "archives/extract.h"

#include <cstdio>
#include <filesystem>

#include "tools/files.h"
#include "tools/host_path.h"

namespace ferrolund::archives {

namespace fs = std::filesystem;

namespace {

bool Exists(const std::string& systemPath) {
    std::error_code ec;
    return fs::exists(tools::HostPath(systemPath), ec);
}

// Writes one entry to `destination` through a scratch file beside it.
base::Status WriteEntry(const ZipArchive& archive, const ArchiveEntry& entry, const std::string& destination) {
    const fs::path finalPath = tools::HostPath(destination);
    fs::path scratch = finalPath;
    scratch += ".ferrolund-part";
    std::FILE* out = std::fopen(scratch.c_str(), "wb");
    if (!out) return base::err::PathFileAccess(destination);
    std::vector<char> buffer(1 << 16);
    std::setvbuf(out, buffer.data(), _IOFBF, buffer.size());
    base::Status status = archive.read(entry.index, [&](const char* data, std::size_t length) -> base::Status {
        if (std::fwrite(data, 1, length, out) != length) return base::err::PathFileAccess(destination);
        return {};
    });
    if (std::fclose(out) != 0 && !status) status = base::err::PathFileAccess(destination);
    std::error_code ec;
    if (!status) {
        fs::rename(scratch, finalPath, ec);
        if (ec) status = base::err::PathFileAccess(destination);
    }
    if (status) fs::remove(scratch, ec);
    tools::ForgetPath(destination);
    return status;
}

}  // namespace

std::string NumberedName(const std::string& systemPath) {
    const std::size_t slash = systemPath.find_last_of("\\/");
    const std::size_t dot = systemPath.rfind('.');
    const bool hasExt = dot != std::string::npos && (slash == std::string::npos || dot > slash);
    const std::string base = hasExt ? systemPath.substr(0, dot) : systemPath;
    const std::string ext = hasExt ? systemPath.substr(dot) : std::string();
    for (long n = 1;; ++n) {
        std::string candidate = base + "_" + std::to_string(n) + ext;
        if (!Exists(candidate)) return candidate;
    }
}

std::vector<std::size_t> AllIndices(const ZipArchive& archive) {
    std::vector<std::size_t> all(archive.entries().size());
    for (std::size_t i = 0; i < all.size(); ++i) all[i] = i;
    return all;
}

ExtractOutcome ExtractEntries(base::RunContext& ctx, const ZipArchive& archive, const std::vector<std::size_t>& indices,
                              const ExtractOptions& options) {
    ExtractOutcome outcome;
    std::string target = options.target;
    while (target.size() > 1 && (target.back() == '\\' || target.back() == '/')) target.pop_back();
    if (!tools::CreatePath(target)) {
        outcome.errors.push_back(base::err::PathNotFound(target));
        return outcome;
    }
    std::size_t done = 0;
    for (std::size_t index : indices) {
        if (options.showProgress && ctx.ui) {
            ctx.ui->progress(static_cast<int>(100 * done / indices.size()), "");
            ctx.ui->pump();
        }
        ++done;
        if (ctx.abortFlag) {
            outcome.aborted = true;
            break;
        }
        if (index >= archive.entries().size()) continue;
        const ArchiveEntry& entry = archive.entries()[index];
        const std::string relative = SafeEntryPath(entry.stored);
        if (relative.empty()) {
            outcome.refused.push_back(entry.stored);
            continue;
        }
        if (entry.isFolder) {
            if (options.fullPaths && !tools::CreatePath(target + "\\" + relative)) {
                outcome.errors.push_back(base::err::PathNotFound(target + "\\" + relative));
            }
            continue;
        }
        const std::size_t cut = relative.rfind('\\');
        const std::string placed = options.fullPaths || cut == std::string::npos ? relative : relative.substr(cut + 1);
        std::string destination = target + "\\" + placed;
        const std::string folder = destination.substr(0, destination.rfind('\\'));
        if (!tools::CreatePath(folder)) {
            outcome.errors.push_back(base::err::PathNotFound(folder));
            continue;
        }
        if (Exists(destination)) {
            std::error_code ec;
            switch (options.overwrite) {
            case Overwrite::All: break;
            case Overwrite::Skip:
                ++outcome.skipped;
                continue;
            case Overwrite::RenameNew: destination = NumberedName(destination); break;
            case Overwrite::Ask:
                if (!ctx.ui || ctx.ui->ask("Would you like to replace the existing file:\r\n" + destination,
                                           base::Buttons::YesNo, base::Icon::Question) != base::Answer::Yes) {
                    ++outcome.skipped;
                    continue;
                }
                break;
            case Overwrite::RenameExisting: {
                const std::string moved = NumberedName(destination);
                fs::rename(tools::HostPath(destination), tools::HostPath(moved), ec);
                tools::ForgetPath(destination);
                tools::ForgetPath(moved);
                if (ec) {
                    outcome.errors.push_back(base::err::PathFileAccess(destination));
                    continue;
                }
                break;
            }
            }
        }
        if (base::Status status = WriteEntry(archive, entry, destination)) {
            outcome.errors.push_back(*status);
        } else {
            ++outcome.written;
        }
    }
    if (options.showProgress && ctx.ui) ctx.ui->progress(0, "");
    return outcome;
}

}  // namespace ferrolund::archives
