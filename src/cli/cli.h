#pragma once
// ferrolund-cli: the workbench's commands without a window.

#include <iosfwd>
#include <string>
#include <vector>

namespace ferrolund::cli {

// `args` are the words after the program's name; `appRoot` the program's folder;
// `errIsTerminal`: progress may update one line in place on `err`. Gives the exit code
// (kExitDone, kExitFailed, kExitUsage, kExitMissing of shared_options.h).
int RunCli(const std::vector<std::string>& args, const std::string& appRoot, std::ostream& out, std::ostream& err,
           bool errIsTerminal = false);

}  // namespace ferrolund::cli
