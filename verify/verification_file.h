// The per-test-case verification file in the output directory.
#pragma once

#include <cstdint>

namespace qendor {

// Verification kinds.
enum VerificationKind {
  kNoKind = 0,
  kFlowchartTest = 1,
  kStatechartTest = 2,
  kSdTest = 3,
  kCodeTest = 4,
  kNoVerificationFile = -1,
  kUnsupportedChart = -2,
  kParallelSd = -10,
};

// Reads "<outDirectory>\<base name>.ver" of the test case into
// `run().sequenceLines` or `run().chartSteps` and returns its kind.
int readVerificationFile(int32_t testCase);

}  // namespace qendor
