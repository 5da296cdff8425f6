#include "app/report_driver.h"

#include <malloc.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstdio>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "app/run_progress.h"
#include "base/paths.h"
#include "report/case_result.h"
#include "report/coverage_element.h"
#include "report/file_output.h"
#include "report/history.h"
#include "report/history_file.h"
#include "report/html_renders.h"
#include "report/index_file.h"
#include "report/junit_file.h"
#include "report/result_document.h"
#include "report/xml_save.h"
#include "verify/verdicts.h"

namespace qendor {

namespace {

// Which document a report holds.
enum class ReportKind { kTestCase, kTestContext };

// A number below 1 selects the context's document, even for a test case the
// info file stored under such a number.
ReportKind reportKindOf(int32_t number) {
  return number < 1 ? ReportKind::kTestContext : ReportKind::kTestCase;
}

// What the reports of one run share.
struct ReportRun {
  const RunSettings& settings;
  RunVerdicts verdicts;
  HtmlRenders renders;
  const History* earlier = nullptr;  // with "-history": the runs before this one
  // With "-coverage": what the run's own document reached of each model,
  // for the history.
  std::vector<HistoryCoverage> coverage = {};
};

// Opens the file for writing (creating or emptying it) and closes it again.
bool canCreate(const std::string& path) {
  FILE* file = std::fopen(path.c_str(), "w");
  if (!file) return false;
  std::fclose(file);
  return true;
}

// The normalised path of a report file: the output folder, the name's base
// report name and `extension`.
std::string reportPath(const RunSettings& settings, const std::string& fullName,
                       const char* extension) {
  return normalisePath(std::string(settings.outDirectory ? settings.outDirectory : "") + "\\" +
                       baseReportName(fullName) + extension);
}

// The XML report could not be written for `error`: tells so after the
// warnings of the renders before it, so that standard error reads as in a
// run that renders each report before it writes the next, and removes a
// stale HTML report, which must not stand in for the lost one.
ExitStatus loseReport(HtmlRenders& renders, const std::string& xmlPath, const std::string& htmlPath,
                      int error) {
  renders.finishAll();
  reportUnwritten(xmlPath, error);
  std::remove(htmlPath.c_str());
  return ExitStatus::kNotWritten;
}

// The entries of `numbers` as they were judged, for the history.
std::vector<HistoryCase> historyCases(const RunSettings& settings,
                                      const std::vector<int32_t>& numbers,
                                      const RunVerdicts& verdicts) {
  std::vector<HistoryCase> cases;
  for (int32_t number : numbers) {
    if (const TestCaseVerdict* verdict = verdicts.find(number)) {
      cases.push_back(historyCase(tableEntry(settings.testCaseNames, number), *verdict));
    }
  }
  return cases;
}

// The history of what this run reports, when "-history" is given: the file,
// read into `earlier`. Null without the option or when the directory cannot
// be used; the run then writes what it writes without the option.
std::unique_ptr<HistoryFile> readHistory(const RunSettings& settings, const char* kind,
                                         const std::string& fullName, History& earlier) {
  if (!settings.historyDirectory) return nullptr;
  auto file = std::make_unique<HistoryFile>(settings.historyDirectory, baseReportName(fullName),
                                            HistoryOwner{kind, fullName});
  if (!file->read(earlier)) return nullptr;
  return file;
}

// With "-coverage", the model coverage of the test cases `numbers` (judged
// already) after the document's result; the run's own document keeps it for
// the history and shows it beside the earlier runs'.
void addModelCoverage(ReportRun& run, ResultDocument& built, const std::vector<int32_t>& numbers,
                      bool own) {
  if (!run.settings.coverage) return;
  ModelCoverages coverages;
  for (int32_t number : numbers) {
    if (const TestCaseVerdict* verdict = run.verdicts.find(number)) coverages.add(number, *verdict);
  }
  appendModelCoverage(built.document.root.get(), run.settings, coverages,
                      own ? run.earlier : nullptr, own);
  if (own) run.coverage = historyCoverage(run.settings, coverages);
}

// The document of one report, with the history when the run keeps one.
ResultDocument buildReport(ReportRun& run, ReportKind kind, int32_t number, bool own) {
  const RunSettings& settings = run.settings;
  if (kind == ReportKind::kTestContext) {
    ResultDocument built = buildTestContextDocument(settings, run.verdicts);
    addModelCoverage(run, built, contextMembers(settings, settings.testContextName), own);
    if (run.earlier) {
      appendHistoryElement(
          built.document.root.get(), *run.earlier,
          historyCases(settings, contextMembers(settings, settings.testContextName), run.verdicts));
    }
    return built;
  }
  const TestCaseVerdict& verdict = run.verdicts.of(number);
  ResultDocument built = buildTestCaseDocument(settings, number, verdict);
  addModelCoverage(run, built, {number}, own);
  if (run.earlier) {
    appendHistoryElement(built.document.root.get(), *run.earlier,
                         {historyCase(tableEntry(settings.testCaseNames, number), verdict)});
  }
  return built;
}

// Writes the XML report named after `fullName` and has it rendered into
// HTML. Returns the exit status of the document, or kNotWritten when the
// XML file could not be written.
ExitStatus writeReport(ReportRun& run, const std::string& fullName, ReportKind kind, int32_t number,
                       bool own) {
  const RunSettings& settings = run.settings;
  HtmlRenders& renders = run.renders;
  const std::string xmlPath = reportPath(settings, fullName, ".xml");
  const std::string htmlPath = reportPath(settings, fullName, ".html");
  // An earlier render may still read or write these files (a test case
  // named like its context): it must be done before they are touched.
  renders.waitForPath(xmlPath);
  renders.waitForPath(htmlPath);

  if (!canCreate(xmlPath)) {
    // Only the last path component is created. The mode is the decimal number
    // 777 on purpose, as harnesses have always got it.
    mkdir(normalisePath(settings.outDirectory).c_str(), 777);
    if (!canCreate(xmlPath)) return loseReport(renders, xmlPath, htmlPath, errno);
  }

  ExitStatus status = ExitStatus::kNotWritten;
  bool saved = false;
  int error = 0;
  try {
    ResultDocument built = buildReport(run, kind, number, own);
    status = built.exitStatus;
    saved = saveXmlDocument(built.document.root.get(), xmlPath, &error, &built.document.spool);
  } catch (...) {
    // The run ends with an unexpected error; leave no empty report behind.
    std::remove(xmlPath.c_str());
    throw;
  }
  if (!saved) return loseReport(renders, xmlPath, htmlPath, error);
  renders.start(xmlPath, htmlPath);
  return status;
}

}  // namespace

ExitStatus runReports(const RunSettings& settings, TestCaseLogs logs, size_t renderSlots) {
  // On a terminal, a context run shows how far it is (declared before the
  // renders, whose waits report to it until their destructor is done).
  std::unique_ptr<RunProgress> progress;
  // Each render goes on while the next document is built. All are finished
  // before this returns, an unexpected error included (the destructor).
  ReportRun run{settings, RunVerdicts(settings, logs),
                HtmlRenders(renderSlots, settings.htmlRenderer)};
  History earlier;
  std::unique_ptr<HistoryFile> history;
  HistoryRun thisRun;
  ExitStatus result = ExitStatus::kUndefined;
  std::string ownHtml;  // the HTML report of the run's own document
  std::string ownXml;   // and its XML report, when it was written
  if (!settings.testCaseName.empty()) {
    result = ExitStatus::kTestCaseNotFound;
    bool found = false;
    for (const auto& [number, name] : settings.testCaseNames) {
      if (name != settings.testCaseName) continue;
      found = true;
      history = readHistory(settings, "rk_testcase", name, earlier);
      run.earlier = history ? &earlier : nullptr;
      result = writeReport(run, name, reportKindOf(number), number, true);
      ownHtml = reportPath(settings, name, ".html");
      if (result != ExitStatus::kNotWritten) ownXml = reportPath(settings, name, ".xml");
      thisRun.cases = historyCases(settings, {number}, run.verdicts);
      if (!thisRun.cases.empty()) thisRun.status = thisRun.cases.front().status;
      break;
    }
    if (!found) {
      std::printf("TestCase <%s> could not be found in inofile.", settings.testCaseName.c_str());
    }
  } else if (!settings.testContextName.empty()) {
    history = readHistory(settings, "rk_testcontext", settings.testContextName, earlier);
    run.earlier = history ? &earlier : nullptr;
    const std::vector<int32_t> members = contextMembers(settings, settings.testContextName);
    progress = std::make_unique<RunProgress>(members.size());
    run.renders.setWaitHook([&progress, &renders = run.renders] {
      if (progress) progress->updateWaiting(renders.unfinished());
    });
    size_t written = 0;
    for (int32_t number : members) {
      writeReport(run, tableEntry(settings.testCaseNames, number), reportKindOf(number), number,
                  false);
      progress->update(++written, run.renders.unfinished());
    }
    result = writeReport(run, settings.testContextName, ReportKind::kTestContext, -1, true);
    ownHtml = reportPath(settings, settings.testContextName, ".html");
    if (result != ExitStatus::kNotWritten) {
      ownXml = reportPath(settings, settings.testContextName, ".xml");
    }
    thisRun.cases = historyCases(settings, members, run.verdicts);
    for (const HistoryCase& entry : thisRun.cases) {
      thisRun.status = foldContextStatus(thisRun.status, entry.status);
    }
  }
  // The renders still going on need neither the records nor the verdicts:
  // their memory is the renders' while they finish.
  run.verdicts.release();
  logs = TestCaseLogs();
  run.renders.finishAll();
  run.renders.setWaitHook(nullptr);
  if (progress) progress->finish();
  if (!ownHtml.empty() && run.renders.unwritten(ownHtml)) result = ExitStatus::kNotWritten;
  // The JUnit file follows the reports; whether it could be written is
  // said on standard error and leaves the exit status to the reports.
  if (settings.junitFile && !ownHtml.empty()) {
    if (!ownXml.empty()) {
      // What the documents and the renders' threads freed goes back to the
      // system first: the transformation reads the largest document again.
      malloc_trim(0);
      writeJunitFile(settings.programDirectory + kJunitStylesheetName, ownXml,
                     normalisePath(settings.junitFile));
    } else {
      loseJunitFile(normalisePath(settings.junitFile));
    }
  }
  // The run joins the history once its documents are written.
  if (history && result != ExitStatus::kNotWritten) {
    thisRun.time = historyTimeText();
    thisRun.coverage = std::move(run.coverage);
    history->add(std::move(thisRun));
  }
  run.renders.tellXsltprocNotFound();
  // The index lists the documents this run has just written; a failure to
  // write it is told and changes nothing else.
  if (settings.index && settings.outDirectory) {
    rewriteIndex(settings.outDirectory, settings.htmlRenderer);
  }
  return result;
}

}  // namespace qendor
