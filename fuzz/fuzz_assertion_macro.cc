// The assertion macro parser on any statement.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "input/assertion_macro.h"

using namespace qendor;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view statement(reinterpret_cast<const char*>(data), size);
  std::string_view first, second, message;
  parseAssertionMacro(statement, first, second, message);
  macroFirstArgument(statement, "ZKR_ASSERT_TRUE");
  macroFirstArgument(statement, "ZKR_ASSERT_SD");
  macroFirstArgument(statement, "");
  return 0;
}
