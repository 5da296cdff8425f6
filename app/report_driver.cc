#include "app/report_driver.h"

#include <sys/stat.h>

#include <cstdio>

#include "base/paths.h"
#include "base/run_settings.h"
#include "report/html_report.h"
#include "report/result_document.h"
#include "report/xml_node.h"

namespace qendor {

namespace {

// Opens the file for writing (creating or emptying it) and closes it again.
bool canCreate(const std::string& path) {
  FILE* file = std::fopen(path.c_str(), "w");
  if (!file) return false;
  std::fclose(file);
  return true;
}

}  // namespace

int writeReport(const std::string& fullName, int32_t number) {
  HtmlRenders renders(1);
  TestCaseVerdicts judged;
  return writeReport(fullName, number, renders, judged);
}

int writeReport(const std::string& fullName, int32_t number, HtmlRenders& renders,
                TestCaseVerdicts& judged) {
  const RunSettings& r = run();
  const std::string stem =
      std::string(r.outDirectory ? r.outDirectory : "") + "\\" + baseReportName(fullName);
  const std::string xmlPath = normalisePath(stem + ".xml");
  const std::string htmlPath = normalisePath(stem + ".html");
  // An earlier xsltproc may still read or write these files (a test case
  // named like its context): it must be done before they are touched.
  renders.waitForPath(normalisePathCopy(xmlPath.c_str()));
  renders.waitForPath(normalisePathCopy(htmlPath.c_str()));

  if (!canCreate(xmlPath)) {
    // Only the last path component is created. The mode is the decimal number
    // 777 on purpose, as harnesses have always got it.
    mkdir(normalisePathCopy(r.outDirectory).c_str(), 777);
    if (!canCreate(xmlPath)) return 25;
  }

  int resultCode = 25;
  try {
    if (number < 1) {
      buildTestContextDocument(resultCode, judged).save(xmlPath);
    } else {
      const TestCaseVerdict& verdict =
          judged.insert_or_assign(number, judgeTestCase(number)).first->second;
      SpooledDocument document;
      document.root.reset(buildTestCaseDocument(number, verdict, resultCode, &document.spool));
      document.save(xmlPath);
    }
  } catch (...) {
    // The run ends with an unexpected error; leave no empty report behind.
    std::remove(xmlPath.c_str());
    throw;
  }

  if (!renders.start(xmlPath, htmlPath)) {
    renders.waitForPath(normalisePathCopy(htmlPath.c_str()));
    std::printf("HTML report <%s> could not be created correctly.", htmlPath.c_str());
    std::remove(xmlPath.c_str());
    std::remove(htmlPath.c_str());
    resultCode = 25;
  }
  return resultCode;
}

int runReports() {
  return runReports(renderSlots());
}

int runReports(size_t renderSlots) {
  RunSettings& r = run();
  // Each xsltproc goes on while the next document is built. All are finished
  // before the tables go and before this returns, an unexpected error
  // included (the destructor).
  HtmlRenders renders(renderSlots);
  TestCaseVerdicts judged;
  int result = 12;
  if (!r.testCaseName.empty()) {
    result = 22;
    bool found = false;
    for (const auto& [number, name] : r.testCaseNames) {
      if (name != r.testCaseName) continue;
      found = true;
      result = writeReport(name, number, renders, judged);
      break;
    }
    if (!found) {
      std::printf("TestCase <%s> could not be found in inofile.", r.testCaseName.c_str());
    }
  } else if (!r.testContextName.empty()) {
    // Copy the members first: writing a report may insert entries into the table.
    std::vector<std::pair<int32_t, std::string>> members;
    for (const auto& [number, name] : r.testCaseNames) {
      if (contextOf(name) == r.testContextName) members.emplace_back(number, name);
    }
    for (const auto& [number, name] : members) writeReport(name, number, renders, judged);
    result = writeReport(r.testContextName, -1, renders, judged);
  }
  renders.finishAll();
  releaseRunTables();
  return result;
}

}  // namespace qendor
