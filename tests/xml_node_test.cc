#include "report/xml_node.h"

#include <gtest/gtest.h>
#include <libxml/tree.h>

#include <string>

namespace qendor {
namespace {

std::string dumpNode(xmlNode* node) {
  xmlBuffer* buffer = xmlBufferCreate();
  xmlNodeDump(buffer, nullptr, node, 0, 0);
  std::string text(reinterpret_cast<const char*>(xmlBufferContent(buffer)),
                   xmlBufferLength(buffer));
  xmlBufferFree(buffer);
  return text;
}

TEST(XmlNodeTest, NewElementHasNoNamespaceAndNoParent) {
  XmlNodePtr element(newElement("TestResult"));
  ASSERT_NE(element, nullptr);
  EXPECT_EQ(element->type, XML_ELEMENT_NODE);
  EXPECT_EQ(element->ns, nullptr);
  EXPECT_EQ(element->parent, nullptr);
  EXPECT_EQ(dumpNode(element.get()), "<TestResult/>");
}

TEST(XmlNodeTest, ChildrenStandInTheOrderAppended) {
  XmlNodePtr root(newElement("ResultHeader"));
  xmlNode* environment = addElement(root.get(), "EnvironmentInfo");
  addElement(root.get(), "ConfigurationInfo");
  addElement(environment, "Inner");
  EXPECT_EQ(environment->parent, root.get());
  EXPECT_EQ(dumpNode(root.get()),
            "<ResultHeader><EnvironmentInfo><Inner/></EnvironmentInfo><ConfigurationInfo/>"
            "</ResultHeader>");
}

TEST(XmlNodeTest, AddElementWithoutParentCreatesNothing) {
  EXPECT_EQ(addElement(nullptr, "Orphan"), nullptr);
}

TEST(XmlNodeTest, AttributesStandInTheOrderSetAndEmptyValuesAreWritten) {
  XmlNodePtr element(newElement("SDResult"));
  setAttribute(element.get(), "name", "Main");
  setAttribute(element.get(), "sdname", "");
  setAttribute(element.get(), "status", "PASSED");
  EXPECT_EQ(dumpNode(element.get()), "<SDResult name=\"Main\" sdname=\"\" status=\"PASSED\"/>");
}

TEST(XmlNodeTest, SettingAnAttributeAgainReplacesItsValueInPlace) {
  XmlNodePtr element(newElement("TestCaseResult"));
  setAttribute(element.get(), "name", "a");
  setAttribute(element.get(), "status", "x");
  setAttribute(element.get(), "name", "b");
  EXPECT_EQ(dumpNode(element.get()), "<TestCaseResult name=\"b\" status=\"x\"/>");
}

TEST(XmlNodeTest, ValueIsCopiedFromAViewWithoutTerminator) {
  const std::string text = "ab<&\"cd";
  XmlNodePtr element(newElement("E"));
  // Only the first five characters: the copy must not read past the view.
  setAttribute(element.get(), "v", std::string_view(text).substr(0, 5));
  EXPECT_EQ(dumpNode(element.get()), "<E v=\"ab&lt;&amp;&quot;\"/>");
}

TEST(XmlNodeTest, AttributeOnNoElementIsIgnored) {
  setAttribute(nullptr, "name", "value");  // must not crash
}

}  // namespace
}  // namespace qendor
