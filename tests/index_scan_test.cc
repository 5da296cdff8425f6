#include "report/index_scan.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>
#include <vector>

#include "tests/index_support.h"
#include "tests/test_support.h"

namespace qendor {
namespace {

// The fields of a read context in one line.
std::string dump(const IndexedContext& c) {
  return c.name + "|" + c.fullName + "|" + c.status + "|" + c.time + "|" + c.projectName + "|" +
         c.componentName + "|" + c.configurationName + "|" + std::to_string(c.passed) + "/" +
         std::to_string(c.failed) + "/" + std::to_string(c.error) + "/" +
         std::to_string(c.undefined) + "|" + std::to_string(c.assertions);
}

TEST(IndexScan, ReadsTheHeaderAndTheCountsOfAContext) {
  IndexedContext c;
  ASSERT_EQ(readIndexedContext(test::contextDocument("Cart", "FAILED", "PFEUPF", 3), c),
            IndexRead::kContext);
  EXPECT_EQ(dump(c), "Cart|Shop.Cart|FAILED|Sat Nov 22 10:15:42 2025|Shop|Cart|Debug|2/2/1/1|18");
}

TEST(IndexScan, TellsOtherDocumentsFromBrokenOnes) {
  struct Case {
    const char* what;
    std::string bytes;
    IndexRead expected;
  };
  const std::string context = test::contextDocument("Cart", "PASSED", "PP");
  const Case cases[] = {
      {"test case report", test::testCaseDocument("A"), IndexRead::kOther},
      {"history file", "<History kind=\"rk_testcontext\" fullname=\"Shop.Cart\"/>",
       IndexRead::kOther},
      {"index", "<?xml version=\"1.0\"?>\n<TestIndex/>\n", IndexRead::kOther},
      {"context without kind", "<TestResult><TestContextResult/></TestResult>", IndexRead::kOther},
      {"empty file", "", IndexRead::kNotWellFormed},
      {"cut short", context.substr(0, context.size() / 2), IndexRead::kNotWellFormed},
      {"not XML", "Checkout passed", IndexRead::kNotWellFormed},
      {"garbage after the end", context + "<TestResult/>", IndexRead::kNotWellFormed},
      {"a context without test cases",
       "<TestResult kind=\"rk_testcontext\"><TestContextResult status=\"UNDEFINED\"/></TestResult>",
       IndexRead::kContext},
  };
  for (const Case& c : cases) {
    IndexedContext read;
    EXPECT_EQ(readIndexedContext(c.bytes, read), c.expected) << c.what;
  }
}

TEST(IndexScan, CountsOnlyTheContextsOwnTestCases) {
  // The history and the diagnosis of a run hold names and statuses too.
  IndexedContext c;
  ASSERT_EQ(readIndexedContext(
                "<TestResult kind=\"rk_testcontext\"><ResultHeader name=\"X\"/>"
                "<TestContextResult status=\"PASSED\"><TestCaseResult status=\"PASSED\">"
                "<ResultForSD><AssertionInfo/><AssertionInfo/></ResultForSD></TestCaseResult>"
                "</TestContextResult><History><TestCaseTrend status=\"FAILED\"/>"
                "<Run status=\"FAILED\"><TestCaseRun status=\"FAILED\"/></Run></History>"
                "</TestResult>",
                c),
            IndexRead::kContext);
  EXPECT_EQ(dump(c), "X||PASSED|||||1/0/0/0|2");
}

TEST(IndexScan, ProblemsFirstThenByName) {
  IndexScan scan;
  struct Entry {
    const char* file;
    const char* name;
    const char* status;
  };
  const Entry entries[] = {
      {"a.xml", "Zeta", "PASSED"},          {"b.xml", "Beta", "UNDEFINED"},
      {"c.xml", "Alpha", "PASSED"},         {"d.xml", "Gamma", "ERROR"},
      {"e.xml", "Delta", "FAILED"},         {"f.xml", "Alpha", "FAILED"},
      {"g.xml", "Alpha", "NOT_TERMINATED"},
  };
  for (const Entry& e : entries) {
    IndexedContext c;
    c.file = e.file;
    c.name = e.name;
    c.status = e.status;
    scan.contexts.push_back(c);
  }
  scan.skipped = {{"z.xml", "is not well-formed"}, {"m.xml", "could not be read"}};
  sortIndex(scan);
  std::string order;
  for (const IndexedContext& c : scan.contexts) order += c.file + " ";
  EXPECT_EQ(order, "f.xml e.xml d.xml g.xml b.xml c.xml a.xml ");
  EXPECT_EQ(scan.skipped[0].file, "m.xml");
}

TEST(IndexScan, ScansOnlyDocumentsAndNotesTheBrokenOnes) {
  test::TempDir dir;
  dir.write("Cart.xml", test::contextDocument("Cart", "PASSED", "PP"));
  dir.write("Pay.xml", test::contextDocument("Pay", "FAILED", "PF"));
  dir.write("A.xml", test::testCaseDocument("A"));
  dir.write("index.xml", "not even XML");  // the index itself is never read
  dir.write("broken.xml", "<TestResult kind=\"rk_testcontext\">");
  dir.write("Cart.html", "<html/>");
  dir.write("notes.txt", "<TestResult kind=\"rk_testcontext\"/>");
  mkdir(dir.file("folder.xml").c_str(), 0755);
  const IndexScan scan = scanIndexDirectory(dir.path());
  ASSERT_EQ(scan.contexts.size(), 2u);
  EXPECT_EQ(scan.contexts[0].file, "Pay.xml");
  EXPECT_EQ(scan.contexts[1].file, "Cart.xml");
  ASSERT_EQ(scan.skipped.size(), 2u);
  EXPECT_EQ(scan.skipped[0].file + " " + scan.skipped[0].reason, "broken.xml is not well-formed");
  EXPECT_EQ(scan.skipped[1].file + " " + scan.skipped[1].reason, "folder.xml could not be read");
}

TEST(IndexScan, AMissingFolderScansEmpty) {
  test::TempDir dir;
  const IndexScan scan = scanIndexDirectory(dir.file("missing"));
  EXPECT_TRUE(scan.contexts.empty());
  EXPECT_TRUE(scan.skipped.empty());
}

}  // namespace
}  // namespace qendor
