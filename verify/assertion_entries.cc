#include "verify/assertion_entries.h"

#include <string>

#include "base/text.h"
#include "input/assertion_macro.h"
#include "verify/assertion_text.h"

namespace qendor {

namespace {

// The pieces of a sequence diagram entry's message, each parsed afresh: a
// piece the message does not hold is empty.
void parseMarkedPieces(AssertionEntry& entry) {
  const std::string_view message = entry.message;
  entry.inr = {};
  entry.onr = {};
  parseNumberPair(message, entry.inr, entry.onr);
  parseGuid(message, entry.guid);
  entry.userMessage = parseUserMessage(message);
  entry.arbiterKind = {};
  parseArbiterKind(message, entry.arbiterKind);
}

}  // namespace

bool AssertionEntries::next() {
  for (size_t i = started_ ? index_ + 1 : 0; i < records_.size(); ++i) {
    started_ = true;
    index_ = i;
    const AssertionRecord& record = records_[i];
    if (i + 1 == records_.size()) {
      if (contains(record.assertionText, "Finished test case:")) return false;
      notTerminated_ = true;
      if (contains(record.assertionText, "NOFAIL_INTENDED_USER_EXIT")) userExit_ = true;
    }
    if (!parseAssertionMacro(record.assertionText, entry_.sdiName, entry_.msgId, entry_.message)) {
      continue;
    }
    if (!record.detailText.empty()) entry_.message = record.detailText;
    entry_.record = &record;
    entry_.step = StepResult::kNotJudged;
    entry_.diagramLine = 0;
    entry_.progressValue = {};
    if (sequenceDiagram_) parseMarkedPieces(entry_);
    return true;
  }
  index_ = records_.size();
  return false;
}

}  // namespace qendor
