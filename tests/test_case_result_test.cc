#include "report/test_case_result.h"

#include <gtest/gtest.h>

#include <libxml/tree.h>
#include "tests/xml_dump.h"

#include <memory>
#include <stdexcept>
#include <string>
#include <utility>

#include "base/run_settings.h"
#include "report/xml_node.h"
#include "tests/test_support.h"

namespace qendor {
namespace {

using test::dumpNode;

AssertionRecord record(std::string text, std::string status = "PASSED", std::string detail = "",
                       std::string fileNumber = "1", std::string lineNumber = "10") {
  return AssertionRecord{std::move(text), test::recordStatus(status), std::move(fileNumber),
                         std::move(lineNumber), std::move(detail)};
}

// Records of an SD test. The start's message comes from the macro parser,
// which keeps the closing quote before ")"; the steps carry their progress in
// the detail text, as the full form does.
const char kSdStart[] = R"(ZKR_ASSERT_SD("Main", "m0", "Starting test case"))";
const char kSdFinish[] = R"(ZKR_ASSERT_SD("Main", "m9", "Finished test case: CaseOne"))";
AssertionRecord sdStep(int step, int max, std::string status = "PASSED") {
  const std::string n = std::to_string(step);
  return record("ZKR_ASSERT_SD(\"Main\", \"m" + n + "\", \"step\")", std::move(status),
                "step" + n + " - progress " + n + "/" + std::to_string(max));
}

// Records of code and chart tests.
const char kCodeStart[] = R"(ZKR_ASSERT_NAME("Starting test case", 1))";
const char kCodeFinish[] = R"(ZKR_ASSERT_NAME("Finished test case: CaseOne", 1))";

std::string codeInfo(const std::string& name, const std::string& status,
                     const std::string& where = R"(dir="src/app" filename="main.c" fnr="1")") {
  return "<AssertionInfo name=\"" + name + "\" status=\"" + status + "\" " + where +
         " lnr=\"10\"/>";
}

std::string sdInfo(const std::string& sdiname, const std::string& msgid, const std::string& status,
                   const std::string& usermsg, const std::string& more = "") {
  return "<AssertionInfo sdiname=\"" + sdiname + "\" msgid=\"" + msgid + "\" guid=\"\" status=\"" +
         status + "\" usermsg=\"" + usermsg +
         "\" inr=\"\" onr=\"\" dir=\"src/app\" filename=\"main.c\" fnr=\"1\" lnr=\"10\"" + more +
         "/>";
}
std::string sdStepInfo(int step, const std::string& status = "PASSED") {
  const std::string n = std::to_string(step);
  return sdInfo("Main", "m" + n, status, "step" + n);
}
const std::string kSdStartInfo = sdInfo("Main", "m0", "PASSED", "Starting test case&quot;");

std::string sdSummary(const std::string& status, const std::string& coverage,
                      const std::string& value, const std::string& max,
                      const std::string& image = "") {
  const std::string result = "<SDResult name=\"Main\" sdname=\"MainSd\" status=\"" + status +
                             "\" coverage=\"" + coverage + "\" value=\"" + value + "\" max=\"" +
                             max + "\"";
  return "<SDSummaryInfo><SDResults>" + result +
         (image.empty() ? "/>" : "><SDs img=\"" + image + "\"/></SDResult>") +
         "</SDResults></SDSummaryInfo>";
}

std::string caseHead(const std::string& testType, const std::string& status,
                     const std::string& verification) {
  return "<TestCaseResult name=\"CaseOne\" fullname=\"Pkg.Ctx.CaseOne\" testType=\"" + testType +
         "\" status=\"" + status + "\" verificationResult=\"" + verification + "\">";
}

const char kFourSteps[] = "SD_TEST\n1\n2\n3\n4";

// A statechart: Init --go--> Work (asserts x==1 on entry) --done--> End.
const char kStatechart[] =
    "STATECHART_TEST\n"
    "----------\nSTATE_NAME:\nInit\nGUID:\ns1\nSTATE_TYPE:\nInitial\n"
    "PARENT_NAME:\nROOT\nPARENT_GUID:\nROOT\nOUT_TRANSITIONS:\nt1\n"
    "----------\nTRANSITION_NAME:\ngo\nGUID:\nt1\nTRANSITION_TARGET:\ns2\n"
    "----------\nSTATE_NAME:\nWork\nGUID:\ns2\nSTATE_TYPE:\nState\n"
    "PARENT_NAME:\nROOT\nPARENT_GUID:\nROOT\nSTATE_ACTION_ENTRY:\nZKR_ASSERT_TRUE(x == 1);\n"
    "OUT_TRANSITIONS:\nt2\n"
    "----------\nTRANSITION_NAME:\ndone\nGUID:\nt2\nTRANSITION_TARGET:\ns3\n"
    "----------\nSTATE_NAME:\nEnd\nGUID:\ns3\nSTATE_TYPE:\nTermination\n"
    "PARENT_NAME:\nROOT\nPARENT_GUID:\nROOT\n";

// A flowchart: Start -> Act (asserts x==1 and the user exit on entry) -> End,
// where End is `endType`.
std::string flowchart(const std::string& endType) {
  return "FLOWCHART_TEST\n"
         "----------\nSTATE_NAME:\nStart\nGUID:\nn1\nSTATE_TYPE:\nInitial\n"
         "PARENT_NAME:\nROOT\nPARENT_GUID:\nROOT\nOUT_TRANSITIONS:\nt1\n"
         "----------\nTRANSITION_NAME:\na\nGUID:\nt1\nTRANSITION_TARGET:\nn2\n"
         "----------\nSTATE_NAME:\nAct\nGUID:\nn2\nSTATE_TYPE:\nAction\n"
         "PARENT_NAME:\nROOT\nPARENT_GUID:\nROOT\nSTATE_ACTION_ENTRY:\n"
         "ZKR_ASSERT_TRUE(x == 1);\nZKR_ASSERT_TRUE(NOFAIL_INTENDED_USER_EXIT);\n"
         "OUT_TRANSITIONS:\nt2\n"
         "----------\nTRANSITION_NAME:\nb\nGUID:\nt2\nTRANSITION_TARGET:\nn3\n"
         "----------\nSTATE_NAME:\nEnd\nGUID:\nn3\nSTATE_TYPE:\n" +
         endType + "\nPARENT_NAME:\nROOT\nPARENT_GUID:\nROOT\n";
}

class TestCaseResultTest : public ::testing::Test {
 protected:
  void SetUp() override {
    resetRun();
    run().outDirectory = dir_.path().c_str();
    run().sourceFiles[1] = "src/app/main.c";
    run().sequenceDiagramNames[1] = "MainSd";
  }
  void TearDown() override { resetRun(); }

  void addCase(AssertionList records, const std::string& fullName = "Pkg.Ctx.CaseOne",
               int32_t number = 1) {
    run().testCaseNames[number] = fullName;
    run().testCaseAssertions[number] = std::make_unique<AssertionList>(std::move(records));
  }
  void writeVer(const std::string& content, const std::string& shortName = "CaseOne") {
    dir_.write(shortName + ".ver", content);
  }

  // The "TestCaseResult" written under a scratch parent; the returned status
  // goes to `status_`.
  std::string result(int32_t number = 1) {
    XmlNodePtr parent(newElement("Parent"));
    status_ = writeTestCaseResult(parent.get(), number);
    EXPECT_EQ(parent->children, parent->last) << "one subtree only";
    return dumpNode(parent->children);
  }

  test::TempDir dir_;
  std::string status_;
};

// ---- names, paths and files ----

TEST_F(TestCaseResultTest, FullNameWithoutDotGivesNameEqualToFullName) {
  addCase({record(kCodeStart), record(kCodeFinish)}, "Solo");
  writeVer("CODE_TEST", "Solo");
  EXPECT_EQ(result(),
            "<TestCaseResult name=\"Solo\" fullname=\"Solo\" testType=\"tt_Code\" "
            "status=\"PASSED\" verificationResult=\"No result verification for Code TestCases\">"
            "<ResultForCode>" +
                codeInfo("Starting test case", "PASSED") + "</ResultForCode></TestCaseResult>");
  EXPECT_EQ(status_, "PASSED");
}

TEST_F(TestCaseResultTest, NameIsAfterLastDotAndVerificationFileAfterLastColon) {
  addCase({record(kCodeStart), record(kCodeFinish)}, "Lib::Pkg.Ctx.A");
  writeVer("CODE_TEST", "A");
  EXPECT_EQ(result(),
            "<TestCaseResult name=\"A\" fullname=\"Lib::Pkg.Ctx.A\" testType=\"tt_Code\" "
            "status=\"PASSED\" verificationResult=\"No result verification for Code TestCases\">"
            "<ResultForCode>" +
                codeInfo("Starting test case", "PASSED") + "</ResultForCode></TestCaseResult>");
}

TEST_F(TestCaseResultTest, SourcePathsSplitAtTheLastSlash) {
  run().sourceFiles[2] = "main.c";
  addCase({record("ZKR_ASSERT_TRUE(a)", "PASSED", "", "2"),
           record("ZKR_ASSERT_TRUE(b)", "PASSED", "", "7"),
           record("ZKR_ASSERT_TRUE(c)", "PASSED", "", ""), record(kCodeFinish)});
  writeVer("CODE_TEST");
  EXPECT_EQ(result(), caseHead("tt_Code", "PASSED", "No result verification for Code TestCases") +
                          "<ResultForCode>" +
                          codeInfo("a", "PASSED", R"(dir="main.c" filename="main.c" fnr="2")") +
                          codeInfo("b", "PASSED", R"(dir="" filename="" fnr="7")") +
                          codeInfo("c", "PASSED", R"(dir="" filename="" fnr="")") +
                          "</ResultForCode></TestCaseResult>");
  // The lookups insert the unknown file numbers.
  EXPECT_EQ(run().sourceFiles.count(7), 1u);
  EXPECT_EQ(run().sourceFiles.count(0), 1u);
}

TEST_F(TestCaseResultTest, DetailTextReplacesTheMessage) {
  addCase({record("ZKR_ASSERT_TRUE(a)", "PASSED", "free text"), record("ZKR_ASSERT_TRUE(b)"),
           record(kCodeFinish)});
  writeVer("CODE_TEST");
  EXPECT_EQ(result(), caseHead("tt_Code", "PASSED", "No result verification for Code TestCases") +
                          "<ResultForCode>" + codeInfo("free text", "PASSED") +
                          codeInfo("b", "PASSED") + "</ResultForCode></TestCaseResult>");
}

TEST_F(TestCaseResultTest, EntriesThatAreNoAssertionAreSkipped) {
  addCase({record("ZKR_ASSERT_TRUE(a)"), record("no macro here", "FAILED"), record(kCodeFinish)});
  writeVer("CODE_TEST");
  EXPECT_EQ(result(), caseHead("tt_Code", "PASSED", "No result verification for Code TestCases") +
                          "<ResultForCode>" + codeInfo("a", "PASSED") +
                          "</ResultForCode></TestCaseResult>");
  EXPECT_EQ(status_, "PASSED");
}

TEST_F(TestCaseResultTest, SkippedLastEntryStillMeansNotTerminated) {
  addCase({record("ZKR_ASSERT_TRUE(a)"), record("no macro here")});
  writeVer("CODE_TEST");
  EXPECT_EQ(result(), caseHead("tt_Code", "ERROR", "TestCase did not terminate as expected") +
                          "<ResultForCode>" + codeInfo("a", "PASSED") +
                          "</ResultForCode></TestCaseResult>");
  EXPECT_EQ(status_, "NOT_TERMINATED");
}

// ---- missing lists and verification kinds ----

TEST_F(TestCaseResultTest, MissingListWithoutVerificationFile) {
  run().testCaseNames[1] = "Pkg.Ctx.CaseOne";
  EXPECT_EQ(result(), caseHead("tt_Code", "ERROR", "Result verification switched off") +
                          "<ResultForCode/></TestCaseResult>");
  EXPECT_EQ(status_, "ERROR");
  EXPECT_EQ(run().testCaseAssertions.count(1), 1u);  // inserted by the lookup
}

TEST_F(TestCaseResultTest, MissingListOfAnSdTest) {
  run().testCaseNames[1] = "Pkg.Ctx.CaseOne";
  writeVer(kFourSteps);
  EXPECT_EQ(result(), caseHead("tt_Code", "ERROR", "Result verification failed") +
                          "<ResultForCode/></TestCaseResult>");
  EXPECT_EQ(status_, "ERROR");
}

TEST_F(TestCaseResultTest, MissingNameAndListOfANumber) {
  EXPECT_EQ(result(5),
            "<TestCaseResult name=\"\" fullname=\"\" testType=\"tt_Code\" status=\"ERROR\" "
            "verificationResult=\"Result verification switched off\"><ResultForCode/>"
            "</TestCaseResult>");
  EXPECT_EQ(run().testCaseNames.count(5), 1u);
}

TEST_F(TestCaseResultTest, EmptyListStaysUndefined) {
  addCase({});
  writeVer("CODE_TEST");
  EXPECT_EQ(result(),
            caseHead("tt_Code", "UNDEFINED", "No result verification for Code TestCases") +
                "<ResultForCode/></TestCaseResult>");
  EXPECT_EQ(status_, "UNDEFINED");
}

struct KindCase {
  const char* ver;  // null: no verification file
  const char* verification;
};

TEST_F(TestCaseResultTest, VerificationTextByKindOnACodeTest) {
  const KindCase cases[] = {
      {nullptr, "Result verification switched off"},
      {"STATECHART_TEST\nSUB_STATECHART",
       "Statechart contains elements that are not supported for result verification"},
      {"SD_TEST\n1\nPAR_BEGIN(p)",
       "Result verification currently not supported for SDs with interaction operator parallel"},
      {"", "Result verification failed"},
      {"CODE_TEST", "No result verification for Code TestCases"},
  };
  for (const KindCase& c : cases) {
    SCOPED_TRACE(c.verification);
    std::remove(dir_.file("CaseOne.ver").c_str());
    if (c.ver) writeVer(c.ver);
    addCase({record(kCodeStart), record("ZKR_ASSERT_TRUE(a)", "FAILED"), record(kCodeFinish)});
    EXPECT_EQ(result(), caseHead("tt_Code", "FAILED", c.verification) + "<ResultForCode>" +
                            codeInfo("Starting test case", "PASSED") + codeInfo("a", "FAILED") +
                            "</ResultForCode></TestCaseResult>");
    EXPECT_EQ(status_, "FAILED");
  }
}

TEST_F(TestCaseResultTest, NotTerminatedWinsOverTheKindText) {
  addCase({record(kCodeStart), record("ZKR_ASSERT_TRUE(a)")});
  EXPECT_EQ(result(), caseHead("tt_Code", "ERROR", "TestCase did not terminate as expected") +
                          "<ResultForCode>" + codeInfo("Starting test case", "PASSED") +
                          codeInfo("a", "PASSED") + "</ResultForCode></TestCaseResult>");
  EXPECT_EQ(status_, "NOT_TERMINATED");
}

TEST_F(TestCaseResultTest, ParallelSdIsNotVerified) {
  writeVer("SD_TEST\n1\nPAR_BEGIN(p)");
  addCase({record(kSdStart), sdStep(7, 7), record(kSdFinish)});
  EXPECT_EQ(result(),
            caseHead("tt_SD", "PASSED",
                     "Result verification currently not supported for SDs with interaction "
                     "operator parallel") +
                "<ResultForSD><UsedSDs/>" + kSdStartInfo + sdStepInfo(7) +
                sdSummary("PASSED", "100", "7", "7") + "</ResultForSD></TestCaseResult>");
  EXPECT_EQ(status_, "PASSED");
}

// ---- SD tests ----

TEST_F(TestCaseResultTest, SdTestPassing) {
  writeVer(kFourSteps);
  addCase({record(kSdStart), sdStep(1, 4), sdStep(2, 4), sdStep(3, 4), sdStep(4, 4),
           record(kSdFinish)});
  EXPECT_EQ(result(), caseHead("tt_SD", "PASSED", "Result verification successful") +
                          "<ResultForSD><UsedSDs/>" + kSdStartInfo + sdStepInfo(1) + sdStepInfo(2) +
                          sdStepInfo(3) + sdStepInfo(4) + sdSummary("PASSED", "100", "4", "4") +
                          "</ResultForSD></TestCaseResult>");
  EXPECT_EQ(status_, "PASSED");
}

TEST_F(TestCaseResultTest, SdTestFailingVerificationStopsAfterThatEntry) {
  writeVer(kFourSteps);
  // Step 3 arrives where 2 is expected. Its entry is written, but its
  // progress does not count: the summary still shows step 1.
  addCase({record(kSdStart), sdStep(1, 4), sdStep(3, 4), sdStep(4, 4), record(kSdFinish)});
  EXPECT_EQ(result(), caseHead("tt_SD", "ERROR", "Result verification failed") +
                          "<ResultForSD><UsedSDs/>" + kSdStartInfo + sdStepInfo(1) + sdStepInfo(3) +
                          sdSummary("ERROR", "25", "1", "4") + "</ResultForSD></TestCaseResult>");
  EXPECT_EQ(status_, "ERROR");
}

TEST_F(TestCaseResultTest, SdTestBelowFullCoverageDidNotTerminate) {
  writeVer(kFourSteps);
  addCase({record(kSdStart), sdStep(1, 4), sdStep(2, 4), sdStep(3, 4), record(kSdFinish)});
  EXPECT_EQ(result(), caseHead("tt_SD", "ERROR", "TestCase did not terminate as expected") +
                          "<ResultForSD><UsedSDs/>" + kSdStartInfo + sdStepInfo(1) + sdStepInfo(2) +
                          sdStepInfo(3) + sdSummary("ERROR", "75", "3", "4") +
                          "</ResultForSD></TestCaseResult>");
  EXPECT_EQ(status_, "NOT_TERMINATED");
}

TEST_F(TestCaseResultTest, SdTestBelowFullCoverageWithAFailureCountsAsVerified) {
  writeVer(kFourSteps);
  // After the failure no later progress is kept, so the summary shows step 1.
  addCase(
      {record(kSdStart), sdStep(1, 4), sdStep(2, 4, "FAILED"), sdStep(3, 4), record(kSdFinish)});
  EXPECT_EQ(result(), caseHead("tt_SD", "FAILED", "Result verification successful") +
                          "<ResultForSD><UsedSDs/>" + kSdStartInfo + sdStepInfo(1) +
                          sdStepInfo(2, "FAILED") + sdStepInfo(3) +
                          sdSummary("FAILED", "25", "1", "4") + "</ResultForSD></TestCaseResult>");
  EXPECT_EQ(status_, "FAILED");
}

TEST_F(TestCaseResultTest, SdTestEndedByTheUserBelowFullCoverage) {
  writeVer(kFourSteps);
  addCase({record(kSdStart), sdStep(1, 4), sdStep(2, 4),
           record(R"(ZKR_ASSERT_SD("Main", "m8", "NOFAIL_INTENDED_USER_EXIT"))")});
  EXPECT_EQ(result(), caseHead("tt_SD", "PASSED", "Result verification successful") +
                          "<ResultForSD><UsedSDs/>" + kSdStartInfo + sdStepInfo(1) + sdStepInfo(2) +
                          sdInfo("Main", "m8", "PASSED", "NOFAIL_INTENDED_USER_EXIT&quot;") +
                          sdSummary("PASSED", "50", "2", "4") + "</ResultForSD></TestCaseResult>");
  EXPECT_EQ(status_, "PASSED");
}

TEST_F(TestCaseResultTest, SdTestNotTerminatedAtFullCoverage) {
  writeVer("SD_TEST\n1\n2");
  // The last entry is treated; the summary is written before the status
  // turns "ERROR".
  addCase({record(kSdStart), sdStep(1, 2), sdStep(2, 2)});
  EXPECT_EQ(result(), caseHead("tt_SD", "ERROR", "TestCase did not terminate as expected") +
                          "<ResultForSD><UsedSDs/>" + kSdStartInfo + sdStepInfo(1) + sdStepInfo(2) +
                          sdSummary("PASSED", "100", "2", "2") + "</ResultForSD></TestCaseResult>");
  EXPECT_EQ(status_, "NOT_TERMINATED");
}

TEST_F(TestCaseResultTest, ProgressOfZeroMaximumIsStillVerified) {
  writeVer("SD_TEST\n5");
  addCase({record(kSdStart), sdStep(5, 0), record(kSdFinish)});
  EXPECT_EQ(result(), caseHead("tt_SD", "ERROR", "TestCase did not terminate as expected") +
                          "<ResultForSD><UsedSDs/>" + kSdStartInfo + sdStepInfo(5) +
                          sdSummary("ERROR", "0", "5", "0") + "</ResultForSD></TestCaseResult>");
  EXPECT_EQ(status_, "NOT_TERMINATED");
}

TEST_F(TestCaseResultTest, SdTestWithoutVerificationFile) {
  addCase({record(kSdStart), sdStep(1, 4), record(kSdFinish)});
  EXPECT_EQ(result(), caseHead("tt_SD", "ERROR", "TestCase did not terminate as expected") +
                          "<ResultForSD><UsedSDs/>" + kSdStartInfo + sdStepInfo(1) +
                          sdSummary("ERROR", "25", "1", "4") + "</ResultForSD></TestCaseResult>");
}

TEST_F(TestCaseResultTest, SdAttributesFromAllMarkedPieces) {
  writeVer("SD_TEST\n1");
  addCase({record(R"(ZKR_ASSERT_SD("Main", "m1", "x"))", "PASSED",
                  "hello - progress 1/1 - no:3,4 - GUID 01234567-89ab-cdef-0123-456789abcdef - "
                  "[Arbiter ASSERT: internal]"),
           record(kSdFinish)});
  EXPECT_EQ(result(), caseHead("tt_SD", "PASSED", "Result verification successful") +
                          "<ResultForSD><UsedSDs/><AssertionInfo sdiname=\"Main\" msgid=\"m1\" "
                          "guid=\"GUID 01234567-89ab-cdef-0123-456789abcdef\" status=\"PASSED\" "
                          "usermsg=\"hello\" inr=\"3\" "
                          "onr=\"4 - GUID 01234567-89ab-cdef-0123-456789abcdef - [Arbiter ASSERT: "
                          "internal]\" dir=\"src/app\" filename=\"main.c\" fnr=\"1\" lnr=\"10\" "
                          "arbiterAssert=\"internal\"/>" +
                          sdSummary("PASSED", "100", "1", "1") + "</ResultForSD></TestCaseResult>");
}

TEST_F(TestCaseResultTest, ArbiterAttributeOnlyWithItsMarker) {
  addCase({record(kSdStart),
           record(R"(ZKR_ASSERT_SD("Main", "m1", "x"))", "PASSED", "a - [Arbiter ASSERT: external"),
           record(R"(ZKR_ASSERT_SD("Main", "m2", "x"))", "PASSED", "b - [Arbiter ASSERT: INTERNAL"),
           record(R"(ZKR_ASSERT_SD("Main", "m3", "x"))", "PASSED", "c - [Arbiter ASSERT internal"),
           record(kSdFinish)});
  writeVer("CODE_TEST");
  EXPECT_EQ(result(), caseHead("tt_SD", "ERROR", "TestCase did not terminate as expected") +
                          "<ResultForSD><UsedSDs/>" + kSdStartInfo +
                          sdInfo("Main", "m1", "PASSED", "a", " arbiterAssert=\"external\"") +
                          sdInfo("Main", "m2", "PASSED", "b", " arbiterAssert=\"external\"") +
                          sdInfo("Main", "m3", "PASSED", "c - [Arbiter ASSERT internal") +
                          sdSummary("ERROR", "0", "0", "0") + "</ResultForSD></TestCaseResult>");
}

TEST_F(TestCaseResultTest, CodeAssertionInAnSdTestKeepsTheLastSdNames) {
  writeVer(kFourSteps);
  addCase({record(kSdStart), sdStep(1, 4), record("ZKR_ASSERT_TRUE(x == 1)", "FAILED"),
           record(kSdFinish)});
  EXPECT_EQ(result(), caseHead("tt_SD", "FAILED", "Result verification successful") +
                          "<ResultForSD><UsedSDs/>" + kSdStartInfo + sdStepInfo(1) +
                          sdInfo("Main", "m1", "FAILED", "x == 1") +
                          sdSummary("FAILED", "25", "1", "4") + "</ResultForSD></TestCaseResult>");
  EXPECT_EQ(status_, "FAILED");
}

TEST_F(TestCaseResultTest, SummaryNameIsTheLastSdiName) {
  writeVer("SD_TEST\n1\n2");
  addCase({record(kSdStart), sdStep(1, 2),
           record(R"(ZKR_ASSERT_SD("Other", "m2", "x"))", "PASSED", "step2 - progress 2/2"),
           record(kSdFinish)});
  const std::string xml = result();
  EXPECT_NE(xml.find("<SDResult name=\"Other\" sdname=\"MainSd\" status=\"PASSED\" "
                     "coverage=\"100\" value=\"2\" max=\"2\"/>"),
            std::string::npos)
      << xml;
}

TEST_F(TestCaseResultTest, ImagesPresentAreReferenced) {
  dir_.write("spec_jpegs/CaseOne.jpg", "jpg");
  // A directory opens for reading too and counts as present.
  dir_.write("result_jpegs/CaseOne.jpg/keep", "");
  writeVer("SD_TEST\n1");
  addCase({record(kSdStart), sdStep(1, 1), record(kSdFinish)});
  EXPECT_EQ(result(),
            caseHead("tt_SD", "PASSED", "Result verification successful") +
                "<ResultForSD><UsedSDs><UsedSD img=\"spec_jpegs/CaseOne.jpg\"/></UsedSDs>" +
                kSdStartInfo + sdStepInfo(1) +
                sdSummary("PASSED", "100", "1", "1", "result_jpegs/CaseOne.jpg") +
                "</ResultForSD></TestCaseResult>");
}

TEST_F(TestCaseResultTest, ImagesAreLookedForUnderABackslashOutputDirectory) {
  const std::string out = dir_.path() + "\\\"out\"";
  run().outDirectory = out.c_str();
  dir_.write("out/spec_jpegs/CaseOne.jpg", "jpg");
  addCase({record(kSdStart), sdStep(1, 1), record(kSdFinish)});
  const std::string xml = result();
  EXPECT_NE(xml.find("<UsedSDs><UsedSD img=\"spec_jpegs/CaseOne.jpg\"/></UsedSDs>"),
            std::string::npos)
      << xml;
}

TEST_F(TestCaseResultTest, CodeTestIgnoresImages) {
  dir_.write("spec_jpegs/CaseOne.jpg", "jpg");
  dir_.write("result_jpegs/CaseOne.jpg", "jpg");
  writeVer("CODE_TEST");
  addCase({record("ZKR_ASSERT_TRUE(a)"), record(kCodeFinish)});
  EXPECT_EQ(result(), caseHead("tt_Code", "PASSED", "No result verification for Code TestCases") +
                          "<ResultForCode>" + codeInfo("a", "PASSED") +
                          "</ResultForCode></TestCaseResult>");
}

TEST_F(TestCaseResultTest, RangeErrorOfTheSequenceVerificationPropagates) {
  // The alternative's marker has no "(" suffix, which the search needs.
  writeVer("SD_TEST\nALT_OPERAND_BEGIN\n1");
  addCase({record(kSdStart), sdStep(2, 2), record(kSdFinish)});
  XmlNodePtr parent(newElement("Parent"));
  EXPECT_THROW(writeTestCaseResult(parent.get(), 1), std::out_of_range);
}

// ---- chart tests ----

TEST_F(TestCaseResultTest, StatechartPassing) {
  writeVer(kStatechart);
  addCase({record("ZKR_ASSERT_TRUE(x == 1)"), record(kCodeFinish)});
  EXPECT_EQ(result(), caseHead("tt_Code", "PASSED", "Result verification successful") +
                          "<ResultForCode>" + codeInfo("x == 1", "PASSED") +
                          "</ResultForCode></TestCaseResult>");
  EXPECT_EQ(status_, "PASSED");
}

TEST_F(TestCaseResultTest, StatechartStepFailureStopsTheWalk) {
  writeVer(kStatechart);
  addCase(
      {record("ZKR_ASSERT_TRUE(y == 2)"), record("ZKR_ASSERT_TRUE(x == 1)"), record(kCodeFinish)});
  EXPECT_EQ(result(), caseHead("tt_Code", "ERROR", "Result verification failed") +
                          "<ResultForCode>" + codeInfo("y == 2", "PASSED") +
                          "</ResultForCode></TestCaseResult>");
  EXPECT_EQ(status_, "ERROR");
}

TEST_F(TestCaseResultTest, FlowchartPassing) {
  writeVer(flowchart("LocalTermination"));
  addCase({record("ZKR_ASSERT_TRUE(x == 1)"), record(kCodeFinish)});
  EXPECT_EQ(result(), caseHead("tt_Code", "PASSED", "Result verification successful") +
                          "<ResultForCode>" + codeInfo("x == 1", "PASSED") +
                          "</ResultForCode></TestCaseResult>");
}

TEST_F(TestCaseResultTest, FlowchartThatCannotComplete) {
  writeVer(flowchart("Action"));
  addCase({record("ZKR_ASSERT_TRUE(x == 1)"), record(kCodeFinish)});
  EXPECT_EQ(result(), caseHead("tt_Code", "ERROR", "Result verification failed") +
                          "<ResultForCode>" + codeInfo("x == 1", "PASSED") +
                          "</ResultForCode></TestCaseResult>");
  EXPECT_EQ(status_, "ERROR");
}

TEST_F(TestCaseResultTest, FlowchartEndedByTheUserNeedNotComplete) {
  writeVer(flowchart("Action"));
  addCase(
      {record("ZKR_ASSERT_TRUE(x == 1)"), record("ZKR_ASSERT_TRUE(NOFAIL_INTENDED_USER_EXIT)")});
  EXPECT_EQ(result(), caseHead("tt_Code", "PASSED", "Result verification successful") +
                          "<ResultForCode>" + codeInfo("x == 1", "PASSED") +
                          codeInfo("NOFAIL_INTENDED_USER_EXIT", "PASSED") +
                          "</ResultForCode></TestCaseResult>");
  EXPECT_EQ(status_, "PASSED");
}

TEST_F(TestCaseResultTest, ChartCompletionFromTheFirstRecordStopsAtAnAssertion) {
  // No entry moved the chart: the completion starts at Init and meets the
  // assertion on Work's entry.
  writeVer(kStatechart);
  addCase({record(kCodeFinish)});
  EXPECT_EQ(result(), caseHead("tt_Code", "ERROR", "Result verification failed") +
                          "<ResultForCode/></TestCaseResult>");
  EXPECT_EQ(status_, "ERROR");
}

}  // namespace
}  // namespace qendor
