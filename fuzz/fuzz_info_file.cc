// The info file parser on any bytes.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "base/line_reader.h"
#include "base/run_settings.h"
#include "input/info_file.h"

using namespace qendor;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  RunSettings settings;
  LineReader lines{std::string_view(reinterpret_cast<const char*>(data), size)};
  parseInfoFile(lines, settings);
  return 0;
}
