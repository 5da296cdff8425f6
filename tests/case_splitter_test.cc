#include "input/case_splitter.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "base/run_settings.h"
#include "tests/log_records.h"

namespace qendor {
namespace {

TEST(TestCaseStartAndEnd, LookAtTheMessageOnly) {
  struct Case {
    const char* statement;
    bool start;
    bool end;
  };
  const Case cases[] = {
      {test::kStart, true, false},
      {test::kFinish, false, true},
      {R"(ZKR_ASSERT_TRUE("Starting test case"))", true, false},
      {R"(ZKR_ASSERT("Finished test case: x", 1))", false, true},
      {R"(ZKR_ASSERT_TRUE("starting test case"))", false, false},
      {R"(ZKR_ASSERT_SD("Starting test case", "m", "x"))", false, false},
      {R"(ZKR_ASSERT_TRUE(x) // Starting test case)", false, false},
      {"Starting test case Finished test case", false, false},
      {R"(ZKR_ASSERT_TRUE("Starting test case, Finished test case"))", true, true},
      {R"(ZKR_ASSERT_TRUE("Startingtest case"))", false, false},
      {"", false, false},
  };
  for (const Case& c : cases) {
    const RecordBoundary boundary = recordBoundary(c.statement);
    EXPECT_EQ(boundary.starts, c.start) << c.statement;
    EXPECT_EQ(boundary.ends, c.end) << c.statement;
  }
}

// The numbers from -2 to 6 that `wanted` wants, blank-separated.
std::string wantedOf(const WantedTestCases& wanted) {
  std::string out;
  for (int32_t n = -2; n <= 6; ++n) {
    if (wanted.wants(n)) out += (out.empty() ? "" : " ") + std::to_string(n);
  }
  return out;
}

TEST(WantedTestCases, ByTheNamesOfTheRun) {
  struct Case {
    const char* name;
    RunTable<std::string> names;
    const char* testCase;
    const char* context;
    const char* wanted;
  };
  const Case cases[] = {
      {"no name: every test case", {{1, "Pkg.Ctx.One"}}, "", "", "-2 -1 0 1 2 3 4 5 6"},
      {"a test case", {{1, "Pkg.Ctx.One"}, {2, "Pkg.Ctx.Two"}}, "Pkg.Ctx.Two", "", "2"},
      {"the first of a name", {{3, "A.B"}, {5, "A.B"}}, "A.B", "", "3"},
      {"the test case wins over the context",
       {{1, "Pkg.Ctx.One"}, {2, "Pkg.Ctx.Two"}},
       "Pkg.Ctx.Two",
       "Pkg.Ctx",
       "2"},
      {"a short name does not match", {{1, "Pkg.Ctx.One"}}, "One", "", ""},
      {"an unknown name keeps nothing", {{1, "Pkg.Ctx.One"}}, "Pkg.Ctx.Two", "Pkg.Ctx", ""},
      {"a context keeps its members",
       {{1, "Pkg.Ctx.One"}, {2, "Pkg.Other.Two"}, {4, "Pkg.Ctx.Ctx"}, {6, "Pkg.Ctx.Sub.X"}},
       "",
       "Pkg.Ctx",
       "1 4"},
      {"a test case below 1 stands for its context",
       {{0, "Pkg.Ctx.Zero"}, {1, "Pkg.Ctx.One"}, {2, "Pkg.Other.Two"}},
       "Pkg.Ctx.Zero",
       "Pkg.Ctx",
       "0 1"},
      {"a negative number is below 1 too",
       {{-2, "Ctx.B"}, {4, "Ctx.B"}, {5, "Other.C"}},
       "Ctx.B",
       "Ctx",
       "-2 4"},
  };
  for (const Case& c : cases) {
    RunSettings settings;
    settings.testCaseNames = c.names;
    settings.testCaseName = c.testCase;
    settings.testContextName = c.context;
    EXPECT_EQ(wantedOf(WantedTestCases::of(settings)), c.wanted) << c.name;
  }
  EXPECT_EQ(wantedOf(WantedTestCases()), "-2 -1 0 1 2 3 4 5 6");
}

TEST(WantedTestCases, TakesTheNamesAsTheyAreWhenMade) {
  RunSettings settings;
  settings.testCaseNames = {{1, "Ctx.One"}};
  settings.testContextName = "Ctx";
  const WantedTestCases wanted = WantedTestCases::of(settings);
  settings.testCaseNames[2] = "Ctx.Two";
  EXPECT_EQ(wantedOf(wanted), "1");
}

// Feeds a splitter one record per word of `script`: "s3" a start under 3,
// "f" a finish, "sf3" a record that is both, "r" any other record; a word
// ending in "*" is a record whose statement makes its test case a sequence
// diagram test case. A record the splitter keeps gets its word as its text.
// The result lists the kept texts per test case ("3: s3 r f", "3 sd: ..."
// when the test case is marked as a sequence diagram test case), then
// "collecting:" and, for each word, whether the splitter collected after it
// ("+" or "-").
std::string split(const std::string& script, TestCaseLogs& logs,
                  WantedTestCases wanted = WantedTestCases()) {
  std::string collecting;
  {
    TestCaseSplitter splitter(logs, std::move(wanted));
    std::istringstream words(script);
    for (std::string word; words >> word;) {
      const bool sequenceDiagram = word.back() == '*';
      const std::string plain = sequenceDiagram ? word.substr(0, word.size() - 1) : word;
      RecordBoundary boundary;
      size_t at = 0;
      boundary.starts = plain[at] == 's';
      if (boundary.starts) ++at;
      boundary.ends = at < plain.size() && plain[at] == 'f';
      if (boundary.ends) ++at;
      const int32_t number =
          at < plain.size() && plain[at] != 'r' ? std::stoi(plain.substr(at)) : 0;
      if (AssertionRecord* record = splitter.next(boundary, number, sequenceDiagram)) {
        record->assertionText = word;
      }
      collecting += splitter.collecting() ? " +" : " -";
    }
  }
  std::string out;
  for (const auto& [number, log] : logs) {
    out += std::to_string(number) + (log.sequenceDiagram ? " sd:" : ":");
    for (const AssertionRecord& r : log.records) out += " " + r.assertionText;
    out += "\n";
  }
  return out + "collecting:" + collecting;
}

std::string split(const std::string& script, WantedTestCases wanted = WantedTestCases()) {
  TestCaseLogs logs;
  return split(script, logs, std::move(wanted));
}

TEST(TestCaseSplitter, Scripts) {
  struct Case {
    const char* name;
    const char* script;
    const char* result;
  };
  const Case cases[] = {
      {"start, record, finish", "s1 r f", "1: s1 r f\ncollecting: + + -"},
      {"records outside a pair are dropped", "r s1 r f r f r",
       "1: s1 r f\ncollecting: - + + - - - -"},
      {"an unfinished test case runs to the end", "s2 r r", "2: s2 r r\ncollecting: + + +"},
      {"a repeated number replaces the list", "s1 r f s1 f", "1: s1 f\ncollecting: + + - + -"},
      {"replaced while still open", "s1 r s1 r", "1: s1 r\ncollecting: + + + +"},
      {"a start while open opens a new list", "s1 r s2 r f",
       "1: s1 r\n2: s2 r f\ncollecting: + + + + -"},
      {"start and finish in one record", "sf1 r", "1: sf1\ncollecting: - -"},
      {"a finish first", "f r", "collecting: - -"},
      {"numbers as the result field reads them", "s-4 r f s0 f",
       "-4: s-4 r f\n0: s0 f\ncollecting: + + - + -"},
      {"nothing", "", "collecting:"},
      {"a sequence diagram record marks its test case", "s1 r* f",
       "1 sd: s1 r* f\ncollecting: + + -"},
      {"a sequence diagram start marks its test case", "s1* r f",
       "1 sd: s1* r f\ncollecting: + + -"},
      {"a sequence diagram finish marks its test case", "s1 r f*",
       "1 sd: s1 r f*\ncollecting: + + -"},
      {"a dropped record marks nothing", "r* s1 r f r*", "1: s1 r f\ncollecting: - + + - -"},
      {"the mark is the test case's own", "s1 r* s2 r f",
       "1 sd: s1 r*\n2: s2 r f\ncollecting: + + + + -"},
      {"a repeated number drops the mark with the list", "s1 r* f s1 f",
       "1: s1 f\ncollecting: + + - + -"},
  };
  for (const Case& c : cases) EXPECT_EQ(split(c.script), c.result) << c.name;
}

TEST(TestCaseSplitter, UnwantedTestCasesOpenAndCloseWithoutRecords) {
  RunSettings settings;
  settings.testCaseNames = {{1, "Ctx.One"}, {2, "Ctx.Two"}, {3, "Ctx.Three"}};
  settings.testCaseName = "Ctx.Two";
  EXPECT_EQ(split("s1 r f s2 r f s1 r f", WantedTestCases::of(settings)),
            "2: s2 r f\ncollecting: - - - + + - - - -");
  // The start of another test case ends the wanted one.
  EXPECT_EQ(split("s2 r s3 r f r", WantedTestCases::of(settings)),
            "2: s2 r\ncollecting: + + - - - -");
}

TEST(TestCaseSplitter, ListsAlreadyThere) {
  RunSettings settings;
  settings.testCaseNames = {{1, "Ctx.One"}, {3, "Ctx.Three"}};
  settings.testCaseName = "Ctx.One";
  TestCaseLogs logs;
  logs[1].records.resize(1);
  logs[1].records[0].assertionText = "old one";
  logs[3].records.resize(1);
  logs[3].records[0].assertionText = "old three";
  logs[5];  // an entry inserted empty elsewhere
  // A wanted start replaces its list; an unwanted one leaves its list alone.
  EXPECT_EQ(split("s3 r f s1 r f", logs, WantedTestCases::of(settings)),
            "1: s1 r f\n3: old three\n5:\ncollecting: - - - + + -");
  // The same for the marks: a wanted start clears its test case's mark, an
  // unwanted one leaves it, and an unwanted test case's records mark nothing.
  logs[1].sequenceDiagram = true;
  logs[3].sequenceDiagram = true;
  EXPECT_EQ(split("s1 r f s3 r* f", logs, WantedTestCases::of(settings)),
            "1: s1 r f\n3 sd: old three\n5:\ncollecting: + + - - - -");
  logs[3].sequenceDiagram = false;
  EXPECT_EQ(split("s3 r* f", logs, WantedTestCases::of(settings)),
            "1: s1 r f\n3: old three\n5:\ncollecting: - - -");
}

TEST(TestCaseSplitter, ListsKeepNoSpareCapacity) {
  TestCaseLogs logs;
  std::string script = "s1";
  for (int i = 0; i < 100; ++i) script += " r";
  split(script, logs);
  ASSERT_EQ(logs[1].records.size(), 101u);
  EXPECT_EQ(logs[1].records.capacity(), 101u);
}

}  // namespace
}  // namespace qendor
