#include "report/chart_drawing.h"

#include <map>
#include <mutex>
#include <utility>

#include "base/text.h"
#include "report/xml_node.h"

namespace qendor {

namespace {

void note(std::vector<size_t>& numbers, size_t number) {
  if (numbers.size() < DrawingMarks::kMostNumbers) numbers.push_back(number);
}

std::string numbersText(const std::vector<size_t>& numbers) {
  std::string text;
  for (size_t number : numbers) {
    if (!text.empty()) text += ' ';
    text += decimalText(static_cast<int64_t>(number));
  }
  return text;
}

void setCoordinate(xmlNode* element, const char* name, double value) {
  setAttribute(element, name, coordinateText(value));
}

void writeMarks(xmlNode* element, const std::string& guid, const DrawingMarks& marks) {
  if (guid.empty()) return;
  const auto found = marks.byGuid.find(guid);
  if (found == marks.byGuid.end()) return;
  const DrawingMarks::Mark& mark = found->second;
  if (mark.visited > 0) {
    setAttribute(element, "visited", decimalText(static_cast<int64_t>(mark.visited)));
  }
  if (!mark.steps.empty()) setAttribute(element, "steps", numbersText(mark.steps));
  if (!mark.assertions.empty()) setAttribute(element, "assertions", numbersText(mark.assertions));
  if (mark.stop) setAttribute(element, "stop", "yes");
  if (mark.performs) setAttribute(element, "performs", "yes");
  if (mark.blocked) setAttribute(element, "blocked", "yes");
  if (mark.way) setAttribute(element, "way", "yes");
}

const char* kindText(ChartLayout::Kind kind) {
  switch (kind) {
    case ChartLayout::Kind::kState:
      return "state";
    case ChartLayout::Kind::kTermination:
      return "termination";
    case ChartLayout::Kind::kInitial:
      return "initial";
    case ChartLayout::Kind::kStart:
      return "start";
    case ChartLayout::Kind::kComposite:
      return "composite";
  }
  return "state";
}

void writeBox(xmlNode* drawing, const char* name, const ChartLayout::Box& box,
              const DrawingMarks& marks) {
  xmlNode* element = addElement(drawing, name);
  setAttribute(element, "ref", box.ref);
  setAttribute(element, "kind", kindText(box.kind));
  if (!box.guid.empty() || box.kind != ChartLayout::Kind::kStart) {
    setAttribute(element, "guid", box.guid);
    setAttribute(element, "name", box.name);
  }
  setCoordinate(element, "x", box.x);
  setCoordinate(element, "y", box.y);
  setCoordinate(element, "w", box.w);
  setCoordinate(element, "h", box.h);
  if (box.first) setAttribute(element, "first", "yes");
  // An initial dot carries its composite's guid but not its marks.
  if (box.kind != ChartLayout::Kind::kInitial) writeMarks(element, box.guid, marks);
}

}  // namespace

DrawingMarks chartMarks(const ChartDiagnosis& diagnosis) {
  DrawingMarks marks;
  size_t number = diagnosis.omitted;
  for (const ChartDiagnosis::Step& step : diagnosis.path) {
    DrawingMarks::Mark& mark = marks.byGuid[step.guid];
    ++mark.visited;
    note(mark.steps, ++number);
    if (step.entry > 0) note(mark.assertions, step.entry);
  }
  if (!diagnosis.stopped) return marks;
  marks.byGuid[diagnosis.stoppedAt.guid].stop = true;
  if (diagnosis.performed) marks.byGuid[diagnosis.performedIn.guid].performs = true;
  if (diagnosis.blocked) marks.byGuid[diagnosis.blockedBy.guid].blocked = true;
  for (const std::string& guid : diagnosis.way) marks.byGuid[guid].way = true;
  return marks;
}

LayoutLimits diagnosisLimits(const ChartDiagnosis& diagnosis) {
  LayoutLimits limits;
  if (diagnosis.stopped) {
    limits.focus.push_back(diagnosis.stoppedAt.guid);
    if (diagnosis.performed) limits.focus.push_back(diagnosis.performedIn.guid);
    if (diagnosis.blocked) limits.focus.push_back(diagnosis.blockedBy.guid);
    for (const std::string& guid : diagnosis.way) limits.focus.push_back(guid);
  }
  for (auto step = diagnosis.path.rbegin(); step != diagnosis.path.rend(); ++step) {
    limits.focus.push_back(step->guid);
  }
  return limits;
}

std::shared_ptr<const ChartLayout> cachedLayout(const std::shared_ptr<const ChartList>& chart,
                                                const LayoutLimits& limits) {
  // A small chart is laid out alike whatever the focus: it is kept under
  // an empty focus. A chart's address is a key only while the chart lives.
  struct Entry {
    std::weak_ptr<const ChartList> chart;
    std::shared_ptr<const ChartLayout> layout;
  };
  static std::mutex mutex;
  static std::map<std::pair<const ChartList*, std::string>, Entry> cache;
  constexpr size_t kMostKept = 256;
  std::string focus;
  for (const std::string& guid : limits.focus) focus += guid + '\n';
  std::lock_guard<std::mutex> lock(mutex);
  const std::string none;
  for (const std::string* key : {&none, const_cast<const std::string*>(&focus)}) {
    const auto found = cache.find({chart.get(), *key});
    if (found == cache.end()) continue;
    if (!found->second.chart.expired()) return found->second.layout;
    cache.erase(found);
  }
  auto layout = std::make_shared<const ChartLayout>(layoutChart(*chart, limits));
  if (cache.size() >= kMostKept) cache.clear();
  cache[{chart.get(), layout->all ? std::string() : focus}] = Entry{chart, layout};
  return layout;
}

void writeChartDrawing(xmlNode* parent, const ChartLayout& layout, const DrawingMarks& marks) {
  if (!layout.laidOut) return;
  xmlNode* drawing = addElement(parent, "Drawing");
  setCoordinate(drawing, "width", layout.width);
  setCoordinate(drawing, "height", layout.height);
  setAttribute(drawing, "shown", layout.all ? "all" : "neighbourhood");
  setAttribute(drawing, "states", decimalText(static_cast<int64_t>(layout.states)));
  setAttribute(drawing, "transitions", decimalText(static_cast<int64_t>(layout.transitions)));
  size_t shownStates = 0;
  for (const ChartLayout::Box& box : layout.clusters) {
    writeBox(drawing, "Cluster", box, marks);
    ++shownStates;
  }
  for (const ChartLayout::Box& box : layout.nodes) {
    writeBox(drawing, "Node", box, marks);
    if (box.kind == ChartLayout::Kind::kState || box.kind == ChartLayout::Kind::kTermination) {
      ++shownStates;
    }
  }
  size_t shownTransitions = 0;
  for (const ChartLayout::Line& line : layout.lines) {
    xmlNode* element = addElement(drawing, "Edge");
    setAttribute(element, "kind",
                 line.guid.empty() && line.name.empty() ? "start"
                 : line.byDefault                       ? "default"
                                                        : "transition");
    if (!line.guid.empty() || !line.name.empty()) {
      setAttribute(element, "guid", line.guid);
      setAttribute(element, "name", line.name);
      ++shownTransitions;
    }
    setAttribute(element, "from", line.from);
    setAttribute(element, "to", line.to);
    setAttribute(element, "path", line.path);
    if (line.labelled) {
      setCoordinate(element, "lx", line.labelX);
      setCoordinate(element, "ly", line.labelY);
    }
    if (!line.arrow.empty()) setAttribute(element, "arrow", line.arrow);
    writeMarks(element, line.guid, marks);
  }
  setAttribute(drawing, "shownStates", decimalText(static_cast<int64_t>(shownStates)));
  setAttribute(drawing, "shownTransitions", decimalText(static_cast<int64_t>(shownTransitions)));
}

}  // namespace qendor
