// The "-explain" option end to end: it adds a Diagnosis to the documents of
// model-based test cases and changes nothing else, in every bundled scenario.
#include <gtest/gtest.h>

#include <regex>
#include <string>
#include <vector>

#include "tests/scenario_run.h"
#include "tests/test_support.h"

namespace qendor {
namespace {

using test::kScenarios;
using test::Scenario;

// The documents of one run, by file name, with the header's time masked.
test::Documents runDocuments(const Scenario& setup, const std::string& which,
                             const std::string& name, bool explain, int& status) {
  test::ScenarioRun run(setup);
  return run.documents(explain ? std::vector<std::string>{"-explain"} : std::vector<std::string>{},
                       status, which, name);
}

// The document without its Diagnosis elements, line by line: each stands on
// lines of its own, indented below its test case.
std::string withoutDiagnoses(const std::string& xml) {
  static const std::regex diagnosis("\\n *<Diagnosis[^]*?</Diagnosis>");
  return std::regex_replace(xml, diagnosis, "");
}

TEST(Explain, AddsDiagnosesAndChangesNothingElse) {
  for (const Scenario& setup : kScenarios) {
    int plainStatus = 0, explainedStatus = 0;
    const auto plain = runDocuments(setup, "-tcontext", setup.context, false, plainStatus);
    const auto explained = runDocuments(setup, "-tcontext", setup.context, true, explainedStatus);
    EXPECT_EQ(explainedStatus, plainStatus) << setup.name;
    ASSERT_EQ(explained.size(), plain.size()) << setup.name;
    for (size_t i = 0; i < plain.size(); ++i) {
      EXPECT_EQ(explained[i].first, plain[i].first) << setup.name;
      EXPECT_EQ(plain[i].second.find("<Diagnosis"), std::string::npos) << plain[i].first;
      EXPECT_EQ(withoutDiagnoses(explained[i].second), plain[i].second)
          << setup.name << ": " << plain[i].first;
    }
  }
}

TEST(Explain, DiagnosesEveryModelBasedTestCaseOfTheExample) {
  int status = 0;
  const auto documents = runDocuments(kScenarios[0], "-tcontext", "Shop.Checkout", true, status);
  EXPECT_EQ(status, 10);
  std::string context;
  for (const auto& [file, xml] : documents) {
    if (file == "Checkout.xml") context = xml;
  }
  // Five sequence diagrams and two charts; code test cases get none.
  size_t sequences = 0, charts = 0;
  for (size_t at = 0; (at = context.find("<Diagnosis kind=\"", at)) != std::string::npos; ++at) {
    if (context.compare(at, 27, "<Diagnosis kind=\"sequence\">") == 0) ++sequences;
    if (context.compare(at, 24, "<Diagnosis kind=\"chart\">") == 0) ++charts;
  }
  EXPECT_EQ(sequences, 5u);
  EXPECT_EQ(charts, 2u);
  // The rejected coupon payment, and what the diagram expected instead.
  EXPECT_NE(context.find("<Rejected assertion=\"5\" fnr=\"1\" lnr=\"30\" value=\"4\" "
                         "sdiname=\"Checkout\" msgid=\"pay\"/>\n"
                         "        <Expected line=\"5\">\n"
                         "          <Value value=\"2\"/>\n"
                         "          <Value value=\"3\"/>\n"
                         "        </Expected>"),
            std::string::npos)
      << context;
  // Its steps are named after the messages that reached them.
  EXPECT_NE(context.find("<Step line=\"4\" value=\"2\" accepted=\"2\">\n"
                         "                <Name instance=\"Checkout\" message=\"applyCoupon\"/>\n"
                         "              </Step>"),
            std::string::npos)
      << context;
}

// The refund rejected at its fourth assertion: the table stops there, the
// diagnosis lists what the run recorded after it.
TEST(Explain, RecordsAfterTheRejectionAreListedAsNotJudged) {
  int status = 0;
  const auto documents = runDocuments(kScenarios[4], "-tcontext", "Shop.Returns", true, status);
  EXPECT_EQ(status, 10);
  std::string context;
  for (const auto& [file, xml] : documents) {
    if (file == "Returns.xml") context = xml;
  }
  EXPECT_NE(context.find("<Rejected assertion=\"4\" fnr=\"1\" lnr=\"7\" value=\"2\" "
                         "sdiname=\"Returns\" msgid=\"refundToCard\"/>"),
            std::string::npos)
      << context;
  EXPECT_NE(context.find("<NotJudged more=\"0\">\n"
                         "          <Entry assertion=\"5\" value=\"5\" sdiname=\"Returns\" "
                         "msgid=\"closeCase\" guid=\"\" status=\"PASSED\" usermsg=\"Case closed\" "
                         "inr=\"\" onr=\"\" dir=\"./src\" filename=\"returns_tests.cpp\" fnr=\"1\" "
                         "lnr=\"10\"/>\n"
                         "        </NotJudged>"),
            std::string::npos)
      << context;
}

// The parcel's chart: where its third assertion is performed, what on the
// way there the run never recorded, and the chart drawn alike in the test
// case's document and the context's.
TEST(Explain, ChartsAreDrawnWithWhereTheMissedAssertionLives) {
  int status = 0;
  const auto documents = runDocuments(kScenarios[4], "-tcontext", "Shop.Returns", true, status);
  EXPECT_EQ(status, 10);
  std::string context, own;
  for (const auto& [file, xml] : documents) {
    if (file == "Returns.xml") context = xml;
    if (file == "ReturnParcel.xml") own = xml;
  }
  EXPECT_NE(context.find("<Tried name=\"clear\"/>\n"
                         "          <PerformedIn kind=\"state\" name=\"Paid\" "
                         "guid=\"8d2f6c1e-0b1a-4f7e-9c3d-1a2b3c4d0003\"/>\n"
                         "          <Blocked kind=\"transition\" name=\"checkout\" "
                         "guid=\"8d2f6c1e-0b1a-4f7e-9c3d-1a2b3c4d0102\" "
                         "statement=\"ZKR_ASSERT_TRUE(cart.total()&gt;0);\"/>\n"
                         "        </NoMatch>\n"
                         "        <Drawing "),
            std::string::npos)
      << context;
  const size_t at = context.find("<Drawing ");
  ASSERT_NE(at, std::string::npos);
  const std::string drawing = context.substr(at, context.find("</Drawing>", at) - at);
  EXPECT_NE(drawing.find(R"(shown="all" states="4" transitions="4" shownStates="4" )"
                         R"(shownTransitions="4">)"),
            std::string::npos)
      << drawing;
  EXPECT_NE(drawing.find(R"(name="Filled" )"), std::string::npos);
  EXPECT_NE(drawing.find(R"(visited="1" steps="3" assertions="2" stop="yes" way="yes"/>)"),
            std::string::npos)
      << drawing;
  EXPECT_NE(drawing.find(R"(performs="yes" way="yes"/>)"), std::string::npos) << drawing;
  EXPECT_NE(drawing.find(R"(blocked="yes" way="yes"/>)"), std::string::npos) << drawing;
  // The same layout, byte for byte, in the test case's own document (two
  // spaces less indented).
  std::string shifted;
  for (size_t from = 0; from < drawing.size();) {
    size_t end = drawing.find('\n', from);
    if (end == std::string::npos) end = drawing.size();
    std::string line = drawing.substr(from, end - from);
    if (line.compare(0, 2, "  ") == 0) line.erase(0, 2);
    shifted += line + (end < drawing.size() ? "\n" : "");
    from = end + 1;
  }
  EXPECT_NE(own.find(shifted), std::string::npos) << own;
}

TEST(Explain, TheOptionTakesNoValueAndStandsAnywhere) {
  int first = 0;
  const Scenario& setup = kScenarios[0];
  const auto a = runDocuments(setup, "-tcase", "Shop.Checkout.PayWithCoupon", true, first);
  EXPECT_EQ(first, 11);
  ASSERT_FALSE(a.empty());
  EXPECT_NE(a[0].second.find("<Diagnosis kind=\"sequence\">"), std::string::npos);
  // Without -explain the usage line stays as it was: an option list of six
  // words and "-explain" is still incomplete.
  test::TempDir dir;
  const test::ProgramOutcome usage = test::runProgram(
      QENDOR_BINARY, {"-explain", "-infofile", "a", "-resultfile", "b", "-outdirectory", "c"},
      dir.path(), "/nonexistent");
  EXPECT_EQ(usage.status, 20);
  EXPECT_EQ(usage.out,
            "qendor -infofile <infofile> -resultfile <resultfile> -outdirectory <outdirectory> "
            "[-tcontext <testContext> | -tcase <testCase>] "
            "[- language <ENU | CHS | CHT | KOR | JPN>]\n");
}

}  // namespace
}  // namespace qendor
