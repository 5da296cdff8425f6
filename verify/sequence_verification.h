// Checks recorded messages one by one against a sequence diagram.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "verify/verification_file.h"

namespace qendor {

// Accepts `message` at or after `position` in `lines` under the operator
// rules, moving `position` past the matched line. On false the position stays
// where the search stopped. Throws std::out_of_range when a scan runs past the
// last line or a marker lacks its "(" suffix. When the rules would come back
// to a line they are still evaluating for this message (and so would never
// end), the message is rejected: false, with `position` on that line. A list
// of any length is handled without deep recursion.
bool verifySdMessage(std::string_view message, size_t& position, const SequenceLines& lines);

// A loop operand the step for an accepted message walked over: the line of
// its "LOOP_OPERAND_BEGIN" marker, and whether the step went into it (one
// iteration) or past it.
struct LoopPass {
  size_t begin;
  bool entered;
};

// verifySdMessage, telling on acceptance the loop operands on the way the
// step took to the accepted line, in order, into `loops` (appended). An
// operand attempt that failed and was left is not on that way.
bool verifySdMessage(std::string_view message, size_t& position, const SequenceLines& lines,
                     std::vector<LoopPass>& loops);

// The marker that closes the operand `beginLine` opens: its operator prefix
// (the text before its first "_"), "_OPERAND_END" and its fragment suffix.
// Throws std::out_of_range when the line holds no "(".
std::string operandClosingMarker(const std::string& beginLine);

// True for a line that begins with a marker the step knows; every other
// line is a message line.
bool isStepMarker(std::string_view line);

// What the step looks at on its way: the line at `position` compared with
// the message, or (`loop`) the loop operand beginning there searched for it.
struct SequenceSight {
  size_t position;
  bool loop;
};

// Everything the step from `position` looks at, in order, for a message that
// no line equals and that only the loop operands beginning at `entered` hold.
// The step for a message goes the same way up to the first sight that tells
// the two apart. A range error of a malformed diagram ends the walk early.
std::vector<SequenceSight> exploreSequenceStep(const SequenceLines& lines, size_t position,
                                               const std::vector<size_t>& entered = {});

// True when a line equal to `message` follows the "LOOP_OPERAND_BEGIN" line at
// `beginIndex` before the operand's closing marker.
bool loopOperandContains(std::string_view message, size_t beginIndex, const SequenceLines& lines);

}  // namespace qendor
