#include "assets/clone_provider.h"

#include <map>
#include <memory>

#include "assets/blueprint.h"
#include "tools/codepage.h"
#include "tools/tags.h"
#include "tools/text_search.h"

namespace ferrolund::assets {

using tools::InStr;
using Verdict = TransformResult::Verdict;

namespace {

bool OpensElement(char c) { return c == '>' || c == '\\'; }
bool ClosesElement(char c) { return c == '<' || c == '\\'; }

TransformCommand ProviderCommand() {
    TransformCommand command("mnuCProv_Click", TransformFile::Blueprint,
                             [](app::AppContext& ctx, TransformRow& row, std::string_view text) {
                                 std::string provider = row.row.provider;
                                 if (auto ref = SplitAssetPath(row.file)) provider = ref->provider;
                                 (void)ctx;
                                 return CorrectProviderText(text, provider);
                             });
    command.doneMessage = std::string(kProviderCorrected);
    return command;
}

}  // namespace

std::string OwnProvider(std::string_view xml) {
    std::string value;
    if (const long at = InStr(xml, "<GeometryID"); at > 0) {
        long pos = at;
        tools::GetDetail(xml, pos, "GeometryID", value, tools::kBlueprintTagOptions);
        const std::size_t cut = value.find('\\');
        if (cut != std::string::npos && cut > 0) return value.substr(0, cut);
    }
    for (long at = InStr(xml, "<Provider"); at > 0; at = InStr(at + 1, xml, "<Provider")) {
        value.clear();
        long pos = at;
        tools::GetDetail(xml, pos, "Provider", value, tools::kBlueprintTagOptions);
        if (!tools::TrimBlanks(value).empty()) return std::string(tools::TrimBlanks(value));
    }
    return {};
}

TransformResult CorrectProviderText(std::string_view xml, std::string_view provider) {
    const std::string old = OwnProvider(xml);
    if (old.empty()) return TransformResult::Skip(Verdict::Nothing, "This item names no provider.");
    if (tools::EqualsIgnoreCase(old, provider))
        return TransformResult::Skip(Verdict::Nothing, "This item already names its provider.");
    std::string out;
    std::size_t done = 0;
    long changed = 0;
    for (long at = InStr(xml, old); at > 0; at = InStr(at + 1, xml, old)) {
        const auto start = static_cast<std::size_t>(at - 1);
        const std::size_t end = start + old.size();
        if (start == 0 || end >= xml.size() || !OpensElement(xml[start - 1]) || !ClosesElement(xml[end])) continue;
        out.append(xml.substr(done, start - done));
        out.append(provider);
        done = end;
        ++changed;
    }
    out.append(xml.substr(done));
    TransformResult result = TransformResult::Changed(std::move(out));
    result.note = std::string(old) + " -> " + std::string(provider) + " (" + std::to_string(changed) + ")";
    return result;
}

TransformOutcome CorrectProvider(app::AppContext& ctx, const std::vector<std::string>& files) {
    auto where = std::make_shared<std::map<std::string, std::string>>();
    std::vector<AssetRow> rows;
    for (const std::string& file : files) {
        bool invalid = false;
        const std::optional<BlueprintRef> ref = SplitAssetPath(file, &invalid);
        if (!ref) {
            if (invalid && ctx.ui) ctx.ui->message(InvalidPathMessage(file), base::Icon::Exclamation);
            continue;
        }
        AssetRow row;
        row.provider = ref->provider;
        row.product = ref->product;
        row.path = ref->blueprintId;
        (*where)[JoinRowPath(row.provider, row.product, row.path)] = file;
        rows.push_back(std::move(row));
    }
    TransformCommand command = ProviderCommand();
    command.rowFile = [where](const app::AppContext&, const AssetRow& row) {
        const auto it = where->find(JoinRowPath(row.provider, row.product, row.path));
        return it == where->end() ? std::string() : it->second;
    };
    return RunTransform(ctx, rows, command);
}

}  // namespace ferrolund::assets
