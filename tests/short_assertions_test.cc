#include "input/short_assertions.h"

#include <gtest/gtest.h>

#include <memory>
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
void fillStatements(RunTable<std::unique_ptr<LineStatements>>& collected) {
  collected[1] = std::make_unique<LineStatements>(LineStatements{{1, kStart}, {2, kFinish}});
  collected[3] = std::make_unique<LineStatements>(LineStatements{{42, "ZKR_ASSERT_TRUE(x);"}});
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

  RunTable<std::unique_ptr<LineStatements>> collected_;
  RunSettings settings_;
  RunTable<std::unique_ptr<AssertionList>> lists_;
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
    const AssertionList& list = *lists_[5];
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
  collected_[7] = std::make_unique<LineStatements>(LineStatements{
      {-5, "ZKR_ASSERT_TRUE(neg);"}, {3, ""}, {2000000000, "ZKR_ASSERT_TRUE(far);"}});
  collected_[8] = std::make_unique<LineStatements>();
  collected_[9];  // no map at all
  EXPECT_EQ(read("ASSERTION=1,1,1\nASSERTION=7,-5,1\nASSERTION=7,3,1\nASSERTION=7,4,1\n"
                 "ASSERTION=7,2000000000,0\nASSERTION=7,1999999999,1\nASSERTION=8,1,1\n"
                 "ASSERTION=9,1,1\nASSERTION=3,41,1\nASSERTION=3,43,1\n"),
            "1: [" + std::string(kStart) +
                "|PASSED|1|1|] [ZKR_ASSERT_TRUE(neg);|PASSED|7|-5|] [|PASSED|7|3|] "
                "[ZKR_ASSERT_TRUE(far);|FAILED|7|2000000000|]\n");
}

TEST_F(ShortAssertionsTest, IndexFindsEachStatementWithItsBoundary) {
  collected_[7] = std::make_unique<LineStatements>(
      LineStatements{{-5, "ZKR_ASSERT_TRUE(neg);"}, {2000000000, kFinish}});
  collected_[9];
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
  EXPECT_EQ(index.find(3, 42)->text, &collected_[3]->at(42));
}

// The loader: the run's result file and collected statements, read into the
// run's lists.
class ShortAssertionsLoaderTest : public ::testing::Test {
 protected:
  void SetUp() override {
    resetRun();
    fillStatements(run().collectedAssertions);
  }
  void TearDown() override { resetRun(); }

  int read(const std::string& content) {
    path_ = dir_.write("results.log", content);
    run().resultFile = path_.c_str();
    return readShortAssertions();
  }

  test::TempDir dir_;
  std::string path_;
};

TEST_F(ShortAssertionsLoaderTest, FillsTheRunsLists) {
  run().testCaseNames = {{5, "Ctx.Five"}, {6, "Ctx.Six"}};
  run().testCaseName = "Ctx.Six";
  ASSERT_EQ(read("ASSERTION=1,1,5\nASSERTION=1,2,1\nASSERTION=1,1,6\nASSERTION=3,42,1\n"), 1);
  EXPECT_EQ(dumpLists(run().testCaseAssertions),
            "6: [" + std::string(kStart) + "|PASSED|1|1|] [ZKR_ASSERT_TRUE(x);|PASSED|3|42|]\n");
}

TEST_F(ShortAssertionsLoaderTest, MissingFileOrDirectory) {
  run().resultFile = "/nonexistent/qendor/results.log";
  EXPECT_EQ(readShortAssertions(), 0);
  run().resultFile = nullptr;
  EXPECT_EQ(readShortAssertions(), 0);
  run().resultFile = dir_.path().c_str();
  EXPECT_EQ(readShortAssertions(), 1);
  EXPECT_EQ(dumpLists(run().testCaseAssertions), "");
}

TEST_F(ShortAssertionsLoaderTest, LookupFindsWithoutInserting) {
  run().collectedAssertions[6];  // an entry inserted empty elsewhere
  std::string statement = "untouched";
  EXPECT_FALSE(lookupCollectedAssertion(2, 1, statement));
  EXPECT_FALSE(lookupCollectedAssertion(6, 1, statement));
  EXPECT_FALSE(lookupCollectedAssertion(3, 41, statement));
  EXPECT_EQ(statement, "untouched");
  EXPECT_EQ(run().collectedAssertions.size(), 3u);
  EXPECT_EQ(run().collectedAssertions.count(2), 0u);
  EXPECT_EQ(run().collectedAssertions[3]->size(), 1u);
  EXPECT_TRUE(lookupCollectedAssertion(3, 42, statement));
  EXPECT_EQ(statement, "ZKR_ASSERT_TRUE(x);");
  EXPECT_TRUE(lookupCollectedAssertion(1, 2, statement));
  EXPECT_EQ(statement, kFinish);
}

}  // namespace
}  // namespace qendor
