#include "tools/files.h"

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>

#include "tools/codepage.h"
#include "tools/host_path.h"

namespace ferrolund::tools {

namespace fs = std::filesystem;

namespace {

bool EndsInMkr(const std::string& path) {
    return path.size() >= 3 && EqualsIgnoreCase(std::string_view(path).substr(path.size() - 3), "mkr");
}

base::RunError FromSystemError(const std::error_code& ec, const std::string& path) {
    if (ec == std::errc::no_such_file_or_directory) return base::err::PathNotFound(path);
    if (ec == std::errc::permission_denied) return {base::err::kPermissionDenied, "Permission denied: " + path};
    return base::err::PathFileAccess(path);
}

}  // namespace

bool FileExists(const std::string& path) {
    const fs::path host = HostPath(path);
    std::error_code ec;
    if (!fs::is_regular_file(host, ec)) return false;
    std::ifstream in(host, std::ios::binary);
    return in.is_open();
}

bool FolderExists(std::string& path) {
    if (!path.empty() && path.back() == '\\') path.pop_back();
    const fs::path host = HostPath(path);
    std::error_code ec;
    return fs::is_directory(host, ec) && ::access(host.c_str(), W_OK | X_OK) == 0;
}

std::string ReadTextFile(const std::string& path) {
    std::ifstream in(HostPath(path), std::ios::binary);
    if (!in.is_open()) return {};
    std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    return EndsInMkr(path) ? Cp1252FromUtf16(bytes) : bytes;
}

bool WriteTextFile(base::RunContext& ctx, const std::string& path, const std::string& text) {
    const fs::path host = HostPath(path);
    {
        std::ofstream out(host, std::ios::binary | std::ios::trunc);
        if (!out.is_open()) {
            ctx.report(base::err::PathFileAccess(path), "myfile");
        } else {
            out.write(text.data(), static_cast<std::streamsize>(text.size()));
        }
    }
    ForgetPath(path);
    if (ctx.ui) ctx.ui->pump();
    if (FileLength(path) > 0) return true;
    if (ctx.ui) ctx.ui->message("An error occurred while writing " + path, base::Icon::Exclamation);
    return false;
}

base::Status WriteBatch(const std::string& path, const std::string& text) {
    std::ofstream out(HostPath(path), std::ios::binary | std::ios::trunc);
    ForgetPath(path);
    if (!out.is_open()) return base::err::PathFileAccess(path);
    out << text << "\r\n";
    out.close();
    if (!out) return base::err::PathFileAccess(path);
    return std::nullopt;
}

bool CreatePath(const std::string& path) {
    const fs::path host = HostPath(path);
    std::error_code ec;
    // A path that stands already changes nothing, and what is remembered of it stays.
    if (fs::create_directories(host, ec)) ForgetPath(path);
    return fs::is_directory(host, ec);
}

base::Status DeleteFolderTree(base::RunContext& ctx, const std::string& path) {
    const fs::path host = HostPath(path);
    std::error_code ec;
    base::Status status;
    if (!fs::is_directory(host, ec)) {
        status = base::err::PathNotFound(path);
    } else {
        // Read-only entries are made writable first: the delete is forced.
        for (auto it = fs::recursive_directory_iterator(host, ec); !ec && it != fs::recursive_directory_iterator();
             it.increment(ec)) {
            fs::permissions(it->path(), fs::perms::owner_write, fs::perm_options::add, ec);
        }
        ec.clear();
        fs::remove_all(host, ec);
        if (ec) status = FromSystemError(ec, path);
    }
    ForgetPath(path);
    if (ctx.ui) ctx.ui->pump();
    return status;
}

base::Status CopyFolderTree(const std::string& from, const std::string& to, bool overwrite) {
    const fs::path source = HostPath(from);
    std::error_code ec;
    if (!fs::is_directory(source, ec)) return base::err::PathNotFound(from);
    const fs::path target = HostPath(to);
    fs::create_directories(target, ec);
    base::Status status;
    for (auto it = fs::recursive_directory_iterator(source, ec); !ec && it != fs::recursive_directory_iterator();
         it.increment(ec)) {
        const fs::path dest = target / fs::relative(it->path(), source, ec);
        if (it->is_directory(ec)) {
            fs::create_directories(dest, ec);
        } else if (!overwrite && fs::exists(dest, ec)) {
            if (!status) status = base::RunError{58, "File already exists: " + SystemPath(dest)};
        } else {
            fs::copy_file(it->path(), dest, fs::copy_options::overwrite_existing, ec);
            if (ec && !status) status = FromSystemError(ec, SystemPath(dest));
        }
        ec.clear();
    }
    ForgetPath(to);
    return status;
}

base::Status CopyFileReplacing(const std::string& from, const std::string& to) {
    std::error_code ec;
    const fs::path source = HostPath(from);
    if (!fs::is_regular_file(source, ec)) return base::err::FileNotFound(from);
    fs::copy_file(source, HostPath(to), fs::copy_options::overwrite_existing, ec);
    ForgetPath(to);
    if (ec) return FromSystemError(ec, to);
    return std::nullopt;
}

base::Status DeleteFile(const std::string& path) {
    std::error_code ec;
    const fs::path host = HostPath(path);
    if (!fs::is_regular_file(host, ec)) return base::err::FileNotFound(path);
    fs::remove(host, ec);
    ForgetPath(path);
    if (ec) return FromSystemError(ec, path);
    return std::nullopt;
}

long long FileLength(const std::string& path) {
    std::error_code ec;
    const auto size = fs::file_size(HostPath(path), ec);
    return ec ? -1 : static_cast<long long>(size);
}

}  // namespace ferrolund::tools
