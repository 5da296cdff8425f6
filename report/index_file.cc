#include "report/index_file.h"

#include <sys/stat.h>

#include <cstdio>

#include "base/paths.h"
#include "report/html_renders.h"
#include "report/index_document.h"
#include "report/index_scan.h"
#include "report/shared_file.h"

namespace qendor {

bool rewriteIndex(const std::string& directory, HtmlRenderer renderer) {
  const std::string folder = normalisePath(directory);
  const std::string xmlPath = folder + "/" + kIndexFileName;
  const std::string htmlPath = folder + "/index.html";
  FileLock lock(xmlPath + ".lock");
  if (!lock.held()) {
    std::fprintf(stderr, "qendor: index %s not written: its lock file cannot be created\n",
                 xmlPath.c_str());
    return false;
  }
  // Every run that finished its documents before this one took the lock is
  // in the folder now.
  if (!replaceFile(xmlPath, folder, indexText(scanIndexDirectory(folder)))) {
    std::fprintf(stderr, "qendor: index %s not written\n", xmlPath.c_str());
    return false;
  }
  // Rendered under the lock too, so that the page always shows the index
  // beside it. A failed render has said so in one line.
  HtmlRenders renders(1, renderer);
  renders.start(xmlPath, htmlPath);
  renders.finishAll();
  // A render that fails leaves no file.
  struct stat page;
  return stat(htmlPath.c_str(), &page) == 0;
}

}  // namespace qendor
