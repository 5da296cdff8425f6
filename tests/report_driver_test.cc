#include "app/report_driver.h"

#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "base/run_settings.h"
#include "tests/render_fixture.h"
#include "tests/test_support.h"

namespace qendor {
namespace {

// Context runs with the gated fake xsltproc first in PATH (see
// render_fixture.h): its log says when each run starts, with the kind of
// the document it reads, and ends; the HTML file holds the same words.
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

  GatedXsltproc& installFake() {
    fake_ = std::make_unique<GatedXsltproc>(dir_, bin_);
    return *fake_;
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
  test::ScopedEnv path_{"PATH"};
  std::unique_ptr<GatedXsltproc> fake_;
  std::string stdout_;
  std::string stderr_;
};

TEST_F(ReportDriverTest, RendersOverlapAndTheContextReportComesLast) {
  // The first two renders go on once both have started.
  GatedXsltproc& fake = installFake();
  fake.holdUntil("A.xml", "start Ctx.xml kind=\"rk_testcase\"");
  fake.holdUntil("Ctx.xml", "start A.xml kind=\"rk_testcase\"");
  // No test case has records: each is an ERROR, so the context FAILED.
  EXPECT_EQ(runWith(2), 10);
  EXPECT_EQ(stdout_, "");
  EXPECT_EQ(stderr_, "err A.xml\nerr Ctx.xml\nerr B.xml\nerr Ctx.xml\n");
  EXPECT_EQ(outFiles(), (std::vector<std::string>{"A.html", "A.xml", "B.html", "B.xml", "Ctx.html",
                                                  "Ctx.xml"}));
  EXPECT_EQ(test::readFile(out_ + "/A.html"), "A.xml kind=\"rk_testcase\"");
  EXPECT_EQ(test::readFile(out_ + "/Ctx.html"), "Ctx.xml kind=\"rk_testcontext\"");
  const std::string log = fake_->log();
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
  // Every run was waited for: each start has its end.
  EXPECT_EQ(std::count(log.begin(), log.end(), '\n'), 8);
  EXPECT_NE(log.find("end Ctx.xml", second), std::string::npos) << log;
}

TEST_F(ReportDriverTest, OneSlotRendersEachReportBeforeTheNext) {
  installFake();
  EXPECT_EQ(runWith(1), 10);
  EXPECT_EQ(stderr_, "err A.xml\nerr Ctx.xml\nerr B.xml\nerr Ctx.xml\n");
  const std::string log = fake_->log();
  EXPECT_EQ(test::overlapIn(log), 1u) << log;
  EXPECT_EQ(test::readFile(out_ + "/Ctx.html"), "Ctx.xml kind=\"rk_testcontext\"");
}

TEST_F(ReportDriverTest, MissingXsltprocIsToldOnceForTheRun) {
  setenv("PATH", bin_.c_str(), 1);
  EXPECT_EQ(runWith(2), 10);
  EXPECT_EQ(stdout_, "");
  // One line for the run, not one per report.
  EXPECT_EQ(stderr_, "qendor: xsltproc not found: 4 HTML reports not written\n");
  EXPECT_EQ(outFiles(), (std::vector<std::string>{"A.xml", "B.xml", "Ctx.xml"}));
}

TEST_F(ReportDriverTest, SingleTestCaseRunRendersOnce) {
  installFake();
  run().testCaseName = "Pkg.Ctx.B";
  EXPECT_EQ(runWith(2), 11);
  EXPECT_EQ(stderr_, "err B.xml\n");
  EXPECT_EQ(outFiles(), (std::vector<std::string>{"B.html", "B.xml"}));
  EXPECT_EQ(fake_->log(), "start B.xml kind=\"rk_testcase\"\nend B.xml\n");
}

TEST_F(ReportDriverTest, UnknownTestCaseWritesNothing) {
  installFake();
  run().testCaseName = "B";
  EXPECT_EQ(runWith(2), 22);
  EXPECT_EQ(stdout_, "TestCase <B> could not be found in inofile.");
  EXPECT_EQ(outFiles(), std::vector<std::string>{});
  EXPECT_EQ(fake_->log(), "");
}

}  // namespace
}  // namespace qendor
