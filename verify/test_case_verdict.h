// The judgement of one test case: its records against its verification.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>

#include "base/assertion_record.h"
#include "base/chart_record.h"
#include "base/run_settings.h"
#include "base/status.h"
#include "verify/verification_file.h"

namespace qendor {

// How the documents list a test case's entries.
enum class TestType { kCode, kSequenceDiagram };

enum class VerificationResult {
  kSuccessful,
  kFailed,
  kNotTerminated,
  kSwitchedOff,
  kUnsupportedChart,
  kNoVerificationForCode,
  kParallelUnsupported,
};

// What a test case is judged against: the kind its verification file gave
// and the diagram lines or chart it held (null when it held none).
struct TestModel {
  VerificationKind kind = VerificationKind::kNoKind;
  const SequenceLines* sequenceLines = nullptr;
  const ChartList* chart = nullptr;
};

struct TestCaseVerdict {
  bool hasRecords = false;  // the log opened the test case
  TestType type = TestType::kCode;
  Status status = Status::kUndefined;  // the document's "status"
  // What a test context folds into its own status: `status`, or
  // kNotTerminated when the test case did not terminate.
  Status folded = Status::kUndefined;
  VerificationResult verification = VerificationResult::kFailed;
  // The number of entries the document lists: the walk stops after the
  // entry whose verification failed.
  size_t entries = 0;

  // The summary of a sequence diagram test case: the diagram instance of the
  // last entry, the status before termination was looked at, and the
  // progress of the last passed entry that reported one ("0" without).
  std::string summaryName;
  Status summaryStatus = Status::kUndefined;
  std::string value = "0";
  std::string max = "0";
  std::string coverage = "0";
};

// The verdicts of a run's test cases by number, each judged once.
using TestCaseVerdicts = std::map<int32_t, TestCaseVerdict>;

// Walks `records` (null: the log never opened the test case) against
// `model`. Throws std::out_of_range when the sequence verification does.
TestCaseVerdict judgeTestCase(const AssertionList* records, const TestModel& model);

// Reads the test case's verification file into the run tables and judges
// its records from `run()`.
TestCaseVerdict judgeTestCase(int32_t testCase);

}  // namespace qendor
