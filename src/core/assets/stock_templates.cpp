#include "assets/stock_templates.h"

#include "tools/files.h"
#include "tools/numbers.h"
#include "tools/text_search.h"

namespace ferrolund::assets {

std::string TemplatePath(const app::AppContext& ctx, std::string_view name) {
    return ctx.appPath("Templates\\" + std::string(name));
}

std::string ReadTemplate(const app::AppContext& ctx, std::string_view name) {
    return tools::ReadTextFile(TemplatePath(ctx, name));
}

void FillMarker(std::string& text, std::string_view marker, std::string_view value) {
    if (marker.empty()) return;
    for (long at = tools::InStr(text, marker); at > 0;
         at = tools::InStr(at + static_cast<long>(value.size()), text, marker)) {
        text.replace(static_cast<std::size_t>(at - 1), marker.size(), value);
    }
}

void FillNewIds(std::string& text) {
    for (const char* marker : {"dddddd", "eeeeee", "ffffff", "gggggg"})
        if (tools::InStr(text, marker) > 0) FillMarker(text, marker, tools::NewDeltaId());
}

std::string MissingTemplateMessage(const app::AppContext& ctx, std::string_view name) {
    return "The template " + TemplatePath(ctx, name) + " was not found.";
}

}  // namespace ferrolund::assets
