// The result file: record form detection and the full record form.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

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

// The test case numbers whose records a report of this run reads: the first
// test case named by "-tcase" (or, when its number is below 1 and so selects
// the context document, the members of "-tcontext"), else every member of
// "-tcontext". With neither name set, every test case is kept. The readers
// open and close the other test cases just the same but keep no records for
// them, so that a huge log reported for one small test case costs little
// memory.
class WantedTestCases {
 public:
  // Taken from `run()`'s names and `testCaseNames` as they are now.
  static WantedTestCases ofRun();

  bool wants(int32_t testCase) const;

 private:
  bool all_ = true;
  std::vector<int32_t> numbers_;  // ascending
};

// Gives back the spare capacity of every list in `run().testCaseAssertions`,
// so that the records cost little more than their texts.
void trimAssertionLists();

}  // namespace qendor
