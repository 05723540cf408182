#include "assets/stock_settings.h"

#include <memory>

#include "tools/codepage.h"
#include "tools/tags.h"
#include "tools/text_search.h"

namespace ferrolund::assets {

using tools::InStr;
using Verdict = TransformResult::Verdict;

namespace {

constexpr const char* kModule = "frmAssets";

std::size_t Index(long position) { return static_cast<std::size_t>(position - 1); }

std::string ValueOf(std::string_view text, std::string_view tag) {
    std::string value;
    long pos = InStr(text, "<" + std::string(tag));
    if (pos > 0) tools::GetDetail(text, pos, tag, value, tools::kBlueprintTagOptions);
    return value;
}

// The Category cell of the list: the value without its leading 'e'.
std::string CategoryCell(std::string value) {
    if (!value.empty() && (value[0] == 'e' || value[0] == 'E')) value.erase(0, 1);
    return value;
}

}  // namespace

// --- Change Category ---

std::string CategoryValue(std::string_view typed) {
    const std::string value(tools::TrimBlanks(typed));
    // The game's category words all start with a small 'e': "Engine" is "eEngine".
    if (!value.empty() && value[0] != 'e') return "e" + value;
    return value;
}

bool SetCategory(std::string& text, std::string_view value) {
    if (long pos = InStr(text, "<Category"); pos > 0) {
        tools::PutDetail(text, pos, "Category", value, tools::kBlueprintTagOptions);
        return true;
    }
    const long description = InStr(text, "</Description>");
    if (description == 0) return false;
    const std::string element = "\r\n\t\t\t\t\t<Category d:type=\"cDeltaString\">" + std::string(value) + "</Category>";
    text.insert(Index(description) + 14, element);
    return true;
}

TransformOutcome ChangeCategory(app::AppContext& ctx, const std::vector<AssetRow>& selected) {
    auto value = std::make_shared<std::string>();
    TransformCommand command("mnuCategory_Click", TransformFile::Blueprint,
                             [value](app::AppContext&, TransformRow& row, std::string_view text) {
                                 TransformResult result = TransformResult::Changed(std::string(text));
                                 if (!SetCategory(result.text, *value))
                                     return TransformResult::Skip(Verdict::Unfit, "This item has no Description to put a Category behind.");
                                 row.row.category = CategoryCell(*value);
                                 row.row.inScene = "Yes";
                                 result.note = "Category " + *value;
                                 return result;
                             });
    command.prepare = [value](app::AppContext& c, const std::vector<AssetRow>&) {
        if (!c.ui) return false;
        const auto typed = c.ui->input("Change Category",
                                       "Enter the new category. " + std::string(kHiddenCategory) +
                                           " hides the item from the browser.",
                                       std::string(kHiddenCategory));
        if (!typed) return false;
        *value = CategoryValue(*typed);
        return !value->empty();
    };
    return RunTransform(ctx, selected, command);
}

// --- Use in Scenarios ---

ScenarioUse ToggleScenarioUse(std::string& text) {
    ScenarioUse use;
    if (long pos = InStr(text, "<ValidInScenarios"); pos > 0) {
        use.valid = ValueOf(text, "ValidInScenarios");
        if (tools::EqualsIgnoreCase(use.valid, "eFalse")) use.valid = "eTrue";
        else if (tools::EqualsIgnoreCase(use.valid, "eTrue")) use.valid = "eFalse";
        tools::PutDetail(text, pos, "ValidInScenarios", use.valid, tools::kBlueprintTagOptions);
    }
    if (long pos = InStr(text, "<Category"); pos > 0) {
        use.category = ValueOf(text, "Category");
        if (tools::TrimBlanks(use.category).empty()) {
            use.category = "eUncategorised";
            tools::PutDetail(text, pos, "Category", use.category, tools::kBlueprintTagOptions);
        }
    }
    return use;
}

TransformOutcome UseInScenarios(app::AppContext& ctx, const std::vector<AssetRow>& selected) {
    TransformCommand command("mnuInScene_Click", TransformFile::Blueprint,
                             [](app::AppContext&, TransformRow& row, std::string_view text) {
                                 TransformResult result = TransformResult::Changed(std::string(text));
                                 const ScenarioUse use = ToggleScenarioUse(result.text);
                                 if (use.valid.empty() && use.category.empty())
                                     return TransformResult::Skip(Verdict::Nothing, "This item has no ValidInScenarios.");
                                 if (tools::EqualsIgnoreCase(use.valid, "eTrue")) row.row.inScene = "Yes";
                                 if (tools::EqualsIgnoreCase(use.valid, "eFalse")) row.row.inScene = "No";
                                 if (!use.category.empty()) row.row.category = CategoryCell(use.category);
                                 result.note = "ValidInScenarios " + use.valid;
                                 return result;
                             });
    return RunTransform(ctx, selected, command);
}

// --- Make English Only ---

int KeepEnglishOnly(std::string& text) {
    int changed = 0;
    for (long block = InStr(text, "<Localisation"); block > 0; block = InStr(block + 1, text, "<Localisation")) {
        const long english = InStr(block, text, "</English>");
        const long close = InStr(block + 1, text, "</Localisation");
        if (english == 0 || close == 0 || english > close) continue;
        const long from = english + 10;
        if (close > from) {
            text.erase(Index(from), static_cast<std::size_t>(close - from));
            ++changed;
        }
    }
    return changed;
}

TransformOutcome MakeEnglishOnly(app::AppContext& ctx, const std::vector<AssetRow>& selected) {
    TransformCommand command("mnuEnglish_Click", TransformFile::Blueprint,
                             [](app::AppContext&, TransformRow&, std::string_view text) {
                                 TransformResult result = TransformResult::Changed(std::string(text));
                                 if (KeepEnglishOnly(result.text) == 0)
                                     return TransformResult::Skip(Verdict::Nothing, "This item has no other languages.");
                                 return result;
                             });
    // This command gives its own warning in place of the frame's.
    command.warn = false;
    command.prepare = [](app::AppContext& c, const std::vector<AssetRow>&) {
        return c.ui && c.ui->ask("This will remove all non-English entries from the items in question\r\n" +
                                     c.langText(485, {}, kModule) + "\r\n" + c.langText(486, {}, kModule),
                                 base::Buttons::OkCancel, base::Icon::Exclamation) == base::Answer::Ok;
    };
    return RunTransform(ctx, selected, command);
}

// --- Zero EmissiveAsVec ---

int ZeroEmission(std::string& text) {
    int written = 0;
    for (long ambient = InStr(text, "<AmbientAsVec"); ambient > 0;) {
        long pos = ambient;
        tools::PutDetail(text, pos, "EmissiveAsVec", kNoEmission);
        if (pos == 0) break;
        ++written;
        ambient = InStr(pos, text, "<AmbientAsVec");
    }
    return written;
}

TransformOutcome ZeroEmissive(app::AppContext& ctx, const std::vector<AssetRow>& selected) {
    TransformCommand command("mnuZero_Click", TransformFile::Geometry,
                             [](app::AppContext&, TransformRow&, std::string_view text) {
                                 TransformResult result = TransformResult::Changed(std::string(text));
                                 const int written = ZeroEmission(result.text);
                                 if (written == 0)
                                     return TransformResult::Skip(Verdict::Nothing, "This geometry has no EmissiveAsVec.");
                                 result.note = std::to_string(written) + " EmissiveAsVec set to nought";
                                 return result;
                             });
    return RunTransform(ctx, selected, command);
}

}  // namespace ferrolund::assets
