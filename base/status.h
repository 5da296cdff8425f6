// The status of an assertion record, a test case or a test context, and the
// words and exit statuses it stands for.
#pragma once

#include <string_view>

namespace qendor {

enum class Status { kPassed, kFailed, kError, kNotTerminated, kUndefined };

// The exit statuses of a run, as the command line's table gives them.
enum class ExitStatus {
  kPassed = 0,
  kFailed = 10,
  kError = 11,
  kUndefined = 12,
  kNotTerminated = 13,
  kUsage = 20,
  kInfoFileUnread = 21,
  kTestCaseNotFound = 22,
  kResultFileUnread = 24,
  kNotWritten = 25,
  kUnexpectedError = 30,
};

// "PASSED", "FAILED", "ERROR", "NOT_TERMINATED" or "UNDEFINED".
std::string_view statusText(Status status);

// The exit status a run reports for a document of this status; kUndefined
// for anything undefined.
ExitStatus statusCode(Status status);

// The number the process exits with.
inline int exitCode(ExitStatus status) {
  return static_cast<int>(status);
}

}  // namespace qendor
