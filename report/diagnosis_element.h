// The "Diagnosis" element: why a model-based verification failed, written
// for a run that asks for it.
#pragma once

#include <libxml/tree.h>

#include <string>

#include "base/run_settings.h"
#include "verify/judgement.h"
#include "verify/step_names.h"

namespace qendor {

// Appends the verdict's "Diagnosis" to `testCaseResult`; nothing when the
// verdict carries none. A sequence diagram's steps are named by the
// verdict's accepted entries and, in a context document, by `context`: the
// names all test cases of the context judged against the same diagram gave
// them (null: this test case's only). The entries the model did not judge
// are listed with their sources from `sourceFiles`, as the table lists its.
void writeDiagnosis(xmlNode* testCaseResult, const TestCaseVerdict& verdict,
                    const RunTable<std::string>& sourceFiles = RunTable<std::string>(),
                    const StepNames* context = nullptr);

}  // namespace qendor
