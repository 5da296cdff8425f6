// Runs the built program on hostile inputs: whatever it is given, it must end
// with one of its exit statuses, leave only well-formed XML files behind and
// an HTML file beside each of them, write its reports under their own names
// and start nothing but xsltproc.
#include <gtest/gtest.h>

#include <libxml/parser.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "tests/test_support.h"

namespace qendor {
namespace {

namespace fs = std::filesystem;

// Every exit status the program documents.
const std::set<int> kDocumentedStatuses = {0, 10, 11, 12, 13, 20, 21, 22, 24, 25, 30};

using Outcome = test::ProgramOutcome;

// Runs the program with `args` inside `workDir` under a fixed environment.
Outcome runQendor(const std::vector<std::string>& args, const std::string& workDir,
                  const std::string& path = "/usr/bin:/bin") {
  return test::runProgram(QENDOR_BINARY, args, workDir, path);
}

std::vector<std::string> args(const std::string& info, const std::string& result,
                              const std::string& outDir, const std::string& which,
                              const std::string& name) {
  return {"-infofile", info, "-resultfile", result, "-outdirectory", outDir, which, name};
}

// Parsed with libxml2's default limits, as xmllint --noout reads it.
bool wellFormed(const std::string& path) {
  xmlDoc* doc =
      xmlReadFile(path.c_str(), nullptr, XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING);
  if (!doc) return false;
  xmlFreeDoc(doc);
  return true;
}

// Every XML file in `dir` is well-formed and, when `withHtml`, has its HTML
// file beside it. Returns how many XML files there are.
size_t checkReports(const std::string& dir, bool withHtml) {
  size_t count = 0;
  for (const std::string& name : test::filesIn(dir)) {
    if (name.size() < 4 || name.compare(name.size() - 4, 4, ".xml") != 0) continue;
    ++count;
    const std::string stem = dir + "/" + name.substr(0, name.size() - 4);
    EXPECT_TRUE(wellFormed(stem + ".xml")) << name;
    if (withHtml) {
      EXPECT_TRUE(test::fileExists(stem + ".html")) << name;
    }
  }
  return count;
}

// The attribute `name` of the root element of an XML file.
std::string rootAttribute(const std::string& path, const char* name) {
  xmlDoc* doc =
      xmlReadFile(path.c_str(), nullptr, XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING);
  if (!doc) return "<unreadable>";
  xmlNode* root = xmlDocGetRootElement(doc);
  xmlNode* element = root;
  // The first TestCaseResult carries the test case's own attributes.
  for (xmlNode* child = root ? root->children : nullptr; child; child = child->next) {
    if (child->type == XML_ELEMENT_NODE &&
        std::string(reinterpret_cast<const char*>(child->name)) == "TestCaseResult") {
      element = child;
      break;
    }
  }
  xmlChar* value = element ? xmlGetProp(element, reinterpret_cast<const xmlChar*>(name)) : nullptr;
  std::string text = value ? reinterpret_cast<const char*>(value) : "<absent>";
  xmlFree(value);
  xmlFreeDoc(doc);
  return text;
}

// A folder holding the program's inputs and an output folder "out".
class Workspace {
 public:
  Workspace() { fs::create_directories(dir_.file("out")); }
  std::string path(const std::string& name) const { return dir_.file(name); }
  void write(const std::string& name, const std::string& content) const {
    dir_.write(name, content);
  }
  Outcome run(const std::vector<std::string>& arguments,
              const std::string& envPath = "/usr/bin:/bin") const {
    return runQendor(arguments, dir_.path(), envPath);
  }

 private:
  test::TempDir dir_;
};

std::string startRecord(int number, const std::string& name) {
  return "FULLASSERTION=a.c,1," + std::to_string(number) +
         ",-----ZKR_ASSERT_TRUE(\"Starting test case: " + name + "\");\n";
}
std::string finishRecord(const std::string& name, int result = 1) {
  return "FULLASSERTION=a.c,2," + std::to_string(result) +
         ",-----ZKR_ASSERT_TRUE(\"Finished test case: " + name + "\");\n";
}

std::string randomBytes(std::mt19937& engine, size_t size) {
  std::string bytes(size, '\0');
  for (char& byte : bytes) byte = static_cast<char>(engine() & 0xFF);
  return bytes;
}

// ---------------------------------------------------------------------------
// Hostile inputs.

TEST(Robustness, RandomBytesInEveryInput) {
  std::mt19937 engine(20240611u);
  for (int round = 0; round < 4; ++round) {
    Workspace w;
    w.write("run.info", "TESTCASE Pkg.Ctx.Rnd 1 Sd\n" + randomBytes(engine, 4096) +
                            "\nTESTCASE Pkg.Ctx.Two 2\n");
    w.write("run.log", startRecord(1, "Rnd") + randomBytes(engine, 8192) + "\n" +
                           "FULLASSERTION=" + randomBytes(engine, 300) + "-----" +
                           randomBytes(engine, 300) + "\n" + finishRecord("Rnd"));
    w.write("out/Rnd.ver", "SD_TEST\n" + randomBytes(engine, 2048));
    w.write("out/Two.ver", "STATECHART_TEST\n" + randomBytes(engine, 2048));
    const Outcome o = w.run(args("run.info", "run.log", "out", "-tcontext", "Pkg.Ctx"));
    EXPECT_EQ(kDocumentedStatuses.count(o.status), 1u) << o.status;
    // The context's report is the last one written; it is there unless the
    // run ended with an unexpected error before.
    if (o.status != 30) {
      EXPECT_TRUE(test::fileExists(w.path("out/Ctx.xml")));
    }
    checkReports(w.path("out"), true);
    EXPECT_EQ(o.err, "") << "round " << round;
  }
}

TEST(Robustness, RandomBytesWithoutAnyRecordLine) {
  std::mt19937 engine(7u);
  Workspace w;
  std::string noise = randomBytes(engine, 100000);
  // No line may begin a record: the log then holds no assertion at all.
  std::replace(noise.begin(), noise.end(), '\n', ' ');
  w.write("run.info", "TESTCASE Pkg.Ctx.Rnd 1\n");
  w.write("run.log", noise);
  const Outcome o = w.run(args("run.info", "run.log", "out", "-tcase", "Pkg.Ctx.Rnd"));
  // Without a line that decides the record form the log counts as unread.
  EXPECT_EQ(o.out, "resultfile <run.log> could not be read correctly.\n");
  EXPECT_EQ(o.status, 24);
  EXPECT_EQ(checkReports(w.path("out"), true), 1u);
  EXPECT_EQ(rootAttribute(w.path("out/Rnd.xml"), "status"), "ERROR");
}

TEST(Robustness, NulBytesInRecordsAndInTheInfoFile) {
  Workspace w;
  w.write("run.info", std::string("ActiveProject Sh\0op\nTESTCASE Pkg.Ctx.Nul 1\n\0\0\n", 41));
  const std::string nul(1, '\0');
  w.write("run.log", startRecord(1, "Nul") + "FULLASSERTION=a" + nul + ".c,5,0,de" + nul +
                         "tail-----ZKR_ASSERT_TRUE(\"x" + nul + "y\");\n" + nul + nul + "\n" +
                         finishRecord("Nul"));
  const Outcome o = w.run(args("run.info", "run.log", "out", "-tcase", "Pkg.Ctx.Nul"));
  EXPECT_EQ(o.out, "");
  EXPECT_EQ(o.status, 12);
  EXPECT_EQ(o.err, "");
  EXPECT_EQ(checkReports(w.path("out"), true), 1u);
  const std::string xml = test::readFile(w.path("out/Nul.xml"));
  EXPECT_EQ(xml.find('\0'), std::string::npos);
  // A NUL inside a value is written as the replacement character.
  EXPECT_NE(xml.find("Sh&#xFFFD;op"), std::string::npos) << xml;
}

TEST(Robustness, FiftyMegabyteLine) {
  Workspace w;
  const std::string huge(50u << 20, 'x');
  w.write("run.info", "TESTCASE Pkg.Ctx.Big 1\n");
  w.write("run.log", startRecord(1, "Big") + "FULLASSERTION=a.c,3,0," + huge +
                         "-----ZKR_ASSERT_TRUE(\"" + huge + "\");\n" + huge + "\n" +
                         finishRecord("Big"));
  const Outcome o = w.run(args("run.info", "run.log", "out", "-tcase", "Pkg.Ctx.Big"));
  EXPECT_EQ(o.out, "");
  EXPECT_EQ(o.status, 10);
  EXPECT_EQ(o.err, "");
  EXPECT_EQ(checkReports(w.path("out"), true), 1u);
  // The long values are cut, so the document stays readable.
  EXPECT_LT(fs::file_size(w.path("out/Big.xml")), 2u << 20);
}

TEST(Robustness, HundredThousandTestCasesOfOneRecordEach) {
  // A hundred thousand test cases in a thousand contexts, each with only its
  // start record (none of them ends).
  Workspace w;
  const int count = 100000;
  std::string info, log;
  info.reserve(count * 40);
  log.reserve(count * 80);
  for (int number = 1; number <= count; ++number) {
    const std::string name = "C" + std::to_string(number);
    info += "TESTCASE Pkg.G" + std::to_string(number % 1000) + "." + name + " " +
            std::to_string(number) + "\n";
    log += startRecord(number, name);
  }
  w.write("run.info", info);
  w.write("run.log", log);
  Outcome o = w.run(args("run.info", "run.log", "out", "-tcase", "Pkg.G999.C99999"));
  EXPECT_EQ(o.out, "");
  EXPECT_EQ(o.status, 13);
  EXPECT_EQ(o.err, "");
  EXPECT_EQ(test::filesIn(w.path("out")), (std::vector<std::string>{"C99999.html", "C99999.xml"}));
  EXPECT_EQ(checkReports(w.path("out"), true), 1u);
  EXPECT_EQ(rootAttribute(w.path("out/C99999.xml"), "fullname"), "Pkg.G999.C99999");
  // One context of a hundred of them: one document each and one for the
  // context (a report per test case and an xsltproc run each make a context
  // of all hundred thousand a matter of minutes, not of robustness).
  fs::remove_all(w.path("out"));
  o = w.run(args("run.info", "run.log", "out", "-tcontext", "Pkg.G7"));
  EXPECT_EQ(o.out, "");
  EXPECT_EQ(o.status, 10);
  EXPECT_EQ(o.err, "");
  EXPECT_EQ(checkReports(w.path("out"), true), 101u);
  const std::string context = test::readFile(w.path("out/G7.xml"));
  size_t results = 0;
  for (size_t at = context.find("<TestCaseResult "); at != std::string::npos;
       at = context.find("<TestCaseResult ", at + 1)) {
    ++results;
  }
  EXPECT_EQ(results, 100u);
  EXPECT_EQ(rootAttribute(w.path("out/C99007.xml"), "status"), "ERROR");
}

TEST(Robustness, CrlfEverywhere) {
  Workspace w;
  fs::copy(std::string(QENDOR_SOURCE_DIR) + "/tests/scenarios/shop", w.path("shop"),
           fs::copy_options::recursive);
  for (const char* name : {"shop/shop.info", "shop/results.log", "shop/out/SdPass.ver",
                           "shop/out/CodeFail.ver", "shop/out/Undef.ver"}) {
    std::string text = test::readFile(w.path(name)), crlf;
    for (char c : text) {
      if (c == '\n') crlf += '\r';
      crlf += c;
    }
    w.write(name, crlf);
  }
  const Outcome o =
      w.run(args("shop/shop.info", "shop/results.log", "shop/out", "-tcontext", "Pkg.Ctx"));
  EXPECT_EQ(o.out, "");
  EXPECT_EQ(kDocumentedStatuses.count(o.status), 1u) << o.status;
  EXPECT_EQ(o.err, "");
  EXPECT_EQ(checkReports(w.path("shop/out"), true), 6u);
  // The carriage returns stay part of the names and values they end.
  EXPECT_TRUE(test::fileExists(w.path("shop/out/Ctx.xml")));
  EXPECT_EQ(rootAttribute(w.path("shop/out/Ctx.xml"), "activeProject"), "<absent>");
}

TEST(Robustness, ResultFileThatIsADirectory) {
  Workspace w;
  w.write("run.info", "TESTCASE Pkg.Ctx.Dir 1\n");
  fs::create_directories(w.path("folder.log"));
  const Outcome o = w.run(args("run.info", "folder.log", "out", "-tcontext", "Pkg.Ctx"));
  EXPECT_EQ(kDocumentedStatuses.count(o.status), 1u) << o.status;
  EXPECT_EQ(o.err, "");
  EXPECT_EQ(checkReports(w.path("out"), true), 2u);
}

TEST(Robustness, InfoFileThatIsADirectory) {
  Workspace w;
  fs::create_directories(w.path("folder.info"));
  w.write("run.log", "");
  const Outcome o = w.run(args("folder.info", "run.log", "out", "-tcontext", "Pkg.Ctx"));
  EXPECT_EQ(kDocumentedStatuses.count(o.status), 1u) << o.status;
  EXPECT_EQ(checkReports(w.path("out"), true), static_cast<size_t>(o.status == 21 ? 0 : 1));
}

TEST(Robustness, UnreadableFiles) {
  Workspace w;
  w.write("run.info", "TESTCASE Pkg.Ctx.Locked 1\n");
  w.write("run.log", startRecord(1, "Locked") + finishRecord("Locked"));
  // Links to nothing cannot be opened by anybody.
  fs::create_symlink(w.path("nowhere.info"), w.path("dangling.info"));
  fs::create_symlink(w.path("nowhere.log"), w.path("dangling.log"));
  Outcome o = w.run(args("dangling.info", "run.log", "out", "-tcontext", "Pkg.Ctx"));
  EXPECT_EQ(o.out, "infofile <dangling.info> could not be read correctly.\n");
  EXPECT_EQ(o.status, 21);
  EXPECT_EQ(test::filesIn(w.path("out")), std::vector<std::string>{});
  o = w.run(args("run.info", "dangling.log", "out", "-tcontext", "Pkg.Ctx"));
  EXPECT_EQ(o.out, "resultfile <dangling.log> could not be read correctly.\n");
  EXPECT_EQ(o.status, 24);
  EXPECT_EQ(checkReports(w.path("out"), true), 2u);

  // Files without any permission; the superuser still reads them.
  fs::remove_all(w.path("out"));
  chmod(w.path("run.info").c_str(), 0);
  chmod(w.path("run.log").c_str(), 0);
  const bool readable = access(w.path("run.info").c_str(), R_OK) == 0;
  o = w.run(args("run.info", "run.log", "out", "-tcontext", "Pkg.Ctx"));
  EXPECT_EQ(o.status, readable ? 0 : 21);
  chmod(w.path("run.info").c_str(), 0644);
  o = w.run(args("run.info", "run.log", "out", "-tcontext", "Pkg.Ctx"));
  EXPECT_EQ(o.status, readable ? 0 : 24);
  EXPECT_EQ(checkReports(w.path("out"), true), 2u);
}

TEST(Robustness, VerificationFilesWithUnbalancedFragmentsAndMissingSuffixes) {
  struct Case {
    const char* ver;
    int status;
  };
  // The recorded messages are 1 and then 2.
  const Case cases[] = {
      {"SD_TEST\nALT_BEGIN(1)\nALT_OPERAND_BEGIN(1)\n7\n", 30},
      {"SD_TEST\nALT_OPERAND_BEGIN\n7\nALT_END\n1\n2\n", 30},
      {"SD_TEST\nOPT_OPERAND_BEGIN(\n9\n1\n2\n", 30},
      {"SD_TEST\nLOOP_OPERAND_BEGIN(4)\n8\n", 30},
      {"SD_TEST\nLOOP_OPERAND_END(4)\n1\n2\n", 30},
      {"SD_TEST\n1\nLOOP_OPERAND_END\n2\n", 30},
      {"SD_TEST\nBREAK_OPERAND_BEGIN(2)\n5\nBREAK_END(2)\n6\n", 30},
      {"SD_TEST\nBREAK_END\n", 30},
      {"SD_TEST\nALT_END(1)\nOPT_END(1)\nLOOP_END(1)\n1\n2\n", 0},
      {"SD_TEST\nCONSIDER_BEGIN(\nSTRICT_BEGIN\n1\n2\nSTRICT_END(\n", 0},
      {"SD_TEST\nPAR_BEGIN(1)\n1\n2\n", 0},
      {"STATECHART_TEST\nSTATE_NAME:\nOUT_TRANSITIONS:\nTRANSITION_TARGET:\n", 0},
      {"FLOWCHART_TEST\nTRANSITION_NAME:\n", 0},
      {"", 0},
  };
  int index = 0;
  for (const Case& c : cases) {
    Workspace w;
    w.write("run.info", "TESTCASE Pkg.Ctx.Sd 1 Diagram\n");
    w.write("run.log",
            startRecord(1, "Sd") +
                "FULLASSERTION=a.c,3,1,-----ZKR_ASSERT_SD(\"D\", \"m1\", \"x - progress 1/2\");\n"
                "FULLASSERTION=a.c,4,1,-----ZKR_ASSERT_SD(\"D\", \"m2\", \"y - progress 2/2\");\n" +
                finishRecord("Sd"));
    w.write("out/Sd.ver", c.ver);
    const Outcome o = w.run(args("run.info", "run.log", "out", "-tcase", "Pkg.Ctx.Sd"));
    EXPECT_EQ(o.status, c.status) << "case " << index << ": " << c.ver;
    EXPECT_EQ(o.out, c.status == 30 ? "Unexpected error in qendor" : "") << index;
    checkReports(w.path("out"), true);
    ++index;
  }
}

// The report driver creates the XML file empty before it builds the document;
// an unexpected error while building must not leave it behind.
TEST(Robustness, NoEmptyXmlFileAfterAnUnexpectedError) {
  Workspace w;
  w.write("run.info", "TESTCASE Pkg.Ctx.Sd 1 Diagram\n");
  w.write("run.log",
          startRecord(1, "Sd") +
              "FULLASSERTION=a.c,3,1,-----ZKR_ASSERT_SD(\"D\", \"m\", \"x - progress 1/2\");\n" +
              finishRecord("Sd"));
  w.write("out/Sd.ver", "SD_TEST\nBREAK_END\n");
  const Outcome o = w.run(args("run.info", "run.log", "out", "-tcase", "Pkg.Ctx.Sd"));
  EXPECT_EQ(o.status, 30);
  EXPECT_EQ(test::filesIn(w.path("out")), std::vector<std::string>{"Sd.ver"});
}

// ---------------------------------------------------------------------------
// Names.

std::string contextLog(const std::vector<std::string>& shortNames) {
  std::string log;
  int number = 1;
  for (const std::string& name : shortNames) {
    log += startRecord(number, name) + finishRecord(name);
    ++number;
  }
  return log;
}

TEST(Robustness, ReportsLandUnderTheirOwnNames) {
  const std::vector<std::string> names = {"Case%41", "CaseA", "P%2Fq", "H#x",
                                          "Q?y",     "Pc%",   "Pz%zz"};
  Workspace w;
  std::string info;
  for (size_t i = 0; i < names.size(); ++i) {
    info += "TESTCASE Pkg.Ctx." + names[i] + " " + std::to_string(i + 1) + "\n";
  }
  w.write("run.info", info);
  w.write("run.log", contextLog(names));
  const Outcome o = w.run(args("run.info", "run.log", "out", "-tcontext", "Pkg.Ctx"));
  EXPECT_EQ(o.status, 0);
  EXPECT_EQ(o.out, "");
  for (const std::string& name : names) {
    // Each XML file holds its own test case, under its literal name.
    EXPECT_EQ(rootAttribute(w.path("out/" + name + ".xml"), "fullname"), "Pkg.Ctx." + name);
  }
  // "%2F" did not become a folder for the XML file.
  EXPECT_FALSE(test::fileExists(w.path("out/P/q.xml")));
  for (const char* name : {"H#x", "Q?y", "Pc%", "Pz%zz", "CaseA", "Ctx"}) {
    EXPECT_TRUE(test::fileExists(w.path("out/" + std::string(name) + ".html"))) << name;
  }
}

// xsltproc reads the name after "-o" as a URI and decodes "%XX" in it, which
// would write the HTML report of Case%41 to CaseA.html and that of P%2Fq to
// P/q.html.
TEST(Robustness, HtmlReportsLandUnderNamesWithPercentEscapes) {
  Workspace w;
  w.write("run.info", "TESTCASE Pkg.Ctx.Case%41 1\nTESTCASE Pkg.Ctx.P%2Fq 2\n");
  w.write("run.log", contextLog({"Case%41", "P%2Fq"}));
  const Outcome o = w.run(args("run.info", "run.log", "out", "-tcontext", "Pkg.Ctx"));
  EXPECT_EQ(o.status, 0);
  EXPECT_EQ(test::filesIn(w.path("out")),
            (std::vector<std::string>{"Case%41.html", "Case%41.xml", "Ctx.html", "Ctx.xml",
                                      "P%2Fq.html", "P%2Fq.xml"}));
}

TEST(Robustness, ShellMetacharactersInNamesRunNothingButXsltproc) {
  Workspace w;
  // Test case names cannot hold blanks (the info file separates its fields
  // by them); the context name given on the command line can.
  const std::vector<std::string> names = {"a$(touch${IFS}m1)", "b`touch${IFS}m2`",
                                          "c;touch${IFS}m3", "d|touch${IFS}m4", "e'q'\"x\"&m5"};
  std::string info;
  for (size_t i = 0; i < names.size(); ++i) {
    info += "TESTCASE Pkg.Ctx." + names[i] + " " + std::to_string(i + 1) + "\n";
  }
  w.write("run.info", info);
  w.write("run.log", contextLog(names));
  const std::string outDir = "o u t;$(touch m8)`touch m9`|'q'";
  Outcome o = w.run(args("run.info", "run.log", outDir, "-tcontext", "Pkg.Ctx"));
  EXPECT_EQ(o.status, 0);
  EXPECT_EQ(o.out, "");
  EXPECT_EQ(o.err, "");
  EXPECT_EQ(test::filesIn(w.path(outDir)),
            (std::vector<std::string>{
                "Ctx.html", "Ctx.xml", "a$(touch${IFS}m1).html", "a$(touch${IFS}m1).xml",
                "b`touch${IFS}m2`.html", "b`touch${IFS}m2`.xml", "c;touch${IFS}m3.html",
                "c;touch${IFS}m3.xml", "d|touch${IFS}m4.html", "d|touch${IFS}m4.xml",
                // Double quotes are taken out of every path.
                "e'q'x&m5.html", "e'q'x&m5.xml"}));
  EXPECT_EQ(checkReports(w.path(outDir), true), 6u);

  // A context name with blanks and every kind of shell syntax.
  const std::string context = "Pkg.My Ctx $(touch m6) `touch m7`; x | y 'z' && touch m10";
  o = w.run(args("run.info", "run.log", outDir, "-tcontext", context));
  EXPECT_EQ(o.status, 12);
  EXPECT_EQ(o.err, "");
  const std::string report =
      w.path(outDir + "/My Ctx $(touch m6) `touch m7`; x | y 'z' && touch m10");
  EXPECT_TRUE(wellFormed(report + ".xml"));
  EXPECT_TRUE(test::fileExists(report + ".html"));

  for (const char* marker : {"m1", "m2", "m3", "m4", "m5", "m6", "m7", "m8", "m9", "m10"}) {
    EXPECT_FALSE(test::fileExists(w.path(marker))) << marker;
    EXPECT_FALSE(test::fileExists(w.path(outDir + "/" + marker))) << marker;
  }
}

}  // namespace
}  // namespace qendor
