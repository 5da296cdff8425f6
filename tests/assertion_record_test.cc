#include "base/assertion_record.h"

#include <gtest/gtest.h>

#include "tests/test_case_records.h"

namespace qendor {
namespace {

using test::record;

TEST(TestCaseLog, AnySequenceDiagramStatementMakesItOne) {
  EXPECT_FALSE(makeTestCaseLog({}).sequenceDiagram);
  EXPECT_FALSE(
      makeTestCaseLog({record(test::kCodeStart), record("ZKR_ASSERT_TRUE(a)")}).sequenceDiagram);
  EXPECT_TRUE(
      makeTestCaseLog({record("ZKR_ASSERT_TRUE(a)"), record(test::kSdFinish)}).sequenceDiagram);
  // The name alone counts, parsed or not.
  EXPECT_TRUE(makeTestCaseLog({record("no call of ASSERT_SD")}).sequenceDiagram);
  EXPECT_EQ(makeTestCaseLog({record("a"), record("b")}).records.size(), 2u);
}

}  // namespace
}  // namespace qendor
