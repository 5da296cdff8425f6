#include "verify/verification_file.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "base/line_reader.h"
#include "tests/test_support.h"

namespace qendor {
namespace {

std::string_view kindName(VerificationKind kind) {
  switch (kind) {
    case VerificationKind::kNoKind:
      return "no kind";
    case VerificationKind::kFlowchartTest:
      return "flowchart";
    case VerificationKind::kStatechartTest:
      return "statechart";
    case VerificationKind::kSdTest:
      return "sd";
    case VerificationKind::kCodeTest:
      return "code";
    case VerificationKind::kNoVerificationFile:
      return "no file";
    case VerificationKind::kUnsupportedChart:
      return "unsupported chart";
    case VerificationKind::kParallelSd:
      return "parallel sd";
  }
  return "?";
}

// The thirteen fields, "|" between them, the list in [].
std::string dumpRecord(const ChartRecord& r) {
  std::string outs;
  for (const std::string& t : r.outTransitions) outs += (outs.empty() ? "" : ",") + t;
  return r.guid + "|" + r.stateName + "|" + r.stateType + "|" + r.parentName + "|" + r.parentGuid +
         "|" + r.entryAction + "|" + r.exitAction + "|" + r.internalAction + "|" +
         r.defaultTransition + "|[" + outs + "]|" + r.transitionName + "|" + r.transitionAction +
         "|" + r.transitionTarget;
}

// The kind; a "lines:" line with the quoted diagram lines when there are
// any; a "chart:" line and a line per record when there is a chart.
std::string dumpVerification(const Verification& v) {
  std::string out(kindName(v.kind));
  if (v.sequenceLines) {
    out += "\nlines:";
    for (const std::string& line : *v.sequenceLines) out += " " + test::inQuotes(line);
  }
  if (v.chart) {
    out += "\nchart:";
    for (const auto& r : v.chart->records) out += "\n  " + dumpRecord(*r);
  }
  return out;
}

std::string parsed(std::string_view text) {
  LineReader lines(text);
  return dumpVerification(parseVerificationFile(lines));
}

struct Case {
  const char* name;
  std::string text;
  std::string dump;
};

const Case kCases[] = {
    {"empty file", "", "no kind"},
    {"code test only", "CODE_TEST\n", "code"},
    {"the sd section keeps every later line, empty ones included",
     "junk\nSD_TEST trailing\n1\n\nSTATE_NAME:\nCODE_TEST\nSD_TEST\n2",
     "sd\nlines: \"1\" \"\" \"STATE_NAME:\" \"CODE_TEST\" \"SD_TEST\" \"2\""},
    {"clean-up removes the first carriage return, leading blanks and tabs and all blanks",
     "SD_TEST\r\n \t a b\tc\r\r\nx\ry\n\t\t\n  \n", "sd\nlines: \"ab\\tc\\r\" \"xy\" \"\" \"\""},
    {"PAR_BEGIN before SD_TEST is ignored, after it gives parallel",
     "PAR_BEGIN(1)\nSD_TEST\nA\nPAR_BEGIN(2)\nB\n", "parallel sd\nlines: \"A\""},
    {"chart record fields follow the replace and append rules",
     "STATECHART_TEST\n"
     "STATE_NAME:\n"
     "Idle state\n"
     "STATE_TYPE:\nNormal\nSimple\n"
     "PARENT_NAME:\nROOT\n"
     "PARENT_GUID:\nROOT\n"
     "GUID:\ng1\ng2\n"
     "STATE_ACTION_ENTRY:\nZKR_ASSERT(a == 1);\nb();\n"
     "STATE_ACTION_EXIT:\nx\ny\n"
     "STATE_ACTION_INTERNAL:\ni\tj\nk\n"
     "DEFAULT_TRANSITION:\nd1\nd2\n"
     "OUT_TRANSITIONS:\nt1\nt2\n"
     "----------\n"
     "ignored\n"
     "TRANSITION_NAME:\n"
     "go\n"
     "TRANSITION_ACTION:\np\nq\n"
     "TRANSITION_TARGET:\ns1\ns2\n"
     "GUID:\nt1\n",
     "statechart\nchart:\n"
     "  g2|Idlestate|Simple|ROOT|ROOT|ZKR_ASSERT(a==1);b();|xy|i\tjk|d2|[t1,t2]|||\n"
     "  t1|||||||||[]|go|pq|s2"},
    {"a key line loses its value and PARENT_GUID is not GUID",
     "FLOWCHART_TEST\nSTATE_NAME: Idle\nBusy\nPARENT_GUID: p\npg\nGUID:\ng\n",
     "flowchart\nchart:\n  g|Busy|||pg|||||[]|||"},
    {"each STATE_NAME value line creates a record", "FLOWCHART_TEST\nSTATE_NAME:\nA\nB\nGUID:\ng\n",
     "flowchart\nchart:\n  |A||||||||[]|||\n  g|B||||||||[]|||"},
    {"values without a chart are ignored", "GUID:\ng0\nSTATE_NAME:\nA\nSTATE_TYPE:\nDiagram\n",
     "no kind"},
    {"a GUID value before any record of a chart is ignored",
     "FLOWCHART_TEST\nGUID:\ng0\nSTATE_NAME:\nA\n", "flowchart\nchart:\n  |A||||||||[]|||"},
    {"Diagram is unsupported", "STATECHART_TEST\nSTATE_NAME:\nA\nSTATE_TYPE:\nDiagram\nGUID:\ng\n",
     "unsupported chart\nchart:\n  |A|Diagram|||||||[]|||"},
    {"And is unsupported", "STATECHART_TEST\nSTATE_NAME:\nA\nSTATE_TYPE:\nAnd\nGUID:\ng\n",
     "unsupported chart\nchart:\n  |A|And|||||||[]|||"},
    {"History is unsupported", "STATECHART_TEST\nSTATE_NAME:\nA\nSTATE_TYPE:\nHistory\nGUID:\ng\n",
     "unsupported chart\nchart:\n  |A|History|||||||[]|||"},
    {"Stub is unsupported", "STATECHART_TEST\nSTATE_NAME:\nA\nSTATE_TYPE:\nStub\nGUID:\ng\n",
     "unsupported chart\nchart:\n  |A|Stub|||||||[]|||"},
    {"HistoryDeep is unsupported",
     "STATECHART_TEST\nSTATE_NAME:\nA\nSTATE_TYPE:\nHistoryDeep\nGUID:\ng\n",
     "unsupported chart\nchart:\n  |A|HistoryDeep|||||||[]|||"},
    {"an unsupported type as the last line", "STATECHART_TEST\nSTATE_NAME:\nA\nSTATE_TYPE:\nAnd\n",
     "unsupported chart\nchart:\n  |A|And|||||||[]|||"},
    {"Or is supported", "STATECHART_TEST\nSTATE_NAME:\nA\nSTATE_TYPE:\nOr\n",
     "statechart\nchart:\n  |A|Or|||||||[]|||"},
    {"a sub-statechart ends the reading",
     "STATECHART_TEST\nSTATE_NAME:\nA\nSUB_STATECHART x\nSTATE_NAME:\nB\n",
     "unsupported chart\nchart:\n  |A||||||||[]|||"},
    // The values went to the record of the dropped list; the new one is empty.
    {"a second chart line starts a new list but keeps the current record",
     "FLOWCHART_TEST\nSTATE_NAME:\nA\nSTATECHART_TEST\nGUID:\ng\nOUT_TRANSITIONS:\nt\n",
     "statechart\nchart:"},
    {"a second chart line of the other kind",
     "STATECHART_TEST\nSTATE_NAME:\nA\nFLOWCHART_TEST\nSTATE_NAME:\nB\nGUID:\ng\n",
     "flowchart\nchart:\n  g|B||||||||[]|||"},
    // The section is still STATE_NAME, so B makes a second record.
    {"kind lines after a chart change only the kind",
     "FLOWCHART_TEST\nSTATE_NAME:\nA\nCODE_TEST\nB\n",
     "code\nchart:\n  |A||||||||[]|||\n  |B||||||||[]|||"},
    {"an empty chart", "FLOWCHART_TEST\n", "flowchart\nchart:"},
};

TEST(VerificationFile, ParsedText) {
  for (const Case& c : kCases) EXPECT_EQ(parsed(c.text), c.dump) << c.name;
}

// The loader: the test case's file in the output directory.
class VerificationFileLoaderTest : public ::testing::Test {
 protected:
  void SetUp() override { out_ = dir_.path(); }

  // Writes the test case's file and reads it back.
  Verification read(const std::string& content) {
    dir_.write("CaseOne.ver", content);
    return readVerificationFile(out_.c_str(), kName);
  }

  static constexpr const char* kName = "Lib::Pkg.Ctx.CaseOne";
  test::TempDir dir_;
  std::string out_;
};

TEST_F(VerificationFileLoaderTest, ReturnsTheFilesLinesAndChart) {
  EXPECT_EQ(dumpVerification(read("SD_TEST\nA\n")), "sd\nlines: \"A\"");
  EXPECT_EQ(dumpVerification(read("FLOWCHART_TEST\nSTATE_NAME:\nS\n")),
            "flowchart\nchart:\n  |S||||||||[]|||");
}

TEST_F(VerificationFileLoaderTest, MissingFileGivesMinusOneAndNothingElse) {
  const Verification missing = readVerificationFile(out_.c_str(), kName);
  EXPECT_EQ(missing.kind, VerificationKind::kNoVerificationFile);
  EXPECT_EQ(static_cast<int>(VerificationKind::kNoVerificationFile), -1);
  EXPECT_EQ(missing.sequenceLines, nullptr);
  EXPECT_EQ(missing.chart, nullptr);
}

TEST_F(VerificationFileLoaderTest, EmptyReadableFileGivesZero) {
  EXPECT_EQ(read("").kind, VerificationKind::kNoKind);
}

TEST_F(VerificationFileLoaderTest, CodeTestOnlyGivesFourAndNothingElse) {
  const Verification code = read("CODE_TEST\n");
  EXPECT_EQ(code.kind, VerificationKind::kCodeTest);
  EXPECT_EQ(static_cast<int>(VerificationKind::kCodeTest), 4);
  EXPECT_EQ(code.sequenceLines, nullptr);
  EXPECT_EQ(code.chart, nullptr);
}

TEST_F(VerificationFileLoaderTest, ValuesWithoutChartGiveNoChart) {
  const Verification values = read("GUID:\ng0\nSTATE_NAME:\nA\nSTATE_TYPE:\nDiagram\n");
  EXPECT_EQ(values.kind, VerificationKind::kNoKind);
  EXPECT_EQ(values.chart, nullptr);
}

TEST_F(VerificationFileLoaderTest, FileNameComesFromOutDirectoryAndBaseNameThroughNormaliser) {
  // The directory is written with a backslash and quotes; both are normalised.
  dir_.write("sub/CaseOne.ver", "CODE_TEST\n");
  std::string quoted = "\"" + out_ + "\\sub\"";
  EXPECT_EQ(readVerificationFile(quoted.c_str(), kName).kind, VerificationKind::kCodeTest);
}

// A test case the info file does not name has the empty name.
TEST_F(VerificationFileLoaderTest, EmptyNameReadsDotVer) {
  dir_.write(".ver", "STATECHART_TEST\n");
  EXPECT_EQ(readVerificationFile(out_.c_str(), "").kind, VerificationKind::kStatechartTest);
}

TEST_F(VerificationFileLoaderTest, EachReadGivesWhatItsFileHoldsNow) {
  EXPECT_EQ(read("SD_TEST\nA\n").kind, VerificationKind::kSdTest);
  EXPECT_EQ(dumpVerification(read("SD_TEST\nB\nC\n")), "sd\nlines: \"B\" \"C\"");
  EXPECT_EQ(read("FLOWCHART_TEST\nSTATE_NAME:\nA\n").kind, VerificationKind::kFlowchartTest);
  EXPECT_EQ(dumpVerification(read("FLOWCHART_TEST\n")), "flowchart\nchart:");
}

}  // namespace
}  // namespace qendor
