// The result file: record form detection and the full record form.
#pragma once

#include <string_view>

namespace qendor {

// Detects the record form of `run().resultFile` and runs the matching reader.
// Returns 1 when a record form was found (even if its reader failed), 0 when
// the file cannot be opened or holds no record line.
int readResultFile();

// Reads full-form records into `run().testCaseAssertions`. 0 when the file
// cannot be opened, 1 otherwise.
int readFullAssertions();

// True when `statement` is an assertion whose message holds
// "Starting test case", respectively "Finished test case".
bool isTestCaseStart(std::string_view statement);
bool isTestCaseEnd(std::string_view statement);

// Gives back the spare capacity of every list in `run().testCaseAssertions`,
// so that the records cost little more than their texts.
void trimAssertionLists();

}  // namespace qendor
