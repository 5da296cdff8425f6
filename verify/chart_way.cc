#include "verify/chart_way.h"

#include <deque>
#include <unordered_map>

#include "base/text.h"

namespace qendor {

namespace {

constexpr std::string_view kAssertMarker = "ZKR_ASSERT";

bool isState(const ChartRecord& record) {
  return !record.stateName.empty();
}

bool topLevel(const ChartRecord& state) {
  return state.parentGuid.empty() || state.parentGuid == "ROOT";
}

// The statement that starts at `at` in `action`: to the parenthesis that
// closes the first one opened, and a semicolon right behind it; the rest of
// the action when it never closes.
std::string_view statementAt(std::string_view action, size_t at) {
  size_t open = action.find('(', at);
  if (open == std::string_view::npos) return action.substr(at);
  int depth = 0;
  for (size_t i = open; i < action.size(); ++i) {
    if (action[i] == '(') ++depth;
    if (action[i] == ')' && --depth == 0) {
      size_t end = i + 1;
      if (end < action.size() && action[end] == ';') ++end;
      return action.substr(at, end - at);
    }
  }
  return action.substr(at);
}

}  // namespace

std::string assertionStatementIn(std::string_view action, std::string_view except) {
  for (size_t at = action.find(kAssertMarker); at != std::string_view::npos;
       at = action.find(kAssertMarker, at + 1)) {
    std::string_view statement = statementAt(action, at);
    if (!except.empty() && startsWith(action.substr(at), except)) continue;
    return std::string(statement);
  }
  return {};
}

const ChartRecord* performingRecord(const ChartList& chart, std::string_view statement) {
  const std::string sought = withoutBlanks(statement);
  if (sought.empty()) return nullptr;
  for (const auto& record : chart.records) {
    const ChartRecord& r = *record;
    if (contains(r.entryAction, sought) || contains(r.internalAction, sought) ||
        contains(r.exitAction, sought) || contains(r.transitionAction, sought)) {
      return &r;
    }
  }
  return nullptr;
}

std::vector<const ChartRecord*> shortestWay(const ChartList& chart, const ChartRecord* from,
                                            const std::function<bool(const ChartRecord&)>& isGoal) {
  if (!from) return {};
  // Breadth first, each record reached once; `before` leads back to `from`.
  std::unordered_map<const ChartRecord*, const ChartRecord*> before{{from, nullptr}};
  std::deque<const ChartRecord*> queue{from};
  const ChartRecord* goal = nullptr;
  const ChartRecord* round = nullptr;  // the way back to `from`, when that is the goal
  auto reach = [&](const ChartRecord* at, const ChartRecord* next) {
    if (next == from && !goal && isGoal(*from)) {
      goal = from;
      round = at;
      return;
    }
    if (!next || goal || !before.emplace(next, at).second) return;
    if (isGoal(*next)) {
      goal = next;
      return;
    }
    queue.push_back(next);
  };
  while (!queue.empty() && !goal) {
    const ChartRecord* at = queue.front();
    queue.pop_front();
    if (!isState(*at)) {
      if (!at->transitionName.empty()) reach(at, chart.find(at->transitionTarget));
      continue;
    }
    if (!at->defaultTransition.empty()) reach(at, chart.find(at->defaultTransition));
    for (const std::string& guid : at->outTransitions) reach(at, chart.find(guid));
    if (!topLevel(*at)) reach(at, chart.find(at->parentGuid));
  }
  std::vector<const ChartRecord*> way;
  if (round) way.push_back(from);
  for (const ChartRecord* at = round ? round : goal; at; at = before[at]) way.push_back(at);
  return std::vector<const ChartRecord*>(way.rbegin(), way.rend());
}

WayBlock firstBlock(const std::vector<const ChartRecord*>& way, std::string_view sought) {
  const std::string except = withoutBlanks(sought);
  const ChartRecord* firstTransition = nullptr;
  for (size_t i = 0; i + 1 < way.size(); ++i) {
    const ChartRecord& record = *way[i];
    if (!isState(record) && !firstTransition) firstTransition = &record;
    std::string statement;
    for (const std::string* action : {&record.entryAction, &record.internalAction,
                                      &record.transitionAction, &record.exitAction}) {
      if (i == 0 && action != &record.exitAction) continue;  // entered already
      if (statement.empty()) statement = assertionStatementIn(*action, except);
    }
    if (!statement.empty()) return WayBlock{&record, std::move(statement)};
  }
  return WayBlock{firstTransition, {}};
}

bool endsChart(const ChartRecord& record) {
  return isState(record) &&
         (record.stateType == "Termination" ||
          (record.stateType == "LocalTermination" && record.parentName == "ROOT"));
}

}  // namespace qendor
