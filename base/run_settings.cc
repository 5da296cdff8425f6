#include "base/run_settings.h"

namespace qendor {

namespace {
RunSettings* g_run = new RunSettings;  // never destroyed: lives until the process ends
}  // namespace

RunSettings& run() {
  return *g_run;
}

void resetRun() {
  *g_run = RunSettings();
}

void releaseRunTables() {
  RunSettings& r = run();
  for (auto& entry : r.collectedAssertions) entry.second.reset();
  for (auto& entry : r.testCaseAssertions) entry.second.reset();
  for (auto& entry : r.sequenceLines) entry.second.reset();
  for (auto& entry : r.chartSteps) entry.second.reset();
}

}  // namespace qendor
