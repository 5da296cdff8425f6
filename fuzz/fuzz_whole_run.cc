// One whole run in-process: a fuzzed info file, result file and verification
// file (separated by lines "@@") in a scratch folder, then every stage up to
// the saved documents. The run must end with a documented status and every
// XML file it wrote must parse. xsltproc is kept off the search path: the
// rendering is tested end to end elsewhere and would only slow fuzzing down.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <set>
#include <string>
#include <vector>

#include "app/entry.h"
#include "base/run_settings.h"
#include "fuzz/fuzz_support.h"

using namespace qendor;

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  fuzz::quietStdout();
  setenv("PATH", "/nonexistent", 1);
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const std::set<int> documented = {0, 10, 11, 12, 13, 20, 21, 22, 24, 25, 30};
  resetRun();
  fuzz::clearScratch();
  const auto parts = fuzz::splitInput(data, size, 3);
  // Whatever the fuzzed info file says, test case 1 is in the context.
  const std::string info =
      fuzz::writeFile("run.info", "TESTCASE Pkg.Ctx.Case 1 Sd\n" + std::string(parts[0]));
  const std::string log = fuzz::writeFile("run.log", parts[1]);
  fuzz::writeFile("out/Case.ver", parts[2]);
  const std::string out = fuzz::scratch() + "/out";
  std::vector<std::string> words = {"qendor",        "-infofile", info,        "-resultfile", log,
                                    "-outdirectory", out,         "-tcontext", "Pkg.Ctx"};
  std::vector<char*> argv;
  for (std::string& word : words) argv.push_back(word.data());
  argv.push_back(nullptr);
  const int status = runQendor(static_cast<int>(words.size()), argv.data());
  if (!documented.count(status)) std::abort();
  for (const auto& entry : std::filesystem::directory_iterator(out)) {
    const std::string path = entry.path().string();
    if (path.size() < 4 || path.compare(path.size() - 4, 4, ".xml") != 0) continue;
    fuzz::requireWellFormed(path);
  }
  resetRun();
  return 0;
}
