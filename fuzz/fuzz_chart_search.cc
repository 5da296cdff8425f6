// The chart searches on a fuzzed chart (read by the verification file reader
// from the first part) and a fuzzed assertion list (the second part, one
// assertion a line), as the test case result document walks them.
#include <cstddef>
#include <cstdint>

#include "base/run_settings.h"
#include "fuzz/fuzz_support.h"
#include "verify/chart_search.h"
#include "verify/verification_file.h"

using namespace qendor;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  resetRun();
  const auto parts = fuzz::splitInput(data, size, 2);
  const bool flowchart = !parts[0].empty() && (parts[0][0] & 1);
  fuzz::writeFile("Case.ver", std::string(flowchart ? "FLOWCHART_TEST\n" : "STATECHART_TEST\n") +
                                  std::string(parts[0]));
  run().outDirectory = fuzz::scratch().c_str();
  run().testCaseNames[1] = "Pkg.Ctx.Case";
  readVerificationFile(1);
  const ChartList* chart = run().chartSteps[1].get();
  const ChartRecord* record = chart ? chart->firstRecord() : nullptr;
  for (const std::string& assertion : fuzz::lines(parts[1])) {
    if (const ChartRecord* found = findChartRecord(assertion, 1)) record = found;
    if (!record) break;
    VisitedRecords visited;
    const ChartRecord* next = flowchart ? flowchartStep(assertion, record, visited, 1)
                                        : statechartStep(assertion, record, visited, 1);
    if (next) record = next;
  }
  if (record) {
    VisitedRecords visited;
    if (flowchart) {
      flowchartCanComplete(record, visited, 1);
    } else {
      statechartCanComplete(record, visited, 1);
    }
  }
  resetRun();
  return 0;
}
