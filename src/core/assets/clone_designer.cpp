#include "assets/clone_designer.h"

#include "assets/transform_frame.h"
#include "tools/files.h"
#include "tools/text_search.h"

namespace ferrolund::assets {

namespace {

constexpr const char* kModule = "frmBlue";

void Say(app::AppContext& ctx, const std::string& text, base::Icon icon) {
    if (ctx.ui) ctx.ui->message(text, icon);
}

}  // namespace

DesignerLayout LayoutOf(DesignerForm form) {
    switch (form) {
        case DesignerForm::Named:
            return {"Named list", "Blue_Named.xml", {{"List Name", "ZZZZZZ"}, {"Entry", "XXXXXX"}}};
        case DesignerForm::Series:
            return {"Series", "Blue_Series.xml", {{"List Name", "ZZZZZZ"}, {"First Number", "XXXXXX"}}};
        case DesignerForm::Route:
            return {"Route", "Blue_Route.xml", {{"Marker Name", "ZZZZZZ"}, {"Longitude", "XXXXXX"}, {"Latitude", "YYYYYY"}}};
    }
    return {};
}

std::string FillDesignerTemplate(std::string_view templateText, const DesignerLayout& layout,
                                 const std::vector<std::string>& texts) {
    std::string text(templateText);
    for (std::size_t i = 0; i < layout.boxes.size(); ++i)
        text = tools::ReplaceEvery(text, layout.boxes[i].marker, i < texts.size() ? texts[i] : std::string(),
                                   tools::CaseRule::Exact);
    return text;
}

std::optional<std::string> MakeBlueprint(app::AppContext& ctx, DesignerForm form, const std::string& folder,
                                         const std::string& name, const std::vector<std::string>& texts) {
    ctx.currentRoutine = "cmdMake_Click";
    const std::string trimmed(tools::TrimBlanks(name));
    if (trimmed.empty() || trimmed.find_first_of("\\/:*?\"<>|") != std::string::npos) {
        Say(ctx, "Give the blueprint a file name first.", base::Icon::Exclamation);
        return std::nullopt;
    }
    const DesignerLayout layout = LayoutOf(form);
    const std::string templateFile = ctx.appPath("BluePrints\\" + layout.templateName);
    const std::string templateText = tools::ReadTextFile(templateFile);
    if (templateText.empty()) {
        Say(ctx, "The template " + templateFile + " was not found.", base::Icon::Exclamation);
        return std::nullopt;
    }
    const std::string scratch = ctx.appPath("TempFiles\\" + trimmed + ".xml");
    tools::CreatePath(ctx.appPath("TempFiles"));
    const std::string target = folder + "\\" + trimmed + ".xml";
    std::string backup;
    base::Status status;
    if (!tools::WriteTextFile(ctx, scratch, FillDesignerTemplate(templateText, layout, texts))) {
        status = base::err::PathFileAccess(scratch);
    } else {
        status = PlaceMadeFile(scratch, target, backup);
    }
    if (status) {
        ctx.report(*status, kModule);
        Say(ctx, target + " could not be written.", base::Icon::Exclamation);
        return std::nullopt;
    }
    Say(ctx, std::string(kTemplateWritten) + "\r\n" + target, base::Icon::Information);
    return target;
}

}  // namespace ferrolund::assets
