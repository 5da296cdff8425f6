// The status of an assertion record, a test case or a test context, and the
// words and exit statuses it stands for.
#pragma once

#include <string_view>

namespace qendor {

enum class Status { kPassed, kFailed, kError, kNotTerminated, kUndefined };

// "PASSED", "FAILED", "ERROR", "NOT_TERMINATED" or "UNDEFINED".
std::string_view statusText(Status status);

// The exit status a run reports for a document of this status: 0, 10, 11, 13,
// and 12 for anything undefined.
int statusCode(Status status);

}  // namespace qendor
