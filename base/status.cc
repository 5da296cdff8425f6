#include "base/status.h"

namespace qendor {

std::string_view statusText(Status status) {
  switch (status) {
    case Status::kPassed:
      return "PASSED";
    case Status::kFailed:
      return "FAILED";
    case Status::kError:
      return "ERROR";
    case Status::kNotTerminated:
      return "NOT_TERMINATED";
    case Status::kUndefined:
      break;
  }
  return "UNDEFINED";
}

ExitStatus statusCode(Status status) {
  switch (status) {
    case Status::kPassed:
      return ExitStatus::kPassed;
    case Status::kFailed:
      return ExitStatus::kFailed;
    case Status::kError:
      return ExitStatus::kError;
    case Status::kNotTerminated:
      return ExitStatus::kNotTerminated;
    case Status::kUndefined:
      break;
  }
  return ExitStatus::kUndefined;
}

}  // namespace qendor
