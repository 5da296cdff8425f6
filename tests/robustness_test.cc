// Runs the built program on hostile inputs: whatever it is given, it must end
// with one of its exit statuses and leave only well-formed XML files behind
// and an HTML file beside each of them. The reports' names are tested in
// robustness_names_test.cc.
#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <vector>

#include "tests/robustness_support.h"
#include "tests/test_support.h"

namespace qendor {
namespace {

namespace fs = std::filesystem;

using test::args;
using test::checkReports;
using test::finishRecord;
using test::kDocumentedStatuses;
using test::Outcome;
using test::randomBytes;
using test::rootAttribute;
using test::startRecord;
using test::Workspace;

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

}  // namespace
}  // namespace qendor
