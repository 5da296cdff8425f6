// Several processes report the same context with the same "-history" folder
// at the same time, as a harness running in parallel does: no run may be
// lost, the file must stay whole (and valid), and the documents must be those
// of a run without contention.
#include <gtest/gtest.h>

#include <chrono>
#include <iostream>
#include <string>
#include <vector>

#include "tests/history_support.h"
#include "tests/test_support.h"

namespace qendor {
namespace {

constexpr int kProcesses = 8;
constexpr int kRounds = 5;
constexpr int kRuns = kProcesses * kRounds;
constexpr int kKept = 30;
// Generous for two busy cores; a run of the example takes well under a second.
constexpr double kSecondsAllowed = 240;

// True when the runs a document shows are one unbroken stretch, newest
// first, of at most kKept runs.
bool unbrokenStretch(const std::vector<int>& numbers) {
  if (numbers.size() > static_cast<size_t>(kKept)) return false;
  for (size_t i = 1; i < numbers.size(); ++i) {
    if (numbers[i] != numbers[i - 1] - 1) return false;
  }
  return true;
}

TEST(HistoryLoad, EightProcessesFiveRoundsKeepTheNewestThirtyRuns) {
  test::ExampleRun example;
  // The reference: the same report alone, without "-history".
  ASSERT_EQ(example.run("reference").status, 10);

  const auto start = std::chrono::steady_clock::now();
  for (int round = 0; round < kRounds; ++round) {
    std::vector<test::RunningProgram> running;
    std::vector<std::string> outDirs;
    for (int p = 0; p < kProcesses; ++p) {
      outDirs.push_back("out" + std::to_string(round) + "-" + std::to_string(p));
      running.push_back(test::startProgram(QENDOR_BINARY, example.prepare(outDirs.back(), "hist"),
                                           example.dir().path()));
    }
    for (int p = 0; p < kProcesses; ++p) {
      const test::ProgramOutcome o = running[p].finish();
      const std::string& out = outDirs[p];
      EXPECT_EQ(o.status, 10) << out;
      EXPECT_EQ(o.out, "") << out;
      EXPECT_EQ(o.err, "") << out;
      EXPECT_EQ(test::differingDocuments(example.path("reference"), example.path(out)), "") << out;
      for (const char* name : {"Checkout", "PlaceOrder", "AbortByUser"}) {
        const std::string document = example.path(out + "/" + name + ".xml");
        EXPECT_TRUE(test::validates(document)) << document;
        EXPECT_TRUE(test::fileExists(example.path(out + "/" + name + ".html"))) << out;
        const std::vector<int> shown =
            test::runNumbers(test::historyElement(test::readFile(document)));
        EXPECT_TRUE(unbrokenStretch(shown)) << document;
      }
    }
  }
  const double seconds =
      std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();

  const std::string file = example.path("hist/Checkout.history.xml");
  EXPECT_TRUE(test::validates(file));
  std::vector<int> expected;
  for (int number = kRuns; number > kRuns - kKept; --number) expected.push_back(number);
  EXPECT_EQ(test::runNumbers(test::readFile(file)), expected);
  EXPECT_EQ(test::filesIn(example.path("hist")),
            (std::vector<std::string>{"Checkout.history.xml", "Checkout.history.xml.lock"}));
  EXPECT_LT(seconds, kSecondsAllowed);
  std::cout << "history load: " << kRounds << " rounds of " << kProcesses << " processes, " << kRuns
            << " runs in " << seconds << " s, " << test::runNumbers(test::readFile(file)).size()
            << " kept\n";
}

}  // namespace
}  // namespace qendor
