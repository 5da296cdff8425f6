// The program's entry point as a function, so that tests can run it in-process.
#pragma once

namespace qendor {

// Runs the four stages (command line, info file, result file, reports) and
// returns the exit status. Never throws.
int runQendor(int argc, char** argv);

}  // namespace qendor
