#include "assets/file_check.h"

#include <algorithm>

#include "assets/blueprint.h"
#include "assets/blueprint_files.h"
#include "tools/codepage.h"
#include "tools/files.h"
#include "tools/serz_convert.h"
#include "tools/tags.h"
#include "tools/text_repair.h"
#include "tools/text_search.h"

namespace ferrolund::assets {

using tools::InStr;

namespace {

constexpr const char* kModule = "frmAssets";
constexpr const char* kNotAdded =
    "You do not appear to have added any items to the list below?\nClick the 'Add to List' button to enable your "
    "selection.";

bool Exists(const std::string& file) {
    return tools::FileExists(file) || tools::FileExists(tools::FixEntitiesCopy(file));
}

std::string Value(std::string_view xml, std::string_view tag, long pos) {
    std::string value;
    tools::GetDetail(xml, pos, tag, value, tools::kBlueprintTagOptions);
    return value;
}

std::string FolderOf(const std::string& file) {
    const std::size_t cut = file.find_last_of("\\/");
    return cut == std::string::npos ? std::string() : file.substr(0, cut);
}

void ShowMessage(app::AppContext& ctx, const std::string& text) {
    if (ctx.ui) ctx.ui->message(text, base::Icon::Exclamation);
}

// The report of one row: its heading goes in ahead of the first line, at once or (for
// the check that lists only missing files) with the first miss.
class RowWriter {
public:
    RowWriter(CheckOutcome& outcome, std::string heading, std::string blueprint, bool headingFirst)
        : outcome_(outcome), heading_(std::move(heading)), blueprint_(std::move(blueprint)) {
        if (headingFirst) open();
    }
    ~RowWriter() {
        if (open_) outcome_.report += "\r\n";
    }
    void line(const std::string& text) {
        open();
        outcome_.report += text + "\r\n";
    }
    void miss(const std::string& shown, const std::string& file) {
        line(shown);
        outcome_.missing.push_back({blueprint_, file});
    }
    const std::string& blueprint() const { return blueprint_; }

private:
    void open() {
        if (open_) return;
        open_ = true;
        outcome_.report += heading_;
    }
    CheckOutcome& outcome_;
    std::string heading_;
    std::string blueprint_;
    bool open_ = false;
};

// The parameters of the three commands that follow the whole vocabulary.
struct FileList {
    bool listFound;            // found files are listed too
    std::string marker;        // in front of a missing file
    std::string couplingMarker;  // the same for the front coupling
    bool locoParts;            // head-out camera, engine simulation, script
    const char* interiorTag;   // the misspelt search of the missing-files check finds nothing
};

FileList ListFor(app::AppContext& ctx, RowReport report) {
    switch (report) {
    case RowReport::MissingFiles: return {false, "", "", true, "<IneriorGeometryID "};
    case RowReport::LocoFiles: {
        const std::string mark = ctx.langText(501, "MISSING: ", kModule);
        return {true, mark, mark, true, "<InteriorGeometryID "};
    }
    default: return {true, "MISSING:  ", "Missing: ", false, "<InteriorGeometryID "};
    }
}

class VocabularyWalk {
public:
    VocabularyWalk(app::AppContext& ctx, const FileList& list, RowWriter& out, const RowSource& source)
        : ctx_(ctx), list_(list), out_(out), source_(source), root_(ctx.gameRoot() + "\\Assets\\") {}

    void run(std::string_view xml) {
        geometryWithTextures(xml);
        if (const long at = InStr(xml, "<NumberingList>"); at > 0) {
            const std::string csv = Value(xml, "CsvFile", at);
            if (!csv.empty()) test(root_ + csv + ".dcsv");
        }
        triple(xml, "<FrontCoupling", list_.couplingMarker);
        triple(xml, "<RearCoupling");
        triple(xml, "<BogeyBlueprint>");
        for (const char* element : {"BogieAudioControlName", "CouplingAudioControlName"}) {
            if (const long at = InStr(xml, std::string("<") + element); at > 0) {
                const std::string value = Value(xml, element, at);
                if (!value.empty()) test(root_ + value + ".proxyxml");
            }
        }
        if (list_.locoParts) triple(xml, "<HeadOutCameraBlueprint>");
        triple(xml, "<PrimaryNamedTextureSet>");
        triple(xml, "<SecondaryNamedTextureSet>");
        for (const char* element : {"GeometryID", "CollisionGeometryID"}) {
            if (InStr(xml, std::string("<") + element + " ") == 0) continue;
            const std::string value = Value(xml, element, 1);
            if (!value.empty()) test(root_ + CutMarker(value) + ".geopcdx");
        }
        animations(xml);
        if (list_.locoParts) triple(xml, "<EngineSimFile>");
        if (const long at = InStr(xml, list_.interiorTag); at > 0) {
            const std::string value = Value(xml, "InteriorGeometryID", at);
            if (!value.empty()) test(root_ + CutMarker(value) + ".geopcdx");
        }
        triple(xml, "<InteriorCamera>");
        triple(xml, "<CabOcclusion>");
        if (const long children = InStr(xml, "<Children>"); children > 0) {
            for (long at = InStr(children, xml, "<ChildName "); at > 0; at = InStr(at + 1, xml, "<ChildName "))
                if (const auto ref = ReadTriple(xml, at)) test(BlueprintFile(ctx_.gameRoot(), *ref));
        }
        if (list_.locoParts) script(xml);
        if (const long at = InStr(xml, "<CargoBlueprintID>"); at > 0) {
            const auto ref = ReadTriple(xml, at);
            if (ref && !ref->provider.empty()) test(BlueprintFile(ctx_.gameRoot(), *ref));
        }
    }

private:
    // Found: listed when the command lists every file. Missing: the marked line.
    void test(const std::string& file, const std::string& marker) {
        if (Exists(file)) {
            if (list_.listFound) out_.line(file);
            return;
        }
        out_.miss(marker + file, file);
    }
    void test(const std::string& file) { test(file, list_.marker); }

    void triple(std::string_view xml, const char* tag, const std::string& marker) {
        const long at = InStr(xml, tag);
        if (at == 0) return;
        if (const auto ref = ReadTriple(xml, at)) test(BlueprintFile(ctx_.gameRoot(), *ref), marker);
    }
    void triple(std::string_view xml, const char* tag) { triple(xml, tag, list_.marker); }

    // The model, and the textures its materials name.
    void geometryWithTextures(std::string_view xml) {
        const long at = InStr(xml, "<GeometryID");
        if (at == 0) return;
        const long open = InStr(at, xml, ">");
        const long close = open > 0 ? InStr(open + 1, xml, "<") : 0;
        if (close == 0) return;
        const std::string_view value = tools::Mid(xml, open + 1, close - open - 1);
        if (value.empty()) return;  // an asset without a model of its own
        std::string file = root_ + CutMarker(value) + ".GeoPcDx";
        if (!Exists(file) && source_.geometryRetry && Exists(file.substr(0, file.size() - 8) + ".geopcdx"))
            file = file.substr(0, file.size() - 8) + ".geopcdx";
        if (!Exists(file)) {
            out_.miss(list_.marker + file, file);
            return;
        }
        if (list_.listFound) out_.line(file);
        std::string geometry;
        if (tools::SerzReadXml(ctx_, file, geometry)) return;
        const std::string base = FolderOf(file) + "\\";
        if (list_.listFound) {
            for (const std::string& texture : ShowTexture(geometry, base, file)) out_.line(texture);
            return;
        }
        for (const TextureEntry& entry : TextureEntries(geometry, base, file, false))
            if (!Exists(entry.file)) out_.miss(entry.file + " Called by " + out_.blueprint(), entry.file);
    }

    void animations(std::string_view xml) {
        const long anim = InStr(xml, "<AnimSet>");
        if (anim == 0) return;
        const std::string folder = FolderOf(out_.blueprint());
        for (long pos = anim; pos > 0;) {
            std::string value;
            tools::GetDetail(xml, pos, "AnimationName", value);
            if (pos == 0 || value.empty()) break;
            const std::size_t cut = value.find_last_of('\\');
            test(folder + "\\" + (cut == std::string::npos ? value : value.substr(cut + 1)) + ".ban");
        }
    }

    // A script counts as there in its source form or in its compiled one.
    void script(std::string_view xml) {
        const long at = InStr(xml, "<ScriptComponent>");
        if (at == 0) return;
        const std::string name = Value(xml, "Name", at);
        if (name.empty()) return;
        const std::string lua = root_ + name + ".lua";
        const std::string out = root_ + name + ".out";
        if (Exists(lua) || Exists(out)) {
            if (list_.listFound) out_.line(Exists(lua) ? lua : out);
            return;
        }
        out_.miss(list_.marker + lua, lua);
    }

    app::AppContext& ctx_;
    const FileList& list_;
    RowWriter& out_;
    const RowSource& source_;
    std::string root_;
};

// The values of the "e" elements between `open` and `close`, their "[..]" marker cut out.
std::vector<std::string> ElementValues(std::string_view xml, std::string_view open, std::string_view close) {
    std::vector<std::string> values;
    const long from = InStr(xml, open);
    if (from == 0) return values;
    const long to = InStr(from, xml, close);
    const long end = to == 0 ? static_cast<long>(xml.size()) + 1 : to;
    for (long at = InStr(from + 1, xml, "<e"); at > 0 && at < end; at = InStr(at + 2, xml, "<e")) {
        const long gt = InStr(at, xml, ">");
        const long lt = gt > 0 ? InStr(gt + 1, xml, "<") : 0;
        if (lt == 0) break;
        std::string value(tools::Mid(xml, gt + 1, lt - gt - 1));
        if (const std::size_t mark = value.find('['); mark != std::string::npos) {
            const std::size_t shut = value.find(']', mark);
            value.erase(mark, shut == std::string::npos ? 4 : shut - mark + 1);
        }
        values.push_back(value);
    }
    return values;
}

// A geometry or cross-section and the texture names it holds, not resolved to folders.
void SectionTextures(app::AppContext& ctx, RowWriter& out, const std::string& file, std::string_view open,
                     std::string_view close) {
    out.line(ctx.langText(498, "Geometry file used:-", kModule));
    out.line(file);
    std::string section;
    if (tools::SerzReadXml(ctx, file, section)) return;
    out.line(ctx.langText(499, "Textures used by this geometry:-", kModule));
    for (const std::string& texture : ElementValues(section, open, close)) out.line(texture + ".TgPcDx");
}

void UsedFiles(app::AppContext& ctx, std::string_view xml, RowWriter& out, bool loft) {
    const std::string root = ctx.gameRoot() + "\\Assets\\";
    long pos = 1;
    if (!loft) {
        if (const long anim = InStr(xml, "<AnimSet>"); anim > 0) {
            out.line(ctx.langText(502, "Animation files used by ", kModule) + out.blueprint());
            for (pos = anim; pos > 0;) {
                std::string value;
                long next = pos;
                tools::GetDetail(xml, next, "AnimationName", value);
                if (next == 0 || value.empty()) break;
                pos = next;
                out.line(value + ".ban");
            }
        }
        ReportList audio;
        audio.currentBlueprint = out.blueprint();
        for (long hit = InStr(std::max(pos, 1L), xml, "Audio"); hit > 0; hit = InStr(hit + 50, xml, "Audio")) {
            const long provider = tools::InStrRev(xml, "<Provider", hit);
            if (provider == 0) continue;
            if (auto ref = ReadTriple(xml, provider)) GetAudio(ctx, BlueprintFile(ctx.gameRoot(), *ref), audio);
        }
        for (std::size_t start = 0; start < audio.text.size();) {
            const std::size_t end = audio.text.find("\r\n", start);
            out.line(audio.text.substr(start, end - start));
            start = end == std::string::npos ? audio.text.size() : end + 2;
        }
    }
    const long geometry = InStr(xml, "<GeometryID");
    const long section = loft ? InStr(xml, "<CrossSectionID") : 0;
    if (geometry > 0) {
        const std::string file = root + CutMarker(Value(xml, "GeometryID", geometry)) + ".GeoPcDx";
        SectionTextures(ctx, out, file, "<TextureByName>", "</TextureByName>");
    }
    if (section > 0) {
        const std::string file = root + CutMarker(Value(xml, "CrossSectionID", section)) + ".XSec";
        SectionTextures(ctx, out, file, "<Texture>", "</Texture>");
    }
    if (geometry == 0 && section == 0)
        ShowMessage(ctx, loft ? ctx.langText(505, {}, kModule) + "\n" + ctx.langText(504, {}, kModule)
                              : ctx.langText(503, {}, kModule) + "\n" + ctx.langText(504, {}, kModule));
}

}  // namespace

RowSource AssetListRows(app::AppContext& ctx, RowReport report) {
    if (report == RowReport::AssetFiles || report == RowReport::LoftFiles) return {kNotAdded, false};
    return {ctx.langText(466, {}, kModule), false};
}

RowSource ReportGridRows() { return {"You do not appear to have selected any Assets to check", true}; }

CheckOutcome CheckRows(app::AppContext& ctx, const std::vector<AssetRow>& rows, RowReport report,
                       const RowSource& source) {
    CheckOutcome outcome;
    if (rows.empty()) {
        outcome.noRows = true;
        ShowMessage(ctx, source.noSelection);
        return outcome;
    }
    const FileList list = ListFor(ctx, report);
    const bool showsFiles = report == RowReport::AssetFiles || report == RowReport::LoftFiles;
    const std::string heading = ctx.langText(495, "Checking: ", kModule);
    const std::string subheading =
        report == RowReport::MissingFiles ? ctx.langText(496, "Missing Files:-", kModule)
                                          : ctx.langText(500, "Files used:-", kModule);
    for (std::size_t done = 0; done < rows.size(); ++done) {
        if (ctx.ui) {
            const int percent = static_cast<int>(100 * done / rows.size());
            ctx.ui->progress(percent, "Processed " + std::to_string(percent) + " %");
            ctx.ui->pump();
        }
        if (ctx.abortFlag) {
            outcome.aborted = true;
            break;
        }
        const AssetRow& row = rows[done];
        if (row.provider.empty()) continue;
        if (showsFiles && row.name == "Name") continue;
        const std::string path = JoinRowPath(row.provider, row.product, row.path);
        if (path == kEmptyRowPath) {
            outcome.emptyRow = true;
            ShowMessage(ctx, ctx.langText(444, {}, kModule));
            break;
        }
        const std::string file = BlueprintFile(ctx.gameRoot(), {row.provider, row.product, row.path});
        std::string xml;
        (void)tools::SerzReadXml(ctx, file, xml);  // an unreadable blueprint reports its heading alone
        ++outcome.rowsChecked;
        RowWriter out(outcome, heading + file + "\r\n" + (showsFiles ? "" : subheading + "\r\n"), file,
                      report != RowReport::MissingFiles);
        if (xml.empty()) continue;
        if (showsFiles) {
            UsedFiles(ctx, xml, out, report == RowReport::LoftFiles);
        } else {
            VocabularyWalk(ctx, list, out, source).run(xml);
        }
    }
    if (ctx.ui) ctx.ui->progress(-1, {});
    if (outcome.aborted) {
        outcome.report += "The check was stopped before its end: " + std::to_string(outcome.rowsChecked) + " of " +
                          std::to_string(rows.size()) + " rows checked.\r\n";
    } else if (outcome.report.empty()) {
        outcome.report = ctx.langText(497, "No errors found", kModule);
    }
    return outcome;
}

AssetRow RowFromGridItem(std::string_view item) {
    AssetRow row;
    std::string text(tools::TrimBlanks(item));
    if (const std::size_t tab = text.find('\t'); tab != std::string::npos) text.erase(tab);
    if (InStr(text, "Assets\\") > 0) {
        if (const auto ref = SplitAssetPath(text)) {
            row.provider = ref->provider;
            row.product = ref->product;
            row.path = ref->blueprintId;
        }
    } else {
        const std::size_t first = text.find('\\');
        const std::size_t second = first == std::string::npos ? first : text.find('\\', first + 1);
        if (second != std::string::npos) {
            row.provider = text.substr(0, first);
            row.product = text.substr(first + 1, second - first - 1);
            row.path = text.substr(second + 1);
        }
    }
    if (row.path.size() >= 3 && tools::EqualsIgnoreCase(row.path.substr(row.path.size() - 3), "xml"))
        row.path.replace(row.path.size() - 3, 3, "bin");
    return row;
}

std::string MissingFilesCsv(const std::vector<MissingFile>& missing) {
    auto quoted = [](const std::string& text) {
        std::string q = "\"";
        for (char c : text) q += c == '"' ? std::string("\"\"") : std::string(1, c);
        return q + "\"";
    };
    std::string csv = "Blueprint,Missing file\r\n";
    for (const MissingFile& m : missing) csv += quoted(m.blueprint) + "," + quoted(m.file) + "\r\n";
    return csv;
}

}  // namespace ferrolund::assets
