#include "base/line_reader.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/test_support.h"

namespace qendor {
namespace {

std::vector<std::string> linesOf(LineReader& reader) {
  std::vector<std::string> lines;
  std::string_view line;
  while (reader.next(line)) lines.emplace_back(line);
  return lines;
}

// The lines of the file at `path`; the same text cut in memory must give the
// same lines.
std::vector<std::string> readAll(const std::string& path) {
  LineReader file(path);
  std::vector<std::string> lines = linesOf(file);
  const std::string text = test::readFile(path);
  LineReader memory{std::string_view(text)};
  EXPECT_EQ(linesOf(memory), lines) << path;
  return lines;
}

TEST(LineReader, SplitsAtLineFeedsOnly) {
  test::TempDir dir;
  std::string path = dir.write("a.txt", "one\r\n two \n\nlast");
  EXPECT_EQ(readAll(path), (std::vector<std::string>{"one\r", " two ", "", "last"}));
}

TEST(LineReader, TrailingLineFeedAddsNoEmptyLine) {
  test::TempDir dir;
  EXPECT_EQ(readAll(dir.write("a.txt", "a\nb\n")), (std::vector<std::string>{"a", "b"}));
  EXPECT_EQ(readAll(dir.write("e.txt", "")), std::vector<std::string>{});
  EXPECT_EQ(readAll(dir.write("n.txt", "\n")), std::vector<std::string>{""});
}

TEST(LineReader, KeepsNulBytesAndLongLines) {
  test::TempDir dir;
  std::string big(10 * 1024 * 1024 + 3, 'x');
  std::string content = std::string("a\0b", 3) + "\n" + big + "\nend";
  auto lines = readAll(dir.write("big.txt", content));
  ASSERT_EQ(lines.size(), 3u);
  EXPECT_EQ(lines[0], std::string("a\0b", 3));
  EXPECT_EQ(lines[1], big);
  EXPECT_EQ(lines[2], "end");
}

TEST(LineReader, LinesAcrossBufferBoundariesComeOutWhole) {
  // Lines of every length from 0 to 3000 bytes, then one of 200 KB, then more
  // short lines: enough text to cross the small and the large buffer often.
  std::vector<std::string> expected;
  std::string content;
  for (int round = 0; round < 2; ++round) {
    for (size_t length = 0; length <= 3000; length += 7) {
      expected.push_back(std::string(length, static_cast<char>('a' + length % 26)));
    }
    expected.push_back(std::string(200 * 1024, 'z'));
  }
  for (const std::string& line : expected) content += line + "\n";
  test::TempDir dir;
  EXPECT_EQ(readAll(dir.write("many.txt", content)), expected);
}

TEST(LineReader, TextInMemoryIsAlwaysOpen) {
  LineReader empty{std::string_view()};
  EXPECT_TRUE(empty.isOpen());
  std::string_view line;
  EXPECT_FALSE(empty.next(line));
  LineReader text{std::string_view("x\r\n\ny")};
  EXPECT_EQ(linesOf(text), (std::vector<std::string>{"x\r", "", "y"}));
}

TEST(LineReader, MissingFileDoesNotOpenAndDirectoryReadsEmpty) {
  test::TempDir dir;
  EXPECT_FALSE(LineReader(dir.file("missing")).isOpen());
  LineReader folder(dir.path());
  EXPECT_TRUE(folder.isOpen());
  std::string_view line;
  EXPECT_FALSE(folder.next(line));
}

}  // namespace
}  // namespace qendor
