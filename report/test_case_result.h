// The "TestCaseResult" subtree of one test case, with its verification.
#pragma once

#include <libxml/tree.h>

#include <cstdint>
#include <string>

namespace qendor {

// Reads the test case's verification file, walks its records, appends one
// "TestCaseResult" subtree to `parent` and returns the test case's status
// ("PASSED", "FAILED", "ERROR", "NOT_TERMINATED" or "UNDEFINED").
// Throws std::out_of_range when the sequence verification does.
std::string writeTestCaseResult(xmlNode* parent, int32_t testCase);

}  // namespace qendor
