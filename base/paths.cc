#include "base/paths.h"

namespace qendor {

namespace {
// Every separator the program knows, in the order they are replaced.
constexpr const char* kPathSeparators[] = {"\\", "/"};
}  // namespace

std::string normalisePath(std::string_view path, std::string_view separator) {
  std::string result(path);
  if (result.empty()) return result;
  const std::string target = separator.empty() ? std::string("/") : std::string(separator);
  for (const char* entry : kPathSeparators) {
    if (target == entry) continue;
    std::string replaced;
    replaced.reserve(result.size());
    for (char c : result) {
      if (c == entry[0]) {
        replaced += target;
      } else {
        replaced += c;
      }
    }
    result.swap(replaced);
  }
  std::string unquoted;
  unquoted.reserve(result.size());
  for (char c : result) {
    if (c != '"') unquoted += c;
  }
  return unquoted;
}

std::string normalisePath(const char* path, std::string_view separator) {
  return normalisePath(path ? std::string_view(path) : std::string_view(), separator);
}

std::string baseReportName(std::string_view name) {
  return std::string(afterLast(afterLast(name, ':'), '.'));
}

std::string_view contextOf(std::string_view fullName) {
  size_t dot = fullName.rfind('.');
  return dot == std::string_view::npos ? fullName : fullName.substr(0, dot);
}

std::string_view afterLast(std::string_view text, char separator) {
  size_t at = text.rfind(separator);
  return at == std::string_view::npos ? text : text.substr(at + 1);
}

}  // namespace qendor
