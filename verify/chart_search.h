// Follows assertions through a statechart or flowchart. A transition met again
// while it is still on a search's current path ends that branch with null, and
// the search goes on with the next alternative. Charts of any size are searched
// without deep recursion.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_set>

#include "base/chart_record.h"

namespace qendor {

// The records a search has entered; the caller passes a fresh set to each call.
using VisitedRecords = std::unordered_set<const ChartRecord*>;

// The record, reachable from `record` in `chart`, in which `assertion` is
// performed; null when there is none.
const ChartRecord* statechartStep(std::string assertion, const ChartRecord* record,
                                  VisitedRecords& visited, const ChartList& chart);
const ChartRecord* flowchartStep(std::string assertion, const ChartRecord* record,
                                 VisitedRecords& visited, const ChartList& chart);

// Non-null when `chart` can run from `record` to a top-level termination
// without passing another assertion.
const ChartRecord* statechartCanComplete(const ChartRecord* record, VisitedRecords& visited,
                                         const ChartList& chart);
const ChartRecord* flowchartCanComplete(const ChartRecord* record, VisitedRecords& visited,
                                        const ChartList& chart);

// The same four over the chart filed for `testCase` in `run().chartSteps`
// (an empty chart when none is).
const ChartRecord* statechartStep(std::string assertion, const ChartRecord* record,
                                  VisitedRecords& visited, int32_t testCase);
const ChartRecord* flowchartStep(std::string assertion, const ChartRecord* record,
                                 VisitedRecords& visited, int32_t testCase);
const ChartRecord* statechartCanComplete(const ChartRecord* record, VisitedRecords& visited,
                                         int32_t testCase);
const ChartRecord* flowchartCanComplete(const ChartRecord* record, VisitedRecords& visited,
                                        int32_t testCase);

// The first record of the test case's chart whose guid equals `guid`; null
// when none does.
const ChartRecord* findChartRecord(std::string_view guid, int32_t testCase);

}  // namespace qendor
