// The loaders of the run's result file: opening it, choosing the reader by
// record form, and filing the records in the run tables.
#include <gtest/gtest.h>

#include <random>
#include <string>

#include "base/run_settings.h"
#include "input/assertion_collection.h"
#include "input/assertion_macro.h"
#include "input/record_path.h"
#include "input/result_file.h"
#include "input/short_assertions.h"
#include "tests/log_records.h"
#include "tests/test_support.h"

namespace qendor {
namespace {

using test::kStart;

class ResultFileLoaderTest : public ::testing::Test {
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

  static std::string tables() { return test::dumpLists(run().testCaseAssertions); }

  test::TempDir dir_;
  std::string path_;
  std::string printed_;
};

TEST_F(ResultFileLoaderTest, FullFormKeepsTheTestCasesTheRunReports) {
  run().testCaseNames[1] = "Pkg.Ctx.One";
  run().testCaseNames[2] = "Pkg.Ctx.Two";
  run().testCaseName = "Pkg.Ctx.Two";
  run().sourceFiles[4] = "/w/src/a.c";
  useResultFile(test::fullStart("1") + test::fullFinish() + test::fullStart("2") +
                test::fullLine("src/a.c", "9", "0", "d", "(x)") + test::fullFinish());
  ASSERT_EQ(readFullAssertions(), 1);
  EXPECT_EQ(tables(), "2: [" + std::string(kStart) + "|PASSED||1|] [ZKR_ASSERT(x)|FAILED|4|9|d] [" +
                          test::kFinish + "|PASSED||2|]\n");
}

TEST_F(ResultFileLoaderTest, MissingOrUnnamedFile) {
  run().resultFile = "/nonexistent/qendor/results.log";
  EXPECT_EQ(readFullAssertions(), 0);
  testing::internal::CaptureStdout();
  EXPECT_EQ(readResultFile(), 0);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
  run().resultFile = nullptr;
  EXPECT_EQ(readResultFile(), 0);
  EXPECT_EQ(readFullAssertions(), 0);
}

TEST_F(ResultFileLoaderTest, DirectoryHoldsNoRecordLine) {
  run().resultFile = dir_.path().c_str();
  EXPECT_EQ(readResultFile(), 0);
  EXPECT_EQ(tables(), "");
}

TEST_F(ResultFileLoaderTest, NoRecordLineReadsAsFailure) {
  const char* logs[] = {"", "- progress 1\n", " ASSERTION=1,1,1\n", "assertion=1,1,1\nFULL\n",
                        "ASSERTION\n"};
  for (const char* log : logs) {
    EXPECT_EQ(readResult(log), 0) << log;
    EXPECT_EQ(printed_, "") << log;
  }
}

TEST_F(ResultFileLoaderTest, FirstRecordLineDecidesFullForm) {
  run().sourceFiles[1] = dir_.write("s.c", std::string(kStart) + "\n");
  EXPECT_EQ(readResult("header\n" + test::fullStart("2") + "ASSERTION=1,1,3\n" +
                       test::fullLine("a.c", "4", "1", "", "(x)")),
            1);
  EXPECT_EQ(printed_, "");
  // The short record line is ignored and nothing was collected.
  EXPECT_TRUE(run().collectedAssertions.empty());
  EXPECT_EQ(tables(), "2: [" + std::string(kStart) + "|PASSED||1|] [ZKR_ASSERT(x)|PASSED||4|]\n");
}

TEST_F(ResultFileLoaderTest, FirstRecordLineDecidesShortForm) {
  run().sourceFiles[1] = dir_.write("s.c", std::string(kStart) + "\nZKR_ASSERT_TRUE(y);\n");
  EXPECT_EQ(
      readResult("header\nASSERTION=1,1,3\n" + test::fullStart("2") + "ASSERTION=1,2,0 words\n"),
      1);
  EXPECT_EQ(printed_, "");
  EXPECT_EQ(tables(),
            "3: [" + std::string(kStart) + "|PASSED|1|1|] [ZKR_ASSERT_TRUE(y);|FAILED|1|2|]\n");
}

TEST_F(ResultFileLoaderTest, ShortFormWithoutSourceFilesSaysSoAndReadsOn) {
  EXPECT_EQ(readResult("ASSERTION=1,1,3\n"), 1);
  EXPECT_EQ(printed_,
            "Assertions could not be collected correctly from files specified in infofile.\n");
  EXPECT_EQ(tables(), "");
}

TEST_F(ResultFileLoaderTest, GarbageMadeOfFormatPiecesIsReadWithoutHarm) {
  // Lines glued together from the pieces the readers look for, in a fixed
  // pseudo-random order; the readers must end and report the file as read.
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
