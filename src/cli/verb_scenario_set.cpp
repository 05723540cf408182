#include "cli/verb_scenario_set.h"

#include <map>
#include <ostream>

#include "cli/route_argument.h"
#include "cli/shared_options.h"
#include "scenarios/scenario_reader.h"
#include "scenarios/scenario_save.h"
#include "scenarios/scenario_texts.h"
#include "tools/codepage.h"
#include "tools/names.h"

namespace ferrolund::cli {

namespace {

using scenarios::DetailEdits;

constexpr const char* kUsage =
    "ferrolund-cli: scenario-set ROUTE SCENARIO --field NAME=VALUE... [--shift-consists]\n"
    "  fields: display-name description briefing start-time duration day month year season author\n"
    "          start-location class (standard, freeroam, career, tutorial, timetable) weather-provider\n"
    "          weather-product weather-blueprint weather-file (a blueprint path below Assets)\n"
    "          extension-provider extension-product extension-blueprint blank-extension=yes\n"
    "          preload (Provider|Product, may be repeated)\n";

// A command line's UTF-8 text in the screen's Windows-1252 form.
std::string ScreenText(const std::string& utf8) {
    std::string out;
    for (std::size_t i = 0; i < utf8.size();) {
        const unsigned char c = static_cast<unsigned char>(utf8[i]);
        const int length = c < 0x80 ? 1 : c >= 0xF0 ? 4 : c >= 0xE0 ? 3 : c >= 0xC0 ? 2 : 1;
        char32_t code = length == 1 ? c : c & (0x7F >> length);
        for (int k = 1; k < length && i + k < utf8.size(); ++k) code = (code << 6) | (utf8[i + k] & 0x3F);
        out += tools::Cp1252OfUnicode(code);
        i += static_cast<std::size_t>(length);
    }
    return out;
}

std::map<std::string, std::string DetailEdits::*> TextFields() {
    return {{"display-name", &DetailEdits::displayName},
            {"description", &DetailEdits::description},
            {"briefing", &DetailEdits::briefing},
            {"start-time", &DetailEdits::startTime},
            {"duration", &DetailEdits::durationMins},
            {"day", &DetailEdits::startDD},
            {"month", &DetailEdits::startMM},
            {"year", &DetailEdits::startYYYY},
            {"season", &DetailEdits::season},
            {"author", &DetailEdits::author},
            {"start-location", &DetailEdits::startLocation},
            {"weather-provider", &DetailEdits::weatherProvider},
            {"weather-product", &DetailEdits::weatherProduct},
            {"weather-blueprint", &DetailEdits::weatherBlueprintID},
            {"extension-provider", &DetailEdits::extensionProvider},
            {"extension-product", &DetailEdits::extensionProduct},
            {"extension-blueprint", &DetailEdits::extensionBlueprintID}};
}

// The class word of a name, an option number or the word itself; empty for none.
std::string ClassWord(const std::string& given) {
    const char* names[] = {"standard", "freeroam", "career", "tutorial", "timetable"};
    for (int option = 0; option < 5; ++option) {
        const std::string word = scenarios::ClassOfOption(option);
        if (tools::EqualsIgnoreCase(given, names[option]) || tools::EqualsIgnoreCase(given, word) ||
            given == std::to_string(option))
            return word;
    }
    return {};
}

// Applies one NAME=VALUE; false with a message for a name or value it does not know.
bool ApplyField(const std::string& field, DetailEdits& edits, std::string& classWord, std::ostream& err) {
    const std::size_t equals = field.find('=');
    if (equals == std::string::npos) {
        err << "ferrolund-cli: a field is NAME=VALUE, not " << field << "\n";
        return false;
    }
    const std::string name = field.substr(0, equals);
    const std::string value = ScreenText(field.substr(equals + 1));
    const auto fields = TextFields();
    if (const auto it = fields.find(name); it != fields.end()) {
        edits.*(it->second) = value;
    } else if (name == "class") {
        classWord = ClassWord(value);
        if (classWord.empty()) {
            err << "ferrolund-cli: no scenario class " << field.substr(equals + 1) << "\n";
            return false;
        }
    } else if (name == "weather-file") {
        scenarios::WeatherChoice choice;
        if (!scenarios::WeatherFromPath(value, choice)) {
            err << "ferrolund-cli: " << field.substr(equals + 1) << " is no blueprint below an Assets folder\n";
            return false;
        }
        edits.weatherProvider = choice.provider;
        edits.weatherProduct = choice.product;
        edits.weatherBlueprintID = choice.blueprintID;
    } else if (name == "blank-extension") {
        edits.extensionProvider.clear();
        edits.extensionProduct.clear();
        edits.extensionBlueprintID.clear();
    } else if (name == "preload") {
        edits.preload.push_back(value);
    } else {
        err << "ferrolund-cli: no field " << name << "\n" << kUsage;
        return false;
    }
    return true;
}

}  // namespace

int ScenarioSetVerb(app::AppContext& ctx, const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    std::vector<std::string> positional, fields;
    bool shift = false;
    for (std::size_t i = 0; i < args.size(); ++i) {
        if (args[i] == "--field" && i + 1 < args.size()) {
            fields.push_back(args[++i]);
        } else if (args[i] == "--shift-consists") {
            shift = true;
        } else if (args[i].rfind("--", 0) != 0) {
            positional.push_back(args[i]);
        } else {
            err << kUsage;
            return kExitUsage;
        }
    }
    if (positional.size() != 2 || fields.empty()) {
        err << kUsage;
        return kExitUsage;
    }
    routes::CheckedRoute route;
    if (!FindRoute(ctx, positional[0], route)) {
        err << "ferrolund-cli: no route " << positional[0] << "\n";
        return kExitFailed;
    }
    const std::string scenario = FindScenario(ctx, route.folder, positional[1]);
    if (scenario.empty()) {
        err << "ferrolund-cli: no scenario " << positional[1] << " in route " << tools::ShownText(route.folder) << "\n";
        return kExitFailed;
    }
    scenarios::ScenarioTexts texts;
    if (base::Status failed = scenarios::LoadScenarioTexts(ctx, scenarios::ScenarioFolderPath(ctx, route.folder, scenario), texts)) {
        err << "ferrolund-cli: " << tools::ShownText(failed->description) << "\n";
        return kExitFailed;
    }
    const std::string language = ctx.languageTag();
    const scenarios::ScenarioDetails details = scenarios::ReadScenarioDetails(texts.propertiesXml, language);
    if (details.kind() == scenarios::ScenarioClass::Template) {
        err << "ferrolund-cli: " << tools::ShownText(scenarios::kQuickDriveRefusal) << "\n";
        return kExitFailed;
    }
    DetailEdits edits = scenarios::EditsFromDetails(details);
    const std::string loadedTime = edits.startTime;
    std::string classWord;
    for (const std::string& field : fields) {
        if (!ApplyField(field, edits, classWord, err)) return kExitUsage;
    }
    if (!classWord.empty()) {
        scenarios::ChangeClass(texts.propertiesXml, classWord);
        edits.scenarioClass = classWord;
    }
    if (shift) {
        double seconds = 0;
        if (base::Status bad = scenarios::StartTimeShift(edits.startTime, loadedTime, seconds)) {
            err << "ferrolund-cli: " << tools::ShownText(bad->description) << "\n";
            return kExitFailed;
        }
        const int moved = scenarios::ShiftStartTimes(texts.scenarioXml, seconds);
        out << "Start times of " << moved << " consists moved by " << seconds << " seconds\n";
    }
    scenarios::SaveTemplates templates;
    base::Status status = scenarios::ReadSaveTemplates(ctx, templates);
    if (!status) status = scenarios::ApplyDetailEdits(texts.propertiesXml, edits, templates, language);
    if (status) {
        err << "ferrolund-cli: " << tools::ShownText(status->description) << "\n";
        return kExitFailed;
    }
    const scenarios::SaveOutcome saved = scenarios::SaveScenario(ctx, texts.folder, texts.propertiesXml, texts.scenarioXml);
    if (saved.error) {
        err << "ferrolund-cli: " << tools::ShownText(saved.error->description) << "\n";
        return kExitFailed;
    }
    out << scenarios::kSavedMessage << "\n";
    for (const std::string* backup : {&saved.scenarioBackup, &saved.propertiesBackup})
        out << (backup->empty() ? std::string("No back-up made: every back-up name is taken")
                                : "Back-up: " + tools::ShownText(*backup))
            << "\n";
    return kExitDone;
}

}  // namespace ferrolund::cli
