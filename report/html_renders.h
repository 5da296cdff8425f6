// Rendering result documents into HTML with xsltproc, in the background.
#pragma once

#include <sys/types.h>

#include <cstdint>
#include <deque>
#include <queue>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

namespace qendor {

// Deletes a stale HTML file and runs xsltproc with the report language's
// stylesheet from `xmlPath` to `htmlPath`, and waits for it. Always true; a
// failed transformation leaves the HTML file absent and warns on standard
// error.
bool renderHtml(const std::string& xmlPath, const std::string& htmlPath);

class HtmlRenders;
// The same, going on in the background in `renders` while the next document
// is built: what a report run does.
bool renderHtml(const std::string& xmlPath, const std::string& htmlPath, HtmlRenders& renders);

// xsltproc runs that go on while the next documents are built, at most
// `slots` at once. Renders wait in a queue for a free slot, the largest
// report first, so that a context's long render does not end the run alone.
// They are finished (reaped, their warnings written) in the order they were
// queued, so standard error reads as when they run one after the other; the
// destructor finishes them all.
class HtmlRenders {
 public:
  explicit HtmlRenders(size_t slots);
  ~HtmlRenders();
  HtmlRenders(const HtmlRenders&) = delete;
  HtmlRenders& operator=(const HtmlRenders&) = delete;

  // Finishes the last render that reads or writes `path` (normalised), and
  // every one queued before it, so the file may be touched.
  void waitForPath(const std::string& path);

  // Queues what renderHtml does. Renders of the same files are finished
  // first. Always true.
  bool start(const std::string& xmlPath, const std::string& htmlPath);

  // Waits for every render and writes their warnings.
  void finishAll();

  // True when the last finished render to `htmlPath` (normalised) could not
  // write the file (a full disk, a file size limit, a read-only folder). Such
  // a file is removed and its loss told as "qendor: <path>: <reason>".
  bool unwritten(const std::string& htmlPath) const { return unwritten_.count(htmlPath) > 0; }

 private:
  struct Render {
    std::string xml;  // normalised paths
    std::string html;
    pid_t child = -1;     // -1 while waiting, or when xsltproc could not start
    int errors = -1;      // xsltproc's standard error while it runs
    bool waiting = true;  // for a slot
    bool done = false;
    bool throughStdout = false;  // the HTML is xsltproc's standard output
    bool unwritten = false;      // xsltproc could not write the HTML file
    std::string warnings;        // what it wrote on standard error
    const char* problem = nullptr;
  };

  Render& at(int64_t serial) { return queue_[static_cast<size_t>(serial - firstSerial_)]; }
  void launch(int64_t serial);
  void launchWaiting(int64_t through);
  void collect(bool block);
  void settle(int64_t serial, int status, const char* problem);
  void reportFinished();
  void finishThrough(int64_t serial);

  size_t slots_;
  std::vector<int64_t> running_;  // serial numbers
  // Renders not yet reported, in the order they were queued; the front has
  // the serial number firstSerial_.
  std::deque<Render> queue_;
  int64_t firstSerial_ = 0;
  // Waiting renders by XML size, the earliest of equal sizes first; entries
  // of renders launched out of this order are skipped when they come up.
  std::priority_queue<std::pair<int64_t, int64_t>> waiting_;
  // The last queued render of each path, while it is not reported.
  std::unordered_map<std::string, int64_t> lastUse_;
  // HTML files whose last render could not write them.
  std::unordered_set<std::string> unwritten_;
};

}  // namespace qendor
