#include "app/app_root.h"

#include <pwd.h>
#include <unistd.h>
#include <zlib.h>

#include <cstdlib>
#include <fstream>
#include <map>
#include <sstream>
#include <system_error>

#include "tools/host_path.h"

namespace ferrolund::app {

namespace fs = std::filesystem;

namespace {

std::optional<std::string> Variable(const char* name) {
    const char* value = std::getenv(name);
    if (value == nullptr || *value == '\0') return std::nullopt;
    return std::string(value);
}

std::string Shown(const fs::path& path) { return tools::SystemPath(path); }

// Enough of a file's content to tell whether it changed: its length and CRC-32.
struct Fingerprint {
    std::uintmax_t size = 0;
    unsigned long crc = 0;
    bool operator==(const Fingerprint&) const = default;
};

std::optional<Fingerprint> FingerprintOf(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    if (!in) return std::nullopt;
    Fingerprint print;
    print.crc = crc32(0L, Z_NULL, 0);
    char buffer[1 << 16];
    while (in.read(buffer, sizeof buffer) || in.gcount() > 0) {
        const auto got = static_cast<uInt>(in.gcount());
        print.crc = crc32(print.crc, reinterpret_cast<const Bytef*>(buffer), got);
        print.size += got;
        if (!in) break;
    }
    if (in.bad()) return std::nullopt;
    return print;
}

// kSeedManifest: one line per copied file, "<crc32 hex>\t<size>\t<path below AppRoot>".
using Manifest = std::map<std::string, Fingerprint>;

Manifest ReadManifest(const fs::path& file) {
    Manifest manifest;
    std::ifstream in(file);
    std::string line;
    while (std::getline(in, line)) {
        if (line.empty() || line[0] == '#') continue;
        std::istringstream fields(line);
        std::string crc, size, relative;
        if (!std::getline(fields, crc, '\t') || !std::getline(fields, size, '\t') || !std::getline(fields, relative)) {
            continue;
        }
        char* end = nullptr;
        Fingerprint print;
        print.crc = std::strtoul(crc.c_str(), &end, 16);
        if (crc.empty() || *end != '\0') continue;
        print.size = std::strtoull(size.c_str(), &end, 10);
        if (size.empty() || *end != '\0' || relative.empty()) continue;
        manifest[relative] = print;
    }
    return manifest;
}

bool WriteWhole(const fs::path& file, const std::string& text) {
    const fs::path partial = file.string() + ".partial";
    {
        std::ofstream out(partial, std::ios::binary | std::ios::trunc);
        out << text;
        if (!out.flush()) return false;
    }
    std::error_code ec;
    fs::rename(partial, file, ec);
    return !ec;
}

bool WriteManifest(const fs::path& file, const Manifest& manifest) {
    std::ostringstream text;
    text << "# The shipped files Ferrolund copied here, as they were copied. A file that still\n"
            "# matches its line is replaced when a newer version is installed; others are yours.\n";
    for (const auto& [relative, print] : manifest) {
        text << std::hex << print.crc << std::dec << '\t' << print.size << '\t' << relative << '\n';
    }
    return WriteWhole(file, text.str());
}

// Copies through a file beside the target, so an interrupted copy never leaves a
// half-written file under the real name.
std::error_code CopyInto(const fs::path& from, const fs::path& to) {
    std::error_code ec;
    fs::create_directories(to.parent_path(), ec);
    if (ec) return ec;
    const fs::path partial = to.string() + ".partial";
    fs::copy_file(from, partial, fs::copy_options::overwrite_existing, ec);
    if (!ec) fs::rename(partial, to, ec);
    if (ec) fs::remove(partial);
    return ec;
}

}  // namespace

fs::path ShippedDataFromProgram() { return FERROLUND_SHIPPED_DATA_FROM_BIN; }

UserFolders UserFoldersFromEnvironment() {
    UserFolders user{Variable("XDG_DATA_HOME"), Variable("HOME")};
    if (!user.home) {
        passwd entry{};
        passwd* found = nullptr;
        char buffer[4096];
        if (getpwuid_r(getuid(), &entry, buffer, sizeof buffer, &found) == 0 && found && found->pw_dir &&
            *found->pw_dir) {
            user.home = found->pw_dir;
        }
    }
    return user;
}

AppRootChoice ChooseAppRoot(const fs::path& programFolder, const UserFolders& user) {
    std::error_code ec;
    const fs::path shipped = (programFolder / ShippedDataFromProgram()).lexically_normal();
    if (fs::is_regular_file(programFolder / kBuildTreeMarker, ec) || !fs::is_directory(shipped, ec)) {
        return {programFolder, {}, {}};
    }
    AppRootChoice choice;
    // A relative XDG_DATA_HOME is not valid and is passed over, as the XDG rules say.
    if (user.xdgDataHome && fs::path(*user.xdgDataHome).is_absolute()) {
        choice.folder = fs::path(*user.xdgDataHome) / "ferrolund";
    } else if (user.home && !user.home->empty()) {
        choice.folder = fs::path(*user.home) / ".local" / "share" / "ferrolund";
    } else {
        choice.problem = "No home folder is known (HOME and XDG_DATA_HOME are not set), so Ferrolund has no folder "
                         "for its own files.";
        return choice;
    }
    choice.shippedData = shipped;
    return choice;
}

std::vector<std::string> SeedAppRoot(const fs::path& shippedData, const fs::path& appRoot) {
    std::vector<std::string> problems;
    const fs::path manifestFile = appRoot / kSeedManifest;
    const Manifest before = ReadManifest(manifestFile);
    Manifest after;
    std::error_code ec;
    fs::recursive_directory_iterator it(shippedData, ec);
    if (ec) return {"The shipped data at " + Shown(shippedData) + " cannot be read: " + ec.message() + "."};
    for (; it != fs::recursive_directory_iterator(); it.increment(ec)) {
        if (ec) break;
        std::error_code typeError;
        if (!it->is_regular_file(typeError)) continue;
        const fs::path& source = it->path();
        const std::string relative = source.lexically_relative(shippedData).generic_string();
        const auto shipped = FingerprintOf(source);
        if (!shipped) {
            problems.push_back("The shipped file " + Shown(source) + " cannot be read.");
            continue;
        }
        const fs::path target = appRoot / relative;
        const auto known = before.find(relative);
        std::error_code statusError;
        const fs::file_status status = fs::status(target, statusError);
        const bool exists = fs::exists(status);
        const auto present = fs::is_regular_file(status) ? FingerprintOf(target) : std::nullopt;
        if (exists && !present) {
            problems.push_back(Shown(target) + " is not a readable file; the shipped version is not copied over it.");
        } else if (present && *present == *shipped) {
            after[relative] = *shipped;
        } else if (present && (known == before.end() || known->second != *present)) {
            // Changed by the user, or made by the user before it was shipped: theirs.
            if (known != before.end()) after[relative] = known->second;
        } else if (const std::error_code copied = CopyInto(source, target)) {
            problems.push_back("The shipped file " + Shown(source) + " cannot be copied to " + Shown(target) + ": " +
                               copied.message() + ".");
        } else {
            after[relative] = *shipped;
        }
    }
    if (ec) problems.push_back("The shipped data at " + Shown(shippedData) + " cannot be read: " + ec.message() + ".");
    if (after != before && !WriteManifest(manifestFile, after)) {
        problems.push_back("The list of shipped files " + Shown(manifestFile) + " cannot be written.");
    }
    return problems;
}

fs::path ProgramFolder() {
    std::error_code ec;
    const fs::path exe = fs::read_symlink("/proc/self/exe", ec);
    if (!ec) return exe.parent_path();
    return fs::current_path(ec);
}

PreparedAppRoot PrepareAppRoot() {
    const fs::path programFolder = ProgramFolder();
    AppRootChoice choice = ChooseAppRoot(programFolder, UserFoldersFromEnvironment());
    PreparedAppRoot prepared;
    if (!choice.problem.empty()) prepared.problems.push_back(choice.problem);
    if (choice.folder.empty()) choice.folder = programFolder;
    std::error_code ec;
    fs::create_directories(choice.folder, ec);
    if (ec) {
        prepared.problems.push_back("Ferrolund's own folder " + Shown(choice.folder) + " cannot be made: " +
                                    ec.message() + ".");
    } else if (!choice.shippedData.empty()) {
        for (auto& problem : SeedAppRoot(choice.shippedData, choice.folder)) prepared.problems.push_back(problem);
    }
    prepared.appRoot = Shown(choice.folder);
    return prepared;
}

}  // namespace ferrolund::app
