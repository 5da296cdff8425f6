// Collects the assertion statements of the info file's source files.
#pragma once

#include "base/line_reader.h"
#include "base/run_settings.h"

namespace qendor {

// Fills `run().collectedAssertions` from `run().sourceFiles`: per file, every
// assertion statement under the number of the line on which it ends. False
// when there is no source file or none could be opened.
bool collectAssertions();

// Adds every assertion statement of one source file's `lines` to
// `statements`, under the number of the line that holds its ";".
void collectStatements(LineReader& lines, LineStatements& statements);

}  // namespace qendor
