#include "report/html_renders.h"

#include <malloc.h>
#include <sched.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <string>
#include <utility>

#include "base/paths.h"
#include "base/status_line.h"
#include "report/file_output.h"
#include "report/libxslt_render.h"
#include "report/render_workers.h"

namespace qendor {

namespace {

void writeAll(int fd, const std::string& text) {
  for (size_t done = 0; done < text.size();) {
    const ssize_t put = write(fd, text.data() + done, text.size() - done);
    if (put < 0 && errno == EINTR) continue;
    if (put <= 0) return;
    done += static_cast<size_t>(put);
  }
}

int64_t sizeOf(const std::string& path) {
  struct stat file;
  return stat(path.c_str(), &file) == 0 ? static_cast<int64_t>(file.st_size) : 0;
}

// The report language's stylesheet beside the program.
std::string stylesheetPath() {
  const RunSettings& r = run();
  return r.programDirectory + stylesheetName(r.reportLanguage);
}

}  // namespace

const char* stylesheetName(int reportLanguage) {
  switch (reportLanguage) {
    case kChs:
      return "TestResult2CHS.xslt";
    case kCht:
      return "TestResult2CHT.xslt";
    case kKor:
      return "TestResult2KOR.xslt";
    case kJpn:
      return "TestResult2JPN.xslt";
    default:
      return "TestResult2ENU.xslt";
  }
}

size_t renderSlots() {
  // The cores this process may run on: a harness that pins it to some of
  // the machine's cores gets no more renders than those at once.
  cpu_set_t allowed;
  CPU_ZERO(&allowed);
  long cores = sched_getaffinity(0, sizeof allowed, &allowed) == 0 ? CPU_COUNT(&allowed)
                                                                   : sysconf(_SC_NPROCESSORS_ONLN);
  return cores > 1 ? static_cast<size_t>(cores) : 1;
}

HtmlRenders::HtmlRenders(size_t slots, HtmlRenderer renderer)
    : slots_(slots > 0 ? slots : 1), renderer_(renderer) {}

HtmlRenders::~HtmlRenders() {
  finishAll();
  tellXsltprocNotFound();
}

void HtmlRenders::tellXsltprocNotFound() {
  if (xsltprocNotFound_ == 0) return;
  clearStatusLine();
  // One line for the run: a context of thousands of test cases would
  // otherwise bury standard error under the same sentence.
  std::fprintf(stderr, "qendor: xsltproc not found: %zu HTML %s not written\n", xsltprocNotFound_,
               xsltprocNotFound_ == 1 ? "report" : "reports");
  xsltprocNotFound_ = 0;
}

void HtmlRenders::start(const std::string& xmlPath, const std::string& htmlPath) {
  Render render;
  render.xml = normalisePath(xmlPath.c_str());
  render.html = normalisePath(htmlPath.c_str());
  waitForPath(render.xml);
  waitForPath(render.html);

  // Paths of waiting renders are nobody else's: every earlier render of the
  // same files is finished above, and later ones wait for this one.
  const int64_t serial = firstSerial_ + static_cast<int64_t>(queue_.size());
  lastUse_[render.xml] = serial;
  lastUse_[render.html] = serial;
  waiting_.emplace(sizeOf(render.xml), -serial);
  queue_.push_back(std::move(render));
  ++unfinished_;

  collect(false);
  launchWaiting(serial);
  reportFinished();
}

void HtmlRenders::finishAll() {
  // What building the documents freed goes back to the system while the
  // last renders, a context's the largest, run in threads of their own.
  if (workers_ && !running_.empty()) malloc_trim(0);
  finishThrough(firstSerial_ + static_cast<int64_t>(queue_.size()) - 1);
}

void HtmlRenders::waitForPath(const std::string& path) {
  const auto use = lastUse_.find(path);
  if (use != lastUse_.end()) finishThrough(use->second);
}

void HtmlRenders::finishThrough(int64_t serial) {
  while (!queue_.empty() && firstSerial_ <= serial) {
    collect(false);
    launchWaiting(serial);
    reportFinished();
    if (queue_.empty() || firstSerial_ > serial) break;
    // Something before `serial` is still running: every waiting render has
    // a slot or waits behind a running one.
    collect(true);
    if (waitHook_) waitHook_();
  }
}

void HtmlRenders::launchWaiting(int64_t through) {
  while (running_.size() < slots_) {
    // Entries of renders launched out of this order, reported since or not,
    // are dropped as they come up.
    while (!waiting_.empty() &&
           (-waiting_.top().second < firstSerial_ || !at(-waiting_.top().second).waiting)) {
      waiting_.pop();
    }
    if (waiting_.empty()) return;
    const int64_t largest = -waiting_.top().second;
    int64_t serial = largest;
    if (largest > through) {
      // Renders up to `through` are waited for: they go before larger ones.
      int64_t first = firstSerial_;
      while (first <= through && !at(first).waiting) ++first;
      if (first <= through) serial = first;
    }
    if (serial == largest) waiting_.pop();
    launch(serial);
  }
}

void HtmlRenders::launch(int64_t serial) {
  Render& render = at(serial);
  render.waiting = false;
  // A stale report must not survive a failed transformation.
  unlink(render.html.c_str());
  if (renderer_ == HtmlRenderer::kBuiltin) {
    launchBuiltin(serial);
  } else {
    launchXsltproc(serial);
  }
}

void HtmlRenders::launchXsltproc(int64_t serial) {
  Render& render = at(serial);
  render.xsltproc = startXsltproc(stylesheetPath(), render.xml, render.html);
  if (render.xsltproc.child < 0) {
    RenderOutcome outcome = xsltprocOutcome(render.xsltproc, 0, "xsltproc could not be started");
    outcome.xsltprocNotFound = render.xsltproc.notFound;
    recordEnd(serial, std::move(outcome));
    return;
  }
  running_.push_back(serial);
}

void HtmlRenders::launchBuiltin(int64_t serial) {
  Render& render = at(serial);
  if (!stylesheet_) {
    // Read once for the run, before any thread starts. What xsltproc would
    // say about it before every report is said once, with the first.
    stylesheet_ = std::make_unique<CompiledStylesheet>(stylesheetPath());
    render.outcome.warnings = stylesheet_->warnings();
    workers_ = std::make_unique<RenderWorkers>(slots_);
  }
  const CompiledStylesheet* stylesheet = stylesheet_.get();
  workers_->hand(serial, [stylesheet, xml = render.xml, html = render.html] {
    return stylesheet->render(xml, html);
  });
  running_.push_back(serial);
}

void HtmlRenders::collect(bool block) {
  if (renderer_ == HtmlRenderer::kXsltproc) {
    collectXsltproc(block);
    return;
  }
  if (!workers_) return;
  for (RenderWorkers::Finished& finished : workers_->takeFinished(block && !running_.empty())) {
    recordEnd(finished.first, std::move(finished.second));
  }
}

void HtmlRenders::collectXsltproc(bool block) {
  // Blocking, wait until any child has ended, without reaping it: when it is
  // one of ours it is reaped below. Were it anyone else's, waiting for the
  // oldest running render instead keeps this from spinning.
  if (block && !running_.empty()) {
    siginfo_t ended{};
    while (waitid(P_ALL, 0, &ended, WEXITED | WNOWAIT) < 0 && errno == EINTR) {
    }
    bool ours = false;
    for (int64_t serial : running_) ours = ours || at(serial).xsltproc.child == ended.si_pid;
    if (!ours) {
      const int64_t oldest = running_.front();
      int status = 0;
      pid_t reaped;
      while ((reaped = waitpid(at(oldest).xsltproc.child, &status, 0)) < 0 && errno == EINTR) {
      }
      recordEnd(oldest, xsltprocOutcome(at(oldest).xsltproc, status,
                                        reaped < 0 ? "xsltproc could not be waited for" : nullptr));
    }
  }
  for (size_t i = running_.size(); i > 0; --i) {
    const int64_t serial = running_[i - 1];
    int status = 0;
    const pid_t ended = waitpid(at(serial).xsltproc.child, &status, WNOHANG);
    if (ended == 0 || (ended < 0 && errno == EINTR)) continue;
    recordEnd(serial, xsltprocOutcome(at(serial).xsltproc, status,
                                      ended < 0 ? "xsltproc could not be waited for" : nullptr));
  }
}

void HtmlRenders::recordEnd(int64_t serial, RenderOutcome outcome) {
  Render& render = at(serial);
  for (size_t i = 0; i < running_.size(); ++i) {
    if (running_[i] != serial) continue;
    running_.erase(running_.begin() + static_cast<std::ptrdiff_t>(i));
    break;
  }
  render.done = true;
  --unfinished_;
  // Warnings said before the render began (the stylesheet's) come first.
  outcome.warnings.insert(0, render.outcome.warnings);
  render.outcome = std::move(outcome);
}

void HtmlRenders::reportFinished() {
  while (!queue_.empty() && queue_.front().done) {
    Render& render = queue_.front();
    const RenderOutcome& outcome = render.outcome;
    if (!outcome.warnings.empty() || outcome.unwritten ||
        (!outcome.problem.empty() && !outcome.xsltprocNotFound)) {
      clearStatusLine();
    }
    if (!outcome.warnings.empty()) {
      std::fflush(stderr);
      writeAll(STDERR_FILENO, outcome.warnings);
    }
    // A failed render may leave the file empty or cut short.
    if (outcome.unwritten || !outcome.problem.empty()) unlink(render.html.c_str());
    if (outcome.unwritten) {
      reportUnwritten(render.html, outcome.reason);
      unwritten_.insert(render.html);
    } else {
      unwritten_.erase(render.html);
      if (outcome.xsltprocNotFound) {
        ++xsltprocNotFound_;
      } else if (!outcome.problem.empty()) {
        std::fprintf(stderr, "qendor: HTML report %s not written: %s\n", render.html.c_str(),
                     outcome.problem.c_str());
      }
    }
    for (const std::string* path : {&render.xml, &render.html}) {
      const auto use = lastUse_.find(*path);
      if (use != lastUse_.end() && use->second == firstSerial_) lastUse_.erase(use);
    }
    queue_.pop_front();
    ++firstSerial_;
  }
}

}  // namespace qendor
