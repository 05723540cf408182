#include "cli/verb_consists.h"

#include <ostream>

#include "cli/shared_options.h"
#include "consists/consist_templates.h"
#include "tools/files.h"
#include "tools/names.h"
#include "tools/serz_convert.h"
#include "tools/text_repair.h"

namespace ferrolund::cli {

int ConsistTemplatesVerb(app::AppContext& ctx, const std::vector<std::string>& args, std::ostream& out,
                         std::ostream& err) {
    bool onlyMissing = false;
    for (const std::string& arg : args) {
        if (arg != "--missing") {
            err << "ferrolund-cli: usage: consist-templates [--missing]\n";
            return kExitUsage;
        }
        onlyMissing = true;
    }
    const std::string path = consists::ConsistTemplatesPath(ctx);
    if (!tools::FileExists(path)) {
        out << consists::kNoSavedConsistsMessage << "\n";
        return kExitDone;
    }
    std::string xml;
    consists::TemplateFile file;
    if (tools::SerzReadXml(ctx, path, xml) || !consists::ParseConsistTemplates(xml, file)) {
        err << "ferrolund-cli: " << tools::ShownText(path) << ": " << consists::kInvalidFileMessage << "\n";
        return kExitFailed;
    }
    std::size_t missing = 0;
    const std::vector<consists::ConsistSpan> spans = consists::ConsistSpans(file.rows);
    for (const consists::ConsistSpan& span : spans) {
        std::string lines;
        for (std::size_t r = span.first; r < span.end; ++r) {
            const consists::TemplateRow& row = file.rows[r];
            const bool absent = consists::StockMissing(ctx.gameRoot(), row);
            missing += absent ? 1 : 0;
            if (onlyMissing && !absent) continue;
            lines += "\t" + tools::ShownText(row.provider + "\\" + row.product + "\\" + row.blueprintId) +
                     (row.flipped == "1" ? "\tflipped" : "") + (absent ? "\tmissing" : "") + "\n";
        }
        if (onlyMissing && lines.empty()) continue;
        out << tools::ShownText(tools::FixEntitiesCopy(file.rows[span.first].name)) << "\t" << span.end - span.first
            << " vehicles\n"
            << lines;
    }
    out << spans.size() << " consists, " << file.rows.size() << " vehicles, " << missing << " missing\n";
    return onlyMissing && missing > 0 ? kExitMissing : kExitDone;
}

}  // namespace ferrolund::cli
