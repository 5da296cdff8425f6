// The "TestCaseResult" subtree: names, paths, missing lists, verification
// kinds and chart tests. Sequence diagram tests are in
// test_case_result_sd_test.cc.
#include "report/case_result.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include "base/run_settings.h"
#include "tests/case_result_fixture.h"

namespace qendor {
namespace {

using TestCaseResultTest = test::TestCaseResultTest;

// ---- names, paths and files ----

TEST_F(TestCaseResultTest, FullNameWithoutDotGivesNameEqualToFullName) {
  addCase({record(kCodeStart), record(kCodeFinish)}, "Solo");
  writeVer("CODE_TEST", "Solo");
  EXPECT_EQ(result(),
            "<TestCaseResult name=\"Solo\" fullname=\"Solo\" testType=\"tt_Code\" "
            "status=\"PASSED\" verificationResult=\"No result verification for Code TestCases\">"
            "<ResultForCode>" +
                codeInfo("Starting test case", "PASSED") + "</ResultForCode></TestCaseResult>");
  EXPECT_EQ(status_, "PASSED");
}

TEST_F(TestCaseResultTest, NameIsAfterLastDotAndVerificationFileAfterLastColon) {
  addCase({record(kCodeStart), record(kCodeFinish)}, "Lib::Pkg.Ctx.A");
  writeVer("CODE_TEST", "A");
  EXPECT_EQ(result(),
            "<TestCaseResult name=\"A\" fullname=\"Lib::Pkg.Ctx.A\" testType=\"tt_Code\" "
            "status=\"PASSED\" verificationResult=\"No result verification for Code TestCases\">"
            "<ResultForCode>" +
                codeInfo("Starting test case", "PASSED") + "</ResultForCode></TestCaseResult>");
}

TEST_F(TestCaseResultTest, SourcePathsSplitAtTheLastSlash) {
  run().sourceFiles[2] = "main.c";
  addCase({record("ZKR_ASSERT_TRUE(a)", "PASSED", "", "2"),
           record("ZKR_ASSERT_TRUE(b)", "PASSED", "", "7"),
           record("ZKR_ASSERT_TRUE(c)", "PASSED", "", ""), record(kCodeFinish)});
  writeVer("CODE_TEST");
  EXPECT_EQ(result(), caseHead("tt_Code", "PASSED", "No result verification for Code TestCases") +
                          "<ResultForCode>" +
                          codeInfo("a", "PASSED", R"(dir="main.c" filename="main.c" fnr="2")") +
                          codeInfo("b", "PASSED", R"(dir="" filename="" fnr="7")") +
                          codeInfo("c", "PASSED", R"(dir="" filename="" fnr="")") +
                          "</ResultForCode></TestCaseResult>");
}

TEST_F(TestCaseResultTest, DetailTextReplacesTheMessage) {
  addCase({record("ZKR_ASSERT_TRUE(a)", "PASSED", "free text"), record("ZKR_ASSERT_TRUE(b)"),
           record(kCodeFinish)});
  writeVer("CODE_TEST");
  EXPECT_EQ(result(), caseHead("tt_Code", "PASSED", "No result verification for Code TestCases") +
                          "<ResultForCode>" + codeInfo("free text", "PASSED") +
                          codeInfo("b", "PASSED") + "</ResultForCode></TestCaseResult>");
}

TEST_F(TestCaseResultTest, EntriesThatAreNoAssertionAreSkipped) {
  addCase({record("ZKR_ASSERT_TRUE(a)"), record("no macro here", "FAILED"), record(kCodeFinish)});
  writeVer("CODE_TEST");
  EXPECT_EQ(result(), caseHead("tt_Code", "PASSED", "No result verification for Code TestCases") +
                          "<ResultForCode>" + codeInfo("a", "PASSED") +
                          "</ResultForCode></TestCaseResult>");
  EXPECT_EQ(status_, "PASSED");
}

TEST_F(TestCaseResultTest, SkippedLastEntryStillMeansNotTerminated) {
  addCase({record("ZKR_ASSERT_TRUE(a)"), record("no macro here")});
  writeVer("CODE_TEST");
  EXPECT_EQ(result(), caseHead("tt_Code", "ERROR", "TestCase did not terminate as expected") +
                          "<ResultForCode>" + codeInfo("a", "PASSED") +
                          "</ResultForCode></TestCaseResult>");
  EXPECT_EQ(status_, "NOT_TERMINATED");
}

// ---- missing lists and verification kinds ----

TEST_F(TestCaseResultTest, MissingListWithoutVerificationFile) {
  run().testCaseNames[1] = "Pkg.Ctx.CaseOne";
  EXPECT_EQ(result(), caseHead("tt_Code", "ERROR", "Result verification switched off") +
                          "<ResultForCode/></TestCaseResult>");
  EXPECT_EQ(status_, "ERROR");
}

TEST_F(TestCaseResultTest, MissingListOfAnSdTest) {
  run().testCaseNames[1] = "Pkg.Ctx.CaseOne";
  writeVer(kFourSteps);
  EXPECT_EQ(result(), caseHead("tt_Code", "ERROR", "Result verification failed") +
                          "<ResultForCode/></TestCaseResult>");
  EXPECT_EQ(status_, "ERROR");
}

TEST_F(TestCaseResultTest, MissingNameAndListOfANumber) {
  EXPECT_EQ(result(5),
            "<TestCaseResult name=\"\" fullname=\"\" testType=\"tt_Code\" status=\"ERROR\" "
            "verificationResult=\"Result verification switched off\"><ResultForCode/>"
            "</TestCaseResult>");
}

TEST_F(TestCaseResultTest, EmptyListStaysUndefined) {
  addCase({});
  writeVer("CODE_TEST");
  EXPECT_EQ(result(),
            caseHead("tt_Code", "UNDEFINED", "No result verification for Code TestCases") +
                "<ResultForCode/></TestCaseResult>");
  EXPECT_EQ(status_, "UNDEFINED");
}

struct KindCase {
  const char* ver;  // null: no verification file
  const char* verification;
};

TEST_F(TestCaseResultTest, VerificationTextByKindOnACodeTest) {
  const KindCase cases[] = {
      {nullptr, "Result verification switched off"},
      {"STATECHART_TEST\nSUB_STATECHART",
       "Statechart contains elements that are not supported for result verification"},
      {"SD_TEST\n1\nPAR_BEGIN(p)",
       "Result verification currently not supported for SDs with interaction operator parallel"},
      {"", "Result verification failed"},
      {"CODE_TEST", "No result verification for Code TestCases"},
  };
  for (const KindCase& c : cases) {
    SCOPED_TRACE(c.verification);
    std::remove(dir_.file("CaseOne.ver").c_str());
    if (c.ver) writeVer(c.ver);
    addCase({record(kCodeStart), record("ZKR_ASSERT_TRUE(a)", "FAILED"), record(kCodeFinish)});
    EXPECT_EQ(result(), caseHead("tt_Code", "FAILED", c.verification) + "<ResultForCode>" +
                            codeInfo("Starting test case", "PASSED") + codeInfo("a", "FAILED") +
                            "</ResultForCode></TestCaseResult>");
    EXPECT_EQ(status_, "FAILED");
  }
}

TEST_F(TestCaseResultTest, NotTerminatedWinsOverTheKindText) {
  addCase({record(kCodeStart), record("ZKR_ASSERT_TRUE(a)")});
  EXPECT_EQ(result(), caseHead("tt_Code", "ERROR", "TestCase did not terminate as expected") +
                          "<ResultForCode>" + codeInfo("Starting test case", "PASSED") +
                          codeInfo("a", "PASSED") + "</ResultForCode></TestCaseResult>");
  EXPECT_EQ(status_, "NOT_TERMINATED");
}

TEST_F(TestCaseResultTest, ParallelSdIsNotVerified) {
  writeVer("SD_TEST\n1\nPAR_BEGIN(p)");
  addCase({record(kSdStart), sdStep(7, 7), record(kSdFinish)});
  EXPECT_EQ(result(),
            caseHead("tt_SD", "PASSED",
                     "Result verification currently not supported for SDs with interaction "
                     "operator parallel") +
                "<ResultForSD><UsedSDs/>" + kSdStartInfo + sdStepInfo(7) +
                sdSummary("PASSED", "100", "7", "7") + "</ResultForSD></TestCaseResult>");
  EXPECT_EQ(status_, "PASSED");
}

// ---- chart tests ----

TEST_F(TestCaseResultTest, StatechartPassing) {
  writeVer(kStatechart);
  addCase({record("ZKR_ASSERT_TRUE(x == 1)"), record(kCodeFinish)});
  EXPECT_EQ(result(), caseHead("tt_Code", "PASSED", "Result verification successful") +
                          "<ResultForCode>" + codeInfo("x == 1", "PASSED") +
                          "</ResultForCode></TestCaseResult>");
  EXPECT_EQ(status_, "PASSED");
}

TEST_F(TestCaseResultTest, StatechartStepFailureStopsTheWalk) {
  writeVer(kStatechart);
  addCase(
      {record("ZKR_ASSERT_TRUE(y == 2)"), record("ZKR_ASSERT_TRUE(x == 1)"), record(kCodeFinish)});
  EXPECT_EQ(result(), caseHead("tt_Code", "ERROR", "Result verification failed") +
                          "<ResultForCode>" + codeInfo("y == 2", "PASSED") +
                          "</ResultForCode></TestCaseResult>");
  EXPECT_EQ(status_, "ERROR");
}

TEST_F(TestCaseResultTest, FlowchartPassing) {
  writeVer(flowchart("LocalTermination"));
  addCase({record("ZKR_ASSERT_TRUE(x == 1)"), record(kCodeFinish)});
  EXPECT_EQ(result(), caseHead("tt_Code", "PASSED", "Result verification successful") +
                          "<ResultForCode>" + codeInfo("x == 1", "PASSED") +
                          "</ResultForCode></TestCaseResult>");
}

TEST_F(TestCaseResultTest, FlowchartThatCannotComplete) {
  writeVer(flowchart("Action"));
  addCase({record("ZKR_ASSERT_TRUE(x == 1)"), record(kCodeFinish)});
  EXPECT_EQ(result(), caseHead("tt_Code", "ERROR", "Result verification failed") +
                          "<ResultForCode>" + codeInfo("x == 1", "PASSED") +
                          "</ResultForCode></TestCaseResult>");
  EXPECT_EQ(status_, "ERROR");
}

TEST_F(TestCaseResultTest, FlowchartEndedByTheUserNeedNotComplete) {
  writeVer(flowchart("Action"));
  addCase(
      {record("ZKR_ASSERT_TRUE(x == 1)"), record("ZKR_ASSERT_TRUE(NOFAIL_INTENDED_USER_EXIT)")});
  EXPECT_EQ(result(), caseHead("tt_Code", "PASSED", "Result verification successful") +
                          "<ResultForCode>" + codeInfo("x == 1", "PASSED") +
                          codeInfo("NOFAIL_INTENDED_USER_EXIT", "PASSED") +
                          "</ResultForCode></TestCaseResult>");
  EXPECT_EQ(status_, "PASSED");
}

TEST_F(TestCaseResultTest, ChartCompletionFromTheFirstRecordStopsAtAnAssertion) {
  // No entry moved the chart: the completion starts at Init and meets the
  // assertion on Work's entry.
  writeVer(kStatechart);
  addCase({record(kCodeFinish)});
  EXPECT_EQ(result(), caseHead("tt_Code", "ERROR", "Result verification failed") +
                          "<ResultForCode/></TestCaseResult>");
  EXPECT_EQ(status_, "ERROR");
}

}  // namespace
}  // namespace qendor
