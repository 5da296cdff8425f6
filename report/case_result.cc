#include "report/case_result.h"

#include <cstdio>
#include <string_view>

#include "base/paths.h"
#include "base/text.h"
#include "report/diagnosis_element.h"
#include "report/entry_attributes.h"
#include "report/xml_node.h"

namespace qendor {

namespace {

// A diagram image below the output directory: the path written into the
// document and the path looked at on disk.
struct ImagePath {
  std::string relative;
  std::string full;
};

ImagePath imagePath(const char* outDirectory, std::string_view folder,
                    const std::string& shortName) {
  ImagePath image;
  image.relative = normalisePath(std::string(folder) + "\\" + shortName + ".jpg");
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

// One "AssertionInfo" element per entry the verdict lists.
void writeEntries(const RunTable<std::string>& sourceFiles, const TestCaseVerdict& verdict,
                  xmlNode* container, ChildSpool* assertions) {
  for (const AssertionEntry& entry : verdict.entries) {
    xmlNode* info = addElement(container, "AssertionInfo");
    writeEntryAttributes(info, entry, verdict.type, sourceFiles);
    if (assertions && info) {
      xmlUnlinkNode(info);
      assertions->add(XmlNodePtr(info));
    }
  }
}

void writeSdSummary(xmlNode* container, const std::string& diagramName,
                    const TestCaseVerdict& verdict, const ImagePath& resultImage) {
  xmlNode* summary = addElement(container, "SDSummaryInfo");
  xmlNode* results = addElement(summary, "SDResults");
  xmlNode* sdResult = addElement(results, "SDResult");
  setAttribute(sdResult, "name", verdict.summaryName);
  setAttribute(sdResult, "sdname", diagramName);
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

const std::string& tableEntry(const RunTable<std::string>& table, int32_t key) {
  static const std::string kNone;
  const auto found = table.find(key);
  return found != table.end() ? found->second : kNone;
}

void writeTestCaseResult(xmlNode* parent, const RunSettings& settings, int32_t testCase,
                         const TestCaseVerdict& verdict, ChildSpool* assertions,
                         const StepNames* stepNames) {
  const std::string& fullName = tableEntry(settings.testCaseNames, testCase);
  xmlNode* result = addElement(parent, "TestCaseResult");
  setAttribute(result, "name", afterLast(fullName, '.'));
  setAttribute(result, "fullname", fullName);
  setAttribute(result, "testType", testTypeText(verdict.type));
  setAttribute(result, "status", statusText(verdict.status));
  setAttribute(result, "verificationResult", verificationResultText(verdict.verification));

  if (!verdict.hasRecords) {
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
    const ImagePath specImage = imagePath(settings.outDirectory, "spec_jpegs", shortName);
    if (imageExists(specImage))
      setAttribute(addElement(usedSds, "UsedSD"), "img", specImage.relative);
  }
  if (assertions) assertions->attach(container);
  writeEntries(settings.sourceFiles, verdict, container, assertions);
  if (verdict.type == TestType::kSequenceDiagram) {
    writeSdSummary(container, tableEntry(settings.sequenceDiagramNames, testCase), verdict,
                   imagePath(settings.outDirectory, "result_jpegs", shortName));
  }
  if (verdict.diagnosis) writeDiagnosis(result, verdict, settings.sourceFiles, stepNames);
}

}  // namespace qendor
