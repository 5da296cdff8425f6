#include "report/file_output.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <functional>
#include <string>
#include <vector>

#include "tests/test_support.h"

namespace qendor {
namespace {

using Mode = FileOutput::Mode;

class FileOutputTest : public ::testing::Test {
 protected:
  // Runs `body` in a child process whose files may grow to `limit` bytes,
  // with SIGXFSZ ignored as the program ignores it, and returns the child's
  // exit status; what it wrote on standard error goes to errors_.
  int underSizeLimit(rlim_t limit, const std::function<int()>& body) {
    const std::string errFile = capture_.file("stderr");
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child == 0) {
      const int fd = ::open(errFile.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
      if (fd < 0 || dup2(fd, STDERR_FILENO) < 0) _exit(100);
      signal(SIGXFSZ, SIG_IGN);
      const rlimit size{limit, limit};
      if (setrlimit(RLIMIT_FSIZE, &size) != 0) _exit(101);
      _exit(body());
    }
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    errors_ = test::readFile(errFile);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  }

  test::TempDir dir_;
  test::TempDir capture_;  // apart, so that dir_ holds only what is written
  std::string errors_;
};

TEST_F(FileOutputTest, WholeFileIsWrittenAsGiven) {
  const std::string path = dir_.file("a.xml");
  const std::string bytes = std::string("<a>\0\xff</a>\n", 10) + std::string(100000, 'x');
  EXPECT_TRUE(writeWholeFile(path, bytes));
  EXPECT_EQ(test::readFile(path), bytes);
  EXPECT_TRUE(writeWholeFile(path, "short"));
  EXPECT_EQ(test::readFile(path), "short");
  EXPECT_TRUE(writeWholeFile(dir_.file("empty"), ""));
  EXPECT_EQ(test::filesIn(dir_.path()), (std::vector<std::string>{"a.xml", "empty"}));
}

TEST_F(FileOutputTest, PermissionsAreThoseOfANewFile) {
  const mode_t previous = umask(022);
  EXPECT_TRUE(writeWholeFile(dir_.file("in_place"), "x"));
  EXPECT_TRUE(writeWholeFile(dir_.file("replaced"), "x", Mode::kReplace));
  umask(previous);
  for (const char* name : {"in_place", "replaced"}) {
    struct stat file;
    ASSERT_EQ(stat(dir_.file(name).c_str(), &file), 0);
    EXPECT_EQ(file.st_mode & 0777, 0644u) << name;
  }
}

TEST_F(FileOutputTest, FileThatCannotBeCreatedIsToldOnce) {
  const std::string path = dir_.file("missing/a.xml");
  FileOutput output(path);
  EXPECT_FALSE(output.open());
  EXPECT_EQ(output.error(), ENOENT);
  EXPECT_FALSE(output.write("x"));
  EXPECT_FALSE(output.finish());

  testing::internal::CaptureStderr();
  EXPECT_FALSE(writeWholeFile(path, "x"));
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "qendor: " + path + ": No such file or directory\n");
  EXPECT_EQ(test::filesIn(dir_.path()), std::vector<std::string>{});
}

TEST_F(FileOutputTest, WriteBeyondTheSizeLimitLeavesNoFile) {
  const std::string path = dir_.file("a.xml");
  const int status = underSizeLimit(1000, [&] {
    FileOutput output(path);
    if (!output.open()) return 1;
    if (!output.write(std::string(600, 'a'))) return 2;
    if (output.write(std::string(600, 'b'))) return 3;
    // Later writes do nothing, even ones that would fit.
    if (output.write("c")) return 4;
    if (output.finish()) return 5;
    return output.error() == EFBIG ? 0 : 6;
  });
  EXPECT_EQ(status, 0);
  EXPECT_EQ(errors_, "");
  EXPECT_EQ(test::filesIn(dir_.path()), std::vector<std::string>{});
}

TEST_F(FileOutputTest, WholeFileBeyondTheSizeLimitIsToldOnce) {
  const std::string path = dir_.file("a.xml");
  const int status = underSizeLimit(1000, [&] {
    return writeWholeFile(path, std::string(999, 'a')) &&
                   !writeWholeFile(dir_.file("b.xml"), std::string(1001, 'b'))
               ? 0
               : 1;
  });
  EXPECT_EQ(status, 0);
  EXPECT_EQ(errors_, "qendor: " + dir_.file("b.xml") + ": File too large\n");
  EXPECT_EQ(test::filesIn(dir_.path()), std::vector<std::string>{"a.xml"});
  EXPECT_EQ(test::readFile(path), std::string(999, 'a'));
}

TEST_F(FileOutputTest, ReplacingKeepsTheOldFileWhenTheNewOneFails) {
  const std::string path = dir_.write("history", "old");
  const int status = underSizeLimit(
      1000, [&] { return writeWholeFile(path, std::string(2000, 'n'), Mode::kReplace) ? 1 : 0; });
  EXPECT_EQ(status, 0);
  EXPECT_EQ(errors_, "qendor: " + path + ": File too large\n");
  EXPECT_EQ(test::filesIn(dir_.path()), std::vector<std::string>{"history"});
  EXPECT_EQ(test::readFile(path), "old");

  EXPECT_TRUE(writeWholeFile(path, "new", Mode::kReplace));
  EXPECT_EQ(test::filesIn(dir_.path()), std::vector<std::string>{"history"});
  EXPECT_EQ(test::readFile(path), "new");
}

TEST_F(FileOutputTest, ReplacingShowsNothingBeforeFinish) {
  const std::string path = dir_.write("history", "old");
  FileOutput output(path, Mode::kReplace);
  ASSERT_TRUE(output.open());
  ASSERT_TRUE(output.write("new"));
  EXPECT_EQ(test::readFile(path), "old");
  EXPECT_EQ(test::filesIn(dir_.path()).size(), 2u);
  ASSERT_TRUE(output.finish());
  EXPECT_EQ(test::readFile(path), "new");
  EXPECT_EQ(test::filesIn(dir_.path()), std::vector<std::string>{"history"});
}

TEST_F(FileOutputTest, UnfinishedFileIsRemoved) {
  {
    FileOutput output(dir_.file("a.xml"));
    ASSERT_TRUE(output.open());
    ASSERT_TRUE(output.write("half"));
  }
  {
    FileOutput output(dir_.file("b.xml"));
    ASSERT_TRUE(output.open());
    output.abandon();
    EXPECT_FALSE(output.write("x"));
  }
  {
    FileOutput output(dir_.write("history", "old"), Mode::kReplace);
    ASSERT_TRUE(output.open());
    ASSERT_TRUE(output.write("half"));
  }
  EXPECT_EQ(test::filesIn(dir_.path()), std::vector<std::string>{"history"});
  EXPECT_EQ(test::readFile(dir_.file("history")), "old");
}

}  // namespace
}  // namespace qendor
