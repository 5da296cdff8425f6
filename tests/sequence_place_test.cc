#include "verify/sequence_place.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "tests/test_support.h"
#include "verify/judgement.h"

namespace qendor {
namespace {

// The place a run of progress `values` (out of `max`) leaves in `lines`.
struct Placed {
  std::unique_ptr<TestCaseLog> log;  // the verdict's entries point into it
  TestCaseVerdict verdict;
  SequencePlace place;
};

Placed placeRun(const SequenceLines& lines, const std::vector<std::string>& values) {
  TestModel model;
  model.kind = VerificationKind::kSdTest;
  model.sequenceLines = std::make_shared<const SequenceLines>(lines);
  AssertionList records;
  records.push_back(AssertionRecord{R"(ZKR_ASSERT_SD("S", "start", "Starting test case"))",
                                    Status::kPassed, "1", "1", ""});
  for (const std::string& value : values) {
    records.push_back(AssertionRecord{"ZKR_ASSERT_SD(\"S\", \"m" + value + "\", \"x\")",
                                      Status::kPassed, "1", "2", "s - progress " + value + "/9"});
  }
  Placed placed;
  placed.log = std::make_unique<TestCaseLog>(makeTestCaseLog(records));
  placed.verdict = judgeTestCase(placed.log.get(), model, true);
  const Diagnosis& diagnosis = *placed.verdict.diagnosis;
  placed.place = placeOf(lines, sequenceOutline(lines), diagnosis.sequence);
  return placed;
}

// Fragments nested in a fragment the last step went past are not listed
// apart: the outer one says it.
TEST(SequencePlace, OnlyTheOutermostPassedOverFragmentIsListed) {
  const SequenceLines lines = {"1",
                               "OPT_BEGIN(o)",
                               "OPT_OPERAND_BEGIN(o)",
                               "LOOP_BEGIN(l)",
                               "LOOP_OPERAND_BEGIN(l)",
                               "2",
                               "LOOP_OPERAND_END(l)",
                               "LOOP_END(l)",
                               "OPT_OPERAND_END(o)",
                               "OPT_END(o)",
                               "BREAK_BEGIN(b)",
                               "BREAK_OPERAND_BEGIN(b)",
                               "3",
                               "BREAK_OPERAND_END(b)",
                               "BREAK_END(b)",
                               "4"};
  const Placed placed = placeRun(lines, {"1", "4", "1"});
  const SequencePlace& place = placed.place;
  ASSERT_TRUE(place.started);
  EXPECT_EQ(place.lastLine, 15u);
  EXPECT_EQ(place.lastValue, "4");
  EXPECT_TRUE(place.inside.empty());
  ASSERT_EQ(place.passedOver.size(), 2u);
  EXPECT_EQ(place.passedOver[0].operatorName, "OPT");
  EXPECT_EQ(place.passedOver[0].line, 1u);
  EXPECT_EQ(place.passedOver[1].operatorName, "BREAK");
  EXPECT_EQ(place.passedOver[1].line, 10u);
  EXPECT_TRUE(place.options.empty());
  EXPECT_EQ(place.recorded.where, SequencePlace::Where::kBehind);
  EXPECT_EQ(place.recorded.line, 0u);
  EXPECT_FALSE(place.recorded.inFragment);
}

// A strict fragment has no operands: the run is inside it, in no operand.
TEST(SequencePlace, InsideAStrictFragmentThereIsNoOperand) {
  const SequenceLines lines = {"STRICT_BEGIN(s)", "1", "2", "STRICT_END(s)", "3"};
  const Placed placed = placeRun(lines, {"1", "3"});
  const SequencePlace& place = placed.place;
  ASSERT_EQ(place.inside.size(), 1u);
  EXPECT_EQ(place.inside[0].fragment.operatorName, "STRICT");
  EXPECT_EQ(place.inside[0].operand, 0u);
  EXPECT_EQ(place.inside[0].enteredAt, "");
  ASSERT_EQ(place.options.size(), 1u);
  EXPECT_EQ(place.options[0].value, "2");
  EXPECT_EQ(place.options[0].line, 2u);
  EXPECT_FALSE(place.options[0].inFragment);
  EXPECT_EQ(place.recorded.where, SequencePlace::Where::kAhead);
  EXPECT_EQ(place.recorded.line, 4u);
}

// A loop's next round: the run is inside the loop's operand, entered at
// its first accepted step, and the loop's own first step is an option.
TEST(SequencePlace, ALoopOperandIsEnteredAtItsFirstAcceptedStep) {
  const SequenceLines lines = {"LOOP_BEGIN(l)",       "LOOP_OPERAND_BEGIN(l)", "1", "2",
                               "LOOP_OPERAND_END(l)", "LOOP_END(l)",           "3"};
  const Placed placed = placeRun(lines, {"1", "2", "1", "7"});
  const SequencePlace& place = placed.place;
  ASSERT_EQ(place.inside.size(), 1u);
  EXPECT_EQ(place.inside[0].operand, 1u);
  EXPECT_EQ(place.inside[0].enteredAt, "1");
  EXPECT_EQ(place.lastValue, "1");
  ASSERT_EQ(place.options.size(), 1u);
  EXPECT_EQ(place.options[0].value, "2");
  EXPECT_EQ(place.recorded.where, SequencePlace::Where::kNowhere);
}

}  // namespace
}  // namespace qendor
