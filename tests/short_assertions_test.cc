#include "input/short_assertions.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "base/run_settings.h"
#include "tests/test_support.h"

namespace qendor {
namespace {

const char kStart[] = R"(ZKR_ASSERT_SD("sd", "m", "Starting test case");)";
const char kFinish[] = R"(ZKR_ASSERT_SD("sd", "m", "Finished test case");)";

// Every list as "number: [record] [record]" lines; a null list as "number: null".
std::string dumpTables() {
  std::string out;
  for (const auto& [number, list] : run().testCaseAssertions) {
    out += std::to_string(number) + ":";
    if (!list) {
      out += " null\n";
      continue;
    }
    for (const AssertionRecord& r : *list) {
      out += " [" + r.assertionText + "|" + std::string(statusText(r.status)) + "|" + r.fileNumber +
             "|" + r.lineNumber + "|" + r.detailText + "]";
    }
    out += "\n";
  }
  return out;
}

class ShortAssertionsTest : public ::testing::Test {
 protected:
  // File 1 holds the start on line 1 and the finish on line 2; file 3 holds
  // a plain assertion on line 42.
  void SetUp() override {
    resetRun();
    run().collectedAssertions[1] =
        std::make_unique<LineStatements>(LineStatements{{1, kStart}, {2, kFinish}});
    run().collectedAssertions[3] =
        std::make_unique<LineStatements>(LineStatements{{42, "ZKR_ASSERT_TRUE(x);"}});
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

TEST_F(ShortAssertionsTest, RecordWithIgnoredWords) {
  ASSERT_EQ(read("ASSERTION=1,1,5\nASSERTION=3,42,1 some ignored words\nASSERTION=1,2,1\n"), 1);
  EXPECT_EQ(dumpTables(), std::string("5: [") + kStart +
                              "|PASSED|1|1|] [ZKR_ASSERT_TRUE(x);|PASSED|3|42|] [" + kFinish +
                              "|PASSED|1|2|]\n");
}

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
    SetUp();
    ASSERT_EQ(read(std::string("ASSERTION=1,1,5\n") + c.line + "\n"), 1) << c.line;
    const AssertionList& list = *run().testCaseAssertions[5];
    std::string got;
    if (list.size() == 2) {
      const AssertionRecord& r = list[1];
      got = r.assertionText + "|" + std::string(statusText(r.status)) + "|" + r.fileNumber + "|" +
            r.lineNumber + "|" + r.detailText;
    }
    EXPECT_LE(list.size(), 2u) << c.line;
    EXPECT_EQ(got, c.record) << c.line;
  }
}

TEST_F(ShortAssertionsTest, MissingSeparatorsReadTheSameRest) {
  // "ASSERTION=1" looks up file 1, line 1 and opens list 1; "ASSERTION=1,2"
  // reads result 2 and finishes it.
  ASSERT_EQ(read("ASSERTION=1\nASSERTION=1,2\n"), 1);
  EXPECT_EQ(dumpTables(),
            std::string("1: [") + kStart + "|PASSED|1|1|] [" + kFinish + "|PASSED|1|2|]\n");
}

TEST_F(ShortAssertionsTest, UncollectedLineDoesNothing) {
  // Line 9 of file 1 was not collected: no start even with a start's fields.
  ASSERT_EQ(read("ASSERTION=1,9,5\nASSERTION=3,42,1\n"), 1);
  EXPECT_EQ(dumpTables(), "");
}

TEST_F(ShortAssertionsTest, RecordsOnlyBetweenStartAndFinish) {
  ASSERT_EQ(read("ASSERTION=3,42,1\n"
                 "ASSERTION=1,1,0\n"
                 "ASSERTION=3,42,0\n"
                 "ASSERTION=1,2,1\n"
                 "ASSERTION=3,42,1\n"
                 "FULLASSERTION=a.c,1,1,-----ZKR_ASSERT(x)\n"
                 "ASSERTION=1,1,7\n"
                 "ASSERTION=3,42,1"),
            1);
  EXPECT_EQ(dumpTables(), std::string("0: [") + kStart +
                              "|FAILED|1|1|] [ZKR_ASSERT_TRUE(x);|FAILED|3|42|] [" + kFinish +
                              "|PASSED|1|2|]\n7: [" + kStart +
                              "|PASSED|1|1|] [ZKR_ASSERT_TRUE(x);|PASSED|3|42|]\n");
}

TEST_F(ShortAssertionsTest, RepeatedStartNumberReplacesTheList) {
  ASSERT_EQ(read("ASSERTION=1,1,4\nASSERTION=3,42,0\nASSERTION=1,2,1\n"
                 "ASSERTION=1,1,4\nASSERTION=3,42,1\n"),
            1);
  EXPECT_EQ(dumpTables(),
            std::string("4: [") + kStart + "|PASSED|1|1|] [ZKR_ASSERT_TRUE(x);|PASSED|3|42|]\n");
}

TEST_F(ShortAssertionsTest, OnlyTheReportedTestCaseKeepsItsRecords) {
  run().testCaseNames[5] = "Pkg.Ctx.Five";
  run().testCaseNames[6] = "Pkg.Ctx.Six";
  run().testCaseName = "Pkg.Ctx.Six";
  // 5 opens, then 6 opens while 5 is open; 5's second start replaces nothing
  // that is kept, and the finish closes it.
  EXPECT_EQ(read("ASSERTION=1,1,5\nASSERTION=3,42,1\nASSERTION=1,1,6\nASSERTION=3,42,0\n"
                 "ASSERTION=1,1,5\nASSERTION=3,42,1\nASSERTION=1,2,1\nASSERTION=3,42,1\n"),
            1);
  EXPECT_EQ(dumpTables(),
            "6: [" + std::string(kStart) + "|PASSED|1|1|] [ZKR_ASSERT_TRUE(x);|FAILED|3|42|]\n");
}

TEST_F(ShortAssertionsTest, ContextRunKeepsItsMembersOnly) {
  run().testCaseNames[5] = "Ctx.Five";
  run().testCaseNames[6] = "Other.Six";
  run().testContextName = "Ctx";
  EXPECT_EQ(read("ASSERTION=1,1,5\nASSERTION=1,2,1\nASSERTION=1,1,6\nASSERTION=1,2,1\n"), 1);
  EXPECT_EQ(dumpTables(),
            "5: [" + std::string(kStart) + "|PASSED|1|1|] [" + kFinish + "|PASSED|1|2|]\n");
}

// Far-apart, negative and empty entries are found as in the table itself.
TEST_F(ShortAssertionsTest, SparseNegativeAndEmptyStatements) {
  run().collectedAssertions[7] = std::make_unique<LineStatements>(LineStatements{
      {-5, "ZKR_ASSERT_TRUE(neg);"}, {3, ""}, {2000000000, "ZKR_ASSERT_TRUE(far);"}});
  run().collectedAssertions[8] = std::make_unique<LineStatements>();
  run().collectedAssertions[9];  // no map at all
  EXPECT_EQ(read("ASSERTION=1,1,1\nASSERTION=7,-5,1\nASSERTION=7,3,1\nASSERTION=7,4,1\n"
                 "ASSERTION=7,2000000000,0\nASSERTION=7,1999999999,1\nASSERTION=8,1,1\n"
                 "ASSERTION=9,1,1\nASSERTION=3,41,1\nASSERTION=3,43,1\n"),
            1);
  EXPECT_EQ(dumpTables(), "1: [" + std::string(kStart) +
                              "|PASSED|1|1|] [ZKR_ASSERT_TRUE(neg);|PASSED|7|-5|] [|PASSED|7|3|] "
                              "[ZKR_ASSERT_TRUE(far);|FAILED|7|2000000000|]\n");
}

TEST_F(ShortAssertionsTest, OddFiles) {
  ASSERT_EQ(read(""), 1);
  EXPECT_EQ(dumpTables(), "");
  std::string junk = std::string(10 << 20, '\xff') + '\0' + "\n";
  ASSERT_EQ(read(junk + "ASSERTION=1,1,2\r\nASSERTION=3,42," + std::string(1, '\0') + "1\n"), 1);
  EXPECT_EQ(dumpTables(),
            std::string("2: [") + kStart + "|PASSED|1|1|] [ZKR_ASSERT_TRUE(x);|FAILED|3|42|]\n");
}

TEST_F(ShortAssertionsTest, MissingFileOrDirectory) {
  run().resultFile = "/nonexistent/qendor/results.log";
  EXPECT_EQ(readShortAssertions(), 0);
  run().resultFile = nullptr;
  EXPECT_EQ(readShortAssertions(), 0);
  run().resultFile = dir_.path().c_str();
  EXPECT_EQ(readShortAssertions(), 1);
  EXPECT_EQ(dumpTables(), "");
}

TEST_F(ShortAssertionsTest, LookupFindsWithoutInserting) {
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
