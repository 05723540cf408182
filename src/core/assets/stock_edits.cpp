#include "assets/stock_edits.h"

#include "assets/blueprint_splice.h"
#include "assets/stock_templates.h"
#include "tools/tags.h"
#include "tools/text_replace.h"
#include "tools/text_search.h"

namespace ferrolund::assets {

using tools::InStr;
using tools::InStrRev;
using Verdict = TransformResult::Verdict;

namespace {

std::size_t Index(long position) { return static_cast<std::size_t>(position - 1); }

}  // namespace

// --- Add Passengers to Carriages ---

std::string PassengerTemplate(std::string_view base) {
    for (const char* word : {"BCK", "BFK", "GUARD"})
        if (InStr(base, word) > 0) return "AddPassengers3.txt";
    if (InStr(base, "Mk1") > 0) return "AddPassengers.txt";
    return "AddPassengers2.txt";
}

bool AddPassengerChildren(std::string& text, std::string_view passengers) { return SpliceAtChildren(text, passengers); }

TransformOutcome AddPassengers(app::AppContext& ctx, const std::vector<AssetRow>& selected, const SaveAsAsk& ask) {
    TransformCommand command("mnuAdd_Click", TransformFile::Blueprint,
                             [&ask](app::AppContext& c, TransformRow& row, std::string_view text) {
                                 const std::string name = PassengerTemplate(row.base);
                                 std::string passengers = StockTemplate(c, name);
                                 if (passengers.empty())
                                     return TransformResult::Skip(Verdict::Unfit, MissingTemplateMessage(name));
                                 FillNewIds(passengers);
                                 TransformResult result = TransformResult::Changed(std::string(text));
                                 if (!AddPassengerChildren(result.text, passengers))
                                     return TransformResult::Skip(Verdict::Unfit, "This item has no list of child entries.");
                                 if (!ApplySaveAs(ask, row, result, NameLanguages::Five))
                                     return TransformResult::Skip(Verdict::Cancelled, {});
                                 result.recompileOriginal = true;
                                 result.note = "passengers from " + name + " added, saved as " + result.saveAs;
                                 return result;
                             });
    return RunTransform(ctx, selected, command);
}

// --- Make Selected Stock Dead ---

bool RemoveChildList(std::string& text) {
    const long children = InStr(text, "<Children>");
    if (children == 0) return false;
    const long close = InStr(children, text, "</Children>");
    if (close == 0) return false;
    long from = InStrRev(text, "\r", children);
    if (from == 0) from = children;
    const long end = close + 11;  // the first character behind "</Children>"
    text.erase(Index(from), static_cast<std::size_t>(end - from));
    return true;
}

TransformOutcome MakeDead(app::AppContext& ctx, const std::vector<AssetRow>& selected, const SaveAsAsk& ask) {
    TransformCommand command("mnuDead_Click", TransformFile::Blueprint,
                             [&ask](app::AppContext&, TransformRow& row, std::string_view text) {
                                 TransformResult result = TransformResult::Changed(std::string(text));
                                 const bool removed = RemoveChildList(result.text);
                                 if (!ApplySaveAs(ask, row, result, NameLanguages::Five))
                                     return TransformResult::Skip(Verdict::Cancelled, {});
                                 result.note = std::string(removed ? "child entries removed, " : "no child entries, ") +
                                               "saved as " + result.saveAs;
                                 return result;
                             });
    return RunTransform(ctx, selected, command);
}

// --- Add Conductor to US Diesel ---

std::string FlipSign(std::string_view value) {
    const std::string_view trimmed = tools::TrimBlanks(value);
    if (!trimmed.empty() && trimmed.front() == '-') return std::string(trimmed.substr(1));
    return "-" + std::string(trimmed);
}

bool AddConductorChild(std::string& text) {
    const long children = InStr(text, "<Children>");
    if (children == 0) return false;
    const ChildBlock driver = FindChildBlock(text, children + 5, ">Driver<");
    if (!driver) return false;
    std::string copy = text.substr(Index(driver.start), static_cast<std::size_t>(driver.length));
    tools::ReplaceAll(copy, ">Driver<", ">Conductor<");
    tools::ReplaceAll(copy, "WP_04_02", "WP_04_01");
    // The 13th value of the matrix is the sideways offset.
    long at = InStr(copy, "<Element>");
    for (int n = 0; at > 0 && n < 13; ++n) at = InStr(at + 1, copy, "<E ");
    if (at > 0) {
        const long gt = InStr(at, copy, ">");
        const long lt = gt == 0 ? 0 : InStr(gt, copy, "<");
        if (lt > gt + 1) {
            const std::string value = copy.substr(Index(gt + 1), static_cast<std::size_t>(lt - gt - 1));
            copy.replace(Index(gt + 1), value.size(), FlipSign(value));
        }
    }
    text.insert(Index(driver.start + driver.length), copy);
    return true;
}

TransformOutcome AddConductor(app::AppContext& ctx, const std::vector<AssetRow>& selected) {
    TransformCommand command("mnuCond_Click", TransformFile::Blueprint,
                             [](app::AppContext&, TransformRow&, std::string_view text) {
                                 TransformResult result = TransformResult::Changed(std::string(text));
                                 if (!AddConductorChild(result.text)) result.note = "no driver: compiled unchanged";
                                 return result;
                             });
    return RunTransform(ctx, selected, command);
}

// --- Correct Mass/Capacity of Selected ---

bool SetMassCapacity(std::string& text, const MassCapacity& values, std::string_view cargoDef) {
    bool written = false;
    if (long pos = InStr(text, "<Mass "); pos > 0) {
        tools::PutDetail(text, pos, "Mass", values.mass);
        written = true;
    }
    if (const long empty = InStr(text, "<CargoDef/>"); empty > 0) text.replace(Index(empty), 11, cargoDef);
    if (long pos = InStr(text, "<Capacity "); pos > 0) {
        tools::PutDetail(text, pos, "Capacity", values.capacity);
        written = true;
    }
    return written;
}

TransformOutcome CorrectMassCapacity(app::AppContext& ctx, const std::vector<AssetRow>& selected,
                                     const MassCapacity& values) {
    TransformCommand command("mnuMass_Click", TransformFile::Blueprint,
                             [values](app::AppContext& c, TransformRow&, std::string_view text) {
                                 const std::string cargoDef = StockTemplate(c, "CargoDef.txt");
                                 if (cargoDef.empty() && InStr(text, "<CargoDef/>") > 0)
                                     return TransformResult::Skip(Verdict::Unfit, MissingTemplateMessage("CargoDef.txt"));
                                 TransformResult result = TransformResult::Changed(std::string(text));
                                 if (!SetMassCapacity(result.text, values, cargoDef))
                                     return TransformResult::Skip(Verdict::Nothing, "This item has no Mass or Capacity.");
                                 result.note = "Mass " + values.mass + ", Capacity " + values.capacity;
                                 return result;
                             });
    return RunTransform(ctx, selected, command);
}

}  // namespace ferrolund::assets
