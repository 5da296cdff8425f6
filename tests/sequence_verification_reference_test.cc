// The sequence step against the operator rules written as plain recursion,
// on many small random diagrams.
#include "verify/sequence_verification.h"

#include <gtest/gtest.h>

#include <random>
#include <stdexcept>
#include <string>
#include <vector>

#include "base/text.h"

namespace qendor {
namespace {

using Lines = std::vector<std::string>;

// The rules written as recursion, as a check of the loop form on many small
// diagrams. A call deeper than the list is long must have come back to a
// position it is still evaluating.
struct TooDeep {};

bool referenceContains(const std::string& message, size_t b, const Lines& lines) {
  if (b >= lines.size()) return false;
  const std::string& line = lines[b];
  std::string suffix = line.substr(line.find('('));
  std::string closing = line.substr(0, line.find('_')) + "_OPERAND_END" + suffix;
  for (size_t i = b + 1;; ++i) {
    if (i >= lines.size() || lines[i] == closing) return false;
    if (lines[i] == message) return true;
  }
}

bool reference(const std::string& message, size_t& position, const Lines& lines, size_t depth) {
  if (depth > lines.size()) throw TooDeep{};
  auto again = [&] { return reference(message, position, lines, depth + 1); };
  if (position >= lines.size()) return false;
  std::string line = lines.at(position);
  if (line == message) {
    ++position;
    return true;
  }
  for (const char* marker :
       {"SD_TEST", "STRICT_BEGIN", "STRICT_END", "ALT_BEGIN", "ALT_OPERAND_END", "ALT_END",
        "OPT_BEGIN", "OPT_OPERAND_END", "OPT_END", "LOOP_BEGIN", "LOOP_END", "BREAK_BEGIN",
        "BREAK_OPERAND_END", "CONSIDER_BEGIN", "CONSIDER_OPERAND_BEGIN", "CONSIDER_OPERAND_END",
        "CONSIDER_END"}) {
    if (startsWith(line, marker)) {
      ++position;
      return again();
    }
  }
  auto suffix = [&] { return line.substr(line.find('(')); };
  if (startsWith(line, "ALT_OPERAND_BEGIN")) {
    ++position;
    if (again()) return true;
    std::string s = suffix();
    while (lines.at(position) != "ALT_OPERAND_BEGIN" + s && lines.at(position) != "ALT_END" + s)
      ++position;
    return again();
  }
  if (startsWith(line, "OPT_OPERAND_BEGIN")) {
    ++position;
    if (again()) return true;
    std::string s = suffix();
    while (lines.at(position) != "OPT_END" + s) ++position;
    return again();
  }
  if (startsWith(line, "LOOP_OPERAND_BEGIN")) {
    size_t b = position;
    ++position;
    if (referenceContains(message, b, lines)) return again();
    std::string s = suffix();
    position = b + 1;
    while (lines.at(position) != "LOOP_END" + s) ++position;
    return again();
  }
  if (startsWith(line, "LOOP_OPERAND_END")) {
    std::string s = suffix();
    --position;
    while (lines.at(position) != "LOOP_OPERAND_BEGIN" + s && position != 0) --position;
    return again();
  }
  if (startsWith(line, "BREAK_OPERAND_BEGIN")) {
    ++position;
    if (again()) return true;
    std::string s = suffix();
    while (lines.at(position) != "BREAK_END" + s) ++position;
    return again();
  }
  if (startsWith(line, "BREAK_END")) {
    ++position;
    if (again()) return true;
    int alt = 0, opt = 0, loop = 0, consider = 0, brk = 0;
    for (;; ++position) {
      const std::string& l = lines.at(position);
      if ((startsWith(l, "ALT_END") && alt == 0) || (startsWith(l, "OPT_END") && opt == 0) ||
          (startsWith(l, "LOOP_END") && loop == 0) ||
          (startsWith(l, "CONSIDER_END") && consider == 0) ||
          (startsWith(l, "BREAK_END") && brk == 0) || l == "STRICT_END")
        break;
      alt += startsWith(l, "ALT_BEGIN") - startsWith(l, "ALT_END");
      opt += startsWith(l, "OPT_BEGIN") - startsWith(l, "OPT_END");
      loop += startsWith(l, "LOOP_BEGIN") - startsWith(l, "LOOP_END");
      consider += startsWith(l, "CONSIDER_BEGIN") - startsWith(l, "CONSIDER_END");
      brk += startsWith(l, "BREAK_BEGIN") - startsWith(l, "BREAK_END");
    }
    return again();
  }
  return false;
}

// "true 4", "false 3", "error <what>" or "endless".
template <class Call>
std::string outcome(Call call, const size_t& position) {
  try {
    bool accepted = call();
    return (accepted ? "true " : "false ") + std::to_string(position);
  } catch (const std::out_of_range& e) {
    std::string what = e.what();
    return "error " + what.substr(0, what.find(':'));
  } catch (const TooDeep&) {
    return "endless";
  }
}

TEST(SequenceVerificationReference, LoopFormAgreesWithTheRecursiveRulesOnRandomDiagrams) {
  const char* pool[] = {
      "SD_TEST",
      "A",
      "B",
      "C",
      "ALT_BEGIN(a)",
      "ALT_OPERAND_BEGIN(a)",
      "ALT_OPERAND_END(a)",
      "ALT_END(a)",
      "OPT_OPERAND_BEGIN(o)",
      "OPT_END(o)",
      "LOOP_BEGIN(l)",
      "LOOP_OPERAND_BEGIN(l)",
      "LOOP_OPERAND_END(l)",
      "LOOP_END(l)",
      "BREAK_OPERAND_BEGIN(b)",
      "BREAK_END(b)",
      "BREAK_END",
      "STRICT_END",
      "STRICT_END(s)",
      "CONSIDER_END(c)",
      "ALT_OPERAND_BEGIN",
      "LOOP_OPERAND_END",
      "PAR_BEGIN(p)",
      "LOOP_OPERAND_BEGIN(m)",
  };
  const char* messages[] = {"A", "B", "C"};
  std::mt19937 random(12345);
  int endless = 0, errors = 0, accepted = 0;
  for (int round = 0; round < 30000; ++round) {
    Lines lines(random() % 13);
    for (std::string& line : lines) line = pool[random() % (sizeof pool / sizeof *pool)];
    size_t position = 0, expectedPosition = 0;
    for (int call = 0; call < 5; ++call) {
      std::string message = messages[random() % 3];
      std::string expected =
          outcome([&] { return reference(message, expectedPosition, lines, 0); }, expectedPosition);
      std::string actual =
          outcome([&] { return verifySdMessage(message, position, lines); }, position);
      if (expected == "endless") {
        ++endless;
        EXPECT_EQ(actual.substr(0, 6), "false ") << round;
        break;
      }
      ASSERT_EQ(actual, expected) << "round " << round << " call " << call;
      if (expected.substr(0, 4) != "true") {
        errors += expected[0] == 'e';
        break;
      }
      ++accepted;
    }
  }
  // The sample reaches every kind of outcome.
  EXPECT_GT(endless, 50);
  EXPECT_GT(errors, 1000);
  EXPECT_GT(accepted, 1000);
}

}  // namespace
}  // namespace qendor
