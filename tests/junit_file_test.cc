// "-junit FILE": the run's JUnit file, made in process from the run's own
// result document, written complete or not at all, and nothing else changed.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <regex>
#include <string>
#include <vector>

#include "report/junit_file.h"
#include "tests/test_support.h"

namespace qendor {
namespace {

namespace fs = std::filesystem;

using Outcome = test::ProgramOutcome;

// The shop scenario in a fresh temporary folder.
class Shop {
 public:
  Shop() {
    fs::copy(std::string(QENDOR_SOURCE_DIR) + "/tests/scenarios/shop", dir_.path(),
             fs::copy_options::recursive);
  }
  std::string path(const std::string& name) const { return dir_.file(name); }
  const test::TempDir& dir() const { return dir_; }

  static std::vector<std::string> args(const std::string& which, const std::string& name,
                                       const std::vector<std::string>& more = {}) {
    std::vector<std::string> all = {"-infofile",     "shop.info", "-resultfile", "results.log",
                                    "-outdirectory", "out",       which,         name};
    all.insert(all.end(), more.begin(), more.end());
    return all;
  }
  Outcome run(const std::vector<std::string>& args, const std::string& envPath = "/usr/bin:/bin") {
    return test::runProgram(QENDOR_BINARY, args, dir_.path(), envPath);
  }

 private:
  test::TempDir dir_;
};

// The text with the run's clock masked: the header's time, as the result
// documents and the JUnit file's properties carry it, and the timestamp.
std::string masked(const std::string& text) {
  static const std::regex time(" (time=\"(?=[A-Za-z])|timestamp=\")[^\"]*\"");
  static const std::regex property("<property name=\"time\" value=\"[^\"]*\"/>");
  return std::regex_replace(std::regex_replace(text, time, " $1*\""), property,
                            "<property name=\"time\" value=\"*\"/>");
}

std::string expected(const std::string& name) {
  return test::readFile(std::string(QENDOR_SOURCE_DIR) + "/tests/scenarios/shop/expected/junit/" +
                        name);
}

TEST(JunitFile, ContextRunWritesOneSuite) {
  Shop s;
  Outcome o = s.run(Shop::args("-tcontext", "Pkg.Ctx", {"-junit", "ci/../Ctx.junit.xml"}));
  // "ci" must exist for the path to be followed.
  EXPECT_EQ(o.status, 10);
  EXPECT_EQ(o.err, "qendor: ci/../Ctx.junit.xml: No such file or directory\n");
  EXPECT_FALSE(test::fileExists(s.path("Ctx.junit.xml")));

  fs::create_directory(s.path("ci"));
  o = s.run(Shop::args("-tcontext", "Pkg.Ctx", {"-junit", "ci/../Ctx.junit.xml"}));
  EXPECT_EQ(o.status, 10);
  EXPECT_EQ(o.out, "");
  EXPECT_EQ(o.err, "");
  EXPECT_EQ(masked(test::readFile(s.path("Ctx.junit.xml"))), expected("Ctx.xml"));
}

// Like every path of the command line: backslashes are turned into "/" and
// double quotes removed.
TEST(JunitFile, PathWithBackslashesAndQuotes) {
  Shop s;
  fs::create_directory(s.path("ci"));
  Outcome o = s.run(Shop::args("-tcase", "Pkg.Ctx.CodeFail", {"-junit", "\"ci\\j.xml\""}));
  EXPECT_EQ(o.status, 10);
  EXPECT_EQ(o.err, "");
  EXPECT_EQ(masked(test::readFile(s.path("ci/j.xml"))), expected("CodeFail.xml"));
}

// Without the stylesheet, one line says so and no file is left.
TEST(JunitFile, MissingStylesheet) {
  test::TempDir dir;
  const std::string xml = dir.write(
      "Ctx.xml",
      test::readFile(std::string(QENDOR_SOURCE_DIR) + "/tests/stylesheet_samples/context.xml"));
  const std::string junit = dir.write("j.xml", "an earlier run");
  testing::internal::CaptureStderr();
  EXPECT_FALSE(writeJunitFile(dir.file("none.xslt"), xml, junit));
  const std::string err = testing::internal::GetCapturedStderr();
  EXPECT_EQ(err.rfind("qendor: " + junit + ": the stylesheet " + dir.file("none.xslt") +
                          " could not be read: ",
                      0),
            0u)
      << err;
  EXPECT_EQ(std::count(err.begin(), err.end(), '\n'), 1) << err;
  EXPECT_FALSE(test::fileExists(junit));
  EXPECT_EQ(test::filesIn(dir.path()), std::vector<std::string>{"Ctx.xml"});
}

// The file of a document is the stylesheet's output, whole.
TEST(JunitFile, WrittenFromASavedDocument) {
  test::TempDir dir;
  const std::string xml = dir.write(
      "Ctx.xml",
      test::readFile(std::string(QENDOR_SOURCE_DIR) + "/tests/stylesheet_samples/context.xml"));
  const std::string junit = dir.write("j.xml", "an earlier run");
  testing::internal::CaptureStderr();
  EXPECT_TRUE(
      writeJunitFile(std::string(QENDOR_BINARY_DIR) + "/TestResult2JUnit.xslt", xml, junit));
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  const std::string written = test::readFile(junit);
  EXPECT_EQ(written.rfind(
                "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<testsuites name=\"Shop.Checkout\" "
                "tests=\"9\" failures=\"1\" errors=\"4\" time=\"0\">\n",
                0),
            0u)
      << written;
  EXPECT_EQ(written.substr(written.size() - 29), "  </testsuite>\n</testsuites>\n");
  EXPECT_EQ(test::filesIn(dir.path()), (std::vector<std::string>{"Ctx.xml", "j.xml"}));
}

TEST(JunitFile, IsTheStylesheetsOutputForTheContextsDocument) {
  Shop s;
  Outcome o = s.run(Shop::args("-tcontext", "Pkg.Ctx", {"-junit", "junit.xml"}));
  EXPECT_EQ(o.status, 10);
  Outcome x =
      test::runProgram("/usr/bin/xsltproc",
                       {"-o", "by-xsltproc.xml",
                        std::string(QENDOR_BINARY_DIR) + "/TestResult2JUnit.xslt", "out/Ctx.xml"},
                       s.dir().path());
  ASSERT_EQ(x.status, 0) << x.err;
  EXPECT_EQ(test::readFile(s.path("junit.xml")), test::readFile(s.path("by-xsltproc.xml")));
}

TEST(JunitFile, TestCaseRunWritesOneTestCase) {
  Shop s;
  const std::string junit = s.path("CodeFail.junit.xml");  // an absolute path
  Outcome o = s.run(Shop::args("-tcase", "Pkg.Ctx.CodeFail", {"-junit", junit}));
  EXPECT_EQ(o.status, 10);
  EXPECT_EQ(o.err, "");
  EXPECT_EQ(masked(test::readFile(junit)), expected("CodeFail.xml"));
}

// Everything but the JUnit file is as without the option.
TEST(JunitFile, ChangesNothingElse) {
  for (const char* which : {"-tcontext", "-tcase"}) {
    const std::string name = which == std::string("-tcontext") ? "Pkg.Ctx" : "Pkg.Ctx.NoEnd";
    Shop plain, with;
    Outcome a = plain.run(Shop::args(which, name));
    Outcome b = with.run(Shop::args(which, name, {"-junit", "j.xml"}));
    EXPECT_EQ(a.status, b.status) << which;
    EXPECT_EQ(a.out, b.out) << which;
    EXPECT_EQ(a.err, b.err) << which;
    const std::vector<std::string> files = test::filesIn(plain.path("out"));
    EXPECT_EQ(files, test::filesIn(with.path("out"))) << which;
    // The HTML shows the header's time as text: every clock reading is masked.
    static const std::regex clock("[0-9]{2}:[0-9]{2}:[0-9]{2}");
    for (const std::string& file : files) {
      const std::string a =
          std::regex_replace(test::readFile(plain.path("out/" + file)), clock, "*");
      const std::string b =
          std::regex_replace(test::readFile(with.path("out/" + file)), clock, "*");
      EXPECT_TRUE(a == b) << which << " " << file;
    }
    EXPECT_TRUE(test::fileExists(with.path("j.xml"))) << which;
    EXPECT_FALSE(test::fileExists(plain.path("j.xml"))) << which;
  }
}

TEST(JunitFile, NoneAfterAUsageErrorOrAnUnknownTestCase) {
  Shop s;
  Outcome o = s.run({"-infofile", "shop.info", "-resultfile", "results.log", "-outdirectory", "out",
                     "-junit", "j.xml"});
  EXPECT_EQ(o.status, 20);
  EXPECT_FALSE(test::fileExists(s.path("j.xml")));
  o = s.run(Shop::args("-tcase", "Pkg.Ctx.Nobody", {"-junit", "j.xml"}));
  EXPECT_EQ(o.status, 22);
  EXPECT_EQ(o.err, "");
  EXPECT_FALSE(test::fileExists(s.path("j.xml")));
}

TEST(JunitFile, WrittenWithoutXsltproc) {
  Shop s;
  test::TempDir emptyPath;
  Outcome o =
      s.run(Shop::args("-tcase", "Pkg.Ctx.CodeFail", {"-junit", "j.xml"}), emptyPath.path());
  EXPECT_EQ(o.status, 10);
  EXPECT_EQ(o.err, "qendor: xsltproc not found: 1 HTML report not written\n");
  EXPECT_EQ(masked(test::readFile(s.path("j.xml"))), expected("CodeFail.xml"));
  EXPECT_FALSE(test::fileExists(s.path("out/CodeFail.html")));
}

// A file that cannot be written is told on one line and leaves the exit
// status to the reports.
TEST(JunitFile, UnwritableFileKeepsTheExitStatus) {
  Shop s;
  s.dir().write("ci/j.xml", "an earlier run");
  Outcome o = s.run(Shop::args("-tcase", "Pkg.Ctx.SdPass", {"-junit", "ci"}));
  EXPECT_EQ(o.status, 0);
  EXPECT_EQ(o.out, "");
  EXPECT_EQ(o.err, "qendor: ci: Is a directory\n");
  EXPECT_EQ(test::readFile(s.path("ci/j.xml")), "an earlier run");
  EXPECT_TRUE(test::fileExists(s.path("out/SdPass.html")));
  EXPECT_EQ(test::filesIn(s.path("ci")), std::vector<std::string>{"j.xml"});
}

// Without the run's own result document there is no JUnit file either: an
// earlier run's is removed, and one line says why.
TEST(JunitFile, NoneWhenTheResultDocumentIsLost) {
  Shop s;
  fs::create_directories(s.path("out/Ctx.xml"));
  s.dir().write("j.xml", "an earlier run");
  Outcome o = s.run(Shop::args("-tcontext", "Pkg.Ctx", {"-junit", "j.xml"}));
  EXPECT_EQ(o.status, 25);
  EXPECT_EQ(o.out, "");
  EXPECT_EQ(o.err,
            "qendor: out/Ctx.xml: Is a directory\n"
            "qendor: j.xml: its result document was not written\n");
  EXPECT_FALSE(test::fileExists(s.path("j.xml")));
}

// Two runs writing the same file at once leave one of their files whole,
// and no temporary file.
TEST(JunitFile, ParallelRunsReplaceTheFileWhole) {
  Shop s;
  std::vector<test::RunningProgram> runs;
  for (int i = 0; i < 4; ++i) {
    // Each run its own reports, all the same JUnit file.
    const std::string out = "out" + std::to_string(i);
    fs::copy(s.path("out"), s.path(out), fs::copy_options::recursive);
    std::vector<std::string> args =
        Shop::args(i % 2 ? "-tcase" : "-tcontext", i % 2 ? "Pkg.Ctx.CodeFail" : "Pkg.Ctx",
                   {"-junit", "j.xml"});
    args[5] = out;
    runs.push_back(test::startProgram(QENDOR_BINARY, args, s.dir().path(), "/usr/bin:/bin"));
  }
  for (test::RunningProgram& r : runs) EXPECT_EQ(r.finish().err, "");
  const std::string left = masked(test::readFile(s.path("j.xml")));
  EXPECT_TRUE(left == expected("Ctx.xml") || left == expected("CodeFail.xml")) << left;
  for (const auto& entry : fs::directory_iterator(s.dir().path())) {
    EXPECT_NE(entry.path().extension(), ".tmp") << entry.path();
  }
}

}  // namespace
}  // namespace qendor
