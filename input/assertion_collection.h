// Collects the assertion statements of the info file's source files.
#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "base/line_reader.h"
#include "base/run_settings.h"

namespace qendor {

// A source file's assertion statements by the number of the line on which
// each ends.
using LineStatements = std::map<int32_t, std::string>;

struct CollectedAssertions {
  RunTable<LineStatements> statements;  // by file number, one per source file
  bool anyFileRead = false;             // false: no source file, or none opened
};

// The assertion statements of every file of `sourceFiles`.
CollectedAssertions collectAssertions(const RunTable<std::string>& sourceFiles);

// Adds every assertion statement of one source file's `lines` to
// `statements`, under the number of the line that holds its ";".
void collectStatements(LineReader& lines, LineStatements& statements);

}  // namespace qendor
