#include "input/record_path.h"

#include <gtest/gtest.h>

#include <string>

#include "base/run_settings.h"

namespace qendor {
namespace {

TEST(NormaliseRecordPath, Cases) {
  struct Case {
    const char* path;
    const char* expected;
  };
  const Case cases[] = {
      {"src\\..\\x.c", "src/x.c"},
      {"C:\\src\\a.c", ":/src/a.c"},
      {"C:/../x", ":/x"},
      {"a:b", ":b"},
      {"ab:c", "ab:c"},
      {":a", ":a"},
      {"/abs/a.c", "abs/a.c"},
      {"//a.c", "/a.c"},
      {"/C:/x", "C:/x"},
      {"\\\\server\\x", "/server/x"},
      {"../../a.c", "a.c"},
      {"....//a.c", "a.c"},  // removing "../" makes a new one: removed again
      {".../a.c", ".a.c"},
      {"..\\..\\", ""},
      {"x/..", "x/.."},
      {"./a.c", "./a.c"},
      {"", ""},
  };
  for (const Case& c : cases) EXPECT_EQ(normaliseRecordPath(c.path), c.expected) << c.path;
}

TEST(NormaliseRecordPath, LongNestingIsLinear) {
  std::string path;
  for (int i = 0; i < 1000000; ++i) path += "..";
  for (int i = 0; i < 1000000; ++i) path += "/";
  EXPECT_EQ(normaliseRecordPath(path + "a.c"), "a.c");
}

TEST(MatchSourceFile, Cases) {
  struct Case {
    RunTable<std::string> files;
    const char* path;
    const char* expected;
  };
  const Case cases[] = {
      {{{1, "/home/u/src/a.cpp"}}, "src/a.cpp", "1"},
      // The same relative path matches neither test.
      {{{3, "src/a.cpp"}}, "src/a.cpp", ""},
      {{{1, "D:/src/a.c"}}, ":/src/a.c", "1"},
      {{{5, "xsrc/c.c"}}, "src/c.c", "5"},
      // Both tests on each entry before the next one.
      {{{1, "xsrc/c.c"}, {2, "/y/src/c.c"}}, "src/c.c", "1"},
      // The first occurrence must stand at index 1.
      {{{1, "aab"}}, "a", ""},
      {{{1, "aab"}}, "ab", "1"},
      {{{-5, "/x/a.c"}, {2, "/y/a.c"}}, "a.c", "-5"},
      {{{1, "D:/src/a.c"}, {2, "/home/u/src/a.cpp"}}, "a.c", "1"},
      {{{1, "a.c"}, {2, "s/a.c"}}, "", "2"},
      {{{1, "/src/A.c"}}, "src/a.c", ""},
      {{}, "a.c", ""},
  };
  for (const Case& c : cases) EXPECT_EQ(matchSourceFile(c.path, c.files), c.expected) << c.path;
}

}  // namespace
}  // namespace qendor
