// The history file reader on any bytes. What it reads must be written back
// as a file that reads the same.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "report/history.h"

using namespace qendor;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const HistoryOwner owner{"rk_testcontext", "Pkg.Ctx"};
  History history;
  if (parseHistory(std::string_view(reinterpret_cast<const char*>(data), size), owner, history) !=
      HistoryParse::kRead) {
    return 0;
  }
  const std::string text = historyText(history, owner);
  History again;
  if (parseHistory(text, owner, again) != HistoryParse::kRead) std::abort();
  if (historyText(again, owner) != text) std::abort();
  return 0;
}
