#include "assets/content_edit.h"

#include <array>
#include <ctime>
#include <utility>

#include "editor/document.h"
#include "tools/backup.h"
#include "tools/codepage.h"
#include "tools/files.h"

namespace ferrolund::assets {

namespace {

const char* const kModule = "frmEdCont";

constexpr std::array<std::pair<std::string_view, ContentKind>, 14> kKinds{{
    {"bin", ContentKind::Serz},
    {"XSec", ContentKind::Serz},
    {"GeoPcDx", ContentKind::Serz},
    {"proxybin", ContentKind::Serz},
    {"txt", ContentKind::Text},
    {"lua", ContentKind::Text},
    {"lan", ContentKind::Text},
    {"html", ContentKind::Text},
    {"xml", ContentKind::Text},
    {"proxyxml", ContentKind::Text},
    {"png", ContentKind::Picture},
    {"jpg", ContentKind::Picture},
    {"TgPcDx", ContentKind::Texture},
    {"dds", ContentKind::Texture},
}};

std::string ClockTime(const app::AppContext& ctx) {
    const std::time_t t = std::chrono::system_clock::to_time_t(ctx.now());
    std::tm tm{};
    localtime_r(&t, &tm);
    char text[16];
    std::strftime(text, sizeof text, "%H:%M:%S", &tm);
    return text;
}

}  // namespace

ContentKind KindOfContent(std::string_view fileName) {
    const std::size_t slash = fileName.find_last_of("\\/");
    if (slash != std::string_view::npos) fileName.remove_prefix(slash + 1);
    const std::size_t point = fileName.rfind('.');
    if (point == std::string_view::npos) return ContentKind::Other;
    const std::string_view extension = fileName.substr(point + 1);
    for (const auto& [name, kind] : kKinds) {
        if (tools::EqualsIgnoreCase(extension, name)) return kind;
    }
    return ContentKind::Other;
}

void ContentEditor::close() {
    file.clear();
    kind = ContentKind::Other;
    extension.clear();
    strBin.clear();
    text.clear();
}

bool ContentEditor::open(app::AppContext& ctx, const std::string& path) {
    ctx.currentRoutine = "Form_Load";
    close();
    log.clear();
    const ContentKind found = KindOfContent(path);
    if (found == ContentKind::Texture || found == ContentKind::Other) {
        if (ctx.ui) {
            ctx.ui->message(found == ContentKind::Texture ? kTexturesNotReadable
                                                          : path + " is not a kind of file this editor opens.",
                            base::Icon::Information);
        }
        return false;
    }
    if (!tools::FileExists(path)) {
        ctx.report(base::err::FileNotFound(path), kModule);
        return false;
    }
    const editor::NameParts parts = editor::SplitDocumentName(path);
    tools::CreatePath(ctx.appPath("TempFiles"));
    const std::string scratch = ctx.appPath("TempFiles\\" + parts.baseName);
    std::string shown;
    if (found == ContentKind::Serz) {
        if (base::Status failed = editor::ConvertScratchCopy(ctx, path, scratch, kModule)) {
            // A failed copy has been reported already; a failed conversion is told here.
            if (tools::FileExists(scratch + "bin")) ctx.report(*failed, kModule);
            return false;
        }
        shown = tools::ReadTextFile(scratch + "xml");
    } else if (found == ContentKind::Text) {
        shown = tools::ReadTextFile(path);
    }
    file = path;
    kind = found;
    extension = parts.extension;
    strBin = scratch;
    text = std::move(shown);
    return true;
}

bool ContentEditor::save(app::AppContext& ctx, const std::string& edited) {
    ctx.currentRoutine = "mnuSaveRS_Click";
    log.clear();
    if (file.empty() || (kind != ContentKind::Serz && kind != ContentKind::Text)) return false;
    if (ctx.ui) ctx.ui->busy(true);
    std::string made;
    if (kind == ContentKind::Serz) {
        // Tells the user itself when the converter gives nothing back.
        made = editor::RecompileText(ctx, edited, strBin, extension, kModule);
    } else if (tools::WriteTextFile(ctx, strBin + extension, edited)) {
        made = strBin + extension;
    }
    if (made.empty()) {
        if (ctx.ui) ctx.ui->busy(false);
        return false;
    }
    log.emplace_back("Making Backup of strBin");
    log.emplace_back(kind == ContentKind::Serz ? "Copying new .bin file" : "Copying new file");
    std::string backup;
    if (base::Status failed = tools::ReplaceWithBackup(made, file, tools::kBackupRule, backup)) {
        ctx.report(*failed, kModule);
        if (ctx.ui) ctx.ui->busy(false);
        return false;
    }
    log.push_back("Finished at " + ClockTime(ctx));
    text = edited;
    if (ctx.ui) ctx.ui->busy(false);
    return true;
}

}  // namespace ferrolund::assets
