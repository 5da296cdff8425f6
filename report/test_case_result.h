// The "TestCaseResult" subtree of one test case, with its verification.
#pragma once

#include <libxml/tree.h>

#include <cstdint>
#include <string>

#include "report/child_spool.h"

namespace qendor {

// Reads the test case's verification file, walks its records, appends one
// "TestCaseResult" subtree to `parent` and returns the test case's status
// ("PASSED", "FAILED", "ERROR", "NOT_TERMINATED" or "UNDEFINED").
// With `assertions`, the "AssertionInfo" elements go into that spool, attached
// to their container, instead of staying in the tree.
// Throws std::out_of_range when the sequence verification does.
std::string writeTestCaseResult(xmlNode* parent, int32_t testCase,
                                ChildSpool* assertions = nullptr);

}  // namespace qendor
