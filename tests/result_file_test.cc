#include "input/result_file.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

#include "base/run_settings.h"
#include "input/assertion_collection.h"
#include "input/assertion_macro.h"
#include "input/record_path.h"
#include "input/short_assertions.h"
#include "tests/test_support.h"

namespace qendor {
namespace {

const char kStart[] = R"(ZKR_ASSERT_SD("sd", "m", "Starting test case");)";
const char kFinish[] = R"(ZKR_ASSERT_SD("sd", "m", "Finished test case");)";

// One full-form record line.
std::string full(const std::string& path, const std::string& line, const std::string& result,
                 const std::string& detail, const std::string& statementAfterMarker) {
  return "FULLASSERTION=" + path + "," + line + "," + result + "," + detail + "-----ZKR_ASSERT" +
         statementAfterMarker + "\n";
}
std::string start(const std::string& result) {
  return full("t.c", "1", result, "", std::string(kStart).substr(10));
}
std::string finish() {
  return full("t.c", "2", "1", "", std::string(kFinish).substr(10));
}

std::string dumpRecord(const AssertionRecord& r) {
  return r.assertionText + "|" + std::string(statusText(r.status)) + "|" + r.fileNumber + "|" +
         r.lineNumber + "|" + r.detailText;
}

// Every list as "number: record; record" lines; a null list as "number: null".
std::string dumpTables() {
  std::string out;
  for (const auto& [number, list] : run().testCaseAssertions) {
    out += std::to_string(number) + ":";
    if (!list) {
      out += " null\n";
      continue;
    }
    for (const AssertionRecord& r : *list) out += " [" + dumpRecord(r) + "]";
    out += "\n";
  }
  return out;
}

class ResultFileTest : public ::testing::Test {
 protected:
  void SetUp() override { resetRun(); }
  void TearDown() override { resetRun(); }

  void useResultFile(const std::string& content) {
    path_ = dir_.write("results.log", content);
    run().resultFile = path_.c_str();
  }

  // Runs the result file entry on `content`, keeping what it printed.
  int readResult(const std::string& content) {
    useResultFile(content);
    testing::internal::CaptureStdout();
    int read = readResultFile();
    printed_ = testing::internal::GetCapturedStdout();
    return read;
  }

  // Reads `line` as the second record of an open test case and dumps it.
  std::string recordOf(const std::string& line) {
    resetRun();
    run().sourceFiles[3] = "/home/p/src/x.c";
    useResultFile(start("1") + line);
    EXPECT_EQ(readFullAssertions(), 1);
    const auto& list = run().testCaseAssertions[1];
    if (!list || list->size() != 2) return "<" + dumpTables() + ">";
    return dumpRecord((*list)[1]);
  }

  test::TempDir dir_;
  std::string path_;
  std::string printed_;
};

TEST(TestCaseStartAndEnd, LookAtTheMessageOnly) {
  struct Case {
    const char* statement;
    bool start;
    bool end;
  };
  const Case cases[] = {
      {kStart, true, false},
      {kFinish, false, true},
      {R"(ZKR_ASSERT_TRUE("Starting test case"))", true, false},
      {R"(ZKR_ASSERT("Finished test case: x", 1))", false, true},
      {R"(ZKR_ASSERT_TRUE("starting test case"))", false, false},
      {R"(ZKR_ASSERT_SD("Starting test case", "m", "x"))", false, false},
      {R"(ZKR_ASSERT_TRUE(x) // Starting test case)", false, false},
      {"Starting test case Finished test case", false, false},
      {R"(ZKR_ASSERT_TRUE("Starting test case, Finished test case"))", true, true},
      {"", false, false},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(isTestCaseStart(c.statement), c.start) << c.statement;
    EXPECT_EQ(isTestCaseEnd(c.statement), c.end) << c.statement;
  }
}

TEST(NormaliseRecordPath, Cases) {
  struct Case {
    const char* path;
    const char* expected;
  };
  const Case cases[] = {
      {"src\\..\\x.c", "src/x.c"},
      {"C:\\src\\a.c", ":/src/a.c"},
      {"C:/../x", ":/x"},
      {"a:b", ":b"},
      {"ab:c", "ab:c"},
      {":a", ":a"},
      {"/abs/a.c", "abs/a.c"},
      {"//a.c", "/a.c"},
      {"/C:/x", "C:/x"},
      {"\\\\server\\x", "/server/x"},
      {"../../a.c", "a.c"},
      {"....//a.c", "a.c"},  // removing "../" makes a new one: removed again
      {".../a.c", ".a.c"},
      {"..\\..\\", ""},
      {"x/..", "x/.."},
      {"./a.c", "./a.c"},
      {"", ""},
  };
  for (const Case& c : cases) EXPECT_EQ(normaliseRecordPath(c.path), c.expected) << c.path;
}

TEST(NormaliseRecordPath, LongNestingIsLinear) {
  std::string path;
  for (int i = 0; i < 1000000; ++i) path += "..";
  for (int i = 0; i < 1000000; ++i) path += "/";
  EXPECT_EQ(normaliseRecordPath(path + "a.c"), "a.c");
}

class MatchSourceFileTest : public ResultFileTest {};

TEST_F(MatchSourceFileTest, Cases) {
  struct Case {
    RunTable<std::string> files;
    const char* path;
    const char* expected;
  };
  const Case cases[] = {
      {{{1, "/home/u/src/a.cpp"}}, "src/a.cpp", "1"},
      // The same relative path matches neither test.
      {{{3, "src/a.cpp"}}, "src/a.cpp", ""},
      {{{1, "D:/src/a.c"}}, ":/src/a.c", "1"},
      {{{5, "xsrc/c.c"}}, "src/c.c", "5"},
      // Both tests on each entry before the next one.
      {{{1, "xsrc/c.c"}, {2, "/y/src/c.c"}}, "src/c.c", "1"},
      // The first occurrence must stand at index 1.
      {{{1, "aab"}}, "a", ""},
      {{{1, "aab"}}, "ab", "1"},
      {{{-5, "/x/a.c"}, {2, "/y/a.c"}}, "a.c", "-5"},
      {{{1, "D:/src/a.c"}, {2, "/home/u/src/a.cpp"}}, "a.c", "1"},
      {{{1, "a.c"}, {2, "s/a.c"}}, "", "2"},
      {{{1, "/src/A.c"}}, "src/a.c", ""},
      {{}, "a.c", ""},
  };
  for (const Case& c : cases) {
    run().sourceFiles = c.files;
    EXPECT_EQ(matchSourceFile(c.path, run().sourceFiles), c.expected) << c.path;
  }
}

TEST_F(ResultFileTest, FullRecordFields) {
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

TEST_F(ResultFileTest, StartResultNamesTheListAndIsRecorded) {
  useResultFile(start("7") + finish() + start("0") + finish());
  ASSERT_EQ(readFullAssertions(), 1);
  std::string s = kStart, f = kFinish;
  EXPECT_EQ(dumpTables(), "0: [" + s + "|FAILED||1|] [" + f + "|PASSED||2|]\n" + "7: [" + s +
                              "|PASSED||1|] [" + f + "|PASSED||2|]\n");
}

TEST_F(ResultFileTest, RecordsOutsideStartAndFinishAreDropped) {
  useResultFile(full("a.c", "1", "1", "", "(before)") + start("2") +
                full("a.c", "3", "1", "", "(inside)") + finish() +
                full("a.c", "5", "1", "", "(between)") + "- progress 1\n" +
                " FULLASSERTION=a.c,6,1,-----ZKR_ASSERT(blank)\n" +
                "fullassertion=a.c,6,1,-----ZKR_ASSERT(lower)\n" + start("4") +
                full("a.c", "7", "0", "", "(open to the end)"));
  ASSERT_EQ(readFullAssertions(), 1);
  EXPECT_EQ(dumpTables(), "2: [" + std::string(kStart) +
                              "|PASSED||1|] [ZKR_ASSERT(inside)|PASSED||3|] [" + kFinish +
                              "|PASSED||2|]\n4: [" + kStart +
                              "|PASSED||1|] [ZKR_ASSERT(open to the end)|FAILED||7|]\n");
}

TEST_F(ResultFileTest, RepeatedStartNumberReplacesTheList) {
  useResultFile(start("1") + full("a.c", "3", "1", "", "(first)") + finish() + start("1") +
                full("a.c", "4", "1", "", "(second)") + finish());
  ASSERT_EQ(readFullAssertions(), 1);
  EXPECT_EQ(dumpTables(), "1: [" + std::string(kStart) +
                              "|PASSED||1|] [ZKR_ASSERT(second)|PASSED||4|] [" + kFinish +
                              "|PASSED||2|]\n");
}

TEST_F(ResultFileTest, StartWhileOpenOpensANewList) {
  useResultFile(start("1") + full("a.c", "3", "1", "", "(one)") + start("2") +
                full("a.c", "4", "1", "", "(two)") + finish());
  ASSERT_EQ(readFullAssertions(), 1);
  EXPECT_EQ(dumpTables(), "1: [" + std::string(kStart) +
                              "|PASSED||1|] [ZKR_ASSERT(one)|PASSED||3|]\n2: [" + kStart +
                              "|PASSED||1|] [ZKR_ASSERT(two)|PASSED||4|] [" + kFinish +
                              "|PASSED||2|]\n");
}

TEST_F(ResultFileTest, NullEntryIsReplacedByAStart) {
  run().testCaseAssertions[3];  // inserted empty by another reader
  run().testCaseAssertions[9];
  useResultFile(start("3"));
  ASSERT_EQ(readFullAssertions(), 1);
  EXPECT_EQ(dumpTables(), "3: [" + std::string(kStart) + "|PASSED||1|]\n9: null\n");
}

// Only the records that a report reads are kept; the others still open and
// close their test cases.
TEST_F(ResultFileTest, OnlyTheReportedTestCaseKeepsItsRecords) {
  run().testCaseNames[1] = "Pkg.Ctx.One";
  run().testCaseNames[2] = "Pkg.Ctx.Two";
  run().testCaseNames[3] = "Pkg.Ctx.Two";  // the driver takes the first of a name
  run().testCaseName = "Pkg.Ctx.Two";
  run().testContextName = "Pkg.Ctx";  // "-tcase" wins
  // Test case 1 is never finished: it ends at the start of 2, whose records
  // are kept, and a start of 3 while 2 is open ends 2 as well.
  useResultFile(start("1") + full("a.c", "3", "1", "", "(one)") + start("2") +
                full("a.c", "4", "1", "", "(two)") + start("3") +
                full("a.c", "5", "1", "", "(three)") + finish() +
                full("a.c", "6", "1", "", "(outside)"));
  ASSERT_EQ(readFullAssertions(), 1);
  EXPECT_EQ(dumpTables(),
            "2: [" + std::string(kStart) + "|PASSED||1|] [ZKR_ASSERT(two)|PASSED||4|]\n");
}

TEST_F(ResultFileTest, ContextRunKeepsItsMembersOnly) {
  run().testCaseNames[1] = "Pkg.Ctx.One";
  run().testCaseNames[2] = "Pkg.Other.Two";
  run().testCaseNames[4] = "Pkg.Ctx.Ctx";
  run().testContextName = "Pkg.Ctx";
  useResultFile(start("1") + finish() + start("2") + full("a.c", "4", "1", "", "(two)") + finish() +
                start("4") + finish() + start("5") + finish());
  ASSERT_EQ(readFullAssertions(), 1);
  EXPECT_EQ(dumpTables(), "1: [" + std::string(kStart) + "|PASSED||1|] [" + kFinish +
                              "|PASSED||2|]\n4: [" + kStart + "|PASSED||1|] [" + kFinish +
                              "|PASSED||2|]\n");
}

// A "-tcase" test case under a number below 1 is reported as the context
// document, which reads the context's members.
TEST_F(ResultFileTest, TestCaseNumberedBelowOneKeepsTheContextMembers) {
  run().testCaseNames[0] = "Pkg.Ctx.Zero";
  run().testCaseNames[1] = "Pkg.Ctx.One";
  run().testCaseNames[2] = "Pkg.Other.Two";
  run().testCaseName = "Pkg.Ctx.Zero";
  run().testContextName = "Pkg.Ctx";
  useResultFile(start("0") + finish() + start("1") + finish() + start("2") + finish());
  ASSERT_EQ(readFullAssertions(), 1);
  EXPECT_EQ(dumpTables(), "0: [" + std::string(kStart) + "|FAILED||1|] [" + kFinish +
                              "|PASSED||2|]\n1: [" + kStart + "|PASSED||1|] [" + kFinish +
                              "|PASSED||2|]\n");
}

TEST_F(ResultFileTest, UnknownTestCaseNameKeepsNothing) {
  run().testCaseNames[1] = "Pkg.Ctx.One";
  run().testCaseName = "One";  // the short name alone does not match
  useResultFile(start("1") + finish());
  ASSERT_EQ(readFullAssertions(), 1);
  EXPECT_EQ(dumpTables(), "");
}

TEST_F(ResultFileTest, FileNumbersOfManyRecords) {
  run().sourceFiles[1] = "/w/src/a.c";
  run().sourceFiles[2] = "C:/w/src/b.c";
  run().sourceFiles[3] = "src/c.c";
  std::string log = start("1");
  for (int i = 0; i < 3; ++i) {
    log += full("src\\a.c", "1", "1", "", "(a)") + full("C:\\w\\src\\b.c", "2", "1", "", "(b)") +
           full("src/c.c", "3", "1", "", "(c)");
  }
  useResultFile(log);
  ASSERT_EQ(readFullAssertions(), 1);
  const AssertionList& list = *run().testCaseAssertions[1];
  ASSERT_EQ(list.size(), 10u);
  for (size_t i = 1; i < list.size(); i += 3) {
    EXPECT_EQ(list[i].fileNumber, "1");
    EXPECT_EQ(list[i + 1].fileNumber, "2");
    EXPECT_EQ(list[i + 2].fileNumber, "");
  }
}

TEST_F(ResultFileTest, FullReaderOnOddFiles) {
  // Empty file, CRLF lines and a last line without a line feed.
  useResultFile("");
  EXPECT_EQ(readFullAssertions(), 1);
  EXPECT_EQ(dumpTables(), "");
  std::string crlf = start("5");
  crlf.insert(crlf.size() - 1, "\r");
  useResultFile(crlf + "FULLASSERTION=a.c,3,1,d-----ZKR_ASSERT(x)");
  EXPECT_EQ(readFullAssertions(), 1);
  EXPECT_EQ(dumpTables(),
            "5: [" + std::string(kStart) + "\r|PASSED||1|] [ZKR_ASSERT(x)|PASSED||3|d]\n");
}

TEST_F(ResultFileTest, NulNonUtf8AndHugeLines) {
  const std::string nul(1, '\0');
  std::string odd = "FULLASSERTION=a" + nul + ".c,3,1,\xff\xfe-----ZKR_ASSERT(" + nul + ")\n";
  std::string huge = "FULLASSERTION=a.c,4,1,d-----ZKR_ASSERT(" + std::string(10 << 20, 'h') + ")\n";
  useResultFile(std::string(10 << 20, '\0') + "\n" + start("1") + odd + huge);
  ASSERT_EQ(readFullAssertions(), 1);
  const AssertionList& list = *run().testCaseAssertions[1];
  ASSERT_EQ(list.size(), 3u);
  EXPECT_EQ(list[1].assertionText, "ZKR_ASSERT(" + nul + ")");
  EXPECT_EQ(list[1].detailText, "\xff\xfe");
  EXPECT_EQ(list[2].assertionText.size(), (10u << 20) + 12);
}

TEST_F(ResultFileTest, MissingOrUnnamedFile) {
  run().resultFile = "/nonexistent/qendor/results.log";
  EXPECT_EQ(readFullAssertions(), 0);
  testing::internal::CaptureStdout();
  EXPECT_EQ(readResultFile(), 0);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
  run().resultFile = nullptr;
  EXPECT_EQ(readResultFile(), 0);
  EXPECT_EQ(readFullAssertions(), 0);
}

TEST_F(ResultFileTest, DirectoryHoldsNoRecordLine) {
  run().resultFile = dir_.path().c_str();
  EXPECT_EQ(readResultFile(), 0);
  EXPECT_EQ(dumpTables(), "");
}

TEST_F(ResultFileTest, NoRecordLineReadsAsFailure) {
  const char* logs[] = {"", "- progress 1\n", " ASSERTION=1,1,1\n", "assertion=1,1,1\nFULL\n",
                        "ASSERTION\n"};
  for (const char* log : logs) {
    EXPECT_EQ(readResult(log), 0) << log;
    EXPECT_EQ(printed_, "") << log;
  }
}

TEST_F(ResultFileTest, FirstRecordLineDecidesFullForm) {
  run().sourceFiles[1] = dir_.write("s.c", std::string(kStart) + "\n");
  EXPECT_EQ(
      readResult("header\n" + start("2") + "ASSERTION=1,1,3\n" + full("a.c", "4", "1", "", "(x)")),
      1);
  EXPECT_EQ(printed_, "");
  // The short record line is ignored and nothing was collected.
  EXPECT_TRUE(run().collectedAssertions.empty());
  EXPECT_EQ(dumpTables(),
            "2: [" + std::string(kStart) + "|PASSED||1|] [ZKR_ASSERT(x)|PASSED||4|]\n");
}

TEST_F(ResultFileTest, FirstRecordLineDecidesShortForm) {
  run().sourceFiles[1] = dir_.write("s.c", std::string(kStart) + "\nZKR_ASSERT_TRUE(y);\n");
  EXPECT_EQ(readResult("header\nASSERTION=1,1,3\n" + start("2") + "ASSERTION=1,2,0 words\n"), 1);
  EXPECT_EQ(printed_, "");
  EXPECT_EQ(dumpTables(),
            "3: [" + std::string(kStart) + "|PASSED|1|1|] [ZKR_ASSERT_TRUE(y);|FAILED|1|2|]\n");
}

TEST_F(ResultFileTest, ShortFormWithoutSourceFilesSaysSoAndReadsOn) {
  EXPECT_EQ(readResult("ASSERTION=1,1,3\n"), 1);
  EXPECT_EQ(printed_,
            "Assertions could not be collected correctly from files specified in infofile.\n");
  EXPECT_EQ(dumpTables(), "");
}

TEST_F(ResultFileTest, RecordsCostLittleMoreThanTheirText) {
  // 100000 typical records: the lists hold no spare capacity after reading.
  std::string log = start("1");
  for (int i = 0; i < 100000; ++i) {
    log += full("src/a.c", std::to_string(i), "1", "", "_TRUE(value == expected)");
  }
  useResultFile(log);
  ASSERT_EQ(readFullAssertions(), 1);
  const AssertionList& list = *run().testCaseAssertions[1];
  EXPECT_EQ(list.size(), 100001u);
  EXPECT_EQ(list.capacity(), list.size());
}

TEST_F(ResultFileTest, GarbageMadeOfFormatPiecesIsReadWithoutHarm) {
  // Lines glued together from the pieces the readers look for, in a fixed
  // pseudo-random order; only the absence of crashes and hangs is checked.
  const char* pieces[] = {"FULLASSERTION=",
                          "ASSERTION=",
                          ",",
                          "\"",
                          "\\",
                          "(",
                          ")",
                          " ",
                          "-----ZKR_ASSERT",
                          "ZKR_ASSERT_SD(",
                          "ASSERT_TRUE(",
                          "../",
                          "..\\",
                          ":",
                          "/",
                          "Starting test case",
                          "Finished test case",
                          "7",
                          "-1",
                          "\r",
                          "\t",
                          "\xff",
                          ";",
                          "//"};
  std::mt19937 random(12345);
  std::uniform_int_distribution<size_t> pick(0, std::size(pieces) - 1);
  std::uniform_int_distribution<int> length(0, 30);
  std::string log = "FULLASSERTION=x\n", source;
  for (int line = 0; line < 3000; ++line) {
    std::string text;
    for (int i = length(random); i > 0; --i) text += pieces[pick(random)];
    log += text + "\n";
    if (line % 3 == 0) source += text + "\n";
    std::string first, second, message;
    parseAssertionMacro(text, first, second, message);
    normaliseRecordPath(text);
  }
  run().sourceFiles[7] = dir_.write("garbage.c", source);
  run().sourceFiles[-1] = "/w/src/a.c";
  useResultFile(log);
  EXPECT_EQ(readFullAssertions(), 1);
  collectAssertions();
  EXPECT_EQ(readShortAssertions(), 1);
  testing::internal::CaptureStdout();
  EXPECT_EQ(readResultFile(), 1);
  testing::internal::GetCapturedStdout();
}

}  // namespace
}  // namespace qendor
