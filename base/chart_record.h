// One state or transition of a statechart or flowchart, as read from a
// verification file. Records refer to each other by `guid` only.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace qendor {

struct ChartRecord {
  std::string guid;
  std::string stateName;  // non-empty for a state
  std::string stateType;
  std::string parentName;
  std::string parentGuid;
  std::string entryAction;
  std::string exitAction;
  std::string internalAction;
  std::string defaultTransition;
  std::vector<std::string> outTransitions;
  std::string transitionName;  // non-empty for a transition
  std::string transitionAction;
  std::string transitionTarget;
};

// A chart's records in file order. Records are heap-allocated so that the
// pointers the searches hand around stay valid while the list grows.
//
// Lookups by guid go through an index that is extended on the first lookup
// after records were added; the first record with a guid wins, as a scan in
// list order would find it. REQUIRES: no record's guid changes after a lookup
// (the verification file reader fills a list completely before any search).
struct ChartList {
  std::vector<std::unique_ptr<ChartRecord>> records;

  bool empty() const { return records.empty(); }
  size_t size() const { return records.size(); }
  // The first record in file order; null when the list is empty.
  const ChartRecord* firstRecord() const { return records.empty() ? nullptr : records[0].get(); }
  // Takes ownership and returns the record.
  ChartRecord* add(std::unique_ptr<ChartRecord> record);
  // The first record whose guid equals `guid`; null when none does.
  const ChartRecord* find(std::string_view guid) const;

 private:
  // An open-addressing table: charts can be large and are searched a lot.
  struct Slot {
    size_t hash = 0;
    const ChartRecord* record = nullptr;  // null: free
  };
  void insert(const ChartRecord* record) const;
  const ChartRecord* lookUp(std::string_view guid, size_t hash) const;

  mutable std::vector<Slot> slots_;  // size a power of two, at most half used
  mutable size_t used_ = 0;
  mutable size_t indexed_ = 0;  // records[0, indexed_) are in the table
};

}  // namespace qendor
