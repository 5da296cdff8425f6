#include "base/status.h"

#include <gtest/gtest.h>

#include <string>

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
    EXPECT_EQ(statusCode(c.status), c.code) << c.text;
  }
}

TEST(Status, ValuesOutsideTheEnumerationReadAsUndefined) {
  const Status unknown = static_cast<Status>(99);
  EXPECT_EQ(statusText(unknown), "UNDEFINED");
  EXPECT_EQ(statusCode(unknown), 12);
}

}  // namespace
}  // namespace qendor
