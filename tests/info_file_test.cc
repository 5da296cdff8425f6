#include "input/info_file.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "base/line_reader.h"
#include "base/run_settings.h"
#include "tests/test_support.h"

namespace qendor {
namespace {

using test::inQuotes;

// What an info file leaves in the settings: "case", "sd" and "file" lines
// per table entry, then every value that is not empty, under its key.
std::string dumpInfo(const RunSettings& s) {
  std::string out;
  for (const auto& [number, name] : s.testCaseNames)
    out += "case " + std::to_string(number) + " " + inQuotes(name) + "\n";
  for (const auto& [number, name] : s.sequenceDiagramNames)
    out += "sd " + std::to_string(number) + " " + inQuotes(name) + "\n";
  for (const auto& [number, path] : s.sourceFiles)
    out += "file " + std::to_string(number) + " " + inQuotes(path) + "\n";
  const std::pair<const char*, const std::string*> values[] = {
      {"OstraVersionNumber", &s.ostraVersionNumber},
      {"OstraBuildNumber", &s.ostraBuildNumber},
      {"OstraKorvanVersionNumber", &s.korvanVersionNumber},
      {"OstraKorvanBuildNumber", &s.korvanBuildNumber},
      {"ActiveProject", &s.activeProject},
      {"ActiveComponent", &s.activeComponent},
      {"ActiveConfiguration", &s.activeConfiguration},
  };
  for (const auto& [key, value] : values) {
    if (!value->empty()) out += std::string(key) + " " + inQuotes(*value) + "\n";
  }
  return out;
}

// The dump of `text` parsed as an info file.
std::string parsed(std::string_view text) {
  RunSettings settings;
  LineReader lines(text);
  parseInfoFile(lines, settings);
  return dumpInfo(settings);
}

struct Case {
  const char* name;
  std::string text;
  const char* dump;
};

const Case kCases[] = {
    {"test case line fills name and diagram", "TESTCASE Pkg.Ctx.CaseOne 1 SdMain\n",
     "case 1 \"Pkg.Ctx.CaseOne\"\nsd 1 \"SdMain\"\n"},
    {"diagram name carries over to a line without one",
     "TESTCASE Pkg.Ctx.CaseOne 1 SdMain\nTESTCASE Pkg.Ctx.CaseTwo 2\n",
     "case 1 \"Pkg.Ctx.CaseOne\"\ncase 2 \"Pkg.Ctx.CaseTwo\"\nsd 1 \"SdMain\"\nsd 2 \"SdMain\"\n"},
    {"diagram name is empty when no earlier line had one",
     "TESTCASE A.B 4\nTESTCASE A.C 5 Sd With Blanks\nTESTCASE A.D 6\n",
     "case 4 \"A.B\"\ncase 5 \"A.C\"\ncase 6 \"A.D\"\n"
     "sd 4 \"\"\nsd 5 \"Sd With Blanks\"\nsd 6 \"Sd With Blanks\"\n"},
    {"last line for a number wins", "TESTCASE A.First 1 SdOne\nTESTCASE A.Second 1 SdTwo\n",
     "case 1 \"A.Second\"\nsd 1 \"SdTwo\"\n"},

    // Test case numbers read like strtol.
    {"letters", "TESTCASE X abc D\n", "case 0 \"X\"\nsd 0 \"D\"\n"},
    {"wraps to 32 bits", "TESTCASE X 4294967297 D\n", "case 1 \"X\"\nsd 1 \"D\"\n"},
    {"negative", "TESTCASE X -3 D\n", "case -3 \"X\"\nsd -3 \"D\"\n"},
    {"digits then letters", "TESTCASE X 12abc D\n", "case 12 \"X\"\nsd 12 \"D\"\n"},
    {"just above the int range", "TESTCASE X 2147483648 D\n",
     "case -2147483648 \"X\"\nsd -2147483648 \"D\"\n"},
    // No blank after the name: the name is also the number field.
    {"name only, a number", "TESTCASE 77\n", "case 77 \"77\"\nsd 77 \"\"\n"},
    {"name only", "TESTCASE Only\n", "case 0 \"Only\"\nsd 0 \"\"\n"},
    {"nothing after the key", "TESTCASE \n", "case 0 \"\"\nsd 0 \"\"\n"},
    // Two blanks: an empty name, the number comes next.
    {"empty name", "TESTCASE  9 D\n", "case 9 \"\"\nsd 9 \"D\"\n"},
    // Two blanks after the number: the diagram name starts with a blank.
    {"diagram name with blanks around", "TESTCASE X 3  D \n", "case 3 \"X\"\nsd 3 \" D \"\n"},

    // FILE lines.
    {"file", "FILE \"src/a.cpp\" 3\n", "file 3 \"src/a.cpp\"\n"},
    {"file with a blank", "FILE \"dir/a b.cpp\" 7\n", "file 7 \"dir/a b.cpp\"\n"},
    // No closing quote: the path is the rest and one character goes.
    {"no closing quote", "FILE \"58\n", "file 8 \"58\"\n"},
    // No quote at all: nothing goes before the path, which is the whole line.
    {"no quote", "FILE 3\n", "file 0 \"FILE 3\"\n"},
    // The character after the closing quote goes whatever it is.
    {"no blank after the quote", "FILE \"a.c\"12\n", "file 2 \"a.c\"\n"},
    {"no number", "FILE \"a.c\"\n", "file 0 \"a.c\"\n"},
    {"number of letters", "FILE \"a.c\" x\n", "file 0 \"a.c\"\n"},
    {"longer key", "FILEX \"b.c\" 4\n", "file 4 \"b.c\"\n"},
    {"file number wraps", "FILE \"c.c\" 4294967297\n", "file 1 \"c.c\"\n"},
    {"backslashes and carriage return", "FILE \"C:\\src\\a.c\" 2\r\n",
     "file 2 \"C:\\\\src\\\\a.c\"\n"},
    {"later file line for a number wins", "FILE \"a.c\" 1\nFILE \"b.c\" 1\n", "file 1 \"b.c\"\n"},

    // Values.
    {"value keys",
     "OstraVersionNumber 7.5\n"
     "OstraBuildNumber 1234\n"
     "OstraKorvanVersionNumber 2.0\n"
     "OstraKorvanBuildNumber 99\n"
     "ActiveProject My Project\n"
     "ActiveComponent  Comp\n"
     "ActiveConfiguration Debug \n",
     "OstraVersionNumber \"7.5\"\nOstraBuildNumber \"1234\"\nOstraKorvanVersionNumber \"2.0\"\n"
     "OstraKorvanBuildNumber \"99\"\nActiveProject \"My Project\"\nActiveComponent \" Comp\"\n"
     "ActiveConfiguration \"Debug \"\n"},
    {"value keeps its carriage return", "OstraVersionNumber 7.5\r\n",
     "OstraVersionNumber \"7.5\\r\"\n"},
    {"key without blank becomes its own value", "ActiveProject\nOstraBuildNumber:12\n",
     "OstraBuildNumber \"OstraBuildNumber:12\"\nActiveProject \"ActiveProject\"\n"},
    // "ActiveProjectX" still sets the project; the later line of a key wins.
    {"keys are prefixes tested in order",
     "ActiveProjectX one\nActiveComponent a\nActiveComponent b\n",
     "ActiveProject \"one\"\nActiveComponent \"b\"\n"},

    // Odd files.
    {"lines that match no key are skipped",
     "  TESTCASE A.B 1 Sd\n"
     "TESTCASE\tA.B 2 Sd\n"
     "testcase A.B 3 Sd\n"
     "\n"
     "# ActiveProject P\n"
     " FILE \"a.c\" 1\n"
     "TESTCASEX A.B 4 Sd\n",
     ""},
    {"empty file reads as nothing", "", ""},
    {"last line without line feed is read", "ActiveProject P\nTESTCASE A.B 1 Sd",
     "case 1 \"A.B\"\nsd 1 \"Sd\"\nActiveProject \"P\"\n"},
    // "2\r" reads as 2; the carried diagram name keeps its carriage return.
    {"crlf lines keep their carriage returns",
     "TESTCASE A.B 1 Sd\r\nTESTCASE A.C 2\r\nFILE \"a.c\" 5\r\n",
     "case 1 \"A.B\"\ncase 2 \"A.C\"\nsd 1 \"Sd\\r\"\nsd 2 \"Sd\\r\"\nfile 5 \"a.c\"\n"},
    {"nul and non-UTF-8 bytes stay in values",
     std::string("ActiveProject a") + '\0' + "b\xff\xfe\nTESTCASE N\xe9 1 S" + '\0' + "D\n",
     "case 1 \"N\\xe9\"\nsd 1 \"S\\0D\"\nActiveProject \"a\\0b\\xff\\xfe\"\n"},
};

TEST(InfoFile, ParsedText) {
  for (const Case& c : kCases) EXPECT_EQ(parsed(c.text), c.dump) << c.name;
}

TEST(InfoFile, HugeSingleLine) {
  const std::string value(10 * 1024 * 1024, 'v');
  const std::string text = "ActiveProject " + value;
  RunSettings settings;
  LineReader lines{std::string_view(text)};
  parseInfoFile(lines, settings);
  EXPECT_EQ(settings.activeProject, value);
}

// The loader: the file named in the run, read into the run.
class InfoFileLoaderTest : public ::testing::Test {
 protected:
  void SetUp() override { resetRun(); }
  void TearDown() override { resetRun(); }

  test::TempDir dir_;
  std::string path_;
};

TEST_F(InfoFileLoaderTest, FillsTheRunSettings) {
  path_ = dir_.write("run.info", "TESTCASE A.B 1 Sd\nFILE \"a.c\" 5\nActiveProject P\n");
  run().infoFile = path_.c_str();
  ASSERT_TRUE(readInfoFile());
  EXPECT_EQ(dumpInfo(run()), "case 1 \"A.B\"\nsd 1 \"Sd\"\nfile 5 \"a.c\"\nActiveProject \"P\"\n");
}

TEST_F(InfoFileLoaderTest, MissingFileFailsAndStoresNothing) {
  run().infoFile = "/nonexistent/qendor/run.info";
  EXPECT_FALSE(readInfoFile());
  EXPECT_TRUE(run().testCaseNames.empty());
}

TEST_F(InfoFileLoaderTest, NoFileNameFails) {
  run().infoFile = nullptr;
  EXPECT_FALSE(readInfoFile());
}

TEST_F(InfoFileLoaderTest, DirectoryReadsAsEmpty) {
  path_ = dir_.path();
  run().infoFile = path_.c_str();
  EXPECT_TRUE(readInfoFile());
  EXPECT_TRUE(run().testCaseNames.empty());
}

TEST_F(InfoFileLoaderTest, PathIsNormalisedBeforeOpening) {
  dir_.write("sub/run.info", "ActiveProject P\n");
  path_ = dir_.path() + "\\\"sub\"\\run.info";
  run().infoFile = path_.c_str();
  ASSERT_TRUE(readInfoFile());
  EXPECT_EQ(run().activeProject, "P");
}

}  // namespace
}  // namespace qendor
