#include "verify/assertion_entries.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/test_case_records.h"

namespace qendor {
namespace {

using test::record;

// A line per entry: the index of its record, then "sdiName|msgId|message";
// last the flags known at the end of the walk.
std::string walk(const AssertionList& records) {
  AssertionEntries entries(records, false);
  std::string out;
  while (entries.next()) {
    const AssertionEntry& entry = entries.entry();
    out += std::to_string(entry.record - records.data()) + " " + std::string(entry.sdiName) + "|" +
           std::string(entry.msgId) + "|" + std::string(entry.message) + "\n";
  }
  out += entries.notTerminated() ? "not terminated" : "terminated";
  if (entries.userExit()) out += ", user exit";
  return out;
}

struct Case {
  const char* name;
  AssertionList records;
  const char* entries;
};

const Case kCases[] = {
    {"no records", {}, "terminated"},
    {"the finish assertion is no entry",
     {record(test::kCodeStart), record("ZKR_ASSERT_TRUE(a)"), record(test::kCodeFinish)},
     "0 ||Starting test case\n1 ||a\nterminated"},
    {"a finish alone", {record(test::kSdFinish)}, "terminated"},
    // The phrase of the finish needs its colon to end the walk.
    {"a finish without its colon is an entry",
     {record(R"(ZKR_ASSERT_TRUE("Finished test case"))")},
     "0 ||Finished test case\"\nnot terminated"},
    {"a finish that is not last is an entry",
     {record(test::kCodeFinish), record("ZKR_ASSERT_TRUE(a)")},
     "0 ||Finished test case: CaseOne\n1 ||a\nnot terminated"},
    {"a record the parser rejects is no entry",
     {record("ZKR_ASSERT_TRUE(a)"), record("no macro here", "FAILED"), record(test::kCodeFinish)},
     "0 ||a\nterminated"},
    {"a rejected last record still means not terminated",
     {record("ZKR_ASSERT_TRUE(a)"), record("no macro here")},
     "0 ||a\nnot terminated"},
    {"user exit",
     {record("ZKR_ASSERT_TRUE(a)"), record(test::kUserExit)},
     "0 ||a\n1 ||NOFAIL_INTENDED_USER_EXIT\nnot terminated, user exit"},
    {"a user exit that is not last counts for nothing",
     {record(test::kUserExit), record("ZKR_ASSERT_TRUE(a)")},
     "0 ||NOFAIL_INTENDED_USER_EXIT\n1 ||a\nnot terminated"},
    // Each output of the macro parser holds until a statement yields a new
    // one; a detail text replaces the message for its record and after it.
    {"outputs carry over",
     {record(R"(ZKR_ASSERT_SD("Main", "m1", "one"))", "PASSED", "free text"),
      record(R"(ZKR_ASSERT_SD("Other"))"), record(R"(ZKR_ASSERT_SD("Two", "m2"))"),
      record("ZKR_ASSERT_TRUE(b)"), record("ZKR_ASSERT_SD;"), record(test::kSdFinish)},
     "0 Main|m1|free text\n1 Main|m1|free text\n2 Two|m1|free text\n3 Two|m1|b\n4 ||\n"
     "terminated"},
    {"the detail text replaces the message",
     {record("ZKR_ASSERT_TRUE(a)", "PASSED", "free text"), record("ZKR_ASSERT_TRUE(b)"),
      record(test::kCodeFinish)},
     "0 ||free text\n1 ||b\nterminated"},
    {"the SD start keeps the closing quote of its message",
     {record(test::kSdStart), test::sdStep(1, 4), record(test::kSdFinish)},
     "0 Main|m0|Starting test case\"\n1 Main|m1|step1 - progress 1/4\nterminated"},
};

TEST(AssertionEntries, Walks) {
  for (const Case& c : kCases) EXPECT_EQ(walk(c.records), c.entries) << c.name;
}

TEST(AssertionEntries, NextStaysFalseAtTheEnd) {
  const AssertionList records{record("ZKR_ASSERT_TRUE(a)"), record(test::kCodeFinish)};
  AssertionEntries entries(records, false);
  EXPECT_TRUE(entries.next());
  EXPECT_FALSE(entries.next());
  EXPECT_FALSE(entries.next());
  EXPECT_FALSE(entries.notTerminated());
}

// The marked pieces are parsed for a sequence diagram test case's entries
// only, each from the entry's own message.
TEST(AssertionEntries, MarkedPiecesOfSequenceDiagramEntries) {
  const AssertionList records{record(R"(ZKR_ASSERT_SD("Main", "m1", "pay"))", "PASSED",
                                     "pay - no:1,2 - [Arbiter ASSERT: external]"),
                              record(R"(ZKR_ASSERT_SD("Main", "m2", plain))")};
  AssertionEntries sequence(records, true);
  ASSERT_TRUE(sequence.next());
  EXPECT_EQ(sequence.entry().userMessage, "pay");
  EXPECT_EQ(sequence.entry().inr, "1");
  EXPECT_EQ(sequence.entry().onr, "2 - [Arbiter ASSERT: external]");
  EXPECT_EQ(sequence.entry().arbiterKind, "external");
  ASSERT_TRUE(sequence.next());
  EXPECT_EQ(sequence.entry().userMessage, "plain");
  EXPECT_EQ(sequence.entry().inr, "");
  EXPECT_EQ(sequence.entry().onr, "");
  EXPECT_EQ(sequence.entry().arbiterKind, "");

  AssertionEntries code(records, false);
  ASSERT_TRUE(code.next());
  EXPECT_EQ(code.entry().userMessage, "");
  EXPECT_EQ(code.entry().arbiterKind, "");
}

}  // namespace
}  // namespace qendor
