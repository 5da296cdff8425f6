// The "ModelCoverage" elements: how much of each model a run's test cases
// went through, written for a run that asks for it ("-coverage"), and what
// a history file keeps of it.
#pragma once

#include <libxml/tree.h>

#include <vector>

#include "base/run_settings.h"
#include "report/history.h"
#include "verify/model_coverage.h"

namespace qendor {

// Appends one "ModelCoverage" element per model of `coverages` to `root`,
// each named after the diagram name the info file (`settings`) gives its
// first test case. With `earlier` (a run that keeps a history), each also
// tells what this run and the earlier runs with the same model reached
// together. A chart is also drawn with its counts: a large one only in the
// run's `own` document.
void appendModelCoverage(xmlNode* root, const RunSettings& settings,
                         const ModelCoverages& coverages, const History* earlier = nullptr,
                         bool own = true);

// What the history keeps of this run's coverage: per model, its name, kind,
// fingerprint and the elements reached.
std::vector<HistoryCoverage> historyCoverage(const RunSettings& settings,
                                             const ModelCoverages& coverages);

}  // namespace qendor
