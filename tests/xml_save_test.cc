#include "report/xml_save.h"

#include <gtest/gtest.h>
#include <libxml/parser.h>
#include <libxml/tree.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "base/run_settings.h"
#include "report/xml_node.h"
#include "tests/test_support.h"

namespace qendor {
namespace {

// A small document: root with one attributed child.
XmlNodePtr sampleTree() {
  XmlNodePtr root(newElement("TestResult"));
  setAttribute(root.get(), "kind", "rk_testcase");
  xmlNode* header = addElement(root.get(), "ResultHeader");
  setAttribute(header, "name", "A & B");
  addElement(header, "EnvironmentInfo");
  return root;
}

const char kSampleXml[] =
    "<?xml version=\"1.0\"?>\n"
    "<TestResult kind=\"rk_testcase\">\n"
    "  <ResultHeader name=\"A &amp; B\">\n"
    "    <EnvironmentInfo/>\n"
    "  </ResultHeader>\n"
    "</TestResult>\n";

class SaveXmlDocumentTest : public ::testing::Test {
 protected:
  void SetUp() override { resetRun(); }
  void TearDown() override { resetRun(); }
  test::TempDir dir_;
};

TEST_F(SaveXmlDocumentTest, WritesAnIndentedFileAndHandsTheTreeBack) {
  XmlNodePtr root = sampleTree();
  const std::string path = dir_.file("CaseOne.xml");
  EXPECT_TRUE(saveXmlDocument(root.get(), path));
  EXPECT_EQ(test::readFile(path), kSampleXml);
  EXPECT_EQ(root->parent, nullptr);
  EXPECT_EQ(root->doc, nullptr);
  EXPECT_EQ(root->children->doc, nullptr);
  // The tree can be saved again and is freed by its owner.
  EXPECT_TRUE(saveXmlDocument(root.get(), path));
  EXPECT_EQ(test::readFile(path), kSampleXml);
}

TEST_F(SaveXmlDocumentTest, SameBytesAsTheLibraryFileSave) {
  XmlNodePtr root = sampleTree();
  const std::string ours = dir_.file("ours.xml");
  ASSERT_TRUE(saveXmlDocument(root.get(), ours));

  xmlDoc* doc = xmlNewDoc(reinterpret_cast<const xmlChar*>("1.0"));
  xmlDocSetRootElement(doc, xmlCopyNode(root.get(), 1));
  const std::string theirs = dir_.file("theirs.xml");
  xmlSaveFormatFile(theirs.c_str(), doc, 1);
  xmlFreeDoc(doc);
  EXPECT_EQ(test::readFile(ours), test::readFile(theirs));
}

TEST_F(SaveXmlDocumentTest, PathIsNormalisedAndTakenLiterally) {
  XmlNodePtr root = sampleTree();
  mkdir(dir_.file("out sub").c_str(), 0755);
  // Backslashes become "/", double quotes go, "%41" stays as it is.
  EXPECT_TRUE(saveXmlDocument(root.get(), dir_.path() + "\\\"out sub\"\\a%41$b.xml"));
  EXPECT_EQ(test::readFile(dir_.file("out sub/a%41$b.xml")), kSampleXml);
  EXPECT_FALSE(test::fileExists(dir_.file("out sub/aA$b.xml")));
}

TEST_F(SaveXmlDocumentTest, FileThatCannotBeCreated) {
  XmlNodePtr root = sampleTree();
  EXPECT_FALSE(saveXmlDocument(root.get(), dir_.file("missing/CaseOne.xml")));
  EXPECT_EQ(root->doc, nullptr);
  EXPECT_EQ(root->parent, nullptr);
}

TEST_F(SaveXmlDocumentTest, SavedFileIsWellFormed) {
  XmlNodePtr root = sampleTree();
  const std::string path = dir_.file("CaseOne.xml");
  ASSERT_TRUE(saveXmlDocument(root.get(), path));
  xmlDoc* doc = xmlReadFile(path.c_str(), nullptr, XML_PARSE_NONET);
  ASSERT_NE(doc, nullptr);
  EXPECT_STREQ(reinterpret_cast<const char*>(xmlDocGetRootElement(doc)->name), "TestResult");
  xmlFreeDoc(doc);
}

}  // namespace
}  // namespace qendor
