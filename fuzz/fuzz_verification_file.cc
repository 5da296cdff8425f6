// The verification file reader on any bytes.
#include <cstddef>
#include <cstdint>

#include "base/run_settings.h"
#include "fuzz/fuzz_support.h"
#include "verify/verification_file.h"

using namespace qendor;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  resetRun();
  fuzz::writeFile("Case.ver", std::string_view(reinterpret_cast<const char*>(data), size));
  run().outDirectory = fuzz::scratch().c_str();
  run().testCaseNames[1] = "Pkg.Ctx.Case";
  const int kind = readVerificationFile(1);
  switch (kind) {
    case -10:
    case -2:
    case 0:
    case 1:
    case 2:
    case 3:
    case 4:
      break;
    default:
      std::abort();  // -1 is for a file that cannot be opened; it exists
  }
  resetRun();
  return 0;
}
