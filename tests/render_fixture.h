// The fixtures of the render tests: a fake xsltproc first in PATH, and one
// that tells the test when each run starts and ends and waits for the test
// to let it go.
#pragma once

#include "report/html_renders.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <condition_variable>
#include <map>
#include <mutex>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "base/run_settings.h"
#include "tests/test_support.h"

namespace qendor {
namespace {

// A fake xsltproc, installed as `bin`/xsltproc, whose runs the test
// follows and holds. Each run writes "start NAME" (NAME: the XML file's
// name, followed by the first kind="..." of the file when it has one) and
// later "end NAME" into a FIFO that a thread of this object reads; between
// the two it waits for a line on the FIFO gates/NAME. A run goes on as soon
// as its start is read, unless it is held. Then it says "err NAME" on
// standard error, writes its NAME line into the HTML file and ends, with 3
// for names beginning with "f".
class GatedXsltproc {
 public:
  GatedXsltproc(const test::TempDir& dir, const std::string& bin)
      : control_(dir.file("control")), gates_(dir.file("gates")) {
    mkdir(bin.c_str(), 0755);
    mkdir(gates_.c_str(), 0755);
    mkfifo(control_.c_str(), 0600);
    const std::string fake =
        dir.write("bin/xsltproc",
                  "#!/bin/sh\n"
                  "n=$(basename \"$4\")\n"
                  "k=$(grep -o 'kind=\"[a-z_]*\"' \"$4\" 2>/dev/null | head -n 1)\n"
                  "mkfifo '" +
                      gates_ + "'/\"$n\" 2>/dev/null\necho \"start $n${k:+ $k}\" > '" + control_ +
                      "'\n"
                      "read go < '" +
                      gates_ + "'/\"$n\"\necho \"err $n\" >&2\necho \"end $n\" > '" + control_ +
                      "'\n"
                      "printf '%s' \"$n${k:+ $k}\" > \"$2\"\n"
                      "case $n in f*) exit 3;; esac\n");
    chmod(fake.c_str(), 0755);
    setenv("PATH", (bin + ":/usr/bin:/bin").c_str(), 1);
    // Read and written here: the runs' writes never wait for a reader, and
    // the reader sees no end of file between them.
    fd_ = ::open(control_.c_str(), O_RDWR | O_CLOEXEC);
    reader_ = std::thread([this] { read(); });
  }
  ~GatedXsltproc() {
    const char quit[] = "quit\n";
    if (::write(fd_, quit, sizeof quit - 1) < 0) ADD_FAILURE() << "control FIFO";
    reader_.join();
    close(fd_);
  }
  GatedXsltproc(const GatedXsltproc&) = delete;
  GatedXsltproc& operator=(const GatedXsltproc&) = delete;

  // The next run of `name` goes on once the line `line` has been read.
  void holdUntil(const std::string& name, const std::string& line) {
    std::lock_guard<std::mutex> lock(mutex_);
    holds_[name] = line;
  }
  // The next run of `name` goes on when release() says so.
  void hold(const std::string& name) { holdUntil(name, ""); }
  // Waits until the held run of `name` has started and lets it go on.
  void release(const std::string& name) {
    {
      std::unique_lock<std::mutex> lock(mutex_);
      read_.wait(lock, [&] { return started(name); });
      holds_.erase(name);
    }
    letGo(name);
  }

  // Waits until `line` has been read.
  void waitFor(const std::string& line) {
    std::unique_lock<std::mutex> lock(mutex_);
    read_.wait(lock, [&] { return seen(line); });
  }

  // Every line read so far, each with its line break, and every line the
  // runs finished so far wrote: a line of our own sent after theirs comes
  // back after them.
  std::string log() {
    std::unique_lock<std::mutex> lock(mutex_);
    const std::string sync = "sync " + std::to_string(++syncs_);
    if (::write(fd_, (sync + "\n").data(), sync.size() + 1) < 0) ADD_FAILURE() << "control FIFO";
    read_.wait(lock, [&] { return synced_ == sync; });
    return log_;
  }

 private:
  bool seen(const std::string& line) const {
    return ("\n" + log_).find("\n" + line + "\n") != std::string::npos;
  }
  // Whether a run of `name` has started, whatever kind it read.
  bool started(const std::string& name) const {
    const std::string log = "\n" + log_;
    return log.find("\nstart " + name + "\n") != std::string::npos ||
           log.find("\nstart " + name + " ") != std::string::npos;
  }

  // Lets the run waiting on gates/NAME go on: opening the gate waits for it.
  // Plain descriptors, no stdio: capturing standard error flushes every
  // stdio stream and would wait for one in use here.
  void letGo(const std::string& name) {
    const int gate = ::open((gates_ + "/" + name).c_str(), O_WRONLY | O_CLOEXEC);
    if (gate < 0) return;
    if (::write(gate, "go\n", 3) < 0) ADD_FAILURE() << "gate " << name;
    close(gate);
  }

  void read() {
    std::string pending;
    char buffer[4096];
    for (;;) {
      const ssize_t got = ::read(fd_, buffer, sizeof buffer);
      if (got <= 0) return;
      pending.append(buffer, static_cast<size_t>(got));
      size_t end;
      while ((end = pending.find('\n')) != std::string::npos) {
        const std::string text = pending.substr(0, end);
        pending.erase(0, end + 1);
        if (text == "quit") return;
        if (text.compare(0, 5, "sync ") == 0) {
          std::lock_guard<std::mutex> lock(mutex_);
          synced_ = text;
          read_.notify_all();
          continue;
        }
        take(text);
      }
    }
  }

  // Notes a line and lets go the runs it releases: those held until it,
  // and a run it starts that is not held or whose line came already.
  void take(const std::string& text) {
    std::vector<std::string> going;
    {
      std::lock_guard<std::mutex> lock(mutex_);
      log_ += text + "\n";
      for (auto hold = holds_.begin(); hold != holds_.end();) {
        if (!hold->second.empty() && hold->second == text && started(hold->first)) {
          going.push_back(hold->first);
          hold = holds_.erase(hold);
        } else {
          ++hold;
        }
      }
      if (text.compare(0, 6, "start ") == 0) {
        const std::string name = text.substr(6, text.find(' ', 6) - 6);
        const auto hold = holds_.find(name);
        if (hold == holds_.end()) {
          going.push_back(name);
        } else if (!hold->second.empty() && seen(hold->second)) {
          going.push_back(name);
          holds_.erase(hold);
        }
      }
    }
    read_.notify_all();
    for (const std::string& name : going) letGo(name);
  }

  std::string control_;
  std::string gates_;
  int fd_ = -1;
  std::mutex mutex_;
  std::condition_variable read_;
  std::string log_;
  int syncs_ = 0;
  std::string synced_;
  std::map<std::string, std::string> holds_;  // name -> line it waits for
  std::thread reader_;
};

// Renders against a fake xsltproc placed first in PATH.
class RenderHtmlTest : public ::testing::Test {
 protected:
  void SetUp() override {
    resetRun();
    mkdir(bin_.c_str(), 0755);
  }
  void TearDown() override { resetRun(); }

  // A fake that writes each argument on a line of `args` and creates the
  // output file, then exits with `status`.
  void installFake(int status) {
    const std::string script = "#!/bin/sh\n: > '" + args_ +
                               "'\nfor a in \"$@\"; do printf '%s\\n' \"$a\" >> '" + args_ +
                               "'; done\n"
                               "printf html > \"$2\"\n"
                               "exit " +
                               std::to_string(status) + "\n";
    const std::string fake = dir_.write("bin/xsltproc", script);
    chmod(fake.c_str(), 0755);
    setenv("PATH", (bin_ + ":/usr/bin:/bin").c_str(), 1);
  }
  // No xsltproc anywhere in PATH.
  void hideXsltproc() {
    const std::string none = dir_.file("none");
    mkdir(none.c_str(), 0755);
    setenv("PATH", none.c_str(), 1);
  }

  // Renders through `renders` and waits for it; returns what was printed on
  // standard error.
  std::string renderWith(HtmlRenders& renders, const std::string& xml, const std::string& html) {
    testing::internal::CaptureStderr();
    renders.start(xml, html);
    renders.finishAll();
    return testing::internal::GetCapturedStderr();
  }

  // Renders one report as a run does, keeping what was printed.
  void render(const std::string& xml, const std::string& html) {
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    {
      HtmlRenders renders(1);
      renders.start(xml, html);
    }
    stdout_ = testing::internal::GetCapturedStdout();
    stderr_ = testing::internal::GetCapturedStderr();
  }

  test::TempDir dir_;
  std::string bin_ = dir_.file("bin");
  std::string args_ = dir_.file("args.txt");
  test::ScopedEnv path_{"PATH"};
  std::string stdout_;
  std::string stderr_;
};

// Renders against the gated fake.
class HtmlRendersTest : public RenderHtmlTest {
 protected:
  // Queues the render of STEM.xml into STEM.html in the test folder.
  void queue(HtmlRenders& renders, const std::string& stem) {
    renders.start(dir_.file(stem + ".xml"), dir_.file(stem + ".html"));
  }

  GatedXsltproc fake_{dir_, bin_};
};

}  // namespace
}  // namespace qendor
