// The verdicts of one run's test cases: each judged once, when first asked
// for, and kept for every document that shows it.
#pragma once

#include <cstdint>
#include <map>

#include "base/assertion_record.h"
#include "base/run_settings.h"
#include "verify/judgement.h"
#include "verify/model_coverage.h"

namespace qendor {

class RunVerdicts {
 public:
  // Judges the test cases of `logs` as `settings` say (the output directory
  // holding the verification files, "-explain"). Both must outlive this.
  RunVerdicts(const RunSettings& settings, const TestCaseLogs& logs)
      : settings_(settings), logs_(logs) {}

  // The verdict of test case `number`, judged now when it was not yet: its
  // log against its verification file. Throws std::out_of_range when the
  // sequence verification does.
  const TestCaseVerdict& of(int32_t number);

  // The verdict of test case `number` when it was judged; null otherwise.
  const TestCaseVerdict* find(int32_t number) const;

  // Forgets every verdict, giving their memory back.
  void release() {
    std::map<int32_t, TestCaseVerdict>().swap(verdicts_);
    models_ = ModelRegistry();
  }

 private:
  const RunSettings& settings_;
  const TestCaseLogs& logs_;
  std::map<int32_t, TestCaseVerdict> verdicts_;
  ModelRegistry models_;  // with "-coverage": the models the passages refer to
};

}  // namespace qendor
