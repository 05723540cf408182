#include "assets/clone_asset.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "assets/blueprint_splice.h"
#include "assets/transform_frame.h"
#include "tools/backup.h"
#include "tools/codepage.h"
#include "tools/files.h"
#include "tools/host_path.h"
#include "tools/names.h"
#include "tools/serz_convert.h"
#include "tools/tags.h"
#include "tools/text_repair.h"
#include "tools/text_search.h"

namespace ferrolund::assets {

namespace fs = std::filesystem;
using tools::InStr;

namespace {

constexpr const char* kModule = "frmAssets";

// The elements of a backslash path, empty ones left out.
std::vector<std::string> Elements(std::string_view path) {
    std::vector<std::string> out;
    std::size_t start = 0;
    while (start <= path.size()) {
        const std::size_t cut = path.find('\\', start);
        const std::size_t end = cut == std::string_view::npos ? path.size() : cut;
        if (end > start) out.emplace_back(path.substr(start, end - start));
        if (cut == std::string_view::npos) break;
        start = cut + 1;
    }
    return out;
}

std::string Join(const std::vector<std::string>& elements, std::size_t from, std::size_t to) {
    std::string out;
    for (std::size_t i = from; i < to && i < elements.size(); ++i) out += (out.empty() ? "" : "\\") + elements[i];
    return out;
}

bool SameFile(const std::string& a, const std::string& b) {
    std::error_code ec;
    if (fs::file_size(tools::HostPath(a), ec) != fs::file_size(tools::HostPath(b), ec) || ec) return false;
    return tools::ReadTextFile(a) == tools::ReadTextFile(b);
}

// "a\b" lies in or is "a" (without regard to case).
bool Within(std::string_view path, std::string_view folder) {
    if (path.size() < folder.size() || !tools::EqualsIgnoreCase(path.substr(0, folder.size()), folder)) return false;
    return path.size() == folder.size() || path[folder.size()] == '\\';
}

// The display name's localisation key, emptied where it holds one.
void EmptyNameKey(std::string& text) {
    const long name = InStr(text, "<Name");
    if (name == 0) return;
    const long key = InStr(name, text, "<Key");
    if (key == 0) return;
    const long gt = InStr(key, text, ">");
    if (gt == 0 || text[static_cast<std::size_t>(gt - 2)] == '/') return;  // "<Key/>"
    const long close = InStr(gt, text, "</Key");
    if (close > gt + 1) text.erase(static_cast<std::size_t>(gt), static_cast<std::size_t>(close - gt - 1));
}

// Files the new blueprint names inside the clone's folder that are missing there: one
// that exists under the old base name is copied to the new name; the rest are reported.
void CompleteClone(app::AppContext& ctx, const std::string& xml, const CloneSource& source,
                   const std::string& targetFolder, const std::string& blueprint, const std::string& oldBase,
                   const std::string& newBase, std::string& report) {
    const std::string root = source.cloneRoot();
    constexpr std::string_view kAssets = "\\Assets";
    if (root.size() < kAssets.size() ||
        !tools::EqualsIgnoreCase(std::string_view(root).substr(root.size() - kAssets.size()), kAssets))
        return;
    const std::string gameRoot = root.substr(0, root.size() - kAssets.size());
    ReportList missing;
    missing.currentBlueprint = blueprint;
    for (const Dependency& dep : BlueprintDependencies(xml, gameRoot, FolderOfPath(blueprint))) {
        if (!Within(dep.file, targetFolder) || tools::FileExists(dep.file)) continue;
        const std::string inside = dep.file.substr(targetFolder.size());
        const std::string old = targetFolder + tools::ReplaceEvery(inside, newBase, oldBase);
        if (old != dep.file && tools::FileExists(old) && !tools::CopyFileReplacing(old, dep.file)) continue;
        missing.addMissing(dep.file);
    }
    (void)ctx;
    report += missing.text;
}

}  // namespace

std::string FileNameOf(const std::string& path) {
    const std::size_t cut = path.find_last_of('\\');
    return cut == std::string::npos ? path : path.substr(cut + 1);
}

std::string FolderOfPath(const std::string& path) {
    const std::size_t cut = path.find_last_of('\\');
    return cut == std::string::npos ? std::string() : path.substr(0, cut);
}

std::string CloneSource::file() const { return root + "\\" + ref.provider + "\\" + ref.product + "\\" + ref.blueprintId; }

CloneSource SourceOfRow(const app::AppContext& ctx, const AssetRow& row) {
    CloneSource source;
    source.root = ctx.gameRoot() + "\\Assets";
    source.ref = {std::string(tools::TrimBlanks(row.provider)), std::string(tools::TrimBlanks(row.product)),
                  std::string(tools::TrimBlanks(row.path))};
    return source;
}

std::optional<CloneSource> SourceOfFile(const std::string& file) {
    const std::optional<BlueprintRef> ref = SplitAssetPath(file);
    if (!ref) return std::nullopt;
    const std::size_t tail = ref->provider.size() + ref->product.size() + ref->blueprintId.size() + 3;
    if (file.size() < tail) return std::nullopt;
    CloneSource source;
    source.root = file.substr(0, file.size() - tail);
    source.ref = *ref;
    return source;
}

std::optional<ClonePlace> PlaceOf(const CloneSource& source, CloneLevel level) {
    std::vector<std::string> parts = Elements(source.ref.blueprintId);
    if (parts.empty()) return std::nullopt;
    const std::string fileName = parts.back();
    const std::size_t up = level == CloneLevel::Blueprint ? 1 : level == CloneLevel::Asset ? 2 : 3;
    if (parts.size() <= up) return std::nullopt;
    ClonePlace place;
    const std::size_t kept = parts.size() - up;
    place.relative = Join(parts, 0, kept);
    place.folder = source.root + "\\" + source.ref.provider + "\\" + source.ref.product + "\\" + place.relative;
    place.folderWord = parts[kept >= 2 ? kept - 2 : 0];
    place.blueprintIn = Join(parts, kept, parts.size());
    const std::size_t dot = fileName.rfind('.');
    place.oldBase = dot == std::string::npos ? fileName : fileName.substr(0, dot);
    return place;
}

CloneTarget TargetOf(const CloneSource& source, const ClonePlace& place, std::string_view typedFolder) {
    CloneTarget target;
    const std::vector<std::string> typed = Elements(tools::TrimBlanks(typedFolder));
    if (typed.empty()) {
        target.message = "You have failed to complete one of the boxes?";
        return target;
    }
    for (const std::string& element : typed) {
        if (element == "." || element == ".." || element.find_first_of("/:*?\"<>|") != std::string::npos) {
            target.message = "\"" + std::string(typedFolder) + "\" cannot be used as a folder name.";
            return target;
        }
    }
    const std::vector<std::string> old = Elements(place.relative);
    const std::size_t word = old.size() >= 2 ? old.size() - 2 : 0;
    std::vector<std::string> made(old.begin(), old.begin() + static_cast<long>(word));
    made.insert(made.end(), typed.begin(), typed.end());
    if (old.size() >= 2) made.push_back(old.back());
    target.relative = Join(made, 0, made.size());
    target.folder = source.cloneRoot() + "\\" + source.ref.provider + "\\" + source.ref.product + "\\" + target.relative;
    if (Within(target.folder, place.folder)) {
        target.message = "The clone cannot be put in the folder of its original: " + target.folder;
        target.relative.clear();
    }
    return target;
}

CloneNames OfferedNames(const ClonePlace& place, std::string_view blueprintXml) {
    CloneNames names;
    names.fileName = place.oldBase + "_";
    names.internalName = tools::ShownText(tools::FixEntitiesCopy(BlueprintEnglishName(blueprintXml))) + "_";
    names.folder = place.folderWord + "\\";
    return names;
}

std::string RewriteClone(std::string_view xml, std::string_view internalName, std::string_view oldRelative,
                         std::string_view newRelative, std::string_view oldBase, std::string_view newBase) {
    const std::string oldRel = XmlValueOfTyped(oldRelative);
    const std::string newRel = XmlValueOfTyped(newRelative);
    const std::string oldName = XmlValueOfTyped(oldBase);
    const std::string newName = XmlValueOfTyped(newBase);
    std::string text = tools::ReplaceEach(xml, {{oldRel, newRel}, {oldName, newName}});
    text = tools::ReplaceEvery(text, "\\\\", "\\");
    SetBlueprintName(text, XmlValueOfTyped(internalName), NameLanguages::Five);
    EmptyNameKey(text);
    return text;
}

base::Status CopyFileMerging(const std::string& from, const std::string& to, long* keptAsBackup) {
    if (tools::FileLength(to) >= 0) {
        if (SameFile(from, to)) return std::nullopt;
        const tools::BackupOutcome kept = tools::MakeBackup(to, tools::kBackupRule);
        if (kept.error) return kept.error;
        if (keptAsBackup && !kept.backup.empty()) ++*keptAsBackup;
    }
    tools::CreatePath(FolderOfPath(to));
    return tools::CopyFileReplacing(from, to);
}

FolderCopy CopyFolderMerging(const std::string& from, const std::string& to) {
    FolderCopy out;
    const fs::path source = tools::HostPath(from);
    std::error_code ec;
    if (!fs::is_directory(source, ec)) {
        out.error = base::err::PathNotFound(from);
        return out;
    }
    // The list is made before anything is written.
    std::vector<std::string> files;
    for (auto it = fs::recursive_directory_iterator(source, ec); !ec && it != fs::recursive_directory_iterator();
         it.increment(ec)) {
        if (!it->is_regular_file(ec)) continue;
        std::string inside;
        for (const fs::path& element : fs::relative(it->path(), source, ec)) inside += "\\" + element.string();
        files.push_back(inside);
    }
    if (!tools::CreatePath(to)) {
        out.error = base::err::PathFileAccess(to);
        return out;
    }
    std::sort(files.begin(), files.end());
    for (const std::string& inside : files) {
        if ((out.error = CopyFileMerging(from + inside, to + inside, &out.keptAsBackup))) return out;
        ++out.copied;
    }
    return out;
}

std::string ReadCloneBlueprint(app::AppContext& ctx, const CloneSource& source, std::string& report) {
    const std::string file = source.file();
    if (tools::FileLength(file) < 0) {
        report += "The file " + file + " does not exist.\r\n";
        return {};
    }
    std::string xml;
    if (tools::SerzReadXml(ctx, file, xml) || xml.empty()) {
        report += CompileFailedMessage(file) + "\r\n";
        return {};
    }
    return xml;
}

void FinishClones(app::AppContext& ctx, CloneOutcome& outcome) {
    if (ctx.ui) ctx.ui->busy(false);
    // Called off at the first question: nothing was done.
    if (outcome.cancelled && outcome.written.empty() && outcome.report.empty()) {
        outcome.ran = false;
        return;
    }
    const std::string cache = BlueprintCacheFile(ctx.gameRoot());
    if (tools::FileLength(cache) >= 0) ctx.report(tools::DeleteFile(cache), kModule);
    if (ctx.ui) ctx.ui->message(ctx.langText(445, {}, kModule), base::Icon::Information);
}

namespace {

// One item of "Clone selected Asset"; false when the person cancelled.
bool CloneOne(app::AppContext& ctx, const CloneSource& source, CloneLevel level, const CloneAsk& ask,
              CloneOutcome& out) {
    const std::string file = source.file();
    const std::optional<ClonePlace> place = PlaceOf(source, level);
    if (!place) {
        out.report += file + "  This item lies too near its product folder to be cloned.\r\n";
        return true;
    }
    const std::string xml = ReadCloneBlueprint(ctx, source, out.report);
    if (xml.empty()) return true;
    std::optional<CloneNames> names;
    CloneTarget target;
    while (true) {
        names = ask(OfferedNames(*place, xml));
        if (!names || tools::TrimBlanks(names->fileName).empty() || tools::TrimBlanks(names->internalName).empty())
            return false;
        target = TargetOf(source, *place, names->folder);
        if (target.message.empty()) break;
        if (ctx.ui) ctx.ui->message(target.message, base::Icon::Exclamation);
    }
    const std::string newBase(tools::TrimBlanks(names->fileName));
    const std::string text = RewriteClone(xml, tools::TrimBlanks(names->internalName), place->relative,
                                          target.relative, place->oldBase, newBase);
    const std::string made = CompileChecked(ctx, newBase, text);
    if (made.empty()) {
        out.report += CompileFailedMessage(file) + "\r\n";
        if (ctx.ui) ctx.ui->message(CompileFailedMessage(file), base::Icon::Exclamation);
        return true;
    }
    const FolderCopy copy = CopyFolderMerging(place->folder, target.folder);
    if (copy.error) {
        ctx.report(*copy.error, kModule);
        out.report += file + "  The folder could not be copied to " + target.folder + ": " + copy.error->description +
                      "\r\n";
        return true;
    }
    // The copy of the old blueprint makes way for the new one.
    const std::string copiedOld = target.folder + "\\" + place->blueprintIn;
    const std::string blueprint = FolderOfPath(copiedOld) + "\\" + newBase + ".bin";
    ctx.report(tools::DeleteFile(copiedOld), kModule);
    std::string backup;
    if (base::Status placed = PlaceMadeFile(made, blueprint, backup)) {
        ctx.report(*placed, kModule);
        out.report += file + "  " + placed->description + "\r\n";
        return true;
    }
    out.written.push_back(blueprint);
    out.report += file + "  Cloned as " + blueprint + "\r\n";
    if (copy.keptAsBackup > 0)
        out.report += "  " + std::to_string(copy.keptAsBackup) + " file(s) already in " + target.folder +
                      " were kept as back-ups.\r\n";
    CompleteClone(ctx, text, source, target.folder, blueprint, place->oldBase, newBase, out.report);
    return true;
}

}  // namespace

CloneOutcome RunCloneItems(app::AppContext& ctx, const std::vector<CloneSource>& sources, const CloneItemRun& run) {
    CloneOutcome out;
    if (sources.empty()) {
        if (ctx.ui) ctx.ui->message(ctx.langText(444, {}, kModule), base::Icon::Exclamation);
        return out;
    }
    out.ran = true;
    if (ctx.ui) ctx.ui->busy(true);
    for (const CloneSource& source : sources) {
        if (ctx.ui) ctx.ui->pump();
        if (ctx.abortFlag) {
            out.aborted = true;
            break;
        }
        if (!run(source, out)) {
            out.cancelled = true;
            break;
        }
    }
    FinishClones(ctx, out);
    return out;
}

CloneOutcome CloneAssets(app::AppContext& ctx, const std::vector<CloneSource>& sources, CloneLevel level,
                         const CloneAsk& ask) {
    ctx.currentRoutine = level == CloneLevel::RollingStock ? "mnuCloneDefault_Click" : "mnuClone_Click";
    return RunCloneItems(ctx, sources, [&](const CloneSource& source, CloneOutcome& out) {
        return CloneOne(ctx, source, level, ask, out);
    });
}

}  // namespace ferrolund::assets
