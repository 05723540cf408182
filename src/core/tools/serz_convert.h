#pragma once
// The converter between the game's binary files and their XML text, as every command
// calls it. Two forms, as the simulator's own converter is run:
//   to XML:    "<source>" xml:"<target>"
//   to binary: "<source>" bin:"<target>"
// Success means a non-empty target, whichever back-end did the work: the built-in codec,
// or, when the environment variable FERROLUND_SERZ is set, the outside command it names
// (for example "wine /path/serz.exe"), judged by its output file alone.

#include <string>

#include "base/run_context.h"
#include "base/run_error.h"
#include "serz/file_conversion.h"

namespace ferrolund::tools {

using SerzDirection = serz::Direction;

// Paths are system strings. An old target is removed first, so that a target present
// afterwards is always this conversion's work; a failure leaves none.
base::Status SerzConvert(base::RunContext& ctx, const std::string& source, const std::string& target,
                        SerzDirection direction);

// The outside converter's command line: `<prefix> "<source>" xml:"<target>"` (or bin:).
std::string SerzCommandLine(const std::string& prefix, const std::string& source, const std::string& target,
                            SerzDirection direction);

// Whether an outside converter (FERROLUND_SERZ) does the conversions rather than the
// built-in codec.
bool SerzOutside();

// For callers that convert only to read: the XML text of a binary file, in memory with
// the built-in codec (through a scratch file in TempFiles with an outside one).
base::Status SerzReadXml(base::RunContext& ctx, const std::string& source, std::string& xml);

// How a command that rewrites a game file makes its successor: writes `text` to
// `xmlPath`, has the converter make `binPath` of it and reads that back. The binary
// stands only when it says what the text says; otherwise the failure is given back and no
// binary is left, so nothing can be replaced by a broken file.
base::Status SerzCompileText(base::RunContext& ctx, const std::string& text, const std::string& xmlPath,
                            const std::string& binPath);

}  // namespace ferrolund::tools
