#include "assets/transform_frame.h"

#include <filesystem>
#include <system_error>

#include "assets/blueprint.h"
#include "tools/backup.h"
#include "tools/files.h"
#include "tools/host_path.h"
#include "tools/serz_convert.h"
#include "tools/tags.h"
#include "tools/text_search.h"

namespace ferrolund::assets {

namespace fs = std::filesystem;

namespace {

constexpr const char* kModule = "frmAssets";
// The back-up rule's refusal when every numbered name is taken.
constexpr int kNoBackupLeft = 58;

std::string NameOf(const std::string& file) {
    const std::size_t cut = file.find_last_of('\\');
    return cut == std::string::npos ? file : file.substr(cut + 1);
}

std::string FolderOf(const std::string& file) {
    const std::size_t cut = file.find_last_of('\\');
    return cut == std::string::npos ? std::string() : file.substr(0, cut + 1);
}

// A geometry's base ends at the first '.', a blueprint's at the last.
std::string BaseOf(const std::string& file, TransformFile kind) {
    const std::string name = NameOf(file);
    const std::size_t point = kind == TransformFile::Geometry ? name.find('.') : name.rfind('.');
    return point == std::string::npos ? name : name.substr(0, point);
}

std::string RowPath(const AssetRow& row) { return JoinRowPath(row.provider, row.product, row.path); }

// A row's line of the report, on one line whatever the reason holds.
std::string ReportLine(const AssetRow& row, std::string text) {
    for (std::size_t at = text.find("\r\n"); at != std::string::npos; at = text.find("\r\n", at)) text.replace(at, 2, " ");
    return RowPath(row) + "  " + text + "\r\n";
}

// The geometry that the row's blueprint names, or empty.
std::string GeometryFile(app::AppContext& ctx, const std::string& blueprintFile) {
    std::string xml;
    if (tools::SerzReadXml(ctx, blueprintFile, xml)) return {};
    const long at = tools::InStr(xml, "<GeometryID");
    if (at == 0) return {};
    std::string value;
    long pos = at;
    tools::GetDetail(xml, pos, "GeometryID", value, tools::kBlueprintTagOptions);
    if (value.empty()) return {};
    return ctx.gameRoot() + "\\Assets\\" + CutMarker(value) + ".GeoPcDx";
}

// Puts `made` at `target` in one step: a copy beside the target, renamed over it. The
// target is either the new file or, when it existed, left as it was.
base::Status PutInPlace(const std::string& made, const std::string& target) {
    const std::string scratch = target + ".part";
    if (base::Status copied = tools::CopyFileReplacing(made, scratch)) return copied;
    std::error_code ec;
    fs::rename(tools::HostPath(scratch), tools::HostPath(target), ec);
    tools::ForgetPath(scratch);
    tools::ForgetPath(target);
    if (!ec) return std::nullopt;
    fs::remove(tools::HostPath(scratch), ec);
    tools::ForgetPath(scratch);
    return base::err::PathFileAccess(target);
}

}  // namespace

base::Status PlaceMadeFile(const std::string& made, const std::string& target, std::string& backup) {
    backup.clear();
    if (tools::FileLength(target) < 0) return PutInPlace(made, target);
    base::Status status = tools::ReplaceWithBackup(made, target, tools::kBackupRule, backup);
    // Every back-up name taken: the original is overwritten without one.
    if (status && status->number == kNoBackupLeft) return PutInPlace(made, target);
    return status;
}

std::string CompileChecked(app::AppContext& ctx, const std::string& base, const std::string& text) {
    const std::string temp = ctx.appPath("TempFiles");
    tools::CreatePath(temp);
    const std::string made = temp + "\\" + base + ".bin";
    if (tools::SerzCompileText(ctx, text, temp + "\\" + base + ".xml", made)) return {};
    return made;
}

namespace {

struct RowRun {
    app::AppContext& ctx;
    const TransformCommand& command;
    std::string temp;

    bool convertToXml(const std::string& file, const std::string& base, std::string& text) {
        const std::string xml = temp + "\\" + base + ".xml";
        base::Status status;
        if (command.file == TransformFile::Geometry) {
            // The converter takes a geometry only under the name of a blueprint.
            const std::string copy = temp + "\\" + base + ".bin";
            status = tools::CopyFileReplacing(file, copy);
            if (!status) status = tools::SerzConvert(ctx, copy, xml, tools::SerzDirection::ToXml);
        } else {
            status = tools::SerzConvert(ctx, file, xml, tools::SerzDirection::ToXml);
        }
        text = status ? std::string() : tools::ReadTextFile(xml);
        return !text.empty();
    }

    std::string compile(const std::string& outBase, const std::string& text) { return CompileChecked(ctx, outBase, text); }

    TransformResult apply(TransformRow& row, const std::string& text) {
        try {
            return command.transform(ctx, row, text);
        } catch (const std::exception& e) {
            ctx.report(base::RunError{base::err::kPathFileAccess, e.what()}, kModule);
            return TransformResult::Skip(TransformResult::Verdict::Unfit, e.what());
        }
    }

    RowOutcome run(const AssetRow& selected, std::string& note) {
        RowOutcome out;
        out.row = selected;
        std::string file = command.rowFile ? command.rowFile(ctx, selected) : RowFile(ctx, selected);
        if (command.file == TransformFile::Geometry) {
            file = GeometryFile(ctx, file);
            if (file.empty()) {
                out.reason = "This item does not name a geometry file.";
                return out;
            }
        }
        if (command.locate && tools::FileLength(file) >= 0) {
            std::string reason;
            file = command.locate(ctx, file, reason);
            if (file.empty()) {
                out.reason = reason;
                return out;
            }
        }
        out.file = file;
        if (tools::FileLength(file) < 0) {
            out.reason = "The file " + file + " does not exist.";
            return out;
        }
        const std::string base = BaseOf(file, command.file);
        std::string text;
        if (!convertToXml(file, base, text)) {
            out.reason = CompileFailedMessage(file);
            return out;
        }
        TransformRow row{out.row, file, base};
        TransformResult result = apply(row, text);
        using Verdict = TransformResult::Verdict;
        if (result.verdict != Verdict::Changed) {
            out.row = selected;
            out.reason = result.verdict == Verdict::Cancelled ? "Cancelled." : result.reason;
            return out;
        }
        const std::string target = result.saveAs.empty() ? file : FolderOf(file) + result.saveAs;
        const std::string made = compile(BaseOf(target, command.file), result.text);
        if (made.empty()) {
            out.row = selected;
            out.reason = CompileFailedMessage(file);
            if (ctx.ui) ctx.ui->message(out.reason, base::Icon::Exclamation);
            return out;
        }
        std::string again;
        if (!result.saveAs.empty() && result.recompileOriginal) {
            again = compile(base, text);
            if (again.empty()) {
                out.row = selected;
                out.reason = CompileFailedMessage(file);
                if (ctx.ui) ctx.ui->message(out.reason, base::Icon::Exclamation);
                return out;
            }
        }
        if (base::Status status = PlaceMadeFile(made, target, out.backup)) {
            ctx.report(*status, kModule);
            out.row = selected;
            out.reason = status->description;
            return out;
        }
        out.written = target;
        std::string originalBackup;
        if (!again.empty()) {
            if (base::Status status = PlaceMadeFile(again, file, originalBackup)) {
                ctx.report(*status, kModule);
                out.reason = status->description;
            }
        }
        if (!result.note.empty()) note = "  " + result.note;
        for (const CompanionFile& companion : result.companions) note += putCompanion(companion, out);
        return out;
    }

    // Writes the companion in TempFiles, then puts it in place; the report's words when
    // that failed, otherwise nothing.
    std::string putCompanion(const CompanionFile& companion, RowOutcome& out) {
        const std::string scratch = temp + "\\" + (companion.scratch.empty() ? NameOf(companion.path) : companion.scratch);
        std::string backup;
        base::Status status;
        if (!tools::WriteTextFile(ctx, scratch, companion.text)) status = base::err::PathFileAccess(scratch);
        if (!status) status = PlaceMadeFile(scratch, companion.path, backup);
        if (!status) {
            out.companions.push_back(companion.path);
            return {};
        }
        ctx.report(*status, kModule);
        return "  " + companion.path + " could not be written: " + status->description;
    }
};

}  // namespace

std::string RowFile(const app::AppContext& ctx, const AssetRow& row) {
    return ctx.gameRoot() + "\\Assets\\" + RowPath(row);
}

std::string BlueprintCacheFile(const std::string& gameRoot) { return gameRoot + "\\Assets\\BluePrints.pak"; }

std::string CompileFailedMessage(const std::string& file) {
    return "Serz.exe could not convert file " + file + "\r\nThis is a limitation of Serz.exe and out of my control.";
}


std::vector<AssetRow> UsableRows(app::AppContext& ctx, const std::vector<AssetRow>& selected) {
    std::vector<AssetRow> rows;
    for (const AssetRow& row : selected)
        if (!tools::TrimBlanks(row.provider).empty()) rows.push_back(row);
    if (rows.empty() && ctx.ui) ctx.ui->message(ctx.langText(444, {}, kModule), base::Icon::Exclamation);
    return rows;
}

TransformOutcome RunTransform(app::AppContext& ctx, const std::vector<AssetRow>& selected, const TransformCommand& command) {
    TransformOutcome out;
    ctx.currentRoutine = command.routine;
    if (command.warn && ctx.ui &&
        ctx.ui->ask(ctx.langText(446, {}, kModule) + "\r\n" + ctx.langText(447, {}, kModule), base::Buttons::OkCancel,
                    base::Icon::Exclamation) != base::Answer::Ok) {
        return out;
    }
    const std::vector<AssetRow> rows = UsableRows(ctx, selected);
    if (rows.empty()) return out;
    if (command.prepare && !command.prepare(ctx, rows)) return out;
    out.ran = true;
    if (!command.reportHeading.empty()) out.report += command.reportHeading + "\r\n";
    RowRun run{ctx, command, ctx.appPath("TempFiles")};
    tools::CreatePath(run.temp);
    if (ctx.ui) ctx.ui->busy(true);
    for (const AssetRow& row : rows) {
        if (ctx.ui) ctx.ui->pump();
        if (ctx.abortFlag) {
            out.aborted = true;
            break;
        }
        std::string note;
        RowOutcome done = run.run(row, note);
        out.report += ReportLine(row, done.reason.empty() ? std::string(kChangesMade) + note : done.reason);
        out.rows.push_back(std::move(done));
    }
    if (ctx.ui) ctx.ui->busy(false);
    const std::string cache = BlueprintCacheFile(ctx.gameRoot());
    if (tools::FileLength(cache) >= 0) ctx.report(tools::DeleteFile(cache), kModule);
    if (ctx.ui)
        ctx.ui->message(command.doneMessage.empty() ? ctx.langText(445, {}, kModule) : command.doneMessage,
                        base::Icon::Information);
    return out;
}

}  // namespace ferrolund::assets
