#include "verify/model_coverage.h"

#include <algorithm>
#include <cstdio>
#include <string_view>

namespace qendor {

namespace {

// FNV-1a, 64 bits: the same value in every build, so that a history file
// can tell whether an earlier run had the same model.
struct Fnv {
  uint64_t value = 14695981039346656037ull;
  void add(std::string_view text) {
    for (unsigned char c : text) {
      value ^= c;
      value *= 1099511628211ull;
    }
    value ^= 0xff;  // ends the piece, so that "ab","c" differs from "a","bc"
    value *= 1099511628211ull;
  }
};

void addRecord(Fnv& hash, const ChartRecord& r) {
  for (const std::string* field :
       {&r.guid, &r.stateName, &r.stateType, &r.parentName, &r.parentGuid, &r.entryAction,
        &r.exitAction, &r.internalAction, &r.defaultTransition, &r.transitionName,
        &r.transitionAction, &r.transitionTarget}) {
    hash.add(*field);
  }
  for (const std::string& out : r.outTransitions) hash.add(out);
  hash.add("\x01");
}

uint64_t hashOf(VerificationKind kind, const SequenceLines* lines, const ChartList* chart) {
  Fnv hash;
  hash.add(std::to_string(static_cast<int>(kind)));
  if (lines) {
    for (const std::string& line : *lines) hash.add(line);
  }
  if (chart) {
    for (const auto& record : chart->records) addRecord(hash, *record);
  }
  return hash.value;
}

bool sameRecord(const ChartRecord& a, const ChartRecord& b) {
  return a.guid == b.guid && a.stateName == b.stateName && a.stateType == b.stateType &&
         a.parentName == b.parentName && a.parentGuid == b.parentGuid &&
         a.entryAction == b.entryAction && a.exitAction == b.exitAction &&
         a.internalAction == b.internalAction && a.defaultTransition == b.defaultTransition &&
         a.outTransitions == b.outTransitions && a.transitionName == b.transitionName &&
         a.transitionAction == b.transitionAction && a.transitionTarget == b.transitionTarget;
}

bool sameChart(const ChartList& a, const ChartList& b) {
  if (&a == &b) return true;
  if (a.size() != b.size()) return false;
  for (size_t i = 0; i < a.size(); ++i) {
    if (!sameRecord(*a.records[i], *b.records[i])) return false;
  }
  return true;
}

// The operands of an outline with the lines of their end markers.
std::vector<OutlineOperand> operandsOf(const std::vector<OutlineItem>& outline) {
  std::vector<OutlineOperand> operands;
  std::vector<size_t> open;  // indexes into `operands`
  for (const OutlineItem& item : outline) {
    if (item.kind == OutlineItem::Kind::kOperandBegin) {
      open.push_back(operands.size());
      operands.push_back(OutlineOperand{item.line, item.line});
    } else if (item.kind == OutlineItem::Kind::kOperandEnd && !open.empty()) {
      operands[open.back()].end = item.line;
      open.pop_back();
    }
  }
  return operands;
}

CoveredModel newModel(const ModelPassage& passage) {
  CoveredModel model;
  model.kind = passage.kind;
  model.sequence = passage.sequenceLines != nullptr;
  model.sequenceLines = passage.sequenceLines;
  model.chart = passage.chart;
  if (model.sequence) {
    const SequenceLines& lines = *passage.sequenceLines;
    model.outline = sequenceOutline(lines);
    model.operands = operandsOf(model.outline);
    model.lineCounts.assign(lines.size(), 0);
    model.operandCounts.assign(model.operands.size(), 0);
  } else {
    model.recordCounts.assign(passage.chart->size(), 0);
  }
  return model;
}

void addSequencePassage(CoveredModel& model, const ModelPassage& passage) {
  const std::vector<uint32_t>& accepted = passage.acceptedLines;  // ascending
  for (uint32_t line : accepted) {
    if (line < model.lineCounts.size()) ++model.lineCounts[line];
  }
  // An operand is reached when a line strictly between its markers was.
  for (size_t i = 0; i < model.operands.size(); ++i) {
    const OutlineOperand& operand = model.operands[i];
    auto inside = std::upper_bound(accepted.begin(), accepted.end(), operand.begin);
    if (inside != accepted.end() && *inside < operand.end) ++model.operandCounts[i];
  }
  for (const auto& [begin, iterations] : passage.loopIterations) {
    LoopTally& tally = model.loops[begin];
    if (iterations == 0) {
      ++tally.zero;
    } else if (iterations == 1) {
      ++tally.once;
    } else {
      ++tally.more;
    }
  }
}

}  // namespace

CoverageTotals coverageTotals(const CoveredModel& model) {
  CoverageTotals totals;
  if (model.sequence) {
    for (const OutlineItem& item : model.outline) {
      if (item.kind != OutlineItem::Kind::kStep) continue;
      ++totals.steps;
      if (model.lineCounts[item.line] > 0) ++totals.stepsCovered;
    }
    totals.operands = model.operands.size();
    for (uint32_t count : model.operandCounts) {
      if (count > 0) ++totals.operandsCovered;
    }
    return totals;
  }
  for (size_t i = 0; i < model.chart->size(); ++i) {
    const ChartRecord& record = *model.chart->records[i];
    const bool covered = model.recordCounts[i] > 0;
    if (!record.stateName.empty()) {
      ++totals.states;
      if (covered) ++totals.statesCovered;
    } else if (!record.transitionName.empty()) {
      ++totals.transitions;
      if (covered) ++totals.transitionsCovered;
    }
  }
  return totals;
}

void ModelCoverages::add(int32_t number, const TestCaseVerdict& verdict) {
  const ModelPassage* passage = verdict.passage.get();
  if (!passage) return;
  const size_t hash = static_cast<size_t>(
      hashOf(passage->kind, passage->sequenceLines.get(), passage->chart.get()));
  size_t index = indexOf(*passage, hash);
  if (index == std::string::npos) {
    index = models_.size();
    models_.push_back(newModel(*passage));
    byHash_.emplace(hash, index);
  }
  CoveredModel& model = models_[index];
  model.members.push_back(number);
  if (model.sequence) {
    addSequencePassage(model, *passage);
    return;
  }
  for (uint32_t record : passage->chartRecords) {
    if (record < model.recordCounts.size()) ++model.recordCounts[record];
  }
}

// Each test case reads its own verification file, so the same model comes
// as equal content, seldom as the same object.
size_t ModelCoverages::indexOf(const ModelPassage& passage, size_t hash) const {
  const auto [first, last] = byHash_.equal_range(hash);
  for (auto it = first; it != last; ++it) {
    const CoveredModel& model = models_[it->second];
    if (model.kind != passage.kind) continue;
    if (model.sequence && passage.sequenceLines &&
        (model.sequenceLines == passage.sequenceLines ||
         *model.sequenceLines == *passage.sequenceLines)) {
      return it->second;
    }
    if (!model.sequence && passage.chart && sameChart(*model.chart, *passage.chart)) {
      return it->second;
    }
  }
  return std::string::npos;
}

TestModel ModelRegistry::intern(TestModel model) {
  if (!model.sequenceLines && !model.chart) return model;
  const uint64_t hash = hashOf(model.kind, model.sequenceLines.get(), model.chart.get());
  const auto [first, last] = models_.equal_range(hash);
  for (auto it = first; it != last; ++it) {
    const TestModel& known = it->second;
    if (known.kind != model.kind) continue;
    if (static_cast<bool>(known.sequenceLines) != static_cast<bool>(model.sequenceLines)) continue;
    if (static_cast<bool>(known.chart) != static_cast<bool>(model.chart)) continue;
    if (known.sequenceLines && *known.sequenceLines != *model.sequenceLines) continue;
    if (known.chart && !sameChart(*known.chart, *model.chart)) continue;
    return known;
  }
  models_.emplace(hash, model);
  return model;
}

std::string modelFingerprint(const CoveredModel& model) {
  const uint64_t hash = hashOf(model.kind, model.sequenceLines.get(), model.chart.get());
  char text[17] = {};
  std::snprintf(text, sizeof text, "%016llx", static_cast<unsigned long long>(hash));
  return std::string(text, 16);
}

}  // namespace qendor
