// The info file reader on any bytes.
#include <cstddef>
#include <cstdint>

#include "base/run_settings.h"
#include "fuzz/fuzz_support.h"
#include "input/info_file.h"

using namespace qendor;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  resetRun();
  const std::string path =
      fuzz::writeFile("run.info", std::string_view(reinterpret_cast<const char*>(data), size));
  run().infoFile = path.c_str();
  if (!readInfoFile()) std::abort();  // the file exists, so reading succeeds
  resetRun();
  return 0;
}
