#include "archives/folder_choices.h"

#include <filesystem>

#include "tools/codepage.h"
#include "tools/files.h"
#include "tools/host_path.h"

namespace ferrolund::archives {

namespace fs = std::filesystem;

namespace {

constexpr const char* kTempModule = "frmFolder6";

std::string WithoutTrailingSeparator(std::string path) {
    while (path.size() > 1 && (path.back() == '\\' || path.back() == '/')) path.pop_back();
    return path;
}

// True when `file` names something strictly below `folder`, compared without regard to case.
bool IsBelow(const std::string& folder, const std::string& file) {
    auto normal = [](std::string path) {
        for (char& c : path) c = c == '/' ? '\\' : c;
        return tools::UpperCp1252(path);
    };
    const std::string root = normal(WithoutTrailingSeparator(folder)) + "\\";
    const std::string name = normal(file);
    if (name.size() <= root.size() || name.compare(0, root.size(), root) != 0) return false;
    return name.find("\\..\\") == std::string::npos && !name.ends_with("\\..");
}

}  // namespace

std::string GameTempFolder(const app::AppContext& ctx) {
    return ctx.gameRoot().empty() ? std::string() : ctx.gameRoot() + "\\Temp";
}

long DeleteSelectedFiles(app::AppContext& ctx, const std::string& folder, const std::vector<std::string>& files) {
    long deleted = 0;
    for (const auto& file : files) {
        if (folder.empty() || !IsBelow(folder, file)) {
            ctx.report({base::err::kPathFileAccess, file + " is not in " + folder + " and was not deleted"},
                       kTempModule);
            continue;
        }
        if (base::Status s = tools::DeleteFile(file)) {
            ctx.report(s, kTempModule);
            continue;
        }
        ++deleted;
        if (ctx.ui) ctx.ui->pump();
    }
    return deleted;
}

bool ClearFolder(app::AppContext& ctx, const std::string& folder) {
    if (folder.empty()) return false;
    std::error_code ec;
    if (fs::is_directory(tools::HostPath(folder), ec)) {
        if (base::Status s = tools::DeleteFolderTree(ctx, folder)) {
            ctx.report(s, kTempModule);
        }
        tools::ForgetPath(folder);
    }
    return tools::CreatePath(folder);
}

std::optional<std::string> ConfirmUnpackFolder(app::AppContext& ctx, const std::string& folder,
                                               const std::string& newName) {
    std::string chosen = WithoutTrailingSeparator(folder);
    if (chosen.empty()) return std::nullopt;
    if (!newName.empty()) chosen += "\\" + newName;
    std::error_code ec;
    if (fs::is_directory(tools::HostPath(chosen), ec)) {
        if (!ctx.ui) return std::nullopt;
        const base::Answer a = ctx.ui->ask("A folder with that name already exists. Do you wish to proceed?",
                                          base::Buttons::YesNo, base::Icon::Question);
        if (a != base::Answer::Yes) return std::nullopt;
        return chosen;
    }
    if (!tools::CreatePath(chosen)) {
        ctx.report(base::err::PathFileAccess(chosen), "frmFolder2");
        return std::nullopt;
    }
    return chosen;
}

}  // namespace ferrolund::archives
