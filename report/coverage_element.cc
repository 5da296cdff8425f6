#include "report/coverage_element.h"

#include <algorithm>
#include <string>
#include <unordered_set>

#include "base/paths.h"
#include "base/text.h"
#include "report/case_result.h"
#include "report/chart_drawing.h"
#include "report/chart_layout.h"
#include "report/xml_node.h"

namespace qendor {

namespace {

// Runs of at least this many steps side by side with the same count are
// written as one "Steps" element, as the diagnosis outline does, so that a
// huge diagram stays small; so are as many unreached steps side by side.
constexpr size_t kFoldedRun = 16;

std::string numberText(size_t number) {
  return decimalText(static_cast<int64_t>(number));
}

std::string lineText(size_t index) {
  return numberText(index + 1);
}

const char* kindText(const CoveredModel& model) {
  return model.sequence ? "sequence" : "chart";
}

// The elements a model's test cases reached, by the keys a history keeps:
// line numbers of a diagram's steps and operand begin markers, record
// numbers of a chart (both from 1).
std::vector<uint32_t> coveredKeys(const CoveredModel& model) {
  std::vector<uint32_t> keys;
  if (model.sequence) {
    for (size_t line = 0; line < model.lineCounts.size(); ++line) {
      if (model.lineCounts[line] > 0) keys.push_back(static_cast<uint32_t>(line + 1));
    }
    for (size_t i = 0; i < model.operands.size(); ++i) {
      if (model.operandCounts[i] > 0)
        keys.push_back(static_cast<uint32_t>(model.operands[i].begin + 1));
    }
    std::sort(keys.begin(), keys.end());
    return keys;
  }
  for (size_t i = 0; i < model.recordCounts.size(); ++i) {
    if (model.recordCounts[i] > 0) keys.push_back(static_cast<uint32_t>(i + 1));
  }
  return keys;
}

void writeTotals(xmlNode* element, const CoveredModel& model, const CoverageTotals& totals) {
  if (model.sequence) {
    setAttribute(element, "steps", numberText(totals.steps));
    setAttribute(element, "stepsCovered", numberText(totals.stepsCovered));
    setAttribute(element, "operands", numberText(totals.operands));
    setAttribute(element, "operandsCovered", numberText(totals.operandsCovered));
  } else {
    setAttribute(element, "states", numberText(totals.states));
    setAttribute(element, "statesCovered", numberText(totals.statesCovered));
    setAttribute(element, "transitions", numberText(totals.transitions));
    setAttribute(element, "transitionsCovered", numberText(totals.transitionsCovered));
  }
}

// What this run and the earlier runs that kept the same model reached
// together: the totals with every key any of them reached counted covered.
void writeOverRuns(xmlNode* parent, const CoveredModel& model, const History& earlier) {
  const std::string fingerprint = modelFingerprint(model);
  std::unordered_set<uint32_t> keys;
  for (uint32_t key : coveredKeys(model)) keys.insert(key);
  size_t runs = 1;
  for (const HistoryRun& run : earlier.runs) {
    for (const HistoryCoverage& kept : run.coverage) {
      if (kept.fingerprint != fingerprint || kept.kind != kindText(model)) continue;
      ++runs;
      keys.insert(kept.covered.begin(), kept.covered.end());
      break;
    }
  }
  CoveredModel together = model;
  auto reached = [&](size_t index) { return keys.count(static_cast<uint32_t>(index + 1)) > 0; };
  for (size_t line = 0; line < together.lineCounts.size(); ++line) {
    if (reached(line)) together.lineCounts[line] = std::max<uint32_t>(together.lineCounts[line], 1);
  }
  for (size_t i = 0; i < together.operands.size(); ++i) {
    if (reached(together.operands[i].begin)) {
      together.operandCounts[i] = std::max<uint32_t>(together.operandCounts[i], 1);
    }
  }
  for (size_t i = 0; i < together.recordCounts.size(); ++i) {
    if (reached(i)) together.recordCounts[i] = std::max<uint32_t>(together.recordCounts[i], 1);
  }
  xmlNode* element = addElement(parent, "OverRuns");
  setAttribute(element, "runs", numberText(runs));
  const CoverageTotals totals = coverageTotals(together);
  if (model.sequence) {
    setAttribute(element, "stepsCovered", numberText(totals.stepsCovered));
    setAttribute(element, "operandsCovered", numberText(totals.operandsCovered));
  } else {
    setAttribute(element, "statesCovered", numberText(totals.statesCovered));
    setAttribute(element, "transitionsCovered", numberText(totals.transitionsCovered));
  }
}

xmlNode* writeStep(xmlNode* parent, const SequenceLines& lines, size_t line) {
  xmlNode* step = addElement(parent, "Step");
  setAttribute(step, "line", lineText(line));
  setAttribute(step, "value", lines[line]);
  return step;
}

// Steps from..to (indexes into the outline) as one "Steps" element.
xmlNode* writeSteps(xmlNode* parent, const CoveredModel& model, size_t from, size_t to,
                    size_t steps) {
  const SequenceLines& lines = *model.sequenceLines;
  const size_t first = model.outline[from].line;
  const size_t last = model.outline[to].line;
  xmlNode* element = addElement(parent, "Steps");
  setAttribute(element, "line", lineText(first));
  setAttribute(element, "lastLine", lineText(last));
  setAttribute(element, "first", lines[first]);
  setAttribute(element, "last", lines[last]);
  setAttribute(element, "steps", numberText(steps));
  return element;
}

// The outline index of the operand that begins on `line`, for its count.
size_t operandIndex(const CoveredModel& model, size_t line) {
  const auto found =
      std::lower_bound(model.operands.begin(), model.operands.end(), line,
                       [](const OutlineOperand& operand, size_t at) { return operand.begin < at; });
  return static_cast<size_t>(found - model.operands.begin());
}

void writeOperatorAndId(xmlNode* element, const OutlineItem& item) {
  setAttribute(element, "operator", item.operatorName);
  setAttribute(element, "id", item.id);
}

// The unreached steps (runs of kFoldedRun or more side by side folded) and
// operands, in file order.
void writeUnreached(xmlNode* parent, const CoveredModel& model) {
  xmlNode* unreached = nullptr;
  auto list = [&]() {
    if (!unreached) unreached = addElement(parent, "Unreached");
    return unreached;
  };
  const std::vector<OutlineItem>& outline = model.outline;
  std::vector<const OutlineItem*> fragments;  // the fragment of each open operand
  for (size_t i = 0; i < outline.size(); ++i) {
    const OutlineItem& item = outline[i];
    if (item.kind == OutlineItem::Kind::kStep) {
      if (model.lineCounts[item.line] > 0) continue;
      // Unreached steps side by side, no marker between them, fold into one.
      size_t last = i, steps = 1;
      for (size_t j = i + 1; j < outline.size(); ++j) {
        if (outline[j].kind != OutlineItem::Kind::kStep) break;
        if (model.lineCounts[outline[j].line] > 0) break;
        last = j;
        ++steps;
      }
      if (steps >= kFoldedRun) {
        writeSteps(list(), model, i, last, steps);
        i = last;
      } else {
        writeStep(list(), *model.sequenceLines, item.line);
      }
    } else if (item.kind == OutlineItem::Kind::kOperandBegin) {
      const size_t index = operandIndex(model, item.line);
      if (index < model.operandCounts.size() && model.operandCounts[index] == 0) {
        xmlNode* operand = addElement(list(), "Operand");
        setAttribute(operand, "line", lineText(item.line));
        writeOperatorAndId(operand, item);
      }
    }
  }
}

void writeLoop(xmlNode* fragment, const CoveredModel& model, size_t operandLine) {
  LoopTally tally;
  const auto found = model.loops.find(operandLine);
  if (found != model.loops.end()) tally = found->second;
  xmlNode* loop = addElement(fragment, "Loop");
  setAttribute(loop, "line", lineText(operandLine));
  setAttribute(loop, "zero", numberText(tally.zero));
  setAttribute(loop, "once", numberText(tally.once));
  setAttribute(loop, "more", numberText(tally.more));
}

// The diagram as nested fragments and operands with the count on every
// step and operand.
void writeSequenceOutline(xmlNode* parent, const CoveredModel& model) {
  const std::vector<OutlineItem>& outline = model.outline;
  const SequenceLines& lines = *model.sequenceLines;
  struct Open {
    xmlNode* element;
    std::vector<size_t> loopOperands;  // a fragment's loop operands, by begin line
  };
  std::vector<Open> open{{parent, {}}};
  for (size_t i = 0; i < outline.size(); ++i) {
    const OutlineItem& item = outline[i];
    switch (item.kind) {
      case OutlineItem::Kind::kStep: {
        const uint32_t count = model.lineCounts[item.line];
        size_t last = i;
        while (last + 1 < outline.size() && outline[last + 1].kind == OutlineItem::Kind::kStep &&
               model.lineCounts[outline[last + 1].line] == count) {
          ++last;
        }
        if (last + 1 - i >= kFoldedRun) {
          xmlNode* steps = writeSteps(open.back().element, model, i, last, last + 1 - i);
          setAttribute(steps, "count", numberText(count));
          i = last;
        } else {
          xmlNode* step = writeStep(open.back().element, lines, item.line);
          setAttribute(step, "count", numberText(count));
        }
        break;
      }
      case OutlineItem::Kind::kFragmentBegin: {
        xmlNode* fragment = addElement(open.back().element, "Fragment");
        writeOperatorAndId(fragment, item);
        setAttribute(fragment, "line", lineText(item.line));
        open.push_back(Open{fragment, {}});
        break;
      }
      case OutlineItem::Kind::kOperandBegin: {
        xmlNode* operand = addElement(open.back().element, "Operand");
        setAttribute(operand, "line", lineText(item.line));
        const size_t index = operandIndex(model, item.line);
        setAttribute(
            operand, "count",
            numberText(index < model.operandCounts.size() ? model.operandCounts[index] : 0));
        if (item.operatorName == "LOOP") open.back().loopOperands.push_back(item.line);
        open.push_back(Open{operand, {}});
        break;
      }
      case OutlineItem::Kind::kFragmentEnd:
        if (open.size() > 1) {
          for (size_t line : open.back().loopOperands) writeLoop(open.back().element, model, line);
          open.pop_back();
        }
        break;
      case OutlineItem::Kind::kOperandEnd:
        if (open.size() > 1) open.pop_back();
        break;
    }
  }
}

void writeChartRecord(xmlNode* parent, const ChartRecord& record, const uint32_t* count) {
  const bool state = !record.stateName.empty();
  xmlNode* element = addElement(parent, state ? "State" : "Transition");
  setAttribute(element, "guid", record.guid);
  setAttribute(element, "name", state ? record.stateName : record.transitionName);
  if (count) setAttribute(element, "count", numberText(*count));
}

bool isChartElement(const ChartRecord& record) {
  return !record.stateName.empty() || !record.transitionName.empty();
}

// The chart drawn with each state's and transition's count: a small chart
// whole, laid out once for every document; a large one only in the run's
// own document, around what no test case reached (its focus, and so its
// layout, would differ from document to document).
void writeChartDrawingWithCounts(xmlNode* parent, const CoveredModel& model, bool drawLarge) {
  constexpr size_t kMostFocus = 8;
  const ChartList& chart = *model.chart;
  LayoutLimits limits;
  size_t states = 0, transitions = 0;
  for (const auto& record : chart.records) {
    if (!record->stateName.empty()) ++states;
    if (!record->transitionName.empty()) ++transitions;
  }
  if (states > limits.mostStates || transitions > limits.mostTransitions) {
    if (!drawLarge) return;
    for (size_t i = 0; i < chart.size() && limits.focus.size() < kMostFocus; ++i) {
      const ChartRecord& record = *chart.records[i];
      if (isChartElement(record) && model.recordCounts[i] == 0) limits.focus.push_back(record.guid);
    }
    if (limits.focus.empty() && chart.firstRecord()) {
      limits.focus.push_back(chart.firstRecord()->guid);
    }
  }
  DrawingMarks marks;
  for (size_t i = 0; i < chart.size(); ++i) {
    const ChartRecord& record = *chart.records[i];
    if (isChartElement(record) && model.recordCounts[i] > 0) {
      marks.byGuid[record.guid].visited = model.recordCounts[i];
    }
  }
  writeChartDrawing(parent, *cachedLayout(model.chart, limits), marks);
}

void writeChart(xmlNode* parent, const CoveredModel& model, bool drawLarge) {
  const ChartList& chart = *model.chart;
  xmlNode* unreached = nullptr;
  for (size_t i = 0; i < chart.size(); ++i) {
    const ChartRecord& record = *chart.records[i];
    if (!isChartElement(record) || model.recordCounts[i] > 0) continue;
    if (!unreached) unreached = addElement(parent, "Unreached");
    writeChartRecord(unreached, record, nullptr);
  }
  for (size_t i = 0; i < chart.size(); ++i) {
    const ChartRecord& record = *chart.records[i];
    if (isChartElement(record)) writeChartRecord(parent, record, &model.recordCounts[i]);
  }
  writeChartDrawingWithCounts(parent, model, drawLarge);
}

void writeModel(xmlNode* root, const RunSettings& settings, const CoveredModel& model,
                const History* earlier, bool own) {
  xmlNode* element = addElement(root, "ModelCoverage");
  setAttribute(element, "kind", kindText(model));
  const int32_t first = model.members.empty() ? 0 : model.members.front();
  setAttribute(element, "name", tableEntry(settings.sequenceDiagramNames, first));
  setAttribute(element, "testCases", numberText(model.members.size()));
  for (int32_t number : model.members) {
    const std::string& fullName = tableEntry(settings.testCaseNames, number);
    xmlNode* member = addElement(element, "Member");
    setAttribute(member, "name", afterLast(fullName, '.'));
    setAttribute(member, "fullname", fullName);
  }
  writeTotals(addElement(element, "Totals"), model, coverageTotals(model));
  if (earlier) writeOverRuns(element, model, *earlier);
  if (model.sequence) {
    writeUnreached(element, model);
    writeSequenceOutline(element, model);
  } else {
    writeChart(element, model, own);
  }
}

}  // namespace

void appendModelCoverage(xmlNode* root, const RunSettings& settings,
                         const ModelCoverages& coverages, const History* earlier, bool own) {
  for (const CoveredModel& model : coverages.models()) {
    writeModel(root, settings, model, earlier, own);
  }
}

std::vector<HistoryCoverage> historyCoverage(const RunSettings& settings,
                                             const ModelCoverages& coverages) {
  std::vector<HistoryCoverage> kept;
  for (const CoveredModel& model : coverages.models()) {
    HistoryCoverage entry;
    const int32_t first = model.members.empty() ? 0 : model.members.front();
    entry.name = tableEntry(settings.sequenceDiagramNames, first);
    entry.kind = kindText(model);
    entry.fingerprint = modelFingerprint(model);
    entry.covered = coveredKeys(model);
    kept.push_back(std::move(entry));
  }
  return kept;
}

}  // namespace qendor
