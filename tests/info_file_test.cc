#include "input/info_file.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

#include "base/run_settings.h"
#include "tests/test_support.h"

namespace qendor {
namespace {

class InfoFileTest : public ::testing::Test {
 protected:
  void SetUp() override { resetRun(); }
  void TearDown() override { resetRun(); }

  // Writes `content` as the info file and reads it.
  bool read(const std::string& content) {
    path_ = dir_.write("run.info", content);
    run().infoFile = path_.c_str();
    return readInfoFile();
  }

  test::TempDir dir_;
  std::string path_;
};

using Names = std::map<int32_t, std::string>;

TEST_F(InfoFileTest, TestCaseLineFillsNameAndDiagram) {
  ASSERT_TRUE(read("TESTCASE Pkg.Ctx.CaseOne 1 SdMain\n"));
  EXPECT_EQ(run().testCaseNames, (Names{{1, "Pkg.Ctx.CaseOne"}}));
  EXPECT_EQ(run().sequenceDiagramNames, (Names{{1, "SdMain"}}));
}

TEST_F(InfoFileTest, DiagramNameCarriesOverToLineWithoutOne) {
  ASSERT_TRUE(read("TESTCASE Pkg.Ctx.CaseOne 1 SdMain\nTESTCASE Pkg.Ctx.CaseTwo 2\n"));
  EXPECT_EQ(run().testCaseNames, (Names{{1, "Pkg.Ctx.CaseOne"}, {2, "Pkg.Ctx.CaseTwo"}}));
  EXPECT_EQ(run().sequenceDiagramNames, (Names{{1, "SdMain"}, {2, "SdMain"}}));
}

TEST_F(InfoFileTest, DiagramNameIsEmptyWhenNoEarlierLineHadOne) {
  ASSERT_TRUE(read("TESTCASE A.B 4\nTESTCASE A.C 5 Sd With Blanks\nTESTCASE A.D 6\n"));
  EXPECT_EQ(run().sequenceDiagramNames,
            (Names{{4, ""}, {5, "Sd With Blanks"}, {6, "Sd With Blanks"}}));
}

TEST_F(InfoFileTest, LastLineForANumberWins) {
  ASSERT_TRUE(read("TESTCASE A.First 1 SdOne\nTESTCASE A.Second 1 SdTwo\n"));
  EXPECT_EQ(run().testCaseNames, (Names{{1, "A.Second"}}));
  EXPECT_EQ(run().sequenceDiagramNames, (Names{{1, "SdTwo"}}));
}

TEST_F(InfoFileTest, TestCaseNumbersReadLikeStrtol) {
  struct Case {
    const char* line;
    int32_t number;
    const char* name;
    const char* diagram;
  };
  const Case cases[] = {
      {"TESTCASE X abc D", 0, "X", "D"},
      {"TESTCASE X 4294967297 D", 1, "X", "D"},
      {"TESTCASE X -3 D", -3, "X", "D"},
      {"TESTCASE X 12abc D", 12, "X", "D"},
      {"TESTCASE X 2147483648 D", -2147483647 - 1, "X", "D"},
      // No blank after the name: the name is also the number field.
      {"TESTCASE 77", 77, "77", ""},
      {"TESTCASE Only", 0, "Only", ""},
      {"TESTCASE ", 0, "", ""},
      // Two blanks: an empty name, the number comes next.
      {"TESTCASE  9 D", 9, "", "D"},
      // Two blanks after the number: the diagram name starts with a blank.
      {"TESTCASE X 3  D ", 3, "X", " D "},
  };
  for (const Case& c : cases) {
    resetRun();
    ASSERT_TRUE(read(std::string(c.line) + "\n")) << c.line;
    EXPECT_EQ(run().testCaseNames, (Names{{c.number, c.name}})) << c.line;
    EXPECT_EQ(run().sequenceDiagramNames, (Names{{c.number, c.diagram}})) << c.line;
  }
}

TEST_F(InfoFileTest, FileLines) {
  struct Case {
    const char* line;
    Names files;
  };
  const Case cases[] = {
      {"FILE \"src/a.cpp\" 3", {{3, "src/a.cpp"}}},
      {"FILE \"dir/a b.cpp\" 7", {{7, "dir/a b.cpp"}}},
      // No closing quote: the path is the rest and one character goes.
      {"FILE \"58", {{8, "58"}}},
      // No quote at all: nothing goes before the path, which is the whole line.
      {"FILE 3", {{0, "FILE 3"}}},
      // The character after the closing quote goes whatever it is.
      {"FILE \"a.c\"12", {{2, "a.c"}}},
      {"FILE \"a.c\"", {{0, "a.c"}}},
      {"FILE \"a.c\" x", {{0, "a.c"}}},
      {"FILEX \"b.c\" 4", {{4, "b.c"}}},
      {"FILE \"c.c\" 4294967297", {{1, "c.c"}}},
      {"FILE \"C:\\src\\a.c\" 2\r", {{2, "C:\\src\\a.c"}}},
  };
  for (const Case& c : cases) {
    resetRun();
    ASSERT_TRUE(read(std::string(c.line) + "\n")) << c.line;
    EXPECT_EQ(run().sourceFiles, c.files) << c.line;
  }
}

TEST_F(InfoFileTest, LaterFileLineForANumberWins) {
  ASSERT_TRUE(read("FILE \"a.c\" 1\nFILE \"b.c\" 1\n"));
  EXPECT_EQ(run().sourceFiles, (Names{{1, "b.c"}}));
}

TEST_F(InfoFileTest, ValueKeys) {
  ASSERT_TRUE(
      read("OstraVersionNumber 7.5\n"
           "OstraBuildNumber 1234\n"
           "OstraKorvanVersionNumber 2.0\n"
           "OstraKorvanBuildNumber 99\n"
           "ActiveProject My Project\n"
           "ActiveComponent  Comp\n"
           "ActiveConfiguration Debug \n"));
  EXPECT_EQ(run().ostraVersionNumber, "7.5");
  EXPECT_EQ(run().ostraBuildNumber, "1234");
  EXPECT_EQ(run().korvanVersionNumber, "2.0");
  EXPECT_EQ(run().korvanBuildNumber, "99");
  EXPECT_EQ(run().activeProject, "My Project");
  EXPECT_EQ(run().activeComponent, " Comp");
  EXPECT_EQ(run().activeConfiguration, "Debug ");
}

TEST_F(InfoFileTest, ValueKeepsCarriageReturn) {
  ASSERT_TRUE(read("OstraVersionNumber 7.5\r\n"));
  EXPECT_EQ(run().ostraVersionNumber, "7.5\r");
}

TEST_F(InfoFileTest, KeyWithoutBlankBecomesItsOwnValue) {
  ASSERT_TRUE(read("ActiveProject\nOstraBuildNumber:12\n"));
  EXPECT_EQ(run().activeProject, "ActiveProject");
  EXPECT_EQ(run().ostraBuildNumber, "OstraBuildNumber:12");
}

TEST_F(InfoFileTest, KeysArePrefixesTestedInOrder) {
  // "ActiveProjectX" still sets the project; the later line of a key wins.
  ASSERT_TRUE(read("ActiveProjectX one\nActiveComponent a\nActiveComponent b\n"));
  EXPECT_EQ(run().activeProject, "one");
  EXPECT_EQ(run().activeComponent, "b");
}

TEST_F(InfoFileTest, LinesThatMatchNoKeyAreSkipped) {
  ASSERT_TRUE(
      read("  TESTCASE A.B 1 Sd\n"
           "TESTCASE\tA.B 2 Sd\n"
           "testcase A.B 3 Sd\n"
           "\n"
           "# ActiveProject P\n"
           " FILE \"a.c\" 1\n"
           "TESTCASEX A.B 4 Sd\n"));
  EXPECT_TRUE(run().testCaseNames.empty());
  EXPECT_TRUE(run().sourceFiles.empty());
  EXPECT_EQ(run().activeProject, "");
}

TEST_F(InfoFileTest, EmptyFileReadsAsNothing) {
  ASSERT_TRUE(read(""));
  EXPECT_TRUE(run().testCaseNames.empty());
  EXPECT_TRUE(run().sequenceDiagramNames.empty());
  EXPECT_TRUE(run().sourceFiles.empty());
  EXPECT_EQ(run().ostraVersionNumber, "");
}

TEST_F(InfoFileTest, LastLineWithoutLineFeedIsRead) {
  ASSERT_TRUE(read("ActiveProject P\nTESTCASE A.B 1 Sd"));
  EXPECT_EQ(run().activeProject, "P");
  EXPECT_EQ(run().sequenceDiagramNames, (Names{{1, "Sd"}}));
}

TEST_F(InfoFileTest, CrlfLinesKeepTheirCarriageReturns) {
  ASSERT_TRUE(read("TESTCASE A.B 1 Sd\r\nTESTCASE A.C 2\r\nFILE \"a.c\" 5\r\n"));
  EXPECT_EQ(run().testCaseNames, (Names{{1, "A.B"}, {2, "A.C"}}));
  // "2\r" reads as 2; the carried diagram name keeps its carriage return.
  EXPECT_EQ(run().sequenceDiagramNames, (Names{{1, "Sd\r"}, {2, "Sd\r"}}));
  EXPECT_EQ(run().sourceFiles, (Names{{5, "a.c"}}));
}

TEST_F(InfoFileTest, NulAndNonUtf8BytesStayInValues) {
  std::string content =
      std::string("ActiveProject a") + '\0' + "b\xff\xfe\nTESTCASE N\xe9 1 S" + '\0' + "D\n";
  ASSERT_TRUE(read(content));
  EXPECT_EQ(run().activeProject, std::string("a\0b\xff\xfe", 5));
  EXPECT_EQ(run().testCaseNames, (Names{{1, "N\xe9"}}));
  EXPECT_EQ(run().sequenceDiagramNames, (Names{{1, std::string("S\0D", 3)}}));
}

TEST_F(InfoFileTest, HugeSingleLine) {
  std::string value(10 * 1024 * 1024, 'v');
  ASSERT_TRUE(read("ActiveProject " + value));
  EXPECT_EQ(run().activeProject, value);
}

TEST_F(InfoFileTest, MissingFileFailsAndStoresNothing) {
  run().infoFile = "/nonexistent/qendor/run.info";
  EXPECT_FALSE(readInfoFile());
  EXPECT_TRUE(run().testCaseNames.empty());
}

TEST_F(InfoFileTest, NoFileNameFails) {
  run().infoFile = nullptr;
  EXPECT_FALSE(readInfoFile());
}

TEST_F(InfoFileTest, DirectoryReadsAsEmpty) {
  path_ = dir_.path();
  run().infoFile = path_.c_str();
  EXPECT_TRUE(readInfoFile());
  EXPECT_TRUE(run().testCaseNames.empty());
}

TEST_F(InfoFileTest, PathIsNormalisedBeforeOpening) {
  dir_.write("sub/run.info", "ActiveProject P\n");
  path_ = dir_.path() + "\\\"sub\"\\run.info";
  run().infoFile = path_.c_str();
  ASSERT_TRUE(readInfoFile());
  EXPECT_EQ(run().activeProject, "P");
}

}  // namespace
}  // namespace qendor
