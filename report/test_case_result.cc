#include "report/test_case_result.h"

#include <cstdio>
#include <string_view>

#include "base/paths.h"
#include "base/run_settings.h"
#include "base/text.h"
#include "report/diagnosis_element.h"
#include "report/xml_node.h"
#include "verify/assertion_entries.h"
#include "verify/assertion_text.h"

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

// The attributes of a sequence diagram test case's entry.
void writeSdEntry(xmlNode* info, const AssertionEntries& entry, const std::string& dir,
                  const std::string& filename) {
  const AssertionRecord& record = entry.record();
  const std::string& message = entry.message();
  std::string inr;
  std::string onr;
  std::string guid;
  std::string userMessage;
  parseNumberPair(message, inr, onr);
  parseGuid(message, guid);
  parseUserMessage(message, userMessage);
  setAttribute(info, "sdiname", entry.sdiName());
  setAttribute(info, "msgid", entry.msgId());
  setAttribute(info, "guid", guid);
  setAttribute(info, "status", statusText(record.status));
  setAttribute(info, "usermsg", userMessage);
  setAttribute(info, "inr", inr);
  setAttribute(info, "onr", onr);
  setAttribute(info, "dir", dir);
  setAttribute(info, "filename", filename);
  setAttribute(info, "fnr", record.fileNumber);
  setAttribute(info, "lnr", record.lineNumber);
  std::string arbiterKind;
  if (parseArbiterKind(message, arbiterKind)) setAttribute(info, "arbiterAssert", arbiterKind);
}

// The attributes of any other entry.
void writeCodeEntry(xmlNode* info, const AssertionEntries& entry, const std::string& dir,
                    const std::string& filename) {
  const AssertionRecord& record = entry.record();
  setAttribute(info, "name", entry.message());
  setAttribute(info, "status", statusText(record.status));
  setAttribute(info, "dir", dir);
  setAttribute(info, "filename", filename);
  setAttribute(info, "fnr", record.fileNumber);
  setAttribute(info, "lnr", record.lineNumber);
}

// One "AssertionInfo" element per entry the verdict lists.
void writeEntries(const AssertionList& records, const TestCaseVerdict& verdict, xmlNode* container,
                  ChildSpool* assertions) {
  RunSettings& r = run();
  AssertionEntries entries(records);
  for (size_t written = 0; written < verdict.entries && entries.next(); ++written) {
    xmlNode* info = addElement(container, "AssertionInfo");
    std::string dir;
    std::string filename;
    splitSourcePath(r.sourceFiles[readInt32(entries.record().fileNumber)], dir, filename);
    if (verdict.type == TestType::kSequenceDiagram) {
      writeSdEntry(info, entries, dir, filename);
    } else {
      writeCodeEntry(info, entries, dir, filename);
    }
    if (assertions && info) {
      xmlUnlinkNode(info);
      assertions->add(XmlNodePtr(info));
    }
  }
}

void writeSdSummary(xmlNode* container, int32_t testCase, const TestCaseVerdict& verdict,
                    const ImagePath& resultImage) {
  xmlNode* summary = addElement(container, "SDSummaryInfo");
  xmlNode* results = addElement(summary, "SDResults");
  xmlNode* sdResult = addElement(results, "SDResult");
  setAttribute(sdResult, "name", verdict.summaryName);
  setAttribute(sdResult, "sdname", run().sequenceDiagramNames[testCase]);
  setAttribute(sdResult, "status", statusText(verdict.summaryStatus));
  setAttribute(sdResult, "coverage", verdict.coverage);
  setAttribute(sdResult, "value", verdict.value);
  setAttribute(sdResult, "max", verdict.max);
  // The result image is "SDs", not "UsedSD" as the diagram image of the model is.
  if (imageExists(resultImage))
    setAttribute(addElement(sdResult, "SDs"), "img", resultImage.relative);
}

}  // namespace

std::string_view verificationResultText(VerificationResult result) {
  switch (result) {
    case VerificationResult::kSuccessful:
      return "Result verification successful";
    case VerificationResult::kFailed:
      break;
    case VerificationResult::kNotTerminated:
      return "TestCase did not terminate as expected";
    case VerificationResult::kSwitchedOff:
      return "Result verification switched off";
    case VerificationResult::kUnsupportedChart:
      return "Statechart contains elements that are not supported for result verification";
    case VerificationResult::kNoVerificationForCode:
      return "No result verification for Code TestCases";
    case VerificationResult::kParallelUnsupported:
      return "Result verification currently not supported for SDs with interaction operator "
             "parallel";
  }
  return "Result verification failed";
}

std::string_view testTypeText(TestType type) {
  return type == TestType::kSequenceDiagram ? "tt_SD" : "tt_Code";
}

void writeTestCaseResult(xmlNode* parent, int32_t testCase, const TestCaseVerdict& verdict,
                         ChildSpool* assertions) {
  RunSettings& r = run();
  const std::string fullName = r.testCaseNames[testCase];
  xmlNode* result = addElement(parent, "TestCaseResult");
  setAttribute(result, "name", afterLast(fullName, '.'));
  setAttribute(result, "fullname", fullName);
  setAttribute(result, "testType", testTypeText(verdict.type));
  setAttribute(result, "status", statusText(verdict.status));
  setAttribute(result, "verificationResult", verificationResultText(verdict.verification));

  const AssertionList* records = r.testCaseAssertions[testCase].get();
  if (!verdict.hasRecords || !records) {
    addElement(result, "ResultForCode");
    return;
  }
  const std::string shortName = baseReportName(fullName);
  xmlNode* container = nullptr;
  if (verdict.type == TestType::kCode) {
    container = addElement(result, "ResultForCode");
  } else {
    container = addElement(result, "ResultForSD");
    xmlNode* usedSds = addElement(container, "UsedSDs");
    const ImagePath specImage = imagePath("spec_jpegs", shortName);
    if (imageExists(specImage))
      setAttribute(addElement(usedSds, "UsedSD"), "img", specImage.relative);
  }
  if (assertions) assertions->attach(container);
  writeEntries(*records, verdict, container, assertions);
  if (verdict.type == TestType::kSequenceDiagram) {
    writeSdSummary(container, testCase, verdict, imagePath("result_jpegs", shortName));
  }
  if (verdict.diagnosis) {
    const auto lines = r.sequenceLines.find(testCase);
    writeDiagnosis(result, verdict, lines != r.sequenceLines.end() ? lines->second.get() : nullptr);
  }
}

std::string writeTestCaseResult(xmlNode* parent, int32_t testCase, ChildSpool* assertions) {
  const TestCaseVerdict verdict = judgeTestCase(testCase);
  writeTestCaseResult(parent, testCase, verdict, assertions);
  return std::string(statusText(verdict.folded));
}

}  // namespace qendor
