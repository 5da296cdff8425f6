#include "verify/assertion_entries.h"

#include "base/text.h"
#include "input/assertion_macro.h"

namespace qendor {

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
    if (!parseAssertionMacro(record.assertionText, sdiName_, msgId_, message_)) continue;
    if (!record.detailText.empty()) message_ = record.detailText;
    return true;
  }
  index_ = records_.size();
  return false;
}

bool hasSdAssertion(const AssertionList& records) {
  for (const AssertionRecord& record : records) {
    if (contains(record.assertionText, "ASSERT_SD")) return true;
  }
  return false;
}

}  // namespace qendor
