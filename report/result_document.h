// Whole result documents: the root, the header with environment and
// configuration, and the test context's status.
#pragma once

#include <libxml/tree.h>

#include <cstdint>
#include <string>
#include <string_view>

#include "report/child_spool.h"

namespace qendor {

// The document of one test case. Returns the unattached "TestResult" element,
// owned by the caller; `resultCode` becomes the exit status it implies. With
// `assertions` the test case's assertions are spooled there.
xmlNode* buildTestCaseDocument(int32_t testCase, int& resultCode, ChildSpool* assertions = nullptr);

// The document of the test context named by `run().testContextName`, its
// test case results (and their assertions) spooled one by one.
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

}  // namespace qendor
