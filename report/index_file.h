// The index of an output folder ("-index"): index.xml and its HTML page
// index.html, rewritten by every run that is given the option, after its
// own reports. Runs into the same folder at the same time take turns under
// an advisory lock on index.xml.lock, and each rescans the folder while it
// holds it: the last of them lists every context document finished before
// it, its own included. index.xml is replaced in one rename, so a reader
// sees the old index or the new one, never half of one.
#pragma once

#include <string>

#include "base/run_settings.h"

namespace qendor {

// Rewrites the index of `directory` (as given on the command line) and
// renders index.html with `renderer` and the run's report language. False
// when either file could not be written; one line on standard error has
// then said so. Never changes anything else in the folder but the lock file.
bool rewriteIndex(const std::string& directory, HtmlRenderer renderer);

}  // namespace qendor
