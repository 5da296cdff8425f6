// Where a sequence diagram test case's run stood when it left the diagram,
// in the diagram's own terms: the fragments and operands it was inside, the
// fragments its last step passed over, where each value it could have
// recorded lies, and where the value it did record lies.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "verify/judgement.h"
#include "verify/sequence_diagnosis.h"

namespace qendor {

// A fragment of the outline: its operator, id and begin line (an index).
struct PlaceFragment {
  std::string_view operatorName;
  std::string_view id;
  size_t line = 0;
};

struct SequencePlace {
  // The fragments whose operand holds the last accepted step, outermost
  // first: which operand (from 1) and the value of the operand's first
  // accepted step.
  struct Inside {
    PlaceFragment fragment;
    size_t operand = 0;
    std::string_view enteredAt;
  };
  // A value the step would have accepted, the line that would have taken it
  // and the innermost fragment of that line the run is not inside yet.
  struct Option {
    std::string_view value;
    size_t line = 0;
    bool inFragment = false;
    PlaceFragment fragment;
  };
  // Where the rejected value stands in the diagram: behind the run (the
  // last such line before where it stood), ahead of it, or nowhere.
  enum class Where { kNone, kBehind, kAhead, kNowhere };
  struct Recorded {
    Where where = Where::kNone;
    size_t line = 0;
    bool inFragment = false;
    PlaceFragment fragment;  // the innermost fragment holding that line
  };

  bool started = false;        // some step was accepted before
  size_t lastLine = 0;         // the last accepted step's line
  std::string_view lastValue;  // and its value
  std::vector<Inside> inside;
  std::vector<PlaceFragment> passedOver;  // outermost fragments only
  std::vector<Option> options;
  size_t moreOptions = 0;  // expected values beyond kMostOptions
  Recorded recorded;
};

constexpr size_t kMostOptions = 8;

// The place of `diagnosis` (which shows what the diagram expected) in
// `lines`, whose outline is `items`. The views point into `lines` and
// `diagnosis`.
SequencePlace placeOf(const SequenceLines& lines, const std::vector<OutlineItem>& items,
                      const SequenceDiagnosis& diagnosis);

}  // namespace qendor
