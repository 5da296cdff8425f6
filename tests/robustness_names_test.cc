// Runs the built program on hostile names: it must write its reports under
// their own names and start nothing but xsltproc.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/robustness_support.h"
#include "tests/test_support.h"

namespace qendor {
namespace {

using test::args;
using test::checkReports;
using test::finishRecord;
using test::Outcome;
using test::rootAttribute;
using test::startRecord;
using test::wellFormed;
using test::Workspace;

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
