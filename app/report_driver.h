// Decides which reports a run writes, writes them and returns the exit status.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "report/history.h"
#include "report/html_renders.h"
#include "verify/test_case_verdict.h"

namespace qendor {

// Writes the report of the "-tcase" test case, or those of every test case of
// the "-tcontext" context followed by the context's own, then releases the run
// tables. Returns the run's status code.
int runReports();

// The same with at most `renderSlots` xsltproc runs at once (runReports uses
// one per core). Files, standard output, warnings and the result are those of
// a run that renders each report before building the next.
int runReports(size_t renderSlots);

// Writes the XML and HTML report of one test case, or of the test context when
// `number` is below 1. `fullName` only names the files. Returns the status
// code of the document, or 25 when a file could not be written.
int writeReport(const std::string& fullName, int32_t number);

// The same, leaving xsltproc running in `renders`. Each test case is judged
// once: its verdict goes into `judged`, and the context's document takes the
// verdicts found there. With `earlier`, the document ends with a "History"
// element made from those runs.
int writeReport(const std::string& fullName, int32_t number, HtmlRenders& renders,
                TestCaseVerdicts& judged, const History* earlier = nullptr);

}  // namespace qendor
