#pragma once
// ferrolund-cli make-sample DIR [--tiles N] [--assets N] [--tile-entities N] [--stock N]
//     [--scenario-mb N]

#include <iosfwd>
#include <string>
#include <vector>

namespace ferrolund::cli {

int MakeSampleVerb(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

}  // namespace ferrolund::cli
