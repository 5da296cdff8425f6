#include "input/short_assertions.h"

#include <memory>
#include <string_view>

#include "app/line_reader.h"
#include "app/paths.h"
#include "app/run_settings.h"
#include "app/text.h"
#include "input/result_file.h"

namespace qendor {

bool lookupCollectedAssertion(int32_t fileNumber, int32_t lineNumber, std::string& statement) {
  // find() rather than the inserting index: a lookup must not add entries.
  const auto& files = run().collectedAssertions;
  auto file = files.find(fileNumber);
  if (file == files.end() || !file->second) return false;
  auto found = file->second->find(lineNumber);
  if (found == file->second->end()) return false;
  statement = found->second;
  return true;
}

int readShortAssertions() {
  LineReader reader(normalisePathCopy(run().resultFile));
  if (!reader.isOpen()) return 0;
  AssertionList* currentTestCase = nullptr;
  std::string statement;
  std::string_view line;
  while (reader.next(line)) {
    if (!startsWith(line, "ASSERTION=")) continue;
    std::string_view rest = line;
    cutField(rest, "=");
    std::string_view fileField = cutField(rest, ",");
    std::string_view lineField = cutField(rest, ",");
    std::string_view result = cutField(rest, " ");
    if (!lookupCollectedAssertion(readInt32(fileField), readInt32(lineField), statement)) {
      continue;
    }
    int32_t resultValue = readInt32(result);
    bool ends = isTestCaseEnd(statement);
    if (isTestCaseStart(statement)) {
      auto list = std::make_unique<AssertionList>();
      currentTestCase = list.get();
      run().testCaseAssertions[resultValue] = std::move(list);
    }
    if (currentTestCase) {
      AssertionRecord& record = currentTestCase->emplace_back();
      record.status = resultValue != 0 ? "PASSED" : "FAILED";
      record.fileNumber.assign(fileField);
      record.lineNumber.assign(lineField);
      record.assertionText = std::move(statement);
      statement.clear();
    }
    if (ends) currentTestCase = nullptr;
  }
  trimAssertionLists();
  return 1;
}

}  // namespace qendor
