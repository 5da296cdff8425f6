// What the fault runs share: the workspace of a context run, the reports of
// a healthy run to compare with, and the line told for a lost report.
#pragma once

#include <gtest/gtest.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <regex>
#include <string>
#include <utility>
#include <vector>

#include "tests/test_support.h"

namespace qendor {
namespace {

namespace fs = std::filesystem;

using Outcome = test::ProgramOutcome;
using Files = std::vector<std::string>;

// The reports of a run of context Pkg.Run, in the order they are written: a
// small test case, a large one, the context.
const char* const kReports[] = {"Small.xml",  "Small.html", "Large.xml",
                                "Large.html", "Run.xml",    "Run.html"};
// The same from the smallest to the largest: a file size limit between two
// sizes loses every file after.
const char* const kBySize[] = {"Small.xml",  "Large.xml",  "Run.xml",
                               "Small.html", "Large.html", "Run.html"};

std::string runLog() {
  std::string log =
      "FULLASSERTION=a.c,1,1,-----ZKR_ASSERT_TRUE(\"Starting test case: Small\");\n"
      "FULLASSERTION=a.c,2,1,-----ZKR_ASSERT_TRUE(\"Finished test case: Small\");\n"
      "FULLASSERTION=a.c,1,2,-----ZKR_ASSERT_TRUE(\"Starting test case: Large\");\n";
  for (int line = 3; line < 63; ++line) {
    log += "FULLASSERTION=a.c," + std::to_string(line) + ",1,-----ZKR_ASSERT_TRUE(\"check " +
           std::to_string(line) + "\");\n";
  }
  return log + "FULLASSERTION=a.c,90,1,-----ZKR_ASSERT_TRUE(\"Finished test case: Large\");\n";
}

const std::vector<std::string> kContextRun = {"-infofile", "run.info",      "-resultfile",
                                              "run.log",   "-outdirectory", "out",
                                              "-tcontext", "Pkg.Run"};
const std::vector<std::string> kLargeRun = {"-infofile", "run.info",      "-resultfile",
                                            "run.log",   "-outdirectory", "out",
                                            "-tcase",    "Pkg.Run.Large"};

// The renderers every fault run is made with.
const char* const kRenderers[] = {"xsltproc", "builtin"};
std::string rendererName(const ::testing::TestParamInfo<const char*>& info) {
  return info.param;
}

// A folder with the inputs of the runs above and the output folder "out";
// its runs render with `renderer`.
class Workspace {
 public:
  explicit Workspace(std::string renderer) : renderer_(std::move(renderer)) {
    dir_.write("run.info", "TESTCASE Pkg.Run.Small 1\nTESTCASE Pkg.Run.Large 2\n");
    dir_.write("run.log", runLog());
    fs::create_directories(out());
  }
  std::string path(const std::string& name) const { return dir_.file(name); }
  std::string out() const { return dir_.file("out"); }
  void writeVerificationFiles() const {
    dir_.write("out/Small.ver", "CODE_TEST\n");
    dir_.write("out/Large.ver", "CODE_TEST\n");
  }

  // Runs the program; with a `sizeLimit` its files may grow to that many
  // bytes (the limit is set by prlimit, which then starts the program).
  Outcome run(const std::vector<std::string>& args, long sizeLimit = 0,
              const std::string& envPath = "/usr/bin:/bin") const {
    if (sizeLimit <= 0)
      return test::runProgram(QENDOR_BINARY, rendered(args), dir_.path(), envPath);
    std::vector<std::string> limited = {"--fsize=" + std::to_string(sizeLimit), QENDOR_BINARY};
    for (const std::string& arg : rendered(args)) limited.push_back(arg);
    return test::runProgram("/usr/bin/prlimit", limited, dir_.path(), envPath);
  }

  // `args` with the renderer of this workspace.
  std::vector<std::string> rendered(std::vector<std::string> args) const {
    args.insert(args.end(), {"-render", renderer_});
    return args;
  }

 private:
  std::string renderer_;
  test::TempDir dir_;
};

// A report's text with the time of the run masked.
std::string masked(const std::string& path) {
  static const std::regex time("[A-Z][a-z][a-z] [A-Z][a-z][a-z] [0-9][0-9] [0-9:]{8} [0-9]{4}");
  return std::regex_replace(test::readFile(path), time, "<time>");
}

// The reports of a run on a healthy disk: name, size and masked text.
struct Reference {
  std::map<std::string, long> size;
  std::map<std::string, std::string> text;
};

Reference healthyRun(const std::vector<std::string>& args, const std::string& renderer) {
  Workspace w(renderer);
  w.writeVerificationFiles();
  const Outcome o = w.run(args);
  EXPECT_EQ(o.err, "");
  Reference reference;
  for (const std::string& name : test::filesIn(w.out())) {
    if (name.size() > 4 && name.compare(name.size() - 4, 4, ".ver") == 0) continue;
    reference.size[name] = static_cast<long>(fs::file_size(w.path("out/" + name)));
    reference.text[name] = masked(w.path("out/" + name));
  }
  return reference;
}

// Every report left in `dir` is the whole report of the healthy run.
void expectWholeReports(const std::string& dir, const Reference& reference,
                        const std::string& label) {
  for (const std::string& name : test::filesIn(dir)) {
    const auto whole = reference.text.find(name);
    if (whole == reference.text.end()) continue;
    if (!fs::is_regular_file(dir + "/" + name)) continue;
    EXPECT_EQ(masked(dir + "/" + name), whole->second) << label << ": " << name;
  }
}

// The stderr line of a lost report.
std::string lost(const std::string& name, const std::string& reason) {
  return "qendor: out/" + name + ": " + reason + "\n";
}

}  // namespace
}  // namespace qendor
