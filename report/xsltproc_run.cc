#include "report/xsltproc_run.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <string_view>

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

}  // namespace

XsltprocRun startXsltproc(const std::string& stylesheet, const std::string& xmlPath,
                          const std::string& htmlPath) {
  XsltprocRun run;
  // Runs xsltproc with exactly these arguments, without a shell. What it
  // writes on standard error is kept aside and shown when it is reported, so
  // that it stands where a run one after the other puts it.
  std::string command = "xsltproc";
  std::string outputOption = "-o";
  std::string html = htmlPath;
  std::string sheet = stylesheet;
  std::string xml = xmlPath;
  char* argv[] = {command.data(), outputOption.data(), html.data(),
                  sheet.data(),   xml.data(),          nullptr};
  // xsltproc reads "%XX" in the name after "-o" as an escaped URI and would
  // write another report's file. Such a report is written through its
  // standard output, opened on the literal name, instead.
  run.throughStdout = html.find('%') != std::string::npos;
  char* stdoutArgv[] = {command.data(), sheet.data(), xml.data(), nullptr};

  // In memory, and not inherited by the other renders' xsltproc.
  run.errors = memfd_create("xsltproc-errors", MFD_CLOEXEC);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_t* useActions = nullptr;
  if (posix_spawn_file_actions_init(&actions) == 0) {
    bool ready = true;
    if (run.errors >= 0) {
      ready = posix_spawn_file_actions_adddup2(&actions, run.errors, STDERR_FILENO) == 0;
    }
    if (ready && run.throughStdout) {
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
  const bool startable = !run.throughStdout || useActions;
  pid_t child = -1;
  const int spawned = startable ? posix_spawnp(&child, "xsltproc", useActions, nullptr,
                                               run.throughStdout ? stdoutArgv : argv, environ)
                                : -1;
  if (spawned != 0) child = -1;
  run.notFound = spawned == ENOENT;
  if (useActions) posix_spawn_file_actions_destroy(useActions);
  run.child = child > 0 ? child : -1;
  return run;
}

RenderOutcome xsltprocOutcome(XsltprocRun& run, int status, const char* problem) {
  RenderOutcome outcome;
  const char* why = problem ? problem : problemOf(status);
  // Read now, so that renders finished ahead of their turn hold no
  // descriptors.
  outcome.warnings = drain(run.errors);
  run.errors = -1;
  if (!problem && writeFailed(status, run.throughStdout, outcome.warnings)) {
    outcome.unwritten = true;
    outcome.reason = takeWriteReason(outcome.warnings);
  } else if (why) {
    outcome.problem = why;
  }
  return outcome;
}

}  // namespace qendor
