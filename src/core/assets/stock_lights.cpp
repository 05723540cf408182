#include "assets/stock_lights.h"

#include <filesystem>
#include <memory>
#include <system_error>

#include "assets/blueprint_splice.h"
#include "assets/stock_templates.h"
#include "tools/files.h"
#include "tools/host_path.h"
#include "tools/numbers.h"
#include "tools/text_search.h"

namespace ferrolund::assets {

using Verdict = TransformResult::Verdict;

namespace {

constexpr std::size_t kMostFields = 11;
constexpr std::string_view kLightTable = "UKLights.txt";
constexpr std::string_view kLampCode = "UKCode.txt";

std::vector<std::string> Fields(std::string_view line) {
    std::vector<std::string> fields;
    std::size_t start = 0;
    while (fields.size() < kMostFields) {
        const std::size_t comma = line.find(',', start);
        fields.emplace_back(tools::TrimBlanks(line.substr(start, comma == std::string_view::npos ? line.npos : comma - start)));
        if (comma == std::string_view::npos) break;
        start = comma + 1;
    }
    return fields;
}

bool IsZero(std::string_view value) { return tools::VbVal(value) == 0; }

std::string LampName(LampKind kind, int place) {
    return kind == LampKind::Head ? "HeadLamp" + std::to_string(place) : std::string("TailLamp");
}

std::vector<int> PlacesOf(LampKind kind, std::size_t trainType) {
    if (kind == LampKind::Tail) return {1};
    const TrainType& type = kTrainTypes[trainType];
    if (type.second == 0) return {type.first};
    return {type.first, type.second};
}

}  // namespace

std::vector<LightTemplate> ParseLightTable(std::string_view table, LampKind kind) {
    std::vector<LightTemplate> entries;
    std::size_t start = 0;
    while (start < table.size() && entries.size() < kMostLightTemplates) {
        std::size_t end = table.find('\n', start);
        if (end == std::string_view::npos) end = table.size();
        std::string_view line = table.substr(start, end - start);
        start = end + 1;
        if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
        line = tools::TrimBlanks(line);
        if (line.empty() || line.starts_with("//")) continue;
        std::vector<std::string> fields = Fields(line);
        if (fields.size() < 3 || fields[0].empty() || fields[1].empty() || fields[2].empty()) continue;
        const bool head = tools::VbVal(fields[2]) == 0;
        if (head != (kind == LampKind::Head)) continue;
        entries.push_back({fields[0], fields[1], std::vector<std::string>(fields.begin() + 3, fields.end())});
    }
    return entries;
}

std::string LightModelFile(const app::AppContext& ctx, const LightTemplate& entry) {
    std::string file = ctx.gameRoot() + "\\Assets\\" + entry.blueprint;
    if (file.size() >= 3 && tools::InStr(static_cast<long>(file.size()) - 2, file, "xml") > 0)
        file.replace(file.size() - 3, 3, "bin");
    return file;
}

std::string NegatedValue(std::string_view value) {
    if (IsZero(value)) return std::string(value);
    if (value.starts_with('-')) return std::string(value.substr(1));
    return "-" + std::string(value);
}

std::optional<LampPosition> LampPlace(const LightTemplate& entry, LampKind kind, int place) {
    const auto& p = entry.positions;
    auto have = [&](std::size_t count) {
        if (p.size() < count) return false;
        for (std::size_t i = 0; i < count; ++i)
            if (p[i].empty()) return false;
        return true;
    };
    if (kind == LampKind::Tail) {
        if (place != 1 || !have(3)) return std::nullopt;
        return LampPosition{p[0], p[1], p[2]};
    }
    switch (place) {
        case 1:
            if (have(3)) return LampPosition{p[0], p[1], p[2]};
            break;
        case 2:
            if (have(3)) return LampPosition{"0.0000", p[1], p[2]};
            break;
        case 3:
            if (have(3)) return LampPosition{NegatedValue(p[0]), p[1], p[2]};
            break;
        case 4:
            if (have(5)) return LampPosition{"0.0000", p[3], p[4]};
            break;
        default:
            break;
    }
    return std::nullopt;
}

LampModel LampModelOf(LampKind kind) {
    return {"Kuju", "RailSimulator",
            kind == LampKind::Head ? "Scenery\\Animated\\oillamp_white_drb.xml" : "Scenery\\Animated\\Zugschlusslaterne.xml"};
}

std::vector<std::string> MissingLightFiles(const app::AppContext& ctx, LampKind kind) {
    std::vector<std::string> missing;
    const LampModel model = LampModelOf(kind);
    const LightTemplate lamp{"", model.provider + "\\" + model.product + "\\" + model.blueprintId, {}};
    const std::string modelFile = LightModelFile(ctx, lamp);
    if (!tools::FileExists(modelFile)) missing.push_back(modelFile);
    const std::string folder = ctx.appPath("Lumenfold\\Assets");
    std::error_code ec;
    if (!std::filesystem::is_directory(tools::HostPath(folder), ec)) missing.push_back(folder);
    return missing;
}

std::string MissingLightFilesMessage(const std::vector<std::string>& missing) {
    std::string text = "You do not appear to have the Light files installed:-";
    for (const std::string& path : missing) text += "\r\n" + path;
    return text;
}

std::optional<std::string> LampChildren(std::string_view codeTemplate, const LightTemplate& entry, LampKind kind,
                                        const std::vector<int>& places) {
    const LampModel model = LampModelOf(kind);
    std::string children;
    for (const int place : places) {
        const std::optional<LampPosition> at = LampPlace(entry, kind, place);
        if (!at) return std::nullopt;
        children += FillMarkers(std::string(codeTemplate), {{"HeadLamp", LampName(kind, place)},
                                                            {"444444", model.provider},
                                                            {"555555", model.product},
                                                            {"666666", model.blueprintId},
                                                            {"777777", "1.0000"},
                                                            {"111111", at->x},
                                                            {"222222", at->y},
                                                            {"333333", at->z},
                                                            {"888888", tools::NewDeltaId()}});
    }
    return children;
}

TransformResult AddLamps(std::string_view text, std::string_view codeTemplate, const LightTemplate& entry,
                         LampKind kind, std::size_t trainType, const std::string& base) {
    const std::vector<int> places = PlacesOf(kind, trainType);
    const std::optional<std::string> lamps = LampChildren(codeTemplate, entry, kind, places);
    if (!lamps) {
        return TransformResult::Skip(Verdict::Unfit,
                                     "The light template " + entry.name + " has no position for the lamps asked for.");
    }
    TransformResult result = TransformResult::Changed(std::string(text));
    if (!SpliceAtChildren(result.text, *lamps)) {
        return TransformResult::Skip(Verdict::Unfit, "This item has no list of child entries to hang the lamps on.");
    }
    if (kind == LampKind::Head) {
        const std::string suffix = kTrainTypes[trainType].suffix;
        SetBlueprintName(result.text, BlueprintEnglishName(text) + suffix, NameLanguages::Five);
        result.saveAs = base + suffix + ".bin";
        result.note = std::string(kTrainTypes[trainType].caption) + " lamps, saved as " + result.saveAs;
    }
    return result;
}

TransformOutcome AddLights(app::AppContext& ctx, const std::vector<AssetRow>& selected, LampKind kind,
                           const LightAsk& ask) {
    struct State {
        std::string code;
        std::vector<LightTemplate> offered;
    };
    auto state = std::make_shared<State>();
    TransformCommand command(kind == LampKind::Head ? "mnuHead_Click" : "mnuTail_Click", TransformFile::Blueprint,
                             nullptr);
    command.prepare = [state, kind](app::AppContext& c, const std::vector<AssetRow>&) {
        if (const auto missing = MissingLightFiles(c, kind); !missing.empty()) {
            if (c.ui) c.ui->message(MissingLightFilesMessage(missing), base::Icon::Exclamation);
            return false;
        }
        const std::string table = ReadStockTemplate(c, kLightTable);
        if (table.empty()) return false;
        state->code = ReadStockTemplate(c, kLampCode);
        if (state->code.empty()) return false;
        for (const LightTemplate& entry : ParseLightTable(table, kind))
            if (tools::FileExists(LightModelFile(c, entry))) state->offered.push_back(entry);
        if (state->offered.empty()) {
            if (c.ui) {
                c.ui->message(std::string("There are no ") + (kind == LampKind::Head ? "head" : "tail") +
                                  "-light templates in " + StockTemplateFile(c, kLightTable) +
                                  " for a model that is installed.",
                              base::Icon::Exclamation);
            }
            return false;
        }
        return true;
    };
    command.transform = [state, kind, &ask](app::AppContext&, TransformRow& row, std::string_view text) {
        const std::optional<LightChoice> choice = ask ? ask(row.row, state->offered) : std::nullopt;
        if (!choice || choice->templateIndex >= state->offered.size() ||
            (kind == LampKind::Head && choice->trainType >= kTrainTypes.size())) {
            return TransformResult::Skip(Verdict::Cancelled, {});
        }
        return AddLamps(text, state->code, state->offered[choice->templateIndex], kind, choice->trainType, row.base);
    };
    return RunTransform(ctx, selected, command);
}

}  // namespace ferrolund::assets
