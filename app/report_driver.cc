#include "app/report_driver.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstdio>
#include <memory>
#include <utility>
#include <vector>

#include "base/paths.h"
#include "base/run_settings.h"
#include "report/file_output.h"
#include "report/history_file.h"
#include "report/result_document.h"
#include "report/xml_node.h"
#include "report/xml_save.h"

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

// The numbers of the test cases of the "-tcontext" context, in ascending order.
std::vector<int32_t> contextMembers() {
  const RunSettings& r = run();
  std::vector<int32_t> members;
  for (const auto& [number, name] : r.testCaseNames) {
    if (contextOf(name) == r.testContextName) members.push_back(number);
  }
  return members;
}

// The entries of `numbers` as `judged` holds them, for the history.
std::vector<HistoryCase> historyCases(const std::vector<int32_t>& numbers,
                                      const TestCaseVerdicts& judged) {
  std::vector<HistoryCase> cases;
  for (int32_t number : numbers) {
    const auto found = judged.find(number);
    if (found != judged.end()) cases.push_back(historyCase(number, found->second));
  }
  return cases;
}

// The history of what this run reports, when "-history" is given: the file,
// read into `earlier`. Null without the option or when the directory cannot
// be used; the run then writes what it writes without the option.
std::unique_ptr<HistoryFile> readHistory(const char* kind, const std::string& fullName,
                                         History& earlier) {
  const char* directory = run().historyDirectory;
  if (!directory) return nullptr;
  auto file = std::make_unique<HistoryFile>(directory, baseReportName(fullName),
                                            HistoryOwner{kind, fullName});
  if (!file->read(earlier)) return nullptr;
  return file;
}

}  // namespace

int writeReport(const std::string& fullName, int32_t number) {
  HtmlRenders renders(1, run().htmlRenderer);
  TestCaseVerdicts judged;
  return writeReport(fullName, number, renders, judged);
}

int writeReport(const std::string& fullName, int32_t number, HtmlRenders& renders,
                TestCaseVerdicts& judged, const History* earlier) {
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
      SpooledDocument document = buildTestContextDocument(resultCode, judged);
      if (earlier) {
        appendHistoryElement(document.root.get(), *earlier, historyCases(contextMembers(), judged));
      }
      saved = saveXmlDocument(document.root.get(), xmlPath, &error, &document.spool);
    } else {
      const TestCaseVerdict& verdict =
          judged.insert_or_assign(number, judgeTestCase(number)).first->second;
      SpooledDocument document;
      document.root.reset(buildTestCaseDocument(number, verdict, resultCode, &document.spool));
      if (earlier)
        appendHistoryElement(document.root.get(), *earlier, {historyCase(number, verdict)});
      saved = saveXmlDocument(document.root.get(), xmlPath, &error, &document.spool);
    }
  } catch (...) {
    // The run ends with an unexpected error; leave no empty report behind.
    std::remove(xmlPath.c_str());
    throw;
  }
  if (!saved) return loseReport(renders, xmlPath, htmlPath, error);

  renders.start(xmlPath, htmlPath);
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
  HtmlRenders renders(renderSlots, r.htmlRenderer);
  TestCaseVerdicts judged;
  History earlier;
  std::unique_ptr<HistoryFile> history;
  HistoryRun thisRun;
  int result = 12;
  std::string ownHtml;  // the HTML report of the run's own document
  if (!r.testCaseName.empty()) {
    result = 22;
    bool found = false;
    for (const auto& [number, name] : r.testCaseNames) {
      if (name != r.testCaseName) continue;
      found = true;
      history = readHistory("rk_testcase", name, earlier);
      result = writeReport(name, number, renders, judged, history ? &earlier : nullptr);
      ownHtml = reportPath(name, ".html");
      thisRun.cases = historyCases({number}, judged);
      if (!thisRun.cases.empty()) thisRun.status = thisRun.cases.front().status;
      break;
    }
    if (!found) {
      std::printf("TestCase <%s> could not be found in inofile.", r.testCaseName.c_str());
    }
  } else if (!r.testContextName.empty()) {
    history = readHistory("rk_testcontext", r.testContextName, earlier);
    const History* shown = history ? &earlier : nullptr;
    // Take the members first: writing a report may insert entries into the table.
    const std::vector<int32_t> members = contextMembers();
    for (int32_t number : members) {
      const std::string name = r.testCaseNames[number];
      writeReport(name, number, renders, judged, shown);
    }
    result = writeReport(r.testContextName, -1, renders, judged, shown);
    ownHtml = reportPath(r.testContextName, ".html");
    thisRun.cases = historyCases(members, judged);
    for (const HistoryCase& entry : thisRun.cases) {
      thisRun.status = foldContextStatus(thisRun.status, entry.status);
    }
  }
  // The renders still going on need neither the tables nor the verdicts:
  // their memory is the renders' while they finish.
  releaseRunTables();
  judged.clear();
  renders.finishAll();
  if (!ownHtml.empty() && renders.unwritten(normalisePathCopy(ownHtml.c_str()))) result = 25;
  // The run joins the history once its documents are written.
  if (history && result != 25) {
    thisRun.time = historyTimeText();
    history->add(std::move(thisRun));
  }
  return result;
}

}  // namespace qendor
