#include "assets/stock_cab.h"

#include <filesystem>
#include <memory>
#include <system_error>

#include "assets/blueprint.h"
#include "assets/blueprint_splice.h"
#include "assets/stock_templates.h"
#include "serz/codec.h"
#include "tools/codepage.h"
#include "tools/files.h"
#include "tools/host_path.h"
#include "tools/names.h"
#include "tools/numbers.h"
#include "tools/serz_convert.h"
#include "tools/tags.h"
#include "tools/text_search.h"

namespace ferrolund::assets {

using tools::InStr;
using tools::InStrRev;
using Verdict = TransformResult::Verdict;

namespace {

constexpr const char* kModule = "frmAssets";

std::size_t Index(long position) { return static_cast<std::size_t>(position - 1); }

std::string FolderOf(const std::string& path) {
    const std::size_t cut = path.find_last_of('\\');
    return cut == std::string::npos ? std::string() : path.substr(0, cut + 1);
}

std::string WithoutTrailingLineEnds(std::string_view text) {
    while (!text.empty() && (text.back() == '\n' || text.back() == '\r')) text.remove_suffix(1);
    return std::string(text);
}

bool IsFolder(const std::string& path) {
    std::error_code ec;
    return std::filesystem::is_directory(tools::HostPath(path), ec);
}

std::string OcclusionFolderTarget(const app::AppContext& ctx, const std::string& classDigits) {
    return ctx.gameRoot() + "\\Assets\\Waggonz\\" + classDigits + "Occ";
}

std::string CabShadowName(const std::string& classDigits) { return classDigits + "CabShadow"; }

// A name from the disk or the list (UTF-8, or Windows-1252) as the converter's XML holds it.
std::string XmlValueOfPath(std::string_view value) { return serz::XmlText(tools::ShownText(value)); }

}  // namespace

// --- Cab occlusions ---

std::string OcclusionFolderSource(const app::AppContext& ctx, const std::string& classDigits) {
    return ctx.appPath("Occlusions\\Waggonz\\" + classDigits + "Occ");
}

std::string CabShadowSource(const app::AppContext& ctx, const std::string& classDigits) {
    return ctx.appPath("Occlusions\\" + CabShadowName(classDigits) + ".bin");
}

std::vector<std::string> MissingOcclusionFiles(const app::AppContext& ctx, const std::string& classDigits) {
    std::vector<std::string> missing;
    if (!IsFolder(OcclusionFolderSource(ctx, classDigits))) missing.push_back(OcclusionFolderSource(ctx, classDigits));
    if (tools::FileLength(CabShadowSource(ctx, classDigits)) <= 0) missing.push_back(CabShadowSource(ctx, classDigits));
    return missing;
}

std::string MissingOcclusionFilesMessage(const app::AppContext& ctx, const std::string& classDigits,
                                         const std::vector<std::string>& missing) {
    std::string text = "The cab occlusion files for the Class " + classDigits + " are not installed. Missing:-";
    for (const std::string& path : missing) text += "\r\n" + path;
    text += "\r\nPut the folder Waggonz\\" + classDigits + "Occ and the file " + CabShadowName(classDigits) +
            ".bin in " + ctx.appPath("Occlusions") + " and try again. Nothing has been changed.";
    return text;
}

bool AppendToChildren(std::string& text, std::string_view insert) {
    const std::string body = WithoutTrailingLineEnds(insert);
    const long open = InStr(text, "<Children>");
    const long close = open == 0 ? 0 : InStr(open, text, "</Children>");
    const long last = close == 0 ? 0 : InStrRev(text, kChildClose, close - 1);
    if (last == 0 || last < open) return SpliceAtChildren(text, body + "\r\n");
    const std::size_t cut = Index(last) + kChildClose.size();
    text.insert(cut, "\r\n" + body);
    return true;
}

std::string OcclusionChildren(std::string_view classTemplate, const AssetRow& row, const std::string& classDigits) {
    const std::string shadow = FolderOf(row.path) + CabShadowName(classDigits) + ".xml";
    return FillMarkers(std::string(classTemplate), {{"dddddd", tools::NewDeltaId()},
                                                    {"eeeeee", tools::NewDeltaId()},
                                                    {"aaaaaa", XmlValueOfPath(row.provider)},
                                                    {"bbbbbb", XmlValueOfPath(row.product)},
                                                    {"cccccc", XmlValueOfPath(shadow)}});
}

TransformOutcome AddCabOcclusions(app::AppContext& ctx, const std::vector<AssetRow>& selected,
                                  const std::string& classDigits) {
    auto classTemplate = std::make_shared<std::string>();
    TransformCommand command("mnuAdd" + classDigits + "_Click", TransformFile::Blueprint, nullptr);
    command.prepare = [classTemplate, classDigits](app::AppContext& c, const std::vector<AssetRow>&) {
        if (const auto missing = MissingOcclusionFiles(c, classDigits); !missing.empty()) {
            if (c.ui) c.ui->message(MissingOcclusionFilesMessage(c, classDigits, missing), base::Icon::Exclamation);
            return false;
        }
        *classTemplate = ReadStockTemplate(c, "Class" + classDigits + "Children.txt");
        if (classTemplate->empty()) return false;
        // The shared occlusion models go in once, beside the other providers.
        const std::string target = OcclusionFolderTarget(c, classDigits);
        if (!IsFolder(target)) {
            if (base::Status copied = tools::CopyFolderTree(OcclusionFolderSource(c, classDigits), target, false)) {
                c.report(*copied, kModule);
                return false;
            }
        }
        return true;
    };
    command.transform = [classTemplate, classDigits](app::AppContext& c, TransformRow& row, std::string_view text) {
        const std::string shadowName = CabShadowName(classDigits);
        if (InStr(text, shadowName + ".xml") > 0) {
            return TransformResult::Skip(Verdict::Nothing, "This item already has " + shadowName + ".xml.");
        }
        TransformResult result = TransformResult::Changed(std::string(text));
        if (!AppendToChildren(result.text, OcclusionChildren(*classTemplate, row.row, classDigits))) {
            return TransformResult::Skip(Verdict::Unfit, "This item has no list of child entries.");
        }
        // The cab shadow beside the loco; one already there is the user's and stays.
        const std::string shadow = FolderOf(row.file) + shadowName + ".bin";
        if (tools::FileLength(shadow) < 0) {
            if (base::Status copied = tools::CopyFileReplacing(CabShadowSource(c, classDigits), shadow)) {
                return TransformResult::Skip(Verdict::Unfit, copied->description);
            }
        }
        return result;
    };
    return RunTransform(ctx, selected, command);
}

// --- Wheelslip ---

TransformResult MakeBogieUnpowered(std::string_view text) {
    const long animation = InStr(text, "<Animation");
    const long from = animation == 0 ? 1 : animation;
    TransformResult result = TransformResult::Changed(std::string(text));
    if (long pos = InStr(from, text, "<Powered"); pos > 0) {
        std::string value;
        long read = pos;
        tools::GetDetail(text, read, "Powered", value);
        if (tools::EqualsIgnoreCase(tools::TrimBlanks(value), "eFalse")) {
            return TransformResult::Skip(Verdict::Nothing, "This bogie is already unpowered.");
        }
        if (tools::PutDetail(result.text, pos, "Powered", "eFalse") || pos == 0) {
            return TransformResult::Skip(Verdict::Unfit, "The Powered entry of this bogie cannot be read.");
        }
        return result;
    }
    const long axle = InStr(from, text, "<Axle>");
    if (axle == 0) {
        return TransformResult::Skip(Verdict::Unfit, "This item has neither a Powered nor an Axle entry: it does not "
                                                     "appear to be a bogie.");
    }
    const long lineEnd = InStrRev(text, "\n", axle);
    result.text.insert(lineEnd == 0 ? Index(axle) : static_cast<std::size_t>(lineEnd),
                       "\t\t\t\t\t<Powered d:type=\"cDeltaString\">eFalse</Powered>\r\n");
    return result;
}

TransformOutcome AddWheelSlip(app::AppContext& ctx, const std::vector<AssetRow>& selected) {
    ctx.currentRoutine = "mnuSlip_Click";
    if (ctx.ui) {
        ctx.ui->message(ctx.langText(461, {}, kModule) + "\r\n" + ctx.langText(462, {}, kModule),
                        base::Icon::Information);
    }
    // The walk ends at the first row that is not a bogie.
    std::vector<AssetRow> bogies;
    std::string stop;
    for (const AssetRow& row : selected) {
        if (tools::TrimBlanks(row.provider).empty()) continue;
        const std::string path = JoinRowPath(row.provider, row.product, row.path);
        if (InStr(path, "Bogie") == 0) {
            stop = path + "  This item is not a bogie: the walk ends here.\r\n";
            break;
        }
        bogies.push_back(row);
    }
    TransformCommand command("mnuSlip_Click", TransformFile::Blueprint,
                             [](app::AppContext& c, TransformRow& row, std::string_view text) {
                                 if (InStr(row.file, "Front") == 0 && c.ui &&
                                     c.ui->ask(c.langText(464, {}, kModule) + "Continue", base::Buttons::YesNo,
                                               base::Icon::Question, row.file) != base::Answer::Yes) {
                                     return TransformResult::Skip(Verdict::Cancelled, {});
                                 }
                                 return MakeBogieUnpowered(text);
                             });
    TransformOutcome out;
    if (!bogies.empty() || stop.empty()) out = RunTransform(ctx, bogies, command);
    if (!stop.empty()) {
        if (bogies.empty() && ctx.ui) ctx.ui->message(stop.substr(0, stop.size() - 2), base::Icon::Exclamation);
        out.report += stop;
    }
    return out;
}

// --- US air brakes ---

std::string InteriorBlueprintFile(app::AppContext& ctx, const std::string& locoFile, std::string& reason) {
    std::string xml;
    if (tools::SerzReadXml(ctx, locoFile, xml) || xml.empty()) {
        reason = CompileFailedMessage(locoFile);
        return {};
    }
    if (InStr(xml, ">TrainBrakeControl<") > 0) return locoFile;
    for (long at = InStr(xml, "<iBlueprintLibrary-cAbsoluteBlueprintID>"); at > 0;
         at = InStr(at + 1, xml, "<iBlueprintLibrary-cAbsoluteBlueprintID>")) {
        const auto ref = ReadTriple(xml, at);
        if (!ref || InStr(ref->blueprintId, "Interior") == 0) continue;
        const std::string file = BlueprintFile(ctx.gameRoot(), *ref);
        if (tools::FileLength(file) < 0) {
            reason = "The cab interior " + file + " is not installed.";
            return {};
        }
        return file;
    }
    reason = "This loco does not name a cab interior blueprint.";
    return {};
}

TransformResult SetUsAirBrakes(std::string_view text, std::string_view airTemplate) {
    const long control = InStr(text, ">TrainBrakeControl<");
    const long lever =
        control == 0 ? 0 : InStr(control, text, "<cControlContainerBlueprint-cInteriorIrregularNotchedLever");
    // The lever must be the train brake's own: inside the block that follows its name.
    const long close = control == 0 ? 0 : InStr(control, text, "</InterfaceElements>");
    const long open = lever == 0 ? 0 : InStrRev(text, "<InterfaceElements>", lever);
    if (lever == 0 || close == 0 || lever > close || open < control) {
        return TransformResult::Skip(Verdict::Unfit, std::string(kNoNotchedLever));
    }
    std::string animation;
    long pos = lever;
    tools::GetDetail(text, pos, "AnimationName", animation);
    if (pos == 0 || pos > close || animation.empty()) {
        return TransformResult::Skip(Verdict::Unfit, "The train brake lever has no AnimationName.");
    }
    const std::string block = FillMarkers(WithoutTrailingLineEnds(airTemplate), {{"aaaaaa", animation}});
    const std::size_t start = Index(open);
    const std::size_t length = Index(close) + 20 - start;
    if (text.substr(start, length) == block) {
        return TransformResult::Skip(Verdict::Nothing, "The air brake settings are already in place.");
    }
    TransformResult result = TransformResult::Changed(std::string(text));
    result.text.replace(start, length, block);
    return result;
}

TransformOutcome ChangeUsAirbrakes(app::AppContext& ctx, const std::vector<AssetRow>& selected) {
    ctx.currentRoutine = "mnuUSAir_Click";
    if (ctx.ui) ctx.ui->message("This option will modify airbrakes on US Diesels", base::Icon::Information);
    auto airTemplate = std::make_shared<std::string>();
    TransformCommand command("mnuUSAir_Click", TransformFile::Blueprint,
                             [airTemplate](app::AppContext& c, TransformRow&, std::string_view text) {
                                 TransformResult result = SetUsAirBrakes(text, *airTemplate);
                                 if (result.reason == kNoNotchedLever && c.ui)
                                     c.ui->message(result.reason, base::Icon::Exclamation);
                                 return result;
                             });
    command.locate = InteriorBlueprintFile;
    command.prepare = [airTemplate](app::AppContext& c, const std::vector<AssetRow>&) {
        *airTemplate = ReadStockTemplate(c, "US_AirBrakes.txt");
        return !airTemplate->empty();
    };
    return RunTransform(ctx, selected, command);
}

}  // namespace ferrolund::assets
