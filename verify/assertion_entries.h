// A test case's records as its document lists them, one "AssertionInfo"
// entry each.
#pragma once

#include <cstddef>
#include <string>

#include "base/assertion_record.h"

namespace qendor {

// Walks the records in log order. The macro parser's three outputs belong to
// the whole walk: a record whose statement does not yield one keeps the
// value of the record before, and a record's detail text replaces the
// message for it and after it. A record the parser rejects is no entry. A
// test case that finished leaves its finish assertion last; that one is no
// entry either.
class AssertionEntries {
 public:
  explicit AssertionEntries(const AssertionList& records) : records_(records) {}

  // Moves to the next entry; false when there is none.
  bool next();

  const AssertionRecord& record() const { return records_[index_]; }
  const std::string& sdiName() const { return sdiName_; }
  const std::string& msgId() const { return msgId_; }
  const std::string& message() const { return message_; }

  // Known once the walk reached the last record: it is not the finish
  // assertion, and whether the user ended the test case on purpose.
  bool notTerminated() const { return notTerminated_; }
  bool userExit() const { return userExit_; }

 private:
  const AssertionList& records_;
  size_t index_ = 0;
  bool started_ = false;
  std::string sdiName_;
  std::string msgId_;
  std::string message_;
  bool notTerminated_ = false;
  bool userExit_ = false;
};

// True when a record's statement is a sequence diagram assertion: the test
// case is then reported as one.
bool hasSdAssertion(const AssertionList& records);

}  // namespace qendor
