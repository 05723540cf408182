#pragma once
// ferrolund-cli tex2dds FILE|FOLDER... [--out DIR]
// ferrolund-cli dds2tex DDS TGPCDX
// ferrolund-cli dds-info FILE...

#include <iosfwd>
#include <string>
#include <vector>

#include "app/app_context.h"

namespace ferrolund::cli {

int TexToDdsVerb(app::AppContext& ctx, const std::vector<std::string>& args, std::ostream& out, std::ostream& err);
int DdsToTexVerb(app::AppContext& ctx, const std::vector<std::string>& args, std::ostream& out, std::ostream& err);
int DdsInfoVerb(app::AppContext& ctx, const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

}  // namespace ferrolund::cli
