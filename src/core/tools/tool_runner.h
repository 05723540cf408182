#pragma once
// Starting outside programs and waiting for them.

#include <string>
#include <vector>

#include "base/run_context.h"

namespace ferrolund::tools {

// Hidden console, or a normal window with the focus.
enum class WindowStyle { Hidden = 0, Normal = 1 };

// Runs `command` (a whole command line in the Windows quoting form) in the working folder
// of the context and waits for its end, polling every 100 ms and, with `pumpEvents`,
// letting the screen's events through between polls. Gives the process id, or 0 when it
// could not start: that failure has then been reported, and the caller finds no output.
// The exit code is not returned: a tool is judged by its output files.
long ToolRunner(base::RunContext& ctx, const std::string& command, bool pumpEvents, WindowStyle style);

// Sets the folder where the next tool starts.
void SetWorkingFolder(base::RunContext& ctx, const std::string& folder);

// Splits a command line as Windows programs do: blanks separate, double quotes group,
// backslashes before a quote escape it.
std::vector<std::string> SplitCommandLine(const std::string& command);

}  // namespace ferrolund::tools

namespace ferrolund::tools {

// Ends every process whose program name ends in `exeName` (compared in lower case).
// Gives the number of processes ended. The program itself never calls this at exit.
int KillProcessByName(const std::string& exeName);

}  // namespace ferrolund::tools
