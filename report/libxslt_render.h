// Rendering result documents into HTML with libxslt inside this process:
// the stylesheet is read and compiled once, then applied to each document,
// from several threads at once when wanted. The HTML is byte for byte what
// xsltproc writes with the same stylesheet and document.
#pragma once

#include <libxslt/xsltInternals.h>

#include <string>

#include "report/file_output.h"
#include "report/render_outcome.h"

namespace qendor {

class CompiledStylesheet {
 public:
  // Reads and compiles the stylesheet at `path` (a file system path) as
  // xsltproc reads it. Prepares libxml2 and libxslt for threads first, so it
  // must be made before any thread renders.
  explicit CompiledStylesheet(const std::string& path);
  ~CompiledStylesheet();
  CompiledStylesheet(const CompiledStylesheet&) = delete;
  CompiledStylesheet& operator=(const CompiledStylesheet&) = delete;

  // What libxml2 and libxslt said while reading the stylesheet, when it could
  // be used all the same: xsltproc would say it before each report.
  const std::string& warnings() const { return warnings_; }

  // Renders `xmlPath` into `htmlPath` (file system paths), written
  // completely or not at all. May run on several threads at once. What the
  // outcome tells, and how, follows xsltproc's exit statuses: a stylesheet
  // or a document that cannot be read gives a problem, a transformation that
  // fails or a file that cannot be written an unwritten report; a result
  // with nothing in it writes no file. `mode` tells how the file is
  // written (see FileOutput).
  RenderOutcome render(const std::string& xmlPath, const std::string& htmlPath,
                       FileOutput::Mode mode = FileOutput::Mode::kInPlace) const;

 private:
  std::string path_;
  xsltStylesheet* style_ = nullptr;  // null when the stylesheet cannot be used
  std::string problem_;              // why, then
  std::string warnings_;
};

}  // namespace qendor
