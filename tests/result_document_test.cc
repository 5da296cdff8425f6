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

  void addPassing(int32_t number, const std::string& fullName) {
    run().testCaseNames[number] = fullName;
    run().testCaseAssertions[number] = std::make_unique<AssertionList>(
        AssertionList{record("ZKR_ASSERT_TRUE(a)"), record(kFinish)});
  }

  // 1 passes, 2 fails, 3 has no records (ERROR), 4 does not terminate, 5 has
  // an empty list (UNDEFINED).
  void addOneOfEachStatus() {
    addPassing(1, "P.A");
    run().testCaseNames[2] = "P.B";
    run().testCaseAssertions[2] = std::make_unique<AssertionList>(
        AssertionList{record("ZKR_ASSERT_TRUE(a)", "FAILED"), record(kFinish)});
    run().testCaseNames[3] = "P.C";
    run().testCaseNames[4] = "P.D";
    run().testCaseAssertions[4] =
        std::make_unique<AssertionList>(AssertionList{record("ZKR_ASSERT_TRUE(a)")});
    run().testCaseNames[5] = "P.E";
    run().testCaseAssertions[5] = std::make_unique<AssertionList>();
  }

  // The context document as saved and read back, without indentation and
  // without the time.
  std::string contextDump(int& code) {
    const std::string path = dir_.file("Context.xml");
    SpooledDocument document = buildTestContextDocument(code);
    EXPECT_TRUE(saveXmlDocument(document.root.get(), path, nullptr, &document.spool));
    xmlDoc* doc = xmlReadFile(path.c_str(), nullptr, XML_PARSE_NOBLANKS | XML_PARSE_NONET);
    const std::string text = doc ? dumpWithoutTime(xmlDocGetRootElement(doc)) : "(unreadable)";
    xmlFreeDoc(doc);
    return text;
  }

  test::TempDir dir_;
  ScopedEnv userName_{"USERNAME", "tester"};
  ScopedEnv user_{"USER", "someone"};
  ScopedEnv host_{"HOSTNAME", "bench"};
  ScopedEnv tz_{"TZ", "UTC"};
};

// ---- test case documents ----

TEST_F(ResultDocumentTest, TestCaseDocument) {
  addPassing(1, "Pkg.Ctx.CaseOne");
  int code = -1;
  XmlNodePtr root(buildTestCaseDocument(1, code));
  EXPECT_EQ(dumpWithoutTime(root.get()),
            std::string("<TestResult kind=\"rk_testcase\"><ResultHeader name=\"CaseOne\" "
                        "fullname=\"Pkg.Ctx.CaseOne\">") +
                kEnvironment + "</ResultHeader>" +
                caseResult("CaseOne", "Pkg.Ctx.CaseOne", "PASSED",
                           "Result verification switched off", kPassedBody) +
                "</TestResult>");
  EXPECT_EQ(code, 0);
  EXPECT_EQ(root->parent, nullptr);
  EXPECT_EQ(root->doc, nullptr);
}

TEST_F(ResultDocumentTest, TimeStandsAfterTheNames) {
  addPassing(1, "Pkg.Ctx.CaseOne");
  int code = -1;
  XmlNodePtr root(buildTestCaseDocument(1, code));
  const std::regex header(
      "<ResultHeader name=\"CaseOne\" fullname=\"Pkg.Ctx.CaseOne\" time=\"[^\"]+\"><Env.*");
  EXPECT_TRUE(std::regex_search(dumpNode(root.get()), header)) << dumpNode(root.get());
}

TEST_F(ResultDocumentTest, TestCaseNameIsAfterTheLastDot) {
  addPassing(1, "Lib::Pkg.Ctx.A");
  int code = -1;
  XmlNodePtr root(buildTestCaseDocument(1, code));
  EXPECT_NE(dumpWithoutTime(root.get())
                .find("<ResultHeader name=\"A\" fullname=\"Lib::Pkg.Ctx.A\"><EnvironmentInfo"),
            std::string::npos);
}

TEST_F(ResultDocumentTest, ResultCodeOfEachTestCaseStatus) {
  addOneOfEachStatus();
  const std::pair<int32_t, int> expected[] = {{1, 0}, {2, 10}, {3, 11}, {4, 13}, {5, 12}};
  for (const auto& [number, status] : expected) {
    SCOPED_TRACE(number);
    int code = -1;
    XmlNodePtr root(buildTestCaseDocument(number, code));
    EXPECT_EQ(code, status);
  }
}

TEST_F(ResultDocumentTest, SpooledAssertionsSaveAsTheWholeTree) {
  // Besides one of each status: 6 is an SD test whose verification stops
  // the walk at its second entry, 7 an SD test that runs through.
  addOneOfEachStatus();
  auto sdRecord = [](const char* message, const char* progress) {
    return AssertionRecord{std::string("ZKR_ASSERT_SD(\"s\", \"") + message + "\", \"x\")",
                           Status::kPassed, "1", "7", std::string("step - progress ") + progress};
  };
  for (int32_t number : {6, 7}) {
    const std::string name = number == 6 ? "F" : "G";
    run().testCaseNames[number] = "P." + name;
    dir_.write(name + ".ver", "SD_TEST\n1\n2\n");
    run().testCaseAssertions[number] = std::make_unique<AssertionList>(AssertionList{
        sdRecord("m1", "1/2"), sdRecord("m2", number == 6 ? "1/2" : "2/2"), record(kFinish)});
  }
  for (int32_t number = 1; number <= 7; ++number) {
    SCOPED_TRACE(number);
    int wholeCode = -1;
    XmlNodePtr whole(buildTestCaseDocument(number, wholeCode));
    ASSERT_TRUE(saveXmlDocument(whole.get(), dir_.file("whole.xml")));
    SpooledDocument spooled;
    int spooledCode = -1;
    spooled.root.reset(buildTestCaseDocument(number, spooledCode, &spooled.spool));
    ASSERT_TRUE(
        saveXmlDocument(spooled.root.get(), dir_.file("spooled.xml"), nullptr, &spooled.spool));
    static const std::regex time(" time=\"[^\"]*\"");
    const std::string expected =
        std::regex_replace(test::readFile(dir_.file("whole.xml")), time, "");
    EXPECT_EQ(std::regex_replace(test::readFile(dir_.file("spooled.xml")), time, ""), expected);
    EXPECT_EQ(spooledCode, wholeCode);
    if (number == 6) {
      EXPECT_NE(expected.find("Result verification failed"), std::string::npos) << expected;
      EXPECT_NE(expected.find("msgid=\"m2\""), std::string::npos) << expected;
    }
    if (number == 7) {
      EXPECT_NE(expected.find("Result verification successful"), std::string::npos) << expected;
    }
  }
}

TEST_F(ResultDocumentTest, NotTerminatedKeepsErrorInTheDocument) {
  run().testCaseNames[4] = "P.D";
  run().testCaseAssertions[4] =
      std::make_unique<AssertionList>(AssertionList{record("ZKR_ASSERT_TRUE(a)")});
  int code = -1;
  XmlNodePtr root(buildTestCaseDocument(4, code));
  EXPECT_EQ(code, 13);
  EXPECT_NE(dumpWithoutTime(root.get())
                .find("<TestCaseResult name=\"D\" fullname=\"P.D\" testType=\"tt_Code\" "
                      "status=\"ERROR\" verificationResult=\"TestCase did not terminate as "
                      "expected\">"),
            std::string::npos);
}

TEST_F(ResultDocumentTest, RangeErrorLeavesNothingBehind) {
  run().testCaseNames[1] = "P.A";
  dir_.write("A.ver", "SD_TEST\nALT_OPERAND_BEGIN\n1");
  run().testCaseAssertions[1] = std::make_unique<AssertionList>(
      AssertionList{AssertionRecord{R"(ZKR_ASSERT_SD("s", "m", "x"))", Status::kPassed, "1", "1",
                                    "x - progress 2/2"},
                    record(kFinish)});
  int code = -1;
  EXPECT_THROW(buildTestCaseDocument(1, code), std::out_of_range);
  run().testContextName = "P";
  EXPECT_THROW(buildTestContextDocument(code), std::out_of_range);
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
            std::string("<TestResult kind=\"rk_testcontext\"><ResultHeader name=\"Pkg.Ctx\" "
                        "fullname=\"Pkg.Ctx\">") +
                kEnvironment + "</ResultHeader><TestContextResult status=\"FAILED\">" +
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
    run().outDirectory = dir_.path().c_str();
    run().testContextName = "Pkg.Ctx";
    int32_t number = 1;
    for (const std::string& s : c.statuses) {
      const std::string name = "Pkg.Ctx.T" + std::to_string(number);
      run().testCaseNames[number] = name;
      AssertionList records{record("ZKR_ASSERT_TRUE(a)", s == "F" ? "FAILED" : "PASSED")};
      if (s != "N") records.push_back(record(kFinish));
      run().testCaseAssertions[number] = std::make_unique<AssertionList>(std::move(records));
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
            std::string("<TestResult kind=\"rk_testcontext\"><ResultHeader name=\"Pkg.Ctx\" "
                        "fullname=\"Pkg.Ctx\">") +
                kEnvironment +
                "</ResultHeader><TestContextResult status=\"UNDEFINED\"/></TestResult>");
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
  XmlNodePtr header(newElement("ResultHeader"));
  addHeaderInfo(header.get());
  EXPECT_EQ(dumpWithoutTime(header.get()),
            "<ResultHeader><EnvironmentInfo userName=\"tester\" machineName=\"bench\" "
            "osVersion=\"Linux\" korvanVersion=\", build \" ostraVersion=\", build \"/>"
            "<ConfigurationInfo projectName=\"\" componentName=\"\" configurationName=\"\"/>"
            "</ResultHeader>");
}

TEST_F(ResultDocumentTest, UserNameFallsBackToUserThenUnknown) {
  EXPECT_EQ(userNameText(), "tester");
  {
    ScopedEnv noUserName("USERNAME", nullptr);
    EXPECT_EQ(userNameText(), "someone");
    ScopedEnv noUser("USER", nullptr);
    EXPECT_EQ(userNameText(), "unknown");
  }
  ScopedEnv emptyUserName("USERNAME", "");
  EXPECT_EQ(userNameText(), "");
}

TEST_F(ResultDocumentTest, MachineNameFallsBackToUnknown) {
  EXPECT_EQ(machineNameText(), "bench");
  {
    ScopedEnv noHost("HOSTNAME", nullptr);
    EXPECT_EQ(machineNameText(), "unknown");
  }
  ScopedEnv emptyHost("HOSTNAME", "");
  EXPECT_EQ(machineNameText(), "");
}

TEST_F(ResultDocumentTest, OsNameIsLinux) {
  EXPECT_EQ(osNameText(), "Linux");
}

TEST_F(ResultDocumentTest, TimeTextInTheCLocale) {
  // "%#c" in the C locale: weekday, month, day, time and year.
  const std::regex format(
      "[A-Za-z]{3} [A-Za-z]{3} [ 1-3][0-9] [0-2][0-9]:[0-5][0-9]:[0-6][0-9] "
      "[0-9]{4}");
  const std::string text = currentTimeText();
  EXPECT_TRUE(std::regex_match(text, format)) << text;
}

TEST(TestCaseStatusCodeTest, StatusTexts) {
  const std::pair<const char*, int> cases[] = {
      {"PASSED", 0},     {"FAILED", 10}, {"ERROR", 11},  {"NOT_TERMINATED", 13},
      {"UNDEFINED", 12}, {"", 12},       {"passed", 12}, {"PASSED ", 12},
  };
  for (const auto& [status, code] : cases) EXPECT_EQ(testCaseStatusCode(status), code) << status;
}

}  // namespace
}  // namespace qendor
