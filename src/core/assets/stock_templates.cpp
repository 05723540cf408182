#include "assets/stock_templates.h"

#include "tools/files.h"
#include "tools/numbers.h"
#include "tools/text_search.h"
#include "tools/text_replace.h"

namespace ferrolund::assets {

std::string StockTemplateFile(const app::AppContext& ctx, std::string_view name) {
    return ctx.appPath("Templates\\" + std::string(name));
}

std::string StockTemplate(const app::AppContext& ctx, std::string_view name) {
    return tools::ReadTextFile(StockTemplateFile(ctx, name));
}

std::string ReadStockTemplate(app::AppContext& ctx, std::string_view name) {
    std::string text = StockTemplate(ctx, name);
    if (text.empty() && ctx.ui) {
        ctx.ui->message("The template " + StockTemplateFile(ctx, name) +
                            " is missing or empty.\r\nNothing has been changed; reinstall the program's Templates "
                            "folder.",
                        base::Icon::Exclamation);
    }
    return text;
}

std::string MissingTemplateMessage(std::string_view name) {
    return "Unable to convert files, the file\r\nTemplates\\" + std::string(name) + " is missing.";
}

std::string FillMarkers(std::string text, const Markers& markers) {
    for (const auto& [marker, value] : markers) tools::ReplaceAll(text, marker, value, tools::CaseRule::Ignore);
    return text;
}

void FillNewIds(std::string& text) {
    for (const char* marker : {"dddddd", "eeeeee", "ffffff", "gggggg"})
        if (tools::InStr(text, marker) > 0) tools::ReplaceAll(text, marker, tools::NewDeltaId(), tools::CaseRule::Ignore);
}

std::string_view WithoutLastLineEnd(std::string_view text) {
    while (!text.empty() && (text.back() == '\n' || text.back() == '\r')) text.remove_suffix(1);
    return text;
}

}  // namespace ferrolund::assets
