// The "TestCaseResult" subtree of sequence diagram test cases.
#include "report/case_result.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "base/run_settings.h"
#include "tests/case_result_fixture.h"

namespace qendor {
namespace {

using TestCaseResultTest = test::TestCaseResultTest;

// ---- SD tests ----

TEST_F(TestCaseResultTest, SdTestPassing) {
  writeVer(kFourSteps);
  addCase({record(kSdStart), sdStep(1, 4), sdStep(2, 4), sdStep(3, 4), sdStep(4, 4),
           record(kSdFinish)});
  EXPECT_EQ(result(), caseHead("tt_SD", "PASSED", "Result verification successful") +
                          "<ResultForSD><UsedSDs/>" + kSdStartInfo + sdStepInfo(1) + sdStepInfo(2) +
                          sdStepInfo(3) + sdStepInfo(4) + sdSummary("PASSED", "100", "4", "4") +
                          "</ResultForSD></TestCaseResult>");
  EXPECT_EQ(status_, "PASSED");
}

TEST_F(TestCaseResultTest, SdTestFailingVerificationStopsAfterThatEntry) {
  writeVer(kFourSteps);
  // Step 3 arrives where 2 is expected. Its entry is written, but its
  // progress does not count: the summary still shows step 1.
  addCase({record(kSdStart), sdStep(1, 4), sdStep(3, 4), sdStep(4, 4), record(kSdFinish)});
  EXPECT_EQ(result(), caseHead("tt_SD", "ERROR", "Result verification failed") +
                          "<ResultForSD><UsedSDs/>" + kSdStartInfo + sdStepInfo(1) + sdStepInfo(3) +
                          sdSummary("ERROR", "25", "1", "4") + "</ResultForSD></TestCaseResult>");
  EXPECT_EQ(status_, "ERROR");
}

TEST_F(TestCaseResultTest, SdTestBelowFullCoverageDidNotTerminate) {
  writeVer(kFourSteps);
  addCase({record(kSdStart), sdStep(1, 4), sdStep(2, 4), sdStep(3, 4), record(kSdFinish)});
  EXPECT_EQ(result(), caseHead("tt_SD", "ERROR", "TestCase did not terminate as expected") +
                          "<ResultForSD><UsedSDs/>" + kSdStartInfo + sdStepInfo(1) + sdStepInfo(2) +
                          sdStepInfo(3) + sdSummary("ERROR", "75", "3", "4") +
                          "</ResultForSD></TestCaseResult>");
  EXPECT_EQ(status_, "NOT_TERMINATED");
}

TEST_F(TestCaseResultTest, SdTestBelowFullCoverageWithAFailureCountsAsVerified) {
  writeVer(kFourSteps);
  // After the failure no later progress is kept, so the summary shows step 1.
  addCase(
      {record(kSdStart), sdStep(1, 4), sdStep(2, 4, "FAILED"), sdStep(3, 4), record(kSdFinish)});
  EXPECT_EQ(result(), caseHead("tt_SD", "FAILED", "Result verification successful") +
                          "<ResultForSD><UsedSDs/>" + kSdStartInfo + sdStepInfo(1) +
                          sdStepInfo(2, "FAILED") + sdStepInfo(3) +
                          sdSummary("FAILED", "25", "1", "4") + "</ResultForSD></TestCaseResult>");
  EXPECT_EQ(status_, "FAILED");
}

TEST_F(TestCaseResultTest, SdTestEndedByTheUserBelowFullCoverage) {
  writeVer(kFourSteps);
  addCase({record(kSdStart), sdStep(1, 4), sdStep(2, 4),
           record(R"(ZKR_ASSERT_SD("Main", "m8", "NOFAIL_INTENDED_USER_EXIT"))")});
  EXPECT_EQ(result(), caseHead("tt_SD", "PASSED", "Result verification successful") +
                          "<ResultForSD><UsedSDs/>" + kSdStartInfo + sdStepInfo(1) + sdStepInfo(2) +
                          sdInfo("Main", "m8", "PASSED", "NOFAIL_INTENDED_USER_EXIT&quot;") +
                          sdSummary("PASSED", "50", "2", "4") + "</ResultForSD></TestCaseResult>");
  EXPECT_EQ(status_, "PASSED");
}

TEST_F(TestCaseResultTest, SdTestNotTerminatedAtFullCoverage) {
  writeVer("SD_TEST\n1\n2");
  // The last entry is treated; the summary is written before the status
  // turns "ERROR".
  addCase({record(kSdStart), sdStep(1, 2), sdStep(2, 2)});
  EXPECT_EQ(result(), caseHead("tt_SD", "ERROR", "TestCase did not terminate as expected") +
                          "<ResultForSD><UsedSDs/>" + kSdStartInfo + sdStepInfo(1) + sdStepInfo(2) +
                          sdSummary("PASSED", "100", "2", "2") + "</ResultForSD></TestCaseResult>");
  EXPECT_EQ(status_, "NOT_TERMINATED");
}

TEST_F(TestCaseResultTest, ProgressOfZeroMaximumIsStillVerified) {
  writeVer("SD_TEST\n5");
  addCase({record(kSdStart), sdStep(5, 0), record(kSdFinish)});
  EXPECT_EQ(result(), caseHead("tt_SD", "ERROR", "TestCase did not terminate as expected") +
                          "<ResultForSD><UsedSDs/>" + kSdStartInfo + sdStepInfo(5) +
                          sdSummary("ERROR", "0", "5", "0") + "</ResultForSD></TestCaseResult>");
  EXPECT_EQ(status_, "NOT_TERMINATED");
}

TEST_F(TestCaseResultTest, SdTestWithoutVerificationFile) {
  addCase({record(kSdStart), sdStep(1, 4), record(kSdFinish)});
  EXPECT_EQ(result(), caseHead("tt_SD", "ERROR", "TestCase did not terminate as expected") +
                          "<ResultForSD><UsedSDs/>" + kSdStartInfo + sdStepInfo(1) +
                          sdSummary("ERROR", "25", "1", "4") + "</ResultForSD></TestCaseResult>");
}

TEST_F(TestCaseResultTest, SdAttributesFromAllMarkedPieces) {
  writeVer("SD_TEST\n1");
  addCase({record(R"(ZKR_ASSERT_SD("Main", "m1", "x"))", "PASSED",
                  "hello - progress 1/1 - no:3,4 - GUID 01234567-89ab-cdef-0123-456789abcdef - "
                  "[Arbiter ASSERT: internal]"),
           record(kSdFinish)});
  EXPECT_EQ(result(), caseHead("tt_SD", "PASSED", "Result verification successful") +
                          "<ResultForSD><UsedSDs/><AssertionInfo sdiname=\"Main\" msgid=\"m1\" "
                          "guid=\"GUID 01234567-89ab-cdef-0123-456789abcdef\" status=\"PASSED\" "
                          "usermsg=\"hello\" inr=\"3\" "
                          "onr=\"4 - GUID 01234567-89ab-cdef-0123-456789abcdef - [Arbiter ASSERT: "
                          "internal]\" dir=\"src/app\" filename=\"main.c\" fnr=\"1\" lnr=\"10\" "
                          "arbiterAssert=\"internal\"/>" +
                          sdSummary("PASSED", "100", "1", "1") + "</ResultForSD></TestCaseResult>");
}

TEST_F(TestCaseResultTest, ArbiterAttributeOnlyWithItsMarker) {
  addCase({record(kSdStart),
           record(R"(ZKR_ASSERT_SD("Main", "m1", "x"))", "PASSED", "a - [Arbiter ASSERT: external"),
           record(R"(ZKR_ASSERT_SD("Main", "m2", "x"))", "PASSED", "b - [Arbiter ASSERT: INTERNAL"),
           record(R"(ZKR_ASSERT_SD("Main", "m3", "x"))", "PASSED", "c - [Arbiter ASSERT internal"),
           record(kSdFinish)});
  writeVer("CODE_TEST");
  EXPECT_EQ(result(), caseHead("tt_SD", "ERROR", "TestCase did not terminate as expected") +
                          "<ResultForSD><UsedSDs/>" + kSdStartInfo +
                          sdInfo("Main", "m1", "PASSED", "a", " arbiterAssert=\"external\"") +
                          sdInfo("Main", "m2", "PASSED", "b", " arbiterAssert=\"external\"") +
                          sdInfo("Main", "m3", "PASSED", "c - [Arbiter ASSERT internal") +
                          sdSummary("ERROR", "0", "0", "0") + "</ResultForSD></TestCaseResult>");
}

TEST_F(TestCaseResultTest, CodeAssertionInAnSdTestKeepsTheLastSdNames) {
  writeVer(kFourSteps);
  addCase({record(kSdStart), sdStep(1, 4), record("ZKR_ASSERT_TRUE(x == 1)", "FAILED"),
           record(kSdFinish)});
  EXPECT_EQ(result(), caseHead("tt_SD", "FAILED", "Result verification successful") +
                          "<ResultForSD><UsedSDs/>" + kSdStartInfo + sdStepInfo(1) +
                          sdInfo("Main", "m1", "FAILED", "x == 1") +
                          sdSummary("FAILED", "25", "1", "4") + "</ResultForSD></TestCaseResult>");
  EXPECT_EQ(status_, "FAILED");
}

TEST_F(TestCaseResultTest, SummaryNameIsTheLastSdiName) {
  writeVer("SD_TEST\n1\n2");
  addCase({record(kSdStart), sdStep(1, 2),
           record(R"(ZKR_ASSERT_SD("Other", "m2", "x"))", "PASSED", "step2 - progress 2/2"),
           record(kSdFinish)});
  const std::string xml = result();
  EXPECT_NE(xml.find("<SDResult name=\"Other\" sdname=\"MainSd\" status=\"PASSED\" "
                     "coverage=\"100\" value=\"2\" max=\"2\"/>"),
            std::string::npos)
      << xml;
}

TEST_F(TestCaseResultTest, ImagesPresentAreReferenced) {
  dir_.write("spec_jpegs/CaseOne.jpg", "jpg");
  // A directory opens for reading too and counts as present.
  dir_.write("result_jpegs/CaseOne.jpg/keep", "");
  writeVer("SD_TEST\n1");
  addCase({record(kSdStart), sdStep(1, 1), record(kSdFinish)});
  EXPECT_EQ(result(),
            caseHead("tt_SD", "PASSED", "Result verification successful") +
                "<ResultForSD><UsedSDs><UsedSD img=\"spec_jpegs/CaseOne.jpg\"/></UsedSDs>" +
                kSdStartInfo + sdStepInfo(1) +
                sdSummary("PASSED", "100", "1", "1", "result_jpegs/CaseOne.jpg") +
                "</ResultForSD></TestCaseResult>");
}

TEST_F(TestCaseResultTest, ImagesAreLookedForUnderABackslashOutputDirectory) {
  const std::string out = dir_.path() + "\\\"out\"";
  run().outDirectory = out.c_str();
  dir_.write("out/spec_jpegs/CaseOne.jpg", "jpg");
  addCase({record(kSdStart), sdStep(1, 1), record(kSdFinish)});
  const std::string xml = result();
  EXPECT_NE(xml.find("<UsedSDs><UsedSD img=\"spec_jpegs/CaseOne.jpg\"/></UsedSDs>"),
            std::string::npos)
      << xml;
}

TEST_F(TestCaseResultTest, CodeTestIgnoresImages) {
  dir_.write("spec_jpegs/CaseOne.jpg", "jpg");
  dir_.write("result_jpegs/CaseOne.jpg", "jpg");
  writeVer("CODE_TEST");
  addCase({record("ZKR_ASSERT_TRUE(a)"), record(kCodeFinish)});
  EXPECT_EQ(result(), caseHead("tt_Code", "PASSED", "No result verification for Code TestCases") +
                          "<ResultForCode>" + codeInfo("a", "PASSED") +
                          "</ResultForCode></TestCaseResult>");
}

TEST_F(TestCaseResultTest, RangeErrorOfTheSequenceVerificationPropagates) {
  // The alternative's marker has no "(" suffix, which the search needs.
  writeVer("SD_TEST\nALT_OPERAND_BEGIN\n1");
  addCase({record(kSdStart), sdStep(2, 2), record(kSdFinish)});
  EXPECT_THROW(result(), std::out_of_range);
}

}  // namespace
}  // namespace qendor
