#include "input/case_splitter.h"

#include <algorithm>
#include <utility>

#include "base/text.h"
#include "input/assertion_macro.h"

namespace qendor {

namespace {

constexpr std::string_view kStartPhrase = "Starting test case";
constexpr std::string_view kFinishPhrase = "Finished test case";

// The message the macro parser finds in `statement`; false when it finds
// no assertion.
bool messageOf(std::string_view statement, std::string_view& message) {
  std::string_view first, second;
  return parseAssertionMacro(statement, first, second, message);
}

}  // namespace

// Both phrases end in " test case", and the message is a piece of the
// statement: a statement without it, as most are, is settled without parsing.
RecordBoundary recordBoundary(std::string_view statement) {
  std::string_view message;
  if (!contains(statement, " test case") || !messageOf(statement, message)) return {};
  return RecordBoundary{contains(message, kStartPhrase), contains(message, kFinishPhrase)};
}

WantedTestCases WantedTestCases::of(const RunSettings& settings) {
  WantedTestCases wanted;
  if (settings.testCaseName.empty() && settings.testContextName.empty()) return wanted;
  wanted.all_ = false;
  bool contextWanted = settings.testCaseName.empty();
  if (!contextWanted) {
    // The driver reports the first entry of that name only.
    for (const auto& [number, name] : settings.testCaseNames) {
      if (name != settings.testCaseName) continue;
      if (number < 1) {
        contextWanted = true;  // a number below 1 selects the context document
      } else {
        wanted.numbers_.push_back(number);
      }
      break;
    }
  }
  if (contextWanted) wanted.numbers_ = contextMembers(settings, settings.testContextName);
  return wanted;
}

bool WantedTestCases::wants(int32_t testCase) const {
  return all_ || std::binary_search(numbers_.begin(), numbers_.end(), testCase);
}

TestCaseSplitter::TestCaseSplitter(TestCaseLogs& logs, WantedTestCases wanted)
    : logs_(logs), wanted_(std::move(wanted)) {}

TestCaseSplitter::~TestCaseSplitter() {
  for (auto& entry : logs_) entry.second.records.shrink_to_fit();
}

AssertionRecord* TestCaseSplitter::next(RecordBoundary boundary, int32_t testCase,
                                        bool sequenceDiagram) {
  if (closeNext_) open_ = nullptr;
  if (boundary.starts) {
    open_ = nullptr;
    if (wanted_.wants(testCase)) {
      open_ = &logs_[testCase];
      *open_ = TestCaseLog();
    }
  }
  closeNext_ = boundary.ends;
  if (!open_) return nullptr;
  if (sequenceDiagram) open_->sequenceDiagram = true;
  return &open_->records.emplace_back();
}

}  // namespace qendor
