// The "Diagnosis" element: why a model-based verification failed, written
// for a run that asks for it.
#pragma once

#include <libxml/tree.h>

#include "verify/test_case_verdict.h"

namespace qendor {

// Appends the verdict's "Diagnosis" to `testCaseResult`; nothing when the
// verdict carries none. `lines` are the diagram lines the verdict was judged
// against (null for a chart).
void writeDiagnosis(xmlNode* testCaseResult, const TestCaseVerdict& verdict,
                    const SequenceLines* lines);

}  // namespace qendor
