#include "report/junit_file.h"

#include <unistd.h>

#include "report/file_output.h"
#include "report/libxslt_render.h"

namespace qendor {

const char kJunitStylesheetName[] = "TestResult2JUnit.xslt";

bool writeJunitFile(const std::string& stylesheetPath, const std::string& xmlPath,
                    const std::string& junitPath) {
  // libxslt refuses to transform towards a folder that is not there and
  // says only "runtime error": a place that cannot take the file is found
  // first, with the system's reason.
  FileOutput probe(junitPath, FileOutput::Mode::kReplace);
  if (!probe.open()) {
    reportUnwritten(junitPath, probe.error());
    return false;
  }
  probe.abandon();
  const CompiledStylesheet stylesheet(stylesheetPath);
  const RenderOutcome outcome = stylesheet.render(xmlPath, junitPath, FileOutput::Mode::kReplace);
  if (!outcome.unwritten && outcome.problem.empty()) return true;
  ::unlink(junitPath.c_str());
  reportUnwritten(junitPath, outcome.unwritten ? outcome.reason : outcome.problem);
  return false;
}

void loseJunitFile(const std::string& junitPath) {
  ::unlink(junitPath.c_str());
  reportUnwritten(junitPath, "its result document was not written");
}

}  // namespace qendor
