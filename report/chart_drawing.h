// The "Drawing" element: a chart's layout written as data, with marks on its
// states and transitions, for the stylesheets to draw as SVG.
#pragma once

#include <libxml/tree.h>

#include <cstddef>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "base/chart_record.h"
#include "report/chart_layout.h"
#include "verify/judgement.h"

namespace qendor {

// What a drawing shows on its states and transitions, by guid.
struct DrawingMarks {
  static constexpr size_t kMostNumbers = 8;  // step and assertion numbers kept per mark
  struct Mark {
    size_t visited = 0;              // how often the path passed it (or a count of any kind)
    std::vector<size_t> steps;       // its places on the path (from 1), the first kMostNumbers
    std::vector<size_t> assertions;  // the assertions it performed, the first kMostNumbers
    bool stop = false;               // the record a search stood on when it found nothing
    bool performs = false;           // performs the assertion that matched nothing
    bool blocked = false;            // what the run did not pass on the way there
    bool way = false;                // on the shortest way from the stop there
  };
  std::unordered_map<std::string, Mark> byGuid;
};

// The marks of a chart test case's diagnosis: its path, in order, and where
// and why it stopped.
DrawingMarks chartMarks(const ChartDiagnosis& diagnosis);

// The limits a diagnosis draws with: a large chart is drawn around the
// stop, the record that performs the missed assertion, the way there and
// the end of the path.
LayoutLimits diagnosisLimits(const ChartDiagnosis& diagnosis);

// Lays `chart` out once per run for each set of limits that matters: a
// small chart once whatever the focus, a large one once per focus. The
// layouts are kept while their chart lives.
std::shared_ptr<const ChartLayout> cachedLayout(const std::shared_ptr<const ChartList>& chart,
                                                const LayoutLimits& limits);

// Appends "Drawing" to `parent`; nothing when `layout` was not laid out.
void writeChartDrawing(xmlNode* parent, const ChartLayout& layout, const DrawingMarks& marks);

}  // namespace qendor
