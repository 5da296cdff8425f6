#include "verify/model_coverage.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "base/line_reader.h"
#include "tests/test_case_records.h"
#include "verify/judgement.h"
#include "verify/verification_file.h"

namespace qendor {
namespace {

using test::kCodeFinish;
using test::record;

TestModel modelOf(const std::string& ver) {
  LineReader lines{std::string_view(ver)};
  return TestModel(parseVerificationFile(lines));
}

// A sequence diagram test case whose messages carry `values` in turn as
// their progress, finished.
AssertionList sdRun(const std::vector<std::string>& values) {
  AssertionList records{record(test::kSdStart)};
  for (const std::string& value : values) {
    records.push_back(record("ZKR_ASSERT_SD(\"Main\", \"m" + value + "\", \"x\")", "PASSED",
                             "step - progress " + value + "/9"));
  }
  records.push_back(record(test::kSdFinish));
  return records;
}

// A chart test case: its assertions, then the finish.
AssertionList chartRun(const std::vector<std::string>& statements) {
  AssertionList records;
  for (const std::string& statement : statements) records.push_back(record(statement));
  records.push_back(record(kCodeFinish));
  return records;
}

// Each model on one line: its members, then per diagram line its count
// ("line:count" for steps, "line(op):count" for operands, "loop line:zero/
// once/more"), or per chart record "name:count"; then the totals.
std::string dump(const ModelCoverages& coverages) {
  std::string out;
  for (const CoveredModel& model : coverages.models()) {
    out += "[";
    for (int32_t number : model.members) out += " #" + std::to_string(number);
    out += " ]";
    if (model.sequence) {
      for (const OutlineItem& item : model.outline) {
        if (item.kind == OutlineItem::Kind::kStep) {
          out += " " + std::to_string(item.line + 1) + ":" +
                 std::to_string(model.lineCounts[item.line]);
        }
      }
      for (size_t i = 0; i < model.operands.size(); ++i) {
        out += " " + std::to_string(model.operands[i].begin + 1) +
               "(op):" + std::to_string(model.operandCounts[i]);
      }
      for (const OutlineItem& item : model.outline) {
        if (item.kind != OutlineItem::Kind::kOperandBegin || item.operatorName != "LOOP") continue;
        LoopTally tally;
        const auto found = model.loops.find(item.line);
        if (found != model.loops.end()) tally = found->second;
        out += " loop " + std::to_string(item.line + 1) + ":" + std::to_string(tally.zero) + "/" +
               std::to_string(tally.once) + "/" + std::to_string(tally.more);
      }
    } else {
      for (size_t i = 0; i < model.chart->size(); ++i) {
        const ChartRecord& r = *model.chart->records[i];
        out += " " + (r.stateName.empty() ? r.transitionName : r.stateName) + ":" +
               std::to_string(model.recordCounts[i]);
      }
    }
    const CoverageTotals t = coverageTotals(model);
    if (model.sequence) {
      out += " | steps " + std::to_string(t.stepsCovered) + "/" + std::to_string(t.steps) +
             " operands " + std::to_string(t.operandsCovered) + "/" + std::to_string(t.operands);
    } else {
      out += " | states " + std::to_string(t.statesCovered) + "/" + std::to_string(t.states) +
             " transitions " + std::to_string(t.transitionsCovered) + "/" +
             std::to_string(t.transitions);
    }
    out += "\n";
  }
  return out;
}

// A test case of a table: its verification file and its records.
struct Run {
  std::string ver;
  AssertionList records;
};

std::string coverageOf(const std::vector<Run>& runs, bool coverage = true) {
  ModelCoverages coverages;
  std::vector<TestCaseLog> logs;
  logs.reserve(runs.size());
  for (size_t i = 0; i < runs.size(); ++i) {
    logs.push_back(makeTestCaseLog(runs[i].records));
    const TestCaseVerdict verdict =
        judgeTestCase(&logs.back(), modelOf(runs[i].ver), false, coverage);
    coverages.add(static_cast<int32_t>(i + 1), verdict);
  }
  return dump(coverages);
}

// Every fragment kind, a loop iterated 3, 0 and 1 times and one run that
// never came to it, and a last step no run recorded.
const std::string kFragments =
    "SD_TEST\n1\n"
    "ALT_BEGIN(a)\nALT_OPERAND_BEGIN(a)\n2\nALT_OPERAND_END(a)\n"
    "ALT_OPERAND_BEGIN(a)\n3\nALT_OPERAND_END(a)\nALT_END(a)\n"
    "OPT_BEGIN(o)\nOPT_OPERAND_BEGIN(o)\n4\nOPT_OPERAND_END(o)\nOPT_END(o)\n"
    "LOOP_BEGIN(l)\nLOOP_OPERAND_BEGIN(l)\n5\nLOOP_OPERAND_END(l)\nLOOP_END(l)\n"
    "CONSIDER_BEGIN(c)\nCONSIDER_OPERAND_BEGIN(c)\n6\nCONSIDER_OPERAND_END(c)\nCONSIDER_END(c)\n"
    "BREAK_BEGIN(b)\nBREAK_OPERAND_BEGIN(b)\n7\nBREAK_OPERAND_END(b)\nBREAK_END(b)\n"
    "8\n9";

// A statechart with a composite state whose two inner states form a cycle:
// Init -go-> Comp [default -> A (asserts a); A -next-> B (asserts b);
// B -back-> A] -leave-> End, and an unused transition Init -skip-> End.
const std::string kComposite =
    "STATECHART_TEST\n"
    "----------\nSTATE_NAME:\nInit\nGUID:\ns1\nSTATE_TYPE:\nInitial\n"
    "PARENT_NAME:\nROOT\nPARENT_GUID:\nROOT\nOUT_TRANSITIONS:\nt1\nt6\n"
    "----------\nTRANSITION_NAME:\ngo\nGUID:\nt1\nTRANSITION_TARGET:\ns2\n"
    "----------\nSTATE_NAME:\nComp\nGUID:\ns2\nSTATE_TYPE:\nState\n"
    "PARENT_NAME:\nROOT\nPARENT_GUID:\nROOT\nDEFAULT_TRANSITION:\nt2\nOUT_TRANSITIONS:\nt5\n"
    "----------\nTRANSITION_NAME:\nenter\nGUID:\nt2\nTRANSITION_TARGET:\ns3\n"
    "----------\nSTATE_NAME:\nA\nGUID:\ns3\nSTATE_TYPE:\nState\n"
    "PARENT_NAME:\nComp\nPARENT_GUID:\ns2\nSTATE_ACTION_ENTRY:\nZKR_ASSERT_TRUE(a);\n"
    "OUT_TRANSITIONS:\nt3\n"
    "----------\nTRANSITION_NAME:\nnext\nGUID:\nt3\nTRANSITION_TARGET:\ns4\n"
    "----------\nSTATE_NAME:\nB\nGUID:\ns4\nSTATE_TYPE:\nState\n"
    "PARENT_NAME:\nComp\nPARENT_GUID:\ns2\nSTATE_ACTION_ENTRY:\nZKR_ASSERT_TRUE(b);\n"
    "OUT_TRANSITIONS:\nt4\n"
    "----------\nTRANSITION_NAME:\nback\nGUID:\nt4\nTRANSITION_TARGET:\ns3\n"
    "----------\nTRANSITION_NAME:\nleave\nGUID:\nt5\nTRANSITION_TARGET:\ns5\n"
    "----------\nTRANSITION_NAME:\nskip\nGUID:\nt6\nTRANSITION_TARGET:\ns5\n"
    "TRANSITION_ACTION:\nZKR_ASSERT_TRUE(never);\n"
    "----------\nSTATE_NAME:\nEnd\nGUID:\ns5\nSTATE_TYPE:\nTermination\n"
    "PARENT_NAME:\nROOT\nPARENT_GUID:\nROOT\n";

struct Case {
  const char* name;
  std::vector<Run> runs;
  const char* expected;
};

TEST(ModelCoverage, CountsTheTestCasesThatWentThroughEachElement) {
  const Case cases[] = {
      {"every fragment kind; loops iterated 3, 0 and 1 times, and one run never came to it",
       {{kFragments, sdRun({"1", "2", "5", "5", "5", "6", "8"})},
        {kFragments, sdRun({"1", "3", "4", "6", "8"})},
        {kFragments, sdRun({"1", "2", "4", "5", "6", "7"})},
        {kFragments, sdRun({"1", "3"})}},
       "[ #1 #2 #3 #4 ] 1:4 4:2 7:2 12:2 17:2 22:3 27:1 30:2 31:0 3(op):2 6(op):2 11(op):2 "
       "16(op):2 21(op):3 26(op):1 loop 16:1/1/1 | steps 8/9 operands 6/6\n"},
      {"a test case with a model of its own stands apart",
       {{"SD_TEST\n1\n2", sdRun({"1", "2"})},
        {"SD_TEST\n1\n2\n3", sdRun({"1"})},
        {"SD_TEST\n1\n2", sdRun({"1"})}},
       "[ #1 #3 ] 1:2 2:1 | steps 2/2 operands 0/0\n"
       "[ #2 ] 1:1 2:0 3:0 | steps 1/3 operands 0/0\n"},
      {"a rejected message reaches nothing",
       {{"SD_TEST\n1\n2\n3", sdRun({"1", "3", "2"})}},
       "[ #1 ] 1:1 2:0 3:0 | steps 1/3 operands 0/0\n"},
      {"statechart: composite states, the cycle inside gone round",
       {{kComposite, chartRun({"ZKR_ASSERT_TRUE(a)", "ZKR_ASSERT_TRUE(b)", "ZKR_ASSERT_TRUE(a)"})},
        {kComposite, chartRun({"ZKR_ASSERT_TRUE(a)"})}},
       "[ #1 #2 ] Init:2 go:2 Comp:2 enter:2 A:2 next:1 B:1 back:1 leave:2 skip:0 End:2 | "
       "states 5/5 transitions 5/6\n"},
      {"statechart and flowchart of the shared records",
       {{test::kStatechart, chartRun({"ZKR_ASSERT_TRUE(x == 1)"})},
        {test::flowchart("LocalTermination"), chartRun({"ZKR_ASSERT_TRUE(x == 1)"})},
        {test::kStatechart, chartRun({"ZKR_ASSERT_TRUE(y == 2)"})}},
       "[ #1 #3 ] Init:1 go:1 Work:1 done:1 End:1 | states 3/3 transitions 2/2\n"
       "[ #2 ] Start:1 a:1 Act:1 b:1 End:1 | states 3/3 transitions 2/2\n"},
  };
  for (const Case& c : cases) EXPECT_EQ(coverageOf(c.runs), c.expected) << c.name;
}

TEST(ModelCoverage, NothingWithoutTheOptionOrWithoutAModel) {
  EXPECT_EQ(coverageOf({{kFragments, sdRun({"1"})}}, false), "");
  EXPECT_EQ(coverageOf({{"CODE_TEST", chartRun({"ZKR_ASSERT_TRUE(a)"})}}), "");
}

TEST(ModelCoverage, FingerprintFollowsTheContent) {
  ModelCoverages coverages;
  const TestCaseLog log = makeTestCaseLog(sdRun({"1"}));
  coverages.add(1, judgeTestCase(&log, modelOf("SD_TEST\n1\n2"), false, true));
  coverages.add(2, judgeTestCase(&log, modelOf("SD_TEST\n1\n3"), false, true));
  coverages.add(3, judgeTestCase(&log, modelOf("SD_TEST\n1\n2"), false, true));
  ASSERT_EQ(coverages.models().size(), 2u);
  // FNV-1a of the kind and the lines: the same in every build.
  EXPECT_EQ(modelFingerprint(coverages.models()[0]), "b4569c55bcdf3530");
  EXPECT_NE(modelFingerprint(coverages.models()[0]), modelFingerprint(coverages.models()[1]));
}

}  // namespace
}  // namespace qendor
