#include "input/assertion_collection.h"

#include <gtest/gtest.h>

#include <string>

#include "base/run_settings.h"
#include "tests/test_support.h"

namespace qendor {
namespace {

class AssertionCollectionTest : public ::testing::Test {
 protected:
  void SetUp() override { resetRun(); }
  void TearDown() override { resetRun(); }

  // Writes a source file and lists it under `number`.
  void addSource(int32_t number, const std::string& name, const std::string& content) {
    run().sourceFiles[number] = dir_.write(name, content);
  }

  // The statements collected for `number`; fails the test when it has no map.
  const LineStatements& statements(int32_t number) {
    static const LineStatements kNone;
    auto found = run().collectedAssertions.find(number);
    if (found == run().collectedAssertions.end() || !found->second) {
      ADD_FAILURE() << "no statement map for file " << number;
      return kNone;
    }
    return *found->second;
  }

  test::TempDir dir_;
};

TEST_F(AssertionCollectionTest, SingleLineStatements) {
  addSource(1, "a.cpp",
            "int f() {\n"
            "  ZKR_ASSERT_TRUE(a == b);\n"
            "\t \tZKR_ASSERT_SD(\"sd\", \"m\", \"x\");  \n"
            "  int x; ASSERT_TRUE(y);\n"
            "}\n");
  ASSERT_TRUE(collectAssertions());
  EXPECT_EQ(statements(1), (LineStatements{{2, "ZKR_ASSERT_TRUE(a == b);"},
                                           {3, "ZKR_ASSERT_SD(\"sd\", \"m\", \"x\");  "}}));
}

TEST_F(AssertionCollectionTest, MultiLineStatementStoredUnderLineOfSemicolon) {
  std::string content;
  for (int i = 1; i <= 9; ++i) content += "// filler\n";
  content += "ZKR_ASSERT_TRUE(a ==\n   b);\n";
  addSource(4, "b.cpp", content);
  ASSERT_TRUE(collectAssertions());
  EXPECT_EQ(statements(4), (LineStatements{{11, "ZKR_ASSERT_TRUE(a ==b);"}}));
}

TEST_F(AssertionCollectionTest, ContinuationLinesAreNotTested) {
  // Continuation lines are joined however they look: comments, markers and
  // empty lines alike, each without its leading blanks and tabs.
  addSource(1, "c.cpp",
            "  ZKR_ASSERT_SD(\"sd\",\n"
            "\t// \"m\",\n"
            "\n"
            "   ZKR_ASSERT_TRUE(\"x\"); tail\n"
            "ZKR_ASSERT_TRUE(z);\n");
  ASSERT_TRUE(collectAssertions());
  EXPECT_EQ(statements(1),
            (LineStatements{{4, "ZKR_ASSERT_SD(\"sd\",// \"m\",ZKR_ASSERT_TRUE(\"x\"); tail"},
                            {5, "ZKR_ASSERT_TRUE(z);"}}));
}

TEST_F(AssertionCollectionTest, CommentLines) {
  addSource(1, "d.cpp",
            "// ZKR_ASSERT_TRUE(x);\n"
            "/* ZKR_ASSERT_TRUE(x); */\n"
            "  \t//ZKR_ASSERT_TRUE(x);\n"
            "x = 1; // ZKR_ASSERT_TRUE(x);\n"
            "/ ZKR_ASSERT_TRUE(y);\n"
            "zkr_assert_true(x);\n");
  ASSERT_TRUE(collectAssertions());
  EXPECT_EQ(statements(1),
            (LineStatements{{4, "x = 1; // ZKR_ASSERT_TRUE(x);"}, {5, "/ ZKR_ASSERT_TRUE(y);"}}));
}

TEST_F(AssertionCollectionTest, UnfinishedStatementAtEndOfFileIsDropped) {
  addSource(1, "e.cpp", "ZKR_ASSERT_TRUE(a);\nZKR_ASSERT_TRUE(b ==\n  c)\n");
  ASSERT_TRUE(collectAssertions());
  EXPECT_EQ(statements(1), (LineStatements{{1, "ZKR_ASSERT_TRUE(a);"}}));
}

TEST_F(AssertionCollectionTest, LastLineWithoutLineFeedAndCrlf) {
  addSource(1, "f.cpp", "ZKR_ASSERT_TRUE(a);\r\nZKR_ASSERT_TRUE(b\r\n);\r\nZKR_ASSERT_TRUE(c);");
  ASSERT_TRUE(collectAssertions());
  EXPECT_EQ(statements(1), (LineStatements{{1, "ZKR_ASSERT_TRUE(a);\r"},
                                           {3, "ZKR_ASSERT_TRUE(b\r);\r"},
                                           {4, "ZKR_ASSERT_TRUE(c);"}}));
}

TEST_F(AssertionCollectionTest, NoFileEntriesFails) {
  EXPECT_FALSE(collectAssertions());
  EXPECT_TRUE(run().collectedAssertions.empty());
}

TEST_F(AssertionCollectionTest, UnreadableFilesGetEmptyMaps) {
  run().sourceFiles[2] = dir_.file("missing.cpp");
  run().sourceFiles[5] = "";
  EXPECT_FALSE(collectAssertions());
  EXPECT_TRUE(statements(2).empty());
  EXPECT_TRUE(statements(5).empty());
}

TEST_F(AssertionCollectionTest, OneReadableFileIsEnough) {
  run().sourceFiles[1] = dir_.file("missing.cpp");
  addSource(3, "g.cpp", "ZKR_ASSERT(x);\n");
  EXPECT_TRUE(collectAssertions());
  EXPECT_TRUE(statements(1).empty());
  EXPECT_EQ(statements(3), (LineStatements{{1, "ZKR_ASSERT(x);"}}));
}

TEST_F(AssertionCollectionTest, DirectoryAndEmptyFileReadAsEmpty) {
  run().sourceFiles[1] = dir_.path();
  addSource(2, "empty.cpp", "");
  EXPECT_TRUE(collectAssertions());
  EXPECT_TRUE(statements(1).empty());
  EXPECT_TRUE(statements(2).empty());
}

TEST_F(AssertionCollectionTest, PathIsNormalised) {
  dir_.write("sub/h.cpp", "ZKR_ASSERT(h);\n");
  run().sourceFiles[1] = dir_.path() + "\\\"sub\"\\h.cpp";
  EXPECT_TRUE(collectAssertions());
  EXPECT_EQ(statements(1), (LineStatements{{1, "ZKR_ASSERT(h);"}}));
}

TEST_F(AssertionCollectionTest, ExistingMapIsKeptAndOverwrittenPerLine) {
  run().collectedAssertions[1] =
      std::make_unique<LineStatements>(LineStatements{{1, "old one"}, {7, "old seven"}});
  addSource(1, "i.cpp", "ZKR_ASSERT(new);\n");
  EXPECT_TRUE(collectAssertions());
  EXPECT_EQ(statements(1), (LineStatements{{1, "ZKR_ASSERT(new);"}, {7, "old seven"}}));
}

TEST_F(AssertionCollectionTest, NulAndNonUtf8Bytes) {
  std::string line = std::string("ZKR_ASSERT_TRUE(\xff") + '\0' + "\xfe);";
  addSource(1, "j.cpp", "\x80\x81\n" + line + "\n");
  EXPECT_TRUE(collectAssertions());
  EXPECT_EQ(statements(1), (LineStatements{{2, line}}));
}

TEST_F(AssertionCollectionTest, HugeStatementsStayLinear) {
  // One 10 MB line, and a statement of 200000 continuation lines.
  std::string huge = "ZKR_ASSERT_TRUE(" + std::string(10 << 20, 'x') + ");";
  std::string content = huge + "\nZKR_ASSERT_TRUE(\n";
  for (int i = 0; i < 200000; ++i) content += "  y\n";
  content += ");\n";
  addSource(1, "k.cpp", content);
  EXPECT_TRUE(collectAssertions());
  const LineStatements& found = statements(1);
  ASSERT_EQ(found.size(), 2u);
  EXPECT_EQ(found.at(1), huge);
  EXPECT_EQ(found.at(200003), "ZKR_ASSERT_TRUE(" + std::string(200000, 'y') + ");");
}

}  // namespace
}  // namespace qendor
