#include "report/coverage_element.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "base/line_reader.h"
#include "report/history.h"
#include "report/xml_node.h"
#include "tests/test_case_records.h"
#include "tests/xml_dump.h"
#include "verify/judgement.h"
#include "verify/verification_file.h"

namespace qendor {
namespace {

using test::record;

AssertionList sdRun(const std::vector<std::string>& values) {
  AssertionList records{record(test::kSdStart)};
  for (const std::string& value : values) {
    records.push_back(record("ZKR_ASSERT_SD(\"Main\", \"m" + value + "\", \"x\")", "PASSED",
                             "step - progress " + value + "/9"));
  }
  records.push_back(record(test::kSdFinish));
  return records;
}

// Test cases 1, 2, ... of context "Pkg.Ctx" judged against the verification
// files `vers` with the records `runs`; the info file names every diagram
// "Sd<number>".
struct Fixture {
  RunSettings settings;
  ModelCoverages coverages;

  Fixture(const std::vector<std::string>& vers, const std::vector<AssertionList>& runs) {
    for (size_t i = 0; i < vers.size(); ++i) {
      const int32_t number = static_cast<int32_t>(i + 1);
      settings.testCaseNames[number] = "Pkg.Ctx.Case" + std::to_string(number);
      settings.sequenceDiagramNames[number] = "Sd" + std::to_string(number);
      LineReader lines{std::string_view(vers[i])};
      const TestModel model(parseVerificationFile(lines));
      const TestCaseLog log = makeTestCaseLog(runs[i]);
      coverages.add(number, judgeTestCase(&log, model, false, true));
    }
  }

  // The elements written, each on a line; a chart's Drawing, whose
  // coordinates come from the layout library, only with `drawing` (alone).
  std::string xml(const History* earlier = nullptr, bool drawing = false) const {
    XmlNodePtr root(newElement("TestResult"));
    appendModelCoverage(root.get(), settings, coverages, earlier);
    std::string out;
    for (xmlNode* child = root->children; child; child = child->next) {
      for (xmlNode* part = child->children; part; part = part->next) {
        if (xmlStrcmp(part->name, BAD_CAST "Drawing") != 0) continue;
        if (drawing) return drawnCounts(part);
        xmlUnlinkNode(part);
        xmlFreeNode(part);
        break;
      }
      out += test::dumpNode(child) + "\n";
    }
    return out;
  }

  // Of a Drawing, each drawn element's name and count ("-" without one).
  static std::string drawnCounts(xmlNode* drawing) {
    std::string out;
    for (xmlNode* part = drawing->children; part; part = part->next) {
      if (part->type != XML_ELEMENT_NODE) continue;
      xmlChar* name = xmlGetProp(part, BAD_CAST "name");
      xmlChar* visited = xmlGetProp(part, BAD_CAST "visited");
      out += std::string(reinterpret_cast<const char*>(part->name)) + " " +
             (name ? reinterpret_cast<const char*>(name) : "") + " " +
             (visited ? reinterpret_cast<const char*>(visited) : "-") + "\n";
      xmlFree(name);
      xmlFree(visited);
    }
    return out;
  }
};

const std::string kLoopAndAlt =
    "SD_TEST\n1\n"
    "LOOP_BEGIN(l)\nLOOP_OPERAND_BEGIN(l)\n2\nLOOP_OPERAND_END(l)\nLOOP_END(l)\n"
    "ALT_BEGIN(a)\nALT_OPERAND_BEGIN(a)\n3\nALT_OPERAND_END(a)\n"
    "ALT_OPERAND_BEGIN(a)\n4\nALT_OPERAND_END(a)\nALT_END(a)\n5";

TEST(CoverageElement, SequenceDiagramSharedByTwoTestCases) {
  const Fixture fixture({kLoopAndAlt, kLoopAndAlt},
                        {sdRun({"1", "2", "2", "2", "3"}), sdRun({"1", "3", "5"})});
  EXPECT_EQ(fixture.xml(),
            "<ModelCoverage kind=\"sequence\" name=\"Sd1\" testCases=\"2\">"
            "<Member name=\"Case1\" fullname=\"Pkg.Ctx.Case1\"/>"
            "<Member name=\"Case2\" fullname=\"Pkg.Ctx.Case2\"/>"
            "<Totals steps=\"5\" stepsCovered=\"4\" operands=\"3\" operandsCovered=\"2\"/>"
            "<Unreached>"
            "<Operand line=\"11\" operator=\"ALT\" id=\"a\"/>"
            "<Step line=\"12\" value=\"4\"/>"
            "</Unreached>"
            "<Step line=\"1\" value=\"1\" count=\"2\"/>"
            "<Fragment operator=\"LOOP\" id=\"l\" line=\"2\">"
            "<Operand line=\"3\" count=\"1\"><Step line=\"4\" value=\"2\" count=\"1\"/></Operand>"
            "<Loop line=\"3\" zero=\"1\" once=\"0\" more=\"1\"/>"
            "</Fragment>"
            "<Fragment operator=\"ALT\" id=\"a\" line=\"7\">"
            "<Operand line=\"8\" count=\"2\"><Step line=\"9\" value=\"3\" count=\"2\"/></Operand>"
            "<Operand line=\"11\" count=\"0\"><Step line=\"12\" value=\"4\" count=\"0\"/></Operand>"
            "</Fragment>"
            "<Step line=\"15\" value=\"5\" count=\"1\"/>"
            "</ModelCoverage>\n");
}

TEST(CoverageElement, ATestCaseOfItsOwnModelCountsZeroOrOne) {
  const Fixture fixture({"SD_TEST\n1\n2"}, {sdRun({"1"})});
  EXPECT_EQ(fixture.xml(),
            "<ModelCoverage kind=\"sequence\" name=\"Sd1\" testCases=\"1\">"
            "<Member name=\"Case1\" fullname=\"Pkg.Ctx.Case1\"/>"
            "<Totals steps=\"2\" stepsCovered=\"1\" operands=\"0\" operandsCovered=\"0\"/>"
            "<Unreached><Step line=\"2\" value=\"2\"/></Unreached>"
            "<Step line=\"1\" value=\"1\" count=\"1\"/>"
            "<Step line=\"2\" value=\"2\" count=\"0\"/>"
            "</ModelCoverage>\n");
}

// Sixteen or more steps side by side with the same count fold into one
// "Steps" element, in the outline and among the unreached ones.
TEST(CoverageElement, LongRunsOfStepsFold) {
  std::string ver = "SD_TEST\n";
  for (int i = 1; i <= 40; ++i) ver += std::to_string(i) + "\n";
  const Fixture fixture({ver}, {sdRun({"1", "2", "3"})});
  EXPECT_EQ(fixture.xml(),
            "<ModelCoverage kind=\"sequence\" name=\"Sd1\" testCases=\"1\">"
            "<Member name=\"Case1\" fullname=\"Pkg.Ctx.Case1\"/>"
            "<Totals steps=\"40\" stepsCovered=\"3\" operands=\"0\" operandsCovered=\"0\"/>"
            "<Unreached><Steps line=\"4\" lastLine=\"40\" first=\"4\" last=\"40\" steps=\"37\"/>"
            "</Unreached>"
            "<Step line=\"1\" value=\"1\" count=\"1\"/>"
            "<Step line=\"2\" value=\"2\" count=\"1\"/>"
            "<Step line=\"3\" value=\"3\" count=\"1\"/>"
            "<Steps line=\"4\" lastLine=\"40\" first=\"4\" last=\"40\" steps=\"37\" count=\"0\"/>"
            "</ModelCoverage>\n");
}

TEST(CoverageElement, ChartStatesAndTransitions) {
  const Fixture fixture({test::kStatechart, test::kStatechart},
                        {{record("ZKR_ASSERT_TRUE(x == 1)"), record(test::kCodeFinish)},
                         {record("ZKR_ASSERT_TRUE(y == 2)"), record(test::kCodeFinish)}});
  EXPECT_EQ(fixture.xml(),
            "<ModelCoverage kind=\"chart\" name=\"Sd1\" testCases=\"2\">"
            "<Member name=\"Case1\" fullname=\"Pkg.Ctx.Case1\"/>"
            "<Member name=\"Case2\" fullname=\"Pkg.Ctx.Case2\"/>"
            "<Totals states=\"3\" statesCovered=\"3\" transitions=\"2\" transitionsCovered=\"2\"/>"
            "<State guid=\"s1\" name=\"Init\" count=\"1\"/>"
            "<Transition guid=\"t1\" name=\"go\" count=\"1\"/>"
            "<State guid=\"s2\" name=\"Work\" count=\"1\"/>"
            "<Transition guid=\"t2\" name=\"done\" count=\"1\"/>"
            "<State guid=\"s3\" name=\"End\" count=\"1\"/>"
            "</ModelCoverage>\n");
  // The second alone reached nothing.
  const Fixture alone({test::kStatechart},
                      {{record("ZKR_ASSERT_TRUE(y == 2)"), record(test::kCodeFinish)}});
  EXPECT_EQ(alone.xml(),
            "<ModelCoverage kind=\"chart\" name=\"Sd1\" testCases=\"1\">"
            "<Member name=\"Case1\" fullname=\"Pkg.Ctx.Case1\"/>"
            "<Totals states=\"3\" statesCovered=\"0\" transitions=\"2\" transitionsCovered=\"0\"/>"
            "<Unreached>"
            "<State guid=\"s1\" name=\"Init\"/><Transition guid=\"t1\" name=\"go\"/>"
            "<State guid=\"s2\" name=\"Work\"/><Transition guid=\"t2\" name=\"done\"/>"
            "<State guid=\"s3\" name=\"End\"/>"
            "</Unreached>"
            "<State guid=\"s1\" name=\"Init\" count=\"0\"/>"
            "<Transition guid=\"t1\" name=\"go\" count=\"0\"/>"
            "<State guid=\"s2\" name=\"Work\" count=\"0\"/>"
            "<Transition guid=\"t2\" name=\"done\" count=\"0\"/>"
            "<State guid=\"s3\" name=\"End\" count=\"0\"/>"
            "</ModelCoverage>\n");
}

// The chart is drawn with each state's and transition's count.
TEST(CoverageElement, ChartsAreDrawnWithTheirCounts) {
  const Fixture fixture({test::kStatechart, test::kStatechart},
                        {{record("ZKR_ASSERT_TRUE(x == 1)"), record(test::kCodeFinish)},
                         {record("ZKR_ASSERT_TRUE(y == 2)"), record(test::kCodeFinish)}});
  EXPECT_EQ(fixture.xml(nullptr, true),
            "Node  -\n"
            "Node Init 1\n"
            "Node Work 1\n"
            "Node End 1\n"
            "Edge  -\n"
            "Edge go 1\n"
            "Edge done 1\n");
  const Fixture alone({test::kStatechart},
                      {{record("ZKR_ASSERT_TRUE(y == 2)"), record(test::kCodeFinish)}});
  EXPECT_EQ(alone.xml(nullptr, true),
            "Node  -\nNode Init -\nNode Work -\nNode End -\nEdge  -\nEdge go -\nEdge done -\n");
}

// What the history keeps: the reached steps' and operands' lines, and with
// the earlier runs of the same model, what all of them reached together.
TEST(CoverageElement, HistoryKeepsTheReachedElementsAndAddsThemUp) {
  const Fixture now({kLoopAndAlt}, {sdRun({"1", "3"})});
  const std::vector<HistoryCoverage> kept = historyCoverage(now.settings, now.coverages);
  ASSERT_EQ(kept.size(), 1u);
  EXPECT_EQ(kept[0].name, "Sd1");
  EXPECT_EQ(kept[0].kind, "sequence");
  EXPECT_EQ(kept[0].fingerprint, modelFingerprint(now.coverages.models()[0]));
  EXPECT_EQ(kept[0].covered, (std::vector<uint32_t>{1, 8, 9}));

  History earlier;
  HistoryRun before;  // reached the second alt operand
  before.coverage.push_back(HistoryCoverage{"Sd1", "sequence", kept[0].fingerprint, {1, 11, 12}});
  HistoryRun other;  // another model: not counted
  other.coverage.push_back(HistoryCoverage{"Sd1", "sequence", "0000000000000000", {3, 4}});
  earlier.runs = {before, other};
  const std::string xml = now.xml(&earlier);
  EXPECT_NE(xml.find("<Totals steps=\"5\" stepsCovered=\"2\" operands=\"3\" operandsCovered=\"1\"/>"
                     "<OverRuns runs=\"2\" stepsCovered=\"3\" operandsCovered=\"2\"/>"),
            std::string::npos)
      << xml;
}

TEST(CoverageElement, HistoryFileKeepsModelRunsAndReadsOldFiles) {
  const HistoryOwner owner{"rk_testcontext", "Pkg.Ctx"};
  History history;
  HistoryRun run;
  run.number = 1;
  run.time = "2025-01-01T00:00:00Z";
  run.status = Status::kPassed;
  run.coverage.push_back(
      HistoryCoverage{"Sd1", "chart", "00000000000000ab", {1, 2, 3, 4, 7, 9, 10}});
  history.runs.push_back(run);
  const std::string text = historyText(history, owner);
  EXPECT_NE(text.find("<Run number=\"1\" time=\"2025-01-01T00:00:00Z\" status=\"PASSED\">\n"
                      "    <ModelRun name=\"Sd1\" kind=\"chart\" fingerprint=\"00000000000000ab\" "
                      "covered=\"1-4 7 9 10\"/>\n  </Run>"),
            std::string::npos)
      << text;
  History read;
  ASSERT_EQ(parseHistory(text, owner, read), HistoryParse::kRead);
  ASSERT_EQ(read.runs.size(), 1u);
  ASSERT_EQ(read.runs[0].coverage.size(), 1u);
  EXPECT_EQ(read.runs[0].coverage[0].covered, (std::vector<uint32_t>{1, 2, 3, 4, 7, 9, 10}));
  EXPECT_EQ(read.runs[0].coverage[0].fingerprint, "00000000000000ab");

  // Pieces that are no number or range are passed over.
  const std::string odd =
      "<History kind=\"rk_testcontext\" fullname=\"Pkg.Ctx\"><Run number=\"1\" time=\"t\" "
      "status=\"PASSED\"><ModelRun name=\"a\" kind=\"chart\" fingerprint=\"f\" "
      "covered=\"0 x 3-2 5-6 -1 8-  12\"/></Run></History>";
  ASSERT_EQ(parseHistory(odd, owner, read), HistoryParse::kRead);
  EXPECT_EQ(read.runs[0].coverage[0].covered, (std::vector<uint32_t>{5, 6, 12}));

  // A run without coverage is written as before, and a file without any
  // reads with none.
  history.runs[0].coverage.clear();
  EXPECT_EQ(historyText(history, owner).find("ModelRun"), std::string::npos);
  ASSERT_EQ(parseHistory(historyText(history, owner), owner, read), HistoryParse::kRead);
  EXPECT_TRUE(read.runs[0].coverage.empty());
}

}  // namespace
}  // namespace qendor
