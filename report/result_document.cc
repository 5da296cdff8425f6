#include "report/result_document.h"

#include <cstdlib>
#include <ctime>
#include <string>
#include <string_view>
#include <vector>

#include "base/paths.h"
#include "report/case_result.h"
#include "report/xml_node.h"

namespace qendor {

namespace {

// An environment variable set to the empty string counts as set.
const char* environmentValue(const char* name) {
  return std::getenv(name);
}

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

// Sets "time" on the header and appends "EnvironmentInfo" and
// "ConfigurationInfo".
void addHeaderInfo(xmlNode* header, const RunSettings& r) {
  setAttribute(header, "time", currentTimeText());

  xmlNode* environment = addElement(header, "EnvironmentInfo");
  setAttribute(environment, "userName", userNameText());
  setAttribute(environment, "machineName", machineNameText());
  setAttribute(environment, "osVersion", "Linux");  // the only system the program runs on
  // Joined even when a half is empty: no version keys give ", build ".
  setAttribute(environment, "korvanVersion",
               r.korvanVersionNumber + ", build " + r.korvanBuildNumber);
  setAttribute(environment, "ostraVersion", r.ostraVersionNumber + ", build " + r.ostraBuildNumber);

  xmlNode* configuration = addElement(header, "ConfigurationInfo");
  setAttribute(configuration, "projectName", r.activeProject);
  setAttribute(configuration, "componentName", r.activeComponent);
  setAttribute(configuration, "configurationName", r.activeConfiguration);
}

// "name" and "fullname" of a "ResultHeader" appended to `root`.
xmlNode* addResultHeader(xmlNode* root, const RunSettings& settings, std::string_view name,
                         std::string_view fullName) {
  xmlNode* header = addElement(root, "ResultHeader");
  setAttribute(header, "name", name);
  setAttribute(header, "fullname", fullName);
  addHeaderInfo(header, settings);
  return header;
}

}  // namespace

// Any status but "PASSED" is a failure, and one failure is for good.
Status foldContextStatus(Status contextSoFar, Status folded) {
  if (folded != Status::kPassed) return Status::kFailed;
  return contextSoFar == Status::kFailed ? Status::kFailed : Status::kPassed;
}

ResultDocument buildTestCaseDocument(const RunSettings& settings, int32_t testCase,
                                     const TestCaseVerdict& verdict) {
  ResultDocument built;
  SpooledDocument& document = built.document;
  document.root.reset(newElement("TestResult"));
  setAttribute(document.root.get(), "kind", "rk_testcase");
  const std::string& fullName = tableEntry(settings.testCaseNames, testCase);
  addResultHeader(document.root.get(), settings, afterLast(fullName, '.'), fullName);
  writeTestCaseResult(document.root.get(), settings, testCase, verdict, &document.spool);
  built.exitStatus = statusCode(verdict.folded);
  return built;
}

ResultDocument buildTestContextDocument(const RunSettings& settings, RunVerdicts& verdicts) {
  ResultDocument built;
  SpooledDocument& document = built.document;
  document.root.reset(newElement("TestResult"));
  xmlNode* root = document.root.get();
  setAttribute(root, "kind", "rk_testcontext");
  // A context is named after its last ":", a test case after its last ".".
  addResultHeader(root, settings, afterLast(settings.testContextName, ':'),
                  settings.testContextName);
  xmlNode* contextResult = addElement(root, "TestContextResult");
  document.spool.attach(contextResult);

  const std::vector<int32_t> members = contextMembers(settings, settings.testContextName);
  // An explained test case names its diagram's steps after every test case
  // of the context judged against the same diagram: all are judged first.
  DiagramStepNames stepNames;
  if (settings.explain) {
    for (int32_t number : members) stepNames.add(verdicts.of(number));
  }
  Status contextStatus = Status::kUndefined;
  for (int32_t number : members) {
    const TestCaseVerdict& verdict = verdicts.of(number);
    // Each test case is written in its place in the tree, so that its lines
    // are indented as deep as they stand, and then spooled.
    ChildSpool assertions;
    writeTestCaseResult(contextResult, settings, number, verdict, &assertions,
                        stepNames.of(verdict));
    xmlNode* caseResult = contextResult->last;
    xmlUnlinkNode(caseResult);
    document.spool.add(XmlNodePtr(caseResult), &assertions);
    contextStatus = foldContextStatus(contextStatus, verdict.folded);
  }
  setAttribute(contextResult, "status", statusText(contextStatus));
  built.exitStatus = statusCode(contextStatus);
  return built;
}

}  // namespace qendor
