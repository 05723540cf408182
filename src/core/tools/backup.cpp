#include "tools/backup.h"

#include <climits>
#include <filesystem>
#include <fstream>
#include <system_error>

#include "tools/files.h"
#include "tools/host_path.h"

namespace ferrolund::tools {

namespace fs = std::filesystem;

namespace {

bool Taken(const std::string& path) {
    std::error_code ec;
    return fs::exists(fs::symlink_status(HostPath(path), ec));
}

// The new file under a scratch name beside the target, then renamed over it.
base::Status OverwriteInPlace(const std::string& made, const std::string& target) {
    const std::string scratch = target + ".ferrolund-part";
    base::Status failed = CopyFileReplacing(made, scratch);
    std::error_code ec;
    if (!failed) {
        fs::rename(HostPath(scratch), HostPath(target), ec);
        if (ec) failed = base::err::PathFileAccess(target);
    }
    if (failed) fs::remove(HostPath(scratch), ec);
    ForgetPath(scratch);
    ForgetPath(target);
    return failed;
}

}  // namespace

std::string BackupBaseName(std::string_view path, const BackupRule& rule) {
    std::string_view base = path;
    if (rule.name == BackupName::InsteadOfExtension) {
        const auto separator = path.find_last_of("\\/");
        const auto point = path.rfind('.');
        if (point != std::string_view::npos && (separator == std::string_view::npos || point > separator)) {
            base = path.substr(0, point);
        }
    }
    return std::string(base) + ".bak";
}

BackupOutcome MakeBackup(std::string_view pathText, const BackupRule& rule) {
    const std::string path(pathText);
    std::error_code ec;
    const fs::path source = HostPath(path);
    if (!fs::is_regular_file(source, ec)) return {{}, base::err::FileNotFound(path)};

    const std::string base = BackupBaseName(path, rule);
    std::string target;
    if (!Taken(base) || rule.lastNumber == 0) {
        target = base;
    } else {
        const int last = rule.lastNumber == kNoLastNumber ? INT_MAX : rule.lastNumber;
        for (int n = 1; n <= last && target.empty(); ++n) {
            std::string candidate = base + std::to_string(n);
            if (!Taken(candidate)) target = std::move(candidate);
            if (n == INT_MAX) break;
        }
        if (target.empty()) return {};  // all taken: no back-up
    }

    fs::rename(source, HostPath(target), ec);
    ForgetPath(path);
    ForgetPath(target);
    if (ec) return {{}, base::err::PathFileAccess(path)};
    return {target, std::nullopt};
}

base::Status ReplaceWithBackup(const std::string& made, const std::string& target, const BackupRule& rule,
                              std::string& backup) {
    backup.clear();
    const BackupOutcome outcome = MakeBackup(target, rule);
    if (outcome.error) return outcome.error;
    if (outcome.backup.empty() && rule.overwriteWhenFull) return OverwriteInPlace(made, target);
    if (outcome.backup.empty()) return base::RunError{58, "No free back-up name is left for " + target};
    if (base::Status copied = CopyFileReplacing(made, target)) {
        std::error_code ec;
        fs::rename(HostPath(outcome.backup), HostPath(target), ec);
        ForgetPath(outcome.backup);
        ForgetPath(target);
        return copied;
    }
    ForgetPath(target);
    backup = outcome.backup;
    return {};
}

base::Status WriteWithBackup(const std::string& target, std::string_view bytes, const BackupRule& rule,
                            std::string& backup) {
    backup.clear();
    const std::string scratch = target + ".ferrolund-new";
    const fs::path host = HostPath(scratch);
    std::error_code ec;
    {
        std::ofstream out(host, std::ios::binary | std::ios::trunc);
        out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        out.close();
        if (!out) {
            fs::remove(host, ec);
            ForgetPath(scratch);
            return base::err::PathFileAccess(target);
        }
    }
    base::Status result;
    if (Taken(target)) {
        result = ReplaceWithBackup(scratch, target, rule, backup);
    } else {
        fs::rename(host, HostPath(target), ec);
        if (ec) result = base::err::PathFileAccess(target);
    }
    fs::remove(host, ec);
    ForgetPath(scratch);
    ForgetPath(target);
    return result;
}

}  // namespace ferrolund::tools
