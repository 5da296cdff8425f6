#include "app/entry.h"

#include <cstdio>
#include <exception>
#include <optional>
#include <utility>

#include "app/command_line.h"
#include "app/report_driver.h"
#include "base/run_settings.h"
#include "base/status.h"
#include "input/info_file.h"
#include "input/result_file.h"
#include "report/html_renders.h"

namespace qendor {

namespace {

ExitStatus runStages(int argc, char** argv) {
  if (!parseCommandLine(argc, argv)) {
    std::printf("%s\n", kUsageLine);
    return ExitStatus::kUsage;
  }
  if (!readInfoFile()) {
    std::printf("infofile <%s> could not be read correctly.\n", run().infoFile);
    return ExitStatus::kInfoFileUnread;
  }
  std::optional<TestCaseLogs> logs = readResultFile(run());
  if (!logs) {
    std::printf("resultfile <%s> could not be read correctly.\n", run().resultFile);
  }
  // The reports are written from whatever the result file reader read.
  const ExitStatus status =
      runReports(run(), logs ? std::move(*logs) : TestCaseLogs(), renderSlots());
  return logs ? status : ExitStatus::kResultFileUnread;
}

}  // namespace

int runQendor(int argc, char** argv) {
  try {
    return exitCode(runStages(argc, argv));
  } catch (...) {
    std::printf("Unexpected error in qendor");
    return exitCode(ExitStatus::kUnexpectedError);
  }
}

}  // namespace qendor
