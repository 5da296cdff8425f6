// Runs the built program on scenario folders and checks stdout, the exit
// status and the files it leaves behind.
#include <gtest/gtest.h>

#include <filesystem>
#include <regex>
#include <string>
#include <vector>

#include <libxml/parser.h>

#include "tests/test_support.h"

namespace qendor {
namespace {

namespace fs = std::filesystem;

using Outcome = test::ProgramOutcome;

// A scenario folder copied into a fresh temporary folder, with the program
// and its stylesheets beside it.
class Scenario {
 public:
  explicit Scenario(const std::string& name) {
    fs::copy(std::string(QENDOR_SOURCE_DIR) + "/tests/scenarios/" + name, dir_.path(),
             fs::copy_options::recursive);
  }
  const test::TempDir& dir() const { return dir_; }
  std::string path(const std::string& name) const { return dir_.file(name); }

  Outcome run(const std::vector<std::string>& args, const std::string& envPath = "/usr/bin:/bin") {
    return test::runProgram(QENDOR_BINARY, args, dir_.path(), envPath);
  }

 private:
  test::TempDir dir_;
};

// The XML text with the header's time masked, so that documents compare exactly.
std::string maskedXml(const std::string& path) {
  static const std::regex time(" time=\"[^\"]*\"");
  return std::regex_replace(test::readFile(path), time, " time=\"*\"");
}

bool wellFormed(const std::string& path) {
  xmlDoc* doc =
      xmlReadFile(path.c_str(), nullptr, XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING);
  if (!doc) return false;
  xmlFreeDoc(doc);
  return true;
}

const char kUsage[] =
    "qendor -infofile <infofile> -resultfile <resultfile> -outdirectory <outdirectory> "
    "[-tcontext <testContext> | -tcase <testCase>] [- language <ENU | CHS | CHT | KOR | JPN>]\n";

std::vector<std::string> shopArgs(const std::string& which, const std::string& name) {
  return {"-infofile",     "shop.info", "-resultfile", "results.log",
          "-outdirectory", "out",       which,         name};
}

TEST(EndToEnd, IncompleteCommandLinePrintsUsage) {
  Scenario s("shop");
  Outcome o =
      s.run({"-infofile", "shop.info", "-resultfile", "results.log", "-outdirectory", "out"});
  EXPECT_EQ(o.out, kUsage);
  EXPECT_EQ(o.status, 20);
  o = s.run({});
  EXPECT_EQ(o.out, kUsage);
  EXPECT_EQ(o.status, 20);
}

TEST(EndToEnd, MissingInfoFile) {
  Scenario s("shop");
  Outcome o = s.run({"-infofile", "no\\such.info", "-resultfile", "results.log", "-outdirectory",
                     "out", "-tcontext", "Pkg.Ctx"});
  EXPECT_EQ(o.out, "infofile <no\\such.info> could not be read correctly.\n");
  EXPECT_EQ(o.status, 21);
  EXPECT_FALSE(test::fileExists(s.path("out/Ctx.xml")));
}

TEST(EndToEnd, MissingResultFileStillWritesReports) {
  Scenario s("shop");
  Outcome o = s.run({"-infofile", "shop.info", "-resultfile", "gone.log", "-outdirectory", "out",
                     "-tcontext", "Pkg.Ctx"});
  EXPECT_EQ(o.out, "resultfile <gone.log> could not be read correctly.\n");
  EXPECT_EQ(o.status, 24);
  EXPECT_TRUE(wellFormed(s.path("out/Ctx.xml")));
  EXPECT_TRUE(test::fileExists(s.path("out/Ctx.html")));
  EXPECT_TRUE(wellFormed(s.path("out/SdPass.xml")));
}

TEST(EndToEnd, UnknownTestCase) {
  Scenario s("shop");
  Outcome o = s.run(shopArgs("-tcase", "SdPass"));
  EXPECT_EQ(o.out, "TestCase <SdPass> could not be found in inofile.");
  EXPECT_EQ(o.status, 22);
  EXPECT_FALSE(test::fileExists(s.path("out/SdPass.xml")));
}

TEST(EndToEnd, StatusOfEachTestCase) {
  struct Case {
    const char* name;
    int status;
  };
  const Case cases[] = {{"Pkg.Ctx.SdPass", 0},
                        {"Pkg.Ctx.CodeFail", 10},
                        {"Pkg.Ctx.Missing", 11},
                        {"Pkg.Ctx.Undef", 12},
                        {"Pkg.Ctx.NoEnd", 13}};
  for (const Case& c : cases) {
    Scenario s("shop");
    Outcome o = s.run(shopArgs("-tcase", c.name));
    EXPECT_EQ(o.out, "") << c.name;
    EXPECT_EQ(o.status, c.status) << c.name;
    std::string stem = s.path("out/" + std::string(c.name).substr(8));
    EXPECT_TRUE(wellFormed(stem + ".xml")) << c.name;
    EXPECT_TRUE(test::fileExists(stem + ".html")) << c.name;
  }
}

TEST(EndToEnd, ContextWritesEveryMemberThenItself) {
  Scenario s("shop");
  Outcome o = s.run(shopArgs("-tcontext", "Pkg.Ctx"));
  EXPECT_EQ(o.out, "");
  EXPECT_EQ(o.status, 10);
  EXPECT_EQ(test::filesIn(s.path("out")),
            (std::vector<std::string>{"CodeFail.html", "CodeFail.ver", "CodeFail.xml", "Ctx.html",
                                      "Ctx.xml", "Elsewhere.ver", "Missing.html", "Missing.xml",
                                      "NoEnd.html", "NoEnd.xml", "SdPass.html", "SdPass.ver",
                                      "SdPass.xml", "Undef.html", "Undef.ver", "Undef.xml"}));
  EXPECT_EQ(maskedXml(s.path("out/Ctx.xml")), test::readFile(s.path("expected/Ctx.xml")));
  EXPECT_EQ(maskedXml(s.path("out/SdPass.xml")), test::readFile(s.path("expected/SdPass.xml")));
}

// A short-form log over half-edited sources: calls without a closing
// parenthesis (one file with CRLF line ends) and a sequence diagram macro
// named without a call.
TEST(EndToEnd, HalfEditedStatementsInShortForm) {
  // The full-form log records the same statements at the same places, so it
  // must give the same documents.
  for (const char* log : {"results.log", "results_full.log"}) {
    Scenario s("halfedit");
    Outcome o = s.run({"-infofile", "half.info", "-resultfile", log, "-outdirectory", "out",
                       "-tcontext", "Pkg.Half"});
    EXPECT_EQ(o.out, "") << log;
    EXPECT_EQ(o.status, 10) << log;
    for (const char* name : {"Half", "HalfCode", "HalfFlow"}) {
      EXPECT_EQ(maskedXml(s.path("out/" + std::string(name) + ".xml")),
                test::readFile(s.path("expected/" + std::string(name) + ".xml")))
          << log << ": " << name;
    }
  }
}

TEST(EndToEnd, EmptyContextIsUndefined) {
  Scenario s("shop");
  Outcome o = s.run(shopArgs("-tcontext", "Pkg.Nobody"));
  EXPECT_EQ(o.out, "");
  EXPECT_EQ(o.status, 12);
  EXPECT_TRUE(wellFormed(s.path("out/Nobody.xml")));
}

TEST(EndToEnd, MissingOutputDirectoryIsCreatedOnce) {
  Scenario s("shop");
  Outcome o = s.run({"-infofile", "shop.info", "-resultfile", "results.log", "-outdirectory",
                     "fresh", "-tcase", "Pkg.Ctx.Missing"});
  EXPECT_EQ(o.status, 11);
  EXPECT_TRUE(wellFormed(s.path("fresh/Missing.xml")));
  o = s.run({"-infofile", "shop.info", "-resultfile", "results.log", "-outdirectory", "no/parent",
             "-tcase", "Pkg.Ctx.Missing"});
  EXPECT_EQ(o.out, "");
  EXPECT_EQ(o.status, 25);
  EXPECT_FALSE(test::fileExists(s.path("no")));
}

TEST(EndToEnd, OutputDirectoryWithBackslashesAndQuotes) {
  Scenario s("shop");
  fs::create_directories(s.path("deep/er"));
  Outcome o = s.run({"-infofile", "shop.info", "-resultfile", "results.log", "-outdirectory",
                     "deep\\\"er\"", "-tcase", "Pkg.Ctx.Missing"});
  EXPECT_EQ(o.status, 11);
  EXPECT_TRUE(wellFormed(s.path("deep/er/Missing.xml")));
  EXPECT_TRUE(test::fileExists(s.path("deep/er/Missing.html")));
}

TEST(EndToEnd, MissingXsltprocLeavesXmlAndWarnsOnStderr) {
  Scenario s("shop");
  test::TempDir emptyPath;
  Outcome o = s.run(shopArgs("-tcase", "Pkg.Ctx.SdPass"), emptyPath.path());
  EXPECT_EQ(o.out, "");
  EXPECT_EQ(o.status, 0);
  EXPECT_TRUE(wellFormed(s.path("out/SdPass.xml")));
  EXPECT_FALSE(test::fileExists(s.path("out/SdPass.html")));
  EXPECT_EQ(o.err, "qendor: xsltproc not found: 1 HTML report not written\n");
}

// A context run without xsltproc says so once, at its end, with the count
// of the reports it could not render; stdout and the exit status stay.
TEST(EndToEnd, MissingXsltprocIsToldOnceForAContext) {
  Scenario s("shop");
  test::TempDir emptyPath;
  Outcome o = s.run(shopArgs("-tcontext", "Pkg.Ctx"), emptyPath.path());
  EXPECT_EQ(o.out, "");
  EXPECT_EQ(o.status, 10);
  EXPECT_EQ(o.err, "qendor: xsltproc not found: 6 HTML reports not written\n");
  EXPECT_EQ(test::filesIn(s.path("out")),
            (std::vector<std::string>{"CodeFail.ver", "CodeFail.xml", "Ctx.xml", "Elsewhere.ver",
                                      "Missing.xml", "NoEnd.xml", "SdPass.ver", "SdPass.xml",
                                      "Undef.ver", "Undef.xml"}));
}

// An xsltproc that is there but cannot be started is told for each report.
TEST(EndToEnd, UnstartableXsltprocIsToldForEachReport) {
  Scenario s("shop");
  test::TempDir bin;
  bin.write("xsltproc", "not a program");  // not executable
  Outcome o = s.run(shopArgs("-tcase", "Pkg.Ctx.SdPass"), bin.path());
  EXPECT_EQ(o.status, 0);
  EXPECT_EQ(o.err,
            "qendor: HTML report out/SdPass.html not written: xsltproc could not be started\n");
}

TEST(EndToEnd, StaleHtmlIsDeletedWhenRenderingFails) {
  Scenario s("shop");
  s.dir().write("out/SdPass.html", "old report");
  test::TempDir emptyPath;
  s.run(shopArgs("-tcase", "Pkg.Ctx.SdPass"), emptyPath.path());
  EXPECT_FALSE(test::fileExists(s.path("out/SdPass.html")));
}

TEST(EndToEnd, EachLanguageUsesItsStylesheet) {
  struct Case {
    const char* option;
    const char* lang;
  };
  const Case cases[] = {{"ENU", "lang=\"en\""},    {"CHS", "lang=\"zh-CN\""},
                        {"CHT", "lang=\"zh-TW\""}, {"KOR", "lang=\"ko\""},
                        {"JPN", "lang=\"ja\""},    {"XYZ", "lang=\"en\""}};
  for (const Case& c : cases) {
    Scenario s("shop");
    std::vector<std::string> args = shopArgs("-tcontext", "Pkg.Ctx");
    args.insert(args.end(), {"-language", c.option});
    Outcome o = s.run(args);
    EXPECT_EQ(o.status, 10) << c.option;
    std::string html = test::readFile(s.path("out/Ctx.html"));
    EXPECT_NE(html.find(c.lang), std::string::npos) << c.option;
  }
}

TEST(EndToEnd, ShellMetacharactersInPathsRunNothing) {
  Scenario s("shop");
  const std::string weird = "out $(touch pwned) `touch pwned2`; | 'q' \"";
  const std::string weirdOnDisk = "out $(touch pwned) `touch pwned2`; | 'q' ";
  fs::create_directories(s.path(weirdOnDisk));
  fs::copy(s.path("out/SdPass.ver"), s.path(weirdOnDisk + "/SdPass.ver"));
  Outcome o = s.run({"-infofile", "shop.info", "-resultfile", "results.log", "-outdirectory", weird,
                     "-tcase", "Pkg.Ctx.SdPass"});
  EXPECT_EQ(o.out, "");
  EXPECT_EQ(o.status, 0);
  EXPECT_TRUE(wellFormed(s.path(weirdOnDisk + "/SdPass.xml")));
  EXPECT_TRUE(test::fileExists(s.path(weirdOnDisk + "/SdPass.html")));
  EXPECT_FALSE(test::fileExists(s.path("pwned")));
  EXPECT_FALSE(test::fileExists(s.path("pwned2")));
}

TEST(EndToEnd, TestCaseSharingTheContextsShortNameEndsWithTheContextsReport) {
  Scenario s("shop");
  s.dir().write("same.info", "TESTCASE Pkg.Ctx.Ctx 1\n");
  s.dir().write("same.log",
                "FULLASSERTION=a.c,1,1,-----ZKR_ASSERT_TRUE(\"Starting test case: Ctx\");\n"
                "FULLASSERTION=a.c,2,1,-----ZKR_ASSERT_TRUE(\"Finished test case: Ctx\");\n");
  Outcome o = s.run({"-infofile", "same.info", "-resultfile", "same.log", "-outdirectory", "out",
                     "-tcontext", "Pkg.Ctx"});
  EXPECT_EQ(o.status, 0);
  std::string xml = test::readFile(s.path("out/Ctx.xml"));
  EXPECT_NE(xml.find("kind=\"rk_testcontext\""), std::string::npos);
  EXPECT_TRUE(test::fileExists(s.path("out/Ctx.html")));
}

TEST(EndToEnd, StartedWithChildSignalIgnoredStillWaitsForXsltproc) {
  Scenario s("shop");
  // An ignored SIGCHLD stays ignored across exec; children would be reaped
  // before the program could wait for them.
  std::vector<std::string> args = {"-e", "$SIG{CHLD} = 'IGNORE'; exec @ARGV", QENDOR_BINARY};
  for (const std::string& arg : shopArgs("-tcontext", "Pkg.Ctx")) args.push_back(arg);
  Outcome o = test::runProgram("/usr/bin/perl", args, s.dir().path());
  EXPECT_EQ(o.status, 10);
  EXPECT_EQ(o.err, "");
  EXPECT_TRUE(test::fileExists(s.path("out/Ctx.html")));
  EXPECT_TRUE(test::fileExists(s.path("out/SdPass.html")));
}

TEST(EndToEnd, UnclosedFragmentEndsWithUnexpectedError) {
  Scenario s("shop");
  s.dir().write("out/SdPass.ver", "SD_TEST\nALT_BEGIN(1)\nALT_OPERAND_BEGIN(1)\n7\n");
  Outcome o = s.run(shopArgs("-tcase", "Pkg.Ctx.SdPass"));
  EXPECT_EQ(o.out, "Unexpected error in qendor");
  EXPECT_EQ(o.status, 30);
}

}  // namespace
}  // namespace qendor
