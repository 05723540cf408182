#include "assets/loco_information.h"

#include "tools/backup.h"
#include "tools/files.h"

namespace ferrolund::assets {

namespace {

constexpr const char* kModule = "frmAssets";

// The thumbnail's name: the row's name without the characters a file name can't hold.
std::string ThumbnailName(std::string name) {
    std::erase_if(name, [](char c) { return c == '\'' || c == ';' || c == ':' || c == '\\' || c == '/'; });
    return name;
}

}  // namespace

LocoInformationOutcome AddLocoInformation(app::AppContext& ctx, const std::vector<AssetRow>& rows,
                                          const PictureConverter& convert) {
    LocoInformationOutcome outcome;
    auto lang = [&](int n) { return ctx.langText(n, {}, kModule); };
    if (!ctx.ui) return outcome;
    const std::string question = lang(508) + "\n" + lang(509) + "\n" + lang(510) + "\n" + lang(511);
    if (ctx.ui->ask(question, base::Buttons::OkCancel, base::Icon::Question) != base::Answer::Ok) {
        outcome.cancelled = true;
        return outcome;
    }
    for (const AssetRow& row : rows) {
        if (row.provider.empty()) continue;
        const std::string base = ctx.appPath("Thumbnails\\" + ThumbnailName(row.name));
        const std::string jpg = base + ".jpg";
        const std::string png = base + ".png";
        if (!tools::FileExists(jpg)) {
            ctx.ui->message(lang(512) + "\n" + lang(513), base::Icon::Exclamation);
            continue;
        }
        const std::size_t cut = row.path.find_last_of('\\');
        const std::string folder = ctx.gameRoot() + "\\Assets\\" + row.provider + "\\" + row.product + "\\" +
                                   (cut == std::string::npos ? std::string() : row.path.substr(0, cut + 1)) +
                                   "LocoInformation";
        if (!tools::CreatePath(folder)) {
            ctx.report(base::err::PathNotFound(folder), kModule);
            continue;
        }
        if (!convert(jpg, png) || tools::FileLength(png) <= 0) {
            ctx.report(base::err::FileNotFound(png), kModule);
            (void)tools::DeleteFile(png);
            continue;
        }
        const std::string target = folder + "\\image.png";
        base::Status failed;
        if (tools::FileExists(target)) {
            std::string backup;
            failed = tools::ReplaceWithBackup(png, target, tools::kBackupRule, backup);
        } else {
            failed = tools::CopyFileReplacing(png, target);
        }
        (void)tools::DeleteFile(png);
        if (failed) {
            ctx.report(*failed, kModule);
            continue;
        }
        outcome.written.push_back(target);
    }
    ctx.ui->message(lang(514), base::Icon::Information);
    return outcome;
}

}  // namespace ferrolund::assets
