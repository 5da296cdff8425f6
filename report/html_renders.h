// Rendering result documents into HTML in the background, with xsltproc or
// with libxslt inside this process ("-render").
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <queue>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "base/run_settings.h"
#include "report/render_outcome.h"
#include "report/xsltproc_run.h"

namespace qendor {

class CompiledStylesheet;
class RenderWorkers;

// The stylesheet file name of a report language.
const char* stylesheetName(int reportLanguage);

// The number of renders that may go on at once: one per core this process
// may run on.
size_t renderSlots();

// Renders that go on while the next documents are built, at most `slots` at
// once: xsltproc processes, or threads that apply the report language's
// stylesheet, read once. Renders wait in a queue for a free slot, the
// largest report first, so that a context's long render does not end the
// run alone. They are finished (their warnings written) in the order they
// were queued, so standard error reads as when they run one after the
// other; the destructor finishes them all.
class HtmlRenders {
 public:
  explicit HtmlRenders(size_t slots, HtmlRenderer renderer = HtmlRenderer::kXsltproc);
  ~HtmlRenders();
  HtmlRenders(const HtmlRenders&) = delete;
  HtmlRenders& operator=(const HtmlRenders&) = delete;

  // Finishes the last render that reads or writes `path` (normalised), and
  // every one queued before it, so the file may be touched.
  void waitForPath(const std::string& path);

  // Queues the render of `xmlPath` into `htmlPath` with the report
  // language's stylesheet; renders of the same files are finished first.
  // The HTML file is deleted before the render starts, so that a stale
  // report never survives a failed one. A failed render leaves the HTML
  // file absent and says why on standard error, in its turn.
  void start(const std::string& xmlPath, const std::string& htmlPath);

  // Waits for every render and writes their warnings.
  void finishAll();

  // After finishAll(): when renders found no xsltproc, says so on one line
  // for all of them, "qendor: xsltproc not found: N HTML reports not
  // written", and counts afresh. The destructor says it too.
  void tellXsltprocNotFound();

  // The renders queued and not done yet: waiting for a slot or running.
  size_t unfinished() const { return unfinished_; }

  // Called each time a wait for renders sees one end, so that the caller
  // can show how many are left; null for none.
  void setWaitHook(std::function<void()> hook) { waitHook_ = std::move(hook); }

  // True when the last finished render to `htmlPath` (normalised) could not
  // write the file (a full disk, a file size limit, a read-only folder). Such
  // a file is removed and its loss told as "qendor: <path>: <reason>".
  bool unwritten(const std::string& htmlPath) const { return unwritten_.count(htmlPath) > 0; }

 private:
  struct Render {
    std::string xml;  // normalised paths
    std::string html;
    bool waiting = true;  // for a slot
    bool done = false;
    XsltprocRun xsltproc;  // with the xsltproc renderer
    RenderOutcome outcome;
  };

  Render& at(int64_t serial) { return queue_[static_cast<size_t>(serial - firstSerial_)]; }
  void launch(int64_t serial);
  void launchXsltproc(int64_t serial);
  void launchBuiltin(int64_t serial);
  void launchWaiting(int64_t through);
  void collect(bool block);
  void collectXsltproc(bool block);
  void recordEnd(int64_t serial, RenderOutcome outcome);
  void reportFinished();
  void finishThrough(int64_t serial);

  size_t slots_;
  HtmlRenderer renderer_;
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
  // Renders reported since the last tellXsltprocNotFound() that found no
  // xsltproc.
  size_t xsltprocNotFound_ = 0;
  std::function<void()> waitHook_;
  size_t unfinished_ = 0;  // queued renders not done
  // With the builtin renderer, from its first render on: the stylesheet,
  // then the threads that apply it (destroyed first).
  std::unique_ptr<CompiledStylesheet> stylesheet_;
  std::unique_ptr<RenderWorkers> workers_;
};

}  // namespace qendor
