#include "cli/shared_options.h"

#include <ostream>

namespace ferrolund::cli {

bool SplitSharedOptions(const std::vector<std::string>& args, SharedOptions& shared, std::vector<std::string>& rest,
                        std::ostream& err) {
    bool onlyArguments = false;
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string& a = args[i];
        if (onlyArguments) {
            rest.push_back(a);
        } else if (a == "--") {
            onlyArguments = true;
        } else if (a == "--yes" || a == "--no") {
            shared.defaultYes = a == "--yes";
        } else if (a == "--progress") {
            shared.progressLines = true;
        } else if (a == "--help" || a == "-h") {
            shared.help = true;
        } else if (a == "--version") {
            shared.version = true;
        } else if (a == "--game-root" || a == "--answer") {
            if (i + 1 >= args.size()) {
                err << "ferrolund-cli: " << a << " needs a value\n";
                return false;
            }
            (a == "--game-root" ? shared.gameRoot : shared.answers.emplace_back()) = args[++i];
        } else {
            rest.push_back(a);
        }
    }
    return true;
}

}  // namespace ferrolund::cli
