#pragma once
// The "7za" command of the batch interpreter, served by the built-in archive access:
// x, e and l with the switches the program's batch files use.

#include <vector>

#include "tools/batch_run.h"

namespace ferrolund::archives {

void SevenZipLine(tools::batch::Run& run, const std::vector<tools::batch::Word>& words);

// Hands SevenZipLine to the batch interpreter; every program context does this when it is
// made, so any batch file run by the program can unpack.
void ServeBatchArchives();

}  // namespace ferrolund::archives
