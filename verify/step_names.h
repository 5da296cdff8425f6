// The names of a sequence diagram's steps: which messages (instance and
// message id) recorded assertions gave each step's value, in one test case
// or in all test cases of a context judged against the same diagram.
#pragma once

#include <cstddef>
#include <memory>
#include <set>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "verify/judgement.h"

namespace qendor {

struct StepName {
  std::string_view instance;
  std::string_view message;
};

// Per diagram line, the names of the entries the sequence step accepted
// there, each once, in the order first met. The names are views into the
// test cases' records, which must outlive this.
class StepNames {
 public:
  explicit StepNames(size_t lines) : names_(lines) {}

  // Adds the accepted entries of `verdict`; lines past the diagram's end
  // are ignored.
  void add(const TestCaseVerdict& verdict);

  // The names of diagram line `line` (an index from 0).
  const std::vector<StepName>& at(size_t line) const { return names_[line]; }
  bool has(size_t line, const StepName& name) const {
    return seen_.count({line, {name.instance, name.message}}) > 0;
  }

 private:
  std::vector<std::vector<StepName>> names_;
  std::set<std::pair<size_t, std::pair<std::string_view, std::string_view>>> seen_;
};

// The step names of each distinct diagram among a context's verdicts: test
// cases whose diagrams have the same lines share one StepNames.
class DiagramStepNames {
 public:
  // Adds a verdict that carries a sequence diagnosis; others are ignored.
  void add(const TestCaseVerdict& verdict);

  // The names of the diagram `verdict` was judged against; null when no
  // verdict with that diagram was added.
  const StepNames* of(const TestCaseVerdict& verdict) const;

 private:
  struct Diagram {
    std::shared_ptr<const SequenceLines> lines;
    StepNames names;
  };
  // The index in diagrams_ of the diagram with `lines`, or npos.
  size_t indexOf(const SequenceLines& lines, size_t hash) const;

  std::vector<Diagram> diagrams_;
  std::unordered_multimap<size_t, size_t> byHash_;  // hash of the lines -> index
};

}  // namespace qendor
