#include "verify/judgement.h"

#include <algorithm>
#include <unordered_set>

#include "base/text.h"
#include "verify/assertion_entries.h"
#include "verify/assertion_text.h"
#include "verify/chart_search.h"
#include "verify/chart_way.h"
#include "verify/sequence_diagnosis.h"
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
  Judgement(const TestModel& model, bool explain, bool coverage)
      : model_(model), currentState_(model.chart ? model.chart->firstRecord() : nullptr) {
    if (coverage) startPassage();
    if (!explain) return;
    if (model.kind == VerificationKind::kSdTest && model.sequenceLines) {
      diagnosis_ = std::make_shared<Diagnosis>();
      sequenceTrace_ = &diagnosis_->sequence;
      sequenceTrace_->acceptedAt.assign(model.sequenceLines->size(), 0);
      diagnosis_->sequenceLines = model.sequenceLines;
    } else if (isChart(model.kind) && model.chart) {
      diagnosis_ = std::make_shared<Diagnosis>();
      chartTrace_ = &diagnosis_->chart;
      diagnosis_->chartList = model.chart;
    }
  }

  TestCaseVerdict judge(const TestCaseLog* log) {
    if (!log) {
      status_ = Status::kError;
      return conclude();
    }
    verdict_.hasRecords = true;
    if (log->sequenceDiagram) verdict_.type = TestType::kSequenceDiagram;
    const bool sequence = verdict_.type == TestType::kSequenceDiagram;
    AssertionEntries entries(log->records, sequence);
    // Every record but the finish assertion is an entry, as a rule: one
    // allocation holds them, and a context of many test cases keeps no gaps.
    verdict_.entries.reserve(log->records.size());
    bool rejected = false;
    while (entries.next()) {
      AssertionEntry& entry = verdict_.entries.emplace_back(entries.entry());
      const bool goOn = sequence ? sequenceEntry(entry) : chartEntry(entry);
      if (!goOn) {  // the failing entry is listed but not rolled up
        rejected = true;
        break;
      }
      rollUp(entry);
    }
    notTerminated_ = entries.notTerminated();
    userExit_ = entries.userExit();
    if (sequence) {
      summarise(entries.entry().sdiName);
      if (sequenceTrace_) explainSequence();
    } else if (isChart(model_.kind)) {
      complete();
      if (chartTrace_) diagnosis_->kind = Diagnosis::Kind::kChart;
    }
    // Only now, with all the verdict says settled by the walk so far.
    if (rejected && diagnosis_) keepNotJudged(entries);
    if (notTerminated_ && !userExit_) status_ = Status::kError;
    return conclude();
  }

 private:
  // An entry of a sequence diagram test case: its progress value is the
  // next step of the diagram. A value counts whatever the progress parser
  // gave, so a maximum of 0 still yields one.
  bool sequenceEntry(AssertionEntry& entry) {
    std::string_view value, max;
    std::string coverage;
    parseProgress(entry.message, value, max, coverage);
    entry.progressValue = value;
    const SequenceLines* lines = model_.sequenceLines.get();
    if (!lines || model_.kind != VerificationKind::kSdTest) return true;
    if (value.empty()) return true;
    const size_t before = sequencePosition_;
    loopPasses_.clear();
    const bool accepted = passage_ ? verifySdMessage(value, sequencePosition_, *lines, loopPasses_)
                                   : verifySdMessage(value, sequencePosition_, *lines);
    if (!accepted) {
      entry.step = StepResult::kRejected;
      outcome_ = Outcome::kFault;
      if (sequenceTrace_) noteRejected(entry, before);
      return false;
    }
    entry.step = StepResult::kAccepted;
    entry.diagramLine = sequencePosition_;
    if (sequenceTrace_) {
      ++sequenceTrace_->acceptedAt[sequencePosition_ - 1];
      sequenceTrace_->lastFrom = before;
    }
    if (passage_) notePassage(sequencePosition_ - 1);
    if (sequencePosition_ == lines->size()) outcome_ = Outcome::kVerified;
    return true;
  }

  void noteRejected(const AssertionEntry& entry, size_t before) {
    SequenceDiagnosis& trace = *sequenceTrace_;
    trace.rejectedEntry = verdict_.entries.size();
    trace.rejectedRecord = entry.record;
    trace.value = entry.progressValue;
    trace.sdiName = entry.sdiName;
    trace.msgId = entry.msgId;
    trace.position = before;
    trace.showExpected = true;
  }

  // The rest of the walk, for the documents to list as not judged: parsed
  // here, once, like every entry.
  void keepNotJudged(AssertionEntries& entries) {
    while (entries.next()) {
      if (diagnosis_->notJudged.size() == Diagnosis::kMostNotJudged) {
        ++diagnosis_->moreNotJudged;
        continue;
      }
      AssertionEntry& entry = diagnosis_->notJudged.emplace_back(entries.entry());
      if (verdict_.type == TestType::kSequenceDiagram) {
        std::string_view value, max;
        std::string coverage;
        parseProgress(entry.message, value, max, coverage);
        entry.progressValue = value;
      }
    }
  }

  // A run that left the diagram, or ended before its end, is told what the
  // diagram would have taken there.
  void explainSequence() {
    SequenceDiagnosis& trace = *sequenceTrace_;
    diagnosis_->kind = Diagnosis::Kind::kSequence;
    if (!trace.rejectedRecord && (verdict_.coverage != "100" || (notTerminated_ && !userExit_))) {
      trace.position = sequencePosition_;
      trace.showExpected = true;
    }
    if (trace.showExpected) {
      trace.expected = acceptableMessages(*model_.sequenceLines, trace.position);
    }
  }

  // An entry of any other test case: on a chart, the state that performs it
  // must be reachable from the current one.
  bool chartEntry(AssertionEntry& entry) {
    if (!model_.chart || !currentState_ || !isChart(model_.kind)) return true;
    VisitedRecords visited;
    const std::string& statement = entry.record->assertionText;
    ChartSearchTrace search;
    ChartSearchTrace* trace = chartTrace_ || passage_ ? &search : nullptr;
    const ChartRecord* from = currentState_;
    currentState_ = model_.kind == VerificationKind::kFlowchartTest
                        ? flowchartStep(statement, currentState_, visited, *model_.chart, trace)
                        : statechartStep(statement, currentState_, visited, *model_.chart, trace);
    if (chartTrace_) notePath(search, from, statement);
    if (passage_) passedRecords_.insert(search.path.begin(), search.path.end());
    if (currentState_) {
      entry.step = StepResult::kAccepted;
      return true;
    }
    entry.step = StepResult::kRejected;
    outcome_ = Outcome::kFault;
    return false;
  }

  static ChartDiagnosis::Step stepOf(const ChartRecord& record) {
    ChartDiagnosis::Step step;
    step.state = !record.stateName.empty();
    step.name = step.state ? record.stateName : record.transitionName;
    step.guid = record.guid;
    return step;
  }

  // The records a search went through join the path, the one it found
  // marked with the entry; a search that found nothing is where it stopped.
  void notePath(const ChartSearchTrace& search, const ChartRecord* from,
                const std::string& statement) {
    ChartDiagnosis& trace = *chartTrace_;
    if (search.path.empty()) {
      trace.stopped = true;
      if (from) trace.stoppedAt = stepOf(*from);
      trace.stoppedEntry = verdict_.entries.size();
      trace.assertion = statement;
      for (const ChartRecord* tried : search.tried) trace.tried.push_back(tried->transitionName);
      const ChartRecord* performer = performingRecord(*model_.chart, statement);
      if (performer) {
        trace.performed = true;
        trace.performedIn = stepOf(*performer);
        explainWay(
            from, [performer](const ChartRecord& r) { return &r == performer; }, statement);
        trace.reachable = !trace.way.empty();
      }
      return;
    }
    for (size_t i = 0; i < search.path.size(); ++i) {
      // The record a search starts on ends the path already.
      if (i == 0 && search.path[0] == lastOnPath_) continue;
      ChartDiagnosis::Step step = stepOf(*search.path[i]);
      if (i + 1 == search.path.size()) step.entry = verdict_.entries.size();
      trace.add(std::move(step));
    }
    lastOnPath_ = search.path.back();
  }

  // The passage is kept for a test case judged against a diagram or chart.
  void startPassage() {
    const bool sequence = model_.kind == VerificationKind::kSdTest && model_.sequenceLines;
    if (!sequence && !(isChart(model_.kind) && model_.chart)) return;
    passage_ = std::make_shared<ModelPassage>();
    passage_->kind = model_.kind;
    passage_->sequenceLines = model_.sequenceLines;
    passage_->chart = model_.chart;
  }

  // The accepted line, and the loops on the way to it: a loop the step went
  // into counts one iteration; one it passed over is noted with none.
  void notePassage(size_t line) {
    passage_->acceptedLines.push_back(static_cast<uint32_t>(line));
    for (const LoopPass& pass : loopPasses_) {
      uint32_t& iterations = loops_[static_cast<uint32_t>(pass.begin)];
      if (pass.entered) ++iterations;
    }
  }

  void finishPassage() {
    std::vector<uint32_t>& lines = passage_->acceptedLines;
    std::sort(lines.begin(), lines.end());
    lines.erase(std::unique(lines.begin(), lines.end()), lines.end());
    passage_->loopIterations.assign(loops_.begin(), loops_.end());
    if (!passedRecords_.empty()) {
      const ChartList& chart = *model_.chart;
      for (size_t i = 0; i < chart.size(); ++i) {
        if (passedRecords_.count(chart.records[i].get()) > 0) {
          passage_->chartRecords.push_back(static_cast<uint32_t>(i));
        }
      }
    }
    verdict_.passage = std::move(passage_);
  }

  // The shortest way from the stop to a goal, and what on it the run did
  // not pass (an assertion other than `sought` that it may never have
  // recorded).
  void explainWay(const ChartRecord* from, const std::function<bool(const ChartRecord&)>& isGoal,
                  const std::string& sought) {
    ChartDiagnosis& trace = *chartTrace_;
    const std::vector<const ChartRecord*> way = shortestWay(*model_.chart, from, isGoal);
    for (const ChartRecord* record : way) trace.way.push_back(record->guid);
    WayBlock block = firstBlock(way, sought);
    if (!block.record) return;
    trace.blocked = true;
    trace.blockedBy = stepOf(*block.record);
    trace.blockedStatement = std::move(block.statement);
    if (trace.blockedStatement.empty()) return;
    for (const AssertionEntry& entry : verdict_.entries) {
      if (assertionStatementIn(withoutBlanks(entry.record->assertionText)) ==
          trace.blockedStatement) {
        trace.blockedRecorded = true;
        break;
      }
    }
  }

  // One failed record fails the test case for good.
  void rollUp(const AssertionEntry& entry) {
    if (entry.record->status != Status::kPassed) {
      status_ = Status::kFailed;
      return;
    }
    if (status_ == Status::kFailed) return;
    status_ = Status::kPassed;
    if (contains(entry.message, "- progress")) lastProgressLine_ = entry.message;
  }

  // The coverage summary also settles the verdict on coverage. Below full
  // coverage a test case that failed anyway, or that the user ended, counts
  // as verified; one that passed everything did not finish.
  void summarise(std::string_view sdiName) {
    std::string_view value = verdict_.value;
    std::string_view max = verdict_.max;
    parseProgress(lastProgressLine_, value, max, verdict_.coverage);
    verdict_.value = std::string(value);
    verdict_.max = std::string(max);
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
      ChartSearchTrace search;
      ChartSearchTrace* trace = chartTrace_ || passage_ ? &search : nullptr;
      // Without a chart there is no state to start from, and so no end.
      const ChartRecord* end = nullptr;
      if (currentState_) {
        end = model_.kind == VerificationKind::kFlowchartTest
                  ? flowchartCanComplete(currentState_, visited, *model_.chart, trace)
                  : statechartCanComplete(currentState_, visited, *model_.chart, trace);
      }
      completes = end != nullptr || userExit_;
      if (passage_ && end) passedRecords_.insert(search.path.begin(), search.path.end());
      if (chartTrace_ && !completes) {
        chartTrace_->stopped = true;
        if (currentState_) chartTrace_->stoppedAt = stepOf(*currentState_);
        for (const ChartRecord* tried : search.tried) {
          chartTrace_->tried.push_back(tried->transitionName);
        }
        explainWay(currentState_, endsChart, {});
      }
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
  TestCaseVerdict conclude() {
    if (diagnosis_ && diagnosis_->kind != Diagnosis::Kind::kNone) verdict_.diagnosis = diagnosis_;
    if (passage_) finishPassage();
    verdict_.status = status_;
    // A walk that ended early gives back what it did not use.
    if (verdict_.entries.capacity() > 2 * verdict_.entries.size() + 16) {
      verdict_.entries.shrink_to_fit();
    }
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
    return std::move(verdict_);
  }

  const TestModel& model_;
  TestCaseVerdict verdict_;
  Status status_ = Status::kUndefined;
  Outcome outcome_ = Outcome::kOpen;
  size_t sequencePosition_ = 0;
  const ChartRecord* currentState_ = nullptr;
  std::string_view lastProgressLine_;
  bool notTerminated_ = false;
  bool userExit_ = false;
  std::shared_ptr<Diagnosis> diagnosis_;  // when explaining
  SequenceDiagnosis* sequenceTrace_ = nullptr;
  ChartDiagnosis* chartTrace_ = nullptr;
  const ChartRecord* lastOnPath_ = nullptr;
  std::shared_ptr<ModelPassage> passage_;  // when the model coverage is asked for
  std::vector<LoopPass> loopPasses_;       // of the message being stepped
  std::map<uint32_t, uint32_t> loops_;     // loop operand begin line -> iterations
  std::unordered_set<const ChartRecord*> passedRecords_;
};

}  // namespace

void ChartDiagnosis::add(Step step) {
  // Only the end of a long path is kept: that is where the run left it.
  if (path.size() == kMostSteps) {
    path.pop_front();
    ++omitted;
  }
  path.push_back(std::move(step));
}

TestCaseVerdict judgeTestCase(const TestCaseLog* log, const TestModel& model, bool explain,
                              bool coverage) {
  return Judgement(model, explain, coverage).judge(log);
}

}  // namespace qendor
