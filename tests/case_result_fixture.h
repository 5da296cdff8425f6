// The fixture and expected elements of the tests of a test case's
// "TestCaseResult" subtree.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <utility>

#include "base/run_settings.h"
#include "report/case_result.h"
#include "report/xml_node.h"
#include "tests/test_case_records.h"
#include "tests/test_support.h"
#include "tests/xml_dump.h"
#include "verify/verdicts.h"

namespace qendor {
namespace test {

inline std::string codeInfo(
    const std::string& name, const std::string& status,
    const std::string& where = R"(dir="src/app" filename="main.c" fnr="1")") {
  return "<AssertionInfo name=\"" + name + "\" status=\"" + status + "\" " + where +
         " lnr=\"10\"/>";
}

inline std::string sdInfo(const std::string& sdiname, const std::string& msgid,
                          const std::string& status, const std::string& usermsg,
                          const std::string& more = "") {
  return "<AssertionInfo sdiname=\"" + sdiname + "\" msgid=\"" + msgid + "\" guid=\"\" status=\"" +
         status + "\" usermsg=\"" + usermsg +
         "\" inr=\"\" onr=\"\" dir=\"src/app\" filename=\"main.c\" fnr=\"1\" lnr=\"10\"" + more +
         "/>";
}
inline std::string sdStepInfo(int step, const std::string& status = "PASSED") {
  const std::string n = std::to_string(step);
  return sdInfo("Main", "m" + n, status, "step" + n);
}
inline const std::string kSdStartInfo = sdInfo("Main", "m0", "PASSED", "Starting test case&quot;");

inline std::string sdSummary(const std::string& status, const std::string& coverage,
                             const std::string& value, const std::string& max,
                             const std::string& image = "") {
  const std::string result = "<SDResult name=\"Main\" sdname=\"MainSd\" status=\"" + status +
                             "\" coverage=\"" + coverage + "\" value=\"" + value + "\" max=\"" +
                             max + "\"";
  return "<SDSummaryInfo><SDResults>" + result +
         (image.empty() ? "/>" : "><SDs img=\"" + image + "\"/></SDResult>") +
         "</SDResults></SDSummaryInfo>";
}

inline std::string caseHead(const std::string& testType, const std::string& status,
                            const std::string& verification) {
  return "<TestCaseResult name=\"CaseOne\" fullname=\"Pkg.Ctx.CaseOne\" testType=\"" + testType +
         "\" status=\"" + status + "\" verificationResult=\"" + verification + "\">";
}

// A run with one source file and one diagram name, writing into a
// temporary output directory.
class TestCaseResultTest : public ::testing::Test {
 protected:
  void SetUp() override {
    resetRun();
    run().outDirectory = dir_.path().c_str();
    run().sourceFiles[1] = "src/app/main.c";
    run().sequenceDiagramNames[1] = "MainSd";
  }
  void TearDown() override { resetRun(); }

  void addCase(AssertionList records, const std::string& fullName = "Pkg.Ctx.CaseOne",
               int32_t number = 1) {
    run().testCaseNames[number] = fullName;
    logs_[number] = makeTestCaseLog(std::move(records));
  }
  void writeVer(const std::string& content, const std::string& shortName = "CaseOne") {
    dir_.write(shortName + ".ver", content);
  }

  // The "TestCaseResult" of the test case as the run judges it, written
  // under a scratch parent; the status its context folds goes to `status_`.
  std::string result(int32_t number = 1) {
    RunVerdicts verdicts(run(), logs_);
    const TestCaseVerdict& verdict = verdicts.of(number);
    XmlNodePtr parent(newElement("Parent"));
    writeTestCaseResult(parent.get(), run(), number, verdict);
    status_ = std::string(statusText(verdict.folded));
    EXPECT_EQ(parent->children, parent->last) << "one subtree only";
    return test::dumpNode(parent->children);
  }

  TempDir dir_;
  TestCaseLogs logs_;
  std::string status_;
};

}  // namespace test

namespace {
using test::caseHead;
using test::codeInfo;
using test::flowchart;
using test::kCodeFinish;
using test::kCodeStart;
using test::kFourSteps;
using test::kSdFinish;
using test::kSdStart;
using test::kSdStartInfo;
using test::kStatechart;
using test::record;
using test::sdInfo;
using test::sdStep;
using test::sdStepInfo;
using test::sdSummary;
}  // namespace

}  // namespace qendor
