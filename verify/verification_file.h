// The per-test-case verification file in the output directory: how a test
// case is judged, and the sequence diagram or chart it is judged against.
#pragma once

#include <cstdint>
#include <memory>

#include "base/chart_record.h"
#include "base/line_reader.h"
#include "base/run_settings.h"

namespace qendor {

// The values are those the file's readers have always returned.
enum class VerificationKind {
  kNoKind = 0,
  kFlowchartTest = 1,
  kStatechartTest = 2,
  kSdTest = 3,
  kCodeTest = 4,
  kNoVerificationFile = -1,
  kUnsupportedChart = -2,
  kParallelSd = -10,
};

// What one verification file holds.
struct Verification {
  VerificationKind kind = VerificationKind::kNoKind;
  // The lines after the last "SD_TEST" line; null without one.
  std::unique_ptr<SequenceLines> sequenceLines;
  // The records of the last chart section; null without one.
  std::unique_ptr<ChartList> chart;
};

// Reads a verification file's lines.
Verification parseVerificationFile(LineReader& lines);

// Reads "<outDirectory>\<base name>.ver" of the test case, files its sequence
// lines in `run().sequenceLines` and its chart in `run().chartSteps`, each
// only when the file holds one (replacing what the table held for the test
// case; an entry the file does not fill stays as it was), and returns its
// kind: kNoVerificationFile when the file cannot be opened.
VerificationKind readVerificationFile(int32_t testCase);

}  // namespace qendor
