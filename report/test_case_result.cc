#include "report/test_case_result.h"

#include <cstdio>
#include <string_view>

#include "base/paths.h"
#include "base/run_settings.h"
#include "base/text.h"
#include "input/assertion_macro.h"
#include "report/xml_node.h"
#include "verify/assertion_text.h"
#include "verify/chart_search.h"
#include "verify/sequence_verification.h"
#include "verify/verification_file.h"

namespace qendor {

namespace {

// A diagram image below the output directory: the path written into the
// document and the path looked at on disk.
struct ImagePath {
  std::string relative;
  std::string full;
};

ImagePath imagePath(std::string_view folder, const std::string& shortName) {
  ImagePath image;
  image.relative = normalisePath(std::string(folder) + "\\" + shortName + ".jpg");
  const char* outDirectory = run().outDirectory;
  image.full = normalisePath(std::string(outDirectory ? outDirectory : "") + "\\" + image.relative);
  return image;
}

// Present means "opens for reading", which on Linux holds for a directory too.
bool imageExists(const ImagePath& image) {
  FILE* file = std::fopen(image.full.c_str(), "r");
  if (!file) return false;
  std::fclose(file);
  return true;
}

// Splits a source path at its last "/". Without one both halves are the whole
// path: the not-found position plus one wraps round to the start.
void splitSourcePath(const std::string& path, std::string& dir, std::string& filename) {
  const size_t slash = path.rfind('/');
  dir = path.substr(0, slash);
  filename = path.substr(slash + 1);
}

bool hasSdAssertion(const AssertionList& records) {
  for (const AssertionRecord& record : records) {
    if (contains(record.assertionText, "ASSERT_SD")) return true;
  }
  return false;
}

// The working state of one test case's walk over its log entries.
struct CaseWalk {
  int32_t testCase = 0;
  int kind = kNoKind;
  bool hasSdAssert = false;
  std::string caseStatus = "UNDEFINED";
  int verdict = 0;  // 1 verified, -1 fault found, 2 below full coverage
  bool notTerminated = false;
  bool userExit = false;
  size_t sequencePosition = 0;
  const ChartRecord* currentState = nullptr;
  std::string lastProgressLine;
  // The outputs of the macro parser belong to the whole walk: an entry that
  // does not yield one keeps the previous entry's value.
  std::string sdiName;
  std::string msgId;
  std::string message;
};

// Writes the attributes of an SD test's entry and runs the sequence
// verification. False when the verification failed and the walk must stop.
bool writeSdAssertion(CaseWalk& walk, const AssertionRecord& record, xmlNode* info,
                      const std::string& dir, const std::string& filename) {
  std::string inr;
  std::string onr;
  std::string guid;
  std::string userMessage;
  parseNumberPair(walk.message, inr, onr);
  parseGuid(walk.message, guid);
  parseUserMessage(walk.message, userMessage);
  setAttribute(info, "sdiname", walk.sdiName);
  setAttribute(info, "msgid", walk.msgId);
  setAttribute(info, "guid", guid);
  setAttribute(info, "status", record.status);
  setAttribute(info, "usermsg", userMessage);
  setAttribute(info, "inr", inr);
  setAttribute(info, "onr", onr);
  setAttribute(info, "dir", dir);
  setAttribute(info, "filename", filename);
  setAttribute(info, "fnr", record.fileNumber);
  setAttribute(info, "lnr", record.lineNumber);

  std::string value;
  std::string max;
  std::string coverage;
  parseProgress(walk.message, value, max, coverage);
  std::string arbiterKind;
  if (parseArbiterKind(walk.message, arbiterKind)) setAttribute(info, "arbiterAssert", arbiterKind);

  // The value counts whatever parseProgress returned: a maximum of 0 still
  // yields one.
  const SequenceLines* lines = run().sequenceLines[walk.testCase].get();
  if (lines && walk.kind == kSdTest && !value.empty()) {
    if (!verifySdMessage(value, walk.sequencePosition, walk.testCase)) {
      walk.verdict = -1;
      return false;
    }
    if (walk.sequencePosition == lines->size()) walk.verdict = 1;
  }
  return true;
}

// Writes the attributes of a code, statechart or flowchart entry and follows
// the chart. False when the chart step failed and the walk must stop.
bool writeCodeAssertion(CaseWalk& walk, const AssertionRecord& record, xmlNode* info,
                        const std::string& dir, const std::string& filename) {
  setAttribute(info, "name", walk.message);
  setAttribute(info, "status", record.status);
  setAttribute(info, "dir", dir);
  setAttribute(info, "filename", filename);
  setAttribute(info, "fnr", record.fileNumber);
  setAttribute(info, "lnr", record.lineNumber);

  const ChartList* chart = run().chartSteps[walk.testCase].get();
  if (!chart || !walk.currentState) return true;
  if (walk.kind != kFlowchartTest && walk.kind != kStatechartTest) return true;
  VisitedRecords visited;
  walk.currentState =
      walk.kind == kFlowchartTest
          ? flowchartStep(record.assertionText, walk.currentState, visited, walk.testCase)
          : statechartStep(record.assertionText, walk.currentState, visited, walk.testCase);
  if (walk.currentState) return true;
  walk.verdict = -1;
  return false;
}

void rollUpStatus(CaseWalk& walk, const AssertionRecord& record) {
  if (record.status != "PASSED") {
    walk.caseStatus = "FAILED";
    return;
  }
  if (walk.caseStatus == "FAILED") return;
  walk.caseStatus = "PASSED";
  if (contains(walk.message, "- progress")) walk.lastProgressLine = walk.message;
}

void walkEntries(CaseWalk& walk, const AssertionList& records, xmlNode* container,
                 ChildSpool* assertions) {
  RunSettings& r = run();
  for (size_t i = 0; i < records.size(); ++i) {
    const AssertionRecord& record = records[i];
    if (i + 1 == records.size()) {
      // A test case that finished leaves its finish assertion last; anything
      // else means it did not terminate, unless the user ended it on purpose.
      if (contains(record.assertionText, "Finished test case:")) break;
      walk.notTerminated = true;
      if (contains(record.assertionText, "NOFAIL_INTENDED_USER_EXIT")) walk.userExit = true;
    }
    if (!parseAssertionMacro(record.assertionText, walk.sdiName, walk.msgId, walk.message))
      continue;

    xmlNode* info = addElement(container, "AssertionInfo");
    if (!record.detailText.empty()) walk.message = record.detailText;
    std::string dir;
    std::string filename;
    splitSourcePath(r.sourceFiles[readInt32(record.fileNumber)], dir, filename);

    const bool goOn = walk.hasSdAssert ? writeSdAssertion(walk, record, info, dir, filename)
                                       : writeCodeAssertion(walk, record, info, dir, filename);
    if (assertions && info) {
      xmlUnlinkNode(info);
      assertions->add(XmlNodePtr(info));
    }
    if (!goOn) return;  // the failing entry is written but not rolled up
    rollUpStatus(walk, record);
  }
}

// The coverage summary of an SD test; also settles the verdict on coverage.
void writeSdSummary(CaseWalk& walk, xmlNode* container, const ImagePath& resultImage) {
  std::string value = "0";
  std::string max = "0";
  std::string coverage = "0";
  parseProgress(walk.lastProgressLine, value, max, coverage);
  if (walk.verdict == -1) {
    walk.caseStatus = "ERROR";
  } else if (coverage != "100") {
    // Below full coverage a test case that failed anyway, or that the user
    // ended, counts as verified; one that passed everything did not finish.
    if (walk.caseStatus != "PASSED" || walk.userExit) {
      walk.verdict = 1;
    } else {
      walk.caseStatus = "ERROR";
      walk.verdict = 2;
    }
  }

  xmlNode* summary = addElement(container, "SDSummaryInfo");
  xmlNode* results = addElement(summary, "SDResults");
  xmlNode* sdResult = addElement(results, "SDResult");
  setAttribute(sdResult, "name", walk.sdiName);
  setAttribute(sdResult, "sdname", run().sequenceDiagramNames[walk.testCase]);
  setAttribute(sdResult, "status", walk.caseStatus);
  setAttribute(sdResult, "coverage", coverage);
  setAttribute(sdResult, "value", value);
  setAttribute(sdResult, "max", max);
  // The result image is "SDs", not "UsedSD" as the diagram image of the model is.
  if (imageExists(resultImage))
    setAttribute(addElement(sdResult, "SDs"), "img", resultImage.relative);
}

// A chart test passes when no step failed and the chart can run to its end
// (or the user ended the test case on purpose).
void completeChart(CaseWalk& walk) {
  bool completes = false;
  if (walk.verdict == 0) {
    VisitedRecords visited;
    const ChartRecord* end = walk.kind == kFlowchartTest
                                 ? flowchartCanComplete(walk.currentState, visited, walk.testCase)
                                 : statechartCanComplete(walk.currentState, visited, walk.testCase);
    completes = end != nullptr || walk.userExit;
  }
  if (completes) {
    walk.verdict = 1;
  } else {
    walk.caseStatus = "ERROR";
    walk.verdict = -1;
  }
}

void walkTestCase(CaseWalk& walk, const AssertionList& records, xmlNode* result,
                  const std::string& fullName, ChildSpool* assertions) {
  RunSettings& r = run();
  walk.hasSdAssert = hasSdAssertion(records);
  const std::string shortName = baseReportName(fullName);
  const ImagePath specImage = imagePath("spec_jpegs", shortName);
  const ImagePath resultImage = imagePath("result_jpegs", shortName);

  xmlNode* container = nullptr;
  if (!walk.hasSdAssert) {
    setAttribute(result, "testType", "tt_Code");
    container = addElement(result, "ResultForCode");
  } else {
    setAttribute(result, "testType", "tt_SD");
    container = addElement(result, "ResultForSD");
    xmlNode* usedSds = addElement(container, "UsedSDs");
    if (imageExists(specImage))
      setAttribute(addElement(usedSds, "UsedSD"), "img", specImage.relative);
  }

  const ChartList* chart = r.chartSteps[walk.testCase].get();
  if (chart) walk.currentState = chart->firstRecord();

  if (assertions) assertions->attach(container);
  walkEntries(walk, records, container, assertions);

  if (walk.hasSdAssert) {
    writeSdSummary(walk, container, resultImage);
  } else if (walk.kind == kFlowchartTest || walk.kind == kStatechartTest) {
    completeChart(walk);
  }
  if (walk.notTerminated && !walk.userExit) walk.caseStatus = "ERROR";
}

}  // namespace

std::string writeTestCaseResult(xmlNode* parent, int32_t testCase, ChildSpool* assertions) {
  RunSettings& r = run();
  const std::string fullName = r.testCaseNames[testCase];
  xmlNode* result = addElement(parent, "TestCaseResult");
  setAttribute(result, "name", afterLast(fullName, '.'));
  setAttribute(result, "fullname", fullName);

  CaseWalk walk;
  walk.testCase = testCase;
  walk.kind = readVerificationFile(testCase);

  const AssertionList* records = r.testCaseAssertions[testCase].get();
  if (!records) {
    setAttribute(result, "testType", "tt_Code");
    addElement(result, "ResultForCode");
    walk.caseStatus = "ERROR";
  } else {
    walkTestCase(walk, *records, result, fullName, assertions);
  }

  setAttribute(result, "status", walk.caseStatus);

  // The first rule that holds wins. A test case that did not terminate keeps
  // its "status" attribute; only the returned text says so.
  std::string returned = walk.caseStatus;
  const char* verification = "Result verification failed";
  if (walk.verdict == 2 || (walk.notTerminated && !walk.userExit)) {
    verification = "TestCase did not terminate as expected";
    returned = "NOT_TERMINATED";
  } else if (walk.kind == kNoVerificationFile) {
    verification = "Result verification switched off";
  } else if (walk.kind == kUnsupportedChart) {
    verification = "Statechart contains elements that are not supported for result verification";
  } else if (walk.kind == kCodeTest) {
    verification = "No result verification for Code TestCases";
  } else if (walk.kind == kParallelSd) {
    verification =
        "Result verification currently not supported for SDs with interaction operator parallel";
  } else if (walk.verdict == 1) {
    verification = "Result verification successful";
  }
  setAttribute(result, "verificationResult", verification);
  return returned;
}

}  // namespace qendor
