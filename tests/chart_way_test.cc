#include "verify/chart_way.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/line_reader.h"
#include "verify/verification_file.h"

namespace qendor {
namespace {

// A statechart: Init -go-> the composite Outer, whose default transition
// "enter" leads to Inner; Inner loops by "again" (which asserts again()),
// and Outer leaves by "checkout" (asserting total()>0) for Paid, which
// performs paid(), then by "close" for the top-level End. Lost is reached
// by nothing.
const char kChart[] =
    "STATECHART_TEST\n"
    "STATE_NAME:\nInit\nGUID:\ng1\nSTATE_TYPE:\nState\nPARENT_NAME:\nROOT\nPARENT_GUID:\nROOT\n"
    "STATE_ACTION_ENTRY:\nZKR_ASSERT_TRUE(\"Starting\");\nOUT_TRANSITIONS:\nt1\n"
    "----------\n"
    "TRANSITION_NAME:\ngo\nGUID:\nt1\nTRANSITION_TARGET:\ng2\n"
    "----------\n"
    "STATE_NAME:\nOuter\nGUID:\ng2\nSTATE_TYPE:\nState\nPARENT_NAME:\nROOT\nPARENT_GUID:\nROOT\n"
    "DEFAULT_TRANSITION:\nt2\nOUT_TRANSITIONS:\nt4\n"
    "----------\n"
    "TRANSITION_NAME:\nenter\nGUID:\nt2\nTRANSITION_TARGET:\ng3\n"
    "----------\n"
    "STATE_NAME:\nInner\nGUID:\ng3\nSTATE_TYPE:\nState\nPARENT_NAME:\nOuter\nPARENT_GUID:\ng2\n"
    "STATE_ACTION_ENTRY:\nZKR_ASSERT_TRUE(inner());\nOUT_TRANSITIONS:\nt3\n"
    "----------\n"
    "TRANSITION_NAME:\nagain\nGUID:\nt3\nTRANSITION_ACTION:\nlog();ZKR_ASSERT_TRUE(again());\n"
    "TRANSITION_TARGET:\ng3\n"
    "----------\n"
    "TRANSITION_NAME:\ncheckout\nGUID:\nt4\nTRANSITION_ACTION:\nZKR_ASSERT_TRUE(total() > 0);\n"
    "TRANSITION_TARGET:\ng4\n"
    "----------\n"
    "STATE_NAME:\nPaid\nGUID:\ng4\nSTATE_TYPE:\nState\nPARENT_NAME:\nROOT\nPARENT_GUID:\nROOT\n"
    "STATE_ACTION_INTERNAL:\npay();\nZKR_ASSERT_TRUE(paid());\nOUT_TRANSITIONS:\nt5\n"
    "----------\n"
    "TRANSITION_NAME:\nclose\nGUID:\nt5\nTRANSITION_TARGET:\ng5\n"
    "----------\n"
    "STATE_NAME:\nEnd\nGUID:\ng5\nSTATE_TYPE:\nLocalTermination\nPARENT_NAME:\nROOT\n"
    "PARENT_GUID:\nROOT\n"
    "----------\n"
    "STATE_NAME:\nLost\nGUID:\ng6\nSTATE_TYPE:\nState\nPARENT_NAME:\nROOT\nPARENT_GUID:\nROOT\n"
    "STATE_ACTION_ENTRY:\nZKR_ASSERT_TRUE(lost());\n";

class ChartWayTest : public ::testing::Test {
 protected:
  void SetUp() override {
    LineReader lines{std::string_view(kChart)};
    chart_ = std::move(parseVerificationFile(lines).chart);
    ASSERT_NE(chart_, nullptr);
  }
  const ChartRecord* at(const char* guid) { return chart_->find(guid); }
  // The guids of a way, blank separated.
  static std::string guids(const std::vector<const ChartRecord*>& way) {
    std::string text;
    for (const ChartRecord* record : way) text += (text.empty() ? "" : " ") + record->guid;
    return text;
  }
  std::string wayTo(const char* from, const char* to) {
    const ChartRecord* goal = at(to);
    return guids(
        shortestWay(*chart_, at(from), [goal](const ChartRecord& r) { return &r == goal; }));
  }
  std::unique_ptr<ChartList> chart_;
};

TEST(ChartWay, AssertionStatements) {
  struct Case {
    std::string_view action, except, expected;
  } cases[] = {
      {"", "", ""},
      {"log();", "", ""},
      {"ZKR_ASSERT_TRUE(a());", "", "ZKR_ASSERT_TRUE(a());"},
      {"log();ZKR_ASSERT_TRUE(f(g(1),2));rest();", "", "ZKR_ASSERT_TRUE(f(g(1),2));"},
      {"ZKR_ASSERT_TRUE(a())", "", "ZKR_ASSERT_TRUE(a())"},  // no semicolon
      {"ZKR_ASSERT_TRUE(a(", "", "ZKR_ASSERT_TRUE(a("},      // never closes: the rest
      {"ZKR_ASSERT", "", "ZKR_ASSERT"},                      // no parenthesis: the rest
      {"ZKR_ASSERT_TRUE(a());ZKR_ASSERT_TRUE(b());", "ZKR_ASSERT_TRUE(a());",
       "ZKR_ASSERT_TRUE(b());"},
      {"ZKR_ASSERT_TRUE(a());", "ZKR_ASSERT_TRUE(a());", ""},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(assertionStatementIn(c.action, c.except), c.expected) << c.action;
  }
}

TEST_F(ChartWayTest, PerformingRecords) {
  struct Case {
    const char* statement;
    const char* guid;  // null: none
  } cases[] = {
      {"ZKR_ASSERT_TRUE(inner());", "g3"},      // an entry action
      {"ZKR_ASSERT_TRUE(again());", "t3"},      // a transition's action
      {"ZKR_ASSERT_TRUE(paid());", "g4"},       // an internal action
      {"ZKR_ASSERT_TRUE(total() > 0);", "t4"},  // matched without blanks
      {"ZKR_ASSERT_TRUE(nowhere());", nullptr}, {"", nullptr},
  };
  for (const Case& c : cases) {
    const ChartRecord* record = performingRecord(*chart_, c.statement);
    if (!c.guid) {
      EXPECT_EQ(record, nullptr) << c.statement;
    } else {
      ASSERT_NE(record, nullptr) << c.statement;
      EXPECT_EQ(record->guid, c.guid) << c.statement;
    }
  }
}

TEST_F(ChartWayTest, ShortestWays) {
  EXPECT_EQ(wayTo("g1", "g4"), "g1 t1 g2 t4 g4");
  // Into a composite by its default transition; out of a child by its parent.
  EXPECT_EQ(wayTo("g1", "g3"), "g1 t1 g2 t2 g3");
  EXPECT_EQ(wayTo("g3", "g5"), "g3 g2 t4 g4 t5 g5");
  // A self-loop leads back to where it starts.
  EXPECT_EQ(wayTo("g3", "g3"), "g3 t3 g3");
  EXPECT_EQ(wayTo("t3", "t3"), "t3 g3 t3");
  // Nothing leads to Lost, nor back from the end.
  EXPECT_EQ(wayTo("g1", "g6"), "");
  EXPECT_EQ(wayTo("g5", "g1"), "");
  EXPECT_EQ(guids(shortestWay(*chart_, at("g1"), endsChart)), "g1 t1 g2 t4 g4 t5 g5");
  EXPECT_EQ(guids(shortestWay(*chart_, nullptr, endsChart)), "");
}

TEST_F(ChartWayTest, FirstBlocks) {
  struct Case {
    const char* from;
    const char* to;
    const char* sought;
    const char* guid;  // null: none
    const char* statement;
  } cases[] = {
      // checkout asserts another statement on the way to Paid.
      {"g1", "g4", "ZKR_ASSERT_TRUE(paid());", "t4", "ZKR_ASSERT_TRUE(total()>0);"},
      // Inner's entry blocks the way to again.
      {"g1", "t3", "ZKR_ASSERT_TRUE(again());", "g3", "ZKR_ASSERT_TRUE(inner());"},
      // The start's entry was passed already: only its exit would count.
      {"g3", "g2", "ZKR_ASSERT_TRUE(x());", nullptr, ""},
      // No other assertion: the way's first transition.
      {"g4", "g5", "ZKR_ASSERT_TRUE(end());", "t5", ""},
      // The sought statement itself blocks nothing.
      {"g2", "g4", "ZKR_ASSERT_TRUE(total() > 0);", "t4", ""},
  };
  for (const Case& c : cases) {
    const ChartRecord* goal = at(c.to);
    const auto way =
        shortestWay(*chart_, at(c.from), [goal](const ChartRecord& r) { return &r == goal; });
    const WayBlock block = firstBlock(way, c.sought);
    if (!c.guid) {
      EXPECT_EQ(block.record, nullptr) << c.from << " " << c.to;
      continue;
    }
    ASSERT_NE(block.record, nullptr) << c.from << " " << c.to;
    EXPECT_EQ(block.record->guid, c.guid) << c.from << " " << c.to;
    EXPECT_EQ(block.statement, c.statement) << c.from << " " << c.to;
  }
}

TEST_F(ChartWayTest, EndsOfTheChart) {
  EXPECT_TRUE(endsChart(*at("g5")));
  EXPECT_FALSE(endsChart(*at("g4")));
  EXPECT_FALSE(endsChart(*at("t5")));
}

}  // namespace
}  // namespace qendor
