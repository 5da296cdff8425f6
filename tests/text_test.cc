#include "base/text.h"

#include <gtest/gtest.h>

namespace qendor {
namespace {

TEST(CutField, TakesTextBeforeSeparatorAndErasesBoth) {
  std::string_view rest = "a,b,c";
  EXPECT_EQ(cutField(rest, ","), "a");
  EXPECT_EQ(rest, "b,c");
  EXPECT_EQ(cutField(rest, ","), "b");
  EXPECT_EQ(rest, "c");
}

TEST(CutField, MissingSeparatorYieldsWholeRestAndErasesNothing) {
  std::string_view rest = "abc";
  EXPECT_EQ(cutField(rest, ","), "abc");
  EXPECT_EQ(rest, "abc");
  EXPECT_EQ(cutField(rest, "--"), "abc");
  EXPECT_EQ(rest, "abc");
}

TEST(ReadInt32, ReadsLikeStrtolAndWrapsToThirtyTwoBits) {
  struct Case {
    const char* text;
    int32_t expected;
  };
  const Case cases[] = {
      {"0", 0},
      {"42", 42},
      {"  7", 7},
      {"\t\n\v\f\r 8x", 8},
      {"-12", -12},
      {"+5", 5},
      {"abc", 0},
      {"", 0},
      {"- 3", 0},
      {"12abc", 12},
      {"2147483647", 2147483647},
      {"2147483648", -2147483647 - 1},
      {"4294967297", 1},
      {"-2147483649", 2147483647},
      {"99999999999999999999", -1},  // clamps to LONG_MAX, whose low 32 bits are all set
      {"-99999999999999999999", 0},  // clamps to LONG_MIN, whose low 32 bits are clear
      {"9223372036854775807", -1},
      {"-9223372036854775808", 0},
  };
  for (const Case& c : cases) EXPECT_EQ(readInt32(c.text), c.expected) << c.text;
}

TEST(StartsWithAndContains, AreCaseSensitive) {
  EXPECT_TRUE(startsWith("FILEX", "FILE"));
  EXPECT_FALSE(startsWith("FIL", "FILE"));
  EXPECT_FALSE(startsWith("file", "FILE"));
  EXPECT_TRUE(contains("a - progress 1/2", "- progress"));
  EXPECT_FALSE(contains("PROGRESS", "progress"));
}

}  // namespace
}  // namespace qendor

namespace qendor {
namespace {

TEST(Contains, FindsAnywhereAndTakesViewsWithoutData) {
  EXPECT_TRUE(contains("ZKR_ASSERT_SD(x)", "ASSERT_SD"));
  EXPECT_FALSE(contains("ZKR_ASSERT", "ASSERT_SD"));
  EXPECT_TRUE(contains("abc", ""));
  EXPECT_TRUE(contains(std::string_view(), ""));
  // A view made of nothing has no data pointer.
  EXPECT_FALSE(contains(std::string_view(), "x"));
  EXPECT_FALSE(contains(std::string_view(nullptr, 0), " test case"));
}

}  // namespace
}  // namespace qendor
