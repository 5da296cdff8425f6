// Splits a log's records into test cases, the same way for both record forms:
// a start assertion opens a new list under its number (replacing any list
// stored there), every record up to the finish assertion joins it, and
// records outside a start/finish pair are dropped.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "base/assertion_record.h"
#include "base/run_settings.h"

namespace qendor {

// Where a record stands in its test case.
struct RecordBoundary {
  bool starts = false;  // a start assertion
  bool ends = false;    // a finish assertion
};

// Whether `statement` is an assertion whose message holds "Starting test
// case", and whether one whose message holds "Finished test case".
RecordBoundary recordBoundary(std::string_view statement);

// The test case numbers whose records a report of this run reads: the first
// test case named by "-tcase" (or, when its number is below 1 and so selects
// the context document, the members of "-tcontext"), else every member of
// "-tcontext". With neither name set, every test case is kept. The splitter
// opens and closes the other test cases just the same but keeps no records
// for them, so that a huge log reported for one small test case costs little
// memory.
class WantedTestCases {
 public:
  // Every test case.
  WantedTestCases() = default;
  // Taken from `settings`' names and `testCaseNames` as they are now.
  static WantedTestCases of(const RunSettings& settings);

  bool wants(int32_t testCase) const;

 private:
  bool all_ = true;
  std::vector<int32_t> numbers_;  // ascending
};

class TestCaseSplitter {
 public:
  TestCaseSplitter(TestCaseLogs& logs, WantedTestCases wanted);
  // Gives back the spare capacity of every list, so that the records cost
  // little more than their texts.
  ~TestCaseSplitter();
  TestCaseSplitter(const TestCaseSplitter&) = delete;
  TestCaseSplitter& operator=(const TestCaseSplitter&) = delete;

  // The record to fill for the next record line, `testCase` being the number
  // its result field reads as; null when no wanted test case is open.
  // `sequenceDiagram`: the record's statement makes its test case a sequence
  // diagram test case.
  AssertionRecord* next(RecordBoundary boundary, int32_t testCase, bool sequenceDiagram);

  // False when the next record line without a boundary would be dropped, so
  // that a reader may pass over it without cutting it.
  bool collecting() const { return open_ && !closeNext_; }

 private:
  TestCaseLogs& logs_;
  WantedTestCases wanted_;
  TestCaseLog* open_ = nullptr;  // null while no wanted test case is open
  bool closeNext_ = false;       // the last record finished its test case
};

}  // namespace qendor
