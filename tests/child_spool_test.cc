#include "report/child_spool.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "report/xml_node.h"
#include "report/xml_save.h"
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

class ChildSpoolTest : public ::testing::Test {
 protected:
  // Saves a document whose holder stands `depth` elements below the root
  // with `count` children, once as a whole tree and once spooled, and
  // expects the same bytes. With `nested`, each child spools its own
  // assertions too. The holder has a child before and one after the spooled
  // ones.
  void expectSameAsWholeTree(int depth, int count, bool nested = false) {
    XmlNodePtr whole(newElement("TestResult"));
    SpooledDocument spooled{XmlNodePtr(newElement("TestResult")), ChildSpool()};
    xmlNode* wholeHolder = whole.get();
    xmlNode* spooledHolder = spooled.root.get();
    for (int level = 0; level < depth; ++level) {
      const std::string name = level + 1 == depth ? "TestContextResult" : "Level";
      wholeHolder = addElement(wholeHolder, name.c_str());
      spooledHolder = addElement(spooledHolder, name.c_str());
      setAttribute(addElement(whole.get(), "Header"), "at", std::to_string(level));
      setAttribute(addElement(spooled.root.get(), "Header"), "at", std::to_string(level));
    }
    addElement(wholeHolder, "Before");
    addElement(spooledHolder, "Before");
    spooled.spool.attach(spooledHolder);
    for (int n = 0; n < count; ++n) {
      xmlAddChild(wholeHolder, caseResult(n).release());
      if (!nested) {
        spooled.spool.add(caseResult(n));
        continue;
      }
      // Built in place, its assertions spooled, then spooled itself.
      XmlNodePtr built = caseResult(n);
      xmlNode* container = built->children;
      std::vector<xmlNode*> infos;
      for (xmlNode* c = container->children; c; c = c->next) {
        if (std::string(reinterpret_cast<const char*>(c->name)) == "AssertionInfo")
          infos.push_back(c);
      }
      for (xmlNode* info : infos) xmlUnlinkNode(info);
      xmlAddChild(spooledHolder, built.release());
      xmlNode* placed = spooledHolder->last;
      ChildSpool inner;
      xmlNode* placedContainer = placed->children;
      inner.attach(placedContainer);
      // The summary stays behind the spooled assertions.
      xmlNode* summary = placedContainer->children->next;
      xmlUnlinkNode(summary);
      xmlAddChild(placedContainer, summary);
      for (xmlNode* info : infos) inner.add(XmlNodePtr(info));
      xmlUnlinkNode(placed);
      spooled.spool.add(XmlNodePtr(placed), &inner);
    }
    addElement(wholeHolder, "After");
    addElement(spooledHolder, "After");
    setAttribute(wholeHolder, "status", "FAILED");
    setAttribute(spooledHolder, "status", "FAILED");

    const std::string wholePath = dir_.file("whole.xml");
    const std::string spooledPath = dir_.file("spooled.xml");
    ASSERT_TRUE(saveXmlDocument(whole.get(), wholePath));
    ASSERT_TRUE(saveXmlDocument(spooled.root.get(), spooledPath, nullptr, &spooled.spool));
    const std::string expected = test::readFile(wholePath);
    EXPECT_EQ(test::readFile(spooledPath), expected)
        << "depth " << depth << ", " << count << (nested ? ", nested" : "");
    EXPECT_NE(expected.find("<TestContextResult"), std::string::npos);
  }

  test::TempDir dir_;
};

TEST_F(ChildSpoolTest, ReadsAsTheWholeTree) {
  for (int depth : {1, 2, 3}) {
    for (int count : {0, 1, 2, 5}) expectSameAsWholeTree(depth, count);
  }
}

TEST_F(ChildSpoolTest, NestedSpoolsReadAsTheWholeTree) {
  for (int depth : {1, 2}) {
    for (int count : {0, 1, 3}) expectSameAsWholeTree(depth, count, true);
  }
}

TEST_F(ChildSpoolTest, IndentationStopsGrowingAsInTheWholeTree) {
  // libxml2 indents no deeper than 60 blanks.
  expectSameAsWholeTree(29, 2);
  expectSameAsWholeTree(35, 2);
  expectSameAsWholeTree(28, 2, true);
}

TEST_F(ChildSpoolTest, ExactTextOfAContext) {
  SpooledDocument document{XmlNodePtr(newElement("TestResult")), ChildSpool()};
  setAttribute(document.root.get(), "kind", "rk_testcontext");
  xmlNode* holder = addElement(document.root.get(), "TestContextResult");
  document.spool.attach(holder);
  XmlNodePtr first(newElement("TestCaseResult"));
  setAttribute(first.get(), "name", "A\xC3\xA9<");
  addElement(first.get(), "ResultForCode");
  document.spool.add(std::move(first));
  document.spool.add(XmlNodePtr(newElement("TestCaseResult")));
  setAttribute(holder, "status", "PASSED");
  const std::string path = dir_.file("Ctx.xml");
  ASSERT_TRUE(saveXmlDocument(document.root.get(), path, nullptr, &document.spool));
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

TEST_F(ChildSpoolTest, NothingSpooledLeavesAnEmptyElement) {
  SpooledDocument document{XmlNodePtr(newElement("TestResult")), ChildSpool()};
  document.spool.attach(addElement(document.root.get(), "ResultForCode"));
  EXPECT_TRUE(document.spool.attached());
  const std::string path = dir_.file("Empty.xml");
  ASSERT_TRUE(saveXmlDocument(document.root.get(), path, nullptr, &document.spool));
  EXPECT_EQ(test::readFile(path),
            "<?xml version=\"1.0\"?>\n<TestResult>\n  <ResultForCode/>\n</TestResult>\n");
}

TEST_F(ChildSpoolTest, AddBeforeAttachIsIgnored) {
  ChildSpool spool;
  EXPECT_FALSE(spool.attached());
  spool.add(XmlNodePtr(newElement("TestCaseResult")));  // freed, not kept
  std::string out;
  spool.splice("<a/>\n", out);
  EXPECT_EQ(out, "<a/>\n");
}

TEST_F(ChildSpoolTest, UnwritableFileIsReported) {
  SpooledDocument document{XmlNodePtr(newElement("TestResult")), ChildSpool()};
  document.spool.attach(addElement(document.root.get(), "TestContextResult"));
  document.spool.add(XmlNodePtr(newElement("TestCaseResult")));
  EXPECT_FALSE(
      saveXmlDocument(document.root.get(), dir_.file("missing/Ctx.xml"), nullptr, &document.spool));
  EXPECT_FALSE(test::fileExists(dir_.file("missing/Ctx.xml")));
}

}  // namespace
}  // namespace qendor
