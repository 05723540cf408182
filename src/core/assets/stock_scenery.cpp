#include "assets/stock_scenery.h"

#include <filesystem>
#include <system_error>

#include "assets/blueprint.h"
#include "assets/stock_templates.h"
#include "tools/backup.h"
#include "tools/codepage.h"
#include "tools/files.h"
#include "tools/host_path.h"
#include "tools/tags.h"
#include "tools/text_search.h"

namespace ferrolund::assets {

namespace fs = std::filesystem;
using tools::InStr;
using Verdict = TransformResult::Verdict;

namespace {

constexpr const char* kModule = "frmAssets";

std::string FolderOf(std::string_view path) {
    const std::size_t cut = path.find_last_of('\\');
    return cut == std::string_view::npos ? std::string() : std::string(path.substr(0, cut));
}

std::string LastElement(std::string_view path) {
    const std::size_t cut = path.find_last_of('\\');
    return std::string(cut == std::string_view::npos ? path : path.substr(cut + 1));
}

bool EndsWith(std::string_view name, std::string_view ending) {
    return name.size() >= ending.size() && tools::EqualsIgnoreCase(name.substr(name.size() - ending.size()), ending);
}

// The names of the files in `folder` whose names end with `ending`, in any case.
std::vector<std::string> FilesEnding(const std::string& folder, std::string_view ending) {
    std::vector<std::string> names;
    std::error_code ec;
    for (fs::directory_iterator it(tools::HostPath(folder), ec), end; !ec && it != end; it.increment(ec)) {
        const std::string name = it->path().filename().string();
        if (it->is_regular_file(ec) && EndsWith(name, ending)) names.push_back(name);
    }
    return names;
}

std::string Value(std::string_view text, std::string_view from, std::string_view tag) {
    std::string value;
    long pos = InStr(text, from);
    if (pos > 0) tools::GetDetail(text, pos, tag, value, tools::kBlueprintTagOptions);
    return value;
}

// Copies the files of `from` whose names end with `ending` into `to`; the problems go
// into `problems`. Gives how many were copied.
int CopyFilesEnding(app::AppContext& ctx, const std::string& from, const std::string& to, std::string_view ending,
                    std::string& problems) {
    int copied = 0;
    for (const std::string& name : FilesEnding(from, ending)) {
        if (base::Status status = PlaceCopy(from + "\\" + name, to + "\\" + name)) {
            ctx.report(*status, kModule);
            problems += " " + name + " could not be copied.";
            continue;
        }
        ++copied;
    }
    return copied;
}

}  // namespace

base::Status PlaceCopy(const std::string& from, const std::string& to) {
    if (tools::FileLength(to) >= 0) {
        if (tools::ReadTextFile(to) == tools::ReadTextFile(from)) return std::nullopt;
        std::string backup;
        return tools::ReplaceWithBackup(from, to, tools::kBackupRule, backup);
    }
    base::Status status = tools::CopyFileReplacing(from, to);
    tools::ForgetPath(to);
    return status;
}

// --- Convert Selected stock into a Scenery Item ---

std::string SceneryBlueprint(std::string_view templateText, std::string_view name, std::string_view geometry) {
    std::string text(templateText);
    text = FillMarkers(std::move(text), {{"aaaaaa", "Static - " + std::string(name)}});
    text = FillMarkers(std::move(text), {{"bbbbbb", std::string(geometry)}});
    return text;
}

std::string StaticGeometryId(std::string_view rowFolder, std::string_view geometryId) {
    return std::string(rowFolder) + "\\Static\\" + LastElement(geometryId);
}

TransformOutcome ConvertToScenery(app::AppContext& ctx, const std::vector<AssetRow>& selected) {
    TransformCommand command("mnuSce_Click", TransformFile::Blueprint, [](app::AppContext& c, TransformRow& row,
                                                                          std::string_view text) {
        const std::string templateText = StockTemplate(c, "APBatch11.txt");
        if (templateText.empty()) return TransformResult::Skip(Verdict::Unfit, MissingTemplateMessage("APBatch11.txt"));
        const std::string geometry = Value(text, "<GeometryID", "GeometryID");
        if (geometry.empty()) return TransformResult::Skip(Verdict::Unfit, "This item does not name a geometry file.");
        const std::string folder = FolderOf(row.file);
        const std::string target = folder + "\\Static";
        if (!tools::CreatePath(target + "\\Textures")) {
            return TransformResult::Skip(Verdict::Unfit, "The folder " + target + "\\Textures could not be made.");
        }
        const std::string rowFolder =
            FolderOf(JoinRowPath(row.row.provider, row.row.product, row.row.path));
        const std::string name = Value(text, "<Localisation", "English");
        TransformResult result =
            TransformResult::Changed(SceneryBlueprint(templateText, name, StaticGeometryId(rowFolder, geometry)));
        result.saveAs = "Static\\" + row.base + ".bin";

        std::string problems;
        const int models = CopyFilesEnding(c, folder, target, "GeoPcDx", problems);
        int textures = 0;
        const std::string sourceTextures = folder + "\\Textures";
        std::error_code ec;
        if (!fs::is_directory(tools::HostPath(sourceTextures), ec)) {
            if (c.ui)
                c.ui->message("There is no Textures folder in " + folder + "\r\nYou will need to work out where textures are?",
                              base::Icon::Exclamation);
        } else {
            textures = CopyFilesEnding(c, sourceTextures, target + "\\Textures", "TgPcDx", problems);
        }
        result.note = "saved as " + target + "\\" + row.base + ".bin with " + std::to_string(models) + " model(s) and " +
                      std::to_string(textures) + " texture(s)." + problems;
        return result;
    });
    return RunTransform(ctx, selected, command);
}

// --- Make Better Snow ---

SnowOutcome MakeBetterSnow(app::AppContext& ctx, const std::vector<AssetRow>& selected) {
    SnowOutcome out;
    ctx.currentRoutine = "mnuSnow_Click";
    const std::vector<AssetRow> rows = UsableRows(ctx, selected);
    if (rows.empty()) return out;
    const std::string snow = StockTemplateFile(ctx, kSnowTexture);
    if (tools::FileLength(snow) <= 0) {
        if (ctx.ui)
            ctx.ui->message("The Snow000_Deep.TgPcDx file was not found in your\r\nFerrolund\\Templates folder.",
                            base::Icon::Exclamation);
        return out;
    }
    out.ran = true;
    if (ctx.ui) ctx.ui->busy(true);
    for (const AssetRow& row : rows) {
        if (ctx.ui) ctx.ui->pump();
        if (ctx.abortFlag) break;
        const std::string target = FolderOf(RowFile(ctx, row)) + "\\" + std::string(kSnowTexture);
        std::string line = JoinRowPath(row.provider, row.product, row.path) + "  ";
        if (base::Status status = PlaceCopy(snow, target)) {
            ctx.report(*status, kModule);
            line += status->description;
        } else {
            out.written.push_back(target);
            line += std::string(kChangesMade);
        }
        out.report += line + "\r\n";
    }
    if (ctx.ui) {
        ctx.ui->busy(false);
        ctx.ui->message(ctx.langText(548, std::string(kChangesMade), kModule), base::Icon::Information);
    }
    return out;
}

}  // namespace ferrolund::assets
