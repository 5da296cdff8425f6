// The result file: record form detection and the full record form.
#pragma once

#include <optional>
#include <string>

#include "base/assertion_record.h"
#include "base/line_reader.h"
#include "base/run_settings.h"
#include "input/case_splitter.h"

namespace qendor {

// The record form of a log: that of its first record line.
enum class RecordForm { kNone, kShort, kFull };

// Reads lines until the first that begins with a record marker.
RecordForm detectRecordForm(LineReader& lines);

// Detects the record form of the "-result" file of `settings` and runs the
// matching reader, which keeps the test cases `settings` names. Returns the
// test cases read; nothing when the file cannot be opened or holds no record
// line (a record form found whose reader then failed still counts as read).
std::optional<TestCaseLogs> readResultFile(const RunSettings& settings);

// Hands every full-form record of `lines` to `splitter`, each with the
// number of the entry of `sourceFiles` its path matches.
void parseFullAssertions(LineReader& lines, const RunTable<std::string>& sourceFiles,
                         TestCaseSplitter& splitter);

// Reads the full-form records of `lines` into the test cases `wanted` names.
TestCaseLogs readFullAssertions(LineReader& lines, const RunTable<std::string>& sourceFiles,
                                const WantedTestCases& wanted);

}  // namespace qendor
