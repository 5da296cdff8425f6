#include "app/report_driver.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstdio>

#include "app/paths.h"
#include "app/run_settings.h"
#include "report/file_output.h"
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

// The normalised path of a report file: the output folder, the name's base
// report name and `extension`.
std::string reportPath(const std::string& fullName, const char* extension) {
  const RunSettings& r = run();
  return normalisePath(std::string(r.outDirectory ? r.outDirectory : "") + "\\" +
                       baseReportName(fullName) + extension);
}

// The XML report could not be written for `error`: tells so after the
// warnings of the renders before it, so that standard error reads as in a
// run that renders each report before it writes the next, and removes a
// stale HTML report, which must not stand in for the lost one. Returns 25.
int loseReport(HtmlRenders& renders, const std::string& xmlPath, const std::string& htmlPath,
               int error) {
  renders.finishAll();
  reportUnwritten(xmlPath, error);
  std::remove(htmlPath.c_str());
  return 25;
}

}  // namespace

int writeReport(const std::string& fullName, int32_t number) {
  HtmlRenders renders(1);
  return writeReport(fullName, number, renders);
}

int writeReport(const std::string& fullName, int32_t number, HtmlRenders& renders) {
  const RunSettings& r = run();
  const std::string xmlPath = reportPath(fullName, ".xml");
  const std::string htmlPath = reportPath(fullName, ".html");
  // An earlier xsltproc may still read or write these files (a test case
  // named like its context): it must be done before they are touched.
  renders.waitForPath(normalisePathCopy(xmlPath.c_str()));
  renders.waitForPath(normalisePathCopy(htmlPath.c_str()));

  if (!canCreate(xmlPath)) {
    // Only the last path component is created. The mode is the decimal number
    // 777 on purpose, as harnesses have always got it.
    mkdir(normalisePathCopy(r.outDirectory).c_str(), 777);
    if (!canCreate(xmlPath)) return loseReport(renders, xmlPath, htmlPath, errno);
  }

  int resultCode = 25;
  bool saved = false;
  int error = 0;
  try {
    if (number < 1) {
      saved = buildTestContextDocument(resultCode).save(xmlPath, &error);
    } else {
      SpooledDocument document;
      document.root.reset(buildTestCaseDocument(number, resultCode, &document.spool));
      saved = document.save(xmlPath, &error);
    }
  } catch (...) {
    // The run ends with an unexpected error; leave no empty report behind.
    std::remove(xmlPath.c_str());
    throw;
  }
  if (!saved) return loseReport(renders, xmlPath, htmlPath, error);

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
  int result = 12;
  std::string ownHtml;  // the HTML report of the run's own document
  if (!r.testCaseName.empty()) {
    result = 22;
    bool found = false;
    for (const auto& [number, name] : r.testCaseNames) {
      if (name != r.testCaseName) continue;
      found = true;
      result = writeReport(name, number, renders);
      ownHtml = reportPath(name, ".html");
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
    for (const auto& [number, name] : members) writeReport(name, number, renders);
    result = writeReport(r.testContextName, -1, renders);
    ownHtml = reportPath(r.testContextName, ".html");
  }
  renders.finishAll();
  if (!ownHtml.empty() && renders.unwritten(normalisePathCopy(ownHtml.c_str()))) result = 25;
  releaseRunTables();
  return result;
}

}  // namespace qendor
