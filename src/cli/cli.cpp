#include "cli/cli.h"

#include <algorithm>
#include <functional>
#include <ostream>

#include "app/app_context.h"
#include "app/game_discovery.h"
#include "app/startup.h"
#include "app/version.h"
#include "cli/cli_ui.h"
#include "cli/interrupt.h"
#include "cli/shared_options.h"
#include "cli/verb_ap.h"
#include "cli/verb_assets.h"
#include "cli/verb_check.h"
#include "cli/verb_consists.h"
#include "cli/verb_dcsv.h"
#include "cli/verb_make_sample.h"
#include "cli/verb_physics.h"
#include "cli/verb_routes.h"
#include "cli/verb_scenarios.h"
#include "cli/verb_scenario_details.h"
#include "cli/verb_textures.h"
#include "cli/verb_scenario_set.h"
#include "cli/verb_stock.h"
#include "serz/serz_command.h"
#include "tools/names.h"
#include "tools/files.h"

namespace ferrolund::cli {

namespace {

struct Verb {
    const char* name;
    const char* usage;
    const char* summary;
    std::function<int(app::AppContext&, const std::vector<std::string>&, std::ostream&, std::ostream&)> run;
};

int Paths(app::AppContext& ctx, const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    if (!args.empty()) {
        err << "ferrolund-cli: paths takes no arguments\n";
        return kExitUsage;
    }
    const std::pair<const char*, const std::string*> rows[] = {
        {"Program folder", &ctx.appRoot},        {"Language", &ctx.prefs.language},
        {"PDF Reader", &ctx.prefs.pdfReaderPath}, {"PreLoad folder", &ctx.prefs.preLoadFolder},
        {"Rail Works", &ctx.prefs.gameRoot},     {"Rail Works Backup", &ctx.prefs.backupPath},
        {"Graphics Editor", &ctx.prefs.graphicsEditorPath}, {"Graphics Viewer", &ctx.prefs.viewerPath},
    };
    for (const auto& [label, value] : rows) out << label << ": " << tools::ShownText(*value) << "\n";
    return 0;
}

const std::vector<Verb>& Verbs() {
    static const std::vector<Verb> verbs = {
        {"paths", "paths", "show the folders and programs in use (the settings' \"View All Paths\")", Paths},
        {"serz", "serz \"<source>\" [xml:\"<target>\" | bin:\"<target>\"]",
         "convert a game binary file to XML or XML back to binary",
         [](app::AppContext&, const std::vector<std::string>& args, std::ostream&, std::ostream& err) {
             return serz::RunSerzCommand(args, err);
         }},
        {"make-sample", "make-sample DIR [--tiles N] [--assets N] [--tile-entities N] [--stock N] [--scenario-mb N]",
         "write a sample installation of the simulator into DIR (N scenery tiles, N generated blueprints, N items a tile,\n"
         "      N generated assets of every kind)",
         [](app::AppContext&, const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
             return MakeSampleVerb(args, out, err);
         }},
        {"index-routes", "index-routes", "index the routes under Content\\Routes into IndexFiles\\RouteIndex.csv",
         IndexRoutesVerb},
        {"check-route", "check-route ROUTE [--textures] [--csv DIR]",
         "check a route (its folder or its display name) for missing assets; the lists go to DIR;\n"
         "      exit code 3 when references are missing", CheckRouteVerb},
        {"scenarios", "scenarios ROUTE", "list the scenarios of a route: folder, class and name", ScenariosVerb},
        {"scenario-clean", "scenario-clean ROUTE SCENARIO",
         "remove the consists without vehicles from a scenario (its folder or its name); the old\n"
         "      Scenario.bin is kept as Scenario.bak", ScenarioCleanVerb},
        {"scenario-revert", "scenario-revert ROUTE [SCENARIO]",
         "return a scenario (every scenario of the route when none is named) to its first back-up,\n"
         "      deleting Scenario.bak1 to Scenario.bak50", ScenarioRevertVerb},
        {"scenario-details", "scenario-details ROUTE SCENARIO [--work-order] [--loose]",
         "the Scenario Details report of a route's scenario as title<TAB>value lines, a blank line between\n"
         "      two consists (--loose lists loose consists too); --work-order prints the Work Order instead",
         ScenarioDetailsVerb},
        {"scenario-set", "scenario-set ROUTE SCENARIO --field NAME=VALUE... [--shift-consists]",
         "change a scenario's details (display-name, description, briefing, start-time, duration, day, month,\n"
         "      year, season, author, start-location, class, weather-provider, weather-product, weather-blueprint,\n"
         "      weather-file, extension-*, blank-extension, preload) and save it as the Scenario Editor does, the\n"
         "      old files kept as back-ups; --shift-consists moves every consist by the start time's change",
         ScenarioSetVerb},
        {"check-assets", "check-assets (--index FILE | FOLDER) [--csv DIR] [--show]",
         "check the blueprints of an index file's rows, or every blueprint below FOLDER, for missing\n"
         "      files (--show lists every file used); --csv DIR saves the missing ones as MissingFiles.csv;\n"
         "      exit code 3 when files are missing", CheckAssetsVerb},
        {"index-assets",
         "index-assets [FOLDER] [--rolling-stock] [--exclude-preload] [--default-folders] [--category C]\n"
         "                    [--zero-length] [--quick-drive] [--out FILE] [--append]",
         "list the assets below FOLDER (default: the simulator's Assets) as comma text with the\n"
         "      index's heading line, on stdout or into FILE; --append also adds the rows, numbered on,\n"
         "      to IndexFiles\\index.csv (the old one kept as a back-up)", IndexAssetsVerb},
        {"list-ap", "list-ap [FOLDER] [--rolling-stock] [--filter MASK] [--rows]",
         "list the .ap archives under FOLDER (the simulator's folder if none) and their entries that pass\n"
         "      the entry filter (MASK, default \"*.GeoPcDx\"; \"*\" takes all; --rolling-stock keeps only\n"
         "      vehicles); with --rows, the asset rows of the blueprints among them as comma text\n"
         "      (MASK then defaults to \"*.bin\"), numbered on from IndexFiles\\index.csv", ListApVerb},
        {"tex2dds", "tex2dds FILE|FOLDER... [--out DIR]",
         "convert .TgPcDx textures (a FOLDER gives those directly in it) to .dds in DIR (default: the\n"
         "      program's TempDDS), each with the side file <base>.dat that keeps what the .dds cannot\n"
         "      hold; Ctrl+C stops between two files", TexToDdsVerb},
        {"dds2tex", "dds2tex DDS TGPCDX",
         "put the pixels of DDS back into the texture TGPCDX (the old file kept as a back-up), using\n"
         "      the side file beside DDS", DdsToTexVerb},
        {"consist-templates", "consist-templates [--missing]",
         "list the saved consists of Content\\ConsistTemplates.bin: each consist's name and vehicles,\n"
         "      those not installed marked \"missing\"; --missing lists only those, exit code 3 when there are some",
         ConsistTemplatesVerb},
        {"dds-info", "dds-info FILE...", "show the format, size and mip-map count of .dds files", DdsInfoVerb},
        {"physics", "physics BLUEPRINT",
         "show the physics of a rail vehicle (its blueprint: a file, or a path below the simulator's Assets)\n"
         "      as the Display Physics screen's two grids: item<TAB>value lines under each section's head",
         PhysicsVerb},
        {"stock-transform",
         "stock-transform COMMAND FILE... [--mass M --capacity C]",
         "edit rolling stock as the asset list's Edit menu does; COMMAND is passengers, dead, conductor,\n"
         "      mass, scenery, category (the category from --answer), in-scenarios, english-only, zero-emissive\n"
         "      or snow; FILE is Provider\\Product\\Path below Assets; new files take the base name with _MT or\n"
         "      _Dead; the frame's warning wants --yes; exit code 1 when a file was not written", StockTransformVerb},
        {"dcsv", "dcsv FILE [--png OUT] [--svg OUT] [--size WxH] [--process]",
         "print the points of a .dcsv curve as X,Y lines, or draw its chart as a PNG picture and/or an SVG\n"
         "      drawing (960x640 unless --size says otherwise); --process first gives it back the precision of\n"
         "      its source .csv (Source\\... for Assets\\...), the old file kept as a back-up", DcsvVerb},
    };
    return verbs;
}

void PrintExitCodes(std::ostream& out) {
    out << "Exit codes:\n"
           "  0  done\n"
           "  1  failed (or stopped with Ctrl+C)\n"
           "  2  usage: an unknown command or option, or a missing argument\n"
           "  3  the check found missing items\n";
}

void PrintHelp(std::ostream& out) {
    out << "usage: ferrolund-cli <command> [arguments] [options]\n\n"
           "Options shared by every command, before or after it:\n"
           "  --game-root DIR   the simulator's folder (otherwise the settings, otherwise Steam's libraries)\n"
           "  --yes             answer Yes (or OK) to every question\n"
           "  --no              answer No (or Cancel) to every question\n"
           "  --answer TEXT     the next answer: to a question (yes, no, ok, cancel), or the text,\n"
           "                    file or folder a command asks for; may be given several times\n"
           "  --progress        when stderr is not a terminal, tell each stage of a long command\n"
           "  --version         print the version\n"
           "  --help            print this help; COMMAND --help prints the command's\n"
           "  --                every word after it is an argument, not an option\n\n"
           "Commands:\n";
    for (const auto& verb : Verbs()) out << "  " << verb.usage << "\n      " << verb.summary << "\n";
    out << "\nResults go to stdout, progress and errors to stderr. Ctrl+C stops a long command\n"
           "at its next file, as the Abort button does; files already written stay whole.\n\n";
    PrintExitCodes(out);
}

void PrintVerbHelp(const Verb& verb, std::ostream& out) {
    out << "usage: ferrolund-cli " << verb.usage << " [options]\n    " << verb.summary
        << "\n\nThe shared options (--game-root, --yes, --no, --answer, --progress) may stand anywhere;\n"
           "see ferrolund-cli --help.\n\n";
    PrintExitCodes(out);
}

}  // namespace

int RunCli(const std::vector<std::string>& args, const std::string& appRoot, std::ostream& out, std::ostream& err,
           bool errIsTerminal) {
    SharedOptions shared;
    std::vector<std::string> rest;
    if (!SplitSharedOptions(args, shared, rest, err)) return kExitUsage;
    if (shared.version) {
        out << "ferrolund-cli " << app::kVersionMajor << "." << app::kVersionMinor << "." << app::kVersionRevision
            << "\n";
        return kExitDone;
    }
    if (rest.empty()) {
        PrintHelp(shared.help ? out : err);
        return shared.help ? kExitDone : kExitUsage;
    }
    if (rest.front().rfind("--", 0) == 0) {
        err << "ferrolund-cli: unknown option " << rest.front() << " (see --help)\n";
        return kExitUsage;
    }
    const auto verb = std::find_if(Verbs().begin(), Verbs().end(), [&](const Verb& v) { return rest.front() == v.name; });
    if (verb == Verbs().end()) {
        err << "ferrolund-cli: unknown command " << rest.front() << " (see --help)\n";
        return kExitUsage;
    }
    if (shared.help) {
        PrintVerbHelp(*verb, out);
        return kExitDone;
    }

    CliUi ui(out, err);
    ui.defaultYes = shared.defaultYes;
    ui.answers = shared.answers;
    ui.progressStyle = errIsTerminal          ? ProgressStyle::Terminal
                       : shared.progressLines ? ProgressStyle::Lines
                                              : ProgressStyle::Silent;
    app::AppContext ctx;
    ctx.appRoot = appRoot;
    ctx.ui = &ui;
    ui.abortFlag = &ctx.abortFlag;
    ctx.currentRoutine = verb->name;
    if (tools::FileExists(ctx.appPath(app::kPreferenceFileName))) app::ReadPreferenceFile(ctx, app::AboutHome::Shadow);
    if (!shared.gameRoot.empty()) {
        ctx.prefs.gameRoot = shared.gameRoot;
    } else if (ctx.prefs.gameRoot.empty()) {
        ctx.prefs.gameRoot = app::DiscoverGameRoot();
    }
    if (ctx.prefs.language.empty()) ctx.prefs.language = "English";
    ctx.languageFile = "Lang_" + ctx.prefs.language + ".txt";
    if (!tools::FileExists(ctx.appPath("Language\\" + ctx.languageFile))) ctx.languageFile = "Lang_English.txt";
    ctx.lang.parse(tools::ReadTextFile(ctx.appPath("Language\\" + ctx.languageFile)));

    const std::vector<std::string> verbArgs(rest.begin() + 1, rest.end());
    int code = verb->run(ctx, verbArgs, out, err);
    ui.endProgressLine();
    // A command that never stops to look (a single conversion) finishes what it does.
    if (ui.stoppedByInterrupt()) {
        err << "ferrolund-cli: stopped by Ctrl+C; the files written before it are complete\n";
        if (code == kExitDone || code == kExitMissing) code = kExitFailed;
    }
    return code;
}

}  // namespace ferrolund::cli
