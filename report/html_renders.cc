#include "report/html_renders.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <string>
#include <string_view>

#include "base/paths.h"
#include "base/run_settings.h"
#include "report/file_output.h"
#include "report/html_report.h"

extern char** environ;

namespace qendor {

namespace {

// Why a finished xsltproc did not produce its report; null when it did.
const char* problemOf(int status) {
  if (WIFSIGNALED(status)) return "xsltproc was ended by a signal";
  if (!WIFEXITED(status)) return "xsltproc did not exit";
  if (WEXITSTATUS(status) == 127) return "xsltproc could not be started";
  if (WEXITSTATUS(status) != 0) return "xsltproc failed";
  return nullptr;
}

// libxml2's lines about a failed read or write, "I/O error : <reason>".
const std::string_view kIoError = "I/O error : ";

// Whether xsltproc could not write the HTML file. It ends with 11 then; when
// it writes to its standard output, it ends with 0 all the same, and only
// libxml2's I/O error lines tell.
bool writeFailed(int status, bool throughStdout, const std::string& warnings) {
  if (!WIFEXITED(status)) return false;
  if (WEXITSTATUS(status) == 11) return true;
  return throughStdout && WEXITSTATUS(status) == 0 &&
         (warnings.compare(0, kIoError.size(), kIoError) == 0 ||
          warnings.find("\n" + std::string(kIoError)) != std::string::npos);
}

// Takes libxml2's I/O error lines out of `warnings` and returns the first
// one's reason (the system's text for the error), or a reason of our own.
std::string takeWriteReason(std::string& warnings) {
  std::string reason;
  std::string kept;
  size_t start = 0;
  while (start < warnings.size()) {
    size_t end = warnings.find('\n', start);
    end = end == std::string::npos ? warnings.size() : end + 1;
    const std::string_view line(warnings.data() + start, end - start);
    if (line.substr(0, kIoError.size()) == kIoError) {
      if (reason.empty()) {
        std::string_view text = line.substr(kIoError.size());
        if (!text.empty() && text.back() == '\n') text.remove_suffix(1);
        reason = std::string(text);
      }
    } else {
      kept += line;
    }
    start = end;
  }
  warnings = kept;
  return reason.empty() ? "xsltproc could not write it" : reason;
}

// What a child wrote to `fd`; closes it.
std::string drain(int fd) {
  std::string text;
  if (fd < 0) return text;
  struct stat written;
  if (fstat(fd, &written) == 0 && written.st_size > 0) {
    char buffer[4096];
    off_t at = 0;
    ssize_t n;
    while ((n = pread(fd, buffer, sizeof buffer, at)) > 0) {
      at += n;
      text.append(buffer, static_cast<size_t>(n));
    }
  }
  close(fd);
  return text;
}

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

}  // namespace

bool renderHtml(const std::string& xmlPath, const std::string& htmlPath) {
  HtmlRenders renders(1);
  return renderHtml(xmlPath, htmlPath, renders);
}

bool renderHtml(const std::string& xmlPath, const std::string& htmlPath, HtmlRenders& renders) {
  return renders.start(xmlPath, htmlPath);
}

HtmlRenders::HtmlRenders(size_t slots) : slots_(slots > 0 ? slots : 1) {}

HtmlRenders::~HtmlRenders() {
  finishAll();
}

bool HtmlRenders::start(const std::string& xmlPath, const std::string& htmlPath) {
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

  collect(false);
  launchWaiting(serial);
  reportFinished();
  return true;
}

void HtmlRenders::finishAll() {
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
  }
}

void HtmlRenders::launchWaiting(int64_t through) {
  while (running_.size() < slots_) {
    while (!waiting_.empty() && !at(-waiting_.top().second).waiting) waiting_.pop();
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
  const RunSettings& r = run();
  // A stale report must not survive a failed transformation.
  unlink(render.html.c_str());

  // Runs xsltproc with exactly these arguments, without a shell. What it
  // writes on standard error is kept aside and shown when it is reported, so
  // that it stands where a run one after the other puts it.
  std::string command = "xsltproc";
  std::string outputOption = "-o";
  std::string html = render.html;
  std::string sheet = r.programDirectory + stylesheetName(r.reportLanguage);
  std::string xml = render.xml;
  char* argv[] = {command.data(), outputOption.data(), html.data(),
                  sheet.data(),   xml.data(),          nullptr};
  // xsltproc reads "%XX" in the name after "-o" as an escaped URI and would
  // write another report's file. Such a report is written through its
  // standard output, opened on the literal name, instead.
  render.throughStdout = html.find('%') != std::string::npos;
  char* stdoutArgv[] = {command.data(), sheet.data(), xml.data(), nullptr};

  // In memory, and not inherited by the other renders' xsltproc.
  render.errors = memfd_create("xsltproc-errors", MFD_CLOEXEC);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_t* useActions = nullptr;
  if (posix_spawn_file_actions_init(&actions) == 0) {
    bool ready = true;
    if (render.errors >= 0) {
      ready = posix_spawn_file_actions_adddup2(&actions, render.errors, STDERR_FILENO) == 0;
    }
    if (ready && render.throughStdout) {
      ready = posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, html.c_str(),
                                               O_WRONLY | O_CREAT | O_TRUNC, 0666) == 0;
    }
    if (ready) {
      useActions = &actions;
    } else {
      posix_spawn_file_actions_destroy(&actions);
    }
  }
  // Whatever stdout still buffers must not be written twice.
  std::fflush(stdout);
  // Without its standard output opened on the report, such a run would write
  // the page into ours: it is not started.
  const bool startable = !render.throughStdout || useActions;
  pid_t child = -1;
  if (!startable || posix_spawnp(&child, "xsltproc", useActions, nullptr,
                                 render.throughStdout ? stdoutArgv : argv, environ) != 0) {
    child = -1;
  }
  if (useActions) posix_spawn_file_actions_destroy(useActions);
  if (child <= 0) {
    settle(serial, 0, "xsltproc could not be started");
    return;
  }
  render.child = child;
  running_.push_back(serial);
}

void HtmlRenders::collect(bool block) {
  // Blocking, wait until any child has ended, without reaping it: when it is
  // one of ours it is reaped below. Were it anyone else's, waiting for the
  // oldest running render instead keeps this from spinning.
  if (block && !running_.empty()) {
    siginfo_t ended{};
    while (waitid(P_ALL, 0, &ended, WEXITED | WNOWAIT) < 0 && errno == EINTR) {
    }
    bool ours = false;
    for (int64_t serial : running_) ours = ours || at(serial).child == ended.si_pid;
    if (!ours) {
      const int64_t oldest = running_.front();
      int status = 0;
      pid_t reaped;
      while ((reaped = waitpid(at(oldest).child, &status, 0)) < 0 && errno == EINTR) {
      }
      settle(oldest, status, reaped < 0 ? "xsltproc could not be waited for" : nullptr);
    }
  }
  for (size_t i = running_.size(); i > 0; --i) {
    const int64_t serial = running_[i - 1];
    int status = 0;
    const pid_t ended = waitpid(at(serial).child, &status, WNOHANG);
    if (ended == 0 || (ended < 0 && errno == EINTR)) continue;
    settle(serial, status, ended < 0 ? "xsltproc could not be waited for" : nullptr);
  }
}

void HtmlRenders::settle(int64_t serial, int status, const char* problem) {
  Render& render = at(serial);
  for (size_t i = 0; i < running_.size(); ++i) {
    if (running_[i] != serial) continue;
    running_.erase(running_.begin() + static_cast<std::ptrdiff_t>(i));
    break;
  }
  render.done = true;
  render.problem = problem ? problem : problemOf(status);
  // Read now, so that renders finished ahead of their turn hold no
  // descriptors.
  render.warnings = drain(render.errors);
  render.errors = -1;
  if (!problem && writeFailed(status, render.throughStdout, render.warnings)) {
    render.unwritten = true;
    render.problem = "xsltproc could not write it";
  }
}

void HtmlRenders::reportFinished() {
  while (!queue_.empty() && queue_.front().done) {
    Render& render = queue_.front();
    const std::string reason = render.unwritten ? takeWriteReason(render.warnings) : "";
    if (!render.warnings.empty()) {
      std::fflush(stderr);
      writeAll(STDERR_FILENO, render.warnings);
    }
    // A failed render may leave the file empty or cut short.
    if (render.problem) unlink(render.html.c_str());
    if (render.unwritten) {
      reportUnwritten(render.html, reason);
      unwritten_.insert(render.html);
    } else {
      unwritten_.erase(render.html);
      if (render.problem) {
        std::fprintf(stderr, "qendor: HTML report %s not written: %s\n", render.html.c_str(),
                     render.problem);
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
