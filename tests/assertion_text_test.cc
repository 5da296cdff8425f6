#include "verify/assertion_text.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace qendor {
namespace {

constexpr const char* kKeep = "keep";

TEST(ParseProgress, CoverageRoundsHalfUpInWrappingThirtyTwoBitArithmetic) {
  struct Case {
    const char* text;
    const char* value;
    const char* max;
    const char* coverage;
  };
  const Case cases[] = {
      {"m - progress 1/3", "1", "3", "33"},
      {"m - progress 2/3 - no:1,2", "2", "3", "67"},
      {"m - progress 1/8 - [Arbiter ASSERT: internal]", "1", "8", "13"},
      {"m - progress 4/4", "4", "4", "100"},
      {"m - progress 1/2", "1", "2", "50"},
      {"m - progress 5/1000", "5", "1000", "1"},  // remainder exactly half
      {"m - progress 3/2000", "3", "2000", "0"},
      {"m - progress x/4", "x", "4", "0"},  // no number reads as 0
      {"m - progress -1/3", "-1", "3", "-33"},
      {"m - progress 1/-3", "1", "-3", "-32"},
      {"m - progress 2147483647/1", "2147483647", "1", "-100"},  // value * 100 wraps
      {"m - progress 30000000/40000000", "30000000", "40000000", "-32"},
      {"m - progress 1/3000000000", "1", "3000000000", "1"},  // the maximum wraps too
      // value * 100 wraps to the smallest number, divided by -1.
      {"m - progress 536870912/-1", "536870912", "-1", "-2147483647"},
      // The maximum runs to the end of the text when no " -" follows it.
      {"m - progress 3/4 rest-of text", "3", "4 rest-of text", "75"},
      {"m - progress 1/2/3 - x", "1", "2/3", "50"},
  };
  for (const Case& c : cases) {
    std::string_view value = kKeep, max = kKeep;
    std::string coverage = kKeep;
    EXPECT_TRUE(parseProgress(c.text, value, max, coverage)) << c.text;
    EXPECT_EQ(value, c.value) << c.text;
    EXPECT_EQ(max, c.max) << c.text;
    EXPECT_EQ(coverage, c.coverage) << c.text;
  }
}

TEST(ParseProgress, ZeroMaximumWritesValueAndMaxButNotCoverage) {
  std::string_view value = kKeep, max = kKeep;
  std::string coverage = kKeep;
  EXPECT_FALSE(parseProgress("msg - progress 5/0", value, max, coverage));
  EXPECT_EQ(value, "5");
  EXPECT_EQ(max, "0");
  EXPECT_EQ(coverage, kKeep);
}

TEST(ParseProgress, MissingMarkerOrSlashWritesNothing) {
  for (const char* text : {"plain text", "msg - progress 5", "msg -progress 1/2", ""}) {
    std::string_view value = kKeep, max = kKeep;
    std::string coverage = kKeep;
    EXPECT_FALSE(parseProgress(text, value, max, coverage)) << text;
    EXPECT_EQ(value, kKeep);
    EXPECT_EQ(max, kKeep);
    EXPECT_EQ(coverage, kKeep);
  }
}

TEST(ParseArbiterKind, InternalOnlyWhenTheWordFollowsInLowerCase) {
  struct Case {
    const char* text;
    bool found;
    const char* kind;
  };
  const Case cases[] = {
      {"m - [Arbiter ASSERT: internal]", true, "internal"},
      {"m - [Arbiter ASSERT: internally]", true, "internal"},
      {"m - [Arbiter ASSERT: INTERNAL]", true, "external"},
      {"m - [Arbiter ASSERT: external]", true, "external"},
      {"m - [Arbiter ASSERT: ", true, "external"},
      {"m - [Arbiter ASSERT:internal", false, kKeep},
      {"plain text", false, kKeep},
  };
  for (const Case& c : cases) {
    std::string_view kind = kKeep;
    EXPECT_EQ(parseArbiterKind(c.text, kind), c.found) << c.text;
    EXPECT_EQ(kind, c.kind) << c.text;
  }
}

TEST(ParseGuid, TakesMarkerAndThirtySixCharactersOrEmptiesTheGuid) {
  std::string_view guid = kKeep;
  EXPECT_TRUE(parseGuid("m - GUID 0123456789abcdef0123456789abcdef0123 tail", guid));
  EXPECT_EQ(guid, "GUID 0123456789abcdef0123456789abcdef0123");
  EXPECT_TRUE(parseGuid("m - GUID short", guid));
  EXPECT_EQ(guid, "GUID short");
  EXPECT_FALSE(parseGuid("plain text", guid));
  EXPECT_EQ(guid, "");
}

TEST(ParseNumberPair, SecondNumberRunsToTheEndOfTheText) {
  struct Case {
    const char* text;
    bool found;
    const char* inr;
    const char* onr;
  };
  const Case cases[] = {
      {"m - no:3,4 - GUID abc", true, "3", "4 - GUID abc"},
      {"m - no:12,", true, "12", ""},
      // Without a comma the second number is the whole text.
      {"m - no:3", true, "3", "m - no:3"},
      // A comma before the marker does not count.
      {"a,b - no:3", true, "3", "a,b - no:3"},
      {"plain, text", false, kKeep, kKeep},
  };
  for (const Case& c : cases) {
    std::string_view inr = kKeep, onr = kKeep;
    EXPECT_EQ(parseNumberPair(c.text, inr, onr), c.found) << c.text;
    EXPECT_EQ(inr, c.inr) << c.text;
    EXPECT_EQ(onr, c.onr) << c.text;
  }
}

TEST(ParseUserMessage, CutsOneCharacterBeforeTheEarliestMarker) {
  struct Case {
    const char* text;
    const char* message;
  };
  const Case cases[] = {
      {"plain text", "plain text"},
      {"", ""},
      {"hello - progress 1/2 - no:1,2 - [Arbiter ASSERT: internal] - GUID x", "hello"},
      {"ab - GUID x - progress 1/2", "ab"},
      {"ab - no:1,2", "ab"},
      {"ab - [Arbiter ASSERT: external]", "ab"},
      {"x- no:1", ""},
      // A marker at the very start cuts nothing; a later one still does.
      {"- progress 1/2", "- progress 1/2"},
      {"- progress 1/2 - no:1,2", "- progress 1/2"},
      {"- GUID x", "- GUID x"},
  };
  for (const Case& c : cases) EXPECT_EQ(parseUserMessage(c.text), c.message) << c.text;
}

// Every piece is a view into the text it was cut from.
TEST(AssertionTextPieces, PointIntoTheText) {
  const std::string text =
      "hello - progress 3/4 - no:5,6 - [Arbiter ASSERT: internal] - GUID "
      "0123456789abcdef0123456789abcdef0123";
  const char* const begin = text.data();
  std::string_view value, max, inr, onr, kind, guid;
  std::string coverage;
  ASSERT_TRUE(parseProgress(text, value, max, coverage));
  EXPECT_EQ(value.data(), begin + 17);
  EXPECT_EQ(max.data(), begin + 19);
  ASSERT_TRUE(parseNumberPair(text, inr, onr));
  EXPECT_EQ(inr.data(), begin + 26);
  EXPECT_EQ(onr.data(), begin + 28);
  ASSERT_TRUE(parseGuid(text, guid));
  EXPECT_EQ(guid.data(), begin + 61);
  EXPECT_EQ(parseUserMessage(text).data(), begin);
  EXPECT_EQ(parseUserMessage(text), "hello");
  // The arbiter kind is one of two fixed words.
  ASSERT_TRUE(parseArbiterKind(text, kind));
  EXPECT_EQ(kind, "internal");
}

}  // namespace
}  // namespace qendor
