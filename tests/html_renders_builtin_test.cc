// Renders with the builtin renderer: threads at once, warnings in turn,
// failures told as the xsltproc renderer tells them.
#include "report/html_renders.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <string>

#include "base/run_settings.h"
#include "tests/test_support.h"

namespace qendor {
namespace {

class BuiltinRendersTest : public ::testing::Test {
 protected:
  void SetUp() override {
    resetRun();
    run().programDirectory = dir_.path() + "/";
  }
  void TearDown() override { resetRun(); }

  // The English stylesheet of the test folder: `body` inside the root
  // template.
  void writeStylesheet(const std::string& body) {
    dir_.write("TestResult2ENU.xslt",
               "<xsl:stylesheet version=\"1.0\" "
               "xmlns:xsl=\"http://www.w3.org/1999/XSL/Transform\">"
               "<xsl:template match=\"/\">" +
                   body + "</xsl:template></xsl:stylesheet>");
  }
  // STEM.xml, a document whose root has the attribute n="STEM".
  std::string document(const std::string& stem) {
    return dir_.write(stem + ".xml", "<r n=\"" + stem + "\"/>\n");
  }
  void queue(HtmlRenders& renders, const std::string& stem) {
    renders.start(document(stem), dir_.file(stem + ".html"));
  }

  test::TempDir dir_;
};

// Each render reads the FIFO gates/NAME through document(): it stays in its
// thread until the test writes and closes the FIFO, and opening the FIFO
// waits until the render has opened it.
TEST_F(BuiltinRendersTest, RendersGoOnInThreadsAtOnce) {
  writeStylesheet("<p><xsl:value-of select=\"document(concat('gates/', /r/@n))/g\"/></p>");
  mkdir(dir_.file("gates").c_str(), 0755);
  for (const char* name : {"a", "b"}) mkfifo(dir_.file(std::string("gates/") + name).c_str(), 0600);
  testing::internal::CaptureStderr();
  {
    HtmlRenders renders(2, HtmlRenderer::kBuiltin);
    queue(renders, "a");
    queue(renders, "b");
    // The first render has begun and is held inside its transformation
    // while the second begins: two at once.
    const int a = open(dir_.file("gates/a").c_str(), O_WRONLY | O_CLOEXEC);
    ASSERT_GE(a, 0);
    const int b = open(dir_.file("gates/b").c_str(), O_WRONLY | O_CLOEXEC);
    ASSERT_GE(b, 0);
    EXPECT_EQ(write(b, "<g>B</g>", 8), 8);
    close(b);
    EXPECT_EQ(write(a, "<g>A</g>", 8), 8);
    close(a);
  }
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  EXPECT_EQ(test::readFile(dir_.file("a.html")), "<?xml version=\"1.0\"?>\n<p>A</p>\n");
  EXPECT_EQ(test::readFile(dir_.file("b.html")), "<?xml version=\"1.0\"?>\n<p>B</p>\n");
}

TEST_F(BuiltinRendersTest, MessagesStandInTheOrderOfTheReports) {
  writeStylesheet("<xsl:message><xsl:value-of select=\"/r/@n\"/></xsl:message><p/>");
  dir_.write("c.xml", std::string(100, ' ') + "<r n=\"c\"/>");
  testing::internal::CaptureStderr();
  {
    HtmlRenders renders(1, HtmlRenderer::kBuiltin);
    queue(renders, "a");
    queue(renders, "b");
    renders.start(dir_.file("c.xml"), dir_.file("c.html"));
  }
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "a\nb\nc\n");
  EXPECT_EQ(test::readFile(dir_.file("c.html")), "<?xml version=\"1.0\"?>\n<p/>\n");
}

TEST_F(BuiltinRendersTest, WhatTheStylesheetSaysIsSaidOnceWithTheFirstReport) {
  // An unknown instruction: libxslt says so, and the page is made all the
  // same (as xsltproc makes it).
  writeStylesheet("<p><xsl:unknown/></p>");
  testing::internal::CaptureStderr();
  {
    HtmlRenders renders(2, HtmlRenderer::kBuiltin);
    queue(renders, "a");
    queue(renders, "b");
  }
  const std::string err = testing::internal::GetCapturedStderr();
  const std::string compiled =
      "compilation error: file " + dir_.file("TestResult2ENU.xslt") + " line 1 element unknown\n";
  EXPECT_EQ(err.find(compiled), 0u) << err;
  EXPECT_EQ(err.find(compiled, 1), std::string::npos) << err;
  EXPECT_EQ(test::readFile(dir_.file("b.html")), "<?xml version=\"1.0\"?>\n<p/>\n");
}

TEST_F(BuiltinRendersTest, UnusableStylesheetFailsEachReportOnOneLine) {
  const std::string stale = dir_.write("b.html", "stale");
  testing::internal::CaptureStderr();
  {
    HtmlRenders renders(2, HtmlRenderer::kBuiltin);
    queue(renders, "a");
    queue(renders, "b");
  }
  const std::string sheet = dir_.file("TestResult2ENU.xslt");
  const std::string why = " not written: the stylesheet " + sheet +
                          " could not be read: I/O warning : failed to load external entity \"" +
                          sheet + "\"\n";
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "qendor: HTML report " + dir_.file("a.html") +
                                                        why + "qendor: HTML report " + stale + why);
  EXPECT_FALSE(test::fileExists(stale));
}

TEST_F(BuiltinRendersTest, ReportThatCannotBeWrittenIsToldAndKnown) {
  writeStylesheet("<p/>");
  mkdir(dir_.file("a.html").c_str(), 0755);
  testing::internal::CaptureStderr();
  HtmlRenders renders(2, HtmlRenderer::kBuiltin);
  queue(renders, "a");
  queue(renders, "b");
  renders.finishAll();
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "qendor: " + dir_.file("a.html") + ": Is a directory\n");
  EXPECT_TRUE(renders.unwritten(dir_.file("a.html")));
  EXPECT_FALSE(renders.unwritten(dir_.file("b.html")));
}

}  // namespace
}  // namespace qendor
