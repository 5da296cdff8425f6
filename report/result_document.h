// Whole result documents: the root, the header with environment and
// configuration, and the test context's status.
#pragma once

#include <cstdint>

#include "base/run_settings.h"
#include "base/status.h"
#include "report/child_spool.h"
#include "verify/judgement.h"
#include "verify/verdicts.h"

namespace qendor {

// A document ready to be saved, and the exit status it implies.
struct ResultDocument {
  SpooledDocument document;
  ExitStatus exitStatus = ExitStatus::kNotWritten;
};

// The document of test case `testCase` as `verdict` judged it, its
// assertions spooled.
ResultDocument buildTestCaseDocument(const RunSettings& settings, int32_t testCase,
                                     const TestCaseVerdict& verdict);

// The document of the test context named by `settings.testContextName`, its
// test case results (and their assertions) spooled one by one, each written
// from the verdict `verdicts` holds or judges for it. Throws
// std::out_of_range when a judgement does.
ResultDocument buildTestContextDocument(const RunSettings& settings, RunVerdicts& verdicts);

// The status of a test context whose members have the `folded` statuses in
// turn: "UNDEFINED" without members, "PASSED" when every one passed,
// otherwise "FAILED".
Status foldContextStatus(Status contextSoFar, Status folded);

}  // namespace qendor
