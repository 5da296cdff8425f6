// The info file: test cases, source files, tool versions and configuration.
#pragma once

namespace qendor {

// Reads the file named by `run().infoFile` into the run settings and tables.
// False only when the file cannot be opened.
bool readInfoFile();

}  // namespace qendor
