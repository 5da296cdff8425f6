// Small text helpers shared by the readers. The log and file formats cut their
// fields leniently; these helpers name those rules so that a reader sees them.
#pragma once

#include <string.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace qendor {

inline bool startsWith(std::string_view text, std::string_view prefix) {
  return text.substr(0, prefix.size()) == prefix;
}

// memmem searches long texts far faster than a first-character scan.
inline bool contains(std::string_view text, std::string_view part) {
  if (part.empty()) return true;
  // An empty view may have no data pointer at all, which memmem must not get.
  if (text.size() < part.size()) return false;
  return memmem(text.data(), text.size(), part.data(), part.size()) != nullptr;
}

// Takes the field before the first `separator` in `rest` and erases field and
// separator from the front of `rest`. When the separator is missing the field
// is the whole of `rest` and nothing is erased, so the next cut sees the same
// text again (the not-found position plus the separator's length wraps round).
std::string_view cutField(std::string_view& rest, std::string_view separator);

// Reads a decimal number the way strtol with base 10 does (leading white
// space, optional sign, digits up to the first non-digit, 0 without digits,
// clamping to the 64-bit range on overflow) and wraps the result to 32 bits.
int32_t readInt32(std::string_view text);

// "%d" of a number.
std::string decimalText(int64_t number);

// `text` with its blanks (spaces; tabs stay) left out, as the verification
// file reader leaves them out of every line.
std::string withoutBlanks(std::string_view text);

}  // namespace qendor
