#include "verify/verdicts.h"

#include <gtest/gtest.h>

#include "base/run_settings.h"
#include "tests/test_case_records.h"
#include "tests/test_support.h"

namespace qendor {
namespace {

using test::kSdFinish;
using test::kSdStart;
using test::record;
using test::sdStep;

// A test case is judged against the verification file named after it in the
// output directory, once: later questions get the same verdict.
TEST(RunVerdicts, JudgesEachTestCaseOnceFromItsVerificationFile) {
  test::TempDir dir;
  RunSettings settings;
  settings.outDirectory = dir.path().c_str();
  settings.testCaseNames[1] = "Pkg.Ctx.CaseOne";
  settings.testCaseNames[2] = "Pkg.Ctx.CaseTwo";
  dir.write("CaseOne.ver", "SD_TEST\n1\n2\n");
  TestCaseLogs logs;
  logs[1] = makeTestCaseLog(
      AssertionList{record(kSdStart), sdStep(1, 2), sdStep(2, 2), record(kSdFinish)});
  RunVerdicts verdicts(settings, logs);

  EXPECT_EQ(verdicts.find(1), nullptr);
  const TestCaseVerdict& one = verdicts.of(1);
  EXPECT_EQ(one.status, Status::kPassed);
  EXPECT_EQ(one.verification, VerificationResult::kSuccessful);
  EXPECT_EQ(one.entries.size(), 3u);
  EXPECT_EQ(verdicts.find(1), &one);
  // The file is not read again.
  dir.write("CaseOne.ver", "CODE_TEST\n");
  EXPECT_EQ(&verdicts.of(1), &one);
  EXPECT_EQ(one.verification, VerificationResult::kSuccessful);

  // No log and no verification file.
  const TestCaseVerdict& two = verdicts.of(2);
  EXPECT_FALSE(two.hasRecords);
  EXPECT_EQ(two.status, Status::kError);
  EXPECT_EQ(two.verification, VerificationResult::kSwitchedOff);
  // A number the info file never named is judged under an empty name.
  EXPECT_EQ(verdicts.of(7).verification, VerificationResult::kSwitchedOff);
}

// With "-explain" the diagram the test case was judged against stays with
// the verdict's diagnosis.
TEST(RunVerdicts, AnExplainedVerdictKeepsItsDiagram) {
  test::TempDir dir;
  RunSettings settings;
  settings.outDirectory = dir.path().c_str();
  settings.explain = true;
  settings.testCaseNames[1] = "Pkg.Ctx.CaseOne";
  dir.write("CaseOne.ver", "SD_TEST\n1\n2\n");
  TestCaseLogs logs;
  logs[1] = makeTestCaseLog(AssertionList{record(kSdStart), sdStep(2, 2), record(kSdFinish)});
  RunVerdicts verdicts(settings, logs);
  const TestCaseVerdict& verdict = verdicts.of(1);
  ASSERT_NE(verdict.diagnosis, nullptr);
  ASSERT_NE(verdict.diagnosis->sequenceLines, nullptr);
  EXPECT_EQ(*verdict.diagnosis->sequenceLines, (SequenceLines{"1", "2"}));
  EXPECT_EQ(verdict.diagnosis->sequence.rejectedEntry, 2u);
}

}  // namespace
}  // namespace qendor
