#include "report/result_document.h"

#include <gtest/gtest.h>

#include <libxml/parser.h>
#include <libxml/tree.h>
#include <stdlib.h>
#include "tests/xml_dump.h"

#include <memory>
#include <regex>
#include <stdexcept>
#include <string>
#include <utility>

#include "base/run_settings.h"
#include "report/xml_node.h"
#include "report/xml_save.h"
#include "tests/test_support.h"
#include "verify/verdicts.h"

namespace qendor {
namespace {

using test::dumpNode;
using test::ScopedEnv;

// The tree as text without the "time" value, which changes from run to run.
std::string dumpWithoutTime(xmlNode* node) {
  static const std::regex time(" time=\"[^\"]*\"");
  return std::regex_replace(dumpNode(node), time, "");
}

AssertionRecord record(std::string text, std::string status = "PASSED") {
  return AssertionRecord{std::move(text), test::recordStatus(status), "1", "10", ""};
}
const char kFinish[] = R"(ZKR_ASSERT_NAME("Finished test case: x", 1))";

const char kEnvironment[] =
    "<EnvironmentInfo userName=\"tester\" machineName=\"bench\" osVersion=\"Linux\" "
    "korvanVersion=\"2.1, build 17\" ostraVersion=\"5.0, build 300\"/>"
    "<ConfigurationInfo projectName=\"Shop\" componentName=\"Cart\" "
    "configurationName=\"Debug\"/>";

// The root and header of the context document of Pkg.Ctx.
std::string contextHead() {
  return std::string(
             "<TestResult kind=\"rk_testcontext\"><ResultHeader name=\"Pkg.Ctx\" "
             "fullname=\"Pkg.Ctx\">") +
         kEnvironment + "</ResultHeader>";
}

std::string caseResult(const std::string& name, const std::string& fullName,
                       const std::string& status, const std::string& verification,
                       const std::string& body) {
  return "<TestCaseResult name=\"" + name + "\" fullname=\"" + fullName +
         "\" testType=\"tt_Code\" status=\"" + status + "\" verificationResult=\"" + verification +
         "\">" + body + "</TestCaseResult>";
}
const char kPassedBody[] =
    "<ResultForCode><AssertionInfo name=\"a\" status=\"PASSED\" dir=\"src\" "
    "filename=\"a.c\" fnr=\"1\" lnr=\"10\"/></ResultForCode>";

class ResultDocumentTest : public ::testing::Test {
 protected:
  void SetUp() override {
    resetRun();
    RunSettings& r = run();
    r.outDirectory = dir_.path().c_str();
    r.korvanVersionNumber = "2.1";
    r.korvanBuildNumber = "17";
    r.ostraVersionNumber = "5.0";
    r.ostraBuildNumber = "300";
    r.activeProject = "Shop";
    r.activeComponent = "Cart";
    r.activeConfiguration = "Debug";
    r.sourceFiles[1] = "src/a.c";
  }
  void TearDown() override { resetRun(); }

  void addCase(int32_t number, const std::string& fullName, AssertionList records) {
    run().testCaseNames[number] = fullName;
    logs_[number] = makeTestCaseLog(std::move(records));
  }
  void addPassing(int32_t number, const std::string& fullName) {
    addCase(number, fullName, {record("ZKR_ASSERT_TRUE(a)"), record(kFinish)});
  }

  // 1 passes, 2 fails, 3 has no records (ERROR), 4 does not terminate, 5 has
  // an empty list (UNDEFINED).
  void addOneOfEachStatus() {
    addPassing(1, "P.A");
    addCase(2, "P.B", {record("ZKR_ASSERT_TRUE(a)", "FAILED"), record(kFinish)});
    run().testCaseNames[3] = "P.C";
    addCase(4, "P.D", {record("ZKR_ASSERT_TRUE(a)")});
    addCase(5, "P.E", {});
  }

  // The document as saved and read back, without indentation; its exit
  // status goes to `code`.
  std::string savedDump(ResultDocument built, int& code, bool withTime = false) {
    code = exitCode(built.exitStatus);
    const std::string path = dir_.file("Saved.xml");
    SpooledDocument& document = built.document;
    EXPECT_TRUE(saveXmlDocument(document.root.get(), path, nullptr, &document.spool));
    xmlDoc* doc = xmlReadFile(path.c_str(), nullptr, XML_PARSE_NOBLANKS | XML_PARSE_NONET);
    xmlNode* root = doc ? xmlDocGetRootElement(doc) : nullptr;
    const std::string text = !root      ? "(unreadable)"
                             : withTime ? dumpNode(root)
                                        : dumpWithoutTime(root);
    xmlFreeDoc(doc);
    return text;
  }

  // The document of test case `number`, judged now, without the time.
  std::string caseDump(int32_t number, int& code) {
    RunVerdicts verdicts(run(), logs_);
    return savedDump(buildTestCaseDocument(run(), number, verdicts.of(number)), code);
  }

  // The context document, without the time.
  std::string contextDump(int& code, bool withTime = false) {
    RunVerdicts verdicts(run(), logs_);
    return savedDump(buildTestContextDocument(run(), verdicts), code, withTime);
  }

  test::TempDir dir_;
  TestCaseLogs logs_;
  ScopedEnv userName_{"USERNAME", "tester"};
  ScopedEnv user_{"USER", "someone"};
  ScopedEnv host_{"HOSTNAME", "bench"};
  ScopedEnv tz_{"TZ", "UTC"};
};

// ---- test case documents ----

TEST_F(ResultDocumentTest, TestCaseDocument) {
  addPassing(1, "Pkg.Ctx.CaseOne");
  int code = -1;
  EXPECT_EQ(caseDump(1, code),
            std::string("<TestResult kind=\"rk_testcase\"><ResultHeader name=\"CaseOne\" "
                        "fullname=\"Pkg.Ctx.CaseOne\">") +
                kEnvironment + "</ResultHeader>" +
                caseResult("CaseOne", "Pkg.Ctx.CaseOne", "PASSED",
                           "Result verification switched off", kPassedBody) +
                "</TestResult>");
  EXPECT_EQ(code, 0);
}

// "%#c" in the C locale: weekday, month, day, time and year, after the names.
TEST_F(ResultDocumentTest, TimeStandsAfterTheNamesInTheCLocale) {
  run().testContextName = "Pkg.Ctx";
  int code = -1;
  const std::string xml = contextDump(code, true);
  const std::regex header(
      "<ResultHeader name=\"Pkg.Ctx\" fullname=\"Pkg.Ctx\" time=\"[A-Za-z]{3} [A-Za-z]{3} "
      "[ 1-3][0-9] [0-2][0-9]:[0-5][0-9]:[0-6][0-9] [0-9]{4}\"><Env.*");
  EXPECT_TRUE(std::regex_search(xml, header)) << xml;
}

TEST_F(ResultDocumentTest, TestCaseNameIsAfterTheLastDot) {
  addPassing(1, "Lib::Pkg.Ctx.A");
  int code = -1;
  EXPECT_NE(caseDump(1, code).find(
                "<ResultHeader name=\"A\" fullname=\"Lib::Pkg.Ctx.A\"><EnvironmentInfo"),
            std::string::npos);
}

TEST_F(ResultDocumentTest, ResultCodeOfEachTestCaseStatus) {
  addOneOfEachStatus();
  const std::pair<int32_t, int> expected[] = {{1, 0}, {2, 10}, {3, 11}, {4, 13}, {5, 12}};
  for (const auto& [number, status] : expected) {
    SCOPED_TRACE(number);
    int code = -1;
    caseDump(number, code);
    EXPECT_EQ(code, status);
  }
}

// An SD test whose verification stops the walk at its second entry lists
// that entry last; one that runs through lists them all.
TEST_F(ResultDocumentTest, SequenceDiagramDocuments) {
  auto sdRecord = [](const char* message, const char* progress) {
    return AssertionRecord{std::string("ZKR_ASSERT_SD(\"s\", \"") + message + "\", \"x\")",
                           Status::kPassed, "1", "7", std::string("step - progress ") + progress};
  };
  for (int32_t number : {6, 7}) {
    const std::string name = number == 6 ? "F" : "G";
    dir_.write(name + ".ver", "SD_TEST\n1\n2\n");
    addCase(number, "P." + name,
            {sdRecord("m1", "1/2"), sdRecord("m2", number == 6 ? "1/2" : "2/2"), record(kFinish)});
  }
  int code = -1;
  const std::string failed = caseDump(6, code);
  EXPECT_EQ(code, 11);
  EXPECT_NE(failed.find("status=\"ERROR\" verificationResult=\"Result verification failed\">"),
            std::string::npos)
      << failed;
  EXPECT_NE(failed.find("msgid=\"m2\""), std::string::npos) << failed;
  const std::string passed = caseDump(7, code);
  EXPECT_EQ(code, 0);
  EXPECT_NE(passed.find("verificationResult=\"Result verification successful\""), std::string::npos)
      << passed;
  EXPECT_NE(passed.find("<SDResult name=\"s\" sdname=\"\" status=\"PASSED\" coverage=\"100\" "
                        "value=\"2\" max=\"2\"/>"),
            std::string::npos)
      << passed;
}

TEST_F(ResultDocumentTest, NotTerminatedKeepsErrorInTheDocument) {
  addCase(4, "P.D", {record("ZKR_ASSERT_TRUE(a)")});
  int code = -1;
  const std::string xml = caseDump(4, code);
  EXPECT_EQ(code, 13);
  EXPECT_NE(xml.find("<TestCaseResult name=\"D\" fullname=\"P.D\" testType=\"tt_Code\" "
                     "status=\"ERROR\" verificationResult=\"TestCase did not terminate as "
                     "expected\">"),
            std::string::npos);
}

TEST_F(ResultDocumentTest, RangeErrorLeavesNothingBehind) {
  dir_.write("A.ver", "SD_TEST\nALT_OPERAND_BEGIN\n1");
  addCase(1, "P.A",
          {AssertionRecord{R"(ZKR_ASSERT_SD("s", "m", "x"))", Status::kPassed, "1", "1",
                           "x - progress 2/2"},
           record(kFinish)});
  run().testContextName = "P";
  RunVerdicts verdicts(run(), logs_);
  EXPECT_THROW(buildTestContextDocument(run(), verdicts), std::out_of_range);
  EXPECT_THROW(verdicts.of(1), std::out_of_range);
}

// ---- test context documents ----

TEST_F(ResultDocumentTest, ContextWithAnErrorFails) {
  addPassing(3, "Pkg.Ctx.Third");
  addPassing(1, "Pkg.Ctx.First");
  run().testCaseNames[2] = "Pkg.Ctx.Second";  // no records: ERROR
  addPassing(4, "Pkg.Ctx.Sub.Deep");          // belongs to Pkg.Ctx.Sub
  addPassing(5, "Other.Ctx.Fourth");
  run().testContextName = "Pkg.Ctx";
  int code = -1;
  EXPECT_EQ(contextDump(code),
            contextHead() + "<TestContextResult status=\"FAILED\">" +
                caseResult("First", "Pkg.Ctx.First", "PASSED", "Result verification switched off",
                           kPassedBody) +
                caseResult("Second", "Pkg.Ctx.Second", "ERROR", "Result verification switched off",
                           "<ResultForCode/>") +
                caseResult("Third", "Pkg.Ctx.Third", "PASSED", "Result verification switched off",
                           kPassedBody) +
                "</TestContextResult></TestResult>");
  EXPECT_EQ(code, 10);
}

TEST_F(ResultDocumentTest, ContextStatusFold) {
  struct Case {
    std::vector<std::string> statuses;  // "P" passing, "F" failing, "N" not terminated
    const char* status;
    int code;
  };
  const Case cases[] = {
      {{}, "UNDEFINED", 12},      {{"P"}, "PASSED", 0},       {{"P", "P"}, "PASSED", 0},
      {{"F", "P"}, "FAILED", 10}, {{"P", "N"}, "FAILED", 10}, {{"N"}, "FAILED", 10},
  };
  for (const Case& c : cases) {
    resetRun();
    logs_.clear();
    run().outDirectory = dir_.path().c_str();
    run().testContextName = "Pkg.Ctx";
    int32_t number = 1;
    for (const std::string& s : c.statuses) {
      const std::string name = "Pkg.Ctx.T" + std::to_string(number);
      AssertionList records{record("ZKR_ASSERT_TRUE(a)", s == "F" ? "FAILED" : "PASSED")};
      if (s != "N") records.push_back(record(kFinish));
      addCase(number, name, std::move(records));
      ++number;
    }
    int code = -1;
    const std::string xml = contextDump(code);
    EXPECT_NE(xml.find("<TestContextResult status=\"" + std::string(c.status) + "\""),
              std::string::npos)
        << xml;
    EXPECT_EQ(code, c.code) << xml;
  }
}

TEST_F(ResultDocumentTest, ContextWithoutMembers) {
  addPassing(1, "Pkg.Other.A");
  run().testContextName = "Pkg.Ctx";
  int code = -1;
  EXPECT_EQ(contextDump(code),
            contextHead() + "<TestContextResult status=\"UNDEFINED\"/></TestResult>");
  EXPECT_EQ(code, 12);
}

TEST_F(ResultDocumentTest, ContextNameIsAfterTheLastColon) {
  addPassing(1, "Lib::Pkg.Ctx.A");
  run().testContextName = "Lib::Pkg.Ctx";
  int code = -1;
  const std::string xml = contextDump(code);
  EXPECT_NE(xml.find("<ResultHeader name=\"Pkg.Ctx\" fullname=\"Lib::Pkg.Ctx\">"),
            std::string::npos)
      << xml;
  EXPECT_NE(xml.find("<TestCaseResult name=\"A\" fullname=\"Lib::Pkg.Ctx.A\""), std::string::npos)
      << xml;
  EXPECT_EQ(code, 0);
}

// ---- header values ----

TEST_F(ResultDocumentTest, HeaderWithoutInfoFileValues) {
  RunSettings& r = run();
  r.korvanVersionNumber.clear();
  r.korvanBuildNumber.clear();
  r.ostraVersionNumber.clear();
  r.ostraBuildNumber.clear();
  r.activeProject.clear();
  r.activeComponent.clear();
  r.activeConfiguration.clear();
  r.testContextName = "C";
  int code = -1;
  EXPECT_EQ(contextDump(code),
            "<TestResult kind=\"rk_testcontext\"><ResultHeader name=\"C\" fullname=\"C\">"
            "<EnvironmentInfo userName=\"tester\" machineName=\"bench\" "
            "osVersion=\"Linux\" korvanVersion=\", build \" ostraVersion=\", build \"/>"
            "<ConfigurationInfo projectName=\"\" componentName=\"\" configurationName=\"\"/>"
            "</ResultHeader><TestContextResult status=\"UNDEFINED\"/></TestResult>");
}

// The environment names of the header, as the document writes them.
class HeaderNamesTest : public ResultDocumentTest {
 protected:
  std::string environment() {
    run().testContextName = "C";
    int code = -1;
    const std::string xml = contextDump(code);
    const size_t from = xml.find("<EnvironmentInfo ");
    const size_t to = xml.find(" osVersion=");
    return from == std::string::npos || to == std::string::npos
               ? xml
               : xml.substr(from + 17, to - from - 17);
  }
};

TEST_F(HeaderNamesTest, UserNameFallsBackToUserThenUnknown) {
  EXPECT_EQ(environment(), "userName=\"tester\" machineName=\"bench\"");
  {
    ScopedEnv noUserName("USERNAME", nullptr);
    EXPECT_EQ(environment(), "userName=\"someone\" machineName=\"bench\"");
    ScopedEnv noUser("USER", nullptr);
    EXPECT_EQ(environment(), "userName=\"unknown\" machineName=\"bench\"");
  }
  ScopedEnv emptyUserName("USERNAME", "");
  EXPECT_EQ(environment(), "userName=\"\" machineName=\"bench\"");
}

TEST_F(HeaderNamesTest, MachineNameFallsBackToUnknown) {
  {
    ScopedEnv noHost("HOSTNAME", nullptr);
    EXPECT_EQ(environment(), "userName=\"tester\" machineName=\"unknown\"");
  }
  ScopedEnv emptyHost("HOSTNAME", "");
  EXPECT_EQ(environment(), "userName=\"tester\" machineName=\"\"");
}

}  // namespace
}  // namespace qendor
