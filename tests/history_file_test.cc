#include "report/history_file.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

#include "tests/history_support.h"
#include "tests/test_support.h"

namespace qendor {
namespace {

const HistoryOwner kOwner{"rk_testcontext", "Pkg.Ctx"};

HistoryRun runAt(const char* time) {
  HistoryRun run;
  run.time = time;
  run.status = Status::kPassed;
  run.cases.push_back(HistoryCase{"A", "Pkg.Ctx.A", Status::kPassed, "x"});
  return run;
}

class HistoryFileTest : public ::testing::Test {
 protected:
  std::string history() const { return dir_.file("hist"); }
  std::string file() const { return dir_.file("hist/Ctx.history.xml"); }

  // Reads through a new HistoryFile, keeping what went to standard error.
  bool readWith(HistoryFile& historyFile, History& read) {
    testing::internal::CaptureStderr();
    const bool usable = historyFile.read(read);
    err_ = testing::internal::GetCapturedStderr();
    return usable;
  }

  test::TempDir dir_;
  std::string err_;
};

TEST_F(HistoryFileTest, CreatesTheDirectoryAndAddsRuns) {
  HistoryFile historyFile(dir_.file("a\\b\\hist"), "Ctx", kOwner);
  EXPECT_EQ(historyFile.path(), dir_.file("a/b/hist/Ctx.history.xml"));
  History read;
  ASSERT_TRUE(readWith(historyFile, read));
  EXPECT_EQ(err_, "");
  EXPECT_TRUE(read.runs.empty());
  ASSERT_TRUE(historyFile.add(runAt("t1")));
  ASSERT_TRUE(historyFile.add(runAt("t2")));
  EXPECT_EQ(test::filesIn(dir_.file("a/b/hist")),
            (std::vector<std::string>{"Ctx.history.xml", "Ctx.history.xml.lock"}));
  ASSERT_EQ(parseHistory(test::readFile(historyFile.path()), kOwner, read), HistoryParse::kRead);
  ASSERT_EQ(read.runs.size(), 2u);
  EXPECT_EQ(read.runs[0].number, 2u);
  EXPECT_EQ(read.runs[0].time, "t2");
  EXPECT_EQ(read.runs[1].number, 1u);
}

TEST_F(HistoryFileTest, UnusableFilesAreMovedAsideWithOneWarning) {
  for (const test::UnusableHistoryFile& c : test::unusableHistoryFiles("Pkg.Ctx")) {
    test::TempDir dir;
    const std::string path = dir.file("Ctx.history.xml");
    test::placeUnusableHistoryFile(c, path);
    HistoryFile historyFile(dir.path(), "Ctx", kOwner);
    History read;
    read.runs.push_back(runAt("stale"));
    ASSERT_TRUE(readWith(historyFile, read)) << c.what;
    EXPECT_EQ(err_, "qendor: history file " + path + " " + c.warning + "; moved aside to " + path +
                        ".bad\n")
        << c.what;
    EXPECT_TRUE(read.runs.empty()) << c.what;
    EXPECT_TRUE(test::fileExists(path + ".bad")) << c.what;
    if (!c.content.empty()) {
      EXPECT_EQ(test::readFile(path + ".bad"), c.content) << c.what;
    }
    testing::internal::CaptureStderr();
    EXPECT_TRUE(historyFile.add(runAt("t1"))) << c.what;
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "") << c.what;
    EXPECT_EQ(parseHistory(test::readFile(path), kOwner, read), HistoryParse::kRead) << c.what;
    EXPECT_EQ(read.runs.size(), 1u) << c.what;
  }
}

TEST_F(HistoryFileTest, AnUnwritableDirectoryGivesOneWarningAndKeepsNothing) {
  // A folder below a regular file can be neither created nor written, even
  // by root, whom permission bits would not stop.
  dir_.write("plain", "x");
  const std::string directory = dir_.file("plain/hist");
  HistoryFile historyFile(directory, "Ctx", kOwner);
  History read;
  EXPECT_FALSE(readWith(historyFile, read));
  EXPECT_EQ(err_, "qendor: history directory " + directory +
                      " cannot be created or written; no history kept\n");
  testing::internal::CaptureStderr();
  EXPECT_FALSE(historyFile.add(runAt("t1")));
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST_F(HistoryFileTest, ConcurrentAddsLoseNoRun) {
  constexpr int kWriters = 8, kAdds = 5;
  {
    HistoryFile first(history(), "Ctx", kOwner);
    History read;
    ASSERT_TRUE(first.read(read));
  }
  std::vector<std::thread> writers;
  for (int w = 0; w < kWriters; ++w) {
    writers.emplace_back([this] {
      HistoryFile historyFile(history(), "Ctx", kOwner);
      History ignored;
      if (!historyFile.read(ignored)) return;
      for (int i = 0; i < kAdds; ++i) historyFile.add(runAt("t"));
    });
  }
  for (std::thread& writer : writers) writer.join();
  History read;
  ASSERT_EQ(parseHistory(test::readFile(file()), kOwner, read), HistoryParse::kRead);
  ASSERT_EQ(read.runs.size(), kHistoryRuns);
  for (size_t i = 0; i < read.runs.size(); ++i) {
    EXPECT_EQ(read.runs[i].number, kWriters * kAdds - i);
  }
  EXPECT_FALSE(test::fileExists(file() + ".tmp"));
}

}  // namespace
}  // namespace qendor
