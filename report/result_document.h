// Whole result documents: the root, the header with environment and
// configuration, and the test context's status.
#pragma once

#include <libxml/tree.h>

#include <cstdint>
#include <string>
#include <string_view>

#include "base/status.h"
#include "report/child_spool.h"
#include "verify/test_case_verdict.h"

namespace qendor {

// The document of one test case, as `verdict` judged it. Returns the
// unattached "TestResult" element, owned by the caller; `resultCode` becomes
// the exit status it implies. With `assertions` the test case's assertions
// are spooled there.
xmlNode* buildTestCaseDocument(int32_t testCase, const TestCaseVerdict& verdict, int& resultCode,
                               ChildSpool* assertions = nullptr);

// The same, judging the test case first.
xmlNode* buildTestCaseDocument(int32_t testCase, int& resultCode, ChildSpool* assertions = nullptr);

// The document of the test context named by `run().testContextName`, its
// test case results (and their assertions) spooled one by one. A member
// found in `judged` is written from that verdict; any other is judged now
// and added to it.
SpooledDocument buildTestContextDocument(int& resultCode, TestCaseVerdicts& judged);

// The same, judging every member.
SpooledDocument buildTestContextDocument(int& resultCode);

// Sets "time" on the header and appends "EnvironmentInfo" and
// "ConfigurationInfo".
void addHeaderInfo(xmlNode* header);

std::string currentTimeText();
std::string userNameText();
std::string machineNameText();
std::string osNameText();

// The exit status of a test case status text.
int testCaseStatusCode(std::string_view status);

// The status of a test context whose members have the `folded` statuses in
// turn: "UNDEFINED" without members, "PASSED" when every one passed,
// otherwise "FAILED".
Status foldContextStatus(Status contextSoFar, Status folded);

}  // namespace qendor
