#include "input/record_path.h"

#include "base/run_settings.h"
#include "base/text.h"

namespace qendor {

std::string normaliseRecordPath(std::string_view path) {
  // Removing "../" again and again until none is left gives the same text as
  // dropping each "../" as soon as it is complete: the pattern cannot overlap
  // itself, so the order of removal does not matter. This keeps it linear.
  std::string result;
  result.reserve(path.size());
  for (char c : path) {
    result.push_back(c == '\\' ? '/' : c);
    size_t n = result.size();
    if (n >= 3 && result[n - 1] == '/' && result[n - 2] == '.' && result[n - 3] == '.') {
      result.resize(n - 3);
    }
  }
  if (result.find(':') == 1) result.erase(0, 1);
  if (startsWith(result, "/")) result.erase(0, 1);
  return result;
}

std::string matchSourceFile(std::string_view normalisedPath,
                            const RunTable<std::string>& sourceFiles) {
  std::string withSlash = "/";
  withSlash.append(normalisedPath);
  for (const auto& [number, stored] : sourceFiles) {
    if (contains(stored, withSlash) || stored.find(normalisedPath) == 1) {
      return decimalText(number);
    }
  }
  return std::string();
}

}  // namespace qendor
