// A test case's records as its documents list them, one "AssertionInfo"
// entry each, parsed once.
#pragma once

#include <cstddef>
#include <string_view>

#include "base/assertion_record.h"

namespace qendor {

// What the model made of an entry.
enum class StepResult {
  kNotJudged,  // no model step: a chart-less, diagram-less or value-less entry
  kAccepted,   // the diagram or chart took it
  kRejected,   // the diagram or chart refused it: the walk ended there
};

// One entry: a record the assertion macro parser accepted, with the pieces of
// it that the judgement and the documents use. The pieces are views into the
// test case's records, which must outlive the entry.
struct AssertionEntry {
  const AssertionRecord* record = nullptr;
  // The macro parser's outputs; see AssertionEntries for how they carry over.
  std::string_view sdiName;
  std::string_view msgId;
  std::string_view message;
  // The marked pieces of the message; filled for a sequence diagram test
  // case's entries only. `arbiterKind` is empty without an arbiter marker.
  std::string_view guid;
  std::string_view userMessage;
  std::string_view inr;
  std::string_view onr;
  std::string_view arbiterKind;
  std::string_view progressValue;  // empty without a progress marker
  StepResult step = StepResult::kNotJudged;
  // For an accepted diagram step: the diagram line (from 1) that took it.
  size_t diagramLine = 0;
};

// Walks the records in log order. The macro parser's three outputs belong to
// the whole walk: a record whose statement does not yield one keeps the
// value of the record before, and a record's detail text replaces the
// message for it and after it. A record the parser rejects is no entry. A
// test case that finished leaves its finish assertion last; that one is no
// entry either.
class AssertionEntries {
 public:
  // `sequenceDiagram`: the entries get their marked pieces parsed.
  AssertionEntries(const AssertionList& records, bool sequenceDiagram)
      : records_(records), sequenceDiagram_(sequenceDiagram) {}

  // Moves to the next entry; false when there is none.
  bool next();

  // The entry the walk stands on, valid after next() returned true.
  const AssertionEntry& entry() const { return entry_; }

  // Known once the walk reached the last record: it is not the finish
  // assertion, and whether the user ended the test case on purpose.
  bool notTerminated() const { return notTerminated_; }
  bool userExit() const { return userExit_; }

 private:
  const AssertionList& records_;
  const bool sequenceDiagram_;
  size_t index_ = 0;
  bool started_ = false;
  AssertionEntry entry_;
  bool notTerminated_ = false;
  bool userExit_ = false;
};

}  // namespace qendor
