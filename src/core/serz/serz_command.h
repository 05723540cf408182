#pragma once
// The `serz` command with the simulator's converter's command line:
//   serz "<source>" xml:"<target>"     binary to XML
//   serz "<source>" bin:"<target>"     XML to binary
// "/xml:" and "/bin:" are the same; with only a source, the target is the source's name
// with "xml" and "bin" swapped at its end. Shared by the `serz` program and the
// workbench's command-line front end.

#include <ostream>
#include <string>
#include <vector>

namespace ferrolund::serz {

// `args` are the words after the program's name. Gives the exit code: 0 on success;
// otherwise one line on `err` names the file and the reason, and no target is written.
int RunSerzCommand(const std::vector<std::string>& args, std::ostream& err);

}  // namespace ferrolund::serz
