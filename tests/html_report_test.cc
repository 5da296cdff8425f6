#include "report/html_report.h"

#include <gtest/gtest.h>
#include <libxml/parser.h>
#include <libxml/tree.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <optional>
#include <string>
#include <utility>

#include "app/run_settings.h"
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
    if (const char* path = getenv("PATH")) oldPath_ = path;
    mkdir(bin_.c_str(), 0755);
  }
  void TearDown() override {
    if (oldPath_) {
      setenv("PATH", oldPath_->c_str(), 1);
    } else {
      unsetenv("PATH");
    }
    resetRun();
  }

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

  // Runs renderHtml, keeping what it printed.
  bool render(const std::string& xml, const std::string& html) {
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    const bool result = renderHtml(xml, html);
    stdout_ = testing::internal::GetCapturedStdout();
    stderr_ = testing::internal::GetCapturedStderr();
    return result;
  }

  test::TempDir dir_;
  std::string bin_ = dir_.file("bin");
  std::string args_ = dir_.file("args.txt");
  std::optional<std::string> oldPath_;
  std::string stdout_;
  std::string stderr_;
};

TEST_F(RenderHtmlTest, RunsXsltprocWithExactlyTheseArguments) {
  installFake(0);
  run().programDirectory = "/opt/tools/";
  run().reportLanguage = kKor;
  const std::string out = dir_.file("out");
  mkdir(out.c_str(), 0755);
  EXPECT_TRUE(render(out + "\\CaseOne.xml", out + "\\CaseOne.html"));
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
  EXPECT_TRUE(render(out + "\\\"C\".xml", out + "\\\"C\".html"));
  EXPECT_EQ(test::readFile(args_),
            "-o\n" + out + "/C.html\n/opt/my tools/TestResult2ENU.xslt\n" + out + "/C.xml\n");
  EXPECT_EQ(test::readFile(out + "/C.html"), "html");
  EXPECT_FALSE(test::fileExists("pwned"));
  EXPECT_EQ(stderr_, "");
}

TEST_F(RenderHtmlTest, BareProgramNameLooksForTheStylesheetByName) {
  installFake(0);
  run().programDirectory = "";
  run().reportLanguage = kJpn;
  EXPECT_TRUE(render("x.xml", "y.html"));
  EXPECT_EQ(test::readFile(args_), "-o\ny.html\nTestResult2JPN.xslt\nx.xml\n");
  std::remove("y.html");
}

TEST_F(RenderHtmlTest, StaleReportIsDeletedWhenXsltprocFails) {
  installFake(3);
  const std::string html = dir_.write("CaseOne.html", "stale");
  // This fake notes whether the stale report was still there when it ran.
  dir_.write("bin/xsltproc", "#!/bin/sh\n[ -e \"$2\" ] && echo kept > '" + args_ + "'\nexit 3\n");
  EXPECT_TRUE(render(dir_.file("CaseOne.xml"), html));
  EXPECT_FALSE(test::fileExists(html));
  EXPECT_FALSE(test::fileExists(args_));
  EXPECT_EQ(stdout_, "");
  EXPECT_EQ(stderr_, "qendor: HTML report " + html + " not written: xsltproc failed\n");
}

TEST_F(RenderHtmlTest, MissingXsltprocLeavesNoReportAndWarns) {
  hideXsltproc();
  const std::string html = dir_.write("CaseOne.html", "stale");
  EXPECT_TRUE(render(dir_.file("CaseOne.xml"), html));
  EXPECT_FALSE(test::fileExists(html));
  EXPECT_EQ(stdout_, "");
  EXPECT_EQ(stderr_,
            "qendor: HTML report " + html + " not written: xsltproc could not be started\n");
}

TEST_F(RenderHtmlTest, XsltprocEndedBySignal) {
  installFake(0);
  dir_.write("bin/xsltproc", "#!/bin/sh\nkill -TERM $$\n");
  const std::string html = dir_.file("CaseOne.html");
  EXPECT_TRUE(render(dir_.file("CaseOne.xml"), html));
  EXPECT_EQ(stderr_,
            "qendor: HTML report " + html + " not written: xsltproc was ended by a signal\n");
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

}  // namespace
}  // namespace qendor
