// The "TestCaseResult" subtree of one test case, written from its verdict.
#pragma once

#include <libxml/tree.h>

#include <cstdint>
#include <string_view>

#include "base/run_settings.h"
#include "report/child_spool.h"
#include "verify/judgement.h"
#include "verify/step_names.h"

namespace qendor {

// Appends the "TestCaseResult" subtree of test case `testCase`, as `verdict`
// judged it, to `parent`; its names, source files and image folder come from
// `settings`. With `assertions`, the "AssertionInfo" elements go into that
// spool, attached to their container, instead of staying in the tree.
// `stepNames`: in a context document, the names the context's test cases
// gave the steps of this test case's diagram (see writeDiagnosis).
void writeTestCaseResult(xmlNode* parent, const RunSettings& settings, int32_t testCase,
                         const TestCaseVerdict& verdict, ChildSpool* assertions = nullptr,
                         const StepNames* stepNames = nullptr);

// The texts of the verdict's values as the documents write them.
std::string_view verificationResultText(VerificationResult result);
std::string_view testTypeText(TestType type);

// The entry of `table` under `key`; empty when there is none.
const std::string& tableEntry(const RunTable<std::string>& table, int32_t key);

}  // namespace qendor
