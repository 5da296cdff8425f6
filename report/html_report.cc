#include "report/html_report.h"

#include <fcntl.h>
#include <libxml/xmlIO.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <string_view>

#include "app/paths.h"
#include "app/run_settings.h"
#include "report/xml_node.h"

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

// Copies what a child wrote to `errors` onto standard error and closes it.
void replayErrors(int errors) {
  if (errors < 0) return;
  struct stat written;
  if (fstat(errors, &written) == 0 && written.st_size > 0) {
    std::fflush(stderr);
    char buffer[4096];
    off_t at = 0;
    ssize_t n;
    while ((n = pread(errors, buffer, sizeof buffer, at)) > 0) {
      at += n;
      for (ssize_t done = 0; done < n;) {
        const ssize_t put = write(STDERR_FILENO, buffer + done, static_cast<size_t>(n - done));
        if (put < 0 && errno == EINTR) continue;
        if (put <= 0) break;
        done += put;
      }
    }
  }
  close(errors);
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

bool saveXmlDocument(xmlNode* root, const std::string& xmlPath) {
  // Going through our own FILE keeps libxml2 from reading "%XX" in the name
  // as an escaped URI.
  FILE* file = std::fopen(normalisePathCopy(xmlPath.c_str()).c_str(), "w");
  if (!file) return false;
  writeFormattedDocument(root, xmlOutputBufferCreateFile(file, nullptr));
  std::fclose(file);
  return true;
}

bool renderHtml(const std::string& xmlPath, const std::string& htmlPath) {
  HtmlRenders renders(1);
  return renders.start(xmlPath, htmlPath);
}

std::vector<std::string> renderEnvironment(char* const* env) {
  // A report run starts an xsltproc per document, and each one's heap is
  // paged in 4 KiB at a time: on a virtual machine every such page fault is
  // a trip to the hypervisor, and two at once queue for it. In 2 MiB pages a
  // large report renders in half the time and a small one in four fifths.
  // Outside glibc, or without transparent huge pages, this changes nothing.
  const std::string_view name = "GLIBC_TUNABLES=";
  std::string tunables = std::string(name) + "glibc.malloc.hugetlb=1:glibc.malloc.top_pad=4194304";
  std::vector<std::string> entries;
  bool merged = false;
  for (; env && *env; ++env) {
    std::string_view entry = *env;
    if (!merged && entry.substr(0, name.size()) == name) {
      entry.remove_prefix(name.size());
      if (!entry.empty()) tunables.append(":").append(entry);
      entries.push_back(tunables);
      merged = true;
    } else {
      entries.emplace_back(entry);
    }
  }
  if (!merged) entries.push_back(tunables);
  return entries;
}

size_t renderSlots() {
  long cores = sysconf(_SC_NPROCESSORS_ONLN);
  return cores > 1 ? static_cast<size_t>(cores) : 1;
}

HtmlRenders::HtmlRenders(size_t slots) : slots_(slots > 0 ? slots : 1) {}

HtmlRenders::~HtmlRenders() {
  finishAll();
}

bool HtmlRenders::start(const std::string& xmlPath, const std::string& htmlPath) {
  const RunSettings& r = run();
  Render render;
  render.html = normalisePathCopy(htmlPath.c_str());
  render.xml = normalisePathCopy(xmlPath.c_str());
  const std::string stylesheet = r.programDirectory + stylesheetName(r.reportLanguage);

  waitForPath(render.xml);
  waitForPath(render.html);
  while (running_.size() >= slots_) finishOldest();

  // A stale report must not survive a failed transformation.
  unlink(render.html.c_str());

  // Runs xsltproc with exactly these arguments, without a shell. What it
  // writes on standard error is kept aside and shown when it is finished, so
  // that it stands where a run one after the other puts it.
  std::string command = "xsltproc";
  std::string outputOption = "-o";
  std::string html = render.html;
  std::string sheet = stylesheet;
  std::string xml = render.xml;
  char* argv[] = {command.data(), outputOption.data(), html.data(),
                  sheet.data(),   xml.data(),          nullptr};
  // xsltproc reads "%XX" in the name after "-o" as an escaped URI and would
  // write another report's file. Such a report is written through its
  // standard output, opened on the literal name, instead.
  render.throughStdout = html.find('%') != std::string::npos;
  char* stdoutArgv[] = {command.data(), sheet.data(), xml.data(), nullptr};

  std::vector<std::string> environment = renderEnvironment(environ);
  std::vector<char*> envp;
  for (std::string& entry : environment) envp.push_back(entry.data());
  envp.push_back(nullptr);

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
  if (!startable || posix_spawnp(&render.child, "xsltproc", useActions, nullptr,
                                 render.throughStdout ? stdoutArgv : argv, envp.data()) != 0) {
    render.child = -1;
  }
  if (useActions) posix_spawn_file_actions_destroy(useActions);
  running_.push_back(std::move(render));
  return true;
}

void HtmlRenders::finishAll() {
  while (!running_.empty()) finishOldest();
}

void HtmlRenders::waitForPath(const std::string& path) {
  // Finishing in order keeps the warnings in the order of the reports.
  for (size_t i = running_.size(); i > 0; --i) {
    const Render& render = running_[i - 1];
    if (render.xml == path || render.html == path) {
      for (size_t n = i; n > 0; --n) finishOldest();
      return;
    }
  }
}

void HtmlRenders::finishOldest() {
  Render render = std::move(running_.front());
  running_.pop_front();
  const char* problem = "xsltproc could not be started";
  if (render.child > 0) {
    int status = 0;
    problem = nullptr;
    while (waitpid(render.child, &status, 0) < 0) {
      if (errno != EINTR) {
        problem = "xsltproc could not be waited for";
        break;
      }
    }
    if (!problem) problem = problemOf(status);
  }
  replayErrors(render.errors);
  // Written through standard output, a failed report leaves a file behind.
  if (problem && render.throughStdout) unlink(render.html.c_str());
  if (problem) {
    std::fprintf(stderr, "qendor: HTML report %s not written: %s\n", render.html.c_str(), problem);
  }
}

}  // namespace qendor
