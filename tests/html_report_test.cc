#include "report/html_report.h"
#include "report/html_renders.h"

#include <gtest/gtest.h>
#include <libxml/parser.h>
#include <libxml/tree.h>
#include <sched.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "base/run_settings.h"
#include "report/xml_node.h"
#include "tests/test_support.h"

namespace qendor {
namespace {

// A small document: root with one attributed child.
XmlNodePtr sampleTree() {
  XmlNodePtr root(newElement("TestResult"));
  setAttribute(root.get(), "kind", "rk_testcase");
  xmlNode* header = addElement(root.get(), "ResultHeader");
  setAttribute(header, "name", "A & B");
  addElement(header, "EnvironmentInfo");
  return root;
}

const char kSampleXml[] =
    "<?xml version=\"1.0\"?>\n"
    "<TestResult kind=\"rk_testcase\">\n"
    "  <ResultHeader name=\"A &amp; B\">\n"
    "    <EnvironmentInfo/>\n"
    "  </ResultHeader>\n"
    "</TestResult>\n";

TEST(StylesheetNameTest, ByReportLanguage) {
  const std::pair<int, const char*> cases[] = {
      {1, "TestResult2ENU.xslt"}, {2, "TestResult2CHS.xslt"},  {3, "TestResult2CHT.xslt"},
      {4, "TestResult2KOR.xslt"}, {5, "TestResult2JPN.xslt"},  {0, "TestResult2ENU.xslt"},
      {6, "TestResult2ENU.xslt"}, {-1, "TestResult2ENU.xslt"},
  };
  for (const auto& [language, name] : cases) EXPECT_STREQ(stylesheetName(language), name);
}

class SaveXmlDocumentTest : public ::testing::Test {
 protected:
  void SetUp() override { resetRun(); }
  void TearDown() override { resetRun(); }
  test::TempDir dir_;
};

TEST_F(SaveXmlDocumentTest, WritesAnIndentedFileAndHandsTheTreeBack) {
  XmlNodePtr root = sampleTree();
  const std::string path = dir_.file("CaseOne.xml");
  EXPECT_TRUE(saveXmlDocument(root.get(), path));
  EXPECT_EQ(test::readFile(path), kSampleXml);
  EXPECT_EQ(root->parent, nullptr);
  EXPECT_EQ(root->doc, nullptr);
  EXPECT_EQ(root->children->doc, nullptr);
  // The tree can be saved again and is freed by its owner.
  EXPECT_TRUE(saveXmlDocument(root.get(), path));
  EXPECT_EQ(test::readFile(path), kSampleXml);
}

TEST_F(SaveXmlDocumentTest, SameBytesAsTheLibraryFileSave) {
  XmlNodePtr root = sampleTree();
  const std::string ours = dir_.file("ours.xml");
  ASSERT_TRUE(saveXmlDocument(root.get(), ours));

  xmlDoc* doc = xmlNewDoc(reinterpret_cast<const xmlChar*>("1.0"));
  xmlDocSetRootElement(doc, xmlCopyNode(root.get(), 1));
  const std::string theirs = dir_.file("theirs.xml");
  xmlSaveFormatFile(theirs.c_str(), doc, 1);
  xmlFreeDoc(doc);
  EXPECT_EQ(test::readFile(ours), test::readFile(theirs));
}

TEST_F(SaveXmlDocumentTest, PathIsNormalisedAndTakenLiterally) {
  XmlNodePtr root = sampleTree();
  mkdir(dir_.file("out sub").c_str(), 0755);
  // Backslashes become "/", double quotes go, "%41" stays as it is.
  EXPECT_TRUE(saveXmlDocument(root.get(), dir_.path() + "\\\"out sub\"\\a%41$b.xml"));
  EXPECT_EQ(test::readFile(dir_.file("out sub/a%41$b.xml")), kSampleXml);
  EXPECT_FALSE(test::fileExists(dir_.file("out sub/aA$b.xml")));
}

TEST_F(SaveXmlDocumentTest, FileThatCannotBeCreated) {
  XmlNodePtr root = sampleTree();
  EXPECT_FALSE(saveXmlDocument(root.get(), dir_.file("missing/CaseOne.xml")));
  EXPECT_EQ(root->doc, nullptr);
  EXPECT_EQ(root->parent, nullptr);
}

TEST_F(SaveXmlDocumentTest, SavedFileIsWellFormed) {
  XmlNodePtr root = sampleTree();
  const std::string path = dir_.file("CaseOne.xml");
  ASSERT_TRUE(saveXmlDocument(root.get(), path));
  xmlDoc* doc = xmlReadFile(path.c_str(), nullptr, XML_PARSE_NONET);
  ASSERT_NE(doc, nullptr);
  EXPECT_STREQ(reinterpret_cast<const char*>(xmlDocGetRootElement(doc)->name), "TestResult");
  xmlFreeDoc(doc);
}

// Runs renderHtml against a fake xsltproc placed first in PATH.
class RenderHtmlTest : public ::testing::Test {
 protected:
  void SetUp() override {
    resetRun();
    mkdir(bin_.c_str(), 0755);
  }
  void TearDown() override { resetRun(); }

  // A fake that writes each argument on a line of `args` and creates the
  // output file, then exits with `status`.
  void installFake(int status) {
    const std::string script = "#!/bin/sh\n: > '" + args_ +
                               "'\nfor a in \"$@\"; do printf '%s\\n' \"$a\" >> '" + args_ +
                               "'; done\n"
                               "printf html > \"$2\"\n"
                               "exit " +
                               std::to_string(status) + "\n";
    const std::string fake = dir_.write("bin/xsltproc", script);
    chmod(fake.c_str(), 0755);
    setenv("PATH", (bin_ + ":/usr/bin:/bin").c_str(), 1);
  }
  // No xsltproc anywhere in PATH.
  void hideXsltproc() { setenv("PATH", bin_.c_str(), 1); }

  // Renders through `renders` and waits for it; returns what was printed on
  // standard error.
  std::string renderWith(HtmlRenders& renders, const std::string& xml, const std::string& html) {
    testing::internal::CaptureStderr();
    renders.start(xml, html);
    renders.finishAll();
    return testing::internal::GetCapturedStderr();
  }

  // Runs renderHtml, keeping what it printed and what it returned (true
  // whatever xsltproc did: what came of it is in the files and the warnings).
  void render(const std::string& xml, const std::string& html) {
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    returned_ = renderHtml(xml, html);
    stdout_ = testing::internal::GetCapturedStdout();
    stderr_ = testing::internal::GetCapturedStderr();
  }

  test::TempDir dir_;
  std::string bin_ = dir_.file("bin");
  std::string args_ = dir_.file("args.txt");
  test::ScopedEnv path_{"PATH"};
  std::string stdout_;
  std::string stderr_;
  bool returned_ = false;
};

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
  // A failed render is no failed call: the driver's message for a report
  // that could not be made at all is not printed for it.
  EXPECT_TRUE(returned_);
}

TEST_F(RenderHtmlTest, MissingXsltprocLeavesNoReportAndWarns) {
  hideXsltproc();
  const std::string html = dir_.write("CaseOne.html", "stale");
  render(dir_.file("CaseOne.xml"), html);
  EXPECT_FALSE(test::fileExists(html));
  EXPECT_EQ(stdout_, "");
  EXPECT_EQ(stderr_,
            "qendor: HTML report " + html + " not written: xsltproc could not be started\n");
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
  renderHtml(dir_.file("a.xml"), dir_.file("a.html"));
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

// A fake xsltproc that notes "start NAME" and "end NAME" (NAME: the XML
// file's name) in `log`, says "err NAME" on standard error and fails for
// names beginning with "f". A run whose name begins with "w" waits until
// another run has started, so two runs that may overlap do; one beginning
// with "g" waits until the file `gate` exists (both for ten seconds at most).
// Names beginning with "s" take a second, others pause a little so that an
// overlap would show.
class HtmlRendersTest : public RenderHtmlTest {
 protected:
  void installLoggingFake() {
    installFake(0);
    dir_.write("bin/xsltproc",
               "#!/bin/sh\n"
               "n=$(basename \"$4\")\n"
               "echo \"start $n\" >> '" +
                   log_ +
                   "'\n"
                   "case $n in w*) i=0; while [ $(grep -c '^start' '" +
                   log_ +
                   "') -lt 2 ] && "
                   "[ $i -lt 100 ]; do sleep 0.1; i=$((i+1)); done;;\n"
                   "g*) i=0; while [ ! -e '" +
                   gate_ +
                   "' ] && [ $i -lt 100 ]; do sleep 0.1; i=$((i+1)); done;;\n"
                   "s*) sleep 1;; *) sleep 0.2;; esac\n"
                   "echo \"err $n\" >&2\n"
                   "echo \"end $n\" >> '" +
                   log_ +
                   "'\n"
                   "printf \"$n\" > \"$2\"\n"
                   "case $n in f*) exit 3;; esac\n");
  }

  // Queues the render of STEM.xml into STEM.html in the test folder.
  void queue(HtmlRenders& renders, const std::string& stem) {
    renders.start(dir_.file(stem + ".xml"), dir_.file(stem + ".html"));
  }

  // Waits until the log reads `text` (ten seconds at most).
  void waitForLog(const std::string& text) {
    for (int i = 0; i < 1000 && test::readFile(log_) != text; ++i) usleep(10000);
  }

  std::string log_ = dir_.file("log.txt");
  std::string gate_ = dir_.file("gate");
};

TEST_F(HtmlRendersTest, RunsOverlapUpToTheSlotsAndFinishInOrder) {
  installLoggingFake();
  testing::internal::CaptureStderr();
  {
    HtmlRenders renders(2);
    EXPECT_TRUE(renders.start(dir_.file("w1.xml"), dir_.file("w1.html")));
    EXPECT_TRUE(renders.start(dir_.file("f2.xml"), dir_.file("f2.html")));
    EXPECT_TRUE(renders.start(dir_.file("w3.xml"), dir_.file("w3.html")));
    EXPECT_TRUE(renders.start(dir_.file("f4.xml"), dir_.file("f4.html")));
  }
  const std::string err = testing::internal::GetCapturedStderr();
  const std::string log = test::readFile(log_);
  EXPECT_EQ(test::overlapIn(log), 2u) << log;
  // The third starts once a slot is free: here the first's, which ends as
  // soon as the second has started.
  EXPECT_LT(log.find("end w1.xml"), log.find("start w3.xml")) << log;
  // Everything on standard error stands in the order of the starts.
  EXPECT_EQ(err, "err w1.xml\nerr f2.xml\nqendor: HTML report " + dir_.file("f2.html") +
                     " not written: xsltproc failed\nerr w3.xml\nerr f4.xml\n"
                     "qendor: HTML report " +
                     dir_.file("f4.html") + " not written: xsltproc failed\n");
  // The failed ones still wrote their files here; the others did too.
  EXPECT_EQ(test::readFile(dir_.file("w3.html")), "w3.xml");
}

TEST_F(HtmlRendersTest, ARunOfTheSameFilesWaitsForTheEarlierOne) {
  installLoggingFake();
  testing::internal::CaptureStderr();
  {
    HtmlRenders renders(2);
    queue(renders, "a");
    queue(renders, "a");
    renders.start(dir_.file("b.xml"), dir_.file("a.html"));
  }
  testing::internal::GetCapturedStderr();
  EXPECT_EQ(test::readFile(log_),
            "start a.xml\nend a.xml\nstart a.xml\nend a.xml\nstart b.xml\nend b.xml\n");
  EXPECT_EQ(test::readFile(dir_.file("a.html")), "b.xml");
}

TEST_F(HtmlRendersTest, WaitForPathFinishesThatRunAndTheOlderOnes) {
  installLoggingFake();
  testing::internal::CaptureStderr();
  HtmlRenders renders(3);
  queue(renders, "a");
  queue(renders, "b");
  queue(renders, "s");
  renders.waitForPath(dir_.file("b.html"));
  const std::string err = testing::internal::GetCapturedStderr();
  EXPECT_EQ(err, "err a.xml\nerr b.xml\n");
  EXPECT_EQ(test::readFile(dir_.file("b.html")), "b.xml");
  renders.waitForPath(dir_.file("nothing.xml"));
  testing::internal::CaptureStderr();
  renders.finishAll();
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "err s.xml\n");
  EXPECT_EQ(test::readFile(dir_.file("s.html")), "s.xml");
}

TEST_F(HtmlRendersTest, QueuedWithoutWaitingForASlot) {
  installLoggingFake();
  testing::internal::CaptureStderr();
  {
    HtmlRenders renders(1);
    queue(renders, "g1");
    queue(renders, "b");
    // Both calls came back while the first render still runs.
    waitForLog("start g1.xml\n");
    EXPECT_EQ(test::readFile(log_), "start g1.xml\n");
    dir_.write("gate", "");
  }
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "err g1.xml\nerr b.xml\n");
  EXPECT_EQ(test::readFile(log_), "start g1.xml\nend g1.xml\nstart b.xml\nend b.xml\n");
}

TEST_F(HtmlRendersTest, TheLargestWaitingReportGoesFirstAndIsReportedInTurn) {
  installLoggingFake();
  dir_.write("a.xml", std::string(10, 'a'));
  dir_.write("c.xml", std::string(1000, 'c'));
  dir_.write("d.xml", std::string(10, 'd'));
  dir_.write("f.xml", std::string(1000, 'f'));
  testing::internal::CaptureStderr();
  {
    HtmlRenders renders(1);
    queue(renders, "g");
    queue(renders, "a");
    queue(renders, "c");
    queue(renders, "d");
    queue(renders, "f");
    dir_.write("gate", "");
  }
  // Of equal sizes the earlier goes first.
  EXPECT_EQ(test::readFile(log_),
            "start g.xml\nend g.xml\nstart c.xml\nend c.xml\nstart f.xml\nend f.xml\n"
            "start a.xml\nend a.xml\nstart d.xml\nend d.xml\n");
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "err g.xml\nerr a.xml\nerr c.xml\nerr d.xml\nerr f.xml\nqendor: HTML report " +
                dir_.file("f.html") + " not written: xsltproc failed\n");
}

TEST_F(HtmlRendersTest, WaitingForAPathRunsTheWaitingRendersBeforeIt) {
  installLoggingFake();
  dir_.write("big.xml", std::string(1000, 'b'));
  testing::internal::CaptureStderr();
  HtmlRenders renders(1);
  queue(renders, "g");
  queue(renders, "a");
  queue(renders, "big");
  dir_.write("gate", "");
  renders.waitForPath(dir_.file("a.html"));
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "err g.xml\nerr a.xml\n");
  EXPECT_EQ(test::readFile(dir_.file("a.html")), "a.xml");
  testing::internal::CaptureStderr();
  renders.finishAll();
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "err big.xml\n");
  EXPECT_EQ(test::readFile(log_),
            "start g.xml\nend g.xml\nstart a.xml\nend a.xml\nstart big.xml\nend big.xml\n");
  EXPECT_EQ(test::readFile(dir_.file("big.html")), "big.xml");
}

TEST_F(HtmlRendersTest, MissingXsltprocWarnsInOrder) {
  hideXsltproc();
  const std::string stale = dir_.write("b.html", "stale");
  testing::internal::CaptureStderr();
  {
    HtmlRenders renders(2);
    queue(renders, "a");
    renders.start(dir_.file("b.xml"), stale);
  }
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "qendor: HTML report " + dir_.file("a.html") +
                " not written: xsltproc could not be started\nqendor: HTML report " + stale +
                " not written: xsltproc could not be started\n");
  EXPECT_FALSE(test::fileExists(stale));
}

}  // namespace
}  // namespace qendor
