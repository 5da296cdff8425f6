// One state or transition of a statechart or flowchart, as read from a
// verification file. Records refer to each other by `guid` only.
#pragma once

#include <memory>
#include <string>
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
using ChartList = std::vector<std::unique_ptr<ChartRecord>>;

}  // namespace qendor
