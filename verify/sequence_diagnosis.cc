#include "verify/sequence_diagnosis.h"

#include <algorithm>
#include <deque>
#include <unordered_set>

#include "base/text.h"
#include "verify/sequence_verification.h"

namespace qendor {

std::vector<std::string> acceptableMessages(const SequenceLines& lines, size_t position) {
  // Every message goes the way of a message that no line equals until it
  // meets a line equal to it (accepted) or a loop whose operand holds it,
  // where its step enters the loop and the other's did not. The messages
  // that enter the same loop there go on together: walked again with that
  // loop entered. Only message lines' texts can be accepted at all, and of
  // them not the empty one: a message without a progress value never meets
  // the step, so no recorded message is accepted on an empty line.
  struct Group {
    std::vector<size_t> entered;
    std::unordered_set<std::string_view> values;  // not yet decided; views of `lines`
  };
  std::vector<Group> work(1);
  for (const std::string& line : lines) {
    if (!line.empty() && !isStepMarker(line)) work[0].values.insert(line);
  }
  std::vector<std::string> accepted;
  while (!work.empty()) {
    Group group = std::move(work.back());
    work.pop_back();
    std::unordered_set<size_t> looked;  // loops whose operand was searched
    for (const SequenceSight& sight : exploreSequenceStep(lines, position, group.entered)) {
      if (group.values.empty()) break;
      const std::string& line = lines[sight.position];
      if (!sight.loop) {
        if (group.values.erase(line) > 0) accepted.emplace_back(line);
        continue;
      }
      if (!looked.insert(sight.position).second) continue;
      if (std::find(group.entered.begin(), group.entered.end(), sight.position) !=
          group.entered.end()) {
        continue;
      }
      if (line.find('(') == std::string::npos) continue;  // the walk ended here
      const std::string closing = operandClosingMarker(line);
      Group inside{group.entered, {}};
      inside.entered.push_back(sight.position);
      for (size_t i = sight.position + 1; i < lines.size() && lines[i] != closing; ++i) {
        auto found = group.values.find(lines[i]);
        if (found != group.values.end()) inside.values.insert(group.values.extract(found));
      }
      if (!inside.values.empty()) work.push_back(std::move(inside));
    }
  }
  std::sort(accepted.begin(), accepted.end());
  return accepted;
}

namespace {

constexpr std::string_view kOperators[] = {"ALT", "OPT", "LOOP", "BREAK", "CONSIDER", "STRICT"};

// A marker line cut into its parts: "ALT_OPERAND_BEGIN(x)" is operator "ALT",
// role "OPERAND_BEGIN", id "x".
struct Marker {
  std::string_view operatorName;
  std::string_view role;
  std::string_view id;
};

bool cutMarker(std::string_view line, Marker& marker) {
  for (std::string_view name : kOperators) {
    if (!startsWith(line, name) || line.size() <= name.size() || line[name.size()] != '_') {
      continue;
    }
    std::string_view rest = line.substr(name.size() + 1);
    const size_t open = rest.find('(');
    marker.operatorName = name;
    marker.role = rest.substr(0, open);
    marker.id = std::string_view();
    if (open != std::string_view::npos) {
      std::string_view id = rest.substr(open + 1);
      if (!id.empty() && id.back() == ')') id.remove_suffix(1);
      marker.id = id;
    }
    return true;
  }
  return false;
}

// Pairs each begin marker with the next end marker of the same operator and
// id at its own nesting, as a stack does, for fragments ("BEGIN" and "END")
// and operands ("OPERAND_BEGIN" and "OPERAND_END") alike; markers left
// without a partner get none. partner[i] is the index of the other marker
// of a pair, or npos.
void pairMarkers(const SequenceLines& lines, std::vector<size_t>& partner) {
  // An end looks for its begin among the innermost open ones only, and only
  // so many stay open, so that a file of many unclosed markers costs no more
  // than a long one.
  constexpr size_t kDeepestSearch = 64;
  constexpr size_t kMostOpen = 256;
  struct Open {
    size_t line;
    Marker marker;
  };
  std::deque<Open> fragments;
  std::deque<Open> operands;
  for (size_t i = 0; i < lines.size(); ++i) {
    Marker marker;
    if (!isStepMarker(lines[i]) || !cutMarker(lines[i], marker)) continue;
    const bool operand = startsWith(marker.role, "OPERAND_");
    std::deque<Open>& open = operand ? operands : fragments;
    const std::string_view role = operand ? marker.role.substr(8) : marker.role;
    if (role == "BEGIN") {
      if (open.size() == kMostOpen) open.pop_front();
      open.push_back(Open{i, marker});
      continue;
    }
    if (role != "END") continue;
    for (size_t depth = open.size(); depth > 0 && open.size() - depth < kDeepestSearch; --depth) {
      const Open& begin = open[depth - 1];
      if (begin.marker.operatorName != marker.operatorName || begin.marker.id != marker.id) {
        continue;
      }
      partner[begin.line] = i;
      partner[i] = begin.line;
      open.resize(depth - 1);  // what was opened inside and never closed stays unpaired
      break;
    }
  }
}

}  // namespace

std::vector<OutlineItem> sequenceOutline(const SequenceLines& lines) {
  constexpr size_t npos = std::string::npos;
  std::vector<size_t> partner(lines.size(), npos);
  pairMarkers(lines, partner);

  std::vector<OutlineItem> items;
  std::vector<size_t> openEnds;  // the end line of each open item, innermost last
  for (size_t i = 0; i < lines.size(); ++i) {
    while (!openEnds.empty() && openEnds.back() < i) openEnds.pop_back();  // defensive
    if (!isStepMarker(lines[i])) {
      items.push_back(OutlineItem{OutlineItem::Kind::kStep, i, {}, {}});
      continue;
    }
    Marker marker;
    if (!cutMarker(lines[i], marker)) continue;
    const size_t other = partner[i];
    if (other == npos) continue;
    const bool fragment = !startsWith(marker.role, "OPERAND_");
    if (other > i) {
      // A begin marker: it opens only when it nests inside what is open.
      if (openEnds.size() >= kMaxOutlineDepth || (!openEnds.empty() && other > openEnds.back())) {
        partner[other] = npos;
        continue;
      }
      openEnds.push_back(other);
      items.push_back(OutlineItem{
          fragment ? OutlineItem::Kind::kFragmentBegin : OutlineItem::Kind::kOperandBegin, i,
          marker.operatorName, marker.id});
    } else if (!openEnds.empty() && openEnds.back() == i) {
      openEnds.pop_back();
      items.push_back(
          OutlineItem{fragment ? OutlineItem::Kind::kFragmentEnd : OutlineItem::Kind::kOperandEnd,
                      i, marker.operatorName, marker.id});
    }
  }
  return items;
}

}  // namespace qendor
