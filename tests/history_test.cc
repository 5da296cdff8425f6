#include "report/history.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "report/xml_node.h"
#include "tests/xml_dump.h"

namespace qendor {
namespace {

constexpr Status P = Status::kPassed;
constexpr Status F = Status::kFailed;
constexpr Status E = Status::kError;
constexpr Status U = Status::kUndefined;
constexpr Status N = Status::kNotTerminated;

struct ClassifyCase {
  std::vector<Status> newestFirst;
  const char* expected;
};

TEST(HistoryTest, ClassifiesStatusSequences) {
  const ClassifyCase cases[] = {
      // No run before this one.
      {{}, "stable"},
      {{P}, "stable"},
      {{F}, "new"},
      {{E}, "new"},
      {{U}, "new"},
      // One run before.
      {{F, P}, "new"},
      {{E, P}, "new"},
      {{P, F}, "fixed"},
      {{P, E}, "fixed"},
      {{P, N}, "fixed"},
      {{F, F}, "still failing"},
      {{E, F}, "still failing"},
      {{P, P}, "stable"},
      // A change between two statuses that both did not pass is no change.
      {{F, E, F, E}, "still failing"},
      {{P, P, P, P, P, P}, "stable"},
      // Two changes make it flaky, whatever it is now.
      {{P, F, P}, "flaky"},
      {{F, P, F}, "flaky"},
      {{F, P, P, P, F}, "flaky"},
      {{P, F, F, F, P, P}, "flaky"},
      // One change only.
      {{F, P, P, P, P}, "new"},
      {{P, F, F, F, F}, "fixed"},
      {{P, P, P, F, F}, "stable"},
      {{F, F, F, P, P}, "still failing"},
      // Only the newest ten runs count: the second change lies in the 11th.
      {{F, P, P, P, P, P, P, P, P, P, F}, "new"},
      {{F, P, P, P, P, P, P, P, P, F, P}, "flaky"},
      {{P, P, P, P, P, P, P, P, P, P, F, P}, "stable"},
  };
  for (const ClassifyCase& c : cases) {
    std::string sequence;
    for (Status s : c.newestFirst) sequence += std::string(statusText(s)) + " ";
    EXPECT_EQ(classificationText(classify(c.newestFirst)), c.expected) << sequence;
  }
}

TEST(HistoryTest, ClassificationWords) {
  EXPECT_EQ(classificationText(Classification::kNew), "new");
  EXPECT_EQ(classificationText(Classification::kFixed), "fixed");
  EXPECT_EQ(classificationText(Classification::kFlaky), "flaky");
  EXPECT_EQ(classificationText(Classification::kStillFailing), "still failing");
  EXPECT_EQ(classificationText(Classification::kStable), "stable");
}

const HistoryOwner kOwner{"rk_testcontext", "Pkg.Ctx"};

HistoryRun runOf(uint64_t number, const char* time, Status status, std::vector<HistoryCase> cases) {
  HistoryRun run;
  run.number = number;
  run.time = time;
  run.status = status;
  run.cases = std::move(cases);
  return run;
}

HistoryCase caseOf(const char* name, Status status,
                   const char* result = "Result verification successful") {
  return HistoryCase{name, std::string("Pkg.Ctx.") + name, status, result};
}

TEST(HistoryTest, WritesAndReadsTheFile) {
  History history;
  history.runs.push_back(runOf(2, "2025-11-22T10:15:58Z", Status::kFailed,
                               {caseOf("A", P), caseOf("B", F, "Result verification failed")}));
  history.runs.push_back(runOf(1, "2025-11-21T09:00:00Z", Status::kPassed, {caseOf("A", P)}));
  const std::string text = historyText(history, kOwner);
  EXPECT_EQ(text,
            "<?xml version=\"1.0\"?>\n"
            "<History kind=\"rk_testcontext\" fullname=\"Pkg.Ctx\">\n"
            "  <Run number=\"2\" time=\"2025-11-22T10:15:58Z\" status=\"FAILED\">\n"
            "    <TestCaseRun name=\"A\" fullname=\"Pkg.Ctx.A\" status=\"PASSED\" "
            "verificationResult=\"Result verification successful\"/>\n"
            "    <TestCaseRun name=\"B\" fullname=\"Pkg.Ctx.B\" status=\"FAILED\" "
            "verificationResult=\"Result verification failed\"/>\n"
            "  </Run>\n"
            "  <Run number=\"1\" time=\"2025-11-21T09:00:00Z\" status=\"PASSED\">\n"
            "    <TestCaseRun name=\"A\" fullname=\"Pkg.Ctx.A\" status=\"PASSED\" "
            "verificationResult=\"Result verification successful\"/>\n"
            "  </Run>\n"
            "</History>\n");

  History read;
  ASSERT_EQ(parseHistory(text, kOwner, read), HistoryParse::kRead);
  EXPECT_EQ(historyText(read, kOwner), text);
  ASSERT_EQ(read.runs.size(), 2u);
  EXPECT_EQ(read.runs[0].number, 2u);
  EXPECT_EQ(read.runs[0].cases[1].status, F);
  EXPECT_EQ(read.runs[0].cases[1].verificationResult, "Result verification failed");
}

TEST(HistoryTest, NamesAndTimesAreByteSafe) {
  History history;
  // Not UTF-8, a control character and markup characters.
  HistoryCase odd{"A\xE9<&\"", "Pkg.Ctx.A\xE9<&\"\x01", P, "x"};
  history.runs.push_back(runOf(1, "t\x02\xFF", P, {odd}));
  const std::string text = historyText(history, kOwner);
  History read;
  ASSERT_EQ(parseHistory(text, kOwner, read), HistoryParse::kRead);
  EXPECT_EQ(read.runs[0].time, "t\xEF\xBF\xBD\xC3\xBF");
  EXPECT_EQ(read.runs[0].cases[0].name, "A\xC3\xA9<&\"");
  EXPECT_EQ(read.runs[0].cases[0].fullName, "Pkg.Ctx.A\xC3\xA9<&\"\xEF\xBF\xBD");
}

TEST(HistoryTest, RejectsBrokenAndForeignFiles) {
  History history;
  history.runs.push_back(runOf(1, "t", P, {}));
  const char* broken[] = {"", "<History", "not xml at all", "<History kind=\"rk_testcontext\">",
                          "<History kind=\"rk_testcontext\" fullname=\"Pkg.Ctx\"><Run></History>"};
  for (const char* text : broken) {
    EXPECT_EQ(parseHistory(text, kOwner, history), HistoryParse::kNotWellFormed) << text;
    EXPECT_TRUE(history.runs.empty());
  }
  const char* foreign[] = {
      "<History kind=\"rk_testcontext\" fullname=\"Pkg.Other\"/>",
      "<History kind=\"rk_testcase\" fullname=\"Pkg.Ctx\"/>",
      "<History fullname=\"Pkg.Ctx\"/>",
      "<TestResult kind=\"rk_testcontext\" fullname=\"Pkg.Ctx\"/>",
  };
  for (const char* text : foreign) {
    EXPECT_EQ(parseHistory(text, kOwner, history), HistoryParse::kForeign) << text;
    EXPECT_TRUE(history.runs.empty());
  }
}

TEST(HistoryTest, PassesOverWhatItDoesNotKnow) {
  History history;
  ASSERT_EQ(parseHistory("<History kind=\"rk_testcontext\" fullname=\"Pkg.Ctx\">"
                         "<Note/><Run number=\"x7\" status=\"MAYBE\"><Other/>"
                         "<TestCaseRun fullname=\"Pkg.Ctx.A\" status=\"PASSED\"/></Run>"
                         "</History>",
                         kOwner, history),
            HistoryParse::kRead);
  ASSERT_EQ(history.runs.size(), 1u);
  EXPECT_EQ(history.runs[0].number, 0u);
  EXPECT_EQ(history.runs[0].status, U);
  ASSERT_EQ(history.runs[0].cases.size(), 1u);
  EXPECT_EQ(history.runs[0].cases[0].fullName, "Pkg.Ctx.A");
  EXPECT_EQ(history.runs[0].cases[0].name, "");
}

TEST(HistoryTest, AddingNumbersTheRunAndKeepsTheNewestThirty) {
  History history;
  for (int i = 0; i < 40; ++i) addRun(history, runOf(99, "t", P, {}));
  ASSERT_EQ(history.runs.size(), kHistoryRuns);
  EXPECT_EQ(history.runs.front().number, 40u);
  EXPECT_EQ(history.runs.back().number, 11u);
}

TEST(HistoryTest, ElementClassifiesThisRunsTestCasesAndListsOnlyThem) {
  History earlier;
  earlier.runs.push_back(runOf(3, "t3", F, {caseOf("A", P), caseOf("B", F), caseOf("Gone", P)}));
  earlier.runs.push_back(runOf(2, "t2", F, {caseOf("A", F), caseOf("B", F)}));
  earlier.runs.push_back(runOf(1, "t1", P, {caseOf("A", P)}));
  XmlNodePtr root(newElement("TestResult"));
  appendHistoryElement(root.get(), earlier, {caseOf("A", F), caseOf("B", P), caseOf("C", F)});
  EXPECT_EQ(test::dumpNode(root.get()),
            "<TestResult><History>"
            "<TestCaseTrend name=\"A\" fullname=\"Pkg.Ctx.A\" classification=\"flaky\"/>"
            "<TestCaseTrend name=\"B\" fullname=\"Pkg.Ctx.B\" classification=\"fixed\"/>"
            "<TestCaseTrend name=\"C\" fullname=\"Pkg.Ctx.C\" classification=\"new\"/>"
            "<Run number=\"3\" time=\"t3\" status=\"FAILED\">"
            "<TestCaseRun name=\"A\" fullname=\"Pkg.Ctx.A\" status=\"PASSED\" "
            "verificationResult=\"Result verification successful\"/>"
            "<TestCaseRun name=\"B\" fullname=\"Pkg.Ctx.B\" status=\"FAILED\" "
            "verificationResult=\"Result verification successful\"/></Run>"
            "<Run number=\"2\" time=\"t2\" status=\"FAILED\">"
            "<TestCaseRun name=\"A\" fullname=\"Pkg.Ctx.A\" status=\"FAILED\" "
            "verificationResult=\"Result verification successful\"/>"
            "<TestCaseRun name=\"B\" fullname=\"Pkg.Ctx.B\" status=\"FAILED\" "
            "verificationResult=\"Result verification successful\"/></Run>"
            "<Run number=\"1\" time=\"t1\" status=\"PASSED\">"
            "<TestCaseRun name=\"A\" fullname=\"Pkg.Ctx.A\" status=\"PASSED\" "
            "verificationResult=\"Result verification successful\"/></Run>"
            "</History></TestResult>");
}

TEST(HistoryTest, ElementWithoutEarlierRuns) {
  XmlNodePtr root(newElement("TestResult"));
  appendHistoryElement(root.get(), History(), {caseOf("A", P)});
  EXPECT_EQ(test::dumpNode(root.get()),
            "<TestResult><History>"
            "<TestCaseTrend name=\"A\" fullname=\"Pkg.Ctx.A\" classification=\"stable\"/>"
            "</History></TestResult>");
}

TEST(HistoryTest, TimeIsIso8601InUtc) {
  const std::string time = historyTimeText();
  ASSERT_EQ(time.size(), 20u) << time;
  EXPECT_EQ(time[4], '-');
  EXPECT_EQ(time[10], 'T');
  EXPECT_EQ(time[19], 'Z');
}

}  // namespace
}  // namespace qendor
