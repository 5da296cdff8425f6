#include "verify/sequence_diagnosis.h"

#include <map>
#include <utility>
#include <stdexcept>

#include "base/text.h"
#include "verify/sequence_verification.h"

namespace qendor {

std::vector<std::string> acceptableMessages(const SequenceLines& lines, size_t position) {
  // The first time a message meets a line equal to it, it is accepted. The
  // first time it meets a loop whose operand holds it, its own step goes
  // into the loop where the walk did not: that step decides.
  enum class Fate { kAccepted, kDiverges };
  std::map<std::string, Fate> fates;
  for (const SequenceSight& sight : exploreSequenceStep(lines, position)) {
    const std::string& line = lines[sight.position];
    if (!sight.loop) {
      fates.emplace(line, Fate::kAccepted);
      continue;
    }
    const size_t open = line.find('(');
    if (open == std::string::npos) continue;  // the walk ended here
    const std::string closing =
        line.substr(0, line.find('_')) + "_OPERAND_END" + line.substr(open);
    for (size_t i = sight.position + 1; i < lines.size() && lines[i] != closing; ++i) {
      fates.emplace(lines[i], Fate::kDiverges);
    }
  }
  std::vector<std::string> accepted;
  for (const auto& [message, fate] : fates) {
    if (isStepMarker(message)) continue;  // a marker's text is no step value
    if (fate == Fate::kDiverges) {
      size_t from = position;
      try {
        if (!verifySdMessage(message, from, lines)) continue;
      } catch (const std::out_of_range&) {
        continue;
      }
    }
    accepted.push_back(message);
  }
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

// Pairs each begin marker of `beginRole` with the next end marker of
// `endRole` of the same operator and id at its own nesting, as a stack does;
// markers left without a partner get none. partner[i] is the index of the
// other marker of a pair, or npos.
void pairMarkers(const SequenceLines& lines, std::string_view beginRole, std::string_view endRole,
                 std::vector<size_t>& partner) {
  // An end looks for its begin among the innermost open ones only, so that
  // a file of many unclosed markers costs no more than a long one.
  constexpr size_t kDeepestSearch = 64;
  std::vector<std::pair<size_t, Marker>> open;
  for (size_t i = 0; i < lines.size(); ++i) {
    Marker marker;
    if (!isStepMarker(lines[i]) || !cutMarker(lines[i], marker)) continue;
    if (marker.role == beginRole) {
      open.emplace_back(i, marker);
      continue;
    }
    if (marker.role != endRole) continue;
    for (size_t depth = open.size(); depth > 0 && open.size() - depth < kDeepestSearch; --depth) {
      const auto& [begin, opened] = open[depth - 1];
      if (opened.operatorName != marker.operatorName || opened.id != marker.id) continue;
      partner[begin] = i;
      partner[i] = begin;
      open.resize(depth - 1);  // what was opened inside and never closed stays unpaired
      break;
    }
  }
}

}  // namespace

std::vector<OutlineItem> sequenceOutline(const SequenceLines& lines) {
  constexpr size_t npos = std::string::npos;
  std::vector<size_t> fragments(lines.size(), npos);
  std::vector<size_t> operands(lines.size(), npos);
  pairMarkers(lines, "BEGIN", "END", fragments);
  pairMarkers(lines, "OPERAND_BEGIN", "OPERAND_END", operands);

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
    const bool fragment = fragments[i] != npos;
    const bool operand = operands[i] != npos;
    if (!fragment && !operand) continue;
    const size_t other = fragment ? fragments[i] : operands[i];
    if (other > i) {
      // A begin marker: it opens only when it nests inside what is open.
      if (openEnds.size() >= kMaxOutlineDepth || (!openEnds.empty() && other > openEnds.back())) {
        fragments[other] = operands[other] = npos;
        continue;
      }
      openEnds.push_back(other);
      items.push_back(OutlineItem{fragment ? OutlineItem::Kind::kFragmentBegin
                                           : OutlineItem::Kind::kOperandBegin,
                                  i, marker.operatorName, marker.id});
    } else if (!openEnds.empty() && openEnds.back() == i) {
      openEnds.pop_back();
      items.push_back(OutlineItem{fragment ? OutlineItem::Kind::kFragmentEnd
                                           : OutlineItem::Kind::kOperandEnd,
                                  i, marker.operatorName, marker.id});
    }
  }
  return items;
}

}  // namespace qendor
