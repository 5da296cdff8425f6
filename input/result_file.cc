#include "input/result_file.h"

#include <algorithm>
#include <cstdio>
#include <memory>
#include <string>
#include <unordered_map>

#include "base/line_reader.h"
#include "base/paths.h"
#include "base/run_settings.h"
#include "base/text.h"
#include "input/assertion_collection.h"
#include "input/assertion_macro.h"
#include "input/record_path.h"
#include "input/short_assertions.h"

namespace qendor {

namespace {

constexpr std::string_view kShortMarker = "ASSERTION=";
constexpr std::string_view kFullMarker = "FULLASSERTION=";
constexpr std::string_view kStatementMarker = "-----ZKR_ASSERT";
// The statement text keeps the marker from its sixth character on.
constexpr size_t kMarkerDropped = 5;

enum class RecordForm { kNone, kShort, kFull };

// The form of the first record line; the scan stops there.
RecordForm detectRecordForm(LineReader& reader) {
  std::string_view line;
  while (reader.next(line)) {
    if (startsWith(line, kShortMarker)) return RecordForm::kShort;
    if (startsWith(line, kFullMarker)) return RecordForm::kFull;
  }
  return RecordForm::kNone;
}

bool messageContains(std::string_view statement, std::string_view phrase) {
  std::string first, second, message;
  if (!parseAssertionMacro(statement, first, second, message)) return false;
  return contains(message, phrase);
}

// Cuts the detail text before the statement marker and erases it with the
// marker's first five characters. Without the marker the detail text is the
// whole rest and four characters are erased (the not-found position plus five
// wraps round to four).
std::string_view cutDetailText(std::string_view& rest) {
  size_t at = rest.find(kStatementMarker);
  std::string_view detail = rest.substr(0, at);
  size_t erased = at == std::string_view::npos ? kMarkerDropped - 1 : at + kMarkerDropped;
  rest.remove_prefix(erased < rest.size() ? erased : rest.size());
  return detail;
}

// The FILE number of each record path, computed once per distinct path.
class FileNumberCache {
 public:
  const std::string& lookup(std::string_view recordPath) {
    key_.assign(recordPath);
    auto found = numbers_.find(key_);
    if (found != numbers_.end()) return found->second;
    std::string number = matchSourceFile(normaliseRecordPath(recordPath));
    // A log of ever new paths must not double the memory: start afresh.
    keyBytes_ += key_.size();
    if (keyBytes_ > kMaxKeyBytes) {
      numbers_.clear();
      keyBytes_ = key_.size();
    }
    return numbers_.emplace(key_, std::move(number)).first->second;
  }

 private:
  static constexpr size_t kMaxKeyBytes = 16 << 20;
  std::string key_;  // reused so that a hit allocates nothing
  size_t keyBytes_ = 0;
  std::unordered_map<std::string, std::string> numbers_;
};

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

WantedTestCases WantedTestCases::ofRun() {
  const RunSettings& r = run();
  WantedTestCases wanted;
  if (r.testCaseName.empty() && r.testContextName.empty()) return wanted;
  wanted.all_ = false;
  bool contextWanted = r.testCaseName.empty();
  if (!contextWanted) {
    // The driver reports the first entry of that name only.
    for (const auto& [number, name] : r.testCaseNames) {
      if (name != r.testCaseName) continue;
      if (number < 1) {
        contextWanted = true;  // a number below 1 selects the context document
      } else {
        wanted.numbers_.push_back(number);
      }
      break;
    }
  }
  if (contextWanted) {
    for (const auto& [number, name] : r.testCaseNames) {
      if (contextOf(name) == r.testContextName) wanted.numbers_.push_back(number);
    }
  }
  return wanted;
}

bool WantedTestCases::wants(int32_t testCase) const {
  return all_ || std::binary_search(numbers_.begin(), numbers_.end(), testCase);
}

void trimAssertionLists() {
  for (auto& entry : run().testCaseAssertions) {
    if (entry.second) entry.second->shrink_to_fit();
  }
}

int readFullAssertions() {
  LineReader reader(normalisePathCopy(run().resultFile));
  if (!reader.isOpen()) return 0;
  FileNumberCache fileNumbers;
  const WantedTestCases wanted = WantedTestCases::ofRun();
  // Null while no test case is open, or while one is open whose records no
  // report reads.
  AssertionList* currentTestCase = nullptr;
  std::string_view line;
  while (reader.next(line)) {
    if (!startsWith(line, kFullMarker)) continue;
    std::string_view rest = line;
    cutField(rest, "=");
    std::string_view path = cutField(rest, ",");
    std::string_view lineNumber = cutField(rest, ",");
    std::string_view result = cutField(rest, ",");
    int32_t testCaseNumber = readInt32(result);
    std::string_view detailText = cutDetailText(rest);
    std::string_view assertionText = rest;

    if (isTestCaseStart(assertionText)) {
      currentTestCase = nullptr;
      if (wanted.wants(testCaseNumber)) {
        auto list = std::make_unique<AssertionList>();
        currentTestCase = list.get();
        run().testCaseAssertions[testCaseNumber] = std::move(list);
      }
    }
    if (currentTestCase) {
      AssertionRecord& record = currentTestCase->emplace_back();
      record.assertionText.assign(assertionText);
      record.status = result == "0" ? "FAILED" : "PASSED";
      record.fileNumber = fileNumbers.lookup(path);
      record.lineNumber.assign(lineNumber);
      record.detailText.assign(detailText);
    }
    if (isTestCaseEnd(assertionText)) currentTestCase = nullptr;
  }
  trimAssertionLists();
  return 1;
}

int readResultFile() {
  RecordForm form;
  {
    LineReader reader(normalisePathCopy(run().resultFile));
    if (!reader.isOpen()) return 0;
    form = detectRecordForm(reader);
  }
  if (form == RecordForm::kNone) return 0;
  int read;
  if (form == RecordForm::kShort) {
    if (!collectAssertions()) {
      std::printf(
          "Assertions could not be collected correctly from files specified in infofile.\n");
    }
    read = readShortAssertions();
  } else {
    read = readFullAssertions();
  }
  if (read == 0) {
    const char* name = run().resultFile ? run().resultFile : "(null)";
    std::printf("resultfile <%s> could not be read correctly.\n", name);
  }
  return 1;
}

}  // namespace qendor
