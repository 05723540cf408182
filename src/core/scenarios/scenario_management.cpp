#include "scenarios/scenario_management.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <filesystem>
#include <pugixml.hpp>

#include "tools/backup.h"
#include "tools/files.h"
#include "tools/host_path.h"
#include "tools/serz_convert.h"
#include "tools/tags.h"
#include "tools/text_search.h"

extern char** environ;

namespace ferrolund::scenarios {
namespace fs = std::filesystem;

namespace {

constexpr const char* kModule = "frmShowRoutes";

std::string Lower(std::string_view text) {
    std::string lower(text);
    for (char& c : lower) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return lower;
}

bool EndsWith(std::string_view text, std::string_view end) {
    return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
}

// The names of the entries of a folder (a system path) that are folders or files, sorted.
std::vector<std::string> Entries(const std::string& folder, bool folders) {
    std::vector<std::string> names;
    std::error_code ec;
    for (fs::directory_iterator it(tools::HostPath(folder), ec), end; !ec && it != end; it.increment(ec)) {
        std::error_code kind;
        if (folders ? it->is_directory(kind) : it->is_regular_file(kind))
            names.push_back(tools::SystemPath(it->path().filename()));
    }
    std::sort(names.begin(), names.end());
    return names;
}

std::string ScenariosFolder(const app::AppContext& ctx, const std::string& routeFolder) {
    return ctx.gameRoot() + "\\Content\\Routes\\" + routeFolder + "\\Scenarios";
}

// Puts a copy of `made` at `target`; an existing target is first renamed by the rule.
base::Status PutFile(const std::string& made, const std::string& target, std::string& backup) {
    backup.clear();
    if (tools::FileLength(target) < 0) return tools::CopyFileReplacing(made, target);
    return tools::ReplaceWithBackup(made, target, tools::kBackupRule, backup);
}

// Writes `text` to a scratch file in TempFiles and puts it in the place of `target`.
base::Status ReplaceText(app::AppContext& ctx, const std::string& text, const std::string& scratchName,
                         const std::string& target, std::string& backup) {
    const std::string temp = ctx.appPath("TempFiles");
    tools::CreatePath(temp);
    const std::string scratch = temp + "\\" + scratchName;
    if (!tools::WriteTextFile(ctx, scratch, text)) return base::err::PathFileAccess(scratch);
    base::Status status = tools::ReplaceWithBackup(scratch, target, tools::kScenarioBackupRule, backup);
    (void)tools::DeleteFile(scratch);
    return status;
}

long CountConsists(std::string_view xml) {
    long count = 0;
    for (long at = tools::InStr(1, xml, "<cConsist d"); at > 0; at = tools::InStr(at + 1, xml, "<cConsist d")) ++count;
    return count;
}

}  // namespace

int MakeScenariosStandard(app::AppContext& ctx, const std::vector<std::string>& folders, StandardFrom from) {
    ctx.currentRoutine = from == StandardFrom::Career ? "Command14_Click" : "Command16_Click";
    const char* other = from == StandardFrom::Career ? "eTimetableScenarioClass" : "eCareerScenarioClass";
    const char* skip[] = {"eStandardScenarioClass", "eTemplateScenarioClass", "eFreeRoamScenarioClass", other};
    int changed = 0;
    for (const std::string& folder : folders) {
        const std::string path = folder + "\\ScenarioProperties.xml";
        std::string text = tools::ReadTextFile(path);
        if (text.empty()) {
            ctx.report(base::err::FileNotFound(path), kModule);
            continue;
        }
        if (std::any_of(std::begin(skip), std::end(skip), [&](const char* c) { return tools::InStr(text, c) > 0; }))
            continue;
        long pos = tools::InStr(text, "<ScenarioClass");
        if (pos == 0) continue;
        if (base::Status failed = tools::PutDetail(text, pos, "ScenarioClass", "eStandardScenarioClass")) {
            ctx.report(*failed, kModule);
            continue;
        }
        if (pos == 0) continue;
        std::string backup;
        if (base::Status failed = ReplaceText(ctx, text, "ScenarioProperties.xml", path, backup)) {
            ctx.report(*failed, kModule);
            continue;
        }
        ++changed;
    }
    ctx.ui->message("All selected scenarios are now 'Standard'", base::Icon::Information);
    return changed;
}

ConsistCut CutEmptyConsists(std::string_view xml) {
    ConsistCut cut;
    cut.xml.reserve(xml.size());
    std::size_t copied = 0;  // 0-based: the text before this is in the result
    long pos = 1;
    for (;;) {
        const long a = tools::InStr(pos, xml, "<cConsist");
        if (a == 0) break;
        long b = tools::InStr(a + 10, xml, "<cConsist");
        if (b == 0) {
            const long close = tools::InStr(a + 10, xml, "</cConsist");
            if (close == 0) break;  // an unclosed last consist is left as it stands
            b = std::min<long>(close + 12, static_cast<long>(xml.size()) + 1);
        }
        const std::string_view consist = xml.substr(static_cast<std::size_t>(a - 1), static_cast<std::size_t>(b - a));
        if (tools::InStr(consist, "<cOwnedEntity") > 0) {
            ++cut.kept;
        } else {
            cut.xml.append(xml.substr(copied, static_cast<std::size_t>(a - 1) - copied));
            copied = static_cast<std::size_t>(b - 1);
            ++cut.removed;
        }
        pos = b;
    }
    cut.xml.append(xml.substr(copied));
    return cut;
}

CleanOutcome RemoveEmptyConsists(app::AppContext& ctx, const std::string& folder) {
    ctx.currentRoutine = "Command11_Click";
    CleanOutcome outcome;
    const std::string binary = folder + "\\Scenario.bin";
    if (tools::FileLength(binary) < 0) {
        outcome.error = base::err::FileNotFound(binary);
        return outcome;
    }
    std::string xml;
    if (base::Status failed = tools::SerzReadXml(ctx, binary, xml)) {
        outcome.error = base::RunError{failed->number, binary + " could not be converted: " + failed->description};
        return outcome;
    }
    ConsistCut cut = CutEmptyConsists(xml);
    xml.clear();
    if (cut.removed == 0) return outcome;

    const std::string temp = ctx.appPath("TempFiles");
    tools::CreatePath(temp);
    const std::string text = temp + "\\Scenario.xml";
    const std::string scratch = temp + "\\Scenario.bin";
    (void)tools::DeleteFile(text);
    if (!tools::WriteTextFile(ctx, text, cut.xml)) {
        outcome.error = base::err::PathFileAccess(text);
        return outcome;
    }
    if (base::Status failed = tools::SerzConvert(ctx, text, scratch, tools::SerzDirection::ToBinary)) {
        outcome.error = base::RunError{failed->number, "The scenario without its empty consists could not be compiled, "
                                                       "so Scenario.bin was left as it was: " + failed->description};
        return outcome;
    }
    std::string back;
    const base::Status reread = tools::SerzReadXml(ctx, scratch, back);
    if (reread || CountConsists(back) != CountConsists(cut.xml)) {
        (void)tools::DeleteFile(scratch);
        outcome.error = base::RunError{base::err::kInputPastEnd, "The compiled scenario did not read back whole, "
                                                                 "so Scenario.bin was left as it was."};
        return outcome;
    }
    outcome.error = tools::ReplaceWithBackup(scratch, binary, tools::kScenarioBackupRule, outcome.backup);
    (void)tools::DeleteFile(scratch);
    if (!outcome.error) outcome.removed = cut.removed;
    return outcome;
}

void RemoveEmptyConsistsCommand(app::AppContext& ctx, const std::string& folder) {
    ctx.ui->busy(true);
    const CleanOutcome outcome = RemoveEmptyConsists(ctx, folder);
    ctx.ui->busy(false);
    if (outcome.error) {
        ctx.ui->message(outcome.error->description, base::Icon::Exclamation);
    } else if (outcome.removed == 0) {
        ctx.ui->message("No empty consists were found in this scenario.", base::Icon::Information);
    } else {
        ctx.ui->message(std::to_string(outcome.removed) + " empty consist(s) removed. The old Scenario.bin is now " +
                            outcome.backup.substr(outcome.backup.rfind('\\') + 1) + ".",
                        base::Icon::Information);
    }
}

RevertOutcome RevertScenario(const std::string& folder) {
    RevertOutcome outcome;
    const std::string base = folder + "\\Scenario.bak";
    for (int n = 1; n <= 50; ++n) {
        const std::string numbered = base + std::to_string(n);
        if (tools::FileLength(numbered) < 0) continue;
        if (base::Status failed = tools::DeleteFile(numbered)) {
            if (!outcome.error) outcome.error = failed;
        } else {
            ++outcome.backupsDeleted;
        }
    }
    const std::string binary = folder + "\\Scenario.bin";
    if (tools::FileLength(binary) >= 0 && tools::FileLength(base) >= 0) {
        // One rename over the old file: the scenario is never without its Scenario.bin.
        std::error_code ec;
        fs::rename(tools::HostPath(base), tools::HostPath(binary), ec);
        tools::ForgetPath(base);
        tools::ForgetPath(binary);
        if (ec) {
            if (!outcome.error) outcome.error = base::err::PathFileAccess(binary);
        } else {
            ++outcome.reverted;
        }
    }
    return outcome;
}

RevertOutcome RevertRoute(const app::AppContext& ctx, const std::string& routeFolder) {
    RevertOutcome total;
    const std::string scenarios = ScenariosFolder(ctx, routeFolder);
    for (const std::string& name : Entries(scenarios, true)) {
        const RevertOutcome one = RevertScenario(scenarios + "\\" + name);
        total.backupsDeleted += one.backupsDeleted;
        total.reverted += one.reverted;
        if (!total.error) total.error = one.error;
    }
    return total;
}

std::string SaveCurrentSaveAs(app::AppContext& ctx, const std::string& folder) {
    ctx.currentRoutine = "Command4_Click";
    const std::string save = folder + "\\CurrentSave.bin";
    if (tools::FileLength(save) < 0) {
        ctx.ui->message("There is no CurrentSave.bin file for this scenario.", base::Icon::Exclamation);
        return {};
    }
    std::optional<std::string> chosen =
        ctx.ui->chooseSaveFile("Save CurrentSave.bin as", "Saved scenarios (*.bin)|*.bin", folder);
    if (!chosen || chosen->empty()) return {};
    std::string target = *chosen;
    const std::size_t name = target.find_last_of("\\/");
    if (target.find('.', name == std::string::npos ? 0 : name) == std::string::npos) target += ".bin";
    std::string backup;
    if (base::Status failed = PutFile(save, target, backup)) {
        ctx.report(*failed, kModule);
        return {};
    }
    const std::string md5 = save + ".MD5";
    if (tools::FileLength(md5) >= 0) {
        if (base::Status failed = PutFile(md5, target + ".MD5", backup)) ctx.report(*failed, kModule);
    }
    return target;
}

base::Status ReplaceCurrentSave(const std::string& folder, const std::string& saveFile) {
    if (tools::FileLength(saveFile) < 0) return base::err::FileNotFound(saveFile);
    const std::string save = folder + "\\CurrentSave.bin";
    std::error_code ec;
    if (fs::equivalent(tools::HostPath(saveFile), tools::HostPath(save), ec)) return {};
    std::string saveBackup;
    if (base::Status failed = PutFile(saveFile, save, saveBackup)) return failed;
    const std::string md5 = save + ".MD5";
    std::string md5Backup;
    base::Status md5Status;
    if (tools::FileLength(saveFile + ".MD5") >= 0) {
        md5Status = PutFile(saveFile + ".MD5", md5, md5Backup);
    } else if (tools::FileLength(md5) >= 0) {
        // The old checksum does not belong to the new save: it goes with the old one.
        md5Status = tools::MakeBackup(md5, tools::kBackupRule).error;
    }
    if (md5Status) {
        // The pair must stay together: the old save comes back.
        if (saveBackup.empty()) {
            (void)tools::DeleteFile(save);
        } else {
            fs::rename(tools::HostPath(saveBackup), tools::HostPath(save), ec);
            tools::ForgetPath(saveBackup);
            tools::ForgetPath(save);
        }
    }
    return md5Status;
}

namespace {

bool NoSaveSelected(app::AppContext& ctx, const std::string& saveFile) {
    if (!saveFile.empty()) return false;
    ctx.ui->message("Please select a saved file first.", base::Icon::Exclamation);
    return true;
}

}  // namespace

bool OverwriteCurrentSave(app::AppContext& ctx, const std::string& folder, const std::string& saveFile) {
    ctx.currentRoutine = "Command5_Click";
    if (NoSaveSelected(ctx, saveFile)) return false;
    if (ctx.ui->ask("This operation will delete your CurrentSave.bin file for this Scenario and replace it\r\n"
                    "with the selected file. Proceed?",
                    base::Buttons::YesNo, base::Icon::Question) != base::Answer::Yes)
        return false;
    if (base::Status failed = ReplaceCurrentSave(folder, saveFile)) {
        ctx.report(*failed, kModule);
        return false;
    }
    return true;
}

std::string SimulatorAppId(std::string_view gameRoot) {
    const std::string lower = Lower(gameRoot);
    if (lower.find("railworks beta") != std::string::npos) return "24010";
    if (lower.find("railworks dev") != std::string::npos) return "24020";
    return "24000";
}

base::Status LaunchWithSteam(const std::string& appId) {
    bool found = false;
    const char* path = std::getenv("PATH");
    std::string_view dirs = path ? path : "";
    while (!found && !dirs.empty()) {
        const std::size_t colon = dirs.find(':');
        const std::string dir(dirs.substr(0, colon));
        dirs = colon == std::string_view::npos ? std::string_view{} : dirs.substr(colon + 1);
        found = !dir.empty() && ::access((dir + "/steam").c_str(), X_OK) == 0;
    }
    if (!found)
        return base::RunError{base::err::kFileNotFound, "Steam was not found on this computer, so RailWorks cannot be started."};
    // The shell starts Steam in the background and ends at once, so nothing waits for the game.
    std::string shell = "/bin/sh", dashC = "-c", script = "steam -applaunch \"$0\" >/dev/null 2>&1 &", id = appId;
    char* argv[] = {shell.data(), dashC.data(), script.data(), id.data(), nullptr};
    pid_t pid = 0;
    if (::posix_spawn(&pid, "/bin/sh", nullptr, nullptr, argv, environ) != 0)
        return base::RunError{base::err::kFileNotFound, "Steam could not be started."};
    int status = 0;
    ::waitpid(pid, &status, 0);
    return {};
}

bool RunWithSave(app::AppContext& ctx, const std::string& folder, const std::string& saveFile,
                 const SimulatorLauncher& launch) {
    ctx.currentRoutine = "Command6_Click";
    if (NoSaveSelected(ctx, saveFile)) return false;
    if (ctx.ui->ask("This operation will delete your CurrentSave.bin file for this Scenario. If you wish to keep it\r\n"
                    "and wish to do so click NO and save it before proceeding. Proceed?",
                    base::Buttons::YesNo, base::Icon::Question) != base::Answer::Yes)
        return false;
    if (base::Status failed = ReplaceCurrentSave(folder, saveFile)) {
        ctx.report(*failed, kModule);
        return false;
    }
    if (base::Status failed = launch(SimulatorAppId(ctx.gameRoot()))) {
        ctx.ui->message(failed->description, base::Icon::Exclamation);
        return false;
    }
    return true;
}

int DeleteScenarios(app::AppContext& ctx, const std::vector<std::string>& folders) {
    ctx.currentRoutine = "Command8_Click";
    if (folders.empty()) {
        ctx.ui->message(ctx.langText(156, "You do not appear to have selected a scenario?", kModule),
                        base::Icon::Exclamation);
        return 0;
    }
    if (ctx.ui->ask(ctx.langText(155, "Do you really wish to delete the selected scenario(s)?", kModule),
                    base::Buttons::YesNo, base::Icon::Question) != base::Answer::Yes)
        return 0;
    int deleted = 0;
    for (const std::string& folder : folders) {
        if (base::Status failed = tools::DeleteFolderTree(ctx, folder)) {
            ctx.report(*failed, kModule);
        } else {
            ++deleted;
        }
    }
    return deleted;
}

std::vector<InvalidScenario> FindInvalidScenarios(app::AppContext& ctx, const std::string& routeFolder) {
    ctx.currentRoutine = "Command13_Click";
    std::vector<InvalidScenario> invalid;
    const std::string scenarios = ScenariosFolder(ctx, routeFolder);
    for (const std::string& name : Entries(scenarios, true)) {
        if (ctx.abortFlag) break;
        ctx.ui->pump();
        const std::string folder = scenarios + "\\" + name;
        const std::string propertiesPath = folder + "\\ScenarioProperties.xml";
        std::string reason;
        if (tools::FileLength(propertiesPath) < 0) {
            reason = "ScenarioProperties.xml is missing";
        } else {
            const std::string properties = tools::ReadTextFile(propertiesPath);
            pugi::xml_document document;
            const pugi::xml_parse_result parsed = document.load_buffer(properties.data(), properties.size());
            if (!parsed) {
                reason = std::string("ScenarioProperties.xml is not well-formed: ") + parsed.description();
            } else if (tools::InStr(properties, "<DisplayName") == 0) {
                reason = "ScenarioProperties.xml has no DisplayName";
            } else if (tools::InStr(properties, "<ScenarioClass") == 0) {
                reason = "ScenarioProperties.xml has no ScenarioClass";
            }
        }
        const std::string binary = folder + "\\Scenario.bin";
        if (reason.empty() && tools::FileLength(binary) < 0) reason = "Scenario.bin is missing";
        std::string xml;
        if (reason.empty()) {
            if (base::Status failed = tools::SerzReadXml(ctx, binary, xml))
                reason = "Scenario.bin does not convert: " + failed->description;
        }
        if (!reason.empty()) invalid.push_back({name, std::move(reason)});
    }
    return invalid;
}

std::vector<std::string> SavedCopies(const std::string& folder) {
    std::vector<std::string> copies;
    for (const std::string& name : Entries(folder, false)) {
        const std::string lower = Lower(name);
        const std::size_t bak = lower.rfind(".bak");
        const bool backup = bak != std::string::npos &&
                            std::all_of(lower.begin() + static_cast<long>(bak) + 4, lower.end(),
                                        [](char c) { return std::isdigit(static_cast<unsigned char>(c)) != 0; });
        const bool save = EndsWith(lower, ".bin") && lower != "scenario.bin" && lower != "currentsave.bin" &&
                          lower != "scenarionetworkproperties.bin";
        if (backup || save) copies.push_back(name);
    }
    return copies;
}

}  // namespace ferrolund::scenarios
