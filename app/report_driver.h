// Decides which reports a run writes, writes them and returns the exit status.
#pragma once

#include <cstddef>

#include "base/assertion_record.h"
#include "base/run_settings.h"
#include "base/status.h"

namespace qendor {

// Writes the report of the "-tcase" test case, or those of every test case of
// the "-tcontext" context followed by the context's own, judging the test
// cases of `logs` (released before the last renders finish), with at most
// `renderSlots` HTML renders going on at once.
// Files, standard output, warnings and the result are those of a run that
// renders each report before building the next. Returns the exit status of
// the run's own report.
ExitStatus runReports(const RunSettings& settings, TestCaseLogs logs, size_t renderSlots);

}  // namespace qendor
