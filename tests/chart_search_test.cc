#include "verify/chart_search.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "base/line_reader.h"
#include "verify/verification_file.h"

namespace qendor {
namespace {

using Field = std::pair<const char*, const char*>;

// One record of a verification file: each key on its line, its value on the
// next, and the separator line behind.
std::string record(std::initializer_list<Field> fields) {
  std::string text;
  for (const Field& f : fields) text += std::string(f.first) + "\n" + f.second + "\n";
  return text + "----------\n";
}

class ChartSearchTest : public ::testing::Test {
 protected:
  // Reads a verification text of `kind` holding `records` as the chart to
  // search.
  void load(const std::string& kind, const std::string& records) {
    const std::string text = kind + "\n" + records;
    LineReader lines{std::string_view(text)};
    Verification verification = parseVerificationFile(lines);
    ASSERT_EQ(verification.kind, kind == "FLOWCHART_TEST" ? VerificationKind::kFlowchartTest
                                                          : VerificationKind::kStatechartTest);
    ASSERT_NE(verification.chart, nullptr);
    chart_ = std::move(verification.chart);
  }
  const ChartRecord* at(const char* guid) {
    const ChartRecord* found = chart_->find(guid);
    EXPECT_NE(found, nullptr) << guid;
    return found;
  }
  // The guid of a search result, "null" for none.
  static std::string name(const ChartRecord* r) { return r ? r->guid : "null"; }

  std::string stateStep(const char* assertion, const char* from) {
    VisitedRecords visited;
    return name(statechartStep(assertion, at(from), visited, *chart_));
  }
  std::string flowStep(const char* assertion, const char* from) {
    VisitedRecords visited;
    return name(flowchartStep(assertion, at(from), visited, *chart_));
  }
  std::string stateComplete(const char* from) {
    VisitedRecords visited;
    return name(statechartCanComplete(at(from), visited, *chart_));
  }
  std::string flowComplete(const char* from) {
    VisitedRecords visited;
    return name(flowchartCanComplete(at(from), visited, *chart_));
  }

  std::unique_ptr<ChartList> chart_;
};

// A statechart: Start -go-> A -next/z-> B (composite: init -> B1 -finish-> BEnd)
// -leave-> End, and A -other-> C.
const std::string kStatechart =
    record({{"STATE_NAME:", "Start"},
            {"STATE_TYPE:", "Normal"},
            {"PARENT_NAME:", "ROOT"},
            {"PARENT_GUID:", "ROOT"},
            {"GUID:", "s_init"},
            {"OUT_TRANSITIONS:", "t1"}}) +
    record({{"TRANSITION_NAME:", "go"}, {"GUID:", "t1"}, {"TRANSITION_TARGET:", "s_a"}}) +
    record({{"STATE_NAME:", "A"},
            {"STATE_TYPE:", "Normal"},
            {"PARENT_NAME:", "ROOT"},
            {"PARENT_GUID:", "ROOT"},
            {"GUID:", "s_a"},
            {"STATE_ACTION_ENTRY:", "ZKR_ASSERT(x == 1);"},
            {"STATE_ACTION_INTERNAL:", "ZKR_ASSERT(y == 2);"},
            {"OUT_TRANSITIONS:", "t2\nt_missing\nt3"}}) +
    record({{"TRANSITION_NAME:", "next"},
            {"GUID:", "t2"},
            {"TRANSITION_ACTION:", "ZKR_ASSERT(z == 3);"},
            {"TRANSITION_TARGET:", "s_b"}}) +
    record({{"TRANSITION_NAME:", "other"},
            {"GUID:", "t3"},
            {"TRANSITION_ACTION:", "log();"},
            {"TRANSITION_TARGET:", "s_c"}}) +
    record({{"STATE_NAME:", "C"},
            {"PARENT_NAME:", "ROOT"},
            {"PARENT_GUID:", "ROOT"},
            {"GUID:", "s_c"},
            {"STATE_ACTION_ENTRY:", "ZKR_ASSERT(v == 5);"}}) +
    record({{"STATE_NAME:", "B"},
            {"PARENT_NAME:", "ROOT"},
            {"PARENT_GUID:", "ROOT"},
            {"GUID:", "s_b"},
            {"DEFAULT_TRANSITION:", "t_def"},
            {"OUT_TRANSITIONS:", "t_end"}}) +
    record({{"TRANSITION_NAME:", "init"}, {"GUID:", "t_def"}, {"TRANSITION_TARGET:", "s_b1"}}) +
    record({{"STATE_NAME:", "B1"},
            {"PARENT_NAME:", "B"},
            {"PARENT_GUID:", "s_b"},
            {"GUID:", "s_b1"},
            {"STATE_ACTION_ENTRY:", "ZKR_ASSERT(w == 4);"},
            {"STATE_ACTION_EXIT:", "ZKR_ASSERT(e == 6);"},
            {"OUT_TRANSITIONS:", "t_local"}}) +
    record(
        {{"TRANSITION_NAME:", "finish"}, {"GUID:", "t_local"}, {"TRANSITION_TARGET:", "s_bend"}}) +
    record({{"STATE_NAME:", "BEnd"},
            {"STATE_TYPE:", "LocalTermination"},
            {"PARENT_NAME:", "B"},
            {"PARENT_GUID:", "s_b"},
            {"GUID:", "s_bend"}}) +
    record({{"TRANSITION_NAME:", "leave"}, {"GUID:", "t_end"}, {"TRANSITION_TARGET:", "s_end"}}) +
    record({{"STATE_NAME:", "End"},
            {"STATE_TYPE:", "LocalTermination"},
            {"PARENT_NAME:", "ROOT"},
            {"PARENT_GUID:", "ROOT"},
            {"GUID:", "s_end"}});

TEST_F(ChartSearchTest, StatechartStepsThroughActionsTransitionsAndCompositeStates) {
  load("STATECHART_TEST", kStatechart);
  // The assertion's blanks are removed; the reader removed those of the file.
  EXPECT_EQ(stateStep("x == 1", "s_init"), "s_a");
  EXPECT_EQ(stateStep("y == 2", "s_a"), "s_a");    // internal action: no move
  EXPECT_EQ(stateStep("z == 3", "s_a"), "t2");     // a leaving transition's action
  EXPECT_EQ(stateStep("w == 4", "t2"), "s_b1");    // through the default transition
  EXPECT_EQ(stateStep("e == 6", "s_b1"), "s_b1");  // exit action
  EXPECT_EQ(stateStep("v == 5", "s_a"), "s_c");    // t2 is a barrier, t_missing skipped
  EXPECT_EQ(stateStep("x == 1", "t1"), "s_a");
  EXPECT_EQ(stateStep("a == 0", "s_a"), "null");
  EXPECT_EQ(chart_->find("t_missing"), nullptr);
}

TEST_F(ChartSearchTest, StatechartStepBarriersAndVisitedSet) {
  load("STATECHART_TEST", kStatechart);
  VisitedRecords visited;
  // From A: t2 carries another assertion, t3 leads to C whose entry is one.
  EXPECT_EQ(statechartStep("q == 9", at("s_a"), visited, *chart_), nullptr);
  EXPECT_EQ(visited, (VisitedRecords{at("s_a")}));
  // B1's exit action holds an assertion: B1 is not even entered.
  visited.clear();
  EXPECT_EQ(statechartStep("q == 9", at("s_b1"), visited, *chart_), nullptr);
  EXPECT_TRUE(visited.empty());
  // A record already visited ends the search.
  visited = {at("s_init")};
  EXPECT_EQ(statechartStep("x == 1", at("s_init"), visited, *chart_), nullptr);
  visited.clear();
  EXPECT_EQ(statechartStep("w == 4", at("s_b"), visited, *chart_), at("s_b1"));
  EXPECT_EQ(visited, (VisitedRecords{at("s_b")}));
  EXPECT_EQ(statechartStep("x", nullptr, visited, *chart_), nullptr);
}

TEST_F(ChartSearchTest, StatechartCompletionLeavesCompositeStatesThroughTheirParent) {
  load("STATECHART_TEST", kStatechart);
  VisitedRecords visited;
  EXPECT_EQ(statechartCanComplete(at("s_b1"), visited, *chart_), at("s_end"));
  EXPECT_EQ(visited, (VisitedRecords{at("s_b1"), at("s_bend"), at("s_b")}));
  EXPECT_EQ(stateComplete("s_b"), "s_end");
  EXPECT_EQ(stateComplete("t_end"), "s_end");
  // Start reaches A, whose entry action is an assertion.
  EXPECT_EQ(stateComplete("s_init"), "null");
  // C has nowhere to go and its parent is at top level.
  EXPECT_EQ(stateComplete("s_c"), "null");
  visited.clear();
  EXPECT_EQ(statechartCanComplete(nullptr, visited, *chart_), nullptr);
}

TEST_F(ChartSearchTest, BlanksInTheActionTextNeverMatch) {
  load("STATECHART_TEST", kStatechart);
  // Records read from a file have no blanks; add one made in memory.
  auto spaced = std::make_unique<ChartRecord>();
  spaced->guid = "s_spaced";
  spaced->stateName = "Spaced";
  spaced->entryAction = "ZKR_ASSERT(x == 1);";
  chart_->add(std::move(spaced));
  EXPECT_EQ(stateStep("x == 1", "s_spaced"), "null");
  EXPECT_EQ(stateStep("x==1", "s_spaced"), "null");
  EXPECT_EQ(flowStep("x == 1", "s_spaced"), "null");
  EXPECT_EQ(stateStep("(x == 1", "s_spaced"), "null");
  EXPECT_EQ(stateStep("ZKR_ASSERT(x", "s_spaced"), "s_spaced");
}

// A flowchart: Start -f1-> A -f2-> Sub (default f_def -> Sub1 -f_loc-> SubEnd,
// a local termination) -f_never-> End.
const std::string kFlowchart =
    record({{"STATE_NAME:", "Start"},
            {"PARENT_NAME:", "ROOT"},
            {"PARENT_GUID:", "ROOT"},
            {"GUID:", "n_start"},
            {"OUT_TRANSITIONS:", "f1"}}) +
    record({{"TRANSITION_NAME:", "f1"},
            {"GUID:", "f1"},
            {"TRANSITION_ACTION:", "ZKR_ASSERT(a == 1);"},
            {"TRANSITION_TARGET:", "n_a"}}) +
    record({{"STATE_NAME:", "A"},
            {"PARENT_NAME:", "ROOT"},
            {"PARENT_GUID:", "ROOT"},
            {"GUID:", "n_a"},
            {"STATE_ACTION_ENTRY:", "ZKR_ASSERT(b == 2);"},
            {"STATE_ACTION_INTERNAL:", "ZKR_ASSERT(i == 1);"},
            {"STATE_ACTION_EXIT:", "ZKR_ASSERT(o == 1);"},
            {"OUT_TRANSITIONS:", "f2"}}) +
    record({{"TRANSITION_NAME:", "f2"}, {"GUID:", "f2"}, {"TRANSITION_TARGET:", "n_sub"}}) +
    record({{"STATE_NAME:", "Sub"},
            {"PARENT_NAME:", "ROOT"},
            {"PARENT_GUID:", "ROOT"},
            {"GUID:", "n_sub"},
            {"DEFAULT_TRANSITION:", "f_def"},
            {"OUT_TRANSITIONS:", "f_never"}}) +
    record({{"TRANSITION_NAME:", "fdef"}, {"GUID:", "f_def"}, {"TRANSITION_TARGET:", "n_sub1"}}) +
    record({{"STATE_NAME:", "Sub1"},
            {"PARENT_NAME:", "Sub"},
            {"PARENT_GUID:", "n_sub"},
            {"GUID:", "n_sub1"},
            {"STATE_ACTION_ENTRY:", "ZKR_ASSERT(c == 3);"},
            {"OUT_TRANSITIONS:", "f_loc"}}) +
    record({{"TRANSITION_NAME:", "floc"}, {"GUID:", "f_loc"}, {"TRANSITION_TARGET:", "n_subend"}}) +
    record({{"STATE_NAME:", "SubEnd"},
            {"STATE_TYPE:", "LocalTermination"},
            {"PARENT_NAME:", "Sub"},
            {"PARENT_GUID:", "n_sub"},
            {"GUID:", "n_subend"},
            {"OUT_TRANSITIONS:", "f_own"}}) +
    record(
        {{"TRANSITION_NAME:", "fnever"}, {"GUID:", "f_never"}, {"TRANSITION_TARGET:", "n_end"}}) +
    record({{"TRANSITION_NAME:", "fown"}, {"GUID:", "f_own"}, {"TRANSITION_TARGET:", "n_a"}}) +
    record({{"STATE_NAME:", "End"},
            {"STATE_TYPE:", "LocalTermination"},
            {"PARENT_NAME:", "ROOT"},
            {"PARENT_GUID:", "ROOT"},
            {"GUID:", "n_end"}}) +
    record({{"STATE_NAME:", "Orphan"},
            {"STATE_TYPE:", "LocalTermination"},
            {"PARENT_NAME:", "Gone"},
            {"PARENT_GUID:", "n_gone"},
            {"GUID:", "n_orphan"},
            {"OUT_TRANSITIONS:", "f_never"}}) +
    record({{"STATE_NAME:", "Inner"},
            {"PARENT_NAME:", "Sub"},
            {"PARENT_GUID:", "n_sub"},
            {"GUID:", "n_inner"},
            {"OUT_TRANSITIONS:", "f_term"}}) +
    record({{"TRANSITION_NAME:", "fterm"}, {"GUID:", "f_term"}, {"TRANSITION_TARGET:", "n_term"}}) +
    record({{"STATE_NAME:", "Term"},
            {"STATE_TYPE:", "Termination"},
            {"PARENT_NAME:", "Sub"},
            {"PARENT_GUID:", "n_sub"},
            {"GUID:", "n_term"}});

TEST_F(ChartSearchTest, FlowchartLooksAtEntryActionsOnly) {
  load("FLOWCHART_TEST", kFlowchart);
  EXPECT_EQ(flowStep("b == 2", "n_start"), "n_a");
  EXPECT_EQ(flowStep("a == 1", "n_start"), "null");  // transition actions are not searched
  EXPECT_EQ(stateStep("a == 1", "n_start"), "f1");
  EXPECT_EQ(flowStep("i == 1", "n_a"), "null");  // nor internal and exit actions
  EXPECT_EQ(flowStep("o == 1", "n_a"), "null");
  EXPECT_EQ(stateStep("i == 1", "n_a"), "n_a");
  EXPECT_EQ(stateStep("o == 1", "n_a"), "n_a");
}

TEST_F(ChartSearchTest, FlowchartFollowsDefaultTransitionAloneAndLeavesFromLocalTermination) {
  load("FLOWCHART_TEST", kFlowchart);
  EXPECT_EQ(flowStep("c == 3", "n_a"), "n_sub1");
  // The default transition is followed alone: Sub's own leaving transition
  // is never tried, so End's entry is not reached from Sub.
  VisitedRecords visited;
  EXPECT_EQ(flowchartStep("zz", at("n_sub"), visited, *chart_), nullptr);
  EXPECT_EQ(visited, (VisitedRecords{at("n_sub")}));
  // From the local termination the parent's leaving transitions are tried,
  // not its own (f_own would lead back to A).
  visited.clear();
  EXPECT_EQ(flowchartStep("b == 2", at("n_subend"), visited, *chart_), nullptr);
  EXPECT_EQ(visited, (VisitedRecords{at("n_subend"), at("n_end")}));
  EXPECT_EQ(stateStep("b == 2", "n_subend"), "n_a");
  // An unresolved parent ends the search.
  EXPECT_EQ(flowStep("zz", "n_orphan"), "null");
  EXPECT_EQ(flowComplete("n_orphan"), "null");
}

TEST_F(ChartSearchTest, FlowchartCompletionNeedsATopLevelLocalTermination) {
  load("FLOWCHART_TEST", kFlowchart);
  VisitedRecords visited;
  EXPECT_EQ(flowchartCanComplete(at("n_sub1"), visited, *chart_), at("n_end"));
  EXPECT_EQ(visited, (VisitedRecords{at("n_sub1"), at("n_subend")}));
  EXPECT_EQ(flowComplete("n_start"), "null");  // A's entry action is an assertion
  EXPECT_EQ(stateComplete("n_sub1"), "n_end");
  // A "Termination" completes a statechart at any level, never a flowchart.
  EXPECT_EQ(stateComplete("n_inner"), "n_term");
  EXPECT_EQ(flowComplete("n_inner"), "null");
  visited.clear();
  EXPECT_EQ(flowchartCanComplete(nullptr, visited, *chart_), nullptr);
  EXPECT_EQ(flowchartStep("x", nullptr, visited, *chart_), nullptr);
}

// C1 -> C2 -> C1 is a cycle; C2 also leads to C3. TA and TB lead to each other.
const std::string kCycles =
    record({{"STATE_NAME:", "C1"},
            {"PARENT_NAME:", "ROOT"},
            {"PARENT_GUID:", "ROOT"},
            {"GUID:", "c1"},
            {"OUT_TRANSITIONS:", "tc12"}}) +
    record({{"TRANSITION_NAME:", "tc12"}, {"GUID:", "tc12"}, {"TRANSITION_TARGET:", "c2"}}) +
    record({{"STATE_NAME:", "C2"}, {"GUID:", "c2"}, {"OUT_TRANSITIONS:", "tc21\ntc_ok"}}) +
    record({{"TRANSITION_NAME:", "tc21"}, {"GUID:", "tc21"}, {"TRANSITION_TARGET:", "c1"}}) +
    record({{"TRANSITION_NAME:", "tcok"}, {"GUID:", "tc_ok"}, {"TRANSITION_TARGET:", "c3"}}) +
    record(
        {{"STATE_NAME:", "C3"}, {"GUID:", "c3"}, {"STATE_ACTION_ENTRY:", "ZKR_ASSERT(found);"}}) +
    record({{"TRANSITION_NAME:", "ta"}, {"GUID:", "ta"}, {"TRANSITION_TARGET:", "tb"}}) +
    record({{"TRANSITION_NAME:", "tb"}, {"GUID:", "tb"}, {"TRANSITION_TARGET:", "ta"}}) +
    record({{"STATE_NAME:", "C4"}, {"GUID:", "c4"}, {"OUT_TRANSITIONS:", "ta\ntc_ok"}}) +
    record({{"STATE_NAME:", "Dup"}, {"GUID:", "c1"}}) +
    record({{"TRANSITION_NAME:", ""}, {"GUID:", "unnamed"}, {"TRANSITION_TARGET:", "c3"}});

TEST_F(ChartSearchTest, CyclesEndWithNull) {
  load("STATECHART_TEST", kCycles);
  VisitedRecords visited;
  EXPECT_EQ(statechartStep("nothing", at("c1"), visited, *chart_), nullptr);
  EXPECT_EQ(visited, (VisitedRecords{at("c1"), at("c2")}));
  EXPECT_EQ(stateStep("found", "c1"), "c3");  // after the cycle branch, the next one
  EXPECT_EQ(flowStep("found", "c1"), "c3");
  EXPECT_EQ(stateComplete("c1"), "null");
  EXPECT_EQ(flowComplete("c1"), "null");
  // Transitions leading to each other end that branch, and the search goes on.
  EXPECT_EQ(stateStep("x", "ta"), "null");
  EXPECT_EQ(flowStep("x", "ta"), "null");
  EXPECT_EQ(stateComplete("ta"), "null");
  EXPECT_EQ(flowComplete("ta"), "null");
  EXPECT_EQ(stateStep("found", "c4"), "c3");
  EXPECT_EQ(flowStep("found", "c4"), "c3");
}

TEST_F(ChartSearchTest, FindTakesTheFirstRecordWithTheGuid) {
  load("STATECHART_TEST", kCycles);
  EXPECT_EQ(at("c1")->stateName, "C1");
  EXPECT_EQ(chart_->find("c"), nullptr);
  EXPECT_EQ(chart_->find(""), nullptr);              // every record here has a guid
  EXPECT_EQ(stateStep("found", "unnamed"), "null");  // a transition without name
  EXPECT_EQ(chart_->firstRecord(), at("c1"));
  load("FLOWCHART_TEST", "");
  EXPECT_EQ(chart_->find("c1"), nullptr);
  EXPECT_EQ(chart_->firstRecord(), nullptr);
  EXPECT_EQ(ChartList().find("c1"), nullptr);  // a chart never filled
}

}  // namespace
}  // namespace qendor
