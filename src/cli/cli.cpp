#include "cli/cli.h"

#include <algorithm>
#include <functional>
#include <ostream>

#include "app/app_context.h"
#include "app/game_discovery.h"
#include "app/startup.h"
#include "app/version.h"
#include "cli/cli_ui.h"
#include "cli/verb_make_sample.h"
#include "cli/verb_routes.h"
#include "serz/serz_command.h"
#include "tools/names.h"
#include "tools/codepage.h"
#include "tools/files.h"

namespace ferrolund::cli {

namespace {

struct Verb {
    const char* name;
    const char* usage;
    const char* summary;
    std::function<int(app::AppContext&, const std::vector<std::string>&, std::ostream&, std::ostream&)> run;
};

int Paths(app::AppContext& ctx, const std::vector<std::string>&, std::ostream& out, std::ostream&) {
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
        {"make-sample", "make-sample DIR [--tiles N] [--assets N] [--tile-entities N]",
         "write a sample installation of the simulator into DIR (N scenery tiles, N generated blueprints, N items a tile)",
         [](app::AppContext&, const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
             return MakeSampleVerb(args, out, err);
         }},
        {"index-routes", "index-routes", "index the routes under Content\\Routes into IndexFiles\\RouteIndex.csv",
         IndexRoutesVerb},
        {"check-route", "check-route ROUTE [--textures] [--csv DIR]",
         "check a route (its folder or its display name) for missing assets; the lists go to DIR", CheckRouteVerb},
    };
    return verbs;
}

void PrintHelp(std::ostream& out) {
    out << "usage: ferrolund-cli [options] <command> [arguments]\n\n"
           "Options shared by every command:\n"
           "  --game-root DIR   the simulator's folder (otherwise the settings, otherwise Steam's libraries)\n"
           "  --yes             answer Yes (or OK) to every question\n"
           "  --no              answer No (or Cancel) to every question\n"
           "  --answer TEXT     the next answer: to a question (yes, no, ok, cancel), or the text,\n"
           "                    file or folder a command asks for; may be given several times\n"
           "  --version         print the version\n"
           "  --help            print this help\n\n"
           "Commands:\n";
    for (const auto& verb : Verbs()) out << "  " << verb.usage << "\n      " << verb.summary << "\n";
}

}  // namespace

int RunCli(const std::vector<std::string>& args, const std::string& appRoot, std::ostream& out, std::ostream& err) {
    CliUi ui(out, err);
    std::string gameRoot;
    std::size_t i = 0;
    for (; i < args.size(); ++i) {
        const std::string& a = args[i];
        if (a == "--version") {
            out << "ferrolund-cli " << app::kVersionMajor << "." << app::kVersionMinor << "." << app::kVersionRevision
                << "\n";
            return 0;
        }
        if (a == "--help" || a == "-h") {
            PrintHelp(out);
            return 0;
        }
        if (a == "--yes" || a == "--no") {
            ui.defaultYes = a == "--yes";
        } else if (a == "--game-root" || a == "--answer") {
            if (i + 1 >= args.size()) {
                err << "ferrolund-cli: " << a << " needs a value\n";
                return 2;
            }
            const std::string value = args[++i];
            if (a == "--game-root") {
                gameRoot = value;
            } else {
                ui.answers.push_back(value);
            }
        } else if (a.rfind("--", 0) == 0) {
            err << "ferrolund-cli: unknown option " << a << " (see --help)\n";
            return 2;
        } else {
            break;
        }
    }
    if (i >= args.size()) {
        PrintHelp(err);
        return 2;
    }
    const auto verb = std::find_if(Verbs().begin(), Verbs().end(), [&](const Verb& v) { return args[i] == v.name; });
    if (verb == Verbs().end()) {
        err << "ferrolund-cli: unknown command " << args[i] << " (see --help)\n";
        return 2;
    }

    app::AppContext ctx;
    ctx.appRoot = appRoot;
    ctx.ui = &ui;
    ctx.currentRoutine = verb->name;
    if (tools::FileExists(ctx.appPath(app::kPreferenceFileName))) app::ReadPreferenceFile(ctx, app::AboutHome::Shadow);
    if (!gameRoot.empty()) {
        ctx.prefs.gameRoot = gameRoot;
    } else if (ctx.prefs.gameRoot.empty()) {
        ctx.prefs.gameRoot = app::DiscoverGameRoot();
    }
    if (ctx.prefs.language.empty()) ctx.prefs.language = "English";
    ctx.languageFile = "Lang_" + ctx.prefs.language + ".txt";
    if (!tools::FileExists(ctx.appPath("Language\\" + ctx.languageFile))) ctx.languageFile = "Lang_English.txt";
    ctx.lang.parse(tools::ReadTextFile(ctx.appPath("Language\\" + ctx.languageFile)));

    const std::vector<std::string> verbArgs(args.begin() + static_cast<long>(i) + 1, args.end());
    return verb->run(ctx, verbArgs, out, err);
}

}  // namespace ferrolund::cli
