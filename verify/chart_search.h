// Follows assertions through a statechart or flowchart. A transition met again
// while it is still on a search's current path ends that branch with null, and
// the search goes on with the next alternative. Charts of any size are searched
// without deep recursion.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "base/chart_record.h"

namespace qendor {

// The records a search has entered; the caller passes a fresh set to each call.
using VisitedRecords = std::unordered_set<const ChartRecord*>;

// What a search went through, for a diagnosis: filled only when one is
// handed to it.
struct ChartSearchTrace {
  static constexpr size_t kMostTried = 64;
  // From the record the search started on to the record it found, when it
  // found one.
  std::vector<const ChartRecord*> path;
  // The transitions it entered, each once, in order; at most kMostTried.
  std::vector<const ChartRecord*> tried;

  void noteTried(const ChartRecord* transition) {
    if (tried.size() >= kMostTried) return;
    for (const ChartRecord* seen : tried) {
      if (seen == transition) return;
    }
    tried.push_back(transition);
  }
};

// The record, reachable from `record` in `chart`, in which `assertion` is
// performed; null when there is none.
const ChartRecord* statechartStep(std::string assertion, const ChartRecord* record,
                                  VisitedRecords& visited, const ChartList& chart,
                                  ChartSearchTrace* trace = nullptr);
const ChartRecord* flowchartStep(std::string assertion, const ChartRecord* record,
                                 VisitedRecords& visited, const ChartList& chart,
                                 ChartSearchTrace* trace = nullptr);

// Non-null when `chart` can run from `record` to a top-level termination
// without passing another assertion.
const ChartRecord* statechartCanComplete(const ChartRecord* record, VisitedRecords& visited,
                                         const ChartList& chart, ChartSearchTrace* trace = nullptr);
const ChartRecord* flowchartCanComplete(const ChartRecord* record, VisitedRecords& visited,
                                        const ChartList& chart, ChartSearchTrace* trace = nullptr);

}  // namespace qendor
