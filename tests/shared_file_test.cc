#include "report/shared_file.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <unistd.h>

#include <string>
#include <vector>

#include "tests/test_support.h"

namespace qendor {
namespace {

TEST(SharedFile, TheLockIsExclusiveWhileHeld) {
  test::TempDir dir;
  const std::string path = dir.file("x.lock");
  {
    FileLock lock(path);
    ASSERT_TRUE(lock.held());
    // Another open file description of the same file cannot take it now.
    const int other = open(path.c_str(), O_RDWR | O_CLOEXEC);
    ASSERT_GE(other, 0);
    EXPECT_NE(flock(other, LOCK_EX | LOCK_NB), 0);
    close(other);
  }
  const int other = open(path.c_str(), O_RDWR | O_CLOEXEC);
  EXPECT_EQ(flock(other, LOCK_EX | LOCK_NB), 0);
  close(other);
  // The lock file stays.
  EXPECT_EQ(test::filesIn(dir.path()), std::vector<std::string>{"x.lock"});
}

TEST(SharedFile, ALockInAMissingFolderIsNotHeld) {
  test::TempDir dir;
  FileLock lock(dir.file("missing/x.lock"));
  EXPECT_FALSE(lock.held());
}

TEST(SharedFile, ReplaceLeavesOnlyTheNewContent) {
  test::TempDir dir;
  dir.write("f.xml", "old");
  ASSERT_TRUE(replaceFile(dir.file("f.xml"), dir.path(), "new content"));
  EXPECT_EQ(test::readFile(dir.file("f.xml")), "new content");
  EXPECT_EQ(test::filesIn(dir.path()), std::vector<std::string>{"f.xml"});
}

TEST(SharedFile, AFailedReplaceKeepsTheOldFile) {
  test::TempDir dir;
  dir.write("f.xml/inside", "old");
  EXPECT_FALSE(replaceFile(dir.file("f.xml"), dir.path(), "new"));
  EXPECT_EQ(test::readFile(dir.file("f.xml/inside")), "old");
  EXPECT_EQ(test::filesIn(dir.path()), std::vector<std::string>{"f.xml"});
}

TEST(SharedFile, MakeDirectoriesAndReadAll) {
  test::TempDir dir;
  makeDirectories(dir.file("a/b/c"));
  dir.write("a/b/c/f", "text");
  const int fd = open(dir.file("a/b/c/f").c_str(), O_RDONLY | O_CLOEXEC);
  std::string text = "> ";
  EXPECT_TRUE(readAll(fd, text));
  close(fd);
  EXPECT_EQ(text, "> text");
  const int folder = open(dir.file("a").c_str(), O_RDONLY | O_CLOEXEC);
  EXPECT_FALSE(readAll(folder, text));
  close(folder);
}

}  // namespace
}  // namespace qendor
