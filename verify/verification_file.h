// The per-test-case verification file in the output directory: how a test
// case is judged, and the sequence diagram or chart it is judged against.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/chart_record.h"
#include "base/line_reader.h"

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

// The lines of a sequence diagram, one step or marker each.
using SequenceLines = std::vector<std::string>;

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

// Reads "<outDirectory>\<base name>.ver" of the test case named `fullName`
// (`outDirectory` null reads as empty). Its kind is kNoVerificationFile when
// the file cannot be opened.
Verification readVerificationFile(const char* outDirectory, std::string_view fullName);

}  // namespace qendor
