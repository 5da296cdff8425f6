#include "app/report_driver.h"

#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "base/run_settings.h"
#include "tests/test_support.h"

namespace qendor {
namespace {

// Context runs with a fake xsltproc first in PATH. The fake notes
// "start NAME KIND" and "end NAME" in a log (NAME: the XML file's name, KIND:
// the kind of the document it reads), writes the kind into the HTML file and
// says "err NAME" on standard error. The run of A.xml waits until another run
// has started (ten seconds at most), so the overlap shows when it is allowed.
class ReportDriverTest : public ::testing::Test {
 protected:
  void SetUp() override {
    resetRun();
    mkdir(bin_.c_str(), 0755);
    mkdir(out_.c_str(), 0755);
    RunSettings& r = run();
    r.outDirectory = out_.c_str();
    r.testContextName = "Pkg.Ctx";
    r.testCaseNames[1] = "Pkg.Ctx.A";
    r.testCaseNames[2] = "Pkg.Ctx.Ctx";  // its files are the context's
    r.testCaseNames[3] = "Pkg.Other.C";
    r.testCaseNames[4] = "Pkg.Ctx.B";
  }
  void TearDown() override { resetRun(); }

  void installFake() {
    const std::string fake = dir_.write(
        "bin/xsltproc",
        "#!/bin/sh\n"
        "n=$(basename \"$4\")\n"
        "k=$(grep -o 'kind=\"[a-z_]*\"' \"$4\" | head -n 1)\n"
        "echo \"start $n $k\" >> '" +
            log_ +
            "'\n"
            "if [ \"$n\" = A.xml ]; then i=0; while [ $(grep -c '^start' '" +
            log_ +
            "') -lt 2 ] && [ $i -lt 100 ]; do sleep 0.1; i=$((i+1)); done; else sleep 0.2; fi\n"
            "echo \"err $n\" >&2\n"
            "echo \"end $n\" >> '" +
            log_ +
            "'\n"
            "printf '%s' \"$k\" > \"$2\"\n");
    chmod(fake.c_str(), 0755);
    setenv("PATH", (bin_ + ":/usr/bin:/bin").c_str(), 1);
  }

  // Runs the reports, keeping standard output and error.
  int runWith(size_t slots) {
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    const int result = exitCode(runReports(run(), TestCaseLogs(), slots));
    stdout_ = testing::internal::GetCapturedStdout();
    stderr_ = testing::internal::GetCapturedStderr();
    return result;
  }

  std::vector<std::string> outFiles() {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(out_)) {
      names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
  }

  test::TempDir dir_;
  std::string bin_ = dir_.file("bin");
  std::string out_ = dir_.file("out");
  std::string log_ = dir_.file("log.txt");
  test::ScopedEnv path_{"PATH"};
  std::string stdout_;
  std::string stderr_;
};

TEST_F(ReportDriverTest, RendersOverlapAndTheContextReportComesLast) {
  installFake();
  // No test case has records: each is an ERROR, so the context FAILED.
  EXPECT_EQ(runWith(2), 10);
  EXPECT_EQ(stdout_, "");
  EXPECT_EQ(stderr_, "err A.xml\nerr Ctx.xml\nerr B.xml\nerr Ctx.xml\n");
  EXPECT_EQ(outFiles(), (std::vector<std::string>{"A.html", "A.xml", "B.html", "B.xml", "Ctx.html",
                                                  "Ctx.xml"}));
  EXPECT_EQ(test::readFile(out_ + "/A.html"), "kind=\"rk_testcase\"");
  EXPECT_EQ(test::readFile(out_ + "/Ctx.html"), "kind=\"rk_testcontext\"");
  const std::string log = test::readFile(log_);
  EXPECT_EQ(test::overlapIn(log), 2u) << log;
  // The test case Ctx was rendered from its own document, and done before
  // the context's document took its files.
  const size_t first = log.find("start Ctx.xml kind=\"rk_testcase\"");
  const size_t firstEnd = log.find("end Ctx.xml");
  const size_t second = log.find("start Ctx.xml kind=\"rk_testcontext\"");
  ASSERT_NE(first, std::string::npos) << log;
  ASSERT_NE(second, std::string::npos) << log;
  EXPECT_LT(first, firstEnd);
  EXPECT_LT(firstEnd, second);
  // Every run was waited for.
  EXPECT_EQ(std::count(log.begin(), log.end(), '\n'), 8);
  EXPECT_EQ(log.rfind("end "), log.find("end Ctx.xml", second));
}

TEST_F(ReportDriverTest, OneSlotRendersEachReportBeforeTheNext) {
  installFake();
  EXPECT_EQ(runWith(1), 10);
  EXPECT_EQ(stderr_, "err A.xml\nerr Ctx.xml\nerr B.xml\nerr Ctx.xml\n");
  const std::string log = test::readFile(log_);
  EXPECT_EQ(test::overlapIn(log), 1u) << log;
  EXPECT_EQ(test::readFile(out_ + "/Ctx.html"), "kind=\"rk_testcontext\"");
}

TEST_F(ReportDriverTest, MissingXsltprocWarnsAsInASerialRun) {
  setenv("PATH", bin_.c_str(), 1);
  EXPECT_EQ(runWith(2), 10);
  EXPECT_EQ(stdout_, "");
  const std::string warning = "qendor: HTML report " + out_ + "/";
  const std::string reason = " not written: xsltproc could not be started\n";
  EXPECT_EQ(stderr_, warning + "A.html" + reason + warning + "Ctx.html" + reason + warning +
                         "B.html" + reason + warning + "Ctx.html" + reason);
  EXPECT_EQ(outFiles(), (std::vector<std::string>{"A.xml", "B.xml", "Ctx.xml"}));
}

TEST_F(ReportDriverTest, SingleTestCaseRunRendersOnce) {
  installFake();
  run().testCaseName = "Pkg.Ctx.B";
  EXPECT_EQ(runWith(2), 11);
  EXPECT_EQ(stderr_, "err B.xml\n");
  EXPECT_EQ(outFiles(), (std::vector<std::string>{"B.html", "B.xml"}));
  EXPECT_EQ(test::readFile(log_), "start B.xml kind=\"rk_testcase\"\nend B.xml\n");
}

TEST_F(ReportDriverTest, UnknownTestCaseWritesNothing) {
  installFake();
  run().testCaseName = "B";
  EXPECT_EQ(runWith(2), 22);
  EXPECT_EQ(stdout_, "TestCase <B> could not be found in inofile.");
  EXPECT_EQ(outFiles(), std::vector<std::string>{});
  EXPECT_FALSE(test::fileExists(log_));
}

}  // namespace
}  // namespace qendor
