#include "base/assertion_record.h"

#include <utility>

#include "base/text.h"

namespace qendor {

bool isSequenceDiagramStatement(std::string_view statement) {
  return contains(statement, "ASSERT_SD");
}

TestCaseLog makeTestCaseLog(AssertionList records) {
  TestCaseLog log;
  log.records = std::move(records);
  for (const AssertionRecord& record : log.records) {
    if (isSequenceDiagramStatement(record.assertionText)) {
      log.sequenceDiagram = true;
      break;
    }
  }
  return log;
}

}  // namespace qendor
