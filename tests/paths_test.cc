#include "base/paths.h"

#include <gtest/gtest.h>

namespace qendor {
namespace {

TEST(NormalisePath, TurnsBackslashesIntoSlashesAndDropsQuotes) {
  EXPECT_EQ(normalisePath("out\\\"x\"\\y.xml", ""), "out/x/y.xml");
  EXPECT_EQ(normalisePath("", ""), "");
  EXPECT_EQ(normalisePath("a\\\\b", ""), "a//b");
  EXPECT_EQ(normalisePath("./a/../b\\", ""), "./a/../b/");
  EXPECT_EQ(normalisePath("\"\"", ""), "");
}

TEST(NormalisePath, OtherTargetSeparator) {
  EXPECT_EQ(normalisePath("a/b\\c", "\\"), "a\\b\\c");
}

TEST(NormalisePathCopy, NullReadsAsEmpty) {
  EXPECT_EQ(normalisePath(nullptr), "");
  EXPECT_EQ(normalisePath("c:\\x\\y"), "c:/x/y");
}

TEST(BaseReportName, KeepsTextAfterLastColonThenLastDot) {
  EXPECT_EQ(baseReportName("Pkg.Ctx"), "Ctx");
  EXPECT_EQ(baseReportName("Lib::Pkg.Ctx.CaseOne"), "CaseOne");
  EXPECT_EQ(baseReportName("Plain"), "Plain");
  EXPECT_EQ(baseReportName("a.b:c"), "c");
  EXPECT_EQ(baseReportName("Trailing."), "");
  EXPECT_EQ(baseReportName(""), "");
}

TEST(ContextOf, CutsBeforeLastDot) {
  EXPECT_EQ(contextOf("Pkg.Ctx.CaseOne"), "Pkg.Ctx");
  EXPECT_EQ(contextOf("Pkg.Ctx.Sub.CaseOne"), "Pkg.Ctx.Sub");
  EXPECT_EQ(contextOf("NoDot"), "NoDot");
}

}  // namespace
}  // namespace qendor
