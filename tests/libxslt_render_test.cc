// The stylesheet applied in process: the same bytes as xsltproc, from one
// thread or several at once, and each way a render can fail.
#include "report/libxslt_render.h"

#include <gtest/gtest.h>

#include <condition_variable>
#include <filesystem>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "tests/test_support.h"

namespace qendor {
namespace {

const char* const kLanguages[] = {"ENU", "CHS", "CHT", "KOR", "JPN"};

std::string stylesheet(const std::string& language) {
  return std::string(QENDOR_SOURCE_DIR) + "/stylesheets/TestResult2" + language + ".xslt";
}

std::vector<std::string> samples() {
  std::vector<std::string> paths;
  const std::string dir = std::string(QENDOR_SOURCE_DIR) + "/tests/stylesheet_samples";
  for (const std::string& name : test::filesIn(dir)) paths.push_back(dir + "/" + name);
  return paths;
}

// What xsltproc writes for `xml` with `sheet`.
std::string byXsltproc(const test::TempDir& dir, const std::string& sheet, const std::string& xml) {
  const std::string html = dir.file("xsltproc.html");
  const test::ProgramOutcome o =
      test::runProgram("/usr/bin/xsltproc", {"-o", html, sheet, xml}, dir.path());
  EXPECT_EQ(o.status, 0) << o.err;
  return test::readFile(html);
}

TEST(CompiledStylesheetTest, WritesWhatXsltprocWritesInEveryLanguage) {
  test::TempDir dir;
  ASSERT_EQ(samples().size(), 7u);
  for (const char* language : kLanguages) {
    const CompiledStylesheet sheet(stylesheet(language));
    EXPECT_EQ(sheet.warnings(), "");
    for (const std::string& xml : samples()) {
      const std::string html = dir.file("builtin.html");
      const RenderOutcome outcome = sheet.render(xml, html);
      EXPECT_EQ(outcome.problem, "") << language << " " << xml;
      EXPECT_FALSE(outcome.unwritten) << language << " " << xml;
      EXPECT_EQ(outcome.warnings, "") << language << " " << xml;
      const std::string expected = byXsltproc(dir, stylesheet(language), xml);
      EXPECT_GT(expected.size(), 1000u) << language << " " << xml;
      EXPECT_TRUE(test::readFile(html) == expected) << language << " " << xml;
    }
  }
}

// libxslt's documentation: a compiled stylesheet is not changed by
// applying it, so several threads may apply it at once. Here they do, all
// starting together, and each page equals the one rendered alone.
TEST(CompiledStylesheetTest, OneStylesheetAppliedFromSeveralThreadsAtOnce) {
  test::TempDir dir;
  const CompiledStylesheet sheet(stylesheet("ENU"));
  const std::vector<std::string> xmls = samples();
  std::vector<std::string> alone;
  for (size_t i = 0; i < xmls.size(); ++i) {
    const std::string html = dir.file("alone" + std::to_string(i) + ".html");
    ASSERT_EQ(sheet.render(xmls[i], html).problem, "");
    alone.push_back(test::readFile(html));
  }
  const size_t kThreads = 4;
  const int kRounds = 5;
  std::mutex mutex;
  std::condition_variable go;
  size_t ready = 0;
  std::vector<std::string> mismatches(kThreads);
  std::vector<std::thread> threads;
  for (size_t t = 0; t < kThreads; ++t) {
    threads.emplace_back([&, t] {
      {
        std::unique_lock<std::mutex> lock(mutex);
        ++ready;
        go.notify_all();
        go.wait(lock, [&] { return ready == kThreads; });
      }
      for (int round = 0; round < kRounds; ++round) {
        for (size_t i = 0; i < xmls.size(); ++i) {
          // Each thread starts with another sample.
          const size_t k = (i + t) % xmls.size();
          const std::string html = dir.file(std::to_string(t) + "-" + std::to_string(k) + ".html");
          const RenderOutcome outcome = sheet.render(xmls[k], html);
          if (!outcome.problem.empty() || test::readFile(html) != alone[k]) {
            mismatches[t] += xmls[k] + " ";
          }
        }
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  for (size_t t = 0; t < kThreads; ++t) EXPECT_EQ(mismatches[t], "") << "thread " << t;
}

// A stylesheet of our own, `body` inside the root template.
std::string sheetWith(const test::TempDir& dir, const std::string& body) {
  return dir.write("sheet.xslt",
                   "<xsl:stylesheet version=\"1.0\" "
                   "xmlns:xsl=\"http://www.w3.org/1999/XSL/Transform\">"
                   "<xsl:template match=\"/\">" +
                       body + "</xsl:template></xsl:stylesheet>");
}

class CompiledStylesheetFailureTest : public ::testing::Test {
 protected:
  RenderOutcome renderWith(const std::string& sheetPath) {
    const CompiledStylesheet sheet(sheetPath);
    return sheet.render(xml_, html_);
  }

  test::TempDir dir_;
  std::string xml_ = dir_.write("a.xml", "<TestResult/>\n");
  std::string html_ = dir_.file("a.html");
};

TEST_F(CompiledStylesheetFailureTest, MissingStylesheet) {
  const std::string sheet = dir_.file("none.xslt");
  const RenderOutcome outcome = renderWith(sheet);
  EXPECT_EQ(outcome.problem, "the stylesheet " + sheet +
                                 " could not be read: I/O warning : failed to load external "
                                 "entity \"" +
                                 sheet + "\"");
  EXPECT_FALSE(outcome.unwritten);
  EXPECT_FALSE(test::fileExists(html_));
}

TEST_F(CompiledStylesheetFailureTest, StylesheetThatIsNoXml) {
  const std::string sheet = dir_.write("bad.xslt", "<stylesheet");
  const RenderOutcome outcome = renderWith(sheet);
  EXPECT_EQ(outcome.problem, "the stylesheet " + sheet + " could not be read: " + sheet +
                                 ":1: parser error : Couldn't find end of Start Tag stylesheet "
                                 "line 1");
  EXPECT_FALSE(test::fileExists(html_));
}

TEST_F(CompiledStylesheetFailureTest, StylesheetThatDoesNotCompile) {
  const RenderOutcome outcome = renderWith(sheetWith(dir_, "<xsl:value-of select=\"1 div\"/>"));
  EXPECT_EQ(outcome.problem.rfind(
                "the stylesheet " + dir_.file("sheet.xslt") + " could not be compiled: ", 0),
            0u)
      << outcome.problem;
  EXPECT_FALSE(test::fileExists(html_));
}

// xsltproc ends with the status of a lost file when a transformation fails
// while it runs, and a report run counts it so: the same here.
TEST_F(CompiledStylesheetFailureTest, TransformationThatFailsIsLostLikeAnUnwrittenReport) {
  const RenderOutcome outcome =
      renderWith(sheetWith(dir_, "<xsl:message terminate=\"yes\">stop</xsl:message>"));
  EXPECT_TRUE(outcome.unwritten);
  EXPECT_EQ(outcome.reason, "the transformation failed: stop");
  EXPECT_EQ(outcome.warnings, "");
  EXPECT_FALSE(test::fileExists(html_));
}

TEST_F(CompiledStylesheetFailureTest, MessagesOfASuccessfulRenderAreItsWarnings) {
  const RenderOutcome outcome = renderWith(sheetWith(dir_, "<xsl:message>note</xsl:message><p/>"));
  EXPECT_EQ(outcome.problem, "");
  EXPECT_FALSE(outcome.unwritten);
  EXPECT_EQ(outcome.warnings, "note\n");
  EXPECT_EQ(test::readFile(html_), "<?xml version=\"1.0\"?>\n<p/>\n");
}

TEST_F(CompiledStylesheetFailureTest, EmptyResultWritesNoFileAsXsltprocDoes) {
  const RenderOutcome outcome = renderWith(sheetWith(dir_, ""));
  EXPECT_EQ(outcome.problem, "");
  EXPECT_FALSE(outcome.unwritten);
  EXPECT_FALSE(test::fileExists(html_));
}

TEST_F(CompiledStylesheetFailureTest, DocumentThatIsNoXml) {
  dir_.write("a.xml", "<TestResult>");
  const RenderOutcome outcome = renderWith(sheetWith(dir_, "<p/>"));
  EXPECT_EQ(outcome.problem.rfind("the document could not be read: " + xml_ + ":1: ", 0), 0u)
      << outcome.problem;
  EXPECT_FALSE(test::fileExists(html_));
}

TEST_F(CompiledStylesheetFailureTest, ReportThatCannotBeWritten) {
  std::filesystem::create_directory(html_);
  RenderOutcome outcome = renderWith(sheetWith(dir_, "<p/>"));
  EXPECT_TRUE(outcome.unwritten);
  EXPECT_EQ(outcome.reason, "Is a directory");
}

// libxslt makes the folder of its output, as xsltproc does.
TEST_F(CompiledStylesheetFailureTest, MissingFolderIsMade) {
  html_ = dir_.file("missing/a.html");
  const RenderOutcome outcome = renderWith(sheetWith(dir_, "<p/>"));
  EXPECT_FALSE(outcome.unwritten);
  EXPECT_EQ(test::readFile(html_), "<?xml version=\"1.0\"?>\n<p/>\n");
}

}  // namespace
}  // namespace qendor
