#include "verify/test_case_verdict.h"

#include "base/text.h"
#include "verify/assertion_entries.h"
#include "verify/assertion_text.h"
#include "verify/chart_search.h"
#include "verify/sequence_verification.h"

namespace qendor {

namespace {

// Where the verification stands while the walk goes on.
enum class Outcome { kOpen, kVerified, kFault, kBelowFullCoverage };

bool isChart(VerificationKind kind) {
  return kind == VerificationKind::kFlowchartTest || kind == VerificationKind::kStatechartTest;
}

class Judgement {
 public:
  explicit Judgement(const TestModel& model)
      : model_(model), chart_(model.chart ? *model.chart : emptyChart()) {
    currentState_ = chart_.firstRecord();
  }

  TestCaseVerdict judge(const AssertionList* records) {
    if (!records) {
      status_ = Status::kError;
      return settle();
    }
    verdict_.hasRecords = true;
    if (hasSdAssertion(*records)) verdict_.type = TestType::kSequenceDiagram;
    AssertionEntries entries(*records);
    while (entries.next()) {
      ++verdict_.entries;
      const bool goOn = verdict_.type == TestType::kSequenceDiagram ? sequenceEntry(entries)
                                                                    : chartEntry(entries);
      if (!goOn) break;  // the failing entry is listed but not rolled up
      rollUp(entries);
    }
    notTerminated_ = entries.notTerminated();
    userExit_ = entries.userExit();
    if (verdict_.type == TestType::kSequenceDiagram) {
      summarise(entries.sdiName());
    } else if (isChart(model_.kind)) {
      complete();
    }
    if (notTerminated_ && !userExit_) status_ = Status::kError;
    return settle();
  }

 private:
  static const ChartList& emptyChart() {
    static const ChartList kEmpty;
    return kEmpty;
  }

  // An entry of a sequence diagram test case: its progress value is the
  // next step of the diagram. A value counts whatever the progress parser
  // gave, so a maximum of 0 still yields one.
  bool sequenceEntry(const AssertionEntries& entry) {
    const SequenceLines* lines = model_.sequenceLines;
    if (!lines || model_.kind != VerificationKind::kSdTest) return true;
    std::string value, max, coverage;
    parseProgress(entry.message(), value, max, coverage);
    if (value.empty()) return true;
    if (!verifySdMessage(value, sequencePosition_, *lines)) {
      outcome_ = Outcome::kFault;
      return false;
    }
    if (sequencePosition_ == lines->size()) outcome_ = Outcome::kVerified;
    return true;
  }

  // An entry of any other test case: on a chart, the state that performs it
  // must be reachable from the current one.
  bool chartEntry(const AssertionEntries& entry) {
    if (!model_.chart || !currentState_ || !isChart(model_.kind)) return true;
    VisitedRecords visited;
    const std::string& statement = entry.record().assertionText;
    currentState_ = model_.kind == VerificationKind::kFlowchartTest
                        ? flowchartStep(statement, currentState_, visited, chart_)
                        : statechartStep(statement, currentState_, visited, chart_);
    if (currentState_) return true;
    outcome_ = Outcome::kFault;
    return false;
  }

  // One failed record fails the test case for good.
  void rollUp(const AssertionEntries& entry) {
    if (entry.record().status != Status::kPassed) {
      status_ = Status::kFailed;
      return;
    }
    if (status_ == Status::kFailed) return;
    status_ = Status::kPassed;
    if (contains(entry.message(), "- progress")) lastProgressLine_ = entry.message();
  }

  // The coverage summary also settles the verdict on coverage. Below full
  // coverage a test case that failed anyway, or that the user ended, counts
  // as verified; one that passed everything did not finish.
  void summarise(const std::string& sdiName) {
    parseProgress(lastProgressLine_, verdict_.value, verdict_.max, verdict_.coverage);
    if (outcome_ == Outcome::kFault) {
      status_ = Status::kError;
    } else if (verdict_.coverage != "100") {
      if (status_ != Status::kPassed || userExit_) {
        outcome_ = Outcome::kVerified;
      } else {
        status_ = Status::kError;
        outcome_ = Outcome::kBelowFullCoverage;
      }
    }
    verdict_.summaryName = sdiName;
    verdict_.summaryStatus = status_;
  }

  // A chart test passes when no step failed and the chart can run to its
  // end (or the user ended the test case on purpose).
  void complete() {
    bool completes = false;
    if (outcome_ == Outcome::kOpen) {
      VisitedRecords visited;
      const ChartRecord* end = model_.kind == VerificationKind::kFlowchartTest
                                   ? flowchartCanComplete(currentState_, visited, chart_)
                                   : statechartCanComplete(currentState_, visited, chart_);
      completes = end != nullptr || userExit_;
    }
    if (completes) {
      outcome_ = Outcome::kVerified;
    } else {
      status_ = Status::kError;
      outcome_ = Outcome::kFault;
    }
  }

  // The first rule that holds wins. A test case that did not terminate keeps
  // its document status; only what its context folds says so.
  TestCaseVerdict settle() {
    verdict_.status = status_;
    verdict_.folded = status_;
    if (outcome_ == Outcome::kBelowFullCoverage || (notTerminated_ && !userExit_)) {
      verdict_.verification = VerificationResult::kNotTerminated;
      verdict_.folded = Status::kNotTerminated;
    } else if (model_.kind == VerificationKind::kNoVerificationFile) {
      verdict_.verification = VerificationResult::kSwitchedOff;
    } else if (model_.kind == VerificationKind::kUnsupportedChart) {
      verdict_.verification = VerificationResult::kUnsupportedChart;
    } else if (model_.kind == VerificationKind::kCodeTest) {
      verdict_.verification = VerificationResult::kNoVerificationForCode;
    } else if (model_.kind == VerificationKind::kParallelSd) {
      verdict_.verification = VerificationResult::kParallelUnsupported;
    } else if (outcome_ == Outcome::kVerified) {
      verdict_.verification = VerificationResult::kSuccessful;
    } else {
      verdict_.verification = VerificationResult::kFailed;
    }
    return verdict_;
  }

  const TestModel& model_;
  const ChartList& chart_;
  TestCaseVerdict verdict_;
  Status status_ = Status::kUndefined;
  Outcome outcome_ = Outcome::kOpen;
  size_t sequencePosition_ = 0;
  const ChartRecord* currentState_ = nullptr;
  std::string lastProgressLine_;
  bool notTerminated_ = false;
  bool userExit_ = false;
};

}  // namespace

TestCaseVerdict judgeTestCase(const AssertionList* records, const TestModel& model) {
  return Judgement(model).judge(records);
}

TestCaseVerdict judgeTestCase(int32_t testCase) {
  RunSettings& r = run();
  TestModel model;
  model.kind = readVerificationFile(testCase);
  model.sequenceLines = r.sequenceLines[testCase].get();
  model.chart = r.chartSteps[testCase].get();
  return judgeTestCase(r.testCaseAssertions[testCase].get(), model);
}

}  // namespace qendor
