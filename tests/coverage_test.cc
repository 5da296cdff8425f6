// The "-coverage" option end to end: it adds the ModelCoverage elements to
// the documents and changes nothing else, in every bundled scenario.
#include <gtest/gtest.h>

#include <filesystem>
#include <regex>
#include <string>
#include <vector>

#include "tests/scenario_run.h"
#include "tests/test_support.h"

namespace qendor {
namespace {

using test::Documents;
using test::kScenarios;
using test::Scenario;
using test::ScenarioRun;

namespace fs = std::filesystem;

// The document without its ModelCoverage elements: each stands on lines of
// its own below the root.
std::string withoutCoverage(const std::string& xml) {
  static const std::regex coverage("\\n  <ModelCoverage[^]*?</ModelCoverage>");
  return std::regex_replace(xml, coverage, "");
}

std::string documentOf(const Documents& documents, const std::string& file) {
  for (const auto& [name, xml] : documents) {
    if (name == file) return xml;
  }
  return "(missing)";
}

TEST(Coverage, AddsModelCoverageAndChangesNothingElse) {
  for (const Scenario& setup : kScenarios) {
    int plainStatus = 0, coveredStatus = 0;
    ScenarioRun plainRun(setup), coveredRun(setup);
    const Documents plain = plainRun.documents({}, plainStatus);
    const Documents covered = coveredRun.documents({"-coverage"}, coveredStatus);
    EXPECT_EQ(coveredStatus, plainStatus) << setup.name;
    ASSERT_EQ(covered.size(), plain.size()) << setup.name;
    for (size_t i = 0; i < plain.size(); ++i) {
      EXPECT_EQ(covered[i].first, plain[i].first) << setup.name;
      EXPECT_EQ(plain[i].second.find("<ModelCoverage"), std::string::npos) << plain[i].first;
      EXPECT_EQ(withoutCoverage(covered[i].second), plain[i].second)
          << setup.name << ": " << plain[i].first;
    }
  }
}

// Without the option the scenarios' documents are their goldens, byte for
// byte.
TEST(Coverage, WithoutTheOptionTheGoldensHold) {
  for (const Scenario& setup : kScenarios) {
    const std::string expected = std::string(QENDOR_SOURCE_DIR) + "/" + setup.source + "/expected";
    if (!fs::is_directory(expected)) continue;
    int status = 0;
    ScenarioRun run(setup);
    const Documents plain = run.documents({}, status);
    for (const std::string& file : test::filesIn(expected)) {
      if (fs::path(file).extension() != ".xml") continue;
      EXPECT_EQ(documentOf(plain, file), test::readFile(expected + "/" + file))
          << setup.name << ": " << file;
    }
  }
}

TEST(Coverage, TheContextHasOneElementPerModelAndEachTestCaseItsShare) {
  int status = 0;
  ScenarioRun run(kScenarios[0]);
  const Documents documents = run.documents({"-coverage"}, status);
  EXPECT_EQ(status, 10);
  const std::string context = documentOf(documents, "Checkout.xml");
  // Five diagrams and two charts, each its own model.
  size_t models = 0;
  for (size_t at = 0; (at = context.find("<ModelCoverage ", at)) != std::string::npos; ++at) {
    ++models;
  }
  EXPECT_EQ(models, 7u);
  EXPECT_NE(context.find("  <ModelCoverage kind=\"sequence\" name=\"SdPayWithCoupon\" "
                         "testCases=\"1\">\n"
                         "    <Member name=\"PayWithCoupon\" "
                         "fullname=\"Shop.Checkout.PayWithCoupon\"/>\n"
                         "    <Totals steps=\"4\" stepsCovered=\"2\" operands=\"1\" "
                         "operandsCovered=\"1\"/>\n"),
            std::string::npos)
      << context;
  // The coupon loop went round twice before the payment was rejected.
  EXPECT_NE(context.find("<Loop line=\"3\" zero=\"0\" once=\"0\" more=\"1\"/>"), std::string::npos);
  const std::string testCase = documentOf(documents, "CartStates.xml");
  EXPECT_NE(testCase.find("  </TestCaseResult>\n"
                          "  <ModelCoverage kind=\"chart\" name=\"ScCartStates\" "
                          "testCases=\"1\">\n"),
            std::string::npos)
      << testCase;
  // A code test case has no model.
  EXPECT_EQ(documentOf(documents, "TotalPrice.xml").find("<ModelCoverage"), std::string::npos);
}

TEST(Coverage, WithHistoryTheRunsKeptAddUp) {
  int status = 0;
  ScenarioRun run(kScenarios[0]);
  run.documents({"-coverage", "-history", "hist"}, status);
  const Documents second = run.documents({"-history", "hist", "-coverage"}, status);
  const std::string context = documentOf(second, "Checkout.xml");
  EXPECT_NE(context.find("    <Totals steps=\"4\" stepsCovered=\"3\" operands=\"2\" "
                         "operandsCovered=\"1\"/>\n"
                         "    <OverRuns runs=\"2\" stepsCovered=\"3\" operandsCovered=\"1\"/>\n"),
            std::string::npos)
      << context;
  const std::string history = test::readFile(run.path("hist/Checkout.history.xml"));
  EXPECT_NE(history.find("<ModelRun name=\"SdPlaceOrder\" kind=\"sequence\" "), std::string::npos);
  // A run without the option keeps no coverage and shows none.
  const Documents third = run.documents({"-history", "hist"}, status);
  EXPECT_EQ(documentOf(third, "Checkout.xml").find("<ModelCoverage"), std::string::npos);
}

TEST(Coverage, TheOptionTakesNoValueAndTheUsageLineStays) {
  int status = 0;
  ScenarioRun run(kScenarios[0]);
  const Documents documents =
      run.documents({"-coverage"}, status, "-tcase", "Shop.Checkout.PlaceOrder");
  EXPECT_EQ(status, 0);
  EXPECT_NE(documentOf(documents, "PlaceOrder.xml").find("<ModelCoverage kind=\"sequence\""),
            std::string::npos);
  test::TempDir dir;
  const test::ProgramOutcome usage = test::runProgram(
      QENDOR_BINARY, {"-coverage", "-infofile", "a", "-resultfile", "b", "-outdirectory", "c"},
      dir.path(), "/nonexistent");
  EXPECT_EQ(usage.status, 20);
  EXPECT_EQ(usage.out,
            "qendor -infofile <infofile> -resultfile <resultfile> -outdirectory <outdirectory> "
            "[-tcontext <testContext> | -tcase <testCase>] "
            "[- language <ENU | CHS | CHT | KOR | JPN>]\n");
}

}  // namespace
}  // namespace qendor
