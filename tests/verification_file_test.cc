#include "verify/verification_file.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "base/run_settings.h"
#include "tests/test_support.h"

namespace qendor {
namespace {

// One line per record: the thirteen fields, "|" between them, the list in [].
std::string dump(const ChartRecord& r) {
  std::string outs;
  for (const std::string& t : r.outTransitions) outs += (outs.empty() ? "" : ",") + t;
  return r.guid + "|" + r.stateName + "|" + r.stateType + "|" + r.parentName + "|" + r.parentGuid +
         "|" + r.entryAction + "|" + r.exitAction + "|" + r.internalAction + "|" +
         r.defaultTransition + "|[" + outs + "]|" + r.transitionName + "|" + r.transitionAction +
         "|" + r.transitionTarget;
}

class VerificationFileTest : public ::testing::Test {
 protected:
  void SetUp() override {
    resetRun();
    out_ = dir_.path();
    run().outDirectory = out_.c_str();
    run().testCaseNames[1] = "Lib::Pkg.Ctx.CaseOne";
  }
  void TearDown() override { resetRun(); }

  VerificationKind read(const std::string& content) {
    dir_.write("CaseOne.ver", content);
    return readVerificationFile(1);
  }
  std::vector<std::string> lines() const {
    const auto& entry = run().sequenceLines[1];
    return entry ? *entry : std::vector<std::string>{"<none>"};
  }
  std::vector<std::string> records() const {
    std::vector<std::string> result;
    const auto& chart = run().chartSteps[1];
    if (!chart) return {"<none>"};
    for (const auto& r : chart->records) result.push_back(dump(*r));
    return result;
  }

  test::TempDir dir_;
  std::string out_;
};

using Lines = std::vector<std::string>;

TEST_F(VerificationFileTest, MissingFileGivesMinusOneAndStoresNothing) {
  EXPECT_EQ(readVerificationFile(1), VerificationKind::kNoVerificationFile);
  EXPECT_EQ(run().sequenceLines.count(1), 0u);
  EXPECT_EQ(run().chartSteps.count(1), 0u);
}

TEST_F(VerificationFileTest, EmptyReadableFileGivesZero) {
  EXPECT_EQ(read(""), VerificationKind::kNoKind);
}

TEST_F(VerificationFileTest, CodeTestOnlyGivesFourAndStoresNothing) {
  EXPECT_EQ(read("CODE_TEST\n"), VerificationKind::kCodeTest);
  EXPECT_EQ(run().sequenceLines.count(1), 0u);
  EXPECT_EQ(run().chartSteps.count(1), 0u);
}

TEST_F(VerificationFileTest, FileNameComesFromOutDirectoryAndBaseNameThroughNormaliser) {
  // The directory is written with a backslash and quotes; both are normalised.
  dir_.write("sub/CaseOne.ver", "CODE_TEST\n");
  std::string quoted = "\"" + out_ + "\\sub\"";
  run().outDirectory = quoted.c_str();
  EXPECT_EQ(readVerificationFile(1), VerificationKind::kCodeTest);
}

TEST_F(VerificationFileTest, UnknownTestCaseNumberReadsDotVerAndInsertsAnEmptyName) {
  dir_.write(".ver", "STATECHART_TEST\n");
  EXPECT_EQ(readVerificationFile(7), VerificationKind::kStatechartTest);
  ASSERT_EQ(run().testCaseNames.count(7), 1u);
  EXPECT_EQ(run().testCaseNames[7], "");
}

TEST_F(VerificationFileTest, SdSectionKeepsEveryLaterLineEmptyOnesIncluded) {
  EXPECT_EQ(read("junk\nSD_TEST trailing\n1\n\nSTATE_NAME:\nCODE_TEST\nSD_TEST\n2"),
            VerificationKind::kSdTest);
  EXPECT_EQ(lines(), (Lines{"1", "", "STATE_NAME:", "CODE_TEST", "SD_TEST", "2"}));
  EXPECT_EQ(run().sequenceLines[1]->size(), 6u);
}

TEST_F(VerificationFileTest, LineCleanUpRemovesFirstCarriageReturnLeadingBlanksTabsAndAllBlanks) {
  EXPECT_EQ(read("SD_TEST\r\n \t a b\tc\r\r\nx\ry\n\t\t\n  \n"), VerificationKind::kSdTest);
  EXPECT_EQ(lines(), (Lines{"ab\tc\r", "xy", "", ""}));
}

TEST_F(VerificationFileTest, ParBeginBeforeSdTestIsIgnoredAfterItGivesMinusTen) {
  EXPECT_EQ(read("PAR_BEGIN(1)\nSD_TEST\nA\nPAR_BEGIN(2)\nB\n"), VerificationKind::kParallelSd);
  EXPECT_EQ(lines(), (Lines{"A"}));
}

TEST_F(VerificationFileTest, ChartRecordFieldsFollowReplaceAndAppendRules) {
  const char* text =
      "STATECHART_TEST\n"
      "STATE_NAME:\n"
      "Idle state\n"
      "STATE_TYPE:\nNormal\nSimple\n"
      "PARENT_NAME:\nROOT\n"
      "PARENT_GUID:\nROOT\n"
      "GUID:\ng1\ng2\n"
      "STATE_ACTION_ENTRY:\nZKR_ASSERT(a == 1);\nb();\n"
      "STATE_ACTION_EXIT:\nx\ny\n"
      "STATE_ACTION_INTERNAL:\ni\tj\nk\n"
      "DEFAULT_TRANSITION:\nd1\nd2\n"
      "OUT_TRANSITIONS:\nt1\nt2\n"
      "----------\n"
      "ignored\n"
      "TRANSITION_NAME:\n"
      "go\n"
      "TRANSITION_ACTION:\np\nq\n"
      "TRANSITION_TARGET:\ns1\ns2\n"
      "GUID:\nt1\n";
  EXPECT_EQ(read(text), VerificationKind::kStatechartTest);
  EXPECT_EQ(records(),
            (Lines{"g2|Idlestate|Simple|ROOT|ROOT|ZKR_ASSERT(a==1);b();|xy|i\tjk|d2|[t1,t2]|||",
                   "t1|||||||||[]|go|pq|s2"}));
}

TEST_F(VerificationFileTest, KeyLineLosesItsValueAndParentGuidIsNotGuid) {
  EXPECT_EQ(read("FLOWCHART_TEST\nSTATE_NAME: Idle\nBusy\nPARENT_GUID: p\npg\nGUID:\ng\n"),
            VerificationKind::kFlowchartTest);
  EXPECT_EQ(records(), (Lines{"g|Busy|||pg|||||[]|||"}));
}

TEST_F(VerificationFileTest, EachStateNameValueLineCreatesARecord) {
  EXPECT_EQ(read("FLOWCHART_TEST\nSTATE_NAME:\nA\nB\nGUID:\ng\n"),
            VerificationKind::kFlowchartTest);
  EXPECT_EQ(records(), (Lines{"|A||||||||[]|||", "g|B||||||||[]|||"}));
}

TEST_F(VerificationFileTest, ValuesWithoutChartListOrRecordAreIgnored) {
  EXPECT_EQ(read("GUID:\ng0\nSTATE_NAME:\nA\nSTATE_TYPE:\nDiagram\n"), VerificationKind::kNoKind);
  EXPECT_EQ(run().chartSteps.count(1), 0u);
  // A GUID value before any record of an existing list.
  EXPECT_EQ(read("FLOWCHART_TEST\nGUID:\ng0\nSTATE_NAME:\nA\n"), VerificationKind::kFlowchartTest);
  EXPECT_EQ(records(), (Lines{"|A||||||||[]|||"}));
}

TEST_F(VerificationFileTest, UnsupportedStateTypesEndWithMinusTwoKeepingWhatWasRead) {
  for (const char* type : {"Diagram", "And", "History", "Stub", "HistoryDeep"}) {
    std::string text =
        "STATECHART_TEST\nSTATE_NAME:\nA\nSTATE_TYPE:\n" + std::string(type) + "\nGUID:\ng\n";
    EXPECT_EQ(read(text), VerificationKind::kUnsupportedChart) << type;
    EXPECT_EQ(records(), (Lines{"|A|" + std::string(type) + "|||||||[]|||"})) << type;
  }
  EXPECT_EQ(read("STATECHART_TEST\nSTATE_NAME:\nA\nSTATE_TYPE:\nAnd\n"),
            VerificationKind::kUnsupportedChart);
  EXPECT_EQ(read("STATECHART_TEST\nSTATE_NAME:\nA\nSTATE_TYPE:\nOr\n"),
            VerificationKind::kStatechartTest);
}

TEST_F(VerificationFileTest, SubStatechartEndsWithMinusTwo) {
  EXPECT_EQ(read("STATECHART_TEST\nSTATE_NAME:\nA\nSUB_STATECHART x\nSTATE_NAME:\nB\n"),
            VerificationKind::kUnsupportedChart);
  EXPECT_EQ(records(), (Lines{"|A||||||||[]|||"}));
}

TEST_F(VerificationFileTest, SecondChartLineStartsNewListButKeepsCurrentRecord) {
  EXPECT_EQ(
      read("FLOWCHART_TEST\nSTATE_NAME:\nA\nSTATECHART_TEST\nGUID:\ng\nOUT_TRANSITIONS:\nt\n"),
      VerificationKind::kStatechartTest);
  // The values went to the record of the dropped list; the new one is empty.
  EXPECT_EQ(records(), Lines{});
  EXPECT_EQ(read("STATECHART_TEST\nSTATE_NAME:\nA\nFLOWCHART_TEST\nSTATE_NAME:\nB\nGUID:\ng\n"),
            VerificationKind::kFlowchartTest);
  EXPECT_EQ(records(), (Lines{"g|B||||||||[]|||"}));
}

TEST_F(VerificationFileTest, KindLinesAfterAChartChangeOnlyTheKind) {
  EXPECT_EQ(read("FLOWCHART_TEST\nSTATE_NAME:\nA\nCODE_TEST\nB\n"), VerificationKind::kCodeTest);
  // The section is still STATE_NAME, so B makes a second record.
  EXPECT_EQ(records(), (Lines{"|A||||||||[]|||", "|B||||||||[]|||"}));
}

TEST_F(VerificationFileTest, SecondReadReplacesTheStoredLists) {
  EXPECT_EQ(read("SD_TEST\nA\n"), VerificationKind::kSdTest);
  EXPECT_EQ(read("SD_TEST\nB\nC\n"), VerificationKind::kSdTest);
  EXPECT_EQ(lines(), (Lines{"B", "C"}));
  EXPECT_EQ(read("FLOWCHART_TEST\nSTATE_NAME:\nA\n"), VerificationKind::kFlowchartTest);
  EXPECT_EQ(read("FLOWCHART_TEST\n"), VerificationKind::kFlowchartTest);
  EXPECT_EQ(records(), Lines{});
}

}  // namespace
}  // namespace qendor
