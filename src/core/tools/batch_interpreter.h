#pragma once
// The built-in interpreter of the batch files this program writes (APBatch*.bat,
// do_read.bat, do_clone.bat, ...). It knows the commands those files use, with the
// meaning the real commands have:
//   chcp <n>                      code page; file text is Windows-1252 throughout
//   call <command>                runs the command (or another batch file)
//   xcopy <from> [<to>] /s /e /y /-y /i /c /q /f
//   copy <from> <to> /y /-y /b /v
//   del <path> /s /q /f           (also erase)
//   attrib +r|-r <path> /s /d
//   7za x|e|l <archive> [<names>...] -o<folder> -aoa -aos -aou -aot -r -y
//   serz.exe "<source>" xml:"<target>"  (or bin:, /xml:, /bin:)
//   for /r "<folder>" %%f in (<masks>) do <command>     with %%f, %%~dpf, %%~nxf, ...
//   pause, rem, echo off           and a leading '@'
// "7za" is served by the built-in archive access and serz by SerzConvert. Output can be
// sent to a file with "> file" or ">> file". A line with any other command, or with a
// switch these commands do not have, is reported, and the run goes on with the next line,
// as a console would.

#include <string>
#include <vector>

#include "base/run_context.h"
#include "base/run_error.h"

namespace ferrolund::tools {

struct BatchOutcome {
    long commands = 0;                        // lines run
    std::vector<base::RunError> errors;        // every failure, in order
    std::vector<std::string> overlength;      // archives passed over by the 2-gigabyte rule
    std::string console;                      // what the commands printed
    bool aborted = false;                     // AbortFlag was set
};

// Runs the batch file with its own folder as the working folder. Gives the first failure
// (all of them are in `outcome`); a batch that cannot be read is one.
base::Status RunBatchFile(base::RunContext& ctx, const std::string& batchPath);
base::Status RunBatchFile(base::RunContext& ctx, const std::string& batchPath, BatchOutcome& outcome);

// One failure that tells the run's failures (the first ten, and how many more), or none.
base::Status BatchErrors(const BatchOutcome& outcome);

// Runs the lines of `text` as a batch whose working folder is `folder`.
base::Status RunBatchText(base::RunContext& ctx, const std::string& text, const std::string& folder,
                         BatchOutcome& outcome);

}  // namespace ferrolund::tools
