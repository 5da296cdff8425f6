// Saving a result document and rendering it into HTML.
#pragma once

#include <libxml/tree.h>

#include <sys/types.h>

#include <deque>
#include <string>
#include <vector>

namespace qendor {

// The stylesheet file name of a report language.
const char* stylesheetName(int reportLanguage);

// Saves `root` as an indented XML file at `xmlPath` (normalised first). False
// when the file cannot be created. `root` stays owned by the caller.
bool saveXmlDocument(xmlNode* root, const std::string& xmlPath);

// Deletes a stale HTML file and runs xsltproc with the report language's
// stylesheet from `xmlPath` to `htmlPath`. Always true; a failed
// transformation leaves the HTML file absent and warns on standard error.
bool renderHtml(const std::string& xmlPath, const std::string& htmlPath);

// The number of xsltproc runs that may go on at once: one per core.
size_t renderSlots();

// The environment xsltproc runs in: `env` (null-terminated "NAME=value"
// entries) with glibc's malloc asked for huge pages and a large heap step.
// Tunables already in GLIBC_TUNABLES follow ours, so theirs win.
std::vector<std::string> renderEnvironment(char* const* env);

// xsltproc runs that go on in the background while the next documents are
// built, at most `slots` at once. They are finished (waited for, their
// warnings written) in the order they were started, so standard error reads
// as when they run one after the other; the destructor finishes them all.
class HtmlRenders {
 public:
  explicit HtmlRenders(size_t slots);
  ~HtmlRenders();
  HtmlRenders(const HtmlRenders&) = delete;
  HtmlRenders& operator=(const HtmlRenders&) = delete;

  // Waits for a running render that reads or writes `path` (normalised), and
  // for every one started before it.
  void waitForPath(const std::string& path);

  // What renderHtml does, without waiting for xsltproc to end. Renders of
  // the same files are finished first, and the oldest when every slot is
  // taken. Always true.
  bool start(const std::string& xmlPath, const std::string& htmlPath);

  // Waits for every render and writes their warnings.
  void finishAll();

 private:
  struct Render {
    std::string xml;  // normalised paths
    std::string html;
    pid_t child = -1;            // -1 when xsltproc could not be started
    int errors = -1;             // its standard error, shown when finished
    bool throughStdout = false;  // the HTML is xsltproc's standard output
  };
  void finishOldest();

  size_t slots_;
  std::deque<Render> running_;
};

}  // namespace qendor
