// The JUnit file of a run ("-junit FILE"): the run's own result document
// turned into JUnit XML for CI servers by the JUnit stylesheet, applied with
// libxslt inside this process, so that it needs no xsltproc.
#pragma once

#include <string>

namespace qendor {

// The JUnit stylesheet's file name; it lies beside the report stylesheets.
extern const char kJunitStylesheetName[];

// Writes the JUnit XML of the result document saved at `xmlPath` (a file
// system path) to `junitPath` (as given: a relative path is relative to the
// current directory) with the stylesheet at `stylesheetPath`. The file is
// written beside its place and renamed over it when complete: a reader finds
// the earlier file or the whole new one. False when it could not be made;
// then one line "qendor: <junitPath>: <reason>" is on standard error and no
// file is left at `junitPath`, so that an earlier run's file cannot stand in
// for this one.
bool writeJunitFile(const std::string& stylesheetPath, const std::string& xmlPath,
                    const std::string& junitPath);

// The same when the result document itself could not be written: removes
// an earlier file at `junitPath` and says why on one line.
void loseJunitFile(const std::string& junitPath);

}  // namespace qendor
