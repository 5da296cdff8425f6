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

int statusCode(Status status) {
  switch (status) {
    case Status::kPassed:
      return 0;
    case Status::kFailed:
      return 10;
    case Status::kError:
      return 11;
    case Status::kNotTerminated:
      return 13;
    case Status::kUndefined:
      break;
  }
  return 12;
}

}  // namespace qendor
