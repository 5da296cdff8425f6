#include "verify/judgement.h"

#include <gtest/gtest.h>

#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

#include "base/line_reader.h"
#include "base/run_settings.h"
#include "base/status.h"
#include "tests/test_case_records.h"
#include "tests/test_support.h"
#include "verify/verification_file.h"

namespace qendor {
namespace {

using test::kCodeFinish;
using test::kCodeStart;
using test::kFourSteps;
using test::kSdFinish;
using test::kSdStart;
using test::kStatechart;
using test::record;
using test::sdStep;

std::string_view resultName(VerificationResult result) {
  switch (result) {
    case VerificationResult::kSuccessful:
      return "successful";
    case VerificationResult::kFailed:
      return "failed";
    case VerificationResult::kNotTerminated:
      return "not terminated";
    case VerificationResult::kSwitchedOff:
      return "switched off";
    case VerificationResult::kUnsupportedChart:
      return "unsupported chart";
    case VerificationResult::kNoVerificationForCode:
      return "none for code";
    case VerificationResult::kParallelUnsupported:
      return "parallel unsupported";
  }
  return "?";
}

// Every field of a verdict on one line: type, status, folded status,
// verification, entries, and the summary (name, status, value/max coverage).
std::string dumpVerdict(const TestCaseVerdict& v) {
  return std::string(v.hasRecords ? "" : "no records, ") +
         (v.type == TestType::kSequenceDiagram ? "SD " : "code ") +
         std::string(statusText(v.status)) + " folded " + std::string(statusText(v.folded)) + ", " +
         std::string(resultName(v.verification)) + ", " + std::to_string(v.entries.size()) +
         " entries, summary " + test::inQuotes(v.summaryName) + " " +
         std::string(statusText(v.summaryStatus)) + " " + v.value + "/" + v.max + " " + v.coverage +
         "%";
}

// The verdict on `records` (none: the log never opened the test case)
// against the verification file `ver` (none: there is no such file).
TestModel modelOf(const char* ver) {
  Verification verification;
  verification.kind = VerificationKind::kNoVerificationFile;
  if (ver) {
    LineReader lines{std::string_view(ver)};
    verification = parseVerificationFile(lines);
  }
  return TestModel(std::move(verification));
}

std::string judged(const std::optional<AssertionList>& records, const char* ver) {
  const std::optional<TestCaseLog> log =
      records ? std::optional<TestCaseLog>(makeTestCaseLog(*records)) : std::nullopt;
  return dumpVerdict(judgeTestCase(log ? &*log : nullptr, modelOf(ver)));
}

// "-" not judged, "accepted", "rejected".
std::string_view stepName(StepResult step) {
  constexpr std::string_view kNames[] = {"-", "accepted", "rejected"};
  return kNames[static_cast<size_t>(step)];
}

// The entries of a verdict, one line each: the macro parts, the marked
// pieces, the progress value, and what the model made of it.
std::string dumpEntries(const TestCaseVerdict& verdict) {
  std::string out;
  for (const AssertionEntry& e : verdict.entries) {
    out += test::inQuotes(e.sdiName) + " " + test::inQuotes(e.msgId) + " " +
           test::inQuotes(e.message) + " guid " + test::inQuotes(e.guid) + " user " +
           test::inQuotes(e.userMessage) + " no " + test::inQuotes(e.inr) + "," +
           test::inQuotes(e.onr) + " arbiter " + test::inQuotes(e.arbiterKind) + " value " +
           test::inQuotes(e.progressValue) + " " + std::string(stepName(e.step)) + " " +
           std::to_string(e.diagramLine) + "\n";
  }
  return out;
}

struct Case {
  const char* name;
  std::optional<AssertionList> records;
  const char* ver;
  const char* verdict;
};

const std::string kFlowchartEndingWell = test::flowchart("LocalTermination");
const std::string kFlowchartNotEnding = test::flowchart("Action");

const Case kCases[] = {
    // Code test cases.
    {"code",
     AssertionList{record(kCodeStart), record("ZKR_ASSERT_TRUE(a)", "FAILED"), record(kCodeFinish)},
     "CODE_TEST",
     "code FAILED folded FAILED, none for code, 2 entries, summary \"\" UNDEFINED 0/0 0%"},
    {"code passing without a verification file",
     AssertionList{record(kCodeStart), record("ZKR_ASSERT_TRUE(a)"), record(kCodeFinish)}, nullptr,
     "code PASSED folded PASSED, switched off, 2 entries, summary \"\" UNDEFINED 0/0 0%"},
    {"code that did not terminate", AssertionList{record(kCodeStart), record("ZKR_ASSERT_TRUE(a)")},
     "CODE_TEST",
     "code ERROR folded NOT_TERMINATED, not terminated, 2 entries, summary \"\" UNDEFINED 0/0 0%"},
    {"code ended by the user", AssertionList{record(kCodeStart), record(test::kUserExit)},
     "CODE_TEST",
     "code PASSED folded PASSED, none for code, 2 entries, summary \"\" UNDEFINED 0/0 0%"},
    {"a skipped last entry still means not terminated",
     AssertionList{record("ZKR_ASSERT_TRUE(a)"), record("no macro here")}, "CODE_TEST",
     "code ERROR folded NOT_TERMINATED, not terminated, 1 entries, summary \"\" UNDEFINED 0/0 0%"},
    {"an empty list stays undefined", AssertionList{}, "CODE_TEST",
     "code UNDEFINED folded UNDEFINED, none for code, 0 entries, summary \"\" UNDEFINED 0/0 0%"},
    {"unsupported chart",
     AssertionList{record(kCodeStart), record("ZKR_ASSERT_TRUE(a)", "FAILED"), record(kCodeFinish)},
     "STATECHART_TEST\nSUB_STATECHART",
     "code FAILED folded FAILED, unsupported chart, 2 entries, summary \"\" UNDEFINED 0/0 0%"},
    {"empty verification file",
     AssertionList{record(kCodeStart), record("ZKR_ASSERT_TRUE(a)", "FAILED"), record(kCodeFinish)},
     "", "code FAILED folded FAILED, failed, 2 entries, summary \"\" UNDEFINED 0/0 0%"},

    // No records.
    {"no records, no verification file", std::nullopt, nullptr,
     "no records, code ERROR folded ERROR, switched off, 0 entries, summary \"\" UNDEFINED 0/0 "
     "0%"},
    {"no records of an SD test", std::nullopt, kFourSteps,
     "no records, code ERROR folded ERROR, failed, 0 entries, summary \"\" UNDEFINED 0/0 0%"},

    // Sequence diagram test cases.
    {"SD with full coverage",
     AssertionList{record(kSdStart), sdStep(1, 4), sdStep(2, 4), sdStep(3, 4), sdStep(4, 4),
                   record(kSdFinish)},
     kFourSteps,
     "SD PASSED folded PASSED, successful, 5 entries, summary \"Main\" PASSED 4/4 100%"},
    {"SD below full coverage",
     AssertionList{record(kSdStart), sdStep(1, 4), sdStep(2, 4), sdStep(3, 4), record(kSdFinish)},
     kFourSteps,
     "SD ERROR folded NOT_TERMINATED, not terminated, 4 entries, summary \"Main\" ERROR 3/4 75%"},
    // Step 3 arrives where 2 is expected: listed, but its progress does not count.
    {"SD fault",
     AssertionList{record(kSdStart), sdStep(1, 4), sdStep(3, 4), sdStep(4, 4), record(kSdFinish)},
     kFourSteps, "SD ERROR folded ERROR, failed, 3 entries, summary \"Main\" ERROR 1/4 25%"},
    // After the failure no later progress is kept.
    {"SD below full coverage with a failure",
     AssertionList{record(kSdStart), sdStep(1, 4), sdStep(2, 4, "FAILED"), sdStep(3, 4),
                   record(kSdFinish)},
     kFourSteps, "SD FAILED folded FAILED, successful, 4 entries, summary \"Main\" FAILED 1/4 25%"},
    {"SD ended by the user below full coverage",
     AssertionList{record(kSdStart), sdStep(1, 4), sdStep(2, 4), record(test::kSdUserExit)},
     kFourSteps, "SD PASSED folded PASSED, successful, 4 entries, summary \"Main\" PASSED 2/4 50%"},
    // The summary is taken before the status turns ERROR.
    {"SD not terminated at full coverage",
     AssertionList{record(kSdStart), sdStep(1, 2), sdStep(2, 2)}, "SD_TEST\n1\n2",
     "SD ERROR folded NOT_TERMINATED, not terminated, 3 entries, summary \"Main\" PASSED 2/2 "
     "100%"},
    {"SD progress of zero maximum is still verified",
     AssertionList{record(kSdStart), sdStep(5, 0), record(kSdFinish)}, "SD_TEST\n5",
     "SD ERROR folded NOT_TERMINATED, not terminated, 2 entries, summary \"Main\" ERROR 5/0 0%"},
    {"SD without a verification file",
     AssertionList{record(kSdStart), sdStep(1, 4), record(kSdFinish)}, nullptr,
     "SD ERROR folded NOT_TERMINATED, not terminated, 2 entries, summary \"Main\" ERROR 1/4 25%"},
    {"SD with a parallel operator is not verified",
     AssertionList{record(kSdStart), sdStep(7, 7), record(kSdFinish)}, "SD_TEST\n1\nPAR_BEGIN(p)",
     "SD PASSED folded PASSED, parallel unsupported, 2 entries, summary \"Main\" PASSED 7/7 100%"},
    {"SD summary name is the last diagram instance",
     AssertionList{record(kSdStart), sdStep(1, 2),
                   record(R"(ZKR_ASSERT_SD("Other", "m2", "x"))", "PASSED", "step2 - progress 2/2"),
                   record(kSdFinish)},
     "SD_TEST\n1\n2",
     "SD PASSED folded PASSED, successful, 3 entries, summary \"Other\" PASSED 2/2 100%"},

    // Chart test cases.
    {"statechart success", AssertionList{record("ZKR_ASSERT_TRUE(x == 1)"), record(kCodeFinish)},
     kStatechart,
     "code PASSED folded PASSED, successful, 1 entries, summary \"\" UNDEFINED 0/0 0%"},
    {"statechart fault",
     AssertionList{record("ZKR_ASSERT_TRUE(y == 2)"), record("ZKR_ASSERT_TRUE(x == 1)"),
                   record(kCodeFinish)},
     kStatechart, "code ERROR folded ERROR, failed, 1 entries, summary \"\" UNDEFINED 0/0 0%"},
    // No entry moved the chart: the completion starts at Init and meets the
    // assertion on Work's entry.
    {"statechart that cannot complete from its first record", AssertionList{record(kCodeFinish)},
     kStatechart, "code ERROR folded ERROR, failed, 0 entries, summary \"\" UNDEFINED 0/0 0%"},
    {"flowchart success", AssertionList{record("ZKR_ASSERT_TRUE(x == 1)"), record(kCodeFinish)},
     kFlowchartEndingWell.c_str(),
     "code PASSED folded PASSED, successful, 1 entries, summary \"\" UNDEFINED 0/0 0%"},
    {"flowchart fault: it cannot complete",
     AssertionList{record("ZKR_ASSERT_TRUE(x == 1)"), record(kCodeFinish)},
     kFlowchartNotEnding.c_str(),
     "code ERROR folded ERROR, failed, 1 entries, summary \"\" UNDEFINED 0/0 0%"},
    {"flowchart ended by the user need not complete",
     AssertionList{record("ZKR_ASSERT_TRUE(x == 1)"), record(test::kUserExit)},
     kFlowchartNotEnding.c_str(),
     "code PASSED folded PASSED, successful, 2 entries, summary \"\" UNDEFINED 0/0 0%"},
};

TEST(Judgement, JudgedInMemory) {
  for (const Case& c : kCases) EXPECT_EQ(judged(c.records, c.ver), c.verdict) << c.name;
}

TEST(Judgement, RangeErrorOfTheSequenceVerificationPropagates) {
  // The alternative's marker has no "(" suffix, which the search needs.
  const TestCaseLog log =
      makeTestCaseLog(AssertionList{record(kSdStart), sdStep(2, 2), record(kSdFinish)});
  EXPECT_THROW(judgeTestCase(&log, modelOf("SD_TEST\nALT_OPERAND_BEGIN\n1")), std::out_of_range);
}

// Each entry carries what the documents write of it, parsed once: the macro
// parts carry over from the record before, a detail text replaces the
// message, and the walk ends at the step the diagram rejects.
TEST(Judgement, EntriesCarryTheirParsedPieces) {
  const TestCaseLog log = makeTestCaseLog(AssertionList{
      record(kSdStart),
      record("ZKR_ASSERT_SD(\"Shop\", \"pay\", \"card\")", "PASSED",
             "card - no:3,4 - progress 1/3 - [Arbiter ASSERT: internal] - GUID "
             "1b4e28ba-2fa1-11d2-883f-0016d3cca427"),
      record("no macro here"), record("ZKR_ASSERT_SD(\"Shop\")", "FAILED", "later - progress 2/3"),
      record("ZKR_ASSERT_SD(\"Shop\", \"ship\", \"back again - progress 1/3\")"),
      record(kSdFinish)});
  const TestCaseVerdict verdict = judgeTestCase(&log, modelOf("SD_TEST\n1\n2\n3"));
  EXPECT_EQ(dumpEntries(verdict),
            "\"Main\" \"m0\" \"Starting test case\\\"\" guid \"\" user \"Starting test case\\\"\" "
            "no \"\",\"\" arbiter \"\" value \"\" - 0\n"
            "\"Shop\" \"pay\" \"card - no:3,4 - progress 1/3 - [Arbiter ASSERT: internal] - GUID "
            "1b4e28ba-2fa1-11d2-883f-0016d3cca427\" guid \"GUID "
            "1b4e28ba-2fa1-11d2-883f-0016d3cca427\" user \"card\" no \"3\",\"4 - progress 1/3 - "
            "[Arbiter ASSERT: internal] - GUID 1b4e28ba-2fa1-11d2-883f-0016d3cca427\" arbiter "
            "\"internal\" value \"1\" accepted 1\n"
            "\"Shop\" \"pay\" \"later - progress 2/3\" guid \"\" user \"later\" no \"\",\"\" "
            "arbiter \"\" value \"2\" accepted 2\n"
            "\"Shop\" \"ship\" \"back again - progress 1/3\\\"\" guid \"\" user \"back again\" "
            "no \"\",\"\" arbiter \"\" value \"1\" rejected 0\n");
  EXPECT_EQ(dumpVerdict(verdict),
            "SD ERROR folded ERROR, failed, 4 entries, summary \"Shop\" ERROR 1/3 33%");
}

// A code test case's entries keep their message only.
TEST(Judgement, CodeEntriesKeepTheirMessage) {
  const TestCaseLog log = makeTestCaseLog(AssertionList{
      record(kCodeStart), record("ZKR_ASSERT_TRUE(a)", "PASSED", "a - no:1,2 - GUID x"),
      record(kCodeFinish)});
  const TestCaseVerdict verdict = judgeTestCase(&log, modelOf("CODE_TEST"));
  EXPECT_EQ(dumpEntries(verdict),
            "\"\" \"\" \"Starting test case\" guid \"\" user \"\" no \"\",\"\" arbiter \"\" value "
            "\"\" - 0\n"
            "\"\" \"\" \"a - no:1,2 - GUID x\" guid \"\" user \"\" no \"\",\"\" arbiter \"\" "
            "value \"\" - 0\n");
}

}  // namespace
}  // namespace qendor
