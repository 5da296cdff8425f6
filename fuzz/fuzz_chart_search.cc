// The chart searches on a fuzzed chart (parsed as a verification file from
// the first part) and a fuzzed assertion list (the second part, one
// assertion a line), as a test case's judgement walks them.
#include <cstddef>
#include <cstdint>
#include <string>

#include "base/line_reader.h"
#include "fuzz/fuzz_support.h"
#include "verify/chart_search.h"
#include "verify/verification_file.h"

using namespace qendor;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const auto parts = fuzz::splitInput(data, size, 2);
  const bool flowchart = !parts[0].empty() && (parts[0][0] & 1);
  const std::string text =
      std::string(flowchart ? "FLOWCHART_TEST\n" : "STATECHART_TEST\n") + std::string(parts[0]);
  LineReader lines{std::string_view(text)};
  const Verification verification = parseVerificationFile(lines);
  if (!verification.chart) return 0;
  const ChartList& chart = *verification.chart;
  const ChartRecord* record = chart.firstRecord();
  for (const std::string& assertion : fuzz::lines(parts[1])) {
    if (const ChartRecord* found = chart.find(assertion)) record = found;
    if (!record) break;
    VisitedRecords visited;
    const ChartRecord* next = flowchart ? flowchartStep(assertion, record, visited, chart)
                                        : statechartStep(assertion, record, visited, chart);
    if (next) record = next;
  }
  if (record) {
    VisitedRecords visited;
    if (flowchart) {
      flowchartCanComplete(record, visited, chart);
    } else {
      statechartCanComplete(record, visited, chart);
    }
  }
  return 0;
}
