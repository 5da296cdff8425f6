// The chart searches against plain recursive rules on many random charts,
// and on one chart too deep for recursion.
#include "verify/chart_search.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "base/chart_record.h"
#include "base/text.h"

namespace qendor {
namespace {

// The sanitizers make each allocation and step several times dearer; there
// the deep chain is searched once and fewer random charts are tried.
#if defined(__SANITIZE_ADDRESS__)
constexpr bool kSanitized = true;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
constexpr bool kSanitized = true;
#else
constexpr bool kSanitized = false;
#endif
#else
constexpr bool kSanitized = false;
#endif

// The searches written as plain recursion, as a check of the frame form on
// many small random charts. `path` holds the transitions being evaluated;
// coming back to one ends that branch with null.
struct Reference {
  const ChartList& chart;
  VisitedRecords& visited;
  std::vector<const ChartRecord*> path;

  const ChartRecord* find(const std::string& guid) { return chart.find(guid); }
  bool enter(const ChartRecord* r) {
    if (visited.count(r)) return false;
    visited.insert(r);
    return true;
  }
  bool onPath(const ChartRecord* r) {
    for (const ChartRecord* p : path) {
      if (p == r) return true;
    }
    return false;
  }
  // Evaluates a transition's tail call with the transition on the path.
  template <class Call>
  const ChartRecord* along(const ChartRecord* t, Call call) {
    if (onPath(t)) return nullptr;
    path.push_back(t);
    const ChartRecord* r = call();
    path.pop_back();
    return r;
  }

  const ChartRecord* stateStep(const std::string& a, const ChartRecord* r) {
    if (!r) return nullptr;
    if (r->stateName.empty()) {
      return along(r, [&]() -> const ChartRecord* {
        if (r->transitionName.empty()) return nullptr;
        const ChartRecord* target = find(r->transitionTarget);
        if (!target) return nullptr;
        if (contains(target->entryAction, a)) return target;
        if (contains(target->entryAction, "ZKR_ASSERT")) return nullptr;
        return stateStep(a, target);
      });
    }
    if (contains(r->entryAction, a) || contains(r->internalAction, a) || contains(r->exitAction, a))
      return r;
    if (contains(r->exitAction, "ZKR_ASSERT")) return nullptr;
    if (!enter(r)) return nullptr;
    if (!r->defaultTransition.empty()) {
      if (const ChartRecord* x = stateStep(a, find(r->defaultTransition))) return x;
    }
    for (const std::string& g : r->outTransitions) {
      const ChartRecord* t = find(g);
      if (!t) continue;
      if (contains(t->transitionAction, a)) return t;
      if (!contains(t->transitionAction, "ZKR_ASSERT")) {
        if (const ChartRecord* x = stateStep(a, t)) return x;
      }
    }
    if (r->parentGuid.empty() || r->parentGuid == "ROOT") return nullptr;
    return stateStep(a, find(r->parentGuid));
  }

  const ChartRecord* flowStep(const std::string& a, const ChartRecord* r) {
    if (!r) return nullptr;
    if (r->stateName.empty()) {
      return along(r, [&]() -> const ChartRecord* {
        if (r->transitionName.empty()) return nullptr;
        const ChartRecord* target = find(r->transitionTarget);
        if (!target) return nullptr;
        if (contains(target->entryAction, a)) return target;
        if (contains(target->entryAction, "ZKR_ASSERT")) return nullptr;
        return flowStep(a, target);
      });
    }
    if (contains(r->entryAction, a)) return r;
    if (!enter(r)) return nullptr;
    if (!r->defaultTransition.empty()) return flowStep(a, find(r->defaultTransition));
    const std::vector<std::string>* leaving = &r->outTransitions;
    if (r->stateType == "LocalTermination" && r->parentName != "ROOT") {
      const ChartRecord* parent = find(r->parentGuid);
      if (!parent) return nullptr;
      leaving = &parent->outTransitions;
    }
    for (const std::string& g : *leaving) {
      if (const ChartRecord* x = flowStep(a, find(g))) return x;
    }
    return nullptr;
  }

  const ChartRecord* stateComplete(const ChartRecord* r) {
    if (!r) return nullptr;
    if (r->stateName.empty()) {
      return along(r, [&]() -> const ChartRecord* {
        if (r->transitionName.empty()) return nullptr;
        const ChartRecord* target = find(r->transitionTarget);
        if (!target) return nullptr;
        if (target->stateType == "LocalTermination" && target->parentName == "ROOT") return target;
        if (target->stateType != "Termination") {
          if (contains(target->entryAction, "ZKR_ASSERT") ||
              contains(target->exitAction, "ZKR_ASSERT"))
            return nullptr;
          return stateComplete(target);
        }
        return target;
      });
    }
    if (!enter(r)) return nullptr;
    if (!r->defaultTransition.empty()) {
      if (const ChartRecord* x = stateComplete(find(r->defaultTransition))) return x;
    }
    for (const std::string& g : r->outTransitions) {
      const ChartRecord* t = find(g);
      if (t && !contains(t->transitionAction, "ZKR_ASSERT")) {
        if (const ChartRecord* x = stateComplete(t)) return x;
      }
    }
    if (r->parentGuid.empty() || r->parentName == "ROOT") return nullptr;
    return stateComplete(find(r->parentGuid));
  }

  const ChartRecord* flowComplete(const ChartRecord* r) {
    if (!r) return nullptr;
    if (r->stateName.empty()) {
      return along(r, [&]() -> const ChartRecord* {
        if (r->transitionName.empty()) return nullptr;
        const ChartRecord* target = find(r->transitionTarget);
        if (!target) return nullptr;
        if (target->stateType == "LocalTermination" && target->parentName == "ROOT") return target;
        if (contains(target->entryAction, "ZKR_ASSERT")) return nullptr;
        return flowComplete(target);
      });
    }
    if (!enter(r)) return nullptr;
    if (!r->defaultTransition.empty()) return flowComplete(find(r->defaultTransition));
    const std::vector<std::string>* leaving = &r->outTransitions;
    if (r->stateType == "LocalTermination" && r->parentName != "ROOT") {
      const ChartRecord* parent = find(r->parentGuid);
      if (!parent) return nullptr;
      leaving = &parent->outTransitions;
    }
    for (const std::string& g : *leaving) {
      if (const ChartRecord* x = flowComplete(find(g))) return x;
    }
    return nullptr;
  }
};

TEST(ChartSearchReference, FrameFormAgreesWithTheRecursiveRulesOnRandomCharts) {
  std::mt19937 random(4711);
  auto pick = [&](std::initializer_list<const char*> choices) {
    return std::string(choices.begin()[random() % choices.size()]);
  };
  auto guid = [&] { return pick({"g0", "g1", "g2", "g3", "g4", "g5", "g6", "gx", "ROOT", ""}); };
  auto action = [&] { return pick({"", "", "ZKR_ASSERT(a);", "ZKR_ASSERT(b);", "a", "x"}); };
  int found = 0;
  const int rounds = kSanitized ? 3000 : 20000;
  for (int round = 0; round < rounds; ++round) {
    auto chart = std::make_unique<ChartList>();
    int size = 1 + random() % 8;
    for (int i = 0; i < size; ++i) {
      auto r = std::make_unique<ChartRecord>();
      r->guid = random() % 8 ? "g" + std::to_string(random() % 7) : guid();
      if (random() % 2) {
        r->stateName = "S";
        r->stateType = pick({"", "", "LocalTermination", "Termination"});
        r->parentName = pick({"ROOT", "P", ""});
        r->parentGuid = guid();
        r->entryAction = action();
        r->exitAction = action();
        r->internalAction = action();
        if (random() % 4 == 0) r->defaultTransition = guid();
        for (int n = random() % 4; n > 0; --n) r->outTransitions.push_back(guid());
      } else {
        r->transitionName = random() % 6 ? "T" : "";
        r->transitionAction = action();
        r->transitionTarget = guid();
      }
      chart->add(std::move(r));
    }
    const ChartList& list = *chart;
    for (const auto& owned : list.records) {
      const ChartRecord* from = owned.get();
      for (int search = 0; search < 6; ++search) {
        VisitedRecords visited, expectedVisited;
        Reference ref{list, expectedVisited, {}};
        const ChartRecord* expected;
        const ChartRecord* actual;
        switch (search) {
          case 0:
          case 1: {
            std::string a = search ? "ZKR_ASSERT(b)" : "a";
            expected = ref.stateStep(a, from);
            actual = statechartStep(a, from, visited, list);
            break;
          }
          case 2:
          case 3: {
            std::string a = search == 3 ? "ZKR_ASSERT(b)" : "a";
            expected = ref.flowStep(a, from);
            actual = flowchartStep(a, from, visited, list);
            break;
          }
          case 4:
            expected = ref.stateComplete(from);
            actual = statechartCanComplete(from, visited, list);
            break;
          default:
            expected = ref.flowComplete(from);
            actual = flowchartCanComplete(from, visited, list);
            break;
        }
        ASSERT_EQ(actual, expected) << "round " << round << " search " << search;
        ASSERT_EQ(visited, expectedVisited) << "round " << round << " search " << search;
        found += expected != nullptr;
      }
    }
  }
  EXPECT_GT(found, rounds);
}

// A chain of states and transitions, s0 -t0-> s1 -t1-> ... -> end.
std::unique_ptr<ChartList> buildChain(int states) {
  auto chart = std::make_unique<ChartList>();
  chart->records.reserve(2 * states + 1);
  for (int i = 0; i < states; ++i) {
    auto state = std::make_unique<ChartRecord>();
    state->guid = "s" + std::to_string(i);
    state->stateName = "S";
    state->parentName = "ROOT";
    state->parentGuid = "ROOT";
    state->outTransitions.push_back("t" + std::to_string(i));
    chart->add(std::move(state));
    auto transition = std::make_unique<ChartRecord>();
    transition->guid = "t" + std::to_string(i);
    transition->transitionName = "T";
    transition->transitionTarget = i + 1 < states ? "s" + std::to_string(i + 1) : "end";
    chart->add(std::move(transition));
  }
  auto end = std::make_unique<ChartRecord>();
  end->guid = "end";
  end->stateName = "End";
  end->stateType = "LocalTermination";
  end->parentName = "ROOT";
  end->entryAction = "ZKR_ASSERT(deep);";
  chart->add(std::move(end));
  return chart;
}

TEST(ChartSearchReference, MillionRecordChainDoesNotOverflowTheStack) {
  const std::unique_ptr<ChartList> chart = buildChain(500000);
  ASSERT_EQ(chart->size(), 1000001u);
  const ChartRecord* start = chart->find("s0");
  const ChartRecord* end = chart->find("end");
  ASSERT_NE(start, nullptr);
  ASSERT_NE(end, nullptr);
  VisitedRecords visited;
  EXPECT_EQ(statechartStep("deep", start, visited, *chart), end);
  EXPECT_EQ(visited.size(), 500000u);
  if (kSanitized) return;
  visited.clear();
  EXPECT_EQ(statechartStep("absent", start, visited, *chart), nullptr);
  EXPECT_EQ(visited.size(), 500000u);  // every state, the end's entry being a barrier
  visited.clear();
  EXPECT_EQ(flowchartCanComplete(start, visited, *chart), end);
}

}  // namespace
}  // namespace qendor
