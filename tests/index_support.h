// Hand-made documents for the tests of the index of an output folder.
#pragma once

#include <string>

namespace qendor {
namespace test {

// A test context document as the program writes one, with test cases of
// the given statuses, each with `assertionsPerCase` assertions.
inline std::string contextDocument(const std::string& name, const std::string& status,
                                   const std::string& caseStatuses, int assertionsPerCase = 1,
                                   const std::string& project = "Shop") {
  std::string text =
      "<?xml version=\"1.0\"?>\n<TestResult kind=\"rk_testcontext\">\n"
      "  <ResultHeader name=\"" +
      name + "\" fullname=\"" + project + "." + name +
      "\" time=\"Sat Nov 22 10:15:42 2025\">\n"
      "    <EnvironmentInfo userName=\"u\" machineName=\"m\" osVersion=\"Linux\"/>\n"
      "    <ConfigurationInfo projectName=\"" +
      project + "\" componentName=\"" + name +
      "\" configurationName=\"Debug\"/>\n"
      "  </ResultHeader>\n  <TestContextResult status=\"" +
      status + "\">\n";
  // One letter per test case: P passed, F failed, E error, U undefined.
  int number = 0;
  for (const char c : caseStatuses) {
    const char* word = c == 'P' ? "PASSED" : c == 'F' ? "FAILED" : c == 'E' ? "ERROR" : "UNDEFINED";
    text += "    <TestCaseResult name=\"C" + std::to_string(++number) + "\" status=\"" + word +
            "\">\n      <ResultForCode>\n";
    for (int a = 0; a < assertionsPerCase; ++a) {
      text += "        <AssertionInfo status=\"PASSED\" name=\"a\"/>\n";
    }
    text += "      </ResultForCode>\n    </TestCaseResult>\n";
  }
  return text + "  </TestContextResult>\n</TestResult>\n";
}

// A test case document.
inline std::string testCaseDocument(const std::string& name) {
  return "<?xml version=\"1.0\"?>\n<TestResult kind=\"rk_testcase\">\n"
         "  <ResultHeader name=\"" +
         name + "\" fullname=\"Shop.X." + name +
         "\" time=\"t\"/>\n"
         "  <TestCaseResult name=\"" +
         name + "\" status=\"FAILED\"/>\n</TestResult>\n";
}

}  // namespace test
}  // namespace qendor
