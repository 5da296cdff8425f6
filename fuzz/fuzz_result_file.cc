// The result file readers of both record forms, with the collection of
// assertion statements from a source file: the input is an info file, a
// source file and a result file, separated by lines "@@".
#include <cstddef>
#include <cstdint>

#include "base/run_settings.h"
#include "fuzz/fuzz_support.h"
#include "input/info_file.h"
#include "input/result_file.h"

using namespace qendor;

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  fuzz::quietStdout();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  resetRun();
  const auto parts = fuzz::splitInput(data, size, 3);
  const std::string source = fuzz::writeFile("src/a.cpp", parts[1]);
  const std::string info = fuzz::writeFile(
      "run.info", "FILE \"" + source + "\" 1\nFILE \"" + source + "\" 2\n" + std::string(parts[0]));
  const std::string log = fuzz::writeFile("run.log", parts[2]);
  run().infoFile = info.c_str();
  run().resultFile = log.c_str();
  if (!readInfoFile()) std::abort();
  readResultFile();
  resetRun();
  return 0;
}
