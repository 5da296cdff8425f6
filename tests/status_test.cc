#include "base/status.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace qendor {
namespace {

TEST(Status, TextsAndCodes) {
  struct Case {
    Status status;
    const char* text;
    int code;
  };
  const Case cases[] = {
      {Status::kPassed, "PASSED", 0},        {Status::kFailed, "FAILED", 10},
      {Status::kError, "ERROR", 11},         {Status::kNotTerminated, "NOT_TERMINATED", 13},
      {Status::kUndefined, "UNDEFINED", 12},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(statusText(c.status), c.text) << c.text;
    EXPECT_EQ(exitCode(statusCode(c.status)), c.code) << c.text;
  }
}

TEST(Status, ValuesOutsideTheEnumerationReadAsUndefined) {
  const Status unknown = static_cast<Status>(99);
  EXPECT_EQ(statusText(unknown), "UNDEFINED");
  EXPECT_EQ(exitCode(statusCode(unknown)), 12);
}

// The exit statuses of the command line's table.
TEST(Status, ExitCodes) {
  const std::pair<ExitStatus, int> cases[] = {
      {ExitStatus::kPassed, 0},
      {ExitStatus::kFailed, 10},
      {ExitStatus::kError, 11},
      {ExitStatus::kUndefined, 12},
      {ExitStatus::kNotTerminated, 13},
      {ExitStatus::kUsage, 20},
      {ExitStatus::kInfoFileUnread, 21},
      {ExitStatus::kTestCaseNotFound, 22},
      {ExitStatus::kResultFileUnread, 24},
      {ExitStatus::kNotWritten, 25},
      {ExitStatus::kUnexpectedError, 30},
  };
  for (const auto& [status, code] : cases) EXPECT_EQ(exitCode(status), code);
}

}  // namespace
}  // namespace qendor
