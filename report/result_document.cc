#include "report/result_document.h"

#include <cstdlib>
#include <ctime>
#include <utility>
#include <vector>

#include "base/paths.h"
#include "base/run_settings.h"
#include "report/test_case_result.h"
#include "report/xml_node.h"

namespace qendor {

namespace {

// An environment variable set to the empty string counts as set.
const char* environmentValue(const char* name) {
  return std::getenv(name);
}

// "name" and "fullname" of a "ResultHeader" appended to `root`.
xmlNode* addResultHeader(xmlNode* root, std::string_view name, std::string_view fullName) {
  xmlNode* header = addElement(root, "ResultHeader");
  setAttribute(header, "name", name);
  setAttribute(header, "fullname", fullName);
  addHeaderInfo(header);
  return header;
}

}  // namespace

std::string currentTimeText() {
  const std::time_t now = std::time(nullptr);
  const std::tm* local = std::localtime(&now);
  if (!local) return std::string();
  // The "#" flag is a glibc extension the compiler's format check does not
  // know for "%c"; handing the format over in a variable keeps it quiet.
  const char* format = "%#c";
  char buffer[128] = {};
  const size_t length = std::strftime(buffer, sizeof buffer, format, local);
  return std::string(buffer, length);
}

std::string userNameText() {
  if (const char* name = environmentValue("USERNAME")) return name;
  if (const char* name = environmentValue("USER")) return name;
  return "unknown";
}

std::string machineNameText() {
  if (const char* name = environmentValue("HOSTNAME")) return name;
  return "unknown";
}

std::string osNameText() {
  return "Linux";
}

void addHeaderInfo(xmlNode* header) {
  const RunSettings& r = run();
  setAttribute(header, "time", currentTimeText());

  xmlNode* environment = addElement(header, "EnvironmentInfo");
  setAttribute(environment, "userName", userNameText());
  setAttribute(environment, "machineName", machineNameText());
  setAttribute(environment, "osVersion", osNameText());
  // Joined even when a half is empty: no version keys give ", build ".
  setAttribute(environment, "korvanVersion",
               r.korvanVersionNumber + ", build " + r.korvanBuildNumber);
  setAttribute(environment, "ostraVersion", r.ostraVersionNumber + ", build " + r.ostraBuildNumber);

  xmlNode* configuration = addElement(header, "ConfigurationInfo");
  setAttribute(configuration, "projectName", r.activeProject);
  setAttribute(configuration, "componentName", r.activeComponent);
  setAttribute(configuration, "configurationName", r.activeConfiguration);
}

int testCaseStatusCode(std::string_view status) {
  for (Status known : {Status::kPassed, Status::kFailed, Status::kError, Status::kNotTerminated}) {
    if (status == statusText(known)) return statusCode(known);
  }
  return statusCode(Status::kUndefined);
}

// Any status but "PASSED" is a failure, and one failure is for good.
Status foldContextStatus(Status contextSoFar, Status folded) {
  if (folded != Status::kPassed) return Status::kFailed;
  return contextSoFar == Status::kFailed ? Status::kFailed : Status::kPassed;
}

xmlNode* buildTestCaseDocument(int32_t testCase, const TestCaseVerdict& verdict, int& resultCode,
                               ChildSpool* assertions) {
  XmlNodePtr root(newElement("TestResult"));
  setAttribute(root.get(), "kind", "rk_testcase");
  const std::string fullName = run().testCaseNames[testCase];
  addResultHeader(root.get(), afterLast(fullName, '.'), fullName);
  writeTestCaseResult(root.get(), testCase, verdict, assertions);
  resultCode = statusCode(verdict.folded);
  return root.release();
}

xmlNode* buildTestCaseDocument(int32_t testCase, int& resultCode, ChildSpool* assertions) {
  return buildTestCaseDocument(testCase, judgeTestCase(testCase), resultCode, assertions);
}

SpooledDocument buildTestContextDocument(int& resultCode) {
  TestCaseVerdicts judged;
  return buildTestContextDocument(resultCode, judged);
}

SpooledDocument buildTestContextDocument(int& resultCode, TestCaseVerdicts& judged) {
  RunSettings& r = run();
  XmlNodePtr root(newElement("TestResult"));
  setAttribute(root.get(), "kind", "rk_testcontext");
  // A context is named after its last ":", a test case after its last ".".
  addResultHeader(root.get(), afterLast(r.testContextName, ':'), r.testContextName);
  xmlNode* contextResult = addElement(root.get(), "TestContextResult");
  SpooledDocument document{std::move(root), ChildSpool()};
  document.spool.attach(contextResult);

  // Members are taken first: writing a test case may add table entries.
  std::vector<int32_t> members;
  for (const auto& [number, name] : r.testCaseNames) {
    if (contextOf(name) == r.testContextName) members.push_back(number);
  }
  Status contextStatus = Status::kUndefined;
  for (int32_t number : members) {
    auto found = judged.find(number);
    if (found == judged.end()) found = judged.emplace(number, judgeTestCase(number)).first;
    const TestCaseVerdict& verdict = found->second;
    // Each test case is written in its place in the tree, so that its lines
    // are indented as deep as they stand, and then spooled.
    ChildSpool assertions;
    writeTestCaseResult(contextResult, number, verdict, &assertions);
    xmlNode* caseResult = contextResult->last;
    xmlUnlinkNode(caseResult);
    document.spool.add(XmlNodePtr(caseResult), &assertions);
    contextStatus = foldContextStatus(contextStatus, verdict.folded);
  }
  setAttribute(contextResult, "status", statusText(contextStatus));
  resultCode = statusCode(contextStatus);
  return document;
}

}  // namespace qendor
