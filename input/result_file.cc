#include "input/result_file.h"

#include <cstdio>
#include <string>
#include <unordered_map>
#include <utility>

#include "base/line_reader.h"
#include "base/paths.h"
#include "base/run_settings.h"
#include "base/text.h"
#include "input/assertion_collection.h"
#include "input/record_path.h"
#include "input/short_assertions.h"

namespace qendor {

namespace {

constexpr std::string_view kShortMarker = "ASSERTION=";
constexpr std::string_view kFullMarker = "FULLASSERTION=";
constexpr std::string_view kStatementMarker = "-----ZKR_ASSERT";
// The statement text keeps the marker from its sixth character on.
constexpr size_t kMarkerDropped = 5;

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
  explicit FileNumberCache(const RunTable<std::string>& sourceFiles) : sourceFiles_(sourceFiles) {}

  const std::string& lookup(std::string_view recordPath) {
    key_.assign(recordPath);
    auto found = numbers_.find(key_);
    if (found != numbers_.end()) return found->second;
    std::string number = matchSourceFile(normaliseRecordPath(recordPath), sourceFiles_);
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
  const RunTable<std::string>& sourceFiles_;
  std::string key_;  // reused so that a hit allocates nothing
  size_t keyBytes_ = 0;
  std::unordered_map<std::string, std::string> numbers_;
};

}  // namespace

RecordForm detectRecordForm(LineReader& lines) {
  std::string_view line;
  while (lines.next(line)) {
    if (startsWith(line, kShortMarker)) return RecordForm::kShort;
    if (startsWith(line, kFullMarker)) return RecordForm::kFull;
  }
  return RecordForm::kNone;
}

void parseFullAssertions(LineReader& lines, const RunTable<std::string>& sourceFiles,
                         TestCaseSplitter& splitter) {
  FileNumberCache fileNumbers(sourceFiles);
  std::string_view line;
  while (lines.next(line)) {
    if (!startsWith(line, kFullMarker)) continue;
    // A line whose statement neither starts nor finishes a test case while
    // none is collected leaves no trace: most lines of a log reported for
    // one test case.
    if (!splitter.collecting() && !contains(line, " test case")) continue;
    std::string_view rest = line;
    cutField(rest, "=");
    std::string_view path = cutField(rest, ",");
    std::string_view lineNumber = cutField(rest, ",");
    std::string_view result = cutField(rest, ",");
    std::string_view detailText = cutDetailText(rest);
    std::string_view assertionText = rest;

    AssertionRecord* record = splitter.next(recordBoundary(assertionText), readInt32(result),
                                            isSequenceDiagramStatement(assertionText));
    if (!record) continue;
    record->assertionText.assign(assertionText);
    record->status = result == "0" ? Status::kFailed : Status::kPassed;
    record->fileNumber = fileNumbers.lookup(path);
    record->lineNumber.assign(lineNumber);
    record->detailText.assign(detailText);
  }
}

TestCaseLogs readFullAssertions(LineReader& lines, const RunTable<std::string>& sourceFiles,
                                const WantedTestCases& wanted) {
  TestCaseLogs logs;
  {
    TestCaseSplitter splitter(logs, wanted);
    parseFullAssertions(lines, sourceFiles, splitter);
  }
  return logs;
}

std::optional<TestCaseLogs> readResultFile(const RunSettings& settings) {
  const std::string path = normalisePath(settings.resultFile);
  RecordForm form;
  {
    LineReader lines(path);
    if (!lines.isOpen()) return std::nullopt;
    form = detectRecordForm(lines);
  }
  if (form == RecordForm::kNone) return std::nullopt;
  const WantedTestCases wanted = WantedTestCases::of(settings);
  // The file is opened again for the records: a log that went away in
  // between is told, and read as holding none.
  TestCaseLogs logs;
  bool read = false;
  if (form == RecordForm::kShort) {
    const CollectedAssertions collected = collectAssertions(settings.sourceFiles);
    if (!collected.anyFileRead) {
      std::printf(
          "Assertions could not be collected correctly from files specified in infofile.\n");
    }
    LineReader lines(path);
    if (lines.isOpen()) {
      logs = readShortAssertions(lines, StatementIndex(collected.statements), wanted);
      read = true;
    }
  } else {
    LineReader lines(path);
    if (lines.isOpen()) {
      logs = readFullAssertions(lines, settings.sourceFiles, wanted);
      read = true;
    }
  }
  if (!read) {
    const char* name = settings.resultFile ? settings.resultFile : "(null)";
    std::printf("resultfile <%s> could not be read correctly.\n", name);
  }
  return logs;
}

}  // namespace qendor
