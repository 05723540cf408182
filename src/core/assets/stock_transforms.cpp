#include "assets/stock_transforms.h"

#include <cmath>
#include <cstdlib>
#include <memory>

#include "assets/blueprint.h"
#include "assets/blueprint_files.h"
#include "assets/blueprint_splice.h"
#include "tools/serz_convert.h"
#include "tools/tags.h"
#include "tools/text_search.h"
#include "tools/vb_format.h"

namespace ferrolund::assets {

using tools::InStr;
using Verdict = TransformResult::Verdict;

namespace {

constexpr const char* kModule = "frmAssets";

// Where the value of one "<e ...>" element stands, 0-based.
struct ValueSpan {
    std::size_t start = 0;
    std::size_t length = 0;
};

// The values of the "<e" elements from `from` (1-based) up to `until` (1-based, 0 for the
// end of the text), at most `most` of them.
std::vector<ValueSpan> ElementValues(std::string_view text, long from, long until, std::size_t most) {
    std::vector<ValueSpan> spans;
    for (long at = InStr(from, text, "<e"); at > 0 && (until == 0 || at < until) && spans.size() < most;
         at = InStr(at + 1, text, "<e")) {
        const char after = static_cast<std::size_t>(at + 1) < text.size() ? text[static_cast<std::size_t>(at + 1)] : '\0';
        if (after != ' ' && after != '>') continue;  // "<Element>", "<English ...>"
        const long gt = InStr(at, text, ">");
        const long close = gt == 0 ? 0 : InStr(gt, text, "</e");
        if (close == 0 || (until != 0 && close > until)) break;
        spans.push_back({static_cast<std::size_t>(gt), static_cast<std::size_t>(close - gt - 1)});
    }
    return spans;
}

double NumberOf(std::string_view value) {
    const std::string copy(tools::TrimBlanks(value));
    char* end = nullptr;
    const double number = std::strtod(copy.c_str(), &end);
    return end == copy.c_str() ? 0.0 : number;
}

// The text with each span's value replaced, the spans in order.
std::string WithValues(std::string_view text, const std::vector<ValueSpan>& spans, const std::vector<std::string>& values) {
    std::string out;
    std::size_t done = 0;
    for (std::size_t i = 0; i < spans.size(); ++i) {
        out.append(text.substr(done, spans[i].start - done));
        out += values[i];
        done = spans[i].start + spans[i].length;
    }
    out.append(text.substr(done));
    return out;
}

// Without a child entry chosen in the list there is nothing to work on.
bool ChildChosen(app::AppContext& ctx, bool chosen) {
    if (!chosen && ctx.ui) ctx.ui->message(ctx.langText(444, {}, kModule), base::Icon::Exclamation);
    return chosen;
}

// Empties the first Key element at or after `from`; an empty "<Key/>" is left as it is.
void EmptyKeyFrom(std::string& text, long from) {
    for (long at = InStr(from, text, "<Key"); at > 0; at = InStr(at + 1, text, "<Key")) {
        const std::size_t after = static_cast<std::size_t>(at + 3);
        if (after < text.size() && text[after] != ' ' && text[after] != '>' && text[after] != '/') continue;
        const long end = InStr(at, text, ">");
        if (end == 0 || text[static_cast<std::size_t>(end - 2)] == '/') return;
        long pos = at;
        tools::PutDetail(text, pos, "Key", "", tools::kBlueprintTagOptions);
        return;
    }
}

std::string WithoutCommas(std::string text) {
    std::erase(text, ',');
    return text;
}

}  // namespace

bool ApplySaveAs(const SaveAsAsk& ask, TransformRow& row, TransformResult& result, NameLanguages languages) {
    const std::optional<SaveAsChoice> choice = ask ? ask(row.row, row.base) : std::nullopt;
    if (!choice || tools::TrimBlanks(choice->fileName).empty()) return false;
    result.saveAs = std::string(tools::TrimBlanks(choice->fileName));
    if (result.saveAs.find('.') == std::string::npos) result.saveAs += ".bin";
    if (!choice->internalName.empty()) SetBlueprintName(result.text, XmlValueOfTyped(choice->internalName), languages);
    return true;
}

// --- Change Name ---

bool WriteNewName(std::string& text, std::string_view value, NameChange kind) {
    if (!SetBlueprintName(text, value, NameLanguages::Eight)) return false;
    if (kind == NameChange::NamesOnly) return true;
    EmptyKeyFrom(text, 1);
    if (const long engine = InStr(text, "<EngineType"); engine > 0) {
        for (const char* tag : {"EngineName", "English"}) {
            long pos = engine;
            tools::PutDetail(text, pos, tag, value, tools::kBlueprintTagOptions);
        }
        EmptyKeyFrom(text, engine);
    }
    return true;
}

std::string NewNameValue(std::string_view typed, std::string_view oldName) {
    std::string out;
    std::size_t start = 0;
    for (std::size_t hash = typed.find('#'); hash != std::string_view::npos; hash = typed.find('#', start)) {
        out += XmlValueOfTyped(typed.substr(start, hash - start));
        out += oldName;
        start = hash + 1;
    }
    return out + XmlValueOfTyped(typed.substr(start));
}

TransformOutcome ChangeName(app::AppContext& ctx, const std::vector<AssetRow>& selected, NameChange kind) {
    auto typed = std::make_shared<std::string>();
    const bool keys = kind == NameChange::NamesAndKeys;
    TransformCommand command(keys ? "mnuCNLK_Click" : "mnuChangeName_Click", TransformFile::Blueprint, nullptr);
    command.prepare = [typed, keys](app::AppContext& c, const std::vector<AssetRow>& rows) {
        if (!c.ui) return false;
        if (keys &&
            c.ui->ask("This option will change both the Name and Localize(English)\r\nName of the item and delete any "
                      "'Key' entry for a selected item.",
                      base::Buttons::OkCancel, base::Icon::Information) != base::Answer::Ok) {
            return false;
        }
        const auto answer = c.ui->input("Change Name", "Enter the new name. A # in it stands for the old name.",
                                        rows.front().name);
        if (!answer || tools::TrimBlanks(*answer).empty()) return false;
        *typed = *answer;
        return true;
    };
    command.transform = [typed, kind](app::AppContext&, TransformRow& row, std::string_view text) {
        TransformResult result = TransformResult::Changed(std::string(text));
        const std::string value = NewNameValue(*typed, BlueprintEnglishName(text));
        if (!WriteNewName(result.text, value, kind)) {
            return TransformResult::Skip(Verdict::Unfit, "This item has no name to change.");
        }
        std::string shown = *typed;
        for (std::size_t hash = shown.find('#'); hash != std::string::npos; hash = shown.find('#', hash + row.row.name.size()))
            shown.replace(hash, 1, row.row.name);
        row.row.name = WithoutCommas(shown);
        return result;
    };
    return RunTransform(ctx, selected, command);
}

// --- Change LODs ---

double ClampMinLod(double value) { return value > kMinLodLimit ? kMinLodLimit : value; }
double ClampMaxLod(double value) { return value > kMaxLodLimit ? kMaxLodLimit : value; }

std::string LodText(double value) {
    std::string text = tools::FormatNumber(value, "####.0000");
    if (text.size() >= 4 && text.compare(text.size() - 4, 4, "0000") == 0) text.erase(text.find('.'));
    if (text.empty() || text == "-") text = "0";
    return text;
}

std::optional<std::string> RescaleLods(std::string_view text, double newMin, double newMax, LodChange& change) {
    constexpr std::size_t kMostValues = 50;
    change = {};
    std::vector<ValueSpan> spans;
    for (long open = InStr(text, "<LOD>"); open > 0 && spans.size() < kMostValues; open = InStr(open + 1, text, "<LOD>")) {
        const long close = InStr(open, text, "</LOD>");
        for (const ValueSpan& span : ElementValues(text, open, close, kMostValues - spans.size())) {
            const double value = NumberOf(text.substr(span.start, span.length));
            if (value == 0) break;  // a zero ends the block
            spans.push_back(span);
            change.old.push_back(value);
        }
    }
    FindMinMax(change.old, change.oldMin, change.oldMax);
    if (change.old.empty() || change.oldMax == change.oldMin) return std::nullopt;
    std::vector<std::string> values;
    for (const double value : change.old) {
        values.push_back(
            LodText(newMin + (value - change.oldMin) / (change.oldMax - change.oldMin) * (newMax - newMin)));
    }
    return WithValues(text, spans, values);
}

TransformOutcome ChangeLods(app::AppContext& ctx, const std::vector<AssetRow>& selected, double minLod,
                            double maxLod) {
    const double newMin = ClampMinLod(minLod), newMax = ClampMaxLod(maxLod);
    TransformCommand command("mnuLod_Click", TransformFile::Geometry, [newMin, newMax](app::AppContext&, TransformRow&,
                                                                              std::string_view text) {
        LodChange change;
        std::optional<std::string> changed = RescaleLods(text, newMin, newMax, change);
        if (change.old.empty()) return TransformResult::Skip(Verdict::Nothing, "No LOD values were found.");
        const std::string range = LodText(change.oldMin) + " - " + LodText(change.oldMax);
        if (!changed) return TransformResult::Skip(Verdict::Nothing, "The LOD range " + range + " is empty: nothing was changed.");
        TransformResult result = TransformResult::Changed(std::move(*changed));
        result.note = "LOD " + range + " made " + LodText(newMin) + " - " + LodText(newMax);
        return result;
    });
    command.reportHeading = "Provider\\Product\\Path";
    return RunTransform(ctx, selected, command);
}

// --- Display Child Entries ---

std::optional<ChildEntries> DisplayChildEntries(app::AppContext& ctx, const std::vector<AssetRow>& selected) {
    ctx.currentRoutine = "Command9_Click";
    const std::vector<AssetRow> rows = UsableRows(ctx, selected);
    if (rows.empty()) return std::nullopt;
    if (rows.size() > 1 && ctx.ui) {
        ctx.ui->message("You can only select one item at a time for this option.\r\nOnly the first item will be shown",
                        base::Icon::Information);
    }
    const std::string file = RowFile(ctx, rows.front());
    std::string xml;
    if (tools::SerzReadXml(ctx, file, xml) || xml.empty()) {
        if (ctx.ui) ctx.ui->message(CompileFailedMessage(file), base::Icon::Exclamation);
        return std::nullopt;
    }
    return ChildEntries{"Child Entries For:-", rows.front().name, ChildNames(xml)};
}

// --- Remove Selected Child Entries ---

int RemoveChildBlocks(std::string& text, const std::vector<std::string>& childNames) {
    int removed = 0;
    for (const std::string& name : childNames) {
        const ChildBlock block = FindNamedChild(text, name);
        if (!block) continue;
        text.erase(static_cast<std::size_t>(block.start - 1), static_cast<std::size_t>(block.length));
        ++removed;
    }
    return removed;
}

TransformOutcome RemoveChildEntries(app::AppContext& ctx, const std::vector<AssetRow>& selected,
                                    const std::vector<std::string>& childNames, const SaveAsAsk& ask) {
    TransformCommand command("Command12_Click", TransformFile::Blueprint, [&childNames, &ask](app::AppContext&, TransformRow& row,
                                                                                     std::string_view text) {
        TransformResult result = TransformResult::Changed(std::string(text));
        const int removed = RemoveChildBlocks(result.text, childNames);
        if (!ApplySaveAs(ask, row, result, NameLanguages::Eight)) return TransformResult::Skip(Verdict::Cancelled, {});
        result.note = std::to_string(removed) + " child entries removed, saved as " + result.saveAs;
        return result;
    });
    command.prepare = [&childNames](app::AppContext& c, const std::vector<AssetRow>&) {
        return ChildChosen(c, !childNames.empty());
    };
    return RunTransform(ctx, selected, command);
}

// --- Correct Selected Smoke Stack ---

TransformResult StraightenChild(std::string_view text, std::string_view childName) {
    const ChildBlock block = FindNamedChild(text, childName);
    if (!block) {
        return TransformResult::Skip(Verdict::Unfit, "This item has no child entry named " + std::string(childName) + ".");
    }
    const long end = block.start + block.length;
    const long element = InStr(block.start, text, "<Element>");
    const std::vector<ValueSpan> spans =
        element == 0 || element > end ? std::vector<ValueSpan>{} : ElementValues(text, element, end, 16);
    if (spans.size() < 16) {
        return TransformResult::Skip(Verdict::Unfit, "The child entry " + std::string(childName) + " has no placement matrix.");
    }
    std::vector<ValueSpan> turn(spans.begin(), spans.begin() + 12);
    std::vector<std::string> values;
    bool upright = true;
    for (std::size_t i = 0; i < turn.size(); ++i) {
        const bool diagonal = i % 5 == 0;  // 0, 5, 10
        values.emplace_back(diagonal ? "1" : "0");
        if (NumberOf(text.substr(turn[i].start, turn[i].length)) != (diagonal ? 1.0 : 0.0)) upright = false;
    }
    if (upright) {
        return TransformResult::Skip(Verdict::Nothing, "The child entry " + std::string(childName) + " already stands upright.");
    }
    return TransformResult::Changed(WithValues(text, turn, values));
}

TransformOutcome CorrectSmokeStack(app::AppContext& ctx, const std::vector<AssetRow>& selected,
                                   const std::string& childName) {
    TransformCommand command("Command7_Click", TransformFile::Blueprint,
                       [&childName](app::AppContext&, TransformRow&, std::string_view text) {
                           return StraightenChild(text, childName);
                       });
    command.prepare = [&childName](app::AppContext& c, const std::vector<AssetRow>&) {
        return ChildChosen(c, !childName.empty());
    };
    return RunTransform(ctx, selected, command);
}

}  // namespace ferrolund::assets
