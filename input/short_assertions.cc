#include "input/short_assertions.h"

#include <cstdint>
#include <memory>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "base/line_reader.h"
#include "base/paths.h"
#include "base/run_settings.h"
#include "base/text.h"
#include "input/result_file.h"

namespace qendor {

namespace {

// The collected statement, or null. find() rather than the inserting index: a
// lookup must not add entries.
const std::string* findCollectedAssertion(int32_t fileNumber, int32_t lineNumber) {
  const auto& files = run().collectedAssertions;
  auto file = files.find(fileNumber);
  if (file == files.end() || !file->second) return nullptr;
  auto found = file->second->find(lineNumber);
  if (found == file->second->end()) return nullptr;
  return &found->second;
}

}  // namespace

bool lookupCollectedAssertion(int32_t fileNumber, int32_t lineNumber, std::string& statement) {
  const std::string* found = findCollectedAssertion(fileNumber, lineNumber);
  if (!found) return false;
  statement = *found;
  return true;
}

namespace {

// The collected statements in a form that a record finds in two steps, each
// with whether it starts or finishes a test case, worked out once per
// statement rather than once per record.
class StatementIndex {
 public:
  struct Statement {
    const std::string* text = nullptr;
    bool starts = false;
    bool ends = false;
  };

  StatementIndex() {
    for (const auto& [fileNumber, statements] : run().collectedAssertions) {
      if (!statements || statements->empty()) continue;
      File& file = files_[fileNumber];
      const int32_t first = statements->begin()->first;
      const int32_t last = statements->rbegin()->first;
      // Line numbers are dense in real files; a file with a few far-apart
      // numbers (or negative ones) keeps its map instead.
      const int64_t span = int64_t{last} - first + 1;
      if (first >= 0 && span <= int64_t{4} * static_cast<int64_t>(statements->size()) + 1024) {
        file.first = first;
        file.byLine.resize(static_cast<size_t>(span));
        for (const auto& [line, text] : *statements) {
          file.byLine[static_cast<size_t>(line - first)] = describe(text);
        }
      } else {
        for (const auto& [line, text] : *statements) file.sparse.emplace(line, describe(text));
      }
    }
  }

  // The statement under the two numbers; null when either is absent.
  const Statement* find(int32_t fileNumber, int32_t lineNumber) const {
    auto file = files_.find(fileNumber);
    if (file == files_.end()) return nullptr;
    const File& f = file->second;
    if (!f.byLine.empty() || f.sparse.empty()) {
      const int64_t at = int64_t{lineNumber} - f.first;
      if (at < 0 || at >= static_cast<int64_t>(f.byLine.size())) return nullptr;
      const Statement& statement = f.byLine[static_cast<size_t>(at)];
      return statement.text ? &statement : nullptr;
    }
    auto found = f.sparse.find(lineNumber);
    return found == f.sparse.end() ? nullptr : &found->second;
  }

 private:
  struct File {
    int32_t first = 0;
    std::vector<Statement> byLine;  // index: line number less `first`
    std::unordered_map<int32_t, Statement> sparse;
  };

  static Statement describe(const std::string& text) {
    return Statement{&text, isTestCaseStart(text), isTestCaseEnd(text)};
  }

  std::unordered_map<int32_t, File> files_;
};

}  // namespace

int readShortAssertions() {
  LineReader reader(normalisePathCopy(run().resultFile));
  if (!reader.isOpen()) return 0;
  const WantedTestCases wanted = WantedTestCases::ofRun();
  const StatementIndex statements;
  // Null while no test case is open, or while one is open whose records no
  // report reads.
  AssertionList* currentTestCase = nullptr;
  std::string_view line;
  while (reader.next(line)) {
    if (!startsWith(line, "ASSERTION=")) continue;
    std::string_view rest = line;
    cutField(rest, "=");
    std::string_view fileField = cutField(rest, ",");
    std::string_view lineField = cutField(rest, ",");
    std::string_view result = cutField(rest, " ");
    const StatementIndex::Statement* found =
        statements.find(readInt32(fileField), readInt32(lineField));
    if (!found) continue;
    const std::string& statement = *found->text;
    int32_t resultValue = readInt32(result);
    if (found->starts) {
      currentTestCase = nullptr;
      if (wanted.wants(resultValue)) {
        auto list = std::make_unique<AssertionList>();
        currentTestCase = list.get();
        run().testCaseAssertions[resultValue] = std::move(list);
      }
    }
    if (currentTestCase) {
      AssertionRecord& record = currentTestCase->emplace_back();
      record.status = resultValue != 0 ? "PASSED" : "FAILED";
      record.fileNumber.assign(fileField);
      record.lineNumber.assign(lineField);
      record.assertionText = statement;
    }
    if (found->ends) currentTestCase = nullptr;
  }
  trimAssertionLists();
  return 1;
}

}  // namespace qendor
