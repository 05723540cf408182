#include "assets/clone_reskin.h"

#include <set>

#include "assets/blueprint_splice.h"
#include "assets/transform_frame.h"
#include "tools/codepage.h"
#include "tools/files.h"
#include "tools/host_path.h"
#include "tools/names.h"
#include "tools/numbers.h"
#include "tools/serz_convert.h"
#include "tools/tags.h"
#include "tools/text_repair.h"
#include "tools/text_search.h"

namespace ferrolund::assets {

using tools::InStr;

namespace {

constexpr const char* kModule = "frmAssets";
constexpr std::string_view kTextureEnding = ".TgPcDx";

// The file with its name as the disk spells it, or empty when it is not there.
std::string OnDisk(const std::string& file) {
    if (!tools::FileExists(file)) return {};
    return FolderOfPath(file) + "\\" + tools::HostPath(file).filename().string();
}

// The texture, or its repaired spelling, as the disk spells it.
std::string FoundTexture(const std::string& file) {
    std::string found = OnDisk(file);
    if (found.empty()) found = OnDisk(tools::FixEntitiesCopy(file));
    return found;
}

bool Shared(std::string_view path) { return InStr(path, "common") > 0 || InStr(path, "numbers") > 0; }

// The model's XML: a copy under a blueprint's name in TempFiles, converted there.
std::string ModelXml(app::AppContext& ctx, const std::string& modelFile) {
    const std::string name = FileNameOf(modelFile);
    const std::string copy = ctx.appPath("TempFiles\\" + name.substr(0, name.find('.')) + ".bin");
    tools::CreatePath(ctx.appPath("TempFiles"));
    std::string xml;
    if (tools::CopyFileReplacing(modelFile, copy) || tools::SerzReadXml(ctx, copy, xml)) return {};
    return xml;
}

// What the reskins of one item share up to the name dialog.
struct ReskinItem {
    ClonePlace place;
    std::string xml;
    ModelOf model;
    ReskinTextures textures;
    CloneNames names;
    CloneTarget target;
    std::string newBase;
};

enum class Step { Go, Skip, Stop };

Step Prepare(app::AppContext& ctx, const CloneSource& source, TextureChoice choice, const CloneAsk& ask,
             ReskinItem& item, CloneOutcome& out) {
    const std::string file = source.file();
    const std::optional<ClonePlace> place = PlaceOf(source, CloneLevel::Blueprint);
    if (!place) {
        out.report += file + "  This item lies too near its product folder to be cloned.\r\n";
        return Step::Skip;
    }
    item.place = *place;
    item.xml = ReadCloneBlueprint(ctx, source, out.report);
    if (item.xml.empty()) return Step::Skip;
    item.model = BlueprintModel(item.xml, source.root);
    if (item.model.file.empty()) {
        out.report += file + "  This item does not name a geometry file.\r\n";
        return Step::Skip;
    }
    if (!tools::FileExists(item.model.file)) {
        out.report += item.model.file + " Called by " + file + "\r\n";
        return Step::Skip;
    }
    const std::string modelXml = ModelXml(ctx, item.model.file);
    if (modelXml.empty()) {
        out.report += CompileFailedMessage(item.model.file) + "\r\n";
        return Step::Skip;
    }
    item.textures = GatherTextures(modelXml, item.model.file, source.root, choice);
    for (const std::string& missing : item.textures.missing) out.report += missing + " Called by " + file + "\r\n";
    while (true) {
        const std::optional<CloneNames> names = ask(OfferedNames(item.place, item.xml));
        if (!names || tools::TrimBlanks(names->fileName).empty() || tools::TrimBlanks(names->internalName).empty())
            return Step::Stop;
        item.names = *names;
        item.target = TargetOf(source, item.place, names->folder);
        if (item.target.message.empty()) break;
        if (ctx.ui) ctx.ui->message(item.target.message, base::Icon::Exclamation);
    }
    item.newBase = std::string(tools::TrimBlanks(item.names.fileName));
    return Step::Go;
}

// Copies the textures into the clone's Textures folder; false after the report's line.
bool CopyTextures(app::AppContext& ctx, const ReskinItem& item, const std::string& file, CloneOutcome& out) {
    const std::string folder = item.target.folder + "\\Textures";
    if (!tools::CreatePath(folder)) {
        out.report += file + "  The folder " + folder + " could not be made.\r\n";
        return false;
    }
    for (const std::string& texture : item.textures.files) {
        if (base::Status status = CopyFileMerging(texture, folder + "\\" + FileNameOf(texture))) {
            ctx.report(*status, kModule);
            out.report += file + "  " + texture + " could not be copied: " + status->description + "\r\n";
            return false;
        }
    }
    return true;
}

// Puts the compiled blueprint in the clone's folder as <new name>.bin.
void PlaceBlueprint(app::AppContext& ctx, const ReskinItem& item, const std::string& made, const std::string& file,
                    CloneOutcome& out) {
    const std::string blueprint = item.target.folder + "\\" + item.newBase + ".bin";
    std::string backup;
    if (base::Status placed = PlaceMadeFile(made, blueprint, backup)) {
        ctx.report(*placed, kModule);
        out.report += file + "  " + placed->description + "\r\n";
        return;
    }
    out.written.push_back(blueprint);
    out.report += file + "  Cloned as " + blueprint + " with " + std::to_string(item.textures.files.size()) +
                  " texture file(s)\r\n";
}

bool CompileFailed(app::AppContext& ctx, const std::string& file, const std::string& made, CloneOutcome& out) {
    if (!made.empty()) return false;
    out.report += CompileFailedMessage(file) + "\r\n";
    if (ctx.ui) ctx.ui->message(CompileFailedMessage(file), base::Icon::Exclamation);
    return true;
}

bool SceneryOne(app::AppContext& ctx, const CloneSource& source, const CloneAsk& ask, CloneOutcome& out) {
    ReskinItem item;
    const Step step = Prepare(ctx, source, TextureChoice::All, ask, item, out);
    if (step != Step::Go) return step == Step::Skip;
    const std::string file = source.file();
    std::string text = RewriteClone(item.xml, tools::TrimBlanks(item.names.internalName), item.place.relative,
                                    item.target.relative, item.place.oldBase, item.newBase);
    const std::string newFolder = source.ref.provider + "\\" + source.ref.product + "\\" + item.target.relative;
    long pos = InStr(text, "<GeometryID");
    tools::PutDetail(text, pos, "GeometryID", XmlValueOfTyped(ReskinGeometryId(item.model.value, newFolder, item.newBase)),
                     tools::kBlueprintTagOptions);
    const std::string made = CompileChecked(ctx, item.newBase, text);
    if (CompileFailed(ctx, file, made, out)) return true;
    if (!CopyTextures(ctx, item, file, out)) return true;
    const std::string model = item.target.folder + "\\" + item.newBase + ".GeoPcDx";
    if (base::Status status = CopyFileMerging(item.model.file, model)) {
        ctx.report(*status, kModule);
        out.report += file + "  " + item.model.file + " could not be copied: " + status->description + "\r\n";
        return true;
    }
    PlaceBlueprint(ctx, item, made, file, out);
    return true;
}

bool ReskinBlueprintOne(app::AppContext& ctx, const CloneSource& source, const std::string& templateText,
                        const CloneAsk& ask, CloneOutcome& out) {
    ReskinItem item;
    const Step step = Prepare(ctx, source, TextureChoice::OwnOnly, ask, item, out);
    if (step != Step::Go) return step == Step::Skip;
    const std::string file = source.file();
    ReskinFill fill;
    fill.fileName = XmlValueOfTyped(item.newBase);
    fill.internalName = XmlValueOfTyped(tools::TrimBlanks(item.names.internalName));
    fill.category = XmlValueOfTyped(CategoryWord(item.names.category));
    fill.provider = source.ref.provider;
    fill.product = source.ref.product;
    fill.blueprintId = source.ref.blueprintId;
    if (fill.blueprintId.size() >= 3 && tools::EqualsIgnoreCase(fill.blueprintId.substr(fill.blueprintId.size() - 3), "bin"))
        fill.blueprintId.replace(fill.blueprintId.size() - 3, 3, "xml");
    fill.deltaId = tools::NewDeltaId();
    fill.firstTexture = item.textures.firstElement;
    fill.textureId = XmlValueOfTyped(source.ref.provider + "\\" + source.ref.product + "\\" + item.target.relative +
                                     "\\[00]" + item.newBase);
    const std::string made = CompileChecked(ctx, item.newBase, FillReskinTemplate(templateText, fill));
    if (CompileFailed(ctx, file, made, out)) return true;
    if (!CopyTextures(ctx, item, file, out)) return true;
    PlaceBlueprint(ctx, item, made, file, out);
    return true;
}

// Procedural items have no single model: one among the items stops the command.
bool NoneProcedural(app::AppContext& ctx, const std::vector<CloneSource>& sources) {
    for (const CloneSource& source : sources) {
        if (InStr(source.file(), "Procedural") == 0) continue;
        if (ctx.ui) ctx.ui->message(std::string(kProceduralMessage), base::Icon::Exclamation);
        return false;
    }
    return true;
}

}  // namespace

std::vector<std::string> TextureSiblings(const std::string& textureFile) {
    std::vector<std::string> found;
    std::string base = textureFile;
    if (base.size() >= kTextureEnding.size() &&
        tools::EqualsIgnoreCase(std::string_view(base).substr(base.size() - kTextureEnding.size()), kTextureEnding))
        base.erase(base.size() - kTextureEnding.size());
    std::set<std::string> seen;
    for (std::string_view ending : kTextureSiblings) {
        const std::string file = OnDisk(base + std::string(ending) + ".tgpcdx");
        if (!file.empty() && seen.insert(tools::NameKey(file)).second) found.push_back(file);
    }
    return found;
}

ReskinTextures GatherTextures(std::string_view geometryXml, const std::string& geometryFile,
                              const std::string& assetsRoot, TextureChoice choice) {
    ReskinTextures out;
    std::set<std::string> seen;
    const auto add = [&](const std::string& file) {
        if (seen.insert(tools::NameKey(file)).second) out.files.push_back(file);
    };
    const std::vector<TextureEntry> entries =
        TextureEntries(geometryXml, FolderOfPath(geometryFile) + "\\", geometryFile, false);
    if (!entries.empty()) out.firstElement = entries.front().element;
    for (const TextureEntry& entry : entries) {
        // Only the part behind Assets counts: the game itself often lies in "steamapps\common".
        const bool below = entry.file.size() > assetsRoot.size() &&
                           tools::EqualsIgnoreCase(std::string_view(entry.file).substr(0, assetsRoot.size()), assetsRoot);
        if (choice == TextureChoice::OwnOnly && Shared(below ? entry.file.substr(assetsRoot.size()) : entry.value)) continue;
        std::string found = FoundTexture(entry.file);
        if (found.empty() && choice == TextureChoice::OwnOnly && entry.value.compare(0, 3, "..\\") != 0)
            found = FoundTexture(assetsRoot + "\\" + entry.value + std::string(kTextureEnding));
        if (found.empty()) {
            if (seen.insert(tools::NameKey(entry.file)).second) out.missing.push_back(entry.file);
            continue;
        }
        add(found);
        for (const std::string& sibling : TextureSiblings(found)) add(sibling);
    }
    return out;
}

ModelOf BlueprintModel(std::string_view xml, const std::string& root) {
    ModelOf model;
    const long at = InStr(xml, "<GeometryID");
    if (at == 0) return model;
    long pos = at;
    tools::GetDetail(xml, pos, "GeometryID", model.value, tools::kBlueprintTagOptions);
    if (!model.value.empty()) model.file = root + "\\" + CutMarker(tools::FixEntitiesCopy(model.value)) + ".GeoPcDx";
    return model;
}

std::string ReskinGeometryId(std::string_view oldValue, std::string_view newFolder, std::string_view newName) {
    const std::size_t cut = oldValue.find_last_of('\\');
    const std::string_view last = cut == std::string_view::npos ? oldValue : oldValue.substr(cut + 1);
    std::string marker;
    const std::size_t open = last.find('[');
    const std::size_t close = open == std::string_view::npos ? open : last.find(']', open);
    if (close != std::string_view::npos) marker = std::string(last.substr(open, close - open + 1));
    return std::string(newFolder) + "\\" + marker + std::string(newName);
}

std::string CategoryWord(std::string_view category) {
    std::string word = "e";
    for (char c : tools::TrimBlanks(category))
        if (c != ' ') word += c;
    return word;
}

std::string FillReskinTemplate(std::string_view templateText, const ReskinFill& fill) {
    return tools::ReplaceEach(templateText, {{"aaaaaa", fill.fileName},
                                             {"bbbbbb", fill.internalName},
                                             {"cccccc", fill.internalName},
                                             {"dddddd", fill.category},
                                             {"eeeeee", fill.provider},
                                             {"ffffff", fill.product},
                                             {"gggggg", fill.blueprintId},
                                             {"hhhhhh", fill.deltaId},
                                             {"iiiiii", fill.firstTexture},
                                             {"jjjjjj", fill.textureId}});
}

CloneOutcome CloneSceneryForReskin(app::AppContext& ctx, const std::vector<CloneSource>& sources,
                                   const CloneAsk& ask) {
    ctx.currentRoutine = "mnuCloneReskin_Click";
    if (!NoneProcedural(ctx, sources)) return {};
    return RunCloneItems(ctx, sources, [&](const CloneSource& source, CloneOutcome& out) {
        return SceneryOne(ctx, source, ask, out);
    });
}

CloneOutcome CloneForReskinBlueprint(app::AppContext& ctx, const std::vector<CloneSource>& sources,
                                     const CloneAsk& ask) {
    ctx.currentRoutine = "mnuRB_Click";
    const std::string templateFile = ctx.appPath("Templates\\ReSkinBluePrint.txt");
    const std::string templateText = tools::ReadTextFile(templateFile);
    if (templateText.empty()) {
        if (ctx.ui) ctx.ui->message("The template " + templateFile + " was not found.", base::Icon::Exclamation);
        return {};
    }
    if (!NoneProcedural(ctx, sources)) return {};
    return RunCloneItems(ctx, sources, [&](const CloneSource& source, CloneOutcome& out) {
        return ReskinBlueprintOne(ctx, source, templateText, ask, out);
    });
}

}  // namespace ferrolund::assets
