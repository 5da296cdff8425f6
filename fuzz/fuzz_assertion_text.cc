// The parsers of the marked pieces of an assertion text.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "verify/assertion_text.h"

using namespace qendor;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  std::string_view value, max, kind, guid, inr, onr;
  std::string coverage;
  parseProgress(text, value, max, coverage);
  parseArbiterKind(text, kind);
  parseGuid(text, guid);
  parseNumberPair(text, inr, onr);
  parseUserMessage(text);
  return 0;
}
