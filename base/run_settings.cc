#include "base/run_settings.h"

#include "base/paths.h"

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

std::vector<int32_t> contextMembers(const RunSettings& settings, std::string_view contextName) {
  std::vector<int32_t> members;
  for (const auto& [number, name] : settings.testCaseNames) {
    if (contextOf(name) == contextName) members.push_back(number);
  }
  return members;
}

}  // namespace qendor
