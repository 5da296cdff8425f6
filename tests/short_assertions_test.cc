#include "input/short_assertions.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "base/line_reader.h"
#include "base/run_settings.h"
#include "tests/log_records.h"
#include "tests/test_support.h"

namespace qendor {
namespace {

using test::dumpLists;
using test::kFinish;
using test::kStart;

// File 1 holds the start on line 1 and the finish on line 2; file 3 holds a
// plain assertion on line 42.
void fillStatements(RunTable<LineStatements>& collected) {
  collected[1] = LineStatements{{1, kStart}, {2, kFinish}};
  collected[3] = LineStatements{{42, "ZKR_ASSERT_TRUE(x);"}};
}

class ShortAssertionsTest : public ::testing::Test {
 protected:
  void SetUp() override { fillStatements(collected_); }

  // Parses `log` into `lists_`, keeping the test cases that `settings_`
  // selects, and dumps the lists.
  std::string read(std::string_view log) {
    const StatementIndex index(collected_);
    LineReader lines(log);
    TestCaseSplitter splitter(lists_, WantedTestCases::of(settings_));
    parseShortAssertions(lines, index, splitter);
    return dumpLists(lists_);
  }

  RunTable<LineStatements> collected_;
  RunSettings settings_;
  TestCaseLogs lists_;
};

TEST_F(ShortAssertionsTest, StatusAndFieldsAsWritten) {
  struct Case {
    const char* line;
    const char* record;  // "" when the line yields no record
  };
  const Case cases[] = {
      {"ASSERTION=3,42,1", "ZKR_ASSERT_TRUE(x);|PASSED|3|42|"},
      {"ASSERTION=3,42,0", "ZKR_ASSERT_TRUE(x);|FAILED|3|42|"},
      // The integer value decides, so "00" fails here.
      {"ASSERTION=3,42,00", "ZKR_ASSERT_TRUE(x);|FAILED|3|42|"},
      {"ASSERTION=3,42,abc", "ZKR_ASSERT_TRUE(x);|FAILED|3|42|"},
      {"ASSERTION=3,42,-1", "ZKR_ASSERT_TRUE(x);|PASSED|3|42|"},
      {"ASSERTION=3,42,4294967296", "ZKR_ASSERT_TRUE(x);|FAILED|3|42|"},
      {"ASSERTION=3,42,1,9", "ZKR_ASSERT_TRUE(x);|PASSED|3|42|"},
      {"ASSERTION=3,42, 1", "ZKR_ASSERT_TRUE(x);|FAILED|3|42|"},
      {"ASSERTION=3,42,1\r", "ZKR_ASSERT_TRUE(x);|PASSED|3|42|"},
      {"ASSERTION=3,42,1 some ignored words", "ZKR_ASSERT_TRUE(x);|PASSED|3|42|"},
      // Numbers read like strtol; the fields are kept as written.
      {"ASSERTION= 3,042,1", "ZKR_ASSERT_TRUE(x);|PASSED| 3|042|"},
      {"ASSERTION=3x,42y,1", "ZKR_ASSERT_TRUE(x);|PASSED|3x|42y|"},
      {"ASSERTION=4294967299,42,1", "ZKR_ASSERT_TRUE(x);|PASSED|4294967299|42|"},
      {"ASSERTION==3,42,1", ""},
      // Missing separators: file, line and result all read the same rest.
      {"ASSERTION=3", ""},
      {"ASSERTION=3,42", "ZKR_ASSERT_TRUE(x);|PASSED|3|42|"},
      {"ASSERTION=3,41,1", ""},
      {"ASSERTION=2,42,1", ""},
      {" ASSERTION=3,42,1", ""},
  };
  for (const Case& c : cases) {
    lists_.clear();
    read(std::string("ASSERTION=1,1,5\n") + c.line + "\n");
    const AssertionList& list = lists_[5].records;
    EXPECT_LE(list.size(), 2u) << c.line;
    EXPECT_EQ(list.size() == 2 ? test::dumpRecord(list[1]) : "", c.record) << c.line;
  }
}

// How the records of a log fall into test cases, with every test case kept.
TEST_F(ShortAssertionsTest, TestCases) {
  const std::string s = kStart, f = kFinish;
  const test::LogCase cases[] = {
      {"records with ignored words",
       "ASSERTION=1,1,5\nASSERTION=3,42,1 some ignored words\nASSERTION=1,2,1\n",
       "5: [" + s + "|PASSED|1|1|] [ZKR_ASSERT_TRUE(x);|PASSED|3|42|] [" + f + "|PASSED|1|2|]\n"},
      // "ASSERTION=1" looks up file 1, line 1 and opens list 1; "ASSERTION=1,2"
      // reads result 2 and finishes it.
      {"missing separators read the same rest", "ASSERTION=1\nASSERTION=1,2\n",
       "1: [" + s + "|PASSED|1|1|] [" + f + "|PASSED|1|2|]\n"},
      // Line 9 of file 1 was not collected: no start even with a start's fields.
      {"an uncollected line does nothing", "ASSERTION=1,9,5\nASSERTION=3,42,1\n", ""},
      {"records only between start and finish",
       "ASSERTION=3,42,1\nASSERTION=1,1,0\nASSERTION=3,42,0\nASSERTION=1,2,1\n"
       "ASSERTION=3,42,1\nFULLASSERTION=a.c,1,1,-----ZKR_ASSERT(x)\nASSERTION=1,1,7\n"
       "ASSERTION=3,42,1",
       "0: [" + s + "|FAILED|1|1|] [ZKR_ASSERT_TRUE(x);|FAILED|3|42|] [" + f +
           "|PASSED|1|2|]\n7: [" + s + "|PASSED|1|1|] [ZKR_ASSERT_TRUE(x);|PASSED|3|42|]\n"},
      {"a repeated start number replaces the list",
       "ASSERTION=1,1,4\nASSERTION=3,42,0\nASSERTION=1,2,1\nASSERTION=1,1,4\nASSERTION=3,42,1\n",
       "4: [" + s + "|PASSED|1|1|] [ZKR_ASSERT_TRUE(x);|PASSED|3|42|]\n"},
      {"empty log", "", ""},
      {"junk, a carriage return and a nul byte",
       std::string(10 << 20, '\xff') + '\0' + "\nASSERTION=1,1,2\r\nASSERTION=3,42," +
           std::string(1, '\0') + "1\n",
       "2: [" + s + "|PASSED|1|1|] [ZKR_ASSERT_TRUE(x);|FAILED|3|42|]\n"},
  };
  for (const test::LogCase& c : cases) {
    lists_.clear();
    EXPECT_EQ(read(c.log), c.dump) << c.name;
  }
}

TEST_F(ShortAssertionsTest, OnlyTheReportedTestCaseKeepsItsRecords) {
  settings_.testCaseNames = {{5, "Pkg.Ctx.Five"}, {6, "Pkg.Ctx.Six"}};
  settings_.testCaseName = "Pkg.Ctx.Six";
  // 5 opens, then 6 opens while 5 is open; 5's second start replaces nothing
  // that is kept, and the finish closes it.
  EXPECT_EQ(read("ASSERTION=1,1,5\nASSERTION=3,42,1\nASSERTION=1,1,6\nASSERTION=3,42,0\n"
                 "ASSERTION=1,1,5\nASSERTION=3,42,1\nASSERTION=1,2,1\nASSERTION=3,42,1\n"),
            "6: [" + std::string(kStart) + "|PASSED|1|1|] [ZKR_ASSERT_TRUE(x);|FAILED|3|42|]\n");
}

TEST_F(ShortAssertionsTest, ContextRunKeepsItsMembersOnly) {
  settings_.testCaseNames = {{5, "Ctx.Five"}, {6, "Other.Six"}};
  settings_.testContextName = "Ctx";
  EXPECT_EQ(read("ASSERTION=1,1,5\nASSERTION=1,2,1\nASSERTION=1,1,6\nASSERTION=1,2,1\n"),
            "5: [" + std::string(kStart) + "|PASSED|1|1|] [" + kFinish + "|PASSED|1|2|]\n");
}

// Far-apart, negative and empty entries are found as in the table itself.
TEST_F(ShortAssertionsTest, SparseNegativeAndEmptyStatements) {
  collected_[7] =
      LineStatements{{-5, "ZKR_ASSERT_TRUE(neg);"}, {3, ""}, {2000000000, "ZKR_ASSERT_TRUE(far);"}};
  collected_[8] = LineStatements();  // a file without statements
  // File 9 is not in the table at all.
  EXPECT_EQ(read("ASSERTION=1,1,1\nASSERTION=7,-5,1\nASSERTION=7,3,1\nASSERTION=7,4,1\n"
                 "ASSERTION=7,2000000000,0\nASSERTION=7,1999999999,1\nASSERTION=8,1,1\n"
                 "ASSERTION=9,1,1\nASSERTION=3,41,1\nASSERTION=3,43,1\n"),
            "1: [" + std::string(kStart) +
                "|PASSED|1|1|] [ZKR_ASSERT_TRUE(neg);|PASSED|7|-5|] [|PASSED|7|3|] "
                "[ZKR_ASSERT_TRUE(far);|FAILED|7|2000000000|]\n");
}

TEST_F(ShortAssertionsTest, IndexFindsEachStatementWithItsBoundary) {
  collected_[7] = LineStatements{{-5, "ZKR_ASSERT_TRUE(neg);"}, {2000000000, kFinish}};
  collected_[9];  // an entry inserted empty
  const StatementIndex index(collected_);
  // "text starts ends" of the statement under the numbers; "none" without one.
  auto found = [&](int32_t file, int32_t line) -> std::string {
    const StatementIndex::Statement* s = lookupCollectedAssertion(index, file, line);
    if (!s) return "none";
    return *s->text + " " + std::to_string(s->boundary.starts) + " " +
           std::to_string(s->boundary.ends);
  };
  EXPECT_EQ(found(1, 1), std::string(kStart) + " 1 0");
  EXPECT_EQ(found(1, 2), std::string(kFinish) + " 0 1");
  EXPECT_EQ(found(3, 42), "ZKR_ASSERT_TRUE(x); 0 0");
  EXPECT_EQ(found(7, -5), "ZKR_ASSERT_TRUE(neg); 0 0");
  EXPECT_EQ(found(7, 2000000000), std::string(kFinish) + " 0 1");
  EXPECT_EQ(found(1, 3), "none");
  EXPECT_EQ(found(3, 41), "none");
  EXPECT_EQ(found(7, 0), "none");
  EXPECT_EQ(found(9, 1), "none");
  EXPECT_EQ(found(2, 1), "none");
  // The statements are those of the table, not copies.
  EXPECT_EQ(index.find(3, 42)->text, &collected_[3].at(42));
}

// A kept statement that names "ASSERT_SD" makes its test case a sequence
// diagram test case, wherever it stands between start and finish.
TEST_F(ShortAssertionsTest, SequenceDiagramStatementsMarkTheirTestCase) {
  collected_[4] = LineStatements{{1, R"(ZKR_ASSERT_TRUE("Starting test case");)"},
                                 {2, R"(ZKR_ASSERT_SD("sd", "m", "step");)"},
                                 {3, R"(ZKR_ASSERT_TRUE("Finished test case");)"}};
  read(
      "ASSERTION=4,1,1\nASSERTION=3,42,1\nASSERTION=4,3,1\n"   // plain records only
      "ASSERTION=4,1,2\nASSERTION=4,2,1\nASSERTION=4,3,1\n"    // a diagram step
      "ASSERTION=1,1,3\nASSERTION=4,3,1\n"                     // a diagram start
      "ASSERTION=4,1,4\nASSERTION=4,3,1\nASSERTION=4,2,1\n");  // a step after the finish
  // "number:records:sd" of each test case, "sd" 1 when marked.
  std::string marks;
  for (const auto& [number, log] : lists_) {
    marks += std::to_string(number) + ":" + std::to_string(log.records.size()) + ":" +
             std::to_string(log.sequenceDiagram) + " ";
  }
  EXPECT_EQ(marks, "1:3:0 2:3:1 3:2:1 4:2:0 ");
}

// The reader: a log's lines and the collected statements, read into the test
// cases the run reports.
class ShortAssertionsReaderTest : public ::testing::Test {
 protected:
  void SetUp() override { fillStatements(collected_); }

  std::string read(LineReader& lines) {
    return dumpLists(
        readShortAssertions(lines, StatementIndex(collected_), WantedTestCases::of(settings_)));
  }

  RunTable<LineStatements> collected_;
  RunSettings settings_;
  test::TempDir dir_;
};

TEST_F(ShortAssertionsReaderTest, FillsTheReportedTestCases) {
  settings_.testCaseNames = {{5, "Ctx.Five"}, {6, "Ctx.Six"}};
  settings_.testCaseName = "Ctx.Six";
  const std::string path = dir_.write(
      "results.log", "ASSERTION=1,1,5\nASSERTION=1,2,1\nASSERTION=1,1,6\nASSERTION=3,42,1\n");
  LineReader lines(path);
  ASSERT_TRUE(lines.isOpen());
  EXPECT_EQ(read(lines),
            "6: [" + std::string(kStart) + "|PASSED|1|1|] [ZKR_ASSERT_TRUE(x);|PASSED|3|42|]\n");
}

TEST_F(ShortAssertionsReaderTest, MissingFileOrDirectoryReadsNothing) {
  LineReader missing(std::string("/nonexistent/qendor/results.log"));
  EXPECT_FALSE(missing.isOpen());
  EXPECT_EQ(read(missing), "");
  LineReader directory(dir_.path());
  EXPECT_TRUE(directory.isOpen());
  EXPECT_EQ(read(directory), "");
}

}  // namespace
}  // namespace qendor
