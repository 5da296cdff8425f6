// The "TestCaseResult" subtree of one test case, written from its verdict.
#pragma once

#include <libxml/tree.h>

#include <cstdint>
#include <string>

#include "report/child_spool.h"
#include "verify/test_case_verdict.h"

namespace qendor {

// Appends the "TestCaseResult" subtree of `testCase`, as `verdict` judged
// it, to `parent`. With `assertions`, the "AssertionInfo" elements go into
// that spool, attached to their container, instead of staying in the tree.
void writeTestCaseResult(xmlNode* parent, int32_t testCase, const TestCaseVerdict& verdict,
                         ChildSpool* assertions = nullptr);

// Judges the test case (reading its verification file), appends its subtree
// to `parent` and returns the status its context folds: "PASSED", "FAILED",
// "ERROR", "NOT_TERMINATED" or "UNDEFINED". Throws std::out_of_range when the
// sequence verification does.
std::string writeTestCaseResult(xmlNode* parent, int32_t testCase,
                                ChildSpool* assertions = nullptr);

// The texts of the verdict's values as the documents write them.
std::string_view verificationResultText(VerificationResult result);
std::string_view testTypeText(TestType type);

}  // namespace qendor
