// The result file: record form detection and the full record form.
#pragma once

#include <string_view>

#include "base/line_reader.h"
#include "base/run_settings.h"
#include "input/test_case_splitter.h"

namespace qendor {

// The record form of a log: that of its first record line.
enum class RecordForm { kNone, kShort, kFull };

// Reads lines until the first that begins with a record marker.
RecordForm detectRecordForm(LineReader& lines);

// Detects the record form of `run().resultFile` and runs the matching reader.
// Returns 1 when a record form was found (even if its reader failed), 0 when
// the file cannot be opened or holds no record line.
int readResultFile();

// Reads full-form records from `run().resultFile` into
// `run().testCaseAssertions`. 0 when the file cannot be opened, 1 otherwise.
int readFullAssertions();

// Hands every full-form record of `lines` to `splitter`, each with the
// number of the entry of `sourceFiles` its path matches.
void parseFullAssertions(LineReader& lines, const RunTable<std::string>& sourceFiles,
                         TestCaseSplitter& splitter);

}  // namespace qendor
