#include "routes/route_check_command.h"

#include <filesystem>

#include "archives/extract.h"
#include "archives/zip_archive.h"
#include "assets/blueprint.h"
#include "routes/route_indexer.h"
#include "tools/files.h"
#include "tools/host_path.h"
#include "tools/tags.h"
#include "tools/text_repair.h"
#include "tools/text_search.h"

namespace ferrolund::routes {

using tools::InStr;

namespace {

constexpr const char* kModule = "frmDelRoute";

bool Ask(app::AppContext& ctx, const std::optional<bool>& given, const std::string& question) {
    if (given) return *given;
    return ctx.ui->ask(question, base::Buttons::YesNo, base::Icon::Question) == base::Answer::Yes;
}

bool HasFiles(const std::string& folder) {
    std::error_code ec;
    for (std::filesystem::directory_iterator it(tools::HostPath(folder), ec), end; !ec && it != end; it.increment(ec))
        if (it->is_regular_file(ec)) return true;
    return false;
}

void ClearTempFiles(app::AppContext& ctx) {
    const std::string temp = ctx.appPath("TempFiles");
    if (std::filesystem::exists(tools::HostPath(temp))) ctx.report(tools::DeleteFolderTree(ctx, temp), kModule);
    tools::ForgetPath(temp);
    for (const char* sub : {"Networks\\Road Tiles", "Networks\\Loft Tiles", "Scenery"})
        tools::CreatePath(temp + "\\" + sub);
}

// The route template named in RouteProperties.xml must be installed.
bool TemplatePresent(app::AppContext& ctx, const std::string& routePath) {
    assets::BlueprintRef ref;
    if (!RouteTemplateOf(tools::ReadTextFile(routePath + "\\RouteProperties.xml"), ref)) return true;
    const std::string file = AssetPath(ctx.gameRoot(), ref.provider, ref.product, ref.blueprintId);
    if (tools::FileExists(file)) return true;
    ctx.ui->message(tools::FixEntitiesCopy(ref.blueprintId) +
                        "\nThe Route Template listed in RouteProperties.xml\nCould not be found",
                    base::Icon::Exclamation);
    return false;
}

std::vector<std::vector<std::string>> Rows(const std::vector<std::string>& items, const std::string& second = {}) {
    std::vector<std::vector<std::string>> rows;
    rows.reserve(items.size());
    for (const std::string& item : items)
        if (!item.empty()) rows.push_back(second.empty() ? std::vector<std::string>{item} : std::vector{item, second});
    return rows;
}

// The kind of a used asset: that of the first folder that named it.
std::string KindOf(const CheckRun& run, const std::string& asset) {
    const auto kind = run.kindOf.find(asset);
    return kind == run.kindOf.end() ? std::string() : kind->second;
}

}  // namespace

bool WalkRoute(app::AppContext& ctx, const CheckedRoute& route, const WalkRule& rule, RouteCheckOutcome& out) {
    for (const TileFolder& folder : RouteTileFolders(ctx.gameRoot(), route.folder, route.scenarioFolders)) {
        CheckForFiles(ctx, folder, rule, out.run);
        if (ctx.abortFlag) {
            out.stopped = true;
            return false;
        }
    }
    out.uniqueAssets = SortUnique(out.run.usedAssets);
    return true;
}

void CheckTexturesOf(app::AppContext& ctx, const std::string& routePath, const CheckAnswers& answers,
                     const WalkRule& rule, RouteCheckOutcome& out) {
    out.missingText = "\r\n\r\nTexture Check:-";
    TextureCheck& check = out.textures;
    FindGeopcdx(ctx, out.uniqueAssets, check);
    if (check.aborted) {
        out.stopped = true;
        return;
    }
    if (check.geometry.empty() && rule.filtered())
        ctx.ui->message("No texture files found, assume there are no\nScenery files from this Provider.",
                        base::Icon::Information);
    ReportListing geometry{"Following geometric item(s) were used by this route:-", "_GeoShapes.csv", {}, false};
    for (const GeometryFile& g : check.geometry) geometry.rows.push_back({g.file, g.caller});
    out.lists.push_back(std::move(geometry));
    FindTextures(ctx, routePath, check, rule);
    if (check.aborted) {
        out.stopped = true;
        return;
    }
    std::string missing = check.missingText;
    if (missing.size() < 25) missing = "No missing textures detected";
    out.missingText += "\r\nMissing Textures:-\r\n" + missing;
    if (Ask(ctx, answers.listTextures, "Do you wish to view a list of Textures used by this route?"))
        out.lists.push_back({"Following Textures files were used by this route:-", "_Textures.csv",
                             Rows(check.textures), false});
    if (!check.audio.empty() &&
        Ask(ctx, answers.listAudio, "Do you wish to view a list of Audio files used by this route?"))
        out.lists.push_back({"Following Audio files were used by this route:-", "_Sounds.csv", Rows(check.audio), false});
}

bool RouteTemplateOf(const std::string& properties, assets::BlueprintRef& ref) {
    const long at = InStr(properties, "<InfrastructureModified");
    if (at == 0) return false;
    long pos = at;
    for (auto [tag, value] : {std::pair{"Provider", &ref.provider}, std::pair{"Product", &ref.product},
                              std::pair{"BlueprintID", &ref.blueprintId}}) {
        if (pos > 0) tools::GetDetail(properties, pos, tag, *value);
    }
    return true;
}

bool UnpackRoute(app::AppContext& ctx, const std::string& routeFolder) {
    const std::string ap = ctx.gameRoot() + "\\Content\\Routes\\" + routeFolder + "\\maincontent.ap";
    if (!tools::FileExists(ap)) {
        ctx.ui->message("There is no maincontent.ap file associated with this\nroute, so looks like a faulty route "
                        "installation?",
                        base::Icon::Exclamation);
        return false;
    }
    ctx.ui->status(1, "Wait - Unpacking Route");
    archives::ZipArchive archive;
    if (const base::Status failed = archive.open(ap)) {
        ctx.report(*failed, kModule);
        return false;
    }
    archives::ExtractOptions options;
    options.target = ctx.gameRoot() + "\\Content\\Routes\\" + kUnpackFolder;
    options.overwrite = archives::Overwrite::All;
    const archives::ExtractOutcome outcome = archives::ExtractEntries(ctx, archive, archives::AllIndices(archive), options);
    for (const base::RunError& error : outcome.errors) ctx.report(error, kModule);
    tools::ForgetPath(options.target);
    ctx.ui->status(1, "Wait - Indexing Routes");
    IndexRouteProperties(ctx);
    ctx.ui->message(std::string("Route now copied to '") + kUnpackFolder +
                        "'\nNow run 'Check Route' on this folder and you can check",
                    base::Icon::Information);
    return true;
}

RouteCheckOutcome CheckSelectedRoute(app::AppContext& ctx, const CheckedRoute& route, const CheckAnswers& answers,
                                     bool askPacked) {
    ctx.currentRoutine = askPacked ? "Command4_Click" : "Command13_Click";
    ctx.abortFlag = false;
    RouteCheckOutcome out;
    ClearTempFiles(ctx);
    const std::string routePath = ctx.gameRoot() + "\\Content\\Routes\\" + route.folder;

    const std::string scenery = routePath + "\\Scenery";
    if (askPacked && (!std::filesystem::is_directory(tools::HostPath(scenery)) || !HasFiles(scenery))) {
        const base::Answer answer =
            answers.unpack ? *answers.unpack
                           : ctx.ui->ask("The 'Scenery' folder for this route is empty, or missing,\nprobably the route "
                                         "is in an .ap archive. It can't be directly\nchecked but would you like to "
                                         "unpack the .ap file to a\ntemporary folder so that you can check it?\nTo "
                                         "over-ride this option, click Cancel.",
                                         base::Buttons::YesNoCancel, base::Icon::Question);
        if (answer == base::Answer::No) {
            out.stopped = true;
            return out;
        }
        if (answer == base::Answer::Yes) {
            out.unpacked = UnpackRoute(ctx, route.folder);
            out.stopped = true;
            return out;
        }
    }
    if (!TemplatePresent(ctx, routePath)) {
        out.stopped = true;
        return out;
    }

    if (!WalkRoute(ctx, route, WalkRule{}, out)) return out;
    out.missingText = out.run.missingText;
    if (!out.missingText.empty())
        out.missingText += "\r\n\r\n(Note: Ferrolund may not resolve some foreign characters, please advise with "
                           "copy this report if any found)";
    if (!out.run.missingRows.empty()) {
        out.lists.push_back({"Following Asset(s) were missing from this route:-", "_Missing.csv", out.run.missingRows,
                             true});
    } else {
        ctx.ui->message("No Assets were missing from this route.", base::Icon::Information);
    }
    if (Ask(ctx, answers.listShapes, "Do you wish to view a list of Shapes used by this route?")) {
        ReportListing used{"Following Asset(s) were used by this route:-", "_Assets.csv", {}, false};
        for (const std::string& asset : out.uniqueAssets) used.rows.push_back({asset, KindOf(out.run, asset)});
        out.lists.push_back(std::move(used));
    }
    if (!Ask(ctx, answers.checkTextures, "Would you like to check for missing Texture/Audio/Animation & Script files?"))
        return out;
    CheckTexturesOf(ctx, routePath, answers, WalkRule{}, out);
    return out;
}

std::string SaveListing(app::AppContext& ctx, const std::string& routeName, const ReportListing& listing) {
    const std::string folder = ctx.appPath("Reports");
    tools::CreatePath(folder);
    std::string text;
    for (const auto& row : listing.rows) {
        for (std::size_t c = 0; c < row.size(); ++c) text += (c ? "," : "") + row[c];
        text += "\r\n";
    }
    const std::string file = folder + "\\" + routeName + listing.suffix;
    if (text.empty() || !tools::WriteTextFile(ctx, file, text)) return {};
    tools::ForgetPath(file);
    return file;
}

}  // namespace ferrolund::routes
