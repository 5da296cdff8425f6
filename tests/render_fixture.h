// The fixtures of the render tests: a fake xsltproc first in PATH, and one
// that logs when each run starts and ends.
#pragma once

#include "report/html_renders.h"

#include <gtest/gtest.h>
#include <libxml/parser.h>
#include <libxml/tree.h>
#include <sched.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "base/run_settings.h"
#include "report/xml_node.h"
#include "tests/test_support.h"

namespace qendor {
namespace {

// Runs renderHtml against a fake xsltproc placed first in PATH.
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
  void hideXsltproc() { setenv("PATH", bin_.c_str(), 1); }

  // Renders through `renders` and waits for it; returns what was printed on
  // standard error.
  std::string renderWith(HtmlRenders& renders, const std::string& xml, const std::string& html) {
    testing::internal::CaptureStderr();
    renders.start(xml, html);
    renders.finishAll();
    return testing::internal::GetCapturedStderr();
  }

  // Runs renderHtml, keeping what it printed and what it returned (true
  // whatever xsltproc did: what came of it is in the files and the warnings).
  void render(const std::string& xml, const std::string& html) {
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    returned_ = renderHtml(xml, html);
    stdout_ = testing::internal::GetCapturedStdout();
    stderr_ = testing::internal::GetCapturedStderr();
  }

  test::TempDir dir_;
  std::string bin_ = dir_.file("bin");
  std::string args_ = dir_.file("args.txt");
  test::ScopedEnv path_{"PATH"};
  std::string stdout_;
  std::string stderr_;
  bool returned_ = false;
};

// A fake xsltproc that notes "start NAME" and "end NAME" (NAME: the XML
// file's name) in `log`, says "err NAME" on standard error and fails for
// names beginning with "f". A run whose name begins with "w" waits until
// another run has started, so two runs that may overlap do; one beginning
// with "g" waits until the file `gate` exists (both for ten seconds at most).
// Names beginning with "s" take a second, others pause a little so that an
// overlap would show.
class HtmlRendersTest : public RenderHtmlTest {
 protected:
  void installLoggingFake() {
    installFake(0);
    dir_.write("bin/xsltproc",
               "#!/bin/sh\n"
               "n=$(basename \"$4\")\n"
               "echo \"start $n\" >> '" +
                   log_ +
                   "'\n"
                   "case $n in w*) i=0; while [ $(grep -c '^start' '" +
                   log_ +
                   "') -lt 2 ] && "
                   "[ $i -lt 100 ]; do sleep 0.1; i=$((i+1)); done;;\n"
                   "g*) i=0; while [ ! -e '" +
                   gate_ +
                   "' ] && [ $i -lt 100 ]; do sleep 0.1; i=$((i+1)); done;;\n"
                   "s*) sleep 1;; *) sleep 0.2;; esac\n"
                   "echo \"err $n\" >&2\n"
                   "echo \"end $n\" >> '" +
                   log_ +
                   "'\n"
                   "printf \"$n\" > \"$2\"\n"
                   "case $n in f*) exit 3;; esac\n");
  }

  // Queues the render of STEM.xml into STEM.html in the test folder.
  void queue(HtmlRenders& renders, const std::string& stem) {
    renders.start(dir_.file(stem + ".xml"), dir_.file(stem + ".html"));
  }

  // Waits until the log reads `text` (ten seconds at most).
  void waitForLog(const std::string& text) {
    for (int i = 0; i < 1000 && test::readFile(log_) != text; ++i) usleep(10000);
  }

  std::string log_ = dir_.file("log.txt");
  std::string gate_ = dir_.file("gate");
};

}  // namespace
}  // namespace qendor
