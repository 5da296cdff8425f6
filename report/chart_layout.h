// The placement of a statechart or flowchart for a drawing, computed by the
// Graphviz layout library ("dot"): states as boxes, composite states as
// clusters holding their children, transitions as labelled splines. The
// result is plain data in the drawing's own coordinates (points, y growing
// downwards as in SVG), so that documents write it and stylesheets draw it.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "base/chart_record.h"

namespace qendor {

struct LayoutLimits {
  // A chart with more states or transitions than these is laid out only
  // around `focus`: dot's time grows far faster than the chart.
  size_t mostStates = 30;
  size_t mostTransitions = 90;
  // How many links a neighbourhood reaches out from each focus record.
  size_t reach = 2;
  // The guids of the records a neighbourhood is laid out around, the most
  // important first (a transition brings its two ends).
  std::vector<std::string> focus;
};

struct ChartLayout {
  enum class Kind {
    kState,        // a state or flowchart node
    kTermination,  // STATE_TYPE LocalTermination or Termination
    kInitial,      // the dot inside a composite state that its default transition leaves
    kStart,        // the dot before the chart's first record, where the walk starts
    kComposite,    // a cluster
  };
  struct Box {
    std::string ref;  // unique in the layout: "n3" (record 3), "i3" (its initial), "start"
    std::string guid;
    std::string name;
    Kind kind = Kind::kState;
    bool first = false;                 // the chart's first record
    double x = 0, y = 0, w = 0, h = 0;  // top left corner and size
  };
  struct Line {
    std::string guid;  // of the transition; empty for the start
    std::string name;
    std::string from, to;    // refs of the boxes (clusters included)
    bool byDefault = false;  // a default transition, or the start
    std::string path;        // SVG path data: "M x,y C x,y x,y x,y ..."
    bool labelled = false;
    double labelX = 0, labelY = 0;  // centre of the label
    std::string arrow;  // the arrowhead, SVG polygon points: tip, then its two back corners
  };

  bool laidOut = false;  // false: Graphviz failed, or the chart has no state
  double width = 0, height = 0;
  bool all = true;                     // false: only a neighbourhood
  size_t states = 0, transitions = 0;  // in the whole chart
  std::vector<Box> clusters;           // outer ones before inner ones
  std::vector<Box> nodes;
  std::vector<Line> lines;
};

// Lays `chart` out with dot. Deterministic: the same chart and limits give
// the same layout, coordinates rounded to tenths. Safe to call from any
// thread (calls are serialised).
ChartLayout layoutChart(const ChartList& chart, const LayoutLimits& limits);

// A coordinate as the documents write it: rounded to one decimal, without
// a trailing ".0".
std::string coordinateText(double value);

}  // namespace qendor
