// The judgement of one test case: its records against its verification.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "base/assertion_record.h"
#include "base/chart_record.h"
#include "base/status.h"
#include "verify/assertion_entries.h"
#include "verify/verification_file.h"

namespace qendor {

// How the documents list a test case's entries.
enum class TestType { kCode, kSequenceDiagram };

enum class VerificationResult {
  kSuccessful,
  kFailed,
  kNotTerminated,
  kSwitchedOff,
  kUnsupportedChart,
  kNoVerificationForCode,
  kParallelUnsupported,
};

// What a test case is judged against: the kind its verification file gave
// and the diagram lines or chart it held (null when it held none). Shared,
// so that an explained verdict can keep the diagram it was judged against.
struct TestModel {
  TestModel() = default;
  explicit TestModel(Verification verification)
      : kind(verification.kind),
        sequenceLines(std::move(verification.sequenceLines)),
        chart(std::move(verification.chart)) {}

  VerificationKind kind = VerificationKind::kNoKind;
  std::shared_ptr<const SequenceLines> sequenceLines;
  std::shared_ptr<const ChartList> chart;
};

// Where a sequence diagram test case's run left its diagram.
struct SequenceDiagnosis {
  // Per diagram line, how many recorded messages the step accepted there.
  std::vector<uint32_t> acceptedAt;
  // The first entry the step rejected, if any: its number among the
  // entries (from 1), its record and the pieces of it the documents show.
  size_t rejectedEntry = 0;
  const AssertionRecord* rejectedRecord = nullptr;
  std::string value;
  std::string sdiName;
  std::string msgId;
  // Where the step stood before the rejected message, or after the last
  // accepted one when the run ended early; and what it would have accepted
  // there (only then).
  size_t position = 0;
  // Where the step stood before it accepted its last message.
  size_t lastFrom = 0;
  bool showExpected = false;
  std::vector<std::string> expected;
};

// The path a chart test case's searches followed.
struct ChartDiagnosis {
  static constexpr size_t kMostSteps = 200;
  struct Step {
    std::string name;  // the state's or transition's name
    std::string guid;
    bool state = false;
    size_t entry = 0;  // the entry it performed (from 1); 0 when passed through
  };
  // The last kMostSteps steps of the path, after `omitted` earlier ones.
  std::deque<Step> path;
  size_t omitted = 0;
  // Where a search found nothing: the record it stood on, the entry it
  // looked for (0 for the search of the chart's end) and its statement, and
  // the transitions it tried.
  bool stopped = false;
  Step stoppedAt;
  size_t stoppedEntry = 0;
  std::string assertion;
  std::vector<std::string> tried;
  // Where the chart performs the assertion that matched nothing, if it does
  // anywhere, and whether a way leads there from the stop.
  bool performed = false;
  Step performedIn;
  bool reachable = false;
  // The first record on a shortest way from the stop to where the assertion
  // is performed (to the chart's end, for the search of the end) that the
  // run did not pass: one whose action performs another assertion, that
  // statement, and whether the run recorded it anywhere; or else the way's
  // first transition, with no statement.
  bool blocked = false;
  Step blockedBy;
  std::string blockedStatement;
  bool blockedRecorded = false;
  // The guids of that way, from the stop.
  std::vector<std::string> way;

  void add(Step step);
};

// The explanation of a verdict, for the documents of a run that asks for it.
struct Diagnosis {
  enum class Kind { kNone, kSequence, kChart };
  Kind kind = Kind::kNone;
  SequenceDiagnosis sequence;
  ChartDiagnosis chart;
  // The diagram the test case was judged against (kSequence only).
  std::shared_ptr<const SequenceLines> sequenceLines;
  // The chart the test case was judged against (kChart only), to draw.
  std::shared_ptr<const ChartList> chartList;
  // The entries after the one the model rejected, which the verdict does
  // not list: the first kMostNotJudged of them, and how many more followed.
  static constexpr size_t kMostNotJudged = 200;
  std::vector<AssertionEntry> notJudged;
  size_t moreNotJudged = 0;
};

// Which parts of its model a test case's run went through, for a run that
// asks for the model coverage: kept beside the verdict, filled by the same
// walk that judges it.
struct ModelPassage {
  // The model: its kind and the diagram lines or chart (which the indexes
  // below point into).
  VerificationKind kind = VerificationKind::kNoKind;
  std::shared_ptr<const SequenceLines> sequenceLines;
  std::shared_ptr<const ChartList> chart;
  // A sequence diagram: the lines (indexes from 0) on which the step
  // accepted a message, ascending, each once; and each loop operand the
  // step walked over while accepting a message: the line of its begin
  // marker and how often the step went into it, ascending by line.
  std::vector<uint32_t> acceptedLines;
  std::vector<std::pair<uint32_t, uint32_t>> loopIterations;
  // A chart: the records (indexes into the chart, ascending) on the paths
  // of the searches that found their record, the search of the chart's
  // end included when it found one.
  std::vector<uint32_t> chartRecords;
};

struct TestCaseVerdict {
  bool hasRecords = false;  // the log opened the test case
  TestType type = TestType::kCode;
  Status status = Status::kUndefined;  // the document's "status"
  // What a test context folds into its own status: `status`, or
  // kNotTerminated when the test case did not terminate.
  Status folded = Status::kUndefined;
  VerificationResult verification = VerificationResult::kFailed;
  // The entries the document lists, parsed once: the walk stops after the
  // entry whose verification failed. Views into the test case's records.
  std::vector<AssertionEntry> entries;

  // The summary of a sequence diagram test case: the diagram instance of the
  // last entry, the status before termination was looked at, and the
  // progress of the last passed entry that reported one ("0" without).
  std::string summaryName;
  Status summaryStatus = Status::kUndefined;
  std::string value = "0";
  std::string max = "0";
  std::string coverage = "0";

  // Only when asked for, and only for a test case judged against a diagram
  // or chart; null otherwise, so that a verdict stays small.
  std::shared_ptr<const Diagnosis> diagnosis;
  // Only when the model coverage is asked for, for a test case judged
  // against a sequence diagram or chart; null otherwise.
  std::shared_ptr<const ModelPassage> passage;
};

// The verdicts of a run's test cases by number, each judged once.
using TestCaseVerdicts = std::map<int32_t, TestCaseVerdict>;

// Walks the records of `log` (null: the log never opened the test case)
// against `model`. Throws std::out_of_range when the sequence verification
// does. With `explain`, a sequence diagram or chart test case's verdict
// carries its diagnosis; with `coverage`, its model passage. REQUIRES: `log`
// outlives the verdict, whose entries are views into it.
TestCaseVerdict judgeTestCase(const TestCaseLog* log, const TestModel& model, bool explain = false,
                              bool coverage = false);

}  // namespace qendor
