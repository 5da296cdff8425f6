#include "input/short_assertions.h"

#include <string_view>

#include "base/text.h"

namespace qendor {

namespace {

StatementIndex::Statement indexed(const std::string& text) {
  return StatementIndex::Statement{&text, recordBoundary(text), isSequenceDiagramStatement(text)};
}

}  // namespace

StatementIndex::StatementIndex(const RunTable<LineStatements>& collected) {
  for (const auto& [fileNumber, statements] : collected) {
    if (statements.empty()) continue;
    File& file = files_[fileNumber];
    const int32_t first = statements.begin()->first;
    const int32_t last = statements.rbegin()->first;
    // Line numbers are dense in real files; a file with a few far-apart
    // numbers (or negative ones) keeps a hash map instead.
    const int64_t span = int64_t{last} - first + 1;
    if (first >= 0 && span <= int64_t{4} * static_cast<int64_t>(statements.size()) + 1024) {
      file.first = first;
      file.byLine.resize(static_cast<size_t>(span));
      for (const auto& [line, text] : statements) {
        file.byLine[static_cast<size_t>(line - first)] = indexed(text);
      }
    } else {
      for (const auto& [line, text] : statements) file.sparse.emplace(line, indexed(text));
    }
  }
}

const StatementIndex::Statement* StatementIndex::find(int32_t fileNumber,
                                                      int32_t lineNumber) const {
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

const StatementIndex::Statement* lookupCollectedAssertion(const StatementIndex& statements,
                                                          int32_t fileNumber, int32_t lineNumber) {
  return statements.find(fileNumber, lineNumber);
}

void parseShortAssertions(LineReader& lines, const StatementIndex& statements,
                          TestCaseSplitter& splitter) {
  std::string_view line;
  while (lines.next(line)) {
    if (!startsWith(line, "ASSERTION=")) continue;
    std::string_view rest = line;
    cutField(rest, "=");
    std::string_view fileField = cutField(rest, ",");
    std::string_view lineField = cutField(rest, ",");
    const StatementIndex::Statement* found =
        lookupCollectedAssertion(statements, readInt32(fileField), readInt32(lineField));
    if (!found) continue;  // neither opens nor closes a test case
    // While no test case is collected, only a boundary counts.
    if (!splitter.collecting() && !found->boundary.starts && !found->boundary.ends) continue;
    std::string_view result = cutField(rest, " ");
    const int32_t resultValue = readInt32(result);
    AssertionRecord* record = splitter.next(found->boundary, resultValue, found->sequenceDiagram);
    if (!record) continue;
    record->status = resultValue != 0 ? Status::kPassed : Status::kFailed;
    record->fileNumber.assign(fileField);
    record->lineNumber.assign(lineField);
    record->assertionText = *found->text;
  }
}

TestCaseLogs readShortAssertions(LineReader& lines, const StatementIndex& statements,
                                 const WantedTestCases& wanted) {
  TestCaseLogs logs;
  {
    TestCaseSplitter splitter(logs, wanted);
    parseShortAssertions(lines, statements, splitter);
  }
  return logs;
}

}  // namespace qendor
