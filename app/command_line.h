// The command line of qendor.
#pragma once

namespace qendor {

// The usage line printed for an incomplete command line.
extern const char kUsageLine[];

// Fills the command-line settings of `run()` and `programDirectory`. Returns
// true when the three files and a test context or test case are given.
bool parseCommandLine(int argc, char** argv);

}  // namespace qendor
