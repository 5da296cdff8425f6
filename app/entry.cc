#include "app/entry.h"

#include <cstdio>
#include <exception>

#include "app/command_line.h"
#include "app/report_driver.h"
#include "base/run_settings.h"
#include "input/info_file.h"
#include "input/result_file.h"

namespace qendor {

namespace {

int runStages(int argc, char** argv) {
  if (!parseCommandLine(argc, argv)) {
    std::printf("%s\n", kUsageLine);
    return 20;
  }
  if (!readInfoFile()) {
    std::printf("infofile <%s> could not be read correctly.\n", run().infoFile);
    return 21;
  }
  bool resultRead = readResultFile() != 0;
  if (!resultRead) {
    std::printf("resultfile <%s> could not be read correctly.\n", run().resultFile);
  }
  // The reports are written from whatever the result file reader stored.
  int status = runReports();
  return resultRead ? status : 24;
}

}  // namespace

int runQendor(int argc, char** argv) {
  try {
    return runStages(argc, argv);
  } catch (...) {
    std::printf("Unexpected error in qendor");
    return 30;
  }
}

}  // namespace qendor
