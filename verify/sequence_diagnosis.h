// What a sequence diagram test case's diagnosis shows: the diagram as
// nested fragments, operands and steps, and the messages the diagram would
// have accepted where the run left it.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "verify/verification_file.h"

namespace qendor {

// The step values `verifySdMessage` would accept at `position` in `lines`,
// in ascending text order (a value that is a marker's text, and the empty value, which no recorded
// message carries to the step, are left out). Worked out from the lines
// the step reaches without taking a message; only where the step for some message would enter a
// loop that the walk passed over is that message's own step run.
std::vector<std::string> acceptableMessages(const SequenceLines& lines, size_t position);

// One piece of the diagram's outline, in file order. Fragments and operands
// come as a begin and an end item; only markers that pair up with their end
// (same operator, same suffix) count, and nesting deeper than
// kMaxOutlineDepth is flattened, so any file gives a well-formed outline.
struct OutlineItem {
  enum class Kind { kFragmentBegin, kFragmentEnd, kOperandBegin, kOperandEnd, kStep };
  Kind kind;
  size_t line;                    // index in the diagram's lines
  std::string_view operatorName;  // "ALT", "OPT", "LOOP", "BREAK", "CONSIDER", "STRICT"
  std::string_view id;            // the marker's text inside its parentheses
};

constexpr size_t kMaxOutlineDepth = 32;

// The outline of `lines`; the views point into them.
std::vector<OutlineItem> sequenceOutline(const SequenceLines& lines);

}  // namespace qendor
