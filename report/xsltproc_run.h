// One xsltproc process that turns a result document into HTML.
#pragma once

#include <sys/types.h>

#include <string>

#include "report/render_outcome.h"

namespace qendor {

struct XsltprocRun {
  pid_t child = -1;            // -1 when xsltproc could not be started
  int errors = -1;             // its standard error, kept in memory
  bool throughStdout = false;  // the HTML is its standard output
  bool notFound = false;       // no xsltproc on the PATH: nothing was started
};

// Starts xsltproc with `stylesheet` from `xmlPath` to `htmlPath` (file system
// paths), without a shell and without waiting for it.
XsltprocRun startXsltproc(const std::string& stylesheet, const std::string& xmlPath,
                          const std::string& htmlPath);

// How `run` ended, from its wait status, or with `problem` when it could not
// be waited for; reads and closes its standard error.
RenderOutcome xsltprocOutcome(XsltprocRun& run, int status, const char* problem);

}  // namespace qendor
