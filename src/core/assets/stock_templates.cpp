#include "assets/stock_templates.h"

#include "tools/files.h"
#include "tools/text_search.h"

namespace ferrolund::assets {

std::string FillMarkers(std::string text, const MarkerValues& markers) {
    for (const auto& [marker, value] : markers) {
        if (marker.empty()) continue;
        // Each search starts behind the value just put in, so a value holding its own
        // marker does not loop.
        for (long at = tools::InStr(text, marker); at > 0;
             at = tools::InStr(at + static_cast<long>(value.size()), text, marker)) {
            text.replace(static_cast<std::size_t>(at - 1), marker.size(), value);
        }
    }
    return text;
}

std::string StockTemplateFile(const app::AppContext& ctx, std::string_view name) {
    return ctx.appPath("Templates\\" + std::string(name));
}

std::string ReadStockTemplate(app::AppContext& ctx, std::string_view name) {
    const std::string file = StockTemplateFile(ctx, name);
    std::string text = tools::ReadTextFile(file);
    if (text.empty() && ctx.ui) {
        ctx.ui->message("The template " + file + " is missing or empty.\r\nNothing has been changed; reinstall the "
                        "program's Templates folder.",
                        base::Icon::Exclamation);
    }
    return text;
}

}  // namespace ferrolund::assets
