// The model coverage of a context: its test cases grouped by the model
// they were judged against (the same diagram lines, or the same chart
// records), and per model how many of them went through each step, operand
// and loop of a sequence diagram, or each state and transition of a chart.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "verify/judgement.h"
#include "verify/sequence_diagnosis.h"

namespace qendor {

// How many test cases iterated a loop 0, 1 or more times. A test case
// counts for a loop when the sequence step walked over the loop's operand
// while accepting one of its messages; one that never came to the loop
// counts in none.
struct LoopTally {
  uint32_t zero = 0;
  uint32_t once = 0;
  uint32_t more = 0;
};

// An operand of a sequence diagram's outline: the lines of its begin and
// end markers (indexes from 0).
struct OutlineOperand {
  size_t begin;
  size_t end;
};

// One model and the test cases judged against it.
struct CoveredModel {
  VerificationKind kind = VerificationKind::kNoKind;
  bool sequence = false;  // a sequence diagram; otherwise a chart
  std::shared_ptr<const SequenceLines> sequenceLines;
  std::shared_ptr<const ChartList> chart;
  std::vector<int32_t> members;  // test case numbers, in the order added

  // A sequence diagram: its outline, its operands in outline order, and
  // per line the test cases that had a message accepted there, per operand
  // (same order) those that had one accepted inside it, per loop operand
  // begin line the iteration tally.
  std::vector<OutlineItem> outline;
  std::vector<OutlineOperand> operands;
  std::vector<uint32_t> lineCounts;
  std::vector<uint32_t> operandCounts;
  std::unordered_map<size_t, LoopTally> loops;

  // A chart: per record (file order) the test cases whose path went
  // through it.
  std::vector<uint32_t> recordCounts;
};

// What a model's totals say: of each kind of element, how many there are
// and how many at least one test case reached.
struct CoverageTotals {
  size_t steps = 0, stepsCovered = 0;
  size_t operands = 0, operandsCovered = 0;
  size_t states = 0, statesCovered = 0;
  size_t transitions = 0, transitionsCovered = 0;
};

CoverageTotals coverageTotals(const CoveredModel& model);

// The models of a context's verdicts, in the order their first test case
// was added.
class ModelCoverages {
 public:
  // Adds test case `number` as `verdict` judged it; a verdict without a
  // model passage (no "-coverage", or no diagram or chart) is left out.
  void add(int32_t number, const TestCaseVerdict& verdict);

  const std::vector<CoveredModel>& models() const { return models_; }

 private:
  size_t indexOf(const ModelPassage& passage, size_t hash) const;

  std::vector<CoveredModel> models_;
  std::unordered_multimap<size_t, size_t> byHash_;  // hash of the model -> index
};

// One copy of each distinct model a run judges against: test cases whose
// verification files hold the same lines or records are judged against
// the same object, and the run keeps one copy per model rather than one per
// test case while their passages refer to it.
class ModelRegistry {
 public:
  // The registered model equal to `model` (same kind and content), else
  // `model`, registered now. Models without lines or chart come back as
  // they are.
  TestModel intern(TestModel model);

 private:
  std::unordered_multimap<uint64_t, TestModel> models_;
};

// A fingerprint of a model's content that stays the same from one build to
// the next (FNV-1a over the lines or records), as 16 hexadecimal digits.
std::string modelFingerprint(const CoveredModel& model);

}  // namespace qendor
