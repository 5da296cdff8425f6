// The info file: test cases, source files, tool versions and configuration.
#pragma once

#include "base/line_reader.h"
#include "base/run_settings.h"

namespace qendor {

// Reads the file named by `run().infoFile` into the run settings and tables.
// False only when the file cannot be opened.
bool readInfoFile();

// Reads the info file's lines into `settings`' values and tables.
void parseInfoFile(LineReader& lines, RunSettings& settings);

}  // namespace qendor
