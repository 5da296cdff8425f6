#include "input/test_case_splitter.h"

#include <algorithm>
#include <string>
#include <utility>

#include "base/paths.h"
#include "base/text.h"
#include "input/assertion_macro.h"

namespace qendor {

namespace {

bool messageContains(std::string_view statement, std::string_view phrase) {
  std::string first, second, message;
  if (!parseAssertionMacro(statement, first, second, message)) return false;
  return contains(message, phrase);
}

}  // namespace

// The message is a piece of the statement, so a statement without the phrase
// cannot hold it in its message: most records are settled without parsing.
bool isTestCaseStart(std::string_view statement) {
  constexpr std::string_view phrase = "Starting test case";
  return contains(statement, phrase) && messageContains(statement, phrase);
}

bool isTestCaseEnd(std::string_view statement) {
  constexpr std::string_view phrase = "Finished test case";
  return contains(statement, phrase) && messageContains(statement, phrase);
}

RecordBoundary recordBoundary(std::string_view statement) {
  if (!contains(statement, " test case")) return RecordBoundary{};
  return RecordBoundary{isTestCaseStart(statement), isTestCaseEnd(statement)};
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
  if (contextWanted) {
    for (const auto& [number, name] : settings.testCaseNames) {
      if (contextOf(name) == settings.testContextName) wanted.numbers_.push_back(number);
    }
  }
  return wanted;
}

bool WantedTestCases::wants(int32_t testCase) const {
  return all_ || std::binary_search(numbers_.begin(), numbers_.end(), testCase);
}

TestCaseSplitter::TestCaseSplitter(RunTable<std::unique_ptr<AssertionList>>& lists,
                                   WantedTestCases wanted)
    : lists_(lists), wanted_(std::move(wanted)) {}

TestCaseSplitter::~TestCaseSplitter() {
  for (auto& entry : lists_) {
    if (entry.second) entry.second->shrink_to_fit();
  }
}

AssertionRecord* TestCaseSplitter::next(RecordBoundary boundary, int32_t testCase) {
  if (closeNext_) open_ = nullptr;
  if (boundary.starts) {
    open_ = nullptr;
    if (wanted_.wants(testCase)) {
      auto list = std::make_unique<AssertionList>();
      open_ = list.get();
      lists_[testCase] = std::move(list);
    }
  }
  closeNext_ = boundary.ends;
  return open_ ? &open_->emplace_back() : nullptr;
}

}  // namespace qendor
