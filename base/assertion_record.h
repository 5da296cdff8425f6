// One executed assertion as read from the result file, and a test case's
// records as the log gave them.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "base/status.h"

namespace qendor {

struct AssertionRecord {
  std::string assertionText;        // statement text, beginning "ZKR_ASSERT" in the full form
  Status status = Status::kPassed;  // kPassed or kFailed
  std::string fileNumber;           // decimal text of the matching FILE entry, may be empty
  std::string lineNumber;           // as written in the log
  std::string detailText;           // full form only: the free text before the marker
};

// One test case's records in log order.
using AssertionList = std::vector<AssertionRecord>;

// What the log holds of one test case that it opened.
struct TestCaseLog {
  AssertionList records;
  // A record's statement names "ASSERT_SD": the test case is reported as a
  // sequence diagram test case. Worked out as the records are read.
  bool sequenceDiagram = false;
};

// The test cases the log opened, by test case number.
using TestCaseLogs = std::map<int32_t, TestCaseLog>;

// True when `statement` makes its test case a sequence diagram test case.
bool isSequenceDiagramStatement(std::string_view statement);

// A log of `records`, its kind worked out from them.
TestCaseLog makeTestCaseLog(AssertionList records);

}  // namespace qendor
