#include "report/chart_layout.h"

#include <graphviz/gvc.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <unordered_map>
#include <unordered_set>

#include "base/text.h"

// The dot layout plugin, linked in: the context loads no other plugin, so
// no text layout plugin measures labels with whatever fonts a machine has,
// and the layout stays the same on every machine.
extern "C" gvplugin_library_t gvplugin_dot_layout_LTX_library;

namespace qendor {

namespace {

// Graphviz keeps global state (its error level, its memory for names).
std::mutex graphvizMutex;

int quiet(char*) {
  return 0;
}

bool isState(const ChartRecord& record) {
  return !record.stateName.empty();
}

bool isTransition(const ChartRecord& record) {
  return record.stateName.empty() && !record.transitionName.empty();
}

// The records of a chart by position, and what links them.
struct ChartIndex {
  const ChartList& chart;
  std::unordered_map<const ChartRecord*, size_t> position;
  std::vector<long> parent;     // per record: the composite state holding it, or -1
  std::vector<bool> composite;  // per record: some state's parent
  std::vector<long> source;     // per transition: the first state leaving by it, or -1
  std::vector<long> target;     // per transition: its target state, or -1
  std::vector<bool> byDefault;  // per transition: its source's default transition
  size_t states = 0, transitions = 0;

  explicit ChartIndex(const ChartList& list) : chart(list) {
    const size_t n = list.size();
    parent.assign(n, -1);
    composite.assign(n, false);
    source.assign(n, -1);
    target.assign(n, -1);
    byDefault.assign(n, false);
    for (size_t i = 0; i < n; ++i) position.emplace(list.records[i].get(), i);
    for (size_t i = 0; i < n; ++i) {
      const ChartRecord& record = *list.records[i];
      if (isTransition(record)) {
        ++transitions;
        target[i] = stateAt(record.transitionTarget);
        continue;
      }
      if (!isState(record)) continue;
      ++states;
      if (record.parentGuid != "ROOT" && !record.parentGuid.empty()) {
        parent[i] = stateAt(record.parentGuid);
        if (parent[i] == static_cast<long>(i)) parent[i] = -1;
        if (parent[i] >= 0) composite[parent[i]] = true;
      }
      auto leave = [&](const std::string& guid, bool isDefault) {
        const long t = at(guid);
        if (t < 0 || !isTransition(*list.records[t]) || source[t] >= 0) return;
        source[t] = static_cast<long>(i);
        byDefault[t] = isDefault;
      };
      if (!record.defaultTransition.empty()) leave(record.defaultTransition, true);
      for (const std::string& guid : record.outTransitions) leave(guid, false);
    }
    // A parent chain that runs in a circle is cut where it closes.
    for (size_t i = 0; i < n; ++i) {
      std::unordered_set<long> seen{static_cast<long>(i)};
      for (long p = parent[i]; p >= 0; p = parent[p]) {
        if (!seen.insert(p).second) {
          parent[i] = -1;
          break;
        }
      }
    }
    std::fill(composite.begin(), composite.end(), false);
    for (size_t i = 0; i < n; ++i) {
      if (parent[i] >= 0) composite[parent[i]] = true;
    }
  }

  long at(const std::string& guid) const {
    const ChartRecord* record = chart.find(guid);
    return record ? static_cast<long>(position.at(record)) : -1;
  }
  long stateAt(const std::string& guid) const {
    const long i = at(guid);
    return i >= 0 && isState(*chart.records[i]) ? i : -1;
  }
  // True when state `inner` lies inside composite `outer` at any depth.
  bool inside(long inner, long outer) const {
    for (long p = parent[inner]; p >= 0; p = parent[p]) {
      if (p == outer) return true;
    }
    return false;
  }
};

// The states and transitions a layout shows: all of a small chart, or the
// neighbourhood of the focus records of a large one.
struct Shown {
  std::vector<bool> record;
  bool all = true;
};

Shown chooseShown(const ChartIndex& index, const LayoutLimits& limits) {
  const size_t n = index.chart.size();
  Shown shown;
  if (index.states <= limits.mostStates && index.transitions <= limits.mostTransitions) {
    shown.record.assign(n, true);
    return shown;
  }
  shown.all = false;
  shown.record.assign(n, false);
  // States by links either way, for the rings around the focus.
  std::vector<std::vector<long>> near(n);
  for (size_t t = 0; t < n; ++t) {
    if (index.source[t] < 0 || index.target[t] < 0) continue;
    near[index.source[t]].push_back(index.target[t]);
    near[index.target[t]].push_back(index.source[t]);
  }
  size_t count = 0;
  std::deque<std::pair<long, size_t>> queue;  // state, distance
  auto take = [&](long s, size_t distance) {
    if (s < 0 || shown.record[s] || count >= limits.mostStates) return;
    // A state comes with the composites around it, each counted.
    for (long p = s; p >= 0; p = index.parent[p]) {
      if (!shown.record[p]) {
        shown.record[p] = true;
        ++count;
      }
    }
    queue.emplace_back(s, distance);
  };
  for (const std::string& guid : limits.focus) {
    const long i = index.at(guid);
    if (i < 0) continue;
    if (isState(*index.chart.records[i])) {
      take(i, 0);
    } else {
      take(index.source[i], 0);
      take(index.target[i], 0);
    }
  }
  while (!queue.empty()) {
    const auto [s, distance] = queue.front();
    queue.pop_front();
    if (distance >= limits.reach) continue;
    for (long next : near[s]) take(next, distance + 1);
  }
  size_t lines = 0;
  for (size_t t = 0; t < n; ++t) {
    if (index.source[t] < 0 || index.target[t] < 0) continue;
    if (!shown.record[index.source[t]] || !shown.record[index.target[t]]) continue;
    if (lines++ >= limits.mostTransitions) break;
    shown.record[t] = true;
  }
  return shown;
}

char* text(const char* s) {
  return const_cast<char*>(s);
}

void set(void* object, const char* name, const std::string& value) {
  agsafeset(object, text(name), text(value.c_str()), text(""));
}

// Inches, the unit of a node's size, for a label of `characters`.
std::string widthFor(size_t characters) {
  const long points = std::max(54L, 7L * static_cast<long>(characters) + 20L);
  const long tenThousandths = points * 10000 / 72;
  std::string fraction = decimalText(tenThousandths % 10000);
  return decimalText(tenThousandths / 10000) + "." + std::string(4 - fraction.size(), '0') +
         fraction;
}

// Owns a laid-out graph and its context.
struct Graph {
  GVC_t* context = nullptr;
  Agraph_t* root = nullptr;
  bool laidOut = false;
  ~Graph() {
    if (laidOut) gvFreeLayout(context, root);
    if (root) agclose(root);
    if (context) gvFreeContext(context);
  }
};

// The triangle from the end of an edge's path to its tip, in the drawing's
// coordinates.
template <class X, class Y>
std::string arrowhead(pointf base, pointf tip, X xOf, Y yOf) {
  const double bx = xOf(base.x), by = yOf(base.y), tx = xOf(tip.x), ty = yOf(tip.y);
  const double length = std::hypot(tx - bx, ty - by);
  if (length < 0.01) return {};
  // Back corners beside the base, each a third of the length away.
  const double nx = -(ty - by) * 0.35, ny = (tx - bx) * 0.35;
  auto point = [](double x, double y) { return coordinateText(x) + "," + coordinateText(y); };
  return point(tx, ty) + " " + point(bx + nx, by + ny) + " " + point(bx - nx, by - ny);
}

}  // namespace

std::string coordinateText(double value) {
  long tenths = std::lround(value * 10.0);
  std::string result = tenths < 0 ? "-" : "";
  tenths = std::labs(tenths);
  result += decimalText(tenths / 10);
  if (tenths % 10 != 0) result += "." + decimalText(tenths % 10);
  return result;
}

ChartLayout layoutChart(const ChartList& chart, const LayoutLimits& limits) {
  ChartLayout layout;
  const ChartIndex index(chart);
  layout.states = index.states;
  layout.transitions = index.transitions;
  if (index.states == 0) return layout;
  const Shown shown = chooseShown(index, limits);
  layout.all = shown.all;
  const size_t n = chart.size();

  std::lock_guard<std::mutex> lock(graphvizMutex);
  agseterr(AGMAX);
  agseterrf(quiet);
  static const lt_symlist_t builtins[] = {
      {"gvplugin_dot_layout_LTX_library", &gvplugin_dot_layout_LTX_library}, {nullptr, nullptr}};
  Graph graph;
  graph.context = gvContextPlugins(builtins, 0);
  graph.root = agopen(text("chart"), Agdirected, nullptr);
  if (!graph.context || !graph.root) return layout;
  Agraph_t* root = graph.root;
  set(root, "compound", "true");
  set(root, "nodesep", "0.35");
  set(root, "ranksep", "0.45");
  set(root, "fontsize", "12");

  // Clusters first, outer before inner, so each finds its parent's.
  std::vector<Agraph_t*> cluster(n, nullptr);
  std::vector<Agnode_t*> node(n, nullptr);  // a composite's: its initial dot
  std::vector<long> order;
  std::vector<long> clusterOrder;  // outer before inner
  for (size_t i = 0; i < n; ++i) {
    if (!shown.record[i] || !isState(*chart.records[i])) continue;
    order.push_back(static_cast<long>(i));
  }
  std::function<void(long)> makeCluster = [&](long i) {
    if (cluster[i]) return;
    Agraph_t* outside = root;
    if (index.parent[i] >= 0 && shown.record[index.parent[i]]) {
      makeCluster(index.parent[i]);
      outside = cluster[index.parent[i]];
    }
    cluster[i] = agsubg(outside, text(("cluster_" + decimalText(i)).c_str()), 1);
    set(cluster[i], "label", chart.records[i]->stateName);
    clusterOrder.push_back(i);
  };
  for (long i : order) {
    if (index.composite[i]) makeCluster(i);
  }
  for (long i : order) {
    const ChartRecord& state = *chart.records[i];
    Agraph_t* inside = root;
    if (index.parent[i] >= 0 && shown.record[index.parent[i]]) inside = cluster[index.parent[i]];
    if (index.composite[i]) {
      node[i] = agnode(cluster[i], text(("i" + decimalText(i)).c_str()), 1);
      set(node[i], "shape", "point");
      set(node[i], "width", "0.12");
      continue;
    }
    node[i] = agnode(inside, text(("n" + decimalText(i)).c_str()), 1);
    set(node[i], "shape", "box");
    set(node[i], "fixedsize", "true");
    set(node[i], "label", state.stateName);
    set(node[i], "width", widthFor(state.stateName.size()));
    set(node[i], "height", "0.42");
  }
  Agnode_t* start = nullptr;
  const long first = isState(*chart.records[0]) && shown.record[0] ? 0 : -1;
  if (first >= 0) {
    start = agnode(root, text("start"), 1);
    set(start, "shape", "point");
    set(start, "width", "0.12");
    Agedge_t* edge = agedge(root, start, node[first], text("start"), 1);
    if (index.composite[first]) set(edge, "lhead", "cluster_0");
  }
  // The edges, with the transition each stands for.
  std::vector<std::pair<Agedge_t*, long>> edges;
  for (size_t t = 0; t < n; ++t) {
    if (!shown.record[t] || !isTransition(*chart.records[t])) continue;
    const long from = index.source[t], to = index.target[t];
    if (from < 0 || to < 0) continue;  // a transition no state leaves, or to nowhere
    Agedge_t* edge = agedge(root, node[from], node[to],
                            text(("t" + decimalText(static_cast<int64_t>(t))).c_str()), 1);
    set(edge, "label", chart.records[t]->transitionName);
    // Graphviz measures labels with its own font metrics; a larger size
    // keeps room for the page's font.
    set(edge, "fontsize", "13");
    // A composite's edges meet its border, unless they stay inside it; its
    // default transition leaves from its initial dot.
    if (index.composite[from] && !index.byDefault[t] && to != from && !index.inside(to, from)) {
      set(edge, "ltail", "cluster_" + decimalText(from));
    }
    if (index.composite[to] && to != from && !index.inside(from, to)) {
      set(edge, "lhead", "cluster_" + decimalText(to));
    }
    edges.emplace_back(edge, static_cast<long>(t));
  }

  if (gvLayout(graph.context, root, "dot") != 0) return layout;
  graph.laidOut = true;

  const boxf bb = GD_bb(root);
  const double left = bb.LL.x, top = bb.UR.y;
  auto xOf = [&](double x) { return x - left; };
  auto yOf = [&](double y) { return top - y; };
  auto round = [](double v) { return static_cast<double>(std::lround(v * 10.0)) / 10.0; };
  layout.width = round(bb.UR.x - bb.LL.x);
  layout.height = round(bb.UR.y - bb.LL.y);

  for (long i : clusterOrder) {
    const boxf box = GD_bb(cluster[i]);
    ChartLayout::Box b;
    b.ref = "n" + decimalText(i);
    b.guid = chart.records[i]->guid;
    b.name = chart.records[i]->stateName;
    b.kind = ChartLayout::Kind::kComposite;
    b.first = i == first;
    b.x = round(xOf(box.LL.x));
    b.y = round(yOf(box.UR.y));
    b.w = round(box.UR.x - box.LL.x);
    b.h = round(box.UR.y - box.LL.y);
    layout.clusters.push_back(std::move(b));
  }
  auto place = [&](ChartLayout::Box& b, Agnode_t* v) {
    const double w = ND_width(v) * 72.0, h = ND_height(v) * 72.0;
    b.x = round(xOf(ND_coord(v).x) - w / 2);
    b.y = round(yOf(ND_coord(v).y) - h / 2);
    b.w = round(w);
    b.h = round(h);
  };
  if (start) {
    ChartLayout::Box b;
    b.ref = "start";
    b.kind = ChartLayout::Kind::kStart;
    place(b, start);
    layout.nodes.push_back(std::move(b));
  }
  for (long i : order) {
    const ChartRecord& state = *chart.records[i];
    ChartLayout::Box b;
    if (index.composite[i]) {
      // The initial dot is drawn only where a default transition leaves it.
      if (state.defaultTransition.empty() || index.at(state.defaultTransition) < 0 ||
          !shown.record[index.at(state.defaultTransition)]) {
        continue;
      }
      b.ref = "i" + decimalText(i);
      b.guid = state.guid;
      b.name = state.stateName;
      b.kind = ChartLayout::Kind::kInitial;
    } else {
      b.ref = "n" + decimalText(i);
      b.guid = state.guid;
      b.name = state.stateName;
      b.first = i == first;
      b.kind = state.stateType == "LocalTermination" || state.stateType == "Termination"
                   ? ChartLayout::Kind::kTermination
                   : ChartLayout::Kind::kState;
    }
    place(b, node[i]);
    layout.nodes.push_back(std::move(b));
  }

  auto lineOf = [&](Agedge_t* edge, ChartLayout::Line& line) {
    const splines* spl = ED_spl(edge);
    if (!spl) return;
    for (int k = 0; k < spl->size; ++k) {
      const bezier& curve = spl->list[k];
      if (curve.size < 1) continue;
      auto point = [&](pointf p) {
        return coordinateText(xOf(p.x)) + "," + coordinateText(yOf(p.y));
      };
      line.path += (line.path.empty() ? "M " : " M ") + point(curve.list[0]);
      for (int j = 1; j + 2 < curve.size; j += 3) {
        line.path += " C " + point(curve.list[j]) + " " + point(curve.list[j + 1]) + " " +
                     point(curve.list[j + 2]);
      }
      if (curve.eflag) line.arrow = arrowhead(curve.list[curve.size - 1], curve.ep, xOf, yOf);
    }
    if (const textlabel_t* label = ED_label(edge)) {
      line.labelled = true;
      line.labelX = round(xOf(label->pos.x));
      line.labelY = round(yOf(label->pos.y));
    }
  };
  auto refOf = [&](long i) { return "n" + decimalText(i); };
  if (start) {
    ChartLayout::Line line;
    line.from = "start";
    line.to = refOf(first);
    line.byDefault = true;
    lineOf(agfstout(root, start), line);
    layout.lines.push_back(std::move(line));
  }
  for (const auto& [edge, t] : edges) {
    const ChartRecord& transition = *chart.records[t];
    ChartLayout::Line line;
    line.guid = transition.guid;
    line.name = transition.transitionName;
    const long from = index.source[t];
    line.from = index.byDefault[t] && index.composite[from] ? "i" + decimalText(from) : refOf(from);
    line.to = refOf(index.target[t]);
    line.byDefault = index.byDefault[t];
    lineOf(edge, line);
    layout.lines.push_back(std::move(line));
  }
  layout.laidOut = true;
  return layout;
}

}  // namespace qendor
