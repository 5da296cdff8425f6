// How one render of a result document into HTML ended.
#pragma once

#include <string>

namespace qendor {

struct RenderOutcome {
  // Why no report was made; empty when it was (or when `unwritten` says why).
  std::string problem;
  // The report could not be written (a full disk, a file size limit, a
  // read-only folder), or was lost as such a report is; `reason` tells why.
  bool unwritten = false;
  std::string reason;
  // No xsltproc was found to render it: told once for the run, with the
  // count, instead of in its turn (see `problem`).
  bool xsltprocNotFound = false;
  // What the render had to say on standard error, shown in its turn.
  std::string warnings;
};

}  // namespace qendor
