#include "verify/sequence_diagnosis.h"

#include <gtest/gtest.h>

#include <random>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "verify/sequence_verification.h"

namespace qendor {
namespace {

// The values the step accepts at `position`, found by trying every message
// line's text (and one that no line holds) with the step itself. The empty
// text is not tried: a record without a progress value never meets the step.
std::vector<std::string> tryEveryValue(const SequenceLines& lines, size_t position) {
  std::set<std::string> values{"no such step"};
  for (const std::string& line : lines) {
    if (!line.empty() && !isStepMarker(line)) values.insert(line);
  }
  std::vector<std::string> accepted;
  for (const std::string& value : values) {
    size_t at = position;
    try {
      if (verifySdMessage(value, at, lines)) accepted.push_back(value);
    } catch (const std::out_of_range&) {
    }
  }
  return accepted;
}

void expectSameAtEveryPosition(const SequenceLines& lines) {
  for (size_t position = 0; position <= lines.size(); ++position) {
    EXPECT_EQ(acceptableMessages(lines, position), tryEveryValue(lines, position))
        << "at " << position << " of " << ::testing::PrintToString(lines);
  }
}

const SequenceLines kDiagrams[] = {
    {"1", "2", "3"},
    {"STRICT_BEGIN(s)", "1", "2", "STRICT_END(s)", "3"},
    {"1", "ALT_BEGIN(a)", "ALT_OPERAND_BEGIN(a)", "2", "ALT_OPERAND_END(a)", "ALT_OPERAND_BEGIN(a)",
     "3", "ALT_OPERAND_END(a)", "ALT_END(a)", "4"},
    {"ALT_BEGIN(a)", "ALT_OPERAND_BEGIN(a)", "1", "ALT_OPERAND_END(a)", "ALT_OPERAND_BEGIN(a)", "2",
     "3", "ALT_OPERAND_END(a)", "ALT_OPERAND_BEGIN(a)", "4", "ALT_OPERAND_END(a)", "ALT_END(a)",
     "5"},
    {"1", "OPT_BEGIN(o)", "OPT_OPERAND_BEGIN(o)", "2", "OPT_OPERAND_END(o)", "OPT_END(o)", "3"},
    {"1", "LOOP_BEGIN(l)", "LOOP_OPERAND_BEGIN(l)", "2", "3", "LOOP_OPERAND_END(l)", "LOOP_END(l)",
     "4"},
    {"1", "BREAK_BEGIN(b)", "BREAK_OPERAND_BEGIN(b)", "2", "BREAK_OPERAND_END(b)", "BREAK_END(b)",
     "3"},
    {"STRICT_BEGIN", "1", "ALT_BEGIN(a)", "ALT_OPERAND_BEGIN(a)", "BREAK_BEGIN(b)",
     "BREAK_OPERAND_BEGIN(b)", "2", "BREAK_OPERAND_END(b)", "BREAK_END(b)", "3",
     "ALT_OPERAND_END(a)", "ALT_OPERAND_BEGIN(a)", "4", "ALT_OPERAND_END(a)", "ALT_END(a)",
     "STRICT_END", "5"},
    {"CONSIDER_BEGIN(c)", "CONSIDER_OPERAND_BEGIN(c)", "1", "2", "CONSIDER_OPERAND_END(c)",
     "CONSIDER_END(c)", "3"},
    {"1", "LOOP_BEGIN(l)", "LOOP_OPERAND_BEGIN(l)", "OPT_BEGIN(o)", "OPT_OPERAND_BEGIN(o)", "2",
     "OPT_OPERAND_END(o)", "OPT_END(o)", "3", "LOOP_OPERAND_END(l)", "LOOP_END(l)", "4"},
    // Malformed: a loop without its end, a marker without a suffix.
    {"1", "LOOP_BEGIN(l)", "LOOP_OPERAND_BEGIN(l)", "2", "LOOP_OPERAND_END(l)"},
    {"ALT_OPERAND_BEGIN", "1", "2"},
    {},
    // An empty line the step can stand on.
    {"STRICT_BEGIN(strict_1)", "1", "", "2", "3", "STRICT_END(strict_1)", "4", "5", "6"},
    {"1", "", "OPT_BEGIN(o)", "OPT_OPERAND_BEGIN(o)", "", "2", "OPT_OPERAND_END(o)", "OPT_END(o)",
     "3"},
};

TEST(AcceptableMessages, AgreeWithTryingEveryValueOnEachOperator) {
  for (const SequenceLines& lines : kDiagrams) expectSameAtEveryPosition(lines);
}

// Diagrams built at random from the operators, nested up to three deep, with
// repeated step values and empty lines.
void randomBody(std::mt19937& random, int depth, int& step, SequenceLines& lines) {
  const int parts = 1 + static_cast<int>(random() % 3);
  for (int part = 0; part < parts; ++part) {
    if (depth >= 3 || random() % 100 < 55) {
      if (random() % 12 == 0) lines.emplace_back();  // an empty line before the step
      lines.push_back(std::to_string(step));
      step += 1 + static_cast<int>(random() % 3 == 0);
      if (random() % 10 == 0) step -= 2;  // a value met again
      continue;
    }
    static const char* const kOperators[] = {"ALT", "OPT", "LOOP", "BREAK", "CONSIDER"};
    const std::string op = kOperators[random() % 5];
    const std::string id = "(f" + std::to_string(random() % 3) + ")";
    lines.push_back(op + "_BEGIN" + id);
    const int operands = op == "ALT" ? 1 + static_cast<int>(random() % 3) : 1;
    for (int operand = 0; operand < operands; ++operand) {
      lines.push_back(op + "_OPERAND_BEGIN" + id);
      randomBody(random, depth + 1, step, lines);
      lines.push_back(op + "_OPERAND_END" + id);
    }
    lines.push_back(op + "_END" + id);
  }
}

TEST(AcceptableMessages, AgreeWithTryingEveryValueOnRandomDiagrams) {
  std::mt19937 random(20261124);
  for (int round = 0; round < 400; ++round) {
    SequenceLines lines;
    int step = 1;
    randomBody(random, 0, step, lines);
    expectSameAtEveryPosition(lines);
  }
}

TEST(AcceptableMessages, AnEmptyLineAcceptsNothing) {
  const SequenceLines lines = {"STRICT_BEGIN(strict_1)", "1", "",  "2", "3",
                               "STRICT_END(strict_1)",   "4", "5", "6"};
  EXPECT_EQ(acceptableMessages(lines, 2), std::vector<std::string>{});
}

TEST(AcceptableMessages, MarkerTextsAreNoStepValues) {
  const SequenceLines lines = {"LOOP_BEGIN(l)",       "LOOP_OPERAND_BEGIN(l)", "2",
                               "LOOP_OPERAND_END(l)", "LOOP_END(l)",           "3"};
  EXPECT_EQ(acceptableMessages(lines, 3), (std::vector<std::string>{"2", "3"}));
}

std::string dumpOutline(const SequenceLines& lines) {
  std::string out;
  for (const OutlineItem& item : sequenceOutline(lines)) {
    switch (item.kind) {
      case OutlineItem::Kind::kStep:
        out += lines[item.line] + " ";
        break;
      case OutlineItem::Kind::kFragmentBegin:
        out += std::string(item.operatorName) + "[" + std::string(item.id) + " ";
        break;
      case OutlineItem::Kind::kOperandBegin:
        out += "( ";
        break;
      case OutlineItem::Kind::kOperandEnd:
        out += ") ";
        break;
      case OutlineItem::Kind::kFragmentEnd:
        out += "] ";
        break;
    }
  }
  return out;
}

TEST(SequenceOutline, FragmentsOperandsAndSteps) {
  EXPECT_EQ(dumpOutline(kDiagrams[3]), "ALT[a ( 1 ) ( 2 3 ) ( 4 ) ] 5 ");
  EXPECT_EQ(dumpOutline(kDiagrams[7]), "STRICT[ 1 ALT[a ( BREAK[b ( 2 ) ] 3 ) ( 4 ) ] ] 5 ");
  EXPECT_EQ(dumpOutline(kDiagrams[1]), "STRICT[s 1 2 ] 3 ");
  EXPECT_EQ(dumpOutline({"SD_TEST", "1"}), "1 ");
}

TEST(SequenceOutline, UnpairedAndCrossingMarkersAreLeftOut) {
  // A begin without its end, an end without its begin, two fragments that
  // cross: none of them opens, the steps stay.
  EXPECT_EQ(dumpOutline({"OPT_BEGIN(o)", "1", "ALT_END(a)", "2"}), "1 2 ");
  EXPECT_EQ(dumpOutline({"ALT_BEGIN(a)", "OPT_BEGIN(o)", "1", "ALT_END(a)", "OPT_END(o)"}),
            "ALT[a 1 ] ");
  // The same operator with another id does not close it.
  EXPECT_EQ(dumpOutline({"LOOP_BEGIN(x)", "1", "LOOP_END(y)"}), "1 ");
  // A line that only looks like a marker is a step.
  EXPECT_EQ(dumpOutline({"ALT_x", "ALTITUDE"}), "ALT_x ALTITUDE ");
}

TEST(SequenceOutline, NestingDeeperThanTheLimitIsFlattened) {
  SequenceLines lines;
  for (size_t i = 0; i < kMaxOutlineDepth + 5; ++i)
    lines.push_back("STRICT_BEGIN(s" + std::to_string(i) + ")");
  lines.push_back("1");
  for (size_t i = kMaxOutlineDepth + 5; i-- > 0;)
    lines.push_back("STRICT_END(s" + std::to_string(i) + ")");
  size_t deepest = 0, depth = 0;
  for (const OutlineItem& item : sequenceOutline(lines)) {
    if (item.kind == OutlineItem::Kind::kFragmentBegin) deepest = std::max(deepest, ++depth);
    if (item.kind == OutlineItem::Kind::kFragmentEnd) --depth;
  }
  EXPECT_EQ(deepest, kMaxOutlineDepth);
  EXPECT_EQ(depth, 0u);
}

TEST(SequenceOutline, ManyUnclosedMarkersStayCheap) {
  SequenceLines lines(200000, "STRICT_BEGIN(s)");
  lines.insert(lines.end(), 200000, "ALT_END(a)");
  lines.push_back("7");
  EXPECT_EQ(dumpOutline(lines), "7 ");
}

}  // namespace
}  // namespace qendor
