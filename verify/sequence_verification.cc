#include "verify/sequence_verification.h"

#include <algorithm>
#include <stdexcept>
#include <string_view>
#include <vector>

#include "base/text.h"

namespace qendor {

// The step is defined recursively: one call per line stepped over, and an
// inner call for each operand attempt whose failure is handled afterwards.
// It is run here as a loop: tail calls just move on, and the pending operand
// attempts are kept on an explicit stack, so a long diagram cannot overflow
// the call stack. The results, the position left behind and the range errors
// are those of the recursive definition.

namespace {

// Markers that are stepped over, in the order they are tested.
constexpr std::string_view kTransparentMarkers[] = {
    "SD_TEST",
    "STRICT_BEGIN",
    "STRICT_END",
    "ALT_BEGIN",
    "ALT_OPERAND_END",
    "ALT_END",
    "OPT_BEGIN",
    "OPT_OPERAND_END",
    "OPT_END",
    "LOOP_BEGIN",
    "LOOP_END",
    "BREAK_BEGIN",
    "BREAK_OPERAND_END",
    "CONSIDER_BEGIN",
    "CONSIDER_OPERAND_BEGIN",
    "CONSIDER_OPERAND_END",
    "CONSIDER_END",
};

bool isTransparent(std::string_view line) {
  for (std::string_view marker : kTransparentMarkers) {
    if (startsWith(line, marker)) return true;
  }
  return false;
}

// Markers with a rule of their own.
constexpr std::string_view kActiveMarkers[] = {
    "ALT_OPERAND_BEGIN", "OPT_OPERAND_BEGIN",   "LOOP_OPERAND_BEGIN",
    "LOOP_OPERAND_END",  "BREAK_OPERAND_BEGIN", "BREAK_END",
};

// The text from the first "(" to the end. Without one, std::string::substr is
// handed the not-found position and throws std::out_of_range, the error that
// ends the run.
std::string fragmentSuffix(const std::string& line) {
  return line.substr(line.find('('));
}

// Moves `position` forward, testing the line it stands on first, until the
// line equals `first` or `second`. vector::at throws past the last line.
void scanForward(const SequenceLines& lines, size_t& position, const std::string& first,
                 const std::string& second) {
  while (lines.at(position) != first && lines.at(position) != second) ++position;
}

// From a failed break continuation, moves to the end of the enclosing
// fragment: the first end marker of a fragment not opened after the start,
// or the exact line "STRICT_END".
void scanToEnclosingEnd(const SequenceLines& lines, size_t& position) {
  struct Nesting {
    std::string_view begin;
    std::string_view end;
    int depth;
  };
  Nesting nesting[] = {
      {"ALT_BEGIN", "ALT_END", 0},     {"OPT_BEGIN", "OPT_END", 0},
      {"LOOP_BEGIN", "LOOP_END", 0},   {"CONSIDER_BEGIN", "CONSIDER_END", 0},
      {"BREAK_BEGIN", "BREAK_END", 0},
  };
  for (;; ++position) {
    const std::string& line = lines.at(position);
    for (const Nesting& n : nesting) {
      if (startsWith(line, n.end) && n.depth == 0) return;
    }
    if (line == "STRICT_END") return;
    for (Nesting& n : nesting) {
      if (startsWith(line, n.end)) --n.depth;
      if (startsWith(line, n.begin)) ++n.depth;
    }
  }
}

// An operand attempt whose result decides what its handler does next.
enum class Attempt { kAlt, kOpt, kBreakOperand, kBreakEnd };

struct PendingAttempt {
  Attempt kind;
  size_t line;       // the handler's line
  size_t trailSize;  // entries of the trail that belong to the handler and above
};

// The marks of the positions on the trail. The marks live in one buffer per
// thread that only grows and is cleared through the trail when a step ends (by
// a result or by a range error), so a step costs what it visits, not the
// diagram's size: a long test case on a long diagram stays linear.
class ActivePositions {
 public:
  explicit ActivePositions(size_t lines) : marks_(buffer()) {
    if (marks_.size() < lines) marks_.resize(lines, 0);
  }
  ~ActivePositions() {
    for (size_t position : trail) marks_[position] = 0;
  }
  ActivePositions(const ActivePositions&) = delete;
  ActivePositions& operator=(const ActivePositions&) = delete;

  char& operator[](size_t position) { return marks_[position]; }

  std::vector<size_t> trail;

 private:
  static std::vector<char>& buffer() {
    thread_local std::vector<char> marks;
    return marks;
  }
  std::vector<char>& marks_;
};

}  // namespace

std::string operandClosingMarker(const std::string& beginLine) {
  // The operator prefix is the whole line when it holds no "_".
  return beginLine.substr(0, beginLine.find('_')) + "_OPERAND_END" + fragmentSuffix(beginLine);
}

bool isStepMarker(std::string_view line) {
  if (isTransparent(line)) return true;
  for (std::string_view marker : kActiveMarkers) {
    if (startsWith(line, marker)) return true;
  }
  return false;
}

namespace {

// The step, with what it asks of the message put to `probe`:
// `accepts(position, line)` whether the line at the position takes the
// message, and `entersLoop(begin)` whether the loop operand that begins there
// holds it.
template <class Probe>
bool runStep(const SequenceLines& lines, size_t& position, Probe& probe) {
  // Positions whose step is still being evaluated. Coming back to one of them
  // means the rules would go round for ever; the message is then rejected.
  ActivePositions active(lines.size());
  std::vector<size_t>& trail = active.trail;  // the active positions in the order entered
  std::vector<PendingAttempt> attempts;

  for (;;) {
    // One step at `position`; it either moves on (continue) or yields `result`.
    bool result = false;
    if (position < lines.size()) {
      if (active[position]) return false;
      active[position] = 1;
      trail.push_back(position);
      const std::string& line = lines[position];
      if (probe.accepts(position, line)) {
        probe.accepted(trail);
        ++position;
        return true;  // every pending step returns the acceptance
      }
      if (isTransparent(line)) {
        ++position;
        continue;
      }
      Attempt kind = Attempt::kAlt;
      bool attempt = true;
      if (startsWith(line, "ALT_OPERAND_BEGIN")) {
        kind = Attempt::kAlt;
      } else if (startsWith(line, "OPT_OPERAND_BEGIN")) {
        kind = Attempt::kOpt;
      } else if (startsWith(line, "LOOP_OPERAND_BEGIN")) {
        size_t begin = position;
        ++position;
        if (probe.entersLoop(begin)) continue;  // run an iteration
        std::string end = "LOOP_END" + fragmentSuffix(line);
        position = begin + 1;
        scanForward(lines, position, end, end);
        continue;
      } else if (startsWith(line, "LOOP_OPERAND_END")) {
        // Back to the begin marker of the iteration; at line 0 the position
        // wraps round and the next access throws.
        std::string begin = "LOOP_OPERAND_BEGIN" + fragmentSuffix(line);
        --position;
        while (lines.at(position) != begin && position != 0) --position;
        continue;
      } else if (startsWith(line, "BREAK_OPERAND_BEGIN")) {
        kind = Attempt::kBreakOperand;
      } else if (startsWith(line, "BREAK_END")) {
        kind = Attempt::kBreakEnd;
      } else {
        attempt = false;  // another message or a marker without a rule
      }
      if (attempt) {
        attempts.push_back({kind, position, trail.size()});
        ++position;
        continue;
      }
      result = false;
    }

    // `result` is false here. It returns through the steps that moved on to
    // this one up to the newest pending attempt, whose handler goes on.
    if (attempts.empty()) return result;
    PendingAttempt pending = attempts.back();
    attempts.pop_back();
    while (trail.size() > pending.trailSize) {
      active[trail.back()] = 0;
      trail.pop_back();
    }
    const std::string& line = lines[pending.line];
    switch (pending.kind) {
      case Attempt::kAlt: {
        std::string suffix = fragmentSuffix(line);
        scanForward(lines, position, "ALT_OPERAND_BEGIN" + suffix, "ALT_END" + suffix);
        break;
      }
      case Attempt::kOpt: {
        std::string end = "OPT_END" + fragmentSuffix(line);
        scanForward(lines, position, end, end);
        break;
      }
      case Attempt::kBreakOperand: {
        std::string end = "BREAK_END" + fragmentSuffix(line);
        scanForward(lines, position, end, end);
        break;
      }
      case Attempt::kBreakEnd:
        scanToEnclosingEnd(lines, position);
        break;
    }
    // The handler's last move is a tail step from the line found.
  }
}

// The step for one recorded message; with `loops`, it tells the loop
// operands on the way it took.
struct MessageProbe {
  std::string_view message;
  const SequenceLines& lines;
  std::vector<LoopPass>* loops = nullptr;
  bool accepts(size_t, const std::string& line) const { return line == message; }
  bool entersLoop(size_t begin) const { return loopOperandContains(message, begin, lines); }
  // `trail` holds, in order, the lines the step stood on from its start to
  // the accepted one, without the attempts it gave up. A loop operand on it
  // was entered exactly when the step went on to the line below the marker
  // because the operand holds the message (the decision entersLoop made).
  void accepted(const std::vector<size_t>& trail) const {
    if (!loops) return;
    for (size_t i = 0; i + 1 < trail.size(); ++i) {
      const size_t at = trail[i];
      if (!startsWith(lines[at], "LOOP_OPERAND_BEGIN")) continue;
      const bool entered = trail[i + 1] == at + 1 && entersLoop(at);
      loops->push_back(LoopPass{at, entered});
    }
  }
};

// The step for a message that no line equals, noting every line it compares
// and every loop it passes over: up to the first of those that a message
// meets, the step for that message goes the same way.
struct ExploringProbe {
  const std::vector<size_t>& entered;
  std::vector<SequenceSight> seen;
  bool accepts(size_t position, const std::string&) {
    seen.push_back(SequenceSight{position, false});
    return false;
  }
  bool entersLoop(size_t begin) {
    seen.push_back(SequenceSight{begin, true});
    return std::find(entered.begin(), entered.end(), begin) != entered.end();
  }
  void accepted(const std::vector<size_t>&) const {}
};

}  // namespace

bool verifySdMessage(std::string_view message, size_t& position, const SequenceLines& lines) {
  MessageProbe probe{message, lines};
  return runStep(lines, position, probe);
}

bool verifySdMessage(std::string_view message, size_t& position, const SequenceLines& lines,
                     std::vector<LoopPass>& loops) {
  MessageProbe probe{message, lines, &loops};
  return runStep(lines, position, probe);
}

std::vector<SequenceSight> exploreSequenceStep(const SequenceLines& lines, size_t position,
                                               const std::vector<size_t>& entered) {
  ExploringProbe probe{entered, {}};
  try {
    runStep(lines, position, probe);
  } catch (const std::out_of_range&) {
    // A malformed diagram ends the exploration; what was seen still counts.
  }
  return std::move(probe.seen);
}

bool loopOperandContains(std::string_view message, size_t beginIndex, const SequenceLines& lines) {
  if (beginIndex >= lines.size()) return false;
  const std::string closing = operandClosingMarker(lines[beginIndex]);
  for (size_t i = beginIndex + 1; i < lines.size(); ++i) {
    if (lines[i] == closing) return false;
    if (lines[i] == message) return true;
  }
  return false;
}

}  // namespace qendor
