// Runs the built program with "-index": what it adds to the output folder,
// that it changes nothing else, and that runs into one folder at the same
// time leave an index of all of them.
#include <gtest/gtest.h>

#include <algorithm>
#include <regex>
#include <string>
#include <vector>

#include "tests/history_support.h"
#include "tests/test_support.h"

namespace qendor {
namespace {

using test::ExampleRun;

// The clock's part of a file: the header's time, as the XML writes it and
// as the page shows it.
std::string withoutTime(const std::string& text) {
  static const std::regex attribute(" time=\"[^\"]*\"");
  static const std::regex shown("[A-Z][a-z]{2} [A-Z][a-z]{2} [ 0-9][0-9] [0-9:]{8} [0-9]{4}");
  return std::regex_replace(std::regex_replace(text, attribute, " time=\"*\""), shown, "*");
}

bool isIndexFile(const std::string& name) {
  return name == "index.xml" || name == "index.html" || name == "index.xml.lock";
}

TEST(IndexRuns, TheOptionAddsTheIndexAndChangesNothingElse) {
  for (const char* testCase : {"", "Shop.Checkout.ApplyVoucher"}) {
    for (const char* renderer : {"xsltproc", "builtin"}) {
      ExampleRun example;
      std::vector<std::string> plainArgs = example.prepare("plain", "", testCase);
      std::vector<std::string> indexArgs = example.prepare("indexed", "", testCase);
      for (auto* args : {&plainArgs, &indexArgs}) args->insert(args->end(), {"-render", renderer});
      indexArgs.push_back("-index");
      const test::ProgramOutcome plain =
          test::runProgram(QENDOR_BINARY, plainArgs, example.dir().path());
      const test::ProgramOutcome indexed =
          test::runProgram(QENDOR_BINARY, indexArgs, example.dir().path());
      const std::string what = std::string(renderer) + " " + testCase;
      EXPECT_EQ(indexed.status, plain.status) << what;
      EXPECT_EQ(indexed.status, *testCase ? 10 : 10) << what;
      EXPECT_EQ(indexed.out, plain.out) << what;
      EXPECT_EQ(indexed.err, plain.err) << what;
      std::vector<std::string> others = test::filesIn(example.path("indexed"));
      others.erase(std::remove_if(others.begin(), others.end(), isIndexFile), others.end());
      EXPECT_EQ(others, test::filesIn(example.path("plain"))) << what;
      for (const std::string& name : others) {
        EXPECT_EQ(withoutTime(test::readFile(example.path("indexed/" + name))),
                  withoutTime(test::readFile(example.path("plain/" + name))))
            << what << name;
      }
      // The context is listed, a test case run's report is not.
      const std::string index = test::readFile(example.path("indexed/index.xml"));
      const bool listsContext = index.find("file=\"Checkout.xml\"") != std::string::npos;
      EXPECT_EQ(listsContext, !*testCase) << what << index;
      EXPECT_EQ(index.find("ApplyVoucher"), std::string::npos) << what << index;
      EXPECT_TRUE(test::fileExists(example.path("indexed/index.html"))) << what;
      EXPECT_TRUE(test::validates(example.path("indexed/index.xml"))) << what;
    }
  }
}

TEST(IndexRuns, WithoutTheOptionNoIndex) {
  ExampleRun example;
  const test::ProgramOutcome o = example.run("out");
  EXPECT_EQ(o.status, 10);
  EXPECT_FALSE(test::fileExists(example.path("out/index.xml")));
  EXPECT_FALSE(test::fileExists(example.path("out/index.html")));
  EXPECT_FALSE(test::fileExists(example.path("out/index.xml.lock")));
}

TEST(IndexRuns, ATestCaseRunRewritesTheIndexOfContexts) {
  ExampleRun example;
  std::vector<std::string> args = example.prepare("out");
  args.push_back("-index");
  ASSERT_EQ(test::runProgram(QENDOR_BINARY, args, example.dir().path()).status, 10);
  const std::string before = test::readFile(example.path("out/index.xml"));
  std::vector<std::string> caseArgs = example.prepare("out", "", "Shop.Checkout.PlaceOrder");
  caseArgs.push_back("-index");
  const test::ProgramOutcome o = test::runProgram(QENDOR_BINARY, caseArgs, example.dir().path());
  EXPECT_EQ(o.status, 0);
  EXPECT_EQ(o.err, "");
  EXPECT_EQ(test::readFile(example.path("out/index.xml")), before);
  EXPECT_EQ(withoutTime(before),
            "<?xml version=\"1.0\"?>\n<TestIndex>\n"
            "  <Context file=\"Checkout.xml\" href=\"Checkout.html\" name=\"Shop.Checkout\" "
            "fullname=\"Shop.Checkout\" status=\"FAILED\" time=\"*\" projectName=\"Shop\" "
            "componentName=\"Checkout\" configurationName=\"Debug\" testCases=\"9\" passed=\"5\" "
            "failed=\"1\" error=\"3\" undefined=\"0\" assertions=\"33\"/>\n"
            "</TestIndex>\n");
}

// An info file of eight contexts of one test case each (named apart: a
// test case's report is named after its short name), and a log in which
// the test cases of the even contexts fail.
void writeEightContexts(const test::TempDir& dir) {
  std::string info = "ActiveProject Pkg\nActiveComponent Eight\nActiveConfiguration Debug\n";
  std::string log;
  for (int i = 1; i <= 8; ++i) {
    const std::string n = std::to_string(i);
    info += "TESTCASE Pkg.Ctx" + n + ".Sum" + n + " " + n + " -\n";
    log += "[10:00:0" + n + "] Executing test case Pkg.Ctx" + n + ".Sum" + n + "\n";
    log += "FULLASSERTION=..\\src\\sum.cpp,5," + n +
           ",Starting test case: Sum-----ZKR_ASSERT_TRUE(\"Starting test case: Sum\");\n";
    log += std::string("FULLASSERTION=..\\src\\sum.cpp,8,") + (i % 2 ? "1" : "0") +
           ",sum-----ZKR_ASSERT_EQUAL(sum(), 3);\n";
    log +=
        "FULLASSERTION=..\\src\\sum.cpp,11,1,Finished test case: Sum-----"
        "ZKR_ASSERT_TRUE(\"Finished test case: Sum\");\n";
  }
  info += "FILE \"./src/sum.cpp\" 1\n";
  dir.write("eight.info", info);
  dir.write("eight.log", log);
  dir.write("src/sum.cpp", "int sum();\n");
}

TEST(IndexRuns, EightRunsAtOnceAreAllListed) {
  test::TempDir dir;
  writeEightContexts(dir);
  std::vector<test::RunningProgram> running;
  for (int i = 1; i <= 8; ++i) {
    running.push_back(test::startProgram(
        QENDOR_BINARY,
        {"-infofile", "eight.info", "-resultfile", "eight.log", "-outdirectory", "out", "-tcontext",
         "Pkg.Ctx" + std::to_string(i), "-index", "-render", i % 2 ? "builtin" : "xsltproc"},
        dir.path()));
  }
  for (size_t i = 0; i < running.size(); ++i) {
    const test::ProgramOutcome o = running[i].finish();
    EXPECT_EQ(o.status, i % 2 ? 10 : 0) << i << o.err;
    EXPECT_EQ(o.err, "") << i;
  }
  const std::string index = test::readFile(dir.file("out/index.xml"));
  std::string listed;
  static const std::regex entry("<Context file=\"([^\"]*)\"[^>]* status=\"([A-Z]*)\"");
  for (std::sregex_iterator it(index.begin(), index.end(), entry), end; it != end; ++it) {
    listed += (*it)[1].str() + " " + (*it)[2].str() + "\n";
  }
  EXPECT_EQ(listed,
            "Ctx2.xml FAILED\nCtx4.xml FAILED\nCtx6.xml FAILED\nCtx8.xml FAILED\n"
            "Ctx1.xml PASSED\nCtx3.xml PASSED\nCtx5.xml PASSED\nCtx7.xml PASSED\n")
      << index;
  EXPECT_EQ(index.find("<Skipped"), std::string::npos) << index;
  EXPECT_TRUE(test::validates(dir.file("out/index.xml")));
  const std::string page = test::readFile(dir.file("out/index.html"));
  EXPECT_NE(page.find("4 of 8 test contexts did not pass"), std::string::npos);
  EXPECT_EQ(test::filesIn(dir.file("out")).size(), 8u * 4 + 3);
}

}  // namespace
}  // namespace qendor
