// Collects the assertion statements of the info file's source files.
#pragma once

namespace qendor {

// Fills `run().collectedAssertions` from `run().sourceFiles`: per file, every
// assertion statement under the number of the line on which it ends. False
// when there is no source file or none could be opened.
bool collectAssertions();

}  // namespace qendor
