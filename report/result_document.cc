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
  if (status == "PASSED") return 0;
  if (status == "FAILED") return 10;
  if (status == "ERROR") return 11;
  if (status == "NOT_TERMINATED") return 13;
  return 12;
}

xmlNode* buildTestCaseDocument(int32_t testCase, int& resultCode, ChildSpool* assertions) {
  // Held until the end: a range error of the sequence verification must not
  // leak the tree on its way to the entry point.
  XmlNodePtr root(newElement("TestResult"));
  setAttribute(root.get(), "kind", "rk_testcase");
  const std::string fullName = run().testCaseNames[testCase];
  addResultHeader(root.get(), afterLast(fullName, '.'), fullName);
  resultCode = testCaseStatusCode(writeTestCaseResult(root.get(), testCase, assertions));
  return root.release();
}

SpooledDocument buildTestContextDocument(int& resultCode) {
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
  // Any status but "PASSED" is a failure, and one failure is for good.
  std::string contextStatus = "UNDEFINED";
  for (int32_t number : members) {
    // Each test case is written in its place in the tree, so that its lines
    // are indented as deep as they stand, and then spooled.
    ChildSpool assertions;
    const std::string status = writeTestCaseResult(contextResult, number, &assertions);
    xmlNode* caseResult = contextResult->last;
    xmlUnlinkNode(caseResult);
    document.spool.add(XmlNodePtr(caseResult), &assertions);
    if (status != "PASSED") {
      contextStatus = "FAILED";
    } else if (contextStatus != "FAILED") {
      contextStatus = "PASSED";
    }
  }
  setAttribute(contextResult, "status", contextStatus);
  resultCode = testCaseStatusCode(contextStatus);
  return document;
}

}  // namespace qendor
