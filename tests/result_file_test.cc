// The full record form and the record form detection, read from text in
// memory. The loaders that read the run's result file are tested in
// result_file_loader_test.cc.
#include "input/result_file.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "base/line_reader.h"
#include "base/run_settings.h"
#include "input/case_splitter.h"
#include "tests/log_records.h"

namespace qendor {
namespace {

using test::dumpLists;
using test::dumpRecord;
using test::kFinish;
using test::kStart;

std::string full(const std::string& path, const std::string& line, const std::string& result,
                 const std::string& detail, const std::string& statementAfterMarker) {
  return test::fullLine(path, line, result, detail, statementAfterMarker);
}
std::string start(const std::string& result) {
  return test::fullStart(result);
}
std::string finish() {
  return test::fullFinish();
}

class FullAssertionsTest : public ::testing::Test {
 protected:
  // Parses `log` into `lists_`, keeping the test cases that `settings_`
  // selects, and dumps the lists.
  std::string read(std::string_view log) {
    LineReader lines(log);
    TestCaseSplitter splitter(lists_, WantedTestCases::of(settings_));
    parseFullAssertions(lines, settings_.sourceFiles, splitter);
    return dumpLists(lists_);
  }

  // Reads `line` as the second record of an open test case and dumps it.
  std::string recordOf(const std::string& line) {
    lists_.clear();
    settings_.sourceFiles = {{3, "/home/p/src/x.c"}};
    read(start("1") + line);
    const auto found = lists_.find(1);
    if (found == lists_.end() || found->second.records.size() != 2) {
      return "<" + dumpLists(lists_) + ">";
    }
    return dumpRecord(found->second.records[1]);
  }

  RunSettings settings_;
  TestCaseLogs lists_;
};

TEST(RecordForm, FirstRecordLineDecides) {
  struct Case {
    const char* log;
    RecordForm form;
  };
  const Case cases[] = {
      {"", RecordForm::kNone},
      {"- progress 1\n", RecordForm::kNone},
      {" ASSERTION=1,1,1\n", RecordForm::kNone},
      {"assertion=1,1,1\nFULL\n", RecordForm::kNone},
      {"ASSERTION\n", RecordForm::kNone},
      {"header\nASSERTION=1,1,3\nFULLASSERTION=a.c,1,1,-----ZKR_ASSERT(x)\n", RecordForm::kShort},
      {"header\nFULLASSERTION=a.c,1,1,-----ZKR_ASSERT(x)\nASSERTION=1,1,3\n", RecordForm::kFull},
      {"ASSERTION=", RecordForm::kShort},
      {"FULLASSERTION=", RecordForm::kFull},
  };
  for (const Case& c : cases) {
    LineReader lines{std::string_view(c.log)};
    EXPECT_EQ(detectRecordForm(lines), c.form) << c.log;
  }
}

TEST_F(FullAssertionsTest, RecordFields) {
  struct Case {
    std::string line;
    std::string record;
  };
  const Case cases[] = {
      {"FULLASSERTION=src\\..\\x.c,12,0,note-----ZKR_ASSERT_TRUE(a==b)\n",
       "ZKR_ASSERT_TRUE(a==b)|FAILED|3|12|note"},
      {"FULLASSERTION=C:\\p\\src\\x.c,5,1,-----ZKR_ASSERT_TRUE(x)\n",
       "ZKR_ASSERT_TRUE(x)|PASSED||5|"},
      {"FULLASSERTION=/home/p/src/x.c,5,1,d-----ZKR_ASSERT(x)\n", "ZKR_ASSERT(x)|PASSED|3|5|d"},
      {"FULLASSERTION=a.c,3,00,d-----ZKR_ASSERT(x)\n", "ZKR_ASSERT(x)|PASSED||3|d"},
      {"FULLASSERTION=a.c,3, 0,d-----ZKR_ASSERT(x)\n", "ZKR_ASSERT(x)|PASSED||3|d"},
      {"FULLASSERTION=a.c,3,abc,d-----ZKR_ASSERT(x)\n", "ZKR_ASSERT(x)|PASSED||3|d"},
      {"FULLASSERTION=a.c,3,1,x,y-----ZKR_ASSERT(z)\n", "ZKR_ASSERT(z)|PASSED||3|x,y"},
      {"FULLASSERTION=a.c,3,1,d-----ZKR_ASSERT(z)-----ZKR_ASSERT(w)\n",
       "ZKR_ASSERT(z)-----ZKR_ASSERT(w)|PASSED||3|d"},
      {"FULLASSERTION=a.c,3,1,d-----ZKR_ASSERT\n", "ZKR_ASSERT|PASSED||3|d"},
      {"FULLASSERTION=a.c,3,1,d-----ZKR_ASSERT_TRUE(x)\r\n", "ZKR_ASSERT_TRUE(x)\r|PASSED||3|d"},
      // Without the marker four characters of the rest go.
      {"FULLASSERTION=p.c,1,1,ABCDEFGH\n", "EFGH|PASSED||1|ABCDEFGH"},
      {"FULLASSERTION=a,b,c,xy\n", "|PASSED||b|xy"},
      {"FULLASSERTION=a.c,3,1,-----ZKR\n", "-ZKR|PASSED||3|-----ZKR"},
      // Missing commas: every later field sees the same rest again.
      {"FULLASSERTION=onlypath\n", "path|PASSED||onlypath|onlypath"},
      {"FULLASSERTION=a.c,7\n", "|PASSED||7|7"},
      {"FULLASSERTION=a.c,7,0\n", "|FAILED||7|0"},
      // An empty path matches any stored path that holds a "/".
      {"FULLASSERTION=\n", "|PASSED|3||"},
      // Only the first "=" ends the key.
      {"FULLASSERTION==a.c,1,1,-----ZKR_ASSERT(x)\n", "ZKR_ASSERT(x)|PASSED||1|"},
  };
  for (const Case& c : cases) EXPECT_EQ(recordOf(c.line), c.record) << c.line;
}

// How the records of a log fall into test cases, with every test case kept.
TEST_F(FullAssertionsTest, TestCases) {
  const std::string s = kStart, f = kFinish;
  const test::LogCase cases[] = {
      {"the start's result names the list and is recorded",
       start("7") + finish() + start("0") + finish(),
       "0: [" + s + "|FAILED||1|] [" + f + "|PASSED||2|]\n7: [" + s + "|PASSED||1|] [" + f +
           "|PASSED||2|]\n"},
      {"records outside start and finish are dropped",
       full("a.c", "1", "1", "", "(before)") + start("2") + full("a.c", "3", "1", "", "(inside)") +
           finish() + full("a.c", "5", "1", "", "(between)") + "- progress 1\n" +
           " FULLASSERTION=a.c,6,1,-----ZKR_ASSERT(blank)\n" +
           "fullassertion=a.c,6,1,-----ZKR_ASSERT(lower)\n" + start("4") +
           full("a.c", "7", "0", "", "(open to the end)"),
       "2: [" + s + "|PASSED||1|] [ZKR_ASSERT(inside)|PASSED||3|] [" + f + "|PASSED||2|]\n4: [" +
           s + "|PASSED||1|] [ZKR_ASSERT(open to the end)|FAILED||7|]\n"},
      {"a repeated start number replaces the list",
       start("1") + full("a.c", "3", "1", "", "(first)") + finish() + start("1") +
           full("a.c", "4", "1", "", "(second)") + finish(),
       "1: [" + s + "|PASSED||1|] [ZKR_ASSERT(second)|PASSED||4|] [" + f + "|PASSED||2|]\n"},
      {"a start while open opens a new list",
       start("1") + full("a.c", "3", "1", "", "(one)") + start("2") +
           full("a.c", "4", "1", "", "(two)") + finish(),
       "1: [" + s + "|PASSED||1|] [ZKR_ASSERT(one)|PASSED||3|]\n2: [" + s +
           "|PASSED||1|] [ZKR_ASSERT(two)|PASSED||4|] [" + f + "|PASSED||2|]\n"},
      {"empty log", "", ""},
      {"crlf lines and a last line without a line feed",
       "FULLASSERTION=t.c,1,5,-----ZKR_ASSERT_SD(\"sd\", \"m\", \"Starting test case\");\r\n"
       "FULLASSERTION=a.c,3,1,d-----ZKR_ASSERT(x)",
       "5: [" + s + "\r|PASSED||1|] [ZKR_ASSERT(x)|PASSED||3|d]\n"},
  };
  for (const test::LogCase& c : cases) {
    lists_.clear();
    EXPECT_EQ(read(c.log), c.dump) << c.name;
  }
}

TEST_F(FullAssertionsTest, EmptyEntryIsReplacedByAStart) {
  lists_[3];  // inserted empty by another reader
  lists_[9];
  EXPECT_EQ(read(start("3")), "3: [" + std::string(kStart) + "|PASSED||1|]\n9:\n");
}

// Only the records that a report reads are kept; the others still open and
// close their test cases.
TEST_F(FullAssertionsTest, OnlyTheReportedTestCaseKeepsItsRecords) {
  settings_.testCaseNames = {{1, "Pkg.Ctx.One"}, {2, "Pkg.Ctx.Two"}, {3, "Pkg.Ctx.Two"}};
  settings_.testCaseName = "Pkg.Ctx.Two";  // the driver takes the first of a name
  settings_.testContextName = "Pkg.Ctx";   // "-tcase" wins
  // Test case 1 is never finished: it ends at the start of 2, whose records
  // are kept, and a start of 3 while 2 is open ends 2 as well.
  EXPECT_EQ(
      read(start("1") + full("a.c", "3", "1", "", "(one)") + start("2") +
           full("a.c", "4", "1", "", "(two)") + start("3") + full("a.c", "5", "1", "", "(three)") +
           finish() + full("a.c", "6", "1", "", "(outside)")),
      "2: [" + std::string(kStart) + "|PASSED||1|] [ZKR_ASSERT(two)|PASSED||4|]\n");
}

TEST_F(FullAssertionsTest, ContextRunKeepsItsMembersOnly) {
  settings_.testCaseNames = {{1, "Pkg.Ctx.One"}, {2, "Pkg.Other.Two"}, {4, "Pkg.Ctx.Ctx"}};
  settings_.testContextName = "Pkg.Ctx";
  EXPECT_EQ(read(start("1") + finish() + start("2") + full("a.c", "4", "1", "", "(two)") +
                 finish() + start("4") + finish() + start("5") + finish()),
            "1: [" + std::string(kStart) + "|PASSED||1|] [" + kFinish + "|PASSED||2|]\n4: [" +
                kStart + "|PASSED||1|] [" + kFinish + "|PASSED||2|]\n");
}

// A "-tcase" test case under a number below 1 is reported as the context
// document, which reads the context's members.
TEST_F(FullAssertionsTest, TestCaseNumberedBelowOneKeepsTheContextMembers) {
  settings_.testCaseNames = {{0, "Pkg.Ctx.Zero"}, {1, "Pkg.Ctx.One"}, {2, "Pkg.Other.Two"}};
  settings_.testCaseName = "Pkg.Ctx.Zero";
  settings_.testContextName = "Pkg.Ctx";
  EXPECT_EQ(read(start("0") + finish() + start("1") + finish() + start("2") + finish()),
            "0: [" + std::string(kStart) + "|FAILED||1|] [" + kFinish + "|PASSED||2|]\n1: [" +
                kStart + "|PASSED||1|] [" + kFinish + "|PASSED||2|]\n");
}

TEST_F(FullAssertionsTest, UnknownTestCaseNameKeepsNothing) {
  settings_.testCaseNames = {{1, "Pkg.Ctx.One"}};
  settings_.testCaseName = "One";  // the short name alone does not match
  EXPECT_EQ(read(start("1") + finish()), "");
}

TEST_F(FullAssertionsTest, FileNumbersOfManyRecords) {
  settings_.sourceFiles = {{1, "/w/src/a.c"}, {2, "C:/w/src/b.c"}, {3, "src/c.c"}};
  std::string log = start("1");
  for (int i = 0; i < 3; ++i) {
    log += full("src\\a.c", "1", "1", "", "(a)") + full("C:\\w\\src\\b.c", "2", "1", "", "(b)") +
           full("src/c.c", "3", "1", "", "(c)");
  }
  read(log);
  const AssertionList& list = lists_[1].records;
  ASSERT_EQ(list.size(), 10u);
  for (size_t i = 1; i < list.size(); i += 3) {
    EXPECT_EQ(list[i].fileNumber, "1");
    EXPECT_EQ(list[i + 1].fileNumber, "2");
    EXPECT_EQ(list[i + 2].fileNumber, "");
  }
}

TEST_F(FullAssertionsTest, NulNonUtf8AndHugeLines) {
  const std::string nul(1, '\0');
  std::string odd = "FULLASSERTION=a" + nul + ".c,3,1,\xff\xfe-----ZKR_ASSERT(" + nul + ")\n";
  std::string huge = "FULLASSERTION=a.c,4,1,d-----ZKR_ASSERT(" + std::string(10 << 20, 'h') + ")\n";
  read(std::string(10 << 20, '\0') + "\n" + start("1") + odd + huge);
  const AssertionList& list = lists_[1].records;
  ASSERT_EQ(list.size(), 3u);
  EXPECT_EQ(list[1].assertionText, "ZKR_ASSERT(" + nul + ")");
  EXPECT_EQ(list[1].detailText, "\xff\xfe");
  EXPECT_EQ(list[2].assertionText.size(), (10u << 20) + 12);
}

// A kept statement that names "ASSERT_SD" makes its test case a sequence
// diagram test case, wherever it stands between start and finish.
TEST_F(FullAssertionsTest, SequenceDiagramStatementsMarkTheirTestCase) {
  const std::string plainStart = full("t.c", "1", "1", "", R"(_TRUE("Starting test case"))");
  const std::string plainFinish = full("t.c", "2", "1", "", R"(_TRUE("Finished test case"))");
  const std::string step = full("t.c", "3", "1", "", R"(_SD("sd", "m", "step"))");
  read(plainStart + full("a.c", "4", "1", "", "(x)") + plainFinish +  // plain records only
       full("t.c", "1", "2", "", R"(_TRUE("Starting test case"))") + step + plainFinish +
       start("3") + plainFinish +  // a diagram start
       full("t.c", "1", "4", "", R"(_TRUE("Starting test case"))") + plainFinish + step);
  // "number:records:sd" of each test case, "sd" 1 when marked.
  std::string marks;
  for (const auto& [number, log] : lists_) {
    marks += std::to_string(number) + ":" + std::to_string(log.records.size()) + ":" +
             std::to_string(log.sequenceDiagram) + " ";
  }
  EXPECT_EQ(marks, "1:3:0 2:3:1 3:2:1 4:2:0 ");
}

// The reader on a whole log: the test cases `wanted` names, filled.
TEST(ReadFullAssertions, ReturnsTheWantedTestCases) {
  RunSettings settings;
  settings.testCaseNames = {{1, "Pkg.Ctx.One"}, {2, "Pkg.Ctx.Two"}};
  settings.testCaseName = "Pkg.Ctx.Two";
  settings.sourceFiles = {{4, "/w/src/a.c"}};
  const std::string log =
      start("1") + finish() + start("2") + full("src/a.c", "9", "0", "d", "(x)") + finish();
  LineReader lines{std::string_view(log)};
  const TestCaseLogs logs =
      readFullAssertions(lines, settings.sourceFiles, WantedTestCases::of(settings));
  EXPECT_EQ(dumpLists(logs), "2: [" + std::string(kStart) +
                                 "|PASSED||1|] [ZKR_ASSERT(x)|FAILED|4|9|d] [" + kFinish +
                                 "|PASSED||2|]\n");
  ASSERT_EQ(logs.count(2), 1u);
  EXPECT_TRUE(logs.at(2).sequenceDiagram);
}

TEST_F(FullAssertionsTest, RecordsCostLittleMoreThanTheirText) {
  // 100000 typical records: the lists hold no spare capacity after reading.
  std::string log = start("1");
  for (int i = 0; i < 100000; ++i) {
    log += full("src/a.c", std::to_string(i), "1", "", "_TRUE(value == expected)");
  }
  read(log);
  const AssertionList& list = lists_[1].records;
  EXPECT_EQ(list.size(), 100001u);
  EXPECT_EQ(list.capacity(), list.size());
}

}  // namespace
}  // namespace qendor
