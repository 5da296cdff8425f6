#include "input/assertion_collection.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "base/line_reader.h"
#include "base/run_settings.h"
#include "tests/test_support.h"

namespace qendor {
namespace {

// One "line text" row per statement, the text quoted.
std::string dumpStatements(const LineStatements& statements) {
  std::string out;
  for (const auto& [line, text] : statements)
    out += std::to_string(line) + " " + test::inQuotes(text) + "\n";
  return out;
}

// The statements collected from one source file's text.
std::string collected(std::string_view source) {
  LineStatements statements;
  LineReader lines(source);
  collectStatements(lines, statements);
  return dumpStatements(statements);
}

std::string nineFillerLines() {
  std::string text;
  for (int i = 1; i <= 9; ++i) text += "// filler\n";
  return text;
}

struct Case {
  const char* name;
  std::string source;
  const char* dump;
};

const Case kCases[] = {
    {"single-line statements",
     "int f() {\n"
     "  ZKR_ASSERT_TRUE(a == b);\n"
     "\t \tZKR_ASSERT_SD(\"sd\", \"m\", \"x\");  \n"
     "  int x; ASSERT_TRUE(y);\n"
     "}\n",
     "2 \"ZKR_ASSERT_TRUE(a == b);\"\n3 \"ZKR_ASSERT_SD(\\\"sd\\\", \\\"m\\\", \\\"x\\\");  \"\n"},
    {"a statement over lines is filed under the line of its semicolon",
     nineFillerLines() + "ZKR_ASSERT_TRUE(a ==\n   b);\n", "11 \"ZKR_ASSERT_TRUE(a ==b);\"\n"},
    // Continuation lines are joined however they look: comments, markers and
    // empty lines alike, each without its leading blanks and tabs.
    {"continuation lines are not tested",
     "  ZKR_ASSERT_SD(\"sd\",\n"
     "\t// \"m\",\n"
     "\n"
     "   ZKR_ASSERT_TRUE(\"x\"); tail\n"
     "ZKR_ASSERT_TRUE(z);\n",
     "4 \"ZKR_ASSERT_SD(\\\"sd\\\",// \\\"m\\\",ZKR_ASSERT_TRUE(\\\"x\\\"); tail\"\n"
     "5 \"ZKR_ASSERT_TRUE(z);\"\n"},
    {"comment lines",
     "// ZKR_ASSERT_TRUE(x);\n"
     "/* ZKR_ASSERT_TRUE(x); */\n"
     "  \t//ZKR_ASSERT_TRUE(x);\n"
     "x = 1; // ZKR_ASSERT_TRUE(x);\n"
     "/ ZKR_ASSERT_TRUE(y);\n"
     "zkr_assert_true(x);\n",
     "4 \"x = 1; // ZKR_ASSERT_TRUE(x);\"\n5 \"/ ZKR_ASSERT_TRUE(y);\"\n"},
    {"an unfinished statement at the end of the file is dropped",
     "ZKR_ASSERT_TRUE(a);\nZKR_ASSERT_TRUE(b ==\n  c)\n", "1 \"ZKR_ASSERT_TRUE(a);\"\n"},
    {"last line without line feed, and crlf",
     "ZKR_ASSERT_TRUE(a);\r\nZKR_ASSERT_TRUE(b\r\n);\r\nZKR_ASSERT_TRUE(c);",
     "1 \"ZKR_ASSERT_TRUE(a);\\r\"\n3 \"ZKR_ASSERT_TRUE(b\\r);\\r\"\n4 \"ZKR_ASSERT_TRUE(c);\"\n"},
    {"nul and non-UTF-8 bytes", std::string("\x80\x81\nZKR_ASSERT_TRUE(\xff") + '\0' + "\xfe);\n",
     "2 \"ZKR_ASSERT_TRUE(\\xff\\0\\xfe);\"\n"},
    {"empty file", "", ""},
};

TEST(AssertionCollection, StatementsOfASource) {
  for (const Case& c : kCases) EXPECT_EQ(collected(c.source), c.dump) << c.name;
}

TEST(AssertionCollection, StatementsAreAddedToWhatTheMapHolds) {
  LineStatements statements{{1, "old one"}, {7, "old seven"}};
  LineReader lines{std::string_view("ZKR_ASSERT(new);\n")};
  collectStatements(lines, statements);
  EXPECT_EQ(dumpStatements(statements), "1 \"ZKR_ASSERT(new);\"\n7 \"old seven\"\n");
}

TEST(AssertionCollection, HugeStatementsStayLinear) {
  // One 10 MB line, and a statement of 200000 continuation lines.
  std::string huge = "ZKR_ASSERT_TRUE(" + std::string(10 << 20, 'x') + ");";
  std::string content = huge + "\nZKR_ASSERT_TRUE(\n";
  for (int i = 0; i < 200000; ++i) content += "  y\n";
  content += ");\n";
  LineStatements found;
  LineReader lines{std::string_view(content)};
  collectStatements(lines, found);
  ASSERT_EQ(found.size(), 2u);
  EXPECT_EQ(found.at(1), huge);
  EXPECT_EQ(found.at(200003), "ZKR_ASSERT_TRUE(" + std::string(200000, 'y') + ");");
}

// The loader: every source file of the run, read into a table by number.
class AssertionCollectionLoaderTest : public ::testing::Test {
 protected:
  // Writes a source file and lists it under `number`.
  void addSource(int32_t number, const std::string& name, const std::string& content) {
    sourceFiles_[number] = dir_.write(name, content);
  }

  // Collects the statements of every listed file.
  bool collect() {
    collected_ = collectAssertions(sourceFiles_);
    return collected_.anyFileRead;
  }

  // The statements collected for `number`; "no map" when it has none.
  std::string statements(int32_t number) const {
    auto found = collected_.statements.find(number);
    if (found == collected_.statements.end()) return "no map";
    return dumpStatements(found->second);
  }

  test::TempDir dir_;
  RunTable<std::string> sourceFiles_;
  CollectedAssertions collected_;
};

TEST_F(AssertionCollectionLoaderTest, EachFileUnderItsNumber) {
  addSource(1, "a.cpp", "ZKR_ASSERT_TRUE(a);\n");
  addSource(4, "b.cpp", "x;\nZKR_ASSERT_TRUE(b ==\n c);\n");
  ASSERT_TRUE(collect());
  EXPECT_EQ(statements(1), "1 \"ZKR_ASSERT_TRUE(a);\"\n");
  EXPECT_EQ(statements(4), "3 \"ZKR_ASSERT_TRUE(b ==c);\"\n");
  EXPECT_EQ(statements(2), "no map");
  EXPECT_EQ(collected_.statements.size(), 2u);
}

TEST_F(AssertionCollectionLoaderTest, NoFileEntriesFails) {
  EXPECT_FALSE(collect());
  EXPECT_TRUE(collected_.statements.empty());
}

TEST_F(AssertionCollectionLoaderTest, UnreadableFilesGetEmptyMaps) {
  sourceFiles_[2] = dir_.file("missing.cpp");
  sourceFiles_[5] = "";
  EXPECT_FALSE(collect());
  EXPECT_EQ(statements(2), "");
  EXPECT_EQ(statements(5), "");
}

TEST_F(AssertionCollectionLoaderTest, OneReadableFileIsEnough) {
  sourceFiles_[1] = dir_.file("missing.cpp");
  addSource(3, "g.cpp", "ZKR_ASSERT(x);\n");
  EXPECT_TRUE(collect());
  EXPECT_EQ(statements(1), "");
  EXPECT_EQ(statements(3), "1 \"ZKR_ASSERT(x);\"\n");
}

TEST_F(AssertionCollectionLoaderTest, DirectoryAndEmptyFileReadAsEmpty) {
  sourceFiles_[1] = dir_.path();
  addSource(2, "empty.cpp", "");
  EXPECT_TRUE(collect());
  EXPECT_EQ(statements(1), "");
  EXPECT_EQ(statements(2), "");
}

TEST_F(AssertionCollectionLoaderTest, PathIsNormalised) {
  dir_.write("sub/h.cpp", "ZKR_ASSERT(h);\n");
  sourceFiles_[1] = dir_.path() + "\\\"sub\"\\h.cpp";
  EXPECT_TRUE(collect());
  EXPECT_EQ(statements(1), "1 \"ZKR_ASSERT(h);\"\n");
}

}  // namespace
}  // namespace qendor
