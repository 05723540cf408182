#include "assets/loco_scripts.h"

#include <memory>

#include "assets/blueprint.h"
#include "assets/blueprint_splice.h"
#include "assets/sound_text.h"
#include "assets/stock_templates.h"
#include "tools/codepage.h"
#include "tools/numbers.h"
#include "tools/serz_convert.h"
#include "tools/tags.h"
#include "tools/text_search.h"

namespace ferrolund::assets {

using tools::InStr;
using tools::InStrRev;
using Verdict = TransformResult::Verdict;

namespace {

// The value of `tag` behind the first `section`, or empty.
std::string ValueIn(std::string_view text, std::string_view section, std::string_view tag) {
    long pos = InStr(text, section);
    std::string value;
    if (pos > 0) tools::GetDetail(text, pos, tag, value);
    return value;
}

// The script file a ScriptComponent's Name stands for.
std::string ScriptFile(const app::AppContext& ctx, std::string_view name) {
    return ctx.gameRoot() + "\\Assets\\" + std::string(name) + ".lua";
}

// The names of up to `room` child entries found by `word` from the child list on: the
// entry around each hit, then on behind that entry's end.
void CollectExhausts(std::string_view text, std::string_view word, ExhaustNames& found, std::size_t room) {
    const long children = InStr(text, "<Children>");
    const long end = children == 0 ? 0 : InStr(children, text, "</Children>");
    long from = children;
    while (from > 0 && found.names.size() < room) {
        const long hit = InStr(from, text, word);
        if (hit == 0 || (end > 0 && hit > end)) return;
        const long start = InStrRev(text, "<cEntityContainerBlueprint", hit);
        const long close = InStr(hit, text, kChildClose);
        std::string name;
        if (start > children) {
            long pos = start;
            tools::GetDetail(text, pos, "ChildName", name);
            if (pos == 0 || (close > 0 && pos > close)) name.clear();
        }
        if (name.empty()) found.ambiguous = true;
        found.names.push_back(std::move(name));
        from = close == 0 ? 0 : close + 1;
    }
}

}  // namespace

LocoScriptTemplates ReadLocoScriptTemplates(const app::AppContext& ctx) {
    return {StockTemplate(ctx, kLocoScriptTemplates[0]), StockTemplate(ctx, kLocoScriptTemplates[1]),
            StockTemplate(ctx, kLocoScriptTemplates[2]), StockTemplate(ctx, kLocoScriptTemplates[3])};
}

ExhaustNames FindExhausts(std::string_view text) {
    ExhaustNames found;
    CollectExhausts(text, "Exhaust", found, 2);
    CollectExhausts(text, "Clag", found, 2);
    if (found.names.size() == 2 && tools::EqualsIgnoreCase(found.names[0], found.names[1])) found.ambiguous = true;
    return found;
}

std::optional<std::string> AddScriptControls(std::string_view text, std::string_view controls) {
    std::string out(text);
    const long at = InStr(out, "<ControlValues>");
    if (at == 0) return std::nullopt;
    // Behind the tag and its line end, so the template's lines start a line of their own.
    long after = at + static_cast<long>(std::string_view("<ControlValues>").size()) - 1;
    if (out.compare(static_cast<std::size_t>(after), 2, "\r\n") == 0) after += 2;
    InsertBehind(out, after, std::string(WithoutLastLineEnd(controls)) + "\r\n");
    SetControlDetail(out, "RPM", "ApplyToConsist", "eFalse");
    SetControlDetail(out, "RPMDelta", "ApplyToConsist", "eTrue");
    SetControlDetail(out, "Regulator", "ApplyToConsist", "eTrue");
    return out;
}

std::string EngineScript(const LocoScriptTemplates& templates, const std::vector<std::string>& exhausts) {
    if (exhausts.size() == 1) return FillMarkers(templates.oneExhaust, {{"aaaaaa", exhausts[0]}});
    return FillMarkers(templates.twoExhausts, {{"aaaaaa", exhausts[0]}, {"bbbbbb", exhausts[1]}});
}

TransformResult LocoScript(app::AppContext& ctx, std::string_view text, const LocoScriptTemplates& templates) {
    const std::string* bodies[] = {&templates.controls, &templates.oneExhaust, &templates.twoExhausts,
                                   &templates.defaultAudio};
    for (std::size_t i = 0; i < std::size(bodies); ++i) {
        if (tools::TrimBlanks(*bodies[i]).empty()) {
            return TransformResult::Skip(Verdict::Unfit, MissingTemplateMessage(kLocoScriptTemplates[i]));
        }
    }
    const ExhaustNames exhausts = FindExhausts(text);
    if (exhausts.ambiguous) return TransformResult::Skip(Verdict::Unfit, std::string(kExhaustsAmbiguous));
    if (exhausts.names.empty()) return TransformResult::Skip(Verdict::Unfit, "This Loco has no Exhaust child entries.");
    const std::string script = ValueIn(text, "<ScriptComponent>", "Name");
    if (tools::TrimBlanks(script).empty()) return TransformResult::Skip(Verdict::Unfit, "This Loco names no script.");
    std::optional<std::string> changed = AddScriptControls(text, templates.controls);
    if (!changed) return TransformResult::Skip(Verdict::Unfit, "This Loco has no control values.");

    TransformResult result = TransformResult::Changed(std::move(*changed));
    // The engine simulation's own script gives way to the neutral one.
    std::string simulationScript;
    if (const long container = InStr(text, "<EngineSimulationContainer>"); container > 0) {
        if (const std::optional<BlueprintRef> ref = ReadTriple(text, container)) {
            std::string simulation;
            if (!tools::SerzReadXml(ctx, BlueprintFile(ctx.gameRoot(), *ref), simulation)) {
                simulationScript = ValueIn(simulation, "<ScriptComponent>", "Name");
            }
        }
    }
    if (tools::TrimBlanks(simulationScript).empty()) {
        result.note = "Its engine simulation names no script to replace.";
    } else {
        result.companions.push_back({ScriptFile(ctx, simulationScript), templates.defaultAudio, "DefaultAudio.lua"});
    }
    const std::string_view scratch = exhausts.names.size() == 1 ? kLocoScriptTemplates[1] : kLocoScriptTemplates[2];
    result.companions.push_back({ScriptFile(ctx, script), EngineScript(templates, exhausts.names), std::string(scratch)});
    return result;
}

TransformOutcome AddLocoScript(app::AppContext& ctx, const std::vector<AssetRow>& selected) {
    auto templates = std::make_shared<LocoScriptTemplates>();
    TransformCommand command("mnuLocoScript_Click", TransformFile::Blueprint,
                             [templates](app::AppContext& c, TransformRow&, std::string_view text) {
                                 return LocoScript(c, text, *templates);
                             });
    command.prepare = [templates](app::AppContext& c, const std::vector<AssetRow>&) {
        *templates = ReadLocoScriptTemplates(c);
        return true;
    };
    return RunTransform(ctx, selected, command);
}

// --- Add Wagon Script ---

TransformResult AddWagonScriptText(std::string_view text, std::string_view templateText, const std::string& newId) {
    std::string out(text);
    if (long pos = InStr(out, "<ScriptComponent>"); pos > 0) {
        tools::PutDetail(out, pos, "Name", kWagonScriptName);
        if (out == text) return TransformResult::Skip(Verdict::Nothing, "This wagon already uses the wagon script.");
        return TransformResult::Changed(std::move(out));
    }
    // The component goes behind the child entries, as the wagon's last.
    constexpr std::string_view kContainerEnd = "</ContainerComponent>";
    for (long at = InStr(out, kContainerEnd); at > 0; at = InStr(at + 1, out, kContainerEnd)) {
        std::size_t next = static_cast<std::size_t>(at - 1) + kContainerEnd.size();
        if (out.compare(next, 2, "\r\n") != 0) continue;
        next += 2;
        const std::size_t line = next;
        while (next < out.size() && (out[next] == '\t' || out[next] == ' ')) ++next;
        if (InStr(static_cast<long>(next) + 1, out, "</cWagonBlueprint>") != static_cast<long>(next) + 1) continue;
        if (tools::TrimBlanks(templateText).empty()) {
            return TransformResult::Skip(Verdict::Unfit, MissingTemplateMessage(kWagonScriptTemplate));
        }
        const std::string component = FillMarkers(std::string(templateText), {{"aaaaaa", newId}});
        out.insert(line, std::string(WithoutLastLineEnd(component)) + "\r\n");
        return TransformResult::Changed(std::move(out));
    }
    return TransformResult::Skip(Verdict::Unfit, "This item is not a wagon whose child entries close its blueprint.");
}

TransformOutcome AddWagonScript(app::AppContext& ctx, const std::vector<AssetRow>& selected) {
    auto templateText = std::make_shared<std::string>();
    TransformCommand command("mnuWagScript_Click", TransformFile::Blueprint,
                             [templateText](app::AppContext&, TransformRow&, std::string_view text) {
                                 return AddWagonScriptText(text, *templateText, tools::NewDeltaId());
                             });
    command.prepare = [templateText](app::AppContext& c, const std::vector<AssetRow>&) {
        *templateText = StockTemplate(c, kWagonScriptTemplate);
        return true;
    };
    return RunTransform(ctx, selected, command);
}

}  // namespace ferrolund::assets
