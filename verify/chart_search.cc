#include "verify/chart_search.h"

#include <unordered_set>
#include <utility>
#include <vector>

#include "base/text.h"

namespace qendor {

// Each search is defined recursively: a state tries its default transition,
// its leaving transitions and its parent one after the other until one of
// them finds a record. The searches are run here on an explicit stack of
// frames, so a long chart cannot overflow the call stack; the alternatives
// are tried in the same order with the same effect on the visited set.
//
// A transition that is entered again while it is still on the current path
// ends that branch with null, the end the rules would otherwise never reach.

namespace {

constexpr std::string_view kAssertMarker = "ZKR_ASSERT";

bool isState(const ChartRecord& record) {
  return !record.stateName.empty();
}

bool isTopLevelEnd(const ChartRecord& record) {
  return record.stateType == "LocalTermination" && record.parentName == "ROOT";
}

// True when the record was entered before; otherwise it is entered now.
bool enter(VisitedRecords& visited, const ChartRecord* record) {
  return !visited.insert(record).second;
}

enum class Phase { kStart, kDefault, kLeaving, kLast };

struct Frame {
  const ChartRecord* record;
  Phase phase = Phase::kStart;
  size_t next = 0;                                    // next leaving transition to try
  const std::vector<std::string>* leaving = nullptr;  // the transitions tried in turn
};

// What a frame does next: call a record, going on when that call yields
// null, or return a result.
struct Move {
  bool call;
  const ChartRecord* record;
};
Move callOn(const ChartRecord* record) {
  return {true, record};
}
Move yield(const ChartRecord* record) {
  return {false, record};
}

// Transitions only ever go on to their target, so a chain of transitions
// that leads back to itself is a run of transition frames at the top of the
// stack. Coming back to one of them ends that branch with null. (A transition
// met again behind a state would reach that state again, which the visited
// set already turns into null.)
class TransitionRun {
 public:
  // Called before `record`, a transition, is entered from `caller`. True when
  // it is already in the run of transitions that `caller` belongs to.
  bool repeats(const std::vector<Frame>& stack, const ChartRecord* record) {
    if (stack.empty() || isState(*stack.back().record)) {
      begin_ = stack.size();  // a new run starts
      members_.clear();
    }
    size_t length = stack.size() - begin_;
    if (length < kShortRun) {
      for (size_t i = begin_; i < stack.size(); ++i) {
        if (stack[i].record == record) return true;
      }
      if (length + 1 == kShortRun) {
        for (size_t i = begin_; i < stack.size(); ++i) members_.insert(stack[i].record);
        members_.insert(record);
      }
      return false;
    }
    return !members_.insert(record).second;
  }

 private:
  static constexpr size_t kShortRun = 16;
  size_t begin_ = 0;
  std::unordered_set<const ChartRecord*> members_;  // the run, once it is long
};

// Runs a search from `start`. `advance` moves a frame on: at its start, and
// each time the record it called yielded null. A non-null result returns
// through every frame at once.
template <class Advance>
const ChartRecord* runSearch(const ChartRecord* start, Advance advance,
                             ChartSearchTrace* trace = nullptr) {
  std::vector<Frame> stack;
  TransitionRun transitions;
  Move move = callOn(start);
  for (;;) {
    if (move.call) {
      const ChartRecord* callee = move.record;
      if (callee && (isState(*callee) || !transitions.repeats(stack, callee))) {
        stack.push_back(Frame{callee});
        if (trace && !isState(*callee)) trace->noteTried(callee);
      } else if (stack.empty()) {
        return nullptr;  // a null record yields null
      }
      move = advance(stack.back());
      continue;
    }
    if (move.record || stack.size() == 1) {
      if (trace && move.record) {
        // The records the search went through, then the one it found.
        for (const Frame& frame : stack) trace->path.push_back(frame.record);
        if (trace->path.back() != move.record) trace->path.push_back(move.record);
      }
      return move.record;
    }
    stack.pop_back();
    move = advance(stack.back());
  }
}

// The transition rule the two step searches share: the assertion in the
// target's entry action finds the target, another assertion there is a
// barrier, otherwise the search goes on in the target.
Move transitionStep(Frame& frame, const std::string& assertion, const ChartList& chart) {
  if (frame.phase != Phase::kStart) return yield(nullptr);
  const ChartRecord& record = *frame.record;
  if (record.transitionName.empty()) return yield(nullptr);
  const ChartRecord* target = chart.find(record.transitionTarget);
  if (!target) return yield(nullptr);
  if (contains(target->entryAction, assertion)) return yield(target);
  if (contains(target->entryAction, kAssertMarker)) return yield(nullptr);
  frame.phase = Phase::kLast;
  return callOn(target);
}

// Tries frame.leaving in turn from frame.next, each through findChartRecord.
Move nextLeaving(Frame& frame, const ChartList& chart) {
  frame.phase = Phase::kLeaving;
  if (frame.next < frame.leaving->size()) {
    const std::string& guid = (*frame.leaving)[frame.next++];
    return callOn(chart.find(guid));
  }
  return yield(nullptr);
}

// A flowchart node entered by a search: its default transition alone, or
// else its leaving transitions (its parent's, for a local termination inside
// a composite node). Both flowchart searches leave a node this way.
Move leaveFlowchartNode(Frame& frame, VisitedRecords& visited, const ChartList& chart) {
  const ChartRecord& node = *frame.record;
  if (enter(visited, frame.record)) return yield(nullptr);
  if (!node.defaultTransition.empty()) {
    frame.phase = Phase::kLast;  // followed alone
    return callOn(chart.find(node.defaultTransition));
  }
  frame.leaving = &node.outTransitions;
  if (node.stateType == "LocalTermination" && node.parentName != "ROOT") {
    const ChartRecord* parent = chart.find(node.parentGuid);
    if (!parent) return yield(nullptr);
    frame.leaving = &parent->outTransitions;
  }
  return nextLeaving(frame, chart);
}

// A statechart state entered by a search, from the point where its own
// actions have been looked at: it is entered (once only), then its default
// transition is followed, then each leaving transition that `pick` turns into
// a move (true), then, below the top level, its parent.
template <class Pick>
Move leaveState(Frame& frame, VisitedRecords& visited, const ChartList& chart, bool topLevel,
                Pick pick) {
  const ChartRecord& state = *frame.record;
  switch (frame.phase) {
    case Phase::kStart:
      if (enter(visited, frame.record)) return yield(nullptr);
      frame.phase = Phase::kDefault;
      if (!state.defaultTransition.empty()) return callOn(chart.find(state.defaultTransition));
      [[fallthrough]];
    case Phase::kDefault:
    case Phase::kLeaving:
      frame.phase = Phase::kLeaving;
      while (frame.next < state.outTransitions.size()) {
        const ChartRecord* t = chart.find(state.outTransitions[frame.next++]);
        Move move{};
        if (t && pick(*t, move)) return move;
      }
      if (topLevel) return yield(nullptr);
      frame.phase = Phase::kLast;
      return callOn(chart.find(state.parentGuid));
    case Phase::kLast:
      break;
  }
  return yield(nullptr);
}

}  // namespace

const ChartRecord* statechartStep(std::string assertion, const ChartRecord* record,
                                  VisitedRecords& visited, const ChartList& chart,
                                  ChartSearchTrace* trace) {
  assertion = withoutBlanks(assertion);
  return runSearch(
      record,
      [&](Frame& frame) -> Move {
        const ChartRecord& state = *frame.record;
        if (!isState(state)) return transitionStep(frame, assertion, chart);
        if (frame.phase == Phase::kStart) {
          if (contains(state.entryAction, assertion)) return yield(frame.record);
          if (contains(state.internalAction, assertion)) return yield(frame.record);
          if (contains(state.exitAction, assertion)) return yield(frame.record);
          if (contains(state.exitAction, kAssertMarker)) return yield(nullptr);
        }
        // A leaving transition that performs the assertion is the answer; one
        // that performs another assertion is a barrier.
        const bool topLevel = state.parentGuid.empty() || state.parentGuid == "ROOT";
        return leaveState(frame, visited, chart, topLevel, [&](const ChartRecord& t, Move& move) {
          if (contains(t.transitionAction, assertion)) {
            move = yield(&t);
            return true;
          }
          if (contains(t.transitionAction, kAssertMarker)) return false;
          move = callOn(&t);
          return true;
        });
      },
      trace);
}

const ChartRecord* flowchartStep(std::string assertion, const ChartRecord* record,
                                 VisitedRecords& visited, const ChartList& chart,
                                 ChartSearchTrace* trace) {
  assertion = withoutBlanks(assertion);
  return runSearch(
      record,
      [&](Frame& frame) -> Move {
        const ChartRecord& node = *frame.record;
        if (!isState(node)) return transitionStep(frame, assertion, chart);
        if (frame.phase == Phase::kLeaving) return nextLeaving(frame, chart);
        if (frame.phase == Phase::kLast) return yield(nullptr);
        if (contains(node.entryAction, assertion)) return yield(frame.record);
        return leaveFlowchartNode(frame, visited, chart);
      },
      trace);
}

const ChartRecord* statechartCanComplete(const ChartRecord* record, VisitedRecords& visited,
                                         const ChartList& chart, ChartSearchTrace* trace) {
  return runSearch(
      record,
      [&](Frame& frame) -> Move {
        const ChartRecord& state = *frame.record;
        if (!isState(state)) {
          if (frame.phase != Phase::kStart) return yield(nullptr);
          if (state.transitionName.empty()) return yield(nullptr);
          const ChartRecord* target = chart.find(state.transitionTarget);
          if (!target) return yield(nullptr);
          if (isTopLevelEnd(*target)) return yield(target);
          if (target->stateType != "Termination") {
            if (contains(target->entryAction, kAssertMarker)) return yield(nullptr);
            if (contains(target->exitAction, kAssertMarker)) return yield(nullptr);
            frame.phase = Phase::kLast;
            return callOn(target);
          }
          return yield(target);  // a termination at any level completes
        }
        const bool topLevel = state.parentGuid.empty() || state.parentName == "ROOT";
        return leaveState(frame, visited, chart, topLevel, [](const ChartRecord& t, Move& move) {
          if (contains(t.transitionAction, kAssertMarker)) return false;
          move = callOn(&t);
          return true;
        });
      },
      trace);
}

const ChartRecord* flowchartCanComplete(const ChartRecord* record, VisitedRecords& visited,
                                        const ChartList& chart, ChartSearchTrace* trace) {
  return runSearch(
      record,
      [&](Frame& frame) -> Move {
        const ChartRecord& node = *frame.record;
        if (frame.phase == Phase::kLeaving) return nextLeaving(frame, chart);
        if (frame.phase == Phase::kLast) return yield(nullptr);
        if (!isState(node)) {
          if (node.transitionName.empty()) return yield(nullptr);
          const ChartRecord* target = chart.find(node.transitionTarget);
          if (!target) return yield(nullptr);
          if (isTopLevelEnd(*target)) return yield(target);
          if (contains(target->entryAction, kAssertMarker)) return yield(nullptr);
          frame.phase = Phase::kLast;
          return callOn(target);
        }
        return leaveFlowchartNode(frame, visited, chart);
      },
      trace);
}

}  // namespace qendor
