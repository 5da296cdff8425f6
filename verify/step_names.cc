#include "verify/step_names.h"

#include <functional>
#include <string>

namespace qendor {

namespace {

const SequenceLines* sequenceLinesOf(const TestCaseVerdict& verdict) {
  const Diagnosis* diagnosis = verdict.diagnosis.get();
  if (!diagnosis || diagnosis->kind != Diagnosis::Kind::kSequence) return nullptr;
  return diagnosis->sequenceLines.get();
}

size_t hashOf(const SequenceLines& lines) {
  size_t hash = lines.size();
  for (const std::string& line : lines) {
    hash = hash * 1000003u ^ std::hash<std::string_view>()(line);
  }
  return hash;
}

}  // namespace

void StepNames::add(const TestCaseVerdict& verdict) {
  for (const AssertionEntry& entry : verdict.entries) {
    if (entry.step != StepResult::kAccepted || entry.diagramLine == 0) continue;
    const size_t line = entry.diagramLine - 1;
    if (line >= names_.size()) continue;
    if (seen_.insert({line, {entry.sdiName, entry.msgId}}).second) {
      names_[line].push_back(StepName{entry.sdiName, entry.msgId});
    }
  }
}

void DiagramStepNames::add(const TestCaseVerdict& verdict) {
  const SequenceLines* lines = sequenceLinesOf(verdict);
  if (!lines) return;
  const size_t hash = hashOf(*lines);
  size_t index = indexOf(*lines, hash);
  if (index == std::string::npos) {
    index = diagrams_.size();
    diagrams_.push_back(Diagram{verdict.diagnosis->sequenceLines, StepNames(lines->size())});
    byHash_.emplace(hash, index);
  }
  diagrams_[index].names.add(verdict);
}

const StepNames* DiagramStepNames::of(const TestCaseVerdict& verdict) const {
  const SequenceLines* lines = sequenceLinesOf(verdict);
  if (!lines) return nullptr;
  const size_t index = indexOf(*lines, hashOf(*lines));
  return index == std::string::npos ? nullptr : &diagrams_[index].names;
}

// Each test case reads its own verification file, so the same diagram comes
// as equal lines, seldom as the same object.
size_t DiagramStepNames::indexOf(const SequenceLines& lines, size_t hash) const {
  const auto [first, last] = byHash_.equal_range(hash);
  for (auto it = first; it != last; ++it) {
    const Diagram& diagram = diagrams_[it->second];
    if (diagram.lines.get() == &lines || *diagram.lines == lines) return it->second;
  }
  return std::string::npos;
}

}  // namespace qendor
