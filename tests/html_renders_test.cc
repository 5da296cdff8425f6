// Renders against a fake xsltproc: its arguments, its failures and what is
// told of them; the stylesheet of each language and the number of slots.
#include "report/html_renders.h"

#include <gtest/gtest.h>

#include <sched.h>

#include <string>
#include <utility>

#include "tests/render_fixture.h"
#include "tests/test_support.h"

namespace qendor {
namespace {

TEST_F(RenderHtmlTest, RunsXsltprocWithExactlyTheseArguments) {
  installFake(0);
  run().programDirectory = "/opt/tools/";
  run().reportLanguage = kKor;
  const std::string out = dir_.file("out");
  mkdir(out.c_str(), 0755);
  render(out + "\\CaseOne.xml", out + "\\CaseOne.html");
  EXPECT_EQ(
      test::readFile(args_),
      "-o\n" + out + "/CaseOne.html\n/opt/tools/TestResult2KOR.xslt\n" + out + "/CaseOne.xml\n");
  EXPECT_EQ(stdout_, "");
  EXPECT_EQ(stderr_, "");
}

TEST_F(RenderHtmlTest, ShellCharactersReachXsltprocUntouched) {
  installFake(0);
  run().programDirectory = "/opt/my tools/";
  const std::string out = dir_.file("a b $HOME `touch pwned` 'q' ;x");
  mkdir(out.c_str(), 0755);
  render(out + "\\\"C\".xml", out + "\\\"C\".html");
  EXPECT_EQ(test::readFile(args_),
            "-o\n" + out + "/C.html\n/opt/my tools/TestResult2ENU.xslt\n" + out + "/C.xml\n");
  EXPECT_EQ(test::readFile(out + "/C.html"), "html");
  EXPECT_FALSE(test::fileExists("pwned"));
  EXPECT_EQ(stderr_, "");
}

TEST_F(RenderHtmlTest, NameWithPercentIsWrittenThroughStandardOutput) {
  // xsltproc would decode "%41" in the name after "-o"; the report is its
  // standard output instead, opened on the literal name.
  installFake(0);
  dir_.write("bin/xsltproc", "#!/bin/sh\nfor a in \"$@\"; do printf '%s\\n' \"$a\" >> '" + args_ +
                                 "'; done\nprintf page\n");
  run().programDirectory = "/opt/tools/";
  const std::string html = dir_.file("Case%41.html");
  render(dir_.file("Case%41.xml"), html);
  EXPECT_EQ(test::readFile(args_),
            "/opt/tools/TestResult2ENU.xslt\n" + dir_.file("Case%41.xml") + "\n");
  EXPECT_EQ(test::readFile(html), "page");
  EXPECT_FALSE(test::fileExists(dir_.file("CaseA.html")));
  EXPECT_EQ(stdout_, "");
  EXPECT_EQ(stderr_, "");
}

TEST_F(RenderHtmlTest, FailedRenderThroughStandardOutputLeavesNoFile) {
  installFake(0);
  dir_.write("bin/xsltproc", "#!/bin/sh\nprintf half\nexit 5\n");
  const std::string html = dir_.file("P%2Fq.html");
  render(dir_.file("P%2Fq.xml"), html);
  EXPECT_FALSE(test::fileExists(html));
  EXPECT_EQ(stderr_, "qendor: HTML report " + html + " not written: xsltproc failed\n");
}

TEST_F(RenderHtmlTest, BareProgramNameLooksForTheStylesheetByName) {
  installFake(0);
  run().programDirectory = "";
  run().reportLanguage = kJpn;
  render("x.xml", "y.html");
  EXPECT_EQ(test::readFile(args_), "-o\ny.html\nTestResult2JPN.xslt\nx.xml\n");
  std::remove("y.html");
}

TEST_F(RenderHtmlTest, StaleReportIsDeletedWhenXsltprocFails) {
  installFake(3);
  const std::string html = dir_.write("CaseOne.html", "stale");
  // This fake notes whether the stale report was still there when it ran.
  dir_.write("bin/xsltproc", "#!/bin/sh\n[ -e \"$2\" ] && echo kept > '" + args_ + "'\nexit 3\n");
  render(dir_.file("CaseOne.xml"), html);
  EXPECT_FALSE(test::fileExists(html));
  EXPECT_FALSE(test::fileExists(args_));
  EXPECT_EQ(stdout_, "");
  EXPECT_EQ(stderr_, "qendor: HTML report " + html + " not written: xsltproc failed\n");
}

TEST_F(RenderHtmlTest, MissingXsltprocLeavesNoReportAndWarns) {
  hideXsltproc();
  const std::string html = dir_.write("CaseOne.html", "stale");
  render(dir_.file("CaseOne.xml"), html);
  EXPECT_FALSE(test::fileExists(html));
  EXPECT_EQ(stdout_, "");
  EXPECT_EQ(stderr_, "qendor: xsltproc not found: 1 HTML report not written\n");
}

TEST_F(RenderHtmlTest, XsltprocEndedBySignal) {
  installFake(0);
  dir_.write("bin/xsltproc", "#!/bin/sh\nkill -TERM $$\n");
  const std::string html = dir_.file("CaseOne.html");
  render(dir_.file("CaseOne.xml"), html);
  EXPECT_EQ(stderr_,
            "qendor: HTML report " + html + " not written: xsltproc was ended by a signal\n");
}

// xsltproc that could not write its report ends with 11, after libxml2's
// lines "I/O error : <reason>": the cut report goes, its loss is told once
// with that reason, and the renders know it was not written.
TEST_F(RenderHtmlTest, ReportXsltprocCouldNotWriteIsRemovedAndTold) {
  installFake(0);
  dir_.write("bin/xsltproc",
             "#!/bin/sh\nprintf half > \"$2\"\necho 'note from the stylesheet' >&2\n"
             "printf 'I/O error : No space left on device\\nI/O error : write error\\n' >&2\n"
             "exit 11\n");
  const std::string html = dir_.file("CaseOne.html");
  HtmlRenders renders(1);
  EXPECT_EQ(renderWith(renders, dir_.file("CaseOne.xml"), html),
            "note from the stylesheet\nqendor: " + html + ": No space left on device\n");
  EXPECT_FALSE(test::fileExists(html));
  EXPECT_TRUE(renders.unwritten(html));

  // A later render of the same file that succeeds clears it.
  installFake(0);
  EXPECT_EQ(renderWith(renders, dir_.file("CaseOne.xml"), html), "");
  EXPECT_FALSE(renders.unwritten(html));
}

TEST_F(RenderHtmlTest, UnwrittenReportWithoutAReasonFromXsltproc) {
  installFake(11);
  const std::string html = dir_.file("CaseOne.html");
  render(dir_.file("CaseOne.xml"), html);
  EXPECT_FALSE(test::fileExists(html));
  EXPECT_EQ(stderr_, "qendor: " + html + ": xsltproc could not write it\n");
}

// Writing to its standard output, xsltproc ends with 0 even when the write
// failed; its I/O error lines tell.
TEST_F(RenderHtmlTest, CutReportThroughStandardOutputIsRemovedAndTold) {
  installFake(0);
  dir_.write("bin/xsltproc",
             "#!/bin/sh\nprintf half\nprintf 'I/O error : File too large\\n' >&2\n");
  const std::string html = dir_.file("P%41.html");
  HtmlRenders renders(1);
  EXPECT_EQ(renderWith(renders, dir_.file("P%41.xml"), html),
            "qendor: " + html + ": File too large\n");
  EXPECT_FALSE(test::fileExists(html));
  EXPECT_TRUE(renders.unwritten(html));
}

// Other failures are no lost write: the status of a run stays as it is.
TEST_F(RenderHtmlTest, FailedTransformationIsNoLostWrite) {
  installFake(5);
  const std::string html = dir_.file("CaseOne.html");
  HtmlRenders renders(1);
  EXPECT_EQ(renderWith(renders, dir_.file("CaseOne.xml"), html),
            "qendor: HTML report " + html + " not written: xsltproc failed\n");
  EXPECT_FALSE(test::fileExists(html));
  EXPECT_FALSE(renders.unwritten(html));
}

TEST_F(RenderHtmlTest, PendingStandardOutputComesFirst) {
  installFake(0);
  dir_.write("bin/xsltproc", "#!/bin/sh\nprintf child\n");
  const std::string log = dir_.file("stdout.txt");
  // Send stdout to a file so that it is fully buffered, as in a harness.
  fflush(stdout);
  FILE* saved = fdopen(dup(fileno(stdout)), "w");
  ASSERT_NE(freopen(log.c_str(), "w", stdout), nullptr);
  printf("pending");
  {
    HtmlRenders renders(1);
    renders.start(dir_.file("a.xml"), dir_.file("a.html"));
  }
  fflush(stdout);
  dup2(fileno(saved), fileno(stdout));
  fclose(saved);
  EXPECT_EQ(test::readFile(log), "pendingchild");
}

TEST_F(RenderHtmlTest, XsltprocGetsTheCallersEnvironmentAsItIs) {
  installFake(0);
  dir_.write("bin/xsltproc",
             "#!/bin/sh\nprintf '%s|%s|%s' \"${GLIBC_TUNABLES-unset}\" "
             "\"$QENDOR_PROBE\" \"$QENDOR_OTHER\" > '" +
                 args_ + "'\n");
  test::ScopedEnv tunables("GLIBC_TUNABLES", nullptr);
  test::ScopedEnv probe("QENDOR_PROBE", "kept");
  test::ScopedEnv other("QENDOR_OTHER", "glibc.malloc.hugetlb=0");
  render(dir_.file("a.xml"), dir_.file("a.html"));
  EXPECT_EQ(test::readFile(args_), "unset|kept|glibc.malloc.hugetlb=0");
  EXPECT_EQ(stderr_, "");
}

TEST_F(RenderHtmlTest, TheCallersMallocTunablesReachXsltprocUnchanged) {
  installFake(0);
  dir_.write("bin/xsltproc", "#!/bin/sh\nprintf '%s' \"$GLIBC_TUNABLES\" > '" + args_ + "'\n");
  test::ScopedEnv tunables("GLIBC_TUNABLES", "glibc.malloc.check=0");
  render(dir_.file("a.xml"), dir_.file("a.html"));
  EXPECT_EQ(test::readFile(args_), "glibc.malloc.check=0");
}

TEST(StylesheetNameTest, ByReportLanguage) {
  const std::pair<int, const char*> cases[] = {
      {1, "TestResult2ENU.xslt"}, {2, "TestResult2CHS.xslt"},  {3, "TestResult2CHT.xslt"},
      {4, "TestResult2KOR.xslt"}, {5, "TestResult2JPN.xslt"},  {0, "TestResult2ENU.xslt"},
      {6, "TestResult2ENU.xslt"}, {-1, "TestResult2ENU.xslt"},
  };
  for (const auto& [language, name] : cases) EXPECT_STREQ(stylesheetName(language), name);
}

TEST(RenderSlotsTest, OnePerCoreThisProcessMayRunOn) {
  cpu_set_t original;
  ASSERT_EQ(sched_getaffinity(0, sizeof original, &original), 0);
  EXPECT_EQ(renderSlots(), static_cast<size_t>(CPU_COUNT(&original)));
  // Pinned to one core, a run renders one report at a time.
  cpu_set_t one;
  CPU_ZERO(&one);
  for (int cpu = 0; cpu < CPU_SETSIZE; ++cpu) {
    if (!CPU_ISSET(cpu, &original)) continue;
    CPU_SET(cpu, &one);
    break;
  }
  ASSERT_EQ(sched_setaffinity(0, sizeof one, &one), 0);
  EXPECT_EQ(renderSlots(), 1u);
  ASSERT_EQ(sched_setaffinity(0, sizeof original, &original), 0);
}

}  // namespace
}  // namespace qendor
