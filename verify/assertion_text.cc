#include "verify/assertion_text.h"

#include <cstdint>

#include "base/text.h"

namespace qendor {

namespace {

constexpr std::string_view::size_type kNotFound = std::string_view::npos;

// Signed 32-bit arithmetic that wraps round like the hardware instead of
// overflowing.
int32_t wrap(int64_t value) {
  return static_cast<int32_t>(static_cast<uint32_t>(static_cast<uint64_t>(value)));
}
int32_t times(int32_t a, int32_t b) {
  return wrap(static_cast<int64_t>(static_cast<uint32_t>(a)) * static_cast<uint32_t>(b));
}

// The percentage value * 100 / max rounded half up on the remainder. The one
// division that would trap, the smallest number by -1, gives that number
// with remainder 0.
int32_t roundedPercent(int32_t value, int32_t max) {
  int32_t product = times(value, 100);
  int32_t quotient;
  int32_t remainder;
  if (product == INT32_MIN && max == -1) {
    quotient = INT32_MIN;
    remainder = 0;
  } else {
    quotient = product / max;
    remainder = product % max;
  }
  if (times(remainder, 100) >= times(max, 50)) quotient = wrap(static_cast<int64_t>(quotient) + 1);
  return quotient;
}

}  // namespace

bool parseProgress(std::string_view text, std::string_view& value, std::string_view& max,
                   std::string& coverage) {
  constexpr std::string_view kMarker = " - progress ";
  size_t at = text.find(kMarker);
  if (at == kNotFound) return false;
  std::string_view rest = text.substr(at + kMarker.size());
  size_t slash = rest.find('/');
  if (slash == kNotFound) return false;
  std::string_view maxText = rest.substr(slash + 1);
  maxText = maxText.substr(0, maxText.find(" -"));  // to the end when none follows
  value = rest.substr(0, slash);
  max = maxText;
  int32_t number = readInt32(value);
  int32_t maximum = readInt32(max);
  if (maximum == 0) return false;
  coverage = decimalText(roundedPercent(number, maximum));
  return true;
}

bool parseArbiterKind(std::string_view text, std::string_view& kind) {
  constexpr std::string_view kMarker = " - [Arbiter ASSERT: ";
  size_t at = text.find(kMarker);
  if (at == kNotFound) return false;
  kind = startsWith(text.substr(at + kMarker.size()), "internal") ? "internal" : "external";
  return true;
}

bool parseGuid(std::string_view text, std::string_view& guid) {
  guid = {};
  size_t at = text.find("GUID ");
  if (at == kNotFound) return false;
  guid = text.substr(at, 41);  // the marker and the 36 characters of a GUID
  return true;
}

bool parseNumberPair(std::string_view text, std::string_view& inr, std::string_view& onr) {
  constexpr std::string_view kMarker = "- no:";
  size_t at = text.find(kMarker);
  if (at == kNotFound) return false;
  size_t comma = text.find(',', at);
  size_t start = at + kMarker.size();
  inr = comma == kNotFound ? text.substr(start) : text.substr(start, comma - start);
  // Without a comma the not-found position plus one wraps round to the start,
  // so the second number is the whole text.
  onr = text.substr(comma + 1);
  return true;
}

std::string_view parseUserMessage(std::string_view text) {
  std::string_view message = text;
  for (std::string_view marker : {"- progress", "- no:", "- [Arbiter ASSERT:", "- GUID"}) {
    size_t at = text.find(marker);
    // One character before the marker (the blank in front of it); a marker at
    // the very start gives the wrapped-round length "all" and cuts nothing.
    if (at != kNotFound) message = message.substr(0, at - 1);
  }
  return message;
}

}  // namespace qendor
