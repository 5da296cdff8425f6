#include "report/spooled_document.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "report/html_report.h"
#include "report/xml_node.h"
#include "tests/test_support.h"

namespace qendor {
namespace {

// A test case result like the ones a context holds, with values that libxml2
// escapes: markup, white space, characters past ASCII.
XmlNodePtr caseResult(int n) {
  XmlNodePtr result(newElement("TestCaseResult"));
  setAttribute(result.get(), "name", "T" + std::to_string(n));
  setAttribute(result.get(), "fullname", "P.\"Ctx\" <&> 'T'\t\n\r" + std::to_string(n));
  xmlNode* container = addElement(result.get(), "ResultForSD");
  addElement(container, "UsedSDs");
  for (int i = 0; i < n; ++i) {
    xmlNode* info = addElement(container, "AssertionInfo");
    setAttribute(info, "usermsg", "caf\xC3\xA9 \xE4\xB8\xAD \xF0\x9F\x98\x80 \xFF");
    setAttribute(info, "lnr", std::to_string(i));
  }
  xmlNode* deeper = addElement(addElement(container, "SDSummaryInfo"), "SDResults");
  setAttribute(addElement(deeper, "SDResult"), "status", "PASSED");
  return result;
}

class SpooledDocumentTest : public ::testing::Test {
 protected:
  // Saves a document whose holder stands `depth` elements below the root
  // with `count` children, once as a whole tree and once spooled, and
  // expects the same bytes.
  void expectSameAsWholeTree(int depth, int count) {
    XmlNodePtr whole(newElement("TestResult"));
    XmlNodePtr spooledRoot(newElement("TestResult"));
    xmlNode* wholeHolder = whole.get();
    xmlNode* spooledHolder = spooledRoot.get();
    for (int level = 0; level < depth; ++level) {
      const std::string name = level + 1 == depth ? "TestContextResult" : "Level";
      wholeHolder = addElement(wholeHolder, name.c_str());
      spooledHolder = addElement(spooledHolder, name.c_str());
      setAttribute(addElement(whole.get(), "Header"), "at", std::to_string(level));
      setAttribute(addElement(spooledRoot.get(), "Header"), "at", std::to_string(level));
    }
    SpooledDocument spooled(std::move(spooledRoot), spooledHolder);
    for (int n = 0; n < count; ++n) {
      xmlAddChild(wholeHolder, caseResult(n).release());
      spooled.add(caseResult(n));
    }
    setAttribute(wholeHolder, "status", "FAILED");
    setAttribute(spooled.holder(), "status", "FAILED");

    const std::string wholePath = dir_.file("whole.xml");
    const std::string spooledPath = dir_.file("spooled.xml");
    ASSERT_TRUE(saveXmlDocument(whole.get(), wholePath));
    ASSERT_TRUE(spooled.save(spooledPath));
    const std::string expected = test::readFile(wholePath);
    EXPECT_EQ(test::readFile(spooledPath), expected) << "depth " << depth << ", " << count;
    EXPECT_NE(expected.find("<TestContextResult"), std::string::npos);
  }

  test::TempDir dir_;
};

TEST_F(SpooledDocumentTest, ReadsAsTheWholeTree) {
  for (int depth : {1, 2, 3}) {
    for (int count : {0, 1, 2, 5}) expectSameAsWholeTree(depth, count);
  }
}

TEST_F(SpooledDocumentTest, IndentationStopsGrowingAsInTheWholeTree) {
  // libxml2 indents no deeper than 60 blanks.
  expectSameAsWholeTree(29, 2);
  expectSameAsWholeTree(35, 2);
}

TEST_F(SpooledDocumentTest, ExactTextOfAContext) {
  XmlNodePtr root(newElement("TestResult"));
  setAttribute(root.get(), "kind", "rk_testcontext");
  xmlNode* holder = addElement(root.get(), "TestContextResult");
  SpooledDocument document(std::move(root), holder);
  XmlNodePtr first(newElement("TestCaseResult"));
  setAttribute(first.get(), "name", "A\xC3\xA9<");
  addElement(first.get(), "ResultForCode");
  document.add(std::move(first));
  document.add(XmlNodePtr(newElement("TestCaseResult")));
  setAttribute(document.holder(), "status", "PASSED");
  const std::string path = dir_.file("Ctx.xml");
  ASSERT_TRUE(document.save(path));
  EXPECT_EQ(test::readFile(path),
            "<?xml version=\"1.0\"?>\n"
            "<TestResult kind=\"rk_testcontext\">\n"
            "  <TestContextResult status=\"PASSED\">\n"
            "    <TestCaseResult name=\"A&#xE9;&lt;\">\n"
            "      <ResultForCode/>\n"
            "    </TestCaseResult>\n"
            "    <TestCaseResult/>\n"
            "  </TestContextResult>\n"
            "</TestResult>\n");
}

TEST_F(SpooledDocumentTest, UnwritableFileIsReported) {
  XmlNodePtr root(newElement("TestResult"));
  xmlNode* holder = addElement(root.get(), "TestContextResult");
  SpooledDocument document(std::move(root), holder);
  document.add(XmlNodePtr(newElement("TestCaseResult")));
  EXPECT_FALSE(document.save(dir_.file("missing/Ctx.xml")));
  EXPECT_FALSE(test::fileExists(dir_.file("missing/Ctx.xml")));
}

}  // namespace
}  // namespace qendor
