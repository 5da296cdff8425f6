#include "report/diagnosis_element.h"

#include <string>
#include <vector>

#include "base/text.h"
#include "report/chart_drawing.h"
#include "report/entry_attributes.h"
#include "report/xml_node.h"
#include "verify/sequence_diagnosis.h"
#include "verify/sequence_place.h"

namespace qendor {

namespace {

// Runs of at least this many steps side by side with the same count are
// written as one "Steps" element, so that a huge diagram stays small.
constexpr size_t kFoldedRun = 16;

std::string lineText(size_t index) {
  return decimalText(static_cast<int64_t>(index) + 1);
}

// The names the step's value was recorded under: this test case's, then
// those only other test cases of the context recorded.
struct OutlineNames {
  const StepNames& own;
  const StepNames* context;  // null outside a context document

  bool any(size_t line) const {
    return !own.at(line).empty() || (context && !context->at(line).empty());
  }
};

void writeName(xmlNode* step, const StepName& name, bool other) {
  xmlNode* element = addElement(step, "Name");
  setAttribute(element, "instance", name.instance);
  setAttribute(element, "message", name.message);
  if (other) setAttribute(element, "from", "other");
}

void writeStep(xmlNode* parent, const SequenceLines& lines, size_t line, uint32_t accepted,
               const OutlineNames& names) {
  xmlNode* step = addElement(parent, "Step");
  setAttribute(step, "line", lineText(line));
  setAttribute(step, "value", lines[line]);
  setAttribute(step, "accepted", decimalText(accepted));
  for (const StepName& name : names.own.at(line)) writeName(step, name, false);
  if (!names.context) return;
  for (const StepName& name : names.context->at(line)) {
    if (!names.own.has(line, name)) writeName(step, name, true);
  }
}

// Steps from..to (indexes into `items`), all with the same count.
void writeSteps(xmlNode* parent, const SequenceLines& lines, const std::vector<OutlineItem>& items,
                size_t from, size_t to, uint32_t accepted) {
  xmlNode* steps = addElement(parent, "Steps");
  setAttribute(steps, "line", lineText(items[from].line));
  setAttribute(steps, "lastLine", lineText(items[to].line));
  setAttribute(steps, "first", lines[items[from].line]);
  setAttribute(steps, "last", lines[items[to].line]);
  setAttribute(steps, "count", decimalText(static_cast<int64_t>(to - from + 1)));
  setAttribute(steps, "accepted", decimalText(accepted));
}

void writeOutline(xmlNode* diagnosis, const SequenceLines& lines,
                  const std::vector<OutlineItem>& items, const SequenceDiagnosis& sequence,
                  const OutlineNames& names) {
  std::vector<xmlNode*> open{addElement(diagnosis, "Outline")};
  for (size_t i = 0; i < items.size(); ++i) {
    const OutlineItem& item = items[i];
    switch (item.kind) {
      case OutlineItem::Kind::kStep: {
        // A named step stands alone: its names are what the reader looks for.
        const uint32_t accepted = sequence.acceptedAt[item.line];
        size_t last = i;
        while (!names.any(item.line) && last + 1 < items.size() &&
               items[last + 1].kind == OutlineItem::Kind::kStep &&
               sequence.acceptedAt[items[last + 1].line] == accepted &&
               !names.any(items[last + 1].line)) {
          ++last;
        }
        if (last + 1 - i >= kFoldedRun) {
          writeSteps(open.back(), lines, items, i, last, accepted);
          i = last;
        } else {
          writeStep(open.back(), lines, item.line, accepted, names);
        }
        break;
      }
      case OutlineItem::Kind::kFragmentBegin: {
        xmlNode* fragment = addElement(open.back(), "Fragment");
        setAttribute(fragment, "operator", item.operatorName);
        setAttribute(fragment, "id", item.id);
        setAttribute(fragment, "line", lineText(item.line));
        open.push_back(fragment);
        break;
      }
      case OutlineItem::Kind::kOperandBegin: {
        xmlNode* operand = addElement(open.back(), "Operand");
        setAttribute(operand, "line", lineText(item.line));
        open.push_back(operand);
        break;
      }
      case OutlineItem::Kind::kFragmentEnd:
      case OutlineItem::Kind::kOperandEnd:
        if (open.size() > 1) open.pop_back();
        break;
    }
  }
}

void setFragment(xmlNode* element, const PlaceFragment& fragment, const char* lineName) {
  setAttribute(element, "operator", fragment.operatorName);
  setAttribute(element, "id", fragment.id);
  setAttribute(element, lineName, lineText(fragment.line));
}

const char* whereText(SequencePlace::Where where) {
  switch (where) {
    case SequencePlace::Where::kBehind:
      return "behind";
    case SequencePlace::Where::kAhead:
      return "ahead";
    default:
      return "nowhere";
  }
}

// The place the run stood, in the diagram's terms, for the sentence that
// explains it.
void writePosition(xmlNode* diagnosis, const SequencePlace& place) {
  xmlNode* position = addElement(diagnosis, "Position");
  if (place.started) {
    setAttribute(position, "last", lineText(place.lastLine));
    setAttribute(position, "lastValue", place.lastValue);
  }
  setAttribute(position, "moreOptions", decimalText(static_cast<int64_t>(place.moreOptions)));
  for (const SequencePlace::Inside& inside : place.inside) {
    xmlNode* element = addElement(position, "Inside");
    setFragment(element, inside.fragment, "line");
    if (inside.operand == 0) continue;  // a strict fragment has no operands
    setAttribute(element, "operand", decimalText(static_cast<int64_t>(inside.operand)));
    setAttribute(element, "enteredAt", inside.enteredAt);
  }
  for (const PlaceFragment& fragment : place.passedOver) {
    setFragment(addElement(position, "PassedOver"), fragment, "line");
  }
  for (const SequencePlace::Option& option : place.options) {
    xmlNode* element = addElement(position, "Option");
    setAttribute(element, "value", option.value);
    setAttribute(element, "line", lineText(option.line));
    if (option.inFragment) setFragment(element, option.fragment, "fragmentLine");
  }
  const SequencePlace::Recorded& recorded = place.recorded;
  if (recorded.where == SequencePlace::Where::kNone) return;
  xmlNode* element = addElement(position, "Recorded");
  setAttribute(element, "where", whereText(recorded.where));
  if (recorded.where == SequencePlace::Where::kNowhere) return;
  setAttribute(element, "line", lineText(recorded.line));
  if (recorded.inFragment) setFragment(element, recorded.fragment, "fragmentLine");
}

void writeSequenceDiagnosis(xmlNode* diagnosis, const SequenceLines& lines,
                            const TestCaseVerdict& verdict, const StepNames* context) {
  const SequenceDiagnosis& sequence = verdict.diagnosis->sequence;
  setAttribute(diagnosis, "kind", "sequence");
  StepNames own(lines.size());
  own.add(verdict);
  const std::vector<OutlineItem> items = sequenceOutline(lines);
  writeOutline(diagnosis, lines, items, sequence, OutlineNames{own, context});
  if (const AssertionRecord* record = sequence.rejectedRecord) {
    xmlNode* rejected = addElement(diagnosis, "Rejected");
    setAttribute(rejected, "assertion", decimalText(static_cast<int64_t>(sequence.rejectedEntry)));
    setAttribute(rejected, "fnr", record->fileNumber);
    setAttribute(rejected, "lnr", record->lineNumber);
    setAttribute(rejected, "value", sequence.value);
    setAttribute(rejected, "sdiname", sequence.sdiName);
    setAttribute(rejected, "msgid", sequence.msgId);
  }
  if (!sequence.showExpected) return;
  xmlNode* expected = addElement(diagnosis, "Expected");
  // The line the step stood on; past the last line the diagram had ended.
  setAttribute(expected, "line",
               sequence.position < lines.size() ? lineText(sequence.position) : "end");
  for (const std::string& value : sequence.expected) {
    setAttribute(addElement(expected, "Value"), "value", value);
  }
  writePosition(diagnosis, placeOf(lines, items, sequence));
}

void writeChartStep(xmlNode* parent, const ChartDiagnosis::Step& step) {
  xmlNode* element = addElement(parent, step.state ? "State" : "Transition");
  setAttribute(element, "name", step.name);
  setAttribute(element, "guid", step.guid);
  if (step.entry > 0) {
    setAttribute(element, "assertion", decimalText(static_cast<int64_t>(step.entry)));
  }
}

void writeChartPlace(xmlNode* element, const ChartDiagnosis::Step& step) {
  setAttribute(element, "kind", step.state ? "state" : "transition");
  setAttribute(element, "name", step.name);
  setAttribute(element, "guid", step.guid);
}

void writeChartDiagnosis(xmlNode* diagnosis, const ChartDiagnosis& chart) {
  setAttribute(diagnosis, "kind", "chart");
  xmlNode* path = addElement(diagnosis, "Path");
  setAttribute(path, "omitted", decimalText(static_cast<int64_t>(chart.omitted)));
  for (const ChartDiagnosis::Step& step : chart.path) writeChartStep(path, step);
  if (!chart.stopped) return;
  // A search for an assertion found nothing, or none led to the chart's end.
  xmlNode* stop = addElement(diagnosis, chart.stoppedEntry > 0 ? "NoMatch" : "NoEnd");
  setAttribute(stop, "name", chart.stoppedAt.name);
  setAttribute(stop, "guid", chart.stoppedAt.guid);
  if (chart.stoppedEntry > 0) {
    setAttribute(stop, "assertion", decimalText(static_cast<int64_t>(chart.stoppedEntry)));
    setAttribute(stop, "statement", chart.assertion);
  }
  for (const std::string& name : chart.tried) {
    setAttribute(addElement(stop, "Tried"), "name", name);
  }
  if (chart.performed) {
    xmlNode* performed = addElement(stop, "PerformedIn");
    writeChartPlace(performed, chart.performedIn);
    if (!chart.reachable) setAttribute(performed, "reachable", "no");
  }
  if (chart.blocked) {
    xmlNode* blocked = addElement(stop, "Blocked");
    writeChartPlace(blocked, chart.blockedBy);
    if (!chart.blockedStatement.empty()) {
      setAttribute(blocked, "statement", chart.blockedStatement);
      if (chart.blockedRecorded) setAttribute(blocked, "recorded", "yes");
    }
  }
}

// The chart, drawn with the diagnosis's marks: laid out once per run.
void writeChartDrawingOf(xmlNode* diagnosis, const Diagnosis& explained) {
  if (!explained.chartList || explained.chartList->empty()) return;
  const std::shared_ptr<const ChartLayout> layout =
      cachedLayout(explained.chartList, diagnosisLimits(explained.chart));
  writeChartDrawing(diagnosis, *layout, chartMarks(explained.chart));
}

// The entries after the rejected one, numbered on from it, as the assertion
// table would have shown them.
void writeNotJudged(xmlNode* diagnosis, const TestCaseVerdict& verdict,
                    const RunTable<std::string>& sourceFiles) {
  const Diagnosis& explained = *verdict.diagnosis;
  if (explained.notJudged.empty()) return;
  xmlNode* list = addElement(diagnosis, "NotJudged");
  setAttribute(list, "more", decimalText(static_cast<int64_t>(explained.moreNotJudged)));
  size_t number = verdict.entries.size();
  for (const AssertionEntry& entry : explained.notJudged) {
    xmlNode* element = addElement(list, "Entry");
    setAttribute(element, "assertion", decimalText(static_cast<int64_t>(++number)));
    if (!entry.progressValue.empty()) setAttribute(element, "value", entry.progressValue);
    writeEntryAttributes(element, entry, verdict.type, sourceFiles);
  }
}

}  // namespace

void writeDiagnosis(xmlNode* testCaseResult, const TestCaseVerdict& verdict,
                    const RunTable<std::string>& sourceFiles, const StepNames* context) {
  if (!verdict.diagnosis) return;
  const Diagnosis& diagnosis = *verdict.diagnosis;
  const SequenceLines* lines = diagnosis.sequenceLines.get();
  if (diagnosis.kind == Diagnosis::Kind::kSequence && !lines) return;
  xmlNode* element = addElement(testCaseResult, "Diagnosis");
  if (diagnosis.kind == Diagnosis::Kind::kSequence) {
    writeSequenceDiagnosis(element, *lines, verdict, context);
  } else {
    writeChartDiagnosis(element, diagnosis.chart);
    writeChartDrawingOf(element, diagnosis);
  }
  writeNotJudged(element, verdict, sourceFiles);
}

}  // namespace qendor
