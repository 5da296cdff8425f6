#include "input/short_assertions.h"

#include <memory>
#include <string_view>

#include "app/line_reader.h"
#include "app/paths.h"
#include "app/run_settings.h"
#include "app/text.h"
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

int readShortAssertions() {
  LineReader reader(normalisePathCopy(run().resultFile));
  if (!reader.isOpen()) return 0;
  const WantedTestCases wanted = WantedTestCases::ofRun();
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
    const std::string* found = findCollectedAssertion(readInt32(fileField), readInt32(lineField));
    if (!found) continue;
    const std::string& statement = *found;
    int32_t resultValue = readInt32(result);
    if (isTestCaseStart(statement)) {
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
    if (isTestCaseEnd(statement)) currentTestCase = nullptr;
  }
  trimAssertionLists();
  return 1;
}

}  // namespace qendor
