// The "Diagnosis" element: why a model-based verification failed, written
// for a run that asks for it.
#pragma once

#include <libxml/tree.h>

#include "verify/judgement.h"

namespace qendor {

// Appends the verdict's "Diagnosis" to `testCaseResult`; nothing when the
// verdict carries none.
void writeDiagnosis(xmlNode* testCaseResult, const TestCaseVerdict& verdict);

}  // namespace qendor
