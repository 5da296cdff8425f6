#include "verify/sequence_place.h"

#include <stdexcept>

#include "verify/sequence_verification.h"

namespace qendor {

namespace {

// A fragment of the outline with the lines it spans and its operands'.
struct Span {
  PlaceFragment fragment;
  size_t end = 0;
  std::vector<std::pair<size_t, size_t>> operands;  // begin and end lines
  size_t depth = 0;

  bool holds(size_t line) const { return fragment.line < line && line < end; }
};

std::vector<Span> spansOf(const std::vector<OutlineItem>& items) {
  std::vector<Span> spans;
  std::vector<size_t> open;  // indexes into spans, innermost last
  for (const OutlineItem& item : items) {
    switch (item.kind) {
      case OutlineItem::Kind::kFragmentBegin:
        open.push_back(spans.size());
        spans.push_back(Span{{item.operatorName, item.id, item.line}, item.line, {}, open.size()});
        break;
      case OutlineItem::Kind::kOperandBegin:
        if (!open.empty()) spans[open.back()].operands.emplace_back(item.line, item.line);
        break;
      case OutlineItem::Kind::kOperandEnd:
        if (!open.empty() && !spans[open.back()].operands.empty()) {
          spans[open.back()].operands.back().second = item.line;
        }
        break;
      case OutlineItem::Kind::kFragmentEnd:
        if (!open.empty()) {
          spans[open.back()].end = item.line;
          open.pop_back();
        }
        break;
      case OutlineItem::Kind::kStep:
        break;
    }
  }
  return spans;
}

// The outermost fragment holding `line` that does not hold `notIn` too
// (npos: any); null when there is none.
const Span* outermostHolding(const std::vector<Span>& spans, size_t line, size_t notIn) {
  for (const Span& span : spans) {
    if (span.holds(line) && (notIn == std::string::npos || !span.holds(notIn))) return &span;
  }
  return nullptr;
}

const Span* innermostHolding(const std::vector<Span>& spans, size_t line) {
  const Span* found = nullptr;
  for (const Span& span : spans) {
    if (span.holds(line) && (!found || span.depth > found->depth)) found = &span;
  }
  return found;
}

void noteInside(const SequenceLines& lines, const std::vector<Span>& spans,
                const SequenceDiagnosis& diagnosis, SequencePlace& place) {
  for (const Span& span : spans) {
    if (!span.holds(place.lastLine)) continue;
    SequencePlace::Inside inside{span.fragment, 0, {}};
    for (size_t i = 0; i < span.operands.size(); ++i) {
      const auto [begin, end] = span.operands[i];
      if (begin >= place.lastLine || place.lastLine >= end) continue;
      inside.operand = i + 1;
      for (size_t line = begin + 1; line < end; ++line) {
        if (diagnosis.acceptedAt[line] > 0 && !isStepMarker(lines[line])) {
          inside.enteredAt = lines[line];
          break;
        }
      }
      break;
    }
    place.inside.push_back(inside);
  }
}

// The fragments the last step went past on its way from where it started.
void notePassedOver(const std::vector<Span>& spans, size_t from, SequencePlace& place) {
  size_t coveredUpTo = 0;  // the end of the last fragment listed: its inner ones are not
  for (const Span& span : spans) {
    if (span.fragment.line < from || span.end >= place.lastLine) continue;
    if (!place.passedOver.empty() && span.fragment.line < coveredUpTo) continue;
    place.passedOver.push_back(span.fragment);
    coveredUpTo = span.end;
  }
}

void noteOptions(const SequenceLines& lines, const std::vector<Span>& spans,
                 const SequenceDiagnosis& diagnosis, SequencePlace& place) {
  const size_t notIn = place.started ? place.lastLine : std::string::npos;
  for (const std::string& value : diagnosis.expected) {
    if (place.options.size() == kMostOptions) {
      ++place.moreOptions;
      continue;
    }
    SequencePlace::Option option{value, 0, false, {}};
    size_t at = diagnosis.position;
    try {
      if (!verifySdMessage(value, at, lines) || at == 0) continue;
    } catch (const std::out_of_range&) {
      continue;
    }
    option.line = at - 1;
    if (const Span* span = outermostHolding(spans, option.line, notIn)) {
      option.inFragment = true;
      option.fragment = span->fragment;
    }
    place.options.push_back(option);
  }
}

void noteRecorded(const SequenceLines& lines, const std::vector<Span>& spans,
                  const SequenceDiagnosis& diagnosis, SequencePlace& place) {
  SequencePlace::Recorded& recorded = place.recorded;
  recorded.where = SequencePlace::Where::kNowhere;
  for (size_t line = 0; line < lines.size(); ++line) {
    if (lines[line] != diagnosis.value || isStepMarker(lines[line])) continue;
    if (line < diagnosis.position) {
      recorded.where = SequencePlace::Where::kBehind;
      recorded.line = line;
      continue;
    }
    if (recorded.where == SequencePlace::Where::kNowhere) {
      recorded.where = SequencePlace::Where::kAhead;
      recorded.line = line;
    }
    break;
  }
  if (recorded.where == SequencePlace::Where::kNowhere) return;
  if (const Span* span = innermostHolding(spans, recorded.line)) {
    recorded.inFragment = true;
    recorded.fragment = span->fragment;
  }
}

}  // namespace

SequencePlace placeOf(const SequenceLines& lines, const std::vector<OutlineItem>& items,
                      const SequenceDiagnosis& diagnosis) {
  SequencePlace place;
  const std::vector<Span> spans = spansOf(items);
  // The step always stands just past the line it last accepted.
  if (diagnosis.position > 0 && diagnosis.position <= lines.size() &&
      diagnosis.acceptedAt[diagnosis.position - 1] > 0) {
    place.started = true;
    place.lastLine = diagnosis.position - 1;
    place.lastValue = lines[place.lastLine];
    noteInside(lines, spans, diagnosis, place);
    notePassedOver(spans, diagnosis.lastFrom, place);
  }
  noteOptions(lines, spans, diagnosis, place);
  if (diagnosis.rejectedRecord) noteRecorded(lines, spans, diagnosis, place);
  return place;
}

}  // namespace qendor
