#pragma once
// The model of frmBlue, "BluePrint Designer": a list blueprint (a named list, a series of
// numbers, the markers of a route) made from one of the program's templates in
// AppRoot\BluePrints by putting the designer's boxes in place of its markers.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/app_context.h"

namespace ferrolund::assets {

enum class DesignerForm { Named, Series, Route };

inline constexpr std::string_view kDesignerCaption = "BluePrint Designer";
inline constexpr std::string_view kTemplateWritten = "Your template has been written to:-";

// One box of a form: its caption and the marker its text replaces.
struct DesignerBox {
    std::string caption;
    std::string marker;
};
struct DesignerLayout {
    std::string title;         // the form's heading
    std::string templateName;  // below AppRoot\BluePrints
    std::vector<DesignerBox> boxes;
};
DesignerLayout LayoutOf(DesignerForm form);

// The template with each box's marker replaced by its text, case-sensitively; the texts
// go in the order of the layout's boxes (missing ones are empty).
std::string FillDesignerTemplate(std::string_view templateText, const DesignerLayout& layout,
                                 const std::vector<std::string>& texts);

// "&Make Blueprint": the filled template written as <folder>\<name>.xml (a file of that
// name kept by the back-up rule), then the message with its path. Nothing, after a
// message, when the name is empty, the template is missing or the file cannot be written.
std::optional<std::string> MakeBlueprint(app::AppContext& ctx, DesignerForm form, const std::string& folder,
                                         const std::string& name, const std::vector<std::string>& texts);

}  // namespace ferrolund::assets
