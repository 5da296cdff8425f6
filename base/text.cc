#include "base/text.h"

#include <limits>

namespace qendor {

std::string_view cutField(std::string_view& rest, std::string_view separator) {
  // The separators of the formats are single characters, found by memchr.
  const size_t at = separator.size() == 1 ? rest.find(separator[0]) : rest.find(separator);
  if (at == std::string_view::npos) return rest;
  std::string_view field = rest.substr(0, at);
  rest.remove_prefix(at + separator.size());
  return field;
}

int32_t readInt32(std::string_view text) {
  size_t i = 0;
  // The white space of isspace in the C locale.
  while (i < text.size() && (text[i] == ' ' || (text[i] >= '\t' && text[i] <= '\r'))) ++i;
  bool negative = false;
  if (i < text.size() && (text[i] == '+' || text[i] == '-')) {
    negative = text[i] == '-';
    ++i;
  }
  // Up to 18 digits cannot overflow: the usual case, without checks.
  size_t end = i;
  while (end < text.size() && text[end] >= '0' && text[end] <= '9') ++end;
  if (end - i <= 18) {
    int64_t small = 0;
    for (; i < end; ++i) small = small * 10 + (text[i] - '0');
    return static_cast<int32_t>(
        static_cast<uint32_t>(static_cast<uint64_t>(negative ? -small : small)));
  }
  // Accumulate as a negative number so that the 64-bit minimum fits.
  constexpr int64_t kMin = std::numeric_limits<int64_t>::min();
  constexpr int64_t kMax = std::numeric_limits<int64_t>::max();
  int64_t value = 0;
  bool overflow = false;
  for (; i < text.size() && text[i] >= '0' && text[i] <= '9'; ++i) {
    int digit = text[i] - '0';
    if (overflow) continue;
    if (value < (kMin + digit) / 10) {
      overflow = true;
      continue;
    }
    value = value * 10 - digit;
  }
  int64_t result;
  if (overflow) {
    result = negative ? kMin : kMax;
  } else if (negative) {
    result = value;
  } else {
    result = value == kMin ? kMax : -value;
  }
  // Two's-complement wrap-round to 32 bits, as a cast of long to int does.
  return static_cast<int32_t>(static_cast<uint32_t>(static_cast<uint64_t>(result)));
}

std::string decimalText(int64_t number) {
  return std::to_string(number);
}

std::string withoutBlanks(std::string_view text) {
  std::string result;
  result.reserve(text.size());
  for (char c : text) {
    if (c != ' ') result += c;
  }
  return result;
}

}  // namespace qendor
