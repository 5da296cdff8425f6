// Runs the built program with "-history" on the bundled example: what the
// documents say about earlier runs, and what happens to history files and
// folders that cannot be used.
#include <gtest/gtest.h>

#include <filesystem>
#include <regex>
#include <string>
#include <vector>

#include "tests/history_support.h"
#include "tests/test_support.h"

namespace qendor {
namespace {

namespace fs = std::filesystem;
using test::ExampleRun;

// One run's log: the example's, with records of three test cases changed.
struct Changes {
  bool totalPriceFails = false;
  bool cartStatesFails = false;
  bool placeOrderFails = false;
  bool applyVoucherPasses = false;
};

std::string changedLog(const Changes& changes) {
  std::string log = test::readFile(std::string(QENDOR_SOURCE_DIR) + "/examples/results.log");
  auto change = [&log](const std::string& from, const std::string& to) {
    const size_t at = log.find(from);
    ASSERT_NE(at, std::string::npos) << from;
    log.replace(at, from.size(), to);
  };
  if (changes.totalPriceFails) change("price_tests.cpp,9,1,", "price_tests.cpp,9,0,");
  if (changes.cartStatesFails) change("chart_tests.cpp,12,1,", "chart_tests.cpp,12,0,");
  if (changes.placeOrderFails) change("sd_tests.cpp,11,1,", "sd_tests.cpp,11,0,");
  if (changes.applyVoucherPasses) change("sd_tests.cpp,49,0,", "sd_tests.cpp,49,1,");
  return log;
}

std::string masked(std::string text) {
  static const std::regex time(" time=\"[^\"]*\"");
  return std::regex_replace(text, time, " time=\"*\"");
}

const char kSuccessful[] = "Result verification successful";

std::string runLine(const char* name, const char* status, const char* result) {
  return std::string("      <TestCaseRun name=\"") + name + "\" fullname=\"Shop.Checkout." + name +
         "\" status=\"" + status + "\" verificationResult=\"" + result + "\"/>\n";
}

// The test cases of one run of the example as the history lists them.
std::string runLines(const Changes& c) {
  return runLine("PlaceOrder", c.placeOrderFails ? "FAILED" : "PASSED", kSuccessful) +
         runLine("PayWithCoupon", "ERROR", "Result verification failed") +
         runLine("CancelOrder", "ERROR", "TestCase did not terminate as expected") +
         runLine("ApplyVoucher", c.applyVoucherPasses ? "PASSED" : "FAILED", kSuccessful) +
         runLine("CartStates", c.cartStatesFails ? "FAILED" : "PASSED", kSuccessful) +
         runLine("ShippingFlow", "PASSED", kSuccessful) +
         runLine("TotalPrice", c.totalPriceFails ? "FAILED" : "PASSED",
                 "No result verification for Code TestCases") +
         runLine("PaymentTimeout", "ERROR", "TestCase did not terminate as expected") +
         runLine("AbortByUser", "PASSED", kSuccessful);
}

std::string trendLine(const char* name, const char* classification) {
  return std::string("    <TestCaseTrend name=\"") + name + "\" fullname=\"Shop.Checkout." + name +
         "\" classification=\"" + classification + "\"/>\n";
}

TEST(HistoryRuns, ThreeRunsWithChangingResults) {
  ExampleRun example;
  Changes first;
  Changes second;
  second.totalPriceFails = true;
  second.cartStatesFails = true;
  Changes third;
  third.cartStatesFails = true;
  third.placeOrderFails = true;
  third.applyVoucherPasses = true;
  for (Changes* changes : {&first, &second, &third}) {
    example.dir().write("results.log", changedLog(*changes));
    const test::ProgramOutcome o = example.run("out", "hist");
    EXPECT_EQ(o.out, "");
    EXPECT_EQ(o.err, "");
    EXPECT_EQ(o.status, 10);
  }
  const std::string expected =
      "  <History>\n" + trendLine("PlaceOrder", "new") +
      trendLine("PayWithCoupon", "still failing") + trendLine("CancelOrder", "still failing") +
      trendLine("ApplyVoucher", "fixed") + trendLine("CartStates", "still failing") +
      trendLine("ShippingFlow", "stable") + trendLine("TotalPrice", "flaky") +
      trendLine("PaymentTimeout", "still failing") + trendLine("AbortByUser", "stable") +
      "    <Run number=\"2\" time=\"*\" status=\"FAILED\">\n" + runLines(second) + "    </Run>\n" +
      "    <Run number=\"1\" time=\"*\" status=\"FAILED\">\n" + runLines(first) + "    </Run>\n" +
      "  </History>\n";
  EXPECT_EQ(masked(test::historyElement(test::readFile(example.path("out/Checkout.xml")))),
            expected);
  // A test case's own document shows its own entries.
  EXPECT_EQ(masked(test::historyElement(test::readFile(example.path("out/TotalPrice.xml")))),
            "  <History>\n" + trendLine("TotalPrice", "flaky") +
                "    <Run number=\"2\" time=\"*\" status=\"FAILED\">\n" +
                runLine("TotalPrice", "FAILED", "No result verification for Code TestCases") +
                "    </Run>\n    <Run number=\"1\" time=\"*\" status=\"FAILED\">\n" +
                runLine("TotalPrice", "PASSED", "No result verification for Code TestCases") +
                "    </Run>\n  </History>\n");
  // The file holds all three, newest first, with times in ISO 8601.
  const std::string file = test::readFile(example.path("hist/Checkout.history.xml"));
  EXPECT_TRUE(std::regex_search(
      file, std::regex("<Run number=\"3\" time=\"[0-9]{4}-[0-9]{2}-[0-9]{2}T[0-9:]{8}Z\"")));
  EXPECT_EQ(test::runNumbers(file), (std::vector<int>{3, 2, 1}));
  for (const char* name : {"out/Checkout.xml", "out/TotalPrice.xml", "hist/Checkout.history.xml"}) {
    EXPECT_TRUE(test::validates(example.path(name))) << name;
  }
  EXPECT_NE(file.find("<History kind=\"rk_testcontext\" fullname=\"Shop.Checkout\">"),
            std::string::npos);
}

TEST(HistoryRuns, SingleTestCaseHasItsOwnFile) {
  ExampleRun example;
  for (int i = 0; i < 2; ++i) {
    const test::ProgramOutcome o = example.run("out", "hist", "Shop.Checkout.TotalPrice");
    EXPECT_EQ(o.out, "");
    EXPECT_EQ(o.err, "");
    EXPECT_EQ(o.status, 0);
  }
  EXPECT_EQ(test::filesIn(example.path("hist")),
            (std::vector<std::string>{"TotalPrice.history.xml", "TotalPrice.history.xml.lock"}));
  const std::string file = test::readFile(example.path("hist/TotalPrice.history.xml"));
  EXPECT_NE(file.find("<History kind=\"rk_testcase\" fullname=\"Shop.Checkout.TotalPrice\">"),
            std::string::npos);
  EXPECT_EQ(masked(test::historyElement(test::readFile(example.path("out/TotalPrice.xml")))),
            "  <History>\n" + trendLine("TotalPrice", "stable") +
                "    <Run number=\"1\" time=\"*\" status=\"PASSED\">\n" +
                runLine("TotalPrice", "PASSED", "No result verification for Code TestCases") +
                "    </Run>\n  </History>\n");
}

// A history file that cannot be used is moved aside with one warning; the
// run goes on with an empty history and writes a fresh file.
TEST(HistoryRuns, UnusableHistoryFilesAreMovedAside) {
  ExampleRun reference;
  ASSERT_EQ(reference.run("out").status, 10);
  for (const test::UnusableHistoryFile& c : test::unusableHistoryFiles("Shop.Checkout")) {
    ExampleRun example;
    const std::string path = example.path("hist/Checkout.history.xml");
    test::placeUnusableHistoryFile(c, path);
    const test::ProgramOutcome o = example.run("out", "hist");
    EXPECT_EQ(o.out, "") << c.what;
    EXPECT_EQ(o.err, "qendor: history file hist/Checkout.history.xml " + std::string(c.warning) +
                         "; moved aside to hist/Checkout.history.xml.bad\n")
        << c.what;
    EXPECT_EQ(o.status, 10) << c.what;
    EXPECT_TRUE(test::fileExists(path + ".bad")) << c.what;
    if (!c.content.empty()) {
      EXPECT_EQ(test::readFile(path + ".bad"), c.content) << c.what;
    }
    EXPECT_EQ(test::runNumbers(test::readFile(path)), std::vector<int>{1}) << c.what;
    // An empty history: the classifications of a first run, no earlier run.
    const std::string document = test::readFile(example.path("out/Checkout.xml"));
    EXPECT_EQ(test::runNumbers(test::historyElement(document)), std::vector<int>{}) << c.what;
    EXPECT_NE(document.find(trendLine("PayWithCoupon", "new")), std::string::npos) << c.what;
    EXPECT_NE(document.find(trendLine("PlaceOrder", "stable")), std::string::npos) << c.what;
    EXPECT_EQ(test::differingDocuments(reference.path("out"), example.path("out")), "") << c.what;
  }
}

// A history folder that cannot be created or written: one warning, and the
// run is the run without "-history". Below a regular file no folder can be
// made, not even by root, whom permission bits would not stop.
TEST(HistoryRuns, UnwritableHistoryDirectoryChangesNothingElse) {
  ExampleRun reference;
  ASSERT_EQ(reference.run("out").status, 10);
  ExampleRun example;
  example.dir().write("plain", "not a folder");
  const test::ProgramOutcome o = example.run("out", "plain/hist");
  EXPECT_EQ(o.out, "");
  EXPECT_EQ(o.err,
            "qendor: history directory plain/hist cannot be created or written; "
            "no history kept\n");
  EXPECT_EQ(o.status, 10);
  EXPECT_EQ(test::filesIn(example.path("out")), test::filesIn(reference.path("out")));
  for (const std::string& name : test::filesIn(example.path("out"))) {
    if (name.size() < 4 || name.compare(name.size() - 4, 4, ".xml") != 0) continue;
    EXPECT_EQ(masked(test::readFile(example.path("out/" + name))),
              masked(test::readFile(reference.path("out/" + name))))
        << name;
  }
}

// The option only adds: with it, the documents of the end-to-end scenarios
// are their expected documents plus the History element, with the same
// output and exit status, and the example's documents are those of a run
// without it.
TEST(HistoryRuns, TheOptionAddsOnlyTheHistoryElement) {
  struct Run {
    const char* scenario;
    std::vector<std::string> args;
    int status;
    std::vector<const char*> expected;
  };
  const Run runs[] = {
      {"shop",
       {"-infofile", "shop.info", "-resultfile", "results.log", "-outdirectory", "out", "-tcontext",
        "Pkg.Ctx"},
       10,
       {"Ctx", "SdPass"}},
      {"halfedit",
       {"-infofile", "half.info", "-resultfile", "results.log", "-outdirectory", "out", "-tcontext",
        "Pkg.Half"},
       10,
       {"Half", "HalfCode", "HalfFlow"}},
  };
  for (const Run& r : runs) {
    test::TempDir dir;
    fs::copy(std::string(QENDOR_SOURCE_DIR) + "/tests/scenarios/" + r.scenario, dir.path(),
             fs::copy_options::recursive);
    std::vector<std::string> args = r.args;
    args.insert(args.end(), {"-history", "hist"});
    for (int round = 0; round < 2; ++round) {
      const test::ProgramOutcome o = test::runProgram(QENDOR_BINARY, args, dir.path());
      EXPECT_EQ(o.out, "") << r.scenario;
      EXPECT_EQ(o.err, "") << r.scenario;
      EXPECT_EQ(o.status, r.status) << r.scenario;
      for (const char* name : r.expected) {
        const std::string document = test::readFile(dir.file("out/" + std::string(name) + ".xml"));
        EXPECT_NE(test::historyElement(document), "") << r.scenario << " " << name;
        EXPECT_EQ(test::withoutHistory(document),
                  test::readFile(dir.file("expected/" + std::string(name) + ".xml")))
            << r.scenario << " " << name;
      }
    }
  }
  ExampleRun example;
  ASSERT_EQ(example.run("plain").status, 10);
  ASSERT_EQ(example.run("with", "hist").status, 10);
  EXPECT_EQ(test::differingDocuments(example.path("plain"), example.path("with")), "");
  EXPECT_EQ(test::historyElement(test::readFile(example.path("plain/Checkout.xml"))), "");
}

TEST(HistoryRuns, UnknownTestCaseTouchesNoHistory) {
  ExampleRun example;
  const test::ProgramOutcome o = example.run("out", "hist", "Shop.Checkout.Nothing");
  EXPECT_EQ(o.out, "TestCase <Shop.Checkout.Nothing> could not be found in inofile.");
  EXPECT_EQ(o.status, 22);
  EXPECT_FALSE(test::fileExists(example.path("hist")));
}

}  // namespace
}  // namespace qendor
