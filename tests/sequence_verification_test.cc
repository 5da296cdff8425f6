#include "verify/sequence_verification.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "base/text.h"

namespace qendor {
namespace {

using Lines = std::vector<std::string>;

class SequenceTest : public ::testing::Test {
 protected:
  void setLines(const Lines& lines) { lines_ = lines; }

  SequenceLines lines_;
};

// The what() text of the range error a call raises; empty when none.
template <class Call>
std::string rangeError(Call call) {
  try {
    call();
  } catch (const std::out_of_range& e) {
    return e.what();
  }
  return "";
}

struct Step {
  const char* message;
  bool accepted;
  size_t position;  // after the call
};

struct Diagram {
  const char* name;
  Lines lines;
  std::vector<Step> steps;
};

// Each diagram is verified from position 0 with the recorded messages in turn.
const Diagram kDiagrams[] = {
    {"plain sequence", {"SD_TEST", "A", "B"}, {{"A", true, 2}, {"B", true, 3}, {"C", false, 3}}},
    {"plain sequence, wrong order", {"SD_TEST", "A", "B"}, {{"B", false, 1}}},
    {"strict",
     {"SD_TEST", "STRICT_BEGIN(s)", "A", "B", "STRICT_END(s)"},
     {{"A", true, 3}, {"B", true, 4}, {"C", false, 5}}},
    // 0 SD_TEST 1 ALT_BEGIN 2 ALT_OPERAND_BEGIN 3 A 4 ALT_OPERAND_END 5 ALT_OPERAND_BEGIN 6 B
    // 7 ALT_OPERAND_END 8 ALT_END 9 C
    {"alt, second operand",
     {"SD_TEST", "ALT_BEGIN(a)", "ALT_OPERAND_BEGIN(a)", "A", "ALT_OPERAND_END(a)",
      "ALT_OPERAND_BEGIN(a)", "B", "ALT_OPERAND_END(a)", "ALT_END(a)", "C"},
     {{"B", true, 7}, {"C", true, 10}}},
    {"alt, operand not closed against the next one",
     {"SD_TEST", "ALT_BEGIN(a)", "ALT_OPERAND_BEGIN(a)", "A", "ALT_OPERAND_END(a)",
      "ALT_OPERAND_BEGIN(a)", "B", "ALT_OPERAND_END(a)", "ALT_END(a)", "C"},
     {{"A", true, 4}, {"B", true, 7}, {"C", true, 10}}},
    {"alt, passed over",
     {"SD_TEST", "ALT_BEGIN(a)", "ALT_OPERAND_BEGIN(a)", "A", "ALT_OPERAND_END(a)",
      "ALT_OPERAND_BEGIN(a)", "B", "ALT_OPERAND_END(a)", "ALT_END(a)", "C"},
     {{"C", true, 10}}},
    {"alt, nothing fits",
     {"SD_TEST", "ALT_BEGIN(a)", "ALT_OPERAND_BEGIN(a)", "A", "ALT_OPERAND_END(a)",
      "ALT_OPERAND_BEGIN(a)", "B", "ALT_OPERAND_END(a)", "ALT_END(a)", "C"},
     {{"D", false, 9}}},
    {"alt with three operands",
     {"SD_TEST", "ALT_BEGIN(x)", "ALT_OPERAND_BEGIN(x)", "A", "ALT_OPERAND_END(x)",
      "ALT_OPERAND_BEGIN(x)", "B", "ALT_OPERAND_END(x)", "ALT_OPERAND_BEGIN(x)", "C",
      "ALT_OPERAND_END(x)", "ALT_END(x)", "D"},
     {{"C", true, 10}, {"D", true, 13}}},
    {"opt taken",
     {"SD_TEST", "OPT_BEGIN(o)", "OPT_OPERAND_BEGIN(o)", "A", "OPT_OPERAND_END(o)", "OPT_END(o)",
      "B"},
     {{"A", true, 4}, {"B", true, 7}}},
    {"opt passed over",
     {"SD_TEST", "OPT_BEGIN(o)", "OPT_OPERAND_BEGIN(o)", "A", "OPT_OPERAND_END(o)", "OPT_END(o)",
      "B"},
     {{"B", true, 7}}},
    {"loop with one message",
     {"SD_TEST", "LOOP_BEGIN(l)", "LOOP_OPERAND_BEGIN(l)", "A", "LOOP_OPERAND_END(l)",
      "LOOP_END(l)", "B"},
     {{"A", true, 4}, {"A", true, 4}, {"A", true, 4}, {"B", true, 7}}},
    {"loop never run",
     {"SD_TEST", "LOOP_BEGIN(l)", "LOOP_OPERAND_BEGIN(l)", "A", "LOOP_OPERAND_END(l)",
      "LOOP_END(l)", "B"},
     {{"B", true, 7}}},
    {"loop with two messages",
     {"SD_TEST", "LOOP_BEGIN(l)", "LOOP_OPERAND_BEGIN(l)", "A", "B", "LOOP_OPERAND_END(l)",
      "LOOP_END(l)", "C"},
     {{"A", true, 4}, {"B", true, 5}, {"A", true, 4}, {"B", true, 5}, {"C", true, 8}}},
    {"loop entered for a message that is not its first",
     {"SD_TEST", "LOOP_BEGIN(l)", "LOOP_OPERAND_BEGIN(l)", "A", "B", "LOOP_OPERAND_END(l)",
      "LOOP_END(l)", "C"},
     {{"B", false, 3}}},
    {"loop ended in the middle of an iteration",
     {"SD_TEST", "LOOP_BEGIN(l)", "LOOP_OPERAND_BEGIN(l)", "A", "B", "LOOP_OPERAND_END(l)",
      "LOOP_END(l)", "C"},
     {{"A", true, 4}, {"C", false, 4}}},
    // 0 SD_TEST 1 ALT_BEGIN 2 ALT_OPERAND_BEGIN 3 LOOP_BEGIN 4 LOOP_OPERAND_BEGIN 5 A
    // 6 LOOP_OPERAND_END 7 LOOP_END 8 ALT_OPERAND_END 9 ALT_OPERAND_BEGIN 10 B
    // 11 ALT_OPERAND_END 12 ALT_END 13 C
    {"loop nested in alt, loop taken",
     {"SD_TEST", "ALT_BEGIN(a)", "ALT_OPERAND_BEGIN(a)", "LOOP_BEGIN(l)", "LOOP_OPERAND_BEGIN(l)",
      "A", "LOOP_OPERAND_END(l)", "LOOP_END(l)", "ALT_OPERAND_END(a)", "ALT_OPERAND_BEGIN(a)", "B",
      "ALT_OPERAND_END(a)", "ALT_END(a)", "C"},
     {{"A", true, 6}, {"A", true, 6}, {"C", true, 14}}},
    {"loop nested in alt, other operand",
     {"SD_TEST", "ALT_BEGIN(a)", "ALT_OPERAND_BEGIN(a)", "LOOP_BEGIN(l)", "LOOP_OPERAND_BEGIN(l)",
      "A", "LOOP_OPERAND_END(l)", "LOOP_END(l)", "ALT_OPERAND_END(a)", "ALT_OPERAND_BEGIN(a)", "B",
      "ALT_OPERAND_END(a)", "ALT_END(a)", "C"},
     {{"B", true, 11}, {"C", true, 14}}},
    {"loop nested in alt, passed over",
     {"SD_TEST", "ALT_BEGIN(a)", "ALT_OPERAND_BEGIN(a)", "LOOP_BEGIN(l)", "LOOP_OPERAND_BEGIN(l)",
      "A", "LOOP_OPERAND_END(l)", "LOOP_END(l)", "ALT_OPERAND_END(a)", "ALT_OPERAND_BEGIN(a)", "B",
      "ALT_OPERAND_END(a)", "ALT_END(a)", "C"},
     {{"C", true, 14}, {"C", false, 14}}},
    // 0 SD_TEST 1 LOOP_BEGIN 2 LOOP_OPERAND_BEGIN 3 A 4 BREAK_BEGIN 5 BREAK_OPERAND_BEGIN 6 X
    // 7 BREAK_OPERAND_END 8 BREAK_END 9 B 10 LOOP_OPERAND_END 11 LOOP_END 12 C
    {"break inside loop",
     {"SD_TEST", "LOOP_BEGIN(l)", "LOOP_OPERAND_BEGIN(l)", "A", "BREAK_BEGIN(b)",
      "BREAK_OPERAND_BEGIN(b)", "X", "BREAK_OPERAND_END(b)", "BREAK_END(b)", "B",
      "LOOP_OPERAND_END(l)", "LOOP_END(l)", "C"},
     {{"A", true, 4}, {"B", true, 10}, {"A", true, 4}, {"X", true, 7}, {"C", true, 13}}},
    {"consider",
     {"SD_TEST", "CONSIDER_BEGIN(c)", "CONSIDER_OPERAND_BEGIN(c)", "A", "B",
      "CONSIDER_OPERAND_END(c)", "CONSIDER_END(c)", "C"},
     {{"A", true, 4}, {"B", true, 5}, {"C", true, 8}}},
    {"consider filters nothing",
     {"SD_TEST", "CONSIDER_BEGIN(c)", "CONSIDER_OPERAND_BEGIN(c)", "A", "B",
      "CONSIDER_OPERAND_END(c)", "CONSIDER_END(c)", "C"},
     {{"B", false, 3}}},
    // 0 SD_TEST 1 ALT_BEGIN(o) 2 ALT_OPERAND_BEGIN(o) 3 BREAK_BEGIN 4 BREAK_OPERAND_BEGIN 5 X
    // 6 BREAK_OPERAND_END 7 BREAK_END 8 W 9 ALT_BEGIN(i) 10 ALT_OPERAND_BEGIN(i) 11 Y
    // 12 ALT_OPERAND_END(i) 13 ALT_END(i) 14 Z 15 ALT_OPERAND_END(o) 16 ALT_END(o) 17 C
    {"break scan skips a nested alternative",
     {"SD_TEST", "ALT_BEGIN(o)", "ALT_OPERAND_BEGIN(o)", "BREAK_BEGIN(b)", "BREAK_OPERAND_BEGIN(b)",
      "X", "BREAK_OPERAND_END(b)", "BREAK_END(b)", "W", "ALT_BEGIN(i)", "ALT_OPERAND_BEGIN(i)", "Y",
      "ALT_OPERAND_END(i)", "ALT_END(i)", "Z", "ALT_OPERAND_END(o)", "ALT_END(o)", "C"},
     {{"X", true, 6}, {"C", true, 18}}},
    {"break continuation taken",
     {"SD_TEST", "ALT_BEGIN(o)", "ALT_OPERAND_BEGIN(o)", "BREAK_BEGIN(b)", "BREAK_OPERAND_BEGIN(b)",
      "X", "BREAK_OPERAND_END(b)", "BREAK_END(b)", "W", "ALT_BEGIN(i)", "ALT_OPERAND_BEGIN(i)", "Y",
      "ALT_OPERAND_END(i)", "ALT_END(i)", "Z", "ALT_OPERAND_END(o)", "ALT_END(o)", "C"},
     {{"X", true, 6}, {"W", true, 9}, {"Y", true, 12}, {"Z", true, 15}, {"C", true, 18}}},
    // 0 SD_TEST 1 BREAK_BEGIN 2 BREAK_OPERAND_BEGIN 3 X 4 BREAK_OPERAND_END 5 BREAK_END 6 W
    // 7 STRICT_END(s) 8 V 9 STRICT_END 10 C
    {"only the exact STRICT_END line ends the break scan",
     {"SD_TEST", "BREAK_BEGIN(b)", "BREAK_OPERAND_BEGIN(b)", "X", "BREAK_OPERAND_END(b)",
      "BREAK_END(b)", "W", "STRICT_END(s)", "V", "STRICT_END", "C"},
     {{"X", true, 4}, {"C", true, 11}}},
    {"break operand passed over",
     {"SD_TEST", "BREAK_BEGIN(b)", "BREAK_OPERAND_BEGIN(b)", "X", "BREAK_OPERAND_END(b)",
      "BREAK_END(b)", "W", "STRICT_END(s)", "V", "STRICT_END", "C"},
     {{"W", true, 7}, {"V", true, 9}, {"C", true, 11}}},
    {"empty list", {}, {{"A", false, 0}}},
    {"parallel marker is rejected", {"SD_TEST", "PAR_BEGIN(p)", "A"}, {{"A", false, 1}}},
    // The step comes back to line 0 while still evaluating it.
    {"loop end without begin marker", {"SD_TEST", "LOOP_OPERAND_END(l)", "B"}, {{"B", false, 0}}},
    {"loop end without begin marker inside an operand attempt",
     {"SD_TEST", "ALT_OPERAND_BEGIN(a)", "LOOP_OPERAND_END(l)", "ALT_END(a)", "B"},
     {{"B", false, 0}}},
    {"loop end without begin marker restarts from the top",
     {"SD_TEST", "A", "LOOP_OPERAND_END(l)", "B"},
     {{"A", true, 2}, {"B", false, 1}}},
};

TEST_F(SequenceTest, DiagramsAcceptRecordedMessagesInTurn) {
  for (const Diagram& d : kDiagrams) {
    setLines(d.lines);
    size_t position = 0;
    int call = 0;
    for (const Step& step : d.steps) {
      EXPECT_EQ(verifySdMessage(step.message, position, lines_), step.accepted)
          << d.name << ", call " << call << " (" << step.message << ")";
      EXPECT_EQ(position, step.position) << d.name << ", call " << call;
      ++call;
    }
  }
}

TEST_F(SequenceTest, ConsumedListRejectsEveryFurtherMessage) {
  setLines({"SD_TEST", "A"});
  size_t position = 2;
  EXPECT_FALSE(verifySdMessage("A", position, lines_));
  EXPECT_EQ(position, 2u);
  position = 5;
  EXPECT_FALSE(verifySdMessage("A", position, lines_));
  EXPECT_EQ(position, 5u);
}

TEST_F(SequenceTest, MissingClosingMarkerRaisesTheVectorRangeError) {
  setLines({"SD_TEST", "OPT_BEGIN(o)", "OPT_OPERAND_BEGIN(o)", "A", "B"});
  size_t position = 0;
  std::string error = rangeError([&] { verifySdMessage("B", position, lines_); });
  EXPECT_TRUE(startsWith(error, "vector::_M_range_check")) << error;
  EXPECT_EQ(position, 5u);

  setLines({"SD_TEST", "LOOP_OPERAND_BEGIN(l)", "A"});  // neither end nor LOOP_END
  position = 0;
  error = rangeError([&] { verifySdMessage("B", position, lines_); });
  EXPECT_TRUE(startsWith(error, "vector::_M_range_check")) << error;

  setLines({"SD_TEST", "BREAK_END(b)", "A"});  // no end of an enclosing fragment
  position = 0;
  error = rangeError([&] { verifySdMessage("B", position, lines_); });
  EXPECT_TRUE(startsWith(error, "vector::_M_range_check")) << error;
}

TEST_F(SequenceTest, LoopIterationEndOnLineZeroWrapsRoundIntoTheRangeError) {
  setLines({"LOOP_OPERAND_END(l)", "A"});
  size_t position = 0;
  std::string error = rangeError([&] { verifySdMessage("A", position, lines_); });
  EXPECT_TRUE(startsWith(error, "vector::_M_range_check")) << error;
}

TEST_F(SequenceTest, MarkerWithoutSuffixRaisesTheSubstrRangeErrorWhenTheSuffixIsNeeded) {
  setLines({"SD_TEST", "ALT_OPERAND_BEGIN", "A", "ALT_END"});
  size_t position = 0;
  EXPECT_TRUE(verifySdMessage("A", position, lines_));  // the operand accepts: no suffix needed
  EXPECT_EQ(position, 3u);
  position = 0;
  std::string error = rangeError([&] { verifySdMessage("B", position, lines_); });
  EXPECT_TRUE(startsWith(error, "basic_string::substr")) << error;

  setLines({"SD_TEST", "LOOP_OPERAND_BEGIN", "A", "LOOP_OPERAND_END"});
  position = 0;
  error = rangeError([&] { verifySdMessage("A", position, lines_); });
  EXPECT_TRUE(startsWith(error, "basic_string::substr")) << error;

  // The break end scan needs no suffix.
  setLines({"SD_TEST", "BREAK_END", "A", "ALT_END", "B"});
  position = 0;
  EXPECT_TRUE(verifySdMessage("B", position, lines_));
  EXPECT_EQ(position, 5u);
}

TEST_F(SequenceTest, LoopOperandContainsLooksUpToTheOperandEnd) {
  setLines({"LOOP_OPERAND_BEGIN(l)", "A", "ALT_END(x)", "B", "LOOP_OPERAND_END(l)", "C"});
  EXPECT_TRUE(loopOperandContains("A", 0, lines_));
  EXPECT_TRUE(loopOperandContains("ALT_END(x)", 0, lines_));  // markers are plain lines here
  EXPECT_TRUE(loopOperandContains("B", 0, lines_));
  EXPECT_FALSE(loopOperandContains("C", 0, lines_));
  EXPECT_FALSE(loopOperandContains("A", 6, lines_));
  EXPECT_FALSE(loopOperandContains("A", 100, lines_));
  setLines({"LOOP_OPERAND_BEGIN(l)", "A"});
  EXPECT_FALSE(loopOperandContains("B", 0, lines_));  // end of the list comes first
  // The closing marker is built from the line's own prefix and suffix.
  setLines({"ALT_OPERAND_BEGIN(a)", "A", "ALT_OPERAND_END(a)", "B"});
  EXPECT_FALSE(loopOperandContains("B", 0, lines_));
  setLines({"NOUNDERSCORE(a)", "A", "NOUNDERSCORE(a)_OPERAND_END(a)", "B"});
  EXPECT_FALSE(loopOperandContains("B", 0, lines_));
  setLines({"LOOP_OPERAND_BEGIN", "A"});
  std::string error = rangeError([&] { loopOperandContains("A", 0, lines_); });
  EXPECT_TRUE(startsWith(error, "basic_string::substr")) << error;
}

TEST_F(SequenceTest, MillionMarkerLinesBetweenTwoMessages) {
  Lines lines;
  lines.reserve(1000003);
  lines.push_back("SD_TEST");
  lines.push_back("A");
  for (int i = 0; i < 1000000; ++i) lines.push_back("STRICT_BEGIN(s)");
  lines.push_back("B");
  setLines(lines);
  size_t position = 0;
  EXPECT_TRUE(verifySdMessage("A", position, lines_));
  EXPECT_EQ(position, 2u);
  EXPECT_TRUE(verifySdMessage("B", position, lines_));
  EXPECT_EQ(position, 1000003u);
}

// The marks of a step are cleared when it ends, by a result or by a range
// error, so the next call, on this diagram or a shorter one, starts clean.
TEST_F(SequenceTest, MarksDoNotOutliveTheirStep) {
  setLines({"SD_TEST", "LOOP_BEGIN(l)", "LOOP_OPERAND_BEGIN(l)", "A", "LOOP_OPERAND_END(l)",
            "LOOP_END(l)", "B"});
  for (int round = 0; round < 3; ++round) {
    size_t position = 0;
    EXPECT_TRUE(verifySdMessage("A", position, lines_));
    EXPECT_EQ(position, 4u);
    EXPECT_TRUE(verifySdMessage("A", position, lines_));  // back round the loop
    EXPECT_EQ(position, 4u);
    EXPECT_TRUE(verifySdMessage("B", position, lines_));
    EXPECT_EQ(position, 7u);
  }
  setLines({"SD_TEST", "OPT_BEGIN(o)", "OPT_OPERAND_BEGIN(o)", "A", "B"});
  size_t position = 0;
  EXPECT_FALSE(rangeError([&] { verifySdMessage("B", position, lines_); }).empty());
  setLines({"SD_TEST", "A"});
  position = 0;
  EXPECT_TRUE(verifySdMessage("A", position, lines_));
  EXPECT_EQ(position, 2u);
  const SequenceLines other{"X"};
  position = 0;
  EXPECT_TRUE(verifySdMessage("X", position, other));
  EXPECT_EQ(position, 1u);
}

// A hundred thousand messages on a diagram of a million lines: each step
// visits only the lines it passes.
TEST_F(SequenceTest, ManyMessagesOnALongDiagram) {
  Lines lines;
  lines.reserve(1000000);
  lines.push_back("SD_TEST");
  for (int i = 0; lines.size() < 1000000; ++i) {
    for (int k = 0; k < 8; ++k) lines.push_back("STRICT_BEGIN(s)");
    lines.push_back("m" + std::to_string(i));
  }
  setLines(lines);
  size_t position = 0;
  int accepted = 0;
  for (int i = 0; i < 100000; ++i) {
    if (verifySdMessage("m" + std::to_string(i), position, lines_)) ++accepted;
  }
  EXPECT_EQ(accepted, 100000);
  EXPECT_EQ(position, 1u + 9u * 100000u);
}

TEST_F(SequenceTest, DeeplyNestedOperandAttempts) {
  // Every break end tries its continuation first: that many pending attempts.
  Lines lines(200000, "BREAK_END(b)");
  lines.push_back("B");
  lines.push_back("ALT_END(a)");
  lines.push_back("C");
  setLines(lines);
  size_t position = 0;
  EXPECT_TRUE(verifySdMessage("B", position, lines_));
  EXPECT_EQ(position, 200001u);
  // For C the innermost continuation fails at B; its scan stops at ALT_END,
  // and C behind it is accepted.
  position = 0;
  EXPECT_TRUE(verifySdMessage("C", position, lines_));
  EXPECT_EQ(position, 200003u);
}

}  // namespace
}  // namespace qendor

namespace qendor {
namespace {

// The loop operands on the way the step took to each accepted message:
// "begin line (from 0)+" for one it went into, "-" for one it passed.
std::string loopsOnTheWay(const Lines& lines, const std::vector<std::string>& messages) {
  std::string out;
  size_t position = 0;
  for (const std::string& message : messages) {
    std::vector<LoopPass> loops;
    const bool accepted = verifySdMessage(message, position, lines, loops);
    out += message + (accepted ? ":" : "!");
    for (const LoopPass& pass : loops) {
      out += " " + std::to_string(pass.begin) + (pass.entered ? "+" : "-");
    }
    out += ";";
  }
  return out;
}

TEST(SequenceLoopPasses, TellTheLoopsOnTheWayToEachAcceptedMessage) {
  const Lines loop = {"1", "LOOP_BEGIN(l)",       "LOOP_OPERAND_BEGIN(l)",
                      "2", "LOOP_OPERAND_END(l)", "LOOP_END(l)",
                      "3"};
  // Into the loop, round it again, out of it; then a message that skips it.
  EXPECT_EQ(loopsOnTheWay(loop, {"1", "2", "2", "3"}), "1:;2: 2+;2: 2+;3: 2-;");
  EXPECT_EQ(loopsOnTheWay(loop, {"1", "3"}), "1:;3: 2-;");
  // A rejected message tells nothing.
  EXPECT_EQ(loopsOnTheWay(loop, {"1", "4"}), "1:;4!;");
  // A loop inside an alt operand the step tried and gave up is not on its way.
  const Lines alt = {"ALT_BEGIN(a)",
                     "ALT_OPERAND_BEGIN(a)",
                     "LOOP_BEGIN(l)",
                     "LOOP_OPERAND_BEGIN(l)",
                     "2",
                     "LOOP_OPERAND_END(l)",
                     "LOOP_END(l)",
                     "5",
                     "ALT_OPERAND_END(a)",
                     "ALT_OPERAND_BEGIN(a)",
                     "3",
                     "ALT_OPERAND_END(a)",
                     "ALT_END(a)"};
  EXPECT_EQ(loopsOnTheWay(alt, {"3"}), "3:;");
  EXPECT_EQ(loopsOnTheWay(alt, {"5"}), "5: 3-;");
  EXPECT_EQ(loopsOnTheWay(alt, {"2", "2", "5"}), "2: 3+;2: 3+;5: 3-;");
}

}  // namespace
}  // namespace qendor
