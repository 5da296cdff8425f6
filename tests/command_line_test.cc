#include "app/command_line.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/run_settings.h"

namespace qendor {
namespace {

class CommandLine : public ::testing::Test {
 protected:
  void SetUp() override { resetRun(); }
  void TearDown() override { resetRun(); }

  bool parse(std::vector<std::string> words) {
    words_ = std::move(words);
    argv_.clear();
    for (std::string& word : words_) argv_.push_back(word.data());
    argv_.push_back(nullptr);
    return parseCommandLine(static_cast<int>(words_.size()), argv_.data());
  }

  std::vector<std::string> words_;
  std::vector<char*> argv_;
};

TEST_F(CommandLine, ThreeFilesAloneAreIncomplete) {
  EXPECT_FALSE(parse({"qendor", "-infofile", "i", "-resultfile", "r", "-outdirectory", "o"}));
  EXPECT_EQ(run().infoFile, nullptr);  // below eight words nothing is read
}

TEST_F(CommandLine, FourOptionsInAnyOrder) {
  EXPECT_TRUE(parse({"qendor", "-tcontext", "Pkg.Ctx", "-outdirectory", "o", "-resultfile", "r",
                     "-infofile", "i"}));
  EXPECT_STREQ(run().infoFile, "i");
  EXPECT_STREQ(run().resultFile, "r");
  EXPECT_STREQ(run().outDirectory, "o");
  EXPECT_EQ(run().testContextName, "Pkg.Ctx");
  EXPECT_EQ(run().testCaseName, "");
  EXPECT_EQ(run().reportLanguage, 1);
}

TEST_F(CommandLine, EmptyContextWithoutCaseIsIncomplete) {
  EXPECT_FALSE(parse(
      {"qendor", "-infofile", "i", "-resultfile", "r", "-outdirectory", "o", "-tcontext", ""}));
}

TEST_F(CommandLine, UnknownLanguageKeepsEnu) {
  EXPECT_TRUE(parse({"qendor", "-infofile", "i", "-resultfile", "r", "-outdirectory", "o", "-tcase",
                     "A.B", "-language", "XYZ"}));
  EXPECT_EQ(run().reportLanguage, 1);
}

TEST_F(CommandLine, LastLanguageWins) {
  EXPECT_TRUE(parse({"qendor", "-infofile", "i", "-resultfile", "r", "-outdirectory", "o", "-tcase",
                     "A.B", "-language", "CHS", "-language", "KOR"}));
  EXPECT_EQ(run().reportLanguage, 4);
  EXPECT_TRUE(parse({"qendor", "-infofile", "i", "-resultfile", "r", "-outdirectory", "o", "-tcase",
                     "A.B", "-language", "JPN", "-language", "ENU"}));
  EXPECT_EQ(run().reportLanguage, 1);
}

TEST_F(CommandLine, RendererIsXsltprocUnlessBuiltinIsAsked) {
  EXPECT_TRUE(parse(
      {"qendor", "-infofile", "i", "-resultfile", "r", "-outdirectory", "o", "-tcase", "A.B"}));
  EXPECT_EQ(run().htmlRenderer, HtmlRenderer::kXsltproc);
  EXPECT_TRUE(parse({"qendor", "-render", "builtin", "-infofile", "i", "-resultfile", "r",
                     "-outdirectory", "o", "-tcase", "A.B"}));
  EXPECT_EQ(run().htmlRenderer, HtmlRenderer::kBuiltin);
  // An unknown value leaves it as it was, as an unknown language does; the
  // last known value wins.
  EXPECT_TRUE(parse({"qendor", "-infofile", "i", "-resultfile", "r", "-outdirectory", "o", "-tcase",
                     "A.B", "-render", "Builtin"}));
  EXPECT_EQ(run().htmlRenderer, HtmlRenderer::kBuiltin);
  EXPECT_TRUE(parse({"qendor", "-infofile", "i", "-resultfile", "r", "-outdirectory", "o", "-tcase",
                     "A.B", "-render", "xsltproc", "-render"}));
  EXPECT_EQ(run().htmlRenderer, HtmlRenderer::kXsltproc);
}

TEST_F(CommandLine, HistoryDirectoryIsOptional) {
  EXPECT_TRUE(parse(
      {"qendor", "-infofile", "i", "-resultfile", "r", "-outdirectory", "o", "-tcase", "A.B"}));
  EXPECT_EQ(run().historyDirectory, nullptr);
  EXPECT_TRUE(parse({"qendor", "-history", "h\\x", "-infofile", "i", "-resultfile", "r",
                     "-outdirectory", "o", "-tcase", "A.B"}));
  EXPECT_STREQ(run().historyDirectory, "h\\x");
  // Without its value it counts as not given.
  resetRun();
  EXPECT_TRUE(parse({"qendor", "-infofile", "i", "-resultfile", "r", "-outdirectory", "o", "-tcase",
                     "A.B", "-history"}));
  EXPECT_EQ(run().historyDirectory, nullptr);
}

TEST_F(CommandLine, IndexTakesNoValue) {
  EXPECT_TRUE(parse(
      {"qendor", "-infofile", "i", "-resultfile", "r", "-outdirectory", "o", "-tcase", "A.B"}));
  EXPECT_FALSE(run().index);
  // The word after it is the next option, even when it stands last.
  EXPECT_TRUE(parse({"qendor", "-index", "-infofile", "i", "-resultfile", "r", "-outdirectory", "o",
                     "-tcase", "A.B"}));
  EXPECT_TRUE(run().index);
  EXPECT_STREQ(run().infoFile, "i");
  resetRun();
  EXPECT_TRUE(parse({"qendor", "-infofile", "i", "-resultfile", "r", "-outdirectory", "o", "-tcase",
                     "A.B", "-index"}));
  EXPECT_TRUE(run().index);
}

TEST_F(CommandLine, CoverageIsOffUnlessAskedAndTakesNoValue) {
  EXPECT_TRUE(parse(
      {"qendor", "-infofile", "i", "-resultfile", "r", "-outdirectory", "o", "-tcase", "A.B"}));
  EXPECT_FALSE(run().coverage);
  // The word after it is the next option, not its value.
  resetRun();
  EXPECT_TRUE(parse({"qendor", "-infofile", "i", "-coverage", "-resultfile", "r", "-outdirectory",
                     "o", "-tcase", "A.B"}));
  EXPECT_TRUE(run().coverage);
  EXPECT_STREQ(run().resultFile, "r");
  resetRun();
  EXPECT_TRUE(parse({"qendor", "-infofile", "i", "-resultfile", "r", "-outdirectory", "o", "-tcase",
                     "A.B", "-coverage"}));
  EXPECT_TRUE(run().coverage);
}

TEST_F(CommandLine, JunitFileIsOptional) {
  EXPECT_TRUE(parse(
      {"qendor", "-infofile", "i", "-resultfile", "r", "-outdirectory", "o", "-tcase", "A.B"}));
  EXPECT_EQ(run().junitFile, nullptr);
  EXPECT_TRUE(parse({"qendor", "-junit", "ci\\report.xml", "-infofile", "i", "-resultfile", "r",
                     "-outdirectory", "o", "-tcontext", "A"}));
  EXPECT_STREQ(run().junitFile, "ci\\report.xml");
  // Without its value it counts as not given.
  resetRun();
  EXPECT_TRUE(parse({"qendor", "-infofile", "i", "-resultfile", "r", "-outdirectory", "o", "-tcase",
                     "A.B", "-junit"}));
  EXPECT_EQ(run().junitFile, nullptr);
}

TEST_F(CommandLine, UnknownWordsAreSkippedOneByOne) {
  EXPECT_TRUE(parse({"qendor", "stray", "-infofile", "i", "-Resultfile", "-resultfile", "r",
                     "-outdirectory", "o", "-tcase", "A.B"}));
  EXPECT_STREQ(run().resultFile, "r");
  EXPECT_EQ(run().testCaseName, "A.B");
}

TEST_F(CommandLine, RepeatedOptionOverwrites) {
  EXPECT_TRUE(parse({"qendor", "-infofile", "i1", "-resultfile", "r", "-outdirectory", "o",
                     "-infofile", "i2", "-tcase", "A.B"}));
  EXPECT_STREQ(run().infoFile, "i2");
}

TEST_F(CommandLine, OptionStandingLastIsNotGiven) {
  EXPECT_FALSE(parse(
      {"qendor", "-resultfile", "r", "-outdirectory", "o", "-tcase", "A.B", "x", "-infofile"}));
  EXPECT_EQ(run().infoFile, nullptr);
  EXPECT_TRUE(parse({"qendor", "-infofile", "i", "-resultfile", "r", "-outdirectory", "o", "-tcase",
                     "A.B", "-infofile"}));
  EXPECT_STREQ(run().infoFile, "i");  // the earlier value stays
}

TEST_F(CommandLine, BothContextAndCaseAreAccepted) {
  EXPECT_TRUE(parse({"qendor", "-infofile", "i", "-resultfile", "r", "-outdirectory", "o",
                     "-tcontext", "P.C", "-tcase", "P.C.A"}));
  EXPECT_EQ(run().testContextName, "P.C");
  EXPECT_EQ(run().testCaseName, "P.C.A");
}

TEST_F(CommandLine, ProgramDirectoryIsCutBeforeProgramName) {
  parse({"/opt/tools/qendor"});
  EXPECT_EQ(run().programDirectory, "/opt/tools/");
  parse({"qendor"});
  EXPECT_EQ(run().programDirectory, "");
  parse({"C:\\tools\\qendor.exe"});
  EXPECT_EQ(run().programDirectory, "C:/tools/");
  parse({"/opt/bin/report-tool"});
  EXPECT_EQ(run().programDirectory, "/opt/bin/report-tool");
  parse({"/home/qendor-build/bin/qendor"});
  EXPECT_EQ(run().programDirectory, "/home/");
}

// The optional features (-render, -history, -explain, -index) are not in it.
TEST(UsageLine, IsExact) {
  EXPECT_STREQ(kUsageLine,
               "qendor -infofile <infofile> -resultfile <resultfile> -outdirectory "
               "<outdirectory> [-tcontext <testContext> | -tcase <testCase>] [- language <ENU | "
               "CHS | CHT | KOR | JPN>]");
}

}  // namespace
}  // namespace qendor
