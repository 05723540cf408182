#include "scenarios/scenario_save.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <system_error>

#include "tools/backup.h"
#include "tools/files.h"
#include "tools/guid.h"
#include "tools/host_path.h"
#include "tools/numbers.h"
#include "tools/serz_convert.h"
#include "tools/tags.h"
#include "tools/text_repair.h"
#include "tools/template_text.h"
#include "tools/text_search.h"
#include "tools/vb_format.h"

namespace ferrolund::scenarios {

namespace {

using tools::InStr;
using tools::ReplaceAll;

// The line end the text itself uses.
std::string LineEndOf(std::string_view text) { return text.find("\r\n") != std::string_view::npos ? "\r\n" : "\n"; }

// Inserts `piece` at the 1-based position `at` (the character at `at` follows it).
void InsertAt(std::string& text, long at, std::string_view piece) {
    text.insert(static_cast<std::size_t>(at - 1), piece);
}

bool SameWord(std::string_view a, std::string_view b) {
    return a.size() == b.size() && InStr(a, b) == 1;
}

// Minutes since midnight of an HHMM text, as the boxes read it.
double Minutes(std::string_view hhmm) {
    return tools::VbVal(tools::Mid(hhmm, 1, 2)) * 60 + tools::VbVal(tools::Mid(hhmm, 3));
}

// PutDetail from pos when the tag stands there; pos goes on as PutDetail leaves it.
void Put(std::string& text, long& pos, std::string_view tag, std::string_view value) {
    tools::PutDetail(text, pos, tag, value);
}

void PutNameAt(std::string& text, long& pos, std::string_view openTag, const std::string& value,
               std::string_view languageTag) {
    const long at = InStr(std::max(pos, 1L), text, openTag);
    if (at == 0) return;
    long walk = at;
    tools::PutName(text, walk, value, languageTag);
    pos = walk > 0 ? walk : at;
}

void WriteStartLocation(std::string& text, std::string& location, const std::string& templateText) {
    tools::ReplaceApos2(location);
    long at = InStr(text, "<StartLocation>");
    if (at > 0) {
        Put(text, at, "English", location);
        return;
    }
    const long briefing = InStr(text, "</Briefing>");
    if (briefing == 0) return;
    std::string piece = templateText;
    ReplaceAll(piece, "aaaaaa", location);
    ReplaceAll(piece, "bbbbbb", tools::NewGuidText());
    InsertAt(text, briefing + 11, piece + LineEndOf(text));
}

void WriteAuthor(std::string& text, const std::string& author) {
    const long existing = InStr(text, "<Author d");
    if (existing > 0) {
        long pos = std::max(existing - 10, 1L);
        Put(text, pos, "Author", author);
        return;
    }
    const std::string element = "<Author d:type=\"cDeltaString\">" + author + "</Author>";
    const std::string lineEnd = LineEndOf(text);
    const long language = InStr(text, "<AuthoredLanguage");
    if (language == 0) {
        const long simulation = InStr(text, "</SimulationTime>");
        if (simulation > 0) InsertAt(text, simulation + 17, lineEnd + element);
        return;
    }
    const long next = InStr(language, text, "<RBlueprint");
    if (next > 0) InsertAt(text, next, element + lineEnd);
}

// Keeps each value once, compared without regard to case, drops the empty ones; the
// first element is always kept. The list is sorted first, so equal values are neighbours.
std::vector<std::string> RemD2(const std::vector<std::string>& sorted) {
    std::vector<std::string> out;
    for (std::size_t i = 0; i < sorted.size(); ++i) {
        if (i > 0 && (sorted[i].empty() || SameWord(sorted[i], out.back()))) continue;
        out.push_back(sorted[i]);
    }
    return out;
}

std::string PreloadId() {
    return std::to_string(static_cast<long long>(std::floor(tools::RandomUnit() * 20000000.0 + 10000000.0)));
}

// Where the start time that belongs to each consist lies in the text.
struct Splice {
    std::size_t from = 0, to = 0;  // 0-based, the old value
    std::string value;
};

base::Status Fail(const std::string& text) { return base::RunError{base::err::kPathFileAccess, text}; }

// The new file in the scratch folder, then in place of the old one.
base::Status Replace(const std::string& made, const std::string& target, std::string& backup) {
    return tools::ReplaceWithBackup(made, target, tools::kOverwritingScenarioBackupRule, backup);
}

// Puts a replaced file back: the new one removed, the back-up renamed to the old name.
void Restore(const std::string& target, const std::string& backup) {
    if (backup.empty()) return;
    std::error_code error;
    std::filesystem::remove(tools::HostPath(target), error);
    std::filesystem::rename(tools::HostPath(backup), tools::HostPath(target), error);
}

}  // namespace

DetailEdits EditsFromDetails(const ScenarioDetails& details) {
    DetailEdits e;
    e.displayName = tools::FixEntitiesCopy(details.displayName);
    e.description = tools::FixEntitiesCopy(details.description);
    e.briefing = tools::FixEntitiesCopy(details.briefing);
    e.startTime = SecondsToHHMM(details.startTime);
    e.durationMins = details.durationMins;
    e.startDD = details.startDD;
    e.startMM = details.startMM;
    e.startYYYY = details.startYYYY;
    e.season = details.season;
    e.weatherProvider = details.weatherProvider;
    e.weatherProduct = details.weatherProduct;
    e.weatherBlueprintID = details.weatherBlueprintID;
    e.extensionProvider = details.extensionProvider;
    e.extensionProduct = details.extensionProduct;
    e.extensionBlueprintID = details.extensionBlueprintID;
    e.author = details.author;
    e.startLocation = tools::FixEntitiesCopy(details.startLocation);
    e.scenarioClass = details.scenarioClass;
    return e;
}

base::Status ReadSaveTemplates(const app::AppContext& ctx, SaveTemplates& templates) {
    const std::string location = ctx.appPath("Templates\\StartLocation.txt");
    const std::string header = ctx.appPath("Templates\\ProvHeader.txt");
    templates.startLocation = tools::ReadTextFile(location);
    templates.provHeader = tools::ReadTextFile(header);
    if (templates.startLocation.empty()) return base::err::FileNotFound(location);
    if (templates.provHeader.empty()) return base::err::FileNotFound(header);
    return {};
}

base::Status CheckStartTime(std::string_view hhmm) {
    if (hhmm.size() != 4 || tools::VbVal(hhmm) > 2400) return Fail(kTimeFormatMessage);
    return {};
}

std::string StartTimeSeconds(std::string_view hhmm) {
    std::string text = tools::FormatNumber(Minutes(hhmm) * 60, "00000.0000");
    std::replace(text.begin(), text.end(), ',', '.');
    return text;
}

base::Status ApplyDetailEdits(std::string& propertiesXml, DetailEdits& edits, const SaveTemplates& templates,
                              std::string_view languageTag) {
    for (std::string* box : {&edits.displayName, &edits.description, &edits.briefing}) tools::ReplaceApos2(*box);
    if (base::Status bad = CheckStartTime(edits.startTime)) return bad;
    // The date boxes are taken as typed: their range tests ask for a value below 1 and
    // above the limit at once.
    std::string& text = propertiesXml;
    long pos = 1;
    PutNameAt(text, pos, "<DisplayName>", edits.displayName, languageTag);
    PutNameAt(text, pos, "<Description>", edits.description, languageTag);
    PutNameAt(text, pos, "<Briefing>", edits.briefing, languageTag);
    Put(text, pos, "StartTime", StartTimeSeconds(edits.startTime));
    Put(text, pos, "DurationMins", edits.durationMins);
    Put(text, pos, "StartDD", edits.startDD);
    Put(text, pos, "StartMM", edits.startMM);
    Put(text, pos, "StartYYYY", edits.startYYYY);
    Put(text, pos, "Season", edits.season);
    Put(text, pos, "Provider", edits.weatherProvider);
    Put(text, pos, "Product", edits.weatherProduct);
    if (!edits.weatherBlueprintID.empty()) Put(text, pos, "BlueprintID", edits.weatherBlueprintID);
    pos = InStr(text, "<WeatherExtension");
    if (pos > 0) {
        Put(text, pos, "Provider", edits.extensionProvider);
        Put(text, pos, "Product", edits.extensionProduct);
        Put(text, pos, "BlueprintID", edits.extensionBlueprintID);
    }
    const bool freeRoam = SameWord(edits.scenarioClass, kFreeRoamClass);
    if (freeRoam) WriteStartLocation(text, edits.startLocation, templates.startLocation);
    if (freeRoam || SameWord(edits.scenarioClass, kStandardClass)) WriteAuthor(text, edits.author);
    if (!edits.preload.empty()) ExtendPreloadSet(text, edits.preload, templates.provHeader);
    return {};
}

void ExtendPreloadSet(std::string& propertiesXml, std::vector<std::string> preload, const std::string& provHeader) {
    std::string& text = propertiesXml;
    if (InStr(text, "<RBlueprintSetPreLoad>") == 0) {
        const long empty = InStr(text, "<RBlueprintSetPreLoad/>");
        if (empty == 0) return;
        text.replace(static_cast<std::size_t>(empty - 1), 23,
                     "<RBlueprintSetPreLoad>" + LineEndOf(text) + "</RBlueprintSetPreLoad>");
    }
    const long close = InStr(text, "</RBlueprintSetPreLoad>");
    if (close == 0) return;
    std::sort(preload.begin(), preload.end());
    std::string entries;
    for (const std::string& entry : RemD2(preload)) {
        if (entry.empty()) continue;
        const std::size_t bar = entry.find('|');
        std::string provider = entry.substr(0, bar);
        std::string product = bar == std::string::npos ? std::string() : entry.substr(bar + 1);
        tools::ReplaceApos(provider);
        tools::ReplaceApos(product);
        std::string piece = provHeader;
        ReplaceAll(piece, "xxxxxxxx", PreloadId());
        ReplaceAll(piece, "aaaaaa", provider);
        ReplaceAll(piece, "bbbbbb", product);
        entries += piece;
    }
    InsertAt(text, close, entries + LineEndOf(text));
}

base::Status StartTimeShift(std::string_view typed, std::string_view loaded, double& seconds) {
    seconds = 0;
    if (typed.size() != 4) return Fail(kTimeFormatMessage);
    if (tools::VbVal(typed) > 2400) return Fail(kLateStartMessage);
    seconds = (Minutes(typed) - Minutes(loaded)) * 60;
    return {};
}

int ShiftStartTimes(std::string& scenarioXml, double seconds, int consists) {
    const std::string_view text = scenarioXml;
    std::vector<Splice> splices;
    long pos = 1;
    for (int row = 0; consists < 0 || row < consists; ++row) {
        const long consist = InStr(pos, text, "<cConsist d");
        if (consist == 0) break;
        long walk = consist;
        std::string old;
        tools::GetDetail2(text, walk, "StartTime", old);
        if (old == "exit" || walk == 0) break;
        const long gt = InStr(consist, text, "<StartTime");
        const long valueStart = InStr(gt, text, ">") + 1;
        const double sum = std::nearbyint(tools::VbVal(tools::TrimBlanks(old))) + seconds;
        splices.push_back({static_cast<std::size_t>(valueStart - 1), static_cast<std::size_t>(walk - 1),
                           std::string(tools::TrimBlanks(tools::FormatNumber(sum, "00000.0000")))});
        pos = walk;
    }
    if (splices.empty()) return 0;
    std::string out;
    out.reserve(scenarioXml.size() + splices.size() * 12);
    std::size_t from = 0;
    for (const Splice& s : splices) {
        out.append(text.substr(from, s.from - from));
        out += s.value;
        from = s.to;
    }
    out.append(text.substr(from));
    scenarioXml = std::move(out);
    return static_cast<int>(splices.size());
}

std::string ClassOfOption(int option) {
    static const char* const kWords[] = {kStandardClass, kFreeRoamClass, "eCareerScenarioClass",
                                         "eTutorialScenarioClass", "eTimetableScenarioClass"};
    return option >= 0 && option < 5 ? kWords[option] : std::string();
}

bool ChangeClass(std::string& propertiesXml, std::string_view classWord) {
    const long at = InStr(propertiesXml, "<ScenarioClass");
    if (at == 0) return false;
    long pos = std::max(at - 10, 1L);
    tools::PutDetail(propertiesXml, pos, "ScenarioClass", classWord);
    return pos > 0;
}

bool WeatherFromPath(std::string_view path, WeatherChoice& choice) {
    std::string full(path);
    std::replace(full.begin(), full.end(), '/', '\\');
    if (full.size() >= 3 && SameWord(full.substr(full.size() - 3), "bin")) full.replace(full.size() - 3, 3, "xml");
    const long assets = InStr(full, "\\Assets\\");
    if (assets == 0) return false;
    const std::string rest = full.substr(static_cast<std::size_t>(assets) + 7);
    const std::size_t first = rest.find('\\');
    if (first == std::string::npos) return false;
    const std::size_t second = rest.find('\\', first + 1);
    if (second == std::string::npos || second + 1 >= rest.size() || first == 0) return false;
    choice = {rest.substr(0, first), rest.substr(first + 1, second - first - 1), rest.substr(second + 1)};
    return true;
}

SaveOutcome SaveScenario(app::AppContext& ctx, const std::string& folder, const std::string& propertiesXml,
                         const std::string& scenarioXml) {
    SaveOutcome out;
    const std::string temp = ctx.appPath("TempFiles");
    tools::CreatePath(temp);
    const std::string xml = temp + "\\Scenario.xml";
    const std::string made = temp + "\\Scenario.bin";
    const std::string properties = temp + "\\ScenarioProperties.xml";
    const std::string binTarget = folder + "\\Scenario.bin";
    const std::string propertiesTarget = folder + "\\ScenarioProperties.xml";
    const std::string unchanged = "\r\nScenario.bin and ScenarioProperties.xml have not been changed.";
    if (!tools::FileExists(binTarget) || !tools::FileExists(propertiesTarget)) {
        out.error = Fail("The scenario in " + folder + " has no Scenario.bin or ScenarioProperties.xml to replace.");
        return out;
    }
    if (base::Status compiled = tools::SerzCompileText(ctx, scenarioXml, xml, made)) {
        out.error = Fail("Serz.exe was unable to recompress the Scenario.xml file.\r\n" + compiled->description + unchanged);
        return out;
    }
    if (!tools::WriteTextFile(ctx, properties, propertiesXml + "\r\n")) {
        out.error = Fail("Could not write " + properties + unchanged);
        return out;
    }
    if (base::Status failed = Replace(made, binTarget, out.scenarioBackup)) {
        out.error = Fail(failed->description + unchanged);
        out.scenarioBackup.clear();
        return out;
    }
    if (base::Status failed = Replace(properties, propertiesTarget, out.propertiesBackup)) {
        Restore(binTarget, out.scenarioBackup);
        out.error = Fail(failed->description + unchanged);
        out.scenarioBackup.clear();
        out.propertiesBackup.clear();
        return out;
    }
    return out;
}

int RailWorksAppId(std::string_view gameRoot) {
    if (InStr(gameRoot, "railworks beta") > 0) return 24010;
    if (InStr(gameRoot, "railworks dev") > 0) return 24020;
    return 24000;
}

base::Status RailWorksLaunch(const app::AppContext& ctx, std::string& program, std::vector<std::string>& arguments) {
    std::error_code error;
    if (ctx.gameRoot().empty() || !std::filesystem::is_directory(tools::HostPath(ctx.gameRoot()), error))
        return base::RunError{base::err::kPathNotFound, "No simulator folder is set, so RailWorks cannot be started."};
    program.clear();
    const char* path = std::getenv("PATH");
    std::string_view rest = path ? path : "";
    while (!rest.empty() && program.empty()) {
        const std::size_t colon = rest.find(':');
        const std::filesystem::path candidate = std::filesystem::path(rest.substr(0, colon)) / "steam";
        if (std::filesystem::is_regular_file(candidate, error)) program = candidate.string();
        rest = colon == std::string_view::npos ? std::string_view() : rest.substr(colon + 1);
    }
    if (program.empty())
        return base::RunError{base::err::kFileNotFound, "Steam was not found on this system, so RailWorks cannot be started."};
    arguments = {"-applaunch", std::to_string(RailWorksAppId(ctx.gameRoot()))};
    return {};
}

}  // namespace ferrolund::scenarios
