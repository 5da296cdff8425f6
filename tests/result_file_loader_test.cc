// The loader of the run's result file: opening it, choosing the reader by
// record form, and returning the test cases it read.
#include <gtest/gtest.h>

#include <optional>
#include <random>
#include <string>
#include <string_view>

#include "base/line_reader.h"
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
  void useResultFile(const std::string& content) {
    path_ = dir_.write("results.log", content);
    settings_.resultFile = path_.c_str();
  }

  // Runs the result file entry, keeping what it printed and what it read.
  bool readResult() {
    testing::internal::CaptureStdout();
    logs_ = readResultFile(settings_);
    printed_ = testing::internal::GetCapturedStdout();
    return logs_.has_value();
  }
  bool readResult(const std::string& content) {
    useResultFile(content);
    return readResult();
  }

  // The test cases read; "nothing read" when the entry gave nothing.
  std::string tables() const { return logs_ ? test::dumpLists(*logs_) : "nothing read"; }

  test::TempDir dir_;
  std::string path_;
  RunSettings settings_;
  std::optional<TestCaseLogs> logs_;
  std::string printed_;
};

TEST_F(ResultFileLoaderTest, FullFormKeepsTheTestCasesTheRunReports) {
  settings_.testCaseNames[1] = "Pkg.Ctx.One";
  settings_.testCaseNames[2] = "Pkg.Ctx.Two";
  settings_.testCaseName = "Pkg.Ctx.Two";
  settings_.sourceFiles[4] = "/w/src/a.c";
  ASSERT_TRUE(readResult(test::fullStart("1") + test::fullFinish() + test::fullStart("2") +
                         test::fullLine("src/a.c", "9", "0", "d", "(x)") + test::fullFinish()));
  EXPECT_EQ(printed_, "");
  EXPECT_EQ(tables(), "2: [" + std::string(kStart) + "|PASSED||1|] [ZKR_ASSERT(x)|FAILED|4|9|d] [" +
                          test::kFinish + "|PASSED||2|]\n");
}

TEST_F(ResultFileLoaderTest, MissingOrUnnamedFile) {
  settings_.resultFile = "/nonexistent/qendor/results.log";
  EXPECT_FALSE(readResult());
  EXPECT_EQ(printed_, "");
  settings_.resultFile = nullptr;
  EXPECT_FALSE(readResult());
  EXPECT_EQ(printed_, "");
}

TEST_F(ResultFileLoaderTest, DirectoryHoldsNoRecordLine) {
  settings_.resultFile = dir_.path().c_str();
  EXPECT_FALSE(readResult());
  EXPECT_EQ(tables(), "nothing read");
}

TEST_F(ResultFileLoaderTest, NoRecordLineReadsAsFailure) {
  const char* logs[] = {"", "- progress 1\n", " ASSERTION=1,1,1\n", "assertion=1,1,1\nFULL\n",
                        "ASSERTION\n"};
  for (const char* log : logs) {
    EXPECT_FALSE(readResult(log)) << log;
    EXPECT_EQ(printed_, "") << log;
  }
}

TEST_F(ResultFileLoaderTest, FirstRecordLineDecidesFullForm) {
  // A source file whose statement the short form would file under test case 3.
  settings_.sourceFiles[1] = dir_.write("s.c", std::string(kStart) + "\n");
  EXPECT_TRUE(readResult("header\n" + test::fullStart("2") + "ASSERTION=1,1,3\n" +
                         test::fullLine("a.c", "4", "1", "", "(x)")));
  EXPECT_EQ(printed_, "");
  // The short record line is ignored.
  EXPECT_EQ(tables(), "2: [" + std::string(kStart) + "|PASSED||1|] [ZKR_ASSERT(x)|PASSED||4|]\n");
}

TEST_F(ResultFileLoaderTest, FirstRecordLineDecidesShortForm) {
  settings_.sourceFiles[1] = dir_.write("s.c", std::string(kStart) + "\nZKR_ASSERT_TRUE(y);\n");
  EXPECT_TRUE(
      readResult("header\nASSERTION=1,1,3\n" + test::fullStart("2") + "ASSERTION=1,2,0 words\n"));
  EXPECT_EQ(printed_, "");
  EXPECT_EQ(tables(),
            "3: [" + std::string(kStart) + "|PASSED|1|1|] [ZKR_ASSERT_TRUE(y);|FAILED|1|2|]\n");
}

TEST_F(ResultFileLoaderTest, ShortFormWithoutSourceFilesSaysSoAndReadsOn) {
  EXPECT_TRUE(readResult("ASSERTION=1,1,3\n"));
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
    std::string_view first, second, message;
    parseAssertionMacro(text, first, second, message);
    normaliseRecordPath(text);
  }
  settings_.sourceFiles[7] = dir_.write("garbage.c", source);
  settings_.sourceFiles[-1] = "/w/src/a.c";
  useResultFile(log);
  {
    LineReader lines(path_);
    ASSERT_TRUE(lines.isOpen());
    readFullAssertions(lines, settings_.sourceFiles, WantedTestCases::of(settings_));
  }
  const CollectedAssertions collected = collectAssertions(settings_.sourceFiles);
  EXPECT_TRUE(collected.anyFileRead);
  {
    LineReader lines(path_);
    ASSERT_TRUE(lines.isOpen());
    readShortAssertions(lines, StatementIndex(collected.statements),
                        WantedTestCases::of(settings_));
  }
  EXPECT_TRUE(readResult());
}

}  // namespace
}  // namespace qendor
