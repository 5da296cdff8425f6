// The way through a chart from the record a search stood on to the record
// it should have reached: for a diagnosis, which record performs the
// assertion that matched nothing, and what on the shortest way there the run
// did not pass.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "base/chart_record.h"

namespace qendor {

// The first assertion statement in `action` (from "ZKR_ASSERT" to its
// closing parenthesis, and the semicolon behind it) that is not `except`;
// empty when there is none. Both are blank-free, as the chart's actions are.
std::string assertionStatementIn(std::string_view action, std::string_view except = {});

// The first record in file order whose actions perform `statement`, matched
// as the searches match it (blanks left out); null when none does.
const ChartRecord* performingRecord(const ChartList& chart, std::string_view statement);

// A shortest way along the chart's links from `from` to a record that
// `isGoal` accepts, both ends included; empty when none leads there. A state
// links to its default transition, its leaving transitions and its parent; a
// transition to its target. `from` is the goal only by a way round back to it.
std::vector<const ChartRecord*> shortestWay(const ChartList& chart, const ChartRecord* from,
                                            const std::function<bool(const ChartRecord&)>& isGoal);

// What stopped a run on `way`: the first record after the start (whose exit
// action alone counts, as it was already entered) that performs an assertion
// other than `sought`, with that statement; or else the way's first
// transition, with no statement. `record` is null for a way without either.
struct WayBlock {
  const ChartRecord* record = nullptr;
  std::string statement;
};
WayBlock firstBlock(const std::vector<const ChartRecord*>& way, std::string_view sought);

// True when the record ends the chart for the search of its end: a
// termination at any level, or a local one at the top level.
bool endsChart(const ChartRecord& record);

}  // namespace qendor
