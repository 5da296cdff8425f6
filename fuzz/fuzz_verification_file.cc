// The verification file parser on any bytes.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "base/line_reader.h"
#include "verify/verification_file.h"

using namespace qendor;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  LineReader lines{std::string_view(reinterpret_cast<const char*>(data), size)};
  const Verification verification = parseVerificationFile(lines);
  switch (verification.kind) {
    case VerificationKind::kParallelSd:
    case VerificationKind::kUnsupportedChart:
    case VerificationKind::kNoKind:
    case VerificationKind::kFlowchartTest:
    case VerificationKind::kStatechartTest:
    case VerificationKind::kSdTest:
    case VerificationKind::kCodeTest:
      break;
    case VerificationKind::kNoVerificationFile:
      std::abort();  // only for a file that cannot be opened
  }
  // An SD kind always comes with its lines.
  if (verification.kind == VerificationKind::kSdTest && !verification.sequenceLines) std::abort();
  return 0;
}
